// The table of data sets: what its lines show, refuse and say, without a window.
#include "scandata/forms/FileForm.h"

#include "ScanFixture.h"
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "scandata/forms/FileFormChannels.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"
#include "scandata/forms/InfoBox.h"
#include "scandata/range/BaselineShiftGraph.h"
#include "scandata/reader/ExtinctionForm.h"
#include "scandata/reader/SaveScans.h"
#include "tests/support/RecordingSurface.h"

#include <cstdio>

namespace Quillon {
namespace {

const std::string ReadTitle = "Quillon - Read Data File";
const std::string BlankTitle = "Quillon - Read Data File for Blank";

// 141 points from 5.80 to 7.20 cm, 0.01 cm apart, all of signal 0.5.
std::string CellScan(const std::string& header = GoodHeader) {
    std::vector<std::string> points;
    for (int i = 0; i <= 140; ++i) {
        char text[32];
        std::snprintf(text, sizeof text, "%.2f 0.5", 5.80 + 0.01 * i);
        points.emplace_back(text);
    }
    return ScanText(points, header);
}

// A fresh table on the screen. At 10000 rpm the cell stands 0.001 cm further out than its radii at rest.
struct TableTest : ScanTest {
    TableTest() {
        const float radii[] = {5.85F, 0, 6.35F, 0, 6.85F, 0, 0, 0, 6.15F, 0, 6.65F, 0, 7.15F, 0, 0, 0};
        for (long i = 0; i < 16; ++i)
            Work.ChannelRadii[i] = radii[i];
        Work.DataDirectory = script.Directory();
        SetScreenSurface(screen.Surface());
        StartFileForm();
        LoadFileForm();
    }
    ~TableTest() override { RemoveScreenSurface(); }
    RecordingSurface screen;

