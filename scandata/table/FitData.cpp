#include "scandata/table/FitData.h"

#include "input/NUMINPUT.h"
#include "models/ModelChoice.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/Catalogue.h"
#include "models/table/ParmScale.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/table/BaselineAt.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/Labels.h"
#include "scandata/table/Temperatures.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Quillon {

namespace {

// A build in the making. The workspace takes it over when nothing can go wrong any more.
struct FitBuild {
    SetNo LastSet; // 0 without sets
    PerSet<std::int16_t> SetRow = PerSet<std::int16_t>(Workspace::Rows);
    PerRow<std::int16_t> SetOfRow = PerRow<std::int16_t>(Workspace::Rows);
    PerSet<std::int16_t> OldRow = PerSet<std::int16_t>(Workspace::Rows); // all 0 when nothing is carried over
    OneBased<std::string> Label = OneBased<std::string>(Workspace::Rows);
    std::string LabelPrefix;
    PerSet<float> SigmaScale = PerSet<float>(Workspace::Rows, 1.0F);
    PerSet<float> SignalScale = PerSet<float>(Workspace::Rows, 1.0F);
    OneBasedMatrix<float> SetParmMemory = Work.SetParmMemory;
    PerSlot<float> Parms = Work.Parms;
    PerSlot<std::int16_t> FreeMap = Work.FreeMap;
    PerRow<std::int16_t> OffsetLink = Work.OffsetLink;
    PerRow<std::int16_t> ConcLink = Work.ConcLink;
    std::int16_t ConstraintFlags = Work.ConstraintFlags;
    std::int16_t NumPts = 0;
    PerSet<std::int16_t> SetPts;
    OneBased<float> X;
    OneBased<float> Y;
    OneBased<std::int16_t> Set;
};

std::string LabelOf(RowNo row) {
    std::string label = JoinPath(Work.ScanDirectory[row], Work.ScanFile[row]);
    if (Work.DataChannel[row] != Channel::None) {
        label += " Ch ";
        label += static_cast<char>('A' + Work.DataChannel[row] - 1);
    }
    if (HasBaseline(row)) label += " -BL";
    return label;
}

OrdinalRange<SetKind> SetsUpTo(SetNo last) {
    return {SetNo(1), last};
}

void FillSetOfRow(const PerSet<std::int16_t>& setRow, SetNo last, PerRow<std::int16_t>& setOfRow) {
    setOfRow.Recreate(Work.MaxSets);
    for (const SetNo k : SetsUpTo(last))
        setOfRow[RowNo(setRow[k])] = ToInt16(k.Number);
}

void RememberSetParms(FitBuild& build) {
    if (!Work.DataChosen) return;
    build.OldRow = Work.SetRow;
    for (const SetNo k : EachSet())
        for (long j = 1; j <= 3; ++j)
            build.SetParmMemory(j, RowOf(k).Number) = Work.Parms[SlotA(k) + j - 1];
}

void CollectSets(FitBuild& build) {
    for (const RowNo row : EachRow())
        if (Work.IncludeSet[row] == 1) {
            build.SetRow[++build.LastSet] = ToInt16(row.Number);
            build.Label[build.LastSet.Number] = LabelOf(row);
        }
    FillSetOfRow(build.SetRow, build.LastSet, build.SetOfRow);
}

// Whatever goes wrong in a step belongs to that row.
template <class Step> void OfRow(RowNo row, Step&& step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        RaiseError(RowName(row) + ": " + error.Text);
    }
}

// A single of the fit; what is meant says which number it would have been.
float Fitting(double value, const char* what) {
    const auto single = static_cast<float>(value);
    if (!std::isfinite(single)) RaiseError(std::string(what) + " is too large a number");
    return single;
}

// No rotor turns a million times a minute: such a header is damaged, and squares of it leave the range of
// singles.
constexpr float HighestSpeed = 1e6F;

void RequireTrueSpeeds(const FitBuild& build) {
    for (const SetNo k : SetsUpTo(build.LastSet)) {
        const RowNo row(build.SetRow[k]);
        if (!(std::fabs(Work.ScanRPM[row]) <= HighestSpeed))
            RaiseError(RowName(row) + ": the header holds a rotor speed of " + SingleText(Work.ScanRPM[row]) +
                       " rpm");
    }
}

