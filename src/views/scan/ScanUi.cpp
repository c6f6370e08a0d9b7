#include "views/scan/ScanUi.h"

#include "views/Text.h"
#include "views/scan/ScanDialog.h"
#include "views/scan/ScanSourceDialog.h"
#include "views/scan/ScanWaitDialog.h"
#include "views/widgets/WaitCursor.h"

#include <QEventLoop>
#include <QTimer>

namespace velmor {

namespace {

constexpr int quietMilliseconds = 400;
constexpr int pollMilliseconds = 20;

} // namespace

CScanUi::CScanUi(QWidget& parent) : m_parent(parent) {}

CScanUi::~CScanUi() = default;

bool CScanUi::Wait(const std::string& text, const std::function<bool()>& isDone) {
    if (isDone())
        return true;
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (isDone())
            loop.quit();
    });
    poll.start(pollMilliseconds);
    {
        const CWaitCursor wait;
        QTimer::singleShot(quietMilliseconds, &loop, [&loop] { loop.quit(); });
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (isDone())
        return true;
    CScanWaitDialog dialog(&m_parent, ToQt(text));
    QObject::connect(&dialog, &QDialog::finished, &loop, [&loop] { loop.quit(); });
    dialog.show();
    loop.exec();
    return isDone();
}

std::optional<std::size_t> CScanUi::ChooseScanner(std::span<const CScannerDevice> scanners, std::size_t current) {
    CScanSourceDialog dialog(&m_parent, scanners, current);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.Values();
}

void CScanUi::OpenScanWindow(const CScanWindowRequest& request, CScanWindowActions actions) {
    m_window = std::make_unique<CScanDialog>(&m_parent, request, std::move(actions));
    m_window->show();
}

void CScanUi::ShowState(const CScanWindowState& state) {
    if (m_window)
        m_window->ShowState(state);
}

void CScanUi::ShowPreview(const CScannedPage& page) {
    if (m_window)
        m_window->ShowPreview(page);
}

void CScanUi::CloseScanWindow() {
    m_window.reset();
}

} // namespace velmor
