// The graph on which a fitting range is chosen, its markers and the options that the chart window offers on
// it.
#include "scandata/range/RangeGraph.h"

#include "ScanFixture.h"
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/scale/Mapping.h"
#include "scandata/range/RangeBar.h"
#include "scandata/range/RangeOptions.h"
#include "scandata/range/RangeReadings.h"
#include "tests/support/RecordingSurface.h"
#include "workspace/records/Cancel.h"

#include <cmath>

namespace Quillon {
namespace {

// Row 1 holds 101 points from 6.00 to 7.00 cm, 0.01 cm apart, the signal of point i being i / 100 - 0.05: the
// first five are not above 0. The fit range is that from 6.50 to 6.80.
class RangeGraphTest : public ScanTest {
protected:
    RangeGraphTest() {
        Chart = ChartModule{};
        Seams = ChartSeams{};
        Charts = ChartsForm{};
        Seams.IsCancelled = [] { return Work.AbortFit != 0; };
        Seams.SetCancelled = HandOnCancel;
        SetScreenSurface(Screen.Surface());
        std::vector<std::string> points;
        for (int i = 1; i <= 101; ++i)
            points.push_back(std::to_string(5.99 + 0.01 * i) + " " + std::to_string(0.01 * i - 0.05));
        Read(ScanText(points));
        Work.ScanFile[1] = "00001.RA1";
        Work.FitRange[0][1] = 51;
        Work.FitRange[1][1] = 81;
    }
    ~RangeGraphTest() override {
        Chart = ChartModule{};
        Seams = ChartSeams{};
        Charts = ChartsForm{};
    }
    // Opens the graph, does something on it and leaves by a key.
    bool OnGraph(std::function<void()> during, int key = 13) {
        script.ExpectModal(ChartsName, [during, key] {
            during();
            ChartKey(key, 0);
        });
        return SelectRange(RowNo(1));
    }
    static float Radius(long p) { return Work.ScanRadius[1][p]; }
    static float HalfSquare(float r) {
        return static_cast<float>(static_cast<double>(r) * static_cast<double>(r) / 2.0);
    }
    static float Log(long p) {
        return static_cast<float>(std::log(static_cast<double>(Work.ScanValue[1][p])));
    }
    RecordingSurface Screen;
};

TEST_F(RangeGraphTest, ARowWithoutAScanHasNone) {
    EXPECT_FALSE(SelectRange(RowNo(2)));
    EXPECT_TRUE(script.Asked.empty());
}

TEST_F(RangeGraphTest, ShowsTheSignalAgainstTheRadius) {
    EXPECT_TRUE(OnGraph([] {
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Radius");
        EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Absorbance");
        EXPECT_EQ(Chart.DataX(101, 1), Radius(101));
        EXPECT_EQ(Chart.DataY(2, 1), Work.ScanValue[1][2]);
        ASSERT_EQ(Charts.Markers.size(), 2U);
        EXPECT_EQ(Charts.Markers[0].X, Radius(51));
        EXPECT_EQ(Charts.Markers[1].X, Radius(81));
        EXPECT_EQ(Charts.Markers[0].Color, 0x0000C000U); // green
        EXPECT_EQ(Charts.StatusLine.Text,
                  "Drag the green markers to designate the data region to be fitted; hit ENTER when done");
        EXPECT_TRUE(Charts.Needed);
        // The signal of the range fills the axis.
        EXPECT_LE(Chart.Spec.AxisY1.Min, Work.ScanValue[1][51]);
        EXPECT_GE(Chart.Spec.AxisY1.Max, Work.ScanValue[1][81]);
        EXPECT_LT(Chart.Spec.AxisY1.Max, Work.ScanValue[1][101]);
    }));
    EXPECT_EQ(Work.FitRange[0][1], 51); // markers left alone
    EXPECT_EQ(Work.FitRange[1][1], 81);
    EXPECT_FALSE(Charts.Needed);
    EXPECT_TRUE(Charts.Markers.empty());
    EXPECT_EQ(Charts.StatusLine.Text, "");
}

TEST_F(RangeGraphTest, ShowsLnAgainstHalfTheSquare) {
    Work.RangeLogPlot = FlagTrue;
    OnGraph([] {
        EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "ln(c) vs. r^2 / 2 Plot");
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Radius Squared / 2");
        EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "ln(Absorbance)");
        for (long p = 1; p <= 5; ++p)
            EXPECT_EQ(Chart.DataY(p, 1), MissingValue);
        EXPECT_EQ(Chart.DataY(60, 1), Log(60));
        EXPECT_EQ(Chart.DataX(60, 1), HalfSquare(Radius(60)));
        EXPECT_EQ(Charts.Markers[0].X, HalfSquare(Radius(51)));
        EXPECT_FALSE(Charts.SpecialActions[RangeLogOption]); // it is so already
    });
    EXPECT_EQ(Work.FitRange[0][1], 51);
    EXPECT_EQ(Work.FitRange[1][1], 81);
}

