// The commands around the save file: dialogs, questions, messages, and what is left when something fails.
#include "SampleFit.h"

#include "input/IniFile.h"
#include "persistence/Filelist.h"
#include "platform/Paths.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

const std::string SaveTitle = "Quillon - Save Fit Data & Parameters";
const std::string RestoreTitle = "Quillon - Restore Fit Data & Parameters";

BoxRequest Exclamation(const std::string& text) {
    return {text, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok};
}
BoxRequest YesNo(const std::string& text, BoxAnswer standard = BoxAnswer::Yes) {
    return {text, "Quillon", BoxIcon::Question, BoxButtons::YesNo, standard};
}

// Notes what the commands ask of the platform beside the script.
class FitCommands : public ::testing::Test {
protected:
    FitCommands() {
        Work = FreshWorkspace();
        LoadRecentFiles();
        Host.SetPointer = [this](Pointer p) { Pointers.push_back(p); };
        Host.StartProgram = [this](const std::string& program, const std::string& argument) {
            Started.push_back(program + " <" + argument + ">");
            return CanStart;
        };
        const auto ask = Host.AskFile;
        Host.AskFile = [this, ask](const FileRequest& request) {
            Request = request;
            return ask(request);
        };
    }
    std::string In(const std::string& name) const { return JoinPath(Scripted.Directory(), name); }
    std::string SampleFile(const std::string& name = "fit.quil") {
        return Scripted.MakeFile(name, BytesByHand(SampleFit()));
    }
    std::string Ini() { return ReadIniFile(In("QUILLON.ini")); }
    std::string IniFailure(const std::string& why) const {
        return "Error occurred while writing defaults to QUILLON.ini\n\n" + In("QUILLON.ini") + ": " + why;
    }
    bool PointerIsBack() const { return !Pointers.empty() && Pointers.back() == Pointer::Standard; }

    Script Scripted;
    std::vector<Pointer> Pointers;
    std::vector<std::string> Started;
    bool CanStart = true;
    FileRequest Request;
};

// --- save ------------------------------------------------------------------------------------------------

TEST_F(FitCommands, SaveWritesTheFileTheUserNames) {
    Work = SampleFit();
    Work.DataDirectory = "/data";
    Scripted.ExpectFile(SaveTitle, In("a fit.quil"));
    SaveFit();
    EXPECT_EQ(ReadWholeFile(In("a fit.quil")), BytesByHand(Work));
    EXPECT_EQ(Work.FitFile, In("a fit.quil"));
    EXPECT_EQ(mnuRecentFile[1].Path, In("a fit.quil"));
    EXPECT_EQ(Request.Filter, "fit save files (*.quil,*.fit)|*.quil;*.fit|all files (*.*)|*.*");
    EXPECT_EQ(Request.DefaultType, "quil");
    EXPECT_EQ(Request.Name, "fit1.quil");
    EXPECT_EQ(Request.Directory, "/data");
    EXPECT_TRUE(Request.Save);
    EXPECT_EQ(Pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Standard}));
}

TEST_F(FitCommands, ACancelledSaveDoesNothing) {
    Work = SampleFit();
    Scripted.ExpectFile(SaveTitle, "");
    SaveFit();
    EXPECT_TRUE(Work == SampleFit());
    EXPECT_TRUE(Pointers.empty());
    Host.AskFile = [](const FileRequest&) { return FileAnswer{false, "", "", {}}; }; // OK without a name
    SaveFit();
    EXPECT_TRUE(Pointers.empty());
}

TEST_F(FitCommands, ASaveProposesTheFileOfTheAnalysisOrAFreeName) {
    Work = SampleFit();
    Work.FitFile.clear();
    Work.DataDirectory = Scripted.Directory();
    Scripted.MakeFile("fit1.quil", "");
    Scripted.ExpectFile(SaveTitle, "");
    EXPECT_FALSE(SaveFit());
    EXPECT_EQ(Request.Name, "fit2.quil");
    Work.FitFile = In("mine.quil");
    Scripted.ExpectFile(SaveTitle, "");
    EXPECT_FALSE(SaveFit());
    EXPECT_EQ(Request.Name, In("mine.quil"));
}

