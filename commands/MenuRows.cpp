#include "commands/MenuRows.h"
#include "chart/files/GraphFile.h"
#include "chart/hand/Charts.h"

#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/ReadRun.h"
#include "commands/StartUp.h"
#include "commands/Workbench.h"
#include "commands/export/AnalysisJob.h"
#include "commands/export/HtmlReport.h"
#include "commands/export/MeasuredData.h"
#include "commands/fitting/FitAtOnce.h"
#include "commands/fitting/FitCommand.h"
#include "commands/fitting/SimulateCommand.h"
#include "commands/history/History.h"
#include "commands/history/HistoryForm.h"
#include "commands/history/SavedState.h"
#include "commands/studies/TableForm.h"
#include "fit/equations/NoiseWeights.h"
#include "fit/forms/BoundsForm.h"
#include "fit/forms/ConfidenceInput.h"
#include "fit/forms/NoiseForm.h"
#include "graphs/FigureForm.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/MassGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "graphs/kinds/SpeciationGraph.h"
#include "graphs/kinds/SpeciesGraphs.h"
#include "help/HelpForm.h"
#include "models/forms/ShowConstraintForm.h"
#include "models/forms/SigmaCalcForm.h"
#include "models/forms/SpecForm.h"
#include "models/forms/UnitsForm.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/ModelTable.h"
#include "persistence/Defaults.h"
#include "persistence/FitFile.h"
#include "persistence/settings/SettingsForm.h"
#include "planning/CalculatorForm.h"
#include "studies/StudyForm.h"
#include "studies/methods/OtherMinima.h"
#include "workspace/records/Roads.h"

#include <string_view>

