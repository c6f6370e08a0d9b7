#include "platform/camera/V4l2Node.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <linux/videodev2.h>
#include <map>

namespace velmor::testing {
namespace {

constexpr std::uint32_t brightness = V4L2_CID_BRIGHTNESS;
constexpr std::uint32_t focus = V4L2_CID_FOCUS_ABSOLUTE;
constexpr std::uint32_t powerLine = V4L2_CID_POWER_LINE_FREQUENCY;

template<std::size_t Size>
void Write(__u8 (&field)[Size], const char* text) {
    std::memcpy(field, text, std::min(Size, std::strlen(text)));
}

/// A camera as its driver would answer.
class CFakeCamera {
public:
    std::uint32_t nodeCan = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
    bool endsLists = true;
    std::map<std::uint32_t, int> values = {{brightness, 7}, {powerLine, 2}, {focus, 50}};

    CV4l2Node Node() {
        return CV4l2Node([this](unsigned long request, void* argument) { return Call(request, argument); });
    }

private:
    static int Refuse() {
        errno = EINVAL;
        return -1;
    }

    int Call(unsigned long request, void* argument) {
        switch (request) {
        case VIDIOC_QUERYCAP:
            return Describe(*static_cast<v4l2_capability*>(argument));
        case VIDIOC_QUERYCTRL:
            return Describe(*static_cast<v4l2_queryctrl*>(argument));
        case VIDIOC_QUERYMENU:
            return Describe(*static_cast<v4l2_querymenu*>(argument));
        case VIDIOC_G_CTRL: {
            auto& control = *static_cast<v4l2_control*>(argument);
            control.value = values.at(control.id);
            return 0;
        }
        case VIDIOC_S_CTRL: {
            const auto& control = *static_cast<v4l2_control*>(argument);
            values.at(control.id) = control.value;
            return 0;
        }
        case VIDIOC_ENUM_FMT:
            return Describe(*static_cast<v4l2_fmtdesc*>(argument));
        case VIDIOC_ENUM_FRAMESIZES:
            return Describe(*static_cast<v4l2_frmsizeenum*>(argument));
        case VIDIOC_ENUM_FRAMEINTERVALS:
            return Describe(*static_cast<v4l2_frmivalenum*>(argument));
        default:
            return Refuse();
        }
    }

    int Describe(v4l2_capability& capability) const {
        Write(capability.card, "A camera whose name fills the field to its end");
        capability.capabilities = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING | V4L2_CAP_DEVICE_CAPS;
        capability.device_caps = nodeCan;
        return 0;
    }
    int Describe(v4l2_queryctrl& query) const {
        const std::uint32_t after = query.id & ~V4L2_CTRL_FLAG_NEXT_CTRL;
        if (after < brightness || !endsLists) {
            query = {brightness, V4L2_CTRL_TYPE_INTEGER, "Brightness", 0, 255, 5, 128, 0, {}};
        } else if (after < powerLine) {
            query = {powerLine, V4L2_CTRL_TYPE_MENU, "Power Line", 0, 2, 1, 1, 0, {}};
        } else if (after < V4L2_CID_CAMERA_CLASS) {
            query = {V4L2_CID_CAMERA_CLASS,
                     V4L2_CTRL_TYPE_CTRL_CLASS,
                     "Camera Controls",
                     0,
                     0,
                     0,
                     0,
                     V4L2_CTRL_FLAG_READ_ONLY,
                     {}};
        } else if (after < focus) {
            query = {focus, V4L2_CTRL_TYPE_INTEGER, "Focus", 0, 100, 0, 10, V4L2_CTRL_FLAG_INACTIVE, {}};
        } else {
            return Refuse();
        }
        return 0;
    }
    static int Describe(v4l2_querymenu& menu) {
        if (menu.index == 1)
            return Refuse();
        std::strcpy(reinterpret_cast<char*>(&menu) + offsetof(v4l2_querymenu, name),
                    menu.index == 0 ? "Disabled" : "60 Hz"); // the structure is packed
        return 0;
    }
    static int Describe(v4l2_fmtdesc& format) {
        constexpr std::uint32_t formats[] = {V4L2_PIX_FMT_MJPEG, V4L2_PIX_FMT_H264, V4L2_PIX_FMT_YUYV};
        if (format.index >= std::size(formats))
            return Refuse();
        format.pixelformat = formats[format.index];
        return 0;
    }
    static int Describe(v4l2_frmsizeenum& size) {
        const bool isLarge = size.index == 1 && size.pixel_format == V4L2_PIX_FMT_MJPEG;
        if (size.index > 0 && !isLarge)
            return Refuse();
        size.type = V4L2_FRMSIZE_TYPE_DISCRETE;
        size.discrete = isLarge ? v4l2_frmsize_discrete{1280, 720} : v4l2_frmsize_discrete{640, 480};
        return 0;
    }
    static int Describe(v4l2_frmivalenum& interval) {
        if (interval.index > 0 || interval.width == 1280)
            return Refuse();
        interval.type = V4L2_FRMIVAL_TYPE_DISCRETE;
        interval.discrete = {1, 30};
        return 0;
    }
};

} // namespace

TEST(V4l2NodeTest, OnlyNodesThatFramesComeFromHaveAName) {
    CFakeCamera camera;
    EXPECT_EQ(camera.Node().CardName(), "A camera whose name fills the fi");
    camera.nodeCan = V4L2_CAP_META_CAPTURE | V4L2_CAP_STREAMING;
    EXPECT_EQ(camera.Node().CardName(), std::nullopt) << "the device can, this node of it cannot";
    EXPECT_EQ(CV4l2Node([](unsigned long, void*) { return -1; }).CardName(), std::nullopt);
    EXPECT_FALSE(CV4l2Node::Open("/dev/no such node").has_value());
}

TEST(V4l2NodeTest, ControlsHaveRangesValuesAndChoices) {
    CFakeCamera camera;
    const std::vector<CCaptureControl> controls = camera.Node().Controls();
    ASSERT_EQ(controls.size(), 3U);
    EXPECT_EQ(controls[0].name, "Brightness");
    EXPECT_EQ(controls[0].most, 255);
    EXPECT_EQ(controls[0].usual, 128);
    EXPECT_EQ(controls[0].value, 7);
    EXPECT_TRUE(controls[0].isActive);
    EXPECT_EQ(controls[1].kind, CaptureControlKind::Menu);
    EXPECT_EQ(controls[1].choices, (std::vector<std::pair<int, std::string>>{{0, "Disabled"}, {2, "60 Hz"}}));
    EXPECT_EQ(controls[2].step, 1) << "a step of 0 would lead nowhere";
    EXPECT_FALSE(controls[2].isActive);
    EXPECT_TRUE(camera.Node().SetControl(brightness, 99));
    EXPECT_EQ(camera.values[brightness], 99);
    camera.endsLists = false;
    EXPECT_LT(camera.Node().Controls().size(), 1000U);
}

TEST(V4l2NodeTest, FormatsAreSortedAndEachSizeAndRateStandsOnce) {
    const std::vector<CCaptureFormat> expected = {{1280, 720, 0, "mjpeg"}, {640, 480, 30, "yuyv422"}};
    EXPECT_EQ(CFakeCamera().Node().Formats(), expected);
}

} // namespace velmor::testing
