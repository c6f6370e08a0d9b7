#pragma once

#include "platform/files/Files.h"

namespace velmor {

/// A file in the making, under a hidden name that nobody can foresee and that is marked as ours. As long as the
/// object has it, a lock on it tells every program that asks, on this machine or on another one that shares the
/// folder, that its maker is alive; the system gives the lock up when the process ends in whatever way.
class CClaimedFile {
public:
    /// Nothing when no file can be made in the folder.
    static std::optional<CClaimedFile> Make(const Path& folder);

    CClaimedFile(CClaimedFile&& other) noexcept;
    CClaimedFile& operator=(CClaimedFile&& other) noexcept;
    CClaimedFile(const CClaimedFile&) = delete;
    CClaimedFile& operator=(const CClaimedFile&) = delete;
    /// Removes it.
    ~CClaimedFile();

    /// -1 once the file has been moved or removed.
    int Descriptor() const { return m_descriptor; }
    const Path& Name() const { return m_name; }
    /// Gives it its place and name for good, over a file that is there. On failure it is removed.
    [[nodiscard]] bool MoveTo(const Path& target);
    void Remove();

private:
    CClaimedFile(int descriptor, Path name);
    void Close();

    int m_descriptor = -1;
    Path m_name;
};

/// A folder in the making, private to its user, beside a claimed file that tells that its maker is alive.
class CClaimedFolder {
public:
    /// Removes what is abandoned in `parent` first. Nothing when no folder can be made there.
    static std::optional<CClaimedFolder> Make(const Path& parent);

    CClaimedFolder(CClaimedFolder&& other) noexcept = default;
    CClaimedFolder& operator=(CClaimedFolder&&) = delete;
    /// Removes it with all that it holds.
    ~CClaimedFolder();

    Path File(const std::string& name) const { return m_name / PathOf(name); }
    const Path& Name() const { return m_name; }

private:
    explicit CClaimedFolder(CClaimedFile sign);

    CClaimedFile m_sign;
    Path m_name;
};

/// Removes from a folder, not from the folders in it, what programs that are gone were making there: claimed files
/// and folders on which nobody holds a lock. What another machine made, or this one before it was started again,
/// goes when nothing has touched it for a day besides, since there are shares whose locks reach no other machine.
/// What a file system without locks holds stays, and so does everything without our mark in its name.
void RemoveAbandoned(const Path& folder);

} // namespace velmor
