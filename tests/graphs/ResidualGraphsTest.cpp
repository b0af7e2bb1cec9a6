// Residuals of one set and of all, about one zero line and separated.
#include "graphs/kinds/ResidualGraphs.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/PickSet.h"

#include "GraphBench.h"

#include <cmath>

namespace Quillon {
namespace {

class ResidualGraphs : public GraphBench {
protected:
    ResidualGraphs() {
        FillThreeSets();
        Work.RmsResidual = 0.0074F;
        Work.SpreadResiduals = 0;
    }

    std::vector<float> Residuals(long set, float shift = 0.0F) const {
        std::vector<float> residuals;
        for (const long point : PointsOf(set))
            residuals.push_back(shift + (Work.PtY[point] - Work.PtFit[point]));
        return residuals;
    }
    std::vector<float> Radii(long set) const {
        const long row = Work.SetRow[set];
        std::vector<float> radii;
        for (long i = Work.FitRange[0][row]; i <= Work.FitRange[1][row]; ++i)
            radii.push_back(Work.ScanRadius[row][i]);
        return radii;
    }
    static void ExpectScale(const GraphAxis& axis, float low, float high, float interval) {
        EXPECT_EQ(axis.ScaleMode, 0);
        EXPECT_FLOAT_EQ(axis.Min, low);
        EXPECT_FLOAT_EQ(axis.Max, high);
        EXPECT_FLOAT_EQ(axis.FirstTic, low);
        EXPECT_FLOAT_EQ(axis.TicInterval, interval);
    }
};

TEST_F(ResidualGraphs, AllSetsStandAboutOneZeroLine) {
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    const GraphSpec& spec = Chart.Spec;
    EXPECT_EQ(spec.GraphType, 4);
    EXPECT_EQ(spec.PlotStyle, 2);
    EXPECT_EQ(spec.SymbolMode, 1);
    EXPECT_EQ(spec.Title1.Text.Str(), "RMS residual = 7.400E-3; data from /data/run 7/");
    EXPECT_TRUE(spec.Title2.Text.Empty());
    EXPECT_EQ(spec.AxisX1.Title.Text.Str(), "(R^2 - Ro^2) / 2   (cm^2)");
    EXPECT_EQ(spec.AxisY1.Title.Text.Str(), "Y(exp) - Y(fit)");
    EXPECT_EQ(spec.AxisX1.ScaleMode, 2);
    ASSERT_EQ(Chart.State.Nsets, 3);
    for (long k = 1; k <= 3; ++k)
        ExpectSeries(k, At(k, Work.PtX), Residuals(k));
    EXPECT_EQ(Names(), (std::vector<std::string>{"00011.RA1", "00012.RA1", "00013.RA1"}));
}

TEST_F(ResidualGraphs, ALineStandsWhereResidualsAreZero) {
    const auto heights = [] {
        std::vector<float> y;
        for (const GraphMark& mark : Chart.Marks) {
            EXPECT_EQ(mark.Kind, 4); // across the whole scale
            y.push_back(mark.Y1);
        }
        return y;
    };
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::Fitted, AllSets));
    EXPECT_EQ(heights(), std::vector<float>{0.0F});
    Work.SpreadResiduals = FlagTrue;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    const float step = Chart.Spec.AxisY1.TicInterval;
    EXPECT_EQ(heights(), (std::vector<float>{0.0F, step, 2.0F * step}));
}

TEST_F(ResidualGraphs, ValuesOnTheOtherAxes) {
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::Fitted, AllSets));
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Absorbance");
    for (long k = 1; k <= 3; ++k)
        ExpectSeries(k, At(k, Work.PtFit), Residuals(k));
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::Radius, AllSets));
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Radius (cm)");
    for (long k = 1; k <= 3; ++k)
        ExpectSeries(k, Radii(k), Residuals(k));
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::Radius, SetNo(2)));
    ASSERT_EQ(Chart.State.Nsets, 1);
    ExpectSeries(1, Radii(2), Residuals(2));
}

TEST_F(ResidualGraphs, TheGraphOfOneSetTellsItsOwnDeviation) {
    FillThreeSets(0.015625F); // 1/64: exact
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, SetNo(2)));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "RMS deviation for set 2 = 1.563E-2; data from 00012.RA1");
    ASSERT_EQ(Chart.State.Nsets, 1);
    ExpectSeries(1, At(2, Work.PtX), Residuals(2));
    EXPECT_EQ(Names(), (std::vector<std::string>{"00012.RA1"}));
    ExpectScale(Chart.Spec.AxisY1, -0.02F, 0.02F, 0.01F); // one digit of 0.0156
}

