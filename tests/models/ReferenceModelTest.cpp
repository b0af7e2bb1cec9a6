// The yardstick itself: the reference model against numbers worked out on paper, identities between models,
// high-order differences, and a checker that notices what is deliberately wrong.
#include "tests/support/HandValues.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ReferenceCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace Quillon {
namespace {

std::vector<std::string> AllCaseNames() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases())
        names.push_back(c.Name);
    return names;
}

class ReferenceCase : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(All, ReferenceCase, testing::ValuesIn(AllCaseNames()),
                         [](const auto& each) { return each.param; });

// The derivative by a slot by central differences of tenth order, of all points.
RealVector TenthOrderDerivative(const Workspace& w, RealVector parms, long slot) {
    const Real weights[] = {5.0L / 6, -5.0L / 21, 5.0L / 84, -5.0L / 504, 1.0L / 1260};
    const auto place = static_cast<std::size_t>(slot);
    const Real at = parms[place];
    const Real h = 1e-3L * std::clamp(std::abs(at), 0.1L, 1.0L);
    RealVector sum(static_cast<std::size_t>(w.NumPts));
    for (int i = 1; i <= 5; ++i) {
        parms[place] = at + i * h;
        const RealVector above = ReferenceValues(w, parms);
        parms[place] = at - i * h;
        const RealVector below = ReferenceValues(w, parms);
        for (std::size_t p = 0; p < sum.size(); ++p)
            sum[p] += weights[i - 1] * (above[p] - below[p]) / h;
    }
    return sum;
}

TEST_P(ReferenceCase, DerivativesAgreeWithTenthOrderDifferences) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed(GetParam()));
    const RealVector parms = ReferenceParms(w);
    const ReferencePass pass = EvaluateReference(w, parms);
    for (long k = 0; k < w.NumFree; ++k) {
        const RealVector expected = TenthOrderDerivative(w, parms, w.FreeIndex[k]);
        Real largest = 0, worst = 0;
        for (std::size_t p = 0; p < expected.size(); ++p) {
            largest = std::max(largest, std::abs(expected[p]));
            worst = std::max(worst, std::abs(expected[p] - pass.Jacobian(p, static_cast<std::size_t>(k))));
        }
        EXPECT_GT(largest, 0) << "slot " << w.FreeIndex[k] << " has no effect";
        // Rounding 1e-19 over a step of 1e-4 and the eleventh derivative of exponentials: below 1e-13.
        EXPECT_LT(worst, 1e-13L * std::max(largest, 1.0L)) << "slot " << w.FreeIndex[k];
    }
}

TEST_P(ReferenceCase, SpeciesAddUpToTheValue) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed(GetParam()));
    const RealVector parms = ReferenceParms(w);
    const RealVector values = ReferenceValues(w, parms);
    const bool noOffset = w.SeparateK != 0 && (w.Model == 4 || w.Model == 5 || w.Model > 6);
    for (long point = 1; point <= w.NumPts; ++point) {
        if (w.PtX[point] == PointMarker) continue;
        Real sum = noOffset ? 0 : parms[static_cast<std::size_t>(SlotOffset(w.PtSet[point]))];
        for (const ReferenceSpecies& each : ReferenceSpeciesAt(w, parms, point))
            sum += each.Signal();
        EXPECT_NEAR(static_cast<double>(sum - values[static_cast<std::size_t>(point - 1)]), 0, 1e-17);
    }
}

// What the cases promise: signals as an instrument shows them, and no species that cannot be seen.
TEST_P(ReferenceCase, EverySpeciesShowsInTheSignal) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed(GetParam()));
    const RealVector parms = ReferenceParms(w);
    std::map<std::string, Real> share;
    Real highest = 0;
    for (long point = 1; point <= w.NumPts; ++point) {
        if (w.PtX[point] == PointMarker) continue;
        Real total = 0;
        const std::vector<ReferenceSpecies> all = ReferenceSpeciesAt(w, parms, point);
        for (const ReferenceSpecies& each : all)
            total += each.Signal();
        for (const ReferenceSpecies& each : all)
            share[each.Name] = std::max(share[each.Name], each.Signal() / total);
        highest = std::max(highest, total);
    }
    EXPECT_GT(highest, 0.5L);
    EXPECT_LE(highest, 2.001L);
    for (const auto& [name, most] : share)
        EXPECT_GT(most, 0.03L) << name;
}

