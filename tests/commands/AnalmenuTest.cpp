// The main window: what its menu holds, when items are enabled and checked, what its commands reset, the end.
#include "commands/Analmenu.h"
#include "chart/files/GraphFile.h"
#include "chart/records/ChartSeams.h"
#include "models/SEDEQ3.h"

#include "commands/Commands.h"
#include "commands/StartUp.h"
#include "commands/history/History.h"
#include "files/ReadWhole.h"
#include "persistence/Defaults.h"
#include "persistence/codec/FitCodec.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/table/FitData.h"
#include "tests/support/ModelCases.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>

namespace Quillon {
namespace {

struct MainWindow : testing::Test {
    MainWindow() { StartQuillon(""); }
    Script script;

    static bool On(const std::string& name) { return MainItem(name).Enabled; }
};

// A fit of two wavelengths that stands.
void LoadFit(const char* name) {
    Work = SimulatedWorkspace(ModelCaseNamed(name));
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.LastModel = Work.Model;
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
    Work.FitDone = Work.FitValid = FlagTrue;
    SetMenuStatus();
}

TEST_F(MainWindow, StartsWithNoDataAndNoModel) {
    EXPECT_EQ(Analmenu.State.Caption, "Quillon 4.0.0");
    for (const char* name :
         {"ReadData", "NewNameConvention", "DoFitRestore", "SaveDefaults", "MenuExit", "DoModelSet",
          "UseResiduals", "UseOverlay", "ResidualsSpread", "FitPause", "SetConfidence", "mnuSigmaCalculator",
          "mnuHelpContents", "mnuHelpIndex", "AboutBox"})
        EXPECT_TRUE(On(name)) << name;
    for (const MainMenuItem& item : Analmenu.Items)
        if (item.Row.Menu == MainMenu::Graphs) {
            EXPECT_FALSE(item.Item.Enabled) << item.Row.Name;
        }
    for (const char* name :
         {"DoFitSave", "WriteBaseline", "DefineUnits", "FitData", "ReviewFit", "AlterBounds"})
        EXPECT_FALSE(On(name)) << name;
    EXPECT_EQ(Work.WorkDirectory, script.Directory());
    EXPECT_EQ(Work.DataDirectory, "");
}

TEST_F(MainWindow, StartsWithCoefficientsThatNoScaleCanBeBuiltWith) {
    for (const char* const settings : {"Extinction=abc\n", "Absorptivity=0\nConcentrationUnits=1\n",
                                       "SoluteRefractivity=-1\nConcentrationUnits=4\n",
                                       "RefractometricExtinction=0\nConcentrationUnits=5\n",
                                       "SoluteVBar=1\nSolventDensity=1\nMWUnits=True\n"}) {
        script.MakeFile("QUILLON.ini", std::string("[quillon]\nRotorExpansion=2E-11\n") + settings);
        script.AnswerAllMessages(BoxAnswer::Ok);
        script.Asked.clear();
        StartQuillon("");
        ASSERT_EQ(script.Asked.size(), 1U) << settings;
        EXPECT_TRUE(script.Asked[0].starts_with("message: Error occurred while reading defaults from "
                                                "QUILLON.ini\n\n" +
                                                script.Directory() +
                                                "/QUILLON.ini: the coefficients make no scale: "))
            << script.Asked[0];
        EXPECT_EQ(Work.ExtA, 10000.0F) << settings;
        EXPECT_EQ(Work.SolventDensity, 1.003994F) << settings;
        EXPECT_EQ(Work.RotorExpansion, 2e-11F) << settings; // the rest of the file holds
        EXPECT_TRUE(MainItem("ReadData").Enabled);
    }
}

TEST_F(MainWindow, AFitOnTheCommandLineThatHasGoneIsToldAndIsNoFolder) {
    script.ExpectMessage(
        "Error 'File not found' occurred while restoring fit data and parameters --- terminating. You may "
        "have to restart the program.\n\n/somewhere/gone.quil");
    StartQuillon("/somewhere/gone.quil");
    EXPECT_EQ(Work.DataDirectory, "");
    EXPECT_FALSE(Analmenu.Ended);
}

TEST_F(MainWindow, ArgumentIsTheDataDirectory) {
    StartQuillon("/somewhere/data");
    EXPECT_EQ(Work.DataDirectory, "/somewhere/data");
}

// Three points of a scan at a tenth of a centimetre.
const char* const SmallScan = "Sample\r\nR 1 20.0 10000 0084667 9.2280E10 280 32\r\n"
                              "6.0 0.1\r\n6.1 0.2\r\n6.2 0.35\r\n";

TEST_F(MainWindow, ScansOnTheCommandLineWereRestoredAsFits) {
    const std::string one = script.MakeFile("00001.RA1", SmallScan);
    const std::string two = script.MakeFile("00002.RA1", SmallScan);
    StartQuillon(one);
    EXPECT_EQ(Work.DataDirectory, script.Directory());
    script.ExpectModal(FileFormName, [&] {
        FileFormTimer1();
        EXPECT_EQ(FileForm.NameBox[0].Text, "00001.RA1");
        EXPECT_EQ(FileForm.NameBox[1].Text, "00002.RA1");
        EXPECT_EQ(Work.ScanPoints[2], 3);
        FileForm.State.Shown = false;
    });
    OpenArguments({one, two});
    script.ExpectModal(FileFormName, [] { EXPECT_FALSE(FileForm.Timer1); }); // later it asks for nothing
    RunMainCommand("ReadData");
}

TEST_F(MainWindow, AScanNamedFromTheWorkingDirectoryKeepsItsWholePath) {
    const std::string path = script.MakeFile("00001.RA1", SmallScan);
    const auto found = [path](const std::string& name) { return name == "00001.RA1" ? path : name; };
    Host.FileExists = [found, exists = Host.FileExists](const std::string& name) {
        return exists(found(name));
    };
    Host.ReadFile = [found, read = Host.ReadFile](const std::string& name) { return read(found(name)); };
    StartQuillon("00001.RA1");
    EXPECT_EQ(Work.DataDirectory, script.Directory());
    script.ExpectModal(FileFormName, [&] {
        FileFormTimer1();
        EXPECT_EQ(Work.ScanDirectory[1], script.Directory());
        FileForm.State.Shown = false;
    });
    OpenArguments({"00001.RA1"});
}

TEST_F(MainWindow, AScanThatCannotBeReadIsToldByItsLine) {
    const std::string path =
        script.MakeFile("00001.RA1", "Sample\nR 1 20.0 10000 0084667 9.2280E10 280 32\n6,1\n");
    StartQuillon(path);
    script.ExpectModal(FileFormName, [&] {
        script.AnswerAllMessages(BoxAnswer::Ok);
        FileFormTimer1();
    });
    OpenArguments({path});
    ASSERT_EQ(script.Asked.size(), 2U);
    EXPECT_NE(script.Asked[1].find("00001.RA1: line 3"), std::string::npos) << script.Asked[1];
}

TEST_F(MainWindow, AFitOfAnyNameIsKnownByItsBeginning) {
    const std::string fit = EncodeFit(FreshWorkspace());
    EXPECT_EQ(KindOfArgument(script.MakeFile("fit.old", fit)), ArgumentKind::Fit);
    EXPECT_EQ(KindOfArgument(script.MakeFile("empty.RA1", "")), ArgumentKind::Scan);
    EXPECT_EQ(KindOfArgument(script.Directory() + "/gone.QUIL"), ArgumentKind::Fit);
    EXPECT_EQ(KindOfArgument(script.MakeFile("graph.GRF", "")), ArgumentKind::Graph);
    EXPECT_EQ(KindOfArgument(script.Directory()), ArgumentKind::Folder);
    EXPECT_EQ(KindOfArgument(script.Directory() + "/gone"), ArgumentKind::Missing);
    EXPECT_EQ(KindOfArgument(""), ArgumentKind::Nothing);
}

TEST_F(MainWindow, AJobOnTheCommandLineWasRestoredAsAFit) {
    const std::string path = script.MakeFile("run.Job", "[fit]\n");
    StartQuillon(path);
    EXPECT_EQ(Work.DataDirectory, "");
    script.ExpectMessage(path + " is a job, which quillon-fit runs:\n\nquillon-fit \"" + path +
                         "\" --save \"fit.quil\"\n\nThe fit that is saved there opens here.");
    OpenArguments({path});
}

TEST_F(MainWindow, AMissingPathOnTheCommandLineWasAFolder) {
    StartQuillon("/somewhere/data");
    script.ExpectMessage("There is no file or folder /somewhere/data");
    OpenArguments({"/somewhere/data"});
    EXPECT_EQ(Work.DataDirectory, script.Directory()); // found as without one
}

// A file of 100 GB ended the program at its start: it was read whole before anybody looked at it.
TEST_F(MainWindow, AHugeFileOnTheCommandLineIsToldAndNotRead) {
    for (const char* const name : {"huge.quil", "huge.grf"}) {
        const std::string path = script.MakeFile(name, "");
        std::filesystem::resize_file(path, std::uintmax_t{100} << 30U); // no byte of it on the disk
        Host.ReadFile = ReadWhole;
        script.AnswerAllMessages(BoxAnswer::Ok);
        script.Asked.clear();
        StartQuillon(path);
        OpenArguments({path});
        ASSERT_EQ(script.Asked.size(), 1U) << name;
        EXPECT_NE(script.Asked[0].find("it is larger than 256 MB"), std::string::npos) << script.Asked[0];
        std::filesystem::remove(path);
    }
}

// The graph window has an item for it, but does not open before there is a graph.
TEST_F(MainWindow, ASavedGraphCouldBeShownByTheCommandLineAlone) {
    RecordingSurface screen;
    Chart = ChartModule{};
    SetScreenSurface(screen.Surface());
    const std::string path = script.MakeFile("kept.grf", GraphFileBytes());
    const auto shown = [&] { return std::count(script.Forms.begin(), script.Forms.end(), "show Charts"); };
    script.ExpectFile("Quillon - Restore Graph from Disk", "");
    RunMainCommand("OpenGraph");
    EXPECT_EQ(shown(), 0);
    script.ExpectFile("Quillon - Restore Graph from Disk", path);
    RunMainCommand("OpenGraph");
    EXPECT_EQ(shown(), 1);
    Seams = ChartSeams{};
}

TEST_F(MainWindow, OpenTakesAFitAsWellAsAGraph) {
    LoadFit("Model08");
    const std::string path = script.MakeFile("kept.quil", EncodeFit(Work));
    StartQuillon("");
    script.ExpectFile("Quillon - Open", path);
    RunMainCommand("OpenAnything");
    EXPECT_EQ(Work.Model, 8);
    EXPECT_EQ(Analmenu.State.Caption, "kept.quil - Quillon");
    EXPECT_EQ(History.Steps.back().Command, "Open fit");
    script.ExpectFile("Quillon - Open", "");
    RunMainCommand("OpenAnything");
}

TEST_F(MainWindow, WhatIsNotOpenedBesideTheFirstArgumentIsTold) {
    const std::string fit = script.MakeFile("a.quil", "");
    script.ExpectMessage(fit + " is not opened: several scans can be opened at once, of everything else the "
                               "first alone.");
    OpenArguments({script.Directory(), fit});
}

TEST_F(MainWindow, CaptionsCarryTheirAccessKeys) {
    EXPECT_EQ(MainItem("ReadData").Text, "&Read/change data sets...");
    EXPECT_EQ(MainItem("SetBaseConstraint").Text, "C&onstrain Zero Offsets...");
    EXPECT_EQ(MainItem("GraphOverlaySet").Text, "Overlay Data and Fit (1 se&t)...");
    EXPECT_EQ(MainItem("FitPause").Text, "&Pause for Manual Start When Fitting");
    EXPECT_EQ(MainItem("AboutBox").Text, "&About QUILLON...");
    EXPECT_EQ(MainMenuCaption(MainMenu::Preferences), "&Preferences");
}

TEST_F(MainWindow, ANameThatNoItemHasIsNoSilentNothing) {
    EXPECT_THROW(RunMainCommand("FitDate"), std::logic_error);
    EXPECT_THROW(MainItem("FitDate"), std::logic_error);
}

TEST_F(MainWindow, DataAndModelOpenTheFit) {
    Work.DataChosen = FlagTrue;
    Work.NumSets = 1;
    SetMenuStatus();
    EXPECT_TRUE(On("GraphData") && On("DefineUnits"));
    EXPECT_FALSE(On("FitData") || On("AlterBounds") || On("SetBaseConstraint"));
    Work.ModelChosen = FlagTrue;
    Work.NumSets = 2;
    SetMenuStatus();
    EXPECT_TRUE(On("FitData") && On("AlterBounds") && On("SetConcConstraint") && On("DoInitGuesses"));
    EXPECT_TRUE(On("SetBaseConstraint"));
    EXPECT_FALSE(On("GraphFunc") || On("ReviewFit") || On("DoFitSave"));
}

TEST_F(MainWindow, FinishedFitOpensResultsUntilConstraintsChange) {
    Work.FitDone = Work.FitValid = FlagTrue;
    Work.NumSets = 2;
    SetMenuStatus();
    EXPECT_TRUE(On("ReviewFit") && On("Covariance") && On("DoFitSave") && On("GraphFunc"));
    EXPECT_TRUE(On("GraphResiduals") && On("GraphResidualsRSet"));
    EXPECT_FALSE(On("DoShowConstraint") || On("WriteBaseline"));
    Work.NewData = 1;
    Work.ConstraintFlags = ConcentrationBit;
    SetMenuStatus();
    EXPECT_FALSE(On("ReviewFit") || On("Covariance") || On("GraphResiduals"));
    EXPECT_TRUE(On("GraphOverlay") && On("DoShowConstraint"));
    EXPECT_TRUE(MainItem("SetConcConstraint").Checked);
    EXPECT_FALSE(MainItem("SetBaseConstraint").Checked);
    Work.FitDone = Work.FitValid = 0;
    SetMenuStatus();
    EXPECT_TRUE(On("DoFitSave")); // never taken back
    EXPECT_FALSE(On("GraphOverlay") || On("DoShowConstraint"));
}

TEST_F(MainWindow, BaselinesComeFromOneSetOfTheSimplestModel) {
    Work.NumSets = 1;
    Work.Model = 1;
    Work.FitDone = FlagTrue;
    Work.NewData = 1; // overridden
    SetMenuStatus();
    EXPECT_TRUE(On("WriteBaseline"));
    Work.Model = 2;
    Work.NewData = 0;
    Work.FitValid = FlagTrue;
    SetMenuStatus();
    EXPECT_FALSE(On("WriteBaseline"));
}

TEST_F(MainWindow, ReportPlotsExcludeEachOther) {
    RunMainCommand("UseOverlay");
    EXPECT_EQ(Work.OverlayPlot, FlagTrue);
    EXPECT_TRUE(MainItem("UseOverlay").Checked);
    EXPECT_FALSE(MainItem("UseResiduals").Checked);
    RunMainCommand("UseResiduals");
    EXPECT_EQ(Work.OverlayPlot, 0);
    EXPECT_TRUE(MainItem("UseResiduals").Checked);
}

TEST_F(MainWindow, TogglesKeepTheirMarks) {
    const bool spread = Work.SpreadResiduals != 0;
    RunMainCommand("ResidualsSpread");
    EXPECT_EQ(MainItem("ResidualsSpread").Checked, !spread);
    EXPECT_TRUE(MainItem("FitPause").Checked);
    RunMainCommand("FitPause");
    EXPECT_EQ(Work.PauseBeforeFit, 0);
    EXPECT_FALSE(MainItem("FitPause").Checked);
    EXPECT_TRUE(MainItem("NewNameConvention").Checked);
    RunMainCommand("NewNameConvention");
    EXPECT_FALSE(MainItem("NewNameConvention").Checked);
    EXPECT_EQ(Work.DataDirectory, script.Directory()); // searched for at once
}

TEST_F(MainWindow, ThereWasNoWayToScaleByAbsoluteTemperature) {
    RunMainCommand("AbsoluteTemperature");
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Kelvin);
    EXPECT_TRUE(MainItem("AbsoluteTemperature").Checked);
    Work.TemperatureScale = TemperatureScales::Celsius;
    ReadProgramDefaults();
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Kelvin); // it was saved
    RunMainCommand("AbsoluteTemperature");
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Celsius);
}

