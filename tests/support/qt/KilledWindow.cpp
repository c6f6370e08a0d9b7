// A session in a window that nobody sees, to be killed.

#include "KilledSession.h"
#include "app/window/MainFrame.h"

#include <QApplication>
#include <memory>

int main(int argc, char** argv) {
    using namespace velmor;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    return velmor::testing::RunKilledSession(
        argc, argv,
        [](CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile) {
            auto frame = std::make_shared<CMainFrame>(doc, prompter, profile);
            frame->show();
            return frame;
        },
        [](CVelmorltDoc& doc) {
            doc.History().Settle();
            QCoreApplication::processEvents();
        });
}
