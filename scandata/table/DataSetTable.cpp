#include "scandata/table/DataSetTable.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr long RowsOnPage = 9;
constexpr long LongColumn = 3;
constexpr long ShortColumn = 4;
constexpr double LargestRadius = 100.0; // cm; no rotor is that wide
constexpr long OuterRadii = 8;          // places in ChannelRadii from an inner radius to its outer one

bool Stops(float value, float target, int mode) {
    return mode > 0 ? value >= target : mode < 0 ? value <= target : value == target;
}

void RadiiOf(RowNo row, long code, long channel, float& inner, float& outer) {
    if (code < LongColumn || code > ShortColumn)
        RaiseError(RowName(row) + ": its centerpiece has no channels");
    if (channel < 1 || channel > 4) RaiseError(RowName(row) + ": its channel is none of A to D");
    if (!ChannelRadiiAt(static_cast<int>(code), static_cast<int>(channel), Work.ScanRPM[row], inner, outer))
        RaiseError(RowName(row) + ": at a rotor speed of " + SingleText(Work.ScanRPM[row]) +
                   " rpm its channels have no place");
}

// The outermost two points between two radii; false, and both as they were, where there are none.
bool PointsBetween(RowNo row, float inner, float outer, long& first, long& last) {
    const OneBased<float>& radii = Work.ScanRadius[row];
    long low = -1;
    long high = -1;
    SearchArray(radii, 1, Work.ScanPoints[row], inner, low, false, 1);
    SearchArray(radii, 1, Work.ScanPoints[row], outer, high, true, -1);
    if (low < 0 || high < low) return false;
    first = low;
    last = high;
    return true;
}

bool Ask(const std::string& question) {
    return AskYesNo(question, Work.ProgramName);
}

// Rows that see the same molecules as another one do so in the same cell at the same speed.
void RemoveSharedConcentrations(RowNo row) {
    for (const RowNo other : EachRow())
        if (Work.ConcLink[other] == row.Number &&
            Ask("The concentrations for file #" + std::to_string(other.Number) +
                " previously were those of this one.  Do you want this constraint removed?"))
            Work.ConcLink[other] = 0;
    if (Work.ConcLink[row] != 0 &&
        Ask("The concentrations for this file previously were those of file #" +
            std::to_string(Work.ConcLink[row]) + ".  Do you want this constraint removed?"))
        Work.ConcLink[row] = 0;
}

} // namespace

std::string RowName(RowNo row) {
    const std::string& file = Work.ScanFile[row];
    return "Set " + std::to_string(row.Number) + (file.empty() ? "" : " (" + file + ")");
}

void SearchArray(const OneBased<float>& values, long first, long last, float target, long& result,
                 bool reverse, int mode) {
    const long step = reverse ? -1 : 1;
    result = mode == 0 ? 0 : -1;
    for (long i = reverse ? last : first; i >= first && i <= last; i += step)
        if (Stops(values[i], target, mode)) {
            result = i;
            return;
        }
}

bool ChannelRadiiAt(int code, int channel, float rpm, float& inner, float& outer) {
    inner = outer = 0.0F;
    const double speed = rpm;
    const double stretch = speed * speed * Work.RotorExpansion;
    const bool known = (code == LongColumn || code == ShortColumn) && channel >= 1 && channel <= 4;
    if (!known || !(stretch < LargestRadius)) return false;
    const long place = code - LongColumn + 2 * (channel - 1);
    inner = ToSingle(stretch + Work.ChannelRadii[place]);
    outer = ToSingle(stretch + Work.ChannelRadii[place + OuterRadii]);
    return true;
}

void ChannelRadiiOf(RowNo row, int channel, float& inner, float& outer) {
    RadiiOf(row, Work.CenterpieceType[row], channel, inner, outer);
}

bool PointsOfChannel(RowNo row, int channel, long& first, long& last) {
    float inner{};
    float outer{};
    ChannelRadiiOf(row, channel, inner, outer);
    return PointsBetween(row, inner, outer, first, last);
}

