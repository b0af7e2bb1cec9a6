// Conversions to the stored widths: to nearest with ties to even, and an error for what does not fit.
#include "platform/Narrow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

namespace Quillon {
namespace {

std::string ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

constexpr double Infinity = std::numeric_limits<double>::infinity();
const double NoNumber = std::numeric_limits<double>::quiet_NaN();

TEST(Narrow, RoundsToTheNearestWithTiesToEven) {
    EXPECT_EQ(ToInt16(0.5), 0);
    EXPECT_EQ(ToInt16(1.5), 2);
    EXPECT_EQ(ToInt16(2.5), 2);
    EXPECT_EQ(ToInt16(-0.5), 0);
    EXPECT_EQ(ToInt16(-1.5), -2);
    EXPECT_EQ(ToInt16(-2.5), -2);
    EXPECT_EQ(ToInt16(2.4999), 2);
    EXPECT_EQ(ToInt16(2.5001), 3);
    EXPECT_EQ(ToInt16(2.5F), 2);
    EXPECT_EQ(ToInt32(0.5), 0);
    EXPECT_EQ(ToInt32(123456.5), 123456);
    EXPECT_EQ(ToInt32(123457.5), 123458);
    EXPECT_EQ(ToInt32(-123456.5), -123456);
}

TEST(Narrow, SixteenBitsEndInOverflow) {
    EXPECT_EQ(ToInt16(32767.0), 32767);
    EXPECT_EQ(ToInt16(32767.4999), 32767);
    EXPECT_EQ(ToInt16(-32768.0), -32768);
    EXPECT_EQ(ToInt16(-32768.5), -32768); // the tie goes to the even neighbour, which still fits
    for (const double value : {32767.5, 32768.0, -32768.5001, 1e30, -1e30, Infinity, -Infinity, NoNumber})
        EXPECT_EQ(ErrorOf([value] { ToInt16(value); }), "Overflow") << value;
}

TEST(Narrow, ThirtyTwoBitsEndInOverflow) {
    EXPECT_EQ(ToInt32(2147483647.0), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ToInt32(2147483647.25), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    for (const double value : {2147483647.5, 2147483648.0, -2147483649.0, Infinity, -Infinity, NoNumber})
        EXPECT_EQ(ErrorOf([value] { ToInt32(value); }), "Overflow") << value;
}

TEST(Narrow, WholeNumbersOfAnyTypeAreChecked) {
    EXPECT_EQ(ToInt16(32767L), 32767);
    EXPECT_EQ(ToInt16(-32768), -32768);
    EXPECT_EQ(ToInt16(std::size_t{18}), 18);
    EXPECT_EQ(ErrorOf([] { ToInt16(32768); }), "Overflow");
    EXPECT_EQ(ErrorOf([] { ToInt16(-32769L); }), "Overflow");
    EXPECT_EQ(ErrorOf([] { ToInt16(std::numeric_limits<std::uint64_t>::max()); }), "Overflow");
    EXPECT_EQ(ErrorOf([] { ToInt16(4294967295U); }), "Overflow"); // not -1
    EXPECT_EQ(ToInt32(std::int64_t{-2147483648LL}), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ErrorOf([] { ToInt32(std::int64_t{2147483648LL}); }), "Overflow");
}

TEST(Narrow, SinglesAreRoundedAndFinite) {
    EXPECT_EQ(ToSingle(0.1), 0.1F);
    EXPECT_EQ(ToSingle(1.0 + 0x1p-24), 1.0F); // a tie: to the even neighbour
    EXPECT_EQ(ToSingle(1.0 + 0x1p-24 + 0x1p-40), 1.0F + 0x1p-23F);
    EXPECT_EQ(ToSingle(1e-60), 0.0F);
    EXPECT_EQ(ToSingle(3.4028234e38), std::numeric_limits<float>::max());
    for (const double value : {3.5e38, -3.5e38, 1e300, Infinity, -Infinity, NoNumber})
        EXPECT_EQ(ErrorOf([value] { ToSingle(value); }), "Overflow") << value;
}

TEST(Narrow, DivisionByZeroIsTold) {
    EXPECT_EQ(Divide(1.0, 4.0), 0.25);
    EXPECT_EQ(Divide(0.0, -4.0), 0.0);
    EXPECT_EQ(ErrorOf([] { Divide(1.0, 0.0); }), "Division by zero");
    EXPECT_EQ(ErrorOf([] { Divide(0.0, 0.0); }), "Division by zero");
    EXPECT_EQ(ErrorOf([] { Divide(1.0, -0.0); }), "Division by zero");
}

TEST(Narrow, LogarithmAndRootRefuseWhatTheyHaveNot) {
    EXPECT_EQ(Ln(1.0), 0.0);
    EXPECT_DOUBLE_EQ(Ln(std::exp(2.0)), 2.0);
    for (const double value : {0.0, -0.0, -1.0, NoNumber})
        EXPECT_EQ(ErrorOf([value] { Ln(value); }), "Invalid procedure call or argument") << value;
    EXPECT_EQ(Sqrt(6.25), 2.5);
    EXPECT_EQ(Sqrt(0.0), 0.0);
    for (const double value : {-1e-300, -1.0, NoNumber})
        EXPECT_EQ(ErrorOf([value] { Sqrt(value); }), "Invalid procedure call or argument") << value;
}

TEST(Narrow, FlagsAreMinusOneAndZero) {
    EXPECT_EQ(Flag(true), -1);
    EXPECT_EQ(Flag(false), 0);
    static_assert(std::is_same_v<decltype(Flag(true)), std::int16_t>);
}

} // namespace
} // namespace Quillon
