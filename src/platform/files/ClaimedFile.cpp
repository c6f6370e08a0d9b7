#include "platform/files/ClaimedFile.h"

#include "platform/files/ClaimMark.h"
#include "platform/files/UnfinishedFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmor {

namespace {

constexpr int mostAttempts = 16;

// A program that clears up may have taken the file for an abandoned one before it was locked.
bool IsStillThere(int descriptor) {
    struct stat info {};
    return ::fstat(descriptor, &info) == 0 && info.st_nlink > 0;
}

/// What an attempt to make a locked file has come to; the descriptor is -1 unless it succeeded.
struct CAttempt {
    int descriptor = -1;
    bool isWorthAnother = false;
    bool hasLocks = true;
};

CAttempt TryToClaim(const Path& name, bool needsLock) {
    const int descriptor = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return {-1, errno == EEXIST, true};
    const ClaimLock lock = needsLock ? LockClaim(descriptor) : ClaimLock::Taken;
    if (lock == ClaimLock::Taken && IsStillThere(descriptor))
        return {descriptor};
    if (lock == ClaimLock::Unknown)
        ::unlink(name.c_str());
    ::close(descriptor);
    return {-1, true, lock != ClaimLock::Unknown};
}

} // namespace

CClaimedFile::CClaimedFile(int descriptor, Path name) : m_descriptor(descriptor), m_name(std::move(name)) {}

std::optional<CClaimedFile> CClaimedFile::Make(const Path& folder) {
    std::string maker = ThisMaker();
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::optional<std::string> stem = NewClaim(maker);
        if (!stem)
            break;
        Path name = folder / (*stem + claimedFileEnding);
        UnfinishedFiles().Add(name.string());
        const CAttempt made = TryToClaim(name, maker != unknownMaker);
        if (made.descriptor >= 0)
            return CClaimedFile(made.descriptor, std::move(name));
        UnfinishedFiles().Remove(name.string());
        if (!made.isWorthAnother)
            break;
        if (!made.hasLocks)
            maker = unknownMaker; // so that nobody takes it for an abandoned one
    }
    return std::nullopt;
}

CClaimedFile::CClaimedFile(CClaimedFile&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)), m_name(std::move(other.m_name)) {}

CClaimedFile& CClaimedFile::operator=(CClaimedFile&& other) noexcept {
    if (this != &other) {
        Remove();
        m_descriptor = std::exchange(other.m_descriptor, -1);
        m_name = std::move(other.m_name);
    }
    return *this;
}

CClaimedFile::~CClaimedFile() {
    Remove();
}

bool CClaimedFile::MoveTo(const Path& target) {
    if (m_descriptor < 0)
        return false;
    // Locked until it has left its name.
    const bool moved = MoveFile(m_name, target);
    if (!moved)
        ::unlink(m_name.c_str());
    Close();
    return moved;
}

void CClaimedFile::Remove() {
    if (m_descriptor < 0)
        return;
    ::unlink(m_name.c_str());
    Close();
}

void CClaimedFile::Close() {
    UnfinishedFiles().Remove(m_name.string());
    ::close(std::exchange(m_descriptor, -1));
}

CClaimedFolder::CClaimedFolder(CClaimedFile sign) : m_sign(std::move(sign)), m_name(FolderOfClaim(m_sign.Name())) {}

std::optional<CClaimedFolder> CClaimedFolder::Make(const Path& parent) {
    RemoveAbandoned(parent);
    std::optional<CClaimedFile> sign = CClaimedFile::Make(parent);
    if (!sign)
        return std::nullopt;
    const Path name = FolderOfClaim(sign->Name());
    if (::mkdir(name.c_str(), 0700) != 0)
        return std::nullopt;
    return CClaimedFolder(std::move(*sign));
}

CClaimedFolder::~CClaimedFolder() {
    if (m_sign.Descriptor() >= 0)
        static_cast<void>(RemoveFolderTree(m_name)); // what stays is cleared away by the next program
}

} // namespace velmor
