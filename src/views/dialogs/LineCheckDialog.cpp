#include "views/dialogs/LineCheckDialog.h"

#include "views/widgets/FrameSlider.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int pageStep = 10;
constexpr int sliderWidth = 420;

} // namespace

CLineCheckDialog::CLineCheckDialog(QWidget* parent, const CLineCheckRequest& request)
    : CDialog(parent, "Line Check!"),
      m_showFrame(request.showFrame),
      m_shown(request.initial),
      m_slider(new CFrameSlider),
      m_frame(new QLabel(QString::number(request.initial))),
      m_pending(new QTimer(this)) {
    m_slider->setObjectName("slider");
    m_slider->setAccessibleName("Frame");
    m_slider->setRange(1, request.frameCount);
    m_slider->setPageStep(pageStep);
    m_slider->setValue(request.initial);
    m_slider->setMinimumWidth(sliderWidth);
    m_frame->setObjectName("frame");
    QFont bold = m_frame->font();
    bold.setBold(true);
    m_frame->setFont(bold);
    m_frame->setMinimumWidth(m_frame->fontMetrics().horizontalAdvance("00000"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_slider, 1);
    row->addWidget(new QLabel("Frame :"));
    row->addWidget(m_frame);
    Body().addLayout(row);
    RemoveCancel();
    OkButton().setText("&Close");
    m_slider->setFocus();
    m_pending->setSingleShot(true);
    m_pending->setInterval(0);
    connect(m_pending, &QTimer::timeout, this, [this] { ShowFrame(); });
    connect(m_slider, &QSlider::valueChanged, this, [this](int frame) {
        m_frame->setText(QString::number(frame));
        m_pending->start();
    });
}

void CLineCheckDialog::ShowFrame() {
    if (m_slider->value() == m_shown)
        return;
    m_shown = m_slider->value();
    m_showFrame(m_shown);
}

void CLineCheckDialog::done(int result) {
    m_pending->stop();
    CDialog::done(result);
}

} // namespace velmor
