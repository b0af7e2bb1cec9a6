// Expected errors of a design against closed forms and against the spread of simulated fits.
#include "fit/GNLLSQ.h"
#include "fit/equations/FreeMap.h"
#include "models/SEDEQ3.h"
#include "models/table/ParmScale.h"
#include "planning/design/ExpectedErrors.h"
#include "planning/design/Loadings.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

void Load(const char* name) {
    const ModelCase& theCase = ModelCaseNamed(name);
    Work = SimulatedWorkspace(theCase);
    Work.MonitorMode = Monitor::None;
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    BuildParmScale();
    BuildParmNames();
    BuildParmFormats();
    SetDefaultBounds();
    Work.StartParms = Work.Parms;
}

double Shown(SlotNo slot) {
    return static_cast<double>(ToUserUnits(slot, Work.Parms[slot]));
}

// The points as the model has them, with noise.
void DrawPoints(const OneBased<float>& truth, NoiseSource& source, double noise) {
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtY[p] = static_cast<float>(static_cast<double>(truth[p]) + noise * source.Gaussian());
}

// A standard deviation of n values is known to 1 / sqrt(2 n - 2) of itself; four of them, for some dozens of
// parameters.
void ExpectSpreadOfFits(const char* name, double noise) {
    Load(name);
    const Workspace truth = Work;
    const Plan plan = PlanExperiment({}, noise, {});
    ASSERT_EQ(plan.Designs.size(), 1U);
    const std::vector<ExpectedError>& expected = plan.Designs[0].Parms;
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(truth.NumFree)) << plan.Designs[0].Failure;
    TakeUpDesign({});
    const OneBased<float> signals = Work.PtY;
    constexpr int fits = 200;
    std::vector<double> sums(expected.size()), squares(expected.size());
    NoiseSource source(11);
    for (int i = 0; i < fits; ++i) {
        Work = truth;
        DrawPoints(signals, source, noise);
        ASSERT_TRUE(RunFit()) << Work.Outcome.Sentence;
        for (std::size_t a = 0; a < expected.size(); ++a) {
            const double off = Shown(SlotNo(expected[a].Slot)) - expected[a].Value;
            sums[a] += off;
            squares[a] += off * off;
        }
    }
    for (std::size_t a = 0; a < expected.size(); ++a) {
        const double mean = sums[a] / fits;
        const double sd = std::sqrt((squares[a] - fits * mean * mean) / (fits - 1));
        ASSERT_TRUE(expected[a].Error) << expected[a].Name;
        EXPECT_NEAR(sd / *expected[a].Error, 1.0, 4.0 / std::sqrt(2.0 * fits - 2.0))
            << name << " " << expected[a].Name;
    }
}

TEST(ExpectedErrors, AreTheSpreadOf200SimulatedFitsOfOneSpecies) {
    Script script;
    ExpectSpreadOfFits("Model01", 0.002);
}

TEST(ExpectedErrors, AreTheSpreadOf200SimulatedFitsOfAnAssociation) {
    Script script;
    ExpectSpreadOfFits("Model02", 0.001);
}

// Zero offsets alone: the variance of a mean.
TEST(ExpectedErrors, OfAnOffsetAloneIsThatOfAMean) {
    Script script;
    Load("Model01");
    std::vector<FitChoice> choices = FitChoices();
    for (FitChoice& choice : choices)
        choice.Check = PartOfSlot(choice.Slot) == SlotPart::Offset ? FitCheckYes : FitCheckNo;
    AssignFreePositions(choices);
    const Plan plan = PlanExperiment({}, 0.01, {});
    ASSERT_EQ(plan.Designs[0].Parms.size(), static_cast<std::size_t>(Work.NumSets));
    for (std::size_t s = 0; s < plan.Designs[0].Parms.size(); ++s)
        EXPECT_NEAR(*plan.Designs[0].Parms[s].Error, 0.01 / std::sqrt(Work.SetPts[static_cast<long>(s) + 1]),
                    1e-7);
}

TEST(ExpectedErrors, OfNothingFittedWereThoseOfTheFitBefore) {
    Script script;
    Load("Model01");
    for (const SlotNo slot : EachSlot())
        if (IsFitted(slot)) Work.FreeMap[slot] = SlotHeld;
    EXPECT_THROW(ErrorsOfWork(0.01), RuntimeError);
}

// One species is linear in its concentration: twice the signal halves the error of the mass and leaves those
// of offsets.
TEST(ExpectedErrors, OfAMassHalveWithTwiceTheLoading) {
    Script script;
    Load("Model01");
    const Plan plan = PlanExperiment({{1.0}, {1.0, 2.0}}, 0.004, {});
    ASSERT_EQ(plan.Designs.size(), 2U);
    for (std::size_t a = 0; a < plan.Designs[0].Parms.size(); ++a) {
        const ExpectedError& once = plan.Designs[0].Parms[a];
        const ExpectedError& twice = plan.Designs[1].Parms[a];
        ASSERT_TRUE(once.Error && twice.Error);
        const bool offset = PartOfSlot(SlotNo(once.Slot)) == SlotPart::Offset;
        EXPECT_NEAR(*twice.Error / *once.Error, offset ? 1.0 : 0.5, 0.01) << once.Name;
    }
    const Plan noisy = PlanExperiment({}, 0.008, {});
    EXPECT_NEAR(*noisy.Designs[0].Parms[0].Error / *plan.Designs[0].Parms[0].Error, 2.0, 1e-4);
}