TEST_F(FitCommands, ASaveToItsFileAsksOnlyWhereThereIsNone) {
    Work = SampleFit();
    Work.FitFile = In("gone.quil");
    Scripted.ExpectFile(SaveTitle, In("fit.quil"));
    EXPECT_TRUE(SaveFitToItsFile());
    Work.ScanComment[1] = "changed";
    EXPECT_TRUE(SaveFitToItsFile()); // nothing is asked
    EXPECT_EQ(ReadWholeFile(In("fit.quil")), BytesByHand(Work));
    Work.FitFile = Scripted.MakeFile("old.fit", ""); // it may be another program's
    Scripted.ExpectFile(SaveTitle, "");
    EXPECT_FALSE(SaveFitToItsFile());
}

TEST_F(FitCommands, SaveServesEventsOnTheWay) {
    Work = SampleFit();
    int served = 0;
    Scripted.DuringEvents = [&] { ++served; };
    Scripted.ExpectFile(SaveTitle, In("fit.quil"));
    SaveFit();
    EXPECT_GE(served, 2);
}

TEST_F(FitCommands, ASaveThatFailsLeavesTheFormerFileAndSaysWhy) {
    const std::string former = SampleFile();
    const std::string bytes = ReadWholeFile(former);
    for (const char* const why :
         {"Disk full", "Permission denied", "Path not found", "Path/File access error"}) {
        Work = SampleFit();
        Work.ScanComment[1] = "changed";
        const Workspace before = Work;
        Host.WriteFile = [why](const std::string&, const std::string&) { RaiseError(why); };
        Scripted.ExpectFile(SaveTitle, former);
        Scripted.ExpectMessage(
            Exclamation(std::string("Error '") + why +
                        " 'occurred while saving fit data and parameters --- terminating\n\n" + former),
            BoxAnswer::Ok);
        SaveFit();
        EXPECT_EQ(ReadWholeFile(former), bytes);
        EXPECT_TRUE(Work == before);
        EXPECT_FALSE(mnuRecentFile[1].Visible);
        EXPECT_TRUE(PointerIsBack());
    }
}

TEST_F(FitCommands, AnAnalysisThatCouldNotBeRestoredDoesNotReplaceAFileThatCan) {
    const std::string former = SampleFile();
    Work = SampleFit();
    Work.FreeIndex[1] = 99;
    Scripted.ExpectFile(SaveTitle, former);
    Scripted.ExpectMessage("Error 'Subscript out of range (FreeIndex) 'occurred while saving fit data and "
                           "parameters --- terminating\n\n" +
                           former);
    SaveFit();
    EXPECT_EQ(ReadWholeFile(former), BytesByHand(SampleFit()));
}

TEST_F(FitCommands, AListThatCannotBeWrittenIsToldWithoutCallingTheSaveAFailure) {
    Work = SampleFit();
    const auto write = Host.WriteFile;
    Host.WriteFile = [&](const std::string& path, const std::string& bytes) {
        if (FileTitle(path) == "QUILLON.ini") RaiseError("Permission denied");
        write(path, bytes);
    };
    Scripted.ExpectFile(SaveTitle, In("fit.quil"));
    Scripted.ExpectMessage(Exclamation(IniFailure("Permission denied")), BoxAnswer::Ok);
    SaveFit();
    EXPECT_EQ(ReadWholeFile(In("fit.quil")), BytesByHand(SampleFit()));
    EXPECT_EQ(mnuRecentFile[1].Path, In("fit.quil")); // for the rest of this run
}

// --- restore -----------------------------------------------------------------------------------------------

TEST_F(FitCommands, RestoreTakesTheFileTheUserChooses) {
    Work.DataDirectory = "/data";
    Work.NewData = FlagTrue;
    Scripted.ExpectFile(RestoreTitle, SampleFile());
    const RestoreOutcome outcome = RestoreFit();
    EXPECT_EQ(outcome.End, RestoreEnd::Restored);
    EXPECT_EQ(Work.FitTitle, "monomer <-> dimer fit");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.NewData, 0); // the fit can be reviewed at once
    EXPECT_EQ(Work.SetOfRow[3], 2);
    EXPECT_EQ(Work.FitFile, In("fit.quil"));
    EXPECT_EQ(mnuRecentFile[1].Path, In("fit.quil"));
    EXPECT_EQ(Request.Filter, "fit save files (*.quil,*.fit)|*.quil;*.fit|all files (*.*)|*.*");
    EXPECT_EQ(Request.DefaultType, "quil");
    EXPECT_EQ(Request.Name, "*.quil;*.fit");
    EXPECT_EQ(Request.Directory, "/data");
    EXPECT_FALSE(Request.Save);
    EXPECT_TRUE(PointerIsBack());
}

