#pragma once
// A nine-species hydrogen-oxygen set with one reaction of every record kind the solver file
// knows: plain reversible, irreversible, third body with partners, Troe with partners,
// explicit partner, photolysis, lumped products, SRI, three-parameter Troe.

#include "core/reduction/SolverFileFixture.h"

namespace zarvion::testing {

inline std::vector<FixtureSpecies> SmallSpecies()
{
    return {
        {"H2", "H2", 2.016, 0.2958, 3.5, -1000, 1},
        {"O2", "O2", 31.998, 0.1479, 3.6, -1100, 2},
        {"H", "H1", 1.008, 0, 2.5, 25000, 3},
        {"O", "O1", 15.999, 0, 2.5, 29000, 4},
        {"OH", "O1H1", 17.007, 0, 3.4, 4000, 5},
        {"H2O", "H2O1", 18.015, 0, 4.0, -29000, 6},
        {"AR", "AR1", 39.948, 0.5563, 2.5, -745, 7},
        {"HO2", "H1O2", 33.006, 0, 4.2, 300, 8},
        {"H2O2", "H2O2", 34.014, 0, 5.0, -16000, 9},
    };
}

inline std::string Columns8(const std::vector<std::string>& cells, const std::string& filler)
{
    std::string s(6, ' ');
    for (std::size_t i = 0; i < 10; ++i) {
        s += Fixed(i < cells.size() ? cells[i] : filler, 8);
    }
    return s;
}

inline std::vector<FixtureReaction> SmallReactions()
{
    std::vector<FixtureReaction> r;
    r.push_back({"H+O2=O+OH", {3, 2, 0, 4, 5, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 1}, 3.547e15, -0.406,
                 16599, {}});
    r.push_back({"O+H2=>H+OH", {4, 1, 0, 3, 5, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 0}, 5.08e4, 2.67,
                 6290, {}});
    r.push_back({"H+O+M=OH+M", {3, 4, 0, 5, 0, 0, 0, 0, 0, 2, 1, 2, 2, 0, 0, 1}, 4.714e18, -1.0, 0,
                 {Columns8({"H2", "H2O"}, ""), Columns8({"1", "6"}, "0"),
                  Columns8({"2.5", "12."}, "0.")}});
    r.push_back({"H+O2(+M)=HO2(+M)", {3, 2, 0, 8, 0, 0, 0, 0, 0, 2, 1, 2, 1, 1, 1, 1}, 4.65e12,
                 0.44, 0,
                 {"LOW   " + Num15(6.366e20) + Num15(-1.72) + Num15(524.8),
                  "TROE  " + Num15(0.5) + Num15(1e-30) + Num15(1e30) + Num15(1e30),
                  Columns8({"AR"}, ""), Columns8({"7"}, "0"), Columns8({"0.67"}, "0.")}});
    r.push_back({"OH+OH(+H2O)=H2O2(+H2O)", {5, 5, 0, 9, 0, 0, 0, 0, 0, 2, 1, 0, 1, 1, 0, 1},
                 7.4e13, -0.37, 0,
                 {"LOW   " + Num15(2.3e18) + Num15(-0.9) + Num15(-1700),
                  Columns8({"H2O"}, ""), Columns8({"6"}, "0"), Columns8({"1."}, "0.")}});
    r.push_back({"H2O + hv = H + OH", {6, 0, 0, 3, 5, 0, 0, 0, 0, 1, 2, 0, 0, 0, 0, -1}, 1e-5, 0,
                 0, {}});
    r.push_back({"H2O2 = prod", {9, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, -1}, 2e-6, 0, 0, {}});
    r.push_back({"H+HO2(+M)=H2O2(+M)", {3, 8, 0, 9, 0, 0, 0, 0, 0, 2, 1, 1, 0, 1, 2, 1}, 1e13, 0,
                 0,
                 {"LOW   " + Num15(1e17) + Num15(0) + Num15(0),
                  "SRI   " + Num15(0.45) + Num15(797) + Num15(979) + Num15(1) + Num15(0)}});
    r.push_back({"H2+O2(+M)=HO2+H(+M)", {1, 2, 0, 8, 3, 0, 0, 0, 0, 2, 2, 1, 0, 1, 3, 1}, 7.4e5,
                 2.43, 53502,
                 {"LOW   " + Num15(1e14) + Num15(0) + Num15(40000),
                  "TROE  " + Num15(0.5) + Num15(100) + Num15(2000) + Num15(3000)}});
    return r;
}

//! Rows of a made-up but physical-looking history of the small set: H2 and O2 are consumed
//! into H2O through the radicals, whose fractions grow row by row.
inline std::vector<FixtureRow> BurningRows(int count)
{
    std::vector<FixtureRow> rows;
    for (int i = 0; i < count; ++i) {
        const double x = 0.2 * i; // progress of the reaction
        rows.push_back({1e-4 * i, 1400.0 + 600.0 * x,
                        {0.028 * (1 - x) + 1e-4, 0.22 * (1 - x) + 1e-3, 1e-4 * (1 + i),
                         2e-4 * (1 + i), 5e-4 * (1 + i), 0.25 * x, 0.5, 1e-5 * (1 + i),
                         1e-6 * (1 + i)}});
    }
    return rows;
}

} // namespace zarvion::testing
