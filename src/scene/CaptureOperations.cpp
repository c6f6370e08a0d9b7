#include "scene/CaptureOperations.h"

#include "platform/files/SystemPaths.h"
#include "scene/GrabOperations.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace velmor {

namespace {

// Width, height, rate and coding.
constexpr CStringSetting captureFormat{"Window", "Capture Format", ""};

} // namespace

CCaptureOperations::CCaptureOperations(const CSceneModel& model, CGrabOperations& grabs, IPrompter& prompter,
                                       CProfile& profile)
    : m_model(model), m_grabs(grabs), m_prompter(prompter), m_profile(profile) {}

CCaptureOperations::~CCaptureOperations() = default;

void CCaptureOperations::UseDrivers(std::unique_ptr<ICaptureDrivers> drivers) {
    m_drivers = std::move(drivers);
}

CCaptureSession CCaptureOperations::Session() {
    if (!m_drivers)
        m_drivers = MakeCaptureDrivers({});
    const auto tell = [this](const std::string& text) { m_prompter.ShowMessage(text); };
    return {*m_drivers, tell, TemporaryFolder(), m_toldOf};
}

CCaptureChoice CCaptureOperations::SavedChoice() const {
    CCaptureChoice choice{Get(m_profile, setting::captureDriver), {}};
    std::istringstream text(Get(m_profile, captureFormat));
    CCaptureFormat format;
    if (text >> format.width >> format.height >> format.rate) {
        text >> format.coding;
        choice.format = format;
    }
    return choice;
}

void CCaptureOperations::SaveChoice(const CCaptureChoice& choice) {
    Set(m_profile, setting::captureDriver, choice.driver);
    const auto& [width, height, rate, coding] = choice.format;
    std::ostringstream text;
    if (width > 0)
        text << width << ' ' << height << ' ' << rate << ' ' << coding;
    Set(m_profile, captureFormat, text.str());
}

int CCaptureOperations::SavedThreshold() const {
    return std::clamp(Get(m_profile, setting::captureThreshold), 0, 255);
}

void CCaptureOperations::SaveThreshold(int threshold) {
    Set(m_profile, setting::captureThreshold, threshold);
}

bool CCaptureOperations::TakeFrame(const Path& bitmapFile, SourceMode kind, int threshold) {
    return m_grabs.GetDataFromDIB(bitmapFile, kind, threshold);
}

std::optional<CCelImg> CCaptureOperations::LastCel() const {
    const std::vector<std::string> cels = ListCelTitles(m_model.Paths(), m_model.folderName);
    CCelImg cel;
    if (cels.empty() || !cel.Load(m_model.Paths().CelFile(m_model.folderName, cels.back())))
        return std::nullopt;
    return cel;
}

} // namespace velmor
