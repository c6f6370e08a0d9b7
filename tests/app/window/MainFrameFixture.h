#pragma once

#include "DocumentFixture.h"
#include "app/window/MainFrame.h"

#include <QAction>
#include <QApplication>
#include <QTest>
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

private:
    std::unique_ptr<CMainFrame> m_frame;
};

} // namespace velmor::testing