TEST_F(RangeGraphTest, MarkersBecomePointNumbers) {
    OnGraph([] { PlaceMarkers(6.204F, 6.918F); });
    EXPECT_EQ(Work.FitRange[0][1], 22); // 6.21, the first at or above
    EXPECT_EQ(Work.FitRange[1][1], 92); // 6.91, the last at or below
    Work.RangeLogPlot = FlagTrue;
    OnGraph([] { PlaceMarkers(HalfSquare(6.918F), HalfSquare(6.204F)); }); // crossed
    EXPECT_EQ(Work.FitRange[0][1], 22);
    EXPECT_EQ(Work.FitRange[1][1], 92);
}

TEST_F(RangeGraphTest, ARangeIsNoChangeOfTheData) {
    Work.SetChanged[1] = FlagFalse;
    OnGraph([] { PlaceMarkers(6.204F, 6.918F); });
    EXPECT_EQ(Work.SetChanged[1], FlagFalse);
}

// A range of one point was accepted and one between two points refused, both in silence.
TEST_F(RangeGraphTest, FewerThanThreePointsAreToldAndTheGraphStays) {
    EXPECT_FALSE(OnGraph(
        [this] {
            const auto refused = [this](float first, float last, const std::string& told) {
                PlaceMarkers(first, last);
                ExpectTold(told + " between the markers. A range takes at least 3.");
                ChartKey(13, 0);
                EXPECT_TRUE(Charts.Shown);
            };
            refused(6.204F, 6.206F, "There are no points");
            refused(6.195F, 6.205F, "There is 1 point");
            refused(6.195F, 6.215F, "There are 2 points");
        },
        27));
    EXPECT_EQ(script.Beeps, 3);
    EXPECT_EQ(Work.FitRange[0][1], 51);
    EXPECT_EQ(Work.FitRange[1][1], 81);
    EXPECT_TRUE(OnGraph([] { PlaceMarkers(6.195F, 6.225F); }));
    EXPECT_EQ(Work.FitRange[1][1] - Work.FitRange[0][1] + 1, 3);
}

TEST_F(RangeGraphTest, EscapeLeavesTheRangeAndNoCancel) {
    EXPECT_FALSE(OnGraph([] { PlaceMarkers(6.204F, 6.918F); }, 27));
    EXPECT_EQ(Work.FitRange[0][1], 51);
    EXPECT_EQ(Work.FitRange[1][1], 81);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
    EXPECT_FALSE(Charts.SpecialActions[WholeScanOption]);
    EXPECT_EQ(Chart.GraphHeld, FlagFalse);
}

// The graph is gone with the window, and so is what can be done with it.
TEST_F(RangeGraphTest, NothingOfItsMenuStays) {
    OnGraph([] {
        ZoomTo({6.6F, 6.7F, 0.5F, 0.7F});
        EXPECT_TRUE(Charts.AltPlot.Enabled && Charts.mnuEditTitles.Enabled && Charts.LastZoom.Enabled);
    });
    EXPECT_FALSE(Charts.AltPlot.Enabled);
    EXPECT_FALSE(Charts.mnuEditTitles.Enabled);
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
}

