#include "SyntheticFit.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace Quillon {

namespace {

struct Points {
    std::vector<float> X, Y;
    std::vector<std::int16_t> Set;
};

void Flatten(const Points& points) {
    const auto all = static_cast<long>(points.X.size());
    Work.NumPts = ToInt16(all);
    Work.PtX.Recreate(all);
    Work.PtY.Recreate(all);
    Work.PtSet.Recreate(all);
    std::copy(points.X.begin(), points.X.end(), Work.PtX.Data());
    std::copy(points.Y.begin(), points.Y.end(), Work.PtY.Data());
    std::copy(points.Set.begin(), points.Set.end(), Work.PtSet.Data());
}

void StartSets(std::size_t sets) {
    Work.NumSets = ToInt16(static_cast<long>(sets));
    Work.NumParms = ToInt16(3 * Work.NumSets + 8);
    Work.SetPts.Recreate(Work.NumSets);
    Work.DataChosen = FlagTrue;
}

void FillRow(long s, long points) {
    Work.SetRow[s] = Work.SetOfRow[s] = ToInt16(s);
    Work.ScanRPM[s] = 10000.0F + 4000.0F * static_cast<float>(s % 3);
    Work.ScanTemperature[s] = 20.0F;
    Work.CellPath[s] = s % 2 ? 1.2F : 0.3F;
    Work.ExtinctionRatio[0][s] = 1.0F + 0.1F * static_cast<float>(s - 1);
    Work.ExtinctionRatio[1][s] = 1.0F + 0.05F * static_cast<float>(s - 1);
    const float speed = Work.ScanRPM[s] / Work.ScanRPM[1];
    Work.SetSigmaScale[s] = speed * speed;
    Work.SetSignalScale[s] = Work.CellPath[s] / Work.CellPath[1];
    Work.ScanPoints[s] = ToInt16(points);
    Work.FitRange[0][s] = 1;
    Work.FitRange[1][s] = ToInt16(points);
    Work.ScanValue[s].Recreate(points);
}

// The pseudo-points of a set's loadings.
void AppendLoadings(Points& all, long s, long points) {
    if (!(Work.ConstraintFlags & ConcentrationBit)) return;
    for (const float loading : {Work.ConcConstraintA[s], Work.ConcConstraintB[s]}) {
        if (loading <= 0.0F) continue;
        all.X.push_back(PointMarker);
        all.Y.push_back(loading * Work.ScanValue[s][points] / 0.1F);
        all.Set.push_back(ToInt16(s));
        ++Work.SetPts[s];
    }
}

} // namespace

void MakeSets(long sets, long points, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<float> noise(0.0F, 0.005F);
    StartSets(static_cast<std::size_t>(sets));
    Points all;
    for (long s = 1; s <= sets; ++s) {
        FillRow(s, points);
        Work.SetPts[s] = ToInt16(points);
        for (long p = 1; p <= points; ++p) {
            const float at = -0.8F + 1.6F * static_cast<float>(p - 1) / static_cast<float>(points);
            all.X.push_back(at);
            all.Y.push_back(0.2F * std::exp(1.1F * at) + noise(random));
            all.Set.push_back(ToInt16(s));
            Work.ScanValue[s][p] = all.Y.back();
        }
        AppendLoadings(all, s, points);
    }
    Flatten(all);
}

void NumberFitted() {
    Work.NumFree = 0;
    for (long k = 0; k < Work.NumParms; ++k) {
        if (Work.FreeMap[k] < 0) continue;
        Work.FreeIndex[Work.NumFree] = ToInt16(k);
        Work.FreeMap[k] = Work.NumFree++;
    }
    Work.AtBound.Recreate(Work.NumFree);
    Work.Increment.Recreate(Work.NumFree - 1);
    ResetFitFunction();
}

void ChooseModel(int model, bool nonIdeal, bool separateK) {
    Work.Model = ToInt16(model);
    Work.NonIdeal = Flag(nonIdeal);
    Work.SeparateK = Flag(separateK);
    AdoptModel(0, true);
    Work.Parms[0] = 0.9F;
    Work.Parms[1] = model == 3 || model == 5 ? 2.6F : 2.0F;
    Work.Parms[2] = model >= 12 ? 8.0F : 0.7F;
    Work.Parms[3] = model == 5 ? 5.0F : 4.0F;
    Work.Parms[4] = model >= 15 ? 9.0F : 0.4F;
    Work.Parms[5] = 1.3F;
    Work.Parms[6] = 9.0F;
    Work.Parms[7] = model >= 10 ? 8.5F : nonIdeal ? 0.05F : 0.0F;
    for (long s = 1; s <= Work.NumSets; ++s) {
        Work.Parms[SlotA(s)] = -2.0F - 0.1F * static_cast<float>(s);
        Work.Parms[SlotB(s)] = separateK && model <= 6 ? 0.5F : -2.2F + 0.1F * static_cast<float>(s);
        Work.Parms[SlotOffset(s)] = OffsetSlotHoldsConstant(model, separateK) ? 0.3F : 0.002F;
    }
    ApplyModelFlags();
    // Masses and offsets that start held are fitted as well.
    for (long k = 0; k < Work.NumParms; ++k)
        if (Work.FreeMap[k] == SlotHeld) Work.FreeMap[k] = 0;
    NumberFitted();
}

void MakeLevels(const std::vector<std::vector<float>>& levels) {
    StartSets(levels.size());
    Work.MonitorMode = 0;
    Work.ConcUnits = Work.MassUnits = 0;
    Work.Model = 1;
    Points all;
    for (long s = 1; s <= Work.NumSets; ++s) {
        const std::vector<float>& level = levels[static_cast<std::size_t>(s - 1)];
        const auto points = static_cast<long>(level.size());
        FillRow(s, points);
        Work.SetPts[s] = ToInt16(points);
        for (const float y : level) {
            all.X.push_back(0.0F);
            all.Y.push_back(y);
            all.Set.push_back(ToInt16(s));
        }
        Work.Parms[SlotA(s)] = -800.0F; // a concentration of exactly 0
        Work.Parms[SlotOffset(s)] = 0.0F;
    }
    Flatten(all);
    Work.Parms[0] = 1.0F;
    for (long k = 0; k < Work.MaxParms; ++k) {
        Work.FreeMap[k] = k >= 8 && (k - 7) % 3 == 0 ? std::int16_t{0} : SlotUnused;
        Work.Bounds[0][k] = -1e30F;
        Work.Bounds[1][k] = 1e30F;
    }
    BuildParmScale();
    BuildParmNames();
    BuildParmFormats();
    NumberFitted();
}

float& Level(long set) {
    return Work.Parms[SlotOffset(set)];
}

void MoveAwayFromTruth() {
    for (long a = 0; a < Work.NumFree; ++a) {
        const long slot = Work.FreeIndex[a];
        float& p = Work.Parms[slot];
        const float sign = a % 2 ? -1.0F : 1.0F;
        if (slot == 0 || slot == 5)
            p *= 1.0F + 0.03F * sign;
        else if (slot == 1 || slot == 3)
            p += 0.1F * sign;
        else if (slot == 7 && Work.Model < 10)
            p *= 0.7F;
        else if (!IsAdditiveSlot(SlotNo(slot)))
            p = 0.0F;
        else
            p += (slot < 8 ? 0.3F : 0.1F) * sign;
    }
    ApplyOffsetLinks();
}

} // namespace Quillon
