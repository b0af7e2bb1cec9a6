// Outputs and inputs of one run: what was measured is never written over, and no output by another.
#include "batch/graphs/PictureLoader.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// A job of two scans, the second one with a baseline; and runs of the built program in its folder.
struct PlacesCase : testing::Test {
    Script TheScript;
    std::string Text;

    PlacesCase() {
        Workspace truth = SimulatedWorkspace(SmallCase());
        Text = JobTextOf(truth, TheScript) + "baseline = base.txt\n";
        for (float& value : truth.ScanValue[2])
            value = 0.0F;
        TheScript.MakeFile("base.txt", ScanText(truth, 2));
        TheScript.MakeFile("fit.job", Text);
    }
    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }
    ProgramEnd Run(const std::vector<std::string>& arguments) const {
        ProgramStart start;
        start.Arguments = arguments;
        start.Directory = TheScript.Directory();
        return RunProgram(start);
    }
    int LineOf(const std::string& text) const {
        return static_cast<int>(
            std::count(Text.begin(), Text.begin() + static_cast<long>(Text.find(text)), '\n') + 1);
    }
    // The place of an input in the messages about the job.
    std::string Place(const std::string& section, const std::string& key, const std::string& file) const {
        return "fit.job:" + std::to_string(LineOf(key + " = " + file)) + ": [" + section + "] " + key + ": " +
               file + ": ";
    }
    // Status 1, one line, and the file is what it was.
    void ExpectKept(const std::string& file, const std::vector<std::string>& arguments,
                    const std::string& line) const {
        const std::string before = ReadWholeFile(Path(file));
        const ProgramEnd end = Run(arguments);
        EXPECT_EQ(end.Status, 1);
        EXPECT_EQ(end.Err, line + "\n");
        EXPECT_EQ(ReadWholeFile(Path(file)), before);
    }
};

TEST_F(PlacesCase, ScansBaselinesAndTheJobAreNotWrittenOver) {
    ExpectKept("set1.txt", {"fit.job", "--report", "set1.txt"},
               Place("set 1", "file", "set1.txt") + "--report would write over this file");
    ExpectKept("set2.txt", {"fit.job", "--points", "./set2.txt"},
               Place("set 2", "file", "set2.txt") + "--points would write over this file");
    ExpectKept("base.txt", {"fit.job", "--results", Path("base.txt")},
               Place("set 2", "baseline", "base.txt") + "--results would write over this file");
    ExpectKept("fit.job", {"fit.job", "--save", "fit.job"}, "fit.job: --save would write over the job");
    fs::rename(Path("set1.txt"), Path("set1.svg"));
    Text.replace(Text.find("set1.txt"), 8, "set1.svg");
    TheScript.MakeFile("fit.job", Text);
    ExpectKept("set1.svg", {"fit.job", "--graph", "data:2=set1.svg"},
               Place("set 1", "file", "set1.svg") + "--graph data:2 would write over this file");
}

TEST_F(PlacesCase, AScanIsKnownThroughLinksOfBothKinds) {
    fs::create_hard_link(Path("set1.txt"), Path("hard"));
    fs::create_symlink("set1.txt", Path("soft"));
    const std::string line = Place("set 1", "file", "set1.txt") + "--report would write over this file";
    ExpectKept("set1.txt", {"fit.job", "--report", "hard"}, line);
    ExpectKept("set1.txt", {"fit.job", "--report", "soft"}, line);
}

TEST_F(PlacesCase, ASavedFitIsWrittenOverBySaveAlone) {
    ASSERT_EQ(Run({"fit.job", "--save", "a.quil"}).Status, 0);
    ExpectKept("a.quil", {"a.quil", "--report", "a.quil"},
               "a.quil: --report would write over the saved fit, which only --save may");
    fs::create_hard_link(Path("a.quil"), Path("b.quil"));
    ExpectKept("a.quil", {"a.quil", "--points", "b.quil"},
               "a.quil: --points would write over the saved fit, which only --save may");
    const ProgramEnd end = Run({"a.quil", "--refit", "--save", "a.quil", "--report", "r.txt"});
    EXPECT_EQ(end.Status, 0) << end.Err;
}

