#pragma once

#include "platform/files/Files.h"

namespace velmor {

/// The folder into which desktops move what is deleted, so that it can be brought back: "files" beside "info",
/// where a note for each says where it was and when it was deleted (Trash, freedesktop.org).
class CTrash {
public:
    /// No trash: nothing can be taken.
    CTrash() = default;
    /// `folder` is made when something is first taken.
    explicit CTrash(Path folder) : m_folder(std::move(folder)) {}
    /// The trash in this user's data folder, if there is one or a desktop is running that would show it.
    static CTrash OfThisUser();

    /// Moves a file, or a folder with all that it holds, into the trash. False, and nothing moved, when there is no
    /// trash, when it is on another file system, or when it cannot be written.
    [[nodiscard]] bool Take(const Path& path) const;

private:
    Path m_folder;
};

} // namespace velmor
