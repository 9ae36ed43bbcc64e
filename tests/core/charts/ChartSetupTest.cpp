#include "ChartTestSupport.h"

#include "charts/ChartSetup.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;
using namespace std::string_literals;

namespace {

AxisFields axis(int mode, std::string hi, std::string lo, std::string major, std::string minor,
                bool show = true)
{
    return AxisFields{show, mode, std::move(hi), std::move(lo), std::move(major), std::move(minor),
                      3};
}

} // namespace

TEST(ChartSetup, ValidationMessagesInOrder)
{
    EXPECT_EQ((Strings{OutputFormat(1), OutputFormat(4), SetupCaption("run.pg")}),
              (Strings{"0.E+00", "0.000E+00", "Plot Setup run.pg"}));
    EXPECT_EQ((std::array{DigitsOfPattern("0.000E+00"), DigitsOfPattern("0.E+00"),
                          DigitsOfPattern("0.0#E+00", 7)}),
              (std::array{4, 1, 7}));

    const std::string xMajor = "Text4: The major tick number of the X-axis, please enter an "
                               "integer on the interval [1, 20].";
    const std::string xMinor = "Text5: The minor tick number of the X-axis, please enter an "
                               "integer on the interval [1, 10].";
    const AxisFields off = axis(AxisLinear, "?", "?", "?", "?", false); // not checked
    const AxisFields autoX = axis(AxisAuto, "x", "y", "z", "w");        // no bounds checked
    const AxisFields badX = axis(AxisLinear, "x", "1", "5", "2");
    const std::tuple<AxisFields, AxisFields, std::string> cases[] = {
        {badX, off, "Text2: Maximum X-axis value, please enter a number."},
        {axis(AxisLinear, "1", "", "5", "2"), off,
         "Text3: Minimum X-axis value, please enter a number."},
        {axis(AxisLinear, "1", "2", "5", "2"), off,
         "Text2: The maximum X-axis value is less than the minimum X-axis value. Enter correct "
         "values."},
        {axis(AxisLinear, "2", "1", "0", "2"), off, xMajor},
        {axis(AxisLinear, "2", "1", "21", "2"), off, xMajor},
        {axis(AxisLinear, "2", "1", "1.5", "2"), off, xMajor},
        {axis(AxisLinear, "2", "1", "many", "2"), off, xMajor},
        {axis(AxisLinear, "2", "1", "20", "0"), off, xMinor},
        {axis(AxisLinear, "2", "1", "20", "11"), off, xMinor},
        {axis(AxisLinear, "1", "1", "1", "10"), off, "ok"}, // equal bounds and tick limits pass
        // Ticks aren't looked at for a log axis; its minimum must be above 0.
        {axis(AxisLog, "10", "0", "x", "x"), off,
         "Text3: The X-axis contains negative values or 0, the logarithmic scale cannot be "
         "created."},
        {axis(AxisLog, "10", "1E-3", "x", "x"), off, "ok"},
        {autoX, off, "ok"},
        {badX, axis(AxisLinear, "?", "1", "1", "1"), "Text2: Maximum X-axis value, please enter "
                                                     "a number."}, // X before Y
        {autoX, axis(AxisLinear, "?", "1", "1", "1"),
         "Text9: Maximum Y-axis value, please enter a number."},
        {autoX, axis(AxisLinear, "3", "?", "1", "1"),
         "Text8: Minimum Y-axis value, please enter a number."},
        {autoX, axis(AxisLinear, "1", "2", "1", "1"),
         "Text9: The maximum Y-axis value is less than the minimum Y-axis value. Enter correct "
         "values."},
        {autoX, axis(AxisLinear, "3", "1", "25", "1"),
         "Text7: The major tick number of the Y-axis, please enter an integer on the interval "
         "[1, 20]."},
        {autoX, axis(AxisLinear, "2", "1", "3", "0"),
         "Text6: The minor tick number of the Y-axis, please enter an integer on the interval "
         "[1, 10]."},
        {off, axis(AxisLog, "3", "-1", "", ""),
         "Text8: The Y-axis contains negative values or 0, the logarithmic scale cannot be "
         "created."},
        {autoX, axis(AxisLog, "2", "x", "3", "0", false), "ok"},
    };
    for (const auto& [x, y, expected] : cases) {
        SetupFields f;
        f.x = x;
        f.y = y;
        const auto fault = ValidateSetup(f);
        EXPECT_EQ(fault ? fault->field + ": " + fault->message.text : "ok", expected);
        if (fault) {
            EXPECT_EQ(std::pair(fault->tab, fault->message.style),
                      std::pair(+AxesTab, +zarvion::shell::StyleWarning));
        }
    }
}

