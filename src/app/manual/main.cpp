// Makes the manual that Help opens: a page of Markdown, and after it every command with its keys, from the table
// that the menus are made of.
//
//     make-manual FIRST_SCENE.md MANUAL.pdf MANUAL.md PAGE.1
//
// The second form is for machines without a reader of the first, the third is the list of commands for man.

#include "app/window/CommandTable.h"
#include "app/window/CommandText.h"
#include "app/window/MenuTable.h"
#include "views/Text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>

#include <utility>
#include <vector>

namespace {

using namespace velmor;

QString KeysOf(const CCommand& command) {
    return (QString(command.keys).split("; ", Qt::SkipEmptyParts) +
            QString(command.focusedKeys).split("; ", Qt::SkipEmptyParts))
        .join(", ");
}

// The menus with those at their ends behind them, and the titles that lead there.
std::vector<std::pair<QString, CMenu>> AllMenus() {
    std::vector<std::pair<QString, CMenu>> all;
    for (const CMenu& menu : Menus()) {
        all.emplace_back(PlainText(menu.title), menu);
        for (const CMenu& submenu : SubmenusOf(menu))
            all.emplace_back(PlainText(menu.title) + " > " + PlainText(submenu.title), submenu);
    }
    return all;
}

QString CommandPages() {
    QString pages = "\n\n# Commands\n";
    for (const auto& [title, menu] : AllMenus()) {
        pages += "\n## " + title + "\n\n| Command | Keys | What it does |\n|---|---|---|\n";
        for (const CommandId id : menu.commands) {
            if (id == CommandId::Separator)
                continue;
            const CCommand& command = CommandOf(id);
            pages += "| " + PlainText(command.text) + " | " + KeysOf(command) + " | " + command.status + " |\n";
        }
    }
    return pages;
}

QString Escaped(QString text) {
    return text.replace('\\', "\\e").replace('-', "\\-");
}

QString ManPage() {
    QString page =
        ".TH PERSONAL\\-VELMOR 1 \"\" \"Personal Velmor " VELMOR_VERSION "\" \"User Commands\"\n"
        ".SH NAME\npersonal\\-velmor \\- draw, expose and film animation cels\n"
        ".SH SYNOPSIS\n.B personal\\-velmor\n[\\-\\-nosplash] [\\-\\-demo | SCENE.xsheet]\n"
        ".SH DESCRIPTION\nTraditional 2D cel animation: drawings on transparent cels, an exposure sheet, and a "
        "camera.\nA program that is running already comes to the front, and opens the scene.\n"
        ".SH OPTIONS\n.TP\n.B \\-\\-nosplash\nStart without the splash window\n"
        ".TP\n.B \\-\\-demo\nOpen the demonstration scene, which is made where there is none\n"
        ".TP\n.B \\-\\-help\nList the options\n.TP\n.B \\-\\-version\nPrint the version\n.SH COMMANDS\n";
    for (const auto& [title, menu] : AllMenus()) {
        page += ".SS " + Escaped(title) + "\n";
        for (const CommandId id : menu.commands) {
            if (id == CommandId::Separator)
                continue;
            const CCommand& command = CommandOf(id);
            const QString keys = KeysOf(command);
            page += ".TP\n.B " + Escaped(PlainText(command.text)) +
                    (keys.isEmpty() ? "" : " (" + Escaped(keys) + ")") + "\n\\&" + Escaped(command.status) + "\n";
        }
    }
    return page + ".SH FILES\n.I ~/.config/personal\\-velmor.ini\n.SH SEE ALSO\n.BR velmor\\-cli (1)\n";
}

// Each picture of a page in place of its name, so that the manual needs no files beside it.
QString WithPictures(QString text, const QDir& folder) {
    const QRegularExpression picture(R"(\]\(([^)]+\.png)\))");
    for (auto found = picture.match(text); found.hasMatch(); found = picture.match(text, found.capturedEnd())) {
        QFile file(folder.filePath(found.captured(1)));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QString data = "data:image/png;base64," + QString::fromLatin1(file.readAll().toBase64());
        text.replace(found.capturedStart(1), found.capturedLength(1), data);
    }
    return text;
}

bool Write(const QString& text, const QString& name) {
    QFile file(name);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool Print(const QString& text, const QString& pdf) {
    QPdfWriter writer(pdf);
    writer.setTitle("Personal Velmor");
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    QTextDocument manual;
    manual.setMarkdown(text);
    manual.print(&writer);
    return QFile::exists(pdf);
}

// The pages one after the other, and all commands behind them.
bool WriteManual(const QStringList& pages, const QString& pdf, const QString& markdown) {
    QString text;
    for (const QString& page : pages) {
        QFile file(page);
        if (!file.open(QIODevice::ReadOnly))
            return false;
        const QString withPictures = WithPictures(QString::fromUtf8(file.readAll()), QFileInfo(page).dir());
        if (withPictures.isEmpty())
            return false;
        text += withPictures + "\n\n";
    }
    return Print(text + CommandPages(), pdf) && Write(text + CommandPages(), markdown);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    constexpr qsizetype written = 3; // manual as PDF, as Markdown, page of the man program
    const qsizetype pages = arguments.size() - 1 - written;
    const bool isDone = pages > 0 &&
                        WriteManual(arguments.mid(1, pages), arguments[1 + pages], arguments[2 + pages]) &&
                        Write(ManPage(), arguments[3 + pages]);
    return isDone ? 0 : 1;
}