    void ReadHere(const std::string& name = "00001.RA1", const std::string& text = CellScan()) {
        script.ExpectFile(ReadTitle, script.MakeFile(name, text));
        FileFormNewFileButton();
    }
    void Warn(const std::string& text) { ExpectTold(text); }
    void Ask(const std::string& text, BoxAnswer answer) {
        script.ExpectMessage({text, "Quillon", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes}, answer);
    }
    void AcceptRangeGraph() {
        script.ExpectModal(ChartsName, [] { ChartKey(13, 0); });
    }
    void FillPageOne() {
        for (int line = 0; line < FileFormLines; ++line) {
            Work.CurrentRow = ToInt16(line);
            ReadHere("0000" + std::to_string(line + 1) + ".RA1");
        }
    }
};

TEST_F(TableTest, OpensWithOneFreeLine) {
    EXPECT_EQ(FileForm.State.Caption, "Data Included in Fit");
    EXPECT_EQ(FileForm.Heads[1].Text, "Include  in Fit?");
    EXPECT_EQ(FileForm.SetBox[8].Text, "9");
    EXPECT_TRUE(FileForm.NameBox[0].Visible && FileForm.Check1[0].Enabled);
    EXPECT_EQ(FileForm.Check1[0].Value, 0);
    EXPECT_FALSE(FileForm.NameBox[1].Visible || FileForm.Check1[1].Enabled || FileForm.SetBox[1].Enabled);
    EXPECT_EQ(FileForm.Check1[1].Value, 2); // grey
    EXPECT_FALSE(FileForm.Page2.Visible || FileForm.CellBox[0].Visible);
    EXPECT_EQ(FileForm.BlankFile[0].Text, "(none)");
    EXPECT_TRUE(FileForm.CancelButton.Enabled);
}

TEST_F(TableTest, AsksForAScanOnceInARun) {
    script.ExpectFile(ReadTitle, "");
    FileFormTimer1();
    FileFormTimer1();
    LoadFileForm();
    FileFormTimer1();
}

TEST_F(TableTest, AcceptedDataDoNotUseUpTheFirstAsking) {
    StartFileForm();
    Work.DataChosen = FlagTrue;
    LoadFileForm();
    EXPECT_FALSE(FileForm.Timer1);
    Work.DataChosen = FlagFalse;
    LoadFileForm();
    EXPECT_TRUE(FileForm.Timer1);
}

TEST_F(TableTest, ReadingAScanFillsTheLine) {
    Work.DataChannel[1] = 2;
    ReadHere();
    EXPECT_EQ(FileForm.NameBox[0].Text, "00001.RA1");
    EXPECT_EQ(FileForm.RPMBox[0].Text, "10000");
    EXPECT_EQ(FileForm.MinRBox[0].Text, "5.8000");
    EXPECT_EQ(FileForm.MaxRBox[0].Text, "7.2000");
    EXPECT_EQ(FileForm.CellBox[0].Text, "6");
    EXPECT_EQ(FileForm.CellPath[0].Text, "12");
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "");
    EXPECT_EQ(FileForm.Check1[0].Value, 1);
    EXPECT_TRUE(FileForm.ChannelBox[0].Visible && FileForm.HelpButton[0].Visible);
    EXPECT_FALSE(FileForm.ShiftBase[0].Visible || FileForm.CancelButton.Enabled);
    EXPECT_TRUE(FileForm.NameBox[1].Visible && FileForm.Check1[1].Enabled);
    EXPECT_EQ(FileForm.Check1[1].Value, 0);
    EXPECT_FALSE(FileForm.NameBox[2].Visible);
    EXPECT_EQ(FileForm.FormChanged, 1);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
    EXPECT_EQ(Work.ScanDirectory[1], script.Directory()); // without a separator behind it
    EXPECT_EQ(Work.DataChannel[1], 0);
    EXPECT_EQ(Work.FitRange[0][1], 1);
    EXPECT_EQ(Work.FitRange[1][1], 141);
}

TEST_F(TableTest, ACancelledFileDialogChangesNothing) {
    const Workspace before = Work;
    script.ExpectFile(ReadTitle, "");
    FileForm.State.FocusOn = nullptr;
    FileFormNewFileButton();
    EXPECT_EQ(Work, before);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
    EXPECT_TRUE(FileForm.CancelButton.Enabled);
}

TEST_F(TableTest, AFailedReadLeavesLineAndScan) {
    ReadHere();
    const Workspace before = Work;
    ExpectReadFailure("line 4, '6.0': a radius without a value", "bad.RA1");
    FileFormReadFiles(
        {script.MakeFile("bad.RA1", "Sample\r\nR 1 20.0 9000 1 1 280 1\r\n5.9 0.1\r\n6.0\r\n")});
    EXPECT_EQ(Work, before);
    EXPECT_EQ(FileForm.NameBox[0].Text, "00001.RA1");
}

TEST_F(TableTest, NextDialogOffersTheLatestFile) {
    std::vector<std::string> names, directories;
    Host.AskFile = [&](const FileRequest& r) {
        names.push_back(r.Name);
        directories.push_back(r.Directory);
        return FileAnswer{};
    };
    FileFormReadFiles({script.MakeFile("run/00007.RA1", CellScan())});
    FileFormNewFileButton(); // the line's own file
    Work.CurrentRow = 1;
    FileFormNewFileButton();
    Work.CurrentRow = 0;
    FileFormSubtractBlankButton();
    EXPECT_EQ(names, (std::vector<std::string>{"00007.RA1", "00007.RA1", "00007.RA1"}));
    EXPECT_EQ(directories[1], script.Directory() + "/run");
}

TEST_F(TableTest, SeveralFilesFillSeveralLines) {
    script.ExpectFiles(ReadTitle,
                       {script.MakeFile("00001.RA1", CellScan()), script.MakeFile("00002.RA1", CellScan())});
    FileFormNewFileButton();
    EXPECT_EQ(FileForm.NameBox[1].Text, "00002.RA1");
    EXPECT_EQ(Work.HighestSet, 2);
}

TEST_F(TableTest, SeveralFilesLeaveLoadedLinesAlone) {
    const auto file = [&](int i) { return script.MakeFile("0000" + std::to_string(i) + ".RA1", CellScan()); };
    FileFormReadFiles({file(1), file(2), file(3)});
    Work.CurrentRow = 0;
    FileFormReadFiles({file(4), file(5)}); // the line that was chosen takes the first, a free one the second
    EXPECT_EQ(FileForm.NameBox[0].Text, "00004.RA1");
    EXPECT_EQ(FileForm.NameBox[1].Text, "00002.RA1");
    EXPECT_EQ(FileForm.NameBox[2].Text, "00003.RA1");
    EXPECT_EQ(FileForm.NameBox[3].Text, "00005.RA1");
    EXPECT_EQ(Work.HighestSet, 4);
}

TEST_F(TableTest, FilesThatFindNoFreeLineAreCounted) {
    const std::string path = script.MakeFile("00001.RA1", CellScan());
    FileFormReadFiles(std::vector<std::string>(17, path));
    EXPECT_EQ(Work.HighestSet, 17);
    Work.CurrentPage = 0;
    FillPage();
    Warn("All data sets hold a scan: 2 of the chosen files have not been read.");
    FileFormReadFiles(std::vector<std::string>(4, path)); // line 1, set 18, and two too many
    EXPECT_EQ(Work.HighestSet, 18);
    EXPECT_EQ(script.Beeps, 1);
}

TEST_F(TableTest, KeysChooseCenterpieceAndChannel) {
    ReadHere();
    AcceptRangeGraph();
    FileFormKey(0, 'b');
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "B");
    EXPECT_EQ(FileForm.MinRBox[0].Text, "6.3700"); // one point inside 6.351
    EXPECT_EQ(FileForm.MaxRBox[0].Text, "6.6500");
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.CopyFile);
    FileFormKey(0, '2');
    EXPECT_EQ(FileForm.CellBox[0].Text, "2");
    EXPECT_FALSE(FileForm.ChannelBox[0].Visible);
    FileFormKey(0, 'A');
    EXPECT_EQ(script.Beeps, 1);
    FileFormKey(0, '6'); // the channel that the set still has
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "B");
    FileFormKey(0, 'D');
    EXPECT_EQ(script.Beeps, 2);
    EXPECT_EQ(Work.DataChannel[1], 2);
}

