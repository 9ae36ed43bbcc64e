#include "ChartTestSupport.h"

#include "charts/ChartSetup.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

namespace {

SetupFields linearX(const std::string& hi, const std::string& lo, const std::string& major,
                    const std::string& minor)
{
    SetupFields f;
    f.x = AxisFields{true, AxisLinear, hi, lo, major, minor, 3};
    f.y.show = false;
    return f;
}

std::string faultText(const SetupFields& f)
{
    const auto fault = ValidateSetup(f);
    return fault ? fault->field + ": " + fault->message.text : std::string("ok");
}

} // namespace

TEST(ChartSetup, OutputFormatAndDigits)
{
    EXPECT_EQ(OutputFormat(1), "0.E+00");
    EXPECT_EQ(OutputFormat(4), "0.000E+00");
    EXPECT_EQ(DigitsOfPattern("0.000E+00"), 4);
    EXPECT_EQ(DigitsOfPattern("0.E+00"), 1);
    EXPECT_EQ(DigitsOfPattern("0.0#E+00", 7), 7);
    EXPECT_EQ(SetupCaption("run.pg"), "Plot Setup run.pg");
}

TEST(ChartSetup, ValidationMessagesInOrder)
{
    EXPECT_EQ(faultText(linearX("x", "1", "5", "2")),
              "Text2: Maximum X-axis value, please enter a number.");
    EXPECT_EQ(faultText(linearX("1", "", "5", "2")),
              "Text3: Minimum X-axis value, please enter a number.");
    EXPECT_EQ(faultText(linearX("1", "2", "5", "2")),
              "Text2: The maximum X-axis value is less than the minimum X-axis value. "
              "Enter correct values.");
    for (const char* major : {"0", "21", "1.5", "many"}) {
        EXPECT_EQ(faultText(linearX("2", "1", major, "2")),
                  "Text4: The major tick number of the X-axis, please enter an integer on the "
                  "interval [1, 20].")
            << major;
    }
    for (const char* minor : {"0", "11"}) {
        EXPECT_EQ(faultText(linearX("2", "1", "20", minor)),
                  "Text5: The minor tick number of the X-axis, please enter an integer on the "
                  "interval [1, 10].")
            << minor;
    }
    EXPECT_EQ(faultText(linearX("1", "1", "1", "10")), "ok"); // equal bounds pass

    SetupFields log = linearX("10", "0", "x", "x"); // ticks aren't looked at for a log axis
    log.x.mode = AxisLog;
    EXPECT_EQ(faultText(log), "Text3: The X-axis contains negative values or 0, the "
                              "logarithmic scale cannot be created.");
    log.x.minimum = "-1";
    EXPECT_EQ(faultText(log).substr(0, 6), "Text3:");
    log.x.minimum = "1E-3";
    EXPECT_EQ(faultText(log), "ok");

    SetupFields autoAxis = linearX("x", "y", "z", "w");
    autoAxis.x.mode = AxisAuto; // no bounds checked
    EXPECT_EQ(faultText(autoAxis), "ok");
    autoAxis.x.show = true;
    autoAxis.y = AxisFields{true, AxisLinear, "1", "2", "1", "1", 3};
    EXPECT_EQ(faultText(autoAxis), "Text9: The maximum Y-axis value is less than the minimum "
                                   "Y-axis value. Enter correct values.");
    autoAxis.y = AxisFields{true, AxisLinear, "2", "1", "3", "0", 3};
    EXPECT_EQ(faultText(autoAxis), "Text6: The minor tick number of the Y-axis, please enter an "
                                   "integer on the interval [1, 10].");
    autoAxis.y = AxisFields{true, AxisLog, "2", "x", "3", "0", 3};
    EXPECT_EQ(faultText(autoAxis), "Text8: Minimum Y-axis value, please enter a number.");
    autoAxis.y.show = false;
    EXPECT_EQ(faultText(autoAxis), "ok");
    const auto fault = ValidateSetup(linearX("x", "1", "5", "2"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->tab, AxesTab);
    EXPECT_EQ(fault->message.style, zarvion::shell::StyleWarning);
}

TEST(ChartSetup, YAxisHasTheSameSixRules)
{
    auto yFault = [](AxisFields y) {
        SetupFields f;
        f.x.show = false;
        f.y = std::move(y);
        return faultText(f);
    };
    EXPECT_EQ(yFault({true, AxisLinear, "?", "1", "1", "1", 3}),
              "Text9: Maximum Y-axis value, please enter a number.");
    EXPECT_EQ(yFault({true, AxisLinear, "3", "?", "1", "1", 3}),
              "Text8: Minimum Y-axis value, please enter a number.");
    EXPECT_EQ(yFault({true, AxisLinear, "3", "1", "25", "1", 3}),
              "Text7: The major tick number of the Y-axis, please enter an integer on the "
              "interval [1, 20].");
    EXPECT_EQ(yFault({true, AxisLinear, "3", "1", "2", "11", 3}),
              "Text6: The minor tick number of the Y-axis, please enter an integer on the "
              "interval [1, 10].");
    EXPECT_EQ(yFault({true, AxisLog, "3", "-1", "", "", 3}),
              "Text8: The Y-axis contains negative values or 0, the logarithmic scale cannot be "
              "created.");
}

TEST(ChartSetup, FieldsOpenFromTheChart)
{
    ChartDocument c = RichChart(2, 3);
    c.xAxis = AxisSettings{1, 0.001, 2.5, 4, 2, false, "0.00E+00", NullValue};
    c.yAxis = AxisSettings{};
    c.subsets[0].y = {-4.0, 2.0, NullValue};
    c.subsets[1].y = {1.0, 8.5, 0.0};
    const SetupFields f = FillSetupFields(c);
    EXPECT_EQ(f.x.mode, AxisLinear);
    EXPECT_EQ(f.x.maximum, "2.5E+00");
    EXPECT_EQ(f.x.minimum, "1.E-03");
    EXPECT_EQ(f.x.majorTicks, "4");
    EXPECT_EQ(f.x.digits, 3);
    EXPECT_EQ(f.y.mode, AxisAuto);
    EXPECT_EQ(f.y.maximum, "8.5E+00"); // no bounds of its own: the data's range
    EXPECT_EQ(f.y.minimum, "-4.E+00");
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
    EXPECT_EQ(static_cast<const ChartProperties&>(c), before); // untouched until valid

    session.fields.y.minimum = "0";
    session.fields.colors.graphBackground = 0x00FF00;
    session.fields.annotationColor = 0x0000FF;
    session.fields.subsets[1].show = false;
    session.fields.subsets[1].color = 0x123123;
    session.fields.textSize = TextLarge;
    outcome = session.ToPlotOk(); // Apply
    ASSERT_TRUE(outcome.ok);
    EXPECT_EQ(c.xAxis.manualScale, AxisLog);
    EXPECT_TRUE(c.xAxis.logScale);
    EXPECT_EQ(c.xAxis.manualMin, 0.01);
    EXPECT_EQ(c.xAxis.numberPattern, "0.0000E+00");
    EXPECT_EQ(c.yAxis.majorTick, 3.0);
    EXPECT_EQ(c.yAxis.numberPattern, "0.0E+00");
    EXPECT_EQ(c.colors.graphBackground, 0x00FF00u);
    EXPECT_EQ(c.annotations[100].color, 0x0000FFu);
    EXPECT_FALSE(c.subsets[1].show);
    EXPECT_EQ(c.subsets[1].color, 0x123123u);
    EXPECT_EQ(c.textSize, TextLarge);
    EXPECT_TRUE(c.mustSave);

    session.Cancel(); // after Apply, Cancel goes back to the opening state
    EXPECT_EQ(static_cast<const ChartProperties&>(c), before);
    EXPECT_FALSE(c.mustSave);
}

TEST(ChartSetup, MonochromeColoursGoToTheBackupAndCancelReturnsToMonochrome)
{
    ChartDocument c = RichChart(2, 3);
    const ChartDocument colour = c;
    c.Monochr();
    const ChartDocument mono = c;
    ChartSetupSession session(c);
    session.fields.colors.deskBackground = 0x010101;
    session.fields.subsets[0].color = 0x020202;
    ASSERT_TRUE(session.ToPlotOk().ok);
    EXPECT_EQ(c.colors.deskBackground, 0xFFFFFFu); // still black on white
    EXPECT_EQ(c.subsets[0].color, 0u);
    EXPECT_EQ(c.colorBackupSlot(2), 0x010101u);
    EXPECT_EQ(c.colorBackupSlot(7), 0x020202u);

    session.Cancel();
    EXPECT_TRUE(c.monochrome);
    EXPECT_EQ(c.colorBackupSlot(7), colour.subsets[0].color);
    EXPECT_EQ(static_cast<const ChartProperties&>(c), static_cast<const ChartProperties&>(mono));
}
