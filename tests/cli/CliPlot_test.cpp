// zarvion-cli plot, run as a separate process: the chart file it writes is read back with
// zarvion-cli chart and compared with the curve the matching view command prints.

#include <gtest/gtest.h>

#include <map>

#include "cli/CliRunner.h"

using namespace zarvion::testing;
using zarvion::shell::ReadFile;

namespace {

const std::string Sample = quoted(std::string(ZARVION_SOURCE_DIR "/Samples/h2o2_solved.txt"));

//! A curve as a view command prints it with --tsv.
struct Curve {
    std::string label;
    int rows = 0;   //!< slots handed to the chart, missing points included
    int values = 0; //!< slots with a value
    std::string first, last; //!< "x<TAB>y" of the first and last point with a value
};

Curve viewCurve(const std::string& command)
{
    const CliRun r = runCli(command + " --tsv");
    EXPECT_EQ(r.exitCode, 0) << command << "\n" << r.err;
    Curve c;
    const auto lines = splitOn(r.out, '\n');
    if (lines.empty()) return c;
    c.label = lines[0].substr(lines[0].find('\t') + 1);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const auto cells = splitOn(lines[i], '\t');
        if (cells.size() != 2) continue;
        ++c.rows;
        if (cells[0] == "-99999" || cells[1] == "-99999") continue;
        if (c.values++ == 0) c.first = lines[i];
        c.last = lines[i];
    }
    return c;
}

//! What zarvion-cli chart prints: the settings as key/value pairs and one row per subset
//! (number, label, values, colour, point, ..., first x, first y, last x, last y).
struct Chart {
    std::map<std::string, std::string> settings;
    std::vector<std::vector<std::string>> subsets;
};

Chart readChart(const std::filesystem::path& file)
{
    const CliRun r = runCli("chart " + quoted(file));
    EXPECT_EQ(r.exitCode, 0) << r.err;
    Chart c;
    bool table = false;
    for (const auto& line : splitOn(r.out, '\n')) {
        const auto cells = splitOn(line, '\t');
        if (line.rfind("subset\tlabel", 0) == 0) table = true;
        else if (line.rfind("Annotations:", 0) == 0) table = false;
        else if (table && cells.size() >= 12) c.subsets.push_back(cells);
        else if (!table && cells.size() >= 2) c.settings[cells[0]] = cells[1];
    }
    return c;
}

//! The chart holds exactly these curves, widened to the longest one.
Chart expectChartOf(const std::filesystem::path& file, const std::vector<Curve>& curves)
{
    Chart chart = readChart(file);
    int widest = 0;
    for (const auto& c : curves) widest = std::max(widest, c.rows);
    EXPECT_EQ(chart.settings["Subsets:"], std::to_string(curves.size()));
    EXPECT_EQ(chart.settings["Points:"], std::to_string(widest));
    EXPECT_EQ(chart.subsets.size(), curves.size());
    for (std::size_t i = 0; i < std::min(curves.size(), chart.subsets.size()); ++i) {
        const auto& row = chart.subsets[i];
        const Curve& c = curves[i];
        // A reaction label shows the equation tail after it in brackets.
        EXPECT_TRUE(c.label.rfind('R', 0) == 0 ? row[1].rfind(c.label + " [", 0) == 0
                                               : row[1] == c.label)
            << row[1] << " for " << c.label;
        EXPECT_EQ(row[2], std::to_string(c.values)) << row[1];
        EXPECT_EQ(row[8] + "\t" + row[9], c.first) << row[1];
        EXPECT_EQ(row[10] + "\t" + row[11], c.last) << row[1];
    }
    return chart;
}

} // namespace

TEST(CliPlot, ChartsHoldTheCurvesOfTheViewCommands)
{
    const auto pg = scratch("stack.pg"), again = scratch("again.pg");
    std::filesystem::remove(pg);
    // Every producer once: the view command, its curve option, the same as a plot option, and
    // further options of both. The first curves are thinned, so the later, longer ones must
    // widen the chart without touching them.
    struct Producer { std::string command, viewCurve, plotCurve, options; };
    const Producer producers[] = {
        {"profile", " --species OH", " --species OH",
         " --kind mole --every 3 --from 1e-5 --to 5e-4"},
        {"profile", " --species H2O", " --species H2O", " --kind mass --log --every 4"},
        {"rate", " --reaction 1", " --rate 1", " --kind net"},
        {"mean", " --item T", " --mean T", " --scale 2"},
        {"derivative", " --species T", " --derivative T", " --to 5e-4"}};
    std::vector<Curve> curves;
    for (const auto& p : producers) {
        curves.push_back(viewCurve(p.command + " " + Sample + p.viewCurve + p.options));
        ASSERT_GT(curves.back().values, 2) << p.command << p.viewCurve;
        const std::string plot = "plot " + Sample + p.plotCurve + p.options + " --seed 3 --pg ";
        const CliRun r = runCli(plot + quoted(pg) + (curves.size() > 1 ? " --add" : ""));
        ASSERT_EQ(r.exitCode, 0) << plot << "\n" << r.err;
        if (curves.size() > 1) continue;
        // A new chart is titled after its curve. The same seed gives the same styles: the
        // file is the same byte for byte.
        const Chart chart = expectChartOf(pg, curves);
        EXPECT_EQ(chart.settings.at("Main title:"), "OH");
        EXPECT_EQ(chart.settings.at("Subtitle:"), curves[0].label);
        EXPECT_EQ(chart.settings.at("X axis label:"), "Time (sec)");
        ASSERT_EQ(runCli(plot + quoted(again)).exitCode, 0);
        EXPECT_EQ(ReadFile(pg), ReadFile(again));
    }
    ASSERT_LT(curves[1].rows, curves[2].rows);
    expectChartOf(pg, curves);

    // Without --add the file is replaced by a chart of the new curve alone.
    ASSERT_EQ(runCli("plot " + Sample + " --mean T --scale 2 --pg " + quoted(pg)).exitCode, 0);
    expectChartOf(pg, {curves[3]});
}

TEST(CliPlot, RefusalsLeaveTheChartFileAlone)
{
    const auto pg = scratch("kept.pg"), missing = scratch("missing.pg"), text = scratch("text.pg");
    std::filesystem::remove(missing);
    ASSERT_EQ(runCli("plot " + Sample + " --species O2 --pg " + quoted(pg)).exitCode, 0);
    std::ofstream(text) << "just text\n";
    auto content = [](const std::filesystem::path& f) {
        return std::filesystem::exists(f) ? ReadFile(f) : std::string("(no file)");
    };
    // No curve, two curves, a kind of the other producer, an unknown species; --add to a
    // missing file or to a file that is not a chart.
    const std::pair<std::string, std::filesystem::path> refused[] = {
        {" --kind mole", pg},           {" --species OH --mean T", pg},
        {" --species OH --kind net", pg}, {" --mean T --kind mole", pg},
        {" --species XYZ --add", pg},   {" --species OH --add", missing},
        {" --species OH --add", text}};
    for (const auto& [options, file] : refused) {
        const std::string before = content(file);
        const CliRun r = runCli("plot " + Sample + options + " --pg " + quoted(file));
        EXPECT_EQ(r.exitCode, 2) << options << " " << file;
        EXPECT_FALSE(r.err.empty()) << options << " " << file;
        EXPECT_EQ(content(file), before) << options << " " << file;
    }
    // An unknown species: the same message as from the profile command.
    EXPECT_EQ(runCli("plot " + Sample + " --species XYZ --add --pg " + quoted(pg)).err,
              runCli("profile " + Sample + " --species XYZ").err);
}
