#pragma once

#include <QWidget>
#include <functional>

class QStackedLayout;

namespace velmor {

/// One of the stacked panes. Too low for its contents it shows a strip with its name instead, and a click there
/// opens it.
class CPane final : public QWidget {
public:
    /// `content` becomes a child.
    CPane(const QString& title, QWidget* content, std::function<void()> open);

    /// Whether it is high enough to show its contents.
    bool IsOpen() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QStackedLayout* m_layout;
};

} // namespace velmor
