#pragma once
// What stands below the menu of the main window, as data: the four steps of an analysis with their state in
// words, the page that stands there before there are data, and which panes are shown. It follows the
// workspace with the menu: SetMenuStatus fills it.

#include "platform/Controls.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

// --- the four steps --------------------------------------------------------------------------------------

enum class StepState { Waits, Next, Done }; // for another step; to be done now; done, and may be done anew

struct WorkStep {
    Control Button;           // enabled as the menu's item is
    Control State;            // in words: "9 data sets, 420 points"
    const char* Command = ""; // the menu's item that it runs
    StepState Progress = StepState::Waits;
};

// --- panes -----------------------------------------------------------------------------------------------

enum class PaneKind : std::size_t { Steps, Graphs, Parameters };
inline constexpr std::size_t PaneKinds = 3;

struct PaneState {
    const char* Key = "";     // in the ini file
    const char* Caption = ""; // of its frame
    bool Shown = true;        // as the user wants it
};

// --- the whole -------------------------------------------------------------------------------------------

struct WorkbenchForm {
    std::array<WorkStep, 4> Steps; // data, model, units, fit
    Control AtOnce;                // the fit without questions
    std::array<PaneState, PaneKinds> Panes;
    std::string Layout; // where the panes stand, as whoever shows them writes it; "" as they come
    int TimesReset = 0; // of the layout: whoever shows it starts afresh when this changes

    bool Starts = true; // the start page stands in place of graphs and parameters
    Control Title, Hint;
    Control OpenScans, OpenFit;
    Control SessionsHead;
    std::vector<Control> Sessions, Discards; // what a copy of the program has left that died; a row for each
    Control RecentHead;
    std::vector<Control> Recent; // a button for each place of the list; the whole path is its tip
    Control ExamplesHead;
    std::vector<Control> Examples; // a button for each that is there; its job is the tip

    Control KeepNote; // at the foot: why nothing is kept for a restart or for Undo; hidden while all is well
};
extern WorkbenchForm Workbench;

// At the start of the program: which panes are shown, and where, from the ini file.
void LoadWorkbench();

// Brings the record up to the workspace.
void FillWorkbench();

// Brings KeepNote up to the latest attempt to keep the analysis (SessionFailure) and to the latest change
// (History.Failure). True when it says something else than before.
bool FillKeepNote();

// True when a pane is to be seen: the user wants it, and there is something in it.
bool PaneIsSeen(PaneKind pane);

void StepButton(std::size_t step);
void AtOnceButton();
void OpenScansButton(); // asks for scans, several at once, and opens the table with them
void OpenFitButton();
void RecentFitButton(std::size_t place); // from 0
void SessionButton(std::size_t place);
void DiscardButton(std::size_t place); // after a question: what was kept is gone then
void ExampleButton(std::size_t place);

// As OpenScansButton, beginning in a folder, which then is that of the data.
void OpenScansIn(const std::string& folder);

// A pane is shown or hidden, by the menu or by its own button, and is so at the next start.
void ShowPane(PaneKind pane, bool shown);
void ToggleStepsPane();
void ToggleGraphsPane();
void ToggleParametersPane();
bool StepsPaneShown();
bool GraphsPaneShown();
bool ParametersPaneShown();

// All panes, where they come to stand by themselves.
void ResetLayout();

// The user has arranged the panes; kept for the next start.
void KeepLayout(const std::string& layout);

} // namespace Quillon