// Two sets of three points in an accepted table, at two temperatures.
void TakeTwoTemperatures(float first, float second) {
    for (long row = 1; row <= 2; ++row) {
        Work.ScanRadius[row].Recreate(3);
        Work.ScanValue[row].Recreate(3);
        for (long p = 1; p <= 3; ++p) {
            Work.ScanRadius[row][p] = 6.0F + 0.5F * static_cast<float>(p - 1);
            Work.ScanValue[row][p] = 0.25F * static_cast<float>(p);
        }
        Work.ScanFile[row] = "a.RA1";
        Work.ScanRPM[row] = 20000.0F;
        Work.ScanTemperature[row] = row == 1 ? first : second;
        Work.FitRange[0][row] = 1;
        Work.FitRange[1][row] = Work.ScanPoints[row] = 3;
        Work.IncludeSet[row] = 1;
    }
    BuildFitData();
}

TEST_F(MainWindow, AnotherScaleOfTemperaturesAsksBeforeItEndsAFit) {
    TakeTwoTemperatures(20.0F, 10.0F);
    Work.FitDone = Work.FitValid = FlagTrue;
    const std::string question =
        "The sets of this analysis have different temperatures: on another scale the "
        "fit no longer stands.  Do you want to change the scale?";
    script.ExpectMessage(question, BoxAnswer::No);
    RunMainCommand("AbsoluteTemperature");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Celsius);
    EXPECT_EQ(Work.SetSigmaScale[2], 2.0F);
    script.ExpectMessage(question, BoxAnswer::Yes);
    RunMainCommand("AbsoluteTemperature");
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_FLOAT_EQ(Work.SetSigmaScale[2], 293.15F / 283.15F);
}

