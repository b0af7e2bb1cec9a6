// The form of an axis: what it shows, refuses and brings into the graph, and scales that change their kind.
#include "chart/dialogs/AxisOptsForm.h"

#include "ChartBench.h"
#include "chart/dialogs/LineWidthForm.h"
#include "chart/hand/ScaleType.h"
#include "tests/support/ScriptedPrinter.h"

namespace Quillon {
namespace {

constexpr const char* ToLog =
    "Changing from linear to log scales is likely to produce undesirable axis limits and tic intervals.  A "
    "rescaling using AutoRange is advised.  Rescale now?";
constexpr const char* ToLinear =
    "Changing from log to linear scales is likely to produce undesirable axis limits and tic intervals.  A "
    "rescaling using AutoRange is advised.  Rescale now?";

class AxisOptsTest : public ChartBench {
protected:
    AxisOptsTest() {
        GraphSpec spec = Begin();
        Pin(spec.AxisX1, 1, 100, 20);
        spec.AxisX1.Title = {"Radius", 19, 0.03F, 7, 1};
        spec.AxisX1.Decimals = 1;
        spec.AxisY1.Title.Text = "Signal";
        Plot(spec, Table({{1, 10, 100}}), Table({{0.3F, 2.5F, 7.1F}}));
    }
    // Opens the form by a command, does something on it and presses OK.
    void Accept(void (*command)(), std::function<void()> during) {
        Outside.ExpectModal(AxisOptsFormName, [during] {
            during();
            AxisOptsOkButton();
            EXPECT_FALSE(AxisOptsForm.State.Shown);
        });
        command();
    }
    void ChooseLog10(const char* question, BoxAnswer answer) {
        Outside.ExpectMessage(question, answer);
        AxisOptsTypeClick(ScaleTypes::Logarithmic, 10.0F);
    }
    void ChooseLinear(BoxAnswer answer) {
        Outside.ExpectMessage(ToLinear, answer);
        AxisOptsTypeClick(ScaleTypes::Linear, 10.0F);
    }
    AxisOptsFormRecord& Form = AxisOptsForm;
};

TEST_F(AxisOptsTest, ShowsTheBottomAxisInTheFormatOfItsLabels) {
    LoadAxisOptsForm(true);
    EXPECT_EQ(Form.State.Caption, "Horizontal Axis Options");
    EXPECT_EQ(Form.SwapButton.Text, "Edit &Vertical");
    EXPECT_EQ(Form.MinScale.Text, "1.00"); // one digit more than the labels
    EXPECT_EQ(Form.MaxScale.Text, "100.00");
    EXPECT_EQ(Form.FirstTicInput.Text, "1.00");
    EXPECT_EQ(Form.IntervalInput.Text, "20.00");
    EXPECT_EQ(Form.Label1.Text, "Tic Interval");
    EXPECT_EQ(Form.TicDecimalInput.Text, "1");
    EXPECT_EQ(Form.TitleSizeInput.Text, ".030");
    EXPECT_EQ(Form.AxisTitleInput.Text, "Radius");
    EXPECT_TRUE(Form.Linear.Value != 0 && Form.ScaleManual.Value != 0);
    EXPECT_TRUE(Form.MarkandLabel.Value != 0 && Form.DecFormat.Value != 0);
    EXPECT_EQ(Form.TitleFontBox.Value, 9);
    EXPECT_EQ(Form.TitleColor.Value, 7);
    EXPECT_FALSE(Form.Note.Visible);
    AxisOptsFormatClick(TicFormats::Exponential);
    EXPECT_EQ(Form.MaxScale.Text, "1.00E+2");
}

TEST_F(AxisOptsTest, ValuesComeThroughTheFormBitForBit) {
    GraphSpec spec = Chart.Spec;
    spec.AxisX1.Min = 0.123456789F;
    spec.AxisX1.TicInterval = 3.3333333F;
    spec.AxisX1.FirstTic = 1.0F / 3.0F;
    spec.AxisX1.LabelSize = 0.0211111F;
    spec.AxisX1.Title.Size = 0.0333333F;
    spec.AxisX1.Color = 77; // beyond the table
    Chart.Spec = spec;
    Accept(EditHorz, [] { AxisOptsSwapButton(); });
    EXPECT_EQ(Chart.Spec, spec);
    EXPECT_EQ(AxisChanged, 0);
}

TEST_F(AxisOptsTest, BothAxesAreTakenByOneOk) {
    Accept(EditHorz, [this] {
        Form.AxisTitleInput.Text = "r";
        Form.MaxScale.Text = "50";
        AxisOptsGridClick();
        AxisOptsSwapButton();
        EXPECT_EQ(Form.State.Caption, "Vertical Axis Options");
        EXPECT_EQ(Form.SwapButton.Text, "Edit &Horizontal");
        EXPECT_EQ(Form.AxisTitleInput.Text, "Signal");
        AxisOptsTicModeClick(TicModes::MarksOnly);
        AxisOptsListClick(Form.AxisColor, 3);
    });
    EXPECT_EQ(AxisChanged, -1);
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "r");
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 50.0F);
    EXPECT_EQ(Chart.Spec.AxisX2.Max, 50.0F); // handed on
    EXPECT_EQ(Chart.Spec.AxisX1.Grid, 0);
    EXPECT_EQ(Chart.Spec.AxisY1.TicMode, TicModes::MarksOnly);
    EXPECT_EQ(Chart.Spec.AxisY1.Color, 3);
}

