#include "app/window/Application.h"
#include "platform/process/Memory.h"
#include "platform/process/Parallel.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    velmor::StartParallelThreads();
    QApplication application(argc, argv);
    QApplication::setApplicationName("Personal Velmor");
    QApplication::setApplicationVersion(VELMOR_VERSION);

    QCommandLineParser parser;
    const QCommandLineOption noSplash("nosplash", "Start without the splash window.");
    parser.addOption(noSplash);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);

    velmor::CApplication program(velmor::CProgramFolders::OfThisUser());
    if (!program.Start(!parser.isSet(noSplash)))
        return 1;
    return QApplication::exec();
}
