#include "platform/files/Trash.h"

#include "platform/files/SystemPaths.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace velmor {

namespace {

namespace fs = std::filesystem;

bool HasValue(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

// What others delete is not everyone's to read.
bool CreatePrivateFolder(const Path& folder) {
    if (FolderExists(folder))
        return true;
    std::error_code error;
    if (CreateFolder(folder))
        fs::permissions(folder, fs::perms::owner_all, error);
    return FolderExists(folder);
}

// As in an address: bytes that are not plain become %XX, the separators stay.
std::string Escaped(const std::string& path) {
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (plain.find(c) != std::string_view::npos)
            escaped += c;
        else
            escaped += {'%', digits[byte / 16], digits[byte % 16]};
    }
    return escaped;
}

std::string LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    std::array<char, 32> text{};
    ::localtime_r(&now, &local);
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &local)};
}

enum class Noted { Yes, NameIsTaken, No };

// A note under a name that no other has: whoever makes it owns the name.
Noted MakeNote(const Path& note, const Path& path) {
    const int descriptor = ::open(note.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return errno == EEXIST ? Noted::NameIsTaken : Noted::No;
    const std::string text = "[Trash Info]\nPath=" + Escaped(Utf8Of(path)) + "\nDeletionDate=" + LocalTime() + "\n";
    const bool isWritten = ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (::close(descriptor) == 0 && isWritten)
        return Noted::Yes;
    static_cast<void>(RemoveFile(note)); // a note about nothing does no harm
    return Noted::No;
}

bool Exists(const Path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

// "7.bit", "7 2.bit", "7 3.bit" and so on.
std::string NumberedName(const Path& name, int number) {
    if (number == 1)
        return Utf8Of(name);
    return Utf8Of(name.stem()) + " " + std::to_string(number) + Utf8Of(name.extension());
}

} // namespace

CTrash CTrash::OfThisUser() {
    const Path folder = UserDataFolder() / "Trash";
    const bool isUsed = FolderExists(folder) || HasValue("XDG_CURRENT_DESKTOP") || HasValue("DESKTOP_SESSION");
    return isUsed ? CTrash(folder) : CTrash();
}

bool CTrash::Take(const Path& path) const {
    std::error_code error;
    const Path whole = fs::absolute(path, error).lexically_normal();
    const Path files = m_folder / "files", notes = m_folder / "info";
    if (m_folder.empty() || error || !Exists(whole) || !CreatePrivateFolder(m_folder) ||
        !CreatePrivateFolder(files) || !CreatePrivateFolder(notes))
        return false;
    for (int number = 1;; ++number) {
        const std::string name = NumberedName(whole.filename(), number);
        const Path place = files / PathOf(name), note = notes / PathOf(name + ".trashinfo");
        if (Exists(place))
            continue;
        const Noted noted = MakeNote(note, whole);
        if (noted == Noted::NameIsTaken)
            continue;
        if (noted == Noted::Yes && MoveFile(whole, place))
            return true;
        if (noted == Noted::Yes)
            static_cast<void>(RemoveFile(note)); // a note about nothing does no harm
        return false;
    }
}

} // namespace velmor
