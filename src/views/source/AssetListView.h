#pragma once

#include <QListView>
#include <functional>

namespace velmor {

/// The list of assets: one column, several selected at once, opened by a double click or Return, dragged away.
class CAssetListView final : public QListView {
public:
    explicit CAssetListView(QWidget* parent = nullptr);

    /// Called with a valid index.
    void SetOpen(std::function<void(const QModelIndex& index)> open) { m_open = std::move(open); }
    /// Called when the mouse starts to drag the selection; returns when it has let go.
    void SetDrag(std::function<void()> drag) { m_drag = std::move(drag); }

    /// Runs `change`, which changes the rows, and keeps what is seen in its place as long as its topmost row stays.
    void ChangeInPlace(const std::function<void()>& change);

protected:
    void startDrag(Qt::DropActions actions) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void ApplyColors();

    std::function<void(const QModelIndex& index)> m_open;
    std::function<void()> m_drag;
};

} // namespace velmor
