// The form for titles: what it shows, previews, refuses and brings into the graph.
#include "chart/dialogs/TitleOptsForm.h"

#include "ChartBench.h"

namespace Quillon {
namespace {

class TitleOptsTest : public ChartBench {
protected:
    TitleOptsTest() {
        GraphSpec spec = Begin();
        spec.Title1 = {"A headline", 19, 0.03F, 7, 5};
        spec.Title2 = {"and another", 3, 0.02F, 0, 1};
        Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {2, 3}}));
    }
    // Opens the form, does something on it and presses OK.
    void Accept(std::function<void()> during) {
        Outside.ExpectModal(TitleOptsFormName, [during] {
            during();
            TitleOptsOkButton();
            EXPECT_FALSE(TitleOptsForm.State.Shown);
        });
        EditTitles();
    }
    TitleOptsFormRecord& Form = TitleOptsForm;
};

TEST_F(TitleOptsTest, ShowsBothTitles) {
    LoadTitleOptsForm();
    EXPECT_TRUE(Form.State.Shown);
    EXPECT_EQ(Form.State.Caption, "Edit Graph Title(s) and Title Format");
    EXPECT_EQ(Form.State.FocusOn, &Form.TitleInput);
    EXPECT_EQ(Form.TitleInput.Text, "A headline");
    EXPECT_EQ(Form.SubTitleInput.Text, "and another");
    EXPECT_EQ(Form.TitleSizeInput.Text, "0.030");
    EXPECT_EQ(Form.SubTitleSizeInput.Text, "0.020");
    EXPECT_EQ(Form.Alignment.Value, 5);
    EXPECT_EQ(Form.SubAlignment.Value, 1);
    const std::vector<std::string> places = {"Left (data)", "Center (data)", "Right (data)",
                                             "Left (page)", "Center (page)", "Right (page)"};
    EXPECT_EQ(Form.SubAlignment.Items, places);
    EXPECT_EQ(Form.Alignment.Items, places);
}

TEST_F(TitleOptsTest, ListsFontsAndColours) {
    LoadTitleOptsForm();
    ASSERT_EQ(Form.FontBox.Items.size(), 12U);
    EXPECT_EQ(Form.FontBox.Items[3], "Arial (TT)");
    EXPECT_EQ(Form.FontBox.Items[9], "Arial (TT) Bold");
    EXPECT_EQ(Form.FontBox.Value, 9); // code 19
    EXPECT_EQ(Form.SubFontBox.Value, 3);
    ASSERT_EQ(Form.Color.Items.size(), 14U); // the table in force
    EXPECT_EQ(Form.Color.Items[0], "Black");
    EXPECT_EQ(Form.Color.Items[1], "Blue");
    EXPECT_EQ(Form.Color.Items[7], "Dark Blue");
    EXPECT_EQ(Form.Color.Value, 7);
}

TEST_F(TitleOptsTest, AColourWithoutANameIsShownByItsParts) {
    Chart.Style.ScreenColors = {0, 0x00102030};
    BuildCycles();
    LoadTitleOptsForm();
    EXPECT_EQ(Form.Color.Items, (std::vector<std::string>{"Black", "#302010"}));
    EXPECT_EQ(Form.Color.Value, 1); // index 7 goes round a table of two
    TitleOptsOkButton();
    EXPECT_EQ(Form.Edited[0].Color, 7); // and stays what it was
}

TEST_F(TitleOptsTest, ThePreviewFollows) {
    LoadTitleOptsForm();
    EXPECT_EQ(Form.Preview.Text, "A headline");
    EXPECT_EQ(Form.Preview.Tag, "Arial Bold");
    EXPECT_EQ(Form.Preview.ForeColor, 0x00800000U); // dark blue
    TitleOptsFontClick(TitleLine::Main, 2);
    EXPECT_EQ(Form.Preview.Tag, "Times New Roman");
    TitleOptsColorClick(TitleLine::Main, 4);
    EXPECT_EQ(Form.Preview.ForeColor, 0x000000FFU); // red
    Form.TitleInput.Text = "New";
    TitleOptsTextChanged(TitleLine::Main);
    EXPECT_EQ(Form.Preview.Text, "New");
    EXPECT_EQ(Form.SubPreview.Text, "and another");
}

TEST_F(TitleOptsTest, OkBringsEverythingIntoTheGraph) {
    Screen.Clear();
    Accept([] {
        TitleOptsForm.TitleInput.Text = "New";
        TitleOptsFontClick(TitleLine::Main, 2);
        TitleOptsColorClick(TitleLine::Main, 4);
        TitleOptsAlignmentClick(TitleLine::Main, 0);
        TitleOptsSizeGotFocus(TitleLine::Main);
        TitleOptsForm.TitleSizeInput.Text = ".04";
        TitleOptsSizeLostFocus(TitleLine::Main);
        EXPECT_EQ(TitleOptsForm.TitleSizeInput.Text, "0.040");
        EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "A headline"); // a copy is edited
    });
    EXPECT_EQ(Chart.Spec.Title1, (GraphTitle{"New", 2, 0.04F, 4, 0}));
    EXPECT_EQ(Chart.Spec.Title2, (GraphTitle{"and another", 3, 0.02F, 0, 1}));
    const DrawnItem* drawn = Screen.FindText("New");
    ASSERT_NE(drawn, nullptr);
    EXPECT_EQ(drawn->TextColor, 0xFF0000U);
    EXPECT_EQ(drawn->Font.Face, "Times New Roman");
    EXPECT_EQ(drawn->Font.Height, 40); // 0.04 of a diagonal of 998
    EXPECT_EQ(drawn->Points[0].X, Chart.Spec.Frame.X1);
}

