#include "PaneMonkey.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/dialogs/AxisOptsForm.h"
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/LineWidthForm.h"
#include "chart/dialogs/SetColor.h"
#include "chart/dialogs/ShiftData.h"
#include "chart/dialogs/TitleOptsForm.h"
#include "commands/Commands.h"
#include "commands/Workbench.h"
#include "commands/fitting/LiveCurve.h"
#include "fit/forms/GetGuess.h"
#include "graphs/FigureForm.h"
#include "graphs/GraphPair.h"
#include "graphs/GraphWindows.h"
#include "graphs/kinds/PickSet.h"
#include "models/forms/SpecForm.h"
#include "platform/Platform.h"
#include "reporting/ParameterTable.h"
#include "scandata/range/RangeBar.h"
#include "scandata/range/RangeReadings.h"
#include "tests/support/BlankSurface.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <map>
#include <vector>

namespace Quillon {

namespace {

// A surface on which nothing is seen, that counts the texts.
DrawingSurface Blank(int width, int height, long& painted) {
    DrawingSurface surface = BlankSurface(width, height);
    surface.Text = [&painted](int, int, const std::string&) { ++painted; };
    return surface;
}

constexpr int BoxWidth = 640, BoxHeight = 480;

using Handlers = std::vector<void (*)()>;

// What is done in the forms of graphs, and how they are left; the last way is never refused.
struct FormHands {
    Handlers Steps, Ways;
};
const std::map<std::string, FormHands>& FormsOfGraphs() {
    static const std::map<std::string, FormHands> all = {
        {AxisOptsFormName,
         {{AxisOptsSwapButton, AxisOptsGridClick, [] { AxisOptsTypeClick(ScaleTypes::Logarithmic, 10.0F); },
           [] { AxisOptsTypeClick(ScaleTypes::Linear, 10.0F); },
           [] { AxisOptsModeClick(ScaleModes::Autorange); }},
          {AxisOptsOkButton, AxisOptsCancelButton}}},
        {LegendOptsFormName,
         {{[] { LegendOptsRowClick(0); }, LegendOptsSingleClick, LegendOptsMatchClick},
          {LegendOptsOkButton, LegendOptsCancelButton}}},
        {TitleOptsFormName, {{}, {TitleOptsOkButton, TitleOptsCancelButton}}},
        {LineWidthFormName, {{}, {LineWidthOkButton, LineWidthCancelButton}}},
        {SetColorName,
         {{[] { SetColorRowClick(2); }, [] { SetColorPaletteClick(1); }, [] { SetColorTableClick(false); }},
          {SetColorOkButton, SetColorCancelButton}}},
        {ShiftDataName,
         {{[] { ShiftDataClick(ShiftBy::Constant); }, [] { ShiftDataClick(ShiftBy::Percent); }},
          {ShiftDataOkButton, ShiftDataTakeBackButton, ShiftDataCancelButton}}},
        {FigureFormName,
         {{[] { FigureFormSizeClick(FigureSize::Two); }, [] { FigureFormPanelsClick(true); }},
          {FigureFormCloseButton}}},
        {PickSetName, {{[] { PickSetRow(SetNo(2)); }}, {PickSetOkButton, PickSetCancelButton}}},
        {SpecFormName,
         {{[] { SpecFormSetList(SetNo(1)); }, SpecFormRangeButton, SpecFormCopyButton},
          {SpecFormExitButton}}},
    };
    return all;
}

// The commands of the menus of a graph window.
constexpr std::array WindowCommands = {
    DoLastZoom,       DoAutoScale,     DoAutoX,       DoAutoY,          ToggleRoundOnZoom,
    ToggleShowCursor, ToggleShowGrids, ToggleRainbow, ToggleDarkCanvas, ToggleClassicColors,
    ToggleDotCenter,  ShowLegend,      DeleteTitles,  EditHorz,         EditVert,
    EditTitles,       EditLegend,      AlterColors,   DoLineWidth,      SeparateX,
    SeparateY,        SeparateBoth,    DoRefresh,     NewGraphWindow};

} // namespace

PaneMonkey::PaneMonkey(NoiseSource& dice) : Dice(dice) {
    Chart = ChartModule{};
    Charts = ChartsForm{};
    GraphWindows.clear();
    SetBoxOf(nullptr, Blank(BoxWidth, BoxHeight, Painted));
}

PaneMonkey::~PaneMonkey() {
    GraphWindows.clear();
    Chart = ChartModule{};
    Charts = ChartsForm{};
    Seams = ChartSeams{};
    Kept = ChartKept{};
}

void PaneMonkey::Look() {
    FillWorkbench();
    FollowAnalysis();
    PaintGraphPair(Blank(200 + Within(1400), 150 + Within(900), Painted), 9 + Within(20));
    FollowInGraphWindows();
    const std::vector<ParameterRow> rows = ParameterRows();
    if (!rows.empty()) {
        EXPECT_FALSE(ParameterText(rows, {Below(rows.size())}).empty());
    }
    const PairPoint point = PairPointAt(Within(1200), Within(800), 1 + Within(400));
    if (point.Set > NoSet) {
        EXPECT_FALSE(PairPointText(point).empty());
    }
}

void PaneMonkey::Press() {
    switch (Below(7)) {
    case 0:
        return StepButton(Below(4));
    case 1:
        return AtOnceButton();
    case 2:
        return ShowPane(static_cast<PaneKind>(Below(PaneKinds)), Chance(70));
    case 3:
        return ResetLayout();
    case 4:
        if (Work.NumSets > 0) ToggleSet(SetNo(1 + Within(Work.NumSets)));
        return;
    case 5:
        if (!Workbench.Recent.empty() && Workbench.Recent[0].Visible) RecentFitButton(0);
        return;
    default:
        return OpenScansButton();
    }
}

void PaneMonkey::OnTheGraph() {
    const int x = Within(BoxWidth), y = Within(BoxHeight), to = Within(BoxWidth), down = Within(BoxHeight);
    switch (Below(6)) {
    case 0: {
        const int button = std::array{1, 1, 2, 4}[Below(4)];
        ChartMouseDown(x, y, button, Chance(30));
        ChartMouseMove((x + to) / 2, (y + down) / 2, button);
        ChartMouseMove(to, down, button);
        return ChartMouseUp(to, down, button);
    }
    case 1:
        return ChartWheel(x, y, Chance(50) ? 1.0 : -1.0);
    case 2:
        return ChartKey(37 + Within(4), Within(4));
    case 3:
        if (MarkerPressed(x, y, 30)) {
            MarkerMouseMove(to);
            MarkerMouseUp();
        }
        return;
    default:
        return ChartMouseMove(x, y, 0);
    }
}

// Of one of the windows, the chart window among them: its menus, its special options, mouse and keys.
void PaneMonkey::InAGraphWindow() {
    GraphWindow* window = nullptr;
    if (!GraphWindows.empty() && Chance(60))
        window = &*std::next(GraphWindows.begin(), Within(static_cast<int>(GraphWindows.size())));
    if (window != nullptr && Chance(15)) return CloseGraphWindow(window->Number);
    if (GraphWindows.size() > 3) return CloseGraphWindow(GraphWindows.front().Number);
    const std::size_t before = GraphWindows.size();
    RunCommand([&] {
        const GraphInHand hand(window);
        if (Chance(60)) return OnTheGraph();
        if (Chance(70)) return WindowCommands[Below(WindowCommands.size())]();
        const std::size_t option = Below(Charts.SpecialActions.size());
        if (Charts.SpecialActions[option] && Charts.SpecialOpts[option].Enabled)
            std::function<void()>(Charts.SpecialActions[option])();
    });
    if (GraphWindows.size() > before) SetBoxOf(&GraphWindows.back(), Blank(BoxWidth, BoxHeight, Painted));
    EXPECT_FALSE(CaptionOf(window).empty());
}

void PaneMonkey::DoOne() {
    Look();
    if (Chance(30)) return Press();
    InAGraphWindow();
}

void PaneMonkey::TypeAGuess() {
    constexpr std::array<const char*, 8> texts = {"", "12", "-3.5", "1E30", "0", "40000", "1,5", "-"};
    if (GetGuess.Guess.empty()) return;
    const int row = Within(static_cast<int>(GetGuess.Guess.size()));
    Control& field = GetGuess.Guess[static_cast<std::size_t>(row)];
    if (!field.Visible || !field.Enabled) return;
    const std::string before = field.Text;
    GetGuessGotFocus(row);
    field.Text = texts[Below(texts.size())];
    FollowGuesses();
    PaintLiveCurve(Blank(300 + Within(600), 200 + Within(500), Painted), 9 + Within(20));
    if (Chance(70)) field.Text = before;
    GetGuessLostFocus(row);
    if (Chance(20)) GetGuessEstimate(row);
    FollowGuesses();
}

void PaneMonkey::InTheRangeBar() {
    constexpr std::array<const char*, 6> texts = {"", "6.1", "6,4", "0", "99", "5.999"};
    const std::size_t side = Below(2);
    switch (Below(4)) {
    case 0:
        RangeBarGotFocus(side);
        RangeBar.Radius[side].Text = texts[Below(texts.size())];
        return RangeBarLostFocus(side);
    case 1:
        RangeCeilingGotFocus();
        RangeBar.Ceiling.Text = texts[Below(texts.size())];
        return RangeCeilingLostFocus();
    case 2:
        return RangeSpikesButton();
    default:
        return RangeBarAutoButton();
    }
}

void PaneMonkey::WorkGraph() {
    for (std::size_t n = Below(8); n > 0 && Charts.Shown; --n) {
        if (RangeBar.Shown && Chance(40))
            InTheRangeBar();
        else
            OnTheGraph();
    }
    if (Charts.Shown && Chance(60)) ChartKey(13, 0);
    if (Charts.Shown) ChartKey(27, 0); // a rubber band that is still drawn goes first
    if (Charts.Shown) ChartKey(27, 0);
    EXPECT_FALSE(Charts.Shown) << "there is no way out of the graph";
}

bool PaneMonkey::WorkForm(const std::string& form) {
    const auto hands = FormsOfGraphs().find(form);
    if (hands == FormsOfGraphs().end()) return false;
    const auto& [steps, ways] = hands->second;
    for (std::size_t n = Below(3); n > 0 && !steps.empty(); --n)
        steps[Below(steps.size())]();
    ways[Below(ways.size())]();
    ways.back()(); // OK may have been refused
    return true;
}

} // namespace Quillon
