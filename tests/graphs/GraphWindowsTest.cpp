// Further windows of graphs: their own graph, and how they follow the analysis.
#include "graphs/GraphWindows.h"
#include "chart/Charts.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"

#include "GraphBench.h"

namespace Quillon {
namespace {

class GraphWindowsTest : public GraphBench {
protected:
    GraphWindowsTest() {
        FillThreeSets();
        Work.FitValid = Work.DataChosen = FlagTrue;
        Work.NewData = Changed::Nothing;
    }
    ~GraphWindowsTest() override { GraphWindows.clear(); }
    // A further window with the graph at hand, painted on a surface of its own.
    GraphWindow& Open() {
        NewGraphWindow();
        GraphWindow& window = GraphWindows.back();
        SetBoxOf(&window, Further.Surface());
        return window;
    }
    RecordingSurface Further;
};

TEST_F(GraphWindowsTest, EachHasItsOwnGraph) {
    GraphOverlay();
    GraphWindow& window = Open();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay");
    const GraphAxis whole = Chart.Spec.AxisX1;
    ZoomTo({-0.1F, 0.1F, 1.0F, 2.0F});
    GraphResiduals();
    EXPECT_EQ(ModuleOf(&window).Spec.AxisX1, whole);
    EXPECT_EQ(ModuleOf(&window).Spec.AxisY1.Title.Text.Str(), "Absorbance");
    const std::size_t painted = Screen.Items.size();
    {
        const GraphInHand hand(&window);
        EXPECT_TRUE(IsInHand(&window));
        EXPECT_EQ(ModuleOf(nullptr).Spec.AxisY1.Title.Text.Str(), "Y(exp) - Y(fit)");
        EXPECT_EQ(FormOf(nullptr).Zooms.ZoomDepth, 1);
        ZoomTo({0.0F, 0.1F, 1.0F, 2.0F});
    }
    EXPECT_FALSE(Further.Items.empty());
    EXPECT_EQ(Screen.Items.size(), painted) << "the chart window is left alone";
    EXPECT_EQ(Chart.Spec.AxisX1.Min, -0.1F);
    EXPECT_EQ(ModuleOf(&window).Spec.AxisX1.Min, 0.0F);
    EXPECT_EQ(FormOf(&window).Zooms.ZoomDepth, 1);
}

TEST_F(GraphWindowsTest, ItFollowsTheFitWithItsZoom) {
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(2));
        PickSetOkButton();
    });
    GraphOverlaySet();
    GraphWindow& window = Open();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay, set 2");
    {
        const GraphInHand hand(&window);
        ZoomTo({-0.1F, 0.05F, 2.0F, 2.2F});
    }
    Further.Clear();
    FollowInGraphWindows();
    EXPECT_TRUE(Further.Items.empty()) << "nothing has changed";
    const long point = PointsOf(2).at(1);
    Work.PtFit[point] = 2.0625F;
    FollowInGraphWindows();
    EXPECT_FALSE(Further.Items.empty());
    EXPECT_EQ(ModuleOf(&window).DataY(2, 2), 2.0625F); // the second series is the curve
    EXPECT_FLOAT_EQ(ModuleOf(&window).Spec.AxisX1.Min, -0.1F);
    EXPECT_FLOAT_EQ(ModuleOf(&window).Spec.AxisY1.Max, 2.2F);
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay, set 2");
}

TEST_F(GraphWindowsTest, WhatCannotFollowSaysThatItIsOfAnOlderFit) {
    GraphOverlay();
    GraphWindow& window = Open();
    const SetTable shown = ModuleOf(&window).DataY;
    const long point = PointsOf(1).at(0);
    Work.FitValid = FlagFalse;
    Work.PtY[point] = 1.5F;
    FollowInGraphWindows();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay, of an older fit");
    EXPECT_EQ(ModuleOf(&window).DataY, shown);
    Work.FitValid = FlagTrue;
    FollowInGraphWindows();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay");
    EXPECT_EQ(ModuleOf(&window).DataY(1, 1), 1.5F);
    Work.NumSets = 0; // another analysis without these sets
    Work.FitValid = Work.DataChosen = FlagFalse;
    FollowInGraphWindows();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay, of an older fit");
}

TEST_F(GraphWindowsTest, WhatWentWrongWhenItWasMadeAnewStandsInTheCaption) {
    GraphOverlay();
    GraphWindow& window = Open();
    FormOf(&window).Origin.Make = []() -> bool { RaiseError("Overflow"); };
    Work.PtY[PointsOf(1).at(0)] = 1.5F;
    FollowInGraphWindows();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay, of an older fit (Overflow)");
    FormOf(&window).Origin.Make = [] { return false; };
    Work.PtY[PointsOf(1).at(0)] = 1.25F;
    FollowInGraphWindows();
    EXPECT_EQ(CaptionOf(&window), "Graph 2: Overlay, of an older fit");
}

TEST_F(GraphWindowsTest, AGraphFromElsewhereStays) {
    GraphOverlay();
    ClearSpecialOptions(); // as behind a file that was shown, or a paste
    GraphWindow& window = Open();
    EXPECT_EQ(CaptionOf(&window), "Graph 2");
    const SetTable shown = ModuleOf(&window).DataY;
    Work.PtY[PointsOf(1).at(0)] = 1.5F;
    FollowInGraphWindows();
    EXPECT_EQ(ModuleOf(&window).DataY, shown);
    EXPECT_EQ(CaptionOf(&window), "Graph 2");
}

TEST_F(GraphWindowsTest, WhatWaitsForMarkersStaysInItsWindow) {
    GraphOverlay();
    Charts.Needed = true;
    NewGraphWindow();
    EXPECT_TRUE(GraphWindows.empty());
    Charts.Needed = false;
    PlaceMarkers(-0.1F, 0.1F);
    const GraphWindow& window = Open();
    EXPECT_TRUE(FormOf(&window).Markers.empty());
    EXPECT_EQ(Charts.Markers.size(), 2U);
    RemoveMarkers();
}

TEST_F(GraphWindowsTest, NumbersOfClosedWindowsAreGivenAgain) {
    GraphOverlay();
    for (int i = 0; i < 3; ++i)
        NewGraphWindow();
    CloseGraphWindow(3);
    NewGraphWindow();
    std::vector<int> numbers;
    for (const GraphWindow& window : GraphWindows)
        numbers.push_back(window.Number);
    EXPECT_EQ(numbers, (std::vector<int>{2, 3, 4}));
    GraphWindow& last = GraphWindows.back();
    const GraphInHand hand(&last);
    CloseGraphWindow(4);
    EXPECT_EQ(GraphWindows.size(), 3U) << "not while it is in hand";
}

} // namespace
} // namespace Quillon
