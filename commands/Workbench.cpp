#include "commands/Workbench.h"

#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/Examples.h"
#include "commands/Sessions.h"
#include "commands/StartUp.h"
#include "commands/history/History.h"
#include "models/table/Catalogue.h"
#include "persistence/Filelist.h"
#include "persistence/settings/WindowPlaces.h"
#include "platform/FormControls.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/forms/DataDirectory.h"
#include "scandata/forms/FileForm.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

WorkbenchForm Workbench;

namespace {

constexpr const char* LayoutKey = "Layout";

PaneState& StateOf(PaneKind pane) {
    return Workbench.Panes[static_cast<std::size_t>(pane)];
}

// A caption that holds "&" as it is.
std::string AsCaption(const std::string& text) {
    std::string caption;
    for (const char c : text)
        caption += c == '&' ? std::string("&&") : std::string(1, c);
    return caption;
}

// --- the state of the steps in words -----------------------------------------------------------------------

std::string DataWords() {
    return Work.DataChosen ? DataStateText() : "no data sets yet";
}

std::string ModelWords() {
    if (!Work.ModelChosen) return "not chosen yet";
    std::string words = ModelDialogName(Work.Model);
    if (Work.NonIdeal) words += ", non-ideal";
    if (Work.SeparateK) words += ", constants for each set";
    return words;
}

std::string UnitWords() {
    constexpr std::array<const char*, 3> masses = {"sigma", "buoyant molar mass", "molar mass"};
    constexpr std::array<const char*, 6> concentrations = {"absorbance", "mg/mL", "mol/L",
                                                           "fringes",    "mg/mL", "mol/L"};
    const auto mass = static_cast<std::size_t>(Work.MassUnits);
    const auto concentration = static_cast<std::size_t>(Work.ConcUnits);
    if (mass >= masses.size() || concentration >= concentrations.size()) return "";
    return std::string(masses[mass]) + ", " + concentrations[concentration];
}

bool FitStands() {
    return Work.FitDone && Work.NewData == Changed::Nothing;
}

std::string FitWords() {
    const std::string end = FitStateText();
    if (!end.empty())
        return Work.NewData == Changed::Nothing ? end : end + "; data or constraints have changed since";
    if (Work.DataChosen && Work.ModelChosen) return "ready";
    return Work.DataChosen    ? "waits for a model"
           : Work.ModelChosen ? "waits for data"
                              : "waits for data and a model";
}

// --- the steps -------------------------------------------------------------------------------------------

void NameStep(std::size_t place, const char* caption, const char* command, const char* tip) {
    Workbench.Steps[place].Button = Captioned(caption, tip);
    Workbench.Steps[place].Command = command;
}

void SetStep(std::size_t place, const std::string& words, bool done) {
    WorkStep& step = Workbench.Steps[place];
    step.State.Text = AsCaption(words);
    step.Button.Enabled = MainItem(step.Command).Enabled;
    step.Progress = done ? StepState::Done : StepState::Waits;
}

// Data, model, fit: the first of them that is not done. Units are right as they are or not; nobody waits for
// them.
void MarkNextStep() {
    for (const std::size_t place : {std::size_t{0}, std::size_t{1}, std::size_t{3}}) {
        WorkStep& step = Workbench.Steps[place];
        if (step.Progress == StepState::Done) continue;
        step.Progress = StepState::Next;
        return;
    }
}

void FillSteps() {
    SetStep(0, DataWords(), Work.DataChosen != 0);
    SetStep(1, ModelWords(), Work.ModelChosen != 0);
    SetStep(2, UnitWords(), Work.DataChosen != 0);
    SetStep(3, FitWords(), FitStands());
    MarkNextStep();
    Workbench.AtOnce.Enabled = MainItem("FitAtOnce").Enabled;
}

// --- the start page --------------------------------------------------------------------------------------

void FillRecent() {
    Workbench.RecentHead.Visible = mnuRecentFile[0].Visible;
    for (long item = 1; item <= MaxRecentFiles; ++item) {
        Control& button = Workbench.Recent[static_cast<std::size_t>(item - 1)];
        const std::string& path = mnuRecentFile[item].Path;
        button.Visible = mnuRecentFile[item].Visible;
        button.Text = AsCaption(FileTitle(path));
        button.ToolTip = path;
    }
}

constexpr std::size_t SessionRows = 3; // of the latest; the others come up when these are done with

// Files are read for it: at the start, and when one of them has been taken.
void FillSessions() {
    const std::vector<RecoverableSession> sessions = RecoverableSessions();
    Workbench.SessionsHead.Visible = !sessions.empty();
    for (std::size_t i = 0; i < SessionRows; ++i) {
        Control& row = Workbench.Sessions[i];
        row.Visible = Workbench.Discards[i].Visible = i < sessions.size();
        row.Text = row.Visible ? AsCaption(sessions[i].Text) : "";
        row.Tag = row.Visible ? sessions[i].Path : "";
    }
}

void LoadSessions() {
    Workbench.SessionsHead = Captioned("Not saved when the program ended");
    Workbench.Sessions.assign(SessionRows, Control{});
    Workbench.Discards.assign(SessionRows, Captioned("Discard", "Forget what was kept of it"));
    FillSessions();
}

void LoadStartPage() {
    LoadSessions();
    Workbench.Title = Captioned("Global analysis of sedimentation equilibrium experiments");
    Workbench.OpenScans =
        Captioned("Open &Scans...", "Several at once; they come into the table of data sets");
    Workbench.OpenFit = Captioned("&Open Fit...", "A saved fit with all its data");
    Workbench.RecentHead = Captioned("Recent fits");
    Workbench.Recent.assign(static_cast<std::size_t>(MaxRecentFiles), Control{});
    Workbench.Examples.clear();
    for (const Example& example : FoundExamples())
        Workbench.Examples.push_back(Captioned(AsCaption(example.Caption), example.Job.c_str()));
    Workbench.ExamplesHead = Captioned("Examples");
    Workbench.ExamplesHead.Visible = !Workbench.Examples.empty();
    Workbench.Hint = Captioned("Scans, folders, saved fits, jobs and graphs can be dropped on this window.");
}

} // namespace

