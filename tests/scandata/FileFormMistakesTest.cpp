// The table of data sets where a user slips, or a file is bad: nothing is lost without a question, what has
// happened is said, and it can be taken back.
#include "ScanFixture.h"
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormChannels.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormMenu.h"
#include "scandata/forms/FileFormScans.h"
#include "scandata/forms/InfoBox.h"
#include "scandata/forms/TableUndo.h"
#include "tests/support/RecordingSurface.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Quillon {
namespace {

// A table whose scans run from 5.80 to 7.20 cm, 0.01 cm apart, with a straight signal.
struct Mistakes : ScanTest {
    Mistakes() {
        const float radii[] = {5.85F, 0, 6.35F, 0, 6.85F, 0, 0, 0, 6.15F, 0, 6.65F, 0, 7.15F, 0, 0, 0};
        for (long i = 0; i < 16; ++i)
            Work.ChannelRadii[i] = radii[i];
        Work.RotorExpansion = 0.0F;
        SetScreenSurface(screen.Surface());
        StartFileForm();
        LoadFileForm();
    }
    ~Mistakes() override { RemoveScreenSurface(); }
    RecordingSurface screen;

    static std::string Text(int first = 580, int last = 720, const std::string& header = GoodHeader) {
        std::vector<std::string> points;
        for (int i = first; i <= last; ++i) {
            char text[32];
            std::snprintf(text, sizeof text, "%.2f %.3f", 0.01 * i, 0.001 * i);
            points.emplace_back(text);
        }
        return ScanText(points, header);
    }
    std::string Scan(const std::string& name, int first = 580, int last = 720) {
        return script.MakeFile(name, Text(first, last));
    }
    std::vector<std::string> Scans(int count) {
        std::vector<std::string> paths;
        for (int i = 1; i <= count; ++i)
            paths.push_back(Scan("scan" + std::to_string(i) + ".RA1"));
        return paths;
    }
    // The table opens with what has been accepted.
    void Reopen() {
        LoadFileForm();
        FileForm.State.Shown = true;
    }
    void AcceptRangeGraph() {
        script.ExpectModal(ChartsName, [] { ChartKey(13, 0); });
    }
    void AskClear(BoxAnswer answer) {
        script.ExpectMessage({"Do you want to clear out all loaded scan data?", "Quillon", BoxIcon::Warning,
                              BoxButtons::YesNo, BoxAnswer::No},
                             answer);
    }
    void AskInsert(const std::string& held, BoxAnswer answer) {
        script.ExpectMessage({held + " holds a scan.\n\nDo you want to insert a line for the next channel?",
                              "Quillon",
                              BoxIcon::Question,
                              BoxButtons::YesNoCancel,
                              BoxAnswer::Yes,
                              {},
                              "&Insert a line",
                              "&Write over it"},
                             answer);
    }
};

// --- an emptied table
// ----------------------------------------------------------------------------------------

TEST_F(Mistakes, ClearFilesAsksFirst) {
    FileFormReadFiles(Scans(3));
    AskClear(BoxAnswer::No);
    FileFormClearFiles();
    EXPECT_EQ(Work.ScanFile[3], "scan3.RA1");
    AskClear(BoxAnswer::Yes);
    FileFormClearFiles();
    EXPECT_EQ(Work.ScanFile[1], "");
    FileFormClearFiles(); // nothing is lost any more
}

TEST_F(Mistakes, AnEmptiedTableGivesBackWhatItHeldWhenItWasOpened) {
    FileFormReadFiles(Scans(2));
    for (auto* const wayOut : {FileFormCloseBox, FileFormEscape}) {
        Reopen();
        const Workspace opened = Work;
        FileFormReadFiles({Scan("other.RA1")});
        AskClear(BoxAnswer::Yes);
        FileFormClearFiles();
        wayOut();
        EXPECT_FALSE(FileForm.State.Shown);
        EXPECT_EQ(FileForm.Answer, DialogAnswer::Cancel);
        EXPECT_EQ(Work.ScanFile, opened.ScanFile);
        EXPECT_TRUE(Work.ScanValue == opened.ScanValue);
        EXPECT_EQ(Work.DataChosen, opened.DataChosen);
    }
}

TEST_F(Mistakes, ATableThatNeverHeldAScanIsClosedByOkAsBefore) {
    ExpectTold(" You must load at least one data set");
    FileFormCloseBox();
    EXPECT_TRUE(FileForm.State.Shown);
    FileFormEscape();
    EXPECT_FALSE(FileForm.State.Shown);
}

// --- the next channel
// ----------------------------------------------------------------------------------------

TEST_F(Mistakes, LoadNextChannelMakesRoomBeforeALoadedLine) {
    FileFormReadFiles(Scans(2));
    Work.CurrentRow = 0;
    AcceptRangeGraph();
    FileFormKey(0, 'a');
    AskInsert("Set 2 (scan2.RA1)", BoxAnswer::Yes);
    AcceptRangeGraph();
    FileFormCopyFile();
    EXPECT_EQ(FileForm.NameBox[1].Text, "scan1.RA1");
    EXPECT_EQ(FileForm.ChannelBox[1].Text, "B");
    EXPECT_EQ(FileForm.NameBox[2].Text, "scan2.RA1");
    EXPECT_EQ(Work.ScanFile[3], "scan2.RA1");
    EXPECT_EQ(Work.CurrentRow, 1);
    EXPECT_TRUE(FileForm.NameBox[3].Visible);
}

TEST_F(Mistakes, LoadNextChannelWritesOverALoadedLineOnlyWhenThatIsWanted) {
    FileFormReadFiles(Scans(2));
    Work.CurrentRow = 0;
    const Workspace before = Work;
    AskInsert("Set 2 (scan2.RA1)", BoxAnswer::Cancel);
    FileFormCopyFile();
    EXPECT_TRUE(Work == before);
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.CopyFile);
    AskInsert("Set 2 (scan2.RA1)", BoxAnswer::No);
    FileFormCopyFile();
    EXPECT_EQ(Work.ScanFile[2], "scan1.RA1");
    EXPECT_EQ(Work.ScanFile[3], "");
}

