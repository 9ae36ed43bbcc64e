#include "shell/AtomicFile.h"
#include "shell/DelimitedRead.h"
#include "shell/SessionState.h"

#include "ShellTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

using namespace zarvion::shell;
namespace fs = std::filesystem;

namespace {

//! A program folder with an AssistFiles folder holding the given OPTIONS.txt.
fs::path makeAppFolder(const TempFolder& dir, const std::string& options)
{
    fs::create_directories(dir.path() / "AssistFiles");
    WriteFileAtomically(dir.path() / "AssistFiles" / "OPTIONS.txt", options);
    return dir.path();
}

auto constants(SessionState& s)
{
    return std::tie(s.GasConstantJ, s.GasConstantCal, s.AvogadroNumber, s.BoltzmannConstant,
                    s.AtmosphereDyn, s.ElectronMass, s.FrameOption);
}

//! A state whose constants are sentinels, to see that a failed read leaves them alone.
SessionState sentinelState()
{
    SessionState s;
    constants(s) = std::make_tuple(-1.0, -2.0, -3.0, -4.0, -5.0, -7.0, -6);
    return s;
}

const std::string ElevenIgnored = "\"a, with comma\",x,3,4,5,6,7,8,9,10,\"eleven\"\r\n";

} // namespace

TEST(MDILoadConstants, FillsTheSessionConstants)
{
    SessionState s;
    s.TextSize = 3;
    s.LineBlock = 7;
    MDILoadConstants(s);
    EXPECT_NEAR(s.Ln10, 2.302585092994046, 1e-15); // ln 10 to 16 digits
    EXPECT_EQ(s.LineBlock, 1000);
    EXPECT_EQ(s.TextSize, 11);
    EXPECT_EQ(QBColorRgb(s.SelectionColour), 0xFFFF00u); // standard colour 14: light yellow
    EXPECT_EQ(QBColorRgb(s.HighlightColour), 0x0000FFu); // standard colour 9: light blue
    EXPECT_EQ(QBColorRgb(16 + 4), QBColorRgb(4));
}

TEST(OptionOpen, ReadsTheShippedFile)
{
    SessionState s;
    const fs::path app = ZARVION_SOURCE_DIR;
    const Message m = OptionOpen(s, app);
    ASSERT_TRUE(m.empty()) << m.text;
    EXPECT_EQ(s.AppPath, app.string());
    EXPECT_EQ(s.AssistPath, app.string() + "/AssistFiles/");
    // CODATA 2018 values, exact as written in the file.
    EXPECT_EQ(s.GasConstantJ, 8.314462618);
    EXPECT_EQ(s.GasConstantCal, 1.987204259);
    EXPECT_EQ(s.AvogadroNumber, 6.02214076e23);
    // 1.380649E-23 J/K = 1.380649E-16 erg/K; 101.325 kPa = 1013250 dyn/cm^2 (1 Pa = 10 dyn/cm^2).
    EXPECT_NEAR(s.BoltzmannConstant, 1.380649e-16, 1e-30);
    EXPECT_NEAR(s.AtmosphereDyn, 1013250.0, 1e-8);
    // Consistency of the shipped constants: k = R / N_A to 9 digits.
    EXPECT_NEAR(s.GasConstantJ / s.AvogadroNumber, 1.380649e-23, 1e-32);
    EXPECT_EQ(s.ElectronMass, 0.00054858);
    EXPECT_EQ(s.FrameOption, 0);
}

TEST(OptionOpen, AcceptsOneLineAndConvertsTheOption)
{
    TempFolder dir;
    const fs::path app = makeAppFolder(dir, ElevenIgnored + "1,2,3,4.5,6, 2.5 ");
    SessionState s = sentinelState();
    ASSERT_TRUE(OptionOpen(s, app).empty());
    EXPECT_EQ(s.GasConstantJ, 1);
    EXPECT_EQ(s.AvogadroNumber, 3);
    EXPECT_NEAR(s.BoltzmannConstant, 4.5e7, 1e-7);  // J/K times 1E7
    EXPECT_NEAR(s.AtmosphereDyn, 60000.0, 1e-9);    // kPa times 1E4
    EXPECT_EQ(s.FrameOption, 2);                    // 2.5 rounds half to even
}

