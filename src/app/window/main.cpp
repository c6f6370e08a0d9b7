#include "app/window/Application.h"
#include "platform/process/Interrupt.h"
#include "platform/process/Memory.h"
#include "platform/process/Parallel.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    velmor::SurviveFileSizeLimit();
    velmor::StartParallelThreads();
    // Strokes go through every position of the mouse and the pen, not through the last one of each turn of the
    // event loop.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
    QApplication application(argc, argv);
    QApplication::setApplicationName("Personal Velmor");
    QApplication::setApplicationVersion(VELMOR_VERSION);

    QCommandLineParser parser;
    const QCommandLineOption noSplash("nosplash", "Start without the splash window.");
    parser.addOption(noSplash);
    const QCommandLineOption demo("demo", "Open the demonstration scene, which is made where there is none.");
    parser.addOption(demo);
    parser.addPositionalArgument("scene", "Xsheet of the scene to open.", "[SCENE.xsheet]");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);

    const QStringList files = parser.positionalArguments();
    QString scene = files.isEmpty() ? QString() : QFileInfo(files.front()).absoluteFilePath();
    if (parser.isSet(demo))
        scene = velmor::CApplication::demoSign;
    velmor::CApplication program(velmor::CProgramFolders::OfThisUser());
    if (!program.Start(!parser.isSet(noSplash), velmor::PathOf(scene.toStdString())))
        return 1;
    return QApplication::exec();
}
