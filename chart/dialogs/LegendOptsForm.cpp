#include "chart/dialogs/LegendOptsForm.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/hand/Redraw.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>

namespace Quillon {

LegendOptsFormRecord LegendOptsForm;

namespace {

constexpr long LongestText = 80;
bool Accepted = false;

// The cycle index in TextColor, whatever its sign says.
std::int16_t ColorIndex(std::int16_t textColor) {
    return textColor < 0 ? static_cast<std::int16_t>(~textColor) : textColor;
}

int Row() {
    return LegendOptsForm.lstLegendText.Value;
}

std::string& RowText() {
    return LegendOptsForm.lstLegendText.Items[static_cast<std::size_t>(Row())];
}

int LastRow() {
    return static_cast<int>(LegendOptsForm.lstLegendText.Items.size()) - 1;
}

void Choose(Control& chosen, Control& other) {
    chosen.Value = FlagTrue;
    other.Value = FlagFalse;
}

// An entry in the colour of its set, or in that of all.
void ShowPreview() {
    LegendOptsFormRecord& form = LegendOptsForm;
    ShowSample(form.Preview, RowText(), FontCode(form.FontBox.Value), form.Color.Value);
    if (form.optMatch.Value == 0) return;
    const Rgb rgb = SetColor(Row() + 1);
    form.Preview.ForeColor = (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

void ShowRow() {
    LegendOptsForm.txtLegendText.Text = RowText();
    ShowPreview();
}

void FillCaptions() {
    LegendOptsFormRecord& form = LegendOptsForm;
    form.State.Caption = "Edit Legend Text and Legend Format";
    form.TextLabel = Captioned("&Text of the entry:");
    form.PlaceFrame = Captioned("Legend Location");
    form.optRight = Captioned("To the &right of the graph");
    form.optBottom = Captioned("&Below the graph");
    form.TextFrame = Captioned("Legend Text");
    form.optSingle = Captioned("&Use single color for all:");
    form.optMatch = Captioned("&Match text color to data color");
    form.FontLabel = Captioned("&Font:");
    form.SizeLabel = Captioned("&Size:");
    form.SizeNote = Captioned(SizeNote());
    form.OkButton = Captioned("OK");
    form.CancelButton = Captioned("Cancel");
}

void TakeLegend() {
    LegendOptsFormRecord& form = LegendOptsForm;
    GraphLegend& legend = form.Edited;
    const std::int16_t where = form.optRight.Value != 0 ? LegendPlaces::Right : LegendPlaces::Below;
    if (where != legend.Where) legend.AutoPlace = 1; // a box of its own has no such place
    legend.Where = where;
    legend.Font = ChosenFont(form.FontBox, legend.Font);
    std::int16_t color = ColorIndex(legend.TextColor);
    if (ColorListRow(color) != form.Color.Value) color = form.Color.Value;
    legend.TextColor = form.optMatch.Value != 0 ? static_cast<std::int16_t>(~color) : color;
}

} // namespace

void LoadLegendOptsForm() {
    LegendOptsForm = LegendOptsFormRecord{};
    Accepted = false;
    LegendOptsFormRecord& form = LegendOptsForm;
    form.Edited = Chart.Spec.Legend;
    FillCaptions();
    FillList(form.lstLegendText, {Chart.SetNames.begin(), Chart.SetNames.end()}, 0);
    const bool right = form.Edited.Where == LegendPlaces::Right;
    Choose(right ? form.optRight : form.optBottom, right ? form.optBottom : form.optRight);
    const bool match = form.Edited.TextColor < 0;
    Choose(match ? form.optMatch : form.optSingle, match ? form.optSingle : form.optMatch);
    FillList(form.Color, ColorListNames(), ColorListRow(ColorIndex(form.Edited.TextColor)));
    form.Color.Enabled = !match;
    FillList(form.FontBox, FontListNames(), FontListIndex(form.Edited.Font));
    form.TitleSizeInput.Text = SizeText(form.Edited.Size);
    ShowRow();
    form.State.FocusOn = &form.lstLegendText;
    form.State.Shown = true;
}

void LegendOptsRowClick(int row) {
    if (row < 0 || row > LastRow()) return;
    LegendOptsForm.lstLegendText.Value = ToInt16(row);
    ShowRow();
}

void LegendOptsTextGotFocus() {
    Control& box = LegendOptsForm.txtLegendText;
    box.SelStart = 0;
    box.SelLength = static_cast<std::int32_t>(box.Text.size());
}

int LegendOptsTextKeyPress(int key) {
    if (key == KeyEscape) LegendOptsCancelButton();
    if (key == KeyReturn && Row() == LastRow()) {
        LegendOptsOkButton();
    } else if (key == KeyReturn) {
        LegendOptsRowClick(Row() + 1);
        LegendOptsTextGotFocus();
    }
    return TextKeyPress(LegendOptsForm.txtLegendText, key, LongestText, ProgramTitle());
}

void LegendOptsTextChanged() {
    RowText() = LegendOptsForm.txtLegendText.Text;
    ShowPreview();
}

void LegendOptsPlaceClick(std::int16_t where) {
    LegendOptsFormRecord& form = LegendOptsForm;
    const bool right = where == LegendPlaces::Right;
    Choose(right ? form.optRight : form.optBottom, right ? form.optBottom : form.optRight);
}

void LegendOptsSingleClick() {
    Choose(LegendOptsForm.optSingle, LegendOptsForm.optMatch);
    LegendOptsForm.Color.Enabled = true;
    ShowPreview();
}

void LegendOptsMatchClick() {
    Choose(LegendOptsForm.optMatch, LegendOptsForm.optSingle);
    LegendOptsForm.Color.Enabled = false;
    ShowPreview();
}

void LegendOptsColorClick(int row) {
    FillList(LegendOptsForm.Color, LegendOptsForm.Color.Items, row);
    ShowPreview();
}

void LegendOptsFontClick(int row) {
    FillList(LegendOptsForm.FontBox, LegendOptsForm.FontBox.Items, row);
    ShowPreview();
}

void LegendOptsSizeGotFocus() {
    NumGotFocus(LegendOptsForm.TitleSizeInput);
}

int LegendOptsSizeKeyPress(int key) {
    if (key == KeyReturn) LegendOptsOkButton();
    if (key == KeyEscape) LegendOptsCancelButton();
    return NumKeyPress(LegendOptsForm.TitleSizeInput, key);
}

void LegendOptsSizeLostFocus() {
    LegendOptsFormRecord& form = LegendOptsForm;
    NumLostFocus(form.TitleSizeInput);
    if (form.State.Shown) TakeSize(form.State, form.TitleSizeInput, form.Edited.Size);
}

void LegendOptsOkButton() {
    LegendOptsFormRecord& form = LegendOptsForm;
    if (!TakeSize(form.State, form.TitleSizeInput, form.Edited.Size)) return;
    TakeLegend();
    Accepted = true;
    form.State.Shown = false;
}

void LegendOptsCancelButton() {
    LegendOptsForm.State.Shown = false;
}

void EditLegend() {
    if (!GraphMayChange() || Chart.SetNames.Empty()) return;
    LoadLegendOptsForm();
    Host.ShowModal(LegendOptsFormName);
    if (!Accepted) return;
    const std::vector<std::string>& texts = LegendOptsForm.lstLegendText.Items;
    Chart.Spec.Legend = LegendOptsForm.Edited;
    std::copy(texts.begin(), texts.end(), Chart.SetNames.begin());
    RedrawChart();
}

} // namespace Quillon
