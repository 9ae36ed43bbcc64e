// zarvion-cli plot, run as a separate process: the chart file it writes is read back with
// zarvion-cli chart and compared with the curve the matching view command prints.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct CliRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

std::filesystem::path scratch(const std::string& name)
{
    const auto dir = std::filesystem::temp_directory_path() /
                     ("zarvion-plot-test-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    return dir / name;
}

std::string quoted(const std::string& s) { return "'" + s + "'"; }

std::string sample()
{
    const auto bin = std::filesystem::path(ZARVION_BIN_DIR) / "Samples" / "h2o2_solved.txt";
    if (std::filesystem::exists(bin)) {
        return quoted(bin.string());
    }
    return quoted((std::filesystem::path(ZARVION_SOURCE_DIR) / "Samples" / "h2o2_solved.txt")
                      .string());
}

CliRun cli(const std::string& arguments)
{
    const auto errFile = scratch("stderr.txt");
    const std::string command =
        quoted(ZARVION_CLI) + " " + arguments + " 2>" + quoted(errFile.string());
    CliRun run;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
        run.out.append(buffer, n);
    }
    const int status = ::pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream err(errFile);
    run.err.assign(std::istreambuf_iterator<char>(err), {});
    return run;
}

std::vector<std::string> split(const std::string& text, char sep)
{
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, sep)) {
        parts.push_back(part);
    }
    return parts;
}

//! A curve as a view command prints it with --tsv.
struct Curve {
    std::string label;
    int rows = 0;   //!< slots handed to the chart, missing points included
    int values = 0; //!< slots with a value
    std::string firstX, firstY, lastX, lastY;
};

Curve viewCurve(const std::string& command)
{
    const CliRun r = cli(command + " --tsv");
    EXPECT_EQ(r.exitCode, 0) << command << "\n" << r.err;
    Curve c;
    const auto lines = split(r.out, '\n');
    if (lines.empty()) {
        ADD_FAILURE() << "no output from " << command;
        return c;
    }
    c.label = lines[0].substr(lines[0].find('\t') + 1);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const auto cells = split(lines[i], '\t');
        if (cells.size() != 2) {
            continue;
        }
        ++c.rows;
        if (cells[0] != "-99999" && cells[1] != "-99999") {
            if (c.values++ == 0) {
                c.firstX = cells[0];
                c.firstY = cells[1];
            }
            c.lastX = cells[0];
            c.lastY = cells[1];
        }
    }
    return c;
}

//! What zarvion-cli chart prints: the settings as key/value pairs and one row per subset.
struct Chart {
    std::map<std::string, std::string> settings;
    std::vector<std::vector<std::string>> subsets; //!< number, label, values, colour, point, ...
};

Chart readChart(const std::filesystem::path& file)
{
    const CliRun r = cli("chart " + quoted(file.string()));
    EXPECT_EQ(r.exitCode, 0) << r.err;
    Chart c;
    bool table = false;
    for (const auto& line : split(r.out, '\n')) {
        const auto cells = split(line, '\t');
        if (line.rfind("subset\tlabel", 0) == 0) {
            table = true;
        } else if (line.rfind("Annotations:", 0) == 0) {
            table = false;
        } else if (table && cells.size() >= 12) {
            c.subsets.push_back(cells);
        } else if (!table && cells.size() >= 2) {
            c.settings[cells[0]] = cells[1];
        }
    }
    return c;
}

//! The subset row of the chart carries the curve: label, value count, first and last point.
void expectSubsetIsCurve(const std::vector<std::string>& row, const Curve& curve)
{
    ASSERT_GE(row.size(), 12u);
    EXPECT_EQ(row[1], curve.label);
    EXPECT_EQ(row[2], std::to_string(curve.values));
    EXPECT_EQ(row[8], curve.firstX);
    EXPECT_EQ(row[9], curve.firstY);
    EXPECT_EQ(row[10], curve.lastX);
    EXPECT_EQ(row[11], curve.lastY);
}

