// The zarvion-cli commands reduce, chemkin and compare run as processes on a small solved file.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

#include "core/reduction/SmallMechanism.h"
#include "shell/TextFile.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

struct CliRun {
    int code = -1;
    std::string out;
};

//! Runs zarvion-cli with arguments; stderr joins stdout.
CliRun Cli(const std::string& arguments)
{
    const std::string command =
        "\"" + std::string(ZARVION_BIN_DIR) + "/zarvion-cli\" " + arguments + " 2>&1";
    CliRun run;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    std::array<char, 4096> buffer{};
    while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe)) {
        run.out += buffer.data();
    }
    const int status = pclose(pipe);
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

class CliReductionCommandsTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("cli_reduction");
    std::string source;
    void SetUp() override
    {
        if (!std::filesystem::exists(std::filesystem::path(ZARVION_BIN_DIR) / "zarvion-cli")) {
            GTEST_SKIP() << "zarvion-cli is not built in " << ZARVION_BIN_DIR;
        }
        source = (dir / "solved.txt").string();
        WriteLines(source, SolverFileLines({}, SmallSpecies(), SmallReactions(), BurningRows(6)));
    }
};

TEST_F(CliReductionCommandsTest, ReduceThenConvertAndCompare)
{
    const std::string out = (dir / "reduced.txt").string();
    CliRun r = Cli("reduce \"" + source + "\" -o \"" + out + "\" --target H2=0.1 --target XY=0.1");
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.out.find("no species 'XY'"), std::string::npos) << r.out;

    r = Cli("reduce \"" + source + "\" -o \"" + out + "\" --target H2=0.1 --every 0");
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.out.find("Interval of steps, please enter a positive integer. "), std::string::npos);

    r = Cli("reduce \"" + source + "\" -o \"" + out + "\" --target H2=0.1 --temperature 0.1");
    ASSERT_EQ(r.code, 0) << r.out;
    EXPECT_EQ(r.out.rfind("Reduced reaction mechanism has been created successfully. \nThe "
                          "mechanism consists of\n",
                          0),
              0U)
        << r.out;
    // six stored rows: the last is never analysed
    EXPECT_NE(r.out.find("rows analysed\t5\n"), std::string::npos) << r.out;
    const auto lines = shell::ReadLines(out);
    EXPECT_EQ(lines[11].substr(0, 10), " 2 -1 1 !T");

    r = Cli("chemkin \"" + out + "\"");
    ASSERT_EQ(r.code, 0) << r.out;
    EXPECT_NE(r.out.find("\n! Solver File:  " + out + "\n"), std::string::npos) << r.out;

    r = Cli("compare \"" + source + "\" \"" + source + "\"");
    ASSERT_EQ(r.code, 0) << r.out;
    EXPECT_EQ(r.out.substr(0, r.out.find('\n')), "#\tname\tN1\tN2\tnumber1\tnumber2");
    EXPECT_NE(r.out.find("\n1\tTemperature\t*\t*\t0\t0\n"), std::string::npos) << r.out;

    // identical files: every error vanishes and the refusal says so
    r = Cli("compare \"" + source + "\" \"" + source + "\" --species T --error");
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.out.find("You are attempting to plot a function where all values are zero."),
              std::string::npos)
        << r.out;

    // the reduced file holds no results yet
    r = Cli("compare \"" + source + "\" \"" + out + "\"");
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.out.find("In the file '" + out + "', results of calculation are not found."),
              std::string::npos)
        << r.out;

    r = Cli("compare \"" + source + "\" \"" + source + "\" --species OH");
    ASSERT_EQ(r.code, 0) << r.out;
    EXPECT_EQ(r.out.rfind("#  F1, OH (mol/cm^3)\nx\ty\n", 0), 0U) << r.out;
    EXPECT_NE(r.out.find("#  F2, OH (mol/cm^3)"), std::string::npos);
}

} // namespace
} // namespace zarvion::reduction
