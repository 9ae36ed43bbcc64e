// Text helpers, tolerant number fields, atomic weights and thermodynamic entries of the
// CHEMKIN importer.

#include "solverfile/ChemkinDetail.h"

#include <charconv>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>

namespace zarvion::solverfile {

namespace {

// Standard atomic weights [g/mol], IUPAC conventional values (abridged to what gas-phase
// mechanisms use), with D and T for isotope-labelled species and E for the electron.
const std::map<std::string, double, std::less<>>& atomicWeights()
{
    static const std::map<std::string, double, std::less<>> table = {
        {"E", 5.48579909e-4}, {"H", 1.008},        {"D", 2.014},         {"T", 3.016},
        {"HE", 4.002602},     {"LI", 6.94},        {"BE", 9.0121831},    {"B", 10.81},
        {"C", 12.011},        {"N", 14.007},       {"O", 15.999},        {"F", 18.998403163},
        {"NE", 20.1797},      {"NA", 22.98976928}, {"MG", 24.305},       {"AL", 26.9815385},
        {"SI", 28.085},       {"P", 30.973761998}, {"S", 32.06},         {"CL", 35.45},
        {"AR", 39.95},        {"K", 39.0983},      {"CA", 40.078},       {"TI", 47.867},
        {"V", 50.9415},       {"CR", 51.9961},     {"MN", 54.938044},    {"FE", 55.845},
        {"CO", 58.933194},    {"NI", 58.6934},     {"CU", 63.546},       {"ZN", 65.38},
        {"GA", 69.723},       {"GE", 72.630},      {"AS", 74.921595},    {"SE", 78.971},
        {"BR", 79.904},       {"KR", 83.798},      {"RB", 85.4678},      {"SR", 87.62},
        {"ZR", 91.224},       {"MO", 95.95},       {"AG", 107.8682},     {"SN", 118.710},
        {"I", 126.90447},     {"XE", 131.293},     {"CS", 132.90545196}, {"BA", 137.327},
        {"W", 183.84},        {"PT", 195.084},     {"AU", 196.966569},   {"HG", 200.592},
        {"PB", 207.2},        {"U", 238.02891},
    };
    return table;
}

} // namespace

std::optional<double> AtomicWeight(std::string_view symbol)
{
    const auto& table = atomicWeights();
    auto it = table.find(chemkin::UpperAscii(chemkin::TrimBlanks(symbol)));
    if (it == table.end()) {
        return std::nullopt;
    }
    return it->second;
}

namespace chemkin {

std::vector<SourceLine> SplitSourceLines(std::string_view text)
{
    std::vector<SourceLine> lines;
    std::string current;
    int number = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '\n' || c == '\r') {
            lines.push_back({current, number++});
            current.clear();
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
            continue;
        }
        current.push_back(c == '\t' ? ' ' : c);
    }
    if (!current.empty()) {
        lines.push_back({current, number});
    }
    return lines;
}

std::string UpperAscii(std::string_view s)
{
    std::string out(s);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return out;
}

std::string TrimBlanks(std::string_view s)
{
    std::size_t b = 0;
    std::size_t e = s.size();
    while (b < e && IsBlank(s[b])) {
        ++b;
    }
    while (e > b && IsBlank(s[e - 1])) {
        --e;
    }
    return std::string(s.substr(b, e - b));
}

std::vector<std::string> SplitWords(std::string_view s)
{
    std::vector<std::string> words;
    std::size_t i = 0;
    while (i < s.size()) {
        while (i < s.size() && IsBlank(s[i])) {
            ++i;
        }
        std::size_t b = i;
        while (i < s.size() && !IsBlank(s[i])) {
            ++i;
        }
        if (i > b) {
            words.emplace_back(s.substr(b, i - b));
        }
    }
    return words;
}

