#include "views/prompter/FileChooser.h"

#include "scene/DialogRequests.h"
#include "views/Text.h"
#include "views/widgets/WaitCursor.h"

#include <QCollator>
#include <QFileDialog>
#include <QLocale>
#include <algorithm>

namespace velmor {

namespace {

constexpr const char* section = "Remember";

std::string FilterKey(const CFileRequest& request) {
    return request.title + " Filter";
}

/// The filter that was chosen last, as long as it is one of them.
QString FilterOf(const CFileRequest& request, const QStringList& filters, const CProfile& remembered) {
    const QString last = ToQt(remembered.GetString(section, FilterKey(request), ""));
    return filters.contains(last) ? last : filters.value(static_cast<qsizetype>(request.firstFilter));
}

} // namespace

QStringList NameFilters(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        // The text often shows the pattern itself, in brackets at its end.
        QString text = parts[i].trimmed();
        if (text.endsWith(')'))
            text = text.left(text.lastIndexOf('(')).trimmed();
        filters.append(text + " (" + QString(parts[i + 1]).replace(';', ' ').simplified() + ")");
    }
    return filters;
}

std::vector<Path> CFileChooser::AskToOpen(QWidget* parent, const CFileRequest& request) {
    return Ask(parent, request, false);
}

std::vector<Path> CFileChooser::AskToSave(QWidget* parent, const CFileRequest& request) {
    return Ask(parent, request, true);
}

std::vector<Path> CFileChooser::Ask(QWidget* parent, const CFileRequest& request, bool save) {
    QString& folder = m_folders[request.title];
    QFileDialog dialog(parent, ToQt(request.title), folder);
    dialog.setOption(QFileDialog::DontUseNativeDialog, QGuiApplication::platformName() == "offscreen");
    // Whoever writes the file refuses to replace one, with a message of its own.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile
                            : (request.several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile));
    const QStringList filters = NameFilters(request.filter);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(FilterOf(request, filters, Filters()));
    dialog.setDefaultSuffix(ToQt(request.defaultExtension));
    if (!request.defaultName.empty())
        dialog.selectFile(ToQt(request.defaultName));

    const CWaitPause pause;
    if (dialog.exec() != QDialog::Accepted)
        return {};
    folder = dialog.directory().absolutePath();
    static_cast<void>(Filters().WriteString(section, FilterKey(request), FromQt(dialog.selectedNameFilter())));
    QStringList files = dialog.selectedFiles();
    // Of any language: the one of a plain environment compares bytes.
    QCollator byNumber{QLocale(QLocale::English)};
    byNumber.setNumericMode(true);
    std::sort(files.begin(), files.end(), byNumber);
    std::vector<Path> paths;
    for (const QString& file : files)
        paths.push_back(PathOf(FromQt(QDir::toNativeSeparators(file))));
    return paths;
}

} // namespace velmor
