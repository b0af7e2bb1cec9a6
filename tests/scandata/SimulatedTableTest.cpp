// The simulated experiments of the tests fill the flat vectors by their own hand; building them from the
// table gives the same, for every model, option and kind of constraint.
#include "models/SEDEQ3.h"
#include "scandata/table/FitData.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

template <class A>
void ExpectSamePrefix(const A& built, const A& byHand, long last, const std::string& what) {
    ASSERT_GE(built.Hi(), last) << what;
    for (long i = 1; i <= last; ++i)
        EXPECT_EQ(built[i], byHand[i]) << what << " " << i;
}

TEST(BuildFitData, OfSimulatedTablesGivesTheVectorsMadeByHand) {
    for (const ModelCase& each : ModelCases()) {
        Script script;
        const Workspace byHand = SimulatedWorkspace(each);
        Work = byHand;
        BuildFitData();
        ASSERT_EQ(Work.NumPts, byHand.NumPts) << each.Name;
        ASSERT_EQ(Work.NumSets, byHand.NumSets) << each.Name;
        ExpectSamePrefix(Work.PtX, byHand.PtX, byHand.NumPts, each.Name + " x");
        ExpectSamePrefix(Work.PtSet, byHand.PtSet, byHand.NumPts, each.Name + " set");
        for (long i = 1; i <= byHand.NumPts; ++i) // targets of constraints are quotients of singles
            EXPECT_FLOAT_EQ(Work.PtY[i], byHand.PtY[i]) << each.Name << " y " << i;
        ExpectSamePrefix(Work.SetPts, byHand.SetPts, byHand.NumSets, each.Name + " points");
        ExpectSamePrefix(Work.SetRow, byHand.SetRow, byHand.NumSets, each.Name + " row");
        ExpectSamePrefix(Work.SetSigmaScale, byHand.SetSigmaScale, byHand.NumSets, each.Name + " sigma");
        ExpectSamePrefix(Work.SetSignalScale, byHand.SetSignalScale, byHand.NumSets, each.Name + " signal");
        EXPECT_EQ(Work.Parms, byHand.Parms) << each.Name;
        EXPECT_EQ(Work.ConstraintFlags, byHand.ConstraintFlags) << each.Name;
    }
}

// The fit flags that the cases set by hand are such as the model's own rules allow: what they fit is used,
// what is tied is tied.
TEST(ModelFlags, OfSimulatedCasesFitOnlyWhatTheModelUses) {
    for (const ModelCase& each : ModelCases()) {
        Script script;
        const Workspace byHand = SimulatedWorkspace(each);
        Work = byHand;
        for (long slot = 0; slot < Work.NumParms; ++slot)
            Work.FreeMap[slot] = 0;
        ApplyModelFlags();
        for (long slot = 0; slot < Work.NumParms; ++slot) {
            if (byHand.FreeMap[slot] >= 0) {
                EXPECT_GE(Work.FreeMap[slot], SlotHeld) << each.Name << " slot " << slot;
            }
            EXPECT_EQ(Work.FreeMap[slot] == SlotTied, byHand.FreeMap[slot] == SlotTied)
                << each.Name << " slot " << slot;
        }
    }
}

} // namespace
} // namespace Quillon
