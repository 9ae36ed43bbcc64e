// Reaction lines, auxiliary keywords, unit conversion and the solver-file records.

#include "solverfile/ChemkinReactions.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zarvion::solverfile::chemkin {

namespace {

constexpr double CaloriesPerJoule = 1.0 / 4.184; // thermochemical calorie
constexpr double GasConstantCal = 1.987204259;   // [cal/(mol K)], CODATA 2018
constexpr double FaradayConstant = 96485.33212;  // [C/mol]: 1 eV per particle in J/mol

bool isMoleculesWord(const std::string& w)
{
    return w == "MOLECULES" || w == "MOLECULE" || w == "MOLEC" || w == "MOLEC.";
}
bool isMolesWord(const std::string& w)
{
    return w == "MOLES" || w == "MOLE" || w == "MOL";
}

std::string numberText(double v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.6g", v);
    return buf;
}

} // namespace

std::optional<double> EnergyUnitFactor(std::string_view word)
{
    std::string w = UpperAscii(word);
    if (w == "CAL/MOLE" || w == "CAL/MOL" || w == "CAL") return 1.0;
    if (w == "KCAL/MOLE" || w == "KCAL/MOL" || w == "KCAL") return 1000.0;
    if (w == "JOULES/MOLE" || w == "JOULES/MOL" || w == "JOULE/MOL" || w == "J/MOL" ||
        w == "JOULES" || w == "J")
        return CaloriesPerJoule;
    if (w == "KJOULES/MOLE" || w == "KJOULES/MOL" || w == "KJOULE/MOL" || w == "KJ/MOL" ||
        w == "KJOULES" || w == "KJ")
        return 1000.0 * CaloriesPerJoule;
    if (w == "KELVINS" || w == "KELVIN" || w == "K") return GasConstantCal;
    if (w == "EVOLTS" || w == "EVOLT" || w == "EV") return FaradayConstant * CaloriesPerJoule;
    return std::nullopt;
}

ReactionBuilder::ReactionBuilder(const ChemkinOptions& options, ChemkinImport& out)
    : m_options(options), m_out(out)
{
}
ReactionBuilder::~ReactionBuilder() = default;

void ReactionBuilder::message(ImportSeverity severity, int line, std::string text)
{
    m_out.messages.push_back({severity, m_options.mechanismName, line, std::move(text)});
}

void ReactionBuilder::setUnits(const std::vector<std::string>& words, int line)
{
    for (const auto& word : words) {
        std::string w = UpperAscii(word);
        if (auto f = EnergyUnitFactor(w)) {
            m_energyFactor = *f;
        } else if (isMoleculesWord(w)) {
            m_molecules = true;
        } else if (isMolesWord(w)) {
            m_molecules = false;
        } else {
            message(ImportSeverity::Error, line,
                    "Unknown unit '" + word + "' on the REACTIONS line.");
        }
    }
}

void ReactionBuilder::endOfSection() {}

