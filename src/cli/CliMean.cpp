// zarvion-cli mean: one mean parameter of the mixture over the interval.
//   zarvion-cli mean FILE --item T|Ctot|Ro|M|H|Cp [--kcal] [--per-molecule] [--log]
//       [--scale F] [--from T0] [--to T1] [--every N] [--tsv]
// Prints the curve the Temporary Chart would get: its label, then "X  Y" per used row.

#include "CliViews.h"

#include "postprocessor/MeanParameters.h"

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct MeanArguments {
    views::ViewOptions view;
    std::string item;
    bool kcal = false;
    bool perMolecule = false;
    bool log = false;
    std::string scale = "1";
};

int runMean(const MeanArguments& a)
{
    auto state = views::Load(a.view);
    const char* items[] = {"T", "Ctot", "Ro", "M", "H", "Cp"};
    int item = 0;
    for (int i = 0; i < 6; ++i) {
        if (a.item == items[i]) item = i + 1;
    }
    state->EnergyUnit = !a.kcal;
    state->ConcentrationUnit = a.perMolecule ? 1 : 0;
    views::ApplyScaleY(*state, a.scale, a.log);
    const CurveData curve = MEANVALF(*state, item, a.log);
    if (!curve.error.empty()) {
        throw CommandFailure{curve.error.text};
    }
    return views::PrintCurve(PloConcentration(*state, curve, a.log), a.view.tsv);
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<MeanArguments>();
    CLI::App* cmd = app.add_subcommand(
        "mean", "One mean parameter over the time interval, as the mean-parameter tab plots "
                "it: the curve label, then X (time) and Y per used row");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--item", a->item, "T, Ctot, Ro, M, H or Cp")
        ->required()
        ->check(CLI::IsMember({"T", "Ctot", "Ro", "M", "H", "Cp"}));
    cmd->add_flag("--kcal", a->kcal, "H in kcal/mol and Cp in cal/K mol (default kJ/mol, J/K mol)");
    cmd->add_flag("--per-molecule", a->perMolecule, "Ctot in 1/cm^3 instead of mol/cm^3");
    cmd->add_flag("--log", a->log, "Log10 of the values");
    cmd->add_option("--scale", a->scale, "Y scaling factor (default 1)");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runMean(*a); }); });
});

} // namespace
} // namespace zarvion::cli