TEST_P(ReferenceCase, PseudoPointsFollowTheMeanOfTheSet) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed(GetParam()));
    const RealVector parms = ReferenceParms(w);
    const ReferencePass pass = EvaluateReference(w, parms);
    for (long set = 1; set <= w.NumSets; ++set) {
        const long row = w.SetRow[set];
        RealVector pseudo;
        for (long p = 1; p <= w.NumPts; ++p)
            if (w.PtSet[p] == set && w.PtX[p] == PointMarker)
                pseudo.push_back(pass.Residual[static_cast<std::size_t>(p - 1)]);
        const std::size_t expected =
            (w.ConcConstraintA[row] > 0 ? 1U : 0U) + (w.ConcConstraintB[row] > 0 ? 1U : 0U);
        ASSERT_EQ(pseudo.size(), expected);
        // The loadings are the true means: what is left is the rounding of loading and target to single.
        for (const Real r : pseudo)
            EXPECT_NEAR(static_cast<double>(r), 0, 1e-6 * w.ScanValue[row][w.FitRange[1][row]] / 0.02);
    }
}

TEST(ReferenceModel, MeetsTheNumbersWorkedOutOnPaper) {
    for (const HandValue& hand : HandValues) {
        const Workspace w = HandWorkspace(hand.Model);
        const RealVector parms = ReferenceParms(w);
        // The logarithms are singles: eight digits less two for sums of products of four constants.
        EXPECT_NEAR(static_cast<double>(ReferenceValues(w, parms)[1]), hand.Signal, 3e-6 * hand.Signal)
            << "model " << hand.Model;
        Real ofB = 0;
        for (const ReferenceSpecies& each : ReferenceSpeciesAt(w, parms, 2))
            ofB += each.OfB;
        EXPECT_NEAR(static_cast<double>(ofB), hand.OfB, 3e-6 * hand.Signal) << "model " << hand.Model;
    }
}

TEST(ReferenceModel, RisesAsTheExponentialOfX) {
    Workspace w = HandWorkspace(1);
    const RealVector values = ReferenceValues(w, ReferenceParms(w));
    EXPECT_NEAR(static_cast<double>(values[2] / values[0]), std::exp(1.5), 1e-15);
    w.Model = 7;
    w.Parms[SlotA(1)] = -60.0F;
    const RealVector ofB = ReferenceValues(w, ReferenceParms(w));
    EXPECT_NEAR(static_cast<double>(ofB[2] / ofB[0]), std::exp(3.0), 1e-15);
}

// Two workspaces that differ in the model only have to show the same signals.
void ExpectSameValues(const Workspace& one, const Workspace& other, const char* what) {
    const RealVector a = ReferenceValues(one, ReferenceParms(one));
    const RealVector b = ReferenceValues(other, ReferenceParms(other));
    for (std::size_t p = 0; p < a.size(); ++p)
        EXPECT_NEAR(static_cast<double>(a[p] / b[p]), 1.0, 1e-15) << what;
}

