// Layout of the appended results section: field format, record geometry at the 50-species line
// breaks, removal of an old section and the success and failure endings.

#include <gtest/gtest.h>

#include <limits>

#include "TestFiles.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "solverfile/ResultsWriter.h"

using namespace zarvion::solverfile;
using zarvion::testing::ScratchDir;

namespace {

std::vector<std::string> names(int n)
{
    std::vector<std::string> v;
    for (int i = 1; i <= n; ++i) v.push_back("S" + std::to_string(i));
    return v;
}

// 1-based column slice of a line.
std::string cols(const std::string& line, int first, int last)
{
    return line.substr(first - 1, last - first + 1);
}

} // namespace

TEST(FormatResultField, FixedWidthScientific)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double Inf = std::numeric_limits<double>::infinity();
    const std::string stars(16, '*');
    const std::pair<double, std::string> cases[] = {
        {0.123456789, " 1.234567890E-01"}, {-2000.0, "-2.000000000E+03"},
        {0.0, " 0.000000000E+00"}, {-0.0, " 0.000000000E+00"}, {1.5e-99, " 1.500000000E-99"},
        // Below 1E-99 in magnitude: zero, with a blank sign also for negative values.
        {9.9e-100, " 0.000000000E+00"}, {-3e-120, " 0.000000000E+00"},
        // Rounding to ten digits carries into the exponent.
        {9.9999999999e-5, " 1.000000000E-04"}, {1e99, " 1.000000000E+99"},
        // What cannot be written in 16 characters is starred, never widened.
        {1e100, stars}, {9.99999999999e99, stars}, {Nan, stars}, {-Inf, stars}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(FormatResultField(value), text) << value;
    }
}

TEST(FormatRecords, FirstLineGeometry)
{
    const auto head = FormatHeadRecord(names(3));
    const std::vector<double> y{0.25, -1e-12, 0.75};
    const auto row = FormatDataRecord(12, 1.5e-3, 1400.0, y, 2.5e-6);
    ASSERT_EQ(head.size(), 1u);
    ASSERT_EQ(row.size(), 1u);
    const std::string &h = head[0], &r = row[0];
    // Counter in columns 1-7, then 16-character fields each behind a blank: time, temperature,
    // one per species, and the step.
    EXPECT_EQ(h, std::string(7, ' ') + "         Time(s)" + "             T(K)" +
                     "               S1               S2               S3" + "          Step(s)");
    EXPECT_EQ(r, "     12 1.500000000E-03  1.400000000E+03  2.500000000E-01 -1.000000000E-12"
                 "  7.500000000E-01  2.500000000E-06");
}

TEST(FormatRecords, ContinuationLinesOfFifty)
{
    // Physical lines per record: 50 -> 1, 51 -> 2, 100 -> 2, 101 -> 3.
    const std::pair<int, std::size_t> cases[] = {{49, 1}, {50, 1}, {51, 2}, {100, 2}, {101, 3}};
    for (auto [ns, lines] : cases) {
        const auto head = FormatHeadRecord(names(ns));
        std::vector<double> y(ns);
        for (int i = 0; i < ns; ++i) y[i] = (i + 1) * 1e-3;
        const auto row = FormatDataRecord(1, 0, 300, y, 0);
        ASSERT_EQ(head.size(), lines) << ns;
        ASSERT_EQ(row.size(), lines) << ns;
        EXPECT_EQ(head[0].size(), 40u + 17 * std::min(ns, 50) + 17) << ns;
        for (std::size_t k = 1; k < lines; ++k) {
            const int onLine = std::min(50, ns - 50 * static_cast<int>(k));
            EXPECT_EQ(head[k].size(), 40u + 17 * onLine);
            EXPECT_EQ(row[k].size(), head[k].size());
            EXPECT_EQ(head[k].substr(0, 41), std::string(41, ' '));
            // Species 50k + 1 stands at columns 42-57 of line k + 1, like species 1 on line 1.
            const std::string name = "S" + std::to_string(50 * k + 1);
            EXPECT_EQ(cols(row[k], 42, 57), FormatResultField(y[50 * k])) << ns;
            EXPECT_EQ(cols(head[k], 42, 57), std::string(16 - name.size(), ' ') + name);
        }
        const int last = ns >= 50 ? 49 : 0; // species 50 ends line 1
        EXPECT_EQ(cols(row[0], 42 + 17 * last, 57 + 17 * last), FormatResultField(y[last]));
    }
    EXPECT_THROW(FormatHeadRecord(std::vector<std::string>{"ABCDEFGHIJKLMNOPQ"}), zarvion::Error);
}

