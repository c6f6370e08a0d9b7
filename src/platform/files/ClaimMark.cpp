#include "platform/files/ClaimMark.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <set>
#include <sys/random.h>
#include <unistd.h>

namespace velmor {

namespace {

// A name is .velmor-MAKER-NUMBER, both hexadecimal.
constexpr std::string_view mark = ".velmor-";
constexpr std::string_view folderEnding = ".files";
constexpr std::size_t makerLength = 8;
constexpr std::size_t numberLength = 16;
constexpr std::size_t claimLength = mark.size() + makerLength + 1 + numberLength;

bool IsHexadecimal(std::string_view text) {
    return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::string_view MakerOf(std::string_view claim) {
    return claim.substr(mark.size(), makerLength);
}

bool IsClaim(std::string_view name) {
    if (!name.starts_with(mark) || name.size() < claimLength)
        return false;
    const std::string_view ending = name.substr(claimLength);
    return (ending == claimedFileEnding || ending == folderEnding) && IsHexadecimal(MakerOf(name)) &&
           name[mark.size() + makerLength] == '-' &&
           IsHexadecimal(name.substr(mark.size() + makerLength + 1, numberLength));
}

} // namespace

std::string ThisMaker() {
    std::array<char, makerLength> id{};
    const int file = ::open("/proc/sys/kernel/random/boot_id", O_RDONLY | O_CLOEXEC);
    const bool isRead = file >= 0 && ::read(file, id.data(), id.size()) == static_cast<ssize_t>(id.size());
    if (file >= 0)
        ::close(file);
    const std::string maker(id.data(), id.size());
    return isRead && IsHexadecimal(maker) ? maker : unknownMaker;
}

std::optional<std::string> NewClaim(const std::string& maker) {
    std::array<unsigned char, numberLength / 2> number{};
    if (::getentropy(number.data(), number.size()) != 0)
        return std::nullopt;
    constexpr std::string_view digits = "0123456789abcdef";
    std::string claim = std::string(mark) + maker + "-";
    for (const unsigned char byte : number)
        claim += {digits[byte / 16], digits[byte % 16]};
    return claim;
}

Path FolderOfClaim(const Path& file) {
    Path folder = file;
    return folder.replace_extension(folderEnding);
}

std::vector<std::string> ClaimsIn(const Path& folder) {
    std::set<std::string> claims;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), ::closedir);
    while (const dirent* entry = directory ? ::readdir(directory.get()) : nullptr)
        if (const std::string_view name = entry->d_name; IsClaim(name) && MakerOf(name) != unknownMaker)
            claims.emplace(name.substr(0, claimLength));
    return {claims.begin(), claims.end()};
}

bool IsOfThisMaker(const std::string& claim) {
    return MakerOf(claim) == ThisMaker();
}

// A byte that no file reaches: some shares keep other programs from reading what is locked. The lock belongs to the
// open file and not to the process, which may have a file open twice.
ClaimLock LockClaim(int descriptor) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = off_t{1} << 62;
    lock.l_len = 1;
    if (::fcntl(descriptor, F_OFD_SETLK, &lock) == 0)
        return ClaimLock::Taken;
    return errno == EAGAIN || errno == EACCES ? ClaimLock::Held : ClaimLock::Unknown;
}

} // namespace velmor
