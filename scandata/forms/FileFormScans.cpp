// Reading scans and baselines into the table, copying lines, clearing.
#include "scandata/forms/FileFormScans.h"

#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormChannels.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/TableUndo.h"
#include "scandata/forms/VelocityRun.h"
#include "scandata/range/FindColumns.h"
#include "scandata/reader/AdoptScan.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/TableRows.h"
#include "scandata/table/Temperatures.h"
#include "workspace/records/ReadingRemarks.h"
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

void OpenNextLine(int line) {
    if (line >= FileForm.Lines - 1)
        FileForm.Page2.Visible = HasPages();
    else
        UnlockRow(line + 1);
}

// The row of the current line has taken a scan: the line shows it, and the next dialog starts where it came
// from.
void ShowAdopted(const ScanReadResult& read) {
    const int line = Work.CurrentRow;
    const RowNo row = RowOfLine(line);
    const std::size_t i = Here();
    Work.DataDirectory = Work.ScanDirectory[row];
    Work.NameConvention = NamedBy::Newer;
    LastTitle = Work.ScanFile[row];
    FileForm.NameBox[i].Text = Work.ScanFile[row];
    FileForm.RPMBox[i].Text = SingleText(read.Rpm);
    FileForm.Check1[i].Value = 1;
    FileForm.CellPath[i].Text = PathText(row);
    ShowCenterpiece(line);
    FileForm.ChannelBox[i].Text = ChannelText(0);
    ShowRange(line, read.FirstRadius, read.LastRadius);
    RevealRow(line);
    OpenNextLine(line);
    FileForm.BlankFile[i].Text = NoBaseline;
    FileForm.ShiftBase[i].Value = 0;
    FileForm.ShiftBase[i].Visible = false;
    NoteTableChange();
    RemoveSetConstraints(row);
    FileForm.State.FocusOn = &FocusLine();
}

// The line behind the current one, over the end of page 1. False at the end of the table.
bool MoveToNextLine() {
    if (Work.CurrentRow + 1 < FileForm.Lines) {
        ++Work.CurrentRow;
        return true;
    }
    if (Work.CurrentPage != 0 || !HasPages()) return false;
    FileFormPage2();
    Work.CurrentRow = 0;
    return true;
}

