#include "acquire/CaptureSession.h"

#include "acquire/Bitmap.h"
#include "platform/files/ClaimedFile.h"

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr const char* bitmapName = "Acapture.tmp";

// The rows of a 24-bit bitmap, the top row first.
std::vector<std::uint8_t> TrueColorRows(const CCaptureFrame& frame) {
    std::vector<std::uint8_t> rows(frame.bytes.size() / 4 * 3);
    for (std::size_t pixel = 0; pixel < frame.bytes.size() / 4; ++pixel)
        std::copy_n(frame.bytes.data() + pixel * 4, 3, rows.data() + pixel * 3);
    return rows;
}

} // namespace

CCaptureSession::CCaptureSession(ICaptureDrivers& drivers, Tell tell, Path temporaryFolder, Devices& toldOf)
    : m_drivers(drivers),
      m_tell(std::move(tell)),
      m_temporaryFolder(std::move(temporaryFolder)),
      m_toldOf(toldOf) {}

void CCaptureSession::OpenSetup(const CCaptureChoice& saved) {
    m_descriptions = m_drivers.Descriptions();
    if (m_descriptions.empty())
        m_tell("There are no set capture devices!");
    if (saved.driver == noCaptureDriver)
        return;
    if (std::ranges::find(m_descriptions, saved.driver) != m_descriptions.end())
        static_cast<void>(Connect(saved)); // what failed has been told
    else
        m_tell("The last open capture device is not available, please select an available driver from list.");
}

bool CCaptureSession::Select(const std::string& description) {
    return Connect({description, {}});
}

bool CCaptureSession::Connect(CCaptureChoice choice) {
    static_cast<void>(Disconnect()); // of a device that is gone, or of none
    m_choice = std::move(choice);
    return CreateWindow();
}

bool CCaptureSession::AcceptSetup() const {
    if (m_choice.driver != noCaptureDriver)
        return true;
    m_tell("You must select a valid capture device.");
    return false;
}

bool CCaptureSession::OpenCapture(const CCaptureChoice& saved) {
    if (saved.driver == noCaptureDriver) {
        m_tell("Please select a capture device from capture setup before capturing");
        return false;
    }
    m_descriptions = m_drivers.Descriptions();
    if (std::ranges::find(m_descriptions, saved.driver) == m_descriptions.end()) {
        m_tell("The selected device in setup was not found, please make capture setup again to select a valid "
               "capture device");
        return false;
    }
    if (Connect(saved))
        return true;
    m_tell("Could not open the capture window, please make capture setup.");
    return false;
}

bool CCaptureSession::CreateWindow() {
    m_device = m_drivers.Create(m_choice.driver, m_choice.format);
    if (!m_device) {
        m_tell("Could not create a capture window");
        return false;
    }
    if (!m_device->Connect()) {
        m_device.reset();
        m_tell("Could not connect to selected capture driver");
        return false;
    }
    m_isOverlay = false;
    if (!m_device->HasOverlay() && m_toldOf.insert(m_choice.driver).second)
        m_tell("Notice : This source does not have a video overlay capability!");
    return true;
}

bool CCaptureSession::Disconnect() {
    const bool disconnected = !m_device || m_device->Disconnect();
    m_device.reset();
    m_isOverlay = false;
    if (!disconnected)
        m_tell("Fatal error : Could not disconnect capture driver");
    return disconnected;
}

std::optional<CSize> CCaptureSession::WindowSize() const {
    if (m_device) {
        const CCaptureFormat format = m_device->Format();
        return CSize{format.width, format.height};
    }
    m_tell("Internal error : PositionWindows Called with no capture window!");
    return std::nullopt;
}

void CCaptureSession::ShowOverlay() {
    if (!HasOverlay())
        return;
    m_isOverlay = true;
    m_device->SetOverlay(true);
}

void CCaptureSession::ShowPreview() {
    if (!m_device)
        return;
    m_isOverlay = false;
    m_device->SetOverlay(false);
    if (m_device->HasFailed() && !m_device->Connect())
        m_tell("Could not connect to selected capture driver");
}

std::shared_ptr<const CCaptureFrame> CCaptureSession::ShownFrame() const {
    if (m_handedOver)
        return m_handedOver;
    return m_device && !m_isOverlay && !m_device->HasFailed() ? m_device->LatestFrame() : nullptr;
}

std::vector<CCaptureControl> CCaptureSession::SourceControls() const {
    std::vector<CCaptureControl> controls = m_device ? m_device->Controls() : std::vector<CCaptureControl>{};
    if (controls.empty())
        m_tell("This capture device has no Source dialog!");
    return controls;
}

std::vector<CCaptureFormat> CCaptureSession::Formats() const {
    std::vector<CCaptureFormat> formats = m_device ? m_device->Formats() : std::vector<CCaptureFormat>{};
    if (formats.empty())
        m_tell("This capture device has no format dialog!");
    return formats;
}

bool CCaptureSession::SetFormat(const CCaptureFormat& format) {
    if (m_device && m_device->SetFormat(format)) {
        m_choice.format = format;
        return true;
    }
    m_tell("The capture device does not take this format.");
    return false;
}

bool CCaptureSession::Grab(const HandOver& handOver) {
    if (!m_device) {
        m_tell("Internal error : OnCapture Called with no capture window!");
        return false;
    }
    m_device->SetOverlay(false);
    const bool grabbed = GrabStopped(handOver);
    m_handedOver.reset();
    m_device->SetOverlay(m_isOverlay);
    return grabbed;
}

bool CCaptureSession::GrabStopped(const HandOver& handOver) {
    const std::shared_ptr<const CCaptureFrame> frame = m_device->GrabFrame();
    if (!frame) {
        m_tell("Could not grab a frame!");
        return false;
    }
    m_handedOver = frame;
    // All users share the temporary folder: what is in one of our own nobody can have put there before.
    const std::optional<CClaimedFolder> folder = CClaimedFolder::Make(m_temporaryFolder);
    if (!folder || !Save(*frame, folder->File(bitmapName))) {
        m_tell("Could not save a grabbed frame! Is windows disk full??");
        return false;
    }
    const bool kept = handOver(folder->File(bitmapName));
    if (kept) {
        m_lastGrabbed = frame;
        ++m_grabbedCount;
    }
    return kept;
}

bool CCaptureSession::Save(const CCaptureFrame& frame, const Path& file) const {
    const PackedBitmap bitmap = PackTrueColor(frame.width, frame.height, TrueColorRows(frame));
    return !bitmap.empty() && WriteFileAtomically(file, BitmapFileOf(bitmap));
}

} // namespace velmor
