#pragma once
// The arithmetic of all models at a point: the signal, and the shares of it that count for species A and B,
// from the monomer signals a and b and the powers of a. Every road through the models (point by point, in
// blocks, stepped or not) goes through these few lines, so that all of them give the same bits.

#include "models/function/Exponential.h"
#include "models/function/FitFrame.h"
#include "platform/VectorWidth.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace Quillon {

// Models that share one shape of sum.
enum class ModelFamily {
    Monomer,      // 1, and numbers without a model of their own
    Oligomer,     // 2, 3: a and a^N
    TwoOligomers, // 4, 5: a, a^N and a^M
    Inactive,     // 6: a, a^N and an inactive monomer
    TwoMonomers,  // 7
    Complex,      // 8: AB
    TwoComplexes, // 9 to 11, 14: AB, AB2
    SignalDimer,  // 12, 13: AB, AB2 and B2 as a signal
    Dimer,        // 15: AB, ABBA
    DimerABB,     // 16, 17: AB, AB2, ABBA
    DimerABBBB,   // 18 to 20: AB, AB2, B2, ABBA
    TwoSites      // 21, 22: AB, AB2, A2B, B2, ABBA
};

// By model, from 0, which is none.
inline constexpr std::array FamilyOfModel{
    ModelFamily::Monomer,      ModelFamily::Monomer,      ModelFamily::Oligomer,
    ModelFamily::Oligomer,     ModelFamily::TwoOligomers, ModelFamily::TwoOligomers,
    ModelFamily::Inactive,     ModelFamily::TwoMonomers,  ModelFamily::Complex,
    ModelFamily::TwoComplexes, ModelFamily::TwoComplexes, ModelFamily::TwoComplexes,
    ModelFamily::SignalDimer,  ModelFamily::SignalDimer,  ModelFamily::TwoComplexes,
    ModelFamily::Dimer,        ModelFamily::DimerABB,     ModelFamily::DimerABB,
    ModelFamily::DimerABBBB,   ModelFamily::DimerABBBB,   ModelFamily::DimerABBBB,
    ModelFamily::TwoSites,     ModelFamily::TwoSites};

// The family of a model of the catalogue; Monomer for every other number.
constexpr ModelFamily FamilyOf(int model) {
    const bool known = model >= 0 && model < static_cast<int>(FamilyOfModel.size());
    return known ? FamilyOfModel[static_cast<std::size_t>(model)] : ModelFamily::Monomer;
}

// Calls work with the family as a constant of the compiler, so that loops inside are made for one shape.
template <ModelFamily F> struct FamilyTag { static constexpr ModelFamily Value = F; };
template <class Work1> void WithFamily(ModelFamily family, Work1&& work) {
    switch (family) {
    case ModelFamily::Monomer:
        return work(FamilyTag<ModelFamily::Monomer>{});
    case ModelFamily::Oligomer:
        return work(FamilyTag<ModelFamily::Oligomer>{});
    case ModelFamily::TwoOligomers:
        return work(FamilyTag<ModelFamily::TwoOligomers>{});
    case ModelFamily::Inactive:
        return work(FamilyTag<ModelFamily::Inactive>{});
    case ModelFamily::TwoMonomers:
        return work(FamilyTag<ModelFamily::TwoMonomers>{});
    case ModelFamily::Complex:
        return work(FamilyTag<ModelFamily::Complex>{});
    case ModelFamily::TwoComplexes:
        return work(FamilyTag<ModelFamily::TwoComplexes>{});
    case ModelFamily::SignalDimer:
        return work(FamilyTag<ModelFamily::SignalDimer>{});
    case ModelFamily::Dimer:
        return work(FamilyTag<ModelFamily::Dimer>{});
    case ModelFamily::DimerABB:
        return work(FamilyTag<ModelFamily::DimerABB>{});
    case ModelFamily::DimerABBBB:
        return work(FamilyTag<ModelFamily::DimerABBBB>{});
    case ModelFamily::TwoSites:
        return work(FamilyTag<ModelFamily::TwoSites>{});
    }
}

// Which species a family has beside the monomer of A: a^N, a^M, the monomer of B, and complexes by their
// letters. The order of the families is made for these questions.
constexpr bool HasPowerN(ModelFamily f) {
    return f == ModelFamily::Oligomer || f == ModelFamily::TwoOligomers || f == ModelFamily::Inactive;
}
constexpr bool HasPowerM(ModelFamily f) {
    return f == ModelFamily::TwoOligomers;
}
constexpr bool HasB(ModelFamily f) {
    return f >= ModelFamily::Inactive;
}
constexpr bool HasAB(ModelFamily f) {
    return f >= ModelFamily::Complex;
}
constexpr bool HasABB(ModelFamily f) {
    return f >= ModelFamily::TwoComplexes && f != ModelFamily::Dimer;
}
constexpr bool HasBB(ModelFamily f) {
    return f == ModelFamily::SignalDimer || f == ModelFamily::DimerABBBB || f == ModelFamily::TwoSites;
}
constexpr bool HasABBA(ModelFamily f) {
    return f >= ModelFamily::Dimer;
}
constexpr bool HasAAB(ModelFamily f) {
    return f == ModelFamily::TwoSites;
}

// a^n. An integral stoichiometry is a product: exact in its operations and far quicker than a power.
inline double IntegralPower(double a, int n) {
    switch (n) {
    case 1:
        return a;
    case 2:
        return a * a;
    case 3:
        return a * a * a;
    case 4:
        return (a * a) * (a * a);
    default:
        break;
    }
    double result = 1.0;
    for (double square = a; n > 0; n /= 2, square *= square)
        if (n % 2) result *= square;
    return result;
}

