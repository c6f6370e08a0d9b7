// What only a real window system shows: events of mouse and keyboard as it delivers them. Runs under Xvfb; the
// input comes from xdotool, outside this process.

#include "DocumentFixture.h"
#include "app/window/MainFrame.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetGeometry.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QTest>
#include <cmath>

namespace velmor::testing {
namespace {

constexpr int patience = 15000; // milliseconds, for a machine that is busy with other tests

class CNativeInputTest : public CDocumentFixture {
protected:
    CNativeInputTest() {
        NewScene("Native", 20, 320, 240);
        std::filesystem::create_directories(SceneFolder("Native") / "walk");
        doc->Scenes().SetFolderName("walk");
        prompter.Answer(CNewCelValues{"1", {200, 160}});
        doc->Assets().NewCel();
        m_frame = std::make_unique<CMainFrame>(*doc, prompter, profile);
        m_frame->move(0, 0);
        m_frame->resize(1200, 900);
        m_frame->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_frame.get()));
        m_frame->activateWindow();
        QTest::qWait(50); // until the panes have their heights
    }
    ~CNativeInputTest() override { m_frame.reset(); }

    CMainFrame& Frame() { return *m_frame; }

    /// Runs xdotool with its commands and goes on with the program's events until `done` holds.
    bool Input(const QStringList& commands, const std::function<bool()>& done) {
        QProcess xdotool;
        xdotool.start("xdotool", commands.join(' ').split(' '));
        const bool happened =
            QTest::qWaitFor([&] { return xdotool.state() == QProcess::NotRunning && done(); }, patience);
        EXPECT_EQ(xdotool.exitCode(), 0) << xdotool.readAllStandardError().toStdString();
        return happened;
    }
    static QString MoveTo(const QPoint& screen) {
        return QString("mousemove %1 %2").arg(screen.x()).arg(screen.y());
    }
    /// A drag at the speed of a hand.
    static QStringList Drag(const QPoint& from, const QPoint& to) {
        QStringList commands{MoveTo(from), "sleep 0.1", "mousedown 1", "sleep 0.1"};
        constexpr int steps = 12;
        for (int step = 1; step <= steps; ++step)
            commands << MoveTo(from + (to - from) * step / steps) << "sleep 0.03";
        return commands << "sleep 0.2" << MoveTo(to + QPoint(1, 0)) << "sleep 0.3"
                        << "mouseup 1";
    }

private:
    std::unique_ptr<CMainFrame> m_frame;
};

} // namespace

TEST_F(CNativeInputTest, ACelIsDraggedFromTheListToTheXsheet) {
    auto* list = Frame().SourceView().findChild<QAbstractItemView*>();
    ASSERT_NE(list, nullptr);
    const QPoint from = list->viewport()->mapToGlobal(list->visualRect(list->model()->index(0, 0)).center());
    CXSheetView& sheet = Frame().XsheetPane().View();
    const QPoint cell(30 + 40, 40 + 20 * 3 + 10); // level 0, frame 3
    prompter.Answer(1);                           // on two's
    EXPECT_TRUE(Input(Drag(from, sheet.viewport()->mapToGlobal(cell)),
                      [&] { return doc->Model().Scene().xsheet.Cell(0, 3).IsUsed(); }));
    EXPECT_EQ(doc->Cursor().GetXsheetData(0, 3), "walk1");
    EXPECT_TRUE(doc->Model().Scene().xsheet.Cell(0, 4).IsUsed());
    EXPECT_FALSE(doc->Model().Scene().xsheet.Cell(0, 5).IsUsed());
    EXPECT_EQ(doc->Model().cursorFrame, 3);
}

TEST_F(CNativeInputTest, TheKeypadZoomsCameraAndCelEditor) {
    doc->Scenes().SetSourceSelection({"1"});
    doc->Assets().EditCel("1");
    Frame().UpdateCommands();
    CCameraView& camera = Frame().CameraPane().View();
    EXPECT_TRUE(Input({"key KP_Multiply key KP_Add"}, [&] { return camera.Zoom() == CZoomLevel(2); }));
    EXPECT_TRUE(Input({"key KP_Multiply key KP_Subtract"}, [&] { return camera.Zoom() == CZoomLevel(0); }));
    CCelView& cel = Frame().CelPane().View();
    Frame().ShowCelEditor();
    Frame().UpdateCommands();
    EXPECT_TRUE(Input({"key ctrl+KP_Add key ctrl+KP_Add"}, [&] { return cel.Zoom() == CZoomLevel(3); }));
    EXPECT_TRUE(Input({"key ctrl+KP_Subtract"}, [&] { return cel.Zoom() == CZoomLevel(2); }));
    EXPECT_TRUE(Input({"key ctrl+KP_Multiply"}, [&] { return cel.Zoom() == CZoomLevel(1); }));
    EXPECT_EQ(camera.Zoom(), CZoomLevel(0));
}

TEST_F(CNativeInputTest, AStrokeOfThePenFollowsThePointer) {
    doc->Scenes().SetSourceSelection({"1"});
    doc->Assets().EditCel("1");
    Frame().ShowCelEditor();
    QTest::qWait(50);
    CCelView& cel = Frame().CelPane().View();
    cel.SetTool(CelTool::Pen);
    const QPoint centre = cel.viewport()->rect().center();
    const QPoint from = cel.viewport()->mapToGlobal(centre - QPoint(60, 0));
    const QPoint to = cel.viewport()->mapToGlobal(centre + QPoint(60, 0));
    EXPECT_TRUE(Input(Drag(from, to), [&] { return doc->Model().celImg.IsModified(); }));
    int lines = 0;
    for (int x = 0; x < 200; ++x)
        for (int y = 70; y < 90; ++y)
            lines += doc->Model().celImg.IsLine(x, y);
    EXPECT_GE(lines, 120) << "a line without gaps";
}

namespace {

/// Counts the moves of the mouse over a widget while the left button is held.
class CMoveCounter final : public QObject {
public:
    explicit CMoveCounter(QWidget& widget) { widget.installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::MouseMove &&
                 static_cast<QMouseEvent*>(event)->buttons().testFlag(Qt::LeftButton);
        return false;
    }
};

} // namespace

TEST_F(CNativeInputTest, AQuickStrokeKeepsItsPoints) {
    doc->Scenes().SetSourceSelection({"1"});
    doc->Assets().EditCel("1");
    Frame().ShowCelEditor();
    QTest::qWait(50);
    QWidget& canvas = *Frame().CelPane().View().viewport();
    Frame().CelPane().View().SetTool(CelTool::Pen);
    const QPoint centre = canvas.mapToGlobal(canvas.rect().center());
    constexpr int points = 1000;
    QStringList spiral{MoveTo(centre), "sleep 0.1", "mousedown 1", "sleep 0.1"};
    for (int point = 1; point <= points; ++point) {
        const double angle = point * 0.1;
        const double radius = 20 + point * 0.05;
        spiral << MoveTo(centre + QPoint(static_cast<int>(std::lround(radius * std::cos(angle))),
                                         static_cast<int>(std::lround(radius * std::sin(angle)))))
               << "sleep 0.001";
    }
    spiral << "sleep 0.1"
           << "mouseup 1";
    CMoveCounter moves(canvas);
    EXPECT_TRUE(Input(spiral, [&] { return QApplication::mouseButtons() == Qt::NoButton; }));
    EXPECT_GE(moves.count, points * 95 / 100);
    EditedImage().SetModified(false);
}

} // namespace velmor::testing
