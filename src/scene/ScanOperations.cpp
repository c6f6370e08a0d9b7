#include "scene/ScanOperations.h"

#include "acquire/InstalledSourceManager.h"
#include "acquire/SaneSourceManager.h"
#include "platform/scanner/SaneScanner.h"
#include "scene/GrabOperations.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"

#include <cmath>

namespace velmor {

namespace {

constexpr double tenths = 10; // of a millimetre
constexpr const char* notFound = "No scanner was found. Is it connected and switched on?";
constexpr const char* notOpened = "The scanner could not be opened. Is another program using it?";

/// Sets a flag while it lives.
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

struct CScanOperations::CScanners {
    explicit CScanners(IScannerUi& ui) : builtIn(scanner, ui) {}

    CSaneScanner scanner{CSaneScanner::UsualProcess()};
    CSaneSourceManager builtIn;
    CSourceManagerLibrary library;
    CInstalledSourceManager manager{library, builtIn};
};

CScanOperations::CScanOperations(const CSceneModel& model, CGrabOperations& grabs, IPrompter& prompter,
                                 CProfile& profile, IScannerUi& ui)
    : m_model(model), m_grabs(grabs), m_prompter(prompter), m_profile(profile), m_ui(ui) {}

CScanOperations::~CScanOperations() = default;

CScanOperations::CScanners& CScanOperations::Scanners() {
    if (!m_scanners) {
        m_scanners = std::make_unique<CScanners>(m_ui);
        m_scanners->builtIn.SetDefaultScanner(
            {Get(m_profile, setting::scannerDevice), Get(m_profile, setting::scannerLabel)});
        m_scanners->builtIn.SetSettings(SettingsOf(m_profile));
    }
    return *m_scanners;
}

ISourceManager& CScanOperations::Manager() {
    return m_manager != nullptr ? *m_manager : Scanners().manager;
}

void CScanOperations::Remember() {
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

void CScanOperations::SelectSource(void* window) {
    if (m_isRunning)
        return;
    const CRunning running(m_isRunning);
    CTwainSession session(Manager(), window);
    if (!session.SelectSource() && session.ReturnCode() != twain::TWRC_CANCEL)
        m_prompter.ShowStatus(notFound);
    Remember();
}

void CScanOperations::Acquire(SourceMode kind, void* window, const MessageStep& step) {
    if (m_isRunning || !m_grabs.CanGrab(kind))
        return;
    const CRunning running(m_isRunning);
    CScanSettings settings = Scanners().builtIn.Settings();
    settings.mode = kind == SourceMode::Cels ? ScanMode::LineArt : ScanMode::Color;
    settings.threshold = m_model.importThreshold;
    Scanners().builtIn.SetSettings(settings);

    CTwainSession session(Manager(), window);
    const auto handOver = [this, kind](std::span<const std::uint8_t> page) {
        static_cast<void>(m_grabs.GetDataFromDIB(page, kind)); // it has shown what went wrong
    };
    if (!session.Acquire(step, handOver))
        m_prompter.ShowStatus(session.ConditionCode() == twain::TWCC_NODS ? notFound : notOpened);
    Remember();
}

} // namespace velmor
