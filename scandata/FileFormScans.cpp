// Reading scans and baselines into the table, copying lines, clearing.
#include "scandata/FileFormScans.h"

#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/AdoptScan.h"
#include "scandata/DataSetTable.h"
#include "scandata/FileForm.h"
#include "scandata/FileFormEvents.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

std::string LastTitle; // of the latest file chosen: the next dialog offers it

std::size_t Here() {
    return static_cast<std::size_t>(Work.CurrentRow);
}
Control& FocusLine() {
    return FileForm.Check1[Here()];
}

FileRequest ScanRequest(const char* what) {
    FileRequest request;
    request.Title = Work.ProgramName + what;
    request.Filter = ScanFilter;
    request.Directory = Work.DataDirectory;
    return request;
}

void ShowRadii(float inner, float outer) {
    FileForm.MinRBox[Here()].Text = FormatNumber(static_cast<double>(inner), "0.0000");
    FileForm.MaxRBox[Here()].Text = FormatNumber(static_cast<double>(outer), "0.0000");
}

void OpenNextLine(int line) {
    if (line >= FileFormLines - 1)
        FileForm.Page2.Visible = true;
    else
        UnlockRow(line + 1);
}

void NoteChange() {
    FileForm.CancelButton.Enabled = false;
    FileForm.FormChanged = 1;
}

// The row of the current line has taken a scan: the line shows it, and the next dialog starts where it came
// from.
void ShowAdopted(const ScanReadResult& read) {
    const int line = Work.CurrentRow;
    const RowNo row = RowOfLine(line);
    const std::size_t i = Here();
    Work.DataDirectory = Work.ScanDirectory[row];
    Work.NameConvention = 1;
    LastTitle = Work.ScanFile[row];
    FileForm.NameBox[i].Text = Work.ScanFile[row];
    FileForm.RPMBox[i].Text = SingleText(read.Rpm);
    FileForm.Check1[i].Value = 1;
    FileForm.CellPath[i].Text = PathText(row);
    ShowCenterpiece(line);
    FileForm.ChannelBox[i].Text = ChannelText(0);
    ShowRadii(read.FirstRadius, read.LastRadius);
    RevealRow(line);
    OpenNextLine(line);
    FileForm.BlankFile[i].Text = NoBaseline;
    FileForm.ShiftBase[i].Value = 0;
    FileForm.ShiftBase[i].Visible = false;
    NoteChange();
    RemoveSetConstraints(row);
    FileForm.State.FocusOn = &FocusLine();
}

bool ReadScanHere(const std::string& path) {
    const ScanReadResult read = AdoptScan(path, RowOfLine(Work.CurrentRow));
    if (read.Ok)
        ShowAdopted(read);
    else
        TellReadFailure(path, read.Failure);
    return read.Ok;
}

// The line behind the current one, over the end of page 1. False at the end of the table.
bool MoveToNextLine() {
    if (Work.CurrentRow + 1 < FileFormLines) {
        ++Work.CurrentRow;
        return true;
    }
    if (Work.CurrentPage != 0) return false;
    FileFormPage2();
    Work.CurrentRow = 0;
    return true;
}

bool MoveToFreeLine() {
    while (MoveToNextLine())
        if (Work.ScanFile[RowOfLine(Work.CurrentRow)].empty()) return true;
    return false;
}

template <class Array> void CopyEntry(Array& array, RowNo s) {
    array[s + 1] = array[s];
}

void CopyRow(RowNo s) {
    for (auto* points : {&Work.ScanRadius, &Work.ScanValue, &Work.BaselineRadius, &Work.BaselineValue})
        CopyEntry(*points, s);
    for (auto* numbers : {&Work.ScanTemperature, &Work.ScanRPM, &Work.ScanOmega2t, &Work.ScanWavelength,
                          &Work.CellPath, &Work.BaselineRPM, &Work.BaselineShift})
        CopyEntry(*numbers, s);
    for (auto* words : {&Work.ScansAveraged, &Work.ScanPoints, &Work.BaselinePoints, &Work.BaselineShifted,
                        &Work.CenterpieceType, &Work.DataChannel, &Work.IncludeSet})
        CopyEntry(*words, s);
    for (auto* texts : {&Work.ScanComment, &Work.ScanDirectory, &Work.BaselineDirectory, &Work.ScanFile,
                        &Work.BaselineFile})
        CopyEntry(*texts, s);
    CopyEntry(Work.ScanTime, s);
    for (auto& range : Work.FitRange)
        CopyEntry(range, s);
    for (auto& ratio : Work.ExtinctionRatio)
        CopyEntry(ratio, s);
    Work.SetChanged[s + 1] = FlagTrue;
    ForgetSetParms(s + 1);
}

// Another channel needs another baseline.
void DropBaseline(RowNo row) {
    const std::size_t i = Here();
    if (Work.BaselineFile[row] == NoBaseline) return;
    Work.BaselineFile[row] = NoBaseline;
    Work.BaselineShifted[row] = FlagFalse;
    FileForm.BlankFile[i].Text = NoBaseline;
    FileForm.ShiftBase[i].Value = 0;
    FileForm.ShiftBase[i].Visible = false;
}

void StepChannelOfCopy(RowNo s) {
    if (Work.DataChannel[s] > 0 && Work.CenterpieceType[s] >= 3 &&
        Work.DataChannel[s + 1] < Work.CenterpieceType[s + 1]) {
        FileFormChannelClick(Work.CurrentRow); // shows the range, too
        DropBaseline(s + 1);
    }
}

