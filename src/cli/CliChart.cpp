// zarvion-cli chart: shows a chart file, or builds one from subset text blocks.
//   zarvion-cli chart FILE.pg [--data] [--block K]
//   zarvion-cli chart --from-clipboard-text FILE.txt... -o OUT.pg [--seed N]

#include "CliCommand.h"

#include "charts/ChartFile.h"
#include "charts/ChartText.h"
#include "charts/TemporaryChart.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

#include <cstdio>
#include <iostream>
#include <memory>
#include <random>

namespace zarvion::cli {
namespace {

using namespace zarvion::charts;

struct ChartArguments {
    std::string chartFile;
    std::vector<std::string> textFiles;
    std::string output;
    bool data = false;
    int block = 0;
    long long seed = -1;
};

std::string colorText(Color c)
{
    char buf[8];
    std::snprintf(buf, sizeof buf, "#%06X", static_cast<unsigned>(c & 0xFFFFFF));
    return buf;
}

std::string valueText(double v)
{
    return IsValue(v) ? shell::ShortestText(v) : std::string("-");
}

void printAxis(const char* name, const AxisSettings& a, std::ostream& out)
{
    out << name << " axis:\t" << (a.manualScale == 0 ? "auto" : "manual") << "\t"
        << (a.logScale ? "log" : "linear") << "\tmin " << shell::ShortestText(a.manualMin)
        << "\tmax " << shell::ShortestText(a.manualMax) << "\tmajor "
        << shell::ShortestText(a.majorTick) << "\tminor " << shell::ShortestText(a.minorTick)
        << "\tpattern " << (a.numberPattern.empty() ? "-" : a.numberPattern) << "\n";
}

void printChart(const ChartDocument& c, std::ostream& out)
{
    auto shown = [](const std::string& s, const char* fallback) {
        return s.empty() ? std::string(fallback) + " (default)" : s;
    };
    out << "Main title:\t" << shown(c.mainTitle, DefaultMainTitle) << "\n";
    out << "Subtitle:\t" << shown(c.subTitle, DefaultSubTitle) << "\n";
    out << "X axis label:\t" << shown(c.xAxisLabel, DefaultXAxisLabel) << "\n";
    out << "Y axis label:\t" << shown(c.yAxisLabel, DefaultYAxisLabel) << "\n";
    out << "Plotting method:\t"
        << (c.plottingMethod == HistogramMethod ? "histogram" : "line") << "\n";
    printAxis("X", c.xAxis, out);
    printAxis("Y", c.yAxis, out);
    static const char* const textSizes[] = {"large", "medium", "small"};
    static const char* const pointSizes[] = {"small", "medium", "large"};
    out << "Text size:\t" << textSizes[std::clamp(c.textSize, 0, 2)] << "\n";
    out << "Point size:\t" << pointSizes[std::clamp(c.pointSize, 0, 2)] << "\n";
    out << "Colours:\tdesk " << colorText(c.colors.deskForeground) << " on "
        << colorText(c.colors.deskBackground) << ", graph " << colorText(c.colors.graphForeground)
        << " on " << colorText(c.colors.graphBackground) << ", shadow "
        << colorText(c.colors.shadow) << "\n";
    out << "Subsets:\t" << c.subsetCount() << "\n";
    out << "Points:\t" << c.points << "\n";
    out << "subset\tlabel\tvalues\tcolor\tpoint\tline\tshow\tlegend\tfirst X\tfirst Y\tlast X\tlast Y\n";
    for (int k = 0; k < c.subsetCount(); ++k) {
        const Subset& s = c.subsets[k];
        int values = 0;
        int first = -1;
        int last = -1;
        for (int p = 0; p < c.points; ++p) {
            if (IsValue(s.x[p]) && IsValue(s.y[p])) {
                ++values;
                first = first < 0 ? p : first;
                last = p;
            }
        }
        std::string label = s.label;
        const std::string tail = OverflowTail(c, k);
        if (IsReactionLabel(label) && !tail.empty()) {
            label += " [" + tail + "]";
        }
        out << k + 1 << "\t" << label << "\t" << values << "\t" << colorText(s.color) << "\t"
            << (s.pointType == NoSymbols ? std::string("None") : std::to_string(s.pointType))
            << "\t" << (s.lineType == NoLine ? std::string("None") : std::to_string(s.lineType))
            << "\t" << (s.show ? "yes" : "no") << "\t" << (s.legend ? "yes" : "no") << "\t"
            << (first < 0 ? "-" : valueText(s.x[first])) << "\t"
            << (first < 0 ? "-" : valueText(s.y[first])) << "\t"
            << (last < 0 ? "-" : valueText(s.x[last])) << "\t"
            << (last < 0 ? "-" : valueText(s.y[last])) << "\n";
    }
    int used = 0;
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        used += c.annotations[slot].isFree() ? 0 : 1;
    }
    out << "Annotations:\t" << used << "\n";
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        const Annotation& a = c.annotations[slot];
        if (!a.isFree()) {
            out << "slot " << slot << "\t" << a.text << "\t" << valueText(a.x) << "\t"
                << valueText(a.y) << "\n";
        }
    }
}

