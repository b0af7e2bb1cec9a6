#pragma once
// The form "Data Included in Fit" as data: the table of data sets, nine lines to a page, and everything that
// puts scans, baselines, channels and ranges into it. Lines count from 0 on the page that shows; the set of a
// line is line + 1 + 9 * Work.CurrentPage. The form keeps no data of its own: its columns are the
// workspace's.

#include "platform/Controls.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr int FileFormLines = 9;

struct FileFormRecord {
    template <class T> using PerLine = std::array<T, FileFormLines>;
    FormState State;
    std::int16_t FormChanged = 0; // 1 data changed, 2 only ranges or baseline shifts
    std::int16_t CopyRunning = 0; // flag
    bool Timer1 = false;          // the form has opened on a fresh workspace: it asks for a scan at once

    std::vector<Control> Heads; // of the columns SetBox to CellPath, in their order
    PerLine<Control> SetBox, Check1, NameBox, RPMBox, MinRBox, MaxRBox, BlankFile, ShiftBase, CellBox,
        ChannelBox, CellPath, ExtinctionButton, SaveButton, HelpButton;
    Control NewFileButton, SubtractBlankButton, RangeButton, LogPlot, CopyFile, ClearFiles, Page2, WriteData;
    Control OkButton, CancelButton, Hint;
};
extern FileFormRecord FileForm;

// Opens the form and returns when it is closed: Work.AbortFit is then 2 after OK, 1 after Cancel.
void OpenFileForm();

// The program starts: the next opening of the form without accepted data asks for a scan at once (Timer1).
void StartFileForm();

// --- showing -------------------------------------------------------------------------------------------
void LoadFileForm();               // page 1 from the workspace
void FillPage();                   // the lines of Work.CurrentPage
void ShowRowValues(long setIndex); // radii and speed of set setIndex + 1
void RevealRow(int line);
void UnlockRow(int line);
long SetOfLine(int line);
std::string ChannelText(int channel); // "" for none, "A" to "D"
std::string PathText(long set);       // optical path in mm

// --- what the user does ----------------------------------------------------------------------------------
void FileFormTimer1();             // after the first showing
void FileFormCheckFocus(int line); // a line's check box has the focus: the line is the current one
void FileFormCheckLostFocus(int line);
void FileFormCheckClick(int line);   // Value is already the new one
void FileFormKey(int line, int key); // a character key on the line's check box
enum class FileFormArrow { Previous, Next };
void FileFormArrowKey(int line, FileFormArrow arrow);
void FileFormNameClick(int line);
void FileFormRangeClick(int line); // MinRBox, MaxRBox
void FileFormBlankClick(int line);
void FileFormShiftClick(int line); // Value is already the new one
void FileFormChannelClick(int line);
void FileFormPathClick(int line);
void FileFormExtinctionButton(int line);
void FileFormSaveButton(int line);
void FileFormHelpButton(int line);
void FileFormNewFileButton();
void FileFormSubtractBlankButton();
void FileFormRangeButton();
void FileFormLogPlot(); // Value is already the new one
void FileFormCopyFile();
void FileFormClearFiles();
void FileFormPage2();
void FileFormWriteData();
void FileFormOkButton();
void FileFormCancelButton();

// Reads scans: the first into the current line, the others into the lines behind it that are free. Stops at
// the first that cannot be read, and tells when the table has no free line left. Used for several files
// chosen at once and for files dropped on the form.
void FileFormReadFiles(const std::vector<std::string>& paths);

// Applies a centerpiece code or a channel to a line and shows it.
void ApplyCenterpiece(int line, int code);
void ApplyChannel(int line, int channel);

// The filter of the file dialogs for scans.
extern const char* const ScanFilter;

} // namespace Quillon
