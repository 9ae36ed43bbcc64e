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

constexpr double Inf = std::numeric_limits<double>::infinity();

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
    const char* p = "0.00####E+00";
    expectAll({
        {1234.5, p, "1.2345E+03"}, {0.0, p, "0.00E+00"}, {1.0, p, "1.00E+00"},
        {-0.000123456789, p, "-1.234568E-04"},
        {9.99999999, p, "1.00E+01"}, // carry through all six decimals
        {1e-300, p, "1.00E-300"}, {std::numeric_limits<double>::max(), p, "1.797693E+308"},
        {1.0, "0.###E+00", "1.E+00"}, {1.5, "0.###E+00", "1.5E+00"},
        {123456.0, "0.###E+00", "1.235E+05"}, {1e5, "0.######E+00", "1.E+05"},
        {1.25e-7, "0.######E+00", "1.25E-07"}, {1000.0, "0.0##E+00", "1.0E+03"},
        {12345.0, "0.0##E+00", "1.235E+04"}, {2.0, "0.000##E+00", "2.000E+00"},
        {3.14159265, "0.000##E+00", "3.14159E+00"},
    });
}

TEST(Format, ScientificWithFixedDigits)
{
    expectAll({
        {12345.0, "0.000E+00", "1.235E+04"}, {-0.5, "0.000E+00", "-5.000E-01"},
        {1.5, "0.E+00", "2.E+00"},
        {0.95, "0.E+00", "1.E+00"}, // 9.5E-01 rounds up into the next decade
        {9.96, "0.0E+00", "1.0E+01"}, {-9.94, "0.0E+00", "-9.9E+00"},
        {9.9999, "0.00E+00", "1.00E+01"}, {0.001, "0.00E+00", "1.00E-03"},
        {0.0, "0.00E+00", "0.00E+00"}, {101325.0, "0.00000000E+00", "1.01325000E+05"},
        {-1.0 / 3.0, "0.00000000E+00", "-3.33333333E-01"},
        {6.02214076e23, "0.000000E+00", "6.022141E+23"}, {1e-100, "0.000000E+00", "1.000000E-100"},
        {1.2e-3, "0.0000000E+00", "1.2000000E-03"}, {1e5, "0.000E+000", "1.000E+005"},
        {1.5e-120, "0.000E+000", "1.500E-120"}, {0.0, "0.000E+000", "0.000E+000"},
        // "E-": the exponent's sign only when it is negative.
        {1e5, "0.0E-00", "1.0E05"}, {1e-5, "0.0E-00", "1.0E-05"}, {-2e-5, "0.0E-00", "-2.0E-05"},
    });
}

TEST(Format, FixedTextAndNonFinitePatterns)
{
    expectAll({
        {2.0, "0.##", "2."}, // the point stays when no decimal is significant
        {1.234, "0.##", "1.23"},
        {2.675, "0.##", "2.68"}, // 2.675 as a decimal, not 2.67499999... in binary
        {0.005, "0.##", "0.01"}, {0.004, "0.##", "0."},
        {-0.004, "0.##", "0."}, // rounds to zero: no sign
        {10.0, "0.##", "10."}, {0.0, "#", ""}, {3.5, "#", "4"},
        {2.5, "#", "3"}, // half away from zero, unlike the integer conversions
        {1234567.0, "#", "1234567"}, {-7.2, "#", "-7"}, {0.0, "0", "0"}, {-0.4, "0", "0"},
        {0.5, "0", "1"}, {-1.5, "0", "-2"}, {0.05, "0.0", "0.1"}, {99.96, "0.0", "100.0"},
        {0.5, "#0.##", "0.5"}, {12.345, "#0.##", "12.35"}, {7.0, "#0.##", "7."},
        {1.0 / 3.0, "0.00", "0.33"}, {-1.005, "0.00", "-1.01"}, {999.999, "0.00", "1000.00"},
        {0.0005, "0.000", "0.001"}, {-12.0, "0.000", "-12.000"},
        {1e20, "0", "100000000000000000000"}, {0.25, "#.##", ".25"},
        {1234567.0, "#,##0", "1,234,567"}, {12.5, "x=0.0 s", "x=12.5 s"},
        // A text-field pattern takes the general text; non-finite values do not throw.
        {2.5, "@@@@@", "  2.5"}, {-1e-7, "!@@@@@@@@", "-1E-07  "},
        {Inf, "0.00E+00", "Inf"}, {-Inf, "0", "-Inf"}, {std::nan(""), "0.0", "NaN"},
    });
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
    EXPECT_GE(Now().tm_year + 1900, 2020);
}

