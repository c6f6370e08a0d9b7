#pragma once

#include "platform/sound/NoAudio.h"

#include <algorithm>
#include <utility>

namespace velmor::testing {

/// Sound devices that do what the test says.
class CFakeOutput final : public CNoOutput {
public:
    bool exists = true;
    bool opens = true;
    bool plays = true;
    bool closes = true;
    std::size_t step = 1000;                       ///< samples that each question for the position has heard more
    std::vector<std::vector<std::uint8_t>> played; ///< each sound whole
    bool isOpen = false;

    bool CanPlay() override { return exists; }
    bool Open() override { return isOpen = opens; }
    bool Play(std::span<const std::uint8_t> samples) override {
        m_position = 0;
        if (!isOpen || !plays)
            return false;
        played.emplace_back(samples.begin(), samples.end());
        return true;
    }
    std::size_t Position() const override {
        if (!isOpen || played.empty())
            return 0;
        return std::exchange(m_position, std::min(m_position + step, played.back().size()));
    }
    void Reset() override { m_position = 0; }
    bool Close() override {
        isOpen = false;
        return closes;
    }

private:
    mutable std::size_t m_position = 0;
};

class CFakeInput final : public IAudioInput {
public:
    bool exists = true;
    bool opens = true;
    std::size_t step = 5000;
    bool isOpen = false;
    std::size_t capacity = 0;

    bool CanRecord() override { return exists; }
    bool Open() override { return isOpen = opens; }
    bool Start(std::size_t most) override {
        capacity = most;
        m_recorded = 0;
        return isOpen;
    }
    std::size_t Position() const override { return m_recorded = std::min(m_recorded + step, capacity); }
    int Level() const override { return 64; }
    std::vector<std::uint8_t> Stop() override { return std::vector<std::uint8_t>(m_recorded, 77); }
    void Close() override { isOpen = false; }

private:
    mutable std::size_t m_recorded = 0;
};

using CFakeAudio = CAudioPair<CFakeOutput, CFakeInput>;

} // namespace velmor::testing
