// Numbers without a picture.
#include "input/NUMINPUT.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>

namespace Quillon {
namespace {

TEST(SingleText, HasUpToSevenDigits) {
    EXPECT_EQ(SingleText(0.0F), "0");
    EXPECT_EQ(SingleText(-0.0F), "0");
    EXPECT_EQ(SingleText(1.0F), "1");
    EXPECT_EQ(SingleText(-0.5F), "-0.5");
    EXPECT_EQ(SingleText(0.05F), "0.05");
    EXPECT_EQ(SingleText(1.003994F), "1.003994");
    EXPECT_EQ(SingleText(0.683F), "0.683");
    EXPECT_EQ(SingleText(1.0F / 3.0F), "0.3333333");
    EXPECT_EQ(SingleText(2.0F / 3.0F), "0.6666667");
    EXPECT_EQ(SingleText(20000.0F), "20000");
    EXPECT_EQ(SingleText(12345.678F), "12345.68");
    EXPECT_EQ(SingleText(9999999.0F), "9999999");
}

TEST(SingleText, WholeNumbersOfEightDigitsArePlain) {
    EXPECT_EQ(SingleText(10000000.0F), "10000000");
    EXPECT_EQ(SingleText(16777216.0F), "16777220");
    EXPECT_EQ(SingleText(-16777216.0F), "-16777220");
    EXPECT_EQ(SingleText(99999900.0F), "99999900");
    EXPECT_EQ(SingleText(1e8F), "1E+08");
    EXPECT_EQ(SingleText(1e9F), "1E+09");
    EXPECT_EQ(SingleText(1.5e10F), "1.5E+10");
    EXPECT_EQ(SingleText(-1.3344e11F), "-1.3344E+11");
}

TEST(SingleText, SevenDecimalsArePlain) {
    EXPECT_EQ(SingleText(0.0001F), "0.0001");
    EXPECT_EQ(SingleText(1e-7F), "0.0000001");
    EXPECT_EQ(SingleText(1e-8F), "1E-08");
    EXPECT_EQ(SingleText(1e-11F), "1E-11");
    EXPECT_EQ(SingleText(0.0123457F), "0.0123457");
    EXPECT_EQ(SingleText(0.01234567F), "1.234567E-02"); // eight decimals
    EXPECT_EQ(SingleText(-0.001234567F), "-1.234567E-03");
}

TEST(SingleText, TheEndsOfTheRange) {
    EXPECT_EQ(SingleText(std::numeric_limits<float>::max()), "3.402823E+38");
    EXPECT_EQ(SingleText(-3.4e38F), "-3.4E+38");
    EXPECT_EQ(SingleText(std::numeric_limits<float>::denorm_min()), "1.401298E-45");
}

TEST(SingleText, ANumberThatIsNotFiniteIsOverflow) {
    try {
        SingleText(std::numeric_limits<float>::infinity());
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Overflow");
    }
}

TEST(DoubleText, HasUpToFifteenDigits) {
    EXPECT_EQ(DoubleText(0.1), "0.1");
    EXPECT_EQ(DoubleText(-2.0 / 3.0), "-0.666666666666667");
    EXPECT_EQ(DoubleText(9007199254740992.0), "9007199254740990");
    EXPECT_EQ(DoubleText(1e17), "1E+17");
    EXPECT_EQ(DoubleText(1.5e300), "1.5E+300");
    EXPECT_EQ(DoubleText(0.000123456789012345), "1.23456789012345E-04");
}

// The text of any single reads back to it within half a unit of the seventh digit.
TEST(SingleText, RandomBitPatternsReadBack) {
    std::mt19937 random(5);
    for (int i = 0; i < 5000; ++i) {
        const std::uint32_t bits = static_cast<std::uint32_t>(random());
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isnormal(value)) continue;
        const std::string text = SingleText(value);
        const double read = std::strtod(text.c_str(), nullptr);
        EXPECT_NEAR(read, static_cast<double>(value), 5.0000001e-7 * std::fabs(static_cast<double>(value)))
            << text;
        EXPECT_LE(text.size(), 13U) << text;
    }
}

} // namespace
} // namespace Quillon
