// The table of data sets with both pages in use: eighteen sets and no nineteenth.
#include "scandata/forms/FileForm.h"

#include "ScanFixture.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"

namespace Quillon {
namespace {

struct TablePages : ScanTest {
    TablePages() {
        StartFileForm();
        LoadFileForm();
    }
    std::vector<std::string> Scans(int count) {
        std::vector<std::string> paths;
        for (int i = 1; i <= count; ++i)
            paths.push_back(script.MakeFile("scan" + std::to_string(i) + ".RA1", ScanText(ManyPoints(5))));
        return paths;
    }
};

TEST_F(TablePages, NinthScanOpensThePage) {
    FileFormReadFiles(Scans(8));
    EXPECT_FALSE(FileForm.Page2.Visible);
    FileFormPage2();
    EXPECT_EQ(script.Beeps, 1);
    EXPECT_EQ(Work.CurrentPage, 0);
    Work.CurrentRow = 8;
    FileFormReadFiles(Scans(1));
    EXPECT_TRUE(FileForm.Page2.Visible);
    FileFormPage2();
    EXPECT_EQ(FileForm.SetBox[8].Text, "18");
    EXPECT_TRUE(FileForm.NameBox[0].Visible && FileForm.Check1[0].Enabled); // set 10 may take a scan
    EXPECT_FALSE(FileForm.NameBox[1].Visible || FileForm.Check1[1].Enabled);
    EXPECT_EQ(FileForm.BlankFile[0].Text, "(none)");
}

TEST_F(TablePages, ScansGoOnBehindTheEndOfThePageAndStopAtTheEighteenth) {
    script.ExpectMessage("All data sets hold a scan: 1 of the chosen files has not been read.");
    FileFormReadFiles(Scans(19));
    EXPECT_EQ(script.Beeps, 1);
    EXPECT_EQ(Work.HighestSet, 18);
    EXPECT_EQ(Work.ScanFile[9], "scan9.RA1");
    EXPECT_EQ(Work.ScanFile[18], "scan18.RA1");
    EXPECT_EQ(Work.CurrentPage, 1);
    EXPECT_EQ(FileForm.NameBox[8].Text, "scan18.RA1");
    ExpectTold("All data sets hold a scan: there is no line left for the next channel.");
    FileFormCopyFile(); // there is no line behind
    EXPECT_EQ(script.Beeps, 2);
    EXPECT_EQ(FileForm.CopyRunning, FlagFalse);
    FileFormPage2();
    EXPECT_EQ(FileForm.NameBox[8].Text, "scan9.RA1");
    EXPECT_FALSE(FileForm.CancelButton.Enabled); // as before the change of page
}

TEST_F(TablePages, OkTakesTheMarksOfBothPages) {
    FileFormReadFiles(Scans(18));
    FileForm.Check1[7].Value = 0; // set 17
    FileFormCheckClick(7);
    FileFormPage2();
    FileForm.Check1[1].Value = 0; // set 2
    FileFormCheckClick(1);
    script.AnswerAllMessages(BoxAnswer::Yes); // whole scans
    FileFormOkButton();
    EXPECT_EQ(Work.NumSets, 16);
    EXPECT_EQ(Work.SetRow[2], 3);
    EXPECT_EQ(Work.SetRow[16], 18);
    EXPECT_EQ(Work.SetOfRow[17], 0);
    EXPECT_EQ(Work.NumPts, 16 * 5);
    LoadFileForm();
    EXPECT_EQ(FileForm.Check1[1].Value, 0);
    EXPECT_EQ(FileForm.Check1[2].Value, 1);
    EXPECT_TRUE(FileForm.Page2.Visible && FileForm.CancelButton.Enabled);
}

TEST_F(TablePages, ClearFilesOnPageTwoComesBackToPageOne) {
    FileFormReadFiles(Scans(11));
    EXPECT_EQ(Work.CurrentPage, 1);
    script.AnswerAllMessages(BoxAnswer::Yes);
    FileFormClearFiles();
    EXPECT_EQ(Work.CurrentPage, 0);
    EXPECT_EQ(FileForm.SetBox[0].Text, "1");
    EXPECT_EQ(FileForm.NameBox[0].Text, "");
    EXPECT_FALSE(FileForm.Page2.Visible || FileForm.NameBox[1].Visible || FileForm.Check1[1].Enabled);
    EXPECT_EQ(Work.ScanFile[11], "");
    EXPECT_EQ(Work.BaselineFile[11], "(none)");
    EXPECT_EQ(Work.HighestSet, 11);
}

TEST_F(TablePages, AllLinesAtOnceHaveNoPages) {
    ShowAllLines();
    FileFormReadFiles(Scans(12));
    EXPECT_EQ(FileForm.NameBox[11].Text, Work.ScanFile[12]);
    EXPECT_EQ(FileForm.SetBox[17].Text, "18");
    EXPECT_TRUE(FileForm.NameBox[12].Visible) << "the next one is open";
    EXPECT_FALSE(FileForm.NameBox[13].Visible);
    EXPECT_FALSE(FileForm.Page2.Visible);
    EXPECT_EQ(Work.CurrentPage, 0);
    FileFormPage2();
    EXPECT_EQ(Work.CurrentPage, 0);
    EXPECT_EQ(script.Beeps, 1);
    FileForm.Check1[10].Value = 0;
    StoreIncludes();
    EXPECT_EQ(Work.IncludeSet[11], 0);
    EXPECT_EQ(Work.IncludeSet[12], 1);
    ExpectTold("All data sets hold a scan: 1 of the chosen files has not been read.");
    Work.CurrentRow = 12;
    FileFormReadFiles(Scans(7));
    EXPECT_EQ(Work.HighestSet, 18);
}

} // namespace
} // namespace Quillon