TEST_F(MainWindow, AScaleThatTheSetsForbidLeavesThem) {
    Work.TemperatureScale = TemperatureScales::Kelvin;
    TakeTwoTemperatures(4.0F, 0.0F);
    script.AnswerAllMessages(BoxAnswer::Ok);
    RunMainCommand("AbsoluteTemperature");
    EXPECT_EQ(script.Asked, std::vector<std::string>{
                                "message: Error 'Set 2 (a.RA1): the header holds a temperature of 0, which "
                                "cannot be related to other sets' occurred in this command."});
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Kelvin);
    EXPECT_EQ(Work.DataChosen, FlagTrue);
}

TEST_F(MainWindow, OneTemperatureChangesNothingAndAsksNothing) {
    TakeTwoTemperatures(20.0F, 20.0F);
    Work.FitDone = Work.FitValid = FlagTrue;
    RunMainCommand("AbsoluteTemperature");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Kelvin);
}

TEST_F(MainWindow, DisabledItemsDoNothing) {
    RunMainCommand("FitData");
    EXPECT_TRUE(script.Asked.empty());
}

TEST_F(MainWindow, AcceptedTableEndsTheFitAndACancelledOneDoesNot) {
    Work.FitDone = Work.FitValid = FlagTrue;
    Work.NewData = FlagTrue;
    script.ExpectModal(FileFormName, [] { FileFormCancelButton(); });
    RunMainCommand("ReadData");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.NewData, 0);
    EXPECT_EQ(Work.AbortFit, 0);
    script.ExpectModal(FileFormName, [] {
        FileForm.Answer = DialogAnswer::Ok;
        Work.NewData = 1;
        FileForm.State.Shown = false;
    });
    RunMainCommand("ReadData");
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.FitValid, 0);
    EXPECT_EQ(Work.NewData, 1);
    EXPECT_EQ(script.Forms.back(), "show Analmenu");
}

