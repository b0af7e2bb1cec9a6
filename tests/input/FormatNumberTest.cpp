// Number pictures: the worked table, each rule of the pictures, and random pictures against an arithmetic of
// the test's own.
#include "input/NUMINPUT.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

namespace Quillon {
namespace {

struct Example {
    double Value;
    const char* Picture;
    const char* Text;
};

void ExpectAll(std::initializer_list<Example> examples) {
    for (const Example& e : examples)
        EXPECT_EQ(FormatNumber(e.Value, e.Picture), e.Text) << e.Value << " as \"" << e.Picture << '"';
}

TEST(FormatNumber, WritesTheWorkedExamples) {
    ExpectAll({{0.00123456789, "#.######E+##", "1.234568E-3"},
               {1.5, "#.######E+##", "1.5E+0"},
               {10000, "0.000E+##", "1.000E+4"},
               {1.2345E10, "0.00##E-00", "1.2345E10"},
               {5.8, "#.0000", "5.8000"},
               {0.25, "#.0000", ".2500"},
               {-0.25, ".000", "-.250"},
               {7, "#.##", "7."},
               {0, "####", ""},
               {60000, "##,###", "60,000"},
               {500, "##0,000", "0,500"},
               {4.06, "00.0#", "04.06"},
               {0.683, "#0.0%", "68.3%"},
               {-0.0312, "+##0.0%;-##0.0%", "-3.1%"},
               {0.1234, " (#0.0%)", " (12.3%)"},
               {2.5, "0", "3"},
               {-0.0004, "0.00", "0.00"}});
}

TEST(FormatNumber, WholePlaces) {
    ExpectAll({{7, "0", "7"},
               {0, "0", "0"},
               {0, "#", ""},
               {0, "#0", "0"},
               {412, "####", "412"},
               {5, "000", "005"},
               {12345, "0", "12345"}, // digits without a place are written all the same
               {12345, "#", "12345"},
               {12.5, ".00", "12.50"},
               {0.5, ".00", ".50"},
               {5, "0##", "005"}, // a place behind a 0 is not left out
               {17, "######0.", "17."},
               {0, "######0.", "0."},
               {1e20, "0", "100000000000000000000"}});
}

TEST(FormatNumber, FractionPlaces) {
    ExpectAll({{1.5, "0.0", "1.5"},
               {1.5, "0.000", "1.500"},
               {1.5, "0.###", "1.5"},
               {1, "0.###", "1."},
               {1.0625, "0.0000##", "1.0625"},
               {1.003994, "0.0000##", "1.003994"},
               {0.73, "0.000##", "0.730"},
               {0.7301, "0.000##", "0.7301"},
               {1.05, "0.##0", "1.050"}, // a # before a 0 is written
               {0.001, "#0.###", "0.001"},
               {0.05, "#0.###", "0.05"},
               {0, "#.##", "."},
               {0, "0.00", "0.00"},
               {20, "00.0#", "20.0"}});
}

TEST(FormatNumber, RoundsHalfAwayFromZero) {
    ExpectAll({{0.5, "0", "1"},
               {1.5, "0", "2"},
               {-2.5, "0", "-3"},
               {0.49, "0", "0"},
               {0.125, "0.00", "0.13"},
               {-0.125, "0.00", "-0.13"},
               {0.135, "0.00", "0.14"}, // in binary a little above
               {1.005, "0.00", "1.01"}, // in binary a little below: the decimal text decides
               {2.675, "0.00", "2.68"},
               {9.995, "0.00", "10.00"},
               {99.95, "#0.0", "100.0"},
               {0.05, "#.#", ".1"},
               {0.04, "#.#", "."},
               {0.004, "0.0", "0.0"}, // the first digit is more than one place below
               {999999.5, "##,###", "1,000,000"}});
}

TEST(FormatNumber, HasFifteenSignificantDigits) {
    ExpectAll({{0.1, "0.00000000000000000000", "0.10000000000000000000"},
               {1.0 / 3.0, "0.##################", "0.333333333333333"},
               {2.0 / 3.0, "0.##################", "0.666666666666667"},
               {123456789012345678.0, "0", "123456789012346000"},
               {0.285, "0.00", "0.29"}});
}

TEST(FormatNumber, ASingleIsWidenedFirst) {
    EXPECT_EQ(FormatNumber(static_cast<double>(0.1F), "0.000000"), "0.100000");
    // 0.1F is 0.100000001490116119384765625 exactly.
    EXPECT_EQ(FormatNumber(static_cast<double>(0.1F), "0.####################"), "0.100000001490116");
}

TEST(FormatNumber, Groups) {
    ExpectAll({{1, "##,###", "1"},
               {999, "##,###", "999"},
               {1000, "##,###", "1,000"},
               {0, "##,###", ""},
               {1234567, "#,##0", "1,234,567"},
               {1234567, "#,#", "1,234,567"},
               {-60000, "##,###", "-60,000"},
               {1234.5, "#,##0.00", "1,234.50"},
               {0, "#,##0", "0"},
               {10000, "#0,000", "10,000"},
               {5, "0,000,000", "0,000,005"},
               {0.123456, "0.0,000", "0.1,235"}, // right of the mark it is itself
               {1234, "0,", "1234,"},
               {1234, ",0", ",1234"}});
}

TEST(FormatNumber, Percent) {
    ExpectAll({{0.683, "#0%", "68%"},
               {0.95, "#0.0%", "95.0%"},
               {1, "0%", "100%"},
               {0, "#0.0%", "0.0%"},
               {0.00049, "#0.0%", "0.0%"},
               {-0.5, "%0", "-%50"},
               {0.285, "0%", "29%"}, // 28.5 exactly in decimal, and not 28.499999...
               {0.0035, "#0.00%", "0.35%"},
               {12345.678, "#,##0.0%", "1,234,567.8%"},
               {0.5, "0.0E+0%", "5.0E+1%"}});
}

TEST(FormatNumber, Scientific) {
    ExpectAll({{0, "0.000E+00", "0.000E+00"},
               {0, "#.######E-##", "0.E0"},
               {1, "#.######E-##", "1.E0"},
               {-1.5, "0.0E+0", "-1.5E+0"},
               {12345, "0.000E+00", "1.235E+04"},
               {12345, "0.000e+00", "1.235e+04"},
               {0.00012345, "0.000E+00", "1.235E-04"},
               {0.00012345, "0.000E-00", "1.235E-04"},
               {12345, "0.000E-00", "1.235E04"},
               {9.9996, "0.000E+00", "1.000E+01"}, // the mantissa moves on to the next power
               {0.99996, "#.###E+##", "1.E+0"},
               {-9.9996e-10, "0.000E-##", "-1.000E-9"},
               {1.5e123, "0.0E+00", "1.5E+123"},
               {1.5e-123, "0.0E+0", "1.5E-123"},
               {12345, "000.0E+0", "123.5E+2"}, // three digits left of the mark
               {12345, "##0.0E+0", "123.5E+2"},
               {0.012345, "##0.0E+0", "123.5E-4"},
               {999.96, "##0.0E+0", "100.0E+1"},
               {12345, ".000E+0", ".123E+5"},
               {0.5, ".0E+0", ".5E+0"},
               {0, ".0E+0", ".0E+0"},
               {12345, "0E+0", "1E+4"},
               {15000, "0E+0", "2E+4"},
               {1.5, "0.0E+#0#", "1.5E+00"},
               {4.9406564584124654e-324, "0.00E+00", "4.94E-324"},
               {1.7976931348623157e308, "0.00E+00", "1.80E+308"},
               {1.25, "0.0E+0 M", "1.3E+0 M"}});
}

TEST(FormatNumber, ALetterThatIsNoExponentIsItself) {
    ExpectAll({{1.5, "0.0E", "1.5E"},
               {1.5, "0.0E+", "1.5E+"},
               {1.5, "0.0Ex", "1.5Ex"},
               {5, "E+0", "E+5"},
               {1.5, "0.0E5", "1.5E5"},
               {15, "0E+0E+0", "2E+1E+0"}}); // and so is all of a second exponent
}

TEST(FormatNumber, Parts) {
    ExpectAll({{0.5, "+0.0000;-0.0000", "+0.5000"},
               {-0.5, "+0.0000;-0.0000", "-0.5000"},
               {0, "+0.0000;-0.0000", "+0.0000"},
               {-0.5, "0.0;(0.0)", "(0.5)"},
               {3, "0;-0;none", "3"},
               {-3, "0;-0;none", "-3"},
               {0, "0;-0;none", "none"},
               {-0.0, "0;-0;none", "none"},
               {0.04, "0.0;-0.0;none", "0.0"}, // the value chooses the part, not its rounded text
               {-0.00001, "+0.0000;-0.0000", "-0.0000"},
               {-1, "0;0", "1"}, // no sign of its own in the second part
               {-0.0312, "+##0.0%;##0.0%", "3.1%"},
               {-2, "0;;zero", "-2"}, // a part left empty counts as not given
               {0, "0;-0;", "0"},
               {0, "0;-0;z;more", "z"},
               {-1, "0;-0;z;more", "-1"},
               {1, ";-0", ""}});
}

TEST(FormatNumber, ANegativeNumberGetsItsSignInFront) {
    ExpectAll({{-5, "000", "-005"},
               {-0.1234, " (#0.0%)", "- (12.3%)"},
               {-1.5, "$0.00", "-$1.50"},
               {-0.0, "0.0", "0.0"},
               {-0.04, "0.0", "0.0"},
               {-0.05, "0.0", "-0.1"},
               {-0.4, "#", ""}});
}

TEST(FormatNumber, OtherCharactersAreThemselves) {
    ExpectAll({{5, "x 0 y", "x 5 y"},
               {5.25, "(+0.0-)", "(+5.3-)"},
               {5551234, "000-0000", "555-1234"},
               {12345551234.0, "000-0000", "1234555-1234"},
               {1.5, "0.0.0", "1.5.0"},
               {5, "abc", "abc"},
               {-5, "abc", "abc"}, // no number is shown, and so no sign
               {1,
                "\xB1"
                "0",
                "\xB1"
                "1"}});
}

TEST(FormatNumber, AnEmptyPictureGivesThePlainNumber) {
    EXPECT_EQ(FormatNumber(-12.5, ""), "-12.5");
    EXPECT_EQ(FormatNumber(0.1, ""), "0.1");
}

TEST(FormatNumber, ANumberThatIsNotFiniteIsOverflow) {
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        try {
            FormatNumber(value, "0.0");
            ADD_FAILURE() << "no error for " << value;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Text, "Overflow");
        }
    }
}