void ReactionBuilder::readLine(const std::string& text, int line,
                               const std::vector<std::string>& species)
{
    if (!m_table) {
        m_table = std::make_unique<SpeciesTable>(species);
    }
    auto words = SplitWords(text);
    if (words.empty()) {
        return;
    }
    std::string first = UpperAscii(words[0]);
    bool hasSlash = text.find('/') != std::string::npos;
    if (!hasSlash && text.find('=') != std::string::npos) {
        // A reaction: the equation, then A, n, E as the last three words.
        Pending r;
        r.line = line;
        r.energyFactor = m_energyFactor;
        r.molecules = m_molecules;
        std::optional<double> numbers[3];
        if (words.size() >= 4) {
            for (int k = 0; k < 3; ++k) {
                numbers[k] =
                    ParseFortranNumber(words[words.size() - 3 + static_cast<std::size_t>(k)]);
            }
        }
        if (!numbers[0] || !numbers[1] || !numbers[2]) {
            r.equation = text;
            r.errors.push_back("A reaction line needs its equation followed by the three numbers "
                               "A, n and E.");
            m_pending.push_back(std::move(r));
            return;
        }
        // The equation ends where the third word from the end begins.
        std::size_t pos = text.size();
        for (int k = 0; k < 3; ++k) {
            while (pos > 0 && IsBlank(text[pos - 1]))
                --pos;
            while (pos > 0 && !IsBlank(text[pos - 1]))
                --pos;
        }
        r.equation = TrimBlanks(text.substr(0, pos));
        r.rate = {*numbers[0], *numbers[1], *numbers[2]};
        r.eq = ParseEquation(r.equation, *m_table);
        if (!r.eq.error.empty()) {
            r.errors.push_back(r.eq.error);
        }
        m_pending.push_back(std::move(r));
        return;
    }
    if (m_pending.empty()) {
        message(ImportSeverity::Error, line,
                "Auxiliary line before the first reaction: '" + text + "'.");
        return;
    }
    Pending& r = m_pending.back();
    if (first.rfind("UNITS", 0) == 0 && (first.size() == 5 || first[5] == '/') && hasSlash) {
        std::size_t a = text.find('/');
        std::size_t b = text.rfind('/');
        for (const auto& w :
             SplitWords(text.substr(a + 1, b > a ? b - a - 1 : std::string::npos))) {
            std::string u = UpperAscii(w);
            if (auto f = EnergyUnitFactor(u)) {
                r.energyFactor = *f;
            } else if (isMoleculesWord(u)) {
                r.molecules = true;
            } else if (isMolesWord(u)) {
                r.molecules = false;
            } else {
                r.errors.push_back("unknown unit '" + w + "' in UNITS");
            }
        }
        return;
    }
    // "KEY / values /" items, with bare keywords such as DUPLICATE between them.
    std::vector<std::string> segments;
    std::size_t start = 0;
    for (std::size_t k = 0; k <= text.size(); ++k) {
        if (k == text.size() || text[k] == '/') {
            segments.push_back(text.substr(start, k - start));
            start = k + 1;
        }
    }
    for (std::size_t k = 0; k < segments.size(); k += 2) {
        auto names = SplitWords(segments[k]);
        bool hasValues = k + 1 < segments.size();
        for (std::size_t n = 0; n < names.size(); ++n) {
            bool isKey = hasValues && n + 1 == names.size();
            if (isKey) {
                auxiliary(r, names[n], segments[k + 1], line);
                continue;
            }
            std::string bare = UpperAscii(names[n]);
            if (bare == "DUP" || bare == "DUPLICATE") {
                r.duplicate = true;
            } else if (bare == "MOME" || bare == "XSMI") {
                r.unsupported.push_back(bare);
            } else {
                r.errors.push_back("unrecognised word '" + names[n] + "' on line " +
                                   std::to_string(line));
            }
        }
    }
}