bool MoveToFreeLine() {
    while (MoveToNextLine())
        if (Work.ScanFile[RowOfLine(Work.CurrentRow)].empty()) return true;
    return false;
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

bool HasNextChannel(RowNo s) {
    return Work.DataChannel[s] != Channel::None && Work.CenterpieceType[s] >= Centerpiece::SixChannel &&
           Work.DataChannel[s] < Work.CenterpieceType[s];
}

// Where line holds the row behind s.
void ShowCopy(RowNo s, const Control& channelAbove, const Control& blankAbove) {
    const int line = Work.CurrentRow;
    const std::size_t i = Here();
    UnlockRow(line);
    FileForm.NameBox[i].Text = Work.ScanFile[s + 1];
    FileForm.Check1[i].Value = 1;
    FileForm.CellPath[i].Text = PathText(s + 1);
    RevealRow(line);
    ShowRowValues(s + 1);
    ApplyCenterpiece(line, Work.CenterpieceType[s + 1]);
    FileForm.ChannelBox[i].Text = channelAbove.Text;
    FileForm.BlankFile[i].Text = blankAbove.Text;
    FileForm.ShiftBase[i].Visible = Work.BaselineFile[s + 1] != NoBaseline;
    FileForm.ShiftBase[i].Value = Work.BaselineShifted[s + 1] != 0 ? 1 : 0;
}

void CopyIntoNextLine(RowNo s, const Control& channelAbove, const Control& blankAbove) {
    CopyRow(s, s + 1);
    ShowCopy(s, channelAbove, blankAbove);
    const int line = Work.CurrentRow;
    if (HasNextChannel(s) && StepCopiedChannel(line)) DropBaseline(s + 1);
    ShowRowValues(s + 1);
    OpenNextLine(line);
    NoteTableChange();
    RemoveSetConstraints(s + 1);
}

constexpr const char* NoRoom = "All data sets hold a scan: there is no line left for the next channel.";

// True when the row behind s may be written: it is empty, has been made so, or may be lost.
bool MakeRoomBehind(RowNo s) {
    const RowNo next = s + 1;
    if (Work.ScanFile[next].empty()) return true;
    const BoxRequest question{RowName(next) +
                                  " holds a scan.\n\nDo you want to insert a line for the next channel?",
                              Work.ProgramName,
                              BoxIcon::Question,
                              BoxButtons::YesNoCancel,
                              BoxAnswer::Yes,
                              {},
                              "&Insert a line",
                              "&Write over it"};
    const BoxAnswer answer = Host.MessageBoxAnswer(question);
    if (answer == BoxAnswer::No) return true;
    if (answer != BoxAnswer::Yes) return false;
    if (InsertRow(next)) return true;
    Tell(NoRoom, Work.ProgramName, BoxIcon::Warning);
    return false;
}

// The lines of the page as the rows are now; the current line stays, and so does the focus, which a window
// that opens next would hand over to the first line.
void ShowPageAgain() {
    const std::int16_t line = Work.CurrentRow;
    Control* const focus = FileForm.State.FocusOn;
    FillPage();
    Work.CurrentRow = line;
    FileForm.State.FocusOn = focus;
}

void CopyCurrentLine() {
    const RowNo s = RowOfLine(Work.CurrentRow);
    if (FileForm.NameBox[Here()].Text.empty()) return Host.Beep();
    if (s.Number >= Work.MaxSets) {
        Host.Beep();
        return Tell(NoRoom, Work.ProgramName, BoxIcon::Warning);
    }
    StoreIncludes();
    if (!MakeRoomBehind(s)) return;
    ShowPageAgain();
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
    NoteTableChange();
    RemoveSetConstraints(row);
}

void TakeBaseline(const std::string& path, RowNo row) {
    const std::size_t i = Here();
    const ReadFailure failure = AdoptBaseline(path, row);
    if (failure.Kind != ReadFailure::Kinds::None) return TellReadFailure(path, failure);
    FileForm.BlankFile[i].Text = LastTitle = Work.BaselineFile[row];
    Work.BaselineDirectoryLast = Work.BaselineDirectory[row];
    FileForm.ShiftBase[i].Value = 0;
    FileForm.ShiftBase[i].Visible = true;
    NoteTableChange();
    RemoveSetConstraints(row);
    if (const std::string remark = RemarkOfBaseline(Work, row); !remark.empty())
        Tell(FileTitle(path) + ": " + remark, Work.ProgramName, BoxIcon::Warning);
}

// What is to be said when all files have had their turn.
struct ReadNotes {
    std::vector<std::string> Failures; // name and reason of each
    std::vector<std::string> Remarks;  // on files that were read
    std::size_t NoLine = 0;            // files for which there was no line
    long Scans = 0, Columns = 0;       // that were read, and columns proposed in them
    long NoRoom = 0;                   // columns for which there was no line
};

void TellNotes(const ReadNotes& notes, const std::string& sentence) {
    std::string text;
    const auto paragraph = [&](const std::string& words) { text += (text.empty() ? "" : "\n\n") + words; };
    const auto lines = [](const std::vector<std::string>& all) {
        std::string joined;
        for (const std::string& one : all)
            joined += (joined.empty() ? "" : "\n") + one;
        return joined;
    };
    if (!notes.Failures.empty()) paragraph(sentence + "\n\n" + lines(notes.Failures));
    if (!notes.Remarks.empty()) paragraph(lines(notes.Remarks));
    if (notes.NoLine > 0)
        paragraph("All data sets hold a scan: " + std::to_string(notes.NoLine) + " of the chosen files " +
                  (notes.NoLine == 1 ? "has" : "have") + " not been read.");
    if (notes.NoRoom > 0)
        paragraph("All data sets hold a scan: " + std::to_string(notes.NoRoom) +
                  (notes.NoRoom == 1 ? " channel has" : " channels have") + " found no line.");
    if (!text.empty()) Tell(text, Work.ProgramName, BoxIcon::Warning);
}

// A line for each column of the scan in the current line.
void ProposeColumns(ReadNotes& notes) {
    const RowNo row = RowOfLine(Work.CurrentRow);
    const std::vector<ScanColumn> columns = FindColumns(row);
    if (columns.empty()) return;
    StoreIncludes();
    notes.NoRoom += TakeColumns(row, columns);
    notes.Columns += static_cast<long>(columns.size());
    ShowPageAgain();
}

std::vector<RowNo> RowsOf(const std::vector<std::string>& paths) {
    std::vector<RowNo> rows;
    for (const RowNo row : EachRow())
        if (!Work.ScanFile[row].empty() &&
            std::find(paths.begin(), paths.end(), JoinPath(Work.ScanDirectory[row], Work.ScanFile[row])) !=
                paths.end())
            rows.push_back(row);
    return rows;
}

void AddOnce(std::vector<std::string>& remarks, const std::string& remark) {
    if (std::find(remarks.begin(), remarks.end(), remark) == remarks.end()) remarks.push_back(remark);
}

// What can be told of scans when all that belong together have been read: the columns of intensities, whether
// they have settled.
void LookAtGroups(const std::vector<std::string>& paths, ReadNotes& notes) {
    const std::vector<RowNo> rows = RowsOf(paths);
    DecideIntensityOrders(rows);
    for (const RowNo row : rows)
        if (const std::string remark = IntensityRemark(row); !remark.empty())
            AddOnce(notes.Remarks, Work.ScanFile[row] + ": " + remark);
    for (const std::string& remark : VelocityRemarks(rows))
        AddOnce(notes.Remarks, remark);
}

void SayProposed(const ReadNotes& notes) {
    if (notes.Columns == 0) return;
    SayChange(std::to_string(notes.Columns - notes.NoRoom) + " data sets of " + Counted(notes.Scans, "scan") +
              ", channels and ranges proposed: click on a radius to look at a range");
}

// One file into the current line; the only one has its failure told by itself.
void ReadHere(const std::string& path, bool alone, bool propose, ReadNotes& notes) {
    const ScanReadResult read = AdoptScan(path, RowOfLine(Work.CurrentRow));
    if (read.Ok) {
        ShowAdopted(read);
        ++notes.Scans;
        if (propose) ProposeColumns(notes);
    }
    if (!read.Remark.empty()) notes.Remarks.push_back(FileTitle(path) + ": " + read.Remark);
    if (read.Ok) return;
    if (alone) return TellReadFailure(path, read.Failure);
    notes.Failures.push_back(FileTitle(path) + ": " + read.Failure.Reason);
}

void ReadAll(const std::vector<std::string>& paths, bool propose) {
    ReadNotes notes;
    bool first = true;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const bool free = Work.ScanFile[RowOfLine(Work.CurrentRow)].empty();
        if (!first && !free && !MoveToFreeLine()) {
            Host.Beep();
            notes.NoLine = paths.size() - i;
            break;
        }
        first = false;
        ReadHere(paths[i], paths.size() == 1, propose, notes);
    }
    LookAtGroups(paths, notes);
    SayProposed(notes);
    TellNotes(notes, ScanReadSentence);
}

