#include "views/capture/CaptureSetupDialog.h"

#include "views/Text.h"
#include "views/capture/CapturePreview.h"
#include "views/capture/VideoFormatDialog.h"
#include "views/capture/VideoSourceDialog.h"
#include "views/widgets/WaitCursor.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

namespace velmor {

CCaptureSetupDialog::CCaptureSetupDialog(QWidget* parent, CCaptureSession& session, CCaptureChoice saved)
    : CDialog(parent, "Capture Setup"),
      m_session(session),
      m_saved(std::move(saved)),
      m_preview(new CCapturePreview(session)) {
    setObjectName("CaptureSetup");
    auto* row = new QHBoxLayout;
    row->setSpacing(14);
    row->addLayout(DriverColumn(), 2);
    row->addLayout(PreviewColumn(), 3);
    Body().addLayout(row, 1);
    ShowState();
    resize(820, 440);
}

QLayout* CCaptureSetupDialog::DriverColumn() {
    m_drivers = new QListWidget;
    m_drivers->setObjectName("drivers");
    m_drivers->setAccessibleName("List of Available Capture Devices");
    m_drivers->setMinimumWidth(240);
    m_drivers->setTextElideMode(Qt::ElideMiddle);
    // Not the current item: a list makes its first one that when it gets the focus.
    connect(m_drivers, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> chosen = m_drivers->selectedItems();
        if (!chosen.isEmpty())
            Select(chosen.front()->text());
    });
    auto* listLabel = new QLabel("&List of Available Capture Devices :");
    listLabel->setBuddy(m_drivers);

    m_selected = new QLineEdit;
    m_selected->setObjectName("selected");
    m_selected->setAccessibleName("Selected Capture Device");
    SetReadOnly(*m_selected, true);
    auto* selectedLabel = new QLabel("Selected Capture &Device :");
    selectedLabel->setBuddy(m_selected);

    auto* column = new QVBoxLayout;
    column->addWidget(listLabel);
    column->addWidget(m_drivers, 1);
    column->addSpacing(4);
    column->addWidget(selectedLabel);
    column->addWidget(m_selected);
    return column;
}

QLayout* CCaptureSetupDialog::PreviewColumn() {
    m_videoSource =
        Button("videoSource", "Video &Source", "Brightness, focus and what else the device lets you set",
               [this] { OpenVideoSource(); });
    m_videoFormat = Button("videoFormat", "Video &Format", "Size and rate of the device's pictures",
                           [this] { OpenVideoFormat(); });
    m_overlayMode = ModeButton("overlay", "Video O&verlay", "The device puts its picture on the screen itself",
                               [this] { m_session.ShowOverlay(); });
    m_previewMode = ModeButton("preview", "Software &Preview", "Shows the pictures as they are captured",
                               [this] { m_session.ShowPreview(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_videoSource);
    buttons->addWidget(m_videoFormat);
    buttons->addStretch(1);
    buttons->addWidget(m_overlayMode);
    buttons->addWidget(m_previewMode);
    auto* column = new QVBoxLayout;
    column->addWidget(m_preview, 1);
    column->addLayout(buttons);
    return column;
}

QPushButton* CCaptureSetupDialog::Button(const char* name, const QString& text, const QString& toolTip,
                                         std::function<void()> onClick) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, std::move(onClick));
    return button;
}

QRadioButton* CCaptureSetupDialog::ModeButton(const char* name, const QString& text, const QString& toolTip,
                                              std::function<void()> onClick) {
    auto* button = new QRadioButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    connect(button, &QRadioButton::clicked, this, [this, run = std::move(onClick)] {
        run();
        ShowState();
    });
    return button;
}

void CCaptureSetupDialog::showEvent(QShowEvent* event) {
    CDialog::showEvent(event);
    if (!std::exchange(m_isOpened, true))
        QTimer::singleShot(0, this, [this] { Open(); });
}

void CCaptureSetupDialog::Open() {
    {
        const CWaitCursor wait;
        m_session.OpenSetup(m_saved);
    }
    const QSignalBlocker silent(m_drivers);
    for (const std::string& description : m_session.Descriptions()) {
        m_drivers->addItem(ToQt(description));
        if (description == m_session.Selected())
            m_drivers->setCurrentRow(m_drivers->count() - 1);
    }
    ShowState();
    ShowWindow();
}

void CCaptureSetupDialog::Select(const QString& description) {
    {
        const CWaitCursor wait;
        static_cast<void>(m_session.Select(FromQt(description))); // the session tells of a failure
    }
    ShowState();
    ShowWindow();
}

void CCaptureSetupDialog::ShowWindow() {
    if (m_session.IsConnected())
        PositionWindows(*this, *m_preview, m_session);
}

void CCaptureSetupDialog::ShowState() {
    m_selected->setText(ToQt(m_session.Selected()));
    m_selected->setCursorPosition(0);
    const bool isConnected = m_session.IsConnected();
    m_videoSource->setEnabled(isConnected);
    m_videoFormat->setEnabled(isConnected);
    m_previewMode->setEnabled(isConnected);
    m_overlayMode->setEnabled(m_session.HasOverlay());
    m_previewMode->setChecked(!m_session.IsOverlay());
    m_overlayMode->setChecked(m_session.IsOverlay());
    m_preview->SetHint(isConnected              ? "Waiting for the first picture"
                       : m_drivers->count() > 0 ? "Choose a capture device from the list"
                                                : "No capture device");
}

void CCaptureSetupDialog::OpenVideoSource() {
    std::vector<CCaptureControl> controls = m_session.SourceControls();
    if (!controls.empty())
        CVideoSourceDialog(this, m_session.Device(), std::move(controls)).exec();
}

void CCaptureSetupDialog::OpenVideoFormat() {
    const std::vector<CCaptureFormat> formats = m_session.Formats();
    if (formats.empty())
        return;
    CVideoFormatDialog dialog(this, formats, m_session.Device().Format());
    if (dialog.exec() == QDialog::Accepted) {
        const CWaitCursor wait;
        static_cast<void>(m_session.SetFormat(dialog.Values())); // the session tells of a failure
        ShowWindow();
    }
}

bool CCaptureSetupDialog::Accepts() {
    return m_session.AcceptSetup();
}

void CCaptureSetupDialog::done(int result) {
    static_cast<void>(m_session.Disconnect()); // whatever comes of it, the dialog closes
    CDialog::done(result);
}

} // namespace velmor
