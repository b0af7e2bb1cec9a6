// What the chart window can do with the graph at hand.
#include "graphs/kinds/SpecialOptions.h"

#include "GraphBench.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"

#include <cmath>

namespace Quillon {
namespace {

float LnSingle(float value) {
    return static_cast<float>(std::log(static_cast<double>(value)));
}

class SpecialOptions : public GraphBench {
protected:
    SpecialOptions() { FillThreeSets(); }
};

TEST_F(SpecialOptions, FitGraphsOfferTheLogarithm) {
    for (const FitGraph kind : {FitGraph::Data, FitGraph::Function, FitGraph::Overlay}) {
        MakeFitGraph(kind, AllSets, {});
        EXPECT_EQ(Charts.SpecialOpts[LogYOption].Text, "Convert Y Scale to Natural Log");
        EXPECT_TRUE(Charts.SpecialOpts[LogYOption].Visible);
        EXPECT_TRUE(Charts.SpecialOpts[LogYOption].Enabled);
    }
    MakeResidualGraph(ResidualAxis::X, AllSets);
    EXPECT_FALSE(Charts.SpecialOpts[LogYOption].Visible);
    EXPECT_FALSE(Charts.SpecialActions[LogYOption]);
}

TEST_F(SpecialOptions, ALogAxisOffersNone) {
    GraphLimits limits;
    limits.YLog = true;
    MakeFitGraph(FitGraph::Data, AllSets, limits);
    EXPECT_FALSE(Charts.SpecialOpts[LogYOption].Visible);
    EXPECT_FALSE(Charts.SpecialActions[LogYOption]);
}

TEST_F(SpecialOptions, LogarithmOfYLeavesXAlone) {
    MakeFitGraph(FitGraph::Overlay, AllSets, {});
    PushZoom(0, 1, 0, 1);
    const SetTable x = Chart.DataX, y = Chart.DataY;
    Charts.SpecialActions[LogYOption]();
    EXPECT_EQ(Chart.DataX, x);
    for (long s = 1; s <= 6; ++s)
        for (long i = 1; i <= 5; ++i)
            EXPECT_EQ(Chart.DataY(i, s), y(i, s) == MissingValue ? MissingValue : LnSingle(y(i, s)));
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Ln (Absorbance)");
    EXPECT_EQ(Chart.Spec.AxisY1.ScaleMode, 2);
    EXPECT_GE(Chart.Spec.AxisY1.Max, LnSingle(3.5F)); // the largest fitted value
    EXPECT_LT(Chart.Spec.AxisY1.Max, 3.0F);
    EXPECT_FALSE(Charts.SpecialOpts[LogYOption].Enabled);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    EXPECT_NE(Screen.FindText("Ln (Absorbance)"), nullptr);
}

TEST_F(SpecialOptions, TheBracketOfALongTitleWasCutOff) {
    MakeFitGraph(FitGraph::Data, AllSets, {});
    Chart.Spec.AxisY1.Title.Text = std::string(76, 'W');
    ConvertYToLog();
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Ln (" + std::string(75, 'W') + ")");
}

TEST_F(SpecialOptions, WhatIsNotAboveZeroHasNoLogarithm) {
    Work.PtFit[2] = 0.0F;
    Work.PtFit[3] = -0.5F;
    MakeFitGraph(FitGraph::Function, SetNo(1), {});
    ConvertYToLog();
    EXPECT_EQ(Chart.DataY(2, 1), MissingValue);
    EXPECT_EQ(Chart.DataY(3, 1), MissingValue);
    EXPECT_EQ(Chart.DataY(4, 1), LnSingle(Work.PtFit[4]));
}

TEST_F(SpecialOptions, NothingHappensWithoutAGraph) {
    MakeFitGraph(FitGraph::Function, AllSets, {});
    const SetTable y = Chart.DataY;
    Chart.GraphHeld = 0;
    ConvertYToLog();
    Chart.GraphHeld = -1;
    Chart.GraphDrawn = 0;
    ConvertYToLog();
    EXPECT_EQ(Chart.DataY, y);
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Absorbance");
}

TEST_F(SpecialOptions, TheNextGraphOffersItAfresh) {
    MakeFitGraph(FitGraph::Data, AllSets, {});
    ConvertYToLog();
    MakeFitGraph(FitGraph::Data, AllSets, {});
    EXPECT_TRUE(Charts.SpecialOpts[LogYOption].Enabled);
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Absorbance");
    EXPECT_EQ(Chart.DataY(1, 1), Work.PtY[1]);
}

} // namespace
} // namespace Quillon
