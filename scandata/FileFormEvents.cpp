// Clicks and keys on the lines of the table, pages, the ways out.
#include "scandata/FileFormEvents.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/BaselineShiftGraph.h"
#include "scandata/DataSetTable.h"
#include "scandata/ExtinctionForm.h"
#include "scandata/FileForm.h"
#include "scandata/FileFormScans.h"
#include "scandata/FitData.h"
#include "scandata/InfoBox.h"
#include "scandata/RangeGraph.h"
#include "scandata/SaveScans.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <array>

namespace Quillon {

namespace {

std::size_t At(int line) {
    return static_cast<std::size_t>(line);
}

void ShowRange(int line, float inner, float outer) {
    FileForm.MinRBox[At(line)].Text = FormatNumber(static_cast<double>(inner), "0.0000");
    FileForm.MaxRBox[At(line)].Text = FormatNumber(static_cast<double>(outer), "0.0000");
}

// The centerpiece and channel that a click or key goes by are those of the same line on page 1, on both
// pages; only the set that takes the new channel is that of the page.
// [decision: first-page-channel]
int CodeOf(int line) {
    return Work.CenterpieceType[line + 1];
}

int NextChannel(const std::string& caption, int code) {
    if (caption.empty()) return 1;
    const int channel = caption[0] - 'A' + 1;
    if (channel >= 4 || (channel == 3 && code != 4)) return 0;
    return channel + 1;
}

void StepChannel(int line) {
    ApplyChannel(line, NextChannel(FileForm.ChannelBox[At(line)].Text, CodeOf(line)));
    FileForm.FormChanged = 1;
    if (Work.DataChannel[line + 1] > 0) FileFormRangeButton();
    FileForm.State.FocusOn = &FileForm.CopyFile;
}

void StepChannelFrom(int line, const char* caption) {
    if (!FileForm.ChannelBox[At(line)].Visible) return Host.Beep();
    FileForm.ChannelBox[At(line)].Text = caption;
    FileFormChannelClick(line);
}

void StoreIncludes() {
    for (int line = 0; line < FileFormLines; ++line) {
        const RowNo row = RowOfLine(line);
        Work.IncludeSet[row] = Work.ScanFile[row].empty() ? 0 : FileForm.Check1[At(line)].Value;
    }
}

template <class Array, class Test> bool AnySet(const Array& array, Test&& test) {
    return std::any_of(array.begin(), array.end(), test);
}

void Close(std::int16_t answer) {
    Work.AbortFit = answer;
    Work.CurrentPage = 0;
    FileForm.State.Shown = false;
}

// A click makes its line the current one; the keys go there, too.
void MakeCurrent(int line) {
    Work.CurrentRow = ToInt16(line);
    FileForm.State.FocusOn = &FileForm.Check1[At(line)];
}

std::array<float, 2> RatiosOf(RowNo row) {
    return {Work.ExtinctionRatio[0][row], Work.ExtinctionRatio[1][row]};
}

bool HoldsScan(int line) {
    return !FileForm.NameBox[At(line)].Text.empty();
}

// A centerpiece chosen by key: a channel's range moves with it.
void ChooseCenterpiece(int line, int code) {
    if (!HoldsScan(line)) return;
    ApplyCenterpiece(line, code);
    if (FileForm.FormChanged == 0) FileForm.FormChanged = 2;
    FileForm.CancelButton.Enabled = false;
}

} // namespace

void ApplyCenterpiece(int line, int code) {
    float inner{};
    float outer{};
    const bool ranged = SetCenterpiece(RowOfLine(line), code, inner, outer);
    ShowCenterpiece(line);
    if (!ranged) return;
    FileForm.ChannelBox[At(line)].Text = ChannelText(Work.DataChannel[line + 1]);
    ShowRange(line, inner, outer);
}

void ApplyChannel(int line, int channel) {
    const RowNo row = RowOfLine(line);
    SetChannel(row, channel);
    FileForm.ChannelBox[At(line)].Text = ChannelText(channel);
    if (Work.ScanPoints[row] < 1) return;
    ShowRange(line, Work.ScanRadius[row][Work.FitRange[0][row]], Work.ScanRadius[row][Work.FitRange[1][row]]);
}

void FileFormTimer1() {
    if (!FileForm.Timer1) return;
    FileForm.Timer1 = false;
    FileFormNewFileButton();
}

void FileFormCheckFocus(int line) {
    FileForm.Check1[At(line)].ForeColor = Work.EditBackColor;
    Work.CurrentRow = ToInt16(line);
}

void FileFormCheckLostFocus(int line) {
    FileForm.Check1[At(line)].ForeColor = DefaultColor;
}

void FileFormCheckClick(int line) {
    if (!HoldsScan(line)) {
        FileForm.Check1[At(line)].Value = 0;
        return;
    }
    FileForm.FormChanged = 1;
    FileForm.CancelButton.Enabled = false;
}

void FileFormKey(int line, int key) {
    const int capital = key >= 'a' && key <= 'z' ? key - 'a' + 'A' : key;
    switch (capital) {
    case '2':
        return ChooseCenterpiece(line, 1);
    case '6':
        return ChooseCenterpiece(line, 3);
    case '8':
        return ChooseCenterpiece(line, 4);
    case 'A':
        return StepChannelFrom(line, "");
    case 'B':
        return StepChannelFrom(line, "A");
    case 'C':
        return StepChannelFrom(line, "B");
    case 'D':
        if (CodeOf(line) == 4) return StepChannelFrom(line, "C");
        return Host.Beep();
    case '?':
    case '/':
        if (HoldsScan(line)) FileFormHelpButton(line);
        return;
    case 'P':
        if (FileForm.CellPath[At(line)].Visible) return FileFormPathClick(line);
        return Host.Beep();
    default:
        return;
    }
}

void FileFormArrowKey(int line, FileFormArrow arrow) {
    if (arrow == FileFormArrow::Previous) {
        if (line > 0) FileForm.State.FocusOn = &FileForm.Check1[At(line - 1)];
        return;
    }
    const bool open = line + 1 < FileFormLines && FileForm.NameBox[At(line + 1)].Enabled &&
                      FileForm.Check1[At(line + 1)].Enabled;
    if (open)
        FileForm.State.FocusOn = &FileForm.Check1[At(line + 1)];
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
    const RowNo row = RowOfLine(line);
    if (FileForm.ShiftBase[At(line)].Value)
        AdjustBaselineShift(row);
    else
        Work.BaselineShifted[row] = FlagFalse;
    FileForm.ShiftBase[At(line)].Value = Work.BaselineShifted[row] ? 1 : 0;
    if (FileForm.FormChanged == 0) FileForm.FormChanged = 2;
    FileForm.CancelButton.Enabled = false;
}

void FileFormChannelClick(int line) {
    Work.CurrentRow = ToInt16(line);
    FileForm.CancelButton.Enabled = false;
    StepChannel(line);
}

void FileFormPathClick(int line) {
    MakeCurrent(line);
    const bool twelve = FileForm.CellPath[At(line)].Text != "12";
    FileForm.CellPath[At(line)].Text = twelve ? "12" : "3";
    Work.CellPath[RowOfLine(line)] = twelve ? 1.2F : 0.3F;
    FileForm.FormChanged = 1;
    FileForm.CancelButton.Enabled = false;
}

void FileFormExtinctionButton(int line) {
    const RowNo row = RowOfLine(line);
    const auto before = RatiosOf(row);
    Work.CurrentRow = ToInt16(row.Number - 1);
    ShowExtinctionForm();
    MakeCurrent(line);
    if (RatiosOf(row) == before) return; // a look at them changes nothing
    FileForm.FormChanged = 1;
    FileForm.CancelButton.Enabled = false;
}

void FileFormSaveButton(int line) {
    Work.CurrentRow = ToInt16(line);
    SaveSubset(RowOfLine(line));
    FileForm.State.FocusOn = &FileForm.Check1[At(line)];
}

void FileFormHelpButton(int line) {
    Work.CurrentRow = ToInt16(line);
    ShowInfoBox(RowOfLine(line));
    FileForm.State.FocusOn = &FileForm.Check1[At(line)];
}

void FileFormRangeButton() {
    const int line = Work.CurrentRow;
    const RowNo row = RowOfLine(line);
    if (Work.ScanFile[row].empty() || !SelectRange(row)) return;
    ShowRange(line, Work.ScanRadius[row][Work.FitRange[0][row]], Work.ScanRadius[row][Work.FitRange[1][row]]);
    if (FileForm.FormChanged == 0) FileForm.FormChanged = 2;
    FileForm.CancelButton.Enabled = false;
}

void FileFormLogPlot() {
    Work.RangeLogPlot = Flag(FileForm.LogPlot.Value != 0);
}

void FileFormPage2() {
    StoreIncludes();
    if (Work.CurrentPage == 0 && !HoldsScan(FileFormLines - 1)) return Host.Beep();
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
    if (!AnySet(Work.ScanFile, [](const std::string& file) { return !file.empty(); })) {
        Host.Beep();
        return Tell(" You must load at least one data set", Work.ProgramName, BoxIcon::Warning);
    }
    if (!AnySet(Work.IncludeSet, [](std::int16_t included) { return included == 1; })) {
        Host.Beep();
        return Tell(" You must include at least one data set", Work.ProgramName, BoxIcon::Warning);
    }
    BuildFitData();
    Work.DataChosen = FlagTrue;
    Work.NewData = FileForm.FormChanged;
    FileForm.FormChanged = 0;
    Close(2);
}

void FileFormCancelButton() {
    if (FileForm.CancelButton.Enabled) Close(1);
}

} // namespace Quillon
