#pragma once

#include "image/Geometry.h"
#include "platform/camera/CaptureDriver.h"
#include "platform/files/Files.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace velmor {

/// The selected driver's name where none is selected.
inline constexpr const char* noCaptureDriver = "<None Selected>";

/// What is chosen in setup and kept from one run to the next.
struct CCaptureChoice {
    std::string driver = noCaptureDriver;
    CCaptureFormat format; ///< width 0 until the user has chosen one
};

/// What the two capture dialogs do, without their windows: the list of drivers, the connection to one of them, how
/// its picture is shown, and the steps of grabbing a frame. Says with the system's texts what goes wrong.
class CCaptureSession {
public:
    using Tell = std::function<void(const std::string& text)>;
    /// Takes the bitmap file of a grabbed frame, which is gone afterwards. False when nothing was kept.
    using HandOver = std::function<bool(const Path& bitmapFile)>;

    /// Descriptions of devices.
    using Devices = std::set<std::string, std::less<>>;

    /// All that is given by reference outlives the session. Grabbed frames pass through a file in
    /// a folder of their own in `temporaryFolder`. Of a device in `toldOf` it is not told again that it has no
    /// overlay; others are put there.
    CCaptureSession(ICaptureDrivers& drivers, Tell tell, Path temporaryFolder, Devices& toldOf);
    CCaptureSession(const CCaptureSession&) = delete;
    CCaptureSession& operator=(const CCaptureSession&) = delete;

    /// The setup dialog opens: lists the drivers and connects the saved one if it is among them. What is told of
    /// its absence leaves nothing selected.
    void OpenSetup(const CCaptureChoice& saved);
    const std::vector<std::string>& Descriptions() const { return m_descriptions; }
    const std::string& Selected() const { return m_choice.driver; }
    const CCaptureChoice& Choice() const { return m_choice; }
    /// Selects a driver and connects it, in place of the one before. A driver that cannot be connected is selected
    /// all the same.
    [[nodiscard]] bool Select(const std::string& description);
    /// Whether the setup dialog may close with OK.
    [[nodiscard]] bool AcceptSetup() const;

    /// The capture dialog opens with the driver that was chosen in setup.
    [[nodiscard]] bool OpenCapture(const CCaptureChoice& saved);

    bool IsConnected() const { return m_device != nullptr; }
    /// The device was connected and gives no more frames.
    bool HasFailed() const { return m_device && m_device->HasFailed(); }
    /// Also when it fails, and then it says so, the device is let go.
    [[nodiscard]] bool Disconnect();
    /// Size of the device's picture, which the windows are laid out around.
    std::optional<CSize> WindowSize() const;
    /// Not to be called while nothing is connected.
    ICaptureDevice& Device() { return *m_device; }
    const ICaptureDevice& Device() const { return *m_device; }

    bool HasOverlay() const { return m_device && m_device->HasOverlay(); }
    bool IsOverlay() const { return m_isOverlay; }
    /// The device shows its picture itself.
    void ShowOverlay();
    /// We show it. A device that has failed is connected anew.
    void ShowPreview();
    /// The frame to be shown: the newest, or while one is handed over that one. Null when there is none.
    std::shared_ptr<const CCaptureFrame> ShownFrame() const;

    /// What "Video Source" and "Video Format" offer; tell when there is nothing.
    std::vector<CCaptureControl> SourceControls() const;
    std::vector<CCaptureFormat> Formats() const;
    /// Tells when the device does not take it.
    [[nodiscard]] bool SetFormat(const CCaptureFormat& format);

    /// Grabs one frame and hands it over. False when one of the steps failed, which has been told.
    [[nodiscard]] bool Grab(const HandOver& handOver);
    /// The last frame that was grabbed and kept.
    std::shared_ptr<const CCaptureFrame> LastGrabbed() const { return m_lastGrabbed; }
    int GrabbedCount() const { return m_grabbedCount; }

private:
    [[nodiscard]] bool CreateWindow();
    [[nodiscard]] bool Connect(CCaptureChoice choice);
    [[nodiscard]] bool GrabStopped(const HandOver& handOver);
    [[nodiscard]] bool Save(const CCaptureFrame& frame, const Path& file) const;

    ICaptureDrivers& m_drivers;
    Tell m_tell;
    Path m_temporaryFolder;
    Devices& m_toldOf;
    std::vector<std::string> m_descriptions;
    CCaptureChoice m_choice;
    std::unique_ptr<ICaptureDevice> m_device;
    bool m_isOverlay = false;
    std::shared_ptr<const CCaptureFrame> m_handedOver; ///< null while the display runs
    std::shared_ptr<const CCaptureFrame> m_lastGrabbed;
    int m_grabbedCount = 0;
};

} // namespace velmor
