#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace velmor {

/// Plays sound, one stretch at a time: 8-bit unsigned mono samples at one rate, or what is in full quality. Calls
/// come from one thread.
class IAudioOutput {
public:
    virtual ~IAudioOutput() = default;
    /// Whether there is a device at all.
    virtual bool CanPlay() = 0;
    [[nodiscard]] virtual bool Open() = 0;
    /// Copies the samples and begins to play them from the first; what was playing stops. False when the device is
    /// not open or there is no memory.
    [[nodiscard]] virtual bool Play(std::span<const std::uint8_t> samples) = 0;
    /// Opens it for PlayStereo() alone, at a rate in samples of a channel per second.
    [[nodiscard]] virtual bool OpenStereo(int rate) = 0;
    /// The same with left and right in turn, full scale 1.0.
    [[nodiscard]] virtual bool PlayStereo(std::vector<float> samples) = 0;
    /// Samples (of a channel) that the device has really taken since it began to play: the clock of whatever runs
    /// beside the sound. Reaches their number when all have been heard.
    virtual std::size_t Position() const = 0;
    /// Stops what is playing; the position is 0 again.
    virtual void Reset() = 0;
    /// False when the device could not be closed. Closing a closed device succeeds.
    [[nodiscard]] virtual bool Close() = 0;
};

/// Records sound of the same format.
class IAudioInput {
public:
    virtual ~IAudioInput() = default;
    virtual bool CanRecord() = 0;
    [[nodiscard]] virtual bool Open() = 0;
    /// Begins to record, at most `capacity` samples. False when the device is not open or there is no memory.
    [[nodiscard]] virtual bool Start(std::size_t capacity) = 0;
    /// Samples recorded so far.
    virtual std::size_t Position() const = 0;
    /// Largest deviation from silence among the samples of the last moment, 0 to 128: for a level meter.
    virtual int Level() const = 0;
    /// Ends the recording and gives what there is.
    virtual std::vector<std::uint8_t> Stop() = 0;
    virtual void Close() = 0;
};

/// The sound devices of this machine, opened only when they are used.
class IAudioDevices {
public:
    virtual ~IAudioDevices() = default;
    virtual IAudioOutput& Output() = 0;
    virtual IAudioInput& Input() = 0;
};

/// What drives the devices, in a module of its own.
class IAudioLibrary {
public:
    virtual ~IAudioLibrary() = default;
    virtual std::unique_ptr<IAudioDevices> MakeDevices(int samplesPerSecond) const = 0;
};

/// Devices at `samplesPerSecond`. Where there is no sound, nothing can be played or recorded, and every call says
/// so at once.
std::unique_ptr<IAudioDevices> MakeAudioDevices(int samplesPerSecond);

} // namespace velmor
