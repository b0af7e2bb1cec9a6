// The form for the legend: what it shows, previews, refuses and brings into the graph.
#include "chart/dialogs/LegendOptsForm.h"

#include "ChartBench.h"

namespace Quillon {
namespace {

class LegendOptsTest : public ChartBench {
protected:
    LegendOptsTest() {
        Spec = Begin();
        Spec.Legend.Show = 1;
        PlotNamed();
    }
    void PlotNamed() {
        const SetTable x = Table({{1, 2}, {1, 2}, {1, 2}});
        PlotSets(Spec, x, Table({{1, 2}, {2, 3}, {3, 4}}), 2, 1, 3, {"first", "second", "third"}, {}, {});
        ChartMenuStatus(Charts);
        Screen.Clear();
    }
    void Accept(std::function<void()> during) {
        Outside.ExpectModal(LegendOptsFormName, [during] {
            during();
            LegendOptsOkButton();
            EXPECT_FALSE(LegendOptsForm.State.Shown);
        });
        EditLegend();
    }
    LegendOptsFormRecord& Form = LegendOptsForm;
    GraphSpec Spec;
};

TEST_F(LegendOptsTest, ShowsTheLegend) {
    LoadLegendOptsForm();
    EXPECT_TRUE(Form.State.Shown);
    EXPECT_EQ(Form.State.Caption, "Edit Legend Text and Legend Format");
    EXPECT_EQ(Form.lstLegendText.Items, (std::vector<std::string>{"first", "second", "third"}));
    EXPECT_EQ(Form.lstLegendText.Value, 0);
    EXPECT_EQ(Form.txtLegendText.Text, "first");
    EXPECT_EQ(Form.optSingle.Text, "&Use single color for all:");
    EXPECT_EQ(Form.optMatch.Text, "&Match text color to data color");
    EXPECT_EQ(Form.optSingle.Value, -1);
    EXPECT_EQ(Form.optMatch.Value, 0);
    EXPECT_EQ(Form.optBottom.Value, -1);
    EXPECT_EQ(Form.optRight.Value, 0);
    EXPECT_EQ(Form.TitleSizeInput.Text, "0.016");
    EXPECT_EQ(Form.FontBox.Value, 3);
    EXPECT_EQ(Form.Color.Items.size(), 14U);
}

TEST_F(LegendOptsTest, ANegativeTextColourMatchesTheData) {
    Chart.Spec.Legend.TextColor = ~4;
    Chart.Spec.Legend.Where = LegendPlaces::Right;
    LoadLegendOptsForm();
    EXPECT_EQ(Form.optMatch.Value, -1);
    EXPECT_EQ(Form.Color.Value, 4);
    EXPECT_FALSE(Form.Color.Enabled);
    EXPECT_EQ(Form.optRight.Value, -1);
}

TEST_F(LegendOptsTest, EditsTheTextOfTheChosenSet) {
    Accept([this] {
        LegendOptsRowClick(1);
        EXPECT_EQ(Form.txtLegendText.Text, "second");
        Form.txtLegendText.Text = "middle";
        LegendOptsTextChanged();
        EXPECT_EQ(Form.lstLegendText.Items[1], "middle");
        LegendOptsRowClick(2);
        EXPECT_EQ(Form.txtLegendText.Text, "third");
        LegendOptsRowClick(3); // there is none
        EXPECT_EQ(Form.lstLegendText.Value, 2);
        EXPECT_EQ(Chart.SetNames[2], "second"); // a copy is edited
    });
    EXPECT_EQ(Chart.SetNames[1], "first");
    EXPECT_EQ(Chart.SetNames[2], "middle");
    EXPECT_NE(Screen.FindText("middle"), nullptr);
    EXPECT_EQ(Screen.FindText("second"), nullptr);
}

TEST_F(LegendOptsTest, EnterGoesOnToTheNextText) {
    LoadLegendOptsForm();
    EXPECT_EQ(LegendOptsTextKeyPress(13), 13);
    EXPECT_EQ(Form.txtLegendText.Text, "second");
    EXPECT_EQ(Form.txtLegendText.SelLength, 6); // typing replaces it
    LegendOptsTextKeyPress(13);
    EXPECT_TRUE(Form.State.Shown);
    LegendOptsTextKeyPress(13);
    EXPECT_FALSE(Form.State.Shown);
}

TEST_F(LegendOptsTest, ATextHasEightyCharacters) {
    LoadLegendOptsForm();
    Form.txtLegendText.Text = std::string(80, 'a');
    Outside.ExpectMessage("Text area is full");
    EXPECT_EQ(LegendOptsTextKeyPress('b'), 0);
}

TEST_F(LegendOptsTest, OkBringsTheFormatIntoTheGraph) {
    Accept([this] {
        LegendOptsPlaceClick(LegendPlaces::Right);
        EXPECT_EQ(Form.optBottom.Value, 0);
        LegendOptsColorClick(4);
        LegendOptsFontClick(8);
        Form.TitleSizeInput.Text = "0.03";
        LegendOptsSizeLostFocus();
        EXPECT_EQ(Form.TitleSizeInput.Text, "0.030");
    });
    const GraphLegend& legend = Chart.Spec.Legend;
    EXPECT_EQ(legend.Where, LegendPlaces::Right);
    EXPECT_EQ(legend.TextColor, 4);
    EXPECT_EQ(legend.Font, 18); // Times New Roman Bold
    EXPECT_EQ(legend.Size, 0.03F);
    EXPECT_EQ(legend.Show, 1);
    EXPECT_GT(legend.Box.X1, Chart.Spec.Frame.X2);
    const DrawnItem* drawn = Screen.FindText("second");
    ASSERT_NE(drawn, nullptr);
    EXPECT_EQ(drawn->TextColor, 0xFF0000U);
    EXPECT_TRUE(drawn->Font.Bold);
    EXPECT_EQ(drawn->Font.Height, 30);
}

TEST_F(LegendOptsTest, MatchKeepsTheColourForLater) {
    Accept([this] {
        LegendOptsColorClick(4);
        LegendOptsMatchClick();
        EXPECT_FALSE(Form.Color.Enabled);
        EXPECT_EQ(Form.optSingle.Value, 0);
    });
    EXPECT_EQ(Chart.Spec.Legend.TextColor, ~4);
    EXPECT_EQ(Screen.FindText("second")->TextColor, ToRgb(BasicColor(9)));
    Accept([this] {
        EXPECT_EQ(Form.Color.Value, 4);
        LegendOptsSingleClick();
        EXPECT_TRUE(Form.Color.Enabled);
    });
    EXPECT_EQ(Chart.Spec.Legend.TextColor, 4);
}

TEST_F(LegendOptsTest, ThePreviewFollows) {
    LoadLegendOptsForm();
    EXPECT_EQ(Form.Preview.Text, "first");
    EXPECT_EQ(Form.Preview.Tag, "Arial");
    EXPECT_EQ(Form.Preview.ForeColor, 0U);
    LegendOptsColorClick(4);
    LegendOptsFontClick(8);
    EXPECT_EQ(Form.Preview.ForeColor, 0x000000FFU);
    EXPECT_EQ(Form.Preview.Tag, "Times New Roman Bold");
    LegendOptsMatchClick();
    LegendOptsRowClick(1); // the second set is blue
    EXPECT_EQ(Form.Preview.ForeColor, 0x00FF0000U);
    EXPECT_EQ(Form.Preview.Text, "second");
}

TEST_F(LegendOptsTest, ABoxOfItsOwnGivesWayToAPlace) {
    Chart.Spec.Legend.AutoPlace = 0;
    Chart.Spec.Legend.Box = {300, 100, 500, 200, 15, {}};
    Accept([] {});
    EXPECT_EQ(Chart.Spec.Legend.AutoPlace, 0);
    EXPECT_EQ(Chart.Spec.Legend.Box.X1, 300);
    Accept([] { LegendOptsPlaceClick(LegendPlaces::Right); });
    EXPECT_EQ(Chart.Spec.Legend.AutoPlace, 1);
    EXPECT_GT(Chart.Spec.Legend.Box.X1, Chart.Spec.Frame.X2);
}

TEST_F(LegendOptsTest, AFontThatTheListDoesNotHaveStays) {
    Chart.Spec.Legend.Font = 35; // Arial in a style beyond bold
    Accept([] {});
    EXPECT_EQ(Chart.Spec.Legend.Font, 35);
}

TEST_F(LegendOptsTest, CancelLeavesTheGraph) {
    const GraphSpec before = Chart.Spec;
    Outside.ExpectModal(LegendOptsFormName, [this] {
        Form.txtLegendText.Text = "other";
        LegendOptsTextChanged();
        LegendOptsColorClick(4);
        LegendOptsCancelButton();
    });
    EditLegend();
    EXPECT_TRUE(Chart.Spec == before);
    EXPECT_EQ(Chart.SetNames[1], "first");
    EXPECT_TRUE(Screen.Items.empty());
}

TEST_F(LegendOptsTest, ASizeIsAFraction) {
    LoadLegendOptsForm();
    Form.TitleSizeInput.Text = "1.5";
    Outside.ExpectMessage(
        {"Input must be between 0 and 1", "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
        BoxAnswer::Ok);
    LegendOptsSizeLostFocus();
    EXPECT_EQ(Form.State.FocusOn, &Form.TitleSizeInput);
    Outside.ExpectMessage("Input must be between 0 and 1");
    EXPECT_EQ(LegendOptsSizeKeyPress(13), 13);
    EXPECT_TRUE(Form.State.Shown);
    LegendOptsSizeGotFocus();
    EXPECT_EQ(LegendOptsSizeKeyPress('x'), 0);
    EXPECT_EQ(LegendOptsSizeKeyPress(27), 27);
    EXPECT_FALSE(Form.State.Shown);
}

TEST_F(LegendOptsTest, TheMenuItemNeedsSeveralSets) {
    EXPECT_TRUE(Charts.mnuEditLegend.Enabled);
    Spec = Begin();
    Plot(Spec, Table({{1, 2}}), Table({{1, 2}}));
    ChartMenuStatus(Charts);
    EXPECT_FALSE(Charts.mnuEditLegend.Enabled);
}

} // namespace
} // namespace Quillon
