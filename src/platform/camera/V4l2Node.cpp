#include "platform/camera/V4l2Node.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <memory>
#include <sys/ioctl.h>
#include <tuple>
#include <unistd.h>

namespace velmor {

namespace {

constexpr int mostNodes = 64;
constexpr std::uint32_t mostEntries = 256; // of any list: a driver that never ends its own is not followed for ever
constexpr int mostPixels = 15000;

// Pixel formats and FFmpeg's names for them, those that lose least first.
struct CCoding {
    std::uint32_t pixelFormat;
    const char* name;
};
constexpr CCoding codings[] = {
    {V4L2_PIX_FMT_BGR24, "bgr24"},  {V4L2_PIX_FMT_RGB24, "rgb24"}, {V4L2_PIX_FMT_YUYV, "yuyv422"},
    {V4L2_PIX_FMT_UYVY, "uyvy422"}, {V4L2_PIX_FMT_NV12, "nv12"},   {V4L2_PIX_FMT_YUV420, "yuv420p"},
    {V4L2_PIX_FMT_GREY, "gray"},    {V4L2_PIX_FMT_MJPEG, "mjpeg"}, {V4L2_PIX_FMT_JPEG, "mjpeg"},
};

int RankOf(const std::string& coding) {
    return static_cast<int>(std::ranges::find(codings, coding, &CCoding::name) - std::begin(codings));
}

// A name in a field that may be filled to its last byte.
template<std::size_t Size>
std::string TextOf(const __u8 (&field)[Size]) {
    const auto* end = std::find(std::begin(field), std::end(field), 0);
    return {std::begin(field), end};
}

CaptureControlKind KindOf(std::uint32_t type) {
    switch (type) {
    case V4L2_CTRL_TYPE_BOOLEAN:
        return CaptureControlKind::Switch;
    case V4L2_CTRL_TYPE_MENU:
    case V4L2_CTRL_TYPE_INTEGER_MENU:
        return CaptureControlKind::Menu;
    default:
        return CaptureControlKind::Number;
    }
}

bool CanBeSet(const v4l2_queryctrl& query) {
    const bool isKnown = query.type == V4L2_CTRL_TYPE_INTEGER || query.type == V4L2_CTRL_TYPE_BOOLEAN ||
                         query.type == V4L2_CTRL_TYPE_MENU || query.type == V4L2_CTRL_TYPE_INTEGER_MENU;
    constexpr std::uint32_t unusable =
        V4L2_CTRL_FLAG_DISABLED | V4L2_CTRL_FLAG_READ_ONLY | V4L2_CTRL_FLAG_WRITE_ONLY;
    return isKnown && (query.flags & unusable) == 0 && query.minimum <= query.maximum;
}

class COpenNode {
public:
    explicit COpenNode(int descriptor) : m_descriptor(descriptor) {}
    COpenNode(const COpenNode&) = delete;
    COpenNode& operator=(const COpenNode&) = delete;
    ~COpenNode() { ::close(m_descriptor); }

