// The form of an axis.
#include "chart/dialogs/AxisOptsForm.h"

#include "chart/dialogs/AxisFields.h"
#include "chart/dialogs/OptionLists.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/hand/ScaleType.h"
#include "chart/records/ChartState.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Tics.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace Quillon {

AxisOptsFormRecord AxisOptsForm;

namespace {

// Both axes, the bottom one first: as the form found them, and as it leaves the one that is not in hand.
std::array<GraphAxis, 2> FoundAxes, EditedAxes;
std::array<LnTitles, 2> Titles; // of the same
bool Horizontal = true;
bool AxesAccepted = false;

std::size_t InHand() {
    return Horizontal ? 0 : 1;
}

bool IsCategory() {
    return (Horizontal ? Chart.State.KindX : Chart.State.KindY) == AxisKinds::Category;
}

// Markers stand at values of the scale, and shifted sets have no logarithm.
bool TypeMayChange() {
    return !IsCategory() && Charts.Markers.empty() &&
           !IsShifted(Horizontal ? Chart.Columns.X : Chart.Columns.Y);
}

void FillScaleCaptions() {
    AxisOptsFormRecord& form = AxisOptsForm;
    form.ScaleFrame = Captioned("Scale");
    form.MinLabel = Captioned("Mi&nimum:");
    form.MaxLabel = Captioned("Ma&ximum:");
    form.FirstTicLabel = Captioned("&First Tic:");
    form.GridCheck = Captioned("&Grid Lines");
    form.ModeFrame = Captioned("Limits");
    form.ScaleManual = Captioned("&Manual", "The limits and tics that stand here");
    form.Prescaled = Captioned("&Prescaled", "Found from the data, a power of 1000 taken out of the labels");
    form.ScaleAutorange = Captioned("A&utorange", "Found from the data");
    form.TypeFrame = Captioned("Scale Type");
    form.Linear = Captioned("&Linear");
    form.LogBase10 = Captioned("Log &Base 10");
    form.NaturalLog = Captioned("Natu&ral Log");
}

void FillLabelCaptions() {
    AxisOptsFormRecord& form = AxisOptsForm;
    form.TicFrame = Captioned("Tics and Labels");
    form.NoTics = Captioned("N&o Tics");
    form.MarkandLabel = Captioned("Marks &and Labels");
    form.MarkOnly = Captioned("Mar&ks Only");
    form.DecFormat = Captioned("&Decimal");
    form.ExpFormat = Captioned("&Exponential");
    form.DecimalLabel = Captioned("Digits Behind the Po&int:");
    form.LabelFontLabel = Captioned("Font:");
    form.LabelSizeLabel = Captioned("Size:");
    form.AxisColorLabel = Captioned("&Color:");
    form.TitleFrame = Captioned("Title");
    form.TextLabel = Captioned("&Text:");
    form.TitleFontLabel = Captioned("Font:");
    form.TitleColorLabel = Captioned("Color:");
    form.TitleSizeLabel = Captioned("&Size:");
    form.SizeNote = Captioned(SizeNote());
    form.Note = Captioned("Scale min, max, tic intervals, etc. will be updated after you exit this form");
    form.OkButton = Captioned("OK");
    form.CancelButton = Captioned("Cancel");
}

void SuitControls() {
    AxisOptsFormRecord& form = AxisOptsForm;
    form.State.Caption = Horizontal ? "Horizontal Axis Options" : "Vertical Axis Options";
    form.SwapButton = Captioned(Horizontal ? "Edit &Vertical" : "Edit &Horizontal");
    for (Control* option : {&form.Linear, &form.LogBase10, &form.NaturalLog})
        option->Enabled = TypeMayChange();
    for (Control* field : {&form.MinScale, &form.MaxScale, &form.FirstTicInput, &form.IntervalInput,
                           &form.ScaleManual, &form.Prescaled, &form.ScaleAutorange})
        field->Enabled = !IsCategory();
}

// The note stands while the kind of scale has changed and its limits are to be found.
void ShowNote() {
    AxisOptsForm.Note.Visible =
        EditAxis.ScaleMode == ScaleModes::Autorange && !SameScaleType(EditAxis, FoundAxes[InHand()]);
}

void ShowInHand() {
    SuitControls();
    ShowAxis();
    ShowNote();
    AxisOptsForm.State.FocusOn = &AxisOptsForm.MinScale;
}

// A scale that is found from the data chooses the format of its labels with them, where it has to.
bool FormatWouldChange() {
    GraphAxis found = EditAxis;
    if (!IsCategory()) AutoFormat(found);
    return found.TicFormat != EditAxis.TicFormat;
}

int AxisKeys(int key) {
    if (key == KeyReturn) AxisOptsOkButton();
    if (key == KeyEscape) AxisOptsCancelButton();
    return key;
}

std::string LostText() {
    const long lost = ValuesWithoutLogarithm(Horizontal);
    if (lost == 0) return "";
    return "\n\n" + std::to_string(lost) + (lost == 1 ? " value is" : " values are") +
           " not positive and will not be shown.";
}

// True when the user wants the limits found afresh.
bool AskRescale(bool toLog) {
    const std::string change = toLog ? "linear to log" : "log to linear";
    return AskYesNo("Changing from " + change +
                        " scales is likely to produce undesirable axis limits and tic intervals.  A "
                        "rescaling using AutoRange is advised.  Rescale now?" +
                        (toLog ? LostText() : ""),
                    MessageTitle, BoxAnswer::Yes, BoxIcon::Warning);
}

// Back to the kind that the form has found brings the scale back that belongs to it.
void TakeBackScale() {
    const GraphAxis& found = FoundAxes[InHand()];
    ConvertAxis(EditAxis, found, Titles[InHand()]); // the title
    EditAxis.ScaleMode = found.ScaleMode;
    EditAxis.ScaleType = found.ScaleType;
    EditAxis.LogBase = found.LogBase;
    HandOnScale(found, EditAxis);
}

void ChangeType(const GraphAxis& wanted) {
    const bool wasLog = EditAxis.ScaleType == ScaleTypes::Logarithmic;
    const bool toLog = wanted.ScaleType == ScaleTypes::Logarithmic;
    const bool rescale = wasLog != toLog && AskRescale(toLog);
    if (SameScaleType(wanted, FoundAxes[InHand()]))
        TakeBackScale();
    else
        ConvertAxis(EditAxis, wanted, Titles[InHand()]);
    if (rescale) EditAxis.ScaleMode = ScaleModes::Autorange;
}

// What the second axis of a pair shows is the scale of the first.
void HandOn(const GraphAxis& first, GraphAxis& second) {
    second.ScaleType = first.ScaleType;
    second.LogBase = first.LogBase;
    second.LabelFont = first.LabelFont;
    if (first.ScaleMode == ScaleModes::Manual) second.ScaleMode = ScaleModes::Manual;
    HandOnScale(first, second);
}

void Take(bool alongX, GraphAxis& axis, GraphAxis& second) {
    const GraphAxis& edited = EditedAxes[alongX ? 0 : 1];
    if (edited == axis) return;
    if (!SameScaleType(edited, axis)) {
        ConvertColumns(alongX, axis, edited);
        (alongX ? Chart.Columns.X : Chart.Columns.Y).Titles = Titles[alongX ? 0 : 1];
        ClearZoom();
    }
    axis = edited;
    HandOn(axis, second);
}

void Edit(bool horizontal) {
    if (!GraphMayChange() || Chart.Spec.GraphType == GraphTypes::Pie) return;
    LoadAxisOptsForm(horizontal);
    Host.ShowModal(AxisOptsFormName);
    AxisChanged = Flag(AxesAccepted && EditedAxes != FoundAxes);
    if (AxisChanged == 0) return;
    Take(true, Chart.Spec.AxisX1, Chart.Spec.AxisX2);
    Take(false, Chart.Spec.AxisY1, Chart.Spec.AxisY2);
    SuitSpecialOptions();
    RedrawChart();
}

} // namespace