std::string fileText(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

TEST(CliPlot, NewChartHoldsTheCurveOfTheProfileCommand)
{
    const auto pg = scratch("species.pg");
    std::filesystem::remove(pg);
    const std::string view = " --species OH --kind mole --every 3 --from 1e-5 --to 5e-4";
    const Curve curve = viewCurve("profile " + sample() + view);
    ASSERT_GT(curve.values, 2);

    const CliRun r = cli("plot " + sample() + view + " --pg " + quoted(pg.string()) + " --seed 7");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const Chart chart = readChart(pg);
    EXPECT_EQ(chart.settings.at("Subsets:"), "1");
    EXPECT_EQ(chart.settings.at("Points:"), std::to_string(curve.rows));
    EXPECT_EQ(chart.settings.at("Main title:"), "OH");
    EXPECT_EQ(chart.settings.at("Subtitle:"), curve.label);
    EXPECT_EQ(chart.settings.at("X axis label:"), "Time (sec)");
    ASSERT_EQ(chart.subsets.size(), 1u);
    expectSubsetIsCurve(chart.subsets[0], curve);

    // The same seed gives the same styles; the file is the same byte for byte.
    const auto again = scratch("species-again.pg");
    ASSERT_EQ(cli("plot " + sample() + view + " --pg " + quoted(again.string()) + " --seed 7")
                  .exitCode,
              0);
    EXPECT_EQ(fileText(pg), fileText(again));
}

TEST(CliPlot, AddStacksCurvesOfEveryProducerAndReplaceStartsOver)
{
    const auto pg = scratch("stack.pg");
    std::filesystem::remove(pg);
    const std::string out = " --pg " + quoted(pg.string());
    // The first curve is thinned, so the later, longer ones must widen the chart without
    // touching it.
    const std::vector<std::pair<std::string, std::string>> producers = {
        {"profile", " --species H2O --kind mass --log --every 4"},
        {"rate", " --reaction 1 --kind net"},
        {"mean", " --item T --scale 2"},
        {"derivative", " --species T --to 5e-4"},
    };
    const std::vector<std::string> plotOptions = {
        " --species H2O --kind mass --log --every 4",
        " --rate 1 --kind net",
        " --mean T --scale 2",
        " --derivative T --to 5e-4",
    };
    std::vector<Curve> curves;
    int widest = 0;
    for (std::size_t i = 0; i < producers.size(); ++i) {
        curves.push_back(viewCurve(producers[i].first + " " + sample() + producers[i].second));
        widest = std::max(widest, curves.back().rows);
        const CliRun r = cli("plot " + sample() + plotOptions[i] + out + " --seed 3" +
                          (i > 0 ? " --add" : ""));
        ASSERT_EQ(r.exitCode, 0) << plotOptions[i] << "\n" << r.err;
    }
    ASSERT_LT(curves[0].rows, curves[1].rows);

    const Chart chart = readChart(pg);
    EXPECT_EQ(chart.settings.at("Subsets:"), "4");
    EXPECT_EQ(chart.settings.at("Points:"), std::to_string(widest));
    ASSERT_EQ(chart.subsets.size(), 4u);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        SCOPED_TRACE(plotOptions[i]);
        const std::string label = chart.subsets[i][1];
        if (label.rfind('R', 0) == 0) {
            // A reaction label shows the equation tail after it in brackets.
            Curve c = curves[i];
            ASSERT_EQ(label.rfind(c.label + " [", 0), 0u) << label;
            c.label = label;
            expectSubsetIsCurve(chart.subsets[i], c);
        } else {
            expectSubsetIsCurve(chart.subsets[i], curves[i]);
        }
    }

    // Without --add the file is replaced by a chart of the new curve alone.
    ASSERT_EQ(cli("plot " + sample() + plotOptions[2] + out).exitCode, 0);
    const Chart replaced = readChart(pg);
    EXPECT_EQ(replaced.settings.at("Subsets:"), "1");
    EXPECT_EQ(replaced.settings.at("Points:"), std::to_string(curves[2].rows));
    ASSERT_EQ(replaced.subsets.size(), 1u);
    expectSubsetIsCurve(replaced.subsets[0], curves[2]);
}

TEST(CliPlot, RefusalsLeaveTheChartFileAlone)
{
    const auto missing = scratch("missing.pg");
    std::filesystem::remove(missing);
    CliRun r = cli("plot " + sample() + " --species OH --pg " + quoted(missing.string()) + " --add");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_FALSE(r.err.empty());
    EXPECT_FALSE(std::filesystem::exists(missing));

    const auto pg = scratch("kept.pg");
    ASSERT_EQ(cli("plot " + sample() + " --species O2 --pg " + quoted(pg.string())).exitCode, 0);
    const std::string before = fileText(pg);

    // An unknown species: the same message as the profile command, and nothing written.
    const CliRun view = cli("profile " + sample() + " --species XYZ");
    r = cli("plot " + sample() + " --species XYZ --pg " + quoted(pg.string()) + " --add");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, view.err);
    EXPECT_EQ(fileText(pg), before);

    // No curve, two curves, or a kind that belongs to the other producer.
    for (const std::string bad : {" --kind mole", " --species OH --mean T",
                                  " --species OH --kind net", " --mean T --kind mole"}) {
        r = cli("plot " + sample() + bad + " --pg " + quoted(pg.string()));
        EXPECT_EQ(r.exitCode, 2) << bad;
        EXPECT_EQ(fileText(pg), before) << bad;
    }

    // A file that is not a chart cannot be added to.
    const auto text = scratch("not-a-chart.pg");
    std::ofstream(text) << "just text\n";
    r = cli("plot " + sample() + " --species OH --pg " + quoted(text.string()) + " --add");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(fileText(text), "just text\n");
}