TEST_F(TableTest, ClicksStepTheChannelRoundASixChannelCell) {
    ReadHere();
    for (const char* letter : {"A", "B", "C"}) {
        AcceptRangeGraph();
        FileFormChannelClick(0);
        EXPECT_EQ(FileForm.ChannelBox[0].Text, letter);
    }
    FileFormChannelClick(0);
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "");
    EXPECT_EQ(FileForm.MinRBox[0].Text, "5.8000");
}

TEST_F(TableTest, AnEmptyLineBeepsAndCannotBeChecked) {
    for (const int key : {'A', 'B', 'C', 'D', 'P'})
        FileFormKey(0, key);
    EXPECT_EQ(script.Beeps, 5);
    FileForm.Check1[0].Value = 1;
    FileFormCheckClick(0);
    EXPECT_EQ(FileForm.Check1[0].Value, 0);
    EXPECT_TRUE(FileForm.CancelButton.Enabled);
}

TEST_F(TableTest, PathTogglesBetweenTwelveAndThreeMillimetres) {
    Work.CellPathlength = 1.0F;
    ReadHere();
    EXPECT_EQ(FileForm.CellPath[0].Text, "10");
    FileFormKey(0, 'p');
    EXPECT_EQ(FileForm.CellPath[0].Text, "12");
    EXPECT_EQ(Work.CellPath[1], 1.2F);
    FileFormPathClick(0);
    EXPECT_EQ(FileForm.CellPath[0].Text, "3");
    EXPECT_EQ(Work.CellPath[1], 0.3F);
}

TEST_F(TableTest, ArrowsMoveOrAskForAScan) {
    ReadHere();
    FileFormArrowKey(0, FileFormArrow::Next);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[1]);
    FileFormArrowKey(1, FileFormArrow::Previous);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
    FileFormCheckFocus(0);
    FileFormCheckLostFocus(0);
    FileFormCheckFocus(1);
    EXPECT_EQ(FileForm.Check1[1].ForeColor, Work.EditBackColor);
    EXPECT_EQ(FileForm.Check1[0].ForeColor, DefaultColor);
    EXPECT_EQ(Work.CurrentRow, 1);
    script.ExpectFile(ReadTitle, "");
    FileFormArrowKey(1, FileFormArrow::Next);
}

TEST_F(TableTest, NextChannelCopiesStepsAndDropsTheBaseline) {
    ReadHere();
    AcceptRangeGraph();
    FileFormKey(0, 'A');
    script.ExpectFile(BlankTitle, script.MakeFile("blank.RA1", CellScan()));
    FileFormSubtractBlankButton();
    EXPECT_TRUE(FileForm.ShiftBase[0].Visible);
    AcceptRangeGraph();
    FileFormCopyFile();
    EXPECT_EQ(Work.CurrentRow, 1);
    EXPECT_EQ(Work.ScanFile[2], "00001.RA1");
    EXPECT_EQ(FileForm.ChannelBox[1].Text, "B");
    EXPECT_EQ(FileForm.MinRBox[1].Text, "6.3700");
    EXPECT_EQ(FileForm.BlankFile[1].Text, "(none)");
    EXPECT_FALSE(FileForm.ShiftBase[1].Visible);
    EXPECT_EQ(Work.BaselineFile[1], "blank.RA1");
    EXPECT_EQ(FileForm.Check1[1].Value, 1);
    EXPECT_EQ(Work.HighestSet, 2);
    EXPECT_EQ(FileForm.CopyRunning, FlagFalse);
}

