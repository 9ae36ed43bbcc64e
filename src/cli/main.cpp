// zarvion-cli: every analysis of the workbench, headless.

#include "CliCommand.h"

#include <iostream>

namespace zarvion::cli {
std::vector<Registration>& registry()
{
    static std::vector<Registration> commands;
    return commands;
}
} // namespace zarvion::cli

int main(int argc, char** argv)
{
    using namespace zarvion::cli;
    CLI::App app{"zarvion-cli: headless analyses of solver files.\n"
                 "Output is plain text on stdout; tables are tab-separated with one header line\n"
                 "unless a command says otherwise. Errors go to stderr with exit code 2."};
    app.require_subcommand(1);
    int exitCode = 0;
    for (auto& reg : registry()) {
        reg(app, exitCode);
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        int rc = app.exit(e);
        return rc == 0 ? 0 : ExitError;
    } catch (const CommandFailure& f) {
        std::cerr << f.message << "\n";
        return ExitError;
    } catch (const std::exception& e) {
        std::cerr << "error: " << e.what() << "\n";
        return ExitError;
    }
    return exitCode;
}
