#pragma once

#include <QListWidget>

#include <functional>

namespace velmor {

class CPalette;

/// The colours of a palette with their names. A click makes a colour the foreground, the right button the
/// background; a double click edits it. The keys: Return, Shift+Return, F2, Delete. The mouse leaves the keyboard
/// where it is, so that the tools' keys go on working.
class CColorList final : public QListWidget {
public:
    /// Each is told an index of the palette.
    struct CActions {
        std::function<void(int)> makeForeground;
        std::function<void(int)> makeBackground;
        std::function<void(int)> edit;
        std::function<void(int)> remove;
    };

    explicit CColorList(CActions actions, QWidget* parent = nullptr);

    /// Fills the list. The current colour stays, unless there are more or fewer than before: then it is
    /// `foreground`, if that is an entry.
    void PrepareColorBitmaps(const CPalette& palette, int foreground);
    /// Makes an entry the current one; nothing for -1.
    void Light(int entry);
    /// The index of the current colour, -1 for none.
    int Current() const { return currentRow(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    CActions m_actions;
};

} // namespace velmor
