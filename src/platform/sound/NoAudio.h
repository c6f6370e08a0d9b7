#pragma once

#include "platform/sound/Audio.h"

namespace velmor {

// What there is where there is no sound. A device that can do some of it overrides what it can.

class CNoOutput : public IAudioOutput {
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

class CNoInput : public IAudioInput {
public:
    bool CanRecord() override { return false; }
    bool Open() override { return false; }
    bool Start(std::size_t) override { return false; }
    std::size_t Position() const override { return 0; }
    int Level() const override { return 0; }
    std::vector<std::uint8_t> Stop() override { return {}; }
    void Close() override {}
};

/// Devices that are what they are made of.
template<class OutputDevice = CNoOutput, class InputDevice = CNoInput>
class CAudioPair final : public IAudioDevices {
public:
    IAudioOutput& Output() override { return output; }
    IAudioInput& Input() override { return input; }

    OutputDevice output;
    InputDevice input;
};

} // namespace velmor
