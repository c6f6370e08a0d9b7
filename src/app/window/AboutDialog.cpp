#include "app/window/AboutDialog.h"

#include "views/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int iconSize = 96;

} // namespace

CAboutDialog::CAboutDialog(QWidget* parent) : CDialog(parent, "About Personal Velmor") {
    auto* icon = new QLabel;
    icon->setPixmap(Icon("personal-velmor").pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
    auto* text = new QLabel("<h2>Personal Velmor</h2><p>Version " VELMOR_VERSION
                            "</p><p>Traditional 2D cel animation:<br>cels, exposure sheet, camera and sound.</p>");
    text->setTextFormat(Qt::RichText);
    auto* row = new QHBoxLayout;
    row->setSpacing(18);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text);
    Body().addLayout(row);
    RemoveCancel();
}

} // namespace velmor
