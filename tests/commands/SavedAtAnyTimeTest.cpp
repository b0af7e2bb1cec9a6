// Whatever a user does, in any order, with any answers: when a fit can be saved the save succeeds, and what
// was saved is what a restore brings back. The user here is random and the same in every run.
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "commands/history/History.h"
#include "fit/equations/FreeMap.h"
#include "fit/forms/BoundsForm.h"
#include "fit/forms/GetGuess.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/UnitsForm.h"
#include "models/table/Catalogue.h"
#include "models/table/ParmScale.h"
#include "persistence/Filelist.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"
#include "tests/support/ModelCases.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"

#include "chart/CHART.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <random>

namespace Quillon {
namespace {

class SavedAtAnyTime : public testing::TestWithParam<unsigned> {
protected:
    SavedAtAnyTime() : Random(GetParam()) {
        SetScreenSurface(Screen.Surface());
        Host.MessageBoxAnswer = [this](const BoxRequest& request) {
            if (request.Text.starts_with("Error")) Errors.push_back(request.Text);
            if (request.Buttons == BoxButtons::Ok) return BoxAnswer::Ok;
            return Calm || Chance(2) ? BoxAnswer::Yes : BoxAnswer::No;
        };
        Host.AskText = [this](const InputRequest&) { return InputAnswer{Chance(3), "1"}; };
        Host.AskFile = [this](const FileRequest& request) {
            const std::string path = request.Save ? TheScript.Directory() + "/other.RA1" : Scan(Below(3));
            return FileAnswer{Chance(4), path, path.substr(path.rfind('/') + 1), {path}};
        };
        Host.ShowModal = [this](const std::string& form) { Play(form); };
        TheScript.DuringEvents = [this] {
            if (!Calm && Chance(400)) Work.AbortFit = FlagTrue; // the monitor's Cancel, now and then
        };
    }
    ~SavedAtAnyTime() override { RemoveScreenSurface(); }

    long Below(long n) { return static_cast<long>(Random() % static_cast<unsigned long>(n)); }
    bool Chance(long oneIn) { return Below(oneIn) == 0; }

    // A scan of a single species in 60 to 80 points.
    std::string Scan(long number) {
        const long rpm = 10000 + 3000 * number;
        std::string text = "Sample\r\nR 1 20.0 " + std::to_string(rpm) + " 0079200 8.6853E10 280 32\r\n";
        char line[64];
        for (int i = 0; i < 60 + 10 * number; ++i) {
            const double r = 5.8 + 0.02 * i, sigma = 1.0 * static_cast<double>(rpm * rpm) / 1e8;
            const double noise = 0.002 * ((i * 7919) % 13 - 6) / 6;
            std::snprintf(line, sizeof line, "%.4f %.5f\r\n", r,
                          0.2 * std::exp(sigma * (r * r - 6.3 * 6.3) / 2) + noise);
            text += line;
        }
        return TheScript.MakeFile("0000" + std::to_string(number + 1) + ".RA1", text);
    }

    // A first fit as it should be.
    void FitCalmly() {
        Calm = true;
        for (const char* const command : {"ReadData", "DoModelSet", "FitData"})
            RunMainCommand(command);
        Calm = false;
        ASSERT_EQ(Work.FitDone, FlagTrue);
    }

