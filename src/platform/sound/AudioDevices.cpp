#include "platform/process/Module.h"
#include "platform/sound/Audio.h"

namespace velmor {

namespace {

class CNoOutput final : public IAudioOutput {
public:
    bool CanPlay() override { return false; }
    bool Open() override { return false; }
    bool Play(std::span<const std::uint8_t>) override { return false; }
    bool OpenStereo(int) override { return false; }
    bool PlayStereo(std::vector<float>) override { return false; }
    std::size_t Position() const override { return 0; }
    void Reset() override {}
    bool Close() override { return true; }
};

class CNoInput final : public IAudioInput {
public:
    bool CanRecord() override { return false; }
    bool Open() override { return false; }
    bool Start(std::size_t) override { return false; }
    std::size_t Position() const override { return 0; }
    int Level() const override { return 0; }
    std::vector<std::uint8_t> Stop() override { return {}; }
    void Close() override {}
};

// The library that drives the devices is loaded when one of them is first asked for.
class CAudioDevices final : public IAudioDevices {
public:
    explicit CAudioDevices(int rate) : m_rate(rate) {}

    IAudioOutput& Output() override {
        IAudioDevices* devices = Loaded();
        return devices != nullptr ? devices->Output() : m_noOutput;
    }
    IAudioInput& Input() override {
        IAudioDevices* devices = Loaded();
        return devices != nullptr ? devices->Input() : m_noInput;
    }

private:
    IAudioDevices* Loaded() {
        if (!m_loaded)
            if (const auto* library =
                    static_cast<const IAudioLibrary*>(CallModule("velmor-audio.so", "VelmorAudioLibrary")))
                m_loaded = library->MakeDevices(m_rate);
        return m_loaded.get();
    }

    int m_rate;
    CNoOutput m_noOutput;
    CNoInput m_noInput;
    std::unique_ptr<IAudioDevices> m_loaded;
};

} // namespace

std::unique_ptr<IAudioDevices> MakeAudioDevices(int samplesPerSecond) {
    return std::make_unique<CAudioDevices>(samplesPerSecond);
}

} // namespace velmor
