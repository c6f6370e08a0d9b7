#pragma once

#include <QListView>
#include <functional>

namespace velmor {

/// The list of assets: one column, several selected at once, opened by a double click or Return, dragged away.
/// While it has the keyboard, the keys of a list are its own: what the window uses them for does not happen.
class CAssetListView final : public QListView {
public:
    explicit CAssetListView(QWidget* parent = nullptr);

    /// Called with a valid index.
    void SetOpen(std::function<void(const QModelIndex& index)> open) { m_open = std::move(open); }
    /// Called at the Delete key, with something selected or not.
    void SetDelete(std::function<void()> deleteSelected) { m_delete = std::move(deleteSelected); }
    /// Called when the mouse starts to drag the selection; returns when it has let go.
    void SetDrag(std::function<void()> drag) { m_drag = std::move(drag); }

    /// The room for the pictures of rows; empty for that of icons.
    void SetPictureSize(QSize size);
    /// Runs `change`, which changes the rows, and keeps what is seen in its place as long as its topmost row stays.
    void ChangeInPlace(const std::function<void()>& change);

protected:
    bool event(QEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ApplyColors();

    std::function<void(const QModelIndex& index)> m_open;
    std::function<void()> m_delete;
    std::function<void()> m_drag;
};

} // namespace velmor
