// Expected texts are worked out by hand from the pattern rules: "0" always written, "#" only
// when significant, the point always written when the pattern has one, rounding half away
// from zero on the digits written, of the value seen with 15 significant digits.
#include "shell/Error.h"
#include "shell/TextFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace zarvion::shell;

namespace {

struct Case {
    double value;
    const char* pattern;
    const char* expected;
};

void expectAll(std::initializer_list<Case> cases)
{
    for (const auto& c : cases) {
        EXPECT_EQ(Format(c.value, c.pattern), c.expected)
            << "value " << c.value << " pattern " << c.pattern;
    }
}

} // namespace

TEST(Format, ScientificWithOptionalDigits)
{
    expectAll({
        {1234.5, "0.00####E+00", "1.2345E+03"},
        {0.0, "0.00####E+00", "0.00E+00"},
        {1.0, "0.00####E+00", "1.00E+00"},
        {-0.000123456789, "0.00####E+00", "-1.234568E-04"},
        {9.99999999, "0.00####E+00", "1.00E+01"}, // carry through all six decimals
        {1e-300, "0.00####E+00", "1.00E-300"},
        {std::numeric_limits<double>::max(), "0.00####E+00", "1.797693E+308"},
        {1.0, "0.###E+00", "1.E+00"},
        {1.5, "0.###E+00", "1.5E+00"},
        {123456.0, "0.###E+00", "1.235E+05"},
        {1e5, "0.######E+00", "1.E+05"},
        {1.25e-7, "0.######E+00", "1.25E-07"},
        {1000.0, "0.0##E+00", "1.0E+03"},
        {12345.0, "0.0##E+00", "1.235E+04"},
        {2.0, "0.000##E+00", "2.000E+00"},
        {3.14159265, "0.000##E+00", "3.14159E+00"},
    });
}

TEST(Format, ScientificWithFixedDigits)
{
    expectAll({
        {12345.0, "0.000E+00", "1.235E+04"},
        {-0.5, "0.000E+00", "-5.000E-01"},
        {1.5, "0.E+00", "2.E+00"},
        {0.95, "0.E+00", "1.E+00"}, // 9.5E-01 rounds up into the next decade
        {9.96, "0.0E+00", "1.0E+01"},
        {-9.94, "0.0E+00", "-9.9E+00"},
        {9.9999, "0.00E+00", "1.00E+01"},
        {0.001, "0.00E+00", "1.00E-03"},
        {0.0, "0.00E+00", "0.00E+00"},
        {101325.0, "0.00000000E+00", "1.01325000E+05"},
        {-1.0 / 3.0, "0.00000000E+00", "-3.33333333E-01"},
        {6.02214076e23, "0.000000E+00", "6.022141E+23"},
        {1e-100, "0.000000E+00", "1.000000E-100"},
        {1.2e-3, "0.0000000E+00", "1.2000000E-03"},
        {1e5, "0.000E+000", "1.000E+005"},
        {1.5e-120, "0.000E+000", "1.500E-120"},
        {0.0, "0.000E+000", "0.000E+000"},
    });
}

TEST(Format, ExponentSignOnlyWhenNegativeWithEMinus)
{
    expectAll({
        {1e5, "0.0E-00", "1.0E05"},
        {1e-5, "0.0E-00", "1.0E-05"},
        {-2e-5, "0.0E-00", "-2.0E-05"},
    });
}

TEST(Format, FixedPatterns)
{
    expectAll({
        {2.0, "0.##", "2."}, // the point stays when no decimal is significant
        {1.234, "0.##", "1.23"},
        {2.675, "0.##", "2.68"}, // 2.675 as a decimal, not 2.67499999... in binary
        {0.005, "0.##", "0.01"},
        {0.004, "0.##", "0."},
        {-0.004, "0.##", "0."}, // rounds to zero: no sign
        {10.0, "0.##", "10."},
        {0.0, "#", ""},
        {3.5, "#", "4"},
        {2.5, "#", "3"}, // half away from zero, unlike the integer conversions
        {1234567.0, "#", "1234567"},
        {-7.2, "#", "-7"},
        {0.0, "0", "0"},
        {-0.4, "0", "0"},
        {0.5, "0", "1"},
        {-1.5, "0", "-2"},
        {0.05, "0.0", "0.1"},
        {99.96, "0.0", "100.0"},
        {0.5, "#0.##", "0.5"},
        {12.345, "#0.##", "12.35"},
        {7.0, "#0.##", "7."},
        {1.0 / 3.0, "0.00", "0.33"},
        {-1.005, "0.00", "-1.01"},
        {999.999, "0.00", "1000.00"},
        {0.0005, "0.000", "0.001"},
        {-12.0, "0.000", "-12.000"},
        {1e20, "0", "100000000000000000000"},
        {0.25, "#.##", ".25"},
        {1234567.0, "#,##0", "1,234,567"},
        {12.5, "x=0.0 s", "x=12.5 s"},
    });
}