TEST(ReferenceModel, SpecialCasesOfOneModelAreAnother) {
    constexpr float Off = -80.0F; // ln of a constant that is switched off
    const auto same = [](int model, int other, auto change) {
        Workspace w = HandWorkspace(model);
        change(w);
        Workspace v = w;
        v.Model = ToInt16(other);
        ExpectSameValues(w, v, ("model " + std::to_string(model) + " as " + std::to_string(other)).c_str());
    };
    same(3, 2, [](Workspace&) {});
    same(5, 4, [](Workspace&) {});
    same(4, 2, [](Workspace& w) { w.Parms[4] = Off; });
    same(6, 3, [](Workspace& w) { w.Parms[SlotB(1)] = Off; });
    same(7, 1, [](Workspace& w) { w.Parms[SlotB(1)] = Off; });
    same(8, 7, [](Workspace& w) { w.Parms[6] = Off; });
    same(10, 9, [](Workspace& w) { w.Parms[7] = w.Parms[6]; });
    same(11, 9, [](Workspace& w) { w.Parms[7] = 0.0F; });
    same(12, 9, [](Workspace& w) { w.Parms[2] = Off; });
    same(13, 10, [](Workspace& w) { w.Parms[2] = Off; });
    same(14, 10, [](Workspace& w) { w.Parms[2] = 0.0F; });
    same(15, 8, [](Workspace& w) { w.Parms[4] = Off; });
    same(17, 16, [](Workspace& w) { w.Parms[7] = w.Parms[4]; });
    same(20, 19, [](Workspace& w) { w.Parms[7] = w.Parms[4]; });
    same(20, 18, [](Workspace& w) { w.Parms[2] = w.Parms[4]; });
    same(20, 17, [](Workspace& w) { w.Parms[2] = Off; });
    same(22, 21, [](Workspace& w) { w.Parms[7] = w.Parms[6]; });
}

TEST(ReferenceModel, CommonConstantsInEachSetAreACommonConstant) {
    for (const int model : {2, 3, 4, 5, 8, 9}) {
        ModelCase common = ModelCases()[static_cast<std::size_t>(model - 1)];
        Workspace w = SimulatedWorkspace(common);
        Workspace v = w;
        v.SeparateK = FlagTrue;
        for (long s = 1; s <= w.NumSets; ++s) {
            if (model <= 5) v.Parms[SlotB(s)] = w.Parms[2];
            if (model == 4 || model == 5) v.Parms[SlotOffset(s)] = w.Parms[4];
            if (model >= 8) v.Parms[SlotOffset(s)] = w.Parms[6];
            if (model > 3) w.Parms[SlotOffset(s)] = 0.0F;
        }
        ExpectSameValues(w, v, common.Name.c_str());
    }
}

TEST(ReferenceModel, ModelsWithoutAnEquationShowMonomerAAlone) {
    for (const int model : {23, 24}) {
        const Workspace w = HandWorkspace(model);
        EXPECT_NEAR(static_cast<double>(ReferenceValues(w, ReferenceParms(w))[1]), 0.5, 1e-7);
    }
}

TEST(ReferenceModel, MixtureTakesItsRowsFromWhereTheEquationsSay) {
    // Set 1 stands in row 2; row 1 is no part of the fit and has ratios of its own. AB takes A's ratio of the
    // first set and B's ratio of row 1: K6 a b / (1.5 * 4) in molar, shown with the set's own 1.5 + 3.
    Workspace w = HandWorkspace(8);
    w.SetRow[1] = 2;
    w.SetOfRow[1] = 0;
    w.SetOfRow[2] = 1;
    w.CellPath[2] = 1.0F;
    w.ExtinctionRatio[0][1] = 5.0F;
    w.ExtinctionRatio[1][1] = 4.0F;
    w.ExtinctionRatio[0][2] = 1.5F;
    w.ExtinctionRatio[1][2] = 3.0F;
    const double expected = 0.7 + 2 * 0.1 / (1.5 * 4) * 4.5;
    EXPECT_NEAR(static_cast<double>(ReferenceValues(w, ReferenceParms(w))[1]), expected, 1e-6);
    // AB2 takes all of its ratios from row 1: 1 / (5 * 4 * 4).
    w.Model = 9;
    const double withAB2 = 0.7 + 4 * 0.1 / 6 * 4.5 + 4 * 0.02 / 80 * (1.5 + 2 * 3.0);
    EXPECT_NEAR(static_cast<double>(ReferenceValues(w, ReferenceParms(w))[1]), withAB2, 1e-6);
}

// --- the non-ideal monomer ---------------------------------------------------------------------------------

