// The checks that decide what a solver file can hold, and the species and reaction records.

#include "solverfile/ChemkinReactions.h"

#include <algorithm>
#include <cmath>

namespace zarvion::solverfile::chemkin {

namespace {

constexpr double AvogadroNumber = 6.02214076e23; // [1/mol]
constexpr std::size_t MaxReactantMolecules = 3;
constexpr std::size_t MaxProductMolecules = 6;
constexpr std::size_t MaxPartners = 10;
constexpr std::size_t MaxNameLength = 16;
constexpr std::size_t MaxSpecies = 9999; // integer fields are 4 columns wide
constexpr std::size_t CompositionWidth = 22;

std::size_t molecules(const std::vector<std::pair<int, double>>& side)
{
    double sum = 0;
    for (const auto& [s, c] : side)
        sum += c;
    return sum > 1e6 ? 1000000 : static_cast<std::size_t>(std::llround(sum));
}

std::string joinReasons(const std::vector<std::string>& reasons)
{
    std::string out;
    for (std::string r : reasons) {
        while (!r.empty() && r.back() == '.')
            r.pop_back();
        out += (out.empty() ? "" : "; ") + r;
    }
    return out;
}

std::string sideText(const std::vector<std::pair<int, double>>& side,
                     const std::vector<std::string>& names, bool plusM, bool hv, bool productsWord,
                     ThirdBody third, int collider)
{
    std::string out;
    for (const auto& [s, c] : side) {
        if (!out.empty()) out += " + ";
        if (c > 1) out += std::to_string(std::llround(c));
        out += names[static_cast<std::size_t>(s)];
    }
    if (productsWord) out += (out.empty() ? "Products" : " + Products");
    if (plusM) out += " + M";
    if (hv) out += (out.empty() ? "HV" : " + HV");
    if (third == ThirdBody::FalloffM) out += " (+M)";
    if (third == ThirdBody::FalloffSpecies)
        out += " (+" + names[static_cast<std::size_t>(collider)] + ")";
    return out;
}

// One solver-file record of the reaction, or of its REV reverse. Partners are (species
// number, efficiency); `newIndex` maps declared species to their numbers in the file.
ReactionRecord makeRecord(const PendingReaction& r, bool reverse,
                          const std::vector<std::pair<int, double>>& partners, int reversibleFlag,
                          const std::vector<int>& newIndex, const std::vector<std::string>& names)
{
    const auto& left = reverse ? r.eq.products : r.eq.reactants;
    const auto& right = reverse ? r.eq.reactants : r.eq.products;
    const std::array<double, 3>& rate = reverse ? *r.rev : r.rate;
    ReactionRecord rec;
    auto& in = rec.ints;
    auto& re = rec.reals;
    int slotL = 1, slotR = 4;
    for (const auto& [s, c] : left)
        for (int m = 0; m < static_cast<int>(c); ++m)
            in[static_cast<std::size_t>(slotL++)] = newIndex[static_cast<std::size_t>(s)];
    for (const auto& [s, c] : right)
        for (int m = 0; m < static_cast<int>(c); ++m)
            in[static_cast<std::size_t>(slotR++)] = newIndex[static_cast<std::size_t>(s)];
    int nL = slotL - 1;
    in[slot::ReactantCount] = nL;
    in[slot::ProductCount] = slotR - 4;
    bool plusM = r.eq.thirdBody == ThirdBody::PlusM;
    bool falloff =
        r.eq.thirdBody == ThirdBody::FalloffM || r.eq.thirdBody == ThirdBody::FalloffSpecies;
    if (plusM || r.eq.thirdBody == ThirdBody::FalloffM) {
        in[slot::ThirdBodyKind] = partners.empty() ? 1 : 2;
        in[slot::PartnerCount] = static_cast<int>(partners.size());
        for (std::size_t p = 0; p < partners.size(); ++p) {
            in[slot::FirstPartner + p] = partners[p].first;
            re[12 + p] = partners[p].second;
        }
    } else if (r.eq.thirdBody == ThirdBody::FalloffSpecies) {
        in[slot::PartnerCount] = 1;
        in[slot::FirstPartner] = newIndex[static_cast<std::size_t>(r.eq.collider)];
        re[12] = 1.0;
    }
    in[slot::HasLowLimit] = falloff ? 1 : 0;
    if (r.troe.size() == 4 && r.troe[3] != 0.0)
        in[slot::FalloffKind] = 1;
    else if (!r.troe.empty())
        in[slot::FalloffKind] = 3;
    else if (!r.sri.empty())
        in[slot::FalloffKind] = 2;
    in[slot::Reversible] = reversibleFlag;
    // A in mol, cm, s: a rate in molecules scales with N_A^(order - 1).
    int order = nL + (plusM ? 1 : 0);
    double aScale = r.molecules ? std::pow(AvogadroNumber, order - 1) : 1.0;
    re[1] = rate[0] * aScale;
    re[2] = rate[1];
    re[3] = rate[2] * r.energyFactor;
    if (falloff && r.low) {
        double lowScale = r.molecules ? std::pow(AvogadroNumber, nL) : 1.0;
        re[4] = (*r.low)[0] * lowScale;
        re[5] = (*r.low)[1];
        re[6] = (*r.low)[2] * r.energyFactor;
    }
    for (std::size_t p = 0; p < r.troe.size(); ++p)
        re[7 + p] = r.troe[p];
    for (std::size_t p = 0; p < r.sri.size(); ++p)
        re[7 + p] = r.sri[p];
    if (r.sri.size() == 3) {
        re[10] = 1.0; // d
        re[11] = 0.0; // e
    }
    bool hvL = reverse ? r.eq.hvRight : r.eq.hvLeft;
    bool hvR = reverse ? r.eq.hvLeft : r.eq.hvRight;
    std::string arrow = reversibleFlag == 1 ? " <=> " : " => ";
    rec.text = sideText(left, names, plusM, hvL, false, r.eq.thirdBody, r.eq.collider) + arrow +
               sideText(right, names, plusM, hvR, r.eq.productsWord, r.eq.thirdBody, r.eq.collider);
    return rec;
}

} // namespace

void ReactionBuilder::finish(const std::vector<std::string>& names,
                             const std::vector<int>& speciesLines,
                             const std::map<std::string, ThermoEntry>& thermo,
                             const std::map<std::string, double>& elementWeights,
                             const std::set<std::string>& elements)
{
    m_out.sourceReactionCount = static_cast<int>(m_pending.size());
    checkDuplicates();
    for (Pending& r : m_pending) {
        checkReaction(r, names);
    }
    std::vector<int> newIndex = keepSpecies(names, speciesLines, thermo, elementWeights, elements);
    for (const Pending& r : m_pending) {
        if (r.keep) {
            writeReaction(r, names, newIndex);
        }
    }
}

// Decides whether the solver file can hold the reaction, and says why not.
void ReactionBuilder::checkReaction(Pending& r, const std::vector<std::string>& names)
{
    const bool skip = m_options.skipUnsupported;
    if (!r.eq.error.empty() || r.eq.reactants.empty() || !r.unsupported.empty()) {
        // Unreadable, or held up by a keyword the format cannot hold: the checks below
        // would only repeat that.
    } else {
        const ParsedEquation& e = r.eq;
        bool falloff =
            e.thirdBody == ThirdBody::FalloffM || e.thirdBody == ThirdBody::FalloffSpecies;
        if (falloff && !r.low && !r.hasHigh)
            r.errors.push_back(
                "'(+" +
                std::string(e.collider < 0 ? "M" : names[static_cast<std::size_t>(e.collider)]) +
                ")' implies pressure dependence, but no LOW line follows");
        if (!falloff && (r.low || r.hasHigh))
            r.errors.push_back("LOW or HIGH is given but the equation has no '(+M)'");
        if (!falloff && (r.hasTroe || r.hasSri))
            r.errors.push_back("TROE or SRI is given but the equation has no '(+M)'");
        if (r.hasTroe && r.hasSri) r.errors.push_back("both TROE and SRI are given");
        if (!r.efficiencies.empty() && e.thirdBody != ThirdBody::PlusM &&
            e.thirdBody != ThirdBody::FalloffM)
            r.errors.push_back("third-body efficiencies are given but the equation has no "
                               "'+M' or '(+M)'");
        for (std::size_t a = 0; a < r.efficiencies.size(); ++a)
            for (std::size_t b = a + 1; b < r.efficiencies.size(); ++b)
                if (r.efficiencies[a].first == r.efficiencies[b].first)
                    r.errors.push_back("the efficiency of '" +
                                       names[static_cast<std::size_t>(r.efficiencies[a].first)] +
                                       "' is given twice");
        for (const auto* side : {&e.reactants, &e.products})
            for (const auto& [s, c] : *side) {
                if (c <= 0)
                    r.errors.push_back("a stoichiometric coefficient is not positive");
                else if (std::floor(c) != c)
                    r.unsupported.push_back("non-integer coefficient of '" +
                                            names[static_cast<std::size_t>(s)] + "'");
            }
        if (molecules(e.reactants) > MaxReactantMolecules)
            r.unsupported.push_back("more than 3 reactant molecules");
        if (molecules(e.products) > MaxProductMolecules)
            r.unsupported.push_back("more than 6 product molecules");
        if (r.rev && falloff) r.unsupported.push_back("REV on a fall-off reaction");
        if (r.rev && (e.hvLeft || e.hvRight || e.productsWord))
            r.unsupported.push_back("REV on a reaction with HV or PRODUCTS");
        if (r.efficiencies.size() > MaxPartners)
            r.unsupported.push_back("more than 10 third-body efficiencies");
        for (const auto* side : {&e.reactants, &e.products})
            for (const auto& [s, c] : *side)
                if (names[static_cast<std::size_t>(s)].size() > MaxNameLength)
                    r.unsupported.push_back("species name '" + names[static_cast<std::size_t>(s)] +
                                            "' is over 16 characters");
    }
    if (!r.errors.empty()) {
        r.keep = false;
        message(ImportSeverity::Error, r.line,
                "Reaction '" + r.equation + "': " + joinReasons(r.errors) + ".");
    } else if (!r.unsupported.empty()) {
        r.keep = false;
        if (skip) ++m_out.droppedReactionCount;
        message(skip ? ImportSeverity::Dropped : ImportSeverity::Refusal, r.line,
                "Reaction '" + r.equation +
                    "' cannot be held by a solver file: " + joinReasons(r.unsupported) + ".");
    }
}

// Species with thermo and a name that fits, numbered from 1; 0 for a species left out.
std::vector<int> ReactionBuilder::keepSpecies(const std::vector<std::string>& names,
                                              const std::vector<int>& speciesLines,
                                              const std::map<std::string, ThermoEntry>& thermo,
                                              const std::map<std::string, double>& elementWeights,
                                              const std::set<std::string>& elements)
{
    const bool skip = m_options.skipUnsupported;
    // Which species stay: those with thermo and a name that fits; a species without thermo
    // is an error only when a kept reaction needs it.
    std::vector<int> firstUse(names.size(), 0);
    for (const Pending& r : m_pending) {
        if (!r.keep) continue;
        for (const auto* side : {&r.eq.reactants, &r.eq.products})
            for (const auto& [s, c] : *side)
                if (!firstUse[static_cast<std::size_t>(s)])
                    firstUse[static_cast<std::size_t>(s)] = r.line;
        if (r.eq.collider >= 0 && !firstUse[static_cast<std::size_t>(r.eq.collider)])
            firstUse[static_cast<std::size_t>(r.eq.collider)] = r.line;
    }
    std::vector<int> newIndex(names.size(), 0);
    for (std::size_t k = 0; k < names.size(); ++k) {
        const std::string& name = names[k];
        auto it = thermo.find(name);
        if (name.size() > MaxNameLength) {
            if (skip) ++m_out.droppedSpeciesCount;
            message(skip ? ImportSeverity::Dropped : ImportSeverity::Refusal, speciesLines[k],
                    "Species '" + name + "': its name is over 16 characters.");
            continue;
        }
        if (it == thermo.end()) {
            if (firstUse[k]) {
                message(ImportSeverity::Error, speciesLines[k],
                        "No thermo data found for species '" + name +
                            "', used by the reaction at line " + std::to_string(firstUse[k]) + ".");
            } else {
                ++m_out.droppedSpeciesCount;
                message(ImportSeverity::Warning, speciesLines[k],
                        "Species '" + name +
                            "' has no thermo data and is in no reaction; it is "
                            "left out.");
            }
            continue;
        }
        const ThermoEntry& t = it->second;
        ImportedSpecies sp;
        sp.name = name;
        double weight = 0;
        std::string formula;
        bool ok = true;
        for (const auto& [symbol, count] : t.elements) {
            if (std::floor(count) != count || count < 0 || count > 1e6) {
                message(ImportSeverity::Error, t.line,
                        "Species '" + name + "': the count of element '" + symbol +
                            "' is not a whole number.");
                ok = false;
                continue;
            }
            auto w = elementWeights.count(symbol) ? std::optional<double>(elementWeights.at(symbol))
                                                  : AtomicWeight(symbol);
            if (!w) {
                message(ImportSeverity::Error, t.line,
                        "Species '" + name + "': element '" + symbol +
                            "' has no known atomic weight; give "
                            "it in ELEMENTS as " +
                            symbol + " /weight/.");
                ok = false;
                continue;
            }
            if (!elements.empty() && !elements.count(symbol)) {
                message(ImportSeverity::Warning, t.line,
                        "Species '" + name + "': element '" + symbol +
                            "' is not declared in ELEMENTS.");
            }
            int n = static_cast<int>(count);
            const std::string& key = symbol;
            auto same = std::find_if(sp.elements.begin(), sp.elements.end(),
                                     [&key](const auto& e) { return e.first == key; });
            if (same != sp.elements.end())
                same->second += n;
            else
                sp.elements.emplace_back(symbol, n);
            weight += count * *w;
        }
        for (const auto& [symbol, n] : sp.elements)
            formula += symbol + std::to_string(n);
        if (ok && sp.elements.empty()) {
            message(ImportSeverity::Error, t.line, "Species '" + name + "' has no elements.");
            ok = false;
        }
        if (ok && formula.size() > CompositionWidth) {
            message(ImportSeverity::Error, t.line,
                    "Species '" + name + "': the composition '" + formula +
                        "' is over 22 characters.");
            ok = false;
        }
        if (!ok) continue;
        for (std::size_t c = 0; c < 14; ++c)
            sp.thermo[c + 1] = t.coefficients[c];
        sp.thermo[15] = weight;
        sp.thermo[16] = t.lowT;
        sp.thermo[17] = t.highT;
        sp.thermo[18] = t.commonT;
        m_out.species.push_back(std::move(sp));
        newIndex[k] = static_cast<int>(m_out.species.size());
    }
    if (m_out.species.size() > MaxSpecies) {
        message(ImportSeverity::Error, 0, "More than 9999 species do not fit the solver file.");
    }
    return newIndex;
}

// Writes one reaction, or two for a REV reaction, into the result.
void ReactionBuilder::writeReaction(const Pending& r, const std::vector<std::string>& names,
                                    const std::vector<int>& newIndex)
{
    bool allKnown = true;
    for (const auto* side : {&r.eq.reactants, &r.eq.products})
        for (const auto& [s, c] : *side)
            allKnown = allKnown && newIndex[static_cast<std::size_t>(s)] > 0;
    if (r.eq.collider >= 0)
        allKnown = allKnown && newIndex[static_cast<std::size_t>(r.eq.collider)] > 0;
    if (!allKnown) return; // its species was refused; that message stands
    std::vector<std::pair<int, double>> partners;
    for (const auto& [s, eff] : r.efficiencies) {
        if (newIndex[static_cast<std::size_t>(s)] > 0) {
            partners.emplace_back(newIndex[static_cast<std::size_t>(s)], eff);
        } else {
            message(ImportSeverity::Warning, r.line,
                    "The efficiency of '" + names[static_cast<std::size_t>(s)] +
                        "', a species left out, is dropped.");
        }
    }
    // Participants that are no species keep the reaction out of the reverse and heat sums.
    bool pseudo = r.eq.hvLeft || r.eq.hvRight || r.eq.productsWord;
    int reversibleFlag = pseudo ? -1 : (r.eq.reversible && !r.rev ? 1 : 0);
    if (pseudo && r.eq.reversible) {
        message(ImportSeverity::Warning, r.line,
                "Reaction '" + r.equation +
                    "' names HV or PRODUCTS and is written as irreversible.");
    }
    auto build = [&](bool reverse) {
        m_out.reactions.push_back(
            makeRecord(r, reverse, partners, reversibleFlag, newIndex, names));
        m_out.reactionSourceLines.push_back(r.line);
    };
    build(false);
    if (r.rev) {
        if (molecules(r.eq.products) > MaxReactantMolecules) {
            // Four or more colliding molecules: negligible, and no record can hold it.
            ++m_out.revForwardOnlyCount;
            message(ImportSeverity::Warning, r.line,
                    "Reaction '" + r.equation +
                        "': its REV reverse would have more "
                        "than 3 reactant molecules; only the "
                        "forward direction is written.");
        } else if ((*r.rev)[0] == 0.0) {
            ++m_out.revZeroCount;
            message(ImportSeverity::Warning, r.line,
                    "Reaction '" + r.equation +
                        "' has a zero REV rate; only its "
                        "forward direction is written.");
        } else {
            ++m_out.revSplitCount;
            build(true);
        }
    }
}

} // namespace zarvion::solverfile::chemkin
