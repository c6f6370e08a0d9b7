#pragma once

#include "platform/sound/NoAudio.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace velmor::testing {

/// What a sound device was told, and how far it is: shared, since the document owns the device.
struct CRecordedSound {
    bool exists = true;
    bool isOpen = false;
    std::size_t heard = 0;                         ///< samples of the last one, set by the test
    std::vector<std::vector<std::uint8_t>> played; ///< each sound whole
    int stereoRate = 0;                            ///< that it was opened at; 0 for the sounds' own form
    std::vector<std::vector<float>> playedStereo;  ///< what was played so
};

/// A device that makes no sound.
class CRecordedAudio final : public IAudioDevices {
public:
    explicit CRecordedAudio(std::shared_ptr<CRecordedSound> sound) : m_output(std::move(sound)) {}
    IAudioOutput& Output() override { return m_output; }
    IAudioInput& Input() override { return m_input; }

private:
    class COutput final : public IAudioOutput {
    public:
        explicit COutput(std::shared_ptr<CRecordedSound> sound) : m_sound(std::move(sound)) {}
        bool CanPlay() override { return m_sound->exists; }
        bool Open() override {
            m_sound->stereoRate = 0;
            return m_sound->isOpen = true;
        }
        bool OpenStereo(int rate) override {
            m_sound->stereoRate = rate;
            return m_sound->isOpen = true;
        }
        bool PlayStereo(std::vector<float> samples) override {
            m_sound->heard = 0;
            m_sound->playedStereo.push_back(std::move(samples));
            return m_sound->isOpen && m_sound->stereoRate > 0;
        }
        bool Play(std::span<const std::uint8_t> samples) override {
            m_sound->heard = 0;
            m_sound->played.emplace_back(samples.begin(), samples.end());
            return m_sound->isOpen && m_sound->stereoRate == 0;
        }
        std::size_t Position() const override {
            if (m_sound->stereoRate > 0)
                return m_sound->playedStereo.empty()
                           ? 0
                           : std::min(m_sound->heard, m_sound->playedStereo.back().size() / 2);
            return m_sound->played.empty() ? 0 : std::min(m_sound->heard, m_sound->played.back().size());
        }
        void Reset() override { m_sound->heard = 0; }
        bool Close() override {
            m_sound->isOpen = false;
            return true;
        }

    private:
        std::shared_ptr<CRecordedSound> m_sound;
    };

    COutput m_output;
    CNoInput m_input;
};

} // namespace velmor::testing
