// The form that separates data sets, and what it adds and takes back.
#include "chart/dialogs/ShiftData.h"

#include "ChartBench.h"
#include "chart/hand/ChartScale.h"

namespace Quillon {
namespace {

class ShiftDataTest : public ChartBench {
protected:
    ShiftDataTest() {
        FormerShift = {};
        GraphSpec spec = Begin();
        Plot(spec, Table({{1, 2}, {1, 2}, {1, MissingValue}}), Table({{0.1F, 0.3F}, {0.2F, 0.7F}, {1, 2}}));
        ChartMenuStatus(Charts);
    }
    // Opens the form by a command, does something on it and presses OK.
    void Accept(void (*command)(), std::function<void()> during) {
        Outside.ExpectModal(ShiftDataName, [during] {
            during();
            ShiftDataOkButton();
            EXPECT_FALSE(ShiftData.State.Shown);
        });
        command();
    }
    static void Constant(const std::string& step) {
        ShiftDataClick(ShiftBy::Constant);
        ShiftData.ValueInput.Text = step;
    }
    static void Percent(const std::string& part) {
        ShiftDataClick(ShiftBy::Percent);
        ShiftData.PercentInput.Text = part;
    }
    static void Variable(const std::vector<std::string>& amounts) {
        ShiftDataClick(ShiftBy::Variable);
        for (std::size_t row = 0; row < amounts.size(); ++row) {
            ShiftDataSetClick(static_cast<int>(row));
            ShiftData.ValueBox.Text = amounts[row];
        }
    }
    ShiftDataRecord& Form = ShiftData;
};

TEST_F(ShiftDataTest, CaptionsFollowTheAxes) {
    const std::pair<void (*)(), const char*> commands[] = {
        {SeparateX, "Separate Data Sets Along X Axis"},
        {SeparateY, "Separate Data Sets Along Y Axis"},
        {SeparateBoth, "Separate Data Sets Along Both X & Y Axes"}};
    for (const auto& [command, caption] : commands) {
        Outside.ExpectModal(ShiftDataName, [&, caption = caption] {
            EXPECT_EQ(Form.State.Caption, caption);
            EXPECT_EQ(Form.ByVariable.Text, "By &Different Values for Each Data Set");
            EXPECT_EQ(Form.ByConstant.Text, "By a Constant Specific &Value =");
            EXPECT_EQ(Form.ByPercent.Text, "By a Constant &Percentage of Present Full Scale =");
            EXPECT_EQ(Form.ValueLabel.Text, "Value to &Add =");
            EXPECT_EQ(Form.SetFrame.Text, "Data Set");
            EXPECT_FALSE(Form.TakeBackButton.Enabled);
            ShiftDataCancelButton();
        });
        command();
    }
}

TEST_F(ShiftDataTest, AnEmptyFormOffersThreePercentAndNoAmounts) {
    LoadShiftData();
    EXPECT_EQ(Form.PercentInput.Text, "3.00");
    EXPECT_EQ(Form.SetNum.Items, (std::vector<std::string>{"1 - 0.00", "2 - 0.00", "3 - 0.00"}));
    EXPECT_EQ(Form.ValueBox.Text, "0.00");
    EXPECT_EQ(Form.SetName.Text, "a");
}

TEST_F(ShiftDataTest, TwoAlternatingSetsAreOneLine) {
    GraphSpec spec = Begin(GraphTypes::XYPlot, PlotStyles::Alternating);
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {2, 3}}));
    LoadShiftData();
    EXPECT_EQ(Form.SetNum.Items, (std::vector<std::string>{"1 - 0.00"}));
    EXPECT_EQ(Form.SetFrame.Text, "Data Set Pair");
    EXPECT_EQ(Form.SetLabel.Text, "First Member of &Set Pair =");
}

TEST_F(ShiftDataTest, AConstantIsTheStepFromSetToSet) {
    const SetTable before = Chart.DataY;
    Accept(SeparateY, [] { Constant("0.25"); });
    for (long set = 1; set <= 3; ++set)
        for (long point = 1; point <= 2; ++point)
            EXPECT_EQ(Chart.DataY(point, set), before(point, set) + static_cast<float>(set - 1) * 0.25F);
    EXPECT_EQ(Chart.SetShift[3], 0.5F);
    EXPECT_EQ(Chart.DataX(2, 3), MissingValue);
}

TEST_F(ShiftDataTest, APercentageIsOfTheScaleThatIsShown) {
    const double length =
        static_cast<double>(Chart.Spec.AxisY1.Max) - static_cast<double>(Chart.Spec.AxisY1.Min);
    const float before = Chart.DataY(1, 3);
    Accept(SeparateY, [] { Percent("10"); });
    EXPECT_FLOAT_EQ(Chart.DataY(1, 3), before + static_cast<float>(0.2 * length));
}

