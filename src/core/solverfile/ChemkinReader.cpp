// CHEMKIN-II mechanism reader: sections, species, thermodynamic data, reactions with their
// auxiliary lines, and the checks that decide what a solver file can hold.

#include "solverfile/ChemkinDetail.h"
#include "solverfile/ChemkinReactions.h"

#include "shell/TextFile.h"

#include <algorithm>
#include <map>
#include <set>

namespace zarvion::solverfile {

bool ChemkinImport::succeeded() const
{
    return count(ImportSeverity::Error) == 0 && count(ImportSeverity::Refusal) == 0;
}

int ChemkinImport::count(ImportSeverity severity) const
{
    return static_cast<int>(
        std::count_if(messages.begin(), messages.end(),
                      [&](const ImportMessage& m) { return m.severity == severity; }));
}

std::string FormatImportMessage(const ImportMessage& message)
{
    static const char* const names[] = {"warning", "left out", "refused", "error"};
    std::string out = message.file;
    if (message.line > 0) {
        out += ":" + std::to_string(message.line);
    }
    out += ": ";
    out += names[static_cast<int>(message.severity)];
    out += ": " + message.text;
    return out;
}

namespace chemkin {

namespace {

enum class Section { None, Elements, Species, Thermo, Reactions, Transport };

// A section keyword is a whole word: its first four letters and at most the full keyword,
// so "reaction" and "THERM" open sections and "trans_butene" does not.
std::optional<Section> sectionOf(const std::string& word)
{
    static const std::pair<const char*, Section> keywords[] = {
        {"ELEMENTS", Section::Elements},   {"SPECIES", Section::Species},
        {"THERMO", Section::Thermo},       {"REACTIONS", Section::Reactions},
        {"TRANSPORT", Section::Transport},
    };
    std::string w = UpperAscii(word);
    for (const auto& [full, section] : keywords) {
        std::string_view f(full);
        if (w.size() >= 4 && w.size() <= f.size() && f.substr(0, w.size()) == w) {
            return section;
        }
    }
    return std::nullopt;
}

const char* sectionName(Section s)
{
    switch (s) {
    case Section::Elements:
        return "ELEMENTS";
    case Section::Species:
        return "SPECIES";
    case Section::Thermo:
        return "THERMO";
    case Section::Reactions:
        return "REACTIONS";
    case Section::Transport:
        return "TRANSPORT";
    default:
        return "";
    }
}

std::string stripComment(const std::string& text)
{
    std::size_t bang = text.find('!');
    return bang == std::string::npos ? text : text.substr(0, bang);
}

class MechanismReader {
public:
    MechanismReader(const ChemkinOptions& options, ChemkinImport& out)
        : m_options(options), m_out(out), m_reactions(options, out)
    {
    }

    void read(std::string_view mechanismText, std::optional<std::string_view> thermoText)
    {
        readMechanism(mechanismText);
        std::vector<ThermoEntry> fileEntries;
        if (thermoText) {
            fileEntries = ParseThermoBlock(SplitSourceLines(*thermoText), m_options.thermoName,
                                           m_out.messages);
        }
        if (m_species.empty()) {
            message(ImportSeverity::Error, m_options.mechanismName, 0,
                    "The mechanism declares no species.");
            return;
        }
        collectThermo(m_mechanismThermo, m_options.mechanismName);
        collectThermo(fileEntries, m_options.thermoName);
        m_reactions.finish(m_species, m_speciesLines, m_thermo, m_elementWeights, m_elements);
    }

private:
    void message(ImportSeverity severity, const std::string& file, int line, std::string text)
    {
        m_out.messages.push_back({severity, file, line, std::move(text)});
    }

    void readMechanism(std::string_view text)
    {
        const std::string& file = m_options.mechanismName;
        auto lines = SplitSourceLines(text);
        Section section = Section::None;
        std::vector<SourceLine> thermoLines;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const SourceLine& line = lines[i];
            std::string body = section == Section::Thermo ? line.text : stripComment(line.text);
            auto words = SplitWords(body);
            if (words.empty()) {
                if (section == Section::Thermo) {
                    thermoLines.push_back(line);
                }
                continue;
            }
            std::string first = UpperAscii(words[0]);
            if (section == Section::Thermo && first.rfind('!', 0) == 0) {
                continue;
            }
            auto next = sectionOf(words[0]);
            bool thermoKeyword = section == Section::Thermo && next == Section::Thermo;
            if (next && !thermoKeyword) {
                if (section != Section::None) {
                    message(ImportSeverity::Warning, file, line.number,
                            std::string(sectionName(section)) + " section implicitly ended by " +
                                sectionName(*next) + ".");
                    endSection(section, thermoLines);
                }
                section = *next;
                words.erase(words.begin());
                if (section == Section::Thermo) {
                    thermoLines.assign(1, line);
                    continue;
                }
                if (section == Section::Reactions) {
                    m_reactions.setUnits(words, line.number);
                    continue;
                }
            } else if (section == Section::None) {
                message(ImportSeverity::Error, file, line.number,
                        "Text outside of any section: '" + TrimBlanks(body) + "'.");
                continue;
            }
            if (words.empty()) {
                continue;
            }
            switch (section) {
            case Section::Elements:
                if (readElements(body, words, line.number)) {
                    section = Section::None;
                }
                break;
            case Section::Species:
                if (readSpecies(words, line.number)) {
                    section = Section::None;
                }
                break;
            case Section::Thermo:
                thermoLines.push_back(line);
                if (first == "END" || first == "ENDOFDATA") {
                    endSection(section, thermoLines);
                    section = Section::None;
                }
                break;
            case Section::Reactions:
                if (first == "END") {
                    m_reactions.endOfSection();
                    section = Section::None;
                } else {
                    m_reactions.readLine(TrimBlanks(body), line.number, m_species);
                }
                break;
            case Section::Transport:
                if (first == "END") {
                    section = Section::None;
                }
                break;
            case Section::None:
                break;
            }
        }
        if (section != Section::None) {
            if (section != Section::Transport) {
                message(ImportSeverity::Warning, file, lines.empty() ? 0 : lines.back().number,
                        std::string(sectionName(section)) + " section implicitly ended by the "
                                                            "end of the file.");
            }
            endSection(section, thermoLines);
        }
    }

