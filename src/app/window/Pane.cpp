#include "app/window/Pane.h"

#include "app/window/PaneHeights.h"

#include <QStackedLayout>
#include <QToolButton>

namespace velmor {

namespace {

constexpr int leastUseful = 44; // a tool bar and a strip of the view
constexpr int strip = 0;
constexpr int opened = 1;

} // namespace

CPane::CPane(const QString& title, QWidget* content, std::function<void()> open)
    : m_layout(new QStackedLayout(this)) {
    auto* button = new QToolButton;
    button->setText(title);
    button->setToolTip("Show the " + title + " view");
    button->setArrowType(Qt::RightArrow);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QToolButton::clicked, this, [open = std::move(open)] { open(); });
    m_layout->addWidget(button);
    m_layout->addWidget(content);
    m_layout->setSizeConstraint(QLayout::SetNoConstraint);
    content->setMinimumSize(leastPane, leastPane);
    setMinimumSize(leastPane, leastPane);
    m_layout->setCurrentIndex(opened);
}

bool CPane::IsOpen() const {
    return height() >= leastUseful;
}

void CPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_layout->setCurrentIndex(IsOpen() ? opened : strip);
}

} // namespace velmor
