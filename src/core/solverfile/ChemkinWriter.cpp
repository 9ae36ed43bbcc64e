// The solver-file layout of an imported mechanism.

#include "solverfile/ChemkinWriter.h"

#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/ChemkinDetail.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zarvion::solverfile {

namespace {

constexpr const char* GasConstantEnergyText = "1.987204259"; // [cal/(mol K)]
constexpr const char* GasConstantConcText = "82.05736608";   // [cm^3 atm/(mol K)]

std::string padRight(std::string s, std::size_t width)
{
    if (s.size() < width) s.append(width - s.size(), ' ');
    return s;
}

std::string padLeft(const std::string& s, std::size_t width)
{
    return s.size() < width ? std::string(width - s.size(), ' ') + s : s;
}

// A header value in "0.00####E+00" followed by its comment.
std::string headerValue(double value, const char* comment)
{
    return " " + shell::Format(value, "0.00####E+00") + " " + comment;
}

// Integer field of 4 columns, left-aligned.
std::string int4(int value)
{
    return padRight(std::to_string(value), 4);
}

// Temperature limit in 8 columns.
std::string field8Temperature(double t)
{
    char buf[64];
    for (int decimals = 2; decimals >= 0; --decimals) {
        std::snprintf(buf, sizeof buf, "%8.*f", decimals, t);
        if (std::string(buf).size() <= 8) return buf;
    }
    std::snprintf(buf, sizeof buf, "%8.1E", t);
    return buf;
}

// Efficiency in 8 columns with at least one leading blank.
std::string field8Efficiency(double e)
{
    char buf[64];
    if (e != 0.0 && (std::fabs(e) < 1e-3 || std::fabs(e) >= 1e6)) {
        std::snprintf(buf, sizeof buf, "%8.1E", e);
        return buf;
    }
    for (int decimals = 4; decimals >= 0; --decimals) {
        std::snprintf(buf, sizeof buf, "%8.*f", decimals, e);
        std::string text(buf);
        if (text.size() == 8 && text[0] == ' ') return text;
    }
    std::snprintf(buf, sizeof buf, "%8.1E", e);
    return buf;
}

std::string speciesLine1(int number, const ImportedSpecies& sp, double fraction)
{
    std::string formula;
    for (const auto& [symbol, n] : sp.elements)
        formula += symbol + std::to_string(n);
    std::string line = " " + padRight(std::to_string(number), 4) + " "; // columns 1-6
    line += padRight(sp.name, 17);                                      // 7-23
    line += padRight(formula, 22);                                      // 24-45
    line += "  ";                                                       // 46-47
    line += field8Temperature(sp.thermo[16]) + " ";                     // 48-56
    line += field8Temperature(sp.thermo[17]) + " ";                     // 57-65
    line += field8Temperature(sp.thermo[18]) + " ";                     // 66-74
    std::string x = fraction == 0.0 ? "0" : shell::Format(fraction, "0.000E+00");
    line += padRight(x, 10); // 75-84
    return line;
}

} // namespace

std::string FormatField15(double value)
{
    char buf[64];
    for (int digits = 8; digits >= 1; --digits) {
        std::snprintf(buf, sizeof buf, "%15.*E", digits, value);
        if (std::string(buf).size() <= 15) return buf;
    }
    return std::string(buf).substr(0, 15);
}

std::vector<std::pair<std::string, double>> ParseMoleFractionList(std::string_view text)
{
    std::vector<std::pair<std::string, double>> out;
    std::string s = chemkin::TrimBlanks(text);
    std::size_t p = 0;
    while (p < s.size()) {
        // The item ends at the first "name:number" boundary: a ':' followed by a number that
        // runs to the next ',' or to the end.
        bool found = false;
        for (std::size_t colon = s.find(':', p); colon != std::string::npos;
             colon = s.find(':', colon + 1)) {
            std::size_t comma = s.find(',', colon);
            std::size_t end = comma == std::string::npos ? s.size() : comma;
            auto value = chemkin::ParseFortranNumber(s.substr(colon + 1, end - colon - 1));
            std::string name = chemkin::TrimBlanks(s.substr(p, colon - p));
            if (value && !name.empty()) {
                out.emplace_back(name, *value);
                p = end + 1;
                found = true;
                break;
            }
        }
        if (!found) {
            throw Error("Mole fractions must be given as name:value pairs separated by commas; "
                        "cannot read '" +
                        s.substr(p) + "'.");
        }
    }
    return out;
}

