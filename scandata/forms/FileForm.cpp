// The table's lines and pages.
#include "scandata/forms/FileForm.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/forms/DataDirectory.h"
#include "scandata/forms/TableUndo.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

FileFormRecord FileForm;

const char* const ScanFilter =
    "XL data (A or I)|*.R*;*.IP*|absorbance data (*.R*)|*.R*|interference data (*.IP*)|"
    "*.IP*|Reedit files (*.red)|*.red|all files (*.*)|*.*";

namespace {

bool AskedForScan = false; // in this run of the program

void Name(Control& c, const char* text, const char* toolTip = "") {
    c.Text = text;
    c.ToolTip = toolTip;
}

void NameHeads() {
    struct Head {
        const char *Text, *ToolTip;
    };
    for (const Head& head :
         {Head{"Set #", "The number of the data set. The first one in the fit is what speeds, paths and "
                        "extinctions of the others are related to"},
          Head{"Include  in Fit?", "Which data sets are fitted"},
          Head{"            File Name", "The scan of the data set"},
          Head{"    RPM", "Rotor speed, from the header of the scan"},
          Head{"Fit Inner Radius", "The first radius that is fitted, in cm"},
          Head{"Fit Outer Radius", "The last radius that is fitted, in cm"},
          Head{"File to Subtract as Baseline",
               "A scan without sample, or of another speed, that is subtracted"},
          Head{"Shift Baseline?", "Moves the baseline along the radius"},
          Head{"Centerpiece Type", "How many channels the cell has: 2, 6 or 8"},
          Head{"Data Channel", "Which sample of the cell: A is the innermost"},
          Head{"Cell Path", "Optical path, in mm"}}) {
        Control c;
        Name(c, head.Text, head.ToolTip);
        FileForm.Heads.push_back(c);
    }
    Name(FileForm.PointsHead, "Points", "How many points of the scan are fitted");
}

void NameLine(std::size_t i) {
    FileForm.Check1[i].ToolTip = "Un-check to remove this data set from the fitting";
    FileForm.NameBox[i].ToolTip = "Click to load a scan file";
    FileForm.MinRBox[i].ToolTip = FileForm.MaxRBox[i].ToolTip =
        "Click to limit the radial region being fitted (the good data points)  from a graph";
    FileForm.BlankFile[i].ToolTip = "Click to load a baseline for this scan";
    FileForm.ShiftBase[i].ToolTip =
        "Check this box to shift the baseline file to compensate for rotor expansion";
    FileForm.CellBox[i].ToolTip =
        "Enter 2, 6, or 8 while this set is highlighted to set the centerpiece type (# of channels)";
    FileForm.ChannelBox[i].ToolTip = "Enter A, B, C, or D while this set is highlighted to set the channel";
    FileForm.CellPath[i].ToolTip =
        "Enter P while this data set is highlighted to toggle between 3 and 12 mm pathlength";
    Name(FileForm.ExtinctionButton[i], "Chg. Extinc.",
         "Click to enter or change the extinction coefficient (or refractive increment) ratio relative to "
         "that "
         "for the first data set being fitted (relative signal per unit concentration)");
    Name(FileForm.SaveButton[i], "Save Subset",
         "Click to write out the currently selected 'good' data as a separate scan file");
    Name(FileForm.HelpButton[i], "File Info", "Click to view the scan header information for this scan");
}

void NameButtons() {
    Name(FileForm.NewFileButton, "Read &Data File",
         "Read a new scan file into the currently highlighted data set");
    Name(FileForm.SubtractBlankButton, "Read &Baseline File",
         "Read a new baseline file into the currently highlighted data set");
    Name(FileForm.RangeButton, "Set Data &Range",
         "Set the radial range of data points to be fitted (the 'good' data) from a graph");
    Name(FileForm.LogPlot, "&Use ln(c) vs. r^2 / 2 plot to set radii",
         "Use a ln(c) versus (radius)^2 / 2 plot to set the inner and outer radii for fitting from a graph");
    Name(FileForm.CopyFile, "Load &Next Channel",
         "Click to load the data from the next channel in the current cell into the next data slot");
    Name(FileForm.ClearFiles, "Clear &Files", "Clear out all loaded scan data");
    Name(FileForm.Page2, "Page &2", "Move to the other page of data (other group of 9 possible data sets)");
    Name(FileForm.WriteData, "Write Data",
         "Write out all the selected 'good' data points for all fitted data sets as new scan files");
    Name(FileForm.OkButton, "OK", "Accept current data sets and close this form");
    Name(FileForm.CancelButton, "&Cancel",
         "Cancel changes in data sets entered since this form was previously loaded");
    Name(FileForm.UndoButton, "&Undo", "Take back the latest change of this table");
    FileForm.UndoButton.Enabled = false;
    FileForm.Hint.Text =
        "Click on the boxed entries to enter or alter them, or use the buttons below whenever that set is "
        "highlighted.  When a set is highlighted you can use the keyboard to see the file info by keying ?, "
        "to "
        "set its centerpiece type by keying 2, 6, or 8, to set its channel by keying A,B,C, or D, or to "
        "toggle "
        "its pathlength between 12 mm and 3 mm by keying P.";
}

void LockRow(std::size_t i) {
    FileForm.SetBox[i].Enabled = FileForm.Check1[i].Enabled = false;
    FileForm.Check1[i].Value = 2;
    FileForm.NameBox[i].Visible = false;
}

// Hides and empties the columns of all lines, and locks all but the first.
void ClearRows() {
    for (std::size_t i = 0; i < AllFileFormLines; ++i) {
        for (auto* column :
             {&FileForm.HelpButton, &FileForm.CellBox, &FileForm.ChannelBox, &FileForm.ShiftBase,
              &FileForm.MinRBox, &FileForm.MaxRBox, &FileForm.PointsBox, &FileForm.BlankFile,
              &FileForm.RPMBox, &FileForm.CellPath, &FileForm.SaveButton, &FileForm.ExtinctionButton})
            (*column)[i].Visible = false;
        for (auto* column : {&FileForm.NameBox, &FileForm.RPMBox, &FileForm.MinRBox, &FileForm.MaxRBox,
                             &FileForm.PointsBox, &FileForm.BlankFile, &FileForm.ChannelBox})
            (*column)[i].Text.clear();
        FileForm.ShiftBase[i].Value = 0;
        LockRow(i);
        FileForm.SetBox[i].Text = std::to_string(RowOfLine(static_cast<int>(i)).Number);
    }
    FileForm.BlankFile[0].Text = NoBaseline;
    UnlockRow(0);
}

std::string PointsText(RowNo row) {
    return std::to_string(std::max(0, Work.FitRange[1][row] - Work.FitRange[0][row] + 1));
}

const char* CenterpieceText(int code) {
    return code == 4 ? "8" : code == 3 ? "6" : "2";
}

void FillLine(int line) {
    const RowNo row = RowOfLine(line);
    const std::size_t i = LineAt(line);
    FileForm.NameBox[i].Text = Work.ScanFile[row];
    if (Work.ScanFile[row].empty()) return;
    UnlockRow(line);
    if (line + 1 < FileForm.Lines) UnlockRow(line + 1);
    FileForm.BlankFile[i].Text = Work.BaselineFile[row];
    FileForm.Check1[i].Value = Work.IncludeSet[row];
    FileForm.CellBox[i].Text = CenterpieceText(Work.CenterpieceType[row]);
    FileForm.ChannelBox[i].Text = ChannelText(Work.DataChannel[row]);
    FileForm.CellPath[i].Text = PathText(row);
    RevealRow(line);
    FileForm.ShiftBase[i].Visible = Work.BaselineFile[row] != NoBaseline;
    FileForm.ShiftBase[i].Value = Work.BaselineShifted[row] != 0 ? 1 : 0;
    ShowRowValues(row);
}

} // namespace

