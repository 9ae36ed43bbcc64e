#include "charts/ChartText.h"

#include "shell/AtomicFile.h"
#include "shell/TextFormat.h"

#include <cmath>

namespace zarvion::charts {

using shell::Format;
using shell::FormatText;

namespace {

const char* const CrLf = "\r\n";

std::string clipField(double v)
{
    if (!IsValue(v)) {
        return " Empty ";
    }
    return FormatText(Format(v, "0.00000000E+00"), "@@@@@@@@@@@@@@@@@");
}

std::string tableField(double v)
{
    if (!IsValue(v)) {
        return std::string(16, ' ');
    }
    return FormatText(Format(v, "0.000000E+00"), "@@@@@@@@@@@@@@@@");
}

double pointAt(const std::vector<double>& values, int p)
{
    return p >= 0 && p < static_cast<int>(values.size()) ? values[p] : NullValue;
}

bool isLineBreak(char c)
{
    return c == '\r' || c == '\n';
}

// Lines at CR LF, a lone CR or a lone LF.
std::vector<std::string> splitClipboardLines(std::string_view text)
{
    std::vector<std::string> lines;
    std::string current;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' || c == '\n') {
            lines.push_back(std::move(current));
            current.clear();
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
        } else {
            current += c;
        }
    }
    lines.push_back(std::move(current));
    return lines;
}

// The first two blank-separated tokens with one blank between; a single token alone.
std::string firstTwoTokens(const std::string& line)
{
    std::vector<std::string> tokens;
    std::string token;
    for (char c : line) {
        if (c == ' ' || c == '\t') {
            if (!token.empty()) {
                tokens.push_back(std::move(token));
                token.clear();
                if (tokens.size() == 2) {
                    break;
                }
            }
        } else {
            token += c;
        }
    }
    if (!token.empty() && tokens.size() < 2) {
        tokens.push_back(std::move(token));
    }
    if (tokens.size() >= 2) {
        return tokens[0] + " " + tokens[1];
    }
    return tokens.empty() ? std::string() : tokens[0];
}

// The quoted line of a block: X axis label, subset label and the overflow tail.
void readQuotedLine(std::string line, ClipboardSubset& out)
{
    if (!line.empty() && line.front() == '"') {
        line.erase(0, 1);
        if (!line.empty() && line.back() == '"') {
            line.pop_back();
        }
    }
    const auto q1 = line.find('"');
    if (q1 == std::string::npos) {
        return;
    }
    const auto q2 = line.find('"', q1 + 1);
    if (q2 == std::string::npos) {
        return;
    }
    out.xAxisLabel = line.substr(0, q1);
    const auto q3 = line.find('"', q2 + 1);
    out.label = line.substr(q2 + 1, q3 == std::string::npos ? std::string::npos : q3 - q2 - 1);
    if (q3 == std::string::npos) {
        return;
    }
    const auto q4 = line.find('"', q3 + 1);
    if (q4 == std::string::npos) {
        return;
    }
    const auto q5 = line.find('"', q4 + 1);
    const std::string tail =
        line.substr(q4 + 1, q5 == std::string::npos ? std::string::npos : q5 - q4 - 1);
    if (!tail.empty()) {
        auto [piece1, piece2] = SplitReactionTail(tail);
        out.piece1 = std::move(piece1);
        out.piece2 = std::move(piece2);
    }
}

} // namespace

std::string ToClipFile(const ChartProperties& chart, int subset, const std::string& caption,
                       const std::tm& now)
{
    std::string out = "!ZARVION  " + shell::FormatDate(now, "mmm d yyyy") + "  " +
                      shell::FormatDate(now, "hh:mm:ss") + CrLf;
    out += "!" + caption + CrLf;
    const Subset* s = subset >= 0 && subset < static_cast<int>(chart.subsets.size())
                          ? &chart.subsets[subset]
                          : nullptr;
    std::string tail;
    for (int slot : {subset + FirstOverflowSlot, subset + FirstOverflowSlot + 1}) {
        if (slot >= 0 && slot < AnnotationSlotCount &&
            chart.annotations[slot].text != EmptySlotText) {
            tail += chart.annotations[slot].text;
        }
    }
    out += "\"" + chart.xAxisLabel + "\",\"" + (s ? s->label : std::string()) + "\",\"" + tail +
           "\"" + CrLf;
    for (int p = 0; p < chart.points; ++p) {
        const double x = s ? pointAt(s->x, p) : NullValue;
        const double y = s ? pointAt(s->y, p) : NullValue;
        out += clipField(x) + clipField(y) + CrLf;
    }
    return out;
}

