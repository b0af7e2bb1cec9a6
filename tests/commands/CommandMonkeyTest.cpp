// Commands and answers at random, and hands in panes and graph windows between them, without windows:
// whatever they were, Undo leads back to the first bytes and Redo to the last ones, and what is kept for a
// restart is a whole file of the analysis at hand. Random clicks on the windows are those of
// tests/forms/MonkeyTest.cpp.
//
// Two seeds in the suite; more by QUILLON_MONKEY=60, best under the sanitizers. QUILLON_MONKEY_LOG=1 tells
// every command.
#include "PaneMonkey.h"

#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/Sessions.h"
#include "commands/StartUp.h"
#include "commands/fitting/LiveCurve.h"
#include "commands/history/History.h"
#include "commands/history/HistoryForm.h"
#include "files/FileLock.h"
#include "files/ReadWhole.h"
#include "fit/forms/BoundsForm.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/HoldForm.h"
#include "fit/forms/NoiseForm.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/ShareForm.h"
#include "models/forms/UnitsForm.h"
#include "persistence/codec/FitCodec.h"
#include "reporting/ParameterTable.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"
#include "studies/MinimaForm.h"
#include "studies/StudyForm.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Codes.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// These end the program, open what is outside of it, or search for seconds.
const std::set<std::string> LeftOut{"MenuExit", "RunTable", "ReadRun", "mnuHelpContents", "mnuHelpIndex"};

class CommandMonkey {
public:
    explicit CommandMonkey(std::uint64_t seed);
    ~CommandMonkey() { EndSession(); }
    void DoOne();
    std::string State() const { return script.Directory() + "/state/session-1.quil"; }
    int Changes = 0; // commands that have changed the analysis
    long Painted() const { return Panes.Painted; }

private:
    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Dice.Bits() % n); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    template <class... Ways> void OneOf(Ways... ways) {
        const std::array<std::function<void()>, sizeof...(ways)> all{ways...};
        all[Below(all.size())]();
    }
    void WriteScans();
    BoxAnswer Answer(const BoxRequest& request);
    FileAnswer ChooseFile(const FileRequest& request);
    void WorkForm(const std::string& form);
    void WorkTable();
    void WorkGuesses();

    Script script;
    NoiseSource Dice;
    PaneMonkey Panes{Dice};
    std::vector<std::string> Scans;
};

CommandMonkey::CommandMonkey(std::uint64_t seed) : Dice(seed) {
    fs::create_directory(script.Directory() + "/state");
    Host.StateDirectory = [this] { return script.Directory() + "/state"; };
    Host.HoldFileNow = HoldFileNow;
    Host.ReadFile = ReadWhole;
    Host.MessageBoxAnswer = [this](const BoxRequest& request) { return Answer(request); };
    Host.AskText = [this](const InputRequest& request) {
        return Chance(30) ? InputAnswer{} : InputAnswer{false, request.Default};
    };
    Host.AskFile = [this](const FileRequest& request) { return ChooseFile(request); };
    Host.ShowModal = [this](const std::string& form) { WorkForm(form); };
    Host.Uniform = [this] { return static_cast<float>(Below(1U << 24U)) * 0x1p-24F; };
    WriteScans();
    StartQuillon(script.Directory());
    Work.MonitorMode = Monitor::None;
    StartHistory();
    BeginSession();
}

// Three scans of a single species, in cells of their own.
void CommandMonkey::WriteScans() {
    for (int cell = 1; cell <= 3; ++cell) {
        std::string text = "Sample\r\nR " + std::to_string(cell) + " 20.0 13000 0079200 8.6853E10 280 32\r\n";
        char line[64];
        for (int i = 0; i < 40; ++i) {
            const double r = 6.0 + 0.015 * i, noise = 0.002 * ((i * 7919) % 13 - 6) / 6;
            std::snprintf(line, sizeof line, "%.4f %.5f\r\n", r,
                          0.1 * cell * std::exp(1.7 * (r * r - 6.3 * 6.3) / 2) + noise);
            text += line;
        }
        Scans.push_back(script.MakeFile("00020.RA" + std::to_string(cell), text));
    }
}

