#pragma once

#include "platform/camera/CaptureDriver.h"

#include <functional>
#include <optional>
#include <string>

namespace velmor {

/// What a node of Video4Linux ("/dev/video0") says of its device. Reading frames is FFmpeg's part; it can go on
/// meanwhile.
class CV4l2Node {
public:
    /// The system's ioctl on the open node.
    using Call = std::function<int(unsigned long request, void* argument)>;

    explicit CV4l2Node(Call call) : m_call(std::move(call)) {}
    /// Nothing when the node cannot be opened.
    static std::optional<CV4l2Node> Open(const std::string& node);

    /// The name of the device; nothing when frames cannot be captured from this node.
    std::optional<std::string> CardName() const;
    std::vector<CCaptureControl> Controls() const;
    [[nodiscard]] bool SetControl(std::uint32_t id, int value) const;
    /// Those that can be decoded, the largest and fastest first. Of the codings of one size and rate, the one that
    /// loses least.
    std::vector<CCaptureFormat> Formats() const;

private:
    void AddSizes(std::uint32_t pixelFormat, CCaptureFormat format, std::vector<CCaptureFormat>& formats) const;
    void AddRates(std::uint32_t pixelFormat, CCaptureFormat format, std::vector<CCaptureFormat>& formats) const;
    std::vector<std::pair<int, std::string>> ChoicesOf(std::uint32_t id, int least, int most,
                                                       bool areNumbers) const;

    Call m_call;
};

/// The nodes of this machine that frames can be captured from, in the order of their numbers.
std::vector<std::string> ListV4l2Nodes();

} // namespace velmor
