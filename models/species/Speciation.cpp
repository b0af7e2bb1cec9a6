#include "models/species/Speciation.h"

#include "models/table/ModelTable.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// The free monomer is looked for over a range of e^120. Newton's rule takes a handful of steps, halving where
// it leads out of what is left at most as many as the range has digits.
constexpr double WidestRange = 120.0;
constexpr int MostSteps = 128;
constexpr double SmallestStep = 1e-13; // of a logarithm; the one behind it is below what a double tells

constexpr int PointsOfCurve = 121;
constexpr double Beyond = 100.0; // how far the curve goes on either side of the sets

// A species as a product of powers of the free monomers, ready for logarithms.
struct Power {
    double LnFactor = 0.0;
    double OfA = 0.0, OfB = 0.0; // powers p and q
    double InA = 0.0, InB = 0.0; // monomers that it counts for
};

struct MassAction {
    std::vector<Power> Species;
    bool HasB = false;
};

Power PowersOf(SignalProduct product, const FitFrame& frame) {
    switch (product) {
    case SignalProduct::A:
        return {0.0, 1.0, 0.0};
    case SignalProduct::B:
        return {0.0, 0.0, 1.0};
    case SignalProduct::PowerN:
        return {0.0, frame.PowerN, 0.0};
    case SignalProduct::PowerM:
        return {0.0, frame.PowerM, 0.0};
    case SignalProduct::AB:
        return {0.0, 1.0, 1.0};
    case SignalProduct::ABB:
        return {0.0, 1.0, 2.0};
    case SignalProduct::BB:
        return {0.0, 0.0, 2.0};
    case SignalProduct::AAB:
        return {0.0, 2.0, 1.0};
    default:
        return {0.0, 2.0, 2.0};
    }
}

MassAction ReadMassAction() {
    const SpeciesUnit unit = SpeciationUnit();
    const SpeciesPlan plan = PlanSpecies(SetNo(1), unit);
    MassAction action;
    for (std::size_t k = 0; k < static_cast<std::size_t>(plan.Count); ++k) {
        Power power = PowersOf(plan.Product[k], plan.Frame);
        power.LnFactor = std::log(plan.Factor[k]);     // minus infinity of a species that there is not
        const bool molar = unit == SpeciesUnit::Molar; // else a species counts by its signal or weight
        power.InA = molar ? power.OfA : (power.OfA > 0.0 ? 1.0 : 0.0);
        power.InB = molar ? power.OfB : (power.OfB > 0.0 ? 1.0 : 0.0);
        action.HasB |= power.OfB > 0.0;
        action.Species.push_back(power);
    }
    return action;
}

double Concentration(const Power& species, double lnA, double lnB) {
    const double ofB = species.OfB > 0.0 ? species.OfB * lnB : 0.0;
    return std::exp(species.LnFactor + species.OfA * lnA + ofB);
}

// What all species hold at free monomers a and b, and its derivatives by ln a and ln b.
struct Held {
    LoadedMonomers Sum;
    LoadedMonomers ByA, ByB;

    // The derivative of A by ln a where b follows from a fixed sum of B.
    double SlopeOfA() const { return ByB.B > 0.0 ? ByA.A - ByB.A * ByA.B / ByB.B : ByA.A; }
};

Held HeldAt(const MassAction& action, double lnA, double lnB) {
    Held held;
    const auto add = [](LoadedMonomers& sum, const Power& species, double c) {
        sum.A += species.InA * c;
        sum.B += species.InB * c;
    };
    for (const Power& species : action.Species) {
        const double c = Concentration(species, lnA, lnB);
        add(held.Sum, species, c);
        add(held.ByA, species, species.OfA * c);
        add(held.ByB, species, species.OfB * c);
    }
    return held;
}

// A rising sum and its derivative by the logarithm of the free monomer.
struct Rising {
    double Sum, Slope;
};

// The logarithm at which a rising sum reaches a total, below the one where the free monomer alone does. In
// the logarithm of the sum Newton's rule is exact for a single species.
template <class Sum> double SolveFor(double total, double lnTop, Sum&& sum) {
    double low = lnTop - WidestRange, high = lnTop, ln = lnTop;
    for (int i = 0; i < MostSteps; ++i) {
        const Rising at = sum(ln);
        (at.Sum < total ? low : high) = ln;
        const double step = std::log(total / at.Sum) * at.Sum / at.Slope;
        if (std::fabs(step) < SmallestStep) return std::clamp(ln + step, low, high);
        const bool within = ln + step > low && ln + step < high; // false for what is no number
        ln = within ? ln + step : 0.5 * (low + high);
    }
    return ln;
}

