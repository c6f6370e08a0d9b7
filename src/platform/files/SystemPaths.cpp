#include "platform/files/SystemPaths.h"

#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace velmor {

namespace {

// The folder that an environment variable names; empty when it names none by its full path.
Path FolderOfVariable(const char* name) {
    const char* value = std::getenv(name);
    const Path folder = value ? Path(value) : Path();
    return folder.is_absolute() ? folder : Path();
}

Path HomeFolder() {
    Path home = FolderOfVariable("HOME");
    if (!home.empty())
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? Path(user->pw_dir) : Path("/");
}

} // namespace

Path ProgramFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

Path UserConfigurationFolder() {
    const Path folder = FolderOfVariable("XDG_CONFIG_HOME");
    return folder.empty() ? HomeFolder() / ".config" : folder;
}

Path UserDataFolder() {
    const Path folder = FolderOfVariable("XDG_DATA_HOME");
    return folder.empty() ? HomeFolder() / ".local" / "share" : folder;
}

Path UserStateFolder() {
    const Path folder = FolderOfVariable("XDG_STATE_HOME");
    return folder.empty() ? HomeFolder() / ".local" / "state" : folder;
}

Path TemporaryFolder() {
    std::error_code error;
    const Path folder = std::filesystem::temp_directory_path(error);
    return folder.empty() ? Path("/tmp") : folder;
}

bool FolderIsWritable(const Path& folder) {
    std::error_code error;
    Path nearest = std::filesystem::absolute(folder, error);
    while (!std::filesystem::exists(nearest, error) && nearest.has_relative_path())
        nearest = nearest.parent_path();
    return FolderExists(nearest) && ::faccessat(AT_FDCWD, nearest.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

} // namespace velmor
