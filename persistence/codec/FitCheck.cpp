#include "persistence/codec/FitCheck.h"

#include "models/table/ModelTable.h"
#include "platform/RuntimeError.h"

#include <array>

namespace Quillon {

namespace {

void Demand(bool holds, const char* name) {
    if (!holds) RaiseError(std::string(ErrorText::BadSubscript) + " (" + name + ")");
}

void DemandWithin(long value, long low, long high, const char* name) {
    Demand(value >= low && value <= high, name);
}

// True when commands may use the flat points as they stand.
bool PointsInUse(const Workspace& w) {
    return w.DataChosen != 0 || w.FitDone != 0 || w.FitValid != 0;
}

void CheckChoices(const Workspace& w) {
    DemandWithin(w.Model, 1, LastReservedModel, "Model");
    DemandWithin(w.MassUnits, 0, 2, "MassUnits");
    DemandWithin(w.ConcUnits, 0, 5, "ConcUnits");
    DemandWithin(w.MonitorMode, 0, 3, "MonitorMode");
    DemandWithin(w.HighestSet, 0, w.MaxSets, "HighestSet");
    for (long row = 1; row <= w.MaxSets; ++row) {
        const long cell = w.CenterpieceType[row]; // 0 in a table that has been cleared
        Demand(cell == 0 || cell == 1 || cell == 3 || cell == 4, "CenterpieceType");
        DemandWithin(w.DataChannel[row], 0, 4, "DataChannel");
        DemandWithin(w.OffsetLink[row], 0, w.MaxSets, "OffsetLink");
    }
}

// Free positions. Slots beyond NumParms and positions beyond NumFree may hold what an earlier fit left.
void CheckFreeMap(const Workspace& w) {
    const long slots = w.FitDone != 0 ? w.NumParms : w.MaxParms;
    for (long a = 0; a < w.MaxParms; ++a) {
        DemandWithin(w.FreeIndex[a], a < w.NumFree ? 0 : -1, (a < w.NumFree ? slots : w.MaxParms) - 1,
                     "FreeIndex");
        DemandWithin(w.FreeMap[a], SlotTied, w.MaxParms - 1, "FreeMap");
    }
}

// A row that takes part must have its scan, and a range inside it.
void CheckRowOfFit(const Workspace& w, long row) {
    Demand(!w.ScanFile[row].empty(), "ScanFile");
    const long first = w.FitRange[0][row];
    const long last = w.FitRange[1][row];
    Demand(1 <= first && first <= last && last <= w.ScanPoints[row], "FitRange");
}

// A row outside the fit: a range that a channel without points in the scan gives is one place too long on
// either side, and taking the row into the fit asks for another range.
void CheckSpareRow(const Workspace& w, long row) {
    if (w.ScanFile[row].empty() || w.ScanPoints[row] < 1) return;
    DemandWithin(w.FitRange[0][row], 0, w.ScanPoints[row] + 1L, "FitRange");
    DemandWithin(w.FitRange[1][row], 0, w.ScanPoints[row], "FitRange");
}

void CheckRows(const Workspace& w) {
    std::array<bool, StandardMaxSets + 1> used{};
    for (long set = 1; set <= StandardMaxSets; ++set)
        DemandWithin(w.SetRow[set], 0, w.MaxSets, "SetRow");
    for (long set = 1; PointsInUse(w) && set <= w.NumSets; ++set) {
        const auto row = static_cast<std::size_t>(w.SetRow[set]);
        Demand(row >= 1 && !used[row], "SetRow");
        used[row] = true;
        CheckRowOfFit(w, w.SetRow[set]);
    }
    for (long row = 1; row <= w.MaxSets; ++row) {
        if (w.DataChosen != 0 && w.IncludeSet[row] == 1) CheckRowOfFit(w, row);
        if (!used[static_cast<std::size_t>(row)]) CheckSpareRow(w, row);
    }
}

// The concentration constraints of a row, each of which stands as one more point behind the true ones.
long PseudoPoints(const Workspace& w, long row) {
    if ((w.ConstraintFlags & ConcentrationBit) == 0) return 0;
    return (w.ConcConstraintA[row] > 0.0F ? 1 : 0) + (w.ConcConstraintB[row] > 0.0F ? 1 : 0);
}

// The points of a set behind before: readings first, then the pseudo-points of its loadings.
void CheckPointsOfSet(const Workspace& w, long set, long before, long truePoints, long points) {
    for (long i = 1; i <= points; ++i) {
        Demand(w.PtSet[before + i] == set, "PtSet");
        Demand((w.PtX[before + i] == PointMarker) == (i > truePoints), "PtX");
    }
}

void CheckPoints(const Workspace& w) {
    long point = 0;
    for (long set = 1; set <= w.NumSets; ++set) {
        const long row = w.SetRow[set];
        const long truePoints = w.FitRange[1][row] - w.FitRange[0][row] + 1L;
        const long points = truePoints + PseudoPoints(w, row);
        Demand(w.SetPts[set] == points, "SetPts");
        Demand(point + points <= w.NumPts, "NumPts");
        CheckPointsOfSet(w, set, point, truePoints, points);
        point += points;
    }
    Demand(point == w.NumPts, "NumPts");
}

} // namespace

void CheckFitSizes(const Workspace& w) {
    DemandWithin(w.MaxSets, 1, StandardMaxSets, "MaxSets");
    DemandWithin(w.MaxParms, SlotOffset(w.MaxSets) + 1, StandardMaxParms, "MaxParms");
    DemandWithin(w.NumParms, SlotOffset(0) + 1, w.MaxParms, "NumParms");
    DemandWithin(w.NumFree, 0, w.MaxParms, "NumFree");
    DemandWithin(w.NumSets, 0, w.MaxSets, "NumSets");
    Demand(w.MaxPtsPerSet >= 1, "MaxPtsPerSet");
    Demand(w.NumPts >= 0, "NumPts");
}

void CheckFit(const Workspace& w) {
    CheckChoices(w);
    CheckFreeMap(w);
    CheckRows(w);
    if (!PointsInUse(w)) return;
    Demand(w.NumSets >= 1, "NumSets");
    Demand(w.NumParms > SlotOffset(w.NumSets), "NumParms");
    CheckPoints(w);
}

} // namespace Quillon