TEST(Format, TextFieldPatternTakesTheGeneralText)
{
    EXPECT_EQ(Format(2.5, "@@@@@"), "  2.5");
    EXPECT_EQ(Format(-1e-7, "!@@@@@@@@"), "-1E-07  ");
}

TEST(Format, NonFiniteValuesDoNotThrow)
{
    EXPECT_EQ(Format(std::numeric_limits<double>::infinity(), "0.00E+00"), "Inf");
    EXPECT_EQ(Format(-std::numeric_limits<double>::infinity(), "0"), "-Inf");
    EXPECT_EQ(Format(std::nan(""), "0.0"), "NaN");
}

TEST(FormatText, AlignsInTheField)
{
    EXPECT_EQ(FormatText("abc", "@@@@@"), "  abc");
    EXPECT_EQ(FormatText("abc", "!@@@@@"), "abc  ");
    EXPECT_EQ(FormatText("abcdef", "@@@"), "abcdef");
    EXPECT_EQ(FormatText("abcdef", "!@@@"), "abcdef");
    EXPECT_EQ(FormatText("", "@@"), "  ");
    EXPECT_EQ(FormatText("Ro mass", "!@@@@@@@@@@@@@@@@@").size(), 17u);
}

TEST(FormatDate, DateAndTimePatterns)
{
    std::tm t{};
    t.tm_year = 2014 - 1900;
    t.tm_mon = 2;
    t.tm_mday = 5;
    t.tm_wday = 3;
    t.tm_hour = 14;
    t.tm_min = 7;
    t.tm_sec = 9;
    EXPECT_EQ(FormatDate(t, "mmm d yyyy"), "Mar 5 2014");
    EXPECT_EQ(FormatDate(t, "hh:mm:ss"), "14:07:09");
    EXPECT_EQ(FormatDate(t, "dd/mm/yy"), "05/03/14");
    EXPECT_EQ(FormatDate(t, "dddd, mmmm d"), "Wednesday, March 5");
    EXPECT_EQ(FormatDate(t, "h:nn"), "14:07");
    const std::tm now = Now();
    EXPECT_GE(now.tm_year + 1900, 2020);
}

