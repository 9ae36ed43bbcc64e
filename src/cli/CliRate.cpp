// zarvion-cli rate: one reaction's rate over the interval, in one of seven forms.
//   zarvion-cli rate FILE --reaction J --kind forward|reverse|net|heat-kj|heat-kcal|dT|species:NAME
//       [--per-molecule] [--log] [--scale F] [--from T0] [--to T1] [--every N] [--tsv]
// Prints the curve the Temporary Chart would get: its label, then "X  Y" per used row.

#include "CliViews.h"

#include "postprocessor/ReactionRateViews.h"

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct RateArguments {
    views::ViewOptions view;
    int reaction = 0;
    std::string kind = "net";
    bool perMolecule = false;
    bool log = false;
    std::string scale = "1";
};

int runRate(const RateArguments& a)
{
    auto state = views::Load(a.view);
    const ResultSet& r = state->results();
    if (a.reaction < 1 || a.reaction > r.ReactionCount) {
        throw CommandFailure{"There is no reaction " + std::to_string(a.reaction) + " in the file (1 to " +
                             std::to_string(r.ReactionCount) + ")."};
    }
    int kind = RateNet;
    int species = 0;
    std::string speciesName;
    if (a.kind == "forward") kind = RateForward;
    else if (a.kind == "reverse") kind = RateReverse;
    else if (a.kind == "net") kind = RateNet;
    else if (a.kind == "heat-kj") kind = RateHeatKJ;
    else if (a.kind == "heat-kcal") kind = RateHeatKcal;
    else if (a.kind == "dT") kind = RateTemperatureShare;
    else if (a.kind.rfind("species:", 0) == 0) {
        kind = RateSpeciesShare;
        species = views::Species(*state, a.kind.substr(8));
        speciesName = shell::Trim(state->speciesName(species));
    } else {
        throw CommandFailure{"--kind must be forward, reverse, net, heat-kj, heat-kcal, dT or species:NAME"};
    }
    if (kind == RateTemperatureShare && r.TemperatureMode != 1) {
        throw CommandFailure{"The temperature is constant in this file: there is no temperature derivative."};
    }
    state->ConcentrationUnit = a.perMolecule ? 1 : 0;
    views::ApplyScaleY(*state, a.scale, a.log);
    const CurveData curve = PlotReac(*state, kind, a.reaction, r.ReactionTexts[a.reaction - 1],
                                     species, speciesName, a.log);
    return views::PrintCurve(PloConcentration(*state, curve, a.log), a.view.tsv);
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<RateArguments>();
    CLI::App* cmd = app.add_subcommand(
        "rate", "Rate of one reaction over the time interval, as the reactions tab plots it: "
                "the curve label, then X (time) and Y per used row");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--reaction", a->reaction, "reaction number J (from 1)")->required();
    cmd->add_option("--kind", a->kind,
                    "forward, reverse, net, heat-kj, heat-kcal, dT (share of dT/dt) or "
                    "species:NAME (share of d{NAME}/dt)");
    cmd->add_flag("--per-molecule", a->perMolecule, "rates in 1/(cm^3 s) instead of mol/(cm^3 s)");
    cmd->add_flag("--log", a->log, "Log10 of the values");
    cmd->add_option("--scale", a->scale, "Y scaling factor (default 1)");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runRate(*a); }); });
});

} // namespace
} // namespace zarvion::cli
