// The form "Parameter Bounds".
#include "fit/forms/BoundsForm.h"
#include "models/forms/NumberBox.h"

#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

struct BoundsTable : testing::Test {
    BoundsTable() {
        Work = FreshWorkspace();
        BoundsForm = BoundsFormRecord{};
        Work.NumParms = 11;
        for (long k = 0; k < 11; ++k) {
            Work.ParmName[k] = "P" + std::to_string(k);
            Work.ParmFormat[k] = "0.000";
            Work.Bounds[0][k] = -4.0F;
            Work.Bounds[1][k] = 30.0F;
        }
        Work.ParmTitle[0] = "sigma";
    }
    Script script;

    static void Enters(BoundSide side, int row, const std::string& text) {
        Control& field =
            (side == BoundSide::Lower ? BoundsForm.LowerB : BoundsForm.UpperB)[static_cast<std::size_t>(row)];
        BoundsFormGotFocus(side, row);
        TypeInto(field, text, [=](int key) { return BoundsFormKeyPress(side, row, key); });
        BoundsFormLostFocus(side, row);
    }
};

TEST_F(BoundsTable, ShowsEveryParameter) {
    LoadBoundsForm();
    EXPECT_EQ(BoundsForm.State.Caption, "Quillon - Parameter Bounds");
    EXPECT_EQ(BoundsForm.ParameterHead.Text, "Parameter:");
    EXPECT_EQ(BoundsForm.LowerHead.Text, "Lower Bound:");
    EXPECT_EQ(BoundsForm.UpperHead.Text, "Upper Bound:");
    EXPECT_EQ(BoundsForm.ParameterName.size(), 11U);
    EXPECT_EQ(BoundsForm.ParameterName[0].Text, "P0  (sigma)");
    EXPECT_EQ(BoundsForm.LowerB[10].Text, "-4.000");
    EXPECT_EQ(BoundsForm.UpperB[10].Text, "30.000");
    EXPECT_FALSE(BoundsForm.Page2.Visible);
}

TEST_F(BoundsTable, TakesCrossedBoundsAndKeepsUnalteredOnes) {
    Work.Bounds[0][0] = 0.12345F;
    script.ExpectModal(BoundsFormName, [] {
        Enters(BoundSide::Lower, 0, "");
        Enters(BoundSide::Lower, 1, "40");
        BoundsFormOkButton();
        EXPECT_FALSE(BoundsForm.State.Shown);
    });
    BoundsDialog();
    EXPECT_EQ(Work.Bounds[0][0], 0.12345F);
    EXPECT_EQ(Work.Bounds[0][1], 40.0F);
    EXPECT_EQ(Work.Bounds[1][1], 30.0F);
}

TEST_F(BoundsTable, CancelBringsAllBoundsBack) {
    script.ExpectModal(BoundsFormName, [] {
        Enters(BoundSide::Upper, 3, "5");
        EXPECT_EQ(Work.Bounds[1][3], 5.0F);
        BoundsFormCancelButton();
    });
    BoundsDialog();
    EXPECT_EQ(Work.Bounds[1][3], 30.0F);
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST_F(BoundsTable, AFieldLeftByTheCancelledFormIsNoUndo) {
    script.ExpectModal(BoundsFormName, [] {
        Enters(BoundSide::Upper, 3, "5");
        BoundsFormGotFocus(BoundSide::Lower, 2);
        BoundsFormCancelButton();
        BoundsFormLostFocus(BoundSide::Lower, 2); // the window goes, and the focus with it
    });
    BoundsDialog();
    EXPECT_EQ(Work.Bounds[1][3], 30.0F);
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST_F(BoundsTable, EscapeTakesAnEntryBack) {
    LoadBoundsForm();
    Enters(BoundSide::Upper, 2, "5\x1B");
    EXPECT_EQ(BoundsForm.UpperB[2].Text, "30.000");
    EXPECT_EQ(Work.Bounds[1][2], 30.0F);
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST_F(BoundsTable, TabAndEnterLeadOn) {
    LoadBoundsForm();
    BoundsFormKeyPress(BoundSide::Lower, 0, 9);
    EXPECT_EQ(BoundsForm.State.FocusOn, &BoundsForm.UpperB[0]);
    BoundsFormKeyPress(BoundSide::Upper, 0, 13);
    EXPECT_EQ(BoundsForm.State.FocusOn, &BoundsForm.LowerB[1]);
    BoundsFormKeyPress(BoundSide::Upper, 10, 13);
    EXPECT_EQ(BoundsForm.State.FocusOn, &BoundsForm.OkButton);
}

TEST_F(BoundsTable, ManyRowsGoOnASecondPage) {
    BoundsForm.Layout.RowsPerColumn = 3;
    LoadBoundsForm();
    EXPECT_TRUE(BoundsForm.Page2.Visible);
    EXPECT_EQ(BoundsForm.Page2.Text, "Page &2");
    EXPECT_FALSE(BoundsForm.LowerB[6].Visible);
    BoundsFormPage2();
    EXPECT_EQ(BoundsForm.Page2.Text, "Page &1");
    EXPECT_TRUE(BoundsForm.LowerB[6].Visible);
    EXPECT_FALSE(BoundsForm.LowerB[5].Visible);
    EXPECT_EQ(BoundsForm.State.FocusOn, &BoundsForm.LowerB[6]);
}

TEST_F(BoundsTable, TwoColumnsWereWiderThanASmallScreen) {
    BoundsForm.Layout.RowsPerColumn = 3;
    BoundsForm.Layout.MostColumns = 1;
    LoadBoundsForm();
    EXPECT_EQ(BoundsForm.Layout.Columns(), 1);
    EXPECT_TRUE(BoundsForm.LowerB[2].Visible);
    EXPECT_FALSE(BoundsForm.LowerB[3].Visible);
    BoundsFormKeyPress(BoundSide::Upper, 2, 13);
    EXPECT_EQ(BoundsForm.State.FocusOn, &BoundsForm.OkButton);
    BoundsFormPage2();
    EXPECT_TRUE(BoundsForm.LowerB[3].Visible);
    EXPECT_EQ(BoundsForm.State.FocusOn, &BoundsForm.LowerB[3]);
    BoundsForm.Layout.MostColumns = 2; // of the screen: it outlasts a showing
}

} // namespace
} // namespace Quillon
