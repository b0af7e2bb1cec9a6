// What is kept of an analysis that is not saved, and what comes back of it when the program has died.
#include "commands/Sessions.h"
#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/StartUp.h"
#include "commands/Workbench.h"
#include "commands/history/History.h"
#include "files/FileLock.h"
#include "files/ReadWhole.h"
#include "files/WriteWhole.h"
#include "models/table/ParmScale.h"
#include "persistence/codec/FitCodec.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <random>
#include <unistd.h>
#include <utility>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

struct Sessions : testing::Test {
    Sessions() {
        fs::create_directory(Folder());
        Host.StateDirectory = [this] { return Folder(); };
        Host.HoldFileNow = HoldFileNow;
        Host.ReadFile = ReadWhole;
        Host.WriteFile = WriteWhole;
        Host.FileTime = [](const std::string&) { return ClockTime{2020, 4, 21, 9, 38, 5}; };
        StartQuillon("");
    }
    ~Sessions() override { EndSession(); }
    Script script;

    std::string Folder() const { return script.Directory() + "/state"; }
    std::string Path(int n) const { return Folder() + "/session-" + std::to_string(n) + ".quil"; }

    // Eight sets and a fit, through the door by which commands come.
    static void MakeFit() {
        RunCommand(
            [] {
                Work = SimulatedWorkspace(ModelCaseNamed("Model02"));
                Work.DataChosen = Work.ModelChosen = Work.FitDone = Work.FitValid = FlagTrue;
                Work.RmsResidual = 0.00398F;
                BuildParmNames();
            },
            "Make a fit");
    }
    // A copy of the program that dies with a fit that is not saved.
    void DieWithAFit() const {
        EXPECT_EQ(InChild([] {
                      BeginSession();
                      MakeFit();
                      KeepSession();
                      ::raise(SIGKILL);
                  }),
                  SIGKILL);
    }
};

TEST_F(Sessions, WhatIsNotSavedIsKeptAndACleanEndTakesItAway) {
    BeginSession();
    KeepSession();
    EXPECT_FALSE(fs::exists(Path(1))); // there is nothing to lose
    MakeFit();
    KeepSession();
    EXPECT_TRUE(ReadWhole(Path(1)) == EncodeFit(Work));
    EndSession();
    EXPECT_FALSE(fs::exists(Path(1)));
    EXPECT_TRUE(RecoverableSessions().empty());
}

TEST_F(Sessions, ASaveTakesItAwayAndAChangeBringsItBack) {
    BeginSession();
    MakeFit();
    KeepSession();
    script.ExpectFile("Quillon - Save Fit Data & Parameters", script.Directory() + "/fit1.quil");
    RunMainCommand("DoFitSave");
    KeepSession();
    EXPECT_FALSE(fs::exists(Path(1)));
    RunMainCommand("UseOverlay");
    KeepSession();
    EXPECT_TRUE(ReadWhole(Path(1)) == EncodeFit(Work));
}

TEST_F(Sessions, WhatHasNotChangedIsNotWrittenAgain) {
    BeginSession();
    int writes = 0;
    Host.WriteFile = [&](const std::string& path, const std::string& bytes) {
        ++writes;
        WriteWhole(path, bytes);
    };
    MakeFit();
    KeepSession();
    KeepSession();
    EXPECT_EQ(writes, 1);
}

TEST_F(Sessions, InTheMidstOfACommandTheStateBeforeItIsKept) {
    BeginSession();
    MakeFit();
    const std::string before = EncodeFit(Work);
    RunCommand([&] {
        Work.Parms[0] = 17.0F; // half done
        KeepSession();
        EXPECT_TRUE(ReadWhole(Path(1)) == before);
    });
    KeepSession();
    EXPECT_TRUE(ReadWhole(Path(1)) == EncodeFit(Work));
}

