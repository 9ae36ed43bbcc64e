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
#include <functional>
#include <string>
#include <vector>

namespace zarvion::postprocessor::testing {

inline SessionConstants Codata()
{
    return SessionConstants::FromStored(8.314462618, 1.987204259, 6.02214076E+23, 1.380649E-23,
                                        101.325);
}

//! The 16-character field of the results writer: sign character, then d.dddddddddE+dd.
inline std::string Field16(double v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.9E", std::fabs(v));
    return std::string(v < 0 ? "-" : " ") + buf;
}

inline std::string RightIn(const std::string& s, std::size_t width)
{
    return s.size() >= width ? s : std::string(width - s.size(), ' ') + s;
}

struct FixtureState {
    double time = 0;
    double T = 1000;
    std::vector<double> y; // A, B, N, Z
};

struct FixtureOptions {
    int temperatureMode = 0;
    double pressureAtm = 1.0;
    double absoluteTolerance = 1e-12;
    bool onlyFirstReaction = false;
};

inline constexpr double A6[4] = {1000.0, -5000.0, 0.0, 0.0};
inline constexpr double Weight[4] = {20.0, 20.0, 28.0, 10.0};

//! A ResultSet in the form the results reader leaves it, rows rebuilt with the density.
inline ResultSet MakeResults(const std::vector<FixtureState>& states, FixtureOptions o = {})
{
    const SessionConstants c = Codata();
    ResultSet r;
    r.SpeciesCount = 4;
    r.columnCount = 7;
    r.pressureAtm = o.pressureAtm;
    r.TemperatureMode = o.temperatureMode;
    r.initialTemperature = states.front().T;
    r.finalTimeText = "1";
    r.absoluteTolerance = o.absoluteTolerance;
    r.zeroThreshold = 0.01 * o.absoluteTolerance;
    r.GasConstantEnergy = 1.987204259;
    r.gasConstantDensity = c.gasConstantDensity();
    r.GasConstantConc = r.gasConstantDensity;
    const char* names[4] = {"A", "B", "N", "Z"};
    for (int i = 0; i < 4; ++i) {
        solverfile::ThermoRecord t{};
        t[1] = t[8] = 3.5;
        t[6] = t[13] = A6[i];
        t[15] = Weight[i];
        t[16] = 300;
        t[17] = 5000;
        t[18] = 1000;
        r.thermo.push_back(t);
    }
    auto reaction = [&](std::vector<int> left, std::vector<int> right, int reversible, double A,
                        const char* text) {
        solverfile::ReactionInts ints{};
        solverfile::ReactionReals reals{};
        for (std::size_t s = 0; s < left.size(); ++s) ints[1 + s] = left[s];
        for (std::size_t s = 0; s < right.size(); ++s) ints[4 + s] = right[s];
        ints[10] = static_cast<int>(left.size());
        ints[11] = static_cast<int>(right.size());
        ints[16] = reversible;
        reals[1] = A;
        r.ReactionInts.push_back(ints);
        r.ReactionReals.push_back(reals);
        r.ReactionTexts.push_back(text);
    };
    reaction({1}, {2}, 0, 2.0, "A=>B");
    if (!o.onlyFirstReaction) {
        reaction({1, 3}, {2, 3}, 1, 1e5, "A+N<=>B+N");
        reaction({2, 3}, {2, 3}, 0, 1.0, "B+N=>B+N");
    }
    r.ReactionCount = static_cast<int>(r.ReactionTexts.size());
    r.columnNames = {"Time(s)", "T(K)", "Ro", "A", "B", "N", "Z"};

    std::string head = RightIn("Time(s)", 16) + " " + RightIn("T(K)", 16) + "Ro mass          ";
    for (int i = 0; i < 4; ++i) head += RightIn(names[i], 16) + " ";
    r.rows.push_back(head);
    r.density.push_back(0);
    r.stepSize.push_back(0);
    double previous = states.front().time;
    for (const FixtureState& s : states) {
        double S = 0;
        for (int i = 0; i < 4; ++i) S += s.y[i] / Weight[i];
        const double rho = o.pressureAtm / (r.gasConstantDensity * s.T) / S;
        char dens[32];
        std::snprintf(dens, sizeof dens, "%.7E", rho);
        std::string row = Field16(s.time).substr(0, 16) + " " + Field16(s.T) + RightIn(dens, 17);
        for (int i = 0; i < 4; ++i) row += Field16(s.y[i]) + " ";
        r.rows.push_back(row);
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
