#pragma once
// Small workspaces for tests of the models.

#include "tests/support/ModelCases.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

// One set of three points at x = -0.5, 0, 0.5 with optics of 1, in row 1; sigmas 1.5 and 3.
inline Workspace UnitWorkspace(int model) {
    Workspace w = FreshWorkspace();
    w.Model = ToInt16(model);
    w.NumSets = 1;
    w.NumParms = 11;
    w.NumPts = 3;
    w.SetRow[1] = 1;
    w.SetOfRow[1] = 1;
    w.IncludeSet[1] = 1;
    w.CellPath[1] = 1.0F;
    w.ScanRPM[1] = 20000.0F;
    w.ScanTemperature[1] = 20.0F;
    w.ScanPoints[1] = 3;
    w.ScanRadius[1].Recreate(3);
    w.ScanValue[1].Recreate(3, 1.0F);
    w.FitRange[0][1] = 1;
    w.FitRange[1][1] = 3;
    w.SetPts.Recreate(1, 3);
    w.PtX.Recreate(3);
    w.PtX[1] = -0.5F;
    w.PtX[3] = 0.5F;
    w.PtY.Recreate(3, 1.0F);
    w.PtFit.Recreate(3);
    w.PtSet.Recreate(3, 1);
    w.ExtA = w.ExtB = w.RefrA = w.RefrB = 1.0F;
    w.Parms[0] = 1.5F;
    w.Parms[1] = 2.0F;
    w.Parms[3] = 4.0F;
    w.Parms[5] = 3.0F;
    w.DataChosen = FlagTrue;
    w.ModelChosen = FlagTrue;
    return w;
}

// The numbers of HandValues: point 2, at x = 0, shows the monomer signals 0.5 and 0.2.
inline Workspace HandWorkspace(int model) {
    Workspace w = UnitWorkspace(model);
    const auto ln = [](double v) { return static_cast<float>(std::log(v)); };
    w.Parms[2] = ln(7.0);
    w.Parms[4] = ln(5.0);
    w.Parms[6] = ln(2.0);
    w.Parms[7] = ln(3.0);
    w.Parms[SlotA(1)] = ln(0.5);
    w.Parms[SlotB(1)] = ln(0.2);
    return w;
}

// Numbers the fitted slots of FreeMap (0 or more) in rising order, as the guesses dialog does.
inline void NumberFreeSlots(Workspace& w) {
    w.NumFree = 0;
    for (long slot = 0; slot < w.NumParms; ++slot) {
        if (w.FreeMap[slot] < 0) continue;
        w.FreeMap[slot] = w.NumFree;
        w.FreeIndex[w.NumFree] = ToInt16(slot);
        w.NumFree = ToInt16(w.NumFree + 1);
    }
    w.Deriv = PerFree<double>(Workspace::Slots);
}

} // namespace Quillon