TEST_F(AxisOptsTest, CancelLeavesAll) {
    const GraphSpec before = Chart.Spec;
    Outside.ExpectModal(AxisOptsFormName, [this] {
        Form.AxisTitleInput.Text = "r";
        AxisOptsSwapButton();
        AxisOptsTicModeClick(TicModes::NoTics);
        AxisOptsNumberKeyPress(Form.MinScale, 27);
        EXPECT_FALSE(Form.State.Shown);
    });
    EditHorz();
    EXPECT_EQ(Chart.Spec, before);
}

TEST_F(AxisOptsTest, OtherDigitsLeaveWhatWasEnteredElsewhere) {
    Accept(EditHorz, [this] {
        Form.AxisTitleInput.Text = "r";
        AxisOptsListClick(Form.TitleColor, 4);
        AxisOptsListClick(Form.AxisColor, 3);
        AxisOptsListClick(Form.LabelFontBox, 2);
        Form.MaxScale.Text = "50"; // typed, and not left yet
        Form.TicDecimalInput.Text = "3";
        AxisOptsNumberLostFocus(Form.TicDecimalInput);
        EXPECT_EQ(Form.AxisTitleInput.Text, "r");
        EXPECT_EQ(Form.TitleColor.Value, 4);
        EXPECT_EQ(Form.AxisColor.Value, 3);
        EXPECT_EQ(Form.LabelFontBox.Value, 2);
        EXPECT_EQ(Form.MaxScale.Text, "50");
        EXPECT_EQ(Form.MinScale.Text, "1.0000"); // in the new format
        EXPECT_EQ(Form.IntervalInput.Text, "20.0000");
    });
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "r");
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Color, 4);
    EXPECT_EQ(Chart.Spec.AxisX1.Color, 3);
    EXPECT_EQ(Chart.Spec.AxisX1.LabelFont, 2);
    EXPECT_EQ(Chart.Spec.AxisX1.Decimals, 3);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 50.0F);
}

TEST_F(AxisOptsTest, ALimitThatIsTypedMakesTheScaleManual) {
    Accept(EditVert, [this] {
        EXPECT_TRUE(Form.ScaleAutorange.Value != 0);
        Form.MaxScale.Text = "20";
        AxisOptsNumberLostFocus(Form.MaxScale);
        EXPECT_TRUE(Form.ScaleManual.Value != 0 && Form.ScaleAutorange.Value == 0);
    });
    EXPECT_EQ(Chart.Spec.AxisY1.Max, 20.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.ScaleMode, ScaleModes::Manual);
}

TEST_F(AxisOptsTest, AutorangeAfterAZoomRestoresTheFullRange) {
    const float full = Chart.Spec.AxisY1.Max;
    ZoomTo({2, 8, 1, 3});
    ASSERT_EQ(Chart.Spec.AxisY1.ScaleMode, ScaleModes::Zoomed);
    Accept(EditVert, [this] {
        EXPECT_TRUE(Form.ScaleManual.Value != 0);
        AxisOptsModeClick(ScaleModes::Autorange);
    });
    EXPECT_EQ(Chart.Spec.AxisY1.Max, full);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Zoomed); // untouched
}

