#pragma once

#include "platform/Files.h"

#include <QString>
#include <QStringList>
#include <map>
#include <string>
#include <vector>

class QWidget;

namespace velmor {

struct CFileRequest;

/// The parts of a filter "text|*.ext|text|*.ext||" as the file dialog takes them: "text (*.ext)".
QStringList NameFilters(const std::string& filter);

/// Asks for files to open or to write; remembers under each title where the user was and which filter was chosen.
class CFileChooser {
public:
    /// In the order of their names, numbers by their value, so that drawings come as they are counted. Empty when
    /// cancelled.
    std::vector<Path> AskToOpen(QWidget* parent, const CFileRequest& request);
    /// One file that may exist or not, or nothing when cancelled.
    std::vector<Path> AskToSave(QWidget* parent, const CFileRequest& request);

private:
    struct CPlace {
        QString folder;
        QString filter;
    };

    std::vector<Path> Ask(QWidget* parent, const CFileRequest& request, bool save);

    std::map<std::string, CPlace> m_places;
};

} // namespace velmor