TEST_F(FitCommands, WhatWasSavedAndRestoredIsSavedAgainByteForByte) {
    Work = SampleFit();
    Work.ModelCount = 24;
    Work.ModelName.Resize(24);
    Work.DataDirectory = Scripted.Directory();
    Scripted.ExpectFile(SaveTitle, In("one.quil"));
    SaveFit();
    Work = FreshWorkspace();
    Scripted.ExpectFile(RestoreTitle, In("one.quil"));
    RestoreFit();
    Scripted.ExpectFile(SaveTitle, In("two.quil"));
    SaveFit();
    EXPECT_EQ(ReadWholeFile(In("two.quil")), ReadWholeFile(In("one.quil")));
}

TEST_F(FitCommands, ACancelledRestoreDoesNothing) {
    Scripted.ExpectFile(RestoreTitle, "");
    EXPECT_EQ(RestoreFit().End, RestoreEnd::GivenUp);
    EXPECT_TRUE(Work == FreshWorkspace());
}

TEST_F(FitCommands, ARestoreThatFailsSaysWhyAndLeavesTheAnalysis) {
    const std::string cut = Scripted.MakeFile("cut.quil", BytesByHand(SampleFit()).substr(0, 700));
    const std::string other = Scripted.MakeFile("notes.txt", "Dear diary");
    const struct {
        std::string Path, Why;
    } cases[] = {{cut, "Input past end of file"},
                 {other, "this is not a fit save file"},
                 {In("missing.quil"), "File not found"},
                 {Scripted.Directory(), "Path/File access error"}};
    for (const auto& c : cases) {
        Work = SampleFit();
        Scripted.ExpectMessage(
            Exclamation("Error '" + c.Why +
                        "' occurred while restoring fit data and parameters --- terminating. You may "
                        "have to restart the program.\n\n" +
                        c.Path),
            BoxAnswer::Ok);
        const RestoreOutcome outcome = ReadFitFile(c.Path, false);
        EXPECT_EQ(outcome.End, RestoreEnd::Failed);
        EXPECT_EQ(outcome.Sentence, c.Why);
        EXPECT_TRUE(Work == SampleFit());
        EXPECT_FALSE(mnuRecentFile[1].Visible);
        EXPECT_TRUE(PointerIsBack());
    }
}

TEST_F(FitCommands, AFinishedFitIsTheLastOneAndAnUnfinishedOneIsNot) {
    Workspace w = SampleFit();
    for (const bool finished : {true, false}) {
        w.FitDone = w.FitValid = w.LimitsDone = Flag(finished);
        Work = FreshWorkspace();
        Work.LastModel = 21;
        Work.LastNonIdeal = Flag(!w.NonIdeal);
        Work.LastSeparateK = Flag(!w.SeparateK);
        const Workspace session = Work;
        ASSERT_EQ(ReadFitFile(Scripted.MakeFile("fit.quil", EncodeFit(w)), false).End, RestoreEnd::Restored);
        EXPECT_EQ(Work.LastModel, finished ? w.Model : session.LastModel);
        EXPECT_EQ(Work.LastNonIdeal, finished ? w.NonIdeal : session.LastNonIdeal);
        EXPECT_EQ(Work.LastSeparateK, finished ? w.SeparateK : session.LastSeparateK);
    }
}

TEST_F(FitCommands, AFitOfAVanishedModelIsToldAndBecomesTheSingleSpecies) {
    Workspace w = SampleFit();
    w.ModelCount = 12;
    w.Model = 9;
    const std::string path = Scripted.MakeFile("old.fit", BytesByHand(w));
    Scripted.ExpectMessage(
        Exclamation("Sorry, this fit is for a model that no longer exists.  It cannot be restored "
                    "properly.  I will reset to the single species model."),
        BoxAnswer::Ok);
    EXPECT_EQ(ReadFitFile(path, false).End, RestoreEnd::Restored);
    EXPECT_EQ(Work.Model, 1);
    EXPECT_EQ(Work.ModelCount, 24);
}

// --- versions
// ------------------------------------------------------------------------------------------------

std::string OfVersion(const std::string& version) {
    return Bytes{}.Text("QUILLON").Text(version).All + BytesByHand(SampleFit()).substr(16);
}

