// Makes the manual that Help opens: a page of Markdown, and after it every command with its keys, from the table
// that the menus are made of.
//
//     make-manual FIRST_SCENE.md MANUAL.pdf

#include "app/CommandTable.h"
#include "app/MenuTable.h"
#include "views/Text.h"

#include <QFile>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QTextDocument>
#include <QUrl>

namespace {

using namespace velmor;

QString Plain(const char* text) {
    QString plain = QString::fromUtf8(text).section('\t', 0, 0);
    plain.replace("&&", "\a").remove('&').replace('\a', '&');
    return plain;
}

QString KeysOf(const CCommand& command) {
    return (QString(command.keys).split("; ", Qt::SkipEmptyParts) +
            QString(command.focusedKeys).split("; ", Qt::SkipEmptyParts))
        .join(", ");
}

QString CommandPages() {
    QString pages = "\n\n# Commands\n";
    for (const CMenu& menu : Menus()) {
        pages += "\n## " + Plain(menu.title) + "\n\n| Command | Keys | What it does |\n|---|---|---|\n";
        for (const CommandId id : menu.commands) {
            if (id == CommandId::Separator)
                continue;
            const CCommand& command = CommandOf(id);
            pages += "| " + Plain(command.text) + " | " + KeysOf(command) + " | " + command.status + " |\n";
        }
    }
    return pages;
}

bool WriteManual(const QString& page, const QString& pdf) {
    QFile file(page);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QPdfWriter writer(pdf);
    writer.setTitle("Personal Velmor");
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    QTextDocument manual;
    manual.setMetaInformation(QTextDocument::DocumentUrl, QUrl::fromLocalFile(page).toString());
    manual.setMarkdown(QString::fromUtf8(file.readAll()) + CommandPages());
    manual.print(&writer);
    return QFile::exists(pdf);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    return arguments.size() == 3 && WriteManual(arguments[1], arguments[2]) ? 0 : 1;
}
