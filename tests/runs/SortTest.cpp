// Runs made with a known truth, sorted: names, groups, copies, what is told.
#include "files/WalkFiles.h"
#include "input/Csv.h"
#include "runs/Groups.h"
#include "runs/ReadRun.h"
#include "runs/SortCsv.h"
#include "tests/support/MadeRun.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/SameSettings.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <tuple>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// A folder of the test's own, walked over by the program's own filling.
struct RunFolder {
    Script TheScript;
    std::string Path = TheScript.Directory() + "/run";

    RunFolder() {
        Work = FreshWorkspace();
        Host.WalkFiles = WalkFiles;
        fs::create_directory(Path);
    }
    SortedRun Sort() const { return SortRun(Path, {}, false); }
};

bool IsTold(const SortedRun& run, const std::string& part) {
    for (const std::string& remark : run.Remarks)
        if (remark.find(part) != std::string::npos) return true;
    return false;
}

using Truth = std::tuple<int, int, int>; // cell, stage, wavelength

// Each group holds the scans of one cell, stage and wavelength, all of them, in the order of time.
void ExpectSortedRight(const std::vector<MadeScan>& made, const SortedRun& run) {
    std::map<std::string, const MadeScan*> byName;
    std::map<Truth, std::size_t> counts;
    std::size_t copies = 0;
    for (const MadeScan& scan : made) {
        byName[scan.Name] = &scan;
        scan.Copy ? ++copies : ++counts[Truth(scan.Cell, scan.Stage, scan.Wavelength)];
    }
    EXPECT_EQ(run.Scans.size(), made.size() - copies);
    EXPECT_EQ(run.Remarks.size(), copies);
    ASSERT_EQ(run.Groups.size(), counts.size());
    for (const RunGroup& group : run.Groups) {
        const MadeScan& first = *byName.at(run.Scans[group.Scans.front()].File);
        const Truth truth(first.Cell, first.Stage, first.Wavelength);
        EXPECT_EQ(group.Scans.size(), counts[truth]);
        for (std::size_t i = 0; i < group.Scans.size(); ++i) {
            const MadeScan& scan = *byName.at(run.Scans[group.Scans[i]].File);
            EXPECT_EQ(Truth(scan.Cell, scan.Stage, scan.Wavelength), truth) << scan.Name;
            EXPECT_EQ(scan.Number, static_cast<int>(i)) << scan.Name;
        }
    }
}

TEST(ScanNames, OldOnesHaveNumberAndCell) {
    const ScanNameFacts facts = ScanNameOf("00012.RA3");
    EXPECT_EQ(facts.Scan, 12);
    EXPECT_EQ(facts.Cell, 3);
    EXPECT_EQ(facts.Type, 'A');
    EXPECT_EQ(ScanNameOf("123456.ip4").Scan, 123456);
    EXPECT_EQ(ScanNameOf("123456.ip4").Type, 'P');
    EXPECT_EQ(ScanNameOf("00001.RI2").Type, 'I');
    EXPECT_FALSE(ScanNameOf("0012.RA3").Scan); // neither five nor six digits
    EXPECT_FALSE(ScanNameOf("00012.RA0").Cell);
    EXPECT_FALSE(ScanNameOf("xf0011.r00").Cell);
    EXPECT_EQ(ScanNameOf("s03b1_20.RA1").Cell, 1);
    EXPECT_FALSE(ScanNameOf("00012").Cell);
    EXPECT_FALSE(ScanNameOf("").Cell);
}

TEST(ScanNames, NewOnesHaveTheCellInTheirFieldsAndNotInTheEnding) {
    const ScanNameFacts facts = ScanNameOf("RunId-s0001-c2-s0009-w280-r_-n1.ra1");
    EXPECT_EQ(facts.RunId, "RunId");
    EXPECT_EQ(facts.Step, 1);
    EXPECT_EQ(facts.Cell, 2);
    EXPECT_EQ(facts.Scan, 9);
    EXPECT_EQ(facts.Wavelength, 280);
    EXPECT_EQ(facts.Replicate, 1);
    EXPECT_EQ(ScanNameOf("my-own-run-s0002-c11-s0010-w230-r_-n1.ra1").RunId, "my-own-run");
    EXPECT_EQ(ScanNameOf("my-own-run-s0002-c11-s0010-w230-r_-n1.ra1").Cell, 11);
}

