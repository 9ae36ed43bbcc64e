// zarvion-cli derivative: d{NAME}/dt of a species [mol/(g s)], or dT/dt [K/s] with "T".
//   zarvion-cli derivative FILE --species NAME|T [--log] [--scale F] [--from T0] [--to T1]
//       [--every N] [--tsv]
// Prints the curve the Temporary Chart would get: its label, then "X  Y" per used row.

#include "CliViews.h"

#include "postprocessor/ReactionRateViews.h"

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct DerivativeArguments {
    views::ViewOptions view;
    std::string species;
    bool log = false;
    std::string scale = "1";
};

int runDerivative(const DerivativeArguments& a)
{
    auto state = views::Load(a.view);
    const ResultSet& r = state->results();
    int s = 0;
    std::string name;
    if (shell::Trim(a.species) == "T") {
        if (r.TemperatureMode != 1) {
            throw CommandFailure{"The temperature is constant in this file: there is no temperature derivative."};
        }
        s = r.SpeciesCount + 1;
        name = "T";
    } else {
        s = views::Species(*state, a.species);
        name = shell::Trim(state->speciesName(s));
    }
    views::ApplyScaleY(*state, a.scale, a.log);
    const CurveData curve = DerivativeCurve(*state, s, name, a.log);
    return views::PrintCurve(PloConcentration(*state, curve, a.log), a.view.tsv);
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<DerivativeArguments>();
    CLI::App* cmd = app.add_subcommand(
        "derivative", "Derivative of a species [mol/(g s)] or, with --species T, of the "
                      "temperature [K/s], from all reactions at every used row: the curve "
                      "label, then X (time) and Y per used row");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--species", a->species, "species name, or T for the temperature")->required();
    cmd->add_flag("--log", a->log, "Log10 of the values");
    cmd->add_option("--scale", a->scale, "Y scaling factor (default 1)");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runDerivative(*a); }); });
});

} // namespace
} // namespace zarvion::cli