// A set without speed or temperature has no place relative to another, whichever of the two it is. On the
// absolute scale 0 degrees are a temperature like others.
void RequireHeader(RowNo row) {
    if (Work.ScanRPM[row] == 0.0F) RaiseError(RowName(row) + ": the header holds no rotor speed");
    if (Work.ScanTemperature[row] == 0.0F && Work.TemperatureScale == TemperatureScales::Celsius)
        RaiseError(RowName(row) +
                   ": the header holds a temperature of 0, which cannot be related to other sets");
}

// The sets are related to the path of the first one.
void RequirePath(RowNo row) {
    if (Work.CellPath[row] == 0.0F) RaiseError(RowName(row) + ": its optical path is 0");
}

// Sigma goes with the square of the speed and against the temperature.
float RelativeSigma(RowNo s, RowNo f) {
    const double speeds = Divide(Work.ScanRPM[s], Work.ScanRPM[f]);
    const double temperatures =
        SigmaByTemperature(Work.ScanTemperature[f], Work.ScanTemperature[s], Work.TemperatureScale);
    const auto sigma = static_cast<float>(speeds * speeds * temperatures);
    if (!std::isfinite(sigma))
        RaiseError("a rotor speed of " + SingleText(Work.ScanRPM[s]) + " rpm cannot be related to the " +
                   SingleText(Work.ScanRPM[f]) + " rpm of the first set");
    return sigma;
}

void ScaleSets(FitBuild& build) {
    const RowNo f(build.SetRow[1]);
    for (const SetNo k : OrdinalRange<SetKind>{SetNo(2), build.LastSet}) {
        const RowNo s(build.SetRow[k]);
        RequireHeader(f);
        RequireHeader(s);
        RequirePath(f);
        OfRow(s, [&] {
            build.SigmaScale[k] = RelativeSigma(s, f);
            build.SignalScale[k] = Fitting(Divide(Work.CellPath[s], Work.CellPath[f]), "the optical path");
        });
    }
}

// The set that row was in the former fit, if its data are still the same; 0 otherwise.
SetNo FormerSet(const FitBuild& build, RowNo row) {
    if (Work.SetChanged[row]) return SetNo(0);
    for (const SetNo j : SetsUpTo(SetNo(Work.MaxSets)))
        if (build.OldRow[j] == row.Number) return j;
    return SetNo(0);
}

// [decision: carried-in-place]
// In place and in rising order, so that a value already replaced may be copied on.
void MoveSetParms(FitBuild& build) {
    for (const SetNo k : SetsUpTo(build.LastSet)) {
        const RowNo row(build.SetRow[k]);
        if (row.Number == build.OldRow[k]) continue;
        const SetNo j = FormerSet(build, row);
        for (long i = 0; i < SlotsPerSet; ++i)
            if (j > SetNo(0)) {
                build.Parms[SlotA(k) + i] = build.Parms[SlotA(j) + i];
                build.FreeMap[SlotA(k) + i] = build.FreeMap[SlotA(j) + i];
            } else {
                build.Parms[SlotA(k) + i] = build.SetParmMemory(i + 1, row.Number);
            }
    }
}

// ln of the signal of one unit in the first set over that in the former first one.
double LnChange(double now, double before) {
    const double change = now / before;
    if (!(change > 0.0) || !std::isfinite(change))
        RaiseError("its path and extinction ratios cannot be related to those of the former first set");
    return std::log(change);
}

// The reference concentrations are signals of the first set: they stay true when another set comes first.
void RebaseConcentrations(FitBuild& build, RowNo f, RowNo g) {
    const PerRow<float>& a = Work.ExtinctionRatio[0];
    const PerRow<float>& b = Work.ExtinctionRatio[1];
    const PerRow<float>& path = Work.CellPath;
    if (a[f] == a[g] && b[f] == b[g] && path[f] == path[g]) return;
    const auto signal = [](float ratio, float length) { return static_cast<double>(ratio) * length; };
    const double changeA = LnChange(signal(a[f], path[f]), signal(a[g], path[g]));
    const double changeB = LnChange(signal(b[f], path[f]), signal(b[g], path[g]));
    for (const SetNo k : SetsUpTo(build.LastSet)) {
        build.Parms[SlotA(k)] = Fitting(build.Parms[SlotA(k)] + changeA, "a concentration");
        build.Parms[SlotB(k)] = Fitting(build.Parms[SlotB(k)] + changeB, "a concentration");
    }
}