namespace Quillon {

namespace {

// --- when items are enabled ------------------------------------------------------------------------------

bool DataChosen() {
    return Work.DataChosen != 0;
}
bool DataAndModel() {
    return Work.ModelChosen != 0 && Work.DataChosen != 0;
}
// After a simulation the scans are not those of the files.
bool JobGivesTheFit() {
    return DataAndModel() && !MeasuredDataKept();
}
bool SeveralSets() {
    return Work.DataChosen != 0 && Work.NumSets >= 2;
}
bool FitIsValid() {
    return Work.FitValid != 0;
}
// Of the points as they are: nothing was changed since that they depend on.
bool ResidualsStand() {
    return Work.NewData == Changed::Nothing && Work.FitValid != 0;
}
bool ResultsStand() {
    return Work.NewData == Changed::Nothing && Work.FitDone != 0;
}
bool MatchStands() {
    return Work.FitDone != 0 && Work.ConstraintFlags != 0;
}
bool ResidualsAreABaseline() {
    return Work.NumSets == 1 && TraitsOfModel().GivesBaseline && Work.FitDone != 0;
}
bool MayCompare() {
    return CanStudy(StudyKind::Compare);
}
bool MayProfile() {
    return CanStudy(StudyKind::Profile);
}
bool MayResample() {
    return CanStudy(StudyKind::Resample);
}
// From the first finished fit on, and never disabled again.
bool MayBeSaved() {
    return Work.FitDone != 0 || MainItem("DoFitSave").Enabled;
}
constexpr bool (*Always)() = nullptr;

// --- when items are checked ------------------------------------------------------------------------------

bool NewNames() {
    return Work.NameConvention == NamedBy::Newer;
}
bool ConcentrationsConstrained() {
    return (Work.ConstraintFlags & ConcentrationBit) != 0;
}
bool OffsetsConstrained() {
    return (Work.ConstraintFlags & OffsetBit) != 0;
}
bool SetsAreWeighted() {
    return SetsHaveNoise();
}
bool ConcentrationsShared() {
    for (const RowNo row : EachRow())
        if (const SetNo set = SetOf(row); set > NoSet && LeaderOf(set) > NoSet) return true;
    return false;
}
bool ReportsResiduals() {
    return Work.OverlayPlot == 0;
}
bool ReportsOverlay() {
    return Work.OverlayPlot != 0;
}
bool ResidualsAreSpread() {
    return Work.SpreadResiduals != 0;
}
bool PausesBeforeFit() {
    return Work.PauseBeforeFit != 0;
}
bool RescuesAlways() {
    return Work.RescueMode == Rescue::Always;
}
bool ScalesByKelvin() {
    return Work.TemperatureScale == TemperatureScales::Kelvin;
}
constexpr bool (*Plain)() = nullptr;

// --- commands of one line --------------------------------------------------------------------------------

void DoFitSave() {
    SaveFitAs();
}
void DoSaveAgain() {
    SaveFitAgain();
}
void OpenGraph() { // the graph window has the same item, but opens with a graph alone
    if (RestoreChosenGraph()) Host.ShowForm(ChartsName);
}
void FitData() {
    FitDataCommand();
}
void UseResiduals() {
    Work.OverlayPlot = FlagFalse;
}
void UseOverlay() {
    Work.OverlayPlot = FlagTrue;
}
void ToggleResidualsSpread() {
    Work.SpreadResiduals = Flag(!Work.SpreadResiduals);
}
void ToggleFitPause() {
    Work.PauseBeforeFit = Flag(!Work.PauseBeforeFit);
}
void ToggleAlwaysRescue() {
    Work.RescueMode = RescuesAlways() ? Rescue::Ask : Rescue::Always;
    SaveAlwaysRescue();
}

constexpr bool NewGroup = true;

// clang-format off
std::vector<MenuRow> AllRows() {
    constexpr MainMenu File = MainMenu::File, Analysis = MainMenu::Analysis, Graphs = MainMenu::Graphs;
    constexpr MainMenu Preferences = MainMenu::Preferences, Help = MainMenu::Help, Edit = MainMenu::Edit;
    constexpr MainMenu View = MainMenu::View;
    return {
        {File, "OpenAnything", "&Open...", OpenAnything, Always},
        {File, "ReadData", "&Read/change data sets...", ReadData, Always},
        {File, "NewNameConvention", "&Use New File Naming Convention", ToggleNameConvention, Always, NewNames},
        {File, "DoFitSave", "&Save current fit to disk...", DoFitSave, MayBeSaved, Plain, NewGroup},
        {File, "SaveAgain", "Save to Its &File", DoSaveAgain, IsUnsaved},
        {File, "DoFitRestore", "R&estore saved fit from disk...", RestoreFitCommand, Always},
        {File, "SaveDefaults", "Save program &defaults...", SaveDefaults, Always, Plain, NewGroup},
        {File, "WriteBaseline", "Wri&te Baseline from Residuals...", WriteBaseline, ResidualsAreABaseline},
        {File, "ExportMethods", "Export &Methods Table...", ExportMethodsTable, ResultsStand, Plain, NewGroup},
        {File, "SaveJob", "Save as &Job...", SaveAsJob, JobGivesTheFit},
        {File, "RunTable", "Run a Ta&ble of Fits...", RunTableOfFits, Always},
        {File, "ReadRun", "Read &a Run...", ReadRunCommand, Always},
        {File, "OpenGraph", "Show Saved &Graph...", OpenGraph, Always},
        {File, "MenuExit", "E&xit", MenuExit, Always, Plain, NewGroup},

        {Edit, "Undo", "&Undo", UndoCommand, CanUndo},
        {Edit, "Redo", "&Redo", RedoCommand, CanRedo},
        {Edit, "ShowHistory", "&History...", ShowHistory, Always, Plain, NewGroup},

        {Analysis, "DoModelSet", "Define &Model...", DoModelSet, Always},
        {Analysis, "DefineUnits", "&Define Units...", DefineUnitsDialog, DataChosen},
        {Analysis, "FitData", "&Fit Data...", FitData, DataAndModel},
        {Analysis, "FitAtOnce", "Fit at Once", FitAtOnce, DataChosen},
        {Analysis, "ReviewFit", "&Review last fit...", ShowResults, ResultsStand},
        {Analysis, "SearchMinima", "Search for Ot&her Minima...", SearchMinima, CanRestart},
        {Analysis, "DoInitGuesses", "R&e-initialize Concentration Guesses...", DoInitGuesses, DataAndModel, Plain, NewGroup},
        {Analysis, "SetConcConstraint", "&Constrain Concentrations...", SetConcConstraint, DataAndModel, ConcentrationsConstrained},
        {Analysis, "SetBaseConstraint", "C&onstrain Zero Offsets...", SetBaseConstraint, SeveralSets, OffsetsConstrained},
        {Analysis, "ShareConcentrations", "Share Conce&ntrations...", ShareConcentrations, SeveralSets, ConcentrationsShared},
        {Analysis, "SetNoise", "Noise of Da&ta Sets...", NoiseDialog, SeveralSets, SetsAreWeighted},
        {Analysis, "DoIntegrate", "&Integrate Over Cell...", IntegrateDialog, DataAndModel},
        {Analysis, "AlterBounds", "Alter Parameter &Bounds...", BoundsDialog, DataAndModel},
        {Analysis, "DoSimulate", "&Simulate...", SimulateCommand, DataAndModel},
        {Analysis, "BringBackMeasured", "Bring Bac&k Measured Data", BringBackMeasuredData, MeasuredDataKept},
        {Analysis, "DoShowConstraint", "Sho&w Match to Conc. Constraints...", ShowConstraintMatch, MatchStands, Plain, NewGroup},
        {Analysis, "Covariance", "&List Parameter Cross-Correlations...", Covariance, ResultsStand},
        {Analysis, "CompareModels", "Comp&are Models...", CompareModelsCommand, MayCompare, Plain, NewGroup},
        {Analysis, "ProfileParameter", "&Profile of a Parameter...", ProfileCommand, MayProfile},
        {Analysis, "ResampleFit", "Resample...", ResampleCommand, MayResample},
        {Analysis, "PlanExperiment", "Plan an Experiment...", PlanCommand, DataAndModel},

        {Graphs, "GraphData", "&Data Included in Fit", GraphData, DataChosen},
        {Graphs, "GraphFunc", "&Fitted Function", GraphFunc, FitIsValid},
        {Graphs, "GraphOverlay", "&Overlay All Data and Fits", GraphOverlay, FitIsValid},
        {Graphs, "GraphResiduals", "&Residuals (all) vs. X", GraphResiduals, ResidualsStand, Plain, NewGroup},
        {Graphs, "GraphResidualsY", "Residuals (all) vs. &Y", GraphResidualsY, ResidualsStand},
        {Graphs, "GraphResidualsR", "Residuals (all) vs. r&adius", GraphResidualsR, ResidualsStand},
        {Graphs, "GraphSpecies", "Species &Concentration (all)", GraphSpecies, FitIsValid, Plain, NewGroup},
        {Graphs, "GraphSpeciesFraction", "&Species Fraction (all)", GraphSpeciesFraction, FitIsValid},
        {Graphs, "GraphMvsC", "&Apparent Molar Mass vs. Concentration (all)", GraphMvsC, FitIsValid},
        {Graphs, "mnuGraphMvsR", "Apparent Molar Mass vs. Radius (all)", GraphMvsR, FitIsValid},
        {Graphs, "GraphSpeciation", "S&peciation Curve...", GraphSpeciation, FitIsValid},
        {Graphs, "GraphFuncSet", "Fitted Function (&1 set)...", GraphFuncSet, FitIsValid, Plain, NewGroup},
        {Graphs, "GraphOverlaySet", "Overlay Data and Fit (1 se&t)...", GraphOverlaySet, FitIsValid},
        {Graphs, "GraphResidSet", "Residuals (1 set) vs. &X...", GraphResidSet, ResidualsStand},
        {Graphs, "GraphResidSetY", "Residuals (1 set) &vs. Y...", GraphResidSetY, ResidualsStand},
        {Graphs, "GraphResidualsRSet", "Residuals (1 set) vs. rad&ius...", GraphResidualsRSet, ResidualsStand},
        {Graphs, "GraphSpeciesSet", "Species Co&ncentration (1 set)...", GraphSpeciesSet, FitIsValid},
        {Graphs, "GraphSpeciesFractionSet", "Species Fraction (1 s&et)...", GraphSpeciesFractionSet, FitIsValid},
        {Graphs, "GraphFigure", "Fi&gure for Publication...", FigureDialog, ResidualsStand, Plain, NewGroup},
        {Graphs, "GraphApproach", "Approach to E&quilibrium...", GraphApproach, DataChosen},

        {View, "ShowSteps", "&Steps", ToggleStepsPane, Always, StepsPaneShown},
        {View, "ShowGraphs", "&Data and Residuals", ToggleGraphsPane, Always, GraphsPaneShown},
        {View, "ShowParameters", "&Parameters", ToggleParametersPane, Always, ParametersPaneShown},
        {View, "ResetLayout", "&Reset Layout", ResetLayout, Always, Plain, NewGroup},

        {Preferences, "UseResiduals", "Use &Residual Plot in Reports", UseResiduals, Always, ReportsResiduals},
        {Preferences, "UseOverlay", "Use Data+Fit &Overlay Plot in Reports", UseOverlay, Always, ReportsOverlay},
        {Preferences, "ResidualsSpread", "&Y-shift Data Sets in Residual Plots", ToggleResidualsSpread, Always, ResidualsAreSpread, NewGroup},
        {Preferences, "FitPause", "&Pause for Manual Start When Fitting", ToggleFitPause, Always, PausesBeforeFit},
        {Preferences, "AlwaysRescue", "Always Search for a Minimum with &Damped Steps", ToggleAlwaysRescue, Always, RescuesAlways},
        {Preferences, "AbsoluteTemperature", "Scale Sigma by &Absolute Temperature", ToggleTemperatureScale, Always, ScalesByKelvin},
        {Preferences, "SetConfidence", "Set &Confidence Interval Probability...", ConfidenceDialog, Always, Plain, NewGroup},
        {Preferences, "mnuSigmaCalculator", "&Rotor Speed Calculator...", SigmaCalculatorDialog, Always},
        {Preferences, "mnuCalculators", "Protein, Buffer, Time to Equilibrium...", CalculatorDialog, Always},
        {Preferences, "AllSettings", "All Settin&gs...", SettingsDialog, Always, Plain, NewGroup},

        {Help, "mnuHelpContents", "&Contents...", ShowHelpContents, Always},
        {Help, "mnuHelpIndex", "&Index...", ShowHelpIndex, Always},
        {Help, "AboutBox", "&About QUILLON...", AboutBox, Always, Plain, NewGroup},
    };
}
// clang-format on

// Habits of every desktop, and the ones that a fit is looked at with.
struct ItemKeys {
    const char* Name;
    const char* Keys;
};
constexpr ItemKeys KeysOfItems[] = {{"OpenAnything", "Ctrl+O"}, {"DoFitSave", "Ctrl+Shift+S"},
                                    {"SaveAgain", "Ctrl+S"},    {"MenuExit", "Ctrl+Q"},
                                    {"Undo", "Ctrl+Z"},         {"Redo", "Ctrl+Y; Ctrl+Shift+Z"},
                                    {"FitData", "F5"},          {"FitAtOnce", "Shift+F5"},
                                    {"ReviewFit", "F6"},        {"GraphOverlay", "F7"},
                                    {"GraphResiduals", "F8"}};

std::vector<MenuRow> RowsWithKeys() {
    std::vector<MenuRow> rows = AllRows();
    for (MenuRow& row : rows)
        for (const ItemKeys& item : KeysOfItems)
            if (std::string_view(row.Name) == item.Name) row.Keys = item.Keys;
    return rows;
}

} // namespace

const std::vector<MenuRow>& MenuRows() {
    static const std::vector<MenuRow> rows = RowsWithKeys();
    return rows;
}

} // namespace Quillon
