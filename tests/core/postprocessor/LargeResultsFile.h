#pragma once
// Writes solver files with many species and a results table in the output geometry: numeric
// fields " d.dddddddddE+dd" 16 wide, row counter in 7 columns, 50 species on the first
// physical line and 50 on each further line behind 40 blanks, the step column last on the
// first line. The values are a known function of (row, species) so readers can be checked
// field by field. Independent of the solver's own writer on purpose: the input side comes
// from tests/data/postprocessor/large_results_head.txt, with the species filled in.

#include <cmath>
#include <cstdio>
#include <fstream>
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

//! printf into a std::string.
template <typename... Args> std::string LargeFileFormat(const char* format, Args... args)
{
    char buf[128];
    std::snprintf(buf, sizeof buf, format, args...);
    return buf;
}

//! One record: counter in 7, time and temperature, then the species 50 a line, the step
//! closing the first line; every field 16 wide behind one blank.
inline std::string LargeFileRecord(const std::string& counter,
                                   const std::vector<std::string>& fields,
                                   const std::string& step)
{
    std::string out = LargeFileFormat("%7s", counter.c_str()) + fields[0] + " " + fields[1];
    for (std::size_t i = 2; i < fields.size(); ++i) {
        if (i == 52) out += " " + step;
        if (i > 2 && (i - 2) % 50 == 0) out += "\r\n" + std::string(40, ' ');
        out += " " + fields[i];
    }
    return out + (fields.size() <= 52 ? " " + step : "") + "\r\n";
}

//! A whole solver file with ns species, no reactions, and `rows` data records.
inline std::string LargeResultsFile(int ns, int rows)
{
    std::ifstream head(ZARVION_SOURCE_DIR "/tests/data/postprocessor/large_results_head.txt");
    std::string out, line;
    while (std::getline(head, line)) {
        if (line == "@THERMO@") {
            for (int i = 1; i <= ns; ++i) {
                const std::string name = "S" + std::to_string(i);
                const std::string comp = "C1H" + std::to_string(i % 9 + 1);
                out += LargeFileFormat(" %-5d%-17s%-22s    300.00  5000.00  1000.00 0         \r\n",
                                       i, name.c_str(), comp.c_str());
                std::string c4;
                for (int k = 0; k < 4; ++k) c4 += " 1.00000000E+00";
                const std::string c5 = c4 + " 1.00000000E+00\r\n";
                out += c5 + c5 + c4 + LargeFileFormat("% .8E\r\n", LargeFileWeight(i));
            }
            continue;
        }
        if (const auto at = line.find("@NS@"); at != std::string::npos)
            line.replace(at, 4, std::to_string(ns));
        out += line + "\r\n";
    }
    std::vector<std::string> titles{"Time(s)", "T(K)"};
    for (int i = 1; i <= ns; ++i) titles.push_back("S" + std::to_string(i));
    for (std::string& t : titles) t = LargeFileFormat("%16s", t.c_str());
    out += LargeFileRecord("", titles, LargeFileFormat("%16s", "Step(s)"));
    for (int k = 1; k <= rows; ++k) {
        std::vector<std::string> f{LargeFileFormat("% .9E", LargeFileTime(k)),
                                   LargeFileFormat("% .9E", LargeFileTemperature(k))};
        for (int i = 1; i <= ns; ++i) f.push_back(LargeFileFormat("% .9E", LargeFileValue(k, i)));
        const double step = k == 1 ? 0.0 : LargeFileTime(k) - LargeFileTime(k - 1);
        out += LargeFileRecord(std::to_string(k), f, LargeFileFormat("% .9E", step));
    }
    return out + "!$END\r\nStatistics\r\n";
}

} // namespace zarvion::testing
