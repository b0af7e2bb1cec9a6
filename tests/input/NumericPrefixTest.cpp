// Reading a number from text, held against the C library's own conversion.
#include "input/NUMINPUT.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <random>

namespace Quillon {
namespace {

struct Reading {
    const char* Text;
    double Value;
    std::size_t Used;
};

TEST(NumericPrefix, TakesTheLongestPartThatIsANumber) {
    const Reading readings[] = {
        {"5", 5.0, 1},
        {"  7.25cm", 7.25, 6},
        {"\t 20.0", 20.0, 6},
        {"+3", 3.0, 2},
        {"-3.5", -3.5, 4},
        {".5", 0.5, 2},
        {"-.5", -0.5, 3},
        {"+.5e1", 5.0, 5},
        {"5.", 5.0, 2},
        {"5.e1", 50.0, 4},
        {"1.5.2", 1.5, 3},
        {"1,5", 1.0, 1},
        {"12 34", 12.0, 2},
        {"60,000", 60.0, 2},
        {"0003501", 3501.0, 7},
        {"1.72000E-0002", 0.0172, 13},
        {"-2.25000E-002", -0.0225, 13},
        {"9.047e+10", 9.047e10, 9},
        {"3.3160E09", 3.316e9, 9},
        {"1.5D3", 1500.0, 5},
        {"1.5d-3", 0.0015, 6},
        {"-1.25000000000000D+0002", -125.0, 23},
        {"1E5D3", 1e5, 3},
        {"1D5E3", 1e5, 3},
        {"2E3.5", 2000.0, 3},
        {"1-2", 1.0, 1},
    };
    for (const Reading& reading : readings) {
        std::size_t used = 99;
        EXPECT_EQ(NumericPrefix(reading.Text, &used), reading.Value) << reading.Text;
        EXPECT_EQ(used, reading.Used) << reading.Text;
    }
}

TEST(NumericPrefix, ALetterWithoutDigitsIsNoExponent) {
    for (const char* text : {"1E", "1e", "1D", "1E+", "1E-", "1Ex", "1E +5", "1E+-5", "1EE5"}) {
        std::size_t used = 99;
        EXPECT_EQ(NumericPrefix(text, &used), 1.0) << text;
        EXPECT_EQ(used, 1U) << text;
    }
}

TEST(NumericPrefix, WithoutANumberTheValueIsZero) {
    for (const char* text :
         {"",    " ",   "   ", "+",    "-",   ".",        "-.", "+.e5", "E5",     "abc",  "- 5",
          "--5", "+-5", "inf", "-inf", "nan", "infinity", ",5", "%",    "(none)", "\r\n5"}) {
        std::size_t used = 99;
        EXPECT_EQ(NumericPrefix(text, &used), 0.0) << text;
        EXPECT_EQ(used, 0U) << text;
    }
}

TEST(NumericPrefix, HexadecimalIsNotRead) {
    std::size_t used = 99;
    EXPECT_EQ(NumericPrefix("0x1F", &used), 0.0);
    EXPECT_EQ(used, 1U);
}

TEST(NumericPrefix, WorksWithoutTheCount) {
    EXPECT_EQ(NumericPrefix(" 6.85 cm"), 6.85);
}

TEST(NumericPrefix, ReadsOnlyTheTextItIsGiven) {
    const std::string_view line = "6.8512E3";
    EXPECT_EQ(NumericPrefix(line.substr(0, 4)), 6.85);
    EXPECT_EQ(NumericPrefix(line.substr(0, 7)), 6.8512);
}

// Published hard cases of decimal to binary conversion: the nearest double is known bit by bit.
TEST(NumericPrefix, RoundsToTheNearestDouble) {
    EXPECT_EQ(NumericPrefix("9007199254740993"), 0x1p53);       // a tie goes to the even neighbour
    EXPECT_EQ(NumericPrefix("9007199254740995"), 0x1p53 + 4.0); // and here upward
    EXPECT_EQ(NumericPrefix("9007199254740993.0000000000000001"), 0x1p53 + 2.0); // just above the tie
    EXPECT_EQ(NumericPrefix("2.2250738585072011e-308"), 0x0.fffffffffffffp-1022);
    EXPECT_EQ(NumericPrefix("2.2250738585072014D-308"), 0x1p-1022);
    EXPECT_EQ(NumericPrefix("0.1"), 0x1.999999999999ap-4);
    EXPECT_EQ(NumericPrefix("1.00000000000000011102230246251565404236316680908203125"), 1.0); // 1 + 2^-53
    EXPECT_EQ(NumericPrefix("1.00000000000000011102230246251565404236316680908203126"), 1.0 + 0x1p-52);
}

TEST(NumericPrefix, BelowTheRangeIsZero) {
    for (const char* text : {"1E-400", "-1E-400", "1D-99999", "1E-99999999999999999999999", "2E-324"})
        EXPECT_EQ(NumericPrefix(text), 0.0) << text;
    EXPECT_EQ(NumericPrefix("4.9406564584124654E-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(NumericPrefix("0." + std::string(500, '0') + "1"), 0.0);
    EXPECT_EQ(NumericPrefix("0E99999999999999999999"), 0.0);
    EXPECT_EQ(NumericPrefix("0." + std::string(400, '0') + "25E+400"), 0.25);
    EXPECT_EQ(NumericPrefix("25" + std::string(400, '0') + "E-400"), 25.0);
}

TEST(NumericPrefix, BeyondTheRangeIsOverflow) {
    const std::string many(400, '7');
    for (const std::string& text :
         {std::string("1E400"), std::string("-1E400"), std::string("1D+309"), std::string("  1.8E308 nm"),
          std::string("1E99999999999999999999999"), std::string("0.001E99999999"), many, "-" + many + ".5"}) {
        std::size_t used = 0;
        try {
            NumericPrefix(text, &used);
            ADD_FAILURE() << "no error for " << text;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Text, "Overflow") << text;
        }
        EXPECT_GT(used, 4U) << text; // the number was there
    }
    EXPECT_EQ(NumericPrefix("1.7976931348623157E308"), std::numeric_limits<double>::max());
}

struct CommaMark : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Files have a decimal point in every locale.
TEST(NumericPrefix, AndPicturesDoNotFollowTheLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaMark));
    const std::string formerC = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) // whichever the machine has, if any
        if (std::setlocale(LC_NUMERIC, name)) break;
    EXPECT_EQ(NumericPrefix("1234.5"), 1234.5);
    EXPECT_EQ(NumericPrefix("1,5"), 1.0);
    EXPECT_EQ(FormatNumber(12345.5, "##,##0.00"), "12,345.50");
    EXPECT_EQ(SingleText(12345.5F), "12345.5");
    std::setlocale(LC_NUMERIC, formerC.c_str());
    std::locale::global(before);
}

