#include "bench/OwnFit.h"

#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "workspace/records/Workspace.h"

namespace Quillon::Bench {

namespace {

std::vector<std::int16_t> SlotsOf(const Problem& p) {
    std::vector<std::int16_t> slots;
    if (p.Kind == Association::DimerTetramer)
        slots = {0, 2, 4};
    else
        slots = {6};
    for (int s = 1; s <= p.Sets; ++s) {
        slots.push_back(ToInt16(SlotA(s)));
        if (p.PerSet == 3) slots.push_back(ToInt16(SlotB(s)));
        slots.push_back(ToInt16(SlotOffset(s)));
    }
    return slots;
}

void LoadSets(const Problem& p) {
    Work.NumSets = ToInt16(p.Sets);
    Work.NumParms = ToInt16(3 * p.Sets + 8);
    Work.NumPts = ToInt16(p.Points());
    Work.SetPts.Recreate(p.Sets);
    for (long s = 1; s <= p.Sets; ++s) {
        const auto i = static_cast<std::size_t>(s - 1);
        Work.SetRow[s] = Work.SetOfRow[s] = ToInt16(s);
        Work.SetPts[s] = ToInt16(p.PointsPerSet);
        Work.SetSigmaScale[s] = static_cast<float>(p.SigmaScale[i]);
        Work.ScanRPM[s] = static_cast<float>(SpeedOf(static_cast<int>(s - 1)));
        Work.ScanTemperature[s] = 20.0F;
        Work.ExtinctionRatio[0][s] = static_cast<float>(p.ScaleA[i]);
        Work.ExtinctionRatio[1][s] = static_cast<float>(p.ScaleB[i]);
        if (p.Kind == Association::DimerTetramer)
            Work.ExtinctionRatio[0][s] = Work.ExtinctionRatio[1][s] = 1.0F;
    }
    Work.PtX.Recreate(p.Points());
    Work.PtY.Recreate(p.Points());
    Work.PtSet.Recreate(p.Points());
    for (long n = 1; n <= p.Points(); ++n) {
        Work.PtX[n] = p.X[static_cast<std::size_t>(n - 1)];
        Work.PtY[n] = p.Y[static_cast<std::size_t>(n - 1)];
        Work.PtSet[n] = ToInt16((n - 1) / p.PointsPerSet + 1);
    }
}

} // namespace

void LoadWorkspace(const Problem& p) {
    Work = FreshWorkspace();
    LoadSets(p);
    Work.DataChosen = FlagTrue;
    Work.Model = p.Kind == Association::DimerTetramer ? 4 : 8;
    Work.MonitorMode = 0;
    SetDefaultBounds();
    AdoptModel(0, true);
    for (auto& place : Work.FreeMap)
        if (place >= 0) place = SlotHeld;
    Work.Parms[0] = static_cast<float>(p.SigmaA);
    Work.Parms[5] = static_cast<float>(p.SigmaB);
    Work.NumFree = 0;
    for (const std::int16_t slot : SlotsOf(p)) {
        Work.Parms[slot] = static_cast<float>(p.Start[static_cast<std::size_t>(Work.NumFree)]);
        Work.FreeIndex[Work.NumFree] = slot;
        Work.FreeMap[slot] = Work.NumFree++;
    }
}

Solution RunQuillon(const Problem& p) {
    RunFit();
    Solution found;
    found.Iterations = Work.Iteration;
    for (const std::int16_t slot : SlotsOf(p))
        found.Parameters.push_back(static_cast<double>(Work.Parms[slot]));
    return found;
}

} // namespace Quillon::Bench
