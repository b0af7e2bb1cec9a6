#include "planning/design/Loadings.h"

#include "models/function/FitFunction.h"
#include "models/species/SpeciesAtPoint.h"
#include "models/table/ModelTable.h"
#include "models/table/SpeciesList.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

double MeanOf(const std::vector<double>& column) {
    double sum = 0.0;
    for (const double value : column)
        sum += value;
    return sum / static_cast<double>(std::max<std::size_t>(column.size(), 1));
}

// What a species at the mean adds to the components: signals count all of its units, moles the species once.
void AddSpecies(SetAmounts& amounts, SpeciesKind kind, double mean, bool molar) {
    if (kind == SpeciesKind::InactiveA) {
        amounts.B += mean;
        return;
    }
    const MonomerCount count = MonomersIn(kind);
    if (molar) {
        amounts.A += count.A * mean;
        amounts.B += count.B * mean;
    } else {
        (count.B > 0.0 ? amounts.B : amounts.A) += mean;
    }
}

// How far the amounts are from the wanted ones, as logarithms.
struct Distance {
    double A = 0.0, B = 0.0;
    double Size() const { return std::max(std::abs(A), std::abs(B)); }
};

Distance DistanceFrom(SetNo set, const SetAmounts& wanted, bool withB) {
    const SetAmounts is = AmountsIn(set);
    return {std::log(is.A / wanted.A), withB ? std::log(is.B / wanted.B) : 0.0};
}

bool Moves(SlotNo slot) {
    return IsInUse(slot) && Work.FreeMap[slot] != SlotTied;
}

Distance ChangeAlong(SlotNo slot, SetNo set, const SetAmounts& wanted, const Distance& from, bool withB) {
    constexpr float Step = 1e-3F;
    const float kept = Work.Parms[slot];
    Work.Parms[slot] = kept + Step;
    const double step = static_cast<double>(Work.Parms[slot]) - static_cast<double>(kept);
    const Distance to = DistanceFrom(set, wanted, withB);
    Work.Parms[slot] = kept;
    return {(to.A - from.A) / step, (to.B - from.B) / step};
}

// A step of no more than 2 in ln c.
void Move(SlotNo slot, double by) {
    Work.Parms[slot] = ToSingle(static_cast<double>(Work.Parms[slot]) + std::clamp(by, -2.0, 2.0));
}

void MoveOnce(SetNo set, const SetAmounts& wanted, const Distance& is, bool withB) {
    const SlotNo a = SlotA(set), b = SlotB(set);
    const Distance byA = ChangeAlong(a, set, wanted, is, withB);
    if (!withB) return Move(a, -Divide(is.A, byA.A));
    const Distance byB = ChangeAlong(b, set, wanted, is, withB);
    const double determinant = byA.A * byB.B - byB.A * byA.B;
    Move(a, -Divide(is.A * byB.B - is.B * byB.A, determinant));
    Move(b, -Divide(is.B * byA.A - is.A * byA.B, determinant));
}

} // namespace

SetAmounts AmountsIn(SetNo set) {
    const bool molar = TraitsOfModel().Hetero;
    ResetFitFunction();
    const SpeciesColumns columns = SpeciesOfSet(set, molar ? SpeciesUnit::Molar : SpeciesUnit::Signal);
    SetAmounts amounts;
    std::size_t column = 0;
    for (const ListedSpecies& species : SpeciesOfModel(Work.Model))
        AddSpecies(amounts, species.Kind, MeanOf(columns.at(column++)), molar);
    return amounts;
}

void MoveToAmounts(SetNo set, const SetAmounts& wanted) {
    if (!Moves(SlotA(set))) return;
    const bool withB = Moves(SlotB(set)) && wanted.B > 0.0;
    constexpr double Near = 2e-6; // a logarithm near 10 is known to 1e-6 as a single
    constexpr int MostMoves = 60;
    for (int move = 0; move < MostMoves; ++move) {
        const Distance is = DistanceFrom(set, wanted, withB);
        if (!std::isfinite(is.Size())) break;
        if (is.Size() <= Near) return;
        MoveOnce(set, wanted, is, withB);
    }
    if (DistanceFrom(set, wanted, withB).Size() <= 1e-4) return;
    RaiseError("no concentrations of set " + std::to_string(set.Number) + " give such a loading");
}

} // namespace Quillon
