#pragma once
// Small hand-built result sets for the post-processor tests: four species A, B, N, Z with
// constant heat capacities (cp/R = 3.5, h/RT = 3.5 + a6/T, s/R = 3.5 ln T), so that every
// derived number can be worked out by hand.
//   A (20 g/mol, a6 = 1000 K), B (20 g/mol, a6 = -5000 K), N (28 g/mol, a6 = 0), Z (10 g/mol)
//   R1  A=>B        irreversible, k = 2 /s
//   R2  A+N<=>B+N   reversible, k = 1E5 cm^3/(mol s), Kc = exp(6000 K / T)
//   R3  B+N=>B+N    changes no species

#include "postprocessor/PostprocessorState.h"
#include "postprocessor/ResultSet.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

namespace zarvion::postprocessor::testing {

inline SessionConstants Codata()
{
    return SessionConstants::FromStored(8.314462618, 1.987204259, 6.02214076E+23, 1.380649E-23,
                                        101.325);
}

//! A golden text from tests/data/postprocessor, written by hand from the layout.
inline std::string ReadGolden(const std::string& name)
{
    std::ifstream in(ZARVION_SOURCE_DIR "/tests/data/postprocessor/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

//! The date of the golden texts: 5 March 2026, 14:07:09.
inline std::tm GoldenDate()
{
    std::tm t{};
    t.tm_year = 126;
    t.tm_mon = 2;
    t.tm_mday = 5;
    t.tm_hour = 14;
    t.tm_min = 7;
    t.tm_sec = 9;
    return t;
}

struct FixtureState {
    double time = 0;
    double T = 1000;
    std::vector<double> y; // A, B, N, Z
};

struct FixtureOptions {
    int temperatureMode = 0;
    double absoluteTolerance = 1e-12;
    bool onlyFirstReaction = false;
};

//! A ResultSet in the form the results reader leaves it (1 atm), rows rebuilt in the writer's
//! geometry: fields " d.dddddddddE+dd" 16 wide, the density "%.7E" in 17.
inline ResultSet MakeResults(const std::vector<FixtureState>& states, FixtureOptions o = {})
{
    const double a6[4] = {1000.0, -5000.0, 0.0, 0.0}, weight[4] = {20.0, 20.0, 28.0, 10.0};
    ResultSet r;
    r.SpeciesCount = 4;
    r.columnCount = 7;
    r.pressureAtm = 1.0;
    r.TemperatureMode = o.temperatureMode;
    r.initialTemperature = states.front().T;
    r.finalTimeText = "1";
    r.absoluteTolerance = o.absoluteTolerance;
    r.zeroThreshold = 0.01 * o.absoluteTolerance;
    r.GasConstantEnergy = 1.987204259;
    r.gasConstantDensity = r.GasConstantConc = Codata().gasConstantDensity();
    for (int i = 0; i < 4; ++i) {
        solverfile::ThermoRecord t{};
        t[1] = t[8] = 3.5;
        t[6] = t[13] = a6[i];
        t[15] = weight[i];
        t[18] = 1000;
        r.thermo.push_back(t);
    }
    // Reactants l1 + l2, products p1 + p2 (species numbers, 0 for none).
    auto reaction = [&](int l1, int l2, int p1, int p2, int reversible, double A, const char* txt) {
        solverfile::ReactionInts ints{};
        solverfile::ReactionReals reals{};
        ints[1] = l1;
        ints[2] = l2;
        ints[4] = p1;
        ints[5] = p2;
        ints[10] = l2 ? 2 : 1;
        ints[11] = p2 ? 2 : 1;
        ints[16] = reversible;
        reals[1] = A;
        r.ReactionInts.push_back(ints);
        r.ReactionReals.push_back(reals);
        r.ReactionTexts.push_back(txt);
    };
    reaction(1, 0, 2, 0, 0, 2.0, "A=>B");
    if (!o.onlyFirstReaction) {
        reaction(1, 3, 2, 3, 1, 1e5, "A+N<=>B+N");
        reaction(2, 3, 2, 3, 0, 1.0, "B+N=>B+N");
    }
    r.ReactionCount = static_cast<int>(r.ReactionTexts.size());
    r.columnNames = {"Time(s)", "T(K)", "Ro", "A", "B", "N", "Z"};

    char line[256];
    std::snprintf(line, sizeof line, "%16s %16sRo mass          %16s %16s %16s %16s ", "Time(s)",
                  "T(K)", "A", "B", "N", "Z");
    r.rows.push_back(line);
    r.density.push_back(0);
    r.stepSize.push_back(0);
    double previous = states.front().time;
    for (const FixtureState& s : states) {
        const auto& y = s.y;
        const double S = y[0] / 20.0 + y[1] / 20.0 + y[2] / 28.0 + y[3] / 10.0;
        const double rho = r.pressureAtm / (r.gasConstantDensity * s.T) / S;
        std::snprintf(line, sizeof line, "% .9E % .9E%17.7E% .9E % .9E % .9E % .9E ", s.time, s.T,
                      rho, y[0], y[1], y[2], y[3]);
        r.rows.push_back(line);
        r.density.push_back(rho);
        r.stepSize.push_back(s.time - previous);
        previous = s.time;
    }
    r.rowCount = static_cast<int>(r.rows.size());
    r.timeBegin = states.front().time;
    r.timeEnd = states.back().time;
    return r;
}

//! Four rows at 1000 K, 1 atm. yA + yB = 0.3 and WA = WB, so S = 0.3/20 + 0.7/28 = 0.04 and
//! M = 25 g/mol in every row; mole fractions are x_i = y_i / (W_i S).
inline std::vector<FixtureState> FourRows()
{
    return {{0.0, 1000.0, {0.3, 0.0, 0.7, 0.0}},
            {0.5, 1000.0, {0.2, 0.1, 0.7, 0.0}},
            {1.0, 1000.0, {0.1, 0.2, 0.7, 0.0}},
            {1.5, 1000.0, {0.05, 0.25, 0.7, 0.0}}};
}

//! yA = 0.3 exp(-lambda t), yB = 0.3 - yA, yN = 0.7, yZ = 0, at times t_k = tEnd (k/n)^1.4.
inline std::vector<FixtureState> DecayStates(int n, double tEnd = 1.0, double lambda = 2.0)
{
    std::vector<FixtureState> out;
    for (int k = 0; k <= n; ++k) {
        const double t = tEnd * std::pow(static_cast<double>(k) / n, 1.4);
        const double yA = 0.3 * std::exp(-lambda * t);
        out.push_back({t, 1000.0, {yA, 0.3 - yA, 0.7, 0.0}});
    }
    return out;
}

} // namespace zarvion::postprocessor::testing