TEST_F(FitCommands, AFileBelowTheFormatVersionIsGivenUp) {
    const std::string path = Scripted.MakeFile("old.fit", OfVersion("1.9b"));
    const BoxRequest told =
        Exclamation("This file is a fit from version 1.9b of this program, which cannot be used with the "
                    "present version (4.0.0).  Aborting...");
    Scripted.ExpectMessage(told, BoxAnswer::Ok);
    EXPECT_EQ(ReadFitFile(path, false).End, RestoreEnd::GivenUp);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.FitTitle, "");
    EXPECT_TRUE(PointerIsBack());
    // The command that asked for the file clears the flag when it is over.
    Scripted.ExpectFile(RestoreTitle, path);
    Scripted.ExpectMessage(told, BoxAnswer::Ok);
    EXPECT_EQ(RestoreFit().End, RestoreEnd::GivenUp);
    EXPECT_EQ(Work.AbortFit, 0);
}

const std::string NewerQuestion =
    "This file is a fit from a newer version of this program than the version you are running. It may not "
    "restore correctly, and attempting to read it could cause a crash. Do you want to proceed anyway?";

TEST_F(FitCommands, AFileOfANewerVersionIsReadOnlyOnAYes) {
    const std::string path = Scripted.MakeFile("new.quil", OfVersion("4.01"));
    Scripted.ExpectMessage(YesNo(NewerQuestion, BoxAnswer::No), BoxAnswer::No);
    EXPECT_EQ(ReadFitFile(path, false).End, RestoreEnd::GivenUp);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.FitTitle, "");
    EXPECT_TRUE(PointerIsBack());
    Scripted.ExpectMessage(YesNo(NewerQuestion, BoxAnswer::No), BoxAnswer::Yes);
    EXPECT_EQ(ReadFitFile(path, false).End, RestoreEnd::Restored);
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_EQ(Work.FitTitle, "monomer <-> dimer fit");
}

TEST_F(FitCommands, TheVersionIsTheNumberInFrontOfItsText) {
    // "4.0.9" starts with the number 4.0, which is that of "4.0.0".
    EXPECT_EQ(ReadFitFile(Scripted.MakeFile("a.quil", OfVersion("4.0.9")), false).End, RestoreEnd::Restored);
    EXPECT_EQ(ReadFitFile(Scripted.MakeFile("b.quil", OfVersion("3.99")), false).End, RestoreEnd::Restored);
}

// --- where the file dialogs start afterwards
// -----------------------------------------------------------------

TEST_F(FitCommands, ADataDirectoryThatExistsIsKept) {
    Workspace w = SampleFit();
    w.DataDirectory = Scripted.Directory();
    ReadFitFile(Scripted.MakeFile("fit.quil", EncodeFit(w)), false);
    EXPECT_EQ(Work.DataDirectory, Scripted.Directory());
}

TEST_F(FitCommands, ADataDirectoryIsLookedForBelowEachRoot) {
    const std::string there = In("disk2/xla/run 7");
    Scripted.MakeFile("disk1/x", "");
    Scripted.MakeFile("disk2/xla/run 7/x", "");
    Host.FileRoots = [this] { return std::vector<std::string>{In("disk1"), In("disk2"), In("disk3")}; };
    Workspace w = SampleFit();
    for (const char* const stored : {"C:\\xla\\run 7", "/xla/run 7", "d:/xla\\run 7"}) {
        w.DataDirectory = stored;
        ReadFitFile(Scripted.MakeFile("fit.quil", EncodeFit(w)), false);
        EXPECT_EQ(Work.DataDirectory, there) << stored;
    }
}

TEST_F(FitCommands, TheFirstRootThatHasTheDirectoryIsTaken) {
    Scripted.MakeFile("disk1/xla/x", "");
    Scripted.MakeFile("disk2/xla/x", "");
    Host.FileRoots = [this] { return std::vector<std::string>{In("disk1"), In("disk2")}; };
    Workspace w = SampleFit();
    w.DataDirectory = "C:\\xla";
    ReadFitFile(Scripted.MakeFile("fit.quil", EncodeFit(w)), false);
    EXPECT_EQ(Work.DataDirectory, In("disk1/xla"));
}

TEST_F(FitCommands, ADataDirectoryNowhereToBeFoundBecomesTheWorkingDirectory) {
    Host.FileRoots = [this] { return std::vector<std::string>{In("disk1")}; };
    Workspace w = SampleFit();
    w.DataDirectory = "C:\\gone";
    ReadFitFile(Scripted.MakeFile("fit.quil", EncodeFit(w)), false);
    EXPECT_EQ(Work.DataDirectory, Scripted.Directory());
}

// --- sister programs
// -------------------------------------------------------------------------------------------

