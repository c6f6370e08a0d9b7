#include "views/dialogs/RenderedDialog.h"

#include "views/Text.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace velmor {

namespace {

QLabel* NewText(const QString& name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 60);
    return label;
}

QString ResultOf(const CRenderedRequest& request) {
    const QString frames =
        request.frameCount == 1 ? QString("1 frame") : QString("%1 frames").arg(request.frameCount);
    const Path& shown = request.isMovie ? request.file : request.file.parent_path();
    return frames + " rendered to\n" + ToQt(Utf8Of(shown));
}

} // namespace

bool CRenderedDialog::OpenOnDesktop(const Path& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(Utf8Of(path))));
}

CRenderedDialog::CRenderedDialog(QWidget* parent, const CRenderedRequest& request, Opener open)
    : CDialog(parent, "Render"), m_request(request), m_open(std::move(open)), m_failure(NewText("failure", {})) {
    Body().addWidget(NewText("text", ResultOf(request)));
    auto* row = new QHBoxLayout;
    if (request.isMovie)
        connect(&AddButton(*row, "play", "&Play", "Plays the movie"), &QPushButton::clicked, this,
                [this] { Play(); });
    connect(&AddButton(*row, "openFolder", "Open &Folder", "Shows the folder of the files"), &QPushButton::clicked,
            this, [this] { Open(m_request.file.parent_path()); });
    row->addStretch(1);
    Body().addLayout(row);
    m_failure->hide();
    Body().addWidget(m_failure);
    RemoveCancel();
    OkButton().setText("&Close");
    OkButton().setFocus();
}

QPushButton& CRenderedDialog::AddButton(QHBoxLayout& row, const QString& name, const QString& text,
                                        const QString& toolTip) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    row.addWidget(button);
    return *button;
}

void CRenderedDialog::Play() {
    if (m_request.play)
        m_request.play();
    else
        Open(m_request.file);
}

void CRenderedDialog::Open(const Path& path) {
    m_failure->setText("There is no program here that opens it.");
    m_failure->setVisible(!m_open(path));
}

} // namespace velmor
