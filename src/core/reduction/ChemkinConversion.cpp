#include "reduction/ChemkinConversion.h"

#include <algorithm>
#include <array>
#include <map>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

namespace zarvion::reduction {

using shell::LCase;
using shell::Left;
using shell::LTrim;
using shell::Mid;
using shell::Trim;

namespace {

constexpr const char* NotPerformed = "The text conversion cannot be performed.";
constexpr std::size_t ReactionTextWidth = 45;

shell::Message Refusal(std::string text)
{
    return shell::Message{std::move(text), shell::StyleWarning, shell::DefaultTitle};
}

std::string PadRight(std::string s, std::size_t width)
{
    if (s.size() < width) {
        s.append(width - s.size(), ' ');
    }
    return s;
}

//! A 4-column integer field of the integer line; blank counts as 0.
int IntField(const std::string& text, int lineNumber)
{
    const std::string t = Trim(text);
    if (t.empty()) {
        return 0;
    }
    const auto v = shell::ToDouble(t);
    if (!v) {
        throw Error("reaction line " + std::to_string(lineNumber) + ": integer field '" + t +
                    "' is not a number");
    }
    return shell::ToInt32(*v);
}

//! The count ahead of the first "!" of a header line.
std::string HeaderCount(const std::string& line)
{
    const auto bang = line.find('!');
    return Trim(bang == std::string::npos ? line : line.substr(0, bang));
}

//! Replaces the first "M" or "m" of text by name.
std::string ReplaceFirstM(const std::string& text, const std::string& name)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == 'M' || text[i] == 'm') {
            return text.substr(0, i) + name + text.substr(i + 1);
        }
    }
    return text;
}

} // namespace

std::string ChemkinConversion::text() const
{
    return shell::JoinCrLf(lines);
}

std::string SeparateRateFields(const std::string& rateLine, int count)
{
    // The numbers fill 15-column fields from column 7 and may touch; one blank between them.
    std::string s;
    for (int k = 0; k < count; ++k) {
        const std::string field = Trim(Mid(rateLine, 7 + 15 * k, 15));
        if (field.empty()) {
            continue;
        }
        if (!s.empty()) {
            s += ' ';
        }
        s += field;
    }
    return s;
}

ChemkinConversion ConvertReactions(const std::filesystem::path& path)
{
    return ConvertReactions(path, shell::Now());
}