std::string NoPointsInChannel(RowNo row, int channel) {
    float inner{};
    float outer{};
    ChannelRadiiOf(row, channel, inner, outer);
    return std::string("the scan has no points in channel ") + static_cast<char>('A' + channel - 1) + ", " +
           SingleText(inner) + " to " + SingleText(outer) + " cm";
}

bool SetChannelRange(RowNo row, float& inner, float& outer, int channel) {
    const OneBased<float>& radii = Work.ScanRadius[row];
    const long points = Work.ScanPoints[row];
    if (points < 1) return false;
    long first = 1;
    long last = -1;
    bool found = true;
    if (channel > 0) {
        if (!PointsBetween(row, inner, outer, first, last)) return false;
        // [decision: one-point-inside]
        first = std::min(first + 1, last);
        Work.FitRange[0][row] = ToInt16(first);
        inner = radii[first];
    } else {
        SearchArray(radii, 1, points, outer, last, true, -1);
        found = last > 0;
        if (!found) last = points;
    }
    Work.FitRange[1][row] = ToInt16(last);
    outer = radii[last];
    return found;
}

bool SetChannel(RowNo row, int channel) {
    float inner = 0.0F;
    float outer = 0.0F;
    if (channel > 0) {
        ChannelRadiiOf(row, channel, inner, outer);
        if (!SetChannelRange(row, inner, outer, channel)) return false;
    } else {
        Work.FitRange[0][row] = 1;
        Work.FitRange[1][row] = Work.ScanPoints[row];
    }
    Work.DataChannel[row] = ToInt16(channel);
    Work.SetChanged[row] = FlagTrue;
    ForgetSetParms(row);
    return Work.ScanPoints[row] > 0;
}

ChannelRange SetCenterpiece(RowNo row, int code, float& inner, float& outer) {
    const int channel = ChannelOfCenterpiece(row);
    ChannelRange range = ChannelRange::None;
    if ((code == LongColumn || code == ShortColumn) && channel != 0) {
        RadiiOf(row, code, channel, inner, outer);
        range = SetChannelRange(row, inner, outer, channel) ? ChannelRange::Set : ChannelRange::NotReached;
    }
    Work.CenterpieceType[row] = ToInt16(code);
    return range;
}

int ChannelOfCenterpiece(RowNo row) {
    return Work.DataChannel[(row.Number - 1) % RowsOnPage + 1];
}

bool SetRadialRange(RowNo row, float inner, float outer) {
    long first = -1;
    long last = -1;
    if (!PointsBetween(row, inner, outer, first, last)) return false;
    Work.FitRange[0][row] = ToInt16(first);
    Work.FitRange[1][row] = ToInt16(last);
    return true;
}

void ForgetSetParms(RowNo row) {
    for (long j = 1; j <= 3; ++j)
        Work.SetParmMemory(j, row.Number) = 0.0F;
}

void RemoveSetConstraints(RowNo row) {
    if (Work.OffsetLink[row] == 0) {
        for (const RowNo i : EachRow())
            if (Work.OffsetLink[i] == row.Number &&
                Ask("The baseline for file #" + std::to_string(i.Number) +
                    " previously was constrained to match that of this one.  Do you want this constraint "
                    "removed?"))
                Work.OffsetLink[i] = 0;
    } else if (Ask("The baseline for this file previously was constrained to match that of file #" +
                   std::to_string(Work.OffsetLink[row]) + ".  Do you want this constraint removed?")) {
        Work.OffsetLink[row] = 0;
    }
    RemoveSharedConcentrations(row);
    if ((Work.ConcConstraintA[row] != 0.0F || Work.ConcConstraintB[row] != 0.0F) &&
        Ask("The concentrations for this file previously were constrained.  Do you want these constraints "
            "removed?")) {
        Work.ConcConstraintA[row] = 0.0F;
        Work.ConcConstraintB[row] = 0.0F;
    }
}

} // namespace Quillon
