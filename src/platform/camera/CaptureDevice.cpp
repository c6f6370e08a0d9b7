#include "platform/camera/CaptureDevice.h"

#include "platform/movie/MovieLibrary.h"

#include <new>
#include <system_error>
#include <utility>

namespace velmor {

namespace {

constexpr std::chrono::milliseconds pollInterval{3}; // of a device that has no frame at the moment
constexpr std::chrono::seconds silence{5};           // after which a device counts as gone
constexpr std::chrono::seconds grabPatience{3};

} // namespace

bool CCaptureDevice::Start(const CCaptureFormat& wanted) {
    Stop();
    try {
        const IMovieLibrary* library = MovieLibrary();
        m_input = library != nullptr ? library->OpenCapture(m_source, wanted) : nullptr;
        if (m_input) {
            m_format = m_input->Format();
            m_format.coding = wanted.coding;
            m_thread = std::thread([this] { Read(); });
            return true;
        }
    } catch (const std::bad_alloc&) {
        // No device, then.
    } catch (const std::system_error&) {
        // No thread to read it.
    }
    m_input.reset();
    m_failed = true;
    return false;
}

void CCaptureDevice::Stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
    m_input.reset();
    m_latest.reset();
    m_frames = 0;
    m_dropped = 0;
    m_stopping = false;
    m_failed = false;
}

bool CCaptureDevice::Disconnect() {
    Stop();
    return true;
}

bool CCaptureDevice::SetFormat(const CCaptureFormat& format) {
    const CCaptureFormat old = m_wanted;
    if (!Start(format)) {
        static_cast<void>(Start(old)); // or the device counts as failed
        return false;
    }
    m_wanted = format;
    return true;
}

bool CCaptureDevice::HasFailed() const {
    const std::lock_guard lock(m_mutex);
    return m_failed;
}

int CCaptureDevice::DroppedFrames() const {
    const std::lock_guard lock(m_mutex);
    return m_dropped;
}

std::shared_ptr<const CCaptureFrame> CCaptureDevice::LatestFrame() const {
    const std::lock_guard lock(m_mutex);
    return m_latest;
}

std::shared_ptr<const CCaptureFrame> CCaptureDevice::GrabFrame() {
    if (!m_thread.joinable())
        return nullptr;
    std::unique_lock lock(m_mutex);
    const std::uint64_t before = m_frames;
    m_changed.wait_for(lock, grabPatience, [&] { return m_failed || m_frames > before; });
    return m_frames > before ? m_latest : nullptr;
}

void CCaptureDevice::Read() {
    try {
        ReadUntilStopped();
    } catch (const std::bad_alloc&) {
        // The frames end here.
    }
    const std::lock_guard lock(m_mutex);
    m_failed = true;
    m_changed.notify_all();
}

void CCaptureDevice::ReadUntilStopped() {
    const Clock::time_point start = Clock::now();
    Clock::time_point lastGood = start;
    while (WaitUntil({})) {
        auto frame = std::make_shared<CCaptureFrame>();
        const ICaptureInput::Result result = m_input->Read(*frame);
        const Clock::time_point now = Clock::now();
        if (result == ICaptureInput::Result::Frame) {
            if (!m_source.hasClock && !WaitUntil(start + m_input->TimeOfFrame()))
                return;
            Publish(std::move(frame));
            lastGood = Clock::now();
            continue;
        }
        if (result == ICaptureInput::Result::Bad) {
            const std::lock_guard lock(m_mutex);
            ++m_dropped;
        }
        if (result == ICaptureInput::Result::Ended || now - lastGood > silence || !WaitUntil(now + pollInterval))
            return;
    }
}

bool CCaptureDevice::WaitUntil(Clock::time_point time) {
    std::unique_lock lock(m_mutex);
    return !m_changed.wait_until(lock, time, [this] { return m_stopping; });
}

void CCaptureDevice::Publish(std::shared_ptr<CCaptureFrame> frame) {
    std::shared_ptr<const CCaptureFrame> old; // freed outside the lock
    {
        const std::lock_guard lock(m_mutex);
        frame->number = ++m_frames;
        old = std::exchange(m_latest, std::move(frame));
    }
    m_changed.notify_all();
}

} // namespace velmor