// A look at a part of the scan cut the range to that part for good.
TEST_F(RangeGraphTest, AZoomMovesNoMarker) {
    OnGraph([] {
        ZoomTo({6.6F, 6.7F, 0.5F, 0.7F});
        EXPECT_EQ(Charts.Markers[0].Device, Chart.Spec.Frame.X1); // shown at the edge
        EXPECT_EQ(Charts.Markers[1].Device, Chart.Spec.Frame.X2);
        EXPECT_EQ(RangeBar.Radius[0].Text, "6.5000");
    });
    EXPECT_EQ(Work.FitRange[0][1], 51);
    EXPECT_EQ(Work.FitRange[1][1], 81);
    OnGraph([] {
        ZoomTo({6.6F, 6.7F, 0.5F, 0.7F});
        DoAutoScale();
    });
    EXPECT_EQ(Work.FitRange[0][1], 51);
    EXPECT_EQ(Work.FitRange[1][1], 81);
}

TEST_F(RangeGraphTest, InterferenceDataAreFringes) {
    Work.DataTypeName = "Fringes";
    OnGraph([] { EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Fringes"); });
    Work.RangeLogPlot = FlagTrue;
    OnGraph([] { EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "ln(Fringes)"); });
}

TEST_F(RangeGraphTest, ItsWindowClosesAsEscapeDoes) {
    OnGraph([] {
        EXPECT_TRUE(Charts.ClosesAsEscape);
        EXPECT_TRUE(ChartsMayClose()); // nobody is asked
    });
    EXPECT_FALSE(Charts.ClosesAsEscape);
}

// --- the bar
// -------------------------------------------------------------------------------------------------

TEST_F(RangeGraphTest, TheBarFollowsTheMarkers) {
    EXPECT_FALSE(RangeBar.Shown);
    OnGraph([] {
        EXPECT_TRUE(RangeBar.Shown && Charts.WashOutside);
        EXPECT_EQ(RangeBar.Radius[0].Text, "6.5000");
        EXPECT_EQ(RangeBar.Radius[1].Text, "6.8000");
        EXPECT_EQ(RangeBar.Count.Text, "31 points");
        MarkerMouseDown(0);
        MarkerMouseMove(Charts.Markers[0].Device + 20);
        MarkerMouseUp();
        EXPECT_NE(RangeBar.Radius[0].Text, "6.5000");
        EXPECT_EQ(RangeBar.Radius[1].Text, "6.8000");
        Charts.ActiveMarker = 1;
        ChartKey(37, 0);
        EXPECT_NE(RangeBar.Radius[1].Text, "6.8000");
    });
    EXPECT_FALSE(RangeBar.Shown || Charts.WashOutside);
    EXPECT_FALSE(Charts.OnMarkers);
}

TEST_F(RangeGraphTest, TheMarkersFollowWhatIsTyped) {
    for (const bool log : {false, true}) {
        Work.RangeLogPlot = Flag(log);
        Work.FitRange[0][1] = 51;
        Work.FitRange[1][1] = 81;
        EXPECT_TRUE(OnGraph([] {
            const auto type = [](std::size_t side, const std::string& text) {
                RangeBarGotFocus(side);
                RangeBar.Radius[side].Text = text;
                EXPECT_EQ(RangeBarKeyPress(side, 13), 0);
                EXPECT_TRUE(RangeBar.FocusOnGraph);
            };
            type(0, "6.204");
            EXPECT_EQ(RangeBar.Radius[0].Text, "6.2040");
            EXPECT_EQ(RangeBar.Count.Text, "60 points"); // 6.21 to 6.80
            type(1, "6.918");
            EXPECT_EQ(RangeBar.Count.Text, "71 points");
            type(1, "abc"); // no radius
            EXPECT_EQ(RangeBar.Radius[1].Text, "6.9180");
            type(1, "6.1"); // further in than the other: they change places
            EXPECT_EQ(RangeBar.Radius[0].Text, "6.1000");
            EXPECT_EQ(RangeBar.Radius[1].Text, "6.2040");
            type(1, "6.918");
            RangeBarGotFocus(0); // a look changes nothing
            RangeBarLostFocus(0);
        }));
        EXPECT_EQ(Work.FitRange[0][1], 11); // at 6.1 cm
        EXPECT_EQ(Work.FitRange[1][1], 92);
    }
}

TEST_F(RangeGraphTest, AcceptAndCancelAreTheKeys) {
    script.ExpectModal(ChartsName, [] {
        PlaceMarkers(6.204F, 6.918F);
        RangeBarCancelButton();
        EXPECT_FALSE(Charts.Shown);
    });
    EXPECT_FALSE(SelectRange(RowNo(1)));
    EXPECT_EQ(Work.FitRange[0][1], 51);
    EXPECT_EQ(Work.AbortFit, 0);
    script.ExpectModal(ChartsName, [] {
        PlaceMarkers(6.204F, 6.918F);
        RangeBarAcceptButton();
    });
    EXPECT_TRUE(SelectRange(RowNo(1)));
    EXPECT_EQ(Work.FitRange[0][1], 22);
}

TEST_F(RangeGraphTest, AutoProposesAndTheUserAccepts) {
    Work.ScanValue[1][90] += 1.0F; // a spike: bends at 89, 90, 91
    OnGraph([] {
        RangeBarAutoButton();
        EXPECT_EQ(RangeBar.Count.Text, "83 points"); // 2..88 less two at each end
        EXPECT_TRUE(RangeBar.FocusOnGraph);
        EXPECT_TRUE(Charts.StatusLine.Text.starts_with("Proposed: 6.0300 to 6.8500 cm"))
            << Charts.StatusLine.Text;
    });
    EXPECT_EQ(Work.FitRange[0][1], 4);
    EXPECT_EQ(Work.FitRange[1][1], 86);
    for (long p = 1; p <= 101; ++p)
        Work.ScanValue[1][p] = p % 2 == 0 ? 0.0F : static_cast<float>(p * p);
    OnGraph([] { RangeBarAutoButton(); }, 27);
}

TEST_F(RangeGraphTest, OffersItsOptions) {
    OfferSpecialOption(1, "of another graph", [] {});
    OnGraph([] {
        for (const std::size_t place :
             {RangeLogOption, WholeScanOption, FitRangeOption, BetweenMarkersOption}) {
            EXPECT_TRUE(Charts.SpecialActions[place]) << place;
            EXPECT_TRUE(Charts.SpecialOpts[place].Visible && Charts.SpecialOpts[place].Enabled) << place;
        }
        EXPECT_FALSE(Charts.SpecialActions[1]);
    });
}

TEST_F(RangeGraphTest, ConvertsToLnAndClosesInOnTheRange) {
    OnGraph([] {
        ZoomTo({6.4F, 6.9F, 0.3F, 0.9F});
        Charts.SpecialActions[RangeLogOption]();
        EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Ln (Absorbance)");
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "R squared / 2");
        EXPECT_EQ(Chart.DataY(3, 1), MissingValue);
        EXPECT_EQ(Chart.DataY(60, 1), Log(60));
        EXPECT_EQ(Chart.DataX(60, 1), HalfSquare(Radius(60)));
        // The signal rises: the ends of the range have the least and the largest value.
        const float y = 0.075F * (Log(81) - Log(51));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisY1.Min, Log(51) - y);
        EXPECT_FLOAT_EQ(Chart.Spec.AxisY1.Max, Log(81) + y);
        const float first = HalfSquare(Radius(51)), last = HalfSquare(Radius(81));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, first - 0.075F * (last - first));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, last + 0.075F * (last - first));
        EXPECT_EQ(Charts.Markers[0].X, first);
        EXPECT_EQ(Charts.Markers[1].X, last);
        EXPECT_FALSE(Charts.SpecialOpts[RangeLogOption].Enabled);
        EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
        Charts.SpecialActions[RangeLogOption](); // no second time
        EXPECT_EQ(Chart.DataX(60, 1), HalfSquare(Radius(60)));
    });
    EXPECT_EQ(Work.RangeLogPlot, FlagFalse);
    EXPECT_EQ(Work.FitRange[0][1], 51); // read in units of r^2/2
    EXPECT_EQ(Work.FitRange[1][1], 81);
    OnGraph([] { EXPECT_EQ(Chart.DataX(60, 1), Radius(60)); }); // the next graph begins anew
}