// The scale runs over 8 along X and over 4000 along Y: a tenth is 0.8 of the one and 400 of the other.
TEST_F(ShiftDataTest, AlongBothAxesThePercentageIsOfEachOnesOwnScale) {
    GraphSpec spec = Begin();
    Pin(spec.AxisX1, 0, 8, 1);
    Pin(spec.AxisY1, 0, 4000, 500);
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1000, 2000}, {1000, 2000}}));
    Accept(SeparateBoth, [] { Percent("10"); });
    EXPECT_FLOAT_EQ(Chart.DataX(1, 2), 1.8F);
    EXPECT_FLOAT_EQ(Chart.DataY(1, 2), 1400.0F);
    EXPECT_EQ(Chart.DataY(1, 1), 1000.0F);
}

TEST_F(ShiftDataTest, EachSetHasItsOwnAmount) {
    Accept(SeparateX, [] { Variable({"0", "2", "-1"}); });
    EXPECT_EQ(Chart.DataX(1, 1), 1.0F);
    EXPECT_EQ(Chart.DataX(1, 2), 3.0F);
    EXPECT_EQ(Chart.DataX(1, 3), 0.0F);
    LoadShiftData(); // the next form of the run has them still
    EXPECT_EQ(Form.SetNum.Items[1], "2 - 2.00");
    EXPECT_EQ(Form.SetNum.Items[2], "3 - -1.00");
}

// A scale in thousands: 2 on it is 2000 of the stored values.
TEST_F(ShiftDataTest, APrescaledAxisIsShiftedInItsOwnUnits) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisY1.Max = 1;
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1000, 5000}, {1000, 5000}}));
    ASSERT_EQ(Chart.Spec.AxisY1.Factor, 1000.0F);
    Accept(SeparateY, [] { Constant("2"); });
    EXPECT_EQ(Chart.DataY(2, 2), 7000.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.ScaleMode, ScaleModes::Prescaled);
    EXPECT_GE(Chart.Spec.AxisY1.Max, 7.0F);
}

// Half a unit of thousands is 500 of the stored values, which singles hold exactly.
TEST_F(ShiftDataTest, AlongAPrescaledXAxisEachSetStandsByItsStep) {
    GraphSpec spec = Begin();
    spec.AxisX1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisX1.Max = 1;
    const SetTable x = Table({{1000, 5000}, {1001, 5001}, {1003, 5003}});
    Plot(spec, x, Table({{1, 2}, {1, 2}, {1, 2}}));
    ASSERT_EQ(Chart.Spec.AxisX1.Factor, 1000.0F);
    Accept(SeparateX, [] { Constant("0.5"); });
    for (long set = 1; set <= 3; ++set)
        for (long point = 1; point <= 2; ++point)
            EXPECT_EQ(Chart.DataX(point, set), x(point, set) + static_cast<float>(set - 1) * 500.0F);
}

// The third of three alternating sets has no partner.
TEST_F(ShiftDataTest, ASetWithoutAPartnerStays) {
    GraphSpec spec = Begin(GraphTypes::XYPlot, PlotStyles::Alternating);
    Plot(spec, Table({{1, 2}, {1, 2}, {1, 2}}), Table({{1, 2}, {2, 3}, {3, 4}}));
    Accept(SeparateY, [] { Variable({"5"}); });
    EXPECT_EQ(Chart.DataY(1, 1), 6.0F);
    EXPECT_EQ(Chart.DataY(1, 2), 7.0F);
    EXPECT_EQ(Chart.DataY(1, 3), 3.0F);
}

TEST_F(ShiftDataTest, LastZoomLeadsBackToAllOfTheShiftedSets) {
    const ChartScale before = PresentScale();
    ZoomTo({1.2F, 1.8F, 0.2F, 0.4F});
    Accept(SeparateY, [] { Constant("100"); });
    EXPECT_EQ(PresentScale().XMin, 1.2F); // along X the zoom stands
    DoLastZoom();
    EXPECT_EQ(PresentScale().XMin, before.XMin);
    EXPECT_EQ(PresentScale().XMax, before.XMax);
    EXPECT_LE(PresentScale().YMin, 0.1F);
    EXPECT_GE(PresentScale().YMax, 202.0F);
}

TEST_F(ShiftDataTest, AManualScaleIsFoundAfresh) {
    GraphSpec spec = Begin();
    Pin(spec.AxisY1, 0, 1, 0.1F);
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{0, 1}, {0, 1}}));
    Accept(SeparateY, [] { Constant("3"); });
    EXPECT_GE(Chart.Spec.AxisY1.Max, 4.0F);
}

// 0.1 and 0.7 have no end in binary, so that (v + s) - s in singles is not v.
TEST_F(ShiftDataTest, UpAndDownAgainIsNothing) {
    const SetTable before = Chart.DataY;
    Accept(SeparateY, [] { Constant("123.456"); });
    EXPECT_FALSE(Chart.DataY == before);
    Accept(SeparateY, [] { Constant("-123.456"); });
    EXPECT_TRUE(Chart.DataY == before);
    EXPECT_FALSE(IsSeparated(SeparateModes::Both));
}