TEST(ShortestText, FifteenDigitsAndScientificOutsideTheRange)
{
    const std::pair<double, const char*> cases[] = {
        {0.0, "0"}, {0.0001, "0.0001"}, {0.00001, "1E-05"}, {1e-10, "1E-10"},
        {1.5e20, "1.5E+20"}, {123456789.0, "123456789"},
        {999999999999999.0, "999999999999999"}, {1e15, "1E+15"}, {0.1 + 0.2, "0.3"},
        {1.0 / 3.0, "0.333333333333333"}, {-2.5, "-2.5"},
        {1.23456789012345678e-7, "1.23456789012346E-07"}, {1e300, "1E+300"},
        // 1234567890 / 7 = 176366841.428571428...; minus 1234567890 = -1058201048.571428...
        {1234567890.0 / 7.0 - 1234567890.0, "-1058201048.57143"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(ShortestText(value), text) << value;
    }
}

TEST(ShortestText, ReadsBackAtTheTopOfTheDoubleRange)
{
    // The largest double is 1.7976931348623157E+308 (IEEE 754 binary64); rounded to fifteen
    // digits it would pass itself and read as an overflow, so the digits are cut toward zero
    // to 1.79769313486231E+308. Values whose fifteen digits stay below it keep the rounding.
    const double max = std::numeric_limits<double>::max();
    const std::pair<double, const char*> cases[] = {
        {max, "1.79769313486231E+308"},
        {-max, "-1.79769313486231E+308"},
        {std::nextafter(max, 0.0), "1.79769313486231E+308"},
        {1.79769313486231e308, "1.79769313486231E+308"},
        {1.7976931348623e308, "1.7976931348623E+308"},
        {1.5e308, "1.5E+308"},
        {9.99999999999999e307, "9.99999999999999E+307"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(ShortestText(value), text) << value;
        const auto back = ToDouble(ShortestText(value));
        ASSERT_TRUE(back.has_value()) << value;
        // fifteen significant digits: within 1e-14 of the value, relative
        EXPECT_NEAR(*back / value, 1.0, 1e-14) << value;
    }
}

TEST(NumericText, IsNumericToDoubleAndLeadingValue)
{
    for (const char* yes : {"1", "-2.5", ".5", "1E-10", "1.e+3", " 7 ", "+3", "5.", "\t4\t",
                            "1E-400"}) {
        EXPECT_TRUE(IsNumeric(yes)) << yes;
    }
    for (const char* no : {"", "  ", "1D5", "abc", "1e", "1e+", ".", "-", "1,5", "1.2.3", "0x10",
                           "1 2", "inf", "nan", "1E400", "- 1"}) {
        EXPECT_FALSE(IsNumeric(no)) << no;
    }
    EXPECT_EQ(ToDouble("1.e+3"), 1000.0);
    EXPECT_EQ(ToDouble(" -2.5 "), -2.5);
    EXPECT_EQ(ToDouble(".5"), 0.5);
    EXPECT_EQ(ToDouble("1E-400"), 0.0);
    EXPECT_FALSE(ToDouble("1,5").has_value());
    EXPECT_FALSE(ToDouble("12abc").has_value());
    const std::pair<const char*, double> leading[] = {
        {"  12.5abc", 12.5}, {"abc", 0.0}, {"1e5x", 1e5}, {"1e", 1.0}, {"-.5E-1 rest", -0.05},
        {"", 0.0}, {"3 !Maximum Number of Steps", 3.0}};
    for (const auto& [text, value] : leading) {
        EXPECT_EQ(LeadingValue(text), value) << text;
    }
}

TEST(ToInteger, RoundsHalfToEvenAndThrowsOnOverflow)
{
    const std::pair<double, std::int32_t> int32s[] = {
        {2.5, 2}, {3.5, 4}, {-2.5, -2}, {-3.5, -4}, {0.4999, 0}, {2.6, 3},
        {2147483647.4, 2147483647}, {-2147483648.5, -2147483648}}; // even neighbour in range
    for (const auto& [value, rounded] : int32s) {
        EXPECT_EQ(ToInt32(value), rounded) << value;
    }
    for (double bad : {2147483647.5, -2147483649.0, std::nan(""), Inf}) { // 2147483647.5 -> 2^31
        EXPECT_THROW(ToInt32(bad), zarvion::Error) << bad;
    }
    EXPECT_EQ(ToInt16(32767.0), 32767);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    EXPECT_EQ(ToInt16(0.5), 0);
    EXPECT_EQ(ToInt16(1.5), 2);
    EXPECT_THROW(ToInt16(32767.5), zarvion::Error);
    EXPECT_THROW(ToInt16(1e10), zarvion::Error);
}

TEST(TextOperations, PositionsAreOneBasedAndClipped)
{
    EXPECT_EQ(Left("abc", 5) + "|" + Left("abc", 0) + "|" + Left("abc", 2), "abc||ab");
    EXPECT_EQ(Right("abcdef", 2) + "|" + Right("ab", 5), "ef|ab");
    EXPECT_EQ(Mid("abcdef", 2, 3) + "|" + Mid("abcdef", 5, 10) + "|" + Mid("abc", 4, 1), "bcd|ef|");
    EXPECT_EQ(Mid("abc", 9) + "|" + Mid("abcdef", 3) + "|" + Mid("abc", 1, 0), "|cdef|");
    EXPECT_EQ(Trim("  a b  ") + "|" + Trim("   "), "a b|");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t"); // only blanks are trimmed
    EXPECT_EQ(LTrim("  a  ") + "|" + RTrim("  a  "), "a  |  a");
    EXPECT_EQ(UCase("aBc1-z"), "ABC1-Z");
    EXPECT_EQ(LCase("REACTIONS End"), "reactions end");
}