// The masses are held as sigma at the speed of the first set.
void RebaseMasses(FitBuild& build, RowNo f, RowNo g) {
    if (Work.ScanRPM[f] == Work.ScanRPM[g]) return;
    if (Work.ScanRPM[g] == 0.0F) RaiseError("the former first set has no rotor speed");
    const double speeds = Divide(Work.ScanRPM[f], Work.ScanRPM[g]);
    for (const SlotNo slot : {SlotNo(0), SlotNo(5)})
        build.Parms[slot] = Fitting(build.Parms[slot] * speeds * speeds, "a mass at its rotor speed");
}

void CarryParms(FitBuild& build) {
    if (!Work.DataChosen) return;
    MoveSetParms(build);
    const RowNo f(build.SetRow[1]);
    const RowNo g(build.OldRow[1]);
    if (f == RowNo(0) || g == RowNo(0)) return;
    OfRow(f, [&] {
        RebaseConcentrations(build, f, g);
        RebaseMasses(build, f, g);
    });
}

void TrimConstraints(FitBuild& build) {
    bool concentrations = false;
    bool offsets = false;
    for (const SetNo k : SetsUpTo(build.LastSet)) {
        const RowNo row(build.SetRow[k]);
        concentrations |= Work.ConcConstraintA[row] != 0.0F || Work.ConcConstraintB[row] != 0.0F;
        for (std::int16_t* link : {&build.OffsetLink[row], &build.ConcLink[row]})
            if (*link < 1 || *link > Work.MaxSets || build.SetOfRow[RowNo(*link)] == 0) *link = 0;
        offsets |= build.OffsetLink[row] != 0;
    }
    offsets &= !OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0); // the links wait for another model
    const int kept = concentrations ? build.ConstraintFlags & ConcentrationBit : 0;
    build.ConstraintFlags = ToInt16(kept | (offsets ? OffsetBit : 0));
}

bool Constrained(const FitBuild& build) {
    return (build.ConstraintFlags & ConcentrationBit) != 0;
}

long TruePoints(RowNo row) {
    const long first = Work.FitRange[0][row];
    const long last = Work.FitRange[1][row];
    const long points = std::min(Work.ScanRadius[row].Hi(), Work.ScanValue[row].Hi());
    if (first < 1 || last < first || last > points)
        RaiseError(RowName(row) + ": its range, points " + std::to_string(first) + " to " +
                   std::to_string(last) + ", lies outside the scan, which has " + std::to_string(points));
    return last - first + 1;
}

constexpr long MostPoints = std::numeric_limits<std::int16_t>::max(); // of a fit

void CountPoints(FitBuild& build) {
    long all = 0;
    build.SetPts.Recreate(build.LastSet.Number);
    for (const SetNo k : SetsUpTo(build.LastSet)) {
        const RowNo row(build.SetRow[k]);
        long points = TruePoints(row);
        if (Constrained(build))
            points += (Work.ConcConstraintA[row] > 0.0F) + (Work.ConcConstraintB[row] > 0.0F);
        all += points;
        build.SetPts[k] = static_cast<std::int16_t>(std::min(points, MostPoints));
    }
    if (all > MostPoints)
        RaiseError("The sets have " + std::to_string(all) + " points together, and a fit takes at most " +
                   std::to_string(MostPoints) + ": narrow their ranges or leave sets out");
    build.NumPts = ToInt16(all);
    build.X.Recreate(build.NumPts);
    build.Y.Recreate(build.NumPts);
    build.Set.Recreate(build.NumPts);
}

