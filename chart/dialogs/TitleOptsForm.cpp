#include "chart/dialogs/TitleOptsForm.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/TitleLayout.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"

namespace Quillon {

TitleOptsFormRecord TitleOptsForm;

namespace {

bool TitleAccepted = false;

GraphTitle& EditedTitle(TitleLine line) {
    return TitleOptsForm.Edited[line == TitleLine::Main ? 0 : 1];
}

// A line that only holds its place is shown without a text.
std::string ShownTitle(const GraphTitle& title) {
    return HasText(title.Text) ? title.Text.Str() : "";
}

void ShowTitlePreview(TitleLine line) {
    const Control& font = TitleFontBox(line);
    ShowSample(TitlePreview(line), TitleTextBox(line).Text, FontCode(font.Value), TitleColorBox(line).Value);
}

void FillLine(TitleLine line) {
    const GraphTitle& title = EditedTitle(line);
    TitleTextBox(line).Text = ShownTitle(title);
    FillList(TitleFontBox(line), FontListNames(), FontListIndex(title.Font));
    FillList(TitleColorBox(line), ColorListNames(), ColorListRow(title.Color));
    FillList(TitleAlignmentBox(line), JustifyNames(), title.Justify);
    TitleSizeBox(line).Text = SizeText(title.Size);
    ShowTitlePreview(line);
}

void FillTitleCaptions() {
    TitleOptsFormRecord& form = TitleOptsForm;
    form.State.Caption = "Edit Graph Title(s) and Title Format";
    form.TitleFrame = Captioned("First Title Line");
    form.SubTitleFrame = Captioned("Second Title Line");
    form.TextLabel = Captioned("&Text:");
    form.FontLabel = Captioned("&Font:");
    form.ColorLabel = Captioned("&Color:");
    form.SizeLabel = Captioned("&Size:");
    form.AlignmentLabel = Captioned("&Alignment:");
    form.SizeNote = Captioned(SizeNote());
    form.OkButton = Captioned("OK");
    form.CancelButton = Captioned("Cancel");
}

int TitleKeys(int key) {
    if (key == KeyReturn) TitleOptsOkButton();
    if (key == KeyEscape) TitleOptsCancelButton();
    return key;
}

} // namespace

Control& TitleTextBox(TitleLine line) {
    return line == TitleLine::Main ? TitleOptsForm.TitleInput : TitleOptsForm.SubTitleInput;
}
Control& TitleFontBox(TitleLine line) {
    return line == TitleLine::Main ? TitleOptsForm.FontBox : TitleOptsForm.SubFontBox;
}
Control& TitleColorBox(TitleLine line) {
    return line == TitleLine::Main ? TitleOptsForm.Color : TitleOptsForm.SubColor;
}
Control& TitleSizeBox(TitleLine line) {
    return line == TitleLine::Main ? TitleOptsForm.TitleSizeInput : TitleOptsForm.SubTitleSizeInput;
}
Control& TitleAlignmentBox(TitleLine line) {
    return line == TitleLine::Main ? TitleOptsForm.Alignment : TitleOptsForm.SubAlignment;
}
Control& TitlePreview(TitleLine line) {
    return line == TitleLine::Main ? TitleOptsForm.Preview : TitleOptsForm.SubPreview;
}

void LoadTitleOptsForm() {
    TitleOptsForm = TitleOptsFormRecord{};
    TitleAccepted = false;
    TitleOptsForm.Edited = {Chart.Spec.Title1, Chart.Spec.Title2};
    FillTitleCaptions();
    for (const TitleLine line : {TitleLine::Main, TitleLine::Sub})
        FillLine(line);
    TitleOptsForm.State.FocusOn = &TitleOptsForm.TitleInput;
    TitleOptsForm.State.Shown = true;
}

void TitleOptsTextGotFocus(TitleLine line) {
    Control& box = TitleTextBox(line);
    box.SelStart = 0;
    box.SelLength = static_cast<std::int32_t>(box.Text.size());
}

int TitleOptsTextKeyPress(TitleLine line, int key) {
    TitleKeys(key);
    return TextKeyPress(TitleTextBox(line), key, LongestTitle, ProgramTitle());
}

void TitleOptsTextChanged(TitleLine line) {
    ShowTitlePreview(line);
}

void TitleOptsFontClick(TitleLine line, int row) {
    Control& box = TitleFontBox(line);
    FillList(box, box.Items, row);
    ShowTitlePreview(line);
}

void TitleOptsColorClick(TitleLine line, int row) {
    Control& box = TitleColorBox(line);
    FillList(box, box.Items, row);
    ShowTitlePreview(line);
}

void TitleOptsAlignmentClick(TitleLine line, int row) {
    Control& box = TitleAlignmentBox(line);
    FillList(box, box.Items, row);
}

void TitleOptsSizeGotFocus(TitleLine line) {
    NumGotFocus(TitleSizeBox(line));
}

int TitleOptsSizeKeyPress(TitleLine line, int key) {
    TitleKeys(key);
    return NumKeyPress(TitleSizeBox(line), key);
}

void TitleOptsSizeLostFocus(TitleLine line) {
    NumLostFocus(TitleSizeBox(line));
    if (TitleOptsForm.State.Shown) TakeSize(TitleOptsForm.State, TitleSizeBox(line), EditedTitle(line).Size);
}

void TitleOptsOkButton() {
    for (const TitleLine line : {TitleLine::Main, TitleLine::Sub}) {
        GraphTitle& title = EditedTitle(line);
        if (!TakeSize(TitleOptsForm.State, TitleSizeBox(line), title.Size)) return;
        if (TitleTextBox(line).Text != ShownTitle(title)) title.Text = TitleTextBox(line).Text;
        title.Font = ChosenFont(TitleFontBox(line), title.Font);
        if (ColorListRow(title.Color) != TitleColorBox(line).Value) title.Color = TitleColorBox(line).Value;
        title.Justify = TitleAlignmentBox(line).Value;
    }
    TitleAccepted = true;
    TitleOptsForm.State.Shown = false;
}

void TitleOptsCancelButton() {
    TitleOptsForm.State.Shown = false;
}

void EditTitles() {
    if (!GraphMayChange()) return;
    LoadTitleOptsForm();
    Host.ShowModal(TitleOptsFormName);
    if (!TitleAccepted) return;
    Chart.Spec.Title1 = TitleOptsForm.Edited[0];
    Chart.Spec.Title2 = TitleOptsForm.Edited[1];
    RedrawChart();
}

} // namespace Quillon