double RandomValue(std::mt19937& random) {
    const double mantissa = static_cast<double>(random() % 2000001) - 1000000.0;
    const int exponent = static_cast<int>(random() % 25) - 15;
    return random() % 20 == 0 ? 0.0 : mantissa * std::pow(10.0, exponent);
}

// The text of a number rounded to places, by whole-number arithmetic on its fifteen digits.
std::string RoundedByHand(double value, int places) {
    char digits[64];
    std::snprintf(digits, sizeof digits, "%.14e", std::fabs(value)); // d.dddddddddddddde+xx
    const int exponent = std::atoi(digits + 17);
    __extension__ typedef unsigned __int128 Wide;
    Wide number = static_cast<Wide>(digits[0] - '0');
    for (int i = 2; i < 16; ++i)
        number = 10 * number + static_cast<Wide>(digits[i] - '0');
    int shift = places + exponent - 14; // number * 10^shift counts units of the last place
    for (; shift > 0; --shift)
        number *= 10;
    for (; shift < -1 && number > 0; ++shift)
        number /= 10; // digits behind the one that decides do not matter to a half
    if (shift == -1) number = (number + 5) / 10;
    std::string text;
    for (int i = 0; i <= places || number > 0; ++i) {
        if (i == places && places > 0) text.insert(text.begin(), '.');
        text.insert(text.begin(), static_cast<char>('0' + static_cast<int>(number % 10)));
        number /= 10;
    }
    const bool zero = text.find_first_of("123456789") == std::string::npos;
    return (value < 0 && !zero ? "-" : "") + text;
}