TEST(NonIdealReference, SatisfiesItsEquation) {
    for (const Real factor : {-0.5L, -0.1L, 0.0L, 0.02L, 0.05L})
        for (const Real ideal : {0.01L, 0.3L, 0.6L}) {
            const std::vector<ReferenceOligomer> oligomers = {{0.5L, 2}, {0.2L, 3.5L}};
            const Real ct = NonIdealTotal(ideal, factor, oligomers);
            const Real c = ideal * std::exp(factor * ct);
            const Real total = c + std::exp(0.5L) * c * c + std::exp(0.2L) * std::pow(c, 3.5L);
            EXPECT_NEAR(static_cast<double>(total / ct), 1.0, 1e-17);
        }
}

TEST(NonIdealReference, WithoutFactorIsTheIdealTotal) {
    EXPECT_EQ(NonIdealTotal(0.5L, 0, {}), 0.5L);
    EXPECT_NEAR(static_cast<double>(NonIdealTotal(0.5L, 0, {{0, 2}})), 0.75, 1e-18);
}

TEST(NonIdealReference, TakesTheSmallerOfTwoRoots) {
    // c = a exp(e c) at e = 1: c exp(-c) = a. c = 0.5 and some c above 1 give the same a.
    const Real a = 0.5L * std::exp(-0.5L);
    EXPECT_NEAR(static_cast<double>(NonIdealTotal(a, 1, {})), 0.5, 1e-17);
}

TEST(NonIdealReference, TellsThatThereIsNoRoot) {
    // c exp(-c) is 1/e at most.
    EXPECT_NO_THROW(NonIdealTotal(0.99L * std::exp(-1.0L), 1, {}));
    EXPECT_THROW(NonIdealTotal(1.01L * std::exp(-1.0L), 1, {}), std::domain_error);
    EXPECT_THROW(NonIdealTotal(2, 1, {}), std::domain_error);
}

// --- forward differences
// -------------------------------------------------------------------------------------

TEST(ReferenceDifferences, OfExponentialsAreKnown) {
    Workspace w = HandWorkspace(1);
    for (long i = 0; i <= w.FreeMap.Hi(); ++i)
        w.FreeMap[i] = SlotHeld;
    for (const long slot : {0L, SlotA(1), SlotOffset(1)})
        w.FreeMap[slot] = 0;
    NumberFreeSlots(w);
    const RealMatrix d = ReferenceForwardDifferences(w, ReferenceParms(w), StepStorage::Exact);
    const RealVector y = ReferenceValues(w, ReferenceParms(w));
    for (std::size_t p = 0; p < 3; ++p) {
        const Real x = w.PtX[static_cast<long>(p) + 1];
        EXPECT_NEAR(static_cast<double>(d(p, 0)), static_cast<double>(y[p] * std::expm1(0.015L * x) / 0.015L),
                    1e-15);
        EXPECT_NEAR(static_cast<double>(d(p, 1)), static_cast<double>(y[p] * std::expm1(0.02L) / 0.02L),
                    1e-15);
        EXPECT_EQ(d(p, 2), 1);
    }
}

TEST(ReferenceDifferences, StepsAreThoseOfTheSlots) {
    EXPECT_EQ(ReferenceStep(1, 0, 2), 0.02L);
    EXPECT_EQ(ReferenceStep(8, 5, 4), 0.04L);
    EXPECT_EQ(ReferenceStep(3, 1, 2), 0.04L);
    EXPECT_EQ(ReferenceStep(5, 3, 4), 0.08L);
    for (const long slot : {2L, 4L, 6L})
        EXPECT_EQ(ReferenceStep(20, slot, 12), 0.06L);
    EXPECT_EQ(ReferenceStep(1, 7, 0), 0.0004L);
    EXPECT_EQ(ReferenceStep(9, 7, 0.5L), 0.01L);
    EXPECT_EQ(ReferenceStep(10, 7, 0), 0.02L);
    EXPECT_EQ(ReferenceStep(10, 7, 5), 0.02L);
    for (const long slot : {8L, 9L, 10L, 61L})
        EXPECT_EQ(ReferenceStep(2, slot, 3), 0.02L);
}

