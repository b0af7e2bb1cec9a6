// The tokeniser of point lines, position by position.
#include "scandata/reader/ScanReader.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

TEST(NextToken, GivesTheTextBeforeTheNearestSeparator) {
    long position = 1;
    EXPECT_EQ(NextToken(position, "6.1,0.5 0.01", "\t ,"), "6.1");
    EXPECT_EQ(position, 5);
    EXPECT_EQ(NextToken(position, "6.1,0.5 0.01", "\t ,"), "0.5");
    EXPECT_EQ(position, 9);
    EXPECT_EQ(NextToken(position, "6.1,0.5 0.01", "\t ,"), "0.01");
    EXPECT_EQ(position, 0);
}

TEST(NextToken, AnySeparatorOfTheListCounts) {
    long position = 1;
    EXPECT_EQ(NextToken(position, "ab;cd:ef", ":;"), "ab");
    EXPECT_EQ(position, 4);
    EXPECT_EQ(NextToken(position, "ab;cd:ef", ":"), "cd");
    EXPECT_EQ(position, 7);
}

TEST(NextToken, APositionBelowOneIsTakenAsOne) {
    long position = 0;
    EXPECT_EQ(NextToken(position, "a b", " "), "a");
    EXPECT_EQ(position, 3);
    position = -7;
    EXPECT_EQ(NextToken(position, "a b", " "), "a");
    EXPECT_EQ(position, 3);
}

TEST(NextToken, TwoSeparatorsEncloseAnEmptyToken) {
    long position = 2;
    EXPECT_EQ(NextToken(position, "a\t\tb", "\t"), "");
    EXPECT_EQ(position, 3);
}

TEST(NextToken, ASeparatorAtTheEndLeavesThePositionBehindIt) {
    long position = 1;
    EXPECT_EQ(NextToken(position, "a ", " "), "a");
    EXPECT_EQ(position, 3);
    EXPECT_EQ(NextToken(position, "a ", " "), "");
    EXPECT_EQ(position, 0);
}

TEST(NextToken, NothingIsLeftBehindTheEnd) {
    long position = 9;
    EXPECT_EQ(NextToken(position, "abc", " "), "");
    EXPECT_EQ(position, 0);
    position = 1;
    EXPECT_EQ(NextToken(position, "", " "), "");
    EXPECT_EQ(position, 0);
    position = 2;
    EXPECT_EQ(NextToken(position, "abc", ""), "bc");
    EXPECT_EQ(position, 0);
}

} // namespace
} // namespace Quillon
