// Both results readers on the hand-written toy files, edited copies of them, and generated
// files of 49, 50, 51, 100 and 101 species.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

#include "LargeResultsFile.h"
#include "postprocessor/ResultsReader.h"
#include "shell/Error.h"

using namespace zarvion;
using namespace zarvion::postprocessor;
using ReaderForm::MenuForm;
using ReaderForm::SOL_RESX;

namespace {

std::string dataFile(const std::string& name)
{
    return std::string(ZARVION_SOURCE_DIR) + "/tests/data/" + name;
}

std::string fileText(const std::string& name)
{
    std::ifstream in(dataFile(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// CODATA 2018: N_A = 6.02214076E23 /mol, k = 1.380649E-16 erg/K, 1 atm = 1013250 dyn/cm^2,
// so R = N_A k / atm = 82.0573660809597 cm^3 atm/(mol K), the constant of every density below.
const PhysicalConstants Codata{};
constexpr double Rgd = 82.0573660809597;

ResultSet readFile(const std::string& name, ReaderForm form, ReadOutcome& outcome)
{
    return OPEN_Rich(dataFile(name), form, Codata, outcome);
}

ResultSet readText(const std::string& text, ReaderForm form, ReadOutcome& outcome,
                   const std::string& name = "/tmp/edited.txt")
{
    return ReadResultsText(text, name, form, Codata, outcome);
}

//! The toy results text with line lineNo (1-based) replaced by text, or text inserted before
//! it when keep is set.
std::string editedToy(int lineNo, const std::string& text, bool keep = false)
{
    const std::string all = fileText("toy_results.txt");
    std::size_t start = 0;
    for (int n = 1; n < lineNo; ++n) start = all.find("\r\n", start) + 2;
    const std::size_t end = keep ? start : all.find("\r\n", start) + 2;
    return all.substr(0, start) + text + "\r\n" + all.substr(end);
}

// Line numbers of tests/data/toy_results.txt.
constexpr int ReactionsEnd = 81;
constexpr int ResultsLine = 83;
constexpr int HeadLine = 84;

//! Column c of a rebuilt row: 16 characters from 17c + 1, clipped at the row's end.
std::string window(const std::string& row, int column)
{
    return row.size() > static_cast<std::size_t>(17 * column) ? row.substr(17 * column, 16) : "";
}

} // namespace

TEST(ResultsReader, MenuFormReadsTheToyTable)
{
    ReadOutcome outcome;
    const ResultSet set = readFile("toy_results.txt", MenuForm, outcome);
    ASSERT_FALSE(outcome.failed) << outcome.message.text;
    EXPECT_EQ(outcome.caption, "Solver File  toy_results.txt");
    // Counts: species, columns, reactions, temperature mode, rows with the head.
    EXPECT_EQ(std::tie(set.SpeciesCount, set.columnCount, set.ReactionCount, set.TemperatureMode,
                       set.rowCount),
              std::tuple(4, 7, 5, 1, 7));
    EXPECT_EQ(set.finalTimeText, "1.0E-03");
    EXPECT_DOUBLE_EQ(set.initialTemperature, 1200.0);
    EXPECT_DOUBLE_EQ(set.zeroThreshold, 1.0e-14); // 0.01 x 1E-12
    EXPECT_DOUBLE_EQ(set.GasConstantEnergy, 1.987204259);
    EXPECT_EQ(set.elementNames, (std::vector<std::string>{"e", "H", "O", "AR"}));
    EXPECT_EQ(set.speciesComposition[2], "H 1 O 2 ");
    EXPECT_EQ(set.ReactionTexts[1], "H+O2(+M)=HO2(+M)");
    EXPECT_EQ(set.ReactionInts[2][15], 2);
    EXPECT_DOUBLE_EQ(set.molecularWeight(4), 39.948);
    EXPECT_EQ(set.columnNames,
              (std::vector<std::string>{"Time(s)", "T(K)", "Ro", "H", "O2", "HO2", "AR"}));
    ASSERT_EQ(set.rows.size(), 7u);

    // Head: time and temperature titles, "Ro mass" in 17 columns, the species titles.
    EXPECT_EQ(set.rows[0].substr(34, 17), "Ro mass          ");
    EXPECT_EQ(window(set.rows[0], 6), "              AR");
    // Data row 1: pure argon at 1200 K and 1 atm, rho = W P / (R T)
    // = 39.948 / (82.0573660809597 x 1200) = 4.056917933E-04 g/cm^3 (hand calculation).
    EXPECT_NEAR(set.density[1], 4.056917933139e-4, 1e-15);
    // The last column's window is clipped: the row ends there.
    EXPECT_EQ((std::vector{window(set.rows[1], 0), window(set.rows[1], 1), window(set.rows[1], 2),
                           window(set.rows[1], 6)}),
              (std::vector<std::string>{" 0.000000000E+00", " 1.200000000E+03", "   4.0569179E-04",
                                        "1.000000000E+00"}));
    // Row 3 holds HO2 = -1E-3: the density sees the sign,
    // 1 / (R T sum y/W) with sum = .002/1.00797 + .17/31.9988 - .001/33.00677 + .829/39.948
    // at T = 1203.25 K gives 3.61476986E-04 (with +1E-3 it would be 3.6069693E-04).
    EXPECT_NEAR(set.density[3], 3.6147698604e-4, 1e-13);
    // ... while the grid window shows its magnitude, the sign one character to the left.
    EXPECT_EQ(window(set.rows[3], 5), "1.000000000E-03 ");
    EXPECT_EQ(set.rows[3][17 * 5 - 1], '-');

    ASSERT_EQ(set.stepSize.size(), 7u);
    EXPECT_DOUBLE_EQ(set.stepSize[2], 1.0e-5);
    EXPECT_DOUBLE_EQ(set.stepSize[6], 9.0e-4);
    EXPECT_DOUBLE_EQ(set.timeBegin, 0.0);
    EXPECT_DOUBLE_EQ(set.timeEnd, 1.0e-3);

    // The window text: the table cut from "!$Results" up to "Statistics".
    const std::string text = fileText("toy_results.txt");
    EXPECT_EQ(set.fileText, text.substr(0, text.find("!$Results")) +
                                text.substr(text.find("Statistics")));
    EXPECT_FALSE(set.terminatedEarly);
}

TEST(ResultsReader, SolResxDropsTheStepColumnAndReadsWithoutMark)
{
    ReadOutcome menuOutcome, outcome;
    const ResultSet menu = readFile("toy_results.txt", MenuForm, menuOutcome);
    const ResultSet resx = readFile("toy_results.txt", SOL_RESX, outcome);
    ASSERT_FALSE(outcome.failed);
    EXPECT_EQ(outcome.caption, "Solver toy_results.txt");
    EXPECT_EQ(resx.rows, menu.rows);
    EXPECT_TRUE(resx.stepSize.empty());

    // The same table without "$$" and without step column: SOL_RESX accepts it and
    // builds the same rows; MenuForm refuses through the common reporter.
    const ResultSet plain = readFile("toy_no_marker.txt", SOL_RESX, outcome);
    ASSERT_FALSE(outcome.failed);
    EXPECT_EQ(plain.rows, menu.rows);
    readFile("toy_no_marker.txt", MenuForm, outcome);
    EXPECT_TRUE(outcome.failed);
    EXPECT_TRUE(outcome.viaReportError);
    EXPECT_EQ(outcome.message.text, "Please run the Zarvion-II solver with the examined file to "
                                    "create output in the required format.");
    // A step column read without the mark stays in the row: its first line is then 17
    // characters longer, and the step's field becomes one more column of the grid.
    const ResultSet kept = readText(editedToy(ResultsLine, "!$Results"), SOL_RESX, outcome);
    ASSERT_FALSE(outcome.failed);
    EXPECT_EQ(window(kept.rows[6], 7), "9.000000000E-04");
}

TEST(ResultsReader, RefusalsOfBothForms)
{
    // Each real file read by both forms: the exact refusal of each.
    const struct {
        const char* file;
        const char* menu;
        const char* resx;
    } cases[] = {
        {"toy_mechanism.txt", " there is no output data.",
         ", the results of calculation are not found."},
        {"toy_results_2rows.txt", ", the output data is incomplete.",
         ", the results of calculation are incomplete."},
    };
    ReadOutcome outcome;
    for (const auto& c : cases) {
        const std::string path = dataFile(c.file);
        OPEN_Rich(path, MenuForm, Codata, outcome);
        EXPECT_TRUE(outcome.failed);
        EXPECT_FALSE(outcome.viaReportError);
        EXPECT_EQ(outcome.message.text, "In the file " + path + c.menu);
        EXPECT_EQ(outcome.message.style, 48);
        OPEN_Rich(path, SOL_RESX, Codata, outcome);
        EXPECT_TRUE(outcome.failed);
        EXPECT_EQ(outcome.message.text, "In the file " + path + c.resx);
    }
    // Three data rows are enough; "$name" names a temporary run in the caption.
    EXPECT_EQ(readFile("toy_results_3rows.txt", MenuForm, outcome).rowCount, 4);
    ReadResultsText(fileText("toy_results_3rows.txt"), "$run 7", SOL_RESX, Codata, outcome);
    EXPECT_EQ(outcome.caption, "Solver run 7");
    EXPECT_FALSE(outcome.failed);

    // "!$Results" at the very start of the text does not count as found.
    ReadResultsText("!$Results $$\r\n", "x", MenuForm, Codata, outcome);
    EXPECT_EQ(outcome.message.text, "In the file x there is no output data.");
    // ERROR right behind the reactions, or as the first line of the table: empty table.
    readText(editedToy(ReactionsEnd + 1, "ERROR: no start"), MenuForm, outcome, "f");
    EXPECT_EQ(outcome.message.text, "In the file f, the output data is incomplete.");
    readText(editedToy(HeadLine, "error in head"), SOL_RESX, outcome, "g");
    EXPECT_EQ(outcome.message.text, "In the file g, the results of calculation are incomplete.");
}

TEST(ResultsReader, TerminatedAndErrorRuns)
{
    ReadOutcome outcome;
    const ResultSet cut = readFile("toy_terminated.txt", MenuForm, outcome);
    ASSERT_FALSE(outcome.failed);
    EXPECT_EQ(cut.rowCount, 6);
    EXPECT_TRUE(cut.terminatedEarly);
    const std::string text = fileText("toy_terminated.txt");
    EXPECT_EQ(cut.fileText, text.substr(0, text.find("!$Results")) +
                                "The solver was terminated at the time point 0.0001\r\n"
                                "; the endpoint 1.0E-03 was not achieved.\r\n");

    const ResultSet failedRun = readFile("toy_error.txt", MenuForm, outcome);
    ASSERT_FALSE(outcome.failed);
    EXPECT_TRUE(outcome.errorFound);
    EXPECT_FALSE(outcome.statisticsFound);
    EXPECT_EQ(failedRun.rowCount, 5);
    EXPECT_FALSE(failedRun.terminatedEarly);
    EXPECT_EQ(failedRun.fileText, fileText("toy_error.txt"));
}

TEST(ResultsReader, LineRulesEndTheTable)
{
    ReadOutcome outcome;
    // A record one character longer ends the table; the records before it stand.
    const std::string longer = editedToy(
        HeadLine + 5, "      5 1.000000000E-04  1.225000000E+03  2.500000000E-03  1.500000000E-01  "
                      "4.750000000E-02  8.000000000E-01  5.000000000E-05 ");
    EXPECT_EQ(readText(longer, MenuForm, outcome).rowCount, 5);
    // A last record cut by the end of the file is dropped without a message.
    std::string cut = fileText("toy_terminated.txt");
    cut.resize(cut.size() - 40);
    EXPECT_EQ(readText(cut, MenuForm, outcome).rowCount, 5);
    EXPECT_FALSE(outcome.failed);
    // Blank lines between records are skipped; "!$END" ends the table.
    const ResultSet withBlanks =
        readText(editedToy(HeadLine + 2, "\r\n   ", true), MenuForm, outcome);
    EXPECT_EQ(withBlanks.rowCount, 7);
    EXPECT_EQ(window(withBlanks.rows[2], 1), " 1.201500000E+03");
    EXPECT_EQ(readText(editedToy(HeadLine + 4, "!$end"), MenuForm, outcome).rowCount, 4);
    // A field of stars counts as zero in the density sum: row 1 is then pure argon
    // at 1201.5 K with 0.799 of it, rho = 1 / (R T 0.799 / 39.948), as in the hand formula.
    const std::string stars = editedToy(
        HeadLine + 2, "      2 1.000000000E-05  1.201500000E+03 **************** **************** "
                      "****************  7.990000000E-01  1.000000000E-05");
    const ResultSet s = readText(stars, MenuForm, outcome);
    ASSERT_FALSE(outcome.failed);
    EXPECT_NEAR(s.density[2], 1.0 / (Rgd * 1201.5 * 0.799 / 39.948), 1e-15);
}

TEST(ResultsReader, BrokenInputSideThrows)
{
    ReadOutcome outcome;
    EXPECT_THROW(readText(editedToy(10, " 4 Species"), MenuForm, outcome), ParseError);
    // Line 28 is read, by its first token, by MenuForm only.
    EXPECT_NO_THROW(readText(editedToy(28, " 1"), MenuForm, outcome));
    const std::string noBang = editedToy(28, " x !Delta N");
    EXPECT_THROW(readText(noBang, MenuForm, outcome), ParseError);
    EXPECT_NO_THROW(readText(noBang, SOL_RESX, outcome));
    EXPECT_FALSE(outcome.failed);
}

class LargeResults : public ::testing::TestWithParam<int> {};

TEST_P(LargeResults, EverySpeciesColumnOnTheGrid)
{
    using namespace zarvion::testing;
    const int ns = GetParam(), rows = 5;
    ReadOutcome outcome;
    for (ReaderForm form : {MenuForm, SOL_RESX}) {
        const ResultSet set =
            ReadResultsText(LargeResultsFile(ns, rows), "large.txt", form, Codata, outcome);
        ASSERT_FALSE(outcome.failed) << outcome.message.text;
        ASSERT_EQ(set.rowCount, rows + 1);
        ASSERT_EQ(static_cast<int>(set.columnNames.size()), ns + 3);
        EXPECT_EQ(set.columnNames[ns + 2], "S" + std::to_string(ns));
        for (int k = 1; k <= rows; ++k) {
            const std::string& row = set.rows[k];
            // The last species' window reaches one character past the row's end.
            ASSERT_EQ(row.size(), static_cast<std::size_t>(17 * (ns + 3) - 2)) << "row " << k;
            EXPECT_DOUBLE_EQ(std::stod(window(row, 0)), LargeFileTime(k));
            EXPECT_DOUBLE_EQ(std::stod(window(row, 1)), LargeFileTemperature(k));
            double sum = 0;
            for (int i = 1; i <= ns; ++i) {
                const double written = LargeFileValue(k, i);
                sum += written / LargeFileWeight(i);
                // The field was written with 10 significant digits: relative 5E-10.
                EXPECT_NEAR(std::stod(window(row, i + 2)), std::fabs(written),
                            5e-10 * std::fabs(written))
                    << "row " << k << " species " << i;
                EXPECT_EQ(row[17 * (i + 2) - 1], written < 0 ? '-' : ' ');
            }
            // Ideal gas: rho = P / (R T sum y/W) with P = 2 atm; tolerance for the
            // 10-digit fields.
            const double rho = 2.0 / (Rgd * LargeFileTemperature(k) * sum);
            EXPECT_NEAR(set.density[k], rho, 1e-8 * rho);
            EXPECT_NEAR(std::stod(window(row, 2)), rho, 1e-7 * rho);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(SpeciesCounts, LargeResults, ::testing::Values(49, 50, 51, 100, 101));