TEST_F(Mistakes, LoadNextChannelSaysThatTheTableIsFull) {
    const std::string full = "All data sets hold a scan: there is no line left for the next channel.";
    FileFormReadFiles(Scans(18));
    Work.CurrentRow = 8; // set 18
    ExpectTold(full);
    FileFormCopyFile();
    EXPECT_EQ(script.Beeps, 1);
    Work.CurrentRow = 2; // set 12
    AskInsert("Set 13 (scan13.RA1)", BoxAnswer::Yes);
    ExpectTold(full);
    FileFormCopyFile();
    EXPECT_EQ(Work.ScanFile[13], "scan13.RA1");
}

// --- what was changed, and back
// --------------------------------------------------------------------------------

TEST_F(Mistakes, AKeyThatChangesTheTableIsToldAndTakenBack) {
    FileFormReadFiles(Scans(1));
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: scan1.RA1");
    Reopen();
    EXPECT_EQ(FileForm.Changed.Text, "");
    EXPECT_FALSE(FileForm.UndoButton.Enabled);
    const Workspace before = Work;
    FileFormKey(0, 'p');
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: path 3 mm");
    EXPECT_TRUE(FileForm.UndoButton.Enabled);
    EXPECT_FALSE(FileForm.CancelButton.Enabled);
    FileFormUndo();
    EXPECT_TRUE(Work == before);
    EXPECT_EQ(FileForm.CellPath[0].Text, "12");
    EXPECT_EQ(FileForm.Changed.Text, "Taken back: Set 1: path 3 mm");
    EXPECT_TRUE(FileForm.CancelButton.Enabled); // nothing has changed after all
    EXPECT_EQ(FileForm.FormChanged, 0);
    EXPECT_FALSE(FileForm.UndoButton.Enabled);
    FileFormUndo();
    EXPECT_EQ(script.Beeps, 1);
}

TEST_F(Mistakes, EachKindOfChangeHasItsWords) {
    FileFormReadFiles(Scans(1));
    AcceptRangeGraph();
    FileFormKey(0, 'b');
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: channel B, 6.3600 to 6.6500 cm");
    FileFormKey(0, '2');
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: centerpiece of 2 channels");
    FileForm.Check1[0].Value = 0;
    FileFormCheckClick(0);
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: left out of the fit");
    FileFormUndo();
    EXPECT_EQ(FileForm.Check1[0].Value, 1);
    script.ExpectFile("Quillon - Read Data File for Blank", Scan("blank.RA1"));
    FileFormSubtractBlankButton();
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: baseline blank.RA1");
    FileFormUndo();
    EXPECT_EQ(FileForm.BlankFile[0].Text, NoBaseline);
    EXPECT_FALSE(FileForm.ShiftBase[0].Visible);
    FileFormReadFiles({Scan("a.RA1"), Scan("b.RA1")});
    EXPECT_EQ(FileForm.Changed.Text, "Sets 1, 2 changed");
    FileFormUndo();
    EXPECT_EQ(Work.ScanFile[1], "scan1.RA1");
    EXPECT_EQ(FileForm.NameBox[1].Text, "");
}

