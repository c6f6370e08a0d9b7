#pragma once

#include "TestScene.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <sys/wait.h>

namespace velmor::testing {

struct CRun {
    int status = 0;
    std::string output;
    std::string error;
};

inline std::string TextOf(const std::filesystem::path& path) {
    const auto bytes = ReadBytes(path);
    return {bytes.begin(), bytes.end()};
}

/// Runs the tool itself, as a user's shell does.
class CommandLine : public ::testing::Test {
protected:
    CRun Run(const std::string& arguments) {
        const std::string command = std::string(VELMOR_CLI) + " " + arguments + " >" + (folder / "out").string() +
                                    " 2>" + (folder / "err").string() + " </dev/null";
        const int status = std::system(command.c_str());
        EXPECT_TRUE(WIFEXITED(status)) << command;
        return {WEXITSTATUS(status), TextOf(folder / "out"), TextOf(folder / "err")};
    }

    std::string Database() const { return "--database " + database.string() + " "; }

    /// Every file of the database and its bytes, to see that nothing changed.
    std::map<std::filesystem::path, std::vector<std::uint8_t>> Contents() const {
        std::map<std::filesystem::path, std::vector<std::uint8_t>> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(database))
            if (entry.is_regular_file())
                files[entry.path()] = ReadBytes(entry.path());
        return files;
    }

    CTempFolder folder;
    const std::filesystem::path database = folder / "db";
    CTestScene scene{database};
};

} // namespace velmor::testing
