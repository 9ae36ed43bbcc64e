// Reductions of the small solved set: the set-up form (defaults, checks, paths, request,
// saved settings), Prepare, engine runs, and zarvion-cli reduce, chemkin and compare.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <functional>
#include <sys/wait.h>

#include "core/reduction/TestFiles.h"
#include "postprocessor/ResultsReader.h"
#include "reduction/ReductionSetup.h"
#include "shell/Error.h"
#include "shell/TextFormat.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

postprocessor::ResultSet Results(int mode)
{
    postprocessor::ResultSet r;
    r.SpeciesCount = 3;
    r.TemperatureMode = mode;
    r.columnNames = {"Time(s)", "T(K)", "Ro", "CH4", "O2", "N2"};
    r.initialMoleFractions = {0.095, 0.19, 0};
    r.rowCount = 11; // head and ten data rows
    return r;
}

class ReductionSetupTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("reduction_setup");
    ReductionSetup setup;
    void SetUp() override
    {
        PrepData(Results(1), WriteLines(dir / "src.txt", {"x"}).string(), setup);
        setup.reducedPathText = (dir / "red.txt").string();
    }
};

TEST_F(ReductionSetupTest, PrepareDefaults)
{
    ASSERT_EQ(setup.SpeciesTable.size(), 3U);
    EXPECT_EQ(setup.SpeciesTable[0].name, "CH4");
    EXPECT_TRUE(setup.SpeciesTable[0].hasInitial);
    EXPECT_EQ(setup.SpeciesTable[0].parameter, "0.1");
    EXPECT_EQ(setup.SpeciesTable[2].parameter, "");
    EXPECT_EQ(setup.temperatureText, "0.1");
    EXPECT_EQ(setup.nonTargetText, "0.3");
    EXPECT_EQ(setup.intervalText, "1");
    EXPECT_EQ(setup.RowCount, 10);
    EXPECT_EQ(setup.stepsText, "9");

    ReductionSetup constantT;
    PrepData(Results(0), "x", constantT);
    EXPECT_EQ(constantT.temperatureText, "");
    EXPECT_FALSE(constantT.temperatureVisible);
    EXPECT_EQ(constantT.temperatureCaption, "Constant Temperature");
}

