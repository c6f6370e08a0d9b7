#include "views/capture/CaptureDialog.h"

#include "views/Icons.h"
#include "views/Text.h"
#include "views/capture/CapturePreview.h"
#include "views/capture/VideoFormatDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"
#include "views/widgets/WaitCursor.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int mostThreshold = 255;
constexpr int onionSteps = 3;
constexpr int onionStep = 25; // per cent

} // namespace

CCaptureDialog::CCaptureDialog(QWidget* parent, CCaptureSession& session, CCaptureRequest request)
    : CDialog(parent, request.kind == SourceMode::Cels ? "Capture Cels" : "Capture Pictures"),
      m_session(session),
      m_request(std::move(request)),
      m_preview(new CCapturePreview(session)),
      m_capture(new QPushButton("&Capture !")),
      m_overlayMode(new QRadioButton("O&verlay")),
      m_previewMode(new QRadioButton("&Preview")),
      m_threshold(new CNumberSlider("threshold", 0, mostThreshold, NumberKind::Whole)),
      m_showLines(new QCheckBox("Show black and &white")),
      m_onion(new QSlider(Qt::Horizontal)),
      m_deviceStatus(new QLabel),
      m_countStatus(new QLabel) {
    setObjectName("Capture");
    auto* row = new QHBoxLayout;
    row->setSpacing(14);
    row->addWidget(m_preview, 1);
    row->addLayout(Controls());
    Body().addLayout(row, 1);
    Body().addLayout(StatusFields());

    RemoveCancel();
    OkButton().setText("C&lose");
    OkButton().setAutoDefault(false);
    m_preview->SetOnion(m_request.lastImage);
    m_preview->SetHint("No capture device");
    ShowState();
    resize(986, 572);
}

QLayout* CCaptureDialog::Controls() {
    MakeCaptureButton();
    auto* column = new QVBoxLayout;
    column->addWidget(m_capture);
    column->addSpacing(6);
    column->addWidget(DisplayGroup());
    column->addWidget(LineGroup());
    column->addWidget(OnionGroup());
    column->addStretch(1);
    return column;
}

void CCaptureDialog::MakeCaptureButton() {
    m_capture->setObjectName("capture");
    m_capture->setToolTip("Grabs the picture (Space)");
    m_capture->setIcon(Icon(ForCels() ? "capture-cels" : "capture-picture"));
    m_capture->setMinimumHeight(m_capture->sizeHint().height() * 3 / 2);
    m_capture->setDefault(true);
    connect(m_capture, &QPushButton::clicked, this, [this] { Capture(); });
    // Wherever the focus is: the hands are on the drawings, not on the mouse.
    auto* space = new QShortcut(Qt::Key_Space, this);
    space->setAutoRepeat(false);
    connect(space, &QShortcut::activated, this, [this] { Capture(); });
    m_threshold->Edit().installEventFilter(this);
}

// A field for text claims the space bar for itself; this one has no use for it.
bool CCaptureDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space)
        return true;
    return CDialog::eventFilter(watched, event);
}

QWidget* CCaptureDialog::DisplayGroup() {
    m_overlayMode->setObjectName("overlay");
    m_overlayMode->setToolTip("The device puts its picture on the screen itself");
    m_previewMode->setObjectName("preview");
    m_previewMode->setToolTip("Shows the pictures as they are captured");
    connect(m_overlayMode, &QRadioButton::clicked, this, [this] { m_session.ShowOverlay(); });
    connect(m_previewMode, &QRadioButton::clicked, this, [this] {
        m_session.ShowPreview();
        ShowState();
    });
    auto* column = new QVBoxLayout;
    column->addWidget(m_overlayMode);
    column->addWidget(m_previewMode);
    return GroupOf("Display", column);
}

QWidget* CCaptureDialog::LineGroup() {
    auto* label = new QLabel("&B/W Threshold :");
    label->setBuddy(m_threshold);
    m_threshold->Edit().setAccessibleName("B/W Threshold");
    m_threshold->Slider().setAccessibleName("B/W Threshold");
    m_threshold->Slider().setToolTip("What is darker becomes a line, what is lighter becomes paper");
    m_threshold->Edit().SetValue(m_request.threshold);
    connect(&m_threshold->Edit(), &QLineEdit::textChanged, this, [this] { TakeThreshold(); });
    m_showLines->setObjectName("showLines");
    m_showLines->setToolTip("Shows the lines that a captured cel would have");
    connect(m_showLines, &QCheckBox::toggled, this, [this] { TakeThreshold(); });
    auto* column = new QVBoxLayout;
    column->addWidget(label);
    column->addWidget(m_threshold);
    column->addWidget(m_showLines);
    QGroupBox* group = GroupOf("Lines", column);
    group->setEnabled(ForCels()); // a picture keeps its colours
    return group;
}