TEST_F(ResidualGraphs, ALongPathGoesIntoTheSecondTitle) {
    Work.LabelPrefix = "/data/" + std::string(60, 'x') + "/";
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "RMS residual = 7.400E-3");
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "Data from " + Work.LabelPrefix);
}

TEST_F(ResidualGraphs, ALongNameOfASetGoesThereToo) {
    FillThreeSets(0.015625F);
    Work.SetLabel[2] = std::string(75, 'y') + "/00012.RA1";
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, SetNo(2)));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "RMS deviation for set 2 = 1.563E-2");
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "Data from .../00012.RA1");
}

TEST_F(ResidualGraphs, TheLimitIsOneDigitOfTheRootMeanSquare) {
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets)); // rms 0.0074, residuals up to 0.0078125
    ExpectScale(Chart.Spec.AxisY1, -0.014F, 0.014F, 0.007F);
    Work.RmsResidual = 0.0096F;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectScale(Chart.Spec.AxisY1, -0.01F, 0.01F, 0.005F);
    Work.RmsResidual = -0.0096F;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectScale(Chart.Spec.AxisY1, -0.01F, 0.01F, 0.005F);
}

TEST_F(ResidualGraphs, LabelsReadAsWhatTheTicsAre) {
    Work.RmsResidual = 0.0034F; // a limit of three times 0.003, a tic at half of it
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectScale(Chart.Spec.AxisY1, -0.009F, 0.009F, 0.0045F);
    EXPECT_EQ(Chart.Spec.AxisY1.Decimals, 4);
    for (const char* label : {"-0.0090", "-0.0045", "0.0000", "0.0045", "0.0090"})
        EXPECT_NE(Screen.FindText(label), nullptr) << label;
    Work.RmsResidual = 20.0F;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectScale(Chart.Spec.AxisY1, -20.0F, 20.0F, 10.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.Decimals, 0);
}

TEST(ResidualLimits, HoldTheLargestResidualInSteps) {
    EXPECT_FLOAT_EQ(ResidualLimit(0.0374F, 0.03F), 0.04F);
    EXPECT_FLOAT_EQ(ResidualLimit(0.0374F, 0.04F), 0.04F);
    EXPECT_FLOAT_EQ(ResidualLimit(0.0374F, 0.041F), 0.08F);
    EXPECT_FLOAT_EQ(ResidualLimit(0.0374F, 0.13F), 0.16F);
    EXPECT_FLOAT_EQ(ResidualLimit(2.6F, 1.0F), 3.0F);
    EXPECT_FLOAT_EQ(ResidualLimit(1.0F, 0.0F), 1.0F);
}

TEST_F(ResidualGraphs, AStoredZeroIsWorkedOutAfresh) {
    FillFit({{1, 6, 0}, {2, 6, 0}}, 0.5F);
    Work.RmsResidual = 0.0F; // the root of 12 * 0.25 over 12 - 2 is 0.5477
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectScale(Chart.Spec.AxisY1, -0.5F, 0.5F, 0.25F);
    EXPECT_EQ(Chart.Spec.Title1.Text.Str().substr(0, 24), "RMS residual = 5.477E-1;");
    FillFit({{1, 6, 0}, {2, 6, 0}}, 0.0F); // and a perfect fit has none
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectScale(Chart.Spec.AxisY1, -1.0F, 1.0F, 0.5F);
}

TEST_F(ResidualGraphs, SeparatedSetsStandOneStepApart) {
    Work.SpreadResiduals = -1;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets)); // 4 * 0.0074 is 0.0296: steps of 0.03
    ExpectScale(Chart.Spec.AxisY1, -0.03F, 0.09F, 0.03F);
    EXPECT_EQ(Chart.Spec.AxisY1.Decimals, 2);
    for (long k = 1; k <= 3; ++k)
        ExpectSeries(k, At(k, Work.PtX), Residuals(k, static_cast<float>(k - 1) * 0.03F));
}

TEST_F(ResidualGraphs, AnOutlierOfASeparatedSetIsSeen) {
    Work.SpreadResiduals = -1;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    const float below = Residuals(1)[0];
    Work.RmsResidual = std::fabs(below) / 4.9F; // the first point lies 4.9 deviations off
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    const GraphAxis& y = Chart.Spec.AxisY1;
    const float step = SpreadStep(Work.RmsResidual);
    EXPECT_EQ(y.TicInterval, step);
    for (long k = 1; k <= 3; ++k)
        for (const float value : Residuals(k, static_cast<float>(k - 1) * step)) {
            EXPECT_GE(value, y.Min);
            EXPECT_LE(value, y.Max);
        }
    EXPECT_NEAR(std::remainder(y.Min, step), 0.0F, 1e-6F); // whole steps
    EXPECT_NEAR(std::remainder(y.Max, step), 0.0F, 1e-6F);
}