// The longest beginning of the text that the C library's conversion takes as a whole, and its value.
struct Expected {
    double Value = 0.0;
    std::size_t Used = 0;
};
Expected ReadWithTheLibrary(const std::string& text) {
    for (std::size_t used = text.size(); used > 0; --used) {
        std::string number = text.substr(0, used);
        if (number.find('x') != std::string::npos) continue; // the library would read hexadecimal numbers too
        for (char& c : number)
            if (c == 'd' || c == 'D') c = 'e';
        char* end = nullptr;
        const double value = std::strtod(number.c_str(), &end);
        if (end == number.c_str() + used) return {value, used};
    }
    return {};
}

void ExpectSameAsLibrary(const std::string& text) {
    const Expected expected = ReadWithTheLibrary(text);
    std::size_t used = 99;
    try {
        EXPECT_EQ(NumericPrefix(text, &used), expected.Value) << '"' << text << '"';
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Overflow");
        EXPECT_TRUE(std::isinf(expected.Value)) << '"' << text << '"';
    }
    EXPECT_EQ(used, expected.Used) << '"' << text << '"';
}

TEST(NumericPrefix, RandomTextsAgreeWithTheLibrary) {
    std::mt19937 random(20200421);
    const std::string alphabet = "00112233456789..++--eEdD  \t,x";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (std::size_t n = random() % 14; n > 0; --n)
            text += alphabet[random() % alphabet.size()];
        ExpectSameAsLibrary(text);
    }
}

TEST(NumericPrefix, RandomNumbersAgreeWithTheLibrary) {
    std::mt19937 random(42);
    const char letters[] = {'e', 'E', 'd', 'D'};
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 3, ' ');
        text += random() % 3 == 0 ? "-" : random() % 2 == 0 ? "+" : "";
        for (std::size_t n = 1 + random() % 20; n > 0; --n)
            text += static_cast<char>('0' + random() % 10);
        text += '.';
        for (std::size_t n = random() % 20; n > 0; --n)
            text += static_cast<char>('0' + random() % 10);
        if (random() % 4 > 0) {
            text += letters[random() % 4];
            text += random() % 2 == 0 ? "-" : random() % 2 == 0 ? "+" : "";
            text += std::to_string(random() % 330);
        }
        text += random() % 2 == 0 ? "" : " 5";
        ExpectSameAsLibrary(text);
    }
}

// Each bit pattern survives the way through seventeen digits.
TEST(NumericPrefix, SeventeenDigitsGiveTheSameBits) {
    std::mt19937_64 random(7);
    int tried = 0;
    while (tried < 5000) {
        const std::uint64_t bits = random();
        double value = 0.0;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        char text[40];
        std::snprintf(text, sizeof text, "%.16e", value);
        EXPECT_EQ(NumericPrefix(text), value) << text;
        ++tried;
    }
}

} // namespace
} // namespace Quillon
