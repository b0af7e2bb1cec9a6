#pragma once
// What the user does in the table of data sets but for files and channels: clicks and keys on its lines,
// pages, the ways out. A line counts from 0 on the page that shows.

namespace Quillon {

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
void FileFormPathClick(int line);
void FileFormExtinctionButton(int line);
void FileFormSaveButton(int line);
void FileFormHelpButton(int line);
void FileFormRangeButton();
void FileFormLogPlot(); // Value is already the new one
void FileFormPage2();
void FileFormWriteData();

// Accepts the table, after the doubts about its ranges have been told. Data of the other optics than those
// before take the units of concentrations with them.
void FileFormOkButton();
void FileFormCancelButton();
void FileFormCloseBox(); // the window's own: as OK, but an emptied table is given back
void FileFormEscape();   // as Cancel, but an emptied table is given back
} // namespace Quillon
