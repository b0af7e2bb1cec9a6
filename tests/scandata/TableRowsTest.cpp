// Rows of the table moved, copied and emptied, and the commands that do the same to many of them.
#include "scandata/table/TableRows.h"

#include "ScanFixture.h"
#include "scandata/forms/TableCommands.h"
#include "scandata/reader/AdoptScan.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Roads.h"

#include <cstdio>

namespace Quillon {
namespace {

// Scans from 5.80 to 7.20 cm, 0.01 cm apart; channels A to C of six at 5.85, 6.35, 6.85 to 6.15, 6.65, 7.15.
struct Rows : ScanTest {
    Rows() {
        Work.RotorExpansion = 0.0F;
        const float radii[] = {5.85F, 0, 6.35F, 0, 6.85F, 0, 0, 0, 6.15F, 0, 6.65F, 0, 7.15F, 0, 0, 0};
        for (long i = 0; i < 16; ++i)
            Work.ChannelRadii[i] = radii[i];
    }
    void Adopt(long row, const std::string& name, int first = 580, int last = 720) {
        std::vector<std::string> points;
        for (int i = first; i <= last; ++i) {
            char text[32];
            std::snprintf(text, sizeof text, "%.2f %.3f", 0.01 * i,
                          0.001 * i + 0.01 * static_cast<double>(row));
            points.emplace_back(text);
        }
        ASSERT_TRUE(AdoptScan(script.MakeFile(name, ScanText(points)), RowNo(row)).Ok);
    }
    static std::vector<std::string> Files(long last) {
        std::vector<std::string> files;
        for (long row = 1; row <= last; ++row)
            files.push_back(Work.ScanFile[row]);
        return files;
    }
    static std::string Channels(long last) {
        std::string channels;
        for (long row = 1; row <= last; ++row)
            channels += "-ABCD"[Work.DataChannel[row]];
        return channels;
    }
    using Names = std::vector<std::string>;
};

// A fit that is opened months later: its scans are read again, and one has been edited meanwhile.
TEST_F(Rows, AFileThatHasChangedSinceItWasReadIsTold) {
    const std::string name = "00001.RA1";
    Host.Sha256 = [](std::string_view bytes) {
        return std::string(60, 'a') + std::to_string(1000 + bytes.size() % 9000);
    };
    Adopt(1, name);
    const std::string first = Work.ScanSha256[1];
    const std::string path = script.Directory() + "/" + name;
    EXPECT_EQ(AdoptScan(path, RowNo(1)).Remark, "") << "the same bytes";
    EXPECT_EQ(Work.ScanSha256[1], first);
    script.MakeFile(name, ScanText({"6.00 0.100", "6.01 0.101", "6.02 0.102"}));
    const ScanReadResult again = AdoptScan(path, RowNo(1));
    EXPECT_NE(again.Remark.find("the file has changed since this analysis read it: its SHA-256 was " +
                                first.substr(0, 12)),
              std::string::npos)
        << again.Remark;
    EXPECT_NE(Work.ScanSha256[1], first);
}

TEST_F(Rows, AMovedRowTakesAllItHasAndIsStillTheOneThatOthersName) {
    for (long row = 1; row <= 4; ++row)
        Adopt(row, "0000" + std::to_string(row) + ".RA1");
    Work.CellPath[2] = 0.3F;
    Work.ConcConstraintA[2] = 0.7F;
    Work.SetParmMemory(3, 2) = 1.5F;
    Work.OffsetLink[1] = 2;
    Work.OffsetLink[4] = 3;
    Work.ConcLink[3] = 2;
    Work.NumSets = 2;
    Work.SetRow[1] = 2;
    Work.SetRow[2] = 4;
    const auto values = Work.ScanValue[2];
    MoveRow(RowNo(2), RowNo(4));
    EXPECT_EQ(Files(4), (Names{"00001.RA1", "00003.RA1", "00004.RA1", "00002.RA1"}));
    EXPECT_EQ(Work.CellPath[4], 0.3F);
    EXPECT_EQ(Work.ConcConstraintA[4], 0.7F);
    EXPECT_EQ(Work.SetParmMemory(3, 4), 1.5F);
    EXPECT_TRUE(Work.ScanValue[4] == values);
    EXPECT_EQ(Work.OffsetLink[1], 4); // the tie of row 1
    EXPECT_EQ(Work.OffsetLink[3], 2); // that of the former row 4, to the former row 3
    EXPECT_EQ(Work.ConcLink[2], 4);
    EXPECT_EQ(Work.SetRow[1], 4);
    EXPECT_EQ(Work.SetRow[2], 3);
    MoveRow(RowNo(4), RowNo(2));
    EXPECT_EQ(Files(4), (Names{"00001.RA1", "00002.RA1", "00003.RA1", "00004.RA1"}));
    EXPECT_EQ(Work.OffsetLink[1], 2);
    EXPECT_EQ(Work.SetRow[1], 2);
}

TEST_F(Rows, AnInsertedRowIsEmptyAndATakenOneClosesTheGap) {
    for (long row = 1; row <= 3; ++row)
        Adopt(row, "0000" + std::to_string(row) + ".RA1");
    Work.OffsetLink[1] = 2;
    ASSERT_TRUE(InsertRow(RowNo(2)));
    EXPECT_EQ(Files(4), (Names{"00001.RA1", "", "00002.RA1", "00003.RA1"}));
    EXPECT_EQ(Work.HighestSet, 4);
    EXPECT_EQ(Work.OffsetLink[1], 3);
    EXPECT_EQ(Work.ScanPoints[2], 0);
    EXPECT_EQ(Work.BaselineFile[2], NoBaseline);
    RemoveRow(RowNo(3));
    EXPECT_EQ(Files(4), (Names{"00001.RA1", "", "00003.RA1", ""}));
    EXPECT_EQ(Work.OffsetLink[1], 0); // its row is gone
    EXPECT_EQ(Work.IncludeSet[18], 0);
}

TEST_F(Rows, AFullTableHasNoRoom) {
    for (long row = 1; row <= 18; ++row)
        Adopt(row, "scan" + std::to_string(row) + ".RA1", 600, 610);
    const Workspace before = Work;
    EXPECT_FALSE(InsertRow(RowNo(4)));
    EXPECT_TRUE(Work == before);
}

TEST_F(Rows, ACopyHoldsTheScanAndNoConstraint) {
    Adopt(1, "00001.RA1");
    Work.BaselineFile[1] = "00009.RA1";
    Work.BaselineValue[1].Recreate(3, 0.5F);
    Work.ExtinctionRatio[1][1] = 2.0F;
    Work.ConcConstraintA[1] = 0.7F;
    Work.OffsetLink[1] = 5;
    CopyRow(RowNo(1), RowNo(6));
    EXPECT_EQ(Work.ScanFile[6], "00001.RA1");
    EXPECT_EQ(Work.ScanPoints[6], 141);
    EXPECT_TRUE(Work.ScanRadius[6] == Work.ScanRadius[1] && Work.BaselineValue[6] == Work.BaselineValue[1]);
    EXPECT_EQ(Work.ExtinctionRatio[1][6], 2.0F);
    EXPECT_EQ(Work.IncludeSet[6], 1);
    EXPECT_EQ(Work.SetChanged[6], FlagTrue);
    EXPECT_EQ(Work.ConcConstraintA[6], 0.0F);
    EXPECT_EQ(Work.OffsetLink[6], 0);
    EXPECT_EQ(Work.HighestSet, 6);
}

// --- the same for many
// ---------------------------------------------------------------------------------------

TEST_F(Rows, ChannelAndRangeGoToTheOtherScansOfTheCell) {
    Adopt(1, "00001.RA1");
    Adopt(2, "00002.RA1");
    Adopt(3, "00003.RA2");           // another cell
    Adopt(4, "00004.RA1", 580, 600); // no points there
    Adopt(5, "00005.RA1");
    Adopt(6, "00005.RA1"); // another column of the same scan
    SetChannel(RowNo(1), Channel::B);
    SetRadialRange(RowNo(1), 6.40F, 6.60F);
    SetChannel(RowNo(5), Channel::A);
    const TableOutcome outcome = ChannelAndRangeForCell(RowNo(1));
    EXPECT_EQ(outcome.Rows, (std::vector<RowNo>{RowNo(2), RowNo(6)}));
    ASSERT_EQ(outcome.Refusals.size(), 1U);
    EXPECT_EQ(outcome.Refusals[0], "Set 4 (00004.RA1): the scan has no points there.");
    EXPECT_EQ(Channels(6), "BB--AB");
    for (const long row : {2L, 6L}) {
        EXPECT_EQ(Work.FitRange[0][row], Work.FitRange[0][1]);
        EXPECT_EQ(Work.FitRange[1][row], Work.FitRange[1][1]);
    }
}

TEST_F(Rows, AllChannelsOfAllScansFillWhatIsMissing) {
    Adopt(1, "00001.RA1");
    Adopt(2, "00002.RA1");
    SetChannel(RowNo(2), Channel::B);
    SetRadialRange(RowNo(2), 6.40F, 6.60F);
    Adopt(3, "00003.RA1", 640, 720); // reaches B and C
    const TableOutcome outcome = AllChannelsOfAllScans(RowNo(1));
    EXPECT_EQ(Files(9), (Names{"00001.RA1", "00001.RA1", "00001.RA1", "00002.RA1", "00002.RA1", "00002.RA1",
                               "00003.RA1", "00003.RA1", ""}));
    EXPECT_EQ(Channels(8), "ABCABCBC");
    EXPECT_FLOAT_EQ(Work.ScanRadius[5][Work.FitRange[0][5]], 6.40F); // stays as it was chosen
    EXPECT_FLOAT_EQ(Work.ScanRadius[8][Work.FitRange[1][8]], 7.15F);
    EXPECT_EQ(outcome.Rows.size(), 7U);
    EXPECT_EQ(outcome.Refusals, (Names{"Set 7 (00003.RA1): the scan has no points in channel A."}));
}

TEST_F(Rows, ChannelsThatFindNoRoomChangeNothing) {
    for (long row = 1; row <= 7; ++row)
        Adopt(row, "scan" + std::to_string(row) + ".RA1");
    const Workspace before = Work;
    const TableOutcome outcome = AllChannelsOfAllScans(RowNo(1));
    EXPECT_EQ(outcome.Refusals,
              (Names{"A line for each channel of all scans takes 21 lines, and the table has 18."}));
    EXPECT_TRUE(Work == before);
}

} // namespace
} // namespace Quillon