bool IsMinorTicCount(float count) {
    return count == 0.0F || count == 1.0F || count == 2.0F || count == 4.0F || count == 8.0F;
}

void EditHorz() {
    Edit(true);
}
void EditVert() {
    Edit(false);
}

void LoadAxisOptsForm(bool horizontal) {
    AxisOptsForm = AxisOptsFormRecord{};
    AxesAccepted = false;
    Horizontal = horizontal;
    FoundAxes = EditedAxes = {Chart.Spec.AxisX1, Chart.Spec.AxisY1};
    Titles = {Chart.Columns.X.Titles, Chart.Columns.Y.Titles};
    EditAxis = EditedAxes[InHand()];
    FillScaleCaptions();
    FillLabelCaptions();
    ShowInHand();
    AxisOptsForm.State.Shown = true;
}

void AxisOptsNumberGotFocus(Control& field) {
    NumGotFocus(field);
}

int AxisOptsNumberKeyPress(Control& field, int key) {
    AxisKeys(key);
    return NumKeyPress(field, key);
}

void AxisOptsNumberLostFocus(Control& field) {
    NumLostFocus(field);
    if (AxisOptsForm.State.Shown) TakeAxisField(field);
}

void AxisOptsTitleGotFocus() {
    Control& box = AxisOptsForm.AxisTitleInput;
    box.SelStart = 0;
    box.SelLength = static_cast<std::int32_t>(box.Text.size());
}

