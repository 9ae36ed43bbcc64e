#pragma once
// Builds small solver files line by line in the fixed layout, with an optional results
// section, for reader and writer tests.

#include <array>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace zarvion::testing {

struct FixtureSpecies {
    std::string name;
    std::string formula;
    double weight = 1;          // [g/mol]
    double moleFraction = 0;    // initial
    double cpOverR = 3.5;       // constant heat capacity in both ranges
    double hOffset = 0;         // a6: h/RT = cp/R + a6/T
    double sOffset = 0;         // a7
};

struct FixtureReaction {
    std::string text;
    std::array<int, 16> fields{};
    double A = 1, n = 0, E = 0;
    std::vector<std::string> optionalLines; // low, fall-off, partner lines as they stand
};

struct FixtureRow {
    double time = 0;
    double temperature = 0;
    std::vector<double> massFractions;
};

struct FixtureProblem {
    double pressure = 1.0;      // [atm]
    int temperatureMode = 1;
    double temperature = 1400;  // [K]
    double absoluteTolerance = 1e-12;
    std::string line12 = " ";
};

inline std::string Fixed(const std::string& s, std::size_t width, bool right = false)
{
    if (s.size() >= width) {
        return s;
    }
    return right ? std::string(width - s.size(), ' ') + s : s + std::string(width - s.size(), ' ');
}

inline std::string Num15(double v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7E", v);
    return Fixed(buf, 15, true);
}

//! A 16-character result field: sign character, 9 decimals, exponent of two digits.
inline std::string Field16(double v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.9E", v < 0 ? -v : v);
    return std::string(v < 0 ? "-" : " ") + buf;
}

inline std::string IntLine(const std::array<int, 16>& f)
{
    std::string s(6, ' ');
    for (int v : f) {
        s += Fixed(std::to_string(v), 4);
    }
    return s;
}

