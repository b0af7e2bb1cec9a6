// The fields of the axis form.
#include "chart/dialogs/AxisFields.h"

#include "chart/dialogs/AxisOptsForm.h"
#include "chart/dialogs/OptionLists.h"
#include "chart/hand/ScaleType.h"
#include "chart/pens/Fonts.h"
#include "chart/scale/AxisScale.h"
#include "input/NUMINPUT.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Quillon {

namespace {

constexpr float MostDecimals = 9.0F;

bool IsLogarithmic() {
    return EditAxis.ScaleType == ScaleTypes::Logarithmic;
}

// In the format of the labels, with a digit more.
std::string ScaleText(double number) {
    const auto digits = static_cast<std::size_t>(std::max<int>(EditAxis.Decimals, 0) + 1);
    const bool plain = EditAxis.TicFormat == TicFormats::Decimal;
    return FormatNumber(number, plain ? "######0." + std::string(digits, '0')
                                      : "0." + std::string(digits, '0') + "E+###");
}

// A limit is shown as the number that it stands for. The format is that of labels, which on a scale of
// natural logarithms are logarithms and on one of decades are as long as the least decade asks: a number that
// it cuts down is shown in exponential form.
std::string LimitText(float place) {
    constexpr double roundedOff = 0.005;
    const double number = NumberAt(EditAxis, static_cast<double>(place));
    const std::string text = ScaleText(number);
    const bool stands =
        std::fabs(static_cast<double>(NumValue(text)) - number) <= roundedOff * std::fabs(number);
    return !IsLogarithmic() || stands ? text : FormatNumber(number, "0.000E+###");
}

// The first tic goes with the labels: it is a logarithm where they are. [decision: ln-limits]
std::string FirstTicText(float place) {
    return IsLog10(EditAxis) ? LimitText(place) : ScaleText(static_cast<double>(place));
}

// Counts that there are not stand for one minor tic in a decade.
std::string IntervalText(float interval) {
    if (!IsLog10(EditAxis)) return ScaleText(static_cast<double>(interval));
    return FormatNumber(IsMinorTicCount(interval) ? static_cast<double>(interval) : 1.0, "0");
}

std::string FractionText(float size) {
    return FormatNumber(static_cast<double>(size), ".000");
}

std::string DecimalsText(std::int16_t decimals) {
    return FormatNumber(decimals, "0");
}

bool Refuse(Control& field, const std::string& why) {
    Tell(why, MessageTitle, BoxIcon::Warning);
    AxisOptsForm.State.FocusOn = &field;
    return false;
}

// A scale that is found from the data would find its limits and tics anew: typed ones make it the user's own.
// Categories have no such scale.
void MakeManual() {
    if (AxisOptsForm.ScaleManual.Enabled) AxisOptsModeClick(ScaleModes::Manual);
}

bool TakeNumber(Control& field, float& place) {
    const float typed = NumValue(field.Text);
    if (IsLogarithmic() && !(typed > 0.0F))
        return Refuse(field, "On a logarithmic scale this must be greater than 0");
    place = FiniteSingle(PlaceOf(EditAxis, static_cast<double>(typed)));
    MakeManual();
    return true;
}

bool TakeLimit(Control& field, float& place) {
    if (field.Text == LimitText(place)) return true;
    if (!TakeNumber(field, place)) return false;
    field.Text = LimitText(place);
    return true;
}

bool TakeFirstTic(Control& field) {
    if (field.Text == FirstTicText(EditAxis.FirstTic)) return true;
    if (IsLog10(EditAxis)) {
        if (!TakeNumber(field, EditAxis.FirstTic)) return false;
    } else {
        EditAxis.FirstTic = NumValue(field.Text);
        MakeManual();
    }
    field.Text = FirstTicText(EditAxis.FirstTic);
    return true;
}

bool TakeInterval(Control& field) {
    if (field.Text == IntervalText(EditAxis.TicInterval)) return true;
    const float typed = NumValue(field.Text);
    if (IsLog10(EditAxis) && !IsMinorTicCount(typed))
        return Refuse(field, "For Log axes number of minor tics per decade must be 0, 1, 2, 4, or 8");
    if (!IsLog10(EditAxis) && typed == 0.0F) return Refuse(field, "The tic interval cannot be zero!");
    EditAxis.TicInterval = typed;
    MakeManual();
    field.Text = IntervalText(typed);
    return true;
}

bool TakeFraction(Control& field, float& size) {
    if (field.Text == FractionText(size)) return true;
    const float typed = NumValue(field.Text);
    if (!(typed > 0.0F && typed < 1.0F)) return Refuse(field, "Input must be between 0 and 1");
    size = typed;
    field.Text = FractionText(size);
    return true;
}

// What a number of the scale shows.
std::string ScaleFieldText(const Control& field) {
    const AxisOptsFormRecord& form = AxisOptsForm;
    if (&field == &form.MinScale) return LimitText(EditAxis.Min);
    if (&field == &form.MaxScale) return LimitText(EditAxis.Max);
    if (&field == &form.FirstTicInput) return FirstTicText(EditAxis.FirstTic);
    return IntervalText(EditAxis.TicInterval);
}

// Those in which nothing is typed that has not been taken.
std::vector<Control*> UntouchedScale() {
    AxisOptsFormRecord& form = AxisOptsForm;
    std::vector<Control*> fields = {&form.MinScale, &form.MaxScale, &form.FirstTicInput, &form.IntervalInput};
    std::erase_if(fields, [](const Control* field) { return field->Text != ScaleFieldText(*field); });
    return fields;
}

// Other digits change how the numbers of the scale are written, and nothing that is typed elsewhere.
bool TakeDecimals(Control& field) {
    if (field.Text == DecimalsText(EditAxis.Decimals)) return true;
    const float typed = NumValue(field.Text);
    if (!(typed >= 0.0F && typed <= MostDecimals)) return Refuse(field, "Decimals must be from 0 to 9");
    const std::vector<Control*> untouched = UntouchedScale();
    EditAxis.Decimals = ToInt16(std::nearbyint(typed));
    for (Control* number : untouched)
        number->Text = ScaleFieldText(*number);
    field.Text = DecimalsText(EditAxis.Decimals);
    MakeManual();
    return true;
}

void ShowScale() {
    AxisOptsFormRecord& form = AxisOptsForm;
    for (Control* number : {&form.MinScale, &form.MaxScale, &form.FirstTicInput, &form.IntervalInput})
        number->Text = ScaleFieldText(*number);
    form.FirstTicLabel.Text = IsLogarithmic() && !IsLog10(EditAxis) ? "&First Tic, as Ln:" : "&First Tic:";
    form.Label1.Text = IsLog10(EditAxis) ? "Tics/Decade 0,1,2,4,8" : "Tic Interval";
    form.TicDecimalInput.Text = DecimalsText(EditAxis.Decimals);
    form.GridCheck.Value = EditAxis.Grid;
}

void ShowTexts() {
    AxisOptsFormRecord& form = AxisOptsForm;
    form.AxisTitleInput.Text = EditAxis.Title.Text.Str();
    form.TitleSizeInput.Text = FractionText(EditAxis.Title.Size);
    form.TicLabelSizeInput.Text = FractionText(EditAxis.LabelSize);
    FillList(form.LabelFontBox, FontListNames(), FontListIndex(EditAxis.LabelFont));
    FillList(form.TitleFontBox, FontListNames(), FontListIndex(EditAxis.Title.Font));
    FillList(form.AxisColor, ColorListNames(), ColorListRow(EditAxis.Color));
    FillList(form.TitleColor, ColorListNames(), ColorListRow(EditAxis.Title.Color));
}

void TakeColor(const Control& list, std::int16_t& color) {
    if (ColorListRow(color) != list.Value) color = list.Value;
}

} // namespace

