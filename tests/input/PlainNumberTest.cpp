// The fast road for numbers gives the bits of the exact one, or nothing.
#include "input/PlainNumber.h"

#include "input/NUMINPUT.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace Quillon {
namespace {

// What is taken of a text: its characters, and the value; -1 where it is nothing.
long Taken(const std::string& text, double& value) {
    const char* at = text.data();
    return TakePlainNumber(at, text.data() + text.size(), value) ? at - text.data() : -1;
}

void ExpectBits(double value, double expected, const std::string& text) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
}

TEST(PlainNumber, TakesWhatInstrumentsWrite) {
    double value = 0.0;
    for (const std::string text : {"6.8500", "3.10000E-01", "0", "-0", "+5", "5.", ".5", "1e3", "1E+22",
                                   "12345678901", "-0.00000E+00", "9007199254740992", "1.7E-21"}) {
        ASSERT_EQ(Taken(text, value), static_cast<long>(text.size())) << text;
        ExpectBits(value, std::strtod(text.c_str(), nullptr), text);
    }
}

TEST(PlainNumber, LeavesEverythingElseToTheExactRoad) {
    double value = 7.0;
    for (const std::string text : {"",
                                   " 1",
                                   "-",
                                   "+",
                                   ".",
                                   "-.",
                                   "E5",
                                   "1E",
                                   "1E+",
                                   "1e-x",
                                   "1E1234",
                                   "12345678901234567890",
                                   "9007199254740993",
                                   "0.30000000000000004",
                                   "1E23",
                                   "1E-23",
                                   "0.1E-22",
                                   "x",
                                   "--1",
                                   "+-1",
                                   "nan",
                                   "inf",
                                   "0x1p3"}) {
        if (text == "0x1p3") { // the number is the 0 in front
            EXPECT_EQ(Taken(text, value), 1);
            continue;
        }
        EXPECT_EQ(Taken(text, value), -1) << text;
        EXPECT_EQ(value, 7.0) << text;
    }
}

TEST(PlainNumber, EndsWhereTheNumberEnds) {
    double value = 0.0;
    EXPECT_EQ(Taken("1.5 2.5", value), 3);
    EXPECT_EQ(Taken("1.5D3", value), 3); // the caller's to judge
    EXPECT_EQ(Taken("1.5.5", value), 3);
    EXPECT_EQ(Taken("12\r\n", value), 2);
}

TEST(PlainNumber, HasTheBitsOfTheExactRoad) {
    std::mt19937_64 random(11);
    const char* const formats[] = {"%.4f",  "%9.5f", "%.5E",  "%12.5E", "%.7g",
                                   "%.15g", "%.16g", "%.17g", "%.3e",   "%.0f"};
    long taken = 0, all = 0;
    for (int i = 0; i < 200000; ++i) {
        // Any magnitude for half of them, those of scans for the rest.
        const auto bits = std::bit_cast<double>(random());
        const double plain =
            1e-6 * static_cast<double>(static_cast<std::int64_t>(random() % 20000000) - 10000000);
        char text[400];
        std::snprintf(text, sizeof text, formats[random() % 10], i % 2 ? plain : bits);
        const char* const start = text + std::string_view(text).find_first_not_of(' ');
        double value = 0.0;
        ++all;
        if (Taken(start, value) != static_cast<long>(std::string_view(start).size())) continue;
        ++taken;
        ExpectBits(value, std::strtod(start, nullptr), start);
        ExpectBits(value, NumericPrefix(start), start);
    }
    EXPECT_GT(taken, all / 3);
}

} // namespace
} // namespace Quillon