inline std::vector<std::string> SolverFileLines(const FixtureProblem& problem,
                                                const std::vector<FixtureSpecies>& species,
                                                const std::vector<FixtureReaction>& reactions,
                                                const std::vector<FixtureRow>& rows = {},
                                                bool stepMark = true)
{
    std::vector<std::string> l;
    l.push_back(" !$Zarvion Solver,  Jan 1 2026, 10:00:00");
    for (int i = 2; i <= 9; ++i) {
        l.push_back(" free text " + std::to_string(i));
    }
    l.push_back(" " + std::to_string(species.size()) + " !Species");
    l.push_back(" " + std::to_string(reactions.size()) + " !Reactions");
    l.push_back(problem.line12);
    l.push_back(" ");
    char buf[64];
    std::snprintf(buf, sizeof buf, " %.4E !Pressure, atm", problem.pressure);
    l.push_back(buf);
    l.push_back(problem.temperatureMode == 1 ? " 1 !Temperature Equation" : " 0 !Constant Temperature");
    std::snprintf(buf, sizeof buf, " %.4E !Initial Temperature", problem.temperature);
    l.push_back(buf);
    l.push_back(" 3.00E+02 !Minimal Allowable Temperature");
    l.push_back(" 4.00E+03 !Maximum Allowable Temperature");
    l.push_back(" 0.00E+00 !Initial Time");
    l.push_back(" 1.00E-03 !Final Time");
    l.push_back(" 1.00E-10 !Initial Step Size");
    l.push_back(" 100000 !Maximum Number of Steps");
    l.push_back(" 1.00E-08 !Relative Tolerance");
    std::snprintf(buf, sizeof buf, " %.2E !Absolute Tolerance", problem.absoluteTolerance);
    l.push_back(buf);
    l.push_back(" ");
    l.push_back(" !Output Parameters");
    l.push_back(" 100000 !R!Maximum Number of lines in output");
    l.push_back(" 1 !Delta N");
    l.push_back(" free 29");
    l.push_back(" free 30");
    l.push_back(" 1.987204259 !Gas constant, cal/(mol K)");
    l.push_back(" 82.05736608 !Gas constant, cm^3 atm/(mol K)");
    l.push_back(" free 33");
    l.push_back("THERMO");
    int k = 0;
    for (const auto& s : species) {
        ++k;
        std::string first = " " + Fixed(std::to_string(k), 4) + " " + Fixed(s.name, 17) +
                            Fixed(s.formula, 22) + "  " + "  300.00" + " " + " 5000.00" + " " +
                            " 1000.00" + " ";
        char x[32];
        std::snprintf(x, sizeof x, "%.3E", s.moleFraction);
        first += Fixed(s.moleFraction == 0 ? "0" : x, 10);
        l.push_back(first);
        const double a[14] = {s.cpOverR, 0, 0, 0, 0, s.hOffset, s.sOffset,
                              s.cpOverR, 0, 0, 0, 0, s.hOffset, s.sOffset};
        l.push_back(Num15(a[0]) + Num15(a[1]) + Num15(a[2]) + Num15(a[3]) + Num15(a[4]));
        l.push_back(Num15(a[5]) + Num15(a[6]) + Num15(a[7]) + Num15(a[8]) + Num15(a[9]));
        l.push_back(Num15(a[10]) + Num15(a[11]) + Num15(a[12]) + Num15(a[13]) + Num15(s.weight));
    }
    l.push_back("END");
    l.push_back("");
    l.push_back("REACTIONS");
    k = 0;
    for (const auto& r : reactions) {
        ++k;
        l.push_back(" " + Fixed(std::to_string(k), 4) + " " + r.text);
        l.push_back(IntLine(r.fields));
        l.push_back("      " + Num15(r.A) + Num15(r.n) + Num15(r.E));
        for (const auto& o : r.optionalLines) {
            l.push_back(o);
        }
    }
    l.push_back("END");
    if (!rows.empty()) {
        const std::size_t ns = species.size();
        auto record = [&](const std::string& counter, const std::string& time,
                          const std::string& temp, const std::vector<std::string>& fields,
                          const std::string& step) {
            std::vector<std::string> phys;
            std::string first = Fixed(counter, 7, true) + time + " " + temp;
            for (std::size_t i = 0; i < std::min<std::size_t>(ns, 50); ++i) {
                first += " " + fields[i];
            }
            if (stepMark) {
                first += " " + step;
            }
            phys.push_back(first);
            for (std::size_t start = 50; start < ns; start += 50) {
                std::string more(40, ' ');
                for (std::size_t i = start; i < std::min(ns, start + 50); ++i) {
                    more += " " + fields[i];
                }
                phys.push_back(more);
            }
            return phys;
        };
        l.push_back("");
        l.push_back(stepMark ? "!$Results   $$" : "!$Results");
        std::vector<std::string> heads;
        for (const auto& s : species) {
            heads.push_back(Fixed(s.name, 16, true));
        }
        for (const auto& p : record("", Fixed("Time(s)", 16, true), Fixed("T(K)", 16, true),
                                    heads, Fixed("Step(s)", 16, true))) {
            l.push_back(p);
        }
        double previous = rows.front().time;
        int counter = 0;
        for (const auto& row : rows) {
            std::vector<std::string> fields;
            for (double y : row.massFractions) {
                fields.push_back(Field16(y));
            }
            for (const auto& p : record(std::to_string(++counter), Field16(row.time),
                                        Field16(row.temperature), fields,
                                        Field16(row.time - previous))) {
                l.push_back(p);
            }
            previous = row.time;
        }
        l.push_back("!$END");
        l.push_back("Statistics");
        l.push_back(" accepted steps 10");
    }
    return l;
}

inline void WriteLines(const std::filesystem::path& path, const std::vector<std::string>& lines)
{
    std::ofstream out(path, std::ios::binary);
    for (const auto& s : lines) {
        out << s << "\r\n";
    }
}

//! A fixed clock reading for files that carry the time they were written.
inline std::tm ClockAt(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    std::tm t{};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    t.tm_hour = hour;
    t.tm_min = minute;
    t.tm_sec = second;
    return t;
}

//! A fresh empty folder under the system temporary folder.
inline std::filesystem::path FreshFolder(const std::string& name)
{
    const auto dir = std::filesystem::temp_directory_path() / ("zarvion_test_" + name);
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

} // namespace zarvion::testing