TEST_F(ReductionSetupTest, StartReadsAndWritesBackTheSettings)
{
    setup.intervalText = " 2.5 "; // rounds half to even
    setup.temperatureText = " 0.2 ";
    setup.nonTargetText = " .30 ";
    setup.SpeciesTable[1].parameter = "1"; // 0 and 1 pass although the texts name (0, 1)
    setup.SpeciesTable[2].parameter = " 0";
    ReductionRequest q;
    ASSERT_TRUE(BuildRequest(setup, q).empty());
    EXPECT_EQ(setup.intervalText, "2");
    EXPECT_EQ(q.interval, 2);
    EXPECT_EQ(setup.temperatureText, "0.2");
    EXPECT_DOUBLE_EQ(q.temperatureParameter, 0.2);
    EXPECT_EQ(setup.nonTargetText, "0.3");
    EXPECT_EQ(q.targetSpecies, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(q.speciesParameters, (std::vector<double>{0.1, 1, 0}));
    EXPECT_EQ(q.stepCount, 9);
    EXPECT_EQ(q.reducedPath, setup.reducedPathText);
    setup.temperatureText = "";
    setup.SpeciesTable[2].parameter = "";
    ASSERT_TRUE(BuildRequest(setup, q).empty());
    EXPECT_EQ(q.temperatureParameter, -1.0);
    EXPECT_EQ(q.targetSpecies, (std::vector<int>{1, 2}));

    const auto victim = WriteLines(dir / "victim.txt", {"keep me"});
    EXPECT_TRUE(TestRedFile(victim).empty());
    EXPECT_FALSE(std::filesystem::exists(victim)); // the trial destroys a file of that name
}

TEST_F(ReductionSetupTest, RefusalsCarryTheirTextAndFocus)
{
    const std::string species = "Bad value for the N2 parameter. If the species is a target, "
                                "enter a number on the interval (0, 1). If the species is not a "
                                "target, clear the table field.";
    const std::string others = "Non target parameter, please enter a number on the interval "
                               "(0, 1).";
    const std::string interval = "Interval of steps, please enter a positive integer. ";
    const std::string noAccess = "' cannot be accessed or is invalid.";
    const std::string folder = (dir / "no_such_folder" / "red.txt").string();
    using Edit = std::function<void(ReductionSetup&)>;
    struct Case {
        bool atPrepare; // CheckPreparePaths, else the checks at start
        Edit edit;
        std::string text;
        int field, row;
    };
    const std::vector<Case> cases = {
        {false, [](auto& s) { s.SpeciesTable[2].parameter = "1.5"; }, species, -1, 3},
        {false, [](auto& s) { s.SpeciesTable[2].parameter = "abc"; }, species, -1, 3},
        {false, [](auto& s) { s.temperatureText = "warm"; },
         "Bad value for the temperature parameter. If temperature is a target, enter a number on "
         "the interval (0, 1). If temperature is not a target, clear the textbox.", 0, 0},
        {false, [](auto& s) { s.nonTargetText = ""; }, others, 1, 0},
        {false, [](auto& s) { s.nonTargetText = "-0.1"; }, others, 1, 0},
        {false, [](auto& s) { s.nonTargetText = "  "; }, others, 1, 0},
        {false, [](auto& s) { ClearAll(s); s.nonTargetText = "0.3"; },
         "Cannot start because no targets have been specified. For targets (temperature and/or "
         "species), enter parameters on the interval (0,1).", -1, 0},
        {false, [](auto& s) { s.intervalText = "0"; }, interval, 2, 0},
        {false, [](auto& s) { s.intervalText = "-3"; }, interval, 2, 0},
        {false, [](auto& s) { s.intervalText = ""; }, interval, 2, 0},
        {false, [](auto& s) { s.intervalText = "x"; }, interval, 2, 0},
        {false, [&](auto& s) { s.reducedPathText = (dir / "red.PG").string(); },
         "Reduced file, the specified Path/File name cannot be accessed or is invalid.", 5, 0},
        {false, [&](auto& s) { s.reducedPathText = dir.string(); },
         "Reduced file, the specified Path/File name '" + dir.string() + noAccess, 5, 0},
        {true, [](auto& s) { s.reducedPathText = shell::UCase(s.SourcePath); },
         "The paths of the source and reduced files are identical; the files should be "
         "different.", 5, 0},
        {true, [&](auto& s) { s.SourcePath = (dir / "none.txt").string(); },
         "The specified Path/File name " + (dir / "none.txt").string() + noAccess.substr(1), 10,
         0},
        {true, [&](auto& s) { s.reducedPathText = folder; },
         "Reduced file, the specified Path/File name '" + folder + noAccess, 5, 0},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        ReductionSetup s = setup;
        cases[i].edit(s);
        ReductionRequest q;
        const SetupRefusal r = cases[i].atPrepare ? CheckPreparePaths(s) : BuildRequest(s, q);
        EXPECT_EQ(r.message.text, cases[i].text) << "case " << i + 1;
        EXPECT_EQ(r.message.style, 48) << "case " << i + 1;
        EXPECT_EQ(r.field, cases[i].field) << "case " << i + 1;
        EXPECT_EQ(r.row, cases[i].row) << "case " << i + 1;
    }
}

TEST_F(ReductionSetupTest, SaveAndEnterSettings)
{
    const auto file = dir / "RedMechData.txt";
    setup.SpeciesTable[1].parameter = "0.25";
    SaveSettings(file, setup);
    EXPECT_EQ(shell::ReadLines(file), (Lines{" 4 ", "0.1", "0.3", "1", "CH4 0.1", "O2 0.25"}));

    // entered into a table of another mechanism: only names it holds are applied
    ReductionSetup other;
    other.SpeciesTable = {{"O2", false, ""}, {"AR", false, "0.7"}};
    ASSERT_TRUE(EnterSettings(file, other).empty());
    EXPECT_EQ(other.SpeciesTable[0].parameter, "0.25");
    EXPECT_EQ(other.SpeciesTable[1].parameter, "0.7");
    EXPECT_EQ(other.temperatureText, "0.1");
    EXPECT_EQ(other.intervalText, "1");

    ClearAll(setup);
    setup.nonTargetText = "0.3";
    SaveSettings(file, setup);
    EXPECT_EQ(shell::ReadLines(file), (Lines{" 2 ", "", "0.3", "1"}));

    EXPECT_EQ(EnterSettings(dir / "absent.txt", other).text, "Settings were not saved.");
    WriteLines(file, {" 5 ", "0.1", "0.3", "1", "CH4 0.1"}); // announces one line too many
    EXPECT_THROW(EnterSettings(file, other), zarvion::Error);
    WriteLines(file, {"many", "0.1", "0.3", "1"});
    EXPECT_THROW(EnterSettings(file, other), zarvion::Error);
}

class ReductionRunTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("reduction_run");
    std::filesystem::path source = WriteLines(dir / "solved.txt", SmallSolved());
    std::filesystem::path reduced = dir / "reduced.txt";
    postprocessor::ResultSet results;
    ReductionTables tables;

    void SetUp() override
    {
        postprocessor::ReadOutcome outcome;
        using postprocessor::ReaderForm;
        results = postprocessor::OPEN_Rich(source, ReaderForm::SOL_RESX, {}, outcome);
        ASSERT_FALSE(outcome.failed) << outcome.message.text;
        ASSERT_EQ(results.rowCount, 7); // head and six records
    }
    ReductionOutcome Run(std::vector<int> targets, std::vector<double> params, double temperature,
                         int interval = 1, const ReductionProgress& progress = {})
    {
        // others at 0.3; the last stored row is never analysed
        const ReductionRequest q{reduced.string(), results.rowCount - 2, temperature, params, 0.3,
                                 targets, interval};
        return ReduceMechanism(tables, results, source.string(), q, progress, shell::Now());
    }
};