// The graph gives the table's focus to whatever control waits for it.
TEST_F(TableTest, ASecondNextChannelStartedFromTheFirstLineAgain) {
    ReadHere();
    AcceptRangeGraph();
    FileFormKey(0, 'A');
    for (int line = 1; line <= 2; ++line) {
        script.ExpectModal(ChartsName, [] {
            for (int each = 0; each < FileFormLines; ++each)
                if (FileForm.State.FocusOn == &FileForm.Check1[static_cast<std::size_t>(each)])
                    FileFormCheckFocus(each);
            FileForm.State.FocusOn = nullptr;
            ChartKey(13, 0);
        });
        FileFormCopyFile();
        EXPECT_EQ(Work.CurrentRow, line);
    }
    EXPECT_EQ(FileForm.ChannelBox[2].Text, "C");
}

TEST_F(TableTest, LastChannelIsCopiedWithItsBaseline) {
    ReadHere();
    AcceptRangeGraph();
    FileFormKey(0, 'C');
    script.ExpectFile(BlankTitle, script.MakeFile("blank.RA1", CellScan()));
    FileFormSubtractBlankButton();
    FileFormCopyFile();
    EXPECT_EQ(FileForm.ChannelBox[1].Text, "C");
    EXPECT_EQ(FileForm.BlankFile[1].Text, "blank.RA1");
    EXPECT_TRUE(FileForm.ShiftBase[1].Visible);
}

TEST_F(TableTest, CopyBeepsOnAnEmptyLineAndIgnoresASecondClick) {
    FileFormCopyFile();
    EXPECT_EQ(script.Beeps, 1);
    FileForm.CopyRunning = FlagTrue;
    FileFormCopyFile();
    EXPECT_EQ(script.Beeps, 1);
}

TEST_F(TableTest, NinthLineOpensThePageAndCopiesOntoIt) {
    FileFormPage2();
    EXPECT_EQ(script.Beeps, 1);
    FillPageOne();
    EXPECT_TRUE(FileForm.Page2.Visible);
    EXPECT_EQ(FileForm.Page2.Text, "Page &2");
    FileFormCopyFile(); // from line 9
    EXPECT_EQ(Work.CurrentPage, 1);
    EXPECT_EQ(FileForm.Page2.Text, "Page &1");
    EXPECT_EQ(FileForm.SetBox[0].Text, "10");
    EXPECT_EQ(Work.ScanFile[10], "00009.RA1");
    EXPECT_EQ(FileForm.NameBox[0].Text, "00009.RA1");
    EXPECT_FALSE(FileForm.CancelButton.Enabled);
    FileFormPage2();
    EXPECT_EQ(FileForm.SetBox[0].Text, "1");
}

TEST_F(TableTest, CenterpieceOnPageTwoGoesByTheChannelOfPageOne) {
    FillPageOne();
    Work.DataChannel[1] = 3;
    FileFormCopyFile();
    FileFormKey(0, '6');
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "C");
    EXPECT_EQ(FileForm.MinRBox[0].Text, "6.8700");
    EXPECT_EQ(Work.DataChannel[10], 0);
}

TEST_F(TableTest, ClearFilesEmptiesTheTableAndItsConstraints) {
    ReadHere();
    ReadHere();
    Work.OffsetLink[2] = 1;
    Work.ConcConstraintA[1] = 0.3F;
    Work.ConcToleranceB[4] = 0.5F;
    Work.ConstraintFlags = 3;
    Work.HighestSet = 5;
    script.AnswerAllMessages(BoxAnswer::Yes);
    FileFormClearFiles();
    EXPECT_EQ(Work.ScanFile[1], "");
    EXPECT_EQ(Work.CenterpieceType[1], 0);
    EXPECT_EQ(Work.OffsetLink[2], 0);
    EXPECT_EQ(Work.ConcConstraintA[1], 0.0F);
    EXPECT_EQ(Work.ConcToleranceB[4], 0.1F);
    EXPECT_EQ(Work.ConstraintFlags, 0);
    EXPECT_EQ(Work.HighestSet, 5);
    EXPECT_FALSE(FileForm.CancelButton.Enabled || FileForm.Page2.Visible || FileForm.NameBox[1].Visible);
    EXPECT_EQ(FileForm.Check1[1].Value, 2);
}

