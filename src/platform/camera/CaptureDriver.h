#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velmor {

/// A frame of a camera: 4 bytes a pixel (blue, green, red, unused), rows packed, the top row first.
struct CCaptureFrame {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
    std::uint64_t number = 0; ///< counts the good frames since the device was connected, from 1
};

/// A kind of frames that a device offers.
struct CCaptureFormat {
    int width = 0;
    int height = 0;
    double rate = 0;    ///< frames a second; 0 when it is not known
    std::string coding; ///< of the pixels; empty where that is left to the device

    bool operator==(const CCaptureFormat&) const = default;
};

enum class CaptureControlKind { Number, Switch, Menu };

/// Something of a device that can be set: brightness, focus and the like.
struct CCaptureControl {
    std::uint32_t id = 0;
    std::string name;
    CaptureControlKind kind = CaptureControlKind::Number;
    int least = 0;
    int most = 0;
    int step = 1;
    int usual = 0; ///< what the device starts with
    int value = 0;
    bool isActive = true; ///< false while another control decides, as an automatic one does
    std::vector<std::pair<int, std::string>> choices; ///< of a menu: values and their names
};

/// A capture device. While it is connected a thread of its own reads frames at the device's rate and keeps the
/// newest one only. Calls come from one thread. The destructor disconnects.
class ICaptureDevice {
public:
    virtual ~ICaptureDevice() = default;

    /// Opens the device and starts its frames. A device that is connected or has failed is opened anew.
    [[nodiscard]] virtual bool Connect() = 0;
    /// False when the device could not be closed. Closing a closed device succeeds.
    [[nodiscard]] virtual bool Disconnect() = 0;
    /// True once the device has ended, vanished or fallen silent. It stays so until it is connected again.
    virtual bool HasFailed() const = 0;

    /// Of the frames that come; all are of that size.
    virtual CCaptureFormat Format() const = 0;
    /// Null before the first frame. Never waits.
    virtual std::shared_ptr<const CCaptureFrame> LatestFrame() const = 0;
    /// Waits, a few seconds at the most, for a frame that comes after the call; null when there is none.
    virtual std::shared_ptr<const CCaptureFrame> GrabFrame() = 0;
    /// Frames that were damaged, short or of another size than promised. They are never handed out.
    virtual int DroppedFrames() const = 0;

    /// Whether the device can show its picture on the screen by itself.
    virtual bool HasOverlay() const { return false; }
    virtual void SetOverlay(bool) {}

    /// With their present values; empty when nothing can be set.
    virtual std::vector<CCaptureControl> Controls() const { return {}; }
    [[nodiscard]] virtual bool SetControl(std::uint32_t, int) { return false; }
    /// The largest first; empty when there is nothing to choose.
    virtual std::vector<CCaptureFormat> Formats() const { return {}; }
    /// Starts the frames again in another format. On failure the old one goes on.
    [[nodiscard]] virtual bool SetFormat(const CCaptureFormat&) { return false; }
};

/// The capture drivers of this machine, told apart by their descriptions.
class ICaptureDrivers {
public:
    static constexpr std::size_t mostDrivers = 10;

    virtual ~ICaptureDrivers() = default;
    /// Those of now, at most `mostDrivers`, no two alike.
    virtual std::vector<std::string> Descriptions() = 0;
    /// Null when there is no such driver. The device is to connect with frames of a format, or with its own where
    /// the width is 0 or it does not take that one.
    virtual std::unique_ptr<ICaptureDevice> Create(const std::string& description,
                                                   const CCaptureFormat& wanted) = 0;
};

/// A device that does not exist: its frames come from a graph of FFmpeg's filters, for example
/// "testsrc2=size=320x240:rate=25".
struct CVirtualCamera {
    std::string description;
    std::string graph;
};

/// The drivers of this machine, and behind them the given ones.
std::unique_ptr<ICaptureDrivers> MakeCaptureDrivers(std::vector<CVirtualCamera> virtualCameras);

} // namespace velmor
