// The folder of a run, read from the main window.
#include "commands/ReadRun.h"
#include "files/WalkFiles.h"
#include "tests/support/MadeRun.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Quillon {
namespace {

RunPlan PlanOf(std::vector<int> cells) {
    RunPlan plan;
    plan.Cells = std::move(cells);
    plan.Wavelengths = {260, 280};
    plan.Points = 40;
    plan.ScansPerStage = 4;
    return plan;
}

TEST(ReadRun, MoreSetsThanTheTableHoldsAreToldWithTheirCounts) {
    Script script;
    script.AnswerAllMessages(BoxAnswer::Ok);
    Work = FreshWorkspace();
    Host.WalkFiles = WalkFiles;
    const std::string folder = script.Directory() + "/run";
    std::filesystem::create_directory(folder);
    WriteRun(MakeRun(PlanOf({1, 2, 3, 4})), folder); // 4 cells, 3 speeds, 2 wavelengths
    ReadRunAt(folder);
    ASSERT_EQ(script.Asked.size(), 1U);
    const std::string& told = script.Asked[0];
    EXPECT_NE(told.find("run: 96 scans"), std::string::npos) << told;
    EXPECT_NE(told.find("24 sets are more than the 18 of an analysis"), std::string::npos) << told;
    EXPECT_NE(told.find("cell 1: 6, cell 2: 6, cell 3: 6, cell 4: 6"), std::string::npos) << told;
    EXPECT_NE(told.find("260 nm: 12, 280 nm: 12"), std::string::npos) << told;
    EXPECT_TRUE(Work.ScanFile[1].empty());
}

TEST(ReadRun, ANoReadsNothingAndUnpacksNothing) {
    Script script;
    script.AnswerAllMessages(BoxAnswer::No);
    Work = FreshWorkspace();
    Host.WalkFiles = WalkFiles;
    Host.MakeFolder = MakeFolder;
    ReadRunAt(script.MakeFile("run.tar.gz", ArchiveOf(EntriesOf(MakeRun(PlanOf({1}))), "tar.gz")));
    ASSERT_EQ(script.Asked.size(), 1U);
    EXPECT_NE(script.Asked[0].find("Read the last scan of each into the table of data sets?"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(script.Directory() + "/run-scans"));
    EXPECT_TRUE(Work.ScanFile[1].empty());
}

TEST(ReadRun, ArchivesAreKnownByTheirEndings) {
    for (const char* name : {"a.zip", "a.TAR.GZ", "b/a.tgz", "a.tar"})
        EXPECT_TRUE(NamesArchive(name)) << name;
    EXPECT_FALSE(NamesArchive("00001.RA1"));
    EXPECT_FALSE(NamesArchive("a.zip/00001.RA1"));
}

} // namespace
} // namespace Quillon
