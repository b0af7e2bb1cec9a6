#include "studies/methods/RestartStart.h"

#include "models/Guesses.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <array>
#include <optional>

namespace Quillon {

namespace {

double Between(double lower, double upper) {
    return lower + (upper - lower) * static_cast<double>(Host.Uniform());
}

void Shift(float& parm, double by) {
    parm = ToSingle(static_cast<double>(parm) + by);
}

// One draw for each kind of constant; those of the sets are of the same kind.
class ConstantShifts {
public:
    double Of(SlotNo slot) {
        const SlotPart part = PartOfSlot(slot);
        if (part == SlotPart::Global) return Draw();
        std::optional<double>& shift = OfSets[static_cast<std::size_t>(part)];
        if (!shift) shift = Draw();
        return *shift;
    }

private:
    static double Draw() { return Between(-ConstantReach, ConstantReach); }
    std::array<std::optional<double>, SlotsPerSet> OfSets;
};

// Constants, masses and stoichiometries; false when none of them is fitted.
bool MoveShape() {
    bool moved = false;
    ConstantShifts shifts;
    for (const FreePos a : EachFree()) {
        const SlotNo slot = SlotOf(a);
        float& parm = Work.Parms[slot];
        const Quantity holds = RuleOfSlot(slot).Holds;
        if (holds == Quantity::Constant)
            Shift(parm, shifts.Of(slot));
        else if (holds == Quantity::Mass || holds == Quantity::Stoichiometry)
            parm = ToSingle(static_cast<double>(parm) * Between(LeastFactor, LargestFactor));
        else
            continue;
        moved = true;
    }
    return moved;
}

void MoveSignals() {
    for (const FreePos a : EachFree())
        if (RuleOfSlot(SlotOf(a)).Holds == Quantity::LnSignal)
            Shift(Work.Parms[SlotOf(a)], Between(-SignalReach, SignalReach));
}

// The guesses read the common constants; where each set has its own, the first set's stand for them.
void ShowOwnConstants() {
    for (SlotNo slot = SlotA(SetNo(1)); slot <= SlotOffset(SetNo(1)); ++slot)
        if (const SlotNo common = RuleOfSlot(slot).Common; common != NoSlot)
            Work.Parms[common] = Work.Parms[slot];
}

} // namespace

std::string GuessSignals() {
    const PerSlot<float> moved = Work.Parms;
    PerSlot<float> guessed = moved; // and so it stays where there is no signal above 0 to be read
    std::string unread;
    try {
        ShowOwnConstants();
        guessed = GuessedParms();
    } catch (const RuntimeError& error) {
        unread = error.Text;
    }
    Work.Parms = moved;
    TakeFittedSignals(guessed);
    return unread;
}

std::string MoveStart() {
    const bool shaped = MoveShape();
    std::string unread = GuessSignals();
    if (!shaped) MoveSignals();
    BuildParmScale(); // follows the stoichiometries
    return unread;
}

} // namespace Quillon