TEST_F(RangeGraphTest, ARangeOfTheWholeScanIsNotClosedInOn) {
    Work.FitRange[0][1] = 1;
    Work.FitRange[1][1] = 101;
    OnGraph([] {
        Charts.SpecialActions[RangeLogOption]();
        EXPECT_LE(Chart.Spec.AxisX1.Min, HalfSquare(Radius(6)));
        EXPECT_GE(Chart.Spec.AxisX1.Max, HalfSquare(Radius(101)));
        EXPECT_LE(Chart.Spec.AxisY1.Min, Log(6));
        EXPECT_GE(Chart.Spec.AxisY1.Max, Log(101));
        EXPECT_EQ(Chart.Spec.AxisY1.ScaleMode, ScaleModes::Autorange);
    });
}

TEST_F(RangeGraphTest, ARangeWithoutALogarithmIsNotClosedInOn) {
    Work.FitRange[0][1] = 1;
    Work.FitRange[1][1] = 4;
    OnGraph([] {
        Charts.SpecialActions[RangeLogOption]();
        EXPECT_GE(Chart.Spec.AxisX1.Max, HalfSquare(Radius(101)));
        EXPECT_GE(Chart.Spec.AxisY1.Max, Log(101));
    });
}

TEST_F(RangeGraphTest, ARangeWithOneLogarithmIsClosedInOnAlongX) {
    Work.FitRange[0][1] = 1; // of the first six points the last one alone is above 0
    Work.FitRange[1][1] = 6;
    OnGraph([] {
        Charts.SpecialActions[RangeLogOption]();
        const float first = HalfSquare(Radius(1)), last = HalfSquare(Radius(6));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, first - 0.075F * (last - first));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, last + 0.075F * (last - first));
        EXPECT_LE(Chart.Spec.AxisY1.Min, Log(6)); // there is no stretch to close in on
        EXPECT_GE(Chart.Spec.AxisY1.Max, Log(101));
    });
}

