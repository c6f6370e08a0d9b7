#include "app/window/Scanning.h"

#include "acquire/InstalledSourceManager.h"
#include "acquire/SaneSourceManager.h"
#include "acquire/TwainSession.h"
#include "platform/scanner/SaneScanner.h"
#include "scene/GrabOperations.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/VelmorltDoc.h"
#include "views/scan/ScanUi.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <cmath>

namespace velmor {

namespace {

constexpr int pollMilliseconds = 30;
constexpr double tenths = 10; // of a millimetre
constexpr const char* notFound = "No scanner was found. Is it connected and switched on?";
constexpr const char* notOpened = "The scanner could not be opened. Is another program using it?";

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

/// A command at a time: while a scanner's own window is open, ours may be enabled.
class CRunning {
public:
    explicit CRunning(bool& flag) : m_flag(flag) { m_flag = true; }
    CRunning(const CRunning&) = delete;
    CRunning& operator=(const CRunning&) = delete;
    ~CRunning() { m_flag = false; }

private:
    bool& m_flag;
};

int Stored(double millimetres) {
    return static_cast<int>(std::lround(millimetres * tenths));
}

CScanSettings SettingsOf(const CProfile& profile) {
    const auto length = [&](const CIntSetting& which) { return Get(profile, which) / tenths; };
    CScanSettings settings;
    settings.resolution = Get(profile, setting::scannerResolution);
    settings.feeder = Get(profile, setting::scannerFeeder) != 0;
    settings.area = {length(setting::scannerLeft), length(setting::scannerTop), length(setting::scannerWidth),
                     length(setting::scannerHeight)};
    return settings;
}

} // namespace

struct CScanning::CScanners {
    explicit CScanners(QWidget& window) : ui(window) {}

    CSaneScanner scanner{CSaneScanner::UsualProcess()};
    CScanUi ui;
    CSaneSourceManager builtIn{scanner, ui};
    CSourceManagerLibrary library;
    CInstalledSourceManager manager{library, builtIn};
};

CScanning::CScanning(QWidget& window, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile)
    : m_window(window), m_doc(doc), m_prompter(prompter), m_profile(profile) {}

CScanning::~CScanning() = default;

CScanning::CScanners& CScanning::Scanners() {
    if (!m_scanners) {
        m_scanners = std::make_unique<CScanners>(m_window);
        m_scanners->builtIn.SetDefaultScanner(
            {Get(m_profile, setting::scannerDevice), Get(m_profile, setting::scannerLabel)});
        m_scanners->builtIn.SetSettings(SettingsOf(m_profile));
    }
    return *m_scanners;
}

void* CScanning::WindowHandle() const {
    return reinterpret_cast<void*>(m_window.winId());
}

void CScanning::Remember() {
    const CSaneSourceManager& builtIn = Scanners().builtIn;
    const CScanSettings& settings = builtIn.Settings();
    const CScannerDevice& scanner = builtIn.DefaultScanner();
    if (Get(m_profile, setting::scannerDevice) != scanner.name) {
        Set(m_profile, setting::scannerDevice, scanner.name);
        Set(m_profile, setting::scannerLabel, scanner.label);
    }
    const auto remember = [this](const CIntSetting& which, int value) {
        if (Get(m_profile, which) != value)
            Set(m_profile, which, value);
    };
    remember(setting::scannerResolution, settings.resolution);
    remember(setting::scannerFeeder, settings.feeder ? 1 : 0);
    remember(setting::scannerLeft, Stored(settings.area.left));
    remember(setting::scannerTop, Stored(settings.area.top));
    remember(setting::scannerWidth, Stored(settings.area.width));
    remember(setting::scannerHeight, Stored(settings.area.height));
}

void CScanning::SelectSource() {
    if (m_isRunning)
        return;
    const CRunning running(m_isRunning);
    CTwainSession session(Scanners().manager, WindowHandle());
    if (!session.SelectSource() && session.ReturnCode() != twain::TWRC_CANCEL)
        m_prompter.ShowStatus(notFound);
    Remember();
}

void CScanning::ScanCels() {
    Acquire(SourceMode::Cels, ScanMode::LineArt);
}

void CScanning::ScanPicture() {
    Acquire(SourceMode::Pictures, ScanMode::Color);
}

void CScanning::Acquire(SourceMode kind, ScanMode mode) {
    if (m_isRunning || !m_doc.Grabs().CanGrab(kind))
        return;
    const CRunning running(m_isRunning);
    CScanSettings settings = Scanners().builtIn.Settings();
    settings.mode = mode;
    settings.threshold = m_doc.Model().importThreshold;
    Scanners().builtIn.SetSettings(settings);

    // Wakes the loop, so that the scanner is asked for news.
    QTimer poll;
    poll.start(pollMilliseconds);
    const auto step = [this](const std::function<bool(void*)>& offer) {
        {
            const CMessageOffer messages(offer);
            QEventLoop().processEvents(QEventLoop::WaitForMoreEvents);
        }
        offer(nullptr);
        return m_window.isVisible(); // the program is being left
    };
    CTwainSession session(Scanners().manager, WindowHandle());
    const auto handOver = [this, kind](std::span<const std::uint8_t> page) {
        static_cast<void>(m_doc.Grabs().GetDataFromDIB(page, kind)); // it has shown what went wrong
    };
    if (!session.Acquire(step, handOver))
        m_prompter.ShowStatus(session.ConditionCode() == twain::TWCC_NODS ? notFound : notOpened);
    Remember();
}

} // namespace velmor