TEST_F(ReductionRunTest, FullRunWritesAFileThatReadsAndChecksAgain)
{
    std::vector<float> progress;
    const auto run = Run({1, 2}, {0.1, 0.1}, 0.1, 1, [&](float v) {
        progress.push_back(v);
        return true;
    });
    ASSERT_TRUE(run.fileWritten);
    EXPECT_EQ(run.rowsAnalysed, 5);
    EXPECT_EQ(progress, (std::vector<float>{2, 4, 6, 8, 10}));
    ASSERT_EQ(run.messages.size(), 1U);
    EXPECT_EQ(run.messages[0].style, 64);
    EXPECT_EQ(run.messages[0].text,
              "Reduced reaction mechanism has been created successfully. \r\nThe mechanism "
              "consists of\r\n" + std::to_string(tables.ReducedSpeciesCount) + " species, \r\n" +
                  std::to_string(tables.ReducedReactionCount) + " reactions.");
    EXPECT_TRUE(tables.KeptSpecies[0] && tables.KeptSpecies[1]); // targets are always kept
    // the kept reactions are closed over their species
    for (int r = 0; r < tables.NumReactions; ++r) {
        for (int k = 1; k <= 9 && tables.KeptReactions[r]; ++k) {
            const int s = tables.ReactionInts[r][k];
            EXPECT_TRUE(s == 0 || tables.KeptSpecies[s - 1]) << "reaction " << r + 1;
        }
    }
    // third bodies are ranked by concentrations of the first result row: y rho / W [mol/cm^3]
    const double y = std::stod(shell::Mid(results.rows[1], 17 * 3 + 1, 16)); // H2
    EXPECT_DOUBLE_EQ(tables.FirstRowConcentrations[0],
                     y * results.density[1] / results.molecularWeight(1));
}

TEST_F(ReductionRunTest, EdgeRunsOfTheEngine)
{
    // one species target at 1 and nothing else: one species, no reaction, still a file
    auto run = Run({6}, {1.0}, -1);
    EXPECT_TRUE(run.fileWritten);
    EXPECT_EQ(tables.ReducedSpeciesCount, 1);
    EXPECT_EQ(tables.ReducedReactionCount, 0);
    EXPECT_EQ(shell::ReadLines(reduced)[9], " 1 !Species");

    // temperature alone at 1 keeps nothing: no file
    std::filesystem::remove(reduced);
    run = Run({}, {}, 1.0);
    EXPECT_FALSE(run.fileWritten);
    ASSERT_EQ(run.messages.size(), 1U);
    EXPECT_EQ(run.messages[0].text, "The reaction mechanism consists of \r\n0 species, \r\n0 "
                                    "reactions. \r\nThe file has not been created.");
    EXPECT_EQ(run.messages[0].style, 48);
    EXPECT_FALSE(std::filesystem::exists(reduced));
    EXPECT_TRUE(tables.TemperatureIsTarget);

    EXPECT_EQ(Run({1}, {0.1}, -1, 50).rowsAnalysed, 1); // an interval beyond the step count

    // cancelled after the second row: nothing written, nothing said
    std::filesystem::remove(reduced);
    int calls = 0;
    run = Run({1}, {0.1}, 0.1, 1, [&](float) { return ++calls < 2; });
    EXPECT_TRUE(run.cancelled);
    EXPECT_EQ(run.rowsAnalysed, 2);
    EXPECT_TRUE(run.messages.empty());
    EXPECT_FALSE(std::filesystem::exists(reduced));

    // the reaction block lost its closing keyword after the results were read: the writer's
    // refusal comes, then the success text all the same, and no file exists
    Lines lines = SmallSolved();
    lines[LineOf(lines, "!$Results   $$") - 2] = "FIN";
    WriteLines(source, lines);
    run = Run({1}, {0.1}, -1);
    ASSERT_EQ(run.messages.size(), 2U);
    EXPECT_EQ(run.messages[0].text, "The reaction list of the source file does not contain the "
                                    "key word End. The file is changed or corrupted; the reduced "
                                    "file cannot be created.");
    EXPECT_EQ(run.messages[1].style, 64);
    EXPECT_FALSE(run.fileWritten);
    EXPECT_FALSE(std::filesystem::exists(reduced));
}