TEST(FormatNumber, TheTestsOwnRoundingIsSound) {
    EXPECT_EQ(RoundedByHand(1.005, 2), "1.01");
    EXPECT_EQ(RoundedByHand(-0.25, 1), "-0.3");
    EXPECT_EQ(RoundedByHand(0.004, 1), "0.0");
    EXPECT_EQ(RoundedByHand(99.95, 1), "100.0");
    EXPECT_EQ(RoundedByHand(12.5, 0), "13");
}

TEST(FormatNumber, RandomNumbersRoundAsByHand) {
    std::mt19937 random(1);
    for (int i = 0; i < 5000; ++i) {
        const double value = RandomValue(random);
        const int places = static_cast<int>(random() % 8);
        const std::string picture =
            places == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(places), '0');
        EXPECT_EQ(FormatNumber(value, picture), RoundedByHand(value, places)) << value;
    }
}

// A scientific text reads back to within half a unit of its last place, and its mantissa has one digit that
// is not 0 left of the mark.
TEST(FormatNumber, RandomScientificTextsReadBack) {
    std::mt19937 random(2);
    for (int i = 0; i < 5000; ++i) {
        const double value = RandomValue(random);
        if (value == 0.0) continue;
        const int places = static_cast<int>(random() % 8);
        const std::string picture = "0." + std::string(static_cast<std::size_t>(places), '0') + "E+00";
        const std::string text = FormatNumber(value, picture);
        const double exponent = std::floor(std::log10(std::fabs(value)) + 1e-12);
        const double half = 0.5 * std::pow(10.0, exponent - places);
        EXPECT_NEAR(std::strtod(text.c_str(), nullptr), value, half * (1.0 + 1e-6)) << text;
        const std::size_t first = text[0] == '-' ? 1 : 0;
        EXPECT_NE(text[first], '0') << text;
        EXPECT_EQ(text[first + 1], '.') << text;
        EXPECT_EQ(text.find('E') - first, static_cast<std::size_t>(places) + 2) << text;
    }
}

