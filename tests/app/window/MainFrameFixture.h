#pragma once

#include "DocumentFixture.h"
#include "app/window/MainFrame.h"
#include "app/window/Theme.h"

#include <QAction>
#include <QApplication>
#include <QTest>
#include <cstdlib>
#include <memory>

namespace velmor::testing {

/// A main frame over the fixture's document, active and shown as soon as it is asked for.
class CMainFrameFixture : public CDocumentFixture {
protected:
    ~CMainFrameFixture() override { EndFrame(); }

    CMainFrame& Frame() {
        if (!m_frame) {
            m_frame = std::make_unique<CMainFrame>(*doc, prompter, profile);
            m_frame->show();
            m_frame->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(m_frame.get()));
        }
        return *m_frame;
    }
    void EndFrame() { m_frame.reset(); }

    void Run(CommandId id) {
        Frame().UpdateCommands();
        Frame().Action(id)->trigger();
    }
    /// A key as the window system delivers it: to what has the focus.
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        Frame().UpdateCommands();
        QTest::keyClick(Frame().windowHandle(), static_cast<Qt::Key>(key), modifiers);
    }
    bool HasFocus(const QWidget& widget) { return QApplication::focusWidget() == &widget; }

    // Tests that go the way of a page of the manual make its pictures when VELMOR_PICTURES names a folder, dark
    // ones with VELMOR_DARK.
    static const char* PicturesFolder() { return std::getenv("VELMOR_PICTURES"); }
    void BeginPictures() {
        if (PicturesFolder() == nullptr)
            return;
        EXPECT_TRUE(
            profile.WriteString("Window", "Theme", std::getenv("VELMOR_DARK") != nullptr ? "dark" : "light"));
        ApplyTheme(profile);
        Frame().resize(1180, 760);
    }
    void Picture(const char* name) {
        if (PicturesFolder() == nullptr)
            return;
        QTest::qWait(400); // gaps, waves and the camera's picture are found on threads of their own
        Frame().UpdateCommands();
        EXPECT_TRUE(Frame().grab().save(QString("%1/%2.png").arg(PicturesFolder(), name)));
    }

private:
    std::unique_ptr<CMainFrame> m_frame;
};

} // namespace velmor::testing
