// The page of the main window against its menu, both ways, and the ways through menus on every other page.
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "help/Manual.h"
#include "workspace/records/Workspace.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
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

// The items of the graph window that pages lead to; some of them have no record of their own.
void AddGraphWindow(Items& items) {
    const ChartsForm form;
    for (const MenuItem& item : {form.SaveAs, form.WriteData, form.WriteMetafile, form.Print})
        items["File"].insert(Plain(item.Text));
    for (const MenuItem& item : {form.LastZoom, form.AutoScale, form.AutoX, form.AutoY, form.EditHorz,
                                 form.EditVert, form.RoundOnZoom, form.ShowCursor})
        items["Scale"].insert(Plain(item.Text));
    for (const MenuItem& item : {form.mnuEditTitles, form.DeleteTitles, form.mnuEditLegend, form.ShowLegend,
                                 form.ShowGrids, form.AlterColors, form.LineWidths, form.SymbolSize})
        items["Style"].insert(Plain(item.Text));
    items["File"].insert({"Save Graph...", "Restore Graph..."});
    items["Scale"].insert("Separate Data Sets");
}

TEST(ManualOfTheMenu, WaysThroughMenusLeadToItems) {
    Script script;
    Work = FreshWorkspace();
    LoadAnalmenu();
    Items items = ItemsOfTheMenu();
    AddGraphWindow(items);
    static const std::regex Way(R"(\*([A-Z][a-z]+) > ([^*]+)\*)");
    int ways = 0;
    for (const ManualPage& page : ManualPages()) {
        std::string text = page.Text;
        std::replace(text.begin(), text.end(), '\n', ' '); // a way may go over the end of a line
        for (auto at = std::sregex_iterator(text.begin(), text.end(), Way); at != std::sregex_iterator();
             ++at) {
            ++ways;
            EXPECT_TRUE(items[(*at)[1].str()].contains((*at)[2].str())) << page.Path << " " << at->str();
        }
    }
    EXPECT_GT(ways, 40);
}

} // namespace
} // namespace Quillon
