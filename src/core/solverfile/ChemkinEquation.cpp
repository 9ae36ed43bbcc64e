// Reaction equations tokenised against the species list, longest name first, with
// backtracking where a name holds "+", "=" or parentheses.

#include "solverfile/ChemkinDetail.h"

#include <algorithm>
#include <cmath>

namespace zarvion::solverfile::chemkin {

namespace {

char upper(char c)
{
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

bool startsWith(std::string_view text, std::size_t pos, std::string_view prefix, bool ignoreCase)
{
    if (pos + prefix.size() > text.size()) {
        return false;
    }
    for (std::size_t k = 0; k < prefix.size(); ++k) {
        char a = text[pos + k];
        char b = prefix[k];
        if (ignoreCase ? upper(a) != upper(b) : a != b) {
            return false;
        }
    }
    return true;
}

// One token of a successful reading.
struct Item {
    enum Kind { Species, ThirdM, Hv, Products, ColliderM, ColliderSpecies, Arrow } kind;
    int species = -1;
    double coefficient = 1;
    int arrow = 0; // 0 "=", 1 "<=>", 2 "=>"
};

// Backtracking reader over the equation. Blanks may stand around every token. Grammar:
//   side  := term ("+" term)* [ "(+" (M | species) ")" ]
//   term  := [number] (species | "M" | "HV") | "PRODUCTS" | "PROD"  (the last two right only)
//   eq    := side ("<=>" | "=>" | "=") side
class EquationReader {
public:
    EquationReader(std::string_view text, const SpeciesTable& species, bool ignoreCase)
        : m_s(text), m_species(species), m_ignoreCase(ignoreCase)
    {
    }

    bool read() { return term(0, 0); }
    bool exhausted() const { return m_steps > StepLimit; }
    const std::vector<Item>& items() const { return m_items; }

private:
    static constexpr long StepLimit = 200000;

    bool budget() { return ++m_steps <= StepLimit; }

    std::size_t skipBlanks(std::size_t p) const
    {
        while (p < m_s.size() && IsBlank(m_s[p])) {
            ++p;
        }
        return p;
    }

    bool term(std::size_t p, int side)
    {
        p = skipBlanks(p);
        if (!budget() || p >= m_s.size()) {
            return false;
        }
        if (name(p, 1.0, side)) {
            return true;
        }
        // A coefficient: digits with an optional fraction and exponent; the exponent is
        // also tried without, so "2E..." can start a name.
        std::size_t q = p;
        while (q < m_s.size() && m_s[q] >= '0' && m_s[q] <= '9') {
            ++q;
        }
        if (q < m_s.size() && m_s[q] == '.') {
            ++q;
            while (q < m_s.size() && m_s[q] >= '0' && m_s[q] <= '9') {
                ++q;
            }
        }
        if (q == p || (q == p + 1 && m_s[p] == '.')) {
            return false;
        }
        std::size_t plain = q;
        std::size_t withExp = q;
        if (q < m_s.size() && (m_s[q] == 'E' || m_s[q] == 'e')) {
            std::size_t r = q + 1;
            if (r < m_s.size() && (m_s[r] == '+' || m_s[r] == '-')) {
                ++r;
            }
            std::size_t digits = r;
            while (r < m_s.size() && m_s[r] >= '0' && m_s[r] <= '9') {
                ++r;
            }
            if (r > digits) {
                withExp = r;
            }
        }
        std::vector<std::size_t> ends;
        if (withExp != plain) {
            ends.push_back(withExp);
        }
        ends.push_back(plain);
        for (std::size_t end : ends) {
            auto value = ParseFortranNumber(m_s.substr(p, end - p));
            if (value && name(skipBlanks(end), *value, side)) {
                return true;
            }
        }
        return false;
    }

    bool name(std::size_t p, double coefficient, int side)
    {
        if (!budget() || p >= m_s.size()) {
            return false;
        }
        std::vector<int> candidates;
        m_species.matchesAt(m_s, p, m_ignoreCase, candidates);
        for (int k : candidates) {
            m_items.push_back({Item::Species, k, coefficient, 0});
            if (after(p + m_species.names()[static_cast<std::size_t>(k)].size(), side)) {
                return true;
            }
            m_items.pop_back();
        }
        if (coefficient == 1.0 && upper(m_s[p]) == 'M') {
            m_items.push_back({Item::ThirdM, -1, 1, 0});
            if (after(p + 1, side)) {
                return true;
            }
            m_items.pop_back();
        }
        if (startsWith(m_s, p, "HV", true)) {
            m_items.push_back({Item::Hv, -1, coefficient, 0});
            if (after(p + 2, side)) {
                return true;
            }
            m_items.pop_back();
        }
        for (std::string_view word : {std::string_view("PRODUCTS"), std::string_view("PROD")}) {
            if (side == 1 && coefficient == 1.0 && startsWith(m_s, p, word, true)) {
                m_items.push_back({Item::Products, -1, 1, 0});
                if (after(p + word.size(), side)) {
                    return true;
                }
                m_items.pop_back();
            }
        }
        return false;
    }

    // Behind a term: "+" and a term, a collider, the arrow, or, after blanks, a further term
    // (so that "plus+ eq=uals" reads as the two species the blank separates).
    bool after(std::size_t p, int side)
    {
        if (!budget()) {
            return false;
        }
        std::size_t q = skipBlanks(p);
        if (q == m_s.size()) {
            return side == 1;
        }
        if (m_s[q] == '(') {
            std::size_t plus = skipBlanks(q + 1);
            if (plus < m_s.size() && m_s[plus] == '+' && collider(skipBlanks(plus + 1), side)) {
                return true;
            }
        }
        if (m_s[q] == '+' && term(q + 1, side)) {
            return true;
        }
        if (side == 0 && arrow(q)) {
            return true;
        }
        return q > p && term(q, side);
    }

    // The name of "(+name)" starting at p, then ")".
    bool collider(std::size_t p, int side)
    {
        if (p >= m_s.size()) {
            return false;
        }
        if (upper(m_s[p]) == 'M') {
            std::size_t close = skipBlanks(p + 1);
            if (close < m_s.size() && m_s[close] == ')') {
                m_items.push_back({Item::ColliderM, -1, 1, 0});
                if (afterCollider(close + 1, side)) {
                    return true;
                }
                m_items.pop_back();
            }
        }
        std::vector<int> candidates;
        m_species.matchesAt(m_s, p, m_ignoreCase, candidates);
        for (int k : candidates) {
            std::size_t close =
                skipBlanks(p + m_species.names()[static_cast<std::size_t>(k)].size());
            if (close < m_s.size() && m_s[close] == ')') {
                m_items.push_back({Item::ColliderSpecies, k, 1, 0});
                if (afterCollider(close + 1, side)) {
                    return true;
                }
                m_items.pop_back();
            }
        }
        return false;
    }

    bool afterCollider(std::size_t p, int side)
    {
        p = skipBlanks(p);
        if (p == m_s.size()) {
            return side == 1;
        }
        return side == 0 && arrow(p);
    }

    bool arrow(std::size_t p)
    {
        static constexpr std::pair<std::string_view, int> arrows[] = {
            {"<=>", 1}, {"=>", 2}, {"=", 0}};
        for (const auto& [text, kind] : arrows) {
            if (startsWith(m_s, p, text, false)) {
                m_items.push_back({Item::Arrow, -1, 1, kind});
                if (term(p + text.size(), 1)) {
                    return true;
                }
                m_items.pop_back();
            }
        }
        return false;
    }

    std::string_view m_s;
    const SpeciesTable& m_species;
    bool m_ignoreCase;
    std::vector<Item> m_items;
    long m_steps = 0;
};

} // namespace

SpeciesTable::SpeciesTable(const std::vector<std::string>& names) : m_names(names)
{
    for (std::size_t k = 0; k < m_names.size(); ++k) {
        if (m_names[k].empty()) {
            continue;
        }
        m_byFirst[m_names[k][0]].push_back(static_cast<int>(k));
        m_byFirstUpper[upper(m_names[k][0])].push_back(static_cast<int>(k));
    }
    auto longestFirst = [this](int a, int b) {
        return m_names[static_cast<std::size_t>(a)].size() >
               m_names[static_cast<std::size_t>(b)].size();
    };
    for (auto& [c, list] : m_byFirst) {
        std::stable_sort(list.begin(), list.end(), longestFirst);
    }
    for (auto& [c, list] : m_byFirstUpper) {
        std::stable_sort(list.begin(), list.end(), longestFirst);
    }
}

void SpeciesTable::matchesAt(std::string_view text, std::size_t pos, bool ignoreCase,
                             std::vector<int>& out) const
{
    out.clear();
    if (pos >= text.size()) {
        return;
    }
    const auto& index = ignoreCase ? m_byFirstUpper : m_byFirst;
    auto it = index.find(ignoreCase ? upper(text[pos]) : text[pos]);
    if (it == index.end()) {
        return;
    }
    for (int k : it->second) {
        if (startsWith(text, pos, m_names[static_cast<std::size_t>(k)], ignoreCase)) {
            out.push_back(k);
        }
    }
}

ParsedEquation ParseEquation(std::string_view equation, const SpeciesTable& species)
{
    ParsedEquation result;
    std::string s = TrimBlanks(equation);
    if (s.find('=') == std::string::npos) {
        result.error = "The equation has no '='.";
        return result;
    }
    // Exact case first; names differing only in case are then still told apart.
    EquationReader exact(s, species, false);
    bool ok = exact.read();
    EquationReader loose(s, species, true);
    bool usedLoose = false;
    if (!ok && !exact.exhausted()) {
        ok = loose.read();
        usedLoose = ok;
    }
    if (!ok) {
        result.error = exact.exhausted() || loose.exhausted()
                           ? "The equation has too many possible readings."
                           : "The equation cannot be read as species of the SPECIES list.";
        return result;
    }
    const auto& items = usedLoose ? loose.items() : exact.items();

    int side = 0;
    int plusM[2] = {0, 0};
    int colliders[2] = {0, 0};
    int colliderSpecies[2] = {-1, -1};
    for (const Item& item : items) {
        switch (item.kind) {
        case Item::Arrow:
            side = 1;
            result.reversible = item.arrow != 2;
            break;
        case Item::Species:
            (side == 0 ? result.reactants : result.products)
                .emplace_back(item.species, item.coefficient);
            break;
        case Item::ThirdM:
            ++plusM[side];
            break;
        case Item::Hv:
            (side == 0 ? result.hvLeft : result.hvRight) = true;
            break;
        case Item::Products:
            result.productsWord = true;
            break;
        case Item::ColliderM:
        case Item::ColliderSpecies:
            ++colliders[side];
            colliderSpecies[side] = item.species;
            break;
        }
    }
    auto colliderName = [&](int k) {
        return k < 0 ? std::string("M") : species.names()[static_cast<std::size_t>(k)];
    };
    if (plusM[0] > 1 || plusM[1] > 1) {
        result.error = "The equation names the third body M more than once on one side.";
    } else if (plusM[0] != plusM[1]) {
        result.error = "The third body '+M' stands on one side of the equation only.";
    } else if (colliders[0] != colliders[1]) {
        result.error = "The fall-off collider '(+" +
                       colliderName(colliderSpecies[colliders[0] ? 0 : 1]) +
                       ")' stands on one side of the equation only.";
    } else if (colliders[0] && colliderSpecies[0] != colliderSpecies[1]) {
        result.error = "Third bodies do not match: '" + colliderName(colliderSpecies[0]) +
                       "' and '" + colliderName(colliderSpecies[1]) + "'.";
    } else if (plusM[0] && colliders[0]) {
        result.error = "The equation has both '+M' and a fall-off collider.";
    } else if (result.reactants.empty() ||
               (result.products.empty() && !result.hvRight && !result.productsWord)) {
        result.error = "The equation needs species on both sides.";
    }
    if (!result.error.empty()) {
        return result;
    }
    if (plusM[0]) {
        result.thirdBody = ThirdBody::PlusM;
    } else if (colliders[0]) {
        result.thirdBody = colliderSpecies[0] < 0 ? ThirdBody::FalloffM : ThirdBody::FalloffSpecies;
        result.collider = colliderSpecies[0];
    }
    return result;
}

} // namespace zarvion::solverfile::chemkin
