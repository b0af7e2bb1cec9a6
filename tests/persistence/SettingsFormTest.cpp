// All settings on one form: what it shows, what OK writes, what is refused.
#include "persistence/settings/SettingsForm.h"
#include "input/IniFile.h"
#include "persistence/Defaults.h"
#include "persistence/settings/DefaultKeys.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace Quillon {
namespace {

struct AllSettings : testing::Test {
    AllSettings() { Work = FreshWorkspace(); }
    Script script;

    std::string Path() const { return script.Directory() + "/QUILLON.ini"; }
    std::string Ini() const { return ReadWholeFile(Path()); }
    static std::size_t Place(const std::string& key) {
        const auto& rows = SettingRows();
        const auto found =
            std::find_if(rows.begin(), rows.end(), [&](const SettingRow& row) { return row.Key == key; });
        EXPECT_NE(found, rows.end()) << key;
        return static_cast<std::size_t>(found - rows.begin());
    }
    static Control& Box(const std::string& key) { return SettingsForm.Box[Place(key)]; }
};

// Without a file, what the form shows is what the start of the program takes.
TEST_F(AllSettings, ShowsWhatTheProgramStartsWith) {
    ReadFitDefaults();
    ReadProgramDefaults();
    const Workspace started = Work;
    LoadSettingsForm();
    for (const SettingRow& row : SettingRows())
        if (row.Apply != nullptr) { // all that holds at once, written over something else
            const Control& box = Box(row.Key);
            const double value = row.Kind == SettingKind::Choice
                                     ? std::stod(row.Choices[static_cast<std::size_t>(box.Value)].Value)
                                 : row.Kind == SettingKind::Flag ? box.Value
                                                                 : std::stod(box.Text);
            row.Apply(value);
        }
    EXPECT_TRUE(Work == started);
    EXPECT_EQ(Box("SolventDensity").Text, "1.003994");
    EXPECT_EQ(Box("FitModelNumber").Text, "1");
    EXPECT_EQ(Box("ConfidenceLevel").Text, "0.683");
    EXPECT_EQ(Box("MWunits").Items[static_cast<std::size_t>(Box("MWunits").Value)], "sigma");
}

TEST_F(AllSettings, HasEachKeyOnce) {
    std::set<std::string> keys;
    for (const SettingRow& row : SettingRows())
        EXPECT_TRUE(keys.insert(row.Key).second) << row.Key;
    EXPECT_EQ(keys.size(), 45U); // eleven of the fit, twenty of the program, fourteen radii
}

TEST_F(AllSettings, OkWritesWhatWasChangedAndLeavesTheRest) {
    script.MakeFile("QUILLON.ini",
                    "; mine\n[gnllsq]\nMaxIterations = 50\nunknown=1\n[quillon]\nMWunits=TRUE\n");
    script.ExpectModal(SettingsFormName, [&] {
        EXPECT_EQ(Box("MaxIterations").Text, "50");
        EXPECT_EQ(Box("MWunits").Value, 2);
        Box("MaxIterations").Text = "60";
        Box("PauseBeforeFit").Value = 0;
        Box("ReportFontSize").Text = "10";
        SettingsFormChoice(Place("CellType"), 2);
        SettingsFormOkButton();
        EXPECT_FALSE(SettingsForm.State.Shown);
    });
    SettingsDialog();
    EXPECT_EQ(IniValue(Ini(), "gnllsq", "MaxIterations"), "60");
    EXPECT_EQ(IniValue(Ini(), "gnllsq", "PauseBeforeFit"), "False");
    EXPECT_EQ(IniValue(Ini(), "quillon", "CellType"), "4");
    EXPECT_EQ(IniValue(Ini(), "quillon", "ReportFontSize"), "10");
    EXPECT_EQ(IniValue(Ini(), "quillon", "MWunits"), "TRUE"); // not touched
    EXPECT_EQ(IniValue(Ini(), "quillon", "SolventDensity"), "");
    EXPECT_NE(Ini().find("; mine\n"), std::string::npos);
    EXPECT_NE(Ini().find("unknown=1\n"), std::string::npos);
    EXPECT_EQ(Work.MaxIterations, 60); // at once
    EXPECT_EQ(Work.PauseBeforeFit, FlagFalse);
    EXPECT_EQ(Work.CellType, 4);
    EXPECT_EQ(Work.ReportFontSize, 10.0F);
    EXPECT_EQ(Work.MassUnits, MassUnit::Sigma); // the open analysis has its own
}

TEST_F(AllSettings, WhatIsWrittenIsReadAtTheNextStart) {
    LoadSettingsForm();
    Box("SoluteVBar").Text = "0.741";
    Box("ChBOuter4").Text = "6.75";
    Box("AlwaysRescue").Value = 1;
    Box("OverlayPlot").Value = 1;
    SettingsFormChoice(Place("TemperatureScale"), 1);
    SettingsFormChoice(Place("MWunits"), 1);
    SettingsFormOkButton();
    Work = FreshWorkspace();
    ReadFitDefaults();
    ReadProgramDefaults();
    EXPECT_EQ(Work.VbarA, 0.741F);
    EXPECT_EQ(Work.ChannelRadii[ChannelPlace(2, true, 4)], 6.75F);
    EXPECT_EQ(Work.RescueMode, Rescue::Always);
    EXPECT_EQ(Work.OverlayPlot, FlagTrue);
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Kelvin);
    EXPECT_EQ(Work.MassUnits, MassUnit::Buoyant);
}

