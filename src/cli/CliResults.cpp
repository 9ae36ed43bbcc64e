// zarvion-cli results: the results table of a solved file, as the post-processor reads it.
//   zarvion-cli results FILE [--sol-resx]
// Output: "key<TAB>value" lines (form, species, columns, rows, time begin, time end,
// terminated), an empty line, then the table: one header line with the column names
// (Time(s), T(K), Ro, the species) and one line per data row. Time, temperature and species
// are the row's fields as the grid holds them (species as magnitudes); Ro is the density in
// g/cm^3 with up to 15 significant digits. A refusal goes to stderr with exit code 2.

#include "CliCommand.h"

#include "postprocessor/ResultsReader.h"
#include "shell/Error.h"
#include "shell/SessionState.h"
#include "shell/TextFormat.h"

#include <iostream>
#include <memory>

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct ResultsArguments {
    std::string file;
    bool solResx = false;
};

//! The session constants from OPTIONS.txt beside the program; CODATA 2018 when it is absent.
PhysicalConstants sessionConstants()
{
    shell::SessionState state;
    PhysicalConstants constants;
    if (shell::OptionOpen(state, shell::ProgramFolder()).empty() && state.AvogadroNumber > 0 &&
        state.BoltzmannConstant > 0 && state.AtmosphereDyn > 0) {
        constants.AvogadroNumber = state.AvogadroNumber;
        constants.BoltzmannConstant = state.BoltzmannConstant;
        constants.AtmosphereDyn = state.AtmosphereDyn;
    }
    return constants;
}

int runResults(const ResultsArguments& args)
{
    const ReaderForm form = args.solResx ? ReaderForm::SOL_RESX : ReaderForm::MenuForm;
    ReadOutcome outcome;
    const ResultSet set = OPEN_Rich(args.file, form, sessionConstants(), outcome);
    if (outcome.failed) {
        throw CommandFailure{outcome.message.text};
    }
    std::ostream& out = std::cout;
    out << "form\t" << (args.solResx ? "SOL_RESX" : "MenuForm") << "\n"
        << "species\t" << set.SpeciesCount << "\n"
        << "columns\t" << set.columnCount << "\n"
        << "rows\t" << set.rowCount - 1 << "\n"
        << "time begin\t" << shell::ShortestText(set.timeBegin) << "\n"
        << "time end\t" << shell::ShortestText(set.timeEnd) << "\n"
        << "terminated\t" << (set.terminatedEarly ? "yes" : "no") << "\n\n";
    for (std::size_t c = 0; c < set.columnNames.size(); ++c) {
        out << (c ? "\t" : "") << set.columnNames[c];
    }
    out << "\n";
    for (int k = 1; k < set.rowCount; ++k) {
        const std::string& row = set.rows[k];
        for (int c = 0; c < set.columnCount; ++c) {
            if (c) {
                out << "\t";
            }
            if (c == 2) {
                out << shell::ShortestText(set.density[k]);
            } else {
                out << shell::Trim(shell::Mid(row, 17 * static_cast<std::size_t>(c) + 1, 16));
            }
        }
        out << "\n";
    }
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto args = std::make_shared<ResultsArguments>();
    CLI::App* cmd = app.add_subcommand(
        "results",
        "Read the results table of a solved file. Prints key<TAB>value lines (form, species, "
        "columns, rows, time begin, time end, terminated), an empty line, then a "
        "tab-separated table with a header line of column names (Time(s), T(K), Ro, species) "
        "and one line per data row; Ro is the density [g/cm^3], species are mass fractions "
        "as the views read them");
    cmd->add_option("file", args->file, "solved solver file")->required();
    cmd->add_flag("--sol-resx", args->solResx,
                  "read as the solver results window does (no \"$$\" needed, its messages)");
    cmd->callback([args, &exitCode] {
        try {
            exitCode = runResults(*args);
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
