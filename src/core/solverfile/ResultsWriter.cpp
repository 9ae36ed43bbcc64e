#include "solverfile/ResultsWriter.h"

#include <charconv>
#include <cmath>

#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"

namespace zarvion::solverfile {

namespace {

const std::string Stars(ResultFieldWidth, '*');

std::string rightAligned(std::string_view text, std::size_t width)
{
    std::string s(width > text.size() ? width - text.size() : 0, ' ');
    s += text;
    return s;
}

template <class Field>
std::vector<std::string> layout(std::string first, std::size_t count, Field field,
                                const std::string& stepField)
{
    std::vector<std::string> lines;
    const std::size_t onFirst = std::min<std::size_t>(count, SpeciesPerResultLine);
    for (std::size_t i = 0; i < onFirst; ++i) {
        first += ' ';
        first += field(i);
    }
    first += ' ';
    first += stepField;
    lines.push_back(std::move(first));
    for (std::size_t start = SpeciesPerResultLine; start < count; start += SpeciesPerResultLine) {
        std::string line(40, ' ');
        const std::size_t end = std::min<std::size_t>(count, start + SpeciesPerResultLine);
        for (std::size_t i = start; i < end; ++i) {
            line += ' ';
            line += field(i);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace

std::string FormatResultField(double value)
{
    if (!std::isfinite(value)) return Stars;
    if (std::abs(value) < 1e-99) value = 0;  // also turns -0 into 0
    char buf[40];
    const auto res = std::to_chars(buf, buf + sizeof buf, std::abs(value),
                                   std::chars_format::scientific, 9);
    std::string digits(buf, res.ptr);  // d.dddddddddE+xx (to_chars writes a lower-case e)
    const auto e = digits.find('e');
    if (e == std::string::npos) return Stars;
    if (digits.size() - e != 4) {
        // Exponent of three digits: 1E+100 and up, or a value below 1E-99 that rounding kept.
        if (digits.size() - e == 5 && digits[e + 1] == '-') return " 0.000000000E+00";
        return Stars;
    }
    digits[e] = 'E';
    return (value < 0 ? "-" : " ") + digits;
}

std::vector<std::string> FormatHeadRecord(std::span<const std::string> speciesNames)
{
    for (const auto& n : speciesNames)
        if (n.size() > ResultFieldWidth)
            throw Error("Species name longer than 16 characters: " + n);
    std::string first(7, ' ');
    first += rightAligned("Time(s)", ResultFieldWidth);
    first += ' ';
    first += rightAligned("T(K)", ResultFieldWidth);
    return layout(
        std::move(first), speciesNames.size(),
        [&](std::size_t i) { return rightAligned(speciesNames[i], ResultFieldWidth); },
        rightAligned("Step(s)", ResultFieldWidth));
}

std::vector<std::string> FormatDataRecord(std::int64_t counter, double time, double temperature,
                                          std::span<const double> massFractions, double step)
{
    std::string first = rightAligned(std::to_string(counter), 7);
    first += FormatResultField(time);
    first += ' ';
    first += FormatResultField(temperature);
    return layout(
        std::move(first), massFractions.size(),
        [&](std::size_t i) { return FormatResultField(massFractions[i]); }, FormatResultField(step));
}

std::string InputSideText(std::string_view text, int endLine)
{
    std::size_t pos = 0;
    for (int line = 1; line <= endLine; ++line) {
        const auto nl = text.find('\n', pos);
        if (nl == std::string_view::npos) {
            if (line < endLine || pos >= text.size())
                throw Error("The file ends before line " + std::to_string(endLine));
            std::string s(text);
            if (!s.empty() && s.back() == '\r') s.pop_back();
            return s + "\r\n";
        }
        pos = nl + 1;
    }
    return std::string(text.substr(0, pos));
}

ResultsWriter::ResultsWriter(const std::filesystem::path& file, int reactionsEndLine,
                             std::vector<std::string> speciesNames)
    : m_file(file), m_names(std::move(speciesNames))
{
    auto head = FormatHeadRecord(m_names);  // refuse bad names before touching the file
    const std::string text = shell::ReadFile(file);
    const std::string input = InputSideText(text, reactionsEndLine);
    if (input.size() != text.size()) shell::WriteFileAtomically(file, input);
    m_out.open(file, std::ios::binary | std::ios::app);
    if (!m_out) throw Error("Cannot open " + file.string() + " for appending the results");
    head.insert(head.begin(), {"", "!$Results   $$"});
    put(head);
}

void ResultsWriter::put(const std::vector<std::string>& lines)
{
    std::string block;
    for (const auto& l : lines) {
        block += l;
        block += "\r\n";
    }
    m_out.write(block.data(), static_cast<std::streamsize>(block.size()));
    m_out.flush();
    if (!m_out) throw Error("Cannot write the results to " + m_file.string());
}

void ResultsWriter::writeRow(double time, double temperature, std::span<const double> massFractions,
                             double step)
{
    if (massFractions.size() != m_names.size())
        throw Error("Result row with " + std::to_string(massFractions.size()) + " species, head has " +
                    std::to_string(m_names.size()));
    put(FormatDataRecord(++m_rows, time, temperature, massFractions, step));
}

void ResultsWriter::finish(const std::vector<std::string>& statistics)
{
    std::vector<std::string> lines{"!$END", "Statistics"};
    lines.insert(lines.end(), statistics.begin(), statistics.end());
    put(lines);
    m_out.close();
}

void ResultsWriter::fail(const std::string& reason, const std::vector<std::string>& explanation)
{
    std::vector<std::string> lines{"ERROR " + reason};
    lines.insert(lines.end(), explanation.begin(), explanation.end());
    put(lines);
    m_out.close();
}

} // namespace zarvion::solverfile
