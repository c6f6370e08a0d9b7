#pragma once

#include "platform/files/Files.h"

#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QTimer>
#include <deque>
#include <functional>
#include <map>

namespace velmor {

/// Small pictures for the rows of a list. Reading an image takes a while, so a picture that is asked for is made
/// only when the program is idle, one at a time.
class CRowThumbnails {
public:
    static constexpr QSize size{48, 36}; ///< logical pixels

    /// `source` gives the picture of a file, null when there is none. `made` is called after a picture was made.
    CRowThumbnails(std::function<QPixmap(const Path& file)> source, std::function<void()> made);

    /// The picture of a file. Null, or what the file was before it changed, until it is made; null for good when
    /// the file has none.
    QIcon Find(const Path& file);
    /// What was asked for and is not made yet is not wanted any more.
    void ForgetWanted() { m_wanted.clear(); }

private:
    struct CEntry {
        CFileIdentity identity;
        QIcon icon;
    };

    void MakeNext();

    std::function<QPixmap(const Path& file)> m_source;
    std::function<void()> m_told;
    std::map<Path, CEntry> m_made;
    std::deque<Path> m_wanted; ///< in the order in which they are made
    QTimer m_idle;
};

} // namespace velmor
