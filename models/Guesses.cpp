#include "models/Guesses.h"

#include "models/Catalogue.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

namespace {

double RatioA(long row) {
    return static_cast<double>(Work.ExtinctionRatio[0][row]);
}
double RatioB(long row) {
    return static_cast<double>(Work.ExtinctionRatio[1][row]);
}

// The last measured point of a set: pseudo-points of constraints stand behind it and are no data.
long LastTruePoint(long first, long last) {
    while (last > first && Work.PtX[last] == PointMarker)
        --last;
    return last;
}

// ln of the signal at the reference radius of the set with the points first..last.
double LnReferenceSignal(long first, long last) {
    long i = FindFirstAtLeast(Work.PtX, first, last, 0.0F);
    for (; i <= last; ++i)
        if (Work.PtY[i] > 0.0F) return std::log(static_cast<double>(Work.PtY[i]));
    const double d = static_cast<double>(Work.PtY[last]) - static_cast<double>(Work.PtY[first]);
    return d < 0.0 ? std::log(0.1) : Ln(d);
}

// The monomer of a hetero-association with all the signal in the largest complex, equal molar amounts of A
// and B, solved from the law of mass action in logarithms. t1 and t2 are the logarithms of the signal of
// 1 molar A and 1 molar AB2.
double LnMonomerA(int model, double L, double eA, double eB, double path) {
    const auto P = [](long slot) { return static_cast<double>(Work.Parms[slot]); };
    const double t1 = Ln(eA * path);
    const double t2 = Ln((2.0 * eB + eA) * path);
    const double base = -t2 + 3.0 * t1 + L;
    switch (model) {
    case 8:
        return (L - P(6) - Ln(eB + eA) + t1) / 2.0;
    case 9:
        return (-2.0 * P(6) + base) / 3.0;
    case 10:
        return (-P(6) - P(7) + base) / 3.0;
    case 11:
        return (-2.0 * P(6) - P(7) + base) / 3.0;
    case 12:
        return (-2.0 * P(6) - P(2) + base) / 3.0;
    case 13:
    case 14:
        return (-P(6) - P(7) - P(2) + base) / 3.0;
    case 15:
        return (-P(6) + base) / 3.0;
    case 16:
        return (-2.0 * P(6) - P(4) + base) / 3.0;
    case 17:
    case 18:
        return (-P(6) - P(7) - P(4) + base) / 3.0;
    case 19:
        return (-2.0 * P(6) - P(4) + P(2) + base) / 3.0;
    case 20:
        return (-P(6) - P(7) - P(4) + P(2) + base) / 3.0;
    default: // 21
        return (-4.0 * P(6) - 2.0 * P(7) - P(2) - Ln(2.0 * eB + 2.0 * eA) + 4.0 * t1 + L) / 4.0;
    }
}

void GuessSet(long set, double L) {
    const int model = Work.Model;
    float& a = Work.Parms[SlotA(set)];
    float& b = Work.Parms[SlotB(set)];
    if (model == 1) {
        a = ToSingle(L);
    } else if (model >= 2 && model <= 6) {
        a = ToSingle(L - std::log(10.0));
        if (model == 6) b = a;
    } else if (model == 7) {
        a = b = ToSingle(L + std::log(0.5));
    } else if (model >= 8 && model <= 21) {
        const long row = Work.SetRow[set];
        const long first = Work.SetRow[1];
        // [decision: guesses-by-extinction]
        const double eA = static_cast<double>(Work.ExtA) * Divide(RatioA(row), RatioA(first));
        const double eB = static_cast<double>(Work.ExtB) * Divide(RatioB(row), RatioB(first));
        a = ToSingle(LnMonomerA(model, L, eA, eB, static_cast<double>(Work.CellPath[row])));
        b = ToSingle(static_cast<double>(a) + Ln(Divide(eB, eA)));
    }
    // [decision: model-22-keeps]
    // Model 22 keeps the values that it has.
}

void AskOffsets() {
    if (Work.SeparateK && !OffsetSlotHoldsConstant(Work.Model, true)) return;
    if (!AskYesNo("Do you also want the baseline offsets reset to zero?", Work.ProgramName, BoxAnswer::No,
                  BoxIcon::Information))
        return;
    for (long s = 1; s <= Work.NumSets; ++s)
        Work.Parms[SlotOffset(s)] = 0.0F;
}

} // namespace

void InitialGuesses(bool newSituation) {
    Work.FitValid = Work.FitDone = FlagFalse;
    long p = 1;
    for (long s = 1; s <= Work.NumSets; ++s) {
        const long q = LastTruePoint(p, p + Work.SetPts[s] - 1);
        const long row = Work.SetRow[s];
        const double scale = static_cast<double>(Work.SetSignalScale[s]) * RatioA(row);
        GuessSet(s, LnReferenceSignal(p, q) + Ln(Divide(RatioA(Work.SetRow[1]), scale)));
        p += Work.SetPts[s];
    }
    if (newSituation) AskOffsets();
}

} // namespace Quillon
