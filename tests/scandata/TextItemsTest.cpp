// Free-format input: lines, items, quotes and the end of the text.
#include "scandata/reader/TextItems.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

std::string ErrorOf(TextItems& items, std::string_view (*read)(TextItems&)) {
    try {
        read(items);
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "no error";
}

TEST(TextItems, LinesEndWithCrLfLfOrCr) {
    TextItems items{"one\r\ntwo\nthree\rfour"};
    EXPECT_EQ(ReadTextLine(items), "one");
    EXPECT_EQ(ReadTextLine(items), "two");
    EXPECT_EQ(ReadTextLine(items), "three");
    EXPECT_EQ(ReadTextLine(items), "four");
    EXPECT_EQ(ErrorOf(items, ReadTextLine), "Input past end of file");
}

TEST(TextItems, ALineIsTakenWithItsCommasQuotesAndBlanks) {
    TextItems items{" \"a\", b \r\n"};
    EXPECT_EQ(ReadTextLine(items), " \"a\", b ");
}

TEST(TextItems, AnEmptyLineIsALine) {
    TextItems items{"\r\n\nx"};
    EXPECT_EQ(ReadTextLine(items), "");
    EXPECT_EQ(ReadTextLine(items), "");
    EXPECT_EQ(ReadTextLine(items), "x");
}

TEST(TextItems, AnItemEndsAtALineEndOrAtAComma) {
    TextItems items{"  a b ,c\r\n d"};
    EXPECT_EQ(ReadTextItem(items), "a b ");
    EXPECT_TRUE(items.AfterComma);
    EXPECT_EQ(ReadTextItem(items), "c");
    EXPECT_FALSE(items.AfterComma);
    EXPECT_EQ(ReadTextItem(items), "d");
    EXPECT_EQ(ErrorOf(items, ReadTextItem), "Input past end of file");
}

TEST(TextItems, ACommaBeforeTheLineEndLeavesAnEmptyItem) {
    TextItems items{"a,\r\nb"};
    EXPECT_EQ(ReadTextItem(items), "a");
    EXPECT_EQ(ReadTextItem(items), "");
    EXPECT_EQ(ReadTextItem(items), "b");
}

TEST(TextItems, AQuotedItemRunsToItsClosingQuote) {
    TextItems items{"  \"a, b\r\nc\" ,d\r\n\"e\"\r\nf"};
    EXPECT_EQ(ReadTextItem(items), "a, b\r\nc");
    EXPECT_EQ(ReadTextItem(items), "d");
    EXPECT_EQ(ReadTextItem(items), "e");
    EXPECT_EQ(ReadTextItem(items), "f");
}

TEST(TextItems, AQuoteThatIsNeverClosedRunsToTheEnd) {
    TextItems items{"\"a, b\r\nc"};
    EXPECT_EQ(ReadTextItem(items), "a, b\r\nc");
    EXPECT_TRUE(NoItemLeft(items));
}

TEST(TextItems, AQuoteInsideAnItemIsACharacterOfIt) {
    TextItems items{"a\"b,c"};
    EXPECT_EQ(ReadTextItem(items), "a\"b");
}

TEST(TextItems, EmptyLinesAtTheEndAreNoItems) {
    TextItems items{"a\r\n  \r\n\r\n"};
    EXPECT_FALSE(NoItemLeft(items));
    ReadTextItem(items);
    EXPECT_TRUE(NoItemLeft(items));
}

TEST(TextItems, AnEmptyLineInBetweenIsAnItem) {
    TextItems items{"a\n\nb"};
    ReadTextItem(items);
    EXPECT_FALSE(NoItemLeft(items));
    EXPECT_EQ(ReadTextItem(items), "");
}

TEST(TextItems, BehindACommaTheRestOfTheLineIsAnItem) {
    TextItems open{"a,\r\n"};
    ReadTextItem(open);
    EXPECT_FALSE(NoItemLeft(open));
    TextItems closed{"a,"};
    ReadTextItem(closed);
    EXPECT_TRUE(NoItemLeft(closed));
}

TEST(TextItems, BlanksAreStrippedAndTabsAreNot) {
    EXPECT_EQ(WithoutLeadingBlanks("  \ta "), "\ta ");
    EXPECT_EQ(WithoutLeadingBlanks("   "), "");
    EXPECT_EQ(WithoutBlanks("  a b\t "), "a b\t");
    EXPECT_EQ(WithoutBlanks(""), "");
    EXPECT_EQ(WithoutBlanks("  "), "");
}

} // namespace
} // namespace Quillon
