// zarvion-cli profile: one species over the interval, in the unit the species tab offers.
//   zarvion-cli profile FILE --species NAME --kind mole|mass|conc|molg [--per-molecule]
//       [--log] [--scale F] [--from T0] [--to T1] [--every N] [--tsv]
// Prints the curve the Temporary Chart would get: its label, then "X  Y" per used row
// (-99999 marks a point without a value).

#include "CliViews.h"

#include "postprocessor/MeanParameters.h"

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct ProfileArguments {
    views::ViewOptions view;
    std::string species;
    std::string kind = "mole";
    bool perMolecule = false;
    bool log = false;
    std::string scale = "1";
};

int runProfile(const ProfileArguments& a)
{
    auto state = views::Load(a.view);
    const int s = views::Species(*state, a.species);
    int kind = KindMoleFraction;
    if (a.kind == "mass") kind = KindMassFraction;
    else if (a.kind == "conc") kind = KindConcentration;
    else if (a.kind == "molg") kind = KindMolesPerGram;
    state->ConcentrationUnit = a.perMolecule ? 1 : 0;
    views::ApplyScaleY(*state, a.scale, a.log);
    const CurveData curve =
        MoleFract(*state, kind, SpeciesColumn(s), shell::Trim(state->speciesName(s)), {a.log, false});
    return views::PrintCurve(PloConcentration(*state, curve, a.log), a.view.tsv);
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<ProfileArguments>();
    CLI::App* cmd = app.add_subcommand(
        "profile", "Profile of one species over the time interval, as the species tab plots it: "
                   "the curve label, then X (time) and Y per used row; -99999 marks a missing "
                   "point (values at or below the zero threshold)");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--species", a->species, "species name")->required();
    cmd->add_option("--kind", a->kind, "mole, mass, conc (concentration) or molg (mol/g)")
        ->check(CLI::IsMember({"mole", "mass", "conc", "molg"}));
    cmd->add_flag("--per-molecule", a->perMolecule, "concentrations in 1/cm^3 instead of mol/cm^3");
    cmd->add_flag("--log", a->log, "Log10 of the values");
    cmd->add_option("--scale", a->scale, "Y scaling factor (default 1)");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runProfile(*a); }); });
});

} // namespace
} // namespace zarvion::cli
