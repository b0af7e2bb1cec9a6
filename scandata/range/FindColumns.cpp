#include "scandata/range/FindColumns.h"

#include "scandata/table/DataSetTable.h"
#include "scandata/table/TableRows.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr float Margin = 0.05F; // cm that a column may stand beyond the radii of its channel
constexpr long FewestPoints = 10;
constexpr long PartFilled =
    3; // a column fills this part of its channel, the innermost one mostly less than half

bool LiesInChannel(RowNo row, const PointRange& range, int channel) {
    float inner{};
    float outer{};
    ChannelRadiiOf(row, channel, inner, outer);
    return Work.ScanRadius[row][range.First] >= inner - Margin &&
           Work.ScanRadius[row][range.Last] <= outer + Margin;
}

bool LiesInOneChannel(RowNo row, const PointRange& range) {
    for (int channel = Channel::A; channel <= LastChannelOf(row); ++channel)
        if (LiesInChannel(row, range, channel)) return true;
    return false;
}

// The column of a channel; a range of none where it is not filled.
PointRange ColumnOf(RowNo row, int channel) {
    long first{};
    long last{};
    if (!PointsOfChannel(row, channel, first, last)) return {};
    const OneBased<float>& values = Work.ScanValue[row];
    const PointRange range = ProposeRangeInChannel(row, channel);
    const long points = range.First == 0 ? 0 : range.Last - range.First + 1;
    if (points < FewestPoints || PartFilled * points < last - first + 1) return {};
    // A channel of nothing but noise has no break either by its own measure.
    const double limit = LeastBreakOf(values, 1, Work.ScanPoints[row]);
    return IsUnbroken(values, range.First, range.Last, limit) ? range : PointRange{};
}

// The two points at each end that a proposal cuts, and the one at each end that has no second difference.
bool IsWithoutBreak(RowNo row, const PointRange& range) {
    constexpr long cut = 3;
    return range.First <= 1 + cut && range.Last >= Work.ScanPoints[row] - cut;
}

void TakeColumn(RowNo row, const ScanColumn& column) {
    Work.DataChannel[row] = ToInt16(column.Channel);
    Work.FitRange[0][row] = ToInt16(column.Range.First);
    Work.FitRange[1][row] = ToInt16(column.Range.Last);
    Work.SetChanged[row] = FlagTrue;
}

} // namespace

std::vector<ScanColumn> FindColumns(RowNo row) {
    const PointRange longest = ProposeRange(Work.ScanValue[row], 1, Work.ScanPoints[row]);
    if (longest.First == 0 || IsWithoutBreak(row, longest)) return {};
    if (!LiesInOneChannel(row, longest)) return {{0, longest}};
    std::vector<ScanColumn> columns;
    for (int channel = Channel::A; channel <= LastChannelOf(row); ++channel)
        if (const PointRange range = ColumnOf(row, channel); range.First > 0)
            columns.push_back({channel, range});
    return columns.empty() ? std::vector<ScanColumn>{{0, longest}} : columns;
}

long TakeColumns(RowNo row, const std::vector<ScanColumn>& columns) {
    if (columns.empty()) return 0;
    TakeColumn(row, columns[0]);
    for (std::size_t i = 1; i < columns.size(); ++i) {
        const RowNo next = row + static_cast<long>(i);
        if (next.Number > Work.MaxSets || !InsertRow(next)) return static_cast<long>(columns.size() - i);
        CopyRow(row, next);
        TakeColumn(next, columns[i]);
    }
    return 0;
}

} // namespace Quillon
