#include "platform/files/ClaimMark.h"
#include "platform/files/ClaimedFile.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmor {

namespace {

constexpr std::time_t untouchedSeconds = 24 * 60 * 60;

bool IsUntouched(const struct stat& info) {
    return info.st_mtime < std::time(nullptr) - untouchedSeconds;
}

/// A claim found in a folder, on which this process holds the lock if it could be had.
class CFoundClaim {
public:
    CFoundClaim(const Path& parent, const std::string& claim)
        : m_file(parent / (claim + claimedFileEnding)),
          m_folder(FolderOfClaim(m_file)),
          m_isOurs(IsOfThisMaker(claim)),
          m_descriptor(::open(m_file.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)),
          m_hasFile(m_descriptor >= 0 || errno != ENOENT) {}
    CFoundClaim(const CFoundClaim&) = delete;
    CFoundClaim& operator=(const CFoundClaim&) = delete;
    ~CFoundClaim() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    // A folder's file is made before it and goes after it.
    bool IsAbandoned() const {
        struct stat info {};
        if (!m_hasFile)
            return ::lstat(m_folder.c_str(), &info) == 0 && (m_isOurs || IsUntouched(info));
        return m_descriptor >= 0 && ::fstat(m_descriptor, &info) == 0 && S_ISREG(info.st_mode) &&
               (m_isOurs || IsUntouched(info)) && LockClaim(m_descriptor) == ClaimLock::Taken;
    }

    void Remove(bool onlyOwn) const {
        if (!RemoveFolder(onlyOwn) || !m_hasFile)
            return; // with the file that says so, what is left of the folder is looked at again
        ::unlink(m_file.c_str());
    }

private:
    // In a folder that all users share, another one could put something else in its place meanwhile.
    bool RemoveFolder(bool onlyOwn) const {
        struct stat info {};
        if (::lstat(m_folder.c_str(), &info) != 0)
            return true;
        return S_ISDIR(info.st_mode) && (!onlyOwn || info.st_uid == ::geteuid()) && RemoveFolderTree(m_folder);
    }

    Path m_file;
    Path m_folder;
    bool m_isOurs;
    int m_descriptor;
    bool m_hasFile;
};

} // namespace

void RemoveAbandoned(const Path& folder) {
    struct stat info {};
    const bool isShared = ::stat(folder.c_str(), &info) == 0 && (info.st_mode & S_ISVTX) != 0;
    for (const std::string& claim : ClaimsIn(folder))
        if (const CFoundClaim found(folder, claim); found.IsAbandoned())
            found.Remove(isShared);
}

} // namespace velmor