TEST(ReferenceDifferences, ComeCloseToTheDerivative) {
    // A check on the bookkeeping of columns: a forward difference is off by half its step and no more.
    for (const char* name : {"Model05SeparateK", "Model08ConstrainedLinked", "Model09SeparateKConstrained",
                             "Model22", "Model02EighteenSets"}) {
        const Workspace w = SimulatedWorkspace(ModelCaseNamed(name));
        const RealVector parms = ReferenceParms(w);
        const ReferencePass pass = EvaluateReference(w, parms);
        const RealMatrix d = ReferenceForwardDifferences(w, parms, StepStorage::SingleSum);
        for (std::size_t p = 0; p < d.Rows; ++p)
            for (std::size_t k = 0; k < d.Columns; ++k)
                EXPECT_NEAR(static_cast<double>(d(p, k)), static_cast<double>(pass.Jacobian(p, k)),
                            0.15 * std::abs(static_cast<double>(pass.Jacobian(p, k))) + 1e-5)
                    << name << " point " << p + 1 << " slot " << w.FreeIndex[static_cast<long>(k)];
    }
}

// --- the checker
// ------------------------------------------------------------------------------------------------

TEST(ReferenceChecker, PassesTheReferenceItself) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed("Model12"));
    const RealVector values = ReferenceValues(w, ReferenceParms(w));
    const auto exact = [&](long p) { return static_cast<double>(values[static_cast<std::size_t>(p - 1)]); };
    EXPECT_LT(CheckValues(w, exact, 1e-12).Excess, 1e-3);
}

TEST(ReferenceChecker, NoticesAWrongSpeciesFactor) {
    // The dimer of model 12 with A's factor, as model 13 has it, differs in the sets of other wavelengths.
    const Workspace w = SimulatedWorkspace(ModelCaseNamed("Model12"));
    const RealVector parms = ReferenceParms(w);
    const RealVector values = ReferenceValues(w, parms);
    const auto wrong = [&](long p) {
        const long row = w.SetRow[w.PtSet[p]];
        Real value = values[static_cast<std::size_t>(p - 1)];
        for (const ReferenceSpecies& each : ReferenceSpeciesAt(w, parms, p))
            if (each.Name == "B2")
                value += each.OfB * (w.ExtinctionRatio[0][row] / w.ExtinctionRatio[1][row] - 1);
        return static_cast<double>(value);
    };
    EXPECT_GT(CheckValues(w, wrong, 1e-12).Excess, 1e6);
}

TEST(ReferenceChecker, NoticesALastDigit) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed("Model01"));
    const RealVector values = ReferenceValues(w, ReferenceParms(w));
    const auto off = [&](long p) {
        return static_cast<double>(values[static_cast<std::size_t>(p - 1)]) * (p == 77 ? 1 + 1e-11 : 1);
    };
    const WorstDeviation worst = CheckValues(w, off, 1e-12);
    EXPECT_GT(worst.Excess, 1);
    EXPECT_NE(worst.Where.find("point 77 "), std::string::npos) << worst.Where;
    const auto broken = [](long) { return std::nan(""); };
    EXPECT_GT(CheckValues(w, broken, 1e-12).Excess, 1);
}

TEST(ReferenceChecker, NoticesAnExactDerivativeWhereADifferenceIsStated) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed("Model08"));
    const RealVector parms = ReferenceParms(w);
    const ReferencePass pass = EvaluateReference(w, parms);
    const RealMatrix d = ReferenceForwardDifferences(w, parms, StepStorage::SingleSum);
    std::vector<double> row(static_cast<std::size_t>(w.NumFree));
    const auto from = [&](const RealMatrix& m) {
        return [&](long p) -> const double* {
            for (std::size_t k = 0; k < row.size(); ++k)
                row[k] = static_cast<double>(m(static_cast<std::size_t>(p - 1), k));
            return row.data();
        };
    };
    EXPECT_LT(CheckDerivs(w, from(d), 1e-13).Excess, 1);
    EXPECT_GT(CheckDerivs(w, from(pass.Jacobian), 1e-13).Excess, 1e6);
}

} // namespace
} // namespace Quillon
