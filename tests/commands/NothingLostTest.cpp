// Every command that writes a file, with the files of the machine: when the disk is full, closed or gone, or
// the program dies at any step, the former file stands whole, the analysis is as it was, and whoever is there
// has been told in the command's own words.
#include "chart/CHART.h"
#include "chart/CHARTEX.h"
#include "files/FileLock.h"
#include "files/FileStep.h"
#include "files/ReadWhole.h"
#include "files/WriteWhole.h"
#include "persistence/Filelist.h"
#include "platform/Paths.h"
#include "scandata/reader/SaveScans.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <set>
#include <unistd.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// A command: the file it writes, how it is run with its questions answered, and what it says about a failure.
struct Saving {
    const char* Name;
    const char* File;
    void (*Run)(const std::string& path);
    std::string (*Told)(const std::string& path, const std::string& why);
};

void AnswerFile(const std::string& path) {
    Host.AskFile = [path](const FileRequest&) { return FileAnswer{false, path, FileTitle(path), {path}}; };
}

std::string ToldOfFit(const std::string& path, const std::string& why) {
    return "Error '" + why + " 'occurred while saving fit data and parameters --- terminating\n\n" + path;
}
std::string ToldOfIni(const std::string& path, const std::string& why) {
    return "Error occurred while writing defaults to " + FileTitle(path) + "\n\n" + path + ": " + why;
}
std::string ToldOfChartIni(const std::string& path, const std::string& why) {
    return "Error occurred while writing defaults to " + path + "\n\n" + why;
}
std::string ToldOfScan(const std::string& path, const std::string& why) {
    return "Error '" + why + "' occurred while writing " + path;
}

const Saving Savings[] = {
    {"Fit", "fit.quil",
     [](const std::string& path) {
         AnswerFile(path);
         SaveFit();
     },
     ToldOfFit},
    {"FitDefaults", "QUILLON.ini", [](const std::string&) { SaveFitDefaults(); }, ToldOfIni},
    {"ProgramDefaults", "QUILLON.ini", [](const std::string&) { SaveProgramDefaults(); }, ToldOfIni},
    {"RecentFiles", "QUILLON.ini", [](const std::string&) { AddRecentFile("/somewhere/fit.quil"); },
     ToldOfIni},
    {"ChartDefaults", "chart.ini", [](const std::string&) { SaveChartDefaults(); }, ToldOfChartIni},
    {"Subset", "subset.RA1",
     [](const std::string& path) {
         AnswerFile(path);
         SaveSubset(RowNo(1));
     },
     ToldOfScan},
    {"IncludedSets", "set.RA1",
     [](const std::string& path) {
         AnswerFile(path);
         WriteIncludedSets();
     },
     ToldOfScan},
    {"Baseline", "baseline.RA1",
     [](const std::string& path) {
         AnswerFile(path);
         WriteBaselineDialog(true);
     },
     ToldOfScan}};

struct NothingLost : testing::TestWithParam<Saving> {
    NothingLost() : Former("; the former file\n" + std::string(500, 'f')) {
        Work = SimulatedWorkspace(ModelCaseNamed("Model02"));
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        Chart = ChartModule{};
        TheScript.AnswerAllMessages(BoxAnswer::Yes);
        Host.AskText = [](const InputRequest&) { return InputAnswer{false, "1"}; };
        Host.ReadFile = ReadWhole;
        Host.WriteFile = WriteWhole;
        Host.FileExists = IsFile;
        Host.ConfigDirectory = [this] { return Folder(); };
        Path = TheScript.MakeFile(std::string("folder/") + GetParam().File, Former);
        LoadRecentFiles();
    }
    ~NothingLost() override { BeforeFileStep = nullptr; }
    std::string Folder() const { return TheScript.Directory() + "/folder"; }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(Folder()))
            names.insert(entry.path().filename().string());
        return names;
    }
    // Runs the command; whether it has said what it has to.
    bool RunAndHear(const std::string& told) {
        TheScript.Asked.clear();
        GetParam().Run(Path);
        for (const std::string& line : TheScript.Asked)
            if (line == "message: " + told) return true;
        return false;
    }
    const std::string Former;
    Script TheScript;
    std::string Path;
};

INSTANTIATE_TEST_SUITE_P(OfEachCommand, NothingLost, testing::ValuesIn(Savings),
                         [](const auto& saving) { return std::string(saving.param.Name); });

TEST_P(NothingLost, TheCommandWritesWhenNothingIsInItsWay) {
    GetParam().Run(Path);
    EXPECT_NE(ReadWhole(Path), Former);
    for (const std::string& line : TheScript.Asked)
        EXPECT_EQ(line.find("Error"), std::string::npos) << line;
}

