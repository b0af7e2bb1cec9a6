// Comparison of models: which contains which, the statistics, and that a fit finds what a comparison asks
// for.
#include "studies/methods/Comparison.h"
#include "Confusions.h"
#include "FittedCase.h"
#include "fit/GNLLSQ.h"
#include "platform/Platform.h"
#include "tests/fit/Robustness.h"
#include "tests/support/ReferenceFit.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <stdexcept>

namespace Quillon {
namespace {

// What the simulated experiment does not fit and the model uses is held, as behind the guesses dialog.
void HoldWhatIsNotFitted() {
    for (const SlotNo slot : EachSlot()) {
        const SlotUse use = RuleOfSlot(slot).Use;
        const bool used = use != SlotUse::Hidden && use != SlotUse::HiddenZero && use != SlotUse::HiddenAsN &&
                          (use != SlotUse::WhenNonIdeal || Work.NonIdeal);
        if (used && Work.FreeMap[slot] == SlotUnused) Work.FreeMap[slot] = SlotHeld;
    }
}

void LoadHeldCase(const char* name) {
    LoadCase(ModelCaseNamed(name));
    HoldWhatIsNotFitted();
}

void FitHeldCase(const char* name) {
    LoadHeldCase(name);
    FitLoaded();
}

Comparison Compare(const char* list) {
    return CompareModels(ReadVariants(list), {});
}

const ComparedModel& RowNamed(const Comparison& comparison, const char* name) {
    for (const ComparedModel& row : comparison.Rows)
        if (VariantText(row.Variant) == name) return row;
    throw std::out_of_range(name);
}

bool Nested(const char* small, const char* large, bool zero = false) {
    return IsNested(ReadVariant(small), ReadVariant(large), zero);
}

std::string ReasonOf(const char* list) {
    try {
        ReadVariants(list);
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

TEST(ModelVariants, AreReadAndWritten) {
    const std::vector<ModelVariant> list =
        ReadVariants(" 1,2 + NonIdeal , 4+separate-k,2+nonideal+separate-k");
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(VariantText(list[0]), "1");
    EXPECT_EQ(VariantText(list[1]), "2+nonideal");
    EXPECT_EQ(list[2], (ModelVariant{4, false, true}));
    EXPECT_EQ(OptionsText(list[3]), "nonideal+separate-k");
}

TEST(ModelVariants, NameWhatIsWrong) {
    EXPECT_EQ(ReasonOf("0"), "'0' is no model; they are 1 to 22");
    EXPECT_EQ(ReasonOf("23"), "'23' is no model; they are 1 to 22");
    EXPECT_EQ(ReasonOf("1,,2"), "'' is no model; they are 1 to 22");
    EXPECT_EQ(ReasonOf("2x"), "'2x' is no model; they are 1 to 22");
    EXPECT_EQ(ReasonOf("2+"), "'' is no option of a model; they are nonideal and separate-k");
    EXPECT_EQ(ReasonOf("8+nonideal"), "model 8 has no option nonideal");
    EXPECT_EQ(ReasonOf("1+separate-k"), "model 1 has no option separate-k");
    EXPECT_EQ(ReasonOf("2+nonideal+nonideal"), "nonideal stands twice in 2+nonideal");
    EXPECT_EQ(ReasonOf("2,1,2"), "model 2 stands twice");
}

TEST(ModelVariants, AreContainedInWhatSwitchesOffToThem) {
    for (const char* large : {"2", "3", "4", "5", "6", "7", "8", "15", "22"})
        EXPECT_TRUE(Nested("1", large)) << large;
    for (const auto& [small, large] : {std::pair{"2", "3"},
                                       {"2", "5"},
                                       {"9", "13"},
                                       {"9", "14"},
                                       {"10", "14"},
                                       {"16", "20"},
                                       {"18", "20"},
                                       {"21", "22"},
                                       {"7", "20"},
                                       {"8", "13"}})
        EXPECT_TRUE(Nested(small, large)) << small << " in " << large;
    for (const auto& [small, large] : {std::pair{"2", "7"},
                                       {"8", "9"},
                                       {"8", "12"},
                                       {"15", "16"},
                                       {"16", "18"},
                                       {"17", "19"},
                                       {"3", "4"},
                                       {"20", "21"},
                                       {"2", "2"},
                                       {"5", "3"}})
        EXPECT_FALSE(Nested(small, large)) << small << " in " << large;
}

TEST(ModelVariants, WithAnOptionContainThoseWithout) {
    EXPECT_TRUE(Nested("2", "2+nonideal"));
    EXPECT_TRUE(Nested("1+nonideal", "2+nonideal"));
    EXPECT_FALSE(Nested("1+nonideal", "2"));
    EXPECT_TRUE(Nested("2", "2+separate-k"));
    // Where each set has a constant in the place of its offset, an offset is no special case.
    EXPECT_FALSE(Nested("4", "4+separate-k"));
    EXPECT_TRUE(Nested("4", "4+separate-k", true));
    EXPECT_FALSE(Nested("8", "9+separate-k", true));
    EXPECT_TRUE(Nested("4+separate-k", "5+separate-k"));
}

// With S = n the logarithm is 0 and what is left can be done in the head: k = 3, n = 10.
TEST(Criteria, AreTheirFormulas) {
    EXPECT_DOUBLE_EQ(CorrectedAic(10.0, 10, 2).value(), 6.0 + 24.0 / 6.0);
    EXPECT_DOUBLE_EQ(BayesianCriterion(10.0, 10, 2).value(), 3.0 * std::log(10.0));
    EXPECT_DOUBLE_EQ(CorrectedAic(100.0, 100, 1).value(), 4.0 + 12.0 / 97.0);
    const double e = std::exp(1.0);
    EXPECT_NEAR(BayesianCriterion(20.0 * e, 20, 4).value(), 20.0 + 5.0 * std::log(20.0), 1e-12);
    EXPECT_FALSE(CorrectedAic(1.0, 6, 4).has_value()); // n - k - 1 = 0
    EXPECT_FALSE(BayesianCriterion(0.0, 6, 4).has_value());
}

// A mean, a line and a parabola through (-2, 1), (-1, 3), (0, 2), (1, 5), (2, 4), done by hand: by orthogonal
// polynomials the sums are 10, 10 - 8^2 / 10 and that less 2^2 / 14. With one degree of freedom above, P is
// that of Student's t with 3 or 2 below, with two and two it is 1 / (1 + F) (Abramowitz and Stegun, 26.7.3,
// 26.7.4 and 26.6.4).
TEST(Comparison, OfThreeNestedLinearProblemsIsThatByHand) {
    const double mean = 10.0, line = 3.6, parabola = 3.6 - 4.0 / 14.0;
    const NestedTest first = TestNested(mean, 4, line, 3);
    EXPECT_NEAR(first.F, 16.0 / 3.0, 1e-12);
    const double angle = std::atan(4.0 / 3.0); // of t over the root of 3
    EXPECT_NEAR(first.P, 1.0 - 2.0 / 3.14159265358979 * (angle + 0.48), 1e-9);
    const NestedTest second = TestNested(line, 3, parabola, 2);
    EXPECT_NEAR(second.F, 5.0 / 29.0, 1e-12);
    EXPECT_NEAR(second.P, 1.0 - std::sqrt(5.0 / 63.0), 1e-9); // t^2 / (t^2 + 2)
    const NestedTest both = TestNested(mean, 4, parabola, 2);
    EXPECT_NEAR(both.F, 117.0 / 58.0, 1e-12);
    EXPECT_NEAR(both.P, 58.0 / 175.0, 1e-9);
    EXPECT_EQ(TestNested(3.0, 3, 3.1, 2).F, 0.0) << "a larger model that has ended higher";
    EXPECT_NEAR(CorrectedAic(mean, 5, 1).value(), 5.0 * std::log(2.0) + 4.0 + 12.0 / 2.0, 1e-12);
    EXPECT_NEAR(CorrectedAic(line, 5, 2).value(), 5.0 * std::log(0.72) + 6.0 + 24.0, 1e-12);
    EXPECT_FALSE(CorrectedAic(parabola, 5, 3).has_value());
    EXPECT_NEAR(BayesianCriterion(line, 5, 2).value(), 5.0 * std::log(0.72) + 3.0 * std::log(5.0), 1e-12);
}

// Every sum is the least one that a dense search in long double finds for that model, within the half share
// of a degree of freedom (1e-3) by which forward differences rest beside it; from these sums F, the
// differences and the weights follow by hand.
TEST(Comparison, TellsNestedModelsApartByLeastSums) {
    Script script;
    FitHeldCase("Model02");
    const Comparison comparison = Compare("1, 2, 3, 2+nonideal");
    ASSERT_TRUE(comparison.Complete);
    std::vector<double> sums, criteria;
    const auto n = static_cast<double>(Work.NumPts);
    for (const ComparedModel& row : comparison.Rows) {
        ASSERT_TRUE(row.Minimum) << row.Notes;
        sums.push_back(static_cast<double>(FitReference(row.Fit).End.SumSq));
        EXPECT_NEAR(row.SumSq / sums.back(), 1.0, 1e-3) << VariantText(row.Variant);
        EXPECT_EQ(row.Free + row.Freedom, Work.NumPts);
        const double k = static_cast<double>(row.Free) + 1.0;
        criteria.push_back(n * std::log(row.SumSq / n) + 2.0 * k + 2.0 * k * (k + 1.0) / (n - k - 1.0));
    }
    EXPECT_EQ(comparison.Rows[0].Reference, "");
    EXPECT_FALSE(comparison.Rows[0].F.has_value());
    EXPECT_EQ(comparison.Rows[1].Reference, "1");
    EXPECT_EQ(comparison.Rows[2].Reference, "2");
    EXPECT_EQ(comparison.Rows[3].Reference, "2");
    const ComparedModel& dimer = comparison.Rows[1];
    EXPECT_NEAR(dimer.F.value(), (sums[0] - sums[1]) / (sums[1] / static_cast<double>(dimer.Freedom)),
                0.01 * dimer.F.value());
    EXPECT_LT(dimer.P.value(), 1e-10);
    EXPECT_TRUE(dimer.IsOwn);
    double sum = 0.0, least = criteria[0];
    for (const double c : criteria)
        least = std::min(least, c);
    for (const double c : criteria)
        sum += std::exp((least - c) / 2.0);
    for (std::size_t i = 0; i < criteria.size(); ++i) {
        EXPECT_NEAR(comparison.Rows[i].DeltaAicc.value(), criteria[i] - least, 1e-9);
        EXPECT_NEAR(comparison.Rows[i].Weight.value(), std::exp((least - criteria[i]) / 2.0) / sum, 1e-12);
    }
    EXPECT_LT(comparison.Rows[0].Weight.value(), 1e-6);
}

// With one parameter more and some hundred degrees of freedom F is all but the square of a normal deviate,
// whose two tails hold erfc(sqrt(F / 2)) (Abramowitz and Stegun, 26.6.12 and 26.2.29).
TEST(Comparison, ProbabilityIsThatOfANormalDeviateForManyPoints) {
    Script script;
    FitHeldCase("Model01");
    const ComparedModel row = RowNamed(Compare("1,2"), "2");
    ASSERT_TRUE(row.F && row.P) << row.Notes;
    EXPECT_NEAR(row.P.value(), std::erfc(std::sqrt(row.F.value() / 2.0)), 0.005);
}

// A tetramer that is not there: its constant runs off to nothing, where there is no minimum.
TEST(Comparison, SaysThatALargerModelIsNoBetter) {
    Script script;
    FitHeldCase("Model02");
    const ComparedModel row = RowNamed(Compare("2, 4"), "4");
    EXPECT_FALSE(row.Minimum);
    EXPECT_NE(row.Notes.find("No better than 2, which it contains."), std::string::npos) << row.Notes;
    EXPECT_FALSE(row.Weight.has_value());
}

// Three draws of each truth of the table in docs/studies.md, in which at least nine of ten are told right. Of
// eighteen with that chance each, thirteen or fewer come once in thirty-five times.
TEST(Comparison, GivesTheModelThatHasMadeTheDataTheLargestWeight) {
    Script script;
    UseThreads(2);
    const Confusions confusions = TellModelsApart(3, 1);
    EXPECT_EQ(confusions.All(), 18);
    EXPECT_GE(confusions.Right(), 14);
}

TEST(Comparison, IsTheSameForAnyNumberOfThreads) {
    Script script;
    FitHeldCase("Model04");
    const Comparison loop = Compare("1, 2, 3, 4, 5, 1+nonideal");
    for (const int threads : {1, 2, 16}) {
        UseThreads(threads);
        const Comparison other = Compare("1, 2, 3, 4, 5, 1+nonideal");
        ASSERT_EQ(other.Rows.size(), loop.Rows.size());
        for (std::size_t i = 0; i < loop.Rows.size(); ++i) {
            EXPECT_EQ(other.Rows[i].SumSq, loop.Rows[i].SumSq) << threads;
            EXPECT_TRUE(other.Rows[i].Fit == loop.Rows[i].Fit) << threads;
            EXPECT_EQ(other.Rows[i].Weight, loop.Rows[i].Weight) << threads;
        }
    }
}

TEST(Comparison, LeavesTheUsersFitUntilAnotherOneIsTaken) {
    Script script;
    FitHeldCase("Model04");
    const Workspace own = Work;
    const Comparison comparison = Compare("2, 4");
    EXPECT_TRUE(Work == own);
    TakeCompared(RowNamed(comparison, "4"));
    EXPECT_TRUE(Work == own);
    TakeCompared(RowNamed(comparison, "2"));
    EXPECT_EQ(Work.Model, 2);
    EXPECT_NE(Work.FitDone, 0);
    EXPECT_EQ(Work.SumSq, RowNamed(comparison, "2").SumSq);
    EXPECT_EQ(Work.LastModel, 2);
}

// What is held in the user's fit is held in every model, at the same value; what is fitted there is fitted.
TEST(Comparison, HoldsMassesAndOffsetsAsTheFitDoes) {
    Script script;
    FitHeldCase("Model08");
    const Comparison comparison = Compare("1, 8, 10");
    for (const ComparedModel& row : comparison.Rows) {
        ASSERT_TRUE(row.HasFit) << row.Notes;
        EXPECT_EQ(row.Fit.FreeMap[0], SlotHeld);
        EXPECT_EQ(row.Fit.Parms[0], Work.Parms[0]);
        EXPECT_EQ(row.Fit.FreeMap[SlotOffset(2)], SlotHeld);
        EXPECT_EQ(row.Fit.Parms[SlotOffset(2)], Work.Parms[SlotOffset(2)]);
        const bool hasB = row.Variant.Model >= 7;
        EXPECT_TRUE(!hasB || row.Fit.Parms[5] == Work.Parms[5]);
    }
    FitHeldCase("Model02");
    const ComparedModel single = RowNamed(Compare("1"), "1");
    ASSERT_TRUE(single.HasFit) << single.Notes;
    EXPECT_GE(single.Fit.FreeMap[0], 0);
    EXPECT_GE(single.Fit.FreeMap[SlotOffset(1)], 0);
}

TEST(Comparison, AModelThatCannotBeTakenUpSaysWhy) {
    Script script;
    FitHeldCase("Model02");
    Work.ExtB = 0.0F;
    Work.ConcUnits = 2;
    const Comparison comparison = Compare("2, 8");
    const ComparedModel& failed = RowNamed(comparison, "8");
    EXPECT_FALSE(failed.HasFit);
    EXPECT_FALSE(failed.Notes.empty());
    EXPECT_FALSE(failed.Weight.has_value());
    EXPECT_DOUBLE_EQ(RowNamed(comparison, "2").Weight.value(), 1.0);
}

TEST(Comparison, AMassThatTheFitDoesNotKnowIsTold) {
    Script script;
    FitHeldCase("Model02");
    Work.Parms[5] = 0.0F;
    const ComparedModel row = RowNamed(Compare("7"), "7");
    EXPECT_NE(row.Notes.find("The mass of B is not known"), std::string::npos) << row.Notes;
}

TEST(Comparison, ACancelShowsWhatThereIs) {
    Script script;
    FitHeldCase("Model04");
    const Comparison comparison = CompareModels(ReadVariants("1,2,3,4"), [](long done) {
        if (done == 2) Work.AbortFit = FlagTrue;
    });
    EXPECT_FALSE(comparison.Complete);
    long fits = 0;
    for (const ComparedModel& row : comparison.Rows) {
        fits += row.HasFit;
        EXPECT_TRUE(row.HasFit || row.Notes == "The comparison was stopped before this model.") << row.Notes;
    }
    EXPECT_EQ(fits, 2);
}

// From a fit of the wrong, smaller model: the comparison finds the true one, whose sum is the least one.
TEST(Comparison, FindsTheLargerModelFromTheSmallerOne) {
    Script script;
    for (const auto& [name, small, large] :
         {std::tuple{"Model04", 2, "4"}, std::tuple{"Model03", 2, "3"}, std::tuple{"Model09", 8, "9"},
          std::tuple{"Model11", 9, "11"}, std::tuple{"Model12", 9, "12"}, std::tuple{"Model17", 16, "17"}}) {
        LoadHeldCase(name);
        const double least = static_cast<double>(FitReference(Work).End.SumSq);
        TakeCompared(Compare(std::to_string(small).c_str()).Rows.front());
        ASSERT_EQ(Work.Model, small) << name;
        const ComparedModel row = RowNamed(Compare(large), large);
        ASSERT_TRUE(row.Minimum) << name << ": " << row.Notes;
        EXPECT_LE(row.SumSq, least * 1.001) << name;
    }
}

// The user's fit of a mixture had converged with some sets in the wrong proportion of their species, and its
// row was ranked by that.
TEST(Comparison, AFitInTheWrongMinimumWasRankedByIt) {
    Script script;
    int wrong = 0;
    for (std::uint64_t seed = 3; seed <= 8 && wrong == 0; ++seed) {
        LoadMixture({9, 1}, seed);
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        Work.LastModel = Work.Model;
        HoldWhatIsNotFitted();
        const double least = static_cast<double>(FitReference(Work).End.SumSq);
        StartFromDefaults();
        Work.StartParms = Work.Parms;
        RunFit();
        if (Work.Outcome.End != FitEnd::Converged || Work.SumSq <= 1.01 * least) continue;
        ++wrong;
        const Workspace own = Work;
        const ComparedModel row = RowNamed(Compare("9"), "9");
        EXPECT_TRUE(Work == own);
        ASSERT_TRUE(row.Minimum) << row.Notes;
        EXPECT_FALSE(row.IsOwn);
        EXPECT_LT(row.SumSq, 0.999 * own.SumSq);
        EXPECT_LE(row.SumSq, 1.001 * least);
    }
    EXPECT_EQ(wrong, 1) << "no draw ends in a wrong minimum any more";
}

} // namespace
} // namespace Quillon