double LnOfMonomer(const MassAction& action, bool b) {
    for (const Power& species : action.Species)
        if (b ? species.OfB == 1.0 && species.OfA == 0.0 : species.OfA == 1.0 && species.OfB == 0.0)
            return species.LnFactor;
    return 0.0;
}

// ln of the free monomers; b alone in a model without it is of no account.
struct FreeMonomers {
    double LnA, LnB;
};

FreeMonomers SolveMonomers(const MassAction& action, const LoadedMonomers& loaded) {
    constexpr double None = -700.0; // ln of nothing
    const double topA = loaded.A > 0.0 ? std::log(loaded.A) - LnOfMonomer(action, false) : None;
    const double topB = loaded.B > 0.0 ? std::log(loaded.B) - LnOfMonomer(action, true) : None;
    const auto freeB = [&](double lnA) {
        if (!action.HasB || !(loaded.B > 0.0)) return None;
        return SolveFor(loaded.B, topB, [&](double lnB) {
            const Held held = HeldAt(action, lnA, lnB);
            return Rising{held.Sum.B, held.ByB.B};
        });
    };
    if (!(loaded.A > 0.0)) return {None, freeB(None)};
    const double lnA = SolveFor(loaded.A, topA, [&](double ln) {
        const Held held = HeldAt(action, ln, freeB(ln));
        return Rising{held.Sum.A, held.SlopeOfA()};
    });
    return {lnA, freeB(lnA)};
}

std::vector<double> PartsAt(const MassAction& action, const LoadedMonomers& loaded) {
    const FreeMonomers free = SolveMonomers(action, loaded);
    std::vector<double> parts;
    double all = 0.0;
    for (const Power& species : action.Species) {
        parts.push_back((species.InA + species.InB) * Concentration(species, free.LnA, free.LnB));
        all += parts.back();
    }
    for (double& part : parts)
        part /= all;
    return parts;
}

void RequireASpeciation() {
    if (Work.NumSets < 1 || SpeciesOfModel(Work.Model).Count == 0)
        RaiseError("there are no species without a model and data");
}

} // namespace

SpeciesUnit SpeciationUnit() {
    return TraitsOfModel().TwoSpecies ? SpeciesUnit::Molar : UnitInForce();
}

LoadedMonomers MeanMonomers(SetNo set) {
    const MassAction action = ReadMassAction();
    const SpeciesColumns columns = SpeciesOfSet(set, SpeciationUnit());
    LoadedMonomers mean;
    for (std::size_t k = 0; k < columns.size(); ++k) {
        double sum = 0.0;
        for (const double c : columns[k])
            sum += c;
        sum /= static_cast<double>(std::max<std::size_t>(columns[k].size(), 1));
        mean.A += action.Species[k].InA * sum;
        mean.B += action.Species[k].InB * sum;
    }
    return mean;
}

std::vector<double> Populations(const LoadedMonomers& loaded) {
    RequireASpeciation();
    if (!(loaded.Sum() > 0.0)) RaiseError("there is nothing loaded");
    return PartsAt(ReadMassAction(), loaded);
}

SpeciationCurve ComputeSpeciation() {
    RequireASpeciation();
    const MassAction action = ReadMassAction();
    LoadedMonomers all;
    double lowest = 0.0, highest = 0.0;
    for (const SetNo set : EachSet()) {
        const LoadedMonomers mean = MeanMonomers(set);
        all.A += mean.A;
        all.B += mean.B;
        lowest = set == SetNo(1) ? mean.Sum() : std::min(lowest, mean.Sum());
        highest = std::max(highest, mean.Sum());
    }
    if (!(lowest > 0.0) || !std::isfinite(highest)) RaiseError("a set has no concentration");
    SpeciationCurve curve;
    curve.ShareOfB = all.B / all.Sum();
    curve.Parts.resize(action.Species.size());
    const double first = std::log(lowest / Beyond);
    const double step = (std::log(highest * Beyond) - first) / (PointsOfCurve - 1);
    for (int i = 0; i < PointsOfCurve; ++i) {
        const double total = std::exp(first + i * step);
        const std::vector<double> parts =
            PartsAt(action, {total * (1.0 - curve.ShareOfB), total * curve.ShareOfB});
        curve.Totals.push_back(total);
        for (std::size_t k = 0; k < parts.size(); ++k)
            curve.Parts[k].push_back(parts[k]);
    }
    return curve;
}

} // namespace Quillon