    // --- the forms ---------------------------------------------------------------------------------------
    void Play(const std::string& form) {
        if (form == ChartsName) return ChartKey(Chance(4) ? 27 : 13, 0);
        if (form == FileFormName) return PlayTable();
        if (form == GetGuessName) return PlayGuesses();
        if (form == ModelFormName) return PlayModel();
        if (form == UnitsFormName) return PlayUnits();
        if (form == ConcFormName) return PlayConcentrations();
        if (form == BaseFormName) return PlayOffsets();
        if (form == BoundsFormName) return Chance(2) ? BoundsFormOkButton() : BoundsFormCancelButton();
    }
    void PlayTable() {
        if (Calm) {
            FileFormReadFiles({Scan(0), Scan(1), Scan(2)});
            return FileFormOkButton();
        }
        for (long n = Below(6); n > 0; --n) {
            const int line = static_cast<int>(Below(4));
            FileFormCheckFocus(line);
            switch (Below(8)) {
            case 0:
                FileForm.Check1[static_cast<std::size_t>(line)].Value = ToInt16(Below(2));
                FileFormCheckClick(line);
                break;
            case 1:
                FileFormReadFiles({Scan(Below(3))});
                break;
            case 2:
                FileFormSubtractBlankButton();
                break;
            case 3:
                FileFormKey(line, "268abcdp"[Below(8)]);
                break;
            case 4:
                FileFormCopyFile();
                break;
            case 5:
                FileFormRangeButton();
                break;
            case 6:
                FileFormPathClick(line);
                break;
            default:
                if (Chance(6)) FileFormClearFiles();
            }
        }
        if (Chance(3)) FileFormCancelButton();
        for (int tries = 0; FileForm.State.Shown && tries < 60; ++tries) {
            try {
                FileFormOkButton();
            } catch (const RuntimeError&) { // a range without points, say: another scan in the first line
            }
            if (!FileForm.State.Shown) return;
            FileFormClearFiles();
            FileFormCheckFocus(0);
            FileFormReadFiles({Scan(Below(3))});
        }
        EXPECT_FALSE(FileForm.State.Shown);
    }
    void PlayGuesses() {
        if (Calm) return static_cast<void>(AssignFreePositions(FitChoices()));
        std::vector<FitChoice> choices = FitChoices();
        for (FitChoice& choice : choices)
            if (Chance(6)) choice.Check = choice.Check == FitCheckNo ? FitCheckYes : FitCheckNo;
        if (Chance(5) || !AssignFreePositions(choices)) GetGuessCancelButton();
    }
    void PlayModel() {
        if (Calm) return ModelFormRowDoubleClick(1);
        ModelFormRowClick(ToInt16(Chance(2) ? 1 + Below(3) : 1 + Below(22)));
        ModelFormNonIdealClick(Chance(3));
        ModelFormSeparateKClick(Chance(3));
        Chance(4) ? ModelFormCancelButton() : ModelFormOkButton();
    }
    void PlayUnits() {
        UnitsFormMassClick(ToInt16(Below(3)));
        UnitsFormConcClick(ToInt16(Below(6)));
        Chance(4) ? UnitsFormCancelButton() : UnitsFormOkButton();
    }
    void PlayConcentrations() {
        const long set = 1 + Below(Work.NumSets);
        const ConcInput input = Chance(2) ? ConcInput::ConcA : ConcInput::VarA;
        ConcFormGotFocus(input, SetNo(set));
        ConcFormBox(input, SetNo(set)).Text = std::to_string(Below(20));
        ConcFormLostFocus(input, SetNo(set));
        if (Chance(5)) ConcFormClearAllButton();
        if (Chance(5)) ConcFormCancelButton();
        ConcFormOkButton();
    }
    void PlayOffsets() {
        const long set = 1 + Below(Work.NumSets);
        BaseFormGotFocus(SetNo(set));
        BaseForm.Boxes.LinkNum[static_cast<std::size_t>(set - 1)].Text =
            std::to_string(Below(Work.NumSets + 1));
        BaseFormLostFocus(SetNo(set));
        if (Chance(5)) BaseFormCancelButton();
        BaseFormOkButton();
    }

