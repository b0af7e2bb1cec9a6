// The list of recent files.
#include "SampleFit.h"

#include "input/IniFile.h"
#include "persistence/Filelist.h"
#include "platform/Paths.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

class Filelist : public ::testing::Test {
protected:
    Filelist() {
        Work = FreshWorkspace();
        LoadRecentFiles();
    }
    void Ini(const std::string& bytes) {
        Scripted.MakeFile("QUILLON.ini", bytes);
        LoadRecentFiles();
    }
    std::string Ini() { return ReadIniFile(JoinPath(Scripted.Directory(), "QUILLON.ini")); }
    // The paths that the menu shows, after a check that the rest is hidden.
    static std::vector<std::string> Shown() {
        std::vector<std::string> paths;
        for (long item = 1; item <= MaxRecentFiles; ++item)
            if (mnuRecentFile[item].Visible) {
                EXPECT_EQ(static_cast<long>(paths.size()), item - 1) << "a gap in the list";
                EXPECT_EQ(mnuRecentFile[item].Caption, mnuRecentFile[item].Path.substr(0, 128));
                paths.push_back(mnuRecentFile[item].Path);
            }
        EXPECT_EQ(mnuRecentFile[0].Visible, !paths.empty());
        EXPECT_EQ(mnuRecentFile.Hi(), MaxRecentFiles);
        return paths;
    }
    std::string WriteFailure(const std::string& why) const {
        return "Error occurred while writing defaults to QUILLON.ini\n\n" +
               JoinPath(Scripted.Directory(), "QUILLON.ini") + ": " + why;
    }
    using Paths = std::vector<std::string>;
    Script Scripted;
};

TEST_F(Filelist, IsEmptyWithoutAnIniFile) {
    EXPECT_EQ(Shown(), Paths{});
}

TEST_F(Filelist, IsReadUpToTheFirstEmptyKey) {
    Ini("[file mru]\nrecentfile1=/a\nRecentFile2=/b c\nRecentFile4=/d\n");
    EXPECT_EQ(Shown(), (Paths{"/a", "/b c"}));
    Ini("[File MRU]\nRecentFile1=\nRecentFile2=/b\n");
    EXPECT_EQ(Shown(), Paths{});
}

TEST_F(Filelist, ShowsSixAtMost) {
    Ini("[File MRU]\nRecentFile1=/1\nRecentFile2=/2\nRecentFile3=/3\nRecentFile4=/4\nRecentFile5=/5\n"
        "RecentFile6=/6\nRecentFile7=/7\n");
    EXPECT_EQ(Shown(), (Paths{"/1", "/2", "/3", "/4", "/5", "/6"}));
}

TEST_F(Filelist, ANewFileGoesFirst) {
    Ini("; kept\n[File MRU]\nRecentFile1=/a\n\n[other]\nx=1\n");
    AddRecentFile("/b");
    EXPECT_EQ(Shown(), (Paths{"/b", "/a"}));
    EXPECT_EQ(Ini(), "; kept\n[File MRU]\nRecentFile1=/b\nRecentFile2=/a\n\n[other]\nx=1\n");
    LoadRecentFiles();
    EXPECT_EQ(Shown(), (Paths{"/b", "/a"}));
}

TEST_F(Filelist, SixThatGainANewOneLoseTheLast) {
    for (const char* const path : {"/1", "/2", "/3", "/4", "/5", "/6", "/7"})
        AddRecentFile(path);
    EXPECT_EQ(Shown(), (Paths{"/7", "/6", "/5", "/4", "/3", "/2"}));
    LoadRecentFiles();
    EXPECT_EQ(Shown(), (Paths{"/7", "/6", "/5", "/4", "/3", "/2"}));
    EXPECT_EQ(IniValue(Ini(), "File MRU", "RecentFile7"), "");
}

TEST_F(Filelist, AFileInTheListIsMovedUp) {
    Ini("[File MRU]\nRecentFile1=/a\nRecentFile2=/b\nRecentFile3=/c\nRecentFile4=/d\n");
    AddRecentFile("/c");
    EXPECT_EQ(Shown(), (Paths{"/c", "/a", "/b", "/d"}));
    EXPECT_EQ(Ini(), "[File MRU]\nRecentFile1=/c\nRecentFile2=/a\nRecentFile3=/b\nRecentFile4=/d\n");
}

TEST_F(Filelist, TheFirstFileAddedAgainChangesNothing) {
    Ini("[File MRU]\nRecentFile1=/a\nRecentFile2=/b\n");
    Host.WriteFile = [](const std::string&, const std::string&) { FAIL() << "written"; };
    AddRecentFile("/a");
    EXPECT_EQ(Shown(), (Paths{"/a", "/b"}));
}

