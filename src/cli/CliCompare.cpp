// zarvion-cli compare FILE1 FILE2: two solved files side by side, or one species' profiles
// or relative error.

#include "CliCommand.h"

#include "comparison/ComparisonPlot.h"
#include "shell/Error.h"
#include "shell/TextFormat.h"

#include <iostream>
#include <memory>

namespace zarvion::cli {
namespace {

using namespace zarvion::comparison;

struct CompareArguments {
    std::string file1;
    std::string file2;
    std::string species;
    bool error = false;
    std::string b = "0.5";
    std::string unit = "mol";
    bool logY = false;
};

std::string NumberText(const std::optional<int>& n)
{
    return n ? std::to_string(*n) : std::string();
}

void PrintCurve(const PlotCurve& curve)
{
    std::cout << "# " << curve.label << "\n";
    std::cout << "x\ty\n";
    for (std::size_t i = 0; i < curve.x.size(); ++i) {
        if (curve.x[i] == NullValue || curve.y[i] == NullValue) {
            continue;
        }
        std::cout << shell::ShortestText(curve.x[i]) << "\t" << shell::ShortestText(curve.y[i])
                  << "\n";
    }
}

int runCompare(const CompareArguments& args)
{
    ComparisonSet set;
    if (auto m = PrepGrid(args.file1, args.file2, set); !m.empty()) {
        throw CommandFailure{m.text};
    }
    if (args.species.empty()) {
        std::cout << "#\tname\tN1\tN2\tnumber1\tnumber2\n";
        for (std::size_t r = 0; r < set.MergedTable.size(); ++r) {
            const auto& row = set.MergedTable[r];
            std::cout << r + 1 << "\t" << row.name << "\t" << row.mark1 << "\t" << row.mark2
                      << "\t" << NumberText(row.number1) << "\t" << NumberText(row.number2)
                      << "\n";
        }
        return 0;
    }
    const std::string wanted = args.species == "T" ? "Temperature" : args.species;
    const MergedRow* row = nullptr;
    for (const auto& r : set.MergedTable) {
        if (r.name == wanted) {
            row = &r;
            break;
        }
    }
    if (!row) {
        throw CommandFailure{"no species '" + args.species + "' in either file"};
    }
    if (args.unit != "mol" && args.unit != "molecule") {
        throw CommandFailure{"--unit expects mol or molecule"};
    }
    PlotSettings settings;
    settings.relativeError = args.error;
    settings.molecules = args.unit == "molecule";
    settings.logY = args.logY;
    if (auto c = CheckPlotSettings("1", "1", args.b, settings); !c.message.empty()) {
        throw CommandFailure{c.message.text};
    }
    int printed = 0;
    for (int mode : args.error ? std::vector<int>{2} : std::vector<int>{0, 1}) {
        const PlotCurve curve = RedPlotFunction(set, mode, *row, settings);
        if (!curve.message.empty()) {
            throw CommandFailure{curve.message.text};
        }
        if (curve.skipped) {
            continue;
        }
        if (printed++) {
            std::cout << "\n";
        }
        PrintCurve(curve);
    }
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto args = std::make_shared<CompareArguments>();
    CLI::App* cmd = app.add_subcommand(
        "compare",
        "Compare two solved files. Without --species: the merged species table, tab-separated "
        "(#, name, N1 and N2 marks: '*' data available, 'v' target of the reduction that made "
        "the file; the species numbers in each file). With --species NAME (T for temperature): "
        "for each file that has it, a '# label' line and the x<TAB>y points that would be "
        "plotted (time [s], concentration or T; points without a value left out); with --error "
        "the relative error |C1 - C2| / (b |C1| + (1 - b) |C2|) on file 1's time grid");
    cmd->add_option("file1", args->file1, "first solved file (the master grid)")->required();
    cmd->add_option("file2", args->file2, "second solved file")->required();
    cmd->add_option("--species", args->species, "species name, or T for temperature");
    cmd->add_flag("--error", args->error, "print the relative error instead of the profiles");
    cmd->add_option("--b", args->b, "relative error parameter b on [0, 1] (default 0.5)");
    cmd->add_option("--unit", args->unit, "concentration unit: mol (mol/cm^3) or molecule (1/cm^3)");
    cmd->add_flag("--log", args->logY, "log10 of the values");
    cmd->callback([args, &exitCode] {
        try {
            exitCode = runCompare(*args);
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