void ClearAll() {
    Work.CurrentPage = 0;
    for (const RowNo row : EachRow()) {
        Work.ScanFile[row].clear();
        Work.BaselineFile[row] = NoBaseline;
        Work.BaselineShifted[row] = Work.IncludeSet[row] = Work.DataChannel[row] = 0;
        Work.BaselineShift[row] = 0.0F;
        Work.CenterpieceType[row] = 0;
        Work.OffsetLink[row] = Work.ConcLink[row] = 0;
        Work.ConcConstraintA[row] = Work.ConcConstraintB[row] = 0.0F;
        Work.ConcToleranceA[row] = Work.ConcToleranceB[row] = 0.1F;
    }
    Work.ConstraintFlags = 0;
    FillPage();
    FileForm.CancelButton.Enabled = false;
    FileForm.Page2.Visible = false;
    SayChange("All scans cleared");
}

void Fill(const TableFilling& fill) {
    StoreIncludes();
    ReadNotes notes;
    notes.Remarks = fill();
    Work.CurrentPage = 0;
    Work.NameConvention = NamedBy::Newer;
    if (!Work.ScanDirectory[1].empty()) Work.DataDirectory = Work.ScanDirectory[1];
    FillPage();
    NoteTableChange();
    SayChange(std::to_string(RowsInFit().size()) +
              " data sets, channels and ranges proposed: click on a radius to look at a range");
    TellNotes(notes, ScanReadSentence);
}

} // namespace

void FileFormFill(const TableFilling& fill) {
    AsOneChange([&] { Fill(fill); });
}

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
    AsOneChange([&] { ReadAll(paths, paths.size() > 1); });
}

void FileFormOpenScans(const std::vector<std::string>& paths) {
    AsOneChange([&] { ReadAll(paths, true); });
}

void FileFormSubtractBlankButton() {
    const RowNo row = RowOfLine(Work.CurrentRow);
    if (Work.ScanFile[row].empty()) return Host.Beep();
    FileRequest request = ScanRequest(" - Read Data File for Blank");
    request.Directory = Work.BaselineDirectoryLast.empty() ? Work.DataDirectory : Work.BaselineDirectoryLast;
    request.Name = LastTitle;
    if (FileForm.BlankFile[Here()].Text != NoBaseline) {
        request.Directory = Work.BaselineDirectory[row];
        request.Name = Work.BaselineFile[row];
    }
    const FileAnswer answer = Host.AskFile(request);
    FileForm.State.FocusOn = &FocusLine();
    AsOneChange([&] {
        if (answer.Cancelled)
            RemoveBaseline(row); // the way to take a baseline off a set
        else
            TakeBaseline(answer.Path, row);
    });
}

void FileFormCopyFile() {
    if (FileForm.CopyRunning) return;
    FileForm.CopyRunning = FlagTrue;
    try {
        AsOneChange(CopyCurrentLine);
    } catch (const RuntimeError&) { // told by whoever runs the handler; the next click works again
        FileForm.CopyRunning = FlagFalse;
        throw;
    }
    FileForm.CopyRunning = FlagFalse;
    FileForm.State.FocusOn = &FileForm.CopyFile;
}

void FileFormClearFiles() {
    if (!TableIsEmpty() && !AskYesNo("Do you want to clear out all loaded scan data?", Work.ProgramName,
                                     BoxAnswer::No, BoxIcon::Warning))
        return;
    AsOneChange(ClearAll);
}

} // namespace Quillon