TEST(Designs, KeepWhatASetHolds) {
    Script script;
    for (const char* name : {"Model01", "Model02", "Model06", "Model07", "Model08", "Model12", "Model21"}) {
        Load(name);
        std::vector<SetAmounts> before;
        for (const SetNo set : EachSet())
            before.push_back(AmountsIn(set));
        const double mass = Shown(SlotNo(0));
        const float rpm = Work.ScanRPM[RowOf(SetNo(1))];
        TakeUpDesign({1.2, 0.5});
        EXPECT_NEAR(Work.ScanRPM[RowOf(SetNo(1))] / rpm, 1.2, 1e-5);
        const double grows = Work.MassUnits == MassUnit::Sigma ? 1.44 : 1.0;
        EXPECT_NEAR(Shown(SlotNo(0)) / mass, grows, 2e-5) << name;
        for (const SetNo set : EachSet()) {
            const SetAmounts& was = before[static_cast<std::size_t>(set.Number - 1)];
            const SetAmounts is = AmountsIn(set);
            EXPECT_NEAR(is.A / was.A, 0.5, 1e-5) << name << " " << set.Number;
            EXPECT_NEAR(is.B, 0.5 * was.B, 1e-5 * was.B) << name << " " << set.Number;
        }
    }
}

// The mean of one species over a range of x is that of its exponential, which the reference of the test takes
// by itself.
TEST(Designs, AmountsAreMeansOfTheExponential) {
    Script script;
    Load("Model01");
    for (const SetNo set : EachSet()) {
        double sum = 0.0;
        for (long p = FirstPointOf(set); p <= LastTruePointOf(set); ++p)
            sum +=
                std::exp(static_cast<double>(Work.Parms[SlotA(set)]) +
                         static_cast<double>(Work.Parms[0]) * static_cast<double>(Work.SetSigmaScale[set]) *
                             static_cast<double>(Work.PtX[p]));
        const double scale = static_cast<double>(Work.SetSignalScale[set]);
        EXPECT_NEAR(AmountsIn(set).A, scale * sum / static_cast<double>(TruePointsOf(set)), 1e-5);
    }
}

TEST(Plans, LeaveTheAnalysisAndRefuseWhatIsNone) {
    Script script;
    Load("Model02");
    const Workspace own = Work;
    const Plan plan = PlanExperiment({{0.8, 1.0}, {0.3, 1.0, 3.0}}, 0.004, {});
    EXPECT_TRUE(Work == own);
    EXPECT_TRUE(plan.Complete);
    ASSERT_EQ(plan.Designs.size(), 6U);
    EXPECT_EQ(plan.Designs[1].Of.SpeedFactor, 0.8);
    EXPECT_EQ(plan.Designs[1].Of.LoadingFactor, 1.0);
    EXPECT_EQ(WhyNoPlan({}), "");
    EXPECT_NE(WhyNoPlan({{0.0}, {1.0}}), "");
    EXPECT_NE(WhyNoPlan({{1.0}, {}}), "");
    EXPECT_NE(WhyNoPlan({std::vector<double>(50, 1.0), std::vector<double>(50, 1.0)}), "");
}

TEST(Plans, NeedValuesThatStand) {
    Script script;
    Load("Model01");
    EXPECT_TRUE(CanPlan() && HasTruth());
    Work.StartParms = FreshWorkspace().StartParms; // as before the first fit
    Work.FitValid = Work.FitDone = FlagFalse;
    EXPECT_FALSE(HasTruth());
    Work.FitValid = FlagTrue; // after a simulation
    EXPECT_TRUE(HasTruth());
}

// A mass without an oligomer says nothing of a constant: with hardly anything loaded the dimer does not show.
TEST(ExpectedErrors, GrowWhereTheDimerDoesNotShow) {
    Script script;
    Load("Model02");
    const Plan plan = PlanExperiment({{1.0}, {0.02, 1.0}}, 0.004, {});
    const auto errorOf = [&](std::size_t design) {
        for (const ExpectedError& parm : plan.Designs[design].Parms)
            if (parm.Slot == 2) return parm.Error.value_or(1e30);
        return -1.0;
    };
    EXPECT_GT(errorOf(1), 0.0);
    EXPECT_LT(errorOf(1), 1e29);
    EXPECT_GT(errorOf(0), 10.0 * errorOf(1));
}

} // namespace
} // namespace Quillon