TEST_F(Filelist, TheListIsWrittenAsAWhole) {
    Ini("[File MRU]\nRecentFile1=/a\nRecentFile2=/b\nRecentFile3=/c\n");
    int writes = 0;
    const auto write = Host.WriteFile;
    Host.WriteFile = [&](const std::string& path, const std::string& bytes) {
        ++writes;
        write(path, bytes);
    };
    AddRecentFile("/d");
    EXPECT_EQ(writes, 1);
}

TEST_F(Filelist, RemovingAnItemMovesTheLaterOnesUp) {
    Ini("[File MRU]\nRecentFile1=/a\nRecentFile2=/b\nRecentFile3=/c\n");
    RemoveRecentFile(2);
    EXPECT_EQ(Shown(), (Paths{"/a", "/c"}));
    EXPECT_EQ(Ini(), "[File MRU]\nRecentFile1=/a\nRecentFile2=/c\nRecentFile3=\n");
    RemoveRecentFile(2);
    RemoveRecentFile(1);
    EXPECT_EQ(Shown(), Paths{});
    LoadRecentFiles();
    EXPECT_EQ(Shown(), Paths{});
    for (const long none : {-1L, 0L, 1L, 7L})
        RemoveRecentFile(none); // nothing there
}

TEST_F(Filelist, ARelativePathIsKeptWhole) {
    AddRecentFile("fit.quil");
    EXPECT_EQ(Shown(), Paths{JoinPath(Scripted.Directory(), "fit.quil")});
}

TEST_F(Filelist, PathsWithBlanksQuotesAndAnyLettersComeBack) {
    const Paths odd = {"/x/\xC4 b.quil ", "\\\\server\\share\\f.quil", "/x/'q'", "/x/a=b;c#[d].quil"};
    for (const std::string& path : odd)
        AddRecentFile(path);
    LoadRecentFiles();
    EXPECT_EQ(Shown(), (Paths{odd[3], odd[2], odd[1], odd[0]}));
}

TEST_F(Filelist, APathThatNoLineHoldsIsNotListed) {
    AddRecentFile("/x/two\nlines.quil");
    AddRecentFile("");
    EXPECT_EQ(Shown(), Paths{});
}

TEST_F(Filelist, ALongPathIsShownCutAndOpenedWhole) {
    const std::string directory = std::string(100, 'd') + "/" + std::string(100, 'e');
    const std::string path = Scripted.MakeFile(directory + "/fit.quil", BytesByHand(SampleFit()));
    AddRecentFile(path);
    LoadRecentFiles();
    EXPECT_EQ(mnuRecentFile[1].Caption, path.substr(0, 128));
    EXPECT_EQ(ChooseRecentFile(1).End, RestoreEnd::Restored);
}

TEST_F(Filelist, ChoosingAnItemRestoresItAndPutsItFirst) {
    const std::string one = Scripted.MakeFile("one.quil", BytesByHand(SampleFit()));
    AddRecentFile(one);
    AddRecentFile("/b");
    const RestoreOutcome outcome = ChooseRecentFile(2);
    EXPECT_EQ(outcome.End, RestoreEnd::Restored);
    EXPECT_EQ(Work.FitFile, one);
    EXPECT_EQ(Shown(), (Paths{one, "/b"}));
}