TEST_F(MainWindow, CancelledModelDialogLeavesTheFit) {
    Work.FitDone = FlagTrue;
    script.ExpectModal(ModelFormName, [] { ModelFormCancelButton(); });
    RunMainCommand("DoModelSet");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(MainWindow, ConstraintFormsClosedUnchangedLostTheFit) {
    LoadFit("Model08");
    const Workspace before = Work;
    script.ExpectModal(ConcFormName, [] { ConcFormOkButton(); });
    RunMainCommand("SetConcConstraint");
    EXPECT_TRUE(Work == before);
    script.ExpectModal(BaseFormName, [] { BaseFormOkButton(); });
    RunMainCommand("SetBaseConstraint");
    EXPECT_TRUE(Work == before);
    script.ExpectModal(ShareFormName, [] { ShareFormClose(); });
    RunMainCommand("ShareConcentrations");
    EXPECT_TRUE(Work == before);
    EXPECT_TRUE(MainItem("ReviewFit").Enabled);
}

TEST_F(MainWindow, AConstraintThatIsChangedAsksForAnotherFit) {
    LoadFit("Model08");
    ASSERT_GE(Work.NumSets, 2);
    EXPECT_FALSE(MainItem("ShareConcentrations").Checked);
    script.ExpectModal(ShareFormName, [] {
        ShareFormCancelButton(); // without what is proposed
        ShareForm.Boxes.LinkNum[1].Text = "1";
        ShareFormOkButton();
    });
    RunMainCommand("ShareConcentrations");
    EXPECT_EQ(Work.ConcLink[Work.SetRow[2]], Work.SetRow[1]);
    EXPECT_EQ(Work.NewData, Changed::Constraints);
    EXPECT_TRUE(MainItem("ShareConcentrations").Checked);
    EXPECT_FALSE(MainItem("ReviewFit").Enabled);
}

TEST_F(MainWindow, TheSameModelChosenOnceMoreLostTheFit) {
    LoadFit("Model08");
    Work.FreeMap[SlotOffset(1)] = SlotHeld;
    const Workspace before = Work;
    script.ExpectModal(ModelFormName, [] {});
    RunMainCommand("DoModelSet");
    EXPECT_TRUE(Work == before);
    script.ExpectModal(ModelFormName, [] { Work.SeparateK = FlagTrue; });
    script.AnswerAllMessages(BoxAnswer::Yes);
    RunMainCommand("DoModelSet");
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.FitValid, 0);
}

