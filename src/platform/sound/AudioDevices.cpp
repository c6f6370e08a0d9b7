#include "platform/process/Module.h"
#include "platform/sound/NoAudio.h"

namespace velmor {

namespace {

// The library that drives the devices is loaded when one of them is first asked for.
class CAudioDevices final : public IAudioDevices {
public:
    explicit CAudioDevices(int rate) : m_rate(rate) {}

    IAudioOutput& Output() override { return Loaded().Output(); }
    IAudioInput& Input() override { return Loaded().Input(); }

private:
    IAudioDevices& Loaded() {
        if (!m_loaded)
            if (const auto* library =
                    static_cast<const IAudioLibrary*>(CallModule("velmor-audio.so", "VelmorAudioLibrary")))
                m_loaded = library->MakeDevices(m_rate);
        return m_loaded ? *m_loaded : m_none;
    }

    int m_rate;
    CAudioPair<> m_none;
    std::unique_ptr<IAudioDevices> m_loaded;
};

} // namespace

std::unique_ptr<IAudioDevices> MakeAudioDevices(int samplesPerSecond) {
    return std::make_unique<CAudioDevices>(samplesPerSecond);
}

} // namespace velmor