TEST(SortedRuns, EveryScanIsInItsGroupInBothStylesOfNames) {
    for (const bool newNames : {false, true})
        for (std::uint64_t seed = 1; seed <= 4; ++seed) {
            RunFolder folder;
            RunPlan plan;
            plan.NewNames = newNames;
            plan.Cells = {1, 3, 7};
            plan.Speeds = {10000, 14000, 10050, 20000}; // back to the first one, within 1%
            plan.Wavelengths = {230, 250, 280};
            plan.Wander = 2;
            plan.ScansPerStage = 5;
            plan.Points = 30;
            plan.MissingShare = seed > 2 ? 0.3 : 0.0;
            plan.Duplicates = 3;
            plan.Seed = seed;
            const std::vector<MadeScan> made = MakeRun(plan);
            WriteRun(made, folder.Path);
            SortedRun run = ReadRun(folder.Path, false);
            GroupRun(run);
            ExpectSortedRight(made, run);
        }
}

TEST(SortedRuns, ARunOf630ScansHasExactCounts) {
    RunFolder folder;
    RunPlan plan;
    plan.Cells = {1, 2, 3, 4, 5, 6, 7};
    plan.Wavelengths = {230, 260, 280};
    plan.Wander = 1;
    plan.Points = 30;
    const std::vector<MadeScan> made = MakeRun(plan);
    ASSERT_EQ(made.size(), 630U);
    WriteRun(made, folder.Path);
    const SortedRun run = folder.Sort();
    ExpectSortedRight(made, run);
    EXPECT_EQ(run.Groups.size(), 63U);
}

TEST(SortedRuns, WavelengthsChainUpToThreeNanometresAndSpeedsUpToOnePercent) {
    EXPECT_TRUE(IsSameWavelength(230.0F, 233.0F));
    EXPECT_FALSE(IsSameWavelength(230.0F, 233.5F));
    EXPECT_TRUE(IsSameSpeed(9900.0F, 10000.0F));
    EXPECT_FALSE(IsSameSpeed(9899.0F, 10000.0F));
    EXPECT_TRUE(IsSameSpeed(0.0F, 0.0F));
}

TEST(SortedRuns, AScanWithoutANameGoesByItsHeaderAndANameWinsOverIt) {
    RunFolder folder;
    const std::vector<double> radii = {6.9, 6.91, 6.92, 6.93}, values = {0.1, 0.2, 0.3, 0.4};
    WriteWholeFile(folder.Path + "/scan.txt", ScanFile('R', 5, 10000, 100, 280, radii, values));
    WriteWholeFile(folder.Path + "/00001.RA2", ScanFile('R', 4, 10000, 200, 280, radii, values));
    WriteWholeFile(folder.Path + "/notes.txt", "R 2 is the sample\nnot a scan\n");
    const SortedRun run = folder.Sort();
    ASSERT_EQ(run.Scans.size(), 2U);
    EXPECT_EQ(run.Scans[0].Cell, 2);
    EXPECT_EQ(run.Scans[1].Cell, 5);
    EXPECT_EQ(run.Remarks,
              std::vector<std::string>{"00001.RA2: cell 2 by its name, 4 by its header; the name counts"});
}

TEST(SortedRuns, AScanThatCannotBeReadIsToldAndTheOthersStay) {
    RunFolder folder;
    const std::vector<double> radii = {6.9, 6.91, 6.92}, values = {0.1, 0.2, 0.3};
    const std::string good = ScanFile('R', 1, 10000, 100, 280, radii, values);
    WriteWholeFile(folder.Path + "/00001.RA1", good);
    WriteWholeFile(folder.Path + "/00002.RA1", good.substr(0, good.size() - 32)); // within a line
    WriteWholeFile(folder.Path + "/00003.RA1", "");
    const SortedRun run = folder.Sort();
    EXPECT_EQ(run.Scans.size(), 1U);
    EXPECT_TRUE(IsTold(run, "00002.RA1: it is left alone: line 5"));
    EXPECT_TRUE(IsTold(run, "00003.RA1: it is left alone: the file is empty"));
}