TEST_F(RangeGraphTest, TheRowInHandDecides) {
    Work.CurrentPage = 0;
    Work.CurrentRow = 0;
    OnGraph([] {
        Charts.SpecialActions[FitRangeOption]();
        const float edge = 0.075F * (Radius(81) - Radius(51));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, Radius(51) - edge);
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, Radius(81) + edge);
    });
}

TEST_F(RangeGraphTest, RescalesX) {
    OnGraph([] {
        const ChartScale whole = PresentScale();
        PlaceMarkers(6.3F, 6.5F);
        Charts.SpecialActions[BetweenMarkersOption]();
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, 6.3F - 0.075F * (6.5F - 6.3F));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, 6.5F + 0.075F * (6.5F - 6.3F));
        EXPECT_EQ(PresentScale().YMin, whole.YMin);
        Charts.SpecialActions[WholeScanOption]();
        EXPECT_EQ(PresentScale(), whole);
        DoLastZoom();
        DoLastZoom();
        EXPECT_EQ(PresentScale(), whole);
        Chart.GraphDrawn = FlagFalse; // there is nothing to change
        Charts.SpecialActions[FitRangeOption]();
        EXPECT_EQ(PresentScale(), whole);
        Chart.GraphDrawn = FlagTrue;
    });
}

TEST_F(RangeGraphTest, RescalesHalfTheSquare) {
    Work.RangeLogPlot = FlagTrue;
    OnGraph([] {
        Charts.SpecialActions[FitRangeOption]();
        const float first = HalfSquare(Radius(51)), last = HalfSquare(Radius(81));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, first - 0.075F * (last - first));
        EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, last + 0.075F * (last - first));
    });
}

// --- readings left out -------------------------------------------------------------------------------------

// Presses with Shift at one place of the data, releases at another.
void DragWithShift(float x1, float y1, float x2, float y2) {
    SetFrameMapping();
    ChartMouseDown(DeviceX(static_cast<double>(x1)), DeviceY(static_cast<double>(y1)), 1, true);
    ChartMouseMove(DeviceX(static_cast<double>(x2)), DeviceY(static_cast<double>(y2)), 1);
    ChartMouseUp(DeviceX(static_cast<double>(x2)), DeviceY(static_cast<double>(y2)), 1);
}

