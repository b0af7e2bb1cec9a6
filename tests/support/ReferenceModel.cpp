#include "tests/support/ReferenceModel.h"

#include "tests/support/Dual.h"

#include <stdexcept>

namespace Quillon {
namespace {

// The parameters that a point of one set depends on.
template <class T> struct Slots {
    std::array<T, 8> Global;
    T LnA, LnB, Third;
};

template <class T> struct Term {
    const char* Name;
    T OfA, OfB; // signal in the set's own cell
};

template <class T> struct PointValue {
    T OfA = T(0); // all A units
    T OfB = T(0); // all B units
    T Offset = T(0);
};

bool IsMarked(const Workspace& w, long point) {
    return w.PtX[point] == PointMarker;
}

bool ThirdSlotIsConstant(const Workspace& w) {
    return w.SeparateK != 0 && (w.Model == 4 || w.Model == 5 || w.Model > 6);
}

// The slot that holds the third parameter of a set: that of the set which it is tied to, or its own.
long ThirdSlotOf(const Workspace& w, long set) {
    if ((w.ConstraintFlags & OffsetBit) == 0) return SlotOffset(set);
    const long link = w.OffsetLink[w.SetRow[set]];
    return link > 0 ? SlotOffset(w.SetOfRow[link]) : SlotOffset(set);
}

Real At(const RealVector& parms, long slot) {
    return parms[static_cast<std::size_t>(slot)];
}

Slots<Real> PlainSlots(const Workspace& w, const RealVector& parms, long set) {
    Slots<Real> s;
    for (std::size_t i = 0; i < 8; ++i)
        s.Global[i] = parms[i];
    s.LnA = At(parms, SlotA(set));
    s.LnB = At(parms, SlotB(set));
    s.Third = At(parms, ThirdSlotOf(w, set));
    return s;
}

Slots<Dual> DualSlots(const Workspace& w, const RealVector& parms, long set) {
    const Slots<Real> plain = PlainSlots(w, parms, set);
    Slots<Dual> s;
    for (std::size_t i = 0; i < 8; ++i)
        s.Global[i] = Variable(plain.Global[i], i);
    s.LnA = Variable(plain.LnA, 8);
    s.LnB = Variable(plain.LnB, 9);
    s.Third = Variable(plain.Third, 10);
    return s;
}

// --- optics of a set ----------------------------------------------------------------------------------

// Signals and molar amounts. A signal of the first set times ToMolar is an amount; an amount of A units
// times MolarA is their signal in the set's own cell. Where the equations name the table's row 1 it is
// that row, and where they name the row of the first set it is that one.
struct Optics {
    Real FactorA, FactorB; // from the first set's signal to that of the set
    Real MolarA, MolarB;
    Real PairAB, TripleABB, TripleAAB, SingleA, SingleB; // from products of signals to molar
};

Optics OpticsOf(const Workspace& w, long set) {
    const long row = w.SetRow[set];
    const long first = w.SetRow[1];
    const auto ratioA = [&](long r) { return Real(w.ExtinctionRatio[0][r]); };
    const auto ratioB = [&](long r) { return Real(w.ExtinctionRatio[1][r]); };
    const bool absorbance = w.ConcUnits <= 2;
    const Real eA = absorbance ? w.ExtA : w.RefrA;
    const Real eB = absorbance ? w.ExtB : w.RefrB;
    const Real path1 = w.CellPath[first];
    const Real path = w.CellPath[row];
    Optics o;
    o.FactorA = Real(w.SetSignalScale[set]) * ratioA(row) / ratioA(first);
    o.FactorB = Real(w.SetSignalScale[set]) * ratioB(row) / ratioB(first);
    o.MolarA = eA * path * ratioA(row);
    o.MolarB = eB * path * ratioB(row);
    o.PairAB = 1 / (eA * path1 * ratioA(first) * eB * path1 * ratioB(1));
    o.SingleA = 1 / (eA * path1 * ratioA(1));
    o.SingleB = 1 / (eB * path1 * ratioB(1));
    o.TripleABB = o.SingleA * o.SingleB * o.SingleB;
    o.TripleAAB = o.SingleA * o.SingleA * o.SingleB;
    return o;
}

// --- self-association ----------------------------------------------------------------------------------

Real TotalOf(Real monomer, const std::vector<ReferenceOligomer>& oligomers) {
    Real total = monomer;
    for (const ReferenceOligomer& o : oligomers)
        total += std::exp(o.LnK + o.Power * std::log(monomer));
    return total;
}

// 1 - d(total)/d(ct) for monomer = ideal * exp(factor * ct).
Real BalanceSlope(Real monomer, Real factor, const std::vector<ReferenceOligomer>& oligomers) {
    Real weighted = monomer;
    for (const ReferenceOligomer& o : oligomers)
        weighted += o.Power * std::exp(o.LnK + o.Power * std::log(monomer));
    return 1 - factor * weighted;
}

// Halves [low, high] down to neighbouring numbers; isLow says whether a point lies below the one sought.
template <class Test> Real Bisect(Real low, Real high, Test isLow) {
    for (;;) {
        const Real middle = low + (high - low) / 2;
        if (middle <= low || middle >= high) return middle;
        (isLow(middle) ? low : high) = middle;
    }
}

template <class T> struct Oligomer {
    const char* Name;
    T LnK, Power;
};

// The free monomer in place of the ideal one. The value of ct comes from bisection; one Newton step from
// there in numbers with derivatives then carries the derivatives of ct by the implicit equation.
template <class T>
T NonIdealMonomer(const T& ideal, const T& factor, const std::vector<Oligomer<T>>& oligomers) {
    std::vector<ReferenceOligomer> plain;
    for (const Oligomer<T>& o : oligomers)
        plain.push_back({ValueOf(o.LnK), ValueOf(o.Power)});
    const Real root = NonIdealTotal(ValueOf(ideal), ValueOf(factor), plain);
    const T monomer = ideal * Exp(factor * T(root));
    T balance = T(root) - monomer;
    for (const Oligomer<T>& o : oligomers)
        balance = balance - Exp(o.LnK + o.Power * Log(monomer));
    const T total = T(root) - balance / T(BalanceSlope(ValueOf(monomer), ValueOf(factor), plain));
    return ideal * Exp(factor * total);
}

template <class T>
void AddSelfAssociation(const Workspace& w, const Slots<T>& p, const Optics& o, T a, T inactive,
                        std::vector<Term<T>>& terms) {
    const T lnK1 = w.SeparateK != 0 ? p.LnB : p.Global[2];
    const T lnK2 = w.SeparateK != 0 ? p.Third : p.Global[4];
    std::vector<Oligomer<T>> oligomers;
    if (w.Model >= 2 && w.Model <= 6) oligomers.push_back({"N-mer", lnK1, p.Global[1]});
    if (w.Model == 4 || w.Model == 5) oligomers.push_back({"M-mer", lnK2, p.Global[3]});
    if (w.NonIdeal != 0 && w.Model <= 5) a = NonIdealMonomer(a, p.Global[7] * p.Global[0], oligomers);

    const T zero = T(0);
    terms.push_back({"A", T(o.FactorA) * a, zero});
    for (const Oligomer<T>& each : oligomers)
        terms.push_back({each.Name, T(o.FactorA) * Exp(each.LnK + each.Power * Log(a)), zero});
    // The inactive monomer is A that does not associate: its units count as A.
    if (w.Model == 6) terms.push_back({"inactive", T(o.FactorB) * inactive, zero});
}

// --- A and B ---------------------------------------------------------------------------------------------

template <class T>
void AddHeteroAssociation(const Workspace& w, const Slots<T>& p, const Optics& o, const T& a, const T& b,
                          std::vector<Term<T>>& terms) {
    const int model = w.Model;
    const auto add = [&](const char* name, const T& molar, int unitsA, int unitsB) {
        terms.push_back({name, T(Real(unitsA) * o.MolarA) * molar, T(Real(unitsB) * o.MolarB) * molar});
    };
    const auto addSignalOfB = [&](const char* name, const T& signal) {
        terms.push_back({name, T(0), signal});
    };
    const T two(2), one(1);
    const T K6 = Exp(w.SeparateK != 0 && (model == 8 || model == 9) ? p.Third : p.Global[6]);
    const T K2 = Exp(p.Global[2]), K4 = Exp(p.Global[4]), K7 = Exp(p.Global[7]);
    const T ab = a * b * T(o.PairAB);
    const T abb = a * b * b * T(o.TripleABB);
    const T molarA = a * T(o.SingleA);
    const T molarB = b * T(o.SingleB);

    if (model == 8) add("AB", K6 * ab, 1, 1);
    if (model == 9) {
        add("AB", two * K6 * ab, 1, 1);
        add("AB2", K6 * K6 * abb, 1, 2);
    }
    if (model == 10) {
        add("AB", (K6 + K7) * ab, 1, 1);
        add("AB2", K6 * K7 * abb, 1, 2);
    }
    if (model == 11) {
        add("AB", two * K6 * ab, 1, 1);
        add("AB2", K7 * K6 * K6 * abb, 1, 2);
    }
    if (model == 12) {
        add("AB", two * K6 * ab, 1, 1);
        add("AB2", (K6 * K2 + two * K2 + K6) * K6 * abb, 1, 2);
        addSignalOfB("B2", T(o.FactorB) * K2 * b * b);
    }
    if (model == 13) {
        add("AB", (K6 + K7) * ab, 1, 1);
        add("AB2", ((K6 * K7 + K6 + K7) * K2 + K6 * K7) * abb, 1, 2);
        addSignalOfB("B2", T(o.FactorA) * K2 * b * b); // by A's factor, unlike model 12
    }
    if (model == 14) {
        add("AB", (K6 + K7) * ab, 1, 1);
        add("AB2", K2 * K6 * K7 * abb, 1, 2);
    }
    if (model >= 15 && model <= 20) {
        const T molarAB = K6 * ab;
        add("AB", molarAB, 1, 1);
        if (model >= 16) add("AB2", two * K4 * molarAB * molarB, 1, 2);
        if (model == 18) add("B2", K4 * molarB * molarB, 0, 2);
        if (model == 19 || model == 20) add("B2", K2 * molarB * molarB, 0, 2);
        const bool ownConstant = model == 17 || model == 18 || model == 20;
        add("ABBA", (ownConstant ? K7 : K4) * molarAB * molarAB, 2, 2);
    }
    if (model == 21 || model == 22) {
        const T Kb = model == 21 ? K6 : K7;
        const T L = K6 + Kb, Q = K6 * Kb, D = K2;
        add("AB", L * ab, 1, 1);
        add("AB2", (Q * (D + one) + two * L * D) * abb, 1, 2);
        add("B2", D * molarB * molarB, 0, 2);
        add("ABBA", molarA * molarA * molarB * molarB * ((Q * (D + one) + (D + one) * L) * Q + L * D * L), 2,
            2);
        add("A2B", Q * a * a * b * T(o.TripleAAB), 2, 1);
    }
}

// --- a point, a set, all points ----------------------------------------------------------------------------

template <class T>
std::vector<Term<T>> TermsAt(const Workspace& w, long set, const Slots<T>& p, const Optics& o, Real x) {
    const T scaledX = T(x * Real(w.SetSigmaScale[set]));
    const T a = Exp(scaledX * p.Global[0] + p.LnA);
    const bool hasB = w.Model == 6 || (w.Model >= 7 && w.Model <= 22);
    const T b = hasB ? Exp(scaledX * p.Global[w.Model == 6 ? 0 : 5] + p.LnB) : T(0);
    std::vector<Term<T>> terms;
    if (w.Model <= 6) {
        AddSelfAssociation(w, p, o, a, b, terms);
        return terms;
    }
    terms.push_back({"A", T(o.FactorA) * a, T(0)});
    if (hasB) terms.push_back({"B", T(0), T(o.FactorB) * b});
    if (w.Model >= 8) AddHeteroAssociation(w, p, o, a, b, terms);
    return terms;
}

template <class T>
PointValue<T> ValueAt(const Workspace& w, long set, const Slots<T>& p, const Optics& o, Real x) {
    PointValue<T> v;
    for (const Term<T>& term : TermsAt(w, set, p, o, x)) {
        v.OfA = v.OfA + term.OfA;
        v.OfB = v.OfB + term.OfB;
    }
    v.Offset = ThirdSlotIsConstant(w) ? T(0) : p.Third;
    return v;
}

// A pseudo-point's value: the set's mean signal of its species, weighted. The first one of a set belongs to
// A where A is constrained.
template <class T> T PseudoValue(const Workspace& w, long point, long set, const T& meanA, const T& meanB) {
    const long row = w.SetRow[set];
    const bool isFirst = point == 1 || w.PtSet[point - 1] != set || !IsMarked(w, point - 1);
    const bool forA = isFirst && w.ConcConstraintA[row] > 0;
    const Real signal = w.ScanValue[row][w.FitRange[1][row]];
    const Real tolerance = forA ? w.ConcToleranceA[row] : w.ConcToleranceB[row];
    return T(signal / tolerance) * (forA ? meanA : meanB);
}

// Calls visit(point, value) for every point of a set, true points first.
template <class T, class Visit> void OverSet(const Workspace& w, long set, const Slots<T>& p, Visit visit) {
    const Optics o = OpticsOf(w, set);
    T sumA = T(0), sumB = T(0);
    long count = 0;
    for (long point = 1; point <= w.NumPts; ++point) {
        if (w.PtSet[point] != set || IsMarked(w, point)) continue;
        const PointValue<T> v = ValueAt(w, set, p, o, Real(w.PtX[point]));
        sumA = sumA + v.OfA;
        sumB = sumB + v.OfB;
        ++count;
        visit(point, v.OfA + v.OfB + v.Offset);
    }
    const T number = T(Real(count));
    for (long point = 1; point <= w.NumPts; ++point)
        if (w.PtSet[point] == set && IsMarked(w, point))
            visit(point, PseudoValue(w, point, set, sumA / number, sumB / number));
}

// The place of each slot among the fitted ones, -1 where it is not fitted.
std::vector<long> ColumnsOf(const Workspace& w) {
    std::vector<long> columns(static_cast<std::size_t>(w.Parms.Hi() + 1), -1);
    for (long k = 0; k < w.NumFree; ++k)
        columns[static_cast<std::size_t>(w.FreeIndex[k])] = k;
    return columns;
}

std::size_t Place(long point) {
    return static_cast<std::size_t>(point - 1);
}

} // namespace

RealVector ReferenceParms(const Workspace& w) {
    RealVector parms;
    for (const float value : w.Parms)
        parms.push_back(value);
    return parms;
}

ReferencePass EvaluateReference(const Workspace& w, const RealVector& parms) {
    ReferencePass pass;
    const auto points = static_cast<std::size_t>(w.NumPts);
    pass.Value.assign(points, 0);
    pass.Residual.assign(points, 0);
    pass.Jacobian = RealMatrix(points, static_cast<std::size_t>(w.NumFree));
    const std::vector<long> columns = ColumnsOf(w);
    for (long set = 1; set <= w.NumSets; ++set) {
        const std::array<long, 3> own = {SlotA(set), SlotB(set), ThirdSlotOf(w, set)};
        OverSet(w, set, DualSlots(w, parms, set), [&](long point, const Dual& value) {
            pass.Value[Place(point)] = value.V;
            pass.Residual[Place(point)] = Real(w.PtY[point]) - value.V;
            for (std::size_t i = 0; i < Dual::Count; ++i) {
                const std::size_t slot = i < 8 ? i : static_cast<std::size_t>(own[i - 8]);
                if (columns[slot] >= 0)
                    pass.Jacobian(Place(point), static_cast<std::size_t>(columns[slot])) += value.D[i];
            }
        });
    }
    for (const Real r : pass.Residual)
        pass.SumSq += r * r;
    return pass;
}

RealVector ReferenceValues(const Workspace& w, const RealVector& parms) {
    RealVector values(static_cast<std::size_t>(w.NumPts), 0);
    for (long set = 1; set <= w.NumSets; ++set)
        OverSet(w, set, PlainSlots(w, parms, set),
                [&](long point, Real value) { values[Place(point)] = value; });
    return values;
}

Real ReferenceValueAt(const Workspace& w, const RealVector& parms, long point) {
    const long set = w.PtSet[point];
    const PointValue<Real> v =
        ValueAt(w, set, PlainSlots(w, parms, set), OpticsOf(w, set), Real(w.PtX[point]));
    return v.OfA + v.OfB + v.Offset;
}

Real ReferenceStep(int model, long slot, Real value) {
    if (slot == 0 || slot == 5) return value * 0.01L;
    if (slot == 1 || slot == 3) return value * 0.02L;
    if (slot == 2 || slot == 4 || slot == 6) return 0.06L;
    if (slot == 7 && model <= 9) return value == 0 ? 0.0004L : value * 0.02L;
    return 0.02L;
}

RealMatrix ReferenceForwardDifferences(const Workspace& w, const RealVector& parms, StepStorage storage) {
    RealMatrix differences(static_cast<std::size_t>(w.NumPts), static_cast<std::size_t>(w.NumFree));
    const auto step = [&](Real& value, Real h) {
        if (storage == StepStorage::Exact)
            value += h;
        else if (storage == StepStorage::SingleSum)
            value = static_cast<float>(value + h);
        else
            value = static_cast<float>(value) + static_cast<float>(h);
    };
    for (long k = 0; k < w.NumFree; ++k) {
        const long slot = w.FreeIndex[k];
        const Real h = ReferenceStep(w.Model, slot, At(parms, slot));
        for (long set = 1; set <= w.NumSets; ++set) {
            const long place = slot < 8 ? -1 : slot - SlotA(set); // 0..2 for a slot of the set itself
            const bool linked = slot >= 8 && (slot - 8) % 3 == 2 && ThirdSlotOf(w, set) == slot;
            const bool own = slot < 8 || (place >= 0 && place <= 2);
            const auto column = static_cast<std::size_t>(k);
            if (linked && (!own || w.SeparateK == 0)) {
                for (long point = 1; point <= w.NumPts; ++point)
                    if (w.PtSet[point] == set) differences(Place(point), column) = IsMarked(w, point) ? 0 : 1;
            } else if (own) {
                Slots<Real> p = PlainSlots(w, parms, set);
                RealVector before(static_cast<std::size_t>(w.NumPts));
                OverSet(w, set, p, [&](long point, Real value) { before[Place(point)] = value; });
                if (slot < 8)
                    step(p.Global[static_cast<std::size_t>(slot)], h);
                else
                    step(place == 0 ? p.LnA : place == 1 ? p.LnB : p.Third, h);
                OverSet(w, set, p, [&](long point, Real value) {
                    differences(Place(point), column) = (value - before[Place(point)]) / h;
                });
            }
        }
    }
    return differences;
}

std::vector<ReferenceSpecies> ReferenceSpeciesAt(const Workspace& w, const RealVector& parms, long point) {
    const long set = w.PtSet[point];
    std::vector<ReferenceSpecies> all;
    for (const Term<Real>& t :
         TermsAt(w, set, PlainSlots(w, parms, set), OpticsOf(w, set), Real(w.PtX[point])))
        all.push_back({t.Name, t.OfA, t.OfB});
    return all;
}

ReferenceMeans ReferenceMeansOf(const Workspace& w, const RealVector& parms, long set) {
    const Slots<Real> p = PlainSlots(w, parms, set);
    const Optics o = OpticsOf(w, set);
    ReferenceMeans means;
    Real count = 0;
    for (long point = 1; point <= w.NumPts; ++point) {
        if (w.PtSet[point] != set || IsMarked(w, point)) continue;
        const PointValue<Real> v = ValueAt(w, set, p, o, Real(w.PtX[point]));
        means.A += v.OfA;
        means.B += v.OfB;
        count += 1;
    }
    return {means.A / count, means.B / count};
}

Real NonIdealTotal(Real ideal, Real factor, const std::vector<ReferenceOligomer>& oligomers) {
    const auto monomerAt = [&](Real ct) { return ideal * std::exp(factor * ct); };
    const auto balanceAt = [&](Real ct) { return ct - TotalOf(monomerAt(ct), oligomers); };
    // Below 0 the balance falls short. Without gain by concentration the ideal total is enough; with it, the
    // balance rises up to where its slope is 0, and the solution lies before that.
    Real high = TotalOf(ideal, oligomers);
    if (factor > 0) {
        const auto rises = [&](Real ct) { return BalanceSlope(monomerAt(ct), factor, oligomers) > 0; };
        if (!rises(0)) throw std::domain_error("no non-ideal solution");
        Real beyond = 1 / factor;
        while (rises(beyond))
            beyond *= 2;
        high = Bisect(0, beyond, rises);
        if (balanceAt(high) < 0) throw std::domain_error("no non-ideal solution");
    }
    return Bisect(0, high, [&](Real ct) { return balanceAt(ct) < 0; });
}

} // namespace Quillon
