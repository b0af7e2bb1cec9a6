#pragma once
// The form "Data Included in Fit" as data: the table of data sets, nine lines to a page, or all eighteen on
// one where the screen has room for them. Lines count from 0 on the page that shows; the row of a line is
// line + 1 + 9 * Work.CurrentPage. The form keeps no data of its
// own: its columns are the workspace's.
//
// What the user does in it: scandata/forms/FileFormEvents.h, with files scandata/forms/FileFormScans.h, by
// the menu of a line scandata/forms/FileFormMenu.h; one step back: scandata/forms/TableUndo.h.

#include "models/forms/DialogAnswer.h"
#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr int FileFormLines = 9; // of a page
inline constexpr int AllFileFormLines = 18;

inline constexpr const char* FileFormName = "FileForm"; // of the form, for the seam

// Fills the rows of the table anew and gives what is to be told, a sentence each. A RuntimeError leaves the
// table as it was.
using TableFilling = std::function<std::vector<std::string>()>;

struct FileFormRecord {
    template <class T> using PerLine = std::array<T, AllFileFormLines>;
    int Lines = FileFormLines; // that show: those of a page, or all
    FormState State;
    std::int16_t FormChanged = 0;     // 1 data changed, 2 only ranges or baseline shifts
    std::int16_t CopyRunning = 0;     // flag
    bool Timer1 = false;              // the form has opened on a fresh workspace: it asks for a scan at once
    std::vector<std::string> Waiting; // scans to be read in place of that question
    TableFilling WaitingFill;         // or rows to be filled

    std::vector<Control> Heads; // of the columns SetBox to CellPath, in their order
    Control PointsHead;
    PerLine<Control> SetBox, Check1, NameBox, RPMBox, MinRBox, MaxRBox, PointsBox, BlankFile, ShiftBase,
        CellBox, ChannelBox, CellPath, ExtinctionButton, SaveButton, HelpButton;
    Control NewFileButton, SubtractBlankButton, RangeButton, LogPlot, CopyFile, ClearFiles, Page2, WriteData;
    Control OkButton, CancelButton, UndoButton, Hint;
    DialogAnswer Answer = DialogAnswer::Cancel; // Ok once the table has been accepted
    Control Changed;                            // what the latest command has changed
};
extern FileFormRecord FileForm;

// Opens the form and answers how it was closed. scans are read into it as soon as it shows (Timer1), or its
// rows are filled.
DialogAnswer OpenFileForm(const std::vector<std::string>& scans = {}, const TableFilling& fill = nullptr);

// The window has room for all lines: there are no pages then. Called before it is made.
void ShowAllLines();
bool HasPages();

// The program starts: the next opening of the form without accepted data asks for a scan at once (Timer1).
void StartFileForm();

// --- showing -------------------------------------------------------------------------------------------
void LoadFileForm();                                // page 1 from the workspace
void FillPage();                                    // the lines of Work.CurrentPage
void ShowRowValues(RowNo row);                      // radii, count of points and speed
void ShowRange(int line, float inner, float outer); // in cm, and how many points lie in the range
void RevealRow(int line);
void ShowCenterpiece(int line); // its type, and a channel where it has any
void UnlockRow(int line);
RowNo RowOfLine(int line);
inline std::size_t LineAt(int line) { // in the arrays of controls
    return static_cast<std::size_t>(line);
}
void NoteTableChange();               // its rows are others than before, and Cancel cannot bring them back
void StoreIncludes();                 // the marks of the page that shows go into the workspace
std::string ChannelText(int channel); // "" for none, "A" to "D"
std::string PathText(RowNo row);      // optical path in mm

// The filter of the file dialogs for scans.
extern const char* const ScanFilter;

} // namespace Quillon
