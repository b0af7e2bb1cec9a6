// Letters, blanks and parts of a text, and counted words.
#include "platform/Letters.h"
#include "platform/Words.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

using Parts = std::vector<std::string_view>;

TEST(Letters, OnlyThoseOfAsciiHaveTwoCases) {
    EXPECT_EQ(SmallLetters("Ab[Z]\xC4_9"), "ab[z]\xC4_9");
    EXPECT_EQ(CapitalLetters("aB{z}\xE4_9"), "AB{Z}\xE4_9");
    EXPECT_TRUE(SameLetters("Run.RA1", "rUN.ra1"));
    EXPECT_FALSE(SameLetters("run", "runs"));
    EXPECT_FALSE(SameLetters("@", "`")); // 32 apart, as letters are
}

TEST(Letters, AnEndingIsFoundInAnyCase) {
    EXPECT_TRUE(EndsWithLetters("Plot.GRF", ".grf"));
    EXPECT_TRUE(EndsWithLetters(".grf", ".grf"));
    EXPECT_TRUE(EndsWithLetters("plot", ""));
    EXPECT_FALSE(EndsWithLetters("grf", ".grf"));
    EXPECT_FALSE(EndsWithLetters("plot.grf ", ".grf"));
}

TEST(Letters, BlanksGoFromTheEndsAlone) {
    EXPECT_EQ(Trimmed(" \t a b \t"), "a b");
    EXPECT_EQ(Trimmed("\ta ", " "), "\ta");
    EXPECT_EQ(Trimmed(" \t"), "");
    EXPECT_EQ(Trimmed(""), "");
}

TEST(Letters, PartsStandBetweenSeparatorsTheLastOneToo) {
    EXPECT_EQ(PartsBetween("0.8, 1,1.25", ','), (Parts{"0.8", " 1", "1.25"}));
    EXPECT_EQ(PartsBetween("1", ','), (Parts{"1"}));
    EXPECT_EQ(PartsBetween("", ','), (Parts{""}));
    EXPECT_EQ(PartsBetween(",1,", ','), (Parts{"", "1", ""}));
}

TEST(Words, OneIsOneAndAllElseAreSeveral) {
    EXPECT_EQ(Counted(1, "scan"), "1 scan");
    EXPECT_EQ(Counted(0, "scan"), "0 scans");
    EXPECT_EQ(Counted(2, "minimum", "minima"), "2 minima");
}

TEST(Words, SentencesAndTwoDigits) {
    EXPECT_EQ(Joined({"One.", "Two."}), "One. Two.");
    EXPECT_EQ(Joined({}), "");
    EXPECT_EQ(ClockDigits(7) + ":" + ClockDigits(30), "07:30");
}

} // namespace
} // namespace Quillon
