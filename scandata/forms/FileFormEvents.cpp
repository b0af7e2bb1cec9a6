// Clicks and keys on the lines of the table, pages, the ways out.
#include "scandata/forms/FileFormEvents.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormChannels.h"
#include "scandata/forms/FileFormScans.h"
#include "scandata/forms/InfoBox.h"
#include "scandata/forms/TableUndo.h"
#include "scandata/range/BaselineShiftGraph.h"
#include "scandata/range/RangeDoubts.h"
#include "scandata/range/RangeGraph.h"
#include "scandata/reader/ExtinctionForm.h"
#include "scandata/reader/SaveScans.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/FitData.h"
#include "scandata/table/LeftOut.h"
#include "scandata/table/OpticsUnits.h"
#include "scandata/table/TableRows.h"
#include "scandata/table/Temperatures.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace Quillon {

namespace {

void Close(DialogAnswer answer) {
    FileForm.Answer = answer;
    Work.CurrentPage = 0;
    FileForm.State.Shown = false;
}

// A click makes its line the current one; the keys go there, too.
void MakeCurrent(int line) {
    Work.CurrentRow = ToInt16(line);
    FileForm.State.FocusOn = &FileForm.Check1[LineAt(line)];
}

std::array<float, 2> RatiosOf(RowNo row) {
    return {Work.ExtinctionRatio[0][row], Work.ExtinctionRatio[1][row]};
}

bool HoldsScan(int line) {
    return !FileForm.NameBox[LineAt(line)].Text.empty();
}

void NoteRange() {
    if (FileForm.FormChanged == 0) FileForm.FormChanged = 2;
    FileForm.CancelButton.Enabled = false;
}

constexpr std::size_t MostDoubts = 8; // sets that a message lists

// At most MostDoubts lines of many.
std::string FirstLines(const std::vector<std::string>& lines) {
    std::string text;
    for (std::size_t i = 0; i < lines.size() && i < MostDoubts; ++i)
        text += lines[i];
    if (lines.size() > MostDoubts)
        text += "The same is true of " + std::to_string(lines.size() - MostDoubts) + " more sets.\n";
    return text;
}

// What speaks against the ranges of the sets in the fit, a line for each.
std::string RangeDoubtsOfAll() {
    std::vector<std::string> doubts;
    for (const RowNo row : RowsInFit()) {
        const std::string doubt = RangeDoubts(row);
        if (!doubt.empty()) doubts.push_back(RowName(row) + ": " + doubt + ".\n");
    }
    return FirstLines(doubts);
}

// An unchanged table has been accepted before.
bool RangesAccepted() {
    if (FileForm.FormChanged == 0) return true;
    const std::string doubts = RangeDoubtsOfAll();
    if (doubts.empty()) return true;
    return AskYesNo(doubts + "\nDo you want to fit these ranges all the same?", Work.ProgramName,
                    BoxAnswer::Yes, BoxIcon::Warning);
}

// Told once the table is accepted: the sets stay as they are, and the remedy lies in the menu.
void TellTemperatureDoubts() {
    if (FileForm.FormChanged == 0) return;
    std::vector<std::string> doubts;
    for (const TemperatureDoubt& doubt : TemperatureDoubts(RowsInFit()))
        doubts.push_back(RowName(doubt.Row) + ": " + doubt.Text + ".\n");
    if (doubts.empty()) return;
    Tell(FirstLines(doubts) +
             "\nPreferences > Scale Sigma by Absolute Temperature takes absolute temperatures.",
         Work.ProgramName, BoxIcon::Warning);
}

} // namespace

void FileFormTimer1() {
    if (!FileForm.Timer1) return;
    FileForm.Timer1 = false;
    if (FileForm.WaitingFill) return FileFormFill(std::exchange(FileForm.WaitingFill, nullptr));
    if (FileForm.Waiting.empty()) return FileFormNewFileButton();
    FileFormOpenScans(std::exchange(FileForm.Waiting, {}));
}

void FileFormCheckFocus(int line) {
    FileForm.Check1[LineAt(line)].ForeColor = Work.EditBackColor;
    Work.CurrentRow = ToInt16(line);
}

void FileFormCheckLostFocus(int line) {
    FileForm.Check1[LineAt(line)].ForeColor = DefaultColor;
}

void FileFormCheckClick(int line) {
    if (!HoldsScan(line)) {
        FileForm.Check1[LineAt(line)].Value = 0;
        return;
    }
    AsOneChange([line] {
        Work.IncludeSet[RowOfLine(line)] = FileForm.Check1[LineAt(line)].Value;
        NoteTableChange();
    });
}

void FileFormKey(int line, int key) {
    const int capital = key >= 'a' && key <= 'z' ? key - 'a' + 'A' : key;
    switch (capital) {
    case '2':
        return FileFormCenterpieceKey(line, Centerpiece::TwoChannel);
    case '6':
        return FileFormCenterpieceKey(line, Centerpiece::SixChannel);
    case '8':
        return FileFormCenterpieceKey(line, Centerpiece::EightChannel);
    case 'A':
    case 'B':
    case 'C':
    case 'D':
        return FileFormChannelKey(line, capital - 'A' + Channel::A);
    case '?':
    case '/':
        if (HoldsScan(line)) FileFormHelpButton(line);
        return;
    case 'P':
        if (FileForm.CellPath[LineAt(line)].Visible) return FileFormPathClick(line);
        return Host.Beep();
    default:
        return;
    }
}

