#pragma once
// Runs the built zarvion-cli as a child process and collects its exit code, stdout and stderr.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "shell/TextFile.h"

namespace zarvion::testing {

struct CliRun {
    int exitCode = -1;
    std::string out, err;
};

//! A path in this test process's own scratch folder, removed when the process ends.
inline std::filesystem::path scratch(const std::string& name)
{
    static const struct ScratchDir {
        std::filesystem::path path = std::filesystem::temp_directory_path() /
                                     ("zarvion-cli-test-" + std::to_string(::getpid()));
        ~ScratchDir()
        {
            std::error_code ec;
            std::filesystem::remove_all(path, ec);
        }
    } dir;
    std::filesystem::create_directories(dir.path);
    return dir.path / name;
}

inline std::string quoted(const std::string& s) { return "'" + s + "'"; }
inline std::string quoted(const std::filesystem::path& p) { return quoted(p.string()); }

//! zarvion-cli with the given (already quoted) arguments; stdout and stderr go to files.
inline CliRun runCli(const std::string& arguments)
{
    const auto out = scratch("stdout.txt"), err = scratch("stderr.txt");
    const std::string command = quoted(std::string(ZARVION_CLI)) + " " + arguments + " >" +
                                quoted(out) + " 2>" + quoted(err);
    const int status = std::system(command.c_str());
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return {exitCode, shell::ReadFile(out), shell::ReadFile(err)};
}

inline std::vector<std::string> splitOn(const std::string& text, char sep)
{
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, sep);) parts.push_back(part);
    return parts;
}

} // namespace zarvion::testing