bool HasPages() {
    return FileForm.Lines < AllFileFormLines;
}

RowNo RowOfLine(int line) {
    return RowNo(line + 1 + FileFormLines * Work.CurrentPage);
}

std::string ChannelText(int channel) {
    return channel > 0 ? std::string(1, static_cast<char>('A' + channel - 1)) : "";
}

std::string PathText(RowNo row) {
    return SingleText(10.0F * Work.CellPath[row]);
}

void UnlockRow(int line) {
    const std::size_t i = LineAt(line);
    FileForm.NameBox[i].Visible = true;
    if (!FileForm.Check1[i].Enabled) FileForm.Check1[i].Value = 0; // grey so far
    for (auto* column : {&FileForm.SetBox, &FileForm.NameBox, &FileForm.RPMBox, &FileForm.MinRBox,
                         &FileForm.MaxRBox, &FileForm.BlankFile, &FileForm.Check1})
        (*column)[i].Enabled = true;
}

void RevealRow(int line) {
    const std::size_t i = LineAt(line);
    for (auto* column : {&FileForm.HelpButton, &FileForm.CellBox, &FileForm.BlankFile, &FileForm.RPMBox,
                         &FileForm.MinRBox, &FileForm.MaxRBox, &FileForm.PointsBox, &FileForm.CellPath,
                         &FileForm.SaveButton, &FileForm.ExtinctionButton})
        (*column)[i].Visible = true;
    FileForm.ChannelBox[i].Visible = Work.CenterpieceType[RowOfLine(line)] != Centerpiece::TwoChannel;
}