TEST(SortedRuns, OpticsAreToldByNameAndHeader) {
    RunFolder folder;
    const std::vector<double> radii = {6.9, 6.91, 6.92, 6.93}, values = {0.1, 0.2, 0.3, 0.4};
    const auto add = [&](const char* name, char letter, const std::vector<double>& x) {
        WriteWholeFile(folder.Path + "/" + name, ScanFile(letter, 1, 10000, 100, 280, x, values));
    };
    add("00001.RA1", 'R', radii);
    add("00002.IP1", 'P', radii);
    add("00003.FI1", 'F', radii);
    add("00004.WA1", 'W', {200, 210, 220, 230});
    add("00005.txt", 'P', {6.9, 6.91, 6.92, 6.94}); // not a copy of the second one
    add("00006.RA1", 'R', {200, 210, 220, 230});    // nanometres whatever the name says
    std::map<std::string, ScanOptics> found;
    const SortedRun run = folder.Sort();
    for (const RunScan& scan : run.Scans)
        found[scan.File] = scan.Optics;
    EXPECT_EQ(found["00001.RA1"], ScanOptics::Absorbance);
    EXPECT_EQ(found["00002.IP1"], ScanOptics::Interference);
    EXPECT_EQ(found["00003.FI1"], ScanOptics::Fluorescence);
    EXPECT_EQ(found["00004.WA1"], ScanOptics::Wavelength);
    EXPECT_EQ(found["00005.txt"], ScanOptics::Interference);
    EXPECT_EQ(found["00006.RA1"], ScanOptics::Wavelength);
}

TEST(SortedRuns, IntensitiesBecomeAbsorbancesAndThoseWithoutALogarithmAreLeftOut) {
    const std::string text = "pair\r\nI 1 20.0 10000 100 1E9 280 10\r\n"
                             "6.9 1000 10000\r\n6.91 100 10000\r\n6.92 -5 10000\r\n6.93 10 0\r\n6.94 1 1\r\n";
    const RunScan scan = ReadRunScan("00001.RI1", text);
    EXPECT_EQ(scan.Optics, ScanOptics::Intensity);
    ASSERT_EQ(scan.Readings.Hi(), 3);
    EXPECT_FLOAT_EQ(scan.Readings[1], 1.0F);
    EXPECT_FLOAT_EQ(scan.Readings[2], 2.0F);
    EXPECT_FLOAT_EQ(scan.Radii[3], 6.94F);
}

TEST(SortedRuns, TheTableHasItsColumnsAndARowForEachScan) {
    RunFolder folder;
    RunPlan plan;
    plan.Cells = {2};
    plan.Speeds = {10000};
    plan.ScansPerStage = 8;
    WriteRun(MakeRun(plan), folder.Path);
    const SortedRun run = folder.Sort();
    const std::vector<CsvCells> rows = ParseCsv(SortCsv(run, {0}));
    ASSERT_EQ(rows.size(), 9U);
    EXPECT_EQ(rows[0], (CsvCells{"cell", "speed_rpm", "wavelength_nm", "optics", "scan", "file", "time_s",
                                 "omega2t", "temperature_c", "points", "noise", "rms_from_last",
                                 "at_equilibrium", "last", "group"}));
    EXPECT_EQ(rows[1][0], "2");
    EXPECT_EQ(rows[1][1], "10000");
    EXPECT_EQ(rows[1][2], "280");
    EXPECT_EQ(rows[1][3], "absorbance");
    EXPECT_EQ(rows[1][4], "1");
    EXPECT_EQ(rows[1][5], "00001.RA2");
    EXPECT_EQ(rows[1][12], "no");
    EXPECT_EQ(rows[1][13], "no");
    EXPECT_EQ(rows[8][11], "0");
    EXPECT_EQ(rows[8][12], "yes");
    EXPECT_EQ(rows[8][13], "yes");
    EXPECT_EQ(rows[8][14], "1");
}

TEST(SortedRuns, NamesThatAreNoUtf8ShowTheirBytes) {
    EXPECT_EQ(ShownName("M\xC3\xBCller"), "M\xC3\xBCller");
    EXPECT_EQ(ShownName("M\xFCller"), "M\\xFCller");
}

TEST(SortedRuns, AFolderWithoutScansSaysSo) {
    RunFolder folder;
    try {
        folder.Sort();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, folder.Path + ": there is no scan in it");
    }
}

} // namespace
} // namespace Quillon