TEST_P(NothingLost, AFailureAtAnyStepOfTheDiskIsTold) {
    const std::set<std::string> names = Names();
    const struct {
        FileStep Step;
        int Error;
        const char* Why;
    } failures[] = {{FileStep::Make, EACCES, "Permission denied"},
                    {FileStep::Make, EROFS, "Permission denied"},
                    {FileStep::Write, ENOSPC, "Disk full"},
                    {FileStep::Write, EDQUOT, "Disk full"},
                    {FileStep::Write, EIO, "Path/File access error: Input/output error"},
                    {FileStep::Flush, ENOSPC, "Disk full"},
                    {FileStep::Flush, EIO, "Path/File access error: Input/output error"},
                    {FileStep::Keep, EPERM, "Permission denied"},
                    {FileStep::Replace, ENOSPC, "Disk full"},
                    {FileStep::Replace, ENOENT, "Path not found"}};
    for (const auto& failure : failures) {
        const Workspace before = Work;
        BeforeFileStep = [&](FileStep step) { return step == failure.Step ? failure.Error : 0; };
        EXPECT_TRUE(RunAndHear(GetParam().Told(Path, failure.Why))) << failure.Why;
        BeforeFileStep = nullptr;
        EXPECT_EQ(ReadWhole(Path), Former);
        EXPECT_EQ(Names(), names);
        Work.ReportFontSize = before.ReportFontSize; // takes effect at once, whatever becomes of the file
        EXPECT_TRUE(Work == before);
    }
}

TEST_P(NothingLost, ADiskThatFillsIsTold) {
    EXPECT_EQ(InChild([&] {
                  FailAtByte(300);
                  if (!RunAndHear(GetParam().Told(Path, "Disk full"))) ::_exit(1);
              }),
              0);
    EXPECT_EQ(ReadWhole(Path), Former);
    EXPECT_EQ(Names(), std::set<std::string>{GetParam().File});
}

TEST_P(NothingLost, AFolderThatHasGoneIsTold) {
    fs::remove_all(Folder());
    const Workspace before = Work;
    EXPECT_TRUE(RunAndHear(GetParam().Told(Path, "Path not found")));
    Work.ReportFontSize = before.ReportFontSize;
    EXPECT_TRUE(Work == before);
}

TEST_P(NothingLost, AFolderThatIsClosedToTheUserIsTold) {
    fs::permissions(Folder(), fs::perms(0555));
    fs::permissions(TheScript.Directory(), fs::perms(0755));
    EXPECT_EQ(InChild([&] {
                  BecomeNobody();
                  if (!RunAndHear(GetParam().Told(Path, "Permission denied"))) ::_exit(1);
              }),
              0);
    fs::permissions(Folder(), fs::perms(0755));
    EXPECT_EQ(ReadWhole(Path), Former);
}

TEST_P(NothingLost, ADeathAtAnyStepLeavesAWholeFile) {
    std::set<std::string> states{Former};
    int steps = 0;
    const std::string recent = JoinPath(Folder(), "QUILLON.ini");
    // What the file is after each of the command's writes, and how many steps there are.
    BeforeFileStep = [&](FileStep) {
        ++steps;
        states.insert(ReadWholeFile(Path));
        return 0;
    };
    const Workspace before = Work;
    GetParam().Run(Path);
    BeforeFileStep = nullptr;
    states.insert(ReadWhole(Path));
    ASSERT_GE(steps, 6);
    const int stride = steps < 30 ? 1 : steps / 20;
    for (int n = 1; n <= steps; n += stride) {
        Work = before;
        WriteWholeFile(Path, Former);
        if (Path != recent) fs::remove(recent);
        LoadRecentFiles();
        EXPECT_EQ(InChild([&] {
                      int at = 0;
                      BeforeFileStep = [&](FileStep) {
                          if (++at == n) ::raise(SIGKILL);
                          return 0;
                      };
                      GetParam().Run(Path);
                  }),
                  SIGKILL);
        const std::string left = ReadWhole(Path);
        EXPECT_EQ(states.count(left), 1U) << "step " << n << ": " << left;
    }
}

TEST_P(NothingLost, TwoProcessesAtOnceLeaveOneWholeFile) {
    const auto run = [&] {
        return StartChild([&] {
            for (int i = 0; i < 5; ++i)
                GetParam().Run(Path);
        });
    };
    GetParam().Run(Path);
    const std::string whole = ReadWhole(Path);
    const pid_t one = run(), two = run();
    for (int i = 0; i < 200; ++i)
        EXPECT_GE(ReadWhole(Path).size(), whole.size());
    EXPECT_EQ(EndOfChild(one), 0);
    EXPECT_EQ(EndOfChild(two), 0);
    EXPECT_GE(ReadWhole(Path).size(), whole.size());
    for (const std::string& name : Names())
        EXPECT_FALSE(name.starts_with(".quillon")) << name;
}

// Both read the list, both wrote it, and the later one took the other's file off again.
TEST(RecentFiles, TwoCopiesOfTheProgramAtOnceListBothTheirFiles) {
    Script script;
    script.AnswerAllMessages(BoxAnswer::Ok);
    Host.HoldFile = HoldFile;
    const auto read = Host.ReadFile;
    Host.ReadFile = [read](const std::string& path) {
        std::string bytes = read(path);
        ::usleep(20000); // the other one comes to its own reading meanwhile
        return bytes;
    };
    const auto lister = [](const std::string& path) {
        return StartChild([path] {
            LoadRecentFiles();
            AddRecentFile(path);
        });
    };
    for (const char* round : {"/a", "/b", "/c"}) {
        const pid_t one = lister(std::string(round) + "1"), two = lister(std::string(round) + "2");
        EXPECT_EQ(EndOfChild(one) + EndOfChild(two), 0);
    }
    LoadRecentFiles();
    std::set<std::string> listed;
    for (long item = 1; item <= MaxRecentFiles; ++item)
        listed.insert(mnuRecentFile[item].Path);
    EXPECT_EQ(listed, (std::set<std::string>{"/a1", "/a2", "/b1", "/b2", "/c1", "/c2"}));
}

} // namespace
} // namespace Quillon