TEST_F(AxisOptsTest, WhatCannotBeIsRefusedWithItsReason) {
    LoadAxisOptsForm(true);
    const auto refused = [this](Control& field, const char* typed, const BoxRequest& message) {
        const std::string before = field.Text;
        field.Text = typed;
        Outside.ExpectMessage(message, BoxAnswer::Ok);
        AxisOptsNumberLostFocus(field);
        EXPECT_EQ(Form.State.FocusOn, &field);
        Outside.ExpectMessage(message, BoxAnswer::Ok);
        AxisOptsOkButton();
        EXPECT_TRUE(Form.State.Shown);
        field.Text = before;
    };
    const auto said = [](const char* text) { return BoxRequest{text, "Charts Module", BoxIcon::Warning}; };
    refused(Form.IntervalInput, "0", said("The tic interval cannot be zero!"));
    refused(Form.TicDecimalInput, "10", said("Decimals must be from 0 to 9"));
    refused(Form.TitleSizeInput, "1", said("Input must be between 0 and 1"));
    refused(Form.TicLabelSizeInput, "0", said("Input must be between 0 and 1"));
    ChooseLog10(ToLog, BoxAnswer::No);
    refused(Form.IntervalInput, "3",
            said("For Log axes number of minor tics per decade must be 0, 1, 2, 4, or 8"));
    refused(Form.MinScale, "0", said("On a logarithmic scale this must be greater than 0"));
    Form.MinScale.Text = "100";
    Outside.ExpectMessage(said("The ends of the scale must differ"), BoxAnswer::Ok);
    AxisOptsOkButton();
    EXPECT_TRUE(Form.State.Shown);
}

TEST_F(AxisOptsTest, LimitsOfALogarithmicAxisAreNumbers) {
    Accept(EditHorz, [this] {
        ChooseLog10(ToLog, BoxAnswer::No);
        EXPECT_EQ(Form.Label1.Text, "Tics/Decade 0,1,2,4,8");
        EXPECT_FALSE(Form.Note.Visible);
        EXPECT_EQ(Form.MinScale.Text, "1.0");
        EXPECT_EQ(Form.MaxScale.Text, "100.0");
        Form.MaxScale.Text = "1000";
        Form.IntervalInput.Text = "8";
    });
    const GraphAxis& axis = Chart.Spec.AxisX1;
    EXPECT_EQ(axis.Min, 0.0F);
    EXPECT_EQ(axis.Max, 3.0F);
    EXPECT_EQ(axis.TicInterval, 8.0F);
    EXPECT_EQ(Chart.Spec.AxisX2.ScaleType, ScaleTypes::Logarithmic);
    for (const auto& [point, logarithm] : {std::pair{1L, 0.0F}, {2L, 1.0F}, {3L, 2.0F}})
        EXPECT_EQ(Chart.DataX(point, 1), logarithm);
}

TEST_F(AxisOptsTest, LimitsOfANaturalLogarithmAreNumbersAndItsTicsLogarithms) {
    Accept(EditHorz, [this] {
        Outside.ExpectMessage(ToLog, BoxAnswer::No);
        AxisOptsTypeClick(ScaleTypes::Logarithmic, NaturalBase);
        EXPECT_EQ(Form.MinScale.Text, "1.00");
        EXPECT_EQ(Form.MaxScale.Text, "100.00");
        EXPECT_EQ(Form.FirstTicLabel.Text, "&First Tic, as Ln:");
        EXPECT_EQ(Form.FirstTicInput.Text, "0.00");
        EXPECT_EQ(Form.IntervalInput.Text, "1.00"); // whole logarithms over a scale of 4.6
        Form.MaxScale.Text = "1000";
        Form.FirstTicInput.Text = "0.5";
    });
    EXPECT_EQ(Chart.Spec.AxisX1.Min, 0.0F);
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, std::log(1000.0F));
    EXPECT_EQ(Chart.Spec.AxisX1.FirstTic, 0.5F);
    LoadAxisOptsForm(true);
    Outside.ExpectMessage("On a logarithmic scale this must be greater than 0");
    Form.MinScale.Text = "-1";
    AxisOptsNumberLostFocus(Form.MinScale);
}