TEST_F(Mistakes, ClearedFilesAndACopiedLineComeBack) {
    FileFormReadFiles(Scans(2));
    AskClear(BoxAnswer::Yes);
    FileFormClearFiles();
    EXPECT_EQ(FileForm.Changed.Text, "All scans cleared");
    FileFormUndo();
    EXPECT_EQ(FileForm.NameBox[1].Text, "scan2.RA1");
    EXPECT_EQ(FileForm.Check1[1].Value, 1);
    Work.CurrentRow = 1;
    FileFormCopyFile();
    EXPECT_EQ(Work.ScanFile[3], "scan2.RA1");
    FileFormUndo();
    EXPECT_EQ(Work.ScanFile[3], "");
    EXPECT_EQ(Work.CurrentRow, 1);
}

// --- channels
// --------------------------------------------------------------------------------------------------

TEST_F(Mistakes, AChannelThatTheScanDoesNotReachIsToldAndTheRangeStays) {
    FileFormReadFiles({Scan("short.RA1", 640, 670)});
    ExpectTold("Set 1 (short.RA1): the scan has no points in channel A, 5.85 to 6.15 cm.\n\nThe channel and "
               "the range "
               "stay as they are.");
    FileFormKey(0, 'a');
    EXPECT_EQ(Work.DataChannel[1], 0);
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "");
    EXPECT_EQ(FileForm.PointsBox[0].Text, "31");
    EXPECT_EQ(FileForm.State.FocusOn, &FileForm.Check1[0]);
}

TEST_F(Mistakes, AClickGoesOnToTheNextChannelThatTheScanReaches) {
    FileFormReadFiles({Scan("short.RA1", 640, 670)});
    ExpectTold(
        "Set 1 (short.RA1): the scan has no points in channel A, 5.85 to 6.15 cm.\n\nChannel B is taken.");
    AcceptRangeGraph();
    FileFormChannelClick(0);
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "B");
    EXPECT_EQ(FileForm.PointsBox[0].Text, "25"); // 6.41 to 6.65
    ExpectTold("Set 1 (short.RA1): the scan has no points in channel C, 6.85 to 7.15 cm.\n\nNo channel is "
               "taken: the "
               "range is the whole scan.");
    FileFormChannelClick(0);
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "");
    EXPECT_EQ(FileForm.PointsBox[0].Text, "31");
}

TEST_F(Mistakes, ACopyWithoutANextChannelStaysAnExactOne) {
    FileFormReadFiles({Scan("short.RA1", 640, 670)});
    AcceptRangeGraph();
    FileFormKey(0, 'b');
    ExpectTold("Set 2 (short.RA1): the scan has no points in channel C, 6.85 to 7.15 cm.\n\nThe channel and "
               "the range "
               "stay as they are.");
    FileFormCopyFile();
    EXPECT_EQ(FileForm.ChannelBox[1].Text, "B");
    EXPECT_EQ(Work.FitRange[1][2], Work.FitRange[1][1]);
}

// --- files
// -----------------------------------------------------------------------------------------------------

TEST_F(Mistakes, OfSeveralFilesTheBadOnesAreToldInOneBoxAtTheEnd) {
    const std::string bad = script.MakeFile("bad.RA1", ScanText({"6,00 0,1"}));
    const std::string missing = script.Directory() + "/none.RA1";
    ExpectTold(FileReadError +
               "\n\nbad.RA1: line 3, '6,00 0,1': a decimal comma; numbers in a scan have a decimal "
               "point\nnone.RA1: File not found");
    FileFormReadFiles({bad, Scan("a.RA1"), missing, Scan("b.RA1")});
    EXPECT_EQ(FileForm.NameBox[0].Text, "a.RA1"); // a bad file leaves its line to the next
    EXPECT_EQ(FileForm.NameBox[1].Text, "b.RA1");
    EXPECT_EQ(FileForm.NameBox[2].Text, "");
    FileFormUndo();
    EXPECT_EQ(Work.ScanFile[1], "");
}