void FileFormArrowKey(int line, FileFormArrow arrow) {
    if (arrow == FileFormArrow::Previous) {
        if (line > 0) FileForm.State.FocusOn = &FileForm.Check1[LineAt(line - 1)];
        return;
    }
    const bool open = line + 1 < FileForm.Lines && FileForm.NameBox[LineAt(line + 1)].Enabled &&
                      FileForm.Check1[LineAt(line + 1)].Enabled;
    if (open)
        FileForm.State.FocusOn = &FileForm.Check1[LineAt(line + 1)];
    else
        FileFormNewFileButton();
}

void FileFormNameClick(int line) {
    Work.CurrentRow = ToInt16(line);
    FileFormNewFileButton();
}

void FileFormRangeClick(int line) {
    MakeCurrent(line);
    FileFormRangeButton();
}

void FileFormBlankClick(int line) {
    MakeCurrent(line);
    FileFormSubtractBlankButton();
}

void FileFormShiftClick(int line) {
    Work.CurrentRow = ToInt16(line);
    AsOneChange([line] {
        const RowNo row = RowOfLine(line);
        if (FileForm.ShiftBase[LineAt(line)].Value)
            AdjustBaselineShift(row);
        else
            Work.BaselineShifted[row] = FlagFalse;
        FileForm.ShiftBase[LineAt(line)].Value = Work.BaselineShifted[row] ? 1 : 0;
        NoteRange();
    });
}

void FileFormPathClick(int line) {
    MakeCurrent(line);
    AsOneChange([line] {
        const bool twelve = FileForm.CellPath[LineAt(line)].Text != "12";
        FileForm.CellPath[LineAt(line)].Text = twelve ? "12" : "3";
        Work.CellPath[RowOfLine(line)] = twelve ? 1.2F : 0.3F;
        NoteTableChange();
    });
}

void FileFormExtinctionButton(int line) {
    AsOneChange([line] {
        const RowNo row = RowOfLine(line);
        const auto before = RatiosOf(row);
        Work.CurrentRow = ToInt16(row.Number - 1);
        ShowExtinctionForm();
        MakeCurrent(line);
        if (RatiosOf(row) != before) NoteTableChange(); // a look at them changes nothing
    });
}

void FileFormSaveButton(int line) {
    Work.CurrentRow = ToInt16(line);
    SaveSubset(RowOfLine(line));
    FileForm.State.FocusOn = &FileForm.Check1[LineAt(line)];
}

void FileFormHelpButton(int line) {
    Work.CurrentRow = ToInt16(line);
    AsOneChange([line] {
        const RowNo row = RowOfLine(line);
        const std::int16_t order = Work.IntensityOrder[row];
        ShowInfoBox(row);
        if (Work.IntensityOrder[row] == order) return;
        NoteTableChange();
        ShowRowValues(row);
    });
    FileForm.State.FocusOn = &FileForm.Check1[LineAt(line)];
}

void FileFormRangeButton() {
    const int line = Work.CurrentRow;
    const RowNo row = RowOfLine(line);
    AsOneChange([line, row] {
        if (Work.ScanFile[row].empty() || !SelectRange(row)) return;
        ShowRange(line, Work.ScanRadius[row][Work.FitRange[0][row]],
                  Work.ScanRadius[row][Work.FitRange[1][row]]);
        NoteRange();
    });
}

void FileFormLogPlot() {
    Work.RangeLogPlot = Flag(FileForm.LogPlot.Value != 0);
}

void FileFormPage2() {
    StoreIncludes();
    const bool none = !HasPages() || (Work.CurrentPage == 0 && !HoldsScan(FileFormLines - 1));
    if (none) return Host.Beep();
    Work.CurrentPage = Work.CurrentPage == 0 ? 1 : 0;
    const bool cancel = FileForm.CancelButton.Enabled;
    FillPage();
    FileForm.CancelButton.Enabled = cancel;
}

void FileFormWriteData() {
    StoreIncludes();
    WriteIncludedSets();
}

void FileFormOkButton() {
    StoreIncludes();
    if (TableIsEmpty()) {
        Host.Beep();
        return Tell(" You must load at least one data set", Work.ProgramName, BoxIcon::Warning);
    }
    if (std::find(Work.IncludeSet.begin(), Work.IncludeSet.end(), 1) == Work.IncludeSet.end()) {
        Host.Beep();
        return Tell(" You must include at least one data set", Work.ProgramName, BoxIcon::Warning);
    }
    RenewCeilings();
    if (!RangesAccepted()) return;
    BuildFitData();
    if (OpticsChangedSinceOpening()) UnitsFollowOptics();
    TellTemperatureDoubts();
    Work.DataChosen = FlagTrue;
    Work.NewData = FileForm.FormChanged;
    FileForm.FormChanged = 0;
    Close(DialogAnswer::Ok);
}

void FileFormCancelButton() {
    if (FileForm.CancelButton.Enabled) Close(DialogAnswer::Cancel);
}

void FileFormCloseBox() {
    if (GiveBackEmptiedTable())
        Close(DialogAnswer::Cancel);
    else
        FileFormOkButton();
}

void FileFormEscape() {
    if (GiveBackEmptiedTable())
        Close(DialogAnswer::Cancel);
    else
        FileFormCancelButton();
}

} // namespace Quillon
