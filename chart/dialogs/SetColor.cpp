// The form of the colours.
#include "chart/dialogs/SetColor.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/hand/Redraw.h"
#include "chart/records/ChartDefaults.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Cycles.h"
#include "chart/records/Palettes.h"
#include "input/IniFile.h"
#include "platform/FormControls.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <optional>

namespace Quillon {

SetColorRecord SetColorForm;

namespace {

// The tables, and the cycles of a file that go before them, as the form found them.
std::vector<ChartColor> FormerScreen, FormerPrint;
std::optional<StyleCycles> FormerCycles;
bool ColorsAccepted = false;
bool Changed = false; // something was shown in other colours

std::vector<ChartColor>& Table() {
    return SetColorForm.ForScreen.Value != 0 ? Chart.Style.ScreenColors : Chart.Style.PrintColors;
}

// The palette that a table is; behind the last one there is none.
int PaletteOf(const std::vector<ChartColor>& table) {
    const auto& all = Palettes();
    const auto same = [&](const Palette& palette) { return palette.Colors == table; };
    return static_cast<int>(std::find_if(all.begin(), all.end(), same) - all.begin());
}

void ShowTable() {
    std::vector<std::string> rows;
    for (const ChartColor color : Table())
        rows.push_back(std::to_string(rows.size() + 1) + " - " + ColorName(color));
    FillList(SetColorForm.Rows, rows, SetColorForm.Rows.Value);
    std::vector<std::string> names;
    for (const Palette& palette : Palettes())
        names.push_back(palette.Name);
    names.push_back("Own");
    FillList(SetColorForm.Palette, names, PaletteOf(Table()));
}

// The graph shows what the tables are now.
void Show() {
    Changed = true;
    BuildCyclesOfNewColors();
    RedrawChart();
}

void FillColorCaptions() {
    SetColorRecord& form = SetColorForm;
    form.State.Caption = "Set Line/Symbol Colors";
    form.TableFrame = Captioned("Colors For");
    form.ForScreen = Captioned("&Screen");
    form.ForPrinter = Captioned("&Printer and Files");
    form.RowsLabel = Captioned("&Colors, by set:");
    form.EditButton = Captioned("&Edit...");
    form.PaletteLabel = Captioned("P&alette:");
    form.SaveDefaults = Captioned("Save &Defaults", "Both tables become those of all graphs to come");
    form.OkButton = Captioned("OK");
    form.CancelButton = Captioned("Cancel");
}

void AddTable(std::vector<IniSetting>& settings, const std::string& key,
              const std::vector<ChartColor>& table) {
    for (std::size_t i = 0; i < table.size(); ++i)
        settings.push_back({key + std::to_string(i), ColorText(table[i])});
    settings.push_back({key + "s", std::to_string(table.size())});
}

} // namespace

const std::vector<ChartColor>& ShownColors() {
    return Table();
}

void LoadSetColor() {
    SetColorForm = SetColorRecord{};
    ColorsAccepted = Changed = false;
    FormerScreen = Chart.Style.ScreenColors;
    FormerPrint = Chart.Style.PrintColors;
    FormerCycles = Chart.CyclesOfFile;
    FillColorCaptions();
    SetColorForm.ForScreen.Value = FlagTrue;
    ShowTable();
    SetColorForm.State.FocusOn = &SetColorForm.Rows;
    SetColorForm.State.Shown = true;
}

void SetColorTableClick(bool screen) {
    SetColorForm.ForScreen.Value = Flag(screen);
    SetColorForm.ForPrinter.Value = Flag(!screen);
    ShowTable();
}

void SetColorRowClick(int row) {
    FillList(SetColorForm.Rows, SetColorForm.Rows.Items, row);
}

void SetColorPaletteClick(int row) {
    if (row < static_cast<int>(Palettes().size())) Table() = Palettes()[static_cast<std::size_t>(row)].Colors;
    ShowTable();
    Show();
}

void SetColorEditButton() {
    const auto row = static_cast<std::size_t>(SetColorForm.Rows.Value);
    if (row >= Table().size()) return;
    const std::string title = "Color of Set " + std::to_string(row + 1);
    const ColorAnswer answer = Host.AskColor(title, static_cast<std::uint32_t>(Table()[row]));
    if (answer.Cancelled) return;
    Table()[row] = static_cast<ChartColor>(answer.Color & 0xFFFFFF);
    ShowTable();
    Show();
}

void SetColorSaveDefaults() {
    std::vector<IniSetting> settings;
    AddTable(settings, "ScreenColor", Chart.Style.ScreenColors);
    AddTable(settings, "PrintColor", Chart.Style.PrintColors);
    try {
        WriteIniValues(ChartIniPath(), ChartIniSection(), settings);
    } catch (const RuntimeError& error) {
        Tell("Error occurred while writing defaults to " + ChartIniPath() + "\n\n" + error.Text,
             ProgramTitle(), BoxIcon::Warning);
    }
}

void SetColorOkButton() {
    ColorsAccepted = true;
    SetColorForm.State.Shown = false;
}

void SetColorCancelButton() {
    SetColorForm.State.Shown = false;
}

void AlterColors() {
    if (Chart.Painting != 0 || Chart.Style.UseRainbowColors != 0) return;
    if (Chart.State.IniRead == 0) ReadChartDefaults();
    LoadSetColor();
    Host.ShowModal(SetColorName);
    if (ColorsAccepted || !Changed) return;
    Chart.Style.ScreenColors = FormerScreen;
    Chart.Style.PrintColors = FormerPrint;
    Chart.CyclesOfFile = FormerCycles;
    BuildCycles();
    RedrawChart();
}

} // namespace Quillon
