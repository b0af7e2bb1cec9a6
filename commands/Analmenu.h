#pragma once
// The main window: a menu, which of its items are enabled, and the command behind each.
//
// Each command runs one function of the analysis to its end and then recomputes the menu. A run-time error
// that reaches a command is told there, and the workspace stays usable. What the menu holds is a table:
// commands/MenuRows.h.

#include "commands/MenuRows.h"
#include "platform/Controls.h"
#include "workspace/records/AnalmenuName.h"

#include <string>
#include <vector>

namespace Quillon {

struct MainMenuItem {
    MenuRow Row;
    MenuItem Item;
};

struct AnalmenuForm {
    FormState State;
    std::vector<MainMenuItem> Items; // in the order of the menus
    bool Ended = false;              // the program is to end
};
extern AnalmenuForm Analmenu;

// Builds the menu. Names of the menus with their access keys: MainMenuCaption.
void LoadAnalmenu();
std::string MainMenuCaption(MainMenu menu);

// The item of a name; a name that no row has is a logic error of the caller.
MenuItem& MainItem(const std::string& name);

// Recomputes what is enabled and checked from the state of the workspace, and with it what stands below the
// menu (commands/Workbench.h). Run at the end of every command.
void SetMenuStatus();

// The data of the analysis, as the main window shows them: "3 data sets, 420 points".
std::string DataStateText();

// How the latest fit ended, as the main window shows it: "converged; rms residual 4.1E-3", a stop on the way
// or a failure by its sentence. Empty without a fit.
std::string FitStateText();

// Runs the command of an item, as a click does: errors are told, the menu is recomputed. A disabled item does
// nothing; a name that no row has is a logic error of the caller.
void RunMainCommand(const std::string& name);

// The user wants to end the program. Asks where something is unsaved (commands/history/SavedState.h), with a
// way to save it; true when the program may end.
bool MayEnd();

} // namespace Quillon