TEST_F(TitleOptsTest, CancelLeavesTheGraph) {
    const GraphSpec before = Chart.Spec;
    Screen.Clear();
    Outside.ExpectModal(TitleOptsFormName, [] {
        TitleOptsForm.TitleInput.Text = "New";
        TitleOptsColorClick(TitleLine::Sub, 4);
        EXPECT_EQ(TitleOptsTextKeyPress(TitleLine::Main, 27), 27);
        EXPECT_FALSE(TitleOptsForm.State.Shown);
    });
    EditTitles();
    EXPECT_TRUE(Chart.Spec == before);
    EXPECT_TRUE(Screen.Items.empty());
}

TEST_F(TitleOptsTest, ASizeThatIsNotTouchedKeepsAllItsDigits) {
    Chart.Spec.Title1.Size = 0.0204F;
    Accept([] { TitleOptsSizeLostFocus(TitleLine::Main); });
    EXPECT_EQ(Chart.Spec.Title1.Size, 0.0204F);
}

// Codes of a graph file from elsewhere.
TEST_F(TitleOptsTest, AFontThatTheListDoesNotHaveStaysUntilAnotherIsChosen) {
    Chart.Spec.Title1.Font = 35; // Arial in a style beyond bold
    Chart.Spec.Title2.Font = 9;
    Accept([] {});
    EXPECT_EQ(Chart.Spec.Title1.Font, 35);
    EXPECT_EQ(Chart.Spec.Title2.Font, 9);
    Accept([] { TitleOptsFontClick(TitleLine::Main, 2); });
    EXPECT_EQ(Chart.Spec.Title1.Font, 2);
    EXPECT_EQ(Chart.Spec.Title2.Font, 9);
}

TEST_F(TitleOptsTest, ASizeIsAFraction) {
    LoadTitleOptsForm();
    for (const char* text : {"0", "1", "2.5", ""}) {
        Form.State.FocusOn = nullptr;
        Form.SubTitleSizeInput.Text = text;
        Outside.ExpectMessage(
            {"Input must be between 0 and 1", "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
            BoxAnswer::Ok);
        TitleOptsSizeLostFocus(TitleLine::Sub);
        EXPECT_EQ(Form.State.FocusOn, &Form.SubTitleSizeInput) << text;
        Outside.ExpectMessage("Input must be between 0 and 1");
        TitleOptsOkButton();
        EXPECT_TRUE(Form.State.Shown) << text;
    }
    TitleOptsCancelButton();
    TitleOptsSizeLostFocus(TitleLine::Sub); // a form that closes asks nothing
}

TEST_F(TitleOptsTest, SizesAreTypedAsNumbers) {
    LoadTitleOptsForm();
    TitleOptsSizeGotFocus(TitleLine::Main);
    EXPECT_EQ(Form.TitleSizeInput.SelLength, 5);
    EXPECT_EQ(TitleOptsSizeKeyPress(TitleLine::Main, 'x'), 0);
    EXPECT_EQ(TitleOptsSizeKeyPress(TitleLine::Main, '3'), '3');
}

TEST_F(TitleOptsTest, ATextHasEightyCharacters) {
    LoadTitleOptsForm();
    TitleOptsTextGotFocus(TitleLine::Main);
    EXPECT_EQ(Form.TitleInput.SelLength, 10);
    Form.TitleInput.Text = std::string(79, 'a');
    Form.TitleInput.SelLength = 0;
    EXPECT_EQ(TitleOptsTextKeyPress(TitleLine::Main, 'b'), 'b');
    Form.TitleInput.Text += 'b';
    Outside.ExpectMessage("Text area is full");
    EXPECT_EQ(TitleOptsTextKeyPress(TitleLine::Main, 'c'), 0);
    EXPECT_EQ(Outside.Beeps, 1);
    EXPECT_EQ(TitleOptsTextKeyPress(TitleLine::Main, 13), 13); // OK
    EXPECT_FALSE(Form.State.Shown);
}

TEST_F(TitleOptsTest, ALineThatHoldsItsPlaceStaysUntilItIsTyped) {
    SetGraphComment("Headline alone");
    ASSERT_EQ(Chart.Spec.Title2.Text.Str(), "\t");
    Accept([] { EXPECT_EQ(TitleOptsForm.SubTitleInput.Text, ""); });
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "\t");
    Accept([] { TitleOptsForm.SubTitleInput.Text = "typed"; });
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "typed");
}

TEST_F(TitleOptsTest, TheNoteGivesTheFractionsThatShow) {
    Chart.State.FontMin = 0.008F;
    Chart.State.FontMax = 0.0481F;
    LoadTitleOptsForm();
    EXPECT_EQ(
        Form.SizeNote.Text,
        "Sizes are fractions of the diagonal; between .008 and .048 they show on a window of this size.");
}

TEST_F(TitleOptsTest, TheMenuItemNeedsAGraph) {
    ChartMenuStatus(Charts);
    EXPECT_TRUE(Charts.mnuEditTitles.Enabled);
    Chart.GraphHeld = 0;
    ChartMenuStatus(Charts);
    EXPECT_FALSE(Charts.mnuEditTitles.Enabled);
    EditTitles(); // shows nothing
    EXPECT_TRUE(Outside.Asked.empty());
}

} // namespace
} // namespace Quillon
