// The page of the main window against its menu, both ways.
#include "commands/Analmenu.h"
#include "help/Manual.h"
#include "workspace/records/Workspace.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

namespace Quillon {
namespace {

using Items = std::map<std::string, std::set<std::string>>; // captions by menu

std::string Plain(std::string caption) {
    std::erase(caption, '&');
    return caption;
}

Items ItemsOfTheMenu() {
    Items items;
    for (const MainMenuItem& item : Analmenu.Items)
        items[Plain(MainMenuCaption(item.Row.Menu))].insert(Plain(item.Item.Text));
    return items;
}

// The first cells of the tables, by the heading above them; the heads of the tables left out.
Items ItemsOfThePage() {
    Items items;
    std::string menu;
    std::istringstream page(FindManualPage("manual/forms/Analmenu.md")->Text);
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## ")) menu = line.substr(3);
        if (!line.starts_with("| ") || line.starts_with("| Item |")) continue;
        items[menu].insert(line.substr(2, line.find(" |") - 2));
    }
    return items;
}

TEST(ManualOfTheMenu, ListsEveryItemUnderItsMenuAndNoOther) {
    Script script;
    Work = FreshWorkspace();
    LoadAnalmenu();
    EXPECT_EQ(ItemsOfThePage(), ItemsOfTheMenu());
}

} // namespace
} // namespace Quillon
