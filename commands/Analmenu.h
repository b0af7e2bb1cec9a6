#pragma once
// The main window: a menu, which of its items are enabled, and the command behind each.
//
// Each command runs one function of the analysis to its end and then recomputes the menu. A run-time error
// that reaches a command is told there, and the workspace stays usable. Commands of parts that the program
// does not have yet are not in the menu.

#include "platform/Controls.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

enum class MainMenu { File, Analysis, Graphs, Preferences, Help };

struct MainMenuItem {
    std::string Name; // "ReadData", "FitData", ...
    MainMenu Menu{};
    MenuItem Item;
    bool Checkable = false;
    bool NewGroup = false;         // a line stands above it
    std::function<void()> Command; // the whole command, errors told, menu recomputed
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

// The item of a name; an unknown name is a logic error of the caller.
MenuItem& MainItem(const std::string& name);
bool HasMainItem(const std::string& name);

// Recomputes what is enabled and checked from the state of the workspace. Run at the end of every command.
void SetMenuStatus();

// Runs the command of an item, as a click does. A disabled item does nothing.
void RunMainCommand(const std::string& name);

// The files of the recent list: restores item 1 to 6.
void RunRecentFile(long item);

// Start of the program: workspace, ini files, bounds, recent files. argument is the command line's one
// argument, a data directory or a saved fit, or "".
void StartQuillon(const std::string& argument);

// The user wants to end the program. Asks when a fit may not have been saved; true when it may end.
bool MayEnd();

} // namespace Quillon
