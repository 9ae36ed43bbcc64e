#pragma once
// Each command of zarvion-cli lives in its own source file and registers itself here,
// so commands can be added without touching main().

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace zarvion::cli {

//! Exit codes: 0 success, 1 a check that answered "no" where the command says so,
//! 2 an error (message on stderr).
inline constexpr int ExitError = 2;

//! Thrown by a command to end with a message on stderr and exit code 2.
struct CommandFailure {
    std::string message;
};

//! A registration adds one subcommand to the app; the callback it installs runs the command.
using Registration = std::function<void(CLI::App& app, int& exitCode)>;

std::vector<Registration>& registry();

//! Place one of these at namespace scope in a command's source file.
struct RegisterCommand {
    explicit RegisterCommand(Registration r) { registry().push_back(std::move(r)); }
};

} // namespace zarvion::cli