// One digit behind the point suits the labels -6.9 to 0, not the 0.001 that the scale begins at.
TEST_F(AxisOptsTest, ALimitThatTheFormatOfTheLabelsCutsDownIsShownInExponents) {
    GraphSpec spec = Begin();
    Pin(spec.AxisX1, 0.001F, 1, 0.1F);
    Plot(spec, Table({{0.002F, 0.5F}}), Table({{1, 2}}));
    LoadAxisOptsForm(true);
    Outside.ExpectMessage(ToLog, BoxAnswer::No);
    AxisOptsTypeClick(ScaleTypes::Logarithmic, NaturalBase);
    EXPECT_EQ(Form.MinScale.Text, "1.000E-3");
    EXPECT_EQ(Form.MaxScale.Text, "1.00");
}

TEST_F(AxisOptsTest, TicsThatAreTypedMakeTheScaleManualAndStand) {
    Accept(EditVert, [this] {
        Form.IntervalInput.Text = "0.75";
        AxisOptsNumberLostFocus(Form.IntervalInput);
        EXPECT_TRUE(Form.ScaleManual.Value != 0 && Form.ScaleAutorange.Value == 0);
    });
    EXPECT_EQ(Chart.Spec.AxisY1.TicInterval, 0.75F);
    DoAutoScale();
    Accept(EditVert, [this] { Form.FirstTicInput.Text = "0.25"; });
    EXPECT_EQ(Chart.Spec.AxisY1.FirstTic, 0.25F);
    DoAutoScale();
    Accept(EditVert, [this] { Form.TicDecimalInput.Text = "4"; });
    EXPECT_EQ(Chart.Spec.AxisY1.Decimals, 4);
    DoAutoScale();
    Accept(EditVert, [this] {
        Form.IntervalInput.Text = "0.75";
        AxisOptsNumberLostFocus(Form.IntervalInput);
        AxisOptsModeClick(ScaleModes::Autorange); // what was chosen last counts
    });
    EXPECT_NE(Chart.Spec.AxisY1.TicInterval, 0.75F);
}

// From 100000 on a scale that is found from the data has exponential labels.
TEST_F(AxisOptsTest, AFormatThatTheDataWouldTakeBackMakesTheScaleManual) {
    GraphSpec spec = Begin();
    Plot(spec, Table({{1, 2}}), Table({{100, 200000}}));
    ASSERT_EQ(Chart.Spec.AxisY1.TicFormat, TicFormats::Exponential);
    Accept(EditVert, [this] {
        AxisOptsFormatClick(TicFormats::Decimal);
        EXPECT_TRUE(Form.ScaleManual.Value != 0);
    });
    EXPECT_EQ(Chart.Spec.AxisY1.TicFormat, TicFormats::Decimal);
    Accept(EditHorz, [] { AxisOptsModeClick(ScaleModes::Autorange); });
    Accept(EditHorz, [this] {
        AxisOptsFormatClick(TicFormats::Exponential);
        EXPECT_TRUE(Form.ScaleAutorange.Value != 0);
    });
    EXPECT_EQ(Chart.Spec.AxisX1.TicFormat, TicFormats::Exponential);
}

TEST_F(AxisOptsTest, AFieldThatIsRefusedKeepsTheFormAtItsAxis) {
    LoadAxisOptsForm(true);
    Form.IntervalInput.Text = "0";
    Outside.ExpectMessage("The tic interval cannot be zero!");
    AxisOptsSwapButton();
    EXPECT_EQ(Form.State.Caption, "Horizontal Axis Options");
    EXPECT_EQ(Form.IntervalInput.Text, "0");
    EXPECT_EQ(Form.State.FocusOn, &Form.IntervalInput);
}

TEST_F(AxisOptsTest, ThreeMinorTicsAreShownAsOne) {
    GraphSpec spec = Begin();
    spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    Pin(spec.AxisX1, 0, 2, 3);
    Plot(spec, Table({{1, 10, 100}}), Table({{1, 2, 3}}));
    Accept(EditHorz, [this] { EXPECT_EQ(Form.IntervalInput.Text, "1"); });
    EXPECT_EQ(Chart.Spec.AxisX1.TicInterval, 3.0F); // not touched
}

TEST_F(AxisOptsTest, ARescaleIsAnnouncedAndDone) {
    Accept(EditHorz, [this] {
        ChooseLog10(ToLog, BoxAnswer::Yes);
        EXPECT_TRUE(Form.Note.Visible);
        EXPECT_EQ(Form.Note.Text,
                  "Scale min, max, tic intervals, etc. will be updated after you exit this form");
        EXPECT_TRUE(Form.ScaleAutorange.Value != 0);
    });
    EXPECT_EQ(Chart.Spec.AxisX1.Min, 0.0F);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 2.0F);
}