TEST(ChartSetup, FieldsOpenFromTheChart)
{
    ChartDocument c = RichChart(2, 3);
    c.xAxis = AxisSettings{1, 0.001, 2.5, 4, 2, false, "0.00E+00", NullValue};
    c.yAxis = AxisSettings{};
    c.subsets[0].y = {-4.0, 2.0, NullValue};
    c.subsets[1].y = {1.0, 8.5, 0.0};
    const SetupFields f = FillSetupFields(c);
    EXPECT_EQ(std::tuple(f.x.mode, f.x.maximum, f.x.minimum, f.x.majorTicks, f.x.digits),
              std::tuple(+AxisLinear, "2.5E+00"s, "1.E-03"s, "4"s, 3));
    // No bounds of its own: the data's range.
    EXPECT_EQ(std::tuple(f.y.mode, f.y.maximum, f.y.minimum),
              std::tuple(+AxisAuto, "8.5E+00"s, "-4.E+00"s));
    ASSERT_EQ(f.subsets.size(), 2u);
    EXPECT_EQ(f.subsets[1].label, c.subsets[1].label);

    ChartDocument mono = c;
    mono.Monochr();
    const SetupFields m = FillSetupFields(mono);
    EXPECT_TRUE(m.monochrome);
    EXPECT_EQ(m.colors, c.colors); // the true colours, not black and white
    EXPECT_EQ(m.subsets[0].color, c.subsets[0].color);
}

TEST(ChartSetup, ApplyWritesAndCancelRestores)
{
    ChartDocument c = RichChart(2, 3);
    c.mustSave = false;
    const ChartProperties before = c;
    ChartSetupSession session(c);
    session.fields.x = AxisFields{true, AxisLog, "100", "0.01", "", "", 5};
    session.fields.y = AxisFields{true, AxisLinear, "1", "2", "3", "4", 2};
    auto outcome = session.ToPlotOk();
    EXPECT_FALSE(outcome.ok);
    ASSERT_TRUE(outcome.fault);
    EXPECT_EQ(Props(c), before); // untouched until valid

    session.fields.y.minimum = "0";
    session.fields.colors.graphBackground = 0x00FF00;
    session.fields.annotationColor = 0x0000FF;
    session.fields.subsets[1].show = false;
    session.fields.subsets[1].color = 0x123123;
    session.fields.textSize = TextLarge;
    outcome = session.ToPlotOk(); // Apply
    ASSERT_TRUE(outcome.ok);
    EXPECT_EQ(
        std::tuple(c.xAxis.manualScale, c.xAxis.logScale, c.xAxis.manualMin, c.yAxis.majorTick),
        std::tuple(+AxisLog, true, 0.01, 3.0));
    EXPECT_EQ((Strings{c.xAxis.numberPattern, c.yAxis.numberPattern}),
              (Strings{"0.0000E+00", "0.0E+00"}));
    EXPECT_EQ((std::array{c.colors.graphBackground, c.annotations[100].color, c.subsets[1].color}),
              (std::array<Color, 3>{0x00FF00, 0x0000FF, 0x123123}));
    EXPECT_EQ(std::tuple(c.subsets[1].show, c.textSize, c.mustSave),
              std::tuple(false, +TextLarge, true));

    session.Cancel(); // after Apply, Cancel goes back to the opening state
    EXPECT_EQ(Props(c), before);
    EXPECT_FALSE(c.mustSave);
}

TEST(ChartSetup, MonochromeColoursGoToTheBackupAndCancelReturnsToMonochrome)
{
    ChartDocument c = RichChart(2, 3);
    const Color own = c.subsets[0].color;
    c.Monochr();
    const ChartDocument mono = c;
    ChartSetupSession session(c);
    session.fields.colors.deskBackground = 0x010101;
    session.fields.subsets[0].color = 0x020202;
    ASSERT_TRUE(session.ToPlotOk().ok);
    // Still black on white; the chosen colours wait in slots 2 and 7.
    EXPECT_EQ((std::array{c.colors.deskBackground, c.subsets[0].color, c.colorBackupSlot(2),
                          c.colorBackupSlot(7)}),
              (std::array<Color, 4>{0xFFFFFF, 0, 0x010101, 0x020202}));
    session.Cancel();
    EXPECT_TRUE(c.monochrome);
    EXPECT_EQ(c.colorBackupSlot(7), own);
    EXPECT_EQ(Props(c), Props(mono));
}
