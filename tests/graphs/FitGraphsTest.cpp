// Data, fitted function and overlay as they are handed to the chart.
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/PickSet.h"

#include "GraphBench.h"
#include "chart/pens/Pens.h"
#include "chart/pens/Symbols.h"
#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "graphs/kinds/SeriesNames.h"

#include <cmath>

namespace Quillon {
namespace {

class FitGraphs : public GraphBench {
protected:
    FitGraphs() { FillThreeSets(); }

    void ExpectFrameOfAll() const {
        const GraphSpec& spec = Chart.Spec;
        EXPECT_EQ(spec.GraphType, 4);
        EXPECT_EQ(spec.Title1.Text.Str(), "monomer <-> dimer fit");
        EXPECT_EQ(spec.Title2.Text.Str(), "Data from: /data/run 7/");
        EXPECT_EQ(spec.AxisX1.Title.Text.Str(), "(R^2 - Ro^2) / 2   (cm^2)");
        EXPECT_EQ(spec.AxisY1.Title.Text.Str(), "Absorbance");
        EXPECT_EQ(spec.AxisX1.ScaleMode, 2);
        EXPECT_EQ(spec.AxisY1.ScaleMode, 2);
        EXPECT_EQ(spec.Legend.Show, 1);
        EXPECT_EQ(Chart.Style.UseRainbowColors, 0);
        EXPECT_NE(Chart.GraphHeld, 0);
    }
};

TEST_F(FitGraphs, OverlayAlternatesDataAndFitOfEachSet) {
    Chart.Style.UseRainbowColors = -1;
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, AllSets, {}));
    ExpectFrameOfAll();
    EXPECT_EQ(Chart.Spec.PlotStyle, 3);
    EXPECT_EQ(Chart.Spec.SymbolMode, 1);
    ASSERT_EQ(Chart.State.Nsets, 6);
    EXPECT_EQ(Chart.State.Npts, 5);
    for (long k = 1; k <= 3; ++k) {
        ExpectSeries(2 * k - 1, At(k, Work.PtX), At(k, Work.PtY));
        ExpectSeries(2 * k, At(k, Work.PtX), At(k, Work.PtFit));
    }
    EXPECT_EQ(Names(), (std::vector<std::string>{"00011.RA1", "00011.RA1 (fit)", "00012.RA1",
                                                 "00012.RA1 (fit)", "00013.RA1", "00013.RA1 (fit)"}));
}

TEST_F(FitGraphs, OverlayDrawsOddSeriesAsSymbolsAndEvenOnesAsLines) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, AllSets, {}));
    const std::vector<DrawnItem> lines = DataItems("polyline");
    ASSERT_EQ(lines.size(), 3U);
    const std::size_t points[] = {5, 3, 4};
    const Rgb colors[] = {0x000000, 0x0000FF, 0x00FF00}; // the first three of the engine's colours
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_EQ(lines[k].Points.size(), points[k]);
        EXPECT_EQ(lines[k].Pen.Color, colors[k]);
    }
    // The symbols of the first three sets: plus, solid diamond, open diamond; in the colours of the lines.
    EXPECT_EQ(DataItems("line").size(), 2U * 5U);
    const std::vector<DrawnItem> polygons = DataItems("polygon");
    ASSERT_EQ(polygons.size(), 3U + 4U);
    for (std::size_t i = 0; i < polygons.size(); ++i)
        EXPECT_EQ(polygons[i].Pen.Color, colors[i < 3 ? 1 : 2]);
    const DevicePoint first = polygons[0].Points[0], second = polygons[0].Points[1];
    EXPECT_TRUE(first.X != second.X && first.Y != second.Y); // a diamond stands on its corner
}

TEST_F(FitGraphs, ASetLooksAlikeInEveryGraph) {
    using Look = std::pair<Rgb, std::int16_t>; // colour and symbol
    const auto lookOf = [](int series) { return Look(SetColor(series), SymbolOf(series)); };
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    const Look looks[] = {lookOf(1), lookOf(2), lookOf(3)};
    EXPECT_NE(looks[1], looks[2]);
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, AllSets, {}));
    for (int k = 1; k <= 3; ++k) {
        EXPECT_EQ(lookOf(2 * k - 1), looks[k - 1]) << k;
        EXPECT_EQ(SetColor(2 * k), looks[k - 1].first) << "the curve of " << k;
    }
    for (const FitGraph kind : {FitGraph::Data, FitGraph::Function, FitGraph::Overlay}) {
        ASSERT_TRUE(MakeFitGraph(kind, SetNo(3), {}));
        EXPECT_EQ(lookOf(1), looks[2]) << "alone";
    }
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    EXPECT_EQ(lookOf(3), looks[2]);
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::Fitted, SetNo(2)));
    EXPECT_EQ(lookOf(1), looks[1]);
}

TEST_F(FitGraphs, OverlayOfOneSetShowsItsMeasuredPointsAlone) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, SetNo(2), {}));
    ASSERT_EQ(Chart.State.Nsets, 2);
    ExpectSeries(1, At(2, Work.PtX), At(2, Work.PtY));
    ExpectSeries(2, At(2, Work.PtX), At(2, Work.PtFit));
    EXPECT_EQ(Names(), (std::vector<std::string>{"00012.RA1", "00012.RA1 (fit)"}));
}

