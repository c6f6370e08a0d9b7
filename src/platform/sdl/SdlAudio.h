#pragma once

#include "platform/sound/Audio.h"

#include <SDL.h>
#include <mutex>

namespace velmor {

/// SDL's audio alone, started with the first device that needs it and ended with the last. Its other parts, and its
/// signal handlers, stay off.
class CSdlAudio {
public:
    CSdlAudio();
    CSdlAudio(const CSdlAudio&) = delete;
    CSdlAudio& operator=(const CSdlAudio&) = delete;
    ~CSdlAudio();
    bool IsReady() const { return m_isReady; }

private:
    bool m_isReady = false;
};

/// The form of what a device is given or gives.
struct CSdlForm {
    int rate = 0;
    SDL_AudioFormat format = AUDIO_U8;
    std::uint8_t channels = 1;
    std::uint16_t buffer = 0; ///< samples of a channel at once
};

/// One open device and the thread behind it. The callback runs on that thread.
class CSdlDevice {
public:
    using Callback = void (*)(void* owner, std::uint8_t* bytes, int count);

    CSdlDevice() = default;
    CSdlDevice(const CSdlDevice&) = delete;
    CSdlDevice& operator=(const CSdlDevice&) = delete;
    ~CSdlDevice() { Close(); }

    static bool Exists(bool capture);
    [[nodiscard]] bool Open(bool capture, const CSdlForm& form, Callback callback, void* owner);
    void Close();
    bool IsOpen() const { return m_device != 0; }
    /// Samples that the device asks for at once.
    std::size_t BufferSamples() const { return m_bufferSamples; }
    void Run(bool runs);

private:
    std::unique_ptr<CSdlAudio> m_audio;
    SDL_AudioDeviceID m_device = 0;
    std::size_t m_bufferSamples = 0;
};

class CSdlOutput final : public IAudioOutput {
public:
    explicit CSdlOutput(int rate) : m_rate(rate) {}
    bool CanPlay() override { return CSdlDevice::Exists(false); }
    [[nodiscard]] bool Open() override;
    [[nodiscard]] bool Play(std::span<const std::uint8_t> samples) override;
    [[nodiscard]] bool OpenStereo(int rate) override;
    [[nodiscard]] bool PlayStereo(std::vector<float> samples) override;
    std::size_t Position() const override;
    void Reset() override;
    [[nodiscard]] bool Close() override;

private:
    [[nodiscard]] bool OpenAs(const CSdlForm& form);
    void Fill(std::span<std::uint8_t> buffer);
    /// What is played, whichever form it has.
    std::span<const std::uint8_t> Bytes() const;
    /// Has nothing to play; the mutex is held.
    void Forget();

    int m_rate;
    bool m_isStereo = false; ///< as it was opened
    mutable std::mutex m_mutex;
    std::vector<std::uint8_t> m_samples;
    std::vector<float> m_stereo; ///< in their place
    std::size_t m_handed = 0;    ///< bytes given to the device, the silence after the end included
    std::size_t m_consumed = 0;  ///< of these, what it must have played
    CSdlDevice m_device;         ///< the last member: its thread ends before the others go
};

class CSdlInput final : public IAudioInput {
public:
    explicit CSdlInput(int rate) : m_rate(rate) {}
    bool CanRecord() override { return CSdlDevice::Exists(true); }
    [[nodiscard]] bool Open() override;
    [[nodiscard]] bool Start(std::size_t capacity) override;
    std::size_t Position() const override;
    int Level() const override;
    std::vector<std::uint8_t> Stop() override;
    void Close() override { m_device.Close(); }

private:
    void Take(std::span<const std::uint8_t> bytes);

    int m_rate;
    mutable std::mutex m_mutex;
    std::vector<std::uint8_t> m_samples;
    std::size_t m_capacity = 0;
    int m_level = 0;
    CSdlDevice m_device; ///< the last member: its thread ends before the others go
};

} // namespace velmor
