#include "app/window/Scanning.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

namespace velmor {

namespace {

constexpr int pollMilliseconds = 30;

/// Shows each message of the window system to a source while the object lives.
class CMessageOffer final : public QAbstractNativeEventFilter {
public:
    explicit CMessageOffer(const std::function<bool(void*)>& offer) : m_offer(offer) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    ~CMessageOffer() override { QCoreApplication::instance()->removeNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        return message != nullptr && m_offer(message);
    }

private:
    const std::function<bool(void*)>& m_offer;
};

} // namespace

CScanning::CScanning(QWidget& window, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile)
    : m_window(window), m_ui(window), m_operations(doc.Model(), doc.Grabs(), prompter, profile, m_ui) {}

void* CScanning::WindowHandle() const {
    return reinterpret_cast<void*>(m_window.winId());
}

void CScanning::SelectSource() {
    m_operations.SelectSource(WindowHandle());
}

void CScanning::ScanCels() {
    Acquire(SourceMode::Cels);
}

void CScanning::ScanPicture() {
    Acquire(SourceMode::Pictures);
}

void CScanning::Acquire(SourceMode kind) {
    // Wakes the loop, so that the scanner is asked for news.
    QTimer poll;
    poll.start(pollMilliseconds);
    m_operations.Acquire(kind, WindowHandle(), [this](const std::function<bool(void*)>& offer) {
        {
            const CMessageOffer messages(offer);
            QEventLoop().processEvents(QEventLoop::WaitForMoreEvents);
        }
        offer(nullptr);
        return m_window.isVisible(); // the program is being left
    });
}

} // namespace velmor