void ShowAxisOptions() {
    AxisOptsFormRecord& form = AxisOptsForm;
    const bool log = EditAxis.ScaleType == ScaleTypes::Logarithmic;
    form.Linear.Value = Flag(!log);
    form.LogBase10.Value = Flag(IsLog10(EditAxis));
    form.NaturalLog.Value = Flag(log && !IsLog10(EditAxis));
    const std::int16_t mode = EditAxis.ScaleMode;
    form.ScaleManual.Value = Flag(mode == ScaleModes::Manual || mode == ScaleModes::Zoomed);
    form.Prescaled.Value = Flag(mode == ScaleModes::Prescaled);
    form.ScaleAutorange.Value = Flag(mode == ScaleModes::Autorange);
    form.NoTics.Value = Flag(EditAxis.TicMode == TicModes::NoTics);
    form.MarkandLabel.Value = Flag(EditAxis.TicMode == TicModes::MarksAndLabels);
    form.MarkOnly.Value = Flag(EditAxis.TicMode == TicModes::MarksOnly);
    form.DecFormat.Value = Flag(EditAxis.TicFormat == TicFormats::Decimal);
    form.ExpFormat.Value = Flag(EditAxis.TicFormat == TicFormats::Exponential);
}

void ShowAxis() {
    ShowScale();
    ShowAxisOptions();
    ShowTexts();
}

bool TakeAxisField(Control& field) {
    AxisOptsFormRecord& form = AxisOptsForm;
    if (&field == &form.MinScale) return TakeLimit(field, EditAxis.Min);
    if (&field == &form.MaxScale) return TakeLimit(field, EditAxis.Max);
    if (&field == &form.FirstTicInput) return TakeFirstTic(field);
    if (&field == &form.IntervalInput) return TakeInterval(field);
    if (&field == &form.TicDecimalInput) return TakeDecimals(field);
    if (&field == &form.TicLabelSizeInput) return TakeFraction(field, EditAxis.LabelSize);
    return TakeFraction(field, EditAxis.Title.Size);
}

bool TakeAxis() {
    AxisOptsFormRecord& form = AxisOptsForm;
    if (form.AxisTitleInput.Text != EditAxis.Title.Text.Str()) EditAxis.Title.Text = form.AxisTitleInput.Text;
    EditAxis.LabelFont = ChosenFont(form.LabelFontBox, EditAxis.LabelFont);
    EditAxis.Title.Font = ChosenFont(form.TitleFontBox, EditAxis.Title.Font);
    TakeColor(form.AxisColor, EditAxis.Color);
    TakeColor(form.TitleColor, EditAxis.Title.Color);
    for (Control* field : {&form.MinScale, &form.MaxScale, &form.FirstTicInput, &form.IntervalInput,
                           &form.TicLabelSizeInput, &form.TitleSizeInput, &form.TicDecimalInput})
        if (!TakeAxisField(*field)) return false;
    if (EditAxis.Min == EditAxis.Max && EditAxis.ScaleMode != ScaleModes::Autorange)
        return Refuse(form.MaxScale, "The ends of the scale must differ");
    return true;
}

} // namespace Quillon