TEST(ShortestText, FifteenDigitsAndScientificOutsideTheRange)
{
    EXPECT_EQ(ShortestText(0.0), "0");
    EXPECT_EQ(ShortestText(0.0001), "0.0001");
    EXPECT_EQ(ShortestText(0.00001), "1E-05");
    EXPECT_EQ(ShortestText(1e-10), "1E-10");
    EXPECT_EQ(ShortestText(1.5e20), "1.5E+20");
    EXPECT_EQ(ShortestText(123456789.0), "123456789");
    EXPECT_EQ(ShortestText(999999999999999.0), "999999999999999");
    EXPECT_EQ(ShortestText(1e15), "1E+15");
    EXPECT_EQ(ShortestText(0.1 + 0.2), "0.3");
    EXPECT_EQ(ShortestText(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(ShortestText(-2.5), "-2.5");
    EXPECT_EQ(ShortestText(1.23456789012345678e-7), "1.23456789012346E-07");
    // 1234567890 / 7 = 176366841.428571428...; minus 1234567890 = -1058201048.571428...
    EXPECT_EQ(ShortestText(1234567890.0 / 7.0 - 1234567890.0), "-1058201048.57143");
    EXPECT_EQ(ShortestText(1e300), "1E+300");
}

TEST(IsNumeric, AcceptsDecimalNumbersOnly)
{
    for (const char* yes : {"1", "-2.5", ".5", "1E-10", "1.e+3", " 7 ", "+3", "5.", "\t4\t",
                            "1E-400"}) {
        EXPECT_TRUE(IsNumeric(yes)) << yes;
    }
    for (const char* no : {"", "  ", "1D5", "abc", "1e", "1e+", ".", "-", "1,5", "1.2.3", "0x10",
                           "1 2", "inf", "nan", "1E400", "- 1"}) {
        EXPECT_FALSE(IsNumeric(no)) << no;
    }
}

TEST(ToDouble, ConvertsWithThePeriod)
{
    EXPECT_EQ(ToDouble("1.e+3"), 1000.0);
    EXPECT_EQ(ToDouble(" -2.5 "), -2.5);
    EXPECT_EQ(ToDouble(".5"), 0.5);
    EXPECT_EQ(ToDouble("1E-400"), 0.0);
    EXPECT_FALSE(ToDouble("1,5").has_value());
    EXPECT_FALSE(ToDouble("12abc").has_value());
}

TEST(ToInteger, RoundsHalfToEvenAndThrowsOnOverflow)
{
    EXPECT_EQ(ToInt32(2.5), 2);
    EXPECT_EQ(ToInt32(3.5), 4);
    EXPECT_EQ(ToInt32(-2.5), -2);
    EXPECT_EQ(ToInt32(-3.5), -4);
    EXPECT_EQ(ToInt32(0.4999), 0);
    EXPECT_EQ(ToInt32(2.6), 3);
    EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(ToInt32(-2147483648.5), -2147483648); // even neighbour is in range
    EXPECT_THROW(ToInt32(2147483647.5), zarvion::Error); // rounds to 2^31
    EXPECT_THROW(ToInt32(-2147483649.0), zarvion::Error);
    EXPECT_THROW(ToInt32(std::nan("")), zarvion::Error);
    EXPECT_THROW(ToInt32(std::numeric_limits<double>::infinity()), zarvion::Error);
    EXPECT_EQ(ToInt16(32767.0), 32767);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    EXPECT_EQ(ToInt16(0.5), 0);
    EXPECT_EQ(ToInt16(1.5), 2);
    EXPECT_THROW(ToInt16(32767.5), zarvion::Error);
    EXPECT_THROW(ToInt16(1e10), zarvion::Error);
}

TEST(LeadingValue, TakesTheLongestNumericPrefix)
{
    EXPECT_EQ(LeadingValue("  12.5abc"), 12.5);
    EXPECT_EQ(LeadingValue("abc"), 0.0);
    EXPECT_EQ(LeadingValue("1e5x"), 1e5);
    EXPECT_EQ(LeadingValue("1e"), 1.0);
    EXPECT_EQ(LeadingValue("-.5E-1 rest"), -0.05);
    EXPECT_EQ(LeadingValue(""), 0.0);
    EXPECT_EQ(LeadingValue("3 !Maximum Number of Steps"), 3.0);
}

TEST(TextOperations, PositionsAreOneBasedAndClipped)
{
    EXPECT_EQ(Left("abc", 5), "abc");
    EXPECT_EQ(Left("abc", 0), "");
    EXPECT_EQ(Left("abc", 2), "ab");
    EXPECT_EQ(Right("abcdef", 2), "ef");
    EXPECT_EQ(Right("ab", 5), "ab");
    EXPECT_EQ(Mid("abcdef", 2, 3), "bcd");
    EXPECT_EQ(Mid("abcdef", 5, 10), "ef");
    EXPECT_EQ(Mid("abc", 4, 1), "");
    EXPECT_EQ(Mid("abc", 9), "");
    EXPECT_EQ(Mid("abcdef", 3), "cdef");
    EXPECT_EQ(Mid("abc", 1, 0), "");
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t"); // only blanks are trimmed
    EXPECT_EQ(LTrim("  a  "), "a  ");
    EXPECT_EQ(RTrim("  a  "), "  a");
    EXPECT_EQ(UCase("aBc1-z"), "ABC1-Z");
    EXPECT_EQ(LCase("REACTIONS End"), "reactions end");
}