TEST_F(TableTest, OkRefusesAnEmptyTableAndOneWithoutChecks) {
    FileForm.State.Shown = true;
    Warn(" You must load at least one data set");
    FileFormOkButton();
    ReadHere();
    FileForm.Check1[0].Value = 0;
    FileFormCheckClick(0);
    Warn(" You must include at least one data set");
    FileFormOkButton();
    EXPECT_TRUE(FileForm.State.Shown);
    EXPECT_EQ(script.Beeps, 2);
    FileForm.Check1[0].Value = 1;
    script.AnswerAllMessages(BoxAnswer::Yes); // the whole scan
    FileFormOkButton();
    EXPECT_FALSE(FileForm.State.Shown);
    EXPECT_EQ(Work.DataChosen, FlagTrue);
    EXPECT_EQ(Work.NewData, 1);
    EXPECT_EQ(FileForm.Answer, DialogAnswer::Ok);
    EXPECT_EQ(Work.NumPts, 141);
}

TEST_F(TableTest, CancelClosesAnUnchangedTableOnly) {
    FileForm.CancelButton.Enabled = false;
    FileFormCancelButton();
    EXPECT_TRUE(FileForm.State.Shown);
    FileForm.CancelButton.Enabled = true;
    FileFormCancelButton();
    EXPECT_FALSE(FileForm.State.Shown);
    EXPECT_EQ(FileForm.Answer, DialogAnswer::Cancel);
}

TEST_F(TableTest, CancelledBaselineDialogTakesTheBaselineOff) {
    ReadHere();
    script.ExpectFile(BlankTitle, script.MakeFile("blank.RA1", CellScan()));
    FileFormBlankClick(0);
    EXPECT_EQ(FileForm.BlankFile[0].Text, "blank.RA1");
    EXPECT_EQ(Work.BaselineDirectoryLast, script.Directory());
    Work.ConcConstraintA[1] = 0.2F;
    Ask("The concentrations for this file previously were constrained.  Do you want these constraints "
        "removed?",
        BoxAnswer::Yes);
    const auto box = Host.AskFile;
    Host.AskFile = [](const FileRequest& r) {
        EXPECT_EQ(r.Name, "blank.RA1");
        return FileAnswer{};
    };
    FileFormBlankClick(0);
    Host.AskFile = box;
    EXPECT_EQ(FileForm.BlankFile[0].Text, "(none)");
    EXPECT_EQ(Work.BaselineFile[1], "(none)");
    EXPECT_FALSE(FileForm.ShiftBase[0].Visible);
    EXPECT_EQ(Work.ConcConstraintA[1], 0.0F);
    script.ExpectFile(BlankTitle, "");
    FileFormBlankClick(0); // none left to take off
}

TEST_F(TableTest, ReplacedScanAsksWhetherItsTiesGo) {
    ReadHere();
    Work.OffsetLink[3] = 1;
    Ask("The baseline for file #3 previously was constrained to match that of this one.  Do you want this "
        "constraint removed?",
        BoxAnswer::Yes);
    FileFormReadFiles({script.MakeFile("a.RA1", CellScan())});
    EXPECT_EQ(Work.OffsetLink[3], 0);
    Work.OffsetLink[1] = 4;
    Ask("The baseline for this file previously was constrained to match that of file #4.  Do you want this "
        "constraint removed?",
        BoxAnswer::No);
    FileFormReadFiles({script.MakeFile("a.RA1", CellScan())});
    EXPECT_EQ(Work.OffsetLink[1], 4);
}

TEST_F(TableTest, InfoBoxShowsTheHeader) {
    ReadHere("00001.RA1", CellScan("R 1 20.5 10000 0000090 9.2280E10 280 32"));
    script.ExpectModal(InfoBoxName, [] {
        EXPECT_EQ(InfoBox.Line[0].Text, "Comment= Sample");
        EXPECT_EQ(InfoBox.Line[1].Text, "RPM= 10000            Temp=20.5");
        EXPECT_EQ(InfoBox.Line[2].Text, "Time= 90s (1.5 min)     omega^2*t= 9.228E10");
        EXPECT_EQ(InfoBox.Line[3].Text, "Wavelength=280      Scans Averaged=32");
        InfoBoxOkButton();
    });
    FileFormKey(0, '?');
    EXPECT_FALSE(InfoBox.State.Shown);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
}