std::optional<double> ParseFortranNumber(std::string_view field)
{
    std::string t;
    t.reserve(field.size());
    for (char c : field) {
        if (IsBlank(c)) {
            continue;
        }
        t.push_back(c == 'D' || c == 'd' ? 'E' : c);
    }
    if (t.empty() || t.size() > 64) {
        return std::nullopt;
    }
    // Only the characters of a decimal number: from_chars would also take "inf" and "nan".
    for (char c : t) {
        if (!((c >= '0' && c <= '9') || c == '.' || c == '+' || c == '-' || c == 'E' || c == 'e')) {
            return std::nullopt;
        }
    }
    // Fortran writes an exponent without "E" when it has three digits: "1.0-100".
    std::size_t signPos = t.find_first_of("+-", 1);
    if (signPos != std::string::npos && t[signPos - 1] != 'E' && t[signPos - 1] != 'e') {
        t.insert(signPos, 1, 'E');
    }
    const char* b = t.data();
    const char* e = t.data() + t.size();
    if (*b == '+') {
        ++b;
    }
    double value = 0;
    auto [ptr, ec] = std::from_chars(b, e, value);
    if (ec == std::errc::result_out_of_range) {
        // Underflow to a denormal or zero is harmless; overflow is not.
        double probe = std::strtod(std::string(b, e).c_str(), nullptr);
        if (std::isfinite(probe) && std::fabs(probe) < 1.0) {
            return probe;
        }
        return std::nullopt;
    }
    if (ec != std::errc() || ptr != e || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

namespace {

bool isCommentOrBlank(const std::string& text)
{
    std::string t = TrimBlanks(text);
    return t.empty() || t[0] == '!';
}

std::string columns(const std::string& line, std::size_t first, std::size_t count)
{
    if (first - 1 >= line.size()) {
        return {};
    }
    return line.substr(first - 1, count);
}

bool isAlpha(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool isNumberChar(char c)
{
    return (c >= '0' && c <= '9') || c == '.';
}

// Free-form composition beyond column 80 or on "&" lines: "C 388 H 144", "C      778.0".
bool parseFreeComposition(std::string_view text,
                          std::vector<std::pair<std::string, double>>& elements)
{
    std::size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && (IsBlank(text[i]) || text[i] == '&')) {
            ++i;
        }
        if (i >= text.size()) {
            break;
        }
        std::size_t b = i;
        while (i < text.size() && isAlpha(text[i])) {
            ++i;
        }
        if (i == b || i - b > 2) {
            return false;
        }
        std::string symbol(text.substr(b, i - b));
        while (i < text.size() && IsBlank(text[i])) {
            ++i;
        }
        std::size_t nb = i;
        while (i < text.size() && isNumberChar(text[i])) {
            ++i;
        }
        auto count = ParseFortranNumber(text.substr(nb, i - nb));
        if (!count) {
            return false;
        }
        elements.emplace_back(UpperAscii(symbol), *count);
    }
    return true;
}

void addFixedElement(const std::string& symbolField, const std::string& countField,
                     std::vector<std::pair<std::string, double>>& elements)
{
    std::string symbol = TrimBlanks(symbolField);
    if (symbol.empty() || !isAlpha(symbol[0])) {
        return;
    }
    auto count = ParseFortranNumber(countField);
    if (count && *count != 0.0) {
        elements.emplace_back(UpperAscii(symbol), *count);
    }
}

} // namespace

std::vector<ThermoEntry> ParseThermoBlock(const std::vector<SourceLine>& lines,
                                          const std::string& file,
                                          std::vector<ImportMessage>& messages)
{
    std::vector<ThermoEntry> entries;
    std::size_t i = 0;
    auto skipComments = [&] {
        while (i < lines.size() && isCommentOrBlank(lines[i].text)) {
            ++i;
        }
    };
    auto error = [&](int line, const std::string& text) {
        messages.push_back({ImportSeverity::Error, file, line, text});
    };

    skipComments();
    if (i < lines.size()) {
        auto words = SplitWords(lines[i].text);
        if (!words.empty() && UpperAscii(words[0]).rfind("THER", 0) == 0) {
            ++i;
        }
    }
    double globalCommon = 1000.0;
    skipComments();
    if (i < lines.size()) {
        auto words = SplitWords(lines[i].text);
        bool allNumbers = words.size() >= 2 && words.size() <= 4;
        std::vector<double> values;
        for (const auto& w : words) {
            auto v = ParseFortranNumber(w);
            allNumbers = allNumbers && v.has_value();
            values.push_back(v.value_or(0));
        }
        if (allNumbers) {
            if (values.size() >= 3) {
                globalCommon = values[1];
            }
            ++i;
        }
    }

    while (true) {
        skipComments();
        if (i >= lines.size()) {
            break;
        }
        const SourceLine& head = lines[i];
        auto words = SplitWords(head.text);
        std::string first = UpperAscii(words[0]);
        if (first == "END" || first == "ENDOFDATA") {
            break;
        }
        ThermoEntry entry;
        entry.name = words[0];
        entry.line = head.number;
        const std::string& h = head.text;
        for (int k = 0; k < 4; ++k) {
            addFixedElement(columns(h, 25 + 5 * k, 2), columns(h, 27 + 5 * k, 3), entry.elements);
        }

        // Temperatures: the standard fields, or any three numbers between phase and index.
        // A common temperature written in columns 68-75 runs past column 73; keep its digits.
        std::size_t width = 28;
        while (width < 30 && 45 + width < h.size() && !IsBlank(h[44 + width]) &&
               (std::isdigit(static_cast<unsigned char>(h[45 + width])) || h[45 + width] == '.')) {
            ++width;
        }
        std::vector<double> temps;
        for (const auto& w : SplitWords(columns(h, 46, width))) {
            if (auto v = ParseFortranNumber(w)) {
                temps.push_back(*v);
            }
        }
        if (temps.size() < 2) {
            error(head.number, "Thermo entry of '" + entry.name +
                                   "' has no temperature limits in columns 46-73.");
        }
        entry.lowT = temps.size() > 0 ? temps[0] : 0;
        entry.highT = temps.size() > 1 ? temps[1] : 0;
        entry.commonT = temps.size() > 2 ? temps[2] : globalCommon;
        if (width == 28) {
            addFixedElement(columns(h, 74, 2), columns(h, 76, 3), entry.elements);
        }

        // Extended composition: text beyond column 80, then "&" continuation lines.
        // Anything else there (a comment, a fit date) is not CHEMKIN's concern either.
        std::string rest = h.size() > 80 ? h.substr(80) : std::string();
        rest = rest.substr(0, rest.find('!'));
        bool continued = !TrimBlanks(rest).empty() && TrimBlanks(rest).back() == '&';
        std::vector<std::pair<std::string, double>> extended;
        if (!TrimBlanks(rest).empty() && parseFreeComposition(rest, extended)) {
            entry.elements.insert(entry.elements.end(), extended.begin(), extended.end());
        }
        ++i;
        while (continued && i < lines.size()) {
            std::string t = TrimBlanks(lines[i].text);
            continued = !t.empty() && t.back() == '&';
            if (!parseFreeComposition(t, entry.elements)) {
                error(lines[i].number, "Unreadable composition line for '" + entry.name + "'.");
            }
            ++i;
        }

        if (i + 3 > lines.size()) {
            error(head.number, "Thermo entry of '" + entry.name +
                                   "' is incomplete: it needs "
                                   "three lines of coefficients.");
            break;
        }
        bool ok = true;
        for (int row = 0; row < 3 && ok; ++row) {
            const SourceLine& c = lines[i + static_cast<std::size_t>(row)];
            int fields = row < 2 ? 5 : 4;
            for (int k = 0; k < fields; ++k) {
                std::string field = columns(c.text, 1 + 15 * static_cast<std::size_t>(k), 15);
                auto v = ParseFortranNumber(field);
                if (!v) {
                    error(c.number, "Thermo entry of '" + entry.name + "': coefficient " +
                                        std::to_string(row * 5 + k + 1) + " is not a number ('" +
                                        TrimBlanks(field) + "').");
                    ok = false;
                    break;
                }
                entry.coefficients[static_cast<std::size_t>(row * 5 + k)] = *v;
            }
        }
        i += 3;
        if (ok) {
            entries.push_back(std::move(entry));
        }
    }
    return entries;
}

} // namespace chemkin
} // namespace zarvion::solverfile
