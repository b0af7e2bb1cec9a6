#include "commands/Analmenu.h"

#include "commands/Commands.h"

#include "models/ModelTable.h"
#include "persistence/Filelist.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <stdexcept>

namespace Quillon {

AnalmenuForm Analmenu;

namespace {

void Add(MainMenu menu, const char* name, const char* caption, void (*command)(), bool newGroup = false) {
    MainMenuItem item;
    item.Name = name;
    item.Menu = menu;
    item.Item.Text = caption;
    item.NewGroup = newGroup;
    item.Command = [command] { RunCommand(command); };
    Analmenu.Items.push_back(std::move(item));
}

void Checkable(const char* name) {
    for (MainMenuItem& item : Analmenu.Items)
        if (item.Name == name) item.Checkable = true;
}

void AddFileMenu() {
    const auto m = MainMenu::File;
    Add(m, "ReadData", "&Read/change data sets...", ReadData);
    Add(m, "NewNameConvention", "&Use New File Naming Convention", ToggleNameConvention);
    Add(m, "DoFitSave", "&Save current fit to disk...", SaveFit, true);
    Add(m, "DoFitRestore", "R&estore saved fit from disk...", DoFitRestore);
    Add(m, "SaveDefaults", "Save program &defaults...", SaveDefaults, true);
    Add(m, "WriteBaseline", "Wri&te Baseline from Residuals...", WriteBaseline);
    Add(m, "MenuExit", "E&xit", MenuExit, true);
    Checkable("NewNameConvention");
}

void AddAnalysisMenu() {
    const auto m = MainMenu::Analysis;
    Add(m, "DoModelSet", "Define &Model...", DoModelSet);
    Add(m, "DefineUnits", "&Define Units...", DefineUnits);
    Add(m, "FitData", "&Fit Data...", FitData);
    Add(m, "ReviewFit", "&Review last fit...", ReviewFit);
    Add(m, "DoInitGuesses", "R&e-initialize Concentration Guesses...", DoInitGuesses, true);
    Add(m, "SetConcConstraint", "&Constrain Concentrations...", SetConcConstraint);
    Add(m, "SetBaseConstraint", "C&onstrain Zero Offsets...", SetBaseConstraint);
    Add(m, "DoIntegrate", "&Integrate Over Cell...", DoIntegrate);
    Add(m, "AlterBounds", "Alter Parameter &Bounds...", AlterBounds);
    Add(m, "DoSimulate", "&Simulate...", SimulateCommand);
    Add(m, "DoShowConstraint", "Sho&w Match to Conc. Constraints...", DoShowConstraint, true);
    Add(m, "Covariance", "&List Parameter Cross-Correlations...", Covariance);
    Checkable("SetConcConstraint");
    Checkable("SetBaseConstraint");
}

void AddGraphsMenu() {
    const auto m = MainMenu::Graphs;
    Add(m, "GraphData", "&Data Included in Fit", GraphData);
    Add(m, "GraphFunc", "&Fitted Function", GraphFunc);
    Add(m, "GraphOverlay", "&Overlay All Data and Fits", GraphOverlay);
    Add(m, "GraphResiduals", "&Residuals (all) vs. X", GraphResiduals, true);
    Add(m, "GraphResidualsY", "Residuals (all) vs. &Y", GraphResidualsY);
    Add(m, "GraphResidualsR", "Residuals (all) vs. r&adius", GraphResidualsR);
    Add(m, "GraphSpecies", "Species &Concentration (all)", GraphSpecies, true);
    Add(m, "GraphSpeciesFraction", "&Species Fraction (all)", GraphSpeciesFraction);
    Add(m, "GraphMvsC", "&Apparent Molar Mass vs. Concentration (all)", GraphMvsC);
    Add(m, "mnuGraphMvsR", "Apparent Molar Mass vs. Radius (all)", GraphMvsR);
    Add(m, "GraphFuncSet", "Fitted Function (&1 set)...", GraphFuncSet, true);
    Add(m, "GraphOverlaySet", "Overlay Data and Fit (1 se&t)...", GraphOverlaySet);
    Add(m, "GraphResidSet", "Residuals (1 set) vs. &X...", GraphResidSet);
    Add(m, "GraphResidSetY", "Residuals (1 set) &vs. Y...", GraphResidSetY);
    Add(m, "GraphResidualsRSet", "Residuals (1 set) vs. rad&ius...", GraphResidualsRSet);
    Add(m, "GraphSpeciesSet", "Species Co&ncentration (1 set)...", GraphSpeciesSet);
    Add(m, "GraphSpeciesFractionSet", "Species Fraction (1 s&et)...", GraphSpeciesFractionSet);
}

void AddPreferencesMenu() {
    const auto m = MainMenu::Preferences;
    Add(m, "UseResiduals", "Use &Residual Plot in Reports", UseResiduals);
    Add(m, "UseOverlay", "Use Data+Fit &Overlay Plot in Reports", UseOverlay);
    Add(m, "ResidualsSpread", "&Y-shift Data Sets in Residual Plots", ToggleResidualsSpread, true);
    Add(m, "FitPause", "&Pause for Manual Start When Fitting", ToggleFitPause);
    Add(m, "SetConfidence", "Set &Confidence Interval Probability...", SetConfidence, true);
    Add(m, "mnuSigmaCalculator", "&Rotor Speed Calculator...", ShowSigmaCalculator);
    for (const char* name : {"UseResiduals", "UseOverlay", "ResidualsSpread", "FitPause"})
        Checkable(name);
}

void Enable(std::initializer_list<const char*> names, bool enabled) {
    for (const char* name : names)
        if (HasMainItem(name)) MainItem(name).Enabled = enabled;
}

void SetChecks() {
    MainItem("SetConcConstraint").Checked = (Work.ConstraintFlags & ConcentrationBit) != 0;
    MainItem("SetBaseConstraint").Checked = (Work.ConstraintFlags & OffsetBit) != 0;
    MainItem("NewNameConvention").Checked = Work.NameConvention == 1;
    MainItem("UseResiduals").Checked = !Work.OverlayPlot;
    MainItem("UseOverlay").Checked = Work.OverlayPlot != 0;
    MainItem("ResidualsSpread").Checked = Work.SpreadResiduals != 0;
    MainItem("FitPause").Checked = Work.PauseBeforeFit != 0;
}

} // namespace

std::string MainMenuCaption(MainMenu menu) {
    switch (menu) {
    case MainMenu::File:
        return "&File";
    case MainMenu::Analysis:
        return "&Analysis";
    case MainMenu::Graphs:
        return "&Graphs";
    case MainMenu::Preferences:
        return "&Preferences";
    default:
        return "&Help";
    }
}

void LoadAnalmenu() {
    Analmenu = AnalmenuForm{};
    Analmenu.State.Caption = Work.ProgramName + " " + Work.ProgramVersion;
    Analmenu.State.Shown = true;
    AddFileMenu();
    AddAnalysisMenu();
    AddGraphsMenu();
    AddPreferencesMenu();
    Add(MainMenu::Help, "mnuHelpContents", "&Contents...", HelpContents);
    Add(MainMenu::Help, "mnuHelpIndex", "&Index...", HelpIndex);
    Add(MainMenu::Help, "AboutBox", "&About QUILLON...", AboutBox, true);
    MainItem("DoFitSave").Enabled = false; // enabled by the first finished fit, and never disabled again
    SetMenuStatus();
}

bool HasMainItem(const std::string& name) {
    return std::any_of(Analmenu.Items.begin(), Analmenu.Items.end(),
                       [&](const MainMenuItem& item) { return item.Name == name; });
}

MenuItem& MainItem(const std::string& name) {
    for (MainMenuItem& item : Analmenu.Items)
        if (item.Name == name) return item.Item;
    throw std::logic_error("the main menu has no item " + name);
}

void SetMenuStatus() {
    const bool fitValid = Work.FitValid != 0;
    const bool fitDone = Work.FitDone != 0;
    const bool fresh = Work.NewData == 0;
    Enable({"GraphResiduals", "GraphResidualsY", "GraphResidSet", "GraphResidSetY", "GraphResidualsR",
            "GraphResidualsRSet", "WriteBaseline"},
           fresh && fitValid);
    Enable({"GraphFunc", "GraphFuncSet", "GraphOverlay", "GraphOverlaySet", "GraphMvsC", "mnuGraphMvsR",
            "GraphSpecies", "GraphSpeciesFraction", "GraphSpeciesSet", "GraphSpeciesFractionSet"},
           fitValid);
    Enable({"ReviewFit", "Covariance"}, fitDone && fresh);
    if (fitDone) Enable({"DoFitSave"}, true);
    Enable({"DoShowConstraint"}, fitDone && Work.ConstraintFlags);
    Enable({"FitData", "DoSimulate", "AlterBounds", "DoIntegrate", "SetConcConstraint", "DoInitGuesses"},
           Work.ModelChosen && Work.DataChosen);
    Enable({"GraphData", "DefineUnits"}, Work.DataChosen != 0);
    Enable({"SetBaseConstraint"}, Work.DataChosen && Work.NumSets >= 2);
    SetChecks();
    Enable({"WriteBaseline"}, Work.NumSets == 1 && TraitsOfModel().GivesBaseline && fitDone);
}

void RunMainCommand(const std::string& name) {
    for (const MainMenuItem& item : Analmenu.Items)
        if (item.Name == name && item.Item.Enabled) {
            const auto command = item.Command;
            return command();
        }
}

bool MayEnd() {
    if (!MainItem("DoFitSave").Enabled) return true;
    const BoxRequest question{"This will end " + Work.ProgramName +
                                  ".  Remember, you may want to save the last fit to disk.",
                              Work.ProgramName, BoxIcon::Warning, BoxButtons::OkCancel, BoxAnswer::Ok};
    return Host.MessageBoxAnswer(question) == BoxAnswer::Ok;
}

} // namespace Quillon