const std::string Offer =
    "This file is a fit from OTHER not QUILLON. Do you want to load it into OTHER instead?";
const std::string Where =
    "This file is a fit from OTHER not QUILLON. Please enter the full path to this program, "
    "including the program name and '.exe'.";
const std::string Unable = "Unable to start correct program to read .FIT file.\n\n";

class SisterFit : public FitCommands {
protected:
    SisterFit() {
        Path = Scripted.MakeFile("their.fit", Bytes{}.Text("OTHER").Text("4.0.0").All + "whatever they keep");
        Program = Scripted.MakeFile("other.exe", "");
    }
    void Locate(const std::string& place) {
        WriteIniValue(In("QUILLON.ini"), "Program Locations", "OTHER", place);
    }
    std::string Call() const { return Program + " <" + Path + ">"; }
    std::string Path, Program;
};

TEST_F(SisterFit, ANoGivesUp) {
    Scripted.ExpectMessage(YesNo(Offer), BoxAnswer::No);
    EXPECT_EQ(ReadFitFile(Path, false).End, RestoreEnd::GivenUp);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_TRUE(Started.empty());
    EXPECT_TRUE(PointerIsBack());
}

TEST_F(SisterFit, AKnownProgramIsStartedWithTheFile) {
    Locate(Program);
    Scripted.ExpectMessage(YesNo(Offer), BoxAnswer::Yes);
    const RestoreOutcome outcome = ReadFitFile(Path, false);
    EXPECT_EQ(outcome.End, RestoreEnd::HandedOver);
    EXPECT_FALSE(outcome.EndProgram);
    EXPECT_EQ(Started, std::vector<std::string>{Call()});
    EXPECT_TRUE(Work == FreshWorkspace());
    EXPECT_FALSE(mnuRecentFile[1].Visible);
}

TEST_F(SisterFit, FromTheCommandLineNothingIsAskedAndThisProcessEnds) {
    Locate(Program);
    const RestoreOutcome outcome = ReadFitFile(Path, true);
    EXPECT_EQ(outcome.End, RestoreEnd::HandedOver);
    EXPECT_TRUE(outcome.EndProgram);
    EXPECT_EQ(Started, std::vector<std::string>{Call()});
}

TEST_F(SisterFit, AnUnknownProgramIsAskedForAndRemembered) {
    Scripted.MakeFile("QUILLON.ini", "; mine\r\n[gnllsq]\r\nMaxIterations=41\r\n");
    Scripted.ExpectMessage(YesNo(Offer), BoxAnswer::Yes);
    Scripted.ExpectInput(Where, Program);
    EXPECT_EQ(ReadFitFile(Path, false).End, RestoreEnd::HandedOver);
    EXPECT_EQ(Started, std::vector<std::string>{Call()});
    EXPECT_EQ(Ini(),
              "; mine\r\n[gnllsq]\r\nMaxIterations=41\r\n[Program Locations]\r\nOTHER=" + Program + "\r\n");
    Scripted.ExpectMessage(Offer, BoxAnswer::Yes); // not asked again
    ReadFitFile(Path, false);
    EXPECT_EQ(Started.size(), 2U);
}

TEST_F(SisterFit, AStoredPlaceThatIsNoneIsAskedForAgain) {
    for (const std::string& place : {In("gone.exe"), std::string("/x"), std::string()}) {
        Locate(place);
        Started.clear();
        Scripted.ExpectInput(Where, Program);
        EXPECT_EQ(ReadFitFile(Path, true).End, RestoreEnd::HandedOver);
        EXPECT_EQ(Started, std::vector<std::string>{Call()});
    }
}

TEST_F(SisterFit, APlaceOfFewerThanSixCharactersIsNone) {
    Locate("/abcd"); // makes the ini file, which is there as every other file is from now on
    Host.FileExists = [](const std::string&) { return true; };
    Scripted.ExpectInput(Where, Program);
    ReadFitFile(Path, true);
    Locate("/abcde");
    Started.clear();
    ReadFitFile(Path, true);
    EXPECT_EQ(Started, std::vector<std::string>{"/abcde <" + Path + ">"});
}

TEST_F(SisterFit, APlaceIsReadUpTo255Characters) {
    Locate(std::string(300, 'p'));
    std::string seen;
    Host.FileExists = [&seen](const std::string& path) {
        if (FileTitle(path) != "QUILLON.ini") seen = path;
        return true;
    };
    ReadFitFile(Path, true);
    EXPECT_EQ(seen, std::string(255, 'p'));
}