void LoadWorkbench() {
    Workbench = WorkbenchForm{};
    Workbench.Panes = {PaneState{"ShowSteps", "Steps"}, PaneState{"ShowGraphs", "Data and Residuals"},
                       PaneState{"ShowParameters", "Parameters"}};
    for (PaneState& pane : Workbench.Panes)
        pane.Shown = KeptPlace(pane.Key) != "False";
    Workbench.Layout = KeptPlace(LayoutKey);
    NameStep(0, "&Data...", "ReadData", "Scans, channels and ranges that are fitted");
    NameStep(1, "&Model...", "DoModelSet", "What associates with what");
    NameStep(2, "&Units...", "DefineUnits", "Of masses and concentrations, with the coefficients they need");
    NameStep(3, "Fi&t...", "FitData", "Guesses, what is held, and the fit");
    Workbench.AtOnce = Captioned("Fit at Once", "With guesses read off the data and all that the model fits; "
                                                "nothing is asked (Shift+F5)");
    LoadStartPage();
}

void FillWorkbench() {
    if (Workbench.Recent.empty()) return; // no window has been loaded
    FillSteps();
    FillKeepNote();
    Workbench.Starts = Work.DataChosen == 0;
    FillRecent();
}

bool FillKeepNote() {
    const std::string former = Workbench.KeepNote.Text;
    std::string& note = Workbench.KeepNote.Text;
    note.clear();
    if (const std::string& why = SessionFailure(); !why.empty())
        note = "Should the program die, what is not saved is lost: it could not be kept (" + why + ").";
    if (const std::string& why = History.Failure; !why.empty())
        note += (note.empty() ? "" : " ") + ("Undo does not know of the latest change (" + why + ").");
    Workbench.KeepNote.Visible = !note.empty();
    return Workbench.KeepNote.Text != former;
}

bool PaneIsSeen(PaneKind pane) {
    return StateOf(pane).Shown && (pane == PaneKind::Steps || !Workbench.Starts);
}

void StepButton(std::size_t step) {
    RunMainCommand(Workbench.Steps[step].Command);
}

void AtOnceButton() {
    RunMainCommand("FitAtOnce");
}

void OpenScansIn(const std::string& folder) {
    if (!folder.empty()) Work.DataDirectory = folder;
    if (Work.DataDirectory.empty()) FindDataDirectory();
    FileRequest request;
    request.Title = Work.ProgramName + " - Open Scans";
    request.Filter = ScanFilter;
    request.Directory = Work.DataDirectory;
    request.Several = true;
    const FileAnswer answer = Host.AskFile(request);
    if (!answer.Cancelled) RunCommand([&] { ReadScans(answer.Paths); }, "Read scans");
}

void OpenScansButton() {
    OpenScansIn("");
}

void OpenFitButton() {
    RunMainCommand("DoFitRestore");
}

void RecentFitButton(std::size_t place) {
    RunRecentFile(static_cast<long>(place) + 1);
}

void SessionButton(std::size_t place) {
    const std::string path = Workbench.Sessions[place].Tag;
    RunCommand([&] { RestoreSession(path); }, "Restore session");
    FillSessions();
}

void DiscardButton(std::size_t place) {
    const Control& row = Workbench.Sessions[place];
    if (!AskYesNo(row.Text + "\n\nIt has not been saved anywhere else. Discard it?", Work.ProgramName,
                  BoxAnswer::No, BoxIcon::Warning))
        return;
    RunCommand([&] { DiscardSession(row.Tag); });
    FillSessions();
}

void ExampleButton(std::size_t place) {
    OpenDropped({Workbench.Examples[place].ToolTip});
}

// --- panes -----------------------------------------------------------------------------------------------

void ShowPane(PaneKind pane, bool shown) {
    StateOf(pane).Shown = shown;
    KeepPlaces({{StateOf(pane).Key, shown ? "True" : "False"}});
    SetMenuStatus();
}

void ToggleStepsPane() {
    ShowPane(PaneKind::Steps, !StepsPaneShown());
}
void ToggleGraphsPane() {
    ShowPane(PaneKind::Graphs, !GraphsPaneShown());
}
void ToggleParametersPane() {
    ShowPane(PaneKind::Parameters, !ParametersPaneShown());
}
bool StepsPaneShown() {
    return StateOf(PaneKind::Steps).Shown;
}
bool GraphsPaneShown() {
    return StateOf(PaneKind::Graphs).Shown;
}
bool ParametersPaneShown() {
    return StateOf(PaneKind::Parameters).Shown;
}

void ResetLayout() {
    std::vector<IniSetting> places = {{LayoutKey, ""}};
    for (PaneState& pane : Workbench.Panes) {
        pane.Shown = true;
        places.push_back({pane.Key, "True"});
    }
    Workbench.Layout.clear();
    ++Workbench.TimesReset;
    KeepPlaces(places);
}

void KeepLayout(const std::string& layout) {
    if (layout == Workbench.Layout) return;
    Workbench.Layout = layout;
    KeepPlaces({{LayoutKey, layout}});
}

} // namespace Quillon
