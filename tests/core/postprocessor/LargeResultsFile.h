#pragma once
// Writes solver files with many species and a results table in the output geometry: numeric
// fields " d.dddddddddE+dd" 16 wide, row counter in 7 columns, 50 species on the first
// physical line and 50 on each further line behind 40 blanks, the step column last on the
// first line. The values are a known function of (row, species) so readers can be checked
// field by field. Independent of the solver's own writer on purpose.

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace zarvion::testing {

//! Mass fraction written for species i (1-based) in data row k (1-based). Every seventh
//! species is negative, as small undershoots of an integrator are.
inline double LargeFileValue(int k, int i)
{
    const double magnitude = (1.0 + ((i * 37 + k * 11) % 97)) * 1.0e-4 * (1.0 + 0.001 * k);
    return i % 7 == 0 ? -magnitude : magnitude;
}

inline double LargeFileTime(int k) { return (k - 1) * 2.5e-6; }
inline double LargeFileTemperature(int k) { return 1000.0 + 12.5 * (k - 1); }
inline double LargeFileWeight(int i) { return 10.0 + i; }

inline std::string Field16(double v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "% .9E", v);
    return buf;
}

inline std::string RightIn(const std::string& s, std::size_t width)
{
    return s.size() >= width ? s : std::string(width - s.size(), ' ') + s;
}

//! Lines of one record: first line with up to 50 species and the step, then further lines.
inline std::vector<std::string> LargeFileRecord(const std::string& counter,
                                                const std::vector<std::string>& fields,
                                                const std::string& step)
{
    // fields[0] time, [1] temperature, [2..] species
    std::vector<std::string> out;
    std::string first = RightIn(counter, 7) + fields[0] + " " + fields[1];
    const std::size_t ns = fields.size() - 2;
    for (std::size_t i = 0; i < ns && i < 50; ++i) {
        first += " " + fields[2 + i];
    }
    out.push_back(first + " " + step);
    for (std::size_t start = 50; start < ns; start += 50) {
        std::string line(40, ' ');
        for (std::size_t i = start; i < ns && i < start + 50; ++i) {
            line += " " + fields[2 + i];
        }
        out.push_back(line);
    }
    return out;
}

//! A whole solver file with ns species, no reactions, and `rows` data records.
inline std::string LargeResultsFile(int ns, int rows)
{
    std::vector<std::string> L;
    L.push_back("!$Zarvion Solver, generated test file");
    for (int n = 2; n <= 9; ++n) {
        L.push_back(" free");
    }
    L.push_back(" " + std::to_string(ns) + " !Species");
    L.push_back(" 0 !Reactions");
    L.push_back(" ");
    L.push_back(" ");
    L.push_back(" 2.00E+00 !Pressure, atm");
    L.push_back(" 0 !Constant Temperature");
    L.push_back(" 1.00E+03 !Initial Temperature");
    L.push_back(" 3.00E+02 !Minimal Allowable Temperature");
    L.push_back(" 3.00E+03 !Maximum Allowable Temperature");
    L.push_back(" 0.00E+00 !Initial Time");
    L.push_back(" 1.00E-04 !Final Time");
    L.push_back(" 1.00E-09 !Initial Step Size");
    L.push_back(" 1000 !Maximum Number of Steps");
    L.push_back(" 1.00E-06 !Relative Tolerance");
    L.push_back(" 1.00E-10 !Absolute Tolerance");
    L.push_back(" ");
    L.push_back(" !Output Parameters");
    L.push_back(" 100000 !R!Maximum Number of lines in output");
    L.push_back(" 1 !Delta N");
    L.push_back(" ");
    L.push_back(" ");
    L.push_back(" 1.987 cal");
    L.push_back(" 82.057 cm3 atm");
    L.push_back(" ");
    L.push_back("THERMO");
    for (int i = 1; i <= ns; ++i) {
        std::string name = "S" + std::to_string(i);
        std::string l1 = " " + std::to_string(i);
        l1 += std::string(6 - l1.size(), ' ') + name + std::string(17 - name.size(), ' ');
        std::string comp = "C1H" + std::to_string(i % 9 + 1);
        l1 += comp + std::string(22 - comp.size(), ' ') + "  " + "  300.00" + " " + " 5000.00" +
              " " + " 1000.00" + " " + "0         ";
        L.push_back(l1);
        std::string c;
        for (int k = 0; k < 5; ++k) {
            c += " 1.00000000E+00";
        }
        L.push_back(c);
        L.push_back(c);
        std::string c4;
        for (int k = 0; k < 4; ++k) {
            c4 += " 1.00000000E+00";
        }
        char w[32];
        std::snprintf(w, sizeof w, "% .8E", LargeFileWeight(i));
        L.push_back(c4 + w);
    }
    L.push_back("END");
    L.push_back(" ");
    L.push_back("REACTIONS");
    L.push_back("END");
    L.push_back("");
    L.push_back("!$Results   $$");
    std::vector<std::string> head{RightIn("Time(s)", 16), RightIn("T(K)", 16)};
    for (int i = 1; i <= ns; ++i) {
        head.push_back(RightIn("S" + std::to_string(i), 16));
    }
    for (const auto& l : LargeFileRecord("", head, RightIn("Step(s)", 16))) {
        L.push_back(l);
    }
    for (int k = 1; k <= rows; ++k) {
        std::vector<std::string> f{Field16(LargeFileTime(k)), Field16(LargeFileTemperature(k))};
        for (int i = 1; i <= ns; ++i) {
            f.push_back(Field16(LargeFileValue(k, i)));
        }
        const double step = k == 1 ? 0.0 : LargeFileTime(k) - LargeFileTime(k - 1);
        for (const auto& l : LargeFileRecord(std::to_string(k), f, Field16(step))) {
            L.push_back(l);
        }
    }
    L.push_back("!$END");
    L.push_back("Statistics");
    std::string out;
    for (const auto& l : L) {
        out += l + "\r\n";
    }
    return out;
}

} // namespace zarvion::testing
