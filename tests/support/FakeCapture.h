#pragma once

#include "platform/camera/CaptureDriver.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmor::testing {

/// A frame of one colour.
inline std::shared_ptr<CCaptureFrame> PlainFrame(int width, int height, int blue, int green, int red) {
    auto frame = std::make_shared<CCaptureFrame>();
    frame->width = width;
    frame->height = height;
    for (int pixel = 0; pixel < width * height; ++pixel)
        for (const int value : {blue, green, red, 255})
            frame->bytes.push_back(static_cast<std::uint8_t>(value));
    return frame;
}

/// Drivers whose one kind of device does what a test has put here, and notes what is asked of it.
class CFakeCapture final : public ICaptureDrivers {
public:
    std::vector<std::string> descriptions = {"Stand camera", "Table camera"};
    bool canCreate = true;
    bool canConnect = true;
    bool canDisconnect = true;
    bool hasOverlay = false;
    bool hasFailed = false;
    bool canSetFormat = true;
    CCaptureFormat format{8, 6, 25, {}};
    std::shared_ptr<const CCaptureFrame> frame = PlainFrame(8, 6, 10, 20, 30);
    std::vector<CCaptureControl> controls;
    std::vector<CCaptureFormat> formats;
    std::vector<std::string> calls;

    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    std::vector<std::string> Descriptions() override { return descriptions; }
    std::unique_ptr<ICaptureDevice> Create(const std::string& description, const CCaptureFormat& wanted) override {
        calls.push_back("create " + description);
        if (wanted.width > 0)
            format = wanted;
        return canCreate ? std::make_unique<CDevice>(*this) : nullptr;
    }

private:
    class CDevice final : public ICaptureDevice {
    public:
        explicit CDevice(CFakeCapture& script) : m_script(script) {}

        bool Connect() override {
            m_script.calls.emplace_back("connect");
            m_script.hasFailed = m_script.hasFailed && !m_script.canConnect;
            return m_script.canConnect;
        }
        bool Disconnect() override {
            m_script.calls.emplace_back("disconnect");
            return m_script.canDisconnect;
        }
        bool HasFailed() const override { return m_script.hasFailed; }
        CCaptureFormat Format() const override { return m_script.format; }
        std::shared_ptr<const CCaptureFrame> LatestFrame() const override { return m_script.frame; }
        std::shared_ptr<const CCaptureFrame> GrabFrame() override {
            m_script.calls.emplace_back("grab");
            return m_script.hasFailed ? nullptr : m_script.frame;
        }
        int DroppedFrames() const override { return 0; }
        bool HasOverlay() const override { return m_script.hasOverlay; }
        void SetOverlay(bool on) override { m_script.calls.emplace_back(on ? "overlay on" : "overlay off"); }
        std::vector<CCaptureControl> Controls() const override { return m_script.controls; }
        bool SetControl(std::uint32_t id, int value) override {
            const auto control = std::ranges::find(m_script.controls, id, &CCaptureControl::id);
            control->value = value;
            m_script.calls.push_back("set " + control->name + " " + std::to_string(value));
            return true;
        }
        std::vector<CCaptureFormat> Formats() const override { return m_script.formats; }
        bool SetFormat(const CCaptureFormat& chosen) override {
            if (m_script.canSetFormat)
                m_script.format = chosen;
            return m_script.canSetFormat;
        }

    private:
        CFakeCapture& m_script;
    };
};

} // namespace velmor::testing
