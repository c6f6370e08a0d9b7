#pragma once

#include "image/Color.h"

#include <QListWidget>

#include <functional>
#include <optional>

namespace velmor {

class CPalette;

/// The colours of a palette with their names. A click makes a colour the foreground, the right button the
/// background; a double click edits it; dragging moves it. The keys: Return, Shift+Return, F2, Delete, Alt with the
/// arrows. The mouse leaves the keyboard where it is, so that the tools' keys go on working.
class CColorList final : public QListWidget {
public:
    /// Each is told an index of the palette.
    struct CActions {
        std::function<void(int)> makeForeground;
        std::function<void(int)> makeBackground;
        std::function<void(int)> edit;
        std::function<void(int)> remove;
        std::function<void(int from, int to)> move;
    };

    explicit CColorList(CActions actions, QWidget* parent = nullptr);

    /// Fills the list. The current colour stays, unless there are more or fewer than before: then it is
    /// `foreground`, if that is an entry.
    void PrepareColorBitmaps(const CPalette& palette, int foreground);
    /// Shows only entries whose name holds a text, in upper or lower case, or whose "#rrggbb" does.
    void SetFilter(const QString& text);
    /// The first entry that is shown, -1 for none.
    int FirstShown() const;
    /// Marks which entries cels are painted with: nothing where that is not known.
    void SetUsed(const std::function<std::optional<bool>(CColor color)>& isUsed);
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
    void dropEvent(QDropEvent* event) override;

private:
    void ApplyFilter();
    void Move(int from, int to);

    CActions m_actions;
    QString m_filter;
};

} // namespace velmor
