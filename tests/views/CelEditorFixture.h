#pragma once

#include "DocumentFixture.h"
#include "RandomImages.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <random>

namespace velmor::testing {

/// A scene with a folder "A" that is current, a cel "1" full of bits of line, and a picture "back"; both 100 x 80
/// pixels.
class CCelEditorFixture : public CDocumentFixture {
protected:
    static constexpr int width = 100;
    static constexpr int height = 80;

    CCelEditorFixture() {
        NewScene("Test");
        const CScenePaths paths = doc->Model().Paths();
        static_cast<void>(CreateFolder(paths.CelFolder("A")));
        doc->Scenes().SetFolderName("A");
        CCelImg cel = RandomCel(m_random, width, height);
        Sprinkle(cel, m_random, 20);
        cel.SetFilePath(paths.CelFile("A", "1"));
        EXPECT_TRUE(cel.Save());
        CCelImg picture = RandomPicture(m_random, width, height);
        picture.SetFilePath(paths.AssetFile(SourceMode::Pictures, "", "back"));
        static_cast<void>(CreateFolder(picture.FilePath().parent_path()));
        EXPECT_TRUE(picture.Save());
    }

    void EditCel() {
        doc->Scenes().SetSourceMode(SourceMode::Cels);
        doc->Assets().EditCel("1");
        ASSERT_EQ(doc->Model().celImg.GetLoadState(), LoadState::Cel);
    }
    void EditPicture() {
        doc->Scenes().SetSourceMode(SourceMode::Pictures);
        doc->Assets().EditCel("back");
        ASSERT_EQ(doc->Model().celImg.GetLoadState(), LoadState::Picture);
    }

    static void Mouse(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button,
                      Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, widget.mapToGlobal(at), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
    static void Press(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        Mouse(widget, QEvent::MouseButtonPress, at, button, button);
    }
    static void Move(QWidget& widget, QPoint at, Qt::MouseButtons buttons = Qt::LeftButton) {
        Mouse(widget, QEvent::MouseMove, at, Qt::NoButton, buttons);
    }
    static void Release(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        Mouse(widget, QEvent::MouseButtonRelease, at, button, Qt::NoButton);
    }
    static void Drag(QWidget& widget, QPoint from, QPoint over, QPoint to) {
        Press(widget, from);
        Move(widget, over);
        Release(widget, to);
    }
    static void Wheel(QWidget& widget, QPoint at, int turn, Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, turn}, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&widget, &event);
    }

    std::mt19937 m_random{7};
};

} // namespace velmor::testing
