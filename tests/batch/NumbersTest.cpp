// Numbers for other programs: read back, they have the same bits; texts are JSON strings in UTF-8.
#include "batch/outputs/Numbers.h"
#include "batch/outputs/JsonString.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>

namespace Quillon {
namespace {

TEST(BatchNumbers, PlainOnesReadPlainly) {
    EXPECT_EQ(ShortestText(42.5F), "42.5");
    EXPECT_EQ(ShortestText(0.1F), "0.1");
    EXPECT_EQ(ShortestText(1.0F), "1");
    EXPECT_EQ(ShortestText(-0.25), "-0.25");
    EXPECT_EQ(ShortestText(0.1), "0.1");
}

TEST(BatchNumbers, WhatIsNotFiniteHasNoText) {
    EXPECT_EQ(ShortestText(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(ShortestText(std::nan("")), "");
    EXPECT_EQ(ShortestText(std::nanf("")), "");
    EXPECT_EQ(ShortestText(-std::numeric_limits<float>::infinity()), "");
}

TEST(BatchNumbers, DoublesComeBackBitForBit) {
    std::mt19937_64 bits(1);
    for (int i = 0; i < 200000; ++i) {
        const auto value = std::bit_cast<double>(bits());
        if (!std::isfinite(value)) continue;
        const double back = std::strtod(ShortestText(value).c_str(), nullptr);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value));
    }
}

TEST(BatchNumbers, SinglesComeBackThroughADouble) {
    std::mt19937 bits(2);
    for (int i = 0; i < 1000000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(bits()));
        if (!std::isfinite(value)) continue;
        const auto back = static_cast<float>(std::strtod(ShortestText(value).c_str(), nullptr));
        ASSERT_EQ(std::bit_cast<std::uint32_t>(back), std::bit_cast<std::uint32_t>(value));
    }
}

TEST(BatchJsonString, EscapesWhatJsonForbids) {
    EXPECT_EQ(JsonString("plain, <->"), "\"plain, <->\"");
    EXPECT_EQ(JsonString("a\"b\\c"), "\"a\\\"b\\\\c\"");
    EXPECT_EQ(JsonString("tab\tnew\nline"), "\"tab\\u0009new\\u000aline\"");
    EXPECT_EQ(JsonString(std::string("nul\0", 4)), "\"nul\\u0000\"");
}

TEST(BatchJsonString, KeepsUtf8AndTakesOtherBytesAsLatin1) {
    EXPECT_EQ(JsonString("\xC3\xA5 \xE2\x82\xAC \xF0\x9F\x94\xAC"),
              "\"\xC3\xA5 \xE2\x82\xAC \xF0\x9F\x94\xAC\"");
    EXPECT_EQ(JsonString("\xE5"), "\"\\u00e5\"");            // Latin-1
    EXPECT_EQ(JsonString("\xC3"), "\"\\u00c3\"");            // cut short
    EXPECT_EQ(JsonString("\xC0\x80"), "\"\\u00c0\\u0080\""); // overlong
    EXPECT_EQ(JsonString("\xE0\x80\x80"), "\"\\u00e0\\u0080\\u0080\"");
    EXPECT_EQ(JsonString("\xED\xA0\x80"), "\"\\u00ed\\u00a0\\u0080\""); // half of a surrogate pair
    EXPECT_EQ(JsonString("\xF5\x80\x80\x80"), "\"\\u00f5\\u0080\\u0080\\u0080\"");
}

} // namespace
} // namespace Quillon