std::vector<std::string> BuildSolverFileLines(const ChemkinImport& mechanism,
                                              const ProblemSettings& problem,
                                              const SolverFileSource& source)
{
    const auto& species = mechanism.species;
    std::vector<double> fractions(species.size(), 0.0);
    for (const auto& item : problem.moleFractions) {
        const std::string& name = item.first;
        const double value = item.second;
        auto it = std::find_if(species.begin(), species.end(),
                               [&name](const ImportedSpecies& s) { return s.name == name; });
        if (it == species.end()) {
            throw Error("Mole fraction given for '" + name +
                        "', which is no species of the mechanism.");
        }
        if (!(value >= 0.0) || !std::isfinite(value)) {
            throw Error("The mole fraction of '" + name + "' must be a number of 0 or more.");
        }
        fractions[static_cast<std::size_t>(it - species.begin())] += value;
    }

    std::vector<std::string> lines;
    lines.reserve(40 + 4 * species.size() + 6 * mechanism.reactions.size());
    lines.push_back("!$Zarvion Solver file");
    lines.push_back(" ");
    lines.push_back(" Don't modify this file, the file has a fixed format and is intended for use "
                    "in the Zarvion solver.");
    lines.push_back(" ");
    lines.push_back(" Source mechanism: " + source.mechanism);
    lines.push_back(" Source thermodynamic data: " +
                    (source.thermo.empty() ? std::string("in the mechanism file") : source.thermo));
    lines.push_back(" Imported from CHEMKIN-II input; E in cal/mol, A in mol, cm, s.");
    lines.push_back(" ");
    lines.push_back(" ");
    lines.push_back(" " + std::to_string(species.size()) + " !Species");
    lines.push_back(" " + std::to_string(mechanism.reactions.size()) + " !Reactions");
    lines.push_back(" ");
    lines.push_back(" !Problem Parameters");
    lines.push_back(headerValue(problem.pressureAtm, "!Pressure, atm"));
    lines.push_back(problem.TemperatureMode == 1 ? " 1 !Temperature Equation"
                                                 : " 0 !Constant Temperature");
    lines.push_back(headerValue(problem.initialTemperature, "!Initial Temperature"));
    lines.push_back(headerValue(problem.minTemperature, "!Minimal Allowable Temperature"));
    lines.push_back(headerValue(problem.maxTemperature, "!Maximum Allowable Temperature"));
    lines.push_back(headerValue(problem.initialTime, "!Initial Time"));
    lines.push_back(headerValue(problem.finalTime, "!Final Time"));
    lines.push_back(headerValue(problem.initialStep, "!Initial Step Size"));
    lines.push_back(" " + std::to_string(problem.maxSteps) + " !Maximum Number of Steps");
    lines.push_back(headerValue(problem.relativeTolerance, "!Relative Tolerance"));
    lines.push_back(headerValue(problem.absoluteTolerance, "!Absolute Tolerance"));
    lines.push_back(" ");
    lines.push_back(" !Output Parameters");
    lines.push_back(" 100000 !R!Maximum Number of lines in output");
    lines.push_back(" " + std::to_string(problem.outputEvery) + " !Delta N");
    lines.push_back(" ");
    lines.push_back(" !Gas Constants");
    lines.push_back(std::string(" ") + GasConstantEnergyText +
                    " !Gas Constant in the units of E, cal/(mol K)");
    lines.push_back(std::string(" ") + GasConstantConcText +
                    " !Gas Constant for concentrations, cm3 atm/(mol K)");
    lines.push_back(" ");
    lines.push_back("THERMO");

    for (std::size_t k = 0; k < species.size(); ++k) {
        const ThermoRecord& t = species[k].thermo;
        lines.push_back(speciesLine1(static_cast<int>(k + 1), species[k], fractions[k]));
        std::string l2, l3, l4;
        for (int c = 1; c <= 5; ++c)
            l2 += FormatField15(t[static_cast<std::size_t>(c)]);
        for (int c = 6; c <= 10; ++c)
            l3 += FormatField15(t[static_cast<std::size_t>(c)]);
        for (int c = 11; c <= 14; ++c)
            l4 += FormatField15(t[static_cast<std::size_t>(c)]);
        l4 += FormatField15(t[15]);
        lines.push_back(l2);
        lines.push_back(l3);
        lines.push_back(l4);
    }
    lines.push_back("END");
    lines.push_back(" ");
    lines.push_back("REACTIONS");

    const std::string indent(6, ' ');
    for (std::size_t j = 0; j < mechanism.reactions.size(); ++j) {
        const ReactionRecord& r = mechanism.reactions[j];
        const auto& in = r.ints;
        const auto& re = r.reals;
        lines.push_back(" " + padRight(std::to_string(j + 1), 4) + " " + r.text);
        std::string ints = indent;
        for (int f = 1; f <= 16; ++f)
            ints += int4(in[static_cast<std::size_t>(f)]);
        lines.push_back(ints);
        lines.push_back(indent + FormatField15(re[1]) + FormatField15(re[2]) +
                        FormatField15(re[3]));
        if (in[slot::HasLowLimit] == 1) {
            lines.push_back("LOW   " + FormatField15(re[4]) + FormatField15(re[5]) +
                            FormatField15(re[6]));
        }
        int kind = in[slot::FalloffKind];
        if (kind > 0) {
            int count = kind == 1 ? 4 : kind == 2 ? 5 : 3;
            std::string line = kind == 2 ? "SRI   " : "TROE  ";
            for (int f = 0; f < count; ++f)
                line += FormatField15(re[static_cast<std::size_t>(7 + f)]);
            lines.push_back(line);
        }
        int partners = in[slot::PartnerCount];
        if (partners > 0) {
            std::string names = indent, indices = indent, effs = indent;
            for (int p = 0; p < 10; ++p) {
                int s = p < partners ? in[static_cast<std::size_t>(slot::FirstPartner + p)] : 0;
                std::string name = s > 0 && s <= static_cast<int>(species.size())
                                       ? species[static_cast<std::size_t>(s - 1)].name.substr(0, 7)
                                       : std::string();
                names += padRight(name, 8);
                indices += padLeft(std::to_string(s), 8);
                effs += p < partners ? field8Efficiency(re[static_cast<std::size_t>(12 + p)])
                                     : padLeft("0.", 8);
            }
            lines.push_back(chemkin::TrimBlanks(names).empty() ? indent : names);
            lines.push_back(indices);
            lines.push_back(effs);
        }
    }
    lines.push_back("END");
    return lines;
}

void WriteSolverFile(const std::filesystem::path& target, const std::vector<std::string>& lines)
{
    shell::WriteFileAtomically(target, shell::JoinCrLf(lines));
}

} // namespace zarvion::solverfile
