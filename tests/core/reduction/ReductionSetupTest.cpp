// The set-up form of a reduction: defaults, field and table checks, paths, the request built
// at start, the saved settings file.

#include <gtest/gtest.h>

#include "core/reduction/TestFiles.h"
#include "reduction/ReductionSetup.h"
#include "shell/Error.h"

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

TEST_F(ReductionSetupTest, TableAndFieldChecks)
{
    // 0 and 1 pass although the texts name the open interval
    setup.SpeciesTable[0].parameter = "0";
    setup.SpeciesTable[1].parameter = "1";
    EXPECT_TRUE(CheckTabParam(setup).empty());
    for (const char* bad : {"1.5", "abc"}) {
        setup.SpeciesTable[2].parameter = bad;
        const SetupRefusal r = CheckTabParam(setup);
        EXPECT_EQ(r.message.text, "Bad value for the N2 parameter. If the species is a target, "
                                  "enter a number on the interval (0, 1). If the species is not "
                                  "a target, clear the table field.") << bad;
        EXPECT_EQ(r.row, 3);
    }
    setup.SpeciesTable[2].parameter = " ";

    setup.temperatureText = "warm";
    SetupRefusal r = RedTabGetF(setup);
    EXPECT_EQ(r.message.text, "Bad value for the temperature parameter. If temperature is a "
                              "target, enter a number on the interval (0, 1). If temperature is "
                              "not a target, clear the textbox.");
    EXPECT_EQ(r.field, 0);
    setup.temperatureText = "";
    for (const char* bad : {"", "-0.1"}) {
        setup.nonTargetText = bad;
        r = RedTabGetF(setup);
        EXPECT_EQ(r.message.text,
                  "Non target parameter, please enter a number on the interval (0, 1).") << bad;
        EXPECT_EQ(r.field, 1);
    }
    ClearAll(setup);
    setup.nonTargetText = "0.3";
    r = RedTabGetF(setup);
    EXPECT_EQ(r.message.text, "Cannot start because no targets have been specified. For targets "
                              "(temperature and/or species), enter parameters on the interval "
                              "(0,1).");
    EXPECT_EQ(r.message.style, 48);
}

TEST_F(ReductionSetupTest, PathsAndTrialWrite)
{
    const auto victim = WriteLines(dir / "victim.txt", {"keep me"});
    EXPECT_TRUE(TestRedFile(victim).empty());
    EXPECT_FALSE(std::filesystem::exists(victim)); // the trial destroys a file of that name
    EXPECT_EQ(TestRedFile(dir).text, "Reduced file, the specified Path/File name '" +
                                         dir.string() + "' cannot be accessed or is invalid.");

    setup.reducedPathText = setup.SourcePath;
    for (char& c : setup.reducedPathText) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    SetupRefusal r = CheckPreparePaths(setup);
    EXPECT_EQ(r.message.text, "The paths of the source and reduced files are identical; the "
                              "files should be different.");
    EXPECT_EQ(r.field, 5);
    setup.reducedPathText = (dir / "red.txt").string();
    setup.SourcePath = (dir / "none.txt").string();
    r = CheckPreparePaths(setup);
    EXPECT_EQ(r.message.text, "The specified Path/File name " + setup.SourcePath +
                                  " cannot be accessed or is invalid.");
    EXPECT_EQ(r.field, 10);
    setup.SourcePath = (dir / "src.txt").string();
    setup.reducedPathText = (dir / "no_such_folder" / "red.txt").string();
    EXPECT_EQ(CheckPreparePaths(setup).message.text,
              "Reduced file, the specified Path/File name '" + setup.reducedPathText +
                  "' cannot be accessed or is invalid.");
}

TEST_F(ReductionSetupTest, StartReadsAndWritesBackTheSettings)
{
    setup.intervalText = " 2.5 "; // rounds half to even
    setup.temperatureText = " 0.2 ";
    setup.nonTargetText = " .30 ";
    setup.SpeciesTable[2].parameter = " 0.5";
    ReductionRequest q;
    ASSERT_TRUE(BuildRequest(setup, q).empty());
    EXPECT_EQ(setup.intervalText, "2");
    EXPECT_EQ(q.interval, 2);
    EXPECT_EQ(setup.temperatureText, "0.2");
    EXPECT_DOUBLE_EQ(q.temperatureParameter, 0.2);
    EXPECT_EQ(setup.nonTargetText, "0.3");
    EXPECT_EQ(q.targetSpecies, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(q.speciesParameters, (std::vector<double>{0.1, 0.1, 0.5}));
    EXPECT_EQ(q.stepCount, 9);
    setup.temperatureText = "";
    ASSERT_TRUE(BuildRequest(setup, q).empty());
    EXPECT_EQ(q.temperatureParameter, -1.0);

    for (const char* bad : {"0", "-3", "", "x"}) {
        setup.intervalText = bad;
        const SetupRefusal r = BuildRequest(setup, q);
        EXPECT_EQ(r.message.text, "Interval of steps, please enter a positive integer. ") << bad;
        EXPECT_EQ(r.field, 2);
    }
    setup.intervalText = "1";
    setup.nonTargetText = "  ";
    EXPECT_EQ(BuildRequest(setup, q).field, 1);
    setup.nonTargetText = "0.3";
    setup.reducedPathText = (dir / "red.PG").string();
    EXPECT_EQ(BuildRequest(setup, q).message.text,
              "Reduced file, the specified Path/File name cannot be accessed or is invalid.");
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

} // namespace
} // namespace zarvion::reduction