    void endSection(Section section, std::vector<SourceLine>& thermoLines)
    {
        if (section == Section::Thermo) {
            auto entries = ParseThermoBlock(thermoLines, m_options.mechanismName, m_out.messages);
            m_mechanismThermo.insert(m_mechanismThermo.end(), entries.begin(), entries.end());
            thermoLines.clear();
        } else if (section == Section::Reactions) {
            m_reactions.endOfSection();
        }
    }

    // Element symbols, optionally with an atomic weight "D /2.014/". True at END.
    bool readElements(const std::string& body, const std::vector<std::string>& words, int line)
    {
        if (body.find('/') == std::string::npos) {
            for (const auto& w : words) {
                if (UpperAscii(w) == "END") {
                    return true;
                }
                m_elements.insert(UpperAscii(w));
            }
            return false;
        }
        std::vector<std::string> segments;
        std::size_t start = 0;
        for (std::size_t k = 0; k <= body.size(); ++k) {
            if (k == body.size() || body[k] == '/') {
                segments.push_back(body.substr(start, k - start));
                start = k + 1;
            }
        }
        bool ended = false;
        for (std::size_t k = 0; k < segments.size(); ++k) {
            if (k % 2 == 1) {
                auto weight = ParseFortranNumber(segments[k]);
                auto names = SplitWords(segments[k - 1]);
                if (!weight || names.empty()) {
                    message(ImportSeverity::Error, m_options.mechanismName, line,
                            "Unreadable atomic weight in ELEMENTS: '" + TrimBlanks(body) + "'.");
                } else {
                    m_elementWeights[UpperAscii(names.back())] = *weight;
                }
                continue;
            }
            for (const auto& w : SplitWords(segments[k])) {
                if (UpperAscii(w) == "END") {
                    ended = true;
                } else if (!ended) {
                    m_elements.insert(UpperAscii(w));
                }
            }
        }
        return ended;
    }

    // Species names; a repeated declaration is noted and ignored. True at END.
    bool readSpecies(const std::vector<std::string>& words, int line)
    {
        for (const auto& w : words) {
            if (UpperAscii(w) == "END") {
                return true;
            }
            if (std::find(m_species.begin(), m_species.end(), w) != m_species.end()) {
                message(ImportSeverity::Warning, m_options.mechanismName, line,
                        "Species '" + w + "' is declared more than once; the repeat is ignored.");
                continue;
            }
            m_species.push_back(w);
            m_speciesLines.push_back(line);
        }
        return false;
    }

    // The first entry of a name wins; a repeat for a declared species is noted.
    void collectThermo(std::vector<ThermoEntry>& entries, const std::string& file)
    {
        std::set<std::string> declared(m_species.begin(), m_species.end());
        for (auto& entry : entries) {
            auto it = m_thermo.find(entry.name);
            if (it == m_thermo.end()) {
                m_thermoFile[entry.name] = file;
                m_thermo.emplace(entry.name, std::move(entry));
            } else if (declared.count(entry.name)) {
                message(ImportSeverity::Warning, file, entry.line,
                        "Further thermo entry for species '" + entry.name + "'; the first one (" +
                            m_thermoFile[entry.name] + ":" + std::to_string(it->second.line) +
                            ") is used.");
            }
        }
    }

    const ChemkinOptions& m_options;
    ChemkinImport& m_out;
    ReactionBuilder m_reactions;
    std::set<std::string> m_elements;
    std::map<std::string, double> m_elementWeights;
    std::vector<std::string> m_species;
    std::vector<int> m_speciesLines;
    std::vector<ThermoEntry> m_mechanismThermo;
    std::map<std::string, ThermoEntry> m_thermo;
    std::map<std::string, std::string> m_thermoFile;
};

} // namespace
} // namespace chemkin

ChemkinImport ImportChemkin(std::string_view mechanismText,
                            std::optional<std::string_view> thermoText,
                            const ChemkinOptions& options)
{
    ChemkinImport result;
    chemkin::MechanismReader reader(options, result);
    reader.read(mechanismText, thermoText);
    return result;
}

ChemkinImport ImportChemkinFiles(const std::filesystem::path& mechanism,
                                 const std::optional<std::filesystem::path>& thermo,
                                 ChemkinOptions options)
{
    std::string mechanismText = shell::ReadFile(mechanism);
    std::optional<std::string> thermoText;
    if (thermo) {
        thermoText = shell::ReadFile(*thermo);
    }
    options.mechanismName = mechanism.filename().string();
    if (thermo) {
        options.thermoName = thermo->filename().string();
    }
    return ImportChemkin(mechanismText,
                         thermoText ? std::optional<std::string_view>(*thermoText) : std::nullopt,
                         options);
}

} // namespace zarvion::solverfile
