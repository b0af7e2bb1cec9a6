// The form for zero offset constraints.
#include "models/forms/BaseForm.h"
#include "models/SEDEQ3.h"
#include "models/forms/NumberBox.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

const std::string NoSuchSet = "Invalid data set number entered!";
const std::string NoChain = "You cannot link this set to a set already linked!";

// Sets 1 to 4 in rows 2, 3, 5 and 9.
void StartFourSets() {
    Work = UnitWorkspace(1);
    Work.NumSets = 4;
    const int rows[] = {2, 3, 5, 9};
    Work.SetOfRow[1] = 0;
    for (long s = 1; s <= 4; ++s) {
        Work.SetRow[s] = ToInt16(rows[s - 1]);
        Work.SetOfRow[rows[s - 1]] = ToInt16(s);
        Work.SetLabel[s] = "scan" + std::to_string(s) + ".RA1";
    }
}

void Enter(long set, const std::string& keys) {
    BaseFormGotFocus(SetNo(set));
    TypeInto(BaseForm.Boxes.LinkNum[static_cast<std::size_t>(set - 1)], keys,
             [&](int key) { return BaseFormKeyPress(SetNo(set), key); });
    BaseFormLostFocus(SetNo(set));
}

std::string Shown() {
    std::string text;
    for (const Control& box : BaseForm.Boxes.LinkNum)
        text += box.Text.empty() ? "-" : box.Text;
    return text;
}

TEST(BaseForm, ReadsAsDesigned) {
    StartFourSets();
    Work.OffsetLink[5] = 2;
    Work.OffsetLink[9] = 2;
    LoadBaseForm();
    EXPECT_EQ(BaseForm.State.Caption, "Set Zero Offset Constraints");
    EXPECT_EQ(BaseForm.Head.Text,
              "Constrain the baseline zero offset for data set number X to be the same as that "
              "of set Y: (enter 0 or space to remove a constraint)");
    EXPECT_EQ(BaseForm.XLabel.Text, "Set X:");
    EXPECT_EQ(BaseForm.YLabel.Text, "Set Y:");
    EXPECT_EQ(BaseForm.CancelButton.Text, "&Cancel All Constraints");
    EXPECT_EQ(BaseForm.ResetButton.Text, "&Return to Previous Constraints");
    EXPECT_EQ(BaseForm.Boxes.LinkNum[0].ToolTip,
              "Enter the data set # to which this set's zero offset will be linked");
    EXPECT_EQ(BaseForm.Boxes.SetNumber[3].Text, "4");
    EXPECT_EQ(BaseForm.Boxes.SetName[1].Text, "scan2.RA1");
    EXPECT_EQ(Shown(), "--11"); // sets, not rows
}

TEST(BaseForm, RecordsAndRemovesLinks) {
    Script script;
    StartFourSets();
    LoadBaseForm();
    Enter(2, "1");
    Enter(4, "1");
    EXPECT_EQ(Shown(), "-1-1");
    Enter(2, "0");
    Enter(4, " ");
    EXPECT_EQ(Shown(), "----");
    EXPECT_EQ(BaseForm.Boxes.Links[2], 0);
    EXPECT_EQ(BaseForm.Boxes.Links[4], 0);
}