// The true points of set k behind point n.
void FillTruePoints(FitBuild& build, SetNo k, long& n) {
    const RowNo row(build.SetRow[k]);
    const double x0 = ReferenceX(row);
    const OneBased<float>& radii = Work.ScanRadius[row];
    const OneBased<float>& values = Work.ScanValue[row];
    const long last = Work.FitRange[1][row];
    BaselinePlace baseline;
    for (long p = Work.FitRange[0][row]; p <= last; ++p) {
        const float radius = radii[p];
        const double r = radius;
        const float value = values[p];
        ++n;
        build.X[n] = Fitting(r * r / 2.0 - x0, "the square of a radius");
        build.Y[n] = Fitting(SignalOf(row, radius, value, baseline), "the signal");
        build.Set[n] = ToInt16(k.Number);
    }
}

// The pseudo-points of set k, both weighted with the signal of its last true point n.
void FillPseudoPoints(FitBuild& build, SetNo k, long& n) {
    const RowNo row(build.SetRow[k]);
    const double outermost = build.Y[n];
    const auto add = [&](float loading, float tolerance) {
        if (!(loading > 0.0F)) return;
        ++n;
        build.X[n] = PointMarker;
        if (tolerance == 0.0F) RaiseError("its loading is constrained with a tolerance of 0");
        build.Y[n] = Fitting(loading * outermost / tolerance, "its constrained loading");
        build.Set[n] = ToInt16(k.Number);
    };
    add(Work.ConcConstraintA[row], Work.ConcToleranceA[row]);
    add(Work.ConcConstraintB[row], Work.ConcToleranceB[row]);
}

void FillPoints(FitBuild& build) {
    long n = 0;
    for (const SetNo k : SetsUpTo(build.LastSet)) {
        OfRow(RowNo(build.SetRow[k]), [&] {
            FillTruePoints(build, k, n);
            if (Constrained(build)) FillPseudoPoints(build, k, n);
        });
    }
}

FitBuild PrepareBuild() {
    FitBuild build;
    RememberSetParms(build);
    CollectSets(build);
    RequireTrueSpeeds(build);
    ScaleSets(build);
    CarryParms(build);
    TrimConstraints(build);
    CountPoints(build);
    FillPoints(build);
    ShortenLabels(build.Label, build.LabelPrefix, 1, build.LastSet.Number);
    return build;
}

void TakeOver(FitBuild& build) {
    Work.NumSets = ToInt16(build.LastSet.Number);
    Work.SetRow = build.SetRow;
    Work.SetOfRow = build.SetOfRow;
    Work.SetLabel = build.Label;
    Work.LabelPrefix = std::move(build.LabelPrefix);
    Work.SetSigmaScale = std::move(build.SigmaScale);
    Work.SetSignalScale = std::move(build.SignalScale);
    Work.SetParmMemory = std::move(build.SetParmMemory);
    Work.Parms = std::move(build.Parms);
    Work.FreeMap = std::move(build.FreeMap);
    Work.OffsetLink = std::move(build.OffsetLink);
    Work.ConcLink = std::move(build.ConcLink);
    Work.ConstraintFlags = build.ConstraintFlags;
    Work.NumPts = build.NumPts;
    Work.SetPts = std::move(build.SetPts);
    Work.PtX = std::move(build.X);
    Work.PtY = std::move(build.Y);
    Work.PtSet = std::move(build.Set);
    Work.FitValid = FlagFalse;
    Work.FitDone = FlagFalse;
    Work.DataChosen = FlagTrue;
}

void Build() {
    FitBuild build = PrepareBuild();
    TakeOver(build);
    SelectModel(false);
    const RowNo first(build.SetRow[1]);
    if (build.OldRow[1] != first.Number || (first > RowNo(0) && Work.SetChanged[first])) BuildParmScale();
    for (std::int16_t& changed : Work.SetChanged)
        changed = FlagFalse;
}

} // namespace

void BuildFitData() {
    Host.SetPointer(Pointer::Hourglass);
    try {
        Build();
    } catch (const RuntimeError&) {
        Work.DataChosen = FlagFalse;
        Host.SetPointer(Pointer::Standard);
        throw;
    }
    Host.SetPointer(Pointer::Standard);
}

void BuildSetOfRow() {
    FillSetOfRow(Work.SetRow, SetNo(Work.NumSets), Work.SetOfRow);
}

} // namespace Quillon