QWidget* CCaptureDialog::OnionGroup() {
    m_onion->setObjectName("onion");
    m_onion->setRange(0, onionSteps);
    m_onion->setPageStep(1);
    m_onion->setTickPosition(QSlider::TicksBelow);
    m_onion->setTickInterval(1);
    m_onion->setToolTip("Lays what was captured last over the live picture");
    auto* shown = new QLabel("off");
    shown->setObjectName("onionShown");
    shown->setMinimumWidth(shown->fontMetrics().horizontalAdvance("100 %"));
    shown->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(m_onion, &QSlider::valueChanged, this, [this, shown](int step) {
        shown->setText(step == 0 ? QString("off") : QString("%1 %").arg(step * onionStep));
        m_preview->SetOnionPercent(step * onionStep);
    });
    auto* row = new QHBoxLayout;
    row->addWidget(m_onion, 1);
    row->addWidget(shown);
    auto* column = new QVBoxLayout;
    QLabel* label = LabelFor("&Onion skin :", *m_onion);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    column->addWidget(label);
    column->addLayout(row);
    return GroupOf("Last Captured", column);
}

QLayout* CCaptureDialog::StatusFields() {
    m_deviceStatus->setObjectName("deviceStatus");
    m_countStatus->setObjectName("countStatus");
    auto* row = new QHBoxLayout;
    for (QLabel* field : {m_deviceStatus, m_countStatus}) {
        field->setTextFormat(Qt::PlainText);
        field->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        field->setMargin(4);
    }
    m_deviceStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    row->addWidget(m_deviceStatus, 1);
    row->addWidget(m_countStatus);
    return row;
}

void CCaptureDialog::showEvent(QShowEvent* event) {
    CDialog::showEvent(event);
    if (!std::exchange(m_isOpened, true))
        QTimer::singleShot(0, this, [this] { Open(); });
}

void CCaptureDialog::Open() {
    {
        const CWaitCursor wait;
        static_cast<void>(m_session.OpenCapture(m_request.camera)); // the session tells of a failure
    }
    ShowState();
    if (!m_session.IsConnected())
        return;
    PositionWindows(*this, *m_preview, m_session);
    m_capture->setFocus();
}

void CCaptureDialog::TakeThreshold() {
    const std::optional<int> value = m_threshold->Edit().Whole();
    if (value && *value >= 0 && *value <= mostThreshold)
        m_request.threshold = *value;
    m_preview->ShowLines(m_showLines->isChecked() ? std::optional(m_request.threshold) : std::nullopt);
}

void CCaptureDialog::Capture() {
    if (!m_capture->isEnabled() || (ForCels() && !m_threshold->Edit().Require(0, mostThreshold)))
        return;
    TakeThreshold();
    const int threshold = m_request.threshold;
    if (m_session.Grab([&](const Path& file) { return m_request.handOver(file, threshold); }))
        m_preview->SetOnion(OnionOf(*m_session.LastGrabbed(), ForCels() ? std::optional(threshold) : std::nullopt));
    ShowState();
}

void CCaptureDialog::ShowState() {
    const bool isConnected = m_session.IsConnected();
    m_capture->setEnabled(isConnected);
    m_previewMode->setEnabled(isConnected);
    m_overlayMode->setEnabled(m_session.HasOverlay());
    m_previewMode->setChecked(!m_session.IsOverlay());
    m_overlayMode->setChecked(m_session.IsOverlay());
    if (isConnected) {
        m_preview->SetHint("Waiting for the first picture");
        QString status = ToQt(m_session.Selected()) + "  -  " + FormatText(m_session.Device().Format());
        if (const int dropped = m_session.Device().DroppedFrames(); dropped > 0)
            status += QString(", %1 damaged").arg(dropped);
        m_deviceStatus->setText(status);
    } else {
        m_deviceStatus->setText("No capture device");
    }
    m_countStatus->setText(QString("Captured : %1").arg(m_session.GrabbedCount()));
}

void CCaptureDialog::done(int result) {
    static_cast<void>(m_session.Disconnect()); // whatever comes of it, the dialog closes
    CDialog::done(result);
}

} // namespace velmor
