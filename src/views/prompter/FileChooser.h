#pragma once

#include "platform/files/Files.h"
#include "platform/files/Profile.h"

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
    /// Keeps the chosen filters from one run to the next in section "Remember" of a profile, which outlives the
    /// chooser. Without one they are kept for the run.
    void SetProfile(CProfile* profile) { m_profile = profile; }
    /// In the order of their names, numbers by their value, so that drawings come as they are counted. Empty when
    /// cancelled.
    std::vector<Path> AskToOpen(QWidget* parent, const CFileRequest& request);
    /// One file that may exist or not, or nothing when cancelled.
    std::vector<Path> AskToSave(QWidget* parent, const CFileRequest& request);

private:
    std::vector<Path> Ask(QWidget* parent, const CFileRequest& request, bool save);
    CProfile& Filters() { return m_profile != nullptr ? *m_profile : m_ownProfile; }

    std::map<std::string, QString> m_folders;
    CProfile m_ownProfile;
    CProfile* m_profile = nullptr;
};

} // namespace velmor
