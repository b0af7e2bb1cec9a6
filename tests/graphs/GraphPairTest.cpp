// The graphs of the workbench: data and curves above residuals, over one x axis; what is left out, what the
// pointer meets.
#include "graphs/GraphPair.h"

#include "GraphBench.h"

#include <algorithm>

namespace Quillon {
namespace {

struct PairOfGraphs : GraphBench {
    PairOfGraphs() {
        GraphPair = GraphPairRecord{};
        FillThreeSets();
        Work.DataChosen = Work.FitValid = Work.FitDone = FlagTrue;
        Work.NewData = Changed::Nothing;
        Work.RmsResidual = 0.0078125F;
        for (const long row : {2L, 4L, 5L})
            Work.ScanRPM[row] = 1000.0F * static_cast<float>(row);
    }
    ~PairOfGraphs() override { GraphPair = GraphPairRecord{}; }

    void Paint(int width = 800, int height = 600) {
        Picture.Width = width;
        Picture.Height = height;
        Picture.Clear();
        PaintGraphPair(Picture.Surface(), 12);
    }
    static int HeightOf(const GraphBox& frame) { return frame.Y2 - frame.Y1; }
    RecordingSurface Picture;
};

TEST_F(PairOfGraphs, FramesStandAboveEachOtherInSevenPartsToThree) {
    ASSERT_TRUE(FollowAnalysis());
    for (const auto& [width, height] : {std::pair{800, 600}, std::pair{400, 300}, std::pair{2400, 1500}}) {
        Paint(width, height);
        const GraphBox& up = GraphPair.Upper.Spec.Frame;
        const GraphBox& low = GraphPair.Lower.Spec.Frame;
        EXPECT_EQ(up.X1, low.X1);
        EXPECT_EQ(up.X2, low.X2);
        EXPECT_LT(up.Y2, low.Y1);
        EXPECT_LT(low.Y2, height);
        EXPECT_NEAR(HeightOf(up) * 3.0 / 7.0, HeightOf(low), 2.0) << width;
        EXPECT_EQ(GraphPair.Upper.Spec.AxisX1.Min, GraphPair.Lower.Spec.AxisX1.Min);
        EXPECT_EQ(GraphPair.Upper.Spec.AxisX1.Max, GraphPair.Lower.Spec.AxisX1.Max);
        EXPECT_EQ(GraphPair.Upper.Spec.AxisX1.TicInterval, GraphPair.Lower.Spec.AxisX1.TicInterval);
    }
}

TEST_F(PairOfGraphs, ANarrowPaneGaveItsHalfToARangeWithoutPoints) {
    FollowAnalysis();
    for (const int width : {200, 260, 400, 800}) {
        Paint(width, 300);
        const GraphAxis& axis = GraphPair.Lower.Spec.AxisX1;
        float low = axis.Max, high = axis.Min;
        for (const long set : {1L, 2L, 3L})
            for (const long i : PointsOf(set)) {
                low = std::min(low, Work.PtX[i]);
                high = std::max(high, Work.PtX[i]);
            }
        EXPECT_LE(axis.Min, low) << width;
        EXPECT_GE(axis.Max, high) << width;
        EXPECT_GE(high - low, 0.74F * (axis.Max - axis.Min)) << width;
        EXPECT_GE(axis.FirstTic, axis.Min) << width;
        EXPECT_LE(axis.FirstTic + axis.TicInterval, axis.Max) << width;
    }
}

TEST_F(PairOfGraphs, TheAxisOfXHasLabelsOnce) {
    FollowAnalysis();
    Paint();
    const auto below = [&](const DrawnItem& item) {
        return item.Points.front().Y > GraphPair.Lower.Spec.Frame.Y2;
    };
    int titles = 0; // a title with raised letters is painted piece by piece
    for (const DrawnItem& item : Picture.OfKind("text"))
        if (item.Text.find("Ro") != std::string::npos) {
            ++titles;
            EXPECT_TRUE(below(item)) << item.Text;
        }
    EXPECT_EQ(titles, 1);
    for (const DrawnItem& item : Picture.OfKind("text")) { // between the frames there is no label
        const int y = item.Points.front().Y, x = item.Points.front().X;
        EXPECT_FALSE(y > GraphPair.Upper.Spec.Frame.Y2 + 20 && y < GraphPair.Lower.Spec.Frame.Y1 - 1 &&
                     x > GraphPair.Upper.Spec.Frame.X1)
            << item.Text;
    }
}

TEST_F(PairOfGraphs, LabelsOfTwoAxesTouchedWhereTheyMeet) {
    FollowAnalysis();
    for (const auto& [width, height] : {std::pair{800, 600}, std::pair{420, 340}, std::pair{1600, 1200}}) {
        Paint(width, height);
        std::vector<DeviceRect> boxes;
        for (const DrawnItem& item : Picture.OfKind("text"))
            if (item.Font.Angle == 0 && item.Text.find_first_of("-0123456789") == 0)
                boxes.push_back(TextBounds(item));
        ASSERT_GE(boxes.size(), 8U);
        for (std::size_t i = 0; i < boxes.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const DeviceRect &a = boxes[i], &b = boxes[j];
                EXPECT_TRUE(a.Right < b.Left || b.Right < a.Left || a.Bottom < b.Top || b.Bottom < a.Top)
                    << width << ": " << a.Left << "," << a.Top << " and " << b.Left << "," << b.Top;
            }
    }
}

TEST_F(PairOfGraphs, ASetHasOneColourInBoth) {
    FollowAnalysis();
    EXPECT_EQ(GraphPair.Upper.Looks.Numbers, (std::vector<std::int16_t>{1, 1, 2, 2, 3, 3}));
    EXPECT_EQ(GraphPair.Lower.Looks.Numbers, (std::vector<std::int16_t>{1, 2, 3}));
}

TEST_F(PairOfGraphs, TheGraphAtHandIsLeftAlone) {
    Chart.GraphHeld = FlagTrue;
    Chart.Spec.Title1.Text = "mine";
    Chart.DataY.Recreate(2, 1);
    Charts.StatusLine.Text = "status";
    Work.SpreadResiduals = FlagTrue;
    FollowAnalysis();
    Paint();
    PairPointAt(100, 100, 8);
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "mine");
    EXPECT_EQ(Chart.DataY.Points(), 2);
    EXPECT_EQ(Charts.StatusLine.Text, "status");
    EXPECT_EQ(Work.SpreadResiduals, FlagTrue);
    EXPECT_TRUE(Screen.Items.empty()); // nothing on the picture box
    EXPECT_TRUE(Outside.Asked.empty());
}

TEST_F(PairOfGraphs, ToLookAtAnAnalysisChangesNothingInIt) {
    const Workspace before = Work;
    FollowAnalysis();
    Paint();
    EXPECT_TRUE(Work == before);
}

TEST_F(PairOfGraphs, NothingIsBuiltAnewWhereNothingHasChanged) {
    EXPECT_TRUE(FollowAnalysis());
    EXPECT_FALSE(FollowAnalysis());
    Work.PtFit[1] += 0.001F;
    EXPECT_TRUE(FollowAnalysis());
    Work.ScanRPM[4] = 5000.0F; // in a name
    EXPECT_TRUE(FollowAnalysis());
    EXPECT_FALSE(FollowAnalysis());
}

TEST_F(PairOfGraphs, WithoutAFitThereAreDataAlone) {
    Work.FitValid = Work.FitDone = FlagFalse;
    FollowAnalysis();
    EXPECT_EQ(GraphPair.Upper.State.Nsets, 3);
    EXPECT_TRUE(GraphPair.Lower.DataY.Empty());
    EXPECT_TRUE(GraphPair.Remark.Visible);
    EXPECT_EQ(GraphPair.Remark.Text, "Curves and residuals come with the fit.");
    Paint();
    EXPECT_GT(HeightOf(GraphPair.Upper.Spec.Frame), 450);
    EXPECT_FALSE(IsInResiduals(599));
}

// Fewer points than the sets say: nothing can be laid out, and why was told nowhere.
TEST_F(PairOfGraphs, WhyThereIsNothingToShowIsTold) {
    Work.PtX.Resize(1);
    Work.PtResid.Recreate(2, 7.0F);
    EXPECT_TRUE(FollowAnalysis());
    EXPECT_EQ(GraphPair.Remark.Text, "There is nothing to show: Subscript out of range.");
    EXPECT_TRUE(GraphPair.Remark.Visible);
    EXPECT_TRUE(GraphPair.Upper.DataY.Empty() && GraphPair.Lower.DataY.Empty() && GraphPair.Legend.empty());
    EXPECT_EQ(Work.PtResid, (OneBased<float>(2, 7.0F))) << "the analysis is left as it is";
    EXPECT_FALSE(FollowAnalysis()) << "it has been told";
}

TEST_F(PairOfGraphs, ResidualsOfOtherPointsAreNotShown) {
    Work.NewData = Changed::Constraints;
    FollowAnalysis();
    EXPECT_EQ(GraphPair.Upper.State.Nsets, 6);
    EXPECT_TRUE(GraphPair.Lower.DataY.Empty());
    EXPECT_TRUE(GraphPair.Remark.Visible);
}

TEST_F(PairOfGraphs, ASetThatIsLeftOutIsInNeitherAndStaysInTheLegend) {
    FollowAnalysis();
    ToggleSet(SetNo(2));
    EXPECT_TRUE(FollowAnalysis());
    const auto gone = [](const ChartModule& module, long column) {
        for (long i = 1; i <= module.DataY.Points(); ++i)
            if (module.DataY(i, column) != MissingValue) return false;
        return true;
    };
    EXPECT_TRUE(gone(GraphPair.Upper, 3) && gone(GraphPair.Upper, 4) && gone(GraphPair.Lower, 2));
    EXPECT_FALSE(gone(GraphPair.Upper, 1) || gone(GraphPair.Upper, 6) || gone(GraphPair.Lower, 3));
    ASSERT_EQ(GraphPair.Legend.size(), 3U);
    EXPECT_EQ(GraphPair.Legend[1].Value, 0);
    EXPECT_EQ(GraphPair.Legend[2].Value, 1);
    EXPECT_TRUE(GraphPair.Legend[1].Text.ends_with(", 4000 rpm")) << GraphPair.Legend[1].Text;
    Work.SetLabel[2] = "/elsewhere/other.RA1"; // another scan in that row is seen
    FollowAnalysis();
    EXPECT_EQ(GraphPair.Legend[1].Value, 1);
}

TEST_F(PairOfGraphs, AllSetsLeftOutLeaveEmptyFrames) {
    for (const SetNo set : {SetNo(1), SetNo(2), SetNo(3)})
        ToggleSet(set);
    FollowAnalysis();
    Paint();
    EXPECT_GT(HeightOf(GraphPair.Upper.Spec.Frame), 0);
    EXPECT_EQ(PairPointAt(400, 200, 1000).Set, NoSet);
}

// Where a point of set 2 is painted is worked out from the frame and the scale alone.
TEST_F(PairOfGraphs, ThePointerMeetsThePointThatIsPaintedThere) {
    FollowAnalysis();
    Paint();
    const auto place = [](const ChartModule& module, float x, float y) {
        const GraphSpec& s = module.Spec;
        const double acrossX = (static_cast<double>(x) - static_cast<double>(s.AxisX1.Min)) /
                               (static_cast<double>(s.AxisX1.Max) - static_cast<double>(s.AxisX1.Min));
        const double upY = (static_cast<double>(y) - static_cast<double>(s.AxisY1.Min)) /
                           (static_cast<double>(s.AxisY1.Max) - static_cast<double>(s.AxisY1.Min));
        return DevicePoint{static_cast<int>(s.Frame.X1 + acrossX * (s.Frame.X2 - s.Frame.X1)),
                           static_cast<int>(s.Frame.Y2 - upY * (s.Frame.Y2 - s.Frame.Y1))};
    };
    const long point = PointsOf(2)[1];
    const DevicePoint above = place(GraphPair.Upper, Work.PtX[point], Work.PtY[point]);
    EXPECT_EQ(PairPointAt(above.X + 2, above.Y - 2, 8), (PairPoint{SetNo(2), point, false}));
    const DevicePoint below = place(GraphPair.Lower, Work.PtX[point], Work.PtY[point] - Work.PtFit[point]);
    EXPECT_TRUE(IsInResiduals(below.Y));
    const PairPoint residual = PairPointAt(below.X, below.Y, 8);
    EXPECT_EQ(residual, (PairPoint{SetNo(2), point, true}));
    const std::string text = PairPointText(residual);
    EXPECT_NE(text.find("4000 rpm"), std::string::npos) << text;
    EXPECT_NE(text.find("cm, signal "), std::string::npos) << text;
    EXPECT_NE(text.find(", residual "), std::string::npos) << text;
    EXPECT_EQ(PairPointAt(above.X, above.Y, 8).OfResidual, false);
    EXPECT_EQ(PairPointText({}), "");
}

TEST_F(PairOfGraphs, ASampleHasTheColourOfItsSet) {
    FollowAnalysis();
    Paint();
    RecordingSurface small;
    small.Width = 40;
    small.Height = 16;
    PaintSetSample(small.Surface(), SetNo(2));
    const auto drawn = [](const RecordingSurface& surface, Rgb color) {
        return std::any_of(surface.Items.begin(), surface.Items.end(), [color](const DrawnItem& item) {
            return item.Kind != "rectangle" && item.Pen.Color == color;
        });
    };
    for (const DrawnItem& item : small.Items)
        if (item.Kind != "rectangle" && item.Pen.Visible) {
            EXPECT_TRUE(drawn(Picture, item.Pen.Color)) << ItemText(item);
        }
    EXPECT_GT(small.Items.size(), 1U);
}

} // namespace
} // namespace Quillon