TEST_F(RangeGraphTest, ARectangleWithShiftLeavesReadingsOutAndBringsThemBack) {
    for (const bool log : {false, true}) {
        Work.RangeLogPlot = Flag(log);
        const Workspace before = Work;
        EXPECT_FALSE(OnGraph(
            [log] {
                const ChartScale view = PresentScale();
                const auto x = [log](float r) { return log ? HalfSquare(r) : r; };
                const auto y = [log](float v) { return log ? std::log(v) : v; };
                const auto drag = [&] { DragWithShift(x(6.595F), y(0.52F), x(6.625F), y(0.62F)); };
                drag(); // 6.60, 6.61, 6.62
                EXPECT_EQ(Work.ScanPoints[1], 98);
                EXPECT_EQ(Charts.PalePoints.size(), 3U);
                EXPECT_GT(Charts.PalePoints[0].DeviceX, 0);
                EXPECT_EQ(RangeBar.Count.Text, "28 points, 3 left out");
                EXPECT_EQ(PresentScale(), view) << "no zoom";
                EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
                EXPECT_EQ(Chart.DataY(100, 1), MissingValue);
                drag();
                EXPECT_EQ(Work.ScanPoints[1], 101);
                EXPECT_TRUE(Charts.PalePoints.empty());
                EXPECT_EQ(RangeBar.Count.Text, "31 points");
                drag();
            },
            27));
        EXPECT_TRUE(Work == before) << "Esc gives back what was left out";
    }
}

TEST_F(RangeGraphTest, WhatIsLeftOutIsTakenWithTheRange) {
    EXPECT_TRUE(OnGraph([] { DragWithShift(6.595F, 0.52F, 6.625F, 0.62F); }));
    EXPECT_EQ(Work.LeftOut[1].size(), 3U);
    EXPECT_EQ(Radius(Work.FitRange[0][1]), 6.50F);
    EXPECT_EQ(Radius(Work.FitRange[1][1]), 6.80F);
    EXPECT_EQ(Work.FitRange[1][1], 78);
    OnGraph([] { EXPECT_EQ(Charts.PalePoints.size(), 3U); });
    EXPECT_TRUE(Charts.PalePoints.empty());
    EXPECT_FALSE(Charts.OnShiftBox);
}

TEST_F(RangeGraphTest, AClickWithShiftTakesTheReadingUnderIt) {
    OnGraph([] {
        const float x = Radius(60), y = Work.ScanValue[1][60];
        DragWithShift(x, y, x, y);
    });
    ASSERT_EQ(Work.LeftOut[1].size(), 1U);
    EXPECT_EQ(Work.LeftOut[1][0].Place, 60);
}

TEST_F(RangeGraphTest, TheLastReadingsStay) {
    OnGraph([] {
        DragWithShift(6.0F, -1.0F, 7.0F, 2.0F);
        ToggleReadings({5.0F, 8.0F, -5.0F, 5.0F});
        EXPECT_EQ(Charts.StatusLine.Text, "That would leave no reading of the scan");
    });
    EXPECT_TRUE(Work.ScanPoints[1] > 0);
}

TEST_F(RangeGraphTest, ACeilingIsTypedAndTakenOff) {
    const auto type = [](const std::string& text) {
        RangeCeilingGotFocus();
        RangeBar.Ceiling.Text = text;
        EXPECT_EQ(RangeCeilingKeyPress(13), 0);
    };
    EXPECT_TRUE(OnGraph([&] {
        type("0.705"); // up to point 75
        EXPECT_EQ(Work.ScanPoints[1], 75);
        EXPECT_EQ(RangeBar.Ceiling.Text, "0.705");
    }));
    EXPECT_EQ(Radius(Work.FitRange[1][1]), 6.74F);
    EXPECT_TRUE(OnGraph([&] { type(""); }));
    EXPECT_EQ(Work.ScanPoints[1], 101);
    EXPECT_EQ(Work.SignalCeiling[1], 0.0F);
}

TEST_F(RangeGraphTest, SpikesAreProposedAndLeftOutAfterAYes) {
    Work.ScanValue[1][60] += 0.2F;
    const auto ask = [this](BoxAnswer answer) {
        script.ExpectMessage({"1 reading stands out from its neighbours by more than 6 times the "
                              "scatter:\n\n6.5900 cm\n\nDo you want to leave it out?",
                              "Quillon", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::No},
                             answer);
        RangeSpikesButton();
    };
    OnGraph([&] {
        ask(BoxAnswer::No);
        EXPECT_TRUE(Work.LeftOut[1].empty());
        ask(BoxAnswer::Yes);
        EXPECT_EQ(Work.LeftOut[1].size(), 1U);
        RangeSpikesButton();
        EXPECT_EQ(Charts.StatusLine.Text, "No reading between the markers stands out from its neighbours");
    });
}

} // namespace
} // namespace Quillon
