// zarvion-cli import CHEM [THERM] -o FILE: a CHEMKIN-II mechanism as a solver file.

#include "CliCommand.h"

#include "shell/Error.h"
#include "solverfile/ChemkinImport.h"
#include "solverfile/ChemkinWriter.h"

#include <iostream>
#include <memory>
#include <optional>

namespace zarvion::cli {
namespace {

struct ImportArguments {
    std::string mechanism;
    std::string thermo;
    std::string output;
    std::string moleFractions;
    bool adiabatic = false;
    bool skipUnsupported = false;
    solverfile::ProblemSettings problem;
};

void printReport(const solverfile::ChemkinImport& result, std::ostream& out)
{
    using solverfile::ImportSeverity;
    out << "Species kept: " << result.species.size() << " (left out: " << result.droppedSpeciesCount
        << ")\n";
    out << "Reactions read: " << result.sourceReactionCount << ", kept: " << result.reactions.size()
        << " (a split REV reaction counts twice)\n";
    out << "REV reactions split into forward and reverse: " << result.revSplitCount << "\n";
    out << "REV reactions with a zero reverse rate, forward only: " << result.revZeroCount << "\n";
    out << "REV reactions whose reverse has over 3 reactant molecules, forward only: "
        << result.revForwardOnlyCount << "\n";
    out << "Reactions left out: " << result.droppedReactionCount << "\n";
    out << "Warnings: " << result.count(ImportSeverity::Warning)
        << ", refusals: " << result.count(ImportSeverity::Refusal)
        << ", errors: " << result.count(ImportSeverity::Error) << "\n";
    for (const auto& m : result.messages) {
        out << solverfile::FormatImportMessage(m) << "\n";
    }
}

int runImport(const ImportArguments& args)
{
    std::optional<std::filesystem::path> thermo;
    if (!args.thermo.empty()) {
        thermo = args.thermo;
    }
    solverfile::ChemkinOptions options;
    options.skipUnsupported = args.skipUnsupported;
    auto result = solverfile::ImportChemkinFiles(args.mechanism, thermo, options);
    printReport(result, std::cout);
    if (!result.succeeded()) {
        std::cerr << "The mechanism was not imported";
        if (result.count(solverfile::ImportSeverity::Refusal) > 0 && !args.skipUnsupported) {
            std::cerr << "; --skip-unsupported leaves out what the solver file cannot hold";
        }
        std::cerr << ".\n";
        return ExitError;
    }
    solverfile::ProblemSettings problem = args.problem;
    problem.TemperatureMode = args.adiabatic ? 1 : 0;
    if (!args.moleFractions.empty()) {
        problem.moleFractions = solverfile::ParseMoleFractionList(args.moleFractions);
    } else {
        std::cout << "No initial mole fractions given: all are 0.\n";
    }
    solverfile::SolverFileSource source{std::filesystem::path(args.mechanism).filename().string(),
                                        thermo ? thermo->filename().string() : std::string()};
    auto lines = solverfile::BuildSolverFileLines(result, problem, source);
    solverfile::WriteSolverFile(args.output, lines);
    std::cout << "Written: " << args.output << "\n";
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto args = std::make_shared<ImportArguments>();
    CLI::App* cmd = app.add_subcommand("import", "Import a CHEMKIN-II mechanism as a solver file");
    cmd->add_option("mechanism", args->mechanism, "CHEMKIN mechanism file")->required();
    cmd->add_option("thermo", args->thermo, "separate thermodynamic data file");
    cmd->add_option("-o,--output", args->output, "solver file to write")->required();
    auto& p = args->problem;
    cmd->add_option("--pressure", p.pressureAtm, "pressure [atm]")->capture_default_str();
    cmd->add_option("--temperature", p.initialTemperature, "initial temperature [K]")
        ->capture_default_str();
    cmd->add_flag("--adiabatic", args->adiabatic,
                  "temperature follows the energy equation (default: constant temperature)");
    cmd->add_option("--tmin", p.minTemperature, "minimal allowable temperature [K]")
        ->capture_default_str();
    cmd->add_option("--tmax", p.maxTemperature, "maximum allowable temperature [K]")
        ->capture_default_str();
    cmd->add_option("--initial-time", p.initialTime, "initial time [s]")->capture_default_str();
    cmd->add_option("--final-time", p.finalTime, "final time [s]")->capture_default_str();
    cmd->add_option("--initial-step", p.initialStep, "initial step size [s]")
        ->capture_default_str();
    cmd->add_option("--max-steps", p.maxSteps, "maximum number of steps")->capture_default_str();
    cmd->add_option("--rtol", p.relativeTolerance, "relative tolerance")->capture_default_str();
    cmd->add_option("--atol", p.absoluteTolerance, "absolute tolerance")->capture_default_str();
    cmd->add_option("--output-every", p.outputEvery, "write every n-th accepted step")
        ->capture_default_str();
    cmd->add_option("--mole-fractions", args->moleFractions,
                    "initial amounts, e.g. \"CH4:1,O2:2,N2:7.52\" (normalised by the solver)");
    cmd->add_flag("--skip-unsupported", args->skipUnsupported,
                  "leave out and list what the solver file cannot hold (PLOG, CHEB, ...)");
    cmd->callback([args, &exitCode] {
        try {
            exitCode = runImport(*args);
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