TEST_F(TableTest, AnotherWavelengthAsksForTheRatios) {
    ReadHere();
    Work.CurrentRow = 1;
    script.ExpectModal(ExtinctionFormName, [this] {
        EXPECT_EQ(ExtinctionForm.State.Caption, "Input Relative Extinction Coefficients");
        EXPECT_EQ(ExtinctionForm.Label2.Text, "Relative extinction at 250 nm to that at 280 nm");
        EXPECT_EQ(ExtinctionForm.ExtinctionInput[0].Text, "1.0000");
        ExtinctionForm.ExtinctionInput[0].Text = "-2";
        Warn("You must enter a positive, non-zero value for the extinction ratio");
        ExtinctionLostFocus(0);
        EXPECT_EQ(script.Beeps, 1);
        EXPECT_EQ(ExtinctionForm.State.FocusOn, &ExtinctionForm.ExtinctionInput[0]);
        ExtinctionOkButton(); // told once is enough
        EXPECT_TRUE(ExtinctionForm.State.Shown);
        ExtinctionForm.ExtinctionInput[0].Text = "0.5";
        ExtinctionForm.ExtinctionInput[1].Text = "2";
        EXPECT_EQ(ExtinctionKeyPress(0, 9), 9);
        EXPECT_EQ(ExtinctionForm.State.FocusOn, &ExtinctionForm.ExtinctionInput[1]);
        ExtinctionKeyPress(1, 9);
        EXPECT_FALSE(ExtinctionForm.State.Shown);
    });
    FileFormReadFiles({script.MakeFile("b.RA1", CellScan("R 1 20.0 10000 1 1 250 32"))});
    EXPECT_EQ(Work.ExtinctionRatio[0][2], 0.5F);
    EXPECT_EQ(Work.ExtinctionRatio[1][2], 2.0F);
    EXPECT_EQ(Work.CurrentRow, 1);
}

TEST_F(TableTest, OnlyAChangedRatioIsAChange) {
    ReadHere();
    FileForm.FormChanged = 0;
    FileForm.CancelButton.Enabled = true;
    Work.SetChanged[1] = FlagFalse;
    Work.ExtinctionRatio[0][1] = 0.87654321F; // more digits than the form shows
    script.ExpectModal(ExtinctionFormName, [] {
        ExtinctionGotFocus(0);
        ExtinctionLostFocus(0);
        ExtinctionOkButton();
    });
    FileFormExtinctionButton(0);
    EXPECT_EQ(Work.ExtinctionRatio[0][1], 0.87654321F);
    EXPECT_EQ(Work.SetChanged[1], FlagFalse);
    EXPECT_EQ(FileForm.FormChanged, 0);
    EXPECT_TRUE(FileForm.CancelButton.Enabled);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
    script.ExpectModal(ExtinctionFormName, [] {
        ExtinctionForm.ExtinctionInput[1].Text = "1.5";
        ExtinctionLostFocus(1);
        ExtinctionOkButton();
    });
    FileFormExtinctionButton(0);
    EXPECT_EQ(Work.ExtinctionRatio[1][1], 1.5F);
    EXPECT_EQ(Work.SetChanged[1], FlagTrue);
    EXPECT_EQ(FileForm.FormChanged, 1);
    EXPECT_FALSE(FileForm.CancelButton.Enabled);
}

TEST_F(TableTest, AClickTakesTheKeysToItsLine) {
    ReadHere();
    Work.CurrentRow = 1;
    ReadHere("00002.RA1");
    FileForm.State.FocusOn = nullptr;
    FileFormPathClick(0);
    EXPECT_EQ(Work.CurrentRow, 0);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
    AcceptRangeGraph();
    FileFormRangeClick(1);
    EXPECT_EQ(Work.CurrentRow, 1);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[1]);
    script.ExpectFile(BlankTitle, "");
    FileFormBlankClick(0);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
    FileForm.State.FocusOn = nullptr;
    script.ExpectFile(BlankTitle, "");
    FileFormSubtractBlankButton(); // by its access key
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
}

