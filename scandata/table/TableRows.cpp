#include "scandata/table/TableRows.h"

#include "scandata/table/DataSetTable.h"
#include "workspace/records/Fields.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <array>

namespace Quillon {

namespace {

template <class T> constexpr bool IsByRow = false;
template <class T> constexpr bool IsByRow<PerRow<T>> = true;

// Calls visit(column, fresh) for each member that is held by row: the workspace's own and that of a fresh
// one.
template <class Visit> void VisitColumns(const Workspace& fresh, Visit&& visit) {
    VisitMembers([&](const char*, auto member) {
        auto& column = Work.*member;
        using Column = std::remove_reference_t<decltype(column)>;
        if constexpr (IsByRow<Column>)
            visit(column, fresh.*member);
        else if constexpr (requires {
                               column[0][RowNo(1)];
                               requires IsByRow<typename Column::value_type>;
                           })
            for (std::size_t i = 0; i < column.size(); ++i)
                visit(column[i], (fresh.*member)[i]);
    });
}

const Workspace& Fresh() {
    static const Workspace fresh = FreshWorkspace();
    return fresh;
}

// Where a row that stood at a place stands after the move.
RowNo Moved(RowNo row, RowNo from, RowNo to) {
    if (row == from) return to;
    if (from < row && row <= to) return row - 1;
    return to <= row && row < from ? row + 1 : row;
}

template <class Items> void Rotate(Items&& at, RowNo from, RowNo to) {
    for (RowNo row = from; row < to; ++row)
        std::swap(at(row), at(row + 1));
    for (RowNo row = from; row > to; row = row - 1)
        std::swap(at(row), at(row - 1));
}

// Where a row names others.
std::array<std::int16_t*, 2> LinksOf(RowNo row) {
    return {&Work.OffsetLink[row], &Work.ConcLink[row]};
}

void Renumber(std::int16_t& row, RowNo from, RowNo to) {
    if (row > 0) row = ToInt16(Moved(RowNo(row), from, to).Number);
}

template <class... Columns> void CopyEntries(RowNo from, RowNo to, Columns&... columns) {
    ((columns[to] = columns[from]), ...);
}

} // namespace

void EmptyRow(RowNo row) {
    VisitColumns(Fresh(), [row](auto& column, const auto& fresh) { column[row] = fresh[row]; });
    Work.IncludeSet[row] = 0;
    Work.SetChanged[row] = FlagTrue;
    ForgetSetParms(row);
    for (const RowNo other : EachRow())
        for (std::int16_t* link : LinksOf(other))
            if (*link == row.Number) *link = 0;
}

void MoveRow(RowNo from, RowNo to) {
    VisitColumns(Fresh(), [&](auto& column, const auto&) {
        Rotate(
            [&](RowNo row) -> auto& { return column[row]; }, from, to);
    });
    for (long j = 1; j <= SlotsPerSet; ++j)
        Rotate([&](RowNo row) -> float& { return Work.SetParmMemory(j, row.Number); }, from, to);
    for (const RowNo row : EachRow())
        for (std::int16_t* link : LinksOf(row))
            Renumber(*link, from, to);
    for (const SetNo set : EachSet())
        Renumber(Work.SetRow[set], from, to);
}

bool InsertRow(RowNo at) {
    RowNo free = at;
    while (free.Number <= Work.MaxSets && !Work.ScanFile[free].empty())
        ++free;
    if (free.Number > Work.MaxSets) return false;
    MoveRow(free, at);
    EmptyRow(at);
    Work.HighestSet = std::max(Work.HighestSet, ToInt16(free.Number));
    return true;
}

void RemoveRow(RowNo row) {
    EmptyRow(row);
    MoveRow(row, RowNo(Work.MaxSets));
}

void CopyRow(RowNo from, RowNo to) {
    CopyEntries(from, to, Work.ScanRadius, Work.ScanValue, Work.BaselineRadius, Work.BaselineValue);
    CopyEntries(from, to, Work.ScanTemperature, Work.ScanRPM, Work.ScanOmega2t, Work.ScanWavelength,
                Work.ScanTime, Work.ScansAveraged, Work.ScanPoints, Work.ScanComment, Work.ScanDirectory,
                Work.ScanFile, Work.ScanSha256, Work.SetNoise);
    CopyEntries(from, to, Work.LeftOut, Work.SignalCeiling, Work.IntensityOrder, Work.Intensity[0],
                Work.Intensity[1], Work.MeanOf, Work.MeanSpread);
    CopyEntries(from, to, Work.BaselineFile, Work.BaselineSha256, Work.BaselineDirectory, Work.BaselineRPM,
                Work.BaselinePoints, Work.BaselineShifted, Work.BaselineShift);
    CopyEntries(from, to, Work.FitRange[0], Work.FitRange[1], Work.ExtinctionRatio[0],
                Work.ExtinctionRatio[1], Work.CellPath, Work.CenterpieceType, Work.DataChannel);
    Work.IncludeSet[to] = 1;
    Work.SetChanged[to] = FlagTrue;
    ForgetSetParms(to);
    Work.HighestSet = std::max(Work.HighestSet, ToInt16(to.Number));
}

bool TableIsEmpty() {
    return std::all_of(Work.ScanFile.begin(), Work.ScanFile.end(),
                       [](const std::string& file) { return file.empty(); });
}

} // namespace Quillon
