#include "scandata/forms/TableCommands.h"

#include "scandata/reader/ScanWriter.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/TableRows.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

bool SameScan(RowNo a, RowNo b) {
    return Work.ScanFile[a] == Work.ScanFile[b] && Work.ScanDirectory[a] == Work.ScanDirectory[b];
}

bool Loaded(RowNo row) {
    return !Work.ScanFile[row].empty();
}

// True when no row before this one holds the same scan.
bool FirstOfScan(RowNo row) {
    for (RowNo before(1); before < row; ++before)
        if (SameScan(before, row)) return false;
    return Loaded(row);
}

// The row of a scan with a channel; row 0 without one.
RowNo RowWithChannel(RowNo scan, int channel) {
    for (const RowNo row : EachRow())
        if (SameScan(row, scan) && Work.DataChannel[row] == channel) return row;
    return RowNo(0);
}

bool SameCell(RowNo a, RowNo b) {
    return HasCell(a) && CellNumberOf(Work.ScanFile[a]) == CellNumberOf(Work.ScanFile[b]);
}

float RadiusAt(RowNo row, std::size_t end) {
    return Work.ScanRadius[row][Work.FitRange[end][row]];
}

// Centerpiece, channel and range of one row for another. False, and nothing changed, where the scan of the
// other has no points there.
bool TakeFrom(RowNo from, RowNo to) {
    const std::int16_t former = Work.CenterpieceType[to];
    const int channel = Work.DataChannel[from];
    Work.CenterpieceType[to] = Work.CenterpieceType[from];
    const bool reached = channel == 0 || SetChannel(to, channel);
    if (reached && SetRadialRange(to, RadiusAt(from, 0), RadiusAt(from, 1))) return true;
    Work.CenterpieceType[to] = former;
    return false;
}

int LastChannel(int centerpiece) {
    return centerpiece == Centerpiece::EightChannel ? Channel::D : Channel::C;
}

bool Reaches(RowNo scan, int centerpiece, int channel) {
    const std::int16_t former = Work.CenterpieceType[scan];
    long first{};
    long last{};
    Work.CenterpieceType[scan] = ToInt16(centerpiece);
    const bool reaches = PointsOfChannel(scan, channel, first, last);
    Work.CenterpieceType[scan] = former;
    return reaches;
}

// The rows that a scan lacks: one for each channel that it reaches and that none of its rows has, less those
// of its rows that have no channel yet.
long RowsLacking(RowNo scan, int centerpiece) {
    long lacking = 0;
    for (int channel = Channel::A; channel <= LastChannel(centerpiece); ++channel)
        lacking += RowWithChannel(scan, channel) == RowNo(0) && Reaches(scan, centerpiece, channel);
    for (const RowNo row : EachRow())
        lacking -= SameScan(row, scan) && Work.DataChannel[row] == Channel::None;
    return std::max(0L, lacking);
}

long RowsNeeded(int centerpiece) {
    long rows = 0;
    for (const RowNo row : EachRow())
        rows += Loaded(row) + (FirstOfScan(row) ? RowsLacking(row, centerpiece) : 0);
    return rows;
}

// Empty rows between others go to the end.
void CloseGaps() {
    RowNo next(1); // the place of the next loaded row
    for (const RowNo row : EachRow())
        if (Loaded(row)) {
            MoveRow(row, next);
            ++next;
        }
}

// The row that takes a missing channel of a scan: one without a channel, or a new one behind the columns
// further in.
RowNo RowForChannel(RowNo scan, int channel) {
    const RowNo unused = RowWithChannel(scan, Channel::None);
    if (unused != RowNo(0)) return unused;
    RowNo place = scan;
    for (int inner = channel - 1; inner > 0 && place == scan; --inner)
        if (const RowNo row = RowWithChannel(scan, inner); row != RowNo(0)) place = row + 1;
    InsertRow(place);
    CopyRow(place == scan ? scan + 1 : scan, place);
    Work.BaselineFile[place] = NoBaseline; // another channel needs another baseline
    Work.BaselineShifted[place] = FlagFalse;
    return place;
}

void AddChannel(RowNo scan, int centerpiece, int channel, TableOutcome& outcome) {
    if (RowWithChannel(scan, channel) != RowNo(0)) return;
    if (!Reaches(scan, centerpiece, channel)) {
        outcome.Refusals.push_back(RowName(scan) + ": the scan has no points in channel " +
                                   static_cast<char>('A' + channel - 1) + ".");
        return;
    }
    const RowNo row = RowForChannel(scan, channel);
    Work.CenterpieceType[row] = ToInt16(centerpiece);
    SetChannel(row, channel);
    outcome.Rows.push_back(row);
}

} // namespace

bool HasCell(RowNo row) {
    return CellNumberOf(Work.ScanFile[row]) > 0;
}

TableOutcome ChannelAndRangeForCell(RowNo row) {
    TableOutcome outcome;
    for (const RowNo scan : EachRow()) {
        if (!FirstOfScan(scan) || SameScan(scan, row) || !SameCell(scan, row)) continue;
        RowNo taker = RowWithChannel(scan, Work.DataChannel[row]);
        if (taker == RowNo(0)) taker = RowWithChannel(scan, Channel::None);
        if (taker == RowNo(0)) continue; // all its rows are other columns
        if (TakeFrom(row, taker))
            outcome.Rows.push_back(taker);
        else
            outcome.Refusals.push_back(RowName(taker) + ": the scan has no points there.");
    }
    return outcome;
}

TableOutcome AllChannelsOfAllScans(RowNo row) {
    TableOutcome outcome;
    const int centerpiece = std::max<int>(Work.CenterpieceType[row], Centerpiece::SixChannel);
    const long needed = RowsNeeded(centerpiece);
    if (needed > Work.MaxSets) {
        outcome.Refusals.push_back("A line for each channel of all scans takes " + std::to_string(needed) +
                                   " lines, and the table has " + std::to_string(Work.MaxSets) + ".");
        return outcome;
    }
    CloseGaps();
    for (const RowNo scan : EachRow())
        if (FirstOfScan(scan))
            for (int channel = Channel::A; channel <= LastChannel(centerpiece); ++channel)
                AddChannel(scan, centerpiece, channel, outcome);
    return outcome;
}

} // namespace Quillon