ChemkinConversion ConvertReactions(const std::filesystem::path& path, const std::tm& stamp)
{
    ChemkinConversion result;
    const std::vector<std::string> file = shell::ReadLines(path);
    const std::string name = path.string();
    if (file.size() < 11) {
        throw Error("'" + name + "' ends before its header lines 10 and 11");
    }
    const std::string speciesCount = HeaderCount(file[9]);
    const std::string reactionCount = HeaderCount(file[10]);

    std::size_t at = 11; // 0-based index of the next line to read
    auto lowerTrimmed = [&](std::size_t i) { return LCase(Trim(file[i])); };

    while (at < file.size() && lowerTrimmed(at) != "thermo") {
        ++at;
    }
    if (at >= file.size()) {
        result.message = Refusal("In the file '" + name + "', thermodynamic data are not found.");
        return result;
    }
    ++at;
    std::vector<std::string> thermo;
    while (at < file.size() && lowerTrimmed(at) != "reactions" && lowerTrimmed(at) != "end") {
        thermo.push_back(file[at++]);
    }
    if (at >= file.size() || lowerTrimmed(at) != "end") {
        result.message = Refusal("In the file '" + name +
                                 "', thermodynamic data do not contain the trailing keyword 'End'. " +
                                 NotPerformed);
        return result;
    }
    ++at;
    std::vector<std::string> species;
    for (std::size_t i = 0; i < thermo.size(); i += 4) {
        species.push_back(Trim(Mid(thermo[i], 7, 17)));
    }
    while (at < file.size() && lowerTrimmed(at) != "reactions") {
        ++at;
    }
    if (at >= file.size()) {
        result.message = Refusal("In the file '" + name + "', reactions are not found.");
        return result;
    }
    ++at;
    std::vector<std::string> block;
    while (at < file.size() && lowerTrimmed(at) != "end") {
        block.push_back(file[at++]);
    }
    if (at >= file.size()) {
        result.message = Refusal("In the file '" + name +
                                 "', reaction list does not contain the trailing keyword 'End'. " +
                                 NotPerformed);
        return result;
    }

    auto line = [&](std::size_t p) -> const std::string& {
        if (p >= block.size()) {
            throw Error("'" + name + "': reaction record " +
                        std::to_string(result.convertedCount + 1) + " ends early");
        }
        return block[p];
    };
    auto speciesName = [&](int index) -> std::string {
        if (index <= 0) {
            return "";
        }
        if (index > static_cast<int>(species.size())) {
            throw Error("'" + name + "': species index " + std::to_string(index) +
                        " out of range in reaction " + std::to_string(result.convertedCount + 1));
        }
        return species[index - 1];
    };

    std::vector<std::string> out;
    // Per reaction: the participants as a key and the last output line of its record, so that
    // reactions that CHEMKIN readers would take for duplicates can be marked as such.
    std::vector<std::pair<std::string, std::string>> keys;
    std::vector<std::size_t> recordEnds;
    std::size_t p = 0; // 0-based index of the next record's title line
    while (p < block.size()) {
        const std::string& title = block[p];
        if (title.find('=') == std::string::npos) {
            result.message = Refusal("Reaction '" + std::to_string(result.convertedCount) +
                                     "', error in the text format.");
            return ChemkinConversion{{}, result.message, result.convertedCount};
        }
        const std::string ints = LTrim(line(p + 1));
        std::array<int, 17> f{};
        for (int k = 1; k <= 16; ++k) {
            f[k] = IntField(Mid(ints, 4 * (k - 1) + 1, 4), static_cast<int>(p + 2));
        }
        const int reversible = f[16];
        bool hvLeft = false;
        bool hvRight = false;
        bool productWord = false;
        if (reversible < 0) {
            const std::string t = " " + LCase(Trim(title)) + " ";
            const auto eq = t.find('=');
            const std::string leftPart = t.substr(0, eq);
            const std::string rightPart = t.substr(eq + 1);
            hvLeft = leftPart.find(" hv ") != std::string::npos;
            hvRight = rightPart.find(" hv ") != std::string::npos;
            productWord = rightPart.find(" prod ") != std::string::npos ||
                          rightPart.find(" products ") != std::string::npos;
        }
        const bool thirdBody = f[12] > 0;
        const bool falloff = f[14] == 1;
        const int falloffKind = f[15];
        const bool explicitPartner = f[13] == 1 && f[12] == 0 && f[14] == 1;

        std::string left = speciesName(f[1]);
        for (int k = 2; k <= 3; ++k) {
            if (f[k] > 0) {
                left += " + " + speciesName(f[k]);
            }
        }
        std::string right = speciesName(f[4]);
        for (int k = 5; k <= 9; ++k) {
            if (f[k] > 0) {
                right += " + " + speciesName(f[k]);
            }
        }
        if (productWord) {
            right += " + Products";
        }
        if (hvLeft) {
            left += " + hv";
        }
        if (hvRight) {
            right += " + hv";
        }
        if (thirdBody && !falloff) {
            left += " + M";
            right += " + M";
        }
        if (falloff) {
            left += " (+M)";
            right += " (+M)";
        }
        if (!LTrim(right).empty() && LTrim(right)[0] == '+') {
            right = Trim(Mid(LTrim(right), 3));
        }
        const std::string arrow = reversible == 1 ? " <=> " : (reversible < 1 ? " => " : " <=> ");
        const std::string reactionText = left + arrow + right;
        const std::string rate = SeparateRateFields(line(p + 2));
        out.push_back(PadRight(reactionText, ReactionTextWidth) + rate);
        const std::size_t reactionLine = out.size() - 1;
        std::size_t cursor = p + 2;
        int partnerIndex = 0;

        if (falloff) {
            // keyword, then the low-pressure A, n, E between slashes
            const std::string& l = line(++cursor);
            out.push_back("   " + Left(Trim(l), 3) + "  /" + SeparateRateFields(l) + "/");
        }
        if (falloffKind > 0) {
            // keyword up to its blank, then the parameters the form uses: four for the Troe
            // form 1, three for form 3, five for SRI
            const std::string& l = line(++cursor);
            const std::string t = LTrim(l);
            const auto blank = t.find(' ');
            const std::string word = blank == std::string::npos ? t + " " : t.substr(0, blank + 1);
            const int used = falloffKind == 1 ? 4 : (falloffKind == 3 ? 3 : 5);
            out.push_back("   " + word + " /" + SeparateRateFields(l, used) + "/");
        }
        if (f[13] > 0) {
            ++cursor; // partner names are taken from the species list
            // Partner fields stand at fixed columns from 7 on, whichever way they are aligned.
            const std::string indices = line(++cursor);
            const std::string efficiencies = line(++cursor);
            const int count = std::min(f[13], 10);
            if (explicitPartner) {
                partnerIndex = IntField(Mid(indices, 7, 8), static_cast<int>(cursor));
                const std::string partner = speciesName(partnerIndex);
                std::string t = ReplaceFirstM(reactionText, partner);
                t = ReplaceFirstM(t, partner);
                out[reactionLine] = PadRight(t, ReactionTextWidth) + "   " + rate;
            } else {
                std::string s = "   ";
                for (int k = 1; k <= count; ++k) {
                    const int index =
                        IntField(Mid(indices, 7 + 8 * (k - 1), 8), static_cast<int>(cursor));
                    s += speciesName(index) + "/" + Trim(Mid(efficiencies, 7 + 8 * (k - 1), 8)) +
                         "/ ";
                }
                out.push_back(s);
            }
        }
        {
            std::vector<int> lhs(f.begin() + 1, f.begin() + 4);
            std::vector<int> rhs(f.begin() + 4, f.begin() + 10);
            std::sort(lhs.begin(), lhs.end());
            std::sort(rhs.begin(), rhs.end());
            std::string kindTag = "|" + std::to_string(thirdBody) + std::to_string(falloff) + "|" +
                                  std::to_string(partnerIndex) + "|";
            auto join = [](const std::vector<int>& v) {
                std::string k;
                for (int x : v) {
                    if (x > 0) {
                        k += std::to_string(x) + ",";
                    }
                }
                return k;
            };
            const std::string forward = join(lhs) + ">" + join(rhs) + kindTag +
                                        std::to_string(hvLeft) + std::to_string(hvRight) +
                                        std::to_string(productWord);
            const std::string backward =
                reversible == 1 ? join(rhs) + ">" + join(lhs) + kindTag + std::to_string(hvRight) +
                                      std::to_string(hvLeft) + std::to_string(productWord)
                                : std::string();
            keys.emplace_back(forward, backward);
            recordEnds.push_back(out.size());
        }
        p = cursor + 1;
        ++result.convertedCount;
    }

    // Mark reactions with the same participants (a reversible one also matching the reverse
    // of another) as DUPLICATE, which CHEMKIN readers require of such pairs.
    std::map<std::string, std::vector<std::size_t>> byKey;
    for (std::size_t r = 0; r < keys.size(); ++r) {
        byKey[keys[r].first].push_back(r);
    }
    std::vector<bool> duplicate(keys.size(), false);
    for (std::size_t r = 0; r < keys.size(); ++r) {
        const auto& same = byKey[keys[r].first];
        if (same.size() > 1) {
            duplicate[r] = true;
        }
        if (!keys[r].second.empty()) {
            const auto it = byKey.find(keys[r].second);
            if (it != byKey.end()) {
                for (std::size_t o : it->second) {
                    if (o != r) {
                        duplicate[r] = true;
                        duplicate[o] = true;
                    }
                }
            }
        }
    }
    for (std::size_t r = keys.size(); r-- > 0;) {
        if (duplicate[r]) {
            out.insert(out.begin() + static_cast<std::ptrdiff_t>(recordEnds[r]), "   DUPLICATE");
        }
    }

    std::tm when = stamp;
    result.lines.push_back("! Zarvion,   " + shell::FormatDate(when, "mmm d yyyy") + ", " +
                           shell::FormatDate(when, "hh:mm:ss"));
    result.lines.push_back("! Solver File:  " + name);
    result.lines.push_back("! Species  " + speciesCount);
    result.lines.push_back("! Reactions  " + reactionCount);
    result.lines.push_back("! A-units (mol-cm-sec),  E-units (cal/mol)");
    result.lines.push_back("");
    for (const auto& l : out) {
        result.lines.push_back(" " + l);
    }
    return result;
}

} // namespace zarvion::reduction
