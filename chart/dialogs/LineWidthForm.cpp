// The form of line widths, and the small commands on the style.
#include "chart/dialogs/LineWidthForm.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/hand/Redraw.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Kept.h"
#include "chart/targets/PageGeometry.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"
#include "platform/Printer.h"

#include <cmath>

namespace Quillon {

LineWidthFormRecord LineWidthForm;

namespace {

constexpr float TwipsPerInch = 1440.0F;
bool WidthsAccepted = false;
std::array<float, WidthCount> EditedWidths;

std::string WidthText(float twips) {
    return SingleText(twips);
}

std::string PixelText(double dotsPerInch) {
    const double twips = std::nearbyint(static_cast<double>(TwipsPerInch) / dotsPerInch * 100.0) / 100.0;
    return DoubleText(twips);
}

std::string ExplanationText() {
    std::string text =
        "Input the desired line width in units of twips (twentieths of a point = 1/1440 inch)\n\n";
    if (Seams.HasPicBox)
        text += "On the screen 1 pixel equals " + PixelText(Seams.PicBox.DotsPerInchY()) + " twips.  ";
    return text + "On the printer 1 pixel equals " + PixelText(DotsOf(Host.Printer.Current())) + " twips.";
}

std::array<float, WidthCount> PresentWidths() {
    const GraphSpec& spec = Chart.Spec;
    return {static_cast<float>(spec.LineWidth), static_cast<float>(spec.AxisX1.AxisWidth),
            static_cast<float>(spec.AxisX1.TicWidth), Chart.Style.SymbolWidth};
}

void Fill(WidthPlace place, const std::string& label) {
    LineWidthForm.Label[place] = Captioned(label);
    LineWidthForm.Width[place].Text = WidthText(EditedWidths[place]);
}

// The width typed; false when it was refused. A text that was not touched leaves the width as it is.
bool TakeWidth(WidthPlace place) {
    Control& box = LineWidthForm.Width[place];
    if (box.Text == WidthText(EditedWidths[place])) return true;
    const float typed = NumValue(box.Text);
    if (!(typed >= 0.0F && typed <= TwipsPerInch)) {
        Tell("Input must be between 0 and 1440", ProgramTitle(), BoxIcon::Warning);
        LineWidthForm.State.FocusOn = &box;
        return false;
    }
    EditedWidths[place] = typed;
    box.Text = WidthText(typed);
    return true;
}

std::int16_t Whole(float twips) {
    return ToInt16(std::nearbyint(twips));
}

// Only what was changed: the style of the run may have other widths than the graph at hand, which can have
// come from a file, and so may its axes among each other.
void TakeWidths() {
    const std::array<float, WidthCount> before = PresentWidths();
    const auto changed = [&before](WidthPlace place) { return EditedWidths[place] != before[place]; };
    GraphSpec& spec = Chart.Spec;
    if (changed(DataWidth)) {
        Chart.Style.LineWidth = EditedWidths[DataWidth];
        spec.LineWidth = Whole(EditedWidths[DataWidth]);
    }
    if (changed(AxesWidth)) Chart.Style.AxisWidth = EditedWidths[AxesWidth];
    if (changed(TicsWidth)) Chart.Style.TicWidth = EditedWidths[TicsWidth];
    if (changed(SymbolsWidth)) Chart.Style.SymbolWidth = EditedWidths[SymbolsWidth];
    for (GraphAxis* axis : {&spec.AxisX1, &spec.AxisX2, &spec.AxisY1, &spec.AxisY2}) {
        if (changed(AxesWidth)) axis->AxisWidth = Whole(EditedWidths[AxesWidth]);
        if (changed(TicsWidth)) axis->TicWidth = Whole(EditedWidths[TicsWidth]);
    }
}

} // namespace

void LoadLineWidthForm() {
    LineWidthForm = LineWidthFormRecord{};
    WidthsAccepted = false;
    EditedWidths = PresentWidths();
    LineWidthForm.State.Caption = "Set Line Thickness";
    LineWidthForm.Explanation = Captioned(ExplanationText());
    Fill(DataWidth, "&Data lines:");
    Fill(AxesWidth, "&Axes:");
    Fill(TicsWidth, "&Tics:");
    Fill(SymbolsWidth, "&Symbols:");
    LineWidthForm.OkButton = Captioned("OK");
    LineWidthForm.CancelButton = Captioned("Cancel");
    LineWidthForm.State.FocusOn = &LineWidthForm.Width[DataWidth];
    LineWidthForm.State.Shown = true;
}

void LineWidthGotFocus(WidthPlace place) {
    NumGotFocus(LineWidthForm.Width[place]);
}

int LineWidthKeyPress(WidthPlace place, int key) {
    if (key == KeyReturn) LineWidthOkButton();
    if (key == KeyEscape) LineWidthCancelButton();
    return NumKeyPress(LineWidthForm.Width[place], key);
}

void LineWidthLostFocus(WidthPlace place) {
    NumLostFocus(LineWidthForm.Width[place]);
    if (LineWidthForm.State.Shown) TakeWidth(place);
}

void LineWidthOkButton() {
    for (const WidthPlace place : {DataWidth, AxesWidth, TicsWidth, SymbolsWidth})
        if (!TakeWidth(place)) return;
    WidthsAccepted = true;
    LineWidthForm.State.Shown = false;
}

void LineWidthCancelButton() {
    LineWidthForm.State.Shown = false;
}

void DoLineWidth() {
    if (!GraphMayChange()) return;
    LoadLineWidthForm();
    Host.ShowModal(LineWidthFormName);
    if (!WidthsAccepted) return;
    TakeWidths();
    RedrawChart();
}

void ChangeSymbolSize() {
    if (!GraphMayChange()) return;
    const InputAnswer answer =
        Host.AskText({"Input the desired symbol size as a fraction of the diagonal across the graph axes.",
                      "Symbol Size", SingleText(Chart.Style.SymbolSize)});
    if (answer.Cancelled || answer.Text.empty()) return;
    const float typed = NumValue(answer.Text);
    if (!IsNumeric(answer.Text) || !(typed >= 0.0F && typed <= LargestSymbolSize))
        return Tell("Input must be between 0 and 0.1", ProgramTitle(), BoxIcon::Warning);
    Chart.Style.SymbolSize = typed;
    RedrawChart();
}

void DoRefresh() {
    RedrawChart();
}

} // namespace Quillon