TEST_F(AllSettings, WithoutAChangeNothingIsWritten) {
    LoadSettingsForm();
    Host.WriteFile = [](const std::string&, const std::string&) { FAIL() << "written"; };
    SettingsFormOkButton();
    EXPECT_FALSE(SettingsForm.State.Shown);
}

TEST_F(AllSettings, ANumberThatASettingCannotHaveIsToldAndKeepsTheForm) {
    LoadSettingsForm();
    Box("YieldInterval").Text = "10";
    script.ExpectMessage("Points between two looks at the buttons: a whole number from 50 to 32767.");
    SettingsFormOkButton();
    EXPECT_TRUE(SettingsForm.State.Shown);
    EXPECT_EQ(SettingsForm.State.FocusOn, &Box("YieldInterval"));
    Box("YieldInterval").Text = "200";
    Box("HighCorrelation").Text = "0";
    script.ExpectMessage("High correlation: a number above 0, at most 1.");
    SettingsFormOkButton();
    SettingsFormCancelButton();
    EXPECT_FALSE(SettingsForm.State.Shown);
}

TEST_F(AllSettings, AFileThatCannotBeWrittenKeepsTheFormAndChangesNothing) {
    LoadSettingsForm();
    Box("MaxIterations").Text = "60";
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    script.ExpectMessage("Error occurred while writing defaults to QUILLON.ini\n\n" + Path() + ": Disk full");
    SettingsFormOkButton();
    EXPECT_TRUE(SettingsForm.State.Shown);
    EXPECT_EQ(Work.MaxIterations, 40);
}

TEST_F(AllSettings, StandardIsWhatNoFileSays) {
    script.MakeFile("QUILLON.ini", "[gnllsq]\nMaxIterations=50\n[quillon]\nCellType=4\nRangeLogPlot=True\n");
    LoadSettingsForm();
    EXPECT_EQ(Box("RangeLogPlot").Value, 1);
    SettingsFormStandardButton();
    EXPECT_EQ(Box("MaxIterations").Text, "40");
    SettingsFormOkButton();
    EXPECT_EQ(IniValue(Ini(), "gnllsq", "MaxIterations"), "40");
    EXPECT_EQ(IniValue(Ini(), "quillon", "CellType"), "3");
    EXPECT_EQ(IniValue(Ini(), "quillon", "RangeLogPlot"), "False");
}

} // namespace
} // namespace Quillon