TEST_F(ShiftDataTest, AlongBothAxesUpAndDownAgainIsNothing) {
    const SetTable x = Chart.DataX;
    const SetTable y = Chart.DataY;
    Accept(SeparateBoth, [] { Constant("123.456"); });
    EXPECT_FALSE(Chart.DataX == x || Chart.DataY == y);
    Accept(SeparateBoth, [] { Constant("-123.456"); });
    EXPECT_TRUE(Chart.DataX == x && Chart.DataY == y);
    EXPECT_FALSE(IsSeparated(SeparateModes::Both));
}

TEST_F(ShiftDataTest, WhatWasAddedIsTakenBackAtOnce) {
    const SetTable x = Chart.DataX;
    const SetTable y = Chart.DataY;
    Accept(SeparateY, [] { Constant("0.3"); });
    Accept(SeparateBoth, [] { Constant("0.7"); });
    Outside.ExpectModal(ShiftDataName, [this] {
        EXPECT_TRUE(Form.TakeBackButton.Enabled);
        ShiftDataTakeBackButton();
    });
    SeparateY();
    EXPECT_TRUE(Chart.DataY == y);
    EXPECT_FALSE(Chart.DataX == x); // along X they stay
    TakeBackSeparation(SeparateModes::Both);
    EXPECT_TRUE(Chart.DataX == x);
}

TEST_F(ShiftDataTest, TheOptionOfALogarithmIsOffWhileSetsStandShifted) {
    OfferSpecialOption(1, "Convert Y Scale to Natural Log", [] {});
    Accept(SeparateX, [] { Constant("1"); });
    EXPECT_TRUE(Charts.SpecialOpts[1].Enabled);
    Accept(SeparateY, [] { Constant("1"); });
    EXPECT_FALSE(Charts.SpecialOpts[1].Enabled);
    TakeBackSeparation(SeparateModes::AlongY);
    EXPECT_TRUE(Charts.SpecialOpts[1].Enabled);
}

// Small pictures and reports borrow the chart and give it back.
TEST_F(ShiftDataTest, AnotherGraphDrawnInBetweenLeavesTheWayBack) {
    const SetTable before = Chart.DataY;
    Accept(SeparateY, [] { Constant("0.3"); });
    const ChartModule kept = Chart;
    GraphSpec spec = Begin();
    Plot(spec, Table({{1, 2}}), Table({{5, 6}}));
    Chart = kept;
    TakeBackSeparation(SeparateModes::Both);
    EXPECT_TRUE(Chart.DataY == before);
}

TEST_F(ShiftDataTest, ANewGraphIsNotShifted) {
    Accept(SeparateY, [] { Constant("1"); });
    GraphSpec spec = Begin();
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{5, 6}, {7, 8}}));
    EXPECT_FALSE(IsSeparated(SeparateModes::Both));
    EXPECT_EQ(Chart.DataY(1, 1), 5.0F);
}

TEST_F(ShiftDataTest, CancelAndKeys) {
    const SetTable before = Chart.DataY;
    Outside.ExpectModal(ShiftDataName, [this] {
        Constant("1");
        ShiftDataKeyPress(Form.ValueInput, 27);
        EXPECT_FALSE(Form.State.Shown);
    });
    SeparateY();
    EXPECT_TRUE(Chart.DataY == before);
    Outside.ExpectModal(ShiftDataName, [this] {
        Constant("1");
        ShiftDataKeyPress(Form.ValueInput, 13);
        EXPECT_FALSE(Form.State.Shown);
    });
    SeparateY();
    EXPECT_FALSE(Chart.DataY == before);
}

TEST_F(ShiftDataTest, FieldsOfTheOtherWaysAreClosed) {
    LoadShiftData();
    ShiftDataClick(ShiftBy::Variable);
    EXPECT_TRUE(Form.ValueBox.Enabled && Form.SetNum.Enabled);
    EXPECT_FALSE(Form.ValueInput.Enabled || Form.PercentInput.Enabled);
    ShiftDataClick(ShiftBy::Constant);
    EXPECT_TRUE(Form.ValueInput.Enabled);
    EXPECT_FALSE(Form.ValueBox.Enabled || Form.SetNum.Enabled || Form.PercentInput.Enabled);
}

// Percentages of a logarithmic scale are of its decades, and offsets are read as what is added.
TEST_F(ShiftDataTest, OnALogarithmicScaleOffsetsAreLogarithms) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    Plot(spec, Table({{1}, {1}}), Table({{100}, {100}}));
    Accept(SeparateY, [] { Variable({"0", "1"}); });
    EXPECT_EQ(Chart.DataY(1, 2), 3.0F); // 1000
    LoadShiftData();
    EXPECT_EQ(Form.SetNum.Items[1], "2 - 1.00");
    EXPECT_NE(Form.Note.Text.find("logarithms"), std::string::npos);
}

} // namespace
} // namespace Quillon
