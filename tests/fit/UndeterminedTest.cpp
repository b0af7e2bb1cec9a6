// What the data do not determine is named, and loses its error alone.
#include "fit/Undetermined.h"
#include "RescueCase.h"
#include "fit/equations/NormalEquations.h"
#include "input/NUMINPUT.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

class UndeterminedTest : public RescueCase {};

// Two parameters whose derivatives are the same at every point: only their sum is known.
TEST_F(UndeterminedTest, ACombinationIsNamedByItsEigenvector) {
    Levels();
    Work.NumFree = 3;
    Work.FreeIndex[0] = SlotOffset(1);
    Work.FreeIndex[1] = SlotOffset(2);
    Work.FreeIndex[2] = 0;
    NormalEquations e{ZeroBasedMatrix<double>(2, 2, 1.0), PerFree<double>(2)};
    e.Matrix(2, 2) = 5.0;
    e.Matrix(0, 2) = e.Matrix(2, 0) = e.Matrix(1, 2) = e.Matrix(2, 1) = 0.1;
    EXPECT_EQ(UndeterminedText(e), "The data do not determine " + Work.ParmName[SlotOffset(1)] +
                                       " together with " + Work.ParmName[SlotOffset(2)] +
                                       ". Hold one of them.");
    e.Matrix(1, 1) = 0.0; // no point feels the second one
    EXPECT_EQ(UndeterminedText(e), "No point depends on " + Work.ParmName[SlotOffset(2)] + ". Hold it.");
    Work.ParmName[SlotOffset(2)] =
        "B2 vir. coef."; // a name that ends with a point was followed by another one
    EXPECT_EQ(UndeterminedText(e), "No point depends on B2 vir. coef. Hold it.");
}

// A concentration that vanishes once the iteration has ended, beside a level that is off by then.
TEST_F(UndeterminedTest, AStopWithoutAnInverseNamesWhatIsUndetermined) {
    Levels();
    Work.Parms[SlotA(2)] = -1.0F;
    Work.FreeMap[SlotOffset(2)] = SlotHeld;
    Work.FreeMap[SlotA(2)] = 0;
    NumberFitted();
    FitProgress progress;
    progress.Phase = [](FitPhase phase) {
        if (phase != FitPhase::LastSums) return;
        Work.Parms[SlotA(2)] = -800.0F;
        Level(1) += 100.0F;
    };
    EXPECT_TRUE(RunFit(progress));
    EXPECT_EQ(Work.Outcome.End, FitEnd::StoppedShort);
    EXPECT_EQ(Work.Outcome.Reason, "No point depends on " + Work.ParmName[SlotA(2)] + ". Hold it.");
}

TEST_F(UndeterminedTest, AMathErrorOfScansTellsTheRadius) {
    LoadRobustnessCase(ModelCaseNamed("Model02"), 1);
    const long point = Work.SetPts[1] + 1; // the first one of set 2
    Work.Parms[SlotA(2)] = 500.0F;
    EXPECT_FALSE(RunFit());
    const double half = static_cast<double>(Work.PtX[point]) + ReferenceX(RowNo(Work.SetRow[2]));
    EXPECT_TRUE(Work.Outcome.Reason.starts_with("The fitted value of data set 2 at " +
                                                FormatNumber(std::sqrt(2.0 * half), "0.0000") +
                                                " cm is beyond"))
        << Work.Outcome.Reason;
}

TEST_F(UndeterminedTest, WithoutAnInverseOnlyWhatIsNotDeterminedLosesItsError) {
    Levels();
    NormalEquations e{ZeroBasedMatrix<double>(2, 2, 0.0), PerFree<double>(2)};
    e.Matrix(0, 0) = 4.0;
    e.Matrix(1, 1) = e.Matrix(1, 2) = e.Matrix(2, 1) = e.Matrix(2, 2) = 1.0;
    const ZeroBasedMatrix<double> inverse = DeterminedInverse(e);
    EXPECT_NEAR(inverse(0, 0), 0.25, 1e-9);
    EXPECT_EQ(inverse(1, 1), 0.0);
    EXPECT_EQ(inverse(2, 2), 0.0);
    EXPECT_EQ(inverse(1, 2), 0.0);
}

} // namespace
} // namespace Quillon
