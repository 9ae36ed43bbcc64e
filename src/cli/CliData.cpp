// zarvion-cli data: the "Species" data view of up to ten species over the used rows.
//   zarvion-cli data FILE --species A,B,.. [--kind mole|mass|conc|molg] [--per-molecule]
//       [--symbols 12|16] [--from T0] [--to T1] [--every N] [--tsv]
// Text: the view exactly as the text window shows it (dated now). TSV: No, Time, then one
// column per species with full precision (values under the zero threshold as 0).

#include "CliViews.h"

#include "postprocessor/DataViews.h"
#include "postprocessor/MeanParameters.h"

#include <sstream>

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct DataArguments {
    views::ViewOptions view;
    std::string species;
    std::string kind = "mole";
    bool perMolecule = false;
    int symbols = 12;
};

int runData(const DataArguments& a)
{
    std::string fileName;
    auto state = views::Load(a.view, &fileName);
    std::vector<int> selected;
    std::stringstream list(a.species);
    for (std::string name; std::getline(list, name, ',');) {
        selected.push_back(views::Species(*state, name));
    }
    const shell::Message check = CheckSpeciesSelection(selected.size());
    if (!check.empty()) {
        throw CommandFailure{check.text};
    }
    int kind = KindMoleFraction;
    std::string quantity = "Mole Fraction";
    if (a.kind == "mass") {
        kind = KindMassFraction;
        quantity = "Mass Fraction";
    } else if (a.kind == "conc") {
        kind = KindConcentration;
        quantity = a.perMolecule ? "Concentration (1/cm^3)" : "Concentration (mol/cm^3)";
    } else if (a.kind == "molg") {
        kind = KindMolesPerGram;
        quantity = "mol/g";
    }
    state->ConcentrationUnit = a.perMolecule ? 1 : 0;
    if (!a.view.tsv) {
        DataViewContext ctx;
        ctx.fileName = fileName;
        ctx.now = shell::Now();
        ctx.lineEnd = "\n";
        std::cout << SpeciesData(*state, selected, kind, quantity, a.symbols, ctx).text;
        return 0;
    }
    std::vector<CurveData> columns;
    std::cout << "No\tTime sec";
    for (int s : selected) {
        const std::string name = shell::Trim(state->speciesName(s));
        columns.push_back(MoleFract(*state, kind, SpeciesColumn(s), name, {false, true}));
        std::cout << "\t" << name;
    }
    std::cout << "\n";
    for (std::size_t k = 0; k < state->UsedRows.size(); ++k) {
        std::cout << k + 1 << "\t" << state->UsedTimes[k];
        for (const CurveData& c : columns) {
            std::cout << "\t" << shell::ShortestText(c.values[k]);
        }
        std::cout << "\n";
    }
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<DataArguments>();
    CLI::App* cmd = app.add_subcommand(
        "data", "The \"Species\" data view: up to ten species over the used rows");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--species", a->species, "species names, comma-separated (at most 10)")
        ->required();
    cmd->add_option("--kind", a->kind, "mole, mass, conc or molg")
        ->check(CLI::IsMember({"mole", "mass", "conc", "molg"}));
    cmd->add_flag("--per-molecule", a->perMolecule, "concentrations in 1/cm^3");
    cmd->add_option("--symbols", a->symbols, "maximum name length: 12 or 16")
        ->check(CLI::IsMember({12, 16}));
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runData(*a); }); });
});

} // namespace
} // namespace zarvion::cli