TEST(BaseForm, RefusesNumbersOfNoSet) {
    for (const char* text : {"5", "-1", "99999999999999999999999999999999999999999"}) {
        Script script;
        StartFourSets();
        Work.OffsetLink[3] = 2;
        LoadBaseForm();
        script.ExpectMessage({NoSuchSet, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                             BoxAnswer::Ok);
        BaseForm.Boxes.LinkNum[1].Text = text; // pasted
        BaseFormLostFocus(SetNo(2));
        EXPECT_EQ(script.Beeps, 1);
        EXPECT_EQ(BaseForm.State.FocusOn, &BaseForm.Boxes.LinkNum[1]);
        EXPECT_EQ(BaseForm.Boxes.Links[2], 1); // the former link stands
    }
}

TEST(BaseForm, RefusesALinkToALinkedSet) {
    Script script;
    StartFourSets();
    LoadBaseForm();
    Enter(2, "1");
    script.ExpectMessage({NoChain, "BaseLine Constraints", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    Enter(3, "2");
    EXPECT_EQ(Shown(), "-1--"); // the entry is cleared
    EXPECT_EQ(BaseForm.Boxes.Links[3], 0);
    Enter(3, "4");
    script.ExpectMessage(NoChain);
    Enter(3, "2");
    EXPECT_EQ(Shown(), "-14-"); // the former link stands
}

// Set 1 would have no offset of its own that set 2 could follow.
TEST(BaseForm, RefusesALinkOfASetThatAnotherFollows) {
    Script script;
    StartFourSets();
    LoadBaseForm();
    Enter(2, "1");
    script.ExpectMessage(NoChain);
    Enter(1, "3");
    EXPECT_EQ(Shown(), "-1--");
}

TEST(BaseForm, ASetMayFollowItself) {
    Script script;
    StartFourSets();
    LoadBaseForm();
    Enter(3, "3");
    EXPECT_EQ(Shown(), "--3-");
    BaseFormGotFocus(SetNo(3)); // a visit changes nothing
    BaseFormLostFocus(SetNo(3));
    Enter(3, "1"); // its own former link is no chain
    EXPECT_EQ(Shown(), "--1-");
}

TEST(BaseForm, TakesDigitsOnly) {
    Script script;
    StartFourSets();
    LoadBaseForm();
    Enter(2, "-1.");
    EXPECT_EQ(Shown(), "-1--");
}

TEST(BaseForm, EnterGoesDownTheColumnToOk) {
    Script script;
    StartFourSets();
    LoadBaseForm();
    for (long set = 1; set <= 4; ++set) {
        EXPECT_EQ(BaseFormKeyPress(SetNo(set), '\r'), '\r');
        EXPECT_EQ(BaseForm.State.FocusOn,
                  set == 4 ? &BaseForm.OkButton : &BaseForm.Boxes.LinkNum[static_cast<std::size_t>(set)]);
    }
    EXPECT_TRUE(BaseForm.State.Shown);
}

TEST(BaseForm, EscapeUndoesABox) {
    Script script;
    StartFourSets();
    Work.OffsetLink[3] = 2;
    LoadBaseForm();
    Enter(2, "9\x1b");
    EXPECT_EQ(Shown(), "-1--");
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST(BaseForm, CancelClearsAllAndResetBringsThemBack) {
    Script script;
    StartFourSets();
    Work.OffsetLink[3] = 2;
    LoadBaseForm();
    Enter(4, "1");
    BaseFormCancelButton();
    EXPECT_EQ(Shown(), "----");
    EXPECT_TRUE(BaseForm.State.Shown);
    BaseFormResetButton();
    EXPECT_EQ(Shown(), "-1--");
    EXPECT_TRUE(BaseForm.State.Shown);
}

TEST(BaseConstraintDialog, WritesRowsAndItsBit) {
    Script script;
    StartFourSets();
    Work.ConstraintFlags = ConcentrationBit;
    Work.OffsetLink[9] = 3;
    Work.OffsetLink[12] = 4; // a row outside the fit
    script.ExpectModal(BaseFormName, [] {
        Enter(4, "0");
        Enter(2, "4");
        Enter(3, "4");
        BaseFormOkButton();
        EXPECT_FALSE(BaseForm.State.Shown);
    });
    BaseConstraintDialog();
    EXPECT_EQ(Work.OffsetLink[3], 9);
    EXPECT_EQ(Work.OffsetLink[5], 9);
    EXPECT_EQ(Work.OffsetLink[9], 0);
    EXPECT_EQ(Work.OffsetLink[12], 4);
    EXPECT_EQ(Work.ConstraintFlags, 3);
    script.ExpectModal(BaseFormName, [] {
        BaseFormCancelButton();
        BaseFormOkButton();
    });
    BaseConstraintDialog();
    EXPECT_EQ(Work.OffsetLink[3], 0);
    EXPECT_EQ(Work.ConstraintFlags, 1);
}

TEST(BaseConstraintDialog, OkTakesTheBoxThatIsBeingEditedOrStays) {
    Script script;
    StartFourSets();
    script.ExpectModal(BaseFormName, [&] {
        BaseForm.Boxes.LinkNum[1].Text = "7";
        script.ExpectMessage(NoSuchSet);
        BaseFormOkButton();
        EXPECT_TRUE(BaseForm.State.Shown);
        BaseForm.Boxes.LinkNum[1].Text = "1";
        BaseFormOkButton();
    });
    BaseConstraintDialog();
    EXPECT_EQ(Work.OffsetLink[3], 2);
}

TEST(BaseConstraintDialog, TiesAndReleasesOffsets) {
    Script script;
    StartFourSets();
    Work.FreeMap[SlotOffset(1)] = SlotHeld;
    script.ExpectModal(BaseFormName, [] {
        Enter(2, "1");
        BaseFormOkButton();
    });
    BaseConstraintDialog();
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], SlotTied);
    EXPECT_EQ(Work.FreeMap[SlotOffset(1)], 0); // the offset that is copied is released
    script.ExpectModal(BaseFormName, [] {
        BaseFormCancelButton();
        BaseFormOkButton();
    });
    BaseConstraintDialog();
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], SlotHeld);
}

TEST(OffsetConstraints, AreRefusedWhereThereAreNoOffsets) {
    const std::string refusal = "You cannot have baseline constraints with a model with unique association "
                                "constants for each data set, "
                                "since such a model doesn't use zero offsets!";
    for (int model = 1; model <= 22; ++model) {
        Work = UnitWorkspace(model);
        EXPECT_EQ(OffsetConstraintRefusal(), "") << model;
    }
    for (const int model : {2, 3, 4, 5, 6, 8, 9}) {
        Work = UnitWorkspace(model);
        Work.SeparateK = FlagTrue;
        const bool offsets = model == 2 || model == 3 || model == 6;
        EXPECT_EQ(OffsetConstraintRefusal(), offsets ? "" : refusal) << model;
    }
}

} // namespace
} // namespace Quillon