TEST_F(AxisOptsTest, NaturalLogarithmsPutThePrefixBeforeTheTitleAndTakeItOff) {
    Accept(EditVert, [this] {
        Outside.ExpectMessage(ToLog, BoxAnswer::Yes);
        AxisOptsTypeClick(ScaleTypes::Logarithmic, NaturalBase);
        EXPECT_EQ(Form.AxisTitleInput.Text, "Ln (Signal)");
        EXPECT_EQ(Form.Label1.Text, "Tic Interval");
    });
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Ln (Signal)");
    for (long point = 1; point <= 3; ++point) {
        const float raw = std::array{0.3F, 2.5F, 7.1F}[static_cast<std::size_t>(point - 1)];
        EXPECT_FLOAT_EQ(Chart.DataY(point, 1), std::log(raw));
    }
    Accept(EditVert, [this] {
        AxisOptsTypeClick(ScaleTypes::Logarithmic, 10.0F); // from one logarithm to the other: no question
        EXPECT_EQ(Form.AxisTitleInput.Text, "Signal");
    });
    EXPECT_FLOAT_EQ(Chart.DataY(2, 1), std::log10(2.5F));
}

// Eighty characters leave no room for the brackets: the end gives way to them, and comes back.
TEST_F(AxisOptsTest, ATitleOfFullLengthComesBackToItsLastCharacter) {
    const std::string title = std::string(78, 'x') + "yz";
    Chart.Spec.AxisY1.Title.Text = title;
    const auto toNatural = [this] {
        Outside.ExpectMessage(ToLog, BoxAnswer::Yes);
        AxisOptsTypeClick(ScaleTypes::Logarithmic, NaturalBase);
    };
    Accept(EditVert, toNatural);
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Ln (" + std::string(75, 'x') + ")");
    Accept(EditVert, [this] { ChooseLinear(BoxAnswer::Yes); });
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), title);
    Accept(EditVert, [this, &title, &toNatural] { // within one form
        toNatural();
        ChooseLinear(BoxAnswer::No);
        EXPECT_EQ(Form.AxisTitleInput.Text, title);
    });
    Accept(EditVert, toNatural);
    Accept(EditVert, [this] { // an edited one keeps the edit
        Form.AxisTitleInput.Text = "Ln (Signal)";
        ChooseLinear(BoxAnswer::Yes);
    });
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Signal");
}

TEST_F(AxisOptsTest, ATitleOfLogarithmsOnALinearScaleComesBackWithItsBrackets) {
    Chart.Spec.AxisY1.Title.Text = "Ln (A)";
    Accept(EditVert, [this] {
        Outside.ExpectMessage(ToLog, BoxAnswer::Yes);
        AxisOptsTypeClick(ScaleTypes::Logarithmic, NaturalBase);
        EXPECT_EQ(Form.AxisTitleInput.Text, "Ln (Ln (A))");
    });
    Accept(EditVert, [this] { ChooseLinear(BoxAnswer::Yes); });
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Ln (A)");
}

// Zero and what lies below have no logarithm; the way back brings them back all the same.
TEST_F(AxisOptsTest, LinearToLogAndBackLosesNothing) {
    GraphSpec spec = Begin();
    Plot(spec, Table({{1, 2, 3, 4}}), Table({{0.1F, 0, -3, 0.7F}}));
    const SetTable before = Chart.DataY;
    Accept(EditVert, [this] {
        ChooseLog10((std::string(ToLog) + "\n\n2 values are not positive and will not be shown.").c_str(),
                    BoxAnswer::Yes);
    });
    EXPECT_EQ(Chart.DataY(2, 1), MissingValue);
    EXPECT_EQ(Chart.DataY(3, 1), MissingValue);
    EXPECT_FLOAT_EQ(Chart.DataY(1, 1), -1.0F);
    Accept(EditVert, [this] { ChooseLinear(BoxAnswer::Yes); });
    EXPECT_TRUE(Chart.DataY == before);
}

