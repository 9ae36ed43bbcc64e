// zarvion-cli meantable: the "Mean Parameters" data view of the used rows.
//   zarvion-cli meantable FILE [--kcal] [--per-molecule] [--from T0] [--to T1] [--every N] [--tsv]
// Text: the view exactly as the text window shows it (dated now). TSV: No, Time, T, Ro, M, C,
// H, Cp with full precision, empty where a row has no value.

#include "CliViews.h"

#include "postprocessor/DataViews.h"
#include "postprocessor/MeanParameters.h"

#include <cmath>

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct MeanTableArguments {
    views::ViewOptions view;
    bool kcal = false;
    bool perMolecule = false;
};

int runMeanTable(const MeanTableArguments& a)
{
    std::string fileName;
    auto state = views::Load(a.view, &fileName);
    state->EnergyUnit = !a.kcal;
    state->ConcentrationUnit = a.perMolecule ? 1 : 0;
    if (!a.view.tsv) {
        DataViewContext ctx;
        ctx.fileName = fileName;
        ctx.now = shell::Now();
        ctx.lineEnd = "\n";
        const DataView v = MEANVALFTAB(*state, ctx);
        if (!v.ok()) {
            throw CommandFailure{v.message.text};
        }
        std::cout << v.text;
        return 0;
    }
    const MeanTable t = MeanParameterTable(*state);
    if (!t.error.empty()) {
        throw CommandFailure{t.error.text};
    }
    const auto energy = HabdCpUnits(state->EnergyUnit);
    std::cout << "No\tTime (sec)\tT (K)\tRo (g/cm^3)\tM (g/mol)\t"
              << (state->ConcentrationUnit == 0 ? "C (mol/cm^3)" : "C (1/cm^3)") << "\tH ("
              << energy[0] << ")\tCp (" << energy[1] << ")\n";
    auto cell = [](double v) { return std::isnan(v) ? std::string() : shell::ShortestText(v); };
    for (std::size_t k = 0; k < t.rows.size(); ++k) {
        const auto& v = t.rows[k];
        std::cout << k + 1 << "\t" << state->UsedTimes[k] << "\t" << cell(v[0]) << "\t"
                  << cell(v[2]) << "\t" << cell(v[3]) << "\t" << cell(v[1]) << "\t" << cell(v[4])
                  << "\t" << cell(v[5]) << "\n";
    }
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<MeanTableArguments>();
    CLI::App* cmd = app.add_subcommand(
        "meantable", "The \"Mean Parameters\" data view: T, Ro, M, C, H, Cp of every used row");
    views::AddViewOptions(cmd, a->view);
    cmd->add_flag("--kcal", a->kcal, "H in kcal/mol and Cp in cal/K mol");
    cmd->add_flag("--per-molecule", a->perMolecule, "C in 1/cm^3 instead of mol/cm^3");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runMeanTable(*a); }); });
});

} // namespace
} // namespace zarvion::cli