    // --- saving ------------------------------------------------------------------------------------------
    void SaveAndCompare(const std::string& after) {
        const auto ask = Host.AskFile;
        const std::string path = TheScript.Directory() + "/fit.quil";
        Host.AskFile = [&](const FileRequest&) { return FileAnswer{false, path, "fit.quil", {path}}; };
        Errors.clear();
        const Workspace before = Work;
        RunMainCommand("DoFitSave");
        Host.AskFile = ask;
        ASSERT_TRUE(Errors.empty()) << "after " << after << ": " << Errors.front();
        ++Saved;
        const std::string bytes = ReadWholeFile(path);
        Workspace back = DecodeFit(bytes, Work).Analysis;
        back.ModelCount = Work.ModelCount;
        back.ModelName.Resize(Work.ModelCount);
        ASSERT_TRUE(EncodeFit(back) == bytes) << "after " << after;
        if (!Chance(8)) return;
        RunRecentFile(1);
        ASSERT_TRUE(Errors.empty()) << "after " << after << ": " << Errors.front();
        EXPECT_EQ(Work.FitDone, before.FitDone);
        EXPECT_EQ(Work.Parms, before.Parms);
        ++Restored;
    }

    std::mt19937 Random;
    bool Calm = false;
    RecordingSurface Screen;
    Script TheScript;
    std::vector<std::string> Errors;
    int Saved = 0, Restored = 0;
};

INSTANTIATE_TEST_SUITE_P(Users, SavedAtAnyTime, testing::Range(1U, 9U));

TEST_P(SavedAtAnyTime, WhatCanBeSavedIsSavedAndComesBack) {
    StartQuillon("");
    Work.PauseBeforeFit = 0;
    Work.MonitorMode = 0;
    FitCalmly();
    const char* const commands[] = {
        "ReadData",        "DoModelSet",        "DefineUnits",       "FitData",           "FitData",
        "FitData",         "SetConcConstraint", "SetBaseConstraint", "AlterBounds",       "DoInitGuesses",
        "UseOverlay",      "ResidualsSpread",   "GraphOverlay",      "NewNameConvention", "WriteBaseline",
        "GraphResidualsR", "ReviewFit",         "Covariance",        "GraphFunc",         "GraphData",
        "GraphResidualsY"};
    std::map<std::string, int> run;
    for (int step = 0; step < 250 && !HasFatalFailure(); ++step) {
        const std::string command = commands[Below(std::size(commands))];
        Work.MonitorMode = 0;
        if (MainItem(command).Enabled) ++run[command];
        RunMainCommand(command);
        if (MainItem("DoFitSave").Enabled) SaveAndCompare(command + ", step " + std::to_string(step));
    }
    EXPECT_GT(Saved, 100);
    EXPECT_GT(Restored, 10);
    EXPECT_GE(run.size(), 10U) << "the user did too little";
}

TEST_P(SavedAtAnyTime, UndoneToTheStartAndRedoneToTheEndTheBytesAreThose) {
    StartQuillon("");
    const std::string first = EncodeFit(Work);
    Work.PauseBeforeFit = 0;
    FitCalmly();
    const char* const commands[] = {"ReadData",
                                    "DoModelSet",
                                    "DefineUnits",
                                    "FitData",
                                    "SetConcConstraint",
                                    "SetBaseConstraint",
                                    "UseOverlay",
                                    "ResidualsSpread",
                                    "Undo",
                                    "AlterBounds",
                                    "DoInitGuesses",
                                    "UseResiduals",
                                    "GraphFunc",
                                    "Redo",
                                    "GraphData",
                                    "FitData"};
    for (int step = 0; step < 200; ++step)
        RunMainCommand(commands[Below(std::size(commands))]);
    while (MainItem("Redo").Enabled)
        RunMainCommand("Redo");
    const std::string last = EncodeFit(Work);
    const std::size_t steps = History.Steps.size();
    EXPECT_GT(steps, 20U) << "the user did too little";
    for (std::size_t n = 1; n < steps; ++n)
        RunMainCommand("Undo");
    EXPECT_FALSE(MainItem("Undo").Enabled);
    EXPECT_TRUE(EncodeFit(Work) == first);
    for (std::size_t n = 1; n < steps; ++n)
        RunMainCommand("Redo");
    EXPECT_TRUE(EncodeFit(Work) == last);
}

} // namespace
} // namespace Quillon