TEST_F(AxisOptsTest, AGraphMadeWithLogarithmsGoesBackToTheCallersValues) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    Plot(spec, Table({{1, 2, 3}}), Table({{0.1F, -2, 0.7F}}));
    ASSERT_EQ(Chart.DataY(2, 1), MissingValue);
    Accept(EditVert, [this] { ChooseLinear(BoxAnswer::Yes); });
    EXPECT_EQ(Chart.DataY(1, 1), 0.1F);
    EXPECT_EQ(Chart.DataY(2, 1), -2.0F);
    EXPECT_EQ(Chart.DataY(3, 1), 0.7F);
}

TEST_F(AxisOptsTest, StoredValuesThatOthersHaveChangedAreWorkedBack) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    Plot(spec, Table({{1, 2}}), Table({{10, 100}}));
    Chart.DataY(1, 1) = 3.0F;
    Accept(EditVert, [this] { ChooseLinear(BoxAnswer::Yes); });
    EXPECT_EQ(Chart.DataY(1, 1), 1000.0F);
    EXPECT_EQ(Chart.DataY(2, 1), 100.0F);
}

TEST_F(AxisOptsTest, BackWithinTheFormBringsTheScaleBack) {
    const GraphSpec before = Chart.Spec;
    Accept(EditHorz, [this] {
        ChooseLog10(ToLog, BoxAnswer::No);
        ChooseLinear(BoxAnswer::No);
    });
    EXPECT_EQ(Chart.Spec, before);
}

// Loaded in thousands: the logarithms are those of the numbers that were handed over.
TEST_F(AxisOptsTest, ADivisorOnLoadingIsNoPartOfTheLogarithm) {
    GraphSpec spec = Begin();
    Pin(spec.AxisY1, 0, 10, 1);
    spec.AxisY1.Factor = 1000;
    spec.AxisY1.FactorName = "Thousands";
    Plot(spec, Table({{1, 2}}), Table({{1000, 10000}}));
    ASSERT_EQ(Chart.DataY(2, 1), 10.0F);
    Accept(EditVert, [this] { ChooseLog10(ToLog, BoxAnswer::Yes); });
    EXPECT_EQ(Chart.DataY(1, 1), 3.0F);
    EXPECT_EQ(Chart.DataY(2, 1), 4.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.Factor, 1.0F);
    EXPECT_TRUE(Chart.Spec.AxisY1.FactorName.Empty());
    Accept(EditVert, [this] { ChooseLinear(BoxAnswer::Yes); });
    EXPECT_EQ(Chart.DataY(2, 1), 10000.0F);
}

TEST_F(AxisOptsTest, PrescaledKeepsItsRange) {
    Accept(EditHorz, [] { AxisOptsModeClick(ScaleModes::Prescaled); });
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Prescaled);
}

TEST_F(AxisOptsTest, TheKindOfScaleStandsWhileSetsAreShiftedOrMarkersStand) {
    Chart.SetShift.Recreate(1, 1.0F);
    Chart.SeparateMode = SeparateModes::AlongY;
    ApplySeparation();
    LoadAxisOptsForm(false);
    EXPECT_FALSE(Form.LogBase10.Enabled);
    LoadAxisOptsForm(true);
    EXPECT_TRUE(Form.LogBase10.Enabled);
    PlaceMarkers(2, 3);
    LoadAxisOptsForm(true);
    EXPECT_FALSE(Form.LogBase10.Enabled);
}

TEST_F(AxisOptsTest, NotesAndMarksStayAtTheirPlaces) {
    GraphNote note;
    note.X = 10;
    GraphMark mark;
    mark.X1 = 1;
    mark.X2 = 100;
    Chart.Notes = {note};
    Chart.Marks = {mark};
    Accept(EditHorz, [this] { ChooseLog10(ToLog, BoxAnswer::Yes); });
    EXPECT_EQ(Chart.Notes[0].X, 1.0F);
    EXPECT_EQ(Chart.Marks[0].X1, 0.0F);
    EXPECT_EQ(Chart.Marks[0].X2, 2.0F);
}

// --- widths of lines and size of symbols
// ---------------------------------------------------------------------

class LineWidthTest : public AxisOptsTest {};

TEST_F(LineWidthTest, TellsWhatAPixelIs) {
    LoadLineWidthForm();
    EXPECT_EQ(LineWidthForm.State.Caption, "Set Line Thickness");
    EXPECT_EQ(
        LineWidthForm.Explanation.Text,
        "Input the desired line width in units of twips (twentieths of a point = 1/1440 inch)\n\nOn the "
        "screen 1 pixel equals 15 twips.  On the printer 1 pixel equals 2.5 twips.");
}