TEST_F(SisterFit, AProgramThatCannotBeStartedIsToldAndNotRemembered) {
    CanStart = false;
    Scripted.ExpectMessage(Offer, BoxAnswer::Yes);
    Scripted.ExpectInput(Where, Program);
    Scripted.ExpectMessage(Exclamation(Unable + Program + " could not be started"), BoxAnswer::Ok);
    EXPECT_EQ(ReadFitFile(Path, false).End, RestoreEnd::GivenUp);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Ini(), "");
    Locate(Program);
    Scripted.ExpectMessage(Exclamation(Unable + Program + " could not be started"), BoxAnswer::Ok);
    EXPECT_EQ(ReadFitFile(Path, true).End, RestoreEnd::GivenUp);
}

TEST_F(SisterFit, AnAnswerThatNamesNoProgramIsTold) {
    Scripted.ExpectInput(Where, In("nothing here"));
    Scripted.ExpectMessage(Unable + In("nothing here") + ": File not found");
    EXPECT_FALSE(ReadFitFile(Path, true).EndProgram);
    Scripted.ExpectInputCancelled(Where);
    Scripted.ExpectMessage(Unable + "No program was named.");
    ReadFitFile(Path, true);
    EXPECT_TRUE(Started.empty());
}

TEST_F(SisterFit, APlaceThatCannotBeRememberedDoesNotKeepTheProgramFromStarting) {
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    Scripted.ExpectInput(Where, Program);
    Scripted.ExpectMessage(Exclamation(IniFailure("Disk full")), BoxAnswer::Ok);
    EXPECT_EQ(ReadFitFile(Path, true).End, RestoreEnd::HandedOver);
    EXPECT_EQ(Started.size(), 1U);
}

TEST_F(SisterFit, AnIniFileThatCannotBeReadKnowsNoPlaces) {
    Locate(Program);
    const auto read = Host.ReadFile;
    Host.ReadFile = [read](const std::string& path) {
        if (FileTitle(path) == "QUILLON.ini") RaiseError("Path/File access error");
        return read(path);
    };
    Scripted.ExpectInput(Where, Program);
    Scripted.ExpectMessage(IniFailure("Path/File access error")); // nor takes one
    EXPECT_EQ(ReadFitFile(Path, true).End, RestoreEnd::HandedOver);
    EXPECT_EQ(Started.size(), 1U);
}

TEST_F(SisterFit, TheFirstFieldAloneTellsSistersApart) {
    std::string bytes = BytesByHand(SampleFit());
    bytes.replace(2, 7, "QUILLOM");
    const std::string path = Scripted.MakeFile("sister.quil", bytes);
    Scripted.ExpectMessage(
        "This file is a fit from QUILLOM not QUILLON. Do you want to load it into QUILLOM instead?",
        BoxAnswer::No);
    EXPECT_EQ(ReadFitFile(path, false).End, RestoreEnd::GivenUp);
}

// Such a file was handed to a program of its name, which was this one, which handed it on.
TEST_F(SisterFit, AFitNamedLikeThisProgramInSmallLettersIsItsOwn) {
    std::string bytes = BytesByHand(SampleFit());
    bytes.replace(2, 7, "Quillon");
    WriteIniValue(In("QUILLON.ini"), "Program Locations", "Quillon", Program);
    EXPECT_EQ(ReadFitFile(Scripted.MakeFile("own.quil", bytes), true).End, RestoreEnd::Restored);
    EXPECT_TRUE(Started.empty());
    EXPECT_EQ(Work.Model, SampleFit().Model);
}

TEST_F(SisterFit, ThisProgramIsNeverItsOwnSister) {
    const std::string link = Scripted.MakeFile("other-by-name", "");
    Host.IsThisProgram = [link](const std::string& path) { return path == link; };
    Locate(link);
    Scripted.ExpectInput(Where, Program); // what is stored is as good as nothing
    EXPECT_EQ(ReadFitFile(Path, true).End, RestoreEnd::HandedOver);
    EXPECT_EQ(Started, std::vector<std::string>{Call()});
    Locate(link);
    Started.clear();
    Scripted.ExpectInput(Where, link);
    Scripted.ExpectMessage(Unable + link + " is this program itself");
    EXPECT_EQ(ReadFitFile(Path, true).End, RestoreEnd::GivenUp);
    EXPECT_TRUE(Started.empty());
}

} // namespace
} // namespace Quillon