// Whether a stoichiometry is taken as a product: whole, and small enough to be one.
inline bool IsIntegralPower(double n) {
    return n >= 1.0 && n <= 100.0 && n == std::floor(n);
}

// a^n for any stoichiometry; a > 0 where n is not whole.
inline double MonomerPower(double a, double n) {
    return IsIntegralPower(n) ? IntegralPower(a, static_cast<int>(n)) : RealPower(a, n);
}

// out[i] = MonomerPower(a[i], n) for the first count numbers, the same bits. out and a do not overlap.
inline void MonomerPowers(double* out, const double* a, long count, double n) {
    if (!IsIntegralPower(n)) return RealPowers(out, a, count, n);
    const auto fill = [=](auto power) {
        OnVectors([=] {
            for (long i = 0; i < count; ++i)
                out[i] = power(a[i]);
        });
    };
    const int whole = static_cast<int>(n);
    if (whole == 2) return fill([](double v) { return IntegralPower(v, 2); }); // without a loop in the loop
    if (whole == 4) return fill([](double v) { return IntegralPower(v, 4); });
    fill([whole](double v) { return IntegralPower(v, whole); });
}

// Factors of the sums, from a frame: signals of the products of a and b, and what of them counts for the
// units of A and of B.
struct SpeciesFactors {
    double A{}, B{}, N{}, M{}, Offset{};                    // monomers, oligomers
    double AB{}, ABB{}, BB{}, AAB{}, ABBA{};                // signals of the complexes
    double AofAB{}, AofABB{}, AofAAB{}, AofABBA{};          // units of A in them
    double BofAB{}, BofABB{}, BofBB{}, BofAAB{}, BofABBA{}; // units of B in them
};

// Those of a set, from its frame. The letters are those of the equations: g the signal of a unit, c the
// constant of a complex; a dimer of B in SignalDimer has its constant in signal already.
template <ModelFamily F> SpeciesFactors FactorsOf(const FitFrame& f) {
    SpeciesFactors s;
    s.A = f.ScaleA;
    s.B = f.ScaleB;
    s.N = f.K1;
    s.M = f.K2;
    s.Offset = f.Offset;
    s.AB = f.gAB * f.cAB;
    s.ABB = f.gABB * f.cABB;
    s.AAB = f.gAAB * f.cAAB;
    s.ABBA = 2.0 * f.gAB * f.cABBA;
    s.BB = F == ModelFamily::SignalDimer ? f.cBB : 2.0 * f.gB * f.cBB;
    s.AofAB = f.gA * f.cAB;
    s.AofABB = f.gA * f.cABB;
    s.AofAAB = 2.0 * f.gA * f.cAAB;
    s.AofABBA = 2.0 * f.gA * f.cABBA;
    s.BofAB = f.gB * f.cAB;
    s.BofABB = f.gBB * f.cABB;
    s.BofBB = s.BB;
    s.BofAAB = f.gB * f.cAAB;
    s.BofABBA = 2.0 * f.gB * f.cABBA;
    return s;
}

// The signal at a point of an ideal model, with the zero offset. a, b: signals of the free monomers; an, am:
// a^N and a^M where the family has them, of no account elsewhere. Double precision, each sum in the order
// written here.
template <ModelFamily F>
inline double SignalAt(const SpeciesFactors& s, double a, double b, double an, double am) {
    double sum = 0.0;
    if constexpr (HasPowerM(F))
        sum = s.A * (s.N * an + s.M * am);
    else if constexpr (HasPowerN(F))
        sum = s.A * (s.N * an);
    if constexpr (HasAB(F)) {
        const double p = a * b;
        sum = s.AB * p;
        if constexpr (HasABB(F)) sum += s.ABB * (p * b);
        if constexpr (HasBB(F)) sum += s.BB * (b * b);
        if constexpr (HasAAB(F)) sum += s.AAB * (p * a);
        if constexpr (HasABBA(F)) sum += s.ABBA * (p * p);
    }
    if constexpr (HasB(F)) sum += s.B * b;
    return sum + s.A * a + s.Offset;
}

// The signal of all units of A and of all units of B at a point, without the offset: what loadings are
// compared with.
struct UnitSignals {
    double A{}, B{};
};
template <ModelFamily F>
inline UnitSignals UnitsAt(const SpeciesFactors& s, double a, double b, double an, double am) {
    UnitSignals u;
    u.A = s.A * a;
    if constexpr (HasPowerM(F))
        u.A += s.A * (s.N * an + s.M * am);
    else if constexpr (HasPowerN(F))
        u.A += s.A * (s.N * an);
    if constexpr (F == ModelFamily::Inactive)
        u.A += s.B * b; // the inactive monomer counts as A
    else if constexpr (HasB(F))
        u.B = s.B * b;
    if constexpr (HasAB(F)) {
        const double p = a * b;
        u.A += s.AofAB * p;
        u.B += s.BofAB * p;
        if constexpr (HasABB(F)) {
            u.A += s.AofABB * (p * b);
            u.B += s.BofABB * (p * b);
        }
        if constexpr (HasBB(F)) u.B += s.BofBB * (b * b);
        if constexpr (HasAAB(F)) {
            u.A += s.AofAAB * (p * a);
            u.B += s.BofAAB * (p * a);
        }
        if constexpr (HasABBA(F)) {
            u.A += s.AofABBA * (p * p);
            u.B += s.BofABBA * (p * p);
        }
    }
    return u;
}

} // namespace Quillon
