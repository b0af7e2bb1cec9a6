#include "HandBuiltFit.h"

namespace Quillon {

namespace {

void Slot(Workspace& w, long slot, const char* name, const char* title, const char* format, float value,
          float scale) {
    w.ParmName[slot] = name;
    w.ParmTitle[slot] = title;
    w.ParmFormat[slot] = format;
    w.Parms[slot] = value;
    w.ParmScale[slot] = scale;
}

void BuildParameters(Workspace& w) {
    for (long slot = 0; slot <= w.FreeMap.Hi(); ++slot)
        w.FreeMap[slot] = SlotUnused;
    Slot(w, 0, "MW A mon", "kDa", "#0.0000", 1.5F, 30.0F);
    Slot(w, 1, "N", "", "#0.0000", 2.0F, 1.0F);
    Slot(w, 2, "Ln K(1>N)", "AU^1-N", "#0.0000", 1.25F, 2.0F);
    Slot(w, 8, "Ln c(A,mon), set 1", "AU", "#0.0000", -1.0F, 0.0F);
    Slot(w, 10, "Zero Offset, set 1", "AU", ".0000", -0.25F, 1.0F);
    Slot(w, 11, "Ln c(A,mon), set 2", "AU", "#0.0000", -0.5F, 0.0F);
    w.NumParms = 14;
    w.FreeMap[1] = w.FreeMap[11] = SlotHeld;
    const std::int16_t fitted[] = {0, 2, 8, 10};
    w.NumFree = 4;
    w.NormMatrix.Recreate(3, 3);
    w.AtBound.Recreate(4);
    const double diagonal[] = {0.0625, 0.25, 1.0, 0.015625};
    for (std::int16_t a = 0; a < 4; ++a) {
        w.FreeIndex[a] = fitted[a];
        w.FreeMap[fitted[a]] = a;
        w.NormMatrix(a, a) = diagonal[a];
    }
    w.RmsResidual = 0.5F;
}

void BuildRows(Workspace& w) {
    for (long row = 1; row <= 2; ++row) {
        w.SetRow[row] = w.SetOfRow[row] = static_cast<std::int16_t>(row);
        w.IncludeSet[row] = 1;
        w.ScanDirectory[row] = "/data/run7";
        w.ScanRPM[row] = 20000.0F;
        w.ScanTemperature[row] = 20.0F;
        w.ScanWavelength[row] = 280.0F;
        w.ScanRadius[row].Recreate(4, 6.0F);
        w.ScanRadius[row][2] = 5.5F;
        w.ScanRadius[row][4] = 6.5F;
        w.FitRange[0][row] = 2;
        w.FitRange[1][row] = 4;
        w.ScanPoints[row] = 4;
    }
    w.ScanFile[1] = "00012.RA1";
    w.ScanFile[2] = "00013.RA1";
    w.ScanComment[1] = "cell 1, 0.3 mg";
    w.ScanComment[2] = "cell 2, 0.6 mg";
    w.DataChannel[1] = 2;
}

void BuildPoints(Workspace& w, std::int16_t pseudoPoints) {
    w.NumSets = 2;
    w.SetPts.Recreate(2, 3);
    w.SetPts[1] = static_cast<std::int16_t>(3 + pseudoPoints);
    w.NumPts = static_cast<std::int16_t>(6 + pseudoPoints);
    w.PtX.Recreate(w.NumPts);
    w.PtY.Recreate(w.NumPts);
    w.PtFit.Recreate(w.NumPts);
    w.PtSet.Recreate(w.NumPts, 1);
    for (long p = w.SetPts[1] + 1; p <= w.NumPts; ++p)
        w.PtSet[p] = 2;
    w.SumSq = 0.00123456789;
}

Workspace Build(std::int16_t pseudoPoints) {
    Workspace w = FreshWorkspace();
    w.Model = 2;
    w.MassUnits = 2;
    w.FitDone = w.FitValid = w.DataChosen = w.ModelChosen = FlagTrue;
    BuildParameters(w);
    BuildRows(w);
    BuildPoints(w, pseudoPoints);
    return w;
}

} // namespace

Workspace HandBuiltFit() {
    return Build(0);
}

Workspace HandBuiltFitWithConstraints() {
    Workspace w = Build(2);
    w.ConstraintFlags = ConcentrationBit | OffsetBit;
    w.ConcConstraintA[1] = 0.5F;
    w.ConcToleranceA[1] = 0.02F;
    w.ConstraintFit[0][1] = 0.484375F; // 3.125% below
    w.ConcConstraintB[1] = 0.25F;
    w.ConcToleranceB[1] = 0.125F;
    w.ConstraintFit[1][1] = 0.28125F; // 12.5% above
    w.SumSq = 1.0;
    w.PtY[4] = 0.6F; // residuals of the pseudo-points: 0.1 and -0.5
    w.PtFit[4] = 0.5F;
    w.PtY[5] = 0.5F;
    w.PtFit[5] = 1.0F;
    w.OffsetLink[2] = 1;
    w.FreeMap[SlotOffset(2)] = SlotTied;
    return w;
}

} // namespace Quillon
