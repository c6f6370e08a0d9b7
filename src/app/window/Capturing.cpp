#include "app/window/Capturing.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/capture/CaptureDialog.h"
#include "views/capture/CapturePreview.h"
#include "views/capture/CaptureSetupDialog.h"

#include <utility>

namespace velmor {

CCapturing::CCapturing(QWidget& parent, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile)
    : m_parent(parent), m_operations(doc.Model(), doc.Grabs(), prompter, profile) {}

void CCapturing::UseDrivers(std::unique_ptr<ICaptureDrivers> drivers) {
    m_operations.UseDrivers(std::move(drivers));
}

void CCapturing::Setup() {
    CCaptureSession session = m_operations.Session();
    CCaptureSetupDialog dialog(&m_parent, session, m_operations.SavedChoice());
    if (dialog.exec() == QDialog::Accepted)
        m_operations.SaveChoice(session.Choice());
}

void CCapturing::Capture(SourceMode kind) {
    CCaptureSession session = m_operations.Session();
    CCaptureRequest request;
    request.kind = kind;
    request.camera = m_operations.SavedChoice();
    request.threshold = m_operations.SavedThreshold();
    request.handOver = [this, kind](const Path& file, int threshold) {
        return m_operations.TakeFrame(file, kind, threshold);
    };
    if (kind == SourceMode::Cels)
        if (const std::optional<CCelImg> last = m_operations.LastCel())
            request.lastImage = OnionOf(*last);
    CCaptureDialog dialog(&m_parent, session, std::move(request));
    dialog.exec();
    m_operations.SaveThreshold(dialog.Threshold());
}

} // namespace velmor