TEST_F(FitGraphs, OverlayOfAFitOfOneSetHasTwoSeries) {
    FillFit({{3, 6, 0}}, 0.25F);
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, AllSets, {}));
    EXPECT_EQ(Chart.State.Nsets, 2);
    EXPECT_EQ(Chart.State.Npts, 6);
}

TEST_F(FitGraphs, FunctionIsALineForEachSet) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Function, AllSets, {}));
    ExpectFrameOfAll();
    EXPECT_EQ(Chart.Spec.PlotStyle, 1);
    EXPECT_EQ(Chart.Spec.SymbolMode, 3);
    ASSERT_EQ(Chart.State.Nsets, 3);
    for (long k = 1; k <= 3; ++k)
        ExpectSeries(k, At(k, Work.PtX), At(k, Work.PtFit));
    EXPECT_EQ(Names(), (std::vector<std::string>{"Set 1", "Set 2", "Set 3"}));
    EXPECT_EQ(DataItems("polyline").size(), 3U);
    EXPECT_TRUE(DataItems("line").empty());
}

TEST_F(FitGraphs, FunctionOfOneSetKeepsItsNumber) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Function, SetNo(3), {}));
    ASSERT_EQ(Chart.State.Nsets, 1);
    ExpectSeries(1, At(3, Work.PtX), At(3, Work.PtFit));
    EXPECT_EQ(Names(), (std::vector<std::string>{"Set 3"}));
}

TEST_F(FitGraphs, DataAreSymbols) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    ExpectFrameOfAll();
    EXPECT_EQ(Chart.Spec.PlotStyle, 2);
    EXPECT_EQ(Chart.Spec.SymbolMode, 1);
    ASSERT_EQ(Chart.State.Nsets, 3);
    for (long k = 1; k <= 3; ++k)
        ExpectSeries(k, At(k, Work.PtX), At(k, Work.PtY));
    EXPECT_EQ(Names(), (std::vector<std::string>{"00011.RA1", "00012.RA1", "00013.RA1"}));
    EXPECT_TRUE(DataItems("polyline").empty());
}

TEST_F(FitGraphs, OppositeAxesRepeatTheScaleWithoutLabels) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    const GraphSpec& spec = Chart.Spec;
    for (const auto& [main, opposite] :
         {std::pair(&spec.AxisX1, &spec.AxisX2), {&spec.AxisY1, &spec.AxisY2}}) {
        EXPECT_EQ(opposite->Min, main->Min);
        EXPECT_EQ(opposite->Max, main->Max);
        EXPECT_EQ(opposite->TicInterval, main->TicInterval);
        EXPECT_EQ(opposite->TicMode, 2);
        EXPECT_EQ(opposite->Grid, 0);
        EXPECT_TRUE(opposite->Title.Text.Empty());
    }
    EXPECT_LE(spec.AxisX1.Min, Work.PtX[1]);
    EXPECT_GE(spec.AxisX1.Max, Work.PtX[5]);
}

TEST_F(FitGraphs, TheFifteenthLineHasTheFirstColourAndADash) {
    std::vector<BenchSet> sets;
    for (long row = 1; row <= 15; ++row)
        sets.push_back({row, 3, 0}); // few: every 50 points a line is drawn as far as it is
    FillFit(sets, 0.0F);
    for (float& fit : Work.PtFit)
        fit = 2.0F; // level, so that dashes lie along x
    ASSERT_TRUE(MakeFitGraph(FitGraph::Function, AllSets, {}));
    const std::vector<DrawnItem> solid = DataItems("polyline");
    const std::vector<DrawnItem> dashes = DataItems("line");
    ASSERT_EQ(solid.size(), 14U);
    ASSERT_GE(dashes.size(), 4U);
    for (std::size_t i = 0; i + 1 < dashes.size(); ++i) {
        EXPECT_EQ(dashes[i].Pen.Color, solid[0].Pen.Color);
        EXPECT_LE(dashes[i].Points[1].X - dashes[i].Points[0].X, 15);
    }
    EXPECT_EQ(dashes[0].Points[1].X - dashes[0].Points[0].X, 15);
    EXPECT_EQ(dashes[1].Points[0].X - dashes[0].Points[0].X, 20);
}

