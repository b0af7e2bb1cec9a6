#include "fit/equations/Products.h"

#include "platform/Four.h"
#include "platform/VectorWidth.h"

#include <algorithm>
#include <cstddef>

namespace Quillon {

namespace {

// Rows that are summed at a time: their sums stay in registers, narrow ones included.
constexpr int RowsAtATime = 6;

using Rows = std::array<const double*, ProductRows>;
constexpr int Width = VectorLength;
using Group = std::array<double, ProductPoints * Width>;

// Four columns point by point.
void Interleave(Group& group, const double* const* columns, long points) {
    const double *a = columns[0], *b = columns[1], *c = columns[2], *d = columns[3];
    double* out = group.data();
    OnVectors([=] {
        for (long i = 0; i < points; ++i) {
            out[4 * i] = a[i];
            out[4 * i + 1] = b[i];
            out[4 * i + 2] = c[i];
            out[4 * i + 3] = d[i];
        }
    });
}

// Sums of as many rows, from the first one on, with a group of columns whose first is column.
template <int Count>
void AddRows(ProductSums& sums, const Rows& rows, int first, const Group& group, int column, long points) {
    const double* const* row = rows.data() + first;
    OnVectors([&] {
        Four sum[Count];
        for (int r = 0; r < Count; ++r)
            Load(sum[r], &sums[static_cast<std::size_t>(first + r)][static_cast<std::size_t>(column)]);
        const double* four = group.data();
        for (long i = 0; i < points; ++i) {
            Four columns;
            Load(columns, four + Width * i);
            for (int r = 0; r < Count; ++r)
                sum[r] += row[r][i] * columns;
        }
        for (int r = 0; r < Count; ++r)
            Store(&sums[static_cast<std::size_t>(first + r)][static_cast<std::size_t>(column)], sum[r]);
    });
}

using AddRowsOf = void (*)(ProductSums&, const Rows&, int, const Group&, int, long);
constexpr std::array<AddRowsOf, RowsAtATime + 1> AddRowsBy = {nullptr,    AddRows<1>, AddRows<2>, AddRows<3>,
                                                              AddRows<4>, AddRows<5>, AddRows<6>};

// A column that stands alone behind the last full group: its products with itself and with the last row.
void AddAlone(ProductSums& sums, const ProductOperands& operands) {
    const auto place = static_cast<std::size_t>(operands.Count - 1);
    const double* column = operands.Column[place];
    double& own = sums[place][place];
    double& last = sums[place + 1][place];
    double ownSum = own, lastSum = last;
    for (long i = 0; i < operands.Points; ++i) {
        ownSum += column[i] * column[i];
        lastSum += operands.Last[i] * column[i];
    }
    own = ownSum;
    last = lastSum;
}

} // namespace

void AddProducts(ProductSums& sums, const ProductOperands& operands) {
    thread_local constinit Group group{};
    Rows rows{};
    std::copy_n(operands.Column.begin(), operands.Count, rows.begin());
    rows[static_cast<std::size_t>(operands.Count)] = operands.Last;
    for (int column = 0; column < operands.Count; column += Width) {
        if (operands.Count - column == 1) return AddAlone(sums, operands);
        std::array<const double*, Width> columns{};
        for (int c = 0; c < Width; ++c) // those that are missing are filled up by the last one
            columns[static_cast<std::size_t>(c)] =
                operands.Column[static_cast<std::size_t>(std::min(column + c, operands.Count - 1))];
        Interleave(group, columns.data(), operands.Points);
        for (int first = column; first <= operands.Count; first += RowsAtATime) {
            const int count = std::min(RowsAtATime, operands.Count + 1 - first);
            AddRowsBy[static_cast<std::size_t>(count)](sums, rows, first, group, column, operands.Points);
        }
    }
}

} // namespace Quillon