int AxisOptsTitleKeyPress(int key) {
    AxisKeys(key);
    return TextKeyPress(AxisOptsForm.AxisTitleInput, key, LongestTitle, ProgramTitle());
}

void AxisOptsTypeClick(std::int16_t scaleType, float logBase) {
    GraphAxis wanted;
    wanted.ScaleType = scaleType;
    wanted.LogBase = logBase;
    if (SameScaleType(wanted, EditAxis) || !TakeAxis()) return ShowAxisOptions();
    ChangeType(wanted);
    ShowAxis();
    ShowNote();
}

void AxisOptsModeClick(std::int16_t scaleMode) {
    EditAxis.ScaleMode = scaleMode;
    AxisOptsForm.ScaleManual.Value = Flag(scaleMode == ScaleModes::Manual);
    AxisOptsForm.Prescaled.Value = Flag(scaleMode == ScaleModes::Prescaled);
    AxisOptsForm.ScaleAutorange.Value = Flag(scaleMode == ScaleModes::Autorange);
    ShowNote();
}

void AxisOptsTicModeClick(std::int16_t ticMode) {
    EditAxis.TicMode = ticMode;
    AxisOptsForm.NoTics.Value = Flag(ticMode == TicModes::NoTics);
    AxisOptsForm.MarkandLabel.Value = Flag(ticMode == TicModes::MarksAndLabels);
    AxisOptsForm.MarkOnly.Value = Flag(ticMode == TicModes::MarksOnly);
}

void AxisOptsFormatClick(std::int16_t ticFormat) {
    if (!TakeAxis()) return ShowAxisOptions();
    EditAxis.TicFormat = ticFormat;
    if (FormatWouldChange()) AxisOptsModeClick(ScaleModes::Manual);
    ShowAxis();
}

void AxisOptsGridClick() {
    EditAxis.Grid = EditAxis.Grid == 0 ? 1 : 0;
    AxisOptsForm.GridCheck.Value = EditAxis.Grid;
}

void AxisOptsListClick(Control& list, int row) {
    FillList(list, list.Items, row);
}

void AxisOptsSwapButton() {
    if (!TakeAxis()) return;
    EditedAxes[InHand()] = EditAxis;
    Horizontal = !Horizontal;
    EditAxis = EditedAxes[InHand()];
    ShowInHand();
}

void AxisOptsOkButton() {
    if (!TakeAxis()) return;
    EditedAxes[InHand()] = EditAxis;
    AxesAccepted = true;
    AxisOptsForm.State.Shown = false;
}

void AxisOptsCancelButton() {
    AxisOptsForm.State.Shown = false;
}

} // namespace Quillon
