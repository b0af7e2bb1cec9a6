#pragma once
// The menu of the main window as a table: one row for each item, in the order of the menus. A new item is a
// row here and nothing else.

#include <vector>

namespace Quillon {

enum class MainMenu { File, Edit, Analysis, Graphs, View, Preferences, Help };

struct MenuRow {
    MainMenu Menu{};
    const char* Name = "";           // unique among the rows
    const char* Caption = "";        // "&" marks the access key
    void (*Command)() = nullptr;     // errors may reach its caller, which tells them
    bool (*EnabledWhen)() = nullptr; // asked after every command; without it the item is always enabled
    bool (*CheckedWhen)() = nullptr; // likewise; without it the item has no check mark
    bool NewGroup = false;           // a line stands above it
    const char* Keys = "";           // that run it from the main window: "Ctrl+Y; Ctrl+Shift+Z"
};

const std::vector<MenuRow>& MenuRows();

} // namespace Quillon