TEST_F(Filelist, AFileThatHasGoneIsToldAndTakenOff) {
    AddRecentFile("/a");
    AddRecentFile("/gone.quil");
    Scripted.ExpectMessage(
        BoxRequest{
            "The saved fit file /gone.quil cannot be located. Perhaps it is now in another directory. Try "
            "locating and loading it using the 'File...Restore Fit from Disk' command.",
            "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
        BoxAnswer::Ok);
    EXPECT_EQ(ChooseRecentFile(1).End, RestoreEnd::Failed);
    EXPECT_EQ(Shown(), Paths{"/a"});
    EXPECT_TRUE(Work == FreshWorkspace());
}

TEST_F(Filelist, AFileThatIsRefusedStaysInTheList) {
    const std::string path = Scripted.MakeFile("bad.quil", "nothing");
    AddRecentFile(path);
    Scripted.ExpectMessage(
        "Error 'this is not a fit save file' occurred while restoring fit data and parameters --- "
        "terminating. You may have to restart the program.\n\n" +
        path);
    EXPECT_EQ(ChooseRecentFile(1).End, RestoreEnd::Failed);
    EXPECT_EQ(Shown(), Paths{path});
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(Filelist, ChoosingAnEmptyItemDoesNothing) {
    for (const long none : {-1L, 0L, 1L, 6L, 7L})
        EXPECT_EQ(ChooseRecentFile(none).End, RestoreEnd::GivenUp);
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(Filelist, AListThatCannotBeWrittenIsTold) {
    AddRecentFile("/a");
    const std::string before = Ini();
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    Scripted.ExpectMessage(WriteFailure("Disk full"));
    AddRecentFile("/b");
    EXPECT_EQ(Ini(), before);
    EXPECT_EQ(Shown(), (Paths{"/b", "/a"}));
    Scripted.ExpectMessage(WriteFailure("Disk full"));
    RemoveRecentFile(1);
    EXPECT_EQ(Shown(), Paths{"/a"});
}

TEST_F(Filelist, WhatAnotherCopyOfTheProgramListedStays) {
    Ini("[File MRU]\nRecentFile1=/a\nRecentFile2=/b\n");
    const auto fromOutside = [&](const std::string& bytes) { Scripted.MakeFile("QUILLON.ini", bytes); };
    fromOutside("[File MRU]\nRecentFile1=/c\nRecentFile2=/a\nRecentFile3=/b\n");
    AddRecentFile("/d");
    EXPECT_EQ(Shown(), (Paths{"/d", "/c", "/a", "/b"}));
    EXPECT_EQ(Ini(), "[File MRU]\nRecentFile1=/d\nRecentFile2=/c\nRecentFile3=/a\nRecentFile4=/b\n");
    fromOutside("[File MRU]\nRecentFile1=/e\nRecentFile2=/d\nRecentFile3=/c\n");
    RemoveRecentFile(2); // "/c" of the menu
    EXPECT_EQ(Shown(), (Paths{"/e", "/d"}));
    fromOutside("[File MRU]\nRecentFile1=/1\nRecentFile2=/2\nRecentFile3=/3\nRecentFile4=/4\n"
                "RecentFile5=/5\nRecentFile6=/6\n");
    AddRecentFile("/f");
    EXPECT_EQ(Shown(), (Paths{"/f", "/1", "/2", "/3", "/4", "/5"}));
}

TEST_F(Filelist, WhatCouldNotBeWrittenIsWrittenTheNextTime) {
    AddRecentFile("/a");
    {
        const auto write = Host.WriteFile;
        Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
        Scripted.ExpectMessage(WriteFailure("Disk full"));
        AddRecentFile("/b");
        Host.WriteFile = write;
    }
    AddRecentFile("/b"); // saved once more, when there is room again
    LoadRecentFiles();
    EXPECT_EQ(Shown(), (Paths{"/b", "/a"}));
}

TEST_F(Filelist, WhatCouldNotBeWrittenStaysInItsPlace) {
    Ini("[File MRU]\nRecentFile1=/a\nRecentFile2=/b\n");
    const auto write = Host.WriteFile;
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    Scripted.AnswerAllMessages(BoxAnswer::Ok);
    AddRecentFile("/b");
    RemoveRecentFile(2);
    AddRecentFile("/c");
    Host.WriteFile = write;
    AddRecentFile("/d");
    EXPECT_EQ(Shown(), (Paths{"/d", "/c", "/b", "/a"})); // "/a" is in the ini file still
}

TEST_F(Filelist, AnIniFileThatCannotBeReadIsNotWrittenOver) {
    Ini("[File MRU]\nRecentFile1=/a\n[gnllsq]\nMaxIterations=41\n");
    const std::string before = Ini();
    const auto read = Host.ReadFile;
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError("Path/File access error"); };
    Scripted.ExpectMessage(WriteFailure("Path/File access error"));
    AddRecentFile("/b");
    EXPECT_EQ(Shown(), (Paths{"/b", "/a"})); // for the rest of this run
    Host.ReadFile = read;
    EXPECT_EQ(Ini(), before);
}

TEST_F(Filelist, ThePointerIsAnHourglassWhileAFileIsLookedFor) {
    AddRecentFile("/gone.quil");
    std::vector<Pointer> pointers;
    Host.SetPointer = [&](Pointer pointer) { pointers.push_back(pointer); };
    Host.FileExists = [&](const std::string& path) {
        EXPECT_TRUE(path != "/gone.quil" || pointers == std::vector<Pointer>{Pointer::Hourglass});
        return false;
    };
    Scripted.AnswerAllMessages(BoxAnswer::Ok);
    ChooseRecentFile(1);
    EXPECT_EQ(pointers.back(), Pointer::Standard);
}

TEST_F(Filelist, AnIniFileThatCannotBeReadGivesAnEmptyList) {
    Ini("[File MRU]\nRecentFile1=/a\n");
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError("Path/File access error"); };
    LoadRecentFiles();
    EXPECT_EQ(Shown(), Paths{});
}

} // namespace
} // namespace Quillon
