// Access keys of menus: one for each item, the stated ones where they can stand.
#include "commands/AccessKeys.h"
#include "commands/Analmenu.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace Quillon {
namespace {

using Captions = std::vector<std::string>;

TEST(AccessKeys, AreBehindASingleMark) {
    EXPECT_EQ(AccessKeyOf("&Read"), 'r');
    EXPECT_EQ(AccessKeyOf("E&Xit"), 'x');
    EXPECT_EQ(AccessKeyOf("Data && &Fits"), 'f');
    EXPECT_EQ(AccessKeyOf("Data && Fits"), 0);
    EXPECT_EQ(AccessKeyOf("Data &"), 0);
    EXPECT_EQ(AccessKeyOf(""), 0);
}

TEST(AccessKeys, TheFirstKeepsItsKeyAndTheLaterOneGetsALetterThatNobodyClaims) {
    EXPECT_EQ(WithOwnAccessKeys({"&Red", "&Row", "&Wide", "&Rough Way"}),
              (Captions{"&Red", "R&ow", "&Wide", "Ro&ugh Way"}));
    EXPECT_EQ(WithOwnAccessKeys({"&Plot", "&Pick Set"}), (Captions{"&Plot", "Pick &Set"}));
    EXPECT_EQ(WithOwnAccessKeys({"&A && B", "&A && C"}), (Captions{"&A && B", "A && &C"}));
}

TEST(AccessKeys, WithoutALetterLeftACaptionStays) {
    EXPECT_EQ(WithOwnAccessKeys({"&A", "&A"}), (Captions{"&A", "&A"}));
    EXPECT_EQ(WithOwnAccessKeys({"A", "A", ""}), (Captions{"A", "A", ""}));
}

TEST(AccessKeys, TwoItemsOfAMenuSharedOne) {
    Script script;
    Work = FreshWorkspace();
    LoadAnalmenu();
    std::map<MainMenu, Captions> menus;
    for (const MainMenuItem& item : Analmenu.Items)
        menus[item.Row.Menu].push_back(item.Item.Text);
    EXPECT_EQ(menus.size(), 7U);
    for (const auto& [menu, captions] : menus) {
        std::set<char> keys;
        for (const std::string& caption : WithOwnAccessKeys(captions)) {
            const char key = AccessKeyOf(caption);
            EXPECT_TRUE(key == 0 || keys.insert(key).second) << caption;
        }
    }
    const Captions shown = WithOwnAccessKeys(menus[MainMenu::Preferences]);
    EXPECT_EQ(shown.front(), "Use &Residual Plot in Reports");
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "&Rotor Speed Calculator..."), 0);
}

} // namespace
} // namespace Quillon