TEST_F(MainWindow, OffsetTiesAreRefusedWithAModelWithoutOffsets) {
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.NumSets = 2;
    Work.Model = 8;
    Work.SeparateK = FlagTrue;
    SetMenuStatus();
    script.ExpectMessage({"You cannot have baseline constraints with a model with unique association "
                          "constants for each data set, since such a model doesn't use zero offsets!",
                          "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    RunMainCommand("SetBaseConstraint");
    EXPECT_EQ(Work.NewData, 0);
}

TEST_F(MainWindow, BaselineCommandAsksForTheOffset) {
    Work.NumSets = 1;
    Work.FitDone = FlagTrue;
    SetMenuStatus();
    script.ExpectMessage({"Do you want the data to include the baseline offset?", "Quillon",
                          BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes},
                         BoxAnswer::No);
    script.ExpectInputCancelled("Write out residual for which data set (of those being fit)? (1 - 1)");
    RunMainCommand("WriteBaseline");
}

TEST_F(MainWindow, ErrorsAreToldAndLeaveTheWorkspaceUsable) {
    script.ExpectMessage("Error 'Overflow' occurred in this command.");
    Work.AbortFit = FlagTrue;
    RunCommand([] { RaiseError(ErrorText::Overflow); });
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(MainWindow, EndAsksWhileSomethingIsUnsaved) {
    RunMainCommand("MenuExit");
    EXPECT_TRUE(Analmenu.Ended);
    LoadFit("Model08");
    BoxRequest question{"This will end Quillon.  Remember, you may want to save the last fit to disk.",
                        "Quillon", BoxIcon::Warning, BoxButtons::YesNoCancel, BoxAnswer::Yes};
    question.YesCaption = "&Save";
    question.NoCaption = "OK";
    script.ExpectMessage(question, BoxAnswer::Cancel);
    RunMainCommand("MenuExit");
    EXPECT_FALSE(Analmenu.Ended);
    script.ExpectMessage(question, BoxAnswer::No);
    RunMainCommand("MenuExit");
    EXPECT_TRUE(Analmenu.Ended);
}

TEST_F(MainWindow, SaveInTheQuestionAtTheEndSavesAndEndsOnlyWhenItCould) {
    LoadFit("Model08");
    const std::string question =
        "This will end Quillon.  Remember, you may want to save the last fit to disk.";
    script.ExpectMessage(question, BoxAnswer::Yes);
    script.ExpectFile("Quillon - Save Fit Data & Parameters", "");
    RunMainCommand("MenuExit");
    EXPECT_FALSE(Analmenu.Ended);
    const std::string path = script.Directory() + "/fit1.quil";
    script.ExpectMessage(question, BoxAnswer::Yes);
    script.ExpectFile("Quillon - Save Fit Data & Parameters", path);
    RunMainCommand("MenuExit");
    EXPECT_TRUE(Analmenu.Ended);
    EXPECT_EQ(ReadWhole(path), EncodeFit(Work));
}

TEST_F(MainWindow, TheTitleHasTheFileAndAStarForWhatIsNotSaved) {
    EXPECT_EQ(Analmenu.State.Caption, "Quillon 4.0.0");
    LoadFit("Model08");
    RunCommand([] {});
    EXPECT_EQ(Analmenu.State.Caption, "untitled* - Quillon");
    script.ExpectFile("Quillon - Save Fit Data & Parameters", script.Directory() + "/fit1.quil");
    RunMainCommand("SaveAgain");
    EXPECT_EQ(Analmenu.State.Caption, "fit1.quil - Quillon");
    EXPECT_FALSE(MainItem("SaveAgain").Enabled);
    RunMainCommand("UseOverlay");
    EXPECT_EQ(Analmenu.State.Caption, "fit1.quil* - Quillon");
    RunMainCommand("Undo");
    EXPECT_EQ(Analmenu.State.Caption, "fit1.quil - Quillon");
    RunMainCommand("MenuExit"); // and nothing is asked
    EXPECT_TRUE(Analmenu.Ended);
    RunMainCommand("Redo");
    RunMainCommand("SaveAgain"); // nor here
    EXPECT_EQ(ReadWhole(script.Directory() + "/fit1.quil"), EncodeFit(Work));
}

TEST_F(MainWindow, ARestoredFitIsSavedUntilItIsChanged) {
    LoadFit("Model08");
    const std::string path = script.MakeFile("kept.quil", EncodeFit(Work));
    StartQuillon(path);
    EXPECT_EQ(Analmenu.State.Caption, "kept.quil - Quillon");
    EXPECT_FALSE(MainItem("Undo").Enabled);
    RunRecentFile(1);
    EXPECT_EQ(Analmenu.State.Caption, "kept.quil - Quillon");
    script.AnswerAllMessages(BoxAnswer::Yes);
    RunMainCommand("DoInitGuesses");
    EXPECT_EQ(Analmenu.State.Caption, "kept.quil* - Quillon");
}

} // namespace
} // namespace Quillon
