#pragma once

#include "platform/camera/CaptureDriver.h"
#include "platform/camera/CaptureInput.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace velmor {

/// A capture device behind FFmpeg, with the thread that reads it.
class CCaptureDevice : public ICaptureDevice {
public:
    CCaptureDevice(CCaptureSource source, CCaptureFormat wanted)
        : m_source(std::move(source)), m_wanted(std::move(wanted)) {}
    ~CCaptureDevice() override { Stop(); }

    [[nodiscard]] bool Connect() override { return Start(m_wanted) || (m_wanted.width > 0 && Start({})); }
    [[nodiscard]] bool Disconnect() override;
    bool HasFailed() const override;
    CCaptureFormat Format() const override { return m_format; }
    std::shared_ptr<const CCaptureFrame> LatestFrame() const override;
    std::shared_ptr<const CCaptureFrame> GrabFrame() override;
    int DroppedFrames() const override;
    [[nodiscard]] bool SetFormat(const CCaptureFormat& format) override;

protected:
    const CCaptureSource& Source() const { return m_source; }

private:
    using Clock = ICaptureInput::Clock;

    [[nodiscard]] bool Start(const CCaptureFormat& wanted);
    void Stop();
    // On the device's thread.
    void Read();
    void ReadUntilStopped();
    /// False when the device is to stop.
    bool WaitUntil(Clock::time_point time);
    void Publish(std::shared_ptr<CCaptureFrame> frame);

    CCaptureSource m_source;
    CCaptureFormat m_wanted; ///< width 0: whatever the device gives
    CCaptureFormat m_format;
    std::unique_ptr<ICaptureInput> m_input; ///< the thread's while it runs

    mutable std::mutex m_mutex; ///< for what follows
    std::condition_variable m_changed;
    std::shared_ptr<const CCaptureFrame> m_latest;
    std::uint64_t m_frames = 0;
    int m_dropped = 0;
    bool m_stopping = false;
    bool m_failed = false;
    std::thread m_thread;
};

} // namespace velmor
