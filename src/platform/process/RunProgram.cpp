#include "platform/process/RunProgram.h"

#include <cerrno>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace velmor {

Path ProgramFile() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

int RunProgram(const Path& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    pid_t process = 0;
    if (::posix_spawnp(&process, pointers.front(), nullptr, nullptr, pointers.data(), ::environ) != 0)
        return -1;
    int status = 0;
    while (::waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace velmor