TEST_F(ResidualGraphs, OneSetIsNeverSeparated) {
    Work.SpreadResiduals = -1;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, SetNo(3)));
    ExpectSeries(1, At(3, Work.PtX), Residuals(3));
    FillFit({{1, 5, 0}}, 0.25F);
    Work.SpreadResiduals = -1;
    Work.RmsResidual = 0.3F;
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    ExpectSeries(1, At(1, Work.PtX), Residuals(1));
    ExpectScale(Chart.Spec.AxisY1, -0.3F, 0.3F, 0.15F);
}

TEST(ResidualSteps, AreOneDigitOfFourDeviations) {
    EXPECT_FLOAT_EQ(SpreadStep(0.004F), 0.02F);
    EXPECT_FLOAT_EQ(SpreadStep(0.001F), 0.004F);
    EXPECT_FLOAT_EQ(SpreadStep(0.0024F), 0.01F); // 9.6 thousandths
    EXPECT_FLOAT_EQ(SpreadStep(1.0F), 4.0F);
}

TEST_F(ResidualGraphs, EverySymbolLiesWithinTheFrame) {
    Work.RmsResidual = 0.001F; // the residuals are eight times as large
    ASSERT_TRUE(MakeResidualGraph(ResidualAxis::X, AllSets));
    for (long k = 1; k <= 3; ++k)
        for (const float residual : Residuals(k))
            EXPECT_LE(std::fabs(residual), Chart.Spec.AxisY1.Max);
    EXPECT_LT(Chart.Spec.AxisY1.Max, 0.01F); // a pseudo-point's 999 does not count
}

TEST_F(ResidualGraphs, CommandsShowTheWindowAndOfferNoOption) {
    GraphResiduals();
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), Work.XAxisTitle);
    GraphResidualsY();
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Absorbance");
    GraphResidualsR();
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Radius (cm)");
    EXPECT_EQ(Outside.Forms.size(), 3U);
    for (const MenuItem& item : Charts.SpecialOpts)
        EXPECT_FALSE(item.Visible);
}

TEST_F(ResidualGraphs, AZoomWasLostWhenTheKindOfGraphChangedOnTheSameAxis) {
    const GraphSpec& s = Chart.Spec;
    GraphOverlay();
    ZoomTo({-0.1F, 0.15F, 1.0F, 2.5F});
    GraphData(); // both axes are those of the overlay
    EXPECT_FLOAT_EQ(s.AxisX1.Min, -0.1F);
    EXPECT_FLOAT_EQ(s.AxisX1.Max, 0.15F);
    EXPECT_FLOAT_EQ(s.AxisY1.Min, 1.0F);
    EXPECT_FLOAT_EQ(s.AxisY1.Max, 2.5F);
    GraphResiduals(); // the one along X
    EXPECT_FLOAT_EQ(s.AxisX1.Min, -0.1F);
    EXPECT_FLOAT_EQ(s.AxisX1.Max, 0.15F);
    const GraphAxis kept = s.AxisY1;
    DoAutoX();
    const float whole = s.AxisX1.Max - s.AxisX1.Min;
    EXPECT_GT(whole, 0.3F);
    GraphResidualsR(); // none
    EXPECT_EQ(s.AxisX1.Title.Text.Str(), "Radius (cm)");
    EXPECT_EQ(kept.Min, s.AxisY1.Min) << "as the graph itself has it";
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    GraphOverlay();
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    ZoomTo({-0.1F, 0.15F, 1.0F, 2.5F});
    GraphOverlay();
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
    DoLastZoom(); // leads to all of it
    EXPECT_GT(s.AxisX1.Max - s.AxisX1.Min, 0.3F);
    GraphData();
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
}

TEST_F(ResidualGraphs, CommandsOfOneSetAskWhich) {
    void (*const commands[])() = {GraphResidSet, GraphResidSetY, GraphResidualsRSet};
    const std::string titles[] = {Work.XAxisTitle, "Absorbance", "Radius (cm)"};
    for (std::size_t i = 0; i < 3; ++i) {
        Outside.ExpectModal(PickSetName, [] {
            PickSetRow(SetNo(3));
            PickSetOkButton();
        });
        commands[i]();
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), titles[i]);
        EXPECT_EQ(Names(), (std::vector<std::string>{"00013.RA1"}));
    }
    Outside.ExpectModal(PickSetName, [] { PickSetCancelButton(); });
    GraphResidSet();
    EXPECT_EQ(Outside.Forms.size(), 3U);
}

} // namespace
} // namespace Quillon
