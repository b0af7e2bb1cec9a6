// The form that asks for a data set.
#include "graphs/kinds/PickSet.h"

#include "GraphBench.h"

namespace Quillon {
namespace {

class PickSetForms : public GraphBench {
protected:
    PickSetForms() { FillThreeSets(); }
};

TEST_F(PickSetForms, ListsTheSetsOfTheFit) {
    LoadPickSet();
    EXPECT_EQ(PickSetWindow.State.Caption, "Select Data Set for Graph");
    EXPECT_TRUE(PickSetWindow.State.Shown);
    EXPECT_EQ(PickSetWindow.SetList.Items,
              (std::vector<std::string>{"Set 1 - 00011.RA1", "Set 2 - 00012.RA1", "Set 3 - 00013.RA1"}));
    EXPECT_EQ(PickSetWindow.SetList.Value, 1);
}

TEST_F(PickSetForms, GivesTheRowThatWasChosen) {
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(2));
        PickSetOkButton();
        EXPECT_FALSE(PickSetWindow.State.Shown);
    });
    EXPECT_EQ(PickSet(), SetNo(2));
    Outside.ExpectModal(PickSetName, [] { PickSetOkButton(); });
    EXPECT_EQ(PickSet(), SetNo(1)); // the choice of before is not kept
}

TEST_F(PickSetForms, RowsThatAreNotThereAreNoChoice) {
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(3));
        PickSetRow(SetNo(4));
        PickSetRow(SetNo(0));
        PickSetOkButton();
    });
    EXPECT_EQ(PickSet(), SetNo(3));
}

TEST_F(PickSetForms, CancelledOrClosedGivesNone) {
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(2));
        PickSetCancelButton();
    });
    EXPECT_EQ(PickSet(), NoSet);
    Outside.ExpectModal(PickSetName, [] { PickSetRow(SetNo(2)); }); // the window was closed
    EXPECT_EQ(PickSet(), NoSet);
}

TEST_F(PickSetForms, AFitOfOneSetLeavesNothingToAsk) {
    FillFit({{7, 4, 0}}, 0.5F);
    EXPECT_EQ(PickSet(), SetNo(1));
    EXPECT_TRUE(Outside.Asked.empty());
}

} // namespace
} // namespace Quillon