    int Descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

} // namespace

std::optional<CV4l2Node> CV4l2Node::Open(const std::string& node) {
    const int descriptor = ::open(node.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    const auto owner = std::make_shared<const COpenNode>(descriptor);
    return CV4l2Node([owner](unsigned long request, void* argument) {
        int result = 0;
        do
            result = ::ioctl(owner->Descriptor(), request, argument);
        while (result < 0 && errno == EINTR);
        return result;
    });
}

std::optional<std::string> CV4l2Node::CardName() const {
    v4l2_capability capability{};
    if (m_call(VIDIOC_QUERYCAP, &capability) < 0)
        return std::nullopt;
    // A device of several nodes says of each what all can do, and besides what the one can.
    const bool saysOfNode = (capability.capabilities & V4L2_CAP_DEVICE_CAPS) != 0;
    const std::uint32_t can = saysOfNode ? capability.device_caps : capability.capabilities;
    if ((can & V4L2_CAP_VIDEO_CAPTURE) == 0 || (can & V4L2_CAP_STREAMING) == 0)
        return std::nullopt;
    return TextOf(capability.card);
}

std::vector<CCaptureControl> CV4l2Node::Controls() const {
    std::vector<CCaptureControl> controls;
    v4l2_queryctrl query{};
    for (std::uint32_t entry = 0; entry < mostEntries; ++entry) {
        const std::uint32_t last = query.id;
        query = {};
        query.id = last | V4L2_CTRL_FLAG_NEXT_CTRL;
        if (m_call(VIDIOC_QUERYCTRL, &query) < 0)
            break;
        v4l2_control present{};
        present.id = query.id;
        if (!CanBeSet(query) || m_call(VIDIOC_G_CTRL, &present) < 0)
            continue;
        CCaptureControl control{query.id,
                                TextOf(query.name),
                                KindOf(query.type),
                                query.minimum,
                                query.maximum,
                                std::max(1, query.step),
                                query.default_value,
                                present.value,
                                (query.flags & V4L2_CTRL_FLAG_INACTIVE) == 0,
                                {}};
        if (control.kind == CaptureControlKind::Menu)
            control.choices =
                ChoicesOf(control.id, control.least, control.most, query.type == V4L2_CTRL_TYPE_INTEGER_MENU);
        controls.push_back(std::move(control));
    }
    return controls;
}

std::vector<std::pair<int, std::string>> CV4l2Node::ChoicesOf(std::uint32_t id, int least, int most,
                                                              bool areNumbers) const {
    std::vector<std::pair<int, std::string>> choices;
    most = static_cast<int>(std::min<std::int64_t>(most, std::int64_t{least} + mostEntries));
    for (int index = std::max(least, 0); index <= most; ++index) {
        v4l2_querymenu menu{};
        menu.id = id;
        menu.index = static_cast<std::uint32_t>(index);
        if (m_call(VIDIOC_QUERYMENU, &menu) < 0)
            continue; // menus may have gaps
        choices.emplace_back(index, areNumbers ? std::to_string(std::int64_t{menu.value}) : TextOf(menu.name));
    }
    return choices;
}

bool CV4l2Node::SetControl(std::uint32_t id, int value) const {
    v4l2_control control{};
    control.id = id;
    control.value = value;
    return m_call(VIDIOC_S_CTRL, &control) >= 0;
}

std::vector<CCaptureFormat> CV4l2Node::Formats() const {
    std::vector<CCaptureFormat> formats;
    for (std::uint32_t index = 0; index < mostEntries; ++index) {
        v4l2_fmtdesc description{};
        description.index = index;
        description.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        if (m_call(VIDIOC_ENUM_FMT, &description) < 0)
            break;
        const auto* coding = std::ranges::find(codings, description.pixelformat, &CCoding::pixelFormat);
        if (coding != std::end(codings))
            AddSizes(coding->pixelFormat, {0, 0, 0, coding->name}, formats);
    }
    const auto key = [](const CCaptureFormat& format) {
        return std::tuple(-format.width * format.height, -format.width, -format.rate, RankOf(format.coding));
    };
    std::ranges::sort(formats, {}, key);
    const auto same = [](const CCaptureFormat& a, const CCaptureFormat& b) {
        return a.width == b.width && a.height == b.height && a.rate == b.rate;
    };
    formats.erase(std::unique(formats.begin(), formats.end(), same), formats.end());
    return formats;
}

void CV4l2Node::AddSizes(std::uint32_t pixelFormat, CCaptureFormat format,
                         std::vector<CCaptureFormat>& formats) const {
    // For a device that takes any size.
    constexpr std::array<std::pair<int, int>, 7> usual = {
        {{320, 240}, {640, 480}, {800, 600}, {1024, 768}, {1280, 720}, {1920, 1080}, {3840, 2160}}};
    for (std::uint32_t index = 0; index < mostEntries; ++index) {
        v4l2_frmsizeenum size{};
        size.index = index;
        size.pixel_format = pixelFormat;
        if (m_call(VIDIOC_ENUM_FRAMESIZES, &size) < 0)
            return;
        if (size.type != V4L2_FRMSIZE_TYPE_DISCRETE) {
            for (const auto& [width, height] : usual) {
                format.width = width;
                format.height = height;
                const auto w = static_cast<std::uint32_t>(width);
                const auto h = static_cast<std::uint32_t>(height);
                if (w >= size.stepwise.min_width && w <= size.stepwise.max_width && h >= size.stepwise.min_height &&
                    h <= size.stepwise.max_height)
                    AddRates(pixelFormat, format, formats);
            }
            return;
        }
        if (size.discrete.width > mostPixels || size.discrete.height > mostPixels)
            continue;
        format.width = static_cast<int>(size.discrete.width);
        format.height = static_cast<int>(size.discrete.height);
        AddRates(pixelFormat, format, formats);
    }
}

void CV4l2Node::AddRates(std::uint32_t pixelFormat, CCaptureFormat format,
                         std::vector<CCaptureFormat>& formats) const {
    const std::size_t before = formats.size();
    for (std::uint32_t index = 0; index < mostEntries; ++index) {
        v4l2_frmivalenum interval{};
        interval.index = index;
        interval.pixel_format = pixelFormat;
        interval.width = static_cast<std::uint32_t>(format.width);
        interval.height = static_cast<std::uint32_t>(format.height);
        if (m_call(VIDIOC_ENUM_FRAMEINTERVALS, &interval) < 0)
            break;
        const bool isDiscrete = interval.type == V4L2_FRMIVAL_TYPE_DISCRETE;
        const v4l2_fract& seconds = isDiscrete ? interval.discrete : interval.stepwise.min;
        if (seconds.numerator > 0 && seconds.denominator > 0) {
            format.rate = static_cast<double>(seconds.denominator) / seconds.numerator;
            formats.push_back(format);
        }
        if (!isDiscrete)
            break;
    }
    // A device that does not tell its rates has its own.
    if (formats.size() == before)
        formats.push_back(format);
}

std::vector<std::string> ListV4l2Nodes() {
    std::vector<std::string> nodes;
    for (int number = 0; number < mostNodes; ++number) {
        std::string node = "/dev/video" + std::to_string(number);
        if (::access(node.c_str(), R_OK | W_OK) == 0)
            nodes.push_back(std::move(node));
    }
    return nodes;
}

} // namespace velmor
