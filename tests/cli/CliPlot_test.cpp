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
    std::string firstX, firstY, lastX, lastY;
};

Curve viewCurve(const std::string& command)
{
    const CliRun r = runCli(command + " --tsv");
    EXPECT_EQ(r.exitCode, 0) << command << "\n" << r.err;
    Curve c;
    const auto lines = splitOn(r.out, '\n');
    if (lines.empty()) {
        ADD_FAILURE() << "no output from " << command;
        return c;
    }
    c.label = lines[0].substr(lines[0].find('\t') + 1);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const auto cells = splitOn(lines[i], '\t');
        if (cells.size() != 2) continue;
        ++c.rows;
        if (cells[0] == "-99999" || cells[1] == "-99999") continue;
        if (c.values++ == 0) c.firstX = cells[0], c.firstY = cells[1];
        c.lastX = cells[0], c.lastY = cells[1];
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
        EXPECT_EQ(row[8] + " " + row[9], c.firstX + " " + c.firstY) << row[1];
        EXPECT_EQ(row[10] + " " + row[11], c.lastX + " " + c.lastY) << row[1];
    }
    return chart;
}

} // namespace

TEST(CliPlot, NewChartHoldsTheCurveOfTheProfileCommand)
{
    const auto pg = scratch("species.pg"), again = scratch("species-again.pg");
    std::filesystem::remove(pg);
    const std::string view = " --species OH --kind mole --every 3 --from 1e-5 --to 5e-4";
    const Curve curve = viewCurve("profile " + Sample + view);
    ASSERT_GT(curve.values, 2);

    const CliRun r = runCli("plot " + Sample + view + " --pg " + quoted(pg) + " --seed 7");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const Chart chart = expectChartOf(pg, {curve});
    EXPECT_EQ(chart.settings.at("Main title:"), "OH");
    EXPECT_EQ(chart.settings.at("Subtitle:"), curve.label);
    EXPECT_EQ(chart.settings.at("X axis label:"), "Time (sec)");

    // The same seed gives the same styles; the file is the same byte for byte.
    ASSERT_EQ(runCli("plot " + Sample + view + " --pg " + quoted(again) + " --seed 7").exitCode, 0);
    EXPECT_EQ(ReadFile(pg), ReadFile(again));
}

TEST(CliPlot, AddStacksCurvesOfEveryProducerAndReplaceStartsOver)
{
    const auto pg = scratch("stack.pg");
    std::filesystem::remove(pg);
    const std::string out = " --pg " + quoted(pg);
    // View command and the plot options of the same curve. The first curve is thinned, so the
    // later, longer ones must widen the chart without touching it.
    const std::pair<std::string, std::string> producers[] = {
        {"profile --species H2O --kind mass --log --every 4",
         " --species H2O --kind mass --log --every 4"},
        {"rate --reaction 1 --kind net", " --rate 1 --kind net"},
        {"mean --item T --scale 2", " --mean T --scale 2"},
        {"derivative --species T --to 5e-4", " --derivative T --to 5e-4"},
    };
    std::vector<Curve> curves;
    for (const auto& [view, plot] : producers) {
        const auto space = view.find(' ');
        curves.push_back(viewCurve(view.substr(0, space) + " " + Sample + view.substr(space)));
        const CliRun r = runCli("plot " + Sample + plot + out + " --seed 3" +
                                (curves.size() > 1 ? " --add" : ""));
        ASSERT_EQ(r.exitCode, 0) << plot << "\n" << r.err;
    }
    ASSERT_LT(curves[0].rows, curves[1].rows);
    expectChartOf(pg, curves);

    // Without --add the file is replaced by a chart of the new curve alone.
    ASSERT_EQ(runCli("plot " + Sample + producers[2].second + out).exitCode, 0);
    expectChartOf(pg, {curves[2]});
}

TEST(CliPlot, RefusalsLeaveTheChartFileAlone)
{
    const auto missing = scratch("missing.pg"), pg = scratch("kept.pg");
    std::filesystem::remove(missing);
    CliRun r = runCli("plot " + Sample + " --species OH --pg " + quoted(missing) + " --add");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_FALSE(r.err.empty());
    EXPECT_FALSE(std::filesystem::exists(missing));

    ASSERT_EQ(runCli("plot " + Sample + " --species O2 --pg " + quoted(pg)).exitCode, 0);
    const std::string before = ReadFile(pg);
    // An unknown species: the same message as the profile command, and nothing written.
    const CliRun view = runCli("profile " + Sample + " --species XYZ");
    r = runCli("plot " + Sample + " --species XYZ --pg " + quoted(pg) + " --add");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, view.err);
    EXPECT_EQ(ReadFile(pg), before);

    // No curve, two curves, or a kind that belongs to the other producer.
    for (const std::string bad : {" --kind mole", " --species OH --mean T",
                                  " --species OH --kind net", " --mean T --kind mole"}) {
        r = runCli("plot " + Sample + bad + " --pg " + quoted(pg));
        EXPECT_EQ(r.exitCode, 2) << bad;
        EXPECT_FALSE(r.err.empty()) << bad;
        EXPECT_EQ(ReadFile(pg), before) << bad;
    }

    // A file that is not a chart cannot be added to.
    const auto text = scratch("not-a-chart.pg");
    std::ofstream(text) << "just text\n";
    r = runCli("plot " + Sample + " --species OH --pg " + quoted(text) + " --add");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(ReadFile(text), "just text\n");
}