ClipboardReadResult ReadSubsetText(std::string_view text)
{
    ClipboardReadResult result;
    if (shell::Trim(text).empty()) {
        result.message.text = NoClipboardDataMessage;
        return result;
    }
    for (int i = 0; i < 2 && !text.empty() && isLineBreak(text.front()); ++i) {
        text.remove_prefix(1);
    }
    for (int i = 0; i < 2 && !text.empty() && isLineBreak(text.back()); ++i) {
        text.remove_suffix(1);
    }
    const auto lines = splitClipboardLines(text);

    std::vector<std::string> reduced;
    for (const auto& line : lines) {
        std::string flat = line;
        for (char& c : flat) {
            if (c == '\t') {
                c = ' ';
            }
        }
        const std::string trimmed = shell::Trim(flat);
        if (trimmed.empty() || trimmed.front() == '!') {
            continue;
        }
        reduced.push_back(firstTwoTokens(flat));
    }
    if (lines.size() > 2 && !lines[2].empty()) {
        readQuotedLine(lines[2], result.subset);
    }
    for (const auto& line : reduced) {
        const auto blank = line.find(' ');
        if (blank == std::string::npos) {
            continue;
        }
        const auto x = shell::ToDouble(line.substr(0, blank));
        const auto y = shell::ToDouble(line.substr(blank + 1));
        if (x && y && std::isfinite(*x) && std::isfinite(*y)) {
            result.subset.x.push_back(*x);
            result.subset.y.push_back(*y);
        }
    }
    if (result.subset.x.empty()) {
        result.message.text = NoClipboardDataMessage;
    }
    return result;
}

DataTableResult WriteChartDataTable(const ChartProperties& chart)
{
    DataTableResult result;
    const int count = static_cast<int>(chart.subsets.size());
    if (count > MaxSubsets) {
        result.message.text = "You can view the numeric data for no more than 10 profiles; "
                              "you are attempting to view " +
                              std::to_string(count) + ".";
        return result;
    }
    std::string& out = result.text;
    const std::string xLabel = shell::Trim(chart.xAxisLabel) + " ";
    for (int k = 0; k < count; ++k) {
        const std::string& label = chart.subsets[k].label;
        std::string shown;
        if (IsReactionLabel(label)) {
            const std::string t = shell::Trim(label);
            const auto comma = t.find(',');
            shown = FormatText(t.substr(0, comma), "@@@@@") + "  " + t.substr(comma) +
                    OverflowTail(chart, k);
        } else {
            shown = std::string(5, ' ') + "  " + label;
        }
        out += FormatText(std::to_string(k + 1), "@@@@") + xLabel + ";  " + shown + CrLf;
    }
    out += CrLf;
    std::string heading;
    for (int k = 0; k < count; ++k) {
        heading += std::string(14, ' ') + "X" + std::to_string(k + 1) + std::string(14, ' ') +
                   "Y" + std::to_string(k + 1);
    }
    out += shell::Mid(heading, 6) + CrLf;
    for (int p = 0; p < chart.points; ++p) {
        std::string line;
        for (const auto& s : chart.subsets) {
            line += tableField(pointAt(s.x, p)) + tableField(pointAt(s.y, p));
        }
        out += line + CrLf;
    }
    return result;
}

shell::Message WriteChartDataTableFile(const ChartProperties& chart,
                                       const std::filesystem::path& assistFolder, int mode)
{
    const DataTableResult table = WriteChartDataTable(chart);
    if (!table.message.empty()) {
        return table.message;
    }
    shell::WriteFileAtomically(assistFolder / (mode == 0 ? "CLIP.TMP" : "TmpPlot.txt"), table.text);
    return {};
}

std::string ReactionToolTip(const ChartProperties& chart, int subset)
{
    if (subset < 0 || subset >= static_cast<int>(chart.subsets.size()) ||
        !IsReactionLabel(chart.subsets[subset].label)) {
        return {};
    }
    return chart.subsets[subset].label + OverflowTail(chart, subset);
}

} // namespace zarvion::charts