TEST_F(PlacesCase, OneOutputUnderTwoSpellingsIsNoticed) {
    fs::create_directory(Path("sub"));
    fs::create_symlink("sub", Path("linked"));
    fs::create_symlink("sub/r.txt", Path("link.txt"));
    for (const auto& [one, other] : {std::pair{"r.txt", "./r.txt"},
                                     {"r.txt", "sub/../r.txt"},
                                     {"sub/r.txt", "linked/r.txt"},
                                     {"link.txt", "sub//r.txt"},
                                     {"-", "/dev/stdout"},
                                     {"/proc/self/fd/1", "/dev/fd/1"}}) {
        const ProgramEnd end = Run({"fit.job", "--report", one, "--points", other});
        EXPECT_EQ(end.Status, 1) << one;
        EXPECT_EQ(end.Err, "quillon-fit: --report and --points name the same file (quillon-fit --help tells "
                           "more)\n")
            << one << " and " << other;
    }
    EXPECT_EQ(Run({"fit.job", "--report", "r.txt", "--points", "sub/r.txt"}).Status, 0);
}

TEST_F(PlacesCase, AFileThatTheStandardOutputLeadsToIsNoSecondOutput) {
    const std::string command = std::string(QUILLON_FIT) + " " + Path("fit.job") + " --report - --points " +
                                Path("out") + " > " + Path("out") + " 2> " + Path("err");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_NE(ReadWholeFile(Path("err")).find("name the same file"), std::string::npos);
}

TEST_F(PlacesCase, ALogThatIsAppendedToKeepsWhatItHeld) {
    TheScript.MakeFile("log", "Monday\n");
    const std::string command = "cd " + TheScript.Directory() + " && " + std::string(QUILLON_FIT) +
                                " fit.job --quiet --report /dev/stdout >> log 2> err";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0) << ReadWholeFile(Path("err"));
    EXPECT_EQ(ReadWholeFile(Path("log")), "Monday\n" + Run({"fit.job", "--quiet"}).Out);
}

// A picture whose name leads to the graph file that it is made of, with no job to look at.
TEST_F(PlacesCase, AGraphFileWasWrittenOverByItsOwnPicture) {
    ASSERT_EQ(Run({"fit.job", "--graph", "data=a.grf"}).Status, 0);
    fs::create_hard_link(Path("a.grf"), Path("hard.svg"));
    fs::create_symlink("a.grf", Path("soft.svg"));
    for (const std::string picture : {"hard.svg", "soft.svg"})
        ExpectKept("a.grf", {"--graph", "a.grf=" + picture},
                   "a.grf: --graph a.grf would write over this graph file");
    ExpectKept("a.grf", {"fit.job", "--graph", "a.grf=b.svg", "--graph", "data=a.grf"},
               "a.grf: --graph data would write over this graph file");
    EXPECT_EQ(Run({"--graph", "a.grf=b.svg"}).Status, 0);
}

TEST(PictureModule, HasNoPlaceWhereTheProgramsFolderIsNotKnown) {
    EXPECT_TRUE(PictureModulePlaces("").empty()); // not the folder that the user works in
    EXPECT_EQ(PictureModulePlaces("/usr/bin").front(), "/usr/bin/libquillon-surfaces.so");
}

// Half a dozen unpackers and the tables of letters behind them took most of the time of a start.
TEST_F(PlacesCase, AStartLoadedWhatOnlyArchivesNeed) {
    const std::string command = "LD_TRACE_LOADED_OBJECTS=1 " + std::string(QUILLON_FIT) + " > " + Path("out");
    ASSERT_EQ(WEXITSTATUS(std::system(command.c_str())), 0);
    const std::string loaded = ReadWholeFile(Path("out"));
    EXPECT_NE(loaded.find("libnettle"), std::string::npos) << loaded;
    EXPECT_EQ(loaded.find("libarchive"), std::string::npos) << loaded;
    EXPECT_EQ(loaded.find("libicu"), std::string::npos) << loaded;
}

} // namespace
} // namespace Quillon
