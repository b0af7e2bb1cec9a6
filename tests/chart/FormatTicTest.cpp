// The digits at the tics.
#include "chart/scale/FormatTic.h"

#include "ChartBench.h"

#include <cmath>
#include <limits>

namespace Quillon {
namespace {

using FormatTicTest = ChartBench;

struct Case {
    double Value;
    int Decimals, Format;
    const char* Text;
};

void Expect(const std::vector<Case>& cases) {
    for (const Case& c : cases)
        EXPECT_EQ(FormatTic(c.Value, c.Decimals, c.Format), c.Text)
            << c.Value << ", " << c.Decimals << ", " << c.Format;
}

TEST_F(FormatTicTest, PlainNumbers) {
    Expect({{0.0, 0, 1, "0"},
            {0.0, 2, 1, "0.00"},
            {1.0, 0, 1, "1"},
            {1.5, 1, 1, "1.5"},
            {0.05, 2, 1, "0.05"},
            {12.0625, 4, 1, "12.0625"},
            {1.999, 2, 1, "2.00"},
            {9.996, 2, 1, "10.00"},
            {0.996, 2, 1, "1.00"},
            {99999.0, 1, 1, "99999.0"},
            {-1.25, 2, 1, "-1.25"},
            {2147483647.0, 0, 1, "2147483647"},
            {0.1F, 1, 1, "0.1"},
            {0.7F, 3, 1, "0.700"}});
}

TEST_F(FormatTicTest, TiesGoToTheEvenDigit) {
    Expect({{0.125, 2, 1, "0.12"},
            {0.375, 2, 1, "0.38"},
            {2.5, 0, 1, "2"},
            {3.5, 0, 1, "4"},
            {-2.5, 0, 1, "-2"}});
}

TEST_F(FormatTicTest, NumbersThatRoundToZeroHaveNoSign) {
    Expect({{-0.004, 2, 1, "0.00"}, {-0.4, 0, 1, "0"}, {-0.006, 2, 1, "-0.01"}, {-0.0, 1, 1, "0.0"}});
}

TEST_F(FormatTicTest, AtMostSixDecimals) {
    Expect({{0.12345678, 9, 1, "0.123457"}, {1.0, 7, 1, "1.000000"}, {1.0, -3, 1, "1"}});
}

TEST_F(FormatTicTest, ExponentialNumbers) {
    Expect({{100000.0, 1, 2, "1.0E+5"},
            {123456.0, 2, 2, "1.23E+5"},
            {1.0, 0, 2, "1E+0"},
            {0.00012, 1, 2, "1.2E-4"},
            {-0.00012, 1, 2, "-1.2E-4"},
            {0.0, 1, 2, "0.0E+0"},
            {1e-12, 1, 2, "1.0E-12"},
            {1e12, 0, 2, "1E+12"},
            {5.0, 3, 2, "5.000E+0"}});
}

TEST_F(FormatTicTest, AMantissaThatRoundsToTenMovesTheExponent) {
    Expect({{9.97e5, 1, 2, "1.0E+6"},
            {9.6e5, 1, 2, "9.6E+5"},
            {9.6e5, 0, 2, "1E+6"},
            {9.4e5, 0, 2, "9E+5"},
            {999999.9, 4, 2, "1.0000E+6"},
            {9.99e-4, 1, 2, "1.0E-3"}});
}

TEST_F(FormatTicTest, PlainFormatGivesWayAtTwoToThe31) {
    Expect({{2147483648.0, 1, 1, "2.1E+9"}, {1e10, 0, 1, "1E+10"}, {-1e10, 0, 1, "-1E+10"}});
}

TEST_F(FormatTicTest, OnALog10AxisTheNumberItselfIsWritten) {
    Chart.Log10Axis = -1;
    Expect({{0.0, 0, 1, "1"},
            {2.0, 0, 1, "100"},
            {-2.0, 2, 1, "0.01"},
            {-5.0, 5, 1, "0.00001"},
            {-5.0, 1, 2, "1.0E-5"},
            {7.0, 1, 2, "1.0E+7"},
            {10.0, 0, 1, "1E+10"},
            {-400.0, 1, 2, "0.0E+0"}});
}

TEST_F(FormatTicTest, TheSystemsDecimalMark) {
    Outside.Mark = ',';
    Expect({{1.5, 1, 1, "1,5"}, {1.5e7, 1, 2, "1,5E+7"}, {-0.004, 2, 1, "0,00"}});
}

TEST_F(FormatTicTest, WhatIsNoNumberHasNoText) {
    EXPECT_EQ(FormatTic(std::nan(""), 2, 1), "");
    EXPECT_EQ(FormatTic(std::numeric_limits<double>::infinity(), 2, 2), "");
    Chart.Log10Axis = -1;
    EXPECT_EQ(FormatTic(400.0, 2, 1), "");
}

TEST_F(FormatTicTest, TheWholeRangeOfSinglesIsWrittenToHalfADigit) {
    for (int e = -44; e <= 38; ++e)
        for (const double mantissa : {1.0, 1.37, 3.3, 9.94, 9.96, 9.9999}) {
            const double value = mantissa * std::pow(10.0, e);
            const std::string text = FormatTic(value, 3, 2);
            EXPECT_NEAR(std::stod(text) / value, 1.0, 0.51e-3) << text;
            EXPECT_EQ(text.find('.'), 1U) << text;
        }
}

} // namespace
} // namespace Quillon
