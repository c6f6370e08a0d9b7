#include "views/prompter/QtPrompter.h"

#include "scene/DialogRequests.h"
#include "views/camera/CameraView.h"
#include "views/dialogs/BlurDialog.h"
#include "views/dialogs/CameraDataDialog.h"
#include "views/dialogs/CellDataDialog.h"
#include "views/dialogs/DropTypeDialog.h"
#include "views/dialogs/InbetweenDataDialog.h"
#include "views/dialogs/LineCheckDialog.h"
#include "views/dialogs/MotionPathDialog.h"
#include "views/dialogs/RunDialog.h"
#include "views/dialogs/TransparencyDialog.h"

namespace velmor {

namespace {

// Where the window shows frames, on the screen. A window without a camera view counts as a whole.
QRect ShownPicture(const QWidget& window) {
    const QWidget* view = &window;
    for (const QWidget* child : window.findChildren<QWidget*>())
        if (dynamic_cast<const CCameraView*>(child) != nullptr && child->isVisible())
            view = child;
    return {view->mapToGlobal(QPoint()), view->size()};
}

} // namespace

std::optional<CCellDataForm> CQtPrompter::AskCellData(const CCellDataRequest& request) {
    return RunDialog<CCellDataDialog>(Owner(), request);
}

std::optional<CBlurForm> CQtPrompter::AskBlur(const CBlurRequest& request) {
    return RunDialog<CBlurDialog>(Owner(), request);
}

std::optional<double> CQtPrompter::AskTransparency(const CTransparencyRequest& request) {
    return RunDialog<CTransparencyDialog>(Owner(), request);
}

std::optional<CCameraForm> CQtPrompter::AskCameraData(const CCameraDataRequest& request) {
    return RunDialog<CCameraDataDialog>(Owner(), request);
}

std::optional<int> CQtPrompter::AskMotionPathSetup(int current) {
    return RunDialog<CMotionPathDialog>(Owner(), current);
}

CInbetweenAnswer CQtPrompter::AskInbetween(const CInbetweenRequest& request) {
    CInbetweenDataDialog dialog(Owner(), request);
    const bool confirmed = dialog.exec() == QDialog::Accepted;
    return {confirmed, dialog.Values()};
}

void CQtPrompter::RunLineCheck(const CLineCheckRequest& request) {
    CLineCheckDialog dialog(Owner(), request);
    if (m_parent != nullptr)
        dialog.PlaceBeside(ShownPicture(*m_parent));
    dialog.exec();
}

bool CQtPrompter::AskDropType(const CDropTypeRequest& request) {
    CDropTypeDialog dialog(Owner(), request.choices);
    dialog.PlaceAt({request.screenPoint.x, request.screenPoint.y});
    return dialog.exec() == QDialog::Accepted;
}

} // namespace velmor