TEST(OptionOpen, RefusesBadFilesAndKeepsTheConstants)
{
    const std::string expected = "Error in the OPTIONS.txt file. In the file group of Zarvion-I, "
                                 "use the OPTIONS.txt file  to set correct values.";
    const std::vector<std::string> bad = {
        ElevenIgnored + "1,2,3,4,5",             // only 16 values
        ElevenIgnored + "1,2,abc,4,5,0",         // a constant that is no number
        ElevenIgnored + "1,2,3,4,5,1E12",        // option beyond a 32-bit integer
        ElevenIgnored + "1,2,3,,5,0",            // an empty value
        ElevenIgnored + "1,2,3,4,5,\"zero\"",    // option that is text
        "",
    };
    SessionState sentinel = sentinelState();
    for (const auto& content : bad) {
        TempFolder dir;
        const fs::path app = makeAppFolder(dir, content);
        SessionState s = sentinelState();
        const Message m = OptionOpen(s, app);
        EXPECT_EQ(m.text, expected) << content;
        EXPECT_EQ(m.style, StyleCritical);
        EXPECT_EQ(m.title, "ZARVION");
        EXPECT_EQ(constants(s), constants(sentinel)) << content;
        EXPECT_EQ(s.AssistPath, app.string() + "/AssistFiles/"); // paths are set regardless
    }
    TempFolder empty;
    SessionState s = sentinelState();
    EXPECT_EQ(OptionOpen(s, empty.path()).text, expected); // no file at all
    EXPECT_EQ(constants(s), constants(sentinel));
}

TEST(CheckNumberFormat, ChecksTheConversionInUse)
{
    const std::string tail =
        " The next message contains an information about setting the number format.";
    const std::string sign = "Negative sign of the number format isn't recognized; set the ' - ' "
                             "symbol as negative sign." + tail;
    const std::string decimal = "Decimal symbol of the number format isn't recognized; Zarvion "
                                "requires the point as the decimal symbol. " + tail;
    EXPECT_EQ(CheckNumberFormat(), ""); // the program's own conversion passes
    const std::pair<const char*, std::string> cases[] = {
        {" -1058201048.57143 ", ""}, {"-1058201048,57143", decimal},
        {"(1058201048.57143)", sign}, {"1058201048.57143-", sign},
        {"-1.058.201.048.57143",
         "In the number format, the digit grouping is used; delete this format feature." + tail},
        {"(1.058.201.048,57)", decimal}, // a comma wins over everything else
    };
    for (const auto& [text, message] : cases) {
        EXPECT_EQ(CheckNumberFormat([t = std::string(text)](double) { return t; }), message)
            << text;
    }
    // The probe value is 1234567890 / 7 - 1234567890.
    double seen = 0;
    CheckNumberFormat([&seen](double v) { seen = v; return std::string("-1"); });
    EXPECT_NEAR(seen, -1058201048.5714286, 1e-6);
}

TEST(ReportError, ComposesTheTexts)
{
    SessionState s;
    const Message m = ReportError(s, "Sol#302. ", "Overflow");
    EXPECT_EQ(s.LastError, "Sol#302. Overflow");
    EXPECT_EQ(m.text, "Sol#302. Overflow");
    EXPECT_EQ(m.style, StyleWarning);
    EXPECT_EQ(m.title, "");
    EXPECT_EQ(DialogErrorText(53, "File not found"),
              "The following error has occurred:\r\nErr # 53 - File not found");
}