TEST_F(Sessions, ATableOfDataSetsIsKeptWhileItStands) {
    BeginSession();
    const std::string scan =
        script.MakeFile("00001.RA1", "Sample\r\nR 1 20.0 10000 0084667 9.2280E10 280 32\r\n"
                                     "6.0 0.1\r\n6.1 0.2\r\n6.2 0.35\r\n");
    script.ExpectModal(FileFormName, [&] {
        FileForm.State.Shown = true;
        FileFormTimer1();
        KeepSession();
        FileForm.State.Shown = false;
    });
    OpenArguments({scan});
    ASSERT_TRUE(fs::exists(Path(1)));
    const Workspace kept = DecodeFit(ReadWhole(Path(1)), Work).Analysis;
    EXPECT_EQ(kept.ScanFile[1], "00001.RA1");
    EXPECT_EQ(kept.ScanPoints[1], 3);
}

TEST_F(Sessions, AnAnalysisThatCannotComeBackDoesNotTakeThePlaceOfOneThatCan) {
    BeginSession();
    MakeFit();
    KeepSession();
    const std::string whole = ReadWhole(Path(1));
    Work.Parms[0] = std::numeric_limits<float>::quiet_NaN(); // which no reader takes
    KeepSession();
    EXPECT_TRUE(ReadWhole(Path(1)) == whole);
    EXPECT_NE(SessionFailure(), "") << "that the latest change is not in it was told nowhere";
    Work.Parms[0] = 1.0F;
    KeepSession();
    EXPECT_EQ(SessionFailure(), "");
}

TEST_F(Sessions, ADiskThatIsFullIsToldAndTriedAgain) {
    BeginSession();
    MakeFit();
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    KeepSession();
    EXPECT_EQ(SessionFailure(), "Disk full");
    Host.WriteFile = WriteWhole;
    KeepSession();
    EXPECT_EQ(SessionFailure(), "");
    EXPECT_TRUE(fs::exists(Path(1)));
}

TEST_F(Sessions, WithoutAFolderNothingIsKeptAndThatIsTold) {
    Host.StateDirectory = [] { return std::string(); };
    BeginSession();
    MakeFit();
    KeepSession();
    EXPECT_NE(SessionFailure(), "");
    EXPECT_TRUE(RecoverableSessions().empty());
}

// A worker that ends when it is told to.
struct SlowWorker {
    std::function<void()> Waiting; // what was handed over and is not done yet
    SlowWorker() {
        SessionWorker = [this](std::function<void()> work) {
            Waiting = std::move(work);
            return WorkUnderWay{[this] { return !Waiting; }, [this] { Run(); }};
        };
    }
    ~SlowWorker() { SessionWorker = nullptr; }
    SlowWorker(const SlowWorker&) = delete;
    SlowWorker& operator=(const SlowWorker&) = delete;
    void Run() {
        if (const auto work = std::exchange(Waiting, nullptr)) work();
    }
};

TEST_F(Sessions, ADiskThatIsSlowHoldsNobodyUp) {
    SlowWorker worker;
    BeginSession();
    MakeFit();
    const std::string first = EncodeFit(Work);
    KeepSession();
    EXPECT_FALSE(fs::exists(Path(1))) << "the write is under way";
    RunCommand([] { Work.Parms[0] = 17.0F; });
    KeepSession(); // passes over: one write at a time
    worker.Run();
    EXPECT_TRUE(ReadWhole(Path(1)) == first);
    KeepSession();
    worker.Run();
    EXPECT_TRUE(ReadWhole(Path(1)) == EncodeFit(Work));
}

TEST_F(Sessions, ACleanEndWaitsForTheWriteAndTakesTheFileAway) {
    SlowWorker worker;
    BeginSession();
    MakeFit();
    KeepSession();
    EndSession();
    EXPECT_FALSE(fs::exists(Path(1)));
    EXPECT_TRUE(RecoverableSessions().empty());
}

