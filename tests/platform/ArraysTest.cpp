// Arrays that know their base, and by what they are known again.
#include "platform/Arrays.h"
#include "platform/Fingerprint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <utility>

namespace Quillon {
namespace {

TEST(BasedArray, CountsFromItsBase) {
    OneBased<int> sets(3, 7);
    EXPECT_EQ(OneBased<int>::Low(), 1);
    EXPECT_EQ(sets.Hi(), 3);
    EXPECT_EQ(sets.Size(), 3U);
    sets[1] = 10;
    sets[3] = 30;
    EXPECT_EQ(sets.Data()[0], 10);
    EXPECT_EQ(sets.Data()[1], 7);
    EXPECT_EQ(sets.Data()[2], 30);

    ZeroBased<int> slots(3);
    EXPECT_EQ(ZeroBased<int>::Low(), 0);
    EXPECT_EQ(slots.Size(), 4U);
    EXPECT_EQ(slots[3], 0);
    slots[0] = 5;
    EXPECT_EQ(slots.Data()[0], 5);

    BasedArray<int, -2> around(2);
    EXPECT_EQ(around.Size(), 5U);
    around[-2] = 1;
    EXPECT_EQ(around.Data()[0], 1);
}

TEST(BasedArray, AnEmptyOneEndsBelowItsBase) {
    const OneBased<int> none;
    EXPECT_TRUE(none.Empty());
    EXPECT_EQ(none.Hi(), 0);
    EXPECT_EQ(none.Size(), 0U);
    EXPECT_EQ(ZeroBased<int>().Hi(), -1);
    EXPECT_TRUE(OneBased<int>(0).Empty());
    EXPECT_TRUE(OneBased<int>(-5).Empty());
    EXPECT_FALSE(ZeroBased<int>(0).Empty());
}

TEST(BasedArray, RecreatingForgetsAndResizingKeeps) {
    OneBased<int> points(3, 1);
    points[2] = 9;
    points.Resize(5, 4);
    EXPECT_EQ(points[2], 9);
    EXPECT_EQ(points[4], 4);
    EXPECT_EQ(points[5], 4);
    points.Resize(2);
    EXPECT_EQ(points.Hi(), 2);
    EXPECT_EQ(points[2], 9);
    points.Recreate(2, 6);
    EXPECT_EQ(points[1], 6);
    EXPECT_EQ(points[2], 6);
    points.Recreate(0);
    EXPECT_TRUE(points.Empty());
    points.Resize(-1);
    EXPECT_TRUE(points.Empty());
}

TEST(BasedArray, IsWalkedInOrderAndCompared) {
    OneBased<int> points(4);
    std::iota(points.begin(), points.end(), 1);
    int sum = 0;
    for (const int point : points)
        sum = 10 * sum + point;
    EXPECT_EQ(sum, 1234);
    OneBased<int> other = points;
    EXPECT_EQ(points, other);
    other[4] = 0;
    EXPECT_NE(points, other);
    other = points;
    other.Resize(3);
    EXPECT_NE(points, other);
}

TEST(BasedMatrix, LiesRowByRow) {
    OneBasedMatrix<int> table(2, 3, -1);
    EXPECT_EQ(table.RowHi(), 2);
    EXPECT_EQ(table.ColumnHi(), 3);
    EXPECT_EQ(table.Size(), 6U);
    for (long i = 1; i <= 2; ++i)
        for (long j = 1; j <= 3; ++j) {
            EXPECT_EQ(table(i, j), -1);
            table(i, j) = static_cast<int>(10 * i + j);
        }
    const int rows[] = {11, 12, 13, 21, 22, 23};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(table.Data()[i], rows[i]);
    EXPECT_EQ(table.Row(1), table.Data());
    EXPECT_EQ(table.Row(2)[0], 21);

    ZeroBasedMatrix<int> square(1, 1);
    EXPECT_EQ(square.Size(), 4U);
    square(1, 0) = 5;
    EXPECT_EQ(square.Row(1)[0], 5);
    EXPECT_EQ(square.Data()[2], 5);
}

TEST(BasedMatrix, WithoutRowsOrColumnsIsEmpty) {
    EXPECT_EQ(OneBasedMatrix<int>().Size(), 0U);
    EXPECT_EQ(OneBasedMatrix<int>().RowHi(), 0);
    EXPECT_EQ(OneBasedMatrix<int>(0, 3).Size(), 0U);
    EXPECT_EQ(OneBasedMatrix<int>(3, 0).Size(), 0U);
    EXPECT_EQ(ZeroBasedMatrix<int>(-1, 5).Size(), 0U);
}

TEST(BasedMatrix, RecreatingForgets) {
    ZeroBasedMatrix<int> table(1, 1, 3);
    const ZeroBasedMatrix<int> before = table;
    EXPECT_EQ(table, before);
    table(0, 1) = 4;
    EXPECT_NE(table, before);
    table.Recreate(2, 0, 8);
    EXPECT_EQ(table.Size(), 3U);
    EXPECT_EQ(table(2, 0), 8);
    // The same elements in another shape are another matrix.
    EXPECT_NE(ZeroBasedMatrix<int>(0, 2), ZeroBasedMatrix<int>(2, 0));
}

#ifdef QUILLON_CHECK_INDEX
template <class Action> void ExpectBadSubscript(Action action) {
    try {
        action();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Subscript out of range");
    }
}

TEST(BasedArray, ASubscriptOutOfRangeIsAnError) {
    OneBased<int> sets(3);
    const OneBased<int>& read = sets;
    ExpectBadSubscript([&] { sets[0] = 1; });
    ExpectBadSubscript([&] { sets[4] = 1; });
    ExpectBadSubscript([&] { return read[-1]; });
    ExpectBadSubscript([&] { return OneBased<int>()[1]; });
    ExpectBadSubscript([&] { return ZeroBased<int>(2)[-1]; });
    ExpectBadSubscript([&] { return ZeroBased<int>(2)[3]; });
}

TEST(BasedMatrix, ASubscriptOutOfRangeIsAnError) {
    OneBasedMatrix<int> table(2, 3);
    const OneBasedMatrix<int>& read = table;
    ExpectBadSubscript([&] { table(0, 1) = 1; });
    ExpectBadSubscript([&] { table(3, 1) = 1; });
    ExpectBadSubscript([&] { table(1, 0) = 1; });
    ExpectBadSubscript([&] { table(1, 4) = 1; }); // not the first element of row 2
    ExpectBadSubscript([&] { return read(2, 4); });
}
#endif

Fingerprint PrintOf(const OneBased<float>& array) {
    Fingerprint print;
    print.Add(array);
    return print;
}

// Eleven singles are a step of eight and a part of another, and the last bit of each counts.
TEST(Fingerprint, AnyElementThatChangesShows) {
    OneBased<float> array(11, 0.5F);
    const Fingerprint before = PrintOf(array);
    for (long i = 1; i <= array.Hi(); ++i) {
        array[i] = std::nextafter(0.5F, 1.0F);
        EXPECT_FALSE(PrintOf(array) == before) << i;
        array[i] = 0.5F;
        EXPECT_TRUE(PrintOf(array) == before) << i;
    }
    EXPECT_FALSE(PrintOf(OneBased<float>(10, 0.5F)) == before);
    EXPECT_FALSE(PrintOf(OneBased<float>(1, 0.0F)) == PrintOf(OneBased<float>(2, 0.0F)));
    array[9] = 1.0F; // the same place of another word as the first one
    const Fingerprint ninth = PrintOf(array);
    std::swap(array[1], array[9]);
    EXPECT_FALSE(PrintOf(array) == ninth) << "the order counts";
}

} // namespace
} // namespace Quillon