void ShowCenterpiece(int line) {
    const int code = Work.CenterpieceType[RowOfLine(line)];
    if (code != 1 && code != 3 && code != 4) return;
    FileForm.CellBox[LineAt(line)].Text = CenterpieceText(code);
    FileForm.ChannelBox[LineAt(line)].Visible = code != 1;
    if (code == 1) FileForm.ChannelBox[LineAt(line)].Text.clear();
}

void ShowRowValues(RowNo row) {
    const auto i = static_cast<std::size_t>((row.Number - 1) % FileForm.Lines);
    const auto radius = [&](std::size_t end) {
        const long p = Work.FitRange[end][row];
        if (p < 1 || p > Work.ScanRadius[row].Hi()) return std::string();
        return FormatNumber(static_cast<double>(Work.ScanRadius[row][p]), "#.0000");
    };
    FileForm.MinRBox[i].Text = radius(0);
    FileForm.MaxRBox[i].Text = radius(1);
    FileForm.PointsBox[i].Text = PointsText(row);
    FileForm.RPMBox[i].Text = FormatNumber(static_cast<double>(Work.ScanRPM[row]), "#####");
}

void ShowRange(int line, float inner, float outer) {
    FileForm.MinRBox[LineAt(line)].Text = FormatNumber(static_cast<double>(inner), "0.0000");
    FileForm.MaxRBox[LineAt(line)].Text = FormatNumber(static_cast<double>(outer), "0.0000");
    FileForm.PointsBox[LineAt(line)].Text = PointsText(RowOfLine(line));
}

void FillPage() {
    ClearRows();
    const int last = std::min<int>(FileForm.Lines, Work.HighestSet - FileFormLines * Work.CurrentPage) - 1;
    for (int line = 0; line <= last; ++line)
        FillLine(line);
    FileForm.Page2.Visible =
        HasPages() && (Work.CurrentPage == 1 || !FileForm.NameBox[FileFormLines - 1].Text.empty());
    FileForm.Page2.Text = Work.CurrentPage == 0 ? "Page &2" : "Page &1";
    Work.CurrentRow = 0;
    FileForm.State.FocusOn = &FileForm.Check1[0];
}

void NoteTableChange() {
    FileForm.FormChanged = 1;
    FileForm.CancelButton.Enabled = false;
}

void StoreIncludes() {
    for (int line = 0; line < FileForm.Lines; ++line) {
        const RowNo row = RowOfLine(line);
        Work.IncludeSet[row] = Work.ScanFile[row].empty() ? 0 : FileForm.Check1[LineAt(line)].Value;
    }
}

void LoadFileForm() {
    FileForm = FileFormRecord{};
    FileForm.State.Caption = "Data Included in Fit";
    NameHeads();
    for (std::size_t i = 0; i < AllFileFormLines; ++i)
        NameLine(i);
    NameButtons();
    FileForm.LogPlot.Value = Work.RangeLogPlot ? 1 : 0;
    Work.CurrentPage = 0;
    FillPage();
    KeepOpenedTable();
    FileForm.Timer1 = !AskedForScan && !Work.DataChosen;
    if (FileForm.Timer1) AskedForScan = true;
    FileForm.State.Shown = true;
}

void ShowAllLines() {
    if (!HasPages()) return;
    FileForm.Lines = AllFileFormLines;
    Work.CurrentPage = 0;
    FillPage();
}

void StartFileForm() {
    AskedForScan = false;
}

DialogAnswer OpenFileForm(const std::vector<std::string>& scans, const TableFilling& fill) {
    if (Work.DataDirectory.empty()) FindDataDirectory();
    LoadFileForm();
    FileForm.Waiting = scans;
    FileForm.WaitingFill = fill;
    if (!scans.empty() || fill) FileForm.Timer1 = AskedForScan = true;
    Host.ShowModal(FileFormName);
    return FileForm.Answer;
}

} // namespace Quillon