TEST(InputSideText, CutsBehindEndLine)
{
    EXPECT_EQ(InputSideText("a\r\nEND\r\n\r\n!$Results   $$\r\nx\r\n", 2), "a\r\nEND\r\n");
    EXPECT_EQ(InputSideText("a\nEND\n\nold\n", 2), "a\nEND\n");
    EXPECT_EQ(InputSideText("a\r\nEND", 2), "a\r\nEND\r\n");
    EXPECT_THROW(InputSideText("a\r\n", 3), zarvion::Error);
}

TEST(ResultsWriter, SuccessfulRunReplacesOldSection)
{
    ScratchDir dir("results-ok");
    const std::string input = "line one\r\nREACTIONS\r\nEND\r\n";
    const auto file = dir.write(
        "case.txt", input + "\r\n!$Results   $$\r\nold rows\r\n!$END\r\nStatistics\r\nold\r\n");
    {
        ResultsWriter w(file, 3, names(2));
        const std::vector<double> y0{0.5, 0.5}, y1{0.4, 0.6};
        w.writeRow(0, 1000, y0, 0);
        w.writeRow(1e-3, 1100, y1, 1e-3);
        EXPECT_EQ(w.rowsWritten(), 2);
        w.finish({"Accepted steps: 12"});
    }
    const std::string text = zarvion::shell::ReadFile(file);
    ASSERT_EQ(text.substr(0, input.size()), input);
    const auto lines = zarvion::shell::SplitLines(text);
    ASSERT_EQ(lines.size(), 3u + 8);
    EXPECT_EQ(lines[3], "");
    EXPECT_EQ(lines[4], "!$Results   $$");
    EXPECT_EQ(lines[5], FormatHeadRecord(names(2))[0]);
    EXPECT_EQ(cols(lines[7], 1, 7), "      2");
    EXPECT_EQ(lines[8], "!$END");
    EXPECT_EQ(lines[9], "Statistics");
    EXPECT_EQ(lines[10], "Accepted steps: 12");
    EXPECT_EQ(text.find("old"), std::string::npos);
    EXPECT_EQ(zarvion::shell::JoinCrLf(lines), text); // every line ends in CR LF
}

TEST(ResultsWriter, FailedRunKeepsRowsAndWritesError)
{
    ScratchDir dir("results-fail");
    const auto file = dir.write("case.txt", "x\r\nEND\r\n");
    ResultsWriter w(file, 2, names(51));
    w.writeRow(0, 900, std::vector<double>(51, 1.0 / 51), 0);
    // Before the end is written, the table so far is already on disk.
    auto partial = zarvion::shell::ReadLines(file);
    ASSERT_EQ(partial.size(), 2u + 2 + 2 + 2);
    EXPECT_EQ(partial.back().size(), 40u + 17);
    w.fail("Temperature outside the allowable interval", {"T = 3.5E+03 K at t = 1.0E-03 s"});
    const auto lines = zarvion::shell::ReadLines(file);
    ASSERT_EQ(lines.size(), partial.size() + 2);
    EXPECT_EQ(lines[lines.size() - 2], "ERROR Temperature outside the allowable interval");
    for (const auto& l : lines) EXPECT_NE(l, "!$END");
}