TEST_F(Mistakes, AWavelengthScanIsNone) {
    ExpectReadFailure("line 3, '190.0 0.5': 190 is no radius in cm; this is a wavelength scan", "w.RA1");
    FileFormReadFiles({script.MakeFile("w.RA1", ScanText({"190.0 0.5", "191.0 0.4"}))});
    EXPECT_EQ(Work.ScanFile[1], "");
    EXPECT_EQ(Work.ScanPoints[1], 0);
}

TEST_F(Mistakes, ReadingsThatAreNoNumbersWereZerosInSilence) {
    Host.Sha256 = [](std::string_view bytes) { return "file of " + std::to_string(bytes.size()); };
    ExpectTold(
        "00001.RA1: line 4, '6.1 nan': a reading that is no number counts as 0, and so in 1 more line");
    FileFormReadFiles({script.MakeFile(
        "00001.RA1", ScanText({"6.0 0.1", "6.1 nan", "6.2 0.3", "6.3 -inf", "6.4 inf -1", "6.5 0.4"}))});
    EXPECT_EQ(Work.ScanPoints[1], 5) << "the excluded one is none";
    EXPECT_EQ(Work.ScanValue[1][2], 0.0F);
    LoadInfoBox(RowNo(1));
    EXPECT_NE(InfoBox.Line[3].Text.find("\nOf its readings: line 4, '6.1 nan': a reading that is no"),
              std::string::npos)
        << InfoBox.Line[3].Text;
    script.ExpectFile("Quillon - Read Data File for Blank",
                      script.MakeFile("blank.RA1", ScanText({"6.0 0.1", "6.5 inf", "6.6 0.1"})));
    ExpectTold("blank.RA1: line 4, '6.5 inf': a reading that is no number counts as 0");
    FileFormBlankClick(0);
    LoadInfoBox(RowNo(1));
    EXPECT_NE(InfoBox.Line[3].Text.find("\nOf its baseline: line 4, '6.5 inf'"), std::string::npos);
    script.ExpectFile("Quillon - Read Data File for Blank", "");
    FileFormBlankClick(0);
    LoadInfoBox(RowNo(1));
    EXPECT_EQ(InfoBox.Line[3].Text.find("Of its baseline"), std::string::npos);
}

TEST_F(Mistakes, LinesBehindTheEndOfTheListAreToldOf) {
    ExpectTold("00001.RA1: line 5, 'end of part 1': a radius of 0 ends the list of points, and 2 lines "
               "behind it are "
               "not read");
    FileFormReadFiles({script.MakeFile(
        "00001.RA1", ScanText({"6.0 0.1", "6.1 0.2", "end of part 1", "6.2 0.3", "", "6.3 0.4"}))});
    EXPECT_EQ(Work.ScanPoints[1], 2);
    FileFormReadFiles({script.MakeFile("00002.RA1", ScanText({"6.0 0.1", "6.1 0.2", "0 0", "", " "}))});
}

// --- ranges and optics at OK
// -------------------------------------------------------------------------------------

TEST_F(Mistakes, TemperaturesThatChangeAMassWereNotToldOnOk) {
    FileFormReadFiles(Scans(2));
    FileForm.State.Shown = true;
    Work.ScanTemperature[1] = 20.0F;
    Work.ScanTemperature[2] = 25.0F;
    script.AnswerAllMessages(BoxAnswer::Yes); // the ranges
    FileFormOkButton();
    ASSERT_EQ(script.Asked.size(), 2U);
    EXPECT_EQ(
        script.Asked[1],
        "message: Set 2 (scan2.RA1): the temperature is 25 degrees and that of the first set 20: by "
        "their ratio in degrees Celsius sigma is taken 20.0% lower, by absolute temperatures it is 1.68% "
        "lower, so that a mass may come out wrong by 18.64%.\n\nPreferences > Scale Sigma by Absolute "
        "Temperature takes absolute temperatures.");
    EXPECT_EQ(Work.DataChosen, FlagTrue);
    FileForm.State.Shown = true; // unchanged, it has been told
    FileFormOkButton();
    EXPECT_EQ(script.Asked.size(), 2U);
}

