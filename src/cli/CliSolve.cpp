// zarvion-cli solve FILE: runs zarvion-solver (from the folder of zarvion-cli) on FILE, with its
// progress lines passed through. Exit code 0 when solved, 2 when the run ended abnormally.

#include "CliCommand.h"

#include <spawn.h>
#include <sys/wait.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

extern char** environ;

namespace zarvion::cli {
namespace {

std::filesystem::path solverProgram()
{
    std::error_code ec;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (ec) throw CommandFailure{"Cannot find the folder of zarvion-cli: " + ec.message()};
    return self.parent_path() / "zarvion-solver";
}

int runSolver(const std::string& file)
{
    const std::string program = solverProgram().string();
    std::vector<std::string> args{program, file};
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawn(&pid, program.c_str(), nullptr, nullptr, argv.data(), environ) != 0)
        throw CommandFailure{"Cannot start " + program};
    int status = 0;
    if (waitpid(pid, &status, 0) < 0) throw CommandFailure{"Lost the solver process"};
    if (!WIFEXITED(status)) throw CommandFailure{"The solver was terminated abnormally."};
    return WEXITSTATUS(status);
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto file = std::make_shared<std::string>();
    CLI::App* cmd = app.add_subcommand("solve", "Solve the problem of a solver file with zarvion-solver");
    cmd->add_option("file", *file, "solver file; its results section is replaced")->required();
    cmd->callback([file, &exitCode] {
        const int rc = runSolver(*file);
        if (rc == 1)
            throw CommandFailure{"The solver has been terminated abnormally; see the ERROR line in " +
                                 *file};
        if (rc != 0)
            throw CommandFailure{"The solver could not use " + *file + " (exit code " +
                                 std::to_string(rc) + ")"};
        exitCode = 0;
    });
});

} // namespace
} // namespace zarvion::cli