BoxAnswer CommandMonkey::Answer(const BoxRequest& request) {
    if (std::getenv("QUILLON_MONKEY_LOG")) std::printf("message: %s\n", request.Text.c_str());
    EXPECT_EQ(request.Text.find("This command failed"), std::string::npos) << request.Text;
    EXPECT_EQ(request.Text.find(ErrorText::BadSubscript), std::string::npos) << request.Text;
    if (request.Buttons == BoxButtons::Ok) return BoxAnswer::Ok;
    if (Chance(60)) return BoxAnswer::Yes;
    return request.Buttons == BoxButtons::YesNo || Chance(50) ? BoxAnswer::No : BoxAnswer::Cancel;
}

FileAnswer CommandMonkey::ChooseFile(const FileRequest& request) {
    FileAnswer answer;
    if (Chance(25)) return answer;
    const std::string written = script.Directory() + "/written" + std::to_string(Below(3));
    answer.Paths = {request.Save || Chance(30) ? written + (Chance(50) ? ".quil" : ".RA1") : Scans[Below(3)]};
    if (!request.Save && request.Several && Chance(50)) answer.Paths = Scans;
    answer.Cancelled = false;
    answer.Path = answer.Paths.front();
    answer.Title = fs::path(answer.Path).filename().string();
    return answer;
}

void CommandMonkey::WorkTable() {
    for (std::size_t n = Below(4); n > 0; --n)
        OneOf([&] { FileFormReadFiles(Chance(50) ? Scans : std::vector{Scans[Below(3)]}); },
              [&] {
                  FileForm.Check1[0].Value = Chance(50) ? 1 : 0;
                  FileFormCheckClick(0);
              },
              [&] { FileFormKey(static_cast<int>(Below(3)), "abc*"[Below(4)]); }, FileFormCopyFile,
              FileFormClearFiles, FileFormPage2);
    KeepSession();
    OneOf(FileFormOkButton, FileFormOkButton, FileFormCancelButton, FileFormEscape);
    // What is refused leaves the table open, and so does a No to fitting whole scans: four times in ten.
    constexpr int MostRefusals = 40;
    for (int i = 0; i < MostRefusals && FileForm.State.Shown; ++i) {
        FileFormCloseBox();
        if (FileForm.State.Shown) FileFormReadFiles(Scans);
    }
    EXPECT_FALSE(FileForm.State.Shown) << "there is no way out of the table";
}

void CommandMonkey::WorkGuesses() {
    const auto rows = static_cast<int>(GetGuess.FitCheck.size());
    StartLiveCurve();
    for (std::size_t n = Below(3); n > 0; --n)
        Panes.TypeAGuess();
    for (std::size_t n = Below(3); n > 0 && rows > 0; --n) {
        const int row = static_cast<int>(Below(static_cast<std::size_t>(rows)));
        Control& check = GetGuess.FitCheck[static_cast<std::size_t>(row)];
        if (!check.Enabled || !check.Visible) continue;
        check.Value = check.Value == 0 ? 1 : 0;
        GetGuessFitCheck(row);
    }
    OneOf(GetGuessOkButton, GetGuessOkButton, GetGuessCancelButton);
}