int showChart(const ChartArguments& args)
{
    ChartDocument chart;
    if (OPENPLOT(chart, args.chartFile).failed) {
        throw CommandFailure{"Not a chart file: " + args.chartFile};
    }
    if (args.block > 0) {
        if (args.block > chart.subsetCount()) {
            throw CommandFailure{"The chart has " + std::to_string(chart.subsetCount()) +
                                 " subsets."};
        }
        std::cout << ToClipFile(chart, args.block - 1,
                                std::filesystem::path(args.chartFile).filename().string(),
                                shell::Now());
        return 0;
    }
    if (args.data) {
        const auto table = WriteChartDataTable(chart);
        if (!table.message.empty()) {
            std::cerr << table.message.text << "\n";
            return 1;
        }
        std::cout << table.text;
        return 0;
    }
    printChart(chart, std::cout);
    return 0;
}

int buildChart(const ChartArguments& args)
{
    if (args.output.empty()) {
        throw CommandFailure{"--from-clipboard-text needs -o OUT.pg"};
    }
    RandomSource random = DefaultRandomSource();
    if (args.seed >= 0) {
        auto engine = std::make_shared<std::mt19937>(static_cast<std::uint32_t>(args.seed));
        random = [engine] { return std::uniform_real_distribution<double>(0.0, 1.0)(*engine); };
    }
    ChartDocument chart;
    PlotExchange exchange;
    for (const auto& file : args.textFiles) {
        const auto read = ReadSubsetText(shell::ReadFile(file));
        if (!read.ok()) {
            throw CommandFailure{file + ": " + read.message.text};
        }
        const auto& s = read.subset;
        if (chart.subsets.empty()) {
            chart.xAxisLabel = s.xAxisLabel;
        }
        exchange.AddLabelBuffer = {s.label};
        exchange.AddDataBuffer = {s.x, s.y};
        exchange.AddSubsetCount = 1;
        exchange.AddPointCount = static_cast<int>(s.x.size());
        SubSetAdd(chart, exchange, s.piece1, s.piece2, random);
    }
    if (!StoreChart(chart, args.output)) {
        throw CommandFailure{"Cannot write " + args.output};
    }
    std::cout << "Written: " << args.output << " (" << chart.subsetCount() << " subsets, "
              << chart.points << " points)\n";
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto args = std::make_shared<ChartArguments>();
    CLI::App* cmd = app.add_subcommand(
        "chart", "Show a chart file (.pg), or build one from subset text blocks");
    cmd->add_option("file", args->chartFile, "chart file to show");
    cmd->add_option("--from-clipboard-text", args->textFiles,
                    "subset text blocks or plain 2/3-column text, one subset a file")
        ->expected(1, -1);
    cmd->add_option("-o,--output", args->output, "chart file to write");
    cmd->add_flag("--data", args->data, "print the chart's data table instead of its settings");
    cmd->add_option("--block", args->block, "print the subset text block of subset K (from 1)");
    cmd->add_option("--seed", args->seed, "seed of the random subset styles");
    cmd->callback([args, &exitCode] {
        try {
            if (!args->textFiles.empty()) {
                exitCode = buildChart(*args);
            } else if (!args->chartFile.empty()) {
                exitCode = showChart(*args);
            } else {
                throw CommandFailure{"Give a chart file or --from-clipboard-text FILE.txt"};
            }
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
