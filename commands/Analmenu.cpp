#include "commands/Analmenu.h"

#include "commands/Commands.h"
#include "commands/Workbench.h"
#include "commands/history/SavedState.h"

#include "fit/Misfit.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <stdexcept>

namespace Quillon {

AnalmenuForm Analmenu;

namespace {

MainMenuItem& Find(const std::string& name) {
    for (MainMenuItem& item : Analmenu.Items)
        if (item.Row.Name == name) return item;
    throw std::logic_error("the main menu has no item " + name);
}

} // namespace

std::string MainMenuCaption(MainMenu menu) {
    switch (menu) {
    case MainMenu::File:
        return "&File";
    case MainMenu::Edit:
        return "&Edit";
    case MainMenu::Analysis:
        return "&Analysis";
    case MainMenu::Graphs:
        return "&Graphs";
    case MainMenu::View:
        return "&View";
    case MainMenu::Preferences:
        return "&Preferences";
    default:
        return "&Help";
    }
}

void LoadAnalmenu() {
    Analmenu = AnalmenuForm{};
    Analmenu.State.Shown = true;
    for (const MenuRow& row : MenuRows())
        Analmenu.Items.push_back({row, MenuItem{row.Caption, false, false, true}});
    LoadWorkbench();
    SetMenuStatus();
    Analmenu.State.Caption = MainCaption();
}

MenuItem& MainItem(const std::string& name) {
    return Find(name).Item;
}

void SetMenuStatus() {
    for (MainMenuItem& item : Analmenu.Items) {
        item.Item.Enabled = item.Row.EnabledWhen == nullptr || item.Row.EnabledWhen();
        item.Item.Checked = item.Row.CheckedWhen != nullptr && item.Row.CheckedWhen();
    }
    FillWorkbench();
}

void RunMainCommand(const std::string& name) {
    const MainMenuItem& item = Find(name);
    if (item.Item.Enabled) RunCommand(item.Row.Command, item.Row.Caption);
}

std::string DataStateText() {
    const auto counted = [](long count, const char* one, const char* several) {
        return std::to_string(count) + (count == 1 ? one : several);
    };
    return counted(Work.NumSets, " data set, ", " data sets, ") + counted(Work.NumPts, " point", " points");
}

std::string FitStateText() {
    if (!Work.FitDone) return Work.Outcome.Sentence;
    const std::string end = Work.Outcome.End == FitEnd::StoppedShort ? Work.Outcome.Sentence
                            : Work.Outcome.Rescued                   ? "converged, with damped steps"
                                                                     : "converged";
    return end + "; rms residual " + FormatNumber(static_cast<double>(Work.RmsResidual), "0.000E-##") +
           MisfitStateText();
}

bool MayEnd() {
    if (!IsUnsaved()) return true;
    BoxRequest question{"This will end " + Work.ProgramName +
                            ".  Remember, you may want to save the last fit to disk.",
                        Work.ProgramName, BoxIcon::Warning, BoxButtons::YesNoCancel, BoxAnswer::Yes};
    question.YesCaption = "&Save";
    question.NoCaption = "OK";
    const BoxAnswer answer = Host.MessageBoxAnswer(question);
    return answer == BoxAnswer::Yes ? SaveFitAgain() : answer == BoxAnswer::No;
}

} // namespace Quillon
