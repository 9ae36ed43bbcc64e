// zarvion-cli reduce SRC -o OUT: a reduced mechanism from the results of a solved file.

#include "CliCommand.h"

#include "reduction/ReductionSetup.h"
#include "shell/Error.h"
#include "shell/TextFormat.h"

#include <iostream>
#include <map>
#include <memory>
#include <optional>

namespace zarvion::cli {
namespace {

struct ReduceArguments {
    std::string source;
    std::string output;
    std::optional<std::string> temperature;
    std::vector<std::string> targets;
    std::optional<std::string> others;
    std::optional<std::string> every;
    bool quiet = false;
};

std::string Plain(std::string text)
{
    std::string out;
    for (char c : text) {
        if (c != '\r') {
            out += c;
        }
    }
    return out;
}

int runReduce(const ReduceArguments& args)
{
    using namespace zarvion::reduction;
    ReductionSetup setup;
    setup.SourcePath = args.source;
    setup.reducedPathText = args.output;
    postprocessor::ResultSet results;
    if (auto r = Prepare(setup, results); !r.refusal.empty()) {
        throw CommandFailure{r.refusal.message.text};
    }

    if (!args.targets.empty()) {
        for (auto& row : setup.SpeciesTable) {
            row.parameter.clear();
        }
        for (const auto& t : args.targets) {
            const auto eq = t.rfind('=');
            if (eq == std::string::npos || eq == 0) {
                throw CommandFailure{"--target expects NAME=P, got '" + t + "'"};
            }
            const std::string name = t.substr(0, eq);
            bool found = false;
            for (auto& row : setup.SpeciesTable) {
                if (row.name == name) {
                    row.parameter = t.substr(eq + 1);
                    found = true;
                }
            }
            if (!found) {
                throw CommandFailure{"--target: no species '" + name + "' in " + args.source};
            }
        }
        if (!args.temperature) {
            setup.temperatureText.clear();
        }
    }
    if (args.temperature) {
        if (setup.TemperatureMode == 0 && !args.temperature->empty()) {
            throw CommandFailure{"--temperature: the problem has a constant temperature, which "
                                 "can be no target"};
        }
        setup.temperatureText = *args.temperature;
    }
    if (args.others) {
        setup.nonTargetText = *args.others;
    }
    if (args.every) {
        setup.intervalText = *args.every;
    }
    ReductionRequest request;
    if (auto r = BuildRequest(setup, request); !r.empty()) {
        throw CommandFailure{r.message.text};
    }
    ReductionTables tables;
    const ReductionOutcome run =
        ReduceMechanism(tables, results, args.source, request, {}, shell::Now());
    if (run.failed) {
        throw CommandFailure{"the concentrations of the first result row cannot be computed"};
    }
    for (const auto& fault : run.reported) {
        std::cerr << fault << "\n";
    }
    for (const auto& m : run.messages) {
        std::cout << Plain(m.text) << "\n";
    }
    if (!args.quiet) {
        std::cout << "rows analysed\t" << run.rowsAnalysed << "\n"
                  << "species\t" << tables.ReducedSpeciesCount << " of " << tables.NumSpecies
                  << "\n"
                  << "reactions\t" << tables.ReducedReactionCount << " of "
                  << tables.NumReactions << "\n";
    }
    return run.fileWritten ? 0 : 1;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto args = std::make_shared<ReduceArguments>();
    CLI::App* cmd = app.add_subcommand(
        "reduce",
        "Derive a reduced mechanism from the results of a solved file and write it as a new "
        "solver file without results. Without --target every species present at the start is "
        "a target at 0.1 (and temperature at 0.1 when the problem solves the energy equation); "
        "with --target only the named species are, and temperature only with --temperature. "
        "Prints the result message, then rows analysed and the kept counts. Exit code 1 when "
        "no file was written, 2 on a refusal");
    cmd->add_option("source", args->source, "solved solver file")->required();
    cmd->add_option("-o,--output", args->output, "reduced solver file to write")->required();
    cmd->add_option("--temperature", args->temperature,
                    "temperature target parameter on [0, 1]; an empty text clears it");
    cmd->add_option("--target", args->targets, "species target NAME=P, P on [0, 1]; repeatable");
    cmd->add_option("--others", args->others, "non-target parameter on [0, 1] (default 0.3)");
    cmd->add_option("--every", args->every, "analyse every N-th result row (default 1)");
    cmd->add_flag("--quiet", args->quiet, "print the result message only");
    cmd->callback([args, &exitCode] {
        try {
            exitCode = runReduce(*args);
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
