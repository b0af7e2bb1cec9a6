// The fields of the axis form.
#include "chart/dialogs/AxisFields.h"

#include "chart/dialogs/AxisOptsForm.h"
#include "chart/dialogs/OptionLists.h"
#include "chart/pens/Fonts.h"
#include "chart/scale/AxisScale.h"
#include "input/NUMINPUT.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* MessageTitle = "Charts Module";
constexpr float MostDecimals = 9.0F;

// A number of the scale in the format of its labels, with a digit more.
std::string ScaleText(double number) {
    const auto digits = static_cast<std::size_t>(std::max<int>(EditAxis.Decimals, 0) + 1);
    const bool plain = EditAxis.TicFormat == TicFormats::Decimal;
    return FormatNumber(number, plain ? "######0." + std::string(digits, '0')
                                      : "0." + std::string(digits, '0') + "E+###");
}

// Places on a scale to the base 10 are shown as the numbers themselves.
std::string PlaceText(float place) {
    const double value = place;
    return ScaleText(IsLog10(EditAxis) ? std::pow(10.0, value) : value);
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

// Limits that are typed are the user's own.
bool TakePlace(Control& field, float& place, bool isLimit) {
    if (field.Text == PlaceText(place)) return true;
    const float typed = NumValue(field.Text);
    if (IsLog10(EditAxis) && !(typed > 0.0F))
        return Refuse(field, "On a logarithmic scale this must be greater than 0");
    place = IsLog10(EditAxis) ? FiniteSingle(std::log10(static_cast<double>(typed))) : typed;
    if (isLimit) AxisOptsModeClick(ScaleModes::Manual);
    field.Text = PlaceText(place);
    return true;
}

bool TakeInterval(Control& field) {
    if (field.Text == IntervalText(EditAxis.TicInterval)) return true;
    const float typed = NumValue(field.Text);
    if (IsLog10(EditAxis) && !IsMinorTicCount(typed))
        return Refuse(field, "For Log axes number of minor tics per decade must be 0, 1, 2, 4, or 8");
    if (!IsLog10(EditAxis) && typed == 0.0F) return Refuse(field, "The tic interval cannot be zero!");
    EditAxis.TicInterval = typed;
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

bool TakeDecimals(Control& field) {
    if (field.Text == DecimalsText(EditAxis.Decimals)) return true;
    const float typed = NumValue(field.Text);
    if (!(typed >= 0.0F && typed <= MostDecimals)) return Refuse(field, "Decimals must be from 0 to 9");
    EditAxis.Decimals = ToInt16(std::nearbyint(typed));
    ShowAxis();
    return true;
}

void ShowScale() {
    AxisOptsFormRecord& form = AxisOptsForm;
    form.MinScale.Text = PlaceText(EditAxis.Min);
    form.MaxScale.Text = PlaceText(EditAxis.Max);
    form.FirstTicInput.Text = PlaceText(EditAxis.FirstTic);
    form.IntervalInput.Text = IntervalText(EditAxis.TicInterval);
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
    if (&field == &form.MinScale) return TakePlace(field, EditAxis.Min, true);
    if (&field == &form.MaxScale) return TakePlace(field, EditAxis.Max, true);
    if (&field == &form.FirstTicInput) return TakePlace(field, EditAxis.FirstTic, false);
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
