#include "app/demo/DemoSounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace velmor::demo {

namespace {

/// A sound in the making: samples from -1 to 1, onto which voices are laid.
class CVoices {
public:
    explicit CVoices(double seconds) : m_samples(static_cast<std::size_t>(seconds * soundRate)) {}

    /// A struck bar of wood: a fundamental that rings and an overtone that dies at once.
    void Pluck(double start, double pitch, double loudness, double ring) {
        Add(start, [=](double t) {
            const double turn = 2 * std::numbers::pi * pitch * t;
            return loudness *
                   (std::sin(turn) * std::exp(-t / ring) + 0.3 * std::sin(4 * turn) * std::exp(-t / 0.03));
        });
    }

    /// A soft thud: a falling low tone with a little rustle in front.
    void Thud(double loudness) {
        double rustle = 0;
        std::uint32_t state = 0x2545f491;
        Add(0, [=](double t) mutable {
            state = state * 1664525U + 1013904223U;
            rustle += 0.25 * ((state >> 16) / 32768.0 - 1 - rustle);
            const double turn = 2 * std::numbers::pi * (110 * t - 240 * t * t);
            return loudness * (std::sin(turn) * std::exp(-t / 0.035) + 0.7 * rustle * std::exp(-t / 0.03));
        });
    }

    /// A tone that slides from one pitch to another, with a tremble.
    void Slide(double from, double to, double seconds, double loudness) {
        Add(0, [=](double t) {
            const double share = std::min(t / seconds, 1.0);
            const double cycles = from * t + (to - from) * t * share / 2;
            const double tremble = 1.4 * std::sin(2 * std::numbers::pi * 22 * t) * (1 - share);
            return loudness * std::sin(2 * std::numbers::pi * cycles + tremble) * std::exp(-2.5 * share * share);
        });
    }

    /// Fades the last bit out, so that the end does not click, and rounds to bytes.
    CDemoSound Finished(std::string name) const {
        constexpr double fade = 0.02 * soundRate;
        CDemoSound sound{std::move(name), {}};
        for (std::size_t i = 0; i < m_samples.size(); ++i) {
            const double end = std::min(1.0, static_cast<double>(m_samples.size() - 1 - i) / fade);
            sound.samples.push_back(
                static_cast<std::uint8_t>(std::lround(128 + 120 * std::clamp(m_samples[i] * end, -1.0, 1.0))));
        }
        return sound;
    }

private:
    template<class Voice>
    void Add(double start, Voice voice) {
        for (auto i = static_cast<std::size_t>(start * soundRate); i < m_samples.size(); ++i)
            m_samples[i] += voice(static_cast<double>(i) / soundRate - start);
    }

    std::vector<double> m_samples;
};

struct CNote {
    const char* step; ///< name of the footstep that plays it
    double pitch;     ///< hertz
};
constexpr std::array<CNote, 5> notes = {
    {{"StepC", 523.25}, {"StepD", 587.33}, {"StepE", 659.26}, {"StepG", 783.99}, {"StepA", 880}}};
constexpr double highC = 1046.5;

} // namespace

std::vector<CDemoSound> MakeSounds() {
    std::vector<CDemoSound> sounds;
    for (const CNote& note : notes) {
        CVoices voices(0.6);
        voices.Thud(0.5);
        voices.Pluck(0, note.pitch, 0.42, 0.16);
        voices.Pluck(0.16, note.pitch / 2, 0.2, 0.12);
        sounds.push_back(voices.Finished(note.step));
    }
    CVoices leap(0.5);
    leap.Slide(260, 1150, 0.45, 0.6);
    sounds.push_back(leap.Finished(leapSound));
    CVoices landing(0.3);
    landing.Thud(0.95);
    sounds.push_back(landing.Finished(landingSound));
    CVoices chime(1);
    for (const auto& [start, pitch] : {std::pair{0.0, 659.26}, {0.09, 783.99}, {0.18, highC}, {0.27, highC * 1.5}})
        chime.Pluck(start, pitch, 0.3, 0.3);
    sounds.push_back(chime.Finished(chimeSound));
    return sounds;
}

std::vector<std::string> StepTune() {
    return {"StepC", "StepE", "StepG", "StepE", "StepA", "StepG", "StepE", "StepD", "StepC"};
}

} // namespace velmor::demo
