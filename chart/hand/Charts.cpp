#include "chart/hand/Charts.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Kept.h"
#include "chart/records/Records.h"
#include "platform/Platform.h"

#include <algorithm>

namespace Quillon {

namespace {

bool LeftTrimmedText(const FixedText<80>& text) {
    return text.Str().find_first_not_of(' ') != std::string::npos;
}

void SetPlotItems(ChartsForm& form) {
    const GraphSpec& spec = Chart.Spec;
    const bool symbols = spec.SymbolMode < 2;
    form.LinePlot.Checked = spec.PlotStyle == PlotStyles::Lines && spec.SymbolMode == 3;
    form.DotCenter.Enabled = !form.LinePlot.Checked;
    form.DotCenter.Checked = spec.SymbolMode == 0;
    form.BothPlot.Checked = spec.PlotStyle == PlotStyles::Lines && symbols;
    form.SymbolPlot.Checked = spec.PlotStyle == PlotStyles::SymbolsOnly && symbols;
    form.AltPlot.Checked = spec.PlotStyle == PlotStyles::Alternating;
    if (form.AltPlot.Checked) form.SymbolPlot.Checked = form.BothPlot.Checked = form.LinePlot.Checked = false;
    const bool prepared = Chart.State.Nsets > 0;
    form.AltPlot.Enabled = prepared && Chart.GraphHeld != 0 && Chart.State.MultiSet == 1;
}

} // namespace

void ChartMenuStatus(ChartsForm& form) {
    const GraphSpec& spec = Chart.Spec;
    SetPlotItems(form);
    form.ShowLegend.Checked = spec.Legend.Show != 0;
    form.DeleteTitles.Enabled = LeftTrimmedText(spec.Title1.Text) || LeftTrimmedText(spec.Title2.Text);
    form.UseRainbow.Checked = Chart.Style.UseRainbowColors != 0;
    form.ClassicColors.Checked = Kept.ClassicColors != 0;
    form.DarkCanvas.Checked = Kept.DarkCanvas != 0;
    form.ShowGrids.Checked = spec.AxisX1.Grid != 0 || spec.AxisY1.Grid != 0;
    const bool several = Chart.State.Nsets > 1 && Chart.State.MultiSet == 1;
    form.mnuEditTitles.Enabled = Chart.GraphHeld != 0;
    form.mnuEditLegend.Enabled = several && Chart.GraphHeld != 0;
    const bool held = Chart.GraphHeld != 0;
    form.EditHorz.Enabled = form.EditVert.Enabled = held && spec.GraphType != GraphTypes::Pie;
    form.LineWidths.Enabled = form.SymbolSize.Enabled = held;
    for (MenuItem* item :
         {&form.NewWindow, &form.SaveAs, &form.WriteData, &form.WriteMetafile, &form.Print, &form.CopyGraph,
          &form.CopyBitmap, &form.CopyMetafile, &form.CopyData, &form.CopyHeads, &form.PasteData})
        item->Enabled = held;
    form.AlterColors.Enabled = Chart.Style.UseRainbowColors == 0;
    form.SeparateX.Enabled = form.SeparateY.Enabled = form.SeparateBoth.Enabled = several;
}

void ClearSpecialOptions() {
    Charts.SpecialOpts = {};
    Charts.SpecialActions = {};
    Charts.Origin = {};
    Charts.OptionWithdrawn = {};
    for (MenuItem& item : Charts.SpecialOpts)
        item.Visible = item.Enabled = false;
}

void OfferSpecialOption(std::size_t place, const std::string& caption, void (*action)()) {
    Charts.SpecialOpts[place] = MenuItem{caption, false, true, true};
    Charts.SpecialActions[place] = action;
    Charts.OptionWithdrawn[place] = false;
}

void SuitSpecialOptions() {
    const bool off = IsShifted(Chart.Columns.Y) || Chart.Spec.AxisY1.ScaleType == ScaleTypes::Logarithmic;
    for (std::size_t i = 0; i < Charts.SpecialOpts.size(); ++i) {
        MenuItem& item = Charts.SpecialOpts[i];
        bool& withdrawn = Charts.OptionWithdrawn[i];
        if (off == withdrawn || (off && !item.Enabled)) continue;
        withdrawn = off;
        item.Enabled = !off;
    }
}

bool ChartsMayClose() {
    if (!Charts.Needed || Charts.ClosesAsEscape) return true;
    const BoxRequest question{
        "Closing the graphing window at this time is not recommended, and might crash the program.  Close it "
        "anyway?",
        ProgramTitle(), BoxIcon::Warning, BoxButtons::YesNo, BoxAnswer::No};
    return Host.MessageBoxAnswer(question) == BoxAnswer::Yes;
}

void PushZoom(float xmin, float xmax, float ymin, float ymax) {
    ZoomStack& zooms = Charts.Zooms;
    for (int i = ZoomStack::Deepest; i > 1; --i) {
        zooms.XMin[i] = zooms.XMin[i - 1];
        zooms.XMax[i] = zooms.XMax[i - 1];
        zooms.YMin[i] = zooms.YMin[i - 1];
        zooms.YMax[i] = zooms.YMax[i - 1];
    }
    zooms.XMin[1] = xmin;
    zooms.XMax[1] = xmax;
    zooms.YMin[1] = ymin;
    zooms.YMax[1] = ymax;
    zooms.ZoomDepth = static_cast<std::int16_t>(std::min<int>(zooms.ZoomDepth + 1, ZoomStack::Deepest));
}

void PopZoom(float& xmin, float& xmax, float& ymin, float& ymax, std::int16_t& depth) {
    ZoomStack& zooms = Charts.Zooms;
    depth = zooms.ZoomDepth;
    if (zooms.ZoomDepth == 0) return;
    xmin = zooms.XMin[1];
    xmax = zooms.XMax[1];
    ymin = zooms.YMin[1];
    ymax = zooms.YMax[1];
    for (int i = 1; i < ZoomStack::Deepest; ++i) {
        zooms.XMin[i] = zooms.XMin[i + 1];
        zooms.XMax[i] = zooms.XMax[i + 1];
        zooms.YMin[i] = zooms.YMin[i + 1];
        zooms.YMax[i] = zooms.YMax[i + 1];
    }
    depth = --zooms.ZoomDepth;
    if (depth == 0) Charts.LastZoom.Enabled = false;
}

void ClearZoom() {
    Charts.LastZoom.Enabled = false;
    Charts.Zooms.ZoomDepth = 0;
    Charts.Zooms.GaveScale = false;
    Charts.Drag = {};
    Charts.LeftByWheel.reset();
}

} // namespace Quillon
