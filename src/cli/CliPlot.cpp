// zarvion-cli plot: computes one profile as the view commands do and writes it as a chart file.
//   zarvion-cli plot FILE (--species NAME [--kind mole|mass|conc|molg] | --mean ITEM
//       | --rate J [--kind forward|reverse|net|heat-kj|heat-kcal|dT|species:NAME]
//       | --derivative NAME|T) [--per-molecule] [--kcal] [--log] [--scale F]
//       [--from T0] [--to T1] [--every N] --pg OUT.pg [--add] [--seed N]
// Without --add the chart holds only the new curve; with --add the curve becomes a further
// subset of the chart already in OUT.pg, as a plot with Ctrl held on the temporary chart.

#include "CliViews.h"

#include "charts/ChartFile.h"
#include "charts/TemporaryChart.h"
#include "postprocessor/MeanParameters.h"
#include "postprocessor/ReactionRateViews.h"

#include <filesystem>
#include <random>

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct PlotArguments {
    views::ViewOptions view;
    std::string species;
    std::string mean;
    int rate = 0;
    std::string derivative;
    std::string kind;
    bool perMolecule = false;
    bool kcal = false;
    bool log = false;
    std::string scale = "1";
    std::string output;
    bool add = false;
    long long seed = -1;
};

std::string noDerivativeOfT()
{
    return "The temperature is constant in this file: there is no temperature derivative.";
}

CurveData speciesCurve(PostprocessorState& state, const PlotArguments& a)
{
    const std::string kindText = a.kind.empty() ? "mole" : a.kind;
    int kind = KindMoleFraction;
    if (kindText == "mass") kind = KindMassFraction;
    else if (kindText == "conc") kind = KindConcentration;
    else if (kindText == "molg") kind = KindMolesPerGram;
    else if (kindText != "mole") {
        throw CommandFailure{"--kind of a species must be mole, mass, conc or molg"};
    }
    const int s = views::Species(state, a.species);
    return MoleFract(state, kind, SpeciesColumn(s), shell::Trim(state.speciesName(s)),
                     {a.log, false});
}

CurveData meanCurve(PostprocessorState& state, const PlotArguments& a)
{
    const char* items[] = {"T", "Ctot", "Ro", "M", "H", "Cp"};
    int item = 0;
    for (int i = 0; i < 6; ++i) {
        if (a.mean == items[i]) item = i + 1;
    }
    if (item == 0) {
        throw CommandFailure{"--mean must be T, Ctot, Ro, M, H or Cp"};
    }
    CurveData curve = MEANVALF(state, item, a.log);
    if (!curve.error.empty()) {
        throw CommandFailure{curve.error.text};
    }
    return curve;
}

CurveData rateCurve(PostprocessorState& state, const PlotArguments& a)
{
    const ResultSet& r = state.results();
    if (a.rate < 1 || a.rate > r.ReactionCount) {
        throw CommandFailure{"There is no reaction " + std::to_string(a.rate) +
                             " in the file (1 to " + std::to_string(r.ReactionCount) + ")."};
    }
    const std::string kindText = a.kind.empty() ? "net" : a.kind;
    int kind = RateNet;
    int species = 0;
    std::string speciesName;
    if (kindText == "forward") kind = RateForward;
    else if (kindText == "reverse") kind = RateReverse;
    else if (kindText == "net") kind = RateNet;
    else if (kindText == "heat-kj") kind = RateHeatKJ;
    else if (kindText == "heat-kcal") kind = RateHeatKcal;
    else if (kindText == "dT") kind = RateTemperatureShare;
    else if (kindText.rfind("species:", 0) == 0) {
        kind = RateSpeciesShare;
        species = views::Species(state, kindText.substr(8));
        speciesName = shell::Trim(state.speciesName(species));
    } else {
        throw CommandFailure{"--kind of a rate must be forward, reverse, net, heat-kj, "
                             "heat-kcal, dT or species:NAME"};
    }
    if (kind == RateTemperatureShare && r.TemperatureMode != 1) {
        throw CommandFailure{noDerivativeOfT()};
    }
    return PlotReac(state, kind, a.rate, r.ReactionTexts[a.rate - 1], species, speciesName,
                    a.log);
}

CurveData derivativeCurve(PostprocessorState& state, const PlotArguments& a)
{
    const ResultSet& r = state.results();
    if (shell::Trim(a.derivative) == "T") {
        if (r.TemperatureMode != 1) {
            throw CommandFailure{noDerivativeOfT()};
        }
        return DerivativeCurve(state, r.SpeciesCount + 1, "T", a.log);
    }
    const int s = views::Species(state, a.derivative);
    return DerivativeCurve(state, s, shell::Trim(state.speciesName(s)), a.log);
}