void ReactionBuilder::auxiliary(Pending& r, const std::string& keyword, const std::string& values,
                                int line)
{
    std::string key = UpperAscii(keyword);
    std::vector<double> numbers;
    bool numeric = true;
    for (const auto& w : SplitWords(values)) {
        auto v = ParseFortranNumber(w);
        numeric = numeric && v.has_value();
        numbers.push_back(v.value_or(0));
    }
    auto need = [&](std::initializer_list<std::size_t> counts) {
        bool ok =
            numeric && std::find(counts.begin(), counts.end(), numbers.size()) != counts.end();
        if (!ok) {
            r.errors.push_back(key + " on line " + std::to_string(line) +
                               " has not the expected numbers: '" + TrimBlanks(values) + "'");
        }
        return ok;
    };
    static const char* const unsupported[] = {"PLOG",    "CHEB", "TCHEB",   "PCHEB", "FORD", "RORD",
                                              "LT",      "RLT",  "JAN",     "FIT1",  "TDEP", "EXCI",
                                              "USRPROG", "LANG", "COLLEFF", "MOME",  "XSMI"};
    if (key == "LOW") {
        if (need({3})) r.low = std::array<double, 3>{numbers[0], numbers[1], numbers[2]};
    } else if (key == "REV") {
        if (need({3})) r.rev = std::array<double, 3>{numbers[0], numbers[1], numbers[2]};
    } else if (key == "TROE") {
        r.hasTroe = true;
        if (need({3, 4})) r.troe = numbers;
    } else if (key == "SRI") {
        r.hasSri = true;
        if (need({3, 5})) r.sri = numbers;
    } else if (key == "HIGH") {
        if (!r.hasHigh) r.unsupported.push_back("HIGH (a chemically activated fall-off)");
        r.hasHigh = true;
    } else if (key == "HV") {
        message(ImportSeverity::Warning, line, "HV / wavelength / is ignored.");
    } else if (std::find(std::begin(unsupported), std::end(unsupported), key) !=
               std::end(unsupported)) {
        if (std::find(r.unsupported.begin(), r.unsupported.end(), key) == r.unsupported.end())
            r.unsupported.push_back(key);
    } else {
        std::vector<int> matches;
        m_table->matchesAt(keyword, 0, false, matches);
        int species = -1;
        for (int k : matches) {
            if (m_table->names()[static_cast<std::size_t>(k)].size() == keyword.size()) species = k;
        }
        if (species < 0) {
            m_table->matchesAt(keyword, 0, true, matches);
            for (int k : matches) {
                if (m_table->names()[static_cast<std::size_t>(k)].size() == keyword.size())
                    species = k;
            }
        }
        if (species < 0) {
            r.errors.push_back("'" + keyword + "' on line " + std::to_string(line) +
                               " is neither a keyword nor a declared species");
        } else if (need({1})) {
            r.efficiencies.emplace_back(species, numbers[0]);
        }
    }
}

void ReactionBuilder::checkDuplicates()
{
    // Reactions with the same reactants, products and kind of third body must be marked
    // DUPLICATE; a reversible one also matches its reverse.
    auto sideKey = [](std::vector<std::pair<int, double>> side) {
        std::sort(side.begin(), side.end());
        std::string key;
        for (const auto& [s, c] : side)
            key += std::to_string(s) + "x" + numberText(c) + ",";
        return key;
    };
    std::map<std::string, std::vector<std::size_t>> seen;
    std::vector<bool> matched(m_pending.size(), false);
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        Pending& r = m_pending[i];
        if (!r.errors.empty()) continue;
        std::string third =
            std::to_string(static_cast<int>(r.eq.thirdBody)) + ":" + std::to_string(r.eq.collider);
        std::string fwd = sideKey(r.eq.reactants) + ">" + sideKey(r.eq.products) + "|" + third;
        std::string back = sideKey(r.eq.products) + ">" + sideKey(r.eq.reactants) + "|" + third;
        auto report = [&](std::size_t j) {
            Pending& o = m_pending[j];
            if (r.duplicate && o.duplicate) {
                matched[i] = matched[j] = true;
                return;
            }
            r.errors.push_back("it duplicates the reaction at line " + std::to_string(o.line) +
                               " ('" + o.equation + "') but the two are not marked DUPLICATE");
        };
        for (std::size_t j : seen[fwd])
            report(j);
        for (std::size_t j : seen[back]) {
            if (r.eq.reversible || m_pending[j].eq.reversible) report(j);
        }
        seen[fwd].push_back(i);
    }
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        const Pending& r = m_pending[i];
        if (r.duplicate && !matched[i] && r.errors.empty()) {
            message(ImportSeverity::Warning, r.line,
                    "Reaction '" + r.equation +
                        "' is marked DUPLICATE but has no "
                        "duplicate.");
        }
    }
}

} // namespace zarvion::solverfile::chemkin