TEST_F(Sessions, AWriteThatFailedOnAnotherThreadIsTold) {
    SlowWorker worker;
    BeginSession();
    MakeFit();
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    KeepSession();
    EXPECT_EQ(SessionFailure(), "");
    worker.Run();
    Host.WriteFile = WriteWhole;
    RunCommand([] { Work.Parms[0] = 17.0F; });
    KeepSession();
    EXPECT_EQ(SessionFailure(), "Disk full");
    worker.Run();
    KeepSession();
    EXPECT_EQ(SessionFailure(), "");
    EXPECT_TRUE(ReadWhole(Path(1)) == EncodeFit(Work));
}

// --- what has died ---------------------------------------------------------------------------------------

TEST_F(Sessions, ADeadCopysAnalysisComesBackWholeAndCanBeTakenBack) {
    DieWithAFit();
    const std::vector<RecoverableSession> sessions = RecoverableSessions();
    ASSERT_EQ(sessions.size(), 1U);
    MakeFit();
    const Workspace fit = Work;
    EXPECT_EQ(sessions[0].Text, "Restore: 09:38, " + std::to_string(fit.NumSets) + " sets, rms 3.98E-3");
    StartQuillon("");
    BeginSession();
    EXPECT_TRUE(fs::exists(Path(1))); // the new copy has taken another name
    script.ExpectMessage("Quillon has ended without saving the analysis.\n\n" + sessions[0].Text,
                         BoxAnswer::Yes);
    OfferSessions();
    EXPECT_TRUE(ReadWhole(Path(1)) == EncodeFit(fit));
    EXPECT_EQ(Work.Parms, fit.Parms);
    EXPECT_EQ(Work.PtFit, fit.PtFit);
    EXPECT_EQ(Analmenu.State.Caption, "untitled* - Quillon");
    EXPECT_TRUE(MainItem("ReviewFit").Enabled);
    EXPECT_TRUE(fs::exists(Path(1))); // until it is saved, or the program has ended
    RunMainCommand("Undo");
    EXPECT_EQ(Work.NumSets, 0);
    RunMainCommand("Redo");
    EndSession();
    EXPECT_FALSE(fs::exists(Path(1)));
}

TEST_F(Sessions, TheStartPageHasThem) {
    EXPECT_FALSE(Workbench.SessionsHead.Visible);
    DieWithAFit();
    StartQuillon("");
    BeginSession();
    EXPECT_TRUE(Workbench.SessionsHead.Visible);
    EXPECT_TRUE(Workbench.Sessions[0].Text.starts_with("Restore: 09:38, ")) << Workbench.Sessions[0].Text;
    EXPECT_FALSE(Workbench.Sessions[1].Visible);
    script.ExpectMessage(Workbench.Sessions[0].Text + "\n\nIt has not been saved anywhere else. Discard it?",
                         BoxAnswer::No);
    DiscardButton(0);
    EXPECT_TRUE(fs::exists(Path(1)));
    SessionButton(0);
    EXPECT_EQ(Work.RmsResidual, 0.00398F);
    EXPECT_FALSE(Workbench.Starts);
    EXPECT_FALSE(Workbench.Sessions[0].Visible); // it is this copy's now
}

TEST_F(Sessions, NoAnswerButDiscardTakesItAway) {
    DieWithAFit();
    script.AnswerAllMessages(BoxAnswer::Cancel);
    OfferSessions();
    EXPECT_TRUE(fs::exists(Path(1)));
    EXPECT_EQ(Work.NumSets, 0);
    script.AnswerAllMessages(BoxAnswer::No);
    OfferSessions();
    EXPECT_FALSE(fs::exists(Path(1)));
    EXPECT_EQ(script.Asked.size(), 2U);
    OfferSessions();
    EXPECT_EQ(script.Asked.size(), 2U);
}

