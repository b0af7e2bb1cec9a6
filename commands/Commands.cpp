#include "commands/Commands.h"

#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "commands/fitting/FitCommand.h"
#include "commands/history/History.h"
#include "commands/history/SavedState.h"
#include "commands/studies/StudyGraphs.h"
#include "help/HelpForm.h"
#include "models/SEDEQ3.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/NumberBox.h"
#include "models/function/FitFunction.h"
#include "persistence/Defaults.h"
#include "persistence/codec/FitCodec.h"
#include "planning/design/ExpectedErrors.h"
#include "platform/Platform.h"
#include "reporting/values/Correlation.h"
#include "scandata/forms/DataDirectory.h"
#include "scandata/forms/FileForm.h"
#include "scandata/reader/SaveScans.h"
#include "scandata/table/FitData.h"
#include "scandata/table/Temperatures.h"
#include "studies/MinimaForm.h"
#include "studies/StudyForm.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <new>
#include <utility>

namespace Quillon {

namespace {

void TellCommandError(const std::string& text) {
    Tell("Error '" + text + "' occurred in this command.", Work.ProgramName, BoxIcon::Warning);
}

// A form of constraints: what it has changed makes other points of the fit; closed unchanged it leaves the
// fit standing.
void Constrain(void (*dialog)()) {
    const Workspace before = Work;
    dialog();
    if (Work == before) return;
    BuildFitData();
    Work.NewData = Changed::Constraints;
}

// The model and everything that its dialog may have changed with it.
bool IsSameModel(const Workspace& before) {
    return Work.Model == before.Model && Work.NonIdeal == before.NonIdeal &&
           Work.SeparateK == before.SeparateK && Work.OffsetLink == before.OffsetLink &&
           Work.ConstraintFlags == before.ConstraintFlags;
}

int CommandsAtWork = 0; // within one another

struct OneMoreAtWork {
    OneMoreAtWork() { ++CommandsAtWork; }
    ~OneMoreAtWork() { --CommandsAtWork; }
    OneMoreAtWork(const OneMoreAtWork&) = delete;
    OneMoreAtWork& operator=(const OneMoreAtWork&) = delete;
};

// What accepting a table brings up to its points: nothing of it is chosen in the table itself.
void TakeFitAndModel(Workspace& to, const Workspace& from) {
    for (const auto number : {&Workspace::FitDone, &Workspace::FitValid, &Workspace::LimitsDone,
                              &Workspace::NumParms, &Workspace::NumFree})
        to.*number = from.*number;
    for (const auto slots : {&Workspace::Parms, &Workspace::ParmScale})
        to.*slots = from.*slots;
    for (const auto texts : {&Workspace::ParmName, &Workspace::ParmTitle, &Workspace::ParmFormat})
        to.*texts = from.*texts;
    to.FreeMap = from.FreeMap;
    to.FreeIndex = from.FreeIndex;
    to.Bounds = from.Bounds;
    to.FitTitle = from.FitTitle;
    to.PtFit = from.PtFit;
}

// The table was accepted as it had stood: its bytes and those of its points are the same.
bool TableIsAsBefore(const Workspace& before) {
    if (Work.NewData != Changed::Nothing) return false;
    Workspace now = Work;
    TakeFitAndModel(now, before);
    for (const auto text : {&Workspace::DataDirectory, &Workspace::BaselineDirectoryLast})
        now.*text = before.*text;
    return EncodeFit(now) == EncodeFit(before);
}

// The fit that stood before an unchanged table was accepted; where files are looked for stays as it is now.
void GiveBackFit(Workspace before) {
    before.DataDirectory = Work.DataDirectory;
    before.BaselineDirectoryLast = Work.BaselineDirectoryLast;
    before.ChosenPath = Work.ChosenPath;
    before.ChosenName = Work.ChosenName;
    before.NewData = Changed::Nothing;
    Work = std::move(before);
    ResetFitFunction();
}

void RunStudyForm(StudyKind kind) {
    LoadStudyForm(kind);
    StudyForm.Draw = GraphStudy;
    Host.ShowModal(StudyFormName);
    if (StudyForm.Taken) ShowResults();
}

} // namespace

void RunCommand(const std::function<void()>& command, const std::string& caption) {
    const OneMoreAtWork work;
    try {
        command();
    } catch (const RuntimeError& error) {
        TellCommandError(error.Text);
    } catch (const std::bad_alloc&) {
        TellCommandError(ErrorText::OutOfMemory);
    }
    ClearCancel();
    ForgetTakenBack();
    Host.SetPointer(Pointer::Standard);
    NoteHistory(caption);
    SetMenuStatus();
    Analmenu.State.Caption = MainCaption();
}

bool CommandAtWork() {
    return CommandsAtWork > 0;
}

void ReadData() {
    ReadScans({});
}

namespace {

void OpenTable(const std::vector<std::string>& paths, const TableFilling& fill) {
    const Workspace before = Work;
    const DialogAnswer answer = OpenFileForm(paths, fill);
    ReadDataReturn(answer);
    const bool stood = before.FitDone != 0 || before.FitValid != 0;
    if (answer == DialogAnswer::Ok && stood && TableIsAsBefore(before)) GiveBackFit(before);
}

} // namespace

void ReadScans(const std::vector<std::string>& paths) {
    OpenTable(paths, nullptr);
}

void FillData(const TableFilling& fill) {
    OpenTable({}, fill);
}

void ReadDataReturn(DialogAnswer answer) {
    if (answer == DialogAnswer::Cancel)
        Work.NewData = FlagFalse;
    else
        Work.FitDone = Work.FitValid = FlagFalse; // the points of the fit are others now
    SetMenuStatus();
    Host.ShowForm(AnalmenuName);
}

void ToggleNameConvention() {
    Work.NameConvention = Work.NameConvention == NamedBy::Newer ? NamedBy::Older : NamedBy::Newer;
    FindDataDirectory();
}

void SaveDefaults() {
    if (SaveFitDefaults()) SaveProgramDefaults();
}

void WriteBaseline() {
    const bool withOffset =
        AskYesNo("Do you want the data to include the baseline offset?", Work.ProgramName);
    WriteBaselineDialog(withOffset);
}

void MenuExit() {
    Analmenu.Ended = MayEnd();
}

void DoModelSet() {
    const Workspace before = Work;
    if (SelectModel(true) == DialogAnswer::Cancel) return; // a cancelled dialog leaves the fit standing
    if ((before.FitDone || before.FitValid) && IsSameModel(before))
        Work = before; // and so does the model that stood
    else
        Work.FitDone = Work.FitValid = FlagFalse;
}

void DoInitGuesses() {
    InitialGuesses(true);
    Work.FitDone = Work.FitValid = FlagFalse;
}

void SetConcConstraint() {
    Constrain(ConcConstraintDialog);
}

void SetBaseConstraint() {
    if (const std::string refusal = OffsetConstraintRefusal(); !refusal.empty())
        return Tell(refusal, Work.ProgramName, BoxIcon::Warning);
    Constrain(BaseConstraintDialog);
}

void ShareConcentrations() {
    Constrain(ShareConcentrationsDialog);
}

void ToggleTemperatureScale() {
    const Workspace before = Work;
    const bool matters = ScaleMatters();
    if (matters && Work.FitDone &&
        !AskYesNo("The sets of this analysis have different temperatures: on another scale the fit no longer "
                  "stands.  Do you want to change the scale?",
                  Work.ProgramName))
        return;
    const bool kelvin = Work.TemperatureScale == TemperatureScales::Kelvin;
    Work.TemperatureScale = kelvin ? TemperatureScales::Celsius : TemperatureScales::Kelvin;
    try {
        if (matters) BuildFitData();
    } catch (const RuntimeError&) { // 0 degrees Celsius have no ratio
        Work = before;
        throw;
    }
    SaveTemperatureScale();
}

void Covariance() {
    FillCorrelation();
    Host.ShowModal(CorrelationName);
}

// A minimum that was taken is a fit like any other.
void SearchMinima() {
    LoadMinimaForm();
    Host.ShowModal(MinimaFormName);
    if (MinimaForm.Taken) ShowResults();
}

void CompareModelsCommand() {
    RunStudyForm(StudyKind::Compare);
}
void ProfileCommand() {
    RunStudyForm(StudyKind::Profile);
}
void ResampleCommand() {
    RunStudyForm(StudyKind::Resample);
}
void PlanCommand() {
    if (!HasTruth())
        return Tell("A plan takes the values of the parameters as the truth, and there are none yet.\n\nFit "
                    "your data "
                    "(Analysis > Fit Data...), or enter the values that you expect (Analysis > Simulate...).",
                    Work.ProgramName, BoxIcon::Information);
    RunStudyForm(StudyKind::Plan);
}

void HelpOn(const std::string& form) {
    const bool waits = form == ChartsName && Charts.Needed;
    ShowHelpOnForm(!waits ? form : Charts.Markers.empty() ? "BaselineShift" : "RangeGraph");
}

void AboutBox() {
    Tell(Work.ProgramName + " " + Work.ProgramVersion + "\n" + Work.ProgramDate +
             "\n\nGlobal analysis of sedimentation equilibrium experiments.",
         Work.ProgramName, BoxIcon::Information);
}

} // namespace Quillon