charts::RandomSource randomSource(long long seed)
{
    if (seed < 0) {
        return charts::DefaultRandomSource();
    }
    auto engine = std::make_shared<std::mt19937>(static_cast<std::uint32_t>(seed));
    return [engine] { return std::uniform_real_distribution<double>(0.0, 1.0)(*engine); };
}

int runPlot(const PlotArguments& a)
{
    const int chosen = (a.species.empty() ? 0 : 1) + (a.mean.empty() ? 0 : 1) +
                       (a.rate != 0 ? 1 : 0) + (a.derivative.empty() ? 0 : 1);
    if (chosen != 1) {
        throw CommandFailure{"Give exactly one of --species, --mean, --rate and --derivative"};
    }
    if (!a.kind.empty() && a.species.empty() && a.rate == 0) {
        throw CommandFailure{"--kind goes with --species or --rate"};
    }

    // The chart to add to is read before any computing, so that a bad target costs nothing.
    charts::ChartDocument chart;
    if (a.add) {
        if (!std::filesystem::exists(a.output)) {
            throw CommandFailure{"--add needs an existing chart file: " + a.output};
        }
        if (charts::OPENPLOT(chart, a.output).failed) {
            throw CommandFailure{"Not a chart file: " + a.output};
        }
    }

    auto state = views::Load(a.view);
    state->ConcentrationUnit = a.perMolecule ? 1 : 0;
    state->EnergyUnit = !a.kcal;
    views::ApplyScaleY(*state, a.scale, a.log);
    CurveData data;
    if (!a.species.empty()) data = speciesCurve(*state, a);
    else if (!a.mean.empty()) data = meanCurve(*state, a);
    else if (a.rate != 0) data = rateCurve(*state, a);
    else data = derivativeCurve(*state, a);

    const PlotCurve curve = PloConcentration(*state, data, a.log);
    if (!curve.ok()) {
        throw CommandFailure{curve.message.text};
    }

    charts::ProfileRequest request;
    request.pointCount = static_cast<int>(curve.x.size()) + 1;
    request.xy = {curve.x, curve.y};
    request.title = curve.name;
    request.label = curve.label;
    request.exists = a.add;
    request.addRequested = a.add;
    request.timeScale = state->ScaleX;
    request.logTime = state->LogX;

    charts::ChartWindowState window;
    charts::PlotExchange exchange;
    const auto result = charts::PlotProfile(chart, window, exchange, request, randomSource(a.seed));
    if (result.failed) {
        throw CommandFailure{"The profile could not be plotted."};
    }
    if (!charts::StoreChart(chart, a.output)) {
        throw CommandFailure{"Cannot write " + a.output};
    }
    std::cout << (result.added ? "Added to: " : "Written: ") << a.output << " ("
              << chart.subsetCount() << " subsets, " << chart.points << " points)\n";
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<PlotArguments>();
    CLI::App* cmd = app.add_subcommand(
        "plot", "Write the curve of a species, mean parameter, reaction rate or derivative to "
                "a chart file (.pg): a new chart, or with --add a further subset of one");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--species", a->species, "species profile (see --kind)");
    cmd->add_option("--mean", a->mean, "mean parameter: T, Ctot, Ro, M, H or Cp");
    cmd->add_option("--rate", a->rate, "rate of reaction J (from 1; see --kind)");
    cmd->add_option("--derivative", a->derivative, "derivative of a species, or T");
    cmd->add_option("--kind", a->kind,
                    "species: mole (default), mass, conc, molg; rate: net (default), forward, "
                    "reverse, heat-kj, heat-kcal, dT, species:NAME");
    cmd->add_flag("--per-molecule", a->perMolecule, "per molecule instead of per mol");
    cmd->add_flag("--kcal", a->kcal, "H in kcal/mol and Cp in cal/K mol");
    cmd->add_flag("--log", a->log, "Log10 of the values");
    cmd->add_option("--scale", a->scale, "Y scaling factor (default 1)");
    cmd->add_option("--pg", a->output, "chart file to write")->required();
    cmd->add_flag("--add", a->add, "add the curve to the chart in the --pg file");
    cmd->add_option("--seed", a->seed, "seed of the random subset styles");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runPlot(*a); }); });
});

} // namespace
} // namespace zarvion::cli
