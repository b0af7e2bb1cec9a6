// The whole menu of the main window: each item with its caption, in its order, and the rule by which it is
// enabled, walked through every state that a rule looks at.
#include "commands/AccessKeys.h"
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "models/table/ModelTable.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Quillon {
namespace {

// When an item is usable, in words of the user.
enum class Rule {
    Always,
    DataChosen,    // the table of data sets was accepted
    DataAndModel,  // and a model chosen
    SeveralSets,   // an offset can be tied to that of another set
    CurveStands,   // a fitted function stands at all points
    ResidualsToo,  // and belongs to the data as they are
    Results,       // a finished fit of the data as they are
    MatchShown,    // a finished fit under constraints
    SetToBaseline, // the residuals of one set of a single species
    SinceAnyFit    // from the first finished fit on
};

struct StatedItem {
    MainMenu Menu;
    const char* Name;
    const char* Caption;
    Rule EnabledWhen;
};

constexpr MainMenu File = MainMenu::File, Analysis = MainMenu::Analysis, Graphs = MainMenu::Graphs;
constexpr MainMenu Preferences = MainMenu::Preferences, Help = MainMenu::Help;

constexpr StatedItem Stated[] = {
    {File, "ReadData", "&Read/change data sets...", Rule::Always},
    {File, "NewNameConvention", "&Use New File Naming Convention", Rule::Always},
    {File, "DoFitSave", "&Save current fit to disk...", Rule::SinceAnyFit},
    {File, "DoFitRestore", "R&estore saved fit from disk...", Rule::Always},
    {File, "SaveDefaults", "Save program &defaults...", Rule::Always},
    {File, "WriteBaseline", "Wri&te Baseline from Residuals...", Rule::SetToBaseline},
    {File, "MenuExit", "E&xit", Rule::Always},
    {Analysis, "DoModelSet", "Define &Model...", Rule::Always},
    {Analysis, "DefineUnits", "&Define Units...", Rule::DataChosen},
    {Analysis, "FitData", "&Fit Data...", Rule::DataAndModel},
    {Analysis, "ReviewFit", "&Review last fit...", Rule::Results},
    {Analysis, "DoInitGuesses", "R&e-initialize Concentration Guesses...", Rule::DataAndModel},
    {Analysis, "SetConcConstraint", "&Constrain Concentrations...", Rule::DataAndModel},
    {Analysis, "SetBaseConstraint", "C&onstrain Zero Offsets...", Rule::SeveralSets},
    {Analysis, "DoIntegrate", "&Integrate Over Cell...", Rule::DataAndModel},
    {Analysis, "AlterBounds", "Alter Parameter &Bounds...", Rule::DataAndModel},
    {Analysis, "DoSimulate", "&Simulate...", Rule::DataAndModel},
    {Analysis, "DoShowConstraint", "Sho&w Match to Conc. Constraints...", Rule::MatchShown},
    {Analysis, "Covariance", "&List Parameter Cross-Correlations...", Rule::Results},
    {Graphs, "GraphData", "&Data Included in Fit", Rule::DataChosen},
    {Graphs, "GraphFunc", "&Fitted Function", Rule::CurveStands},
    {Graphs, "GraphOverlay", "&Overlay All Data and Fits", Rule::CurveStands},
    {Graphs, "GraphResiduals", "&Residuals (all) vs. X", Rule::ResidualsToo},
    {Graphs, "GraphResidualsY", "Residuals (all) vs. &Y", Rule::ResidualsToo},
    {Graphs, "GraphResidualsR", "Residuals (all) vs. r&adius", Rule::ResidualsToo},
    {Graphs, "GraphSpecies", "Species &Concentration (all)", Rule::CurveStands},
    {Graphs, "GraphSpeciesFraction", "&Species Fraction (all)", Rule::CurveStands},
    {Graphs, "GraphMvsC", "&Apparent Molar Mass vs. Concentration (all)", Rule::CurveStands},
    {Graphs, "mnuGraphMvsR", "Apparent Molar Mass vs. Radius (all)", Rule::CurveStands},
    {Graphs, "GraphFuncSet", "Fitted Function (&1 set)...", Rule::CurveStands},
    {Graphs, "GraphOverlaySet", "Overlay Data and Fit (1 se&t)...", Rule::CurveStands},
    {Graphs, "GraphResidSet", "Residuals (1 set) vs. &X...", Rule::ResidualsToo},
    {Graphs, "GraphResidSetY", "Residuals (1 set) &vs. Y...", Rule::ResidualsToo},
    {Graphs, "GraphResidualsRSet", "Residuals (1 set) vs. rad&ius...", Rule::ResidualsToo},
    {Graphs, "GraphSpeciesSet", "Species Co&ncentration (1 set)...", Rule::CurveStands},
    {Graphs, "GraphSpeciesFractionSet", "Species Fraction (1 s&et)...", Rule::CurveStands},
    {Preferences, "UseResiduals", "Use &Residual Plot in Reports", Rule::Always},
    {Preferences, "UseOverlay", "Use Data+Fit &Overlay Plot in Reports", Rule::Always},
    {Preferences, "ResidualsSpread", "&Y-shift Data Sets in Residual Plots", Rule::Always},
    {Preferences, "FitPause", "&Pause for Manual Start When Fitting", Rule::Always},
    {Preferences, "SetConfidence", "Set &Confidence Interval Probability...", Rule::Always},
    {Preferences, "mnuSigmaCalculator", "&Rotor Speed Calculator...", Rule::Always},
    {Help, "mnuHelpContents", "&Contents...", Rule::Always},
    {Help, "mnuHelpIndex", "&Index...", Rule::Always},
    {Help, "AboutBox", "&About QUILLON...", Rule::Always}};

bool Expected(Rule rule, bool wasEnabled) {
    const bool fitted = Work.FitDone != 0, curve = Work.FitValid != 0, same = Work.NewData == 0;
    switch (rule) {
    case Rule::DataChosen:
        return Work.DataChosen != 0;
    case Rule::DataAndModel:
        return Work.DataChosen != 0 && Work.ModelChosen != 0;
    case Rule::SeveralSets:
        return Work.DataChosen != 0 && Work.NumSets >= 2;
    case Rule::CurveStands:
        return curve;
    case Rule::ResidualsToo:
        return curve && same;
    case Rule::Results:
        return fitted && same;
    case Rule::MatchShown:
        return fitted && Work.ConstraintFlags != 0;
    case Rule::SetToBaseline:
        return Work.NumSets == 1 && Work.Model == 1 && fitted;
    case Rule::SinceAnyFit:
        return fitted || wasEnabled;
    default:
        return true;
    }
}

// State n of all that the rules tell apart.
constexpr int States = 2 * 2 * 2 * 2 * 3 * 3 * 22 * 4;
void TakeState(int n) {
    const auto next = [&n](int of) {
        const int digit = n % of;
        n /= of;
        return static_cast<std::int16_t>(digit);
    };
    Work.DataChosen = ToInt16(-next(2));
    Work.ModelChosen = ToInt16(-next(2));
    Work.FitDone = ToInt16(-next(2));
    Work.FitValid = ToInt16(-next(2));
    Work.NewData = ToInt16(next(3) - 1); // -1 other data, 0 none, 1 other constraints
    Work.NumSets = next(3);
    Work.Model = ToInt16(next(22) + 1);
    Work.ConstraintFlags = next(4);
}

struct MenuTable : testing::Test {
    MenuTable() { StartQuillon(""); }
    Script script;
};

TEST_F(MenuTable, HoldsEveryStatedItemInItsMenuAndOrder) {
    std::size_t next = 0;
    std::set<std::string> names;
    for (const MainMenuItem& item : Analmenu.Items) {
        EXPECT_TRUE(names.insert(item.Row.Name).second) << item.Row.Name << " stands there twice";
        if (next < std::size(Stated) && std::string(item.Row.Name) == Stated[next].Name) {
            EXPECT_EQ(item.Item.Text, Stated[next].Caption);
            EXPECT_EQ(item.Row.Menu, Stated[next].Menu) << item.Row.Name;
            ++next;
        }
    }
    EXPECT_EQ(next, std::size(Stated))
        << Stated[std::min(next, std::size(Stated) - 1)].Name << " is missing or out of its order";
}

TEST_F(MenuTable, EveryItemHasACommand) {
    for (const MainMenuItem& item : Analmenu.Items) {
        EXPECT_NE(item.Row.Command, nullptr) << item.Row.Name;
        EXPECT_TRUE(item.Item.Visible) << item.Row.Name;
    }
}

bool IsStated(const std::string& name) {
    return std::any_of(std::begin(Stated), std::end(Stated),
                       [&](const StatedItem& item) { return item.Name == name; });
}

// A key that two items claim chooses neither at the first press. Captions that are stated keep theirs; an
// item that came later claims one that is free in its menu.
TEST_F(MenuTable, AnAdditionClaimsNoAccessKeyOfAnotherItem) {
    std::map<std::pair<MainMenu, char>, std::vector<const MainMenuItem*>> claims;
    for (const MainMenuItem& item : Analmenu.Items)
        if (const char key = AccessKeyOf(item.Row.Caption)) claims[{item.Row.Menu, key}].push_back(&item);
    EXPECT_GT(claims.size(), 60U);
    for (const auto& [key, items] : claims)
        for (const MainMenuItem* item : items)
            EXPECT_TRUE(items.size() == 1 || IsStated(item->Row.Name)) << item->Row.Caption;
}

TEST_F(MenuTable, EveryItemIsEnabledByItsRuleInEveryState) {
    for (int state = 0; state < States; ++state) {
        TakeState(state);
        const bool wasEnabled = state % 5 == 0; // a fit stood some time before
        MainItem("DoFitSave").Enabled = wasEnabled;
        SetMenuStatus();
        for (const StatedItem& item : Stated)
            ASSERT_EQ(MainItem(item.Name).Enabled, Expected(item.EnabledWhen, wasEnabled))
                << item.Name << " in state " << state;
        ASSERT_EQ(MainItem("SetConcConstraint").Checked, Work.ConstraintFlags % 2 == 1);
        ASSERT_EQ(MainItem("SetBaseConstraint").Checked, Work.ConstraintFlags / 2 == 1);
    }
}

} // namespace
} // namespace Quillon
