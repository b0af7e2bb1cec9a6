#include "chart/dialogs/PrintGrForm.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/files/Exchange.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/targets/PageGeometry.h"
#include "chart/targets/PaperNote.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <cmath>

namespace Quillon {

PrintGrFormRecord PrintGrForm;

namespace {

enum class LeftBy { Cancel, Ok, Print };
LeftBy Way = LeftBy::Cancel;

constexpr const char* MetafileNote =
    "Metafiles are formatted as though they were being printed, and thus will not use color unless you have "
    "selected a color printer or check the 'Use color on black and white printer' option.  The metafile will "
    "have a 'suggested size' corresponding to the printed size settings.  After importing it into other "
    "programs, the metafile may be rescaled in both height and width without loss of resolution, but it is "
    "best to create it using, at least, the desired height/width ratio.  The graph margin areas are not "
    "included in the metafile; thus the margin settings are relevant only because for 'Full Page' and 'Half "
    "Page' modes they play a role in determining the 'size'.";

constexpr const char* AxesNote =
    "In this mode the top and left margins specify the position of the axis frame (the data area of the "
    "graph) from the top left corner of the page.  Any graph titles or y-axis titles and tic labels will be "
    "closer to the page edge than these settings, so you may need to increase the margins to avoid putting "
    "these into non-printable areas.";

constexpr const char* BorderNote =
    "You are trying to move the margin into a non-printable area on your printer.";

bool IsMetric() {
    return PrintGrForm.Metric.Value != 0;
}

std::int16_t ChosenValue(bool on) {
    return Flag(on);
}

std::int16_t Ticked(bool on) {
    return on ? 1 : 0;
}

// --- what is shown -----------------------------------------------------------------------------------------

void ShowLength(std::size_t place) {
    PrintGrForm.Length[place].Text = FormatNumber(static_cast<double>(PrintGrForm.Lengths[place]), "0.000");
}

void ShowLengths() {
    for (std::size_t i = 0; i < PageLengths; ++i)
        ShowLength(i);
    const std::string units = IsMetric() ? " (cm)" : " (inches)";
    PrintGrForm.MarginFrame.Text = "Margins" + units;
    PrintGrForm.CustomFrame.Text = "Custom Size" + units;
}

void ShowPrinter() {
    PrintGrFormRecord& form = PrintGrForm;
    form.UseBW.Text = form.Printer.HasColor ? "Use &only black and white on color printer"
                                            : "Use c&olor on black and white printer";
    form.PrinterNote.Text = PaperNote(form.Printer, IsMetric() ? InCentimetres : InInches);
}

// What hangs on another choice.
void ShowChoices() {
    PrintGrFormRecord& form = PrintGrForm;
    const bool custom = form.PageCustom.Value != 0;
    for (const std::size_t place : {GraphHeight, GraphWidth})
        form.Length[place].Enabled = form.LengthLabel[place].Enabled = custom;
    form.CustGraph.Enabled = form.CustAxes.Enabled = custom;
    form.StartMin.Enabled = form.StartMax.Enabled = form.VaryWidth.Value != 0;
}

void FillLengthLabels() {
    static constexpr const char* names[PageLengths] = {
        "&Left:", "&Top:", "&Right:", "&Bottom:", "&Height:", "&Width:"};
    for (std::size_t i = 0; i < PageLengths; ++i)
        PrintGrForm.LengthLabel[i] = Captioned(names[i]);
}

void FillFrames() {
    PrintGrFormRecord& form = PrintGrForm;
    form.SizeFrame = Captioned("Size");
    form.AspectFrame = Captioned("Aspect Ratio");
    form.ColorFrame = Captioned("Colors and Lines");
    form.WidthFrame = Captioned("Line Widths");
    form.PageFull = Captioned("&Full Page");
    form.PageHalf = Captioned("Half Pa&ge");
    form.PageCustom = Captioned("&Custom");
    form.CustGraph = Captioned("Si&ze is that of the whole graph");
    form.CustAxes = Captioned("Size is that of the a&xis frame");
    form.FixAspect = Captioned("&Preserve From Screen");
    form.ChangeAspect = Captioned("Change to &Match");
    form.VaryWidth = Captioned("&Vary widths after each 5 sets");
    form.StartMin = Captioned("Start at mi&nimum");
    form.StartMax = Captioned("Start at m&aximum");
    form.DashedLines = Captioned("Use &dashed lines");
    form.English = Captioned("&Inches");
    form.Metric = Captioned("Centimeters");
}

void FillButtons() {
    PrintGrFormRecord& form = PrintGrForm;
    form.PSetup = Captioned("Printer &Setup...");
    form.PaperSetup = Captioned("Pap&er...", "Size of the paper and which way it lies");
    form.EjectPage = Captioned("E&ject Page", "Off: the page waits for the next graph");
    form.SavePicture = Captioned("Save Pict&ure...", "EMF, SVG, PDF or PNG, as large as on the paper");
    form.PrintButton = Captioned("Print");
    form.OkButton = Captioned("OK");
    form.CancelButton = Captioned("Cancel");
    form.PrintButton.Visible = form.EjectPage.Visible = !form.ForMetafile;
    form.SavePicture.Visible = !form.ForMetafile;
}

void FillSettings() {
    PrintGrFormRecord& form = PrintGrForm;
    const ChartStyle& style = Chart.Style;
    form.Lengths = {style.LeftMargin,   style.TopMargin,    style.RightMargin,
                    style.BottomMargin, style.CustomHeight, style.CustomWidth};
    form.Metric.Value = ChosenValue(style.MetricUnits != 0);
    form.English.Value = ChosenValue(style.MetricUnits == 0);
    const bool custom = style.PageCustom != 0, half = !custom && style.PageHalf != 0.0F;
    form.PageCustom.Value = ChosenValue(custom);
    form.PageHalf.Value = ChosenValue(half);
    form.PageFull.Value = ChosenValue(!custom && !half);
    form.CustAxes.Value = ChosenValue(style.AxisFrame != 0);
    form.CustGraph.Value = ChosenValue(style.AxisFrame == 0);
    form.FixAspect.Value = ChosenValue(style.KeepAspect != 0);
    form.ChangeAspect.Value = ChosenValue(style.KeepAspect == 0);
    form.VaryWidth.Value = Ticked(style.LineWidthFixed == 0);
    form.StartMin.Value = ChosenValue(style.LineWidthIncrease != 0);
    form.StartMax.Value = ChosenValue(style.LineWidthIncrease == 0);
    form.DashedLines.Value = Ticked(style.DashedLines != 0);
    form.EjectPage.Value = Ticked(EjectPage);
}

// --- what is taken -----------------------------------------------------------------------------------------

float BorderOf(std::size_t place) {
    const PageEdges& border = PrintGrForm.Printer.Page.Border;
    const double inches[] = {border.Left, border.Top, border.Right, border.Bottom};
    return ToSingle(IsMetric() ? inches[place] * 2.54 : inches[place]);
}

bool RefuseMargin(std::size_t place, const char* why) {
    Tell(why, ProgramTitle(), BoxIcon::Warning);
    ShowLength(place);
    PrintGrForm.State.FocusOn = &PrintGrForm.Length[place];
    return false;
}

// A field that was not typed in keeps what it stands for, which has more decimals than it shows.
bool TakeLength(std::size_t place) {
    PrintGrFormRecord& form = PrintGrForm;
    float& length = form.Lengths[place];
    const std::string& text = form.Length[place].Text;
    const bool typed = text != FormatNumber(static_cast<double>(length), "0.000");
    const float value = typed ? NumValue(text) : length;
    const bool margin = place < GraphHeight;
    // A size that is not in use may be nothing: its field is closed, and nobody could mend it.
    if (!margin && form.PageCustom.Value != 0 && value <= 0.0F)
        return RefuseMargin(place, "A size must be greater than zero.");
    if (margin && value < BorderOf(place)) {
        length = BorderOf(place);
        return RefuseMargin(place, BorderNote);
    }
    length = value;
    if (typed) ShowLength(place);
    return true;
}

bool TakeLengths() {
    for (std::size_t i = 0; i < PageLengths; ++i)
        if (!TakeLength(i)) return false;
    return true;
}

void TakeSettings(ChartStyle& style) {
    const PrintGrFormRecord& form = PrintGrForm;
    style.LeftMargin = form.Lengths[LeftEdge];
    style.TopMargin = form.Lengths[TopEdge];
    style.RightMargin = form.Lengths[RightEdge];
    style.BottomMargin = form.Lengths[BottomEdge];
    style.CustomHeight = form.Lengths[GraphHeight];
    style.CustomWidth = form.Lengths[GraphWidth];
    style.MetricUnits = Flag(IsMetric());
    style.PageFull = form.PageFull.Value != 0 ? -1.0F : 0.0F;
    style.PageHalf = form.PageHalf.Value != 0 ? -1.0F : 0.0F;
    style.PageCustom = Flag(form.PageCustom.Value != 0);
    style.AxisFrame = Flag(form.CustAxes.Value != 0);
    style.KeepAspect = Flag(form.FixAspect.Value != 0);
    style.LineWidthFixed = Flag(form.VaryWidth.Value == 0);
    style.LineWidthIncrease = Flag(form.StartMin.Value != 0);
    style.DashedLines = Flag(form.DashedLines.Value != 0);
}

// Takes everything over; false when something is refused.
bool Accept() {
    PrintGrFormRecord& form = PrintGrForm;
    if (!TakeLengths()) return false;
    ChartStyle style = Chart.Style;
    TakeSettings(style);
    if (!PlaceOnPage(style, form.Printer.Page, 0.0).HasRoom()) {
        Tell("The margins leave no room for the graph on this paper.", ProgramTitle(), BoxIcon::Warning);
        form.State.FocusOn = &form.Length[LeftEdge];
        return false;
    }
    Chart.Style = style;
    EjectPage = form.EjectPage.Value != 0;
    const bool other = form.UseBW.Value != 0;
    Chart.UseOnlyBW = Flag(other && form.Printer.HasColor);
    Chart.UseColorOnBW = Flag(other && !form.Printer.HasColor);
    return true;
}

void Leave(LeftBy way) {
    if (!Accept()) return;
    Way = way;
    PrintGrForm.State.Shown = false;
}

// What the form was not left with yet: a picture is drawn with it, and Cancel still means that nothing was
// taken.
struct SettingsScope {
    ChartStyle Style = Chart.Style;
    bool Eject = EjectPage;
    std::int16_t OnlyBW = Chart.UseOnlyBW, ColorOnBW = Chart.UseColorOnBW;
    SettingsScope() = default;
    ~SettingsScope() {
        Chart.Style = Style;
        EjectPage = Eject;
        Chart.UseOnlyBW = OnlyBW;
        Chart.UseColorOnBW = ColorOnBW;
    }
    SettingsScope(const SettingsScope&) = delete;
    SettingsScope& operator=(const SettingsScope&) = delete;
};

void ChooseOne(Control& chosen, Control& other) {
    chosen.Value = FlagTrue;
    other.Value = FlagFalse;
}

void ChangePrinter(const std::function<bool()>& dialog) {
    EndHeldPage(); // its printer is not to be changed below it
    try {
        dialog();
    } catch (const RuntimeError& error) {
        TellPrinterSetupFailure(error.Text);
    }
    const bool color = PrintGrForm.Printer.HasColor;
    PrintGrForm.Printer = Host.Printer.Current();
    if (PrintGrForm.Printer.HasColor != color) PrintGrForm.UseBW.Value = 0; // it now asks for the opposite
    ShowPrinter();
}

} // namespace

void LoadPrintGrForm(bool forMetafile) {
    PrintGrForm = PrintGrFormRecord{};
    Way = LeftBy::Cancel;
    PrintGrFormRecord& form = PrintGrForm;
    form.ForMetafile = forMetafile;
    form.State.Caption = forMetafile ? "Set Properties for MetaFile" : "Graph Printing Options";
    form.Printer = Host.Printer.Current();
    FillLengthLabels();
    FillFrames();
    FillButtons();
    FillSettings();
    ShowLengths();
    ShowPrinter();
    ShowChoices();
    form.State.FocusOn = &form.Length[LeftEdge];
    form.State.Shown = true;
}

bool AskPrintOptions() {
    LoadPrintGrForm(false);
    Host.ShowModal(PrintGrFormName);
    return Way == LeftBy::Print;
}

bool AskMetafileProperties() {
    if (!MetafileNoteShown) Tell(MetafileNote, ProgramTitle(), BoxIcon::Information);
    MetafileNoteShown = true;
    LoadPrintGrForm(true);
    Host.ShowModal(PrintGrFormName);
    return Way != LeftBy::Cancel;
}

void PrintGrLengthGotFocus(std::size_t place) {
    NumGotFocus(PrintGrForm.Length[place]);
}

int PrintGrLengthKeyPress(std::size_t place, int key) {
    if (key == KeyReturn && PrintGrForm.ForMetafile) PrintGrOkButton();
    if (key == KeyReturn && !PrintGrForm.ForMetafile) PrintGrPrintButton();
    if (key == KeyEscape) PrintGrCancelButton();
    return NumKeyPress(PrintGrForm.Length[place], key);
}

void PrintGrLengthLostFocus(std::size_t place) {
    NumLostFocus(PrintGrForm.Length[place]);
    if (PrintGrForm.State.Shown) TakeLength(place);
}

void PrintGrUnitsClick(bool metric) {
    PrintGrFormRecord& form = PrintGrForm;
    if (metric == IsMetric()) return;
    for (float& length : form.Lengths)
        length = metric ? length * CentimetresPerInch : length / CentimetresPerInch;
    ChooseOne(metric ? form.Metric : form.English, metric ? form.English : form.Metric);
    ShowLengths();
    ShowPrinter();
}

void PrintGrSizeClick(Control PrintGrFormRecord::*size) {
    PrintGrFormRecord& form = PrintGrForm;
    form.PageFull.Value = form.PageHalf.Value = form.PageCustom.Value = FlagFalse;
    (form.*size).Value = FlagTrue;
    ShowChoices();
}

void PrintGrCustGraphClick() {
    ChooseOne(PrintGrForm.CustGraph, PrintGrForm.CustAxes);
}

void PrintGrCustAxesClick() {
    if (PrintGrForm.CustAxes.Value == 0) Tell(AxesNote, ProgramTitle(), BoxIcon::Information);
    ChooseOne(PrintGrForm.CustAxes, PrintGrForm.CustGraph);
}

void PrintGrAspectClick(bool fix) {
    PrintGrFormRecord& form = PrintGrForm;
    ChooseOne(fix ? form.FixAspect : form.ChangeAspect, fix ? form.ChangeAspect : form.FixAspect);
}

void PrintGrVaryWidthClick() {
    ShowChoices();
}

void PrintGrStartClick(bool least) {
    PrintGrFormRecord& form = PrintGrForm;
    ChooseOne(least ? form.StartMin : form.StartMax, least ? form.StartMax : form.StartMin);
}

void PrintGrPSetup() {
    ChangePrinter(Host.Printer.Choose);
}

void PrintGrPaperSetup() {
    ChangePrinter(Host.Printer.SetUpPage);
}

void PrintGrPrintButton() {
    Leave(LeftBy::Print);
}

void PrintGrOkButton() {
    Leave(LeftBy::Ok);
}

void PrintGrSavePicture() {
    const SettingsScope former;
    if (!Accept()) return;
    WriteGraph({"SVG pictures (*.svg)|*.svg|PDF pictures (*.pdf)|*.pdf|PNG pictures (*.png)|*.png|Enhanced "
                "Metafiles (*.EMF)|*.EMF|all files (*.*)|*.*",
                "graph.svg", "svg"},
               PictureOnPaper);
}

void PrintGrCancelButton() {
    PrintGrForm.State.Shown = false;
}

} // namespace Quillon
