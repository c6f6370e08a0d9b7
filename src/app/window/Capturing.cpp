#include "app/window/Capturing.h"

#include "acquire/CaptureSession.h"
#include "platform/files/SystemPaths.h"
#include "scene/GrabOperations.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/VelmorltDoc.h"
#include "views/capture/CaptureDialog.h"
#include "views/capture/CapturePreview.h"
#include "views/capture/CaptureSetupDialog.h"

#include <algorithm>
#include <sstream>

namespace velmor {

namespace {

// Width, height, rate and coding; cameras forget what they were set to.
constexpr CStringSetting captureFormat{"Window", "Capture Format", ""};

} // namespace

CCapturing::CCapturing(QWidget& parent, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile)
    : m_parent(parent), m_doc(doc), m_prompter(prompter), m_profile(profile) {}

CCapturing::~CCapturing() = default;

void CCapturing::UseDrivers(std::unique_ptr<ICaptureDrivers> drivers) {
    m_drivers = std::move(drivers);
}

ICaptureDrivers& CCapturing::Drivers() {
    if (!m_drivers)
        m_drivers = MakeCaptureDrivers({});
    return *m_drivers;
}

void CCapturing::Tell(const std::string& text) {
    m_prompter.ShowMessage(text);
}

CCaptureChoice CCapturing::SavedChoice() const {
    CCaptureChoice choice{Get(m_profile, setting::captureDriver), {}};
    std::istringstream text(Get(m_profile, captureFormat));
    CCaptureFormat format;
    if (text >> format.width >> format.height >> format.rate) {
        text >> format.coding;
        choice.format = format;
    }
    return choice;
}

void CCapturing::SaveChoice(const CCaptureChoice& choice) {
    Set(m_profile, setting::captureDriver, choice.driver);
    const auto& [width, height, rate, coding] = choice.format;
    std::ostringstream text;
    if (width > 0)
        text << width << ' ' << height << ' ' << rate << ' ' << coding;
    Set(m_profile, captureFormat, text.str());
}

void CCapturing::Setup() {
    CCaptureSession session(
        Drivers(), [this](const std::string& text) { Tell(text); }, TemporaryFolder(), m_toldOf);
    CCaptureSetupDialog dialog(&m_parent, session, SavedChoice());
    if (dialog.exec() == QDialog::Accepted)
        SaveChoice(session.Choice());
}

// Where shooting was left off, the next drawing is placed by it.
QImage CCapturing::LastCel() const {
    const CSceneModel& model = m_doc.Model();
    const std::vector<std::string> cels = ListCelTitles(model.Paths(), model.folderName);
    CCelImg cel;
    if (cels.empty() || !cel.Load(model.Paths().CelFile(model.folderName, cels.back())))
        return {};
    return OnionOf(cel);
}

void CCapturing::Capture(SourceMode kind) {
    CCaptureSession session(
        Drivers(), [this](const std::string& text) { Tell(text); }, TemporaryFolder(), m_toldOf);
    CCaptureRequest request;
    request.kind = kind;
    request.camera = SavedChoice();
    request.threshold = std::clamp(Get(m_profile, setting::captureThreshold), 0, 255);
    request.handOver = [this, kind](const Path& file, int threshold) {
        return m_doc.Grabs().GetDataFromDIB(file, kind, threshold);
    };
    if (kind == SourceMode::Cels)
        request.lastImage = LastCel();
    CCaptureDialog dialog(&m_parent, session, std::move(request));
    dialog.exec();
    Set(m_profile, setting::captureThreshold, dialog.Threshold());
}

} // namespace velmor