// Removing the commas of a grouped text gives the ungrouped one, and they stand three apart.
TEST(FormatNumber, RandomGroupsStandThreeApart) {
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const double value = std::floor(RandomValue(random));
        const std::string text = FormatNumber(value, "#,##0");
        EXPECT_EQ(StripSeparators(text), FormatNumber(value, "0"));
        for (std::size_t k = 0; k < text.size(); ++k)
            EXPECT_EQ(text[text.size() - 1 - k] == ',', k % 4 == 3 && text[text.size() - 1 - k] != '-')
                << text;
    }
}

// Whatever a picture holds, it is written without a crash; without "#" and parts, each of its other
// characters comes through in order.
TEST(FormatNumber, RandomPicturesAreHarmless) {
    std::mt19937 random(20200421);
    const std::string alphabet = "000###..,,%Ee+-+-;() xq\"\\\xE4";
    for (int i = 0; i < 20000; ++i) {
        std::string picture;
        for (std::size_t n = random() % 16; n > 0; --n)
            picture += alphabet[random() % alphabet.size()];
        const double value = RandomValue(random);
        const std::string text = FormatNumber(value, picture);
        if (picture.empty() || picture.find(';') != std::string::npos) continue;
        for (const char letter : {'(', ')', 'x', 'q', '"', '\\', '\xE4', '%'})
            EXPECT_EQ(std::count(text.begin(), text.end(), letter),
                      std::count(picture.begin(), picture.end(), letter))
                << value << " as " << picture;
        EXPECT_EQ(picture.find('.') == std::string::npos, text.find('.') == std::string::npos)
            << value << " as " << picture;
        const std::string twoParts = FormatNumber(std::fabs(value), picture + ";" + picture);
        EXPECT_EQ(FormatNumber(-std::fabs(value), picture + ";" + picture), twoParts)
            << value << " as " << picture;
    }
}

} // namespace
} // namespace Quillon