// Does something in a form, and leaves it.
void CommandMonkey::WorkForm(const std::string& form) {
    if (std::getenv("QUILLON_MONKEY_LOG")) std::printf("form: %s\n", form.c_str());
    if (Chance(10)) KeepSession();
    if (form == FileFormName) return WorkTable();
    if (form == GetGuessName) return WorkGuesses();
    if (form == ChartsName) return Panes.WorkGraph();
    if (Panes.WorkForm(form)) return;
    if (form == ModelFormName) {
        ModelFormNonIdealClick(Chance(20));
        ModelFormSeparateKClick(Chance(20));
        return OneOf([&] { ModelFormRowDoubleClick(static_cast<std::int16_t>(1 + Below(4))); },
                     ModelFormCancelButton);
    }
    if (form == UnitsFormName) {
        UnitsFormMassClick(static_cast<std::int16_t>(Below(3)));
        return OneOf(UnitsFormOkButton, UnitsFormCancelButton);
    }
    if (form == HoldFormName) return OneOf(HoldFormHoldButton, HoldFormFitButton, HoldFormCancelButton);
    if (form == NoiseFormName) {
        OneOf(NoiseFormFromFitButton, NoiseFormNoneButton);
        return OneOf(NoiseFormOkButton, NoiseFormCancelButton);
    }
    if (form == ShareFormName) {
        OneOf(ShareFormProposeButton, ShareFormCancelButton);
        return OneOf(ShareFormOkButton, ShareFormClose);
    }
    if (form == ConcFormName) {
        ConcFormBox(ConcInput::ConcA, SetNo(1)).Text = Chance(50) ? "0.25" : "";
        ConcFormLostFocus(ConcInput::ConcA, SetNo(1));
        return OneOf(ConcFormOkButton, ConcFormCancelButton);
    }
    if (form == HistoryFormName) {
        HistoryFormGo(Below(History.Steps.size()));
        return HistoryFormCloseButton();
    }
    if (form == BaseFormName) return BaseFormOkButton();
    if (form == BoundsFormName) return BoundsFormOkButton();
    if (form == MinimaFormName) return MinimaFormCloseButton();
    if (form == StudyFormName) return StudyFormCloseButton();
}

// A command of the menu that is open at present, or something in a pane of the main window.
void CommandMonkey::DoOne() {
    std::vector<std::string> open;
    for (const MainMenuItem& item : Analmenu.Items)
        if (item.Item.Enabled && !LeftOut.contains(item.Row.Name)) open.emplace_back(item.Row.Name);
    std::string name = open[Below(open.size())];
    if (Chance(40)) name = std::array{"ReadData", "DoModelSet", "FitAtOnce", "Undo", "Redo"}[Below(5)];
    if (!MainItem(name).Enabled) return;
    if (std::getenv("QUILLON_MONKEY_LOG")) std::printf("command: %s\n", name.c_str());
    const std::string before = BytesToCompare();
    RunMainCommand(name);
    Changes += BytesToCompare() == before ? 0 : 1;
    for (std::size_t n = Below(3); n > 0; --n)
        Panes.DoOne();
    if (Chance(20)) KeepSession();
    EXPECT_FALSE(CommandAtWork());
    EXPECT_EQ(Work.AbortFit, FlagFalse) << "a cancel is left by " << name;
    try {
        DecodeFit(EncodeFit(Work), Work);
    } catch (const RuntimeError& error) {
        ADD_FAILURE() << "what " << name << " has left cannot be restored: " << error.Text;
    }
}

void ExpectBytes(const std::string& bytes, const char* what) {
    EXPECT_TRUE(BytesToCompare() == bytes) << what;
}

void PlayAndGoBack(std::uint64_t seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    CommandMonkey monkey(seed);
    const std::string first = BytesToCompare();
    for (int i = 0; i < 200; ++i)
        monkey.DoOne();
    KeepSession();
    if (fs::exists(monkey.State())) {
        EXPECT_TRUE(ReadWhole(monkey.State()) == EncodeFit(Work)) << "what is kept is another analysis";
    }
    while (CanRedo())
        RunMainCommand("Redo");
    const std::string last = BytesToCompare();
    EXPECT_GT(monkey.Changes, 20);
    EXPECT_GT(monkey.Painted(), 1000);
    while (CanUndo())
        RunMainCommand("Undo");
    ExpectBytes(first, "Undo to the start");
    while (CanRedo())
        RunMainCommand("Redo");
    ExpectBytes(last, "Redo to the end");
}

TEST(CommandMonkey, UndoLeadsToTheFirstBytesAndRedoToTheLast) {
    const char* const named = std::getenv("QUILLON_MONKEY");
    const int seeds = named ? std::atoi(named) : 2;
    for (int seed = 1; seed <= seeds; ++seed)
        PlayAndGoBack(static_cast<std::uint64_t>(seed));
}

} // namespace
} // namespace Quillon