TEST(AuxiliaryFiles, TotOpnErrAndCursorFilesCheck)
{
    TempFolder dir;
    const fs::path missing = dir.path() / "OPTIONS.txt";
    Message m = TotOpnErr(missing);
    EXPECT_EQ(m.text, "The auxiliary file " + missing.string() +
                          " not found or cannot be processed. The program has been terminated.");
    EXPECT_EQ(m.style, StyleCritical);
    EXPECT_EQ(TotOpnErr(dir.path()).text.substr(0, 19), "The auxiliary file ");
    WriteFileAtomically(missing, "x");
    EXPECT_TRUE(TotOpnErr(missing).empty());
    fs::permissions(missing, fs::perms::owner_read | fs::perms::group_read |
                                 fs::perms::others_read);
    m = TotOpnErr(missing);
    EXPECT_EQ(m.text, "File " + missing.string() +
                          " is read-only, remove this attribute. The program has been terminated.");
    EXPECT_EQ(m.title, "ZARVION");

    EXPECT_TRUE(CursorFiles_Check(std::string(ZARVION_SOURCE_DIR) + "/AssistFiles/").empty());
    const std::string assist = dir.path().string() + "/";
    WriteFileAtomically(dir.path() / "Dragcopy.cur", "x");
    m = CursorFiles_Check(assist);
    EXPECT_EQ(m.text, "The auxiliary file " + (dir.path() / "MISC05.ICO").string() +
                          " not found. \r\nThe program has been terminated.");
    EXPECT_EQ(m.style, StyleCritical);
    // A loader that cannot decode the cursor names the cursor first.
    m = CursorFiles_Check(assist,
                          [](const fs::path& p) { return p.filename() != "Dragcopy.cur"; });
    EXPECT_NE(m.text.find("Dragcopy.cur not found."), std::string::npos);
}

TEST(TemporaryFiles, RemovedAtExitOnlyTheListedOnes)
{
    TempFolder dir;
    SessionState s;
    SetPaths(s, dir.path().string() + "/");
    EXPECT_EQ(s.AppPath, dir.path().string()); // no trailing separator kept
    fs::create_directories(s.AssistPath);
    const fs::path assist = s.AssistPath;
    for (const char* name : {"ZARA03.TMP", "ZARA02.TMP", "TmpPlot.txt", "SolverData.txt"}) {
        WriteFileAtomically(assist / name, "x");
    }
    WriteFileAtomically(dir.path() / "SOLTMP.txt", "x");
    EXPECT_EQ(TemporaryFilesRemovedAtExit(s).size(), 4u);
    RemoveTemporaryFiles(s); // ZARM01.TMP is absent: no complaint
    for (const fs::path& gone : {assist / "ZARA03.TMP", assist / "ZARA02.TMP",
                                 dir.path() / "SOLTMP.txt"}) {
        EXPECT_FALSE(fs::exists(gone)) << gone;
    }
    EXPECT_TRUE(fs::exists(TmpPlotPath(s)));
    EXPECT_TRUE(fs::exists(SolverDataPath(s)));
}

TEST(DelimitedRead, FieldsQuotesAndLineEnds)
{
    using V = std::vector<std::string>;
    const std::pair<const char*, V> cases[] = {
        {"a, b ,c\r\nd", {"a", "b", "c", "d"}}, {"\"x, y\" , 2\n\n3", {"x, y", "2", "3"}},
        {"a,,b", {"a", "", "b"}},               {"a,", {"a", ""}},
        {"\"unterminated", {"unterminated"}},   {"", {}},
        {"\r\n\n", {}},                         {"\"q\"junk,next", {"q", "next"}},
        {"/home/u/my file.txt\r\n", {"/home/u/my file.txt"}},
    };
    for (const auto& [input, expected] : cases) {
        V texts;
        for (const auto& f : ReadDelimited(input)) texts.push_back(f.text);
        EXPECT_EQ(texts, expected) << input;
    }
    EXPECT_TRUE(ReadDelimited("\"s\",1")[0].quoted);
    EXPECT_FALSE(ReadDelimited("\"s\",1")[1].quoted);

    const std::vector<DelimitedField> fields = {{"a, b", true}, {"1.5", false}, {"", true}};
    const auto back = ReadDelimited(WriteDelimited(fields));
    ASSERT_EQ(back.size(), 3u);
    EXPECT_EQ(back[0].text, "a, b");
    EXPECT_EQ(back[1].text, "1.5");
    EXPECT_TRUE(back[2].quoted);
}
