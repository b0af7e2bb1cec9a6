#include "models/Guesses.h"

#include "models/function/SharedConcentrations.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace Quillon {

namespace {

double RatioA(RowNo row) {
    return static_cast<double>(Work.ExtinctionRatio[0][row]);
}
double RatioB(RowNo row) {
    return static_cast<double>(Work.ExtinctionRatio[1][row]);
}

// ln of the signal at the reference radius of a set, from its readings.
double LnReferenceSignal(SetNo set) {
    const long first = FirstPointOf(set);
    const long last = std::max(first, LastTruePointOf(set));
    long i = FindFirstAtLeast(Work.PtX, first, last, 0.0F);
    for (; i <= last; ++i)
        if (Work.PtY[i] > 0.0F) return std::log(static_cast<double>(Work.PtY[i]));
    const double d = static_cast<double>(Work.PtY[last]) - static_cast<double>(Work.PtY[first]);
    if (d == 0.0)
        RaiseError("set " + std::to_string(set.Number) + " (" + Work.SetLabel[set] +
                   "): no value above 0, so that there is nothing to guess its concentrations from");
    return d < 0.0 ? std::log(0.1) : Ln(d);
}

// The shares of the association constants in ln a, by the table of models.
double SumOfConstants(const ModelTraits& traits) {
    constexpr long Slots[] = {6, 7, 4, 2};
    double sum = 0.0;
    for (std::size_t i = 0; i < traits.GuessK.size(); ++i)
        if (traits.GuessK[i] != 0.0) sum += traits.GuessK[i] * static_cast<double>(Work.Parms[Slots[i]]);
    return sum;
}

// The monomer of a hetero-association with all the signal in the largest complex and equal molar amounts of A
// and B, solved from the law of mass action in logarithms. With S the set's signal of the complex at 1 molar
// and a and b the molar monomers, of which b/a = eB/eA:
//     AB    L = ln S + ln K + ln a + ln b
//     AB2   L = ln S + ln of the product of its constants + ln a + 2 ln b      (also for models up to ABBA)
//     ABBA  L = ln S + ln of the product of its constants + 2 ln a + 2 ln b
double LnMonomerA(const ModelTraits& traits, double L, double eA, double eB, double path) {
    const double lnK = SumOfConstants(traits);
    const double t1 = Ln(eA * path);              // 1 molar A
    const double t2 = Ln((2.0 * eB + eA) * path); // 1 molar AB2
    switch (traits.Guess) {
    case FirstGuess::AllInAB:
        return (L + lnK - Ln(eB + eA) + t1) / 2.0;
    case FirstGuess::AllInABBA:
        return (lnK - Ln(2.0 * eB + 2.0 * eA) + 4.0 * t1 + L) / 4.0;
    default:
        return (lnK + (-t2 + 3.0 * t1 + L)) / 3.0;
    }
}

void GuessHetero(SetNo set, const ModelTraits& traits, double L) {
    const RowNo row = RowOf(set);
    const RowNo first = RowOf(SetNo(1));
    // [decision: guesses-by-extinction]
    const double eA = static_cast<double>(Work.ExtA) * Divide(RatioA(row), RatioA(first));
    const double eB = static_cast<double>(Work.ExtB) * Divide(RatioB(row), RatioB(first));
    float& a = Work.Parms[SlotA(set)];
    a = ToSingle(LnMonomerA(traits, L, eA, eB, static_cast<double>(Work.CellPath[row])));
    Work.Parms[SlotB(set)] = ToSingle(static_cast<double>(a) + Ln(Divide(eB, eA)));
}

void GuessSet(SetNo set, double L) {
    const ModelTraits& traits = TraitsOfModel();
    float& a = Work.Parms[SlotA(set)];
    float& b = Work.Parms[SlotB(set)];
    switch (traits.Guess) {
    case FirstGuess::WholeSignal:
        a = ToSingle(L);
        return;
    case FirstGuess::Tenth:
        a = ToSingle(L - std::log(10.0));
        return;
    case FirstGuess::TenthEach:
        a = b = ToSingle(L - std::log(10.0));
        return;
    case FirstGuess::HalfEach:
        a = b = ToSingle(L + std::log(0.5));
        return;
    case FirstGuess::AllInAB:
    case FirstGuess::AllInABB:
    case FirstGuess::AllInABBA:
        return GuessHetero(set, traits, L);
    case FirstGuess::Kept:
        // [decision: model-22-keeps]
        return;
    }
}

void AskOffsets() {
    if (Work.SeparateK && !OffsetSlotHoldsConstant(Work.Model, true)) return;
    if (!AskYesNo("Do you also want the baseline offsets reset to zero?", Work.ProgramName, BoxAnswer::No,
                  BoxIcon::Information))
        return;
    for (const SetNo set : EachSet())
        Work.Parms[SlotOffset(set)] = 0.0F;
}

// Parameters and model of now, which stand again at the end of its life.
class AsTheyAre {
public:
    AsTheyAre() = default;
    ~AsTheyAre() {
        Work.Parms = std::move(Parms);
        Work.Model = Model;
    }
    AsTheyAre(const AsTheyAre&) = delete;
    AsTheyAre& operator=(const AsTheyAre&) = delete;

private:
    PerSlot<float> Parms = Work.Parms;
    std::int16_t Model = Work.Model;
};

} // namespace

void InitialGuesses(bool newSituation) {
    Work.FitValid = Work.FitDone = FlagFalse;
    for (const SetNo set : EachSet()) {
        const double scale = static_cast<double>(Work.SetSignalScale[set]) * RatioA(RowOf(set));
        GuessSet(set, LnReferenceSignal(set) + Ln(Divide(RatioA(RowOf(SetNo(1))), scale)));
    }
    ApplyConcentrationLinks();
    if (newSituation) AskOffsets();
}

PerSlot<float> GuessedParms() {
    const AsTheyAre kept;
    Work.Model = ToInt16(ModelForGuess(Work.Model));
    InitialGuesses(false);
    return Work.Parms;
}

void TakeFittedSignals(const PerSlot<float>& guessed) {
    for (const FreePos a : EachFree())
        if (RuleOfSlot(SlotOf(a)).Holds == Quantity::LnSignal) Work.Parms[SlotOf(a)] = guessed[SlotOf(a)];
}

} // namespace Quillon
