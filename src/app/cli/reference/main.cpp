// Makes what tells of the command-line tool without running it, from the table that parses its arguments:
//
//     make-cli-reference PAGE.1 BASH_COMPLETION ZSH_COMPLETION

#include "app/cli/reference/CommandReference.h"

#include <fstream>

namespace {

bool Write(const char* path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    return static_cast<bool>(file.flush());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    const velmor::CCommandReference program = velmor::ReferenceOfCommandLine();
    return Write(argv[1], velmor::ManPageOf(program, VELMOR_VERSION)) &&
                   Write(argv[2], velmor::BashCompletionOf(program)) &&
                   Write(argv[3], velmor::ZshCompletionOf(program))
               ? 0
               : 1;
}
