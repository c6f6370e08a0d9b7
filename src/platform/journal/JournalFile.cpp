#include "platform/journal/JournalFile.h"

#include "platform/journal/JournalFormat.h"
#include "platform/journal/Sqlite.h"
#include "platform/journal/WriteAheadFile.h"

#include <cerrno>
#include <new>
#include <sqlite3.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace velmor {

namespace {

[[noreturn]] void Refuse(const std::string& text, int error) {
    throw CJournalRefusal(text + ": " + std::generic_category().message(error) + ".");
}

void MakePrivateFolder(const Path& folder) {
    if (FolderExists(folder))
        return;
    if (folder.has_relative_path())
        MakePrivateFolder(folder.parent_path());
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        Refuse("The folder of the journal could not be made", errno);
}

std::vector<std::uint8_t> EmptyJournal() {
    CSqlite memory = CSqlite::InMemory();
    memory.Execute(journalLayout);
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(memory.Get(), "main", &size, 0), &sqlite3_free);
    if (!bytes)
        throw std::bad_alloc();
    std::vector<std::uint8_t> file(bytes.get(), bytes.get() + size);
    // In memory there is no writing ahead, so a file of that kind cannot be asked for.
    file[writeFormatAt] = file[readFormatAt] = writeAheadFormat;
    return file;
}

} // namespace

void MakeJournalFile(const Path& file) {
    struct stat info {};
    const bool there = ::stat(file.c_str(), &info) == 0;
    if (there && !S_ISREG(info.st_mode))
        throw CJournalDamage(noJournal);
    if (there && info.st_size > 0)
        return;
    MakePrivateFolder(file.parent_path());
    // Under another name until it is whole. A link under the name is only made where none is, so of two programs
    // that begin together one finds the other's file.
    const Path fresh = file.string() + ".new" + std::to_string(::getpid());
    static_cast<void>(RemoveFile(fresh));
    if (!WriteFileAtomically(fresh, EmptyJournal()))
        Refuse("The journal could not be made", errno);
    static_cast<void>(RemoveFile(WriteAheadPath(file))); // it belongs to a file that is gone
    const bool made = ::chmod(fresh.c_str(), 0600) == 0 && (!there || RemoveFile(file)) &&
                      (::link(fresh.c_str(), file.c_str()) == 0 || errno == EEXIST);
    const int error = errno;
    static_cast<void>(RemoveFile(fresh));
    if (!made)
        Refuse("The journal could not be made", error);
}

} // namespace velmor