TEST_F(TableTest, AFailedCopyDoesNotBlockTheNext) {
    ReadHere();
    Work.DataChannel[1] = 5; // no cell has it
    EXPECT_THROW(FileFormCopyFile(), RuntimeError);
    EXPECT_EQ(FileForm.CopyRunning, FlagFalse);
}

TEST_F(TableTest, RangeGraphTakesTheMarkersInOrder) {
    ReadHere();
    FileForm.FormChanged = 0;
    script.ExpectModal(ChartsName, [] {
        EXPECT_EQ(Charts.StatusLine.Text,
                  "Drag the green markers to designate the data region to be fitted; hit ENTER when done");
        PlaceMarkers(7.005F, 6.005F);
        ChartKey(13, 0);
    });
    FileFormRangeClick(0);
    EXPECT_EQ(FileForm.MinRBox[0].Text, "6.0100");
    EXPECT_EQ(FileForm.MaxRBox[0].Text, "7.0000");
    EXPECT_EQ(FileForm.FormChanged, 2);
    script.ExpectModal(ChartsName, [] {
        PlaceMarkers(6.5F, 6.6F);
        ChartKey(27, 0);
    });
    FileFormRangeClick(0);
    EXPECT_EQ(FileForm.MinRBox[0].Text, "6.0100");
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(TableTest, BaselineShiftFollowsTheCursorKeys) {
    ReadHere();
    script.ExpectFile(BlankTitle, script.MakeFile("blank.RA1", CellScan("R 1 20.0 20000 1 1 280 1")));
    FileFormSubtractBlankButton();
    script.ExpectModal(ChartsName, [] {
        EXPECT_FALSE(Charts.EndsOnKey(65, 0));
        EXPECT_FALSE(Charts.EndsOnKey(39, 0));
        EXPECT_FALSE(Charts.EndsOnKey(39, 2));
        EXPECT_FALSE(Charts.EndsOnKey(37, 0));
        EXPECT_TRUE(Charts.EndsOnKey(13, 0));
    });
    FileForm.ShiftBase[0].Value = 1;
    FileFormShiftClick(0);
    // (1e8 - 4e8) 1e-11 = -0.003, then 0.001 + 0.005 - 0.001.
    EXPECT_NEAR(Work.BaselineShift[1], 0.002F, 1e-6F);
    EXPECT_EQ(Work.BaselineShifted[1], FlagTrue);
    FileForm.ShiftBase[0].Value = 0;
    FileFormShiftClick(0);
    EXPECT_EQ(Work.BaselineShifted[1], FlagFalse);
    EXPECT_NEAR(Work.BaselineShift[1], 0.002F, 1e-6F);
}

TEST_F(TableTest, FailingShiftGraphTurnsTheShiftOff) {
    ReadHere();
    Work.BaselineShift[1] = 0.004F;
    Work.BaselineShifted[1] = FlagTrue;
    script.ExpectModal(ChartsName, [] { RaiseError(ErrorText::Overflow); });
    Warn("Error during baseline shift routine, turning off shift.\n\nOverflow");
    AdjustBaselineShift(RowNo(1));
    EXPECT_EQ(Work.BaselineShifted[1], FlagFalse);
    EXPECT_EQ(Work.BaselineShift[1], 0.0F);
}

TEST_F(TableTest, SaveSubsetOffersANameAndWritesTheRange) {
    ReadHere();
    Work.FitRange[0][1] = 2;
    Work.FitRange[1][1] = 4;
    const std::string target = script.Directory() + "/out.RA1";
    script.ExpectFile("Quillon - Write Data File", target);
    FileFormSaveButton(0);
    const std::string text = ReadWholeFile(target);
    EXPECT_EQ(text.substr(0, 8), "Sample\r\n");
    const ScanReadResult again = Read(text, 2, "again.RA1");
    EXPECT_TRUE(again.Ok);
    EXPECT_EQ(Work.ScanPoints[2], 3);
    EXPECT_EQ(Work.ScanRadius[2][1], 5.81F);
}

TEST_F(TableTest, BaselineCommandAsksAgainForASetOutsideTheFit) {
    const std::string prompt = "Write out residual for which data set (of those being fit)? (1 - 3)";
    Work.NumSets = 3;
    script.ExpectInput(prompt, "4");
    script.ExpectInput(prompt, "0");
    script.ExpectInput(prompt, "");
    WriteBaselineDialog(false);
    EXPECT_EQ(script.Beeps, 2);
}

} // namespace
} // namespace Quillon