TEST_F(Sessions, ThoseOfCopiesThatRunAreNobodyElses) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t other = StartChild([&] {
        BeginSession();
        MakeFit();
        KeepSession();
        if (::write(ends[1], "x", 1) == 1) ::pause();
    });
    char byte = 0;
    EXPECT_EQ(::read(ends[0], &byte, 1), 1);
    EXPECT_TRUE(fs::exists(Path(1)));
    EXPECT_TRUE(RecoverableSessions().empty());
    EXPECT_THROW(RestoreSession(Path(1)), RuntimeError);
    DiscardSession(Path(1));
    EXPECT_TRUE(fs::exists(Path(1)));
    BeginSession();
    MakeFit();
    KeepSession();
    EXPECT_TRUE(fs::exists(Path(2)));
    ::kill(other, SIGKILL);
    EndOfChild(other);
    EXPECT_EQ(RecoverableSessions().size(), 1U);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(Sessions, AFileThatIsNoAnalysisIsNotOffered) {
    script.MakeFile("state/session-4.quil", "no fit");
    script.MakeFile("state/notes.quil", "");
    EXPECT_TRUE(RecoverableSessions().empty());
}

// --- killed at random moments ----------------------------------------------------------------------------

// A copy of the program at work: commands one after the other, the analysis kept as by the clock of the main
// window, though faster, and written on another thread. To the pipe goes the number of the state at hand, and
// behind each write that has ended the number of its state, negative.
void WorkUntilKilled(int pipe, unsigned seed) {
    std::mt19937 random(seed);
    const auto tell = [pipe](int number) {
        if (::write(pipe, &number, sizeof number) != sizeof number) ::_exit(1);
    };
    BeginSession();
    Sessions::MakeFit();
    std::future<void> write;
    int at = 0, writing = 0; // the state at hand, and the one on its way to the disk
    SessionWorker = [&](std::function<void()> work) {
        writing = at;
        write = std::async(std::launch::async, std::move(work));
        return WorkUnderWay{
            [&] { return write.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
            [&] {
                write.get();
                tell(-writing);
            }};
    };
    while (true) {
        tell(++at);
        RunCommand([at] { Work.Parms[0] = static_cast<float>(at); });
        if (random() % 3 == 0) KeepSession();
    }
}

TEST_F(Sessions, KilledAtAnyMomentAllIsThereUpToTheLatestKeep) {
    const char* const named = std::getenv("QUILLON_KILLS");
    const int kills = named ? std::atoi(named) : 10;
    std::mt19937 random(7);
    int restored = 0;
    for (int kill = 0; kill < kills; ++kill) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const auto seed = static_cast<unsigned>(random());
        const pid_t copy = StartChild([&] { WorkUntilKilled(ends[1], seed); });
        ::close(ends[1]);
        int number = 0, kept = 0, latest = 0;
        while (kept == 0 &&
               ::read(ends[0], &number, sizeof number) == sizeof number) // however long that takes
            (number < 0 ? kept : latest) = std::abs(number);
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 30000);
        while (std::chrono::steady_clock::now() < end &&
               ::read(ends[0], &number, sizeof number) == sizeof number)
            (number < 0 ? kept : latest) = std::abs(number);
        ::kill(copy, SIGKILL);
        EndOfChild(copy);
        while (::read(ends[0], &number, sizeof number) == sizeof number) // what it had still told
            (number < 0 ? kept : latest) = std::abs(number);
        ::close(ends[0]);
        const std::vector<RecoverableSession> left = RecoverableSessions();
        ASSERT_EQ(left.size(), 1U) << "kill " << kill;
        StartQuillon("");
        RestoreSession(left[0].Path);
        EXPECT_GE(Work.Parms[0], static_cast<float>(kept)) << "kill " << kill;
        EXPECT_LE(Work.Parms[0], static_cast<float>(latest)) << "kill " << kill;
        EXPECT_GT(Work.NumSets, 0);
        ++restored;
        EndSession();
    }
    std::printf("%d of %d restored\n", restored, kills);
    EXPECT_EQ(restored, kills);
}

} // namespace
} // namespace Quillon