TEST_F(Mistakes, ARangeThatWasNeverChosenIsAskedAboutOnce) {
    const std::string question = "Set 1 (scan1.RA1): no fitting range is chosen, so that the whole scan is "
                                 "fitted, meniscus and bottom too "
                                 "where it holds them.\n\nDo you want to fit these ranges all the same?";
    FileFormReadFiles(Scans(1));
    FileForm.State.Shown = true;
    const auto ask = [&](BoxAnswer answer) {
        script.ExpectMessage({question, "Quillon", BoxIcon::Warning, BoxButtons::YesNo, BoxAnswer::Yes},
                             answer);
    };
    ask(BoxAnswer::No);
    FileFormOkButton();
    EXPECT_TRUE(FileForm.State.Shown);
    EXPECT_EQ(Work.DataChosen, FlagFalse);
    ask(BoxAnswer::Yes);
    FileFormOkButton();
    EXPECT_EQ(Work.DataChosen, FlagTrue);
    Reopen();
    FileFormOkButton(); // unchanged: it has been answered
    EXPECT_FALSE(FileForm.State.Shown);
}

// Interference scans left the desktop in absorbance units: a zero offset of six fringes lay outside its
// bounds.
TEST_F(Mistakes, TheFirstInterferenceScanTakesTheUnitsAlongAndTheFirstAbsorbanceScanBack) {
    script.AnswerAllMessages(BoxAnswer::Yes);
    Work.ConcUnits = ConcUnit::Weight;
    FileFormReadFiles(
        {script.MakeFile("00001.IP1", Text(580, 720, "P 1 20.0 10000 0084667 9.2280E10 675 32"))});
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: 00001.IP1; interference: concentrations in fringes");
    FileFormOkButton();
    EXPECT_EQ(Work.ConcUnits, ConcUnit::FringeWeight);
    Work.ConcUnits = ConcUnit::Fringes;
    Reopen();
    Work.ConcUnits = ConcUnit::Absorbance; // chosen on purpose in the units form
    FileFormPathClick(0);
    FileFormOkButton();
    EXPECT_EQ(Work.ConcUnits, ConcUnit::Absorbance);
    Work.ConcUnits = ConcUnit::Fringes;
    Reopen();
    FileFormReadFiles(Scans(1));
    FileFormOkButton();
    EXPECT_EQ(Work.ConcUnits, ConcUnit::Absorbance);
    EXPECT_EQ(Work.Bounds[1][SlotOffset(SetNo(1))], 4.0F);
    Reopen();
    FileFormReadFiles(
        {script.MakeFile("00001.IP1", Text(580, 720, "P 1 20.0 10000 0084667 9.2280E10 675 32"))});
    FileFormOkButton();
    EXPECT_EQ(Work.Bounds[1][SlotOffset(SetNo(1))], 20.0F);
}

// --- the menu of a line
// ------------------------------------------------------------------------------------------

struct LineMenu : Mistakes {
    static const LineMenuItem* Find(const std::vector<LineMenuItem>& menu, const std::string& caption) {
        const auto found = std::find_if(menu.begin(), menu.end(),
                                        [&](const LineMenuItem& item) { return item.Item.Text == caption; });
        return found == menu.end() ? nullptr : &*found;
    }
    static void Run(int line, const std::string& caption) {
        const std::vector<LineMenuItem> menu = FileFormLineMenu(line);
        const LineMenuItem* item = Find(menu, caption);
        ASSERT_TRUE(item) << caption;
        item->Command();
    }
};

TEST_F(LineMenu, OffersWhatALineCanDo) {
    EXPECT_EQ(FileFormLineMenu(0).size(), 1U); // a free line reads a scan
    EXPECT_TRUE(FileFormLineMenu(1).empty());  // a locked one nothing
    FileFormReadFiles(Scans(1));
    const std::vector<LineMenuItem> menu = FileFormLineMenu(0);
    ASSERT_TRUE(Find(menu, "&None") && Find(menu, "&6 channels") && Find(menu, "&3 mm"));
    EXPECT_TRUE(Find(menu, "&None")->Item.Checked && Find(menu, "&6 channels")->Item.Checked);
    EXPECT_FALSE(Find(menu, "&D"));
    EXPECT_EQ(Find(menu, "&B")->Submenu, "&Channel");
    EXPECT_TRUE(Find(menu, "Channels &A to C of All Scans")->Item.Enabled);
    Run(0, "&8 channels");
    EXPECT_TRUE(Find(FileFormLineMenu(0), "&D"));
    Run(0, "&2 channels");
    EXPECT_FALSE(Find(FileFormLineMenu(0), "&None"));
    EXPECT_FALSE(Find(FileFormLineMenu(0), "Channels &A to C of All Scans")->Item.Enabled);
}