// A large sheet has fewer units to the inch: A0, 33.1 x 46.8 inches, is 57.3 along its diagonal, which 30000
// units at 523 to the inch cover.
TEST_F(LineWidthTest, APixelOfThePrinterIsThatOfTheSheetThatLiesInIt) {
    ScriptedPrinter printer;
    printer.Now.Name = "plotter";
    printer.Now.Page.Width = 33.1;
    printer.Now.Page.Height = 46.8;
    LoadLineWidthForm();
    EXPECT_TRUE(LineWidthForm.Explanation.Text.ends_with("On the printer 1 pixel equals 2.75 twips."));
}

// The graph at hand may have come from a file, with widths of its own.
TEST_F(LineWidthTest, OkWithoutAChangeLeavesTheStyleOfTheRun) {
    Chart.Spec.LineWidth = 40;
    Chart.Spec.AxisX1.AxisWidth = 50;
    const ChartStyle before = Chart.Style;
    Outside.ExpectModal(LineWidthFormName, [] {
        LineWidthForm.Width[TicsWidth].Text = "20";
        LineWidthOkButton();
    });
    DoLineWidth();
    EXPECT_EQ(Chart.Style.LineWidth, before.LineWidth);
    EXPECT_EQ(Chart.Style.AxisWidth, before.AxisWidth);
    EXPECT_EQ(Chart.Style.TicWidth, 20.0F);
}

TEST_F(LineWidthTest, OkStoresAllFour) {
    Outside.ExpectModal(LineWidthFormName, [] {
        EXPECT_EQ(LineWidthForm.Width[DataWidth].Text, "15");
        EXPECT_EQ(LineWidthForm.Width[SymbolsWidth].Text, "7");
        const char* typed[] = {"30", "45", "20", "12.5"};
        for (std::size_t i = 0; i < WidthCount; ++i)
            LineWidthForm.Width[i].Text = typed[i];
        LineWidthOkButton();
    });
    DoLineWidth();
    EXPECT_EQ(Chart.Spec.LineWidth, 30);
    EXPECT_EQ(Chart.Style.LineWidth, 30.0F);
    EXPECT_EQ(Chart.Style.SymbolWidth, 12.5F);
    for (const GraphAxis* axis :
         {&Chart.Spec.AxisX1, &Chart.Spec.AxisX2, &Chart.Spec.AxisY1, &Chart.Spec.AxisY2}) {
        EXPECT_EQ(axis->AxisWidth, 45);
        EXPECT_EQ(axis->TicWidth, 20);
    }
    EXPECT_EQ(DataItems("polyline").back().Pen.Width, 2); // 30 twips of 15
}

TEST_F(LineWidthTest, AWidthBeyondAnInchIsRefused) {
    Outside.ExpectModal(LineWidthFormName, [this] {
        LineWidthForm.Width[TicsWidth].Text = "1441";
        Outside.ExpectMessage("Input must be between 0 and 1440");
        LineWidthOkButton();
        EXPECT_TRUE(LineWidthForm.State.Shown);
        EXPECT_EQ(LineWidthForm.State.FocusOn, &LineWidthForm.Width[TicsWidth]);
        LineWidthKeyPress(TicsWidth, 27);
    });
    const GraphSpec before = Chart.Spec;
    DoLineWidth();
    EXPECT_EQ(Chart.Spec, before);
}

TEST_F(LineWidthTest, TheSizeOfSymbolsIsAFractionThatFilesKnow) {
    const char* prompt = "Input the desired symbol size as a fraction of the diagonal across the graph axes.";
    Outside.ExpectInput(prompt, "0.02");
    ChangeSymbolSize();
    EXPECT_EQ(Chart.Style.SymbolSize, 0.02F);
    for (const char* typed : {"0.11", "-1", "x"}) {
        Outside.ExpectInput(prompt, typed);
        Outside.ExpectMessage("Input must be between 0 and 0.1");
        ChangeSymbolSize();
        EXPECT_EQ(Chart.Style.SymbolSize, 0.02F);
    }
    Outside.ExpectInputCancelled(prompt);
    ChangeSymbolSize();
    EXPECT_EQ(Chart.Style.SymbolSize, 0.02F);
}

} // namespace
} // namespace Quillon
