#include "charts/ChartFile.h"

#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace zarvion::charts {

using nlohmann::json;

namespace {

constexpr int MaxBlankPoints = 1000000;

// Any fault of the file's structure; caught at the top and turned into the failed flag.
struct BadChartFile {};

json number(double v)
{
    return std::isfinite(v) ? json(v) : json(nullptr);
}

json axisToJson(const AxisSettings& a)
{
    return json{{"manualScale", a.manualScale}, {"manualMin", number(a.manualMin)},
                {"manualMax", number(a.manualMax)}, {"majorTick", number(a.majorTick)},
                {"minorTick", number(a.minorTick)}, {"log", a.logScale},
                {"numberPattern", a.numberPattern}, {"nullData", number(a.nullData)}};
}

const json& field(const json& object, const char* name)
{
    if (!object.is_object()) {
        throw BadChartFile{};
    }
    const auto it = object.find(name);
    if (it == object.end()) {
        throw BadChartFile{};
    }
    return *it;
}

long long integer(const json& j, long long lo, long long hi)
{
    long long v = 0;
    if (j.is_number_unsigned()) {
        const auto u = j.get<unsigned long long>();
        if (u > static_cast<unsigned long long>(std::numeric_limits<long long>::max())) {
            throw BadChartFile{};
        }
        v = static_cast<long long>(u);
    } else if (j.is_number_integer()) {
        v = j.get<long long>();
    } else {
        throw BadChartFile{};
    }
    if (v < lo || v > hi) {
        throw BadChartFile{};
    }
    return v;
}

int int32(const json& j)
{
    return static_cast<int>(
        integer(j, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

Color color(const json& j)
{
    return static_cast<Color>(integer(j, 0, 0xFFFFFF));
}

double real(const json& j)
{
    if (!j.is_number()) {
        throw BadChartFile{};
    }
    const double v = j.get<double>();
    if (!std::isfinite(v)) {
        throw BadChartFile{};
    }
    return v;
}

// A point value: null or a non-finite number stands for a point without a value.
double pointValue(const json& j)
{
    if (j.is_null()) {
        return NullValue;
    }
    if (!j.is_number()) {
        throw BadChartFile{};
    }
    const double v = j.get<double>();
    return std::isfinite(v) ? v : NullValue;
}

std::string text(const json& j)
{
    if (!j.is_string()) {
        throw BadChartFile{};
    }
    return j.get<std::string>();
}

bool flag(const json& j)
{
    if (!j.is_boolean()) {
        throw BadChartFile{};
    }
    return j.get<bool>();
}

const json& array(const json& j)
{
    if (!j.is_array()) {
        throw BadChartFile{};
    }
    return j;
}

AxisSettings axisFromJson(const json& j)
{
    AxisSettings a;
    a.manualScale = int32(field(j, "manualScale"));
    a.manualMin = real(field(j, "manualMin"));
    a.manualMax = real(field(j, "manualMax"));
    a.majorTick = real(field(j, "majorTick"));
    a.minorTick = real(field(j, "minorTick"));
    a.logScale = flag(field(j, "log"));
    a.numberPattern = text(field(j, "numberPattern"));
    a.nullData = real(field(j, "nullData"));
    return a;
}

ChartProperties fromJson(const json& root)
{
    if (text(field(root, "format")) != ChartFileFormat) {
        throw BadChartFile{};
    }
    const int version = int32(field(root, "version"));
    if (version < 1 || version > ChartFileVersion) {
        throw BadChartFile{};
    }
    ChartProperties c;
    c.points = int32(field(root, "points"));
    const auto& subsetArray = array(field(root, "subsets"));
    // Every point of a subset is stored, so only a chart without subsets could claim points
    // it doesn't hold; keep that claim within what a later paste can pad to.
    if (c.points < 0 || (subsetArray.empty() && c.points > MaxBlankPoints)) {
        throw BadChartFile{};
    }
    for (const auto& js : subsetArray) {
        Subset s;
        s.label = text(field(js, "label"));
        s.color = color(field(js, "color"));
        s.pointType = int32(field(js, "pointType"));
        s.lineType = int32(field(js, "lineType"));
        s.show = flag(field(js, "show"));
        s.legend = flag(field(js, "legend"));
        const auto& xs = array(field(js, "x"));
        const auto& ys = array(field(js, "y"));
        if (xs.size() != static_cast<std::size_t>(c.points) ||
            ys.size() != static_cast<std::size_t>(c.points)) {
            throw BadChartFile{};
        }
        s.x.reserve(xs.size());
        s.y.reserve(ys.size());
        for (const auto& v : xs) {
            s.x.push_back(pointValue(v));
        }
        for (const auto& v : ys) {
            s.y.push_back(pointValue(v));
        }
        c.subsets.push_back(std::move(s));
    }
    const auto& titles = field(root, "titles");
    c.mainTitle = text(field(titles, "main"));
    c.subTitle = text(field(titles, "sub"));
    c.xAxisLabel = text(field(titles, "x"));
    c.yAxisLabel = text(field(titles, "y"));
    for (const auto& ja : array(field(root, "annotations"))) {
        const auto slot = integer(field(ja, "slot"), 0, AnnotationSlotCount - 1);
        Annotation& a = c.annotations[static_cast<std::size_t>(slot)];
        const auto& t = field(ja, "text");
        a.text = t.is_null() ? std::string() : text(t);
        a.x = pointValue(field(ja, "x"));
        a.y = pointValue(field(ja, "y"));
        a.type = int32(field(ja, "type"));
        a.color = color(field(ja, "color"));
    }
    const auto& axes = field(root, "axes");
    c.xAxis = axisFromJson(field(axes, "x"));
    c.yAxis = axisFromJson(field(axes, "y"));
    c.textSize = static_cast<int>(integer(field(root, "textSize"), 0, 2));
    c.pointSize = static_cast<int>(integer(field(root, "pointSize"), 0, 2));
    const auto& fonts = array(field(root, "fonts"));
    if (fonts.size() != c.fonts.size()) {
        throw BadChartFile{};
    }
    for (std::size_t i = 0; i < c.fonts.size(); ++i) {
        c.fonts[i].face = text(field(fonts[i], "face"));
        c.fonts[i].bold = flag(field(fonts[i], "bold"));
        c.fonts[i].italic = flag(field(fonts[i], "italic"));
        c.fonts[i].underline = flag(field(fonts[i], "underline"));
    }
    const auto& colors = field(root, "colors");
    c.colors.deskForeground = color(field(colors, "deskForeground"));
    c.colors.deskBackground = color(field(colors, "deskBackground"));
    c.colors.graphForeground = color(field(colors, "graphForeground"));
    c.colors.graphBackground = color(field(colors, "graphBackground"));
    c.colors.shadow = color(field(colors, "shadow"));
    c.plottingMethod = int32(field(root, "plottingMethod"));
    for (const auto& row : array(field(root, "pointLabels"))) {
        std::vector<std::string> r;
        for (const auto& cell : array(row)) {
            r.push_back(text(cell));
        }
        c.pointLabels.push_back(std::move(r));
    }
    c.markDataPoints = flag(field(root, "markDataPoints"));
    c.gridLines = flag(field(root, "gridLines"));
    return c;
}

} // namespace

std::string ChartToJson(const ChartProperties& c)
{
    json root;
    root["format"] = ChartFileFormat;
    root["version"] = ChartFileVersion;
    root["points"] = c.points;
    json subsets = json::array();
    for (const auto& s : c.subsets) {
        json xs = json::array();
        json ys = json::array();
        for (std::size_t p = 0; p < static_cast<std::size_t>(c.points); ++p) {
            xs.push_back(number(p < s.x.size() ? s.x[p] : NullValue));
            ys.push_back(number(p < s.y.size() ? s.y[p] : NullValue));
        }
        subsets.push_back(json{{"label", s.label}, {"color", s.color},
                               {"pointType", s.pointType}, {"lineType", s.lineType},
                               {"show", s.show}, {"legend", s.legend},
                               {"x", std::move(xs)}, {"y", std::move(ys)}});
    }
    root["subsets"] = std::move(subsets);
    root["titles"] = json{{"main", c.mainTitle}, {"sub", c.subTitle}, {"x", c.xAxisLabel},
                          {"y", c.yAxisLabel}};
    json annotations = json::array();
    const Annotation freeSlot;
    for (std::size_t slot = 0; slot < c.annotations.size(); ++slot) {
        const auto& a = c.annotations[slot];
        if (a == freeSlot) {
            continue; // every slot not listed is a free one
        }
        annotations.push_back(json{{"slot", slot}, {"text", a.text}, {"x", number(a.x)},
                                   {"y", number(a.y)}, {"type", a.type}, {"color", a.color}});
    }
    root["annotations"] = std::move(annotations);
    root["axes"] = json{{"x", axisToJson(c.xAxis)}, {"y", axisToJson(c.yAxis)}};
    root["textSize"] = c.textSize;
    root["pointSize"] = c.pointSize;
    json fonts = json::array();
    for (const auto& f : c.fonts) {
        fonts.push_back(json{{"face", f.face}, {"bold", f.bold}, {"italic", f.italic},
                             {"underline", f.underline}});
    }
    root["fonts"] = std::move(fonts);
    root["colors"] = json{{"deskForeground", c.colors.deskForeground},
                          {"deskBackground", c.colors.deskBackground},
                          {"graphForeground", c.colors.graphForeground},
                          {"graphBackground", c.colors.graphBackground},
                          {"shadow", c.colors.shadow}};
    root["plottingMethod"] = c.plottingMethod;
    root["pointLabels"] = c.pointLabels;
    root["markDataPoints"] = c.markDataPoints;
    root["gridLines"] = c.gridLines;
    // Texts that aren't UTF-8 (pasted from elsewhere) are stored with replacement characters.
    return root.dump(1, ' ', false, json::error_handler_t::replace) + "\n";
}

std::optional<ChartProperties> ChartFromJson(std::string_view textIn)
{
    try {
        const json root = json::parse(textIn.begin(), textIn.end());
        return fromJson(root);
    } catch (const BadChartFile&) {
        return std::nullopt;
    } catch (const json::exception&) {
        return std::nullopt;
    }
}

bool StoreChart(const ChartDocument& chart, const std::filesystem::path& path)
{
    try {
        shell::WriteFileAtomically(path, ChartToJson(chart.trueColorProperties()));
        return true;
    } catch (const Error&) {
        return false;
    } catch (const std::filesystem::filesystem_error&) {
        return false;
    }
}

namespace {

void adopt(ChartDocument& chart, ChartProperties scratch)
{
    // A slot whose text is empty is a free slot.
    for (auto& a : scratch.annotations) {
        if (a.text.empty()) {
            a = Annotation{};
        }
    }
    chart.selected = ChartDocument::Selection{};
    chart.monochrome = false;
    chart.ColorBackup.clear();
    static_cast<ChartProperties&>(chart) = std::move(scratch);
}

} // namespace

bool LoadChartText(ChartDocument& chart, std::string_view text)
{
    auto scratch = ChartFromJson(text);
    if (!scratch) {
        return false;
    }
    adopt(chart, std::move(*scratch));
    return true;
}

OpenPlotResult OPENPLOT(ChartDocument& chart, const std::filesystem::path& path)
{
    OpenPlotResult result;
    chart.ChartPath = path.string();
    std::optional<ChartProperties> scratch;
    try {
        scratch = ChartFromJson(shell::ReadFile(path));
    } catch (const Error&) {
        scratch.reset();
    }
    if (!scratch) {
        result.failed = true;
        chart.hasFile = true;
        return result;
    }
    result.caption = path.filename().string();
    adopt(chart, std::move(*scratch));
    return result;
}

bool SaveTT(ChartDocument& chart)
{
    if (chart.ChartPath.empty() || !StoreChart(chart, chart.ChartPath)) {
        return false;
    }
    chart.mustSave = false;
    return true;
}

bool SaveGraphTT(ChartDocument& chart, const std::filesystem::path& path)
{
    chart.cancelSelection();
    if (!StoreChart(chart, path)) {
        return false;
    }
    chart.ChartPath = path.string();
    chart.mustSave = false;
    chart.hasFile = true;
    return true;
}

} // namespace zarvion::charts