TEST_F(LineMenu, ChoicesChangeTheLineAndAreTakenBack) {
    FileFormReadFiles(Scans(1));
    Run(0, "&3 mm");
    EXPECT_EQ(FileForm.CellPath[0].Text, "3");
    EXPECT_EQ(FileForm.Changed.Text, "Set 1: path 3 mm");
    AcceptRangeGraph();
    Run(0, "&B");
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "B");
    Run(0, "&None");
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "");
    EXPECT_EQ(FileForm.PointsBox[0].Text, "141");
    FileFormUndo();
    EXPECT_EQ(FileForm.ChannelBox[0].Text, "B");
}

TEST_F(LineMenu, ARemovedLineLetsTheOthersMoveUp) {
    FileFormReadFiles(Scans(3));
    Run(0, "Re&move This Line");
    EXPECT_EQ(FileForm.NameBox[0].Text, "scan2.RA1");
    EXPECT_EQ(FileForm.NameBox[2].Text, "");
    EXPECT_EQ(FileForm.Changed.Text, "Set 1 (scan1.RA1) removed");
    EXPECT_FALSE(FileForm.NameBox[3].Visible);
    FileFormUndo();
    EXPECT_EQ(FileForm.NameBox[0].Text, "scan1.RA1");
}

TEST_F(LineMenu, OneCommandSetsAllScansOfACell) {
    FileFormReadFiles({Scan("00001.RA1"), Scan("00002.RA1"), Scan("00003.RA2")});
    AcceptRangeGraph();
    FileFormKey(0, 'c');
    Run(0, "&Same Channel and Range for All Scans of This Cell");
    EXPECT_EQ(FileForm.ChannelBox[1].Text, "C");
    EXPECT_EQ(FileForm.ChannelBox[2].Text, "");
    EXPECT_EQ(FileForm.Changed.Text, "Channel and range of set 1 given to 2");
}

TEST_F(LineMenu, OneCommandTakesAllChannelsApart) {
    FileFormReadFiles({Scan("00001.RA1"), Scan("00002.RA1")});
    Run(0, "Channels &A to C of All Scans");
    EXPECT_EQ(FileForm.ChannelBox[5].Text, "C");
    EXPECT_EQ(FileForm.NameBox[5].Text, "00002.RA1");
    EXPECT_EQ(FileForm.Changed.Text, "Channels of all scans: sets 1, 2, 3, 4, 5, 6");
    FileFormUndo();
    EXPECT_EQ(Work.ScanFile[3], "");
}

TEST_F(LineMenu, ARefusedCommandLeavesCancelOpen) {
    FileFormReadFiles(Scans(7));
    Reopen();
    ExpectTold("A line for each channel of all scans takes 21 lines, and the table has 18.");
    Run(0, "Channels &A to C of All Scans");
    EXPECT_TRUE(FileForm.CancelButton.Enabled);
    EXPECT_EQ(FileForm.FormChanged, 0);
}

// --- what is no equilibrium --------------------------------------------------------------------------------

// A boundary that has moved outward by shift since the first scan, at a time of its own.
std::string MovingBoundary(int number, double shift) {
    std::vector<std::string> points;
    for (int i = 580; i <= 720; ++i) {
        char text[48];
        std::snprintf(text, sizeof text, "%.2f %.6f", 0.01 * i,
                      1.0 / (1.0 + std::exp(-(0.01 * i - 6.2 - shift) / 0.1)));
        points.emplace_back(text);
    }
    return ScanText(points, "R 1 20.0 50000 " + std::to_string(1000 * number) + " 9.2280E10 280 1");
}

TEST_F(Mistakes, TenScansThatHaveNotSettledAreNamedAsAVelocityRun) {
    const auto scans = [this](double step) {
        std::vector<std::string> paths;
        for (int i = 1; i <= 10; ++i)
            paths.push_back(script.MakeFile("0000" + std::to_string(i - 1) + ".RA1",
                                            MovingBoundary(i, step * static_cast<double>(i))));
        return paths;
    };
    FileFormReadFiles(scans(0.0)); // the same ten times: nothing moves
    AskClear(BoxAnswer::Yes);
    FileFormClearFiles();
    ExpectTold(
        "10 scans of cell 1 at 50000 rpm have not settled: this is a velocity run, and none of them is at "
        "equilibrium");
    FileFormReadFiles(scans(0.05));
}

TEST_F(Mistakes, AFluorescenceScanIsNamed) {
    ExpectTold("00001.FI1: a scan of fluorescence; its signal is taken as it stands");
    FileFormReadFiles({script.MakeFile("00001.FI1", Text())});
    EXPECT_EQ(Work.ScanFile[1], "00001.FI1");
}

} // namespace
} // namespace Quillon