void CopyIntoNextLine(RowNo s, const Control& channelAbove, const Control& blankAbove) {
    CopyRow(s);
    const int line = Work.CurrentRow;
    const std::size_t i = Here();
    UnlockRow(line);
    FileForm.NameBox[i].Text = Work.ScanFile[s + 1];
    FileForm.Check1[i].Value = 1;
    Work.IncludeSet[s + 1] = 1;
    FileForm.CellPath[i].Text = PathText(s + 1);
    RevealRow(line);
    ShowRowValues(s + 1);
    ApplyCenterpiece(line, Work.CenterpieceType[s + 1]);
    FileForm.ChannelBox[i].Text = channelAbove.Text;
    FileForm.BlankFile[i].Text = blankAbove.Text;
    FileForm.ShiftBase[i].Visible = Work.BaselineFile[s + 1] != NoBaseline;
    FileForm.ShiftBase[i].Value = Work.BaselineShifted[s + 1] != 0 ? 1 : 0;
    StepChannelOfCopy(s);
    ShowRowValues(s + 1);
    OpenNextLine(line);
    Work.HighestSet = std::max(Work.HighestSet, ToInt16((s + 1).Number));
    NoteChange();
    RemoveSetConstraints(s + 1);
}

void CopyCurrentLine() {
    const RowNo s = RowOfLine(Work.CurrentRow);
    const bool holdsFile = !FileForm.NameBox[Here()].Text.empty();
    if (!holdsFile || (Work.CurrentRow == FileFormLines - 1 && Work.CurrentPage != 0)) return Host.Beep();
    const Control channel = FileForm.ChannelBox[Here()];
    const Control blank = FileForm.BlankFile[Here()];
    MoveToNextLine();
    CopyIntoNextLine(s, channel, blank);
}

// The data of a set that loses its baseline are others, as those of one that gets another.
void RemoveBaseline(RowNo row) {
    if (Work.BaselineFile[row] == NoBaseline) return;
    DropBaseline(row);
    Work.SetChanged[row] = FlagTrue;
    NoteChange();
    RemoveSetConstraints(row);
}

} // namespace

void FileFormNewFileButton() {
    const RowNo row = RowOfLine(Work.CurrentRow);
    FileRequest request = ScanRequest(" - Read Data File");
    request.Several = true;
    request.Name = LastTitle;
    if (!Work.ScanFile[row].empty()) {
        request.Directory = Work.ScanDirectory[row];
        request.Name = Work.ScanFile[row];
    }
    const FileAnswer answer = Host.AskFile(request);
    if (answer.Cancelled || answer.Title.empty()) {
        FileForm.State.FocusOn = &FocusLine();
        return;
    }
    FileFormReadFiles(answer.Paths);
}

void FileFormReadFiles(const std::vector<std::string>& paths) {
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (i > 0 && !MoveToFreeLine()) {
            Host.Beep();
            const std::size_t left = paths.size() - i;
            return Tell("All data sets hold a scan: " + std::to_string(left) + " of the chosen files " +
                            (left == 1 ? "has" : "have") + " not been read.",
                        Work.ProgramName, BoxIcon::Warning);
        }
        if (!ReadScanHere(paths[i])) return;
    }
}

void FileFormSubtractBlankButton() {
    const RowNo row = RowOfLine(Work.CurrentRow);
    const std::size_t i = Here();
    if (Work.ScanFile[row].empty()) return Host.Beep();
    FileRequest request = ScanRequest(" - Read Data File for Blank");
    request.Directory = Work.BaselineDirectoryLast.empty() ? Work.DataDirectory : Work.BaselineDirectoryLast;
    request.Name = LastTitle;
    if (FileForm.BlankFile[i].Text != NoBaseline) {
        request.Directory = Work.BaselineDirectory[row];
        request.Name = Work.BaselineFile[row];
    }
    const FileAnswer answer = Host.AskFile(request);
    FileForm.State.FocusOn = &FocusLine();
    if (answer.Cancelled) return RemoveBaseline(row); // the way to take a baseline off a set
    const ReadFailure failure = AdoptBaseline(answer.Path, row);
    if (failure.Kind != ReadFailure::Kinds::None) return TellReadFailure(answer.Path, failure);
    FileForm.BlankFile[i].Text = LastTitle = Work.BaselineFile[row];
    Work.BaselineDirectoryLast = Work.BaselineDirectory[row];
    FileForm.ShiftBase[i].Value = 0;
    FileForm.ShiftBase[i].Visible = true;
    NoteChange();
    RemoveSetConstraints(row);
}

void FileFormCopyFile() {
    if (FileForm.CopyRunning) return;
    FileForm.CopyRunning = FlagTrue;
    try {
        CopyCurrentLine();
    } catch (const RuntimeError&) { // told by whoever runs the handler; the next click works again
        FileForm.CopyRunning = FlagFalse;
        throw;
    }
    FileForm.CopyRunning = FlagFalse;
    FileForm.State.FocusOn = &FileForm.CopyFile;
}

void FileFormClearFiles() {
    Work.CurrentPage = 0;
    for (const RowNo row : EachRow()) {
        Work.ScanFile[row].clear();
        Work.BaselineFile[row] = NoBaseline;
        Work.BaselineShifted[row] = Work.IncludeSet[row] = Work.DataChannel[row] = 0;
        Work.BaselineShift[row] = 0.0F;
        Work.CenterpieceType[row] = 0;
        Work.OffsetLink[row] = 0;
        Work.ConcConstraintA[row] = Work.ConcConstraintB[row] = 0.0F;
        Work.ConcToleranceA[row] = Work.ConcToleranceB[row] = 0.1F;
    }
    Work.ConstraintFlags = 0;
    FillPage();
    FileForm.CancelButton.Enabled = false;
    FileForm.Page2.Visible = false;
}

} // namespace Quillon