TEST_F(ReductionRunTest, PrepareChecksTheSourceAndLoadsIt)
{
    ReductionSetup setup;
    setup.SourcePath = source.string();
    setup.reducedPathText = (dir / "out.txt").string();
    postprocessor::ResultSet loaded;
    PrepareRefusal r = Prepare(setup, loaded);
    ASSERT_TRUE(r.refusal.empty()) << r.refusal.message.text;
    EXPECT_EQ(loaded.rowCount, 7);
    EXPECT_EQ(setup.SpeciesTable.size(), 9U);
    EXPECT_EQ(setup.SpeciesTable[6].parameter, "0.1"); // AR is present at the start
    EXPECT_EQ(setup.reducedPathText, (dir / "out.txt").string()); // kept over the defaults

    // a file without results: the check's message, nothing loaded
    setup.SourcePath = WriteLines(dir / "bare.txt", SmallBare()).string();
    r = Prepare(setup, loaded);
    EXPECT_EQ(r.refusal.message.text,
              "In the file '" + setup.SourcePath + "', results of calculation are not found.");
    EXPECT_EQ(r.refusal.message.style, 48);
    EXPECT_EQ(loaded.rowCount, 0);
}

//! Runs zarvion-cli with arguments; stderr joins stdout. The exit code and the output.
std::pair<int, std::string> Cli(const std::string& arguments)
{
    const std::string command = "\"" ZARVION_BIN_DIR "/zarvion-cli\" " + arguments + " 2>&1";
    std::string out;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    while (pipe && std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe)) {
        out += buffer.data();
    }
    const int status = pipe ? pclose(pipe) : -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST_F(ReductionRunTest, CliReduceThenConvertAndCompare)
{
    if (!std::filesystem::exists(ZARVION_BIN_DIR "/zarvion-cli")) {
        GTEST_SKIP() << "zarvion-cli is not built in " << ZARVION_BIN_DIR;
    }
    const std::string in = "\"" + source.string() + "\" ";
    const std::string out = reduced.string();
    const std::string reduce = "reduce " + in + "-o \"" + out + "\" --target H2=0.1 ";
    auto [code, text] = Cli(reduce + "--target XY=0.1");
    EXPECT_EQ(code, 2);
    EXPECT_NE(text.find("no species 'XY'"), std::string::npos) << text;

    std::tie(code, text) = Cli(reduce + "--temperature 0.1");
    ASSERT_EQ(code, 0) << text;
    EXPECT_EQ(text.rfind("Reduced reaction mechanism has been created successfully. \nThe "
                         "mechanism consists of\n", 0), 0U) << text;
    EXPECT_NE(text.find("rows analysed\t5\n"), std::string::npos) << text; // six rows, last not
    EXPECT_EQ(shell::ReadLines(out)[11].substr(0, 10), " 2 -1 1 !T");

    std::tie(code, text) = Cli("chemkin \"" + out + "\"");
    ASSERT_EQ(code, 0) << text;
    EXPECT_NE(text.find("\n! Solver File:  " + out + "\n"), std::string::npos) << text;

    std::tie(code, text) = Cli("compare " + in + in);
    ASSERT_EQ(code, 0) << text;
    EXPECT_EQ(text.substr(0, text.find('\n')), "#\tname\tN1\tN2\tnumber1\tnumber2");
    EXPECT_NE(text.find("\n1\tTemperature\t*\t*\t0\t0\n"), std::string::npos) << text;
    std::tie(code, text) = Cli("compare " + in + in + "--species OH");
    ASSERT_EQ(code, 0) << text;
    EXPECT_EQ(text.rfind("#  F1, OH (mol/cm^3)\nx\ty\n", 0), 0U) << text;
    EXPECT_NE(text.find("#  F2, OH (mol/cm^3)"), std::string::npos);
    // identical files: every error vanishes and the refusal says so
    std::tie(code, text) = Cli("compare " + in + in + "--species T --error");
    EXPECT_EQ(code, 2);
    EXPECT_NE(text.find("You are attempting to plot a function where all values are zero."),
              std::string::npos) << text;
}

} // namespace
} // namespace zarvion::reduction
