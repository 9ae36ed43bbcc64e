// zarvion-cli chemkin FILE: the reactions of a solver file in CHEMKIN syntax.

#include "CliCommand.h"

#include "reduction/ChemkinConversion.h"
#include "shell/Error.h"

#include <iostream>
#include <memory>

namespace zarvion::cli {
namespace {

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto file = std::make_shared<std::string>();
    CLI::App* cmd = app.add_subcommand(
        "chemkin",
        "Print the reaction list of a solver file in CHEMKIN syntax: a five-line comment head "
        "(stamp, file, species and reaction counts, units), an empty line, then one line per "
        "reaction and its auxiliary lines (LOW, TROE, SRI, third-body efficiencies). A "
        "refusal goes to stderr with exit code 2");
    cmd->add_option("file", *file, "solver file")->required();
    cmd->callback([file, &exitCode] {
        try {
            const auto result = reduction::ConvertReactions(*file);
            if (!result.ok()) {
                throw CommandFailure{result.message.text};
            }
            for (const auto& line : result.lines) {
                std::cout << line << "\n";
            }
            exitCode = 0;
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