TEST_F(FitGraphs, LimitsThatAreGivenStand) {
    BuildFitGraph(1, false, false, -1.0F, 1.0F, 0.5F, 4.5F, 3, -2);
    const GraphSpec& spec = Chart.Spec;
    EXPECT_EQ(spec.PlotStyle, 3);
    EXPECT_EQ(spec.AxisX1.ScaleMode, 0);
    EXPECT_EQ(spec.AxisX1.Min, -1.0F);
    EXPECT_EQ(spec.AxisX1.Max, 1.0F);
    EXPECT_EQ(spec.AxisX1.FirstTic, -1.0F);
    EXPECT_FLOAT_EQ(spec.AxisX1.TicInterval, 0.2F);
    EXPECT_EQ(spec.AxisX1.Decimals, 3);
    EXPECT_EQ(spec.AxisX1.TicFormat, 1);
    EXPECT_EQ(spec.AxisY1.Min, 0.5F);
    EXPECT_EQ(spec.AxisY1.Max, 4.5F);
    EXPECT_FLOAT_EQ(spec.AxisY1.TicInterval, 0.4F);
    EXPECT_EQ(spec.AxisY1.Decimals, 2);
    EXPECT_EQ(spec.AxisY1.TicFormat, 2);
    EXPECT_EQ(Outside.Forms, (std::vector<std::string>{"show Charts"}));
}

TEST_F(FitGraphs, AnAutorangeFindsTheFormatOfItsLabels) {
    BuildFitGraph(1, false, false, 0.0F, 0.0F, 0.0F, 0.0F, -3, -2);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, 2);
    EXPECT_EQ(Chart.Spec.AxisX1.TicFormat, 1);
    EXPECT_EQ(Chart.Spec.AxisY1.TicFormat, 1);
}

TEST_F(FitGraphs, ALogarithmicScaleTakesLogarithmsAndAnyOtherModeIsTheFunction) {
    BuildFitGraph(2, false, true, 0, 0, 0, 0, 1, 1);
    EXPECT_EQ(Chart.Spec.PlotStyle, 1);
    EXPECT_EQ(Chart.Spec.AxisY1.ScaleType, 2);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleType, 1);
    for (long i = 1; i <= 5; ++i)
        EXPECT_NEAR(Chart.DataY(i, 1), std::log10(1.0 + 0.125 * static_cast<double>(i)), 1e-6);
}

TEST(GraphScale, ALogarithmicAxisAsksForThreeMinorTics) {
    GraphAxis axis;
    ImposeScale(axis, true, -2.0F, 1.0F, 0);
    EXPECT_EQ(axis.ScaleType, 2);
    EXPECT_EQ(axis.TicInterval, 3.0F);
    EXPECT_EQ(axis.FirstTic, -2.0F);
    EXPECT_EQ(axis.ScaleMode, 0);
}

TEST(GraphTitles, ALongPathLosesItsBeginning) {
    const std::string deep = "/" + std::string(40, 'a') + "/" + std::string(40, 'b') + "/run 7/";
    EXPECT_EQ(WithPath("Data from: ", "/data/run 7/"), "Data from: /data/run 7/");
    EXPECT_EQ(WithPath("Data from: ", deep), "Data from: .../" + std::string(40, 'b') + "/run 7/");
    const std::string fits = std::string(69, 'c'); // 11 before it: 80
    EXPECT_EQ(WithPath("Data from: ", fits), "Data from: " + fits);
    EXPECT_EQ(WithPath("Data from: ", "d" + fits), "Data from: ..." + std::string(66, 'c'));
    EXPECT_EQ(WithPath("Data from: ", fits + "/"), "Data from: ..." + std::string(65, 'c') + "/");
    EXPECT_EQ(WithPath("Data from: ", "C:\\" + fits + "\\run 7\\"), "Data from: ...\\run 7\\");
}

TEST_F(FitGraphs, ADeepDirectoryIsToldByItsEnd) {
    Work.LabelPrefix = "/" + std::string(70, 'a') + "/run 7/";
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "Data from: .../run 7/");
}

TEST_F(FitGraphs, CommandsShowTheWindow) {
    GraphData();
    EXPECT_EQ(Chart.Spec.PlotStyle, 2);
    GraphFunc();
    EXPECT_EQ(Chart.Spec.PlotStyle, 1);
    GraphOverlay();
    EXPECT_EQ(Chart.Spec.PlotStyle, 3);
    EXPECT_EQ(Outside.Forms, (std::vector<std::string>{"show Charts", "show Charts", "show Charts"}));
}

TEST_F(FitGraphs, CommandsOfOneSetAskWhich) {
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(3));
        PickSetOkButton();
    });
    GraphOverlaySet();
    EXPECT_EQ(Names(), (std::vector<std::string>{"00013.RA1", "00013.RA1 (fit)"}));
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(2));
        PickSetOkButton();
    });
    GraphFuncSet();
    EXPECT_EQ(Names(), (std::vector<std::string>{"Set 2"}));
    Outside.ExpectModal(PickSetName, [] { PickSetCancelButton(); });
    GraphOverlaySet();
    EXPECT_EQ(Names(), (std::vector<std::string>{"Set 2"})); // as it was
    EXPECT_EQ(Outside.Forms, (std::vector<std::string>{"show Charts", "show Charts"}));
}

TEST_F(FitGraphs, AGraphThatTheChartRefusesIsNotShown) {
    RemoveScreenSurface();
    Outside.AnswerAllMessages(BoxAnswer::Ok);
    EXPECT_FALSE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    GraphData();
    EXPECT_EQ(Chart.GraphStatus, 195);
    EXPECT_TRUE(Outside.Forms.empty());
}

} // namespace
} // namespace Quillon
