#pragma once
// A table of singles by point and set, both counted from one, as graphs hand their data over.

#include "platform/Arrays.h"

namespace Quillon {

// A value that is not there: the single with the bits FF7FC99E. Whoever builds a graph fills gaps and the
// tails of shorter sets with it, and every routine of the chart passes over it.
inline constexpr float MissingValue = -3.4e38F;

class SetTable {
public:
    SetTable() = default;
    SetTable(long points, long sets, float value = MissingValue) { Recreate(points, sets, value); }

    // Replaces the table; the former contents are gone.
    void Recreate(long points, long sets, float value = MissingValue) { Items.Recreate(sets, points, value); }

    long Points() const { return Items.ColumnHi() > 0 ? Items.ColumnHi() : 0; }
    long Sets() const { return Items.RowHi() > 0 ? Items.RowHi() : 0; }
    bool Empty() const { return Items.Size() == 0; }

    float& operator()(long point, long set) { return Items(set, point); }
    const float& operator()(long point, long set) const { return Items(set, point); }

    // The first point of a set; the set's others follow without gaps, and the next set's behind them.
    float* Set(long set) { return Items.Row(set); }
    const float* Set(long set) const { return Items.Row(set); }

    bool operator==(const SetTable&) const = default;

private:
    BasedMatrix<float, 1> Items; // a row is a set: drawing and files go set by set
};

} // namespace Quillon
