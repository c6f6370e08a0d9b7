#pragma once

#include "platform/files/Files.h"

#include <QPixmap>
#include <QSize>
#include <QTimer>
#include <deque>
#include <functional>
#include <map>
#include <optional>

namespace velmor {

/// Small pictures of the drawings in the sheet. Reading an image takes a while, so one that is asked for is made
/// when the program is idle, one at a time, those asked for last first: they are the ones in view.
class CSheetPictures {
public:
    /// `scale` is the screen's; `made` is called after a picture was made.
    CSheetPictures(double scale, std::function<void()> made);

    /// Logical pixels that a picture takes at most; those of another size are made anew.
    void SetSize(QSize most);
    /// The picture of a file; null until it is made, and for good when the file has none.
    QPixmap Find(const Path& file);
    /// Files may have changed: each is looked at again when it is asked for. Until a new picture is made, the old
    /// one is there.
    void Recheck();

private:
    struct CEntry {
        std::optional<CFileIdentity> identity;
        QPixmap pixmap;
        bool checked = true;
    };

    void MakeNext();

    double m_scale;
    QSize m_size;
    std::function<void()> m_told;
    std::map<Path, CEntry> m_made;
    std::deque<Path> m_wanted; ///< the next one last
    QTimer m_idle;
};

} // namespace velmor
