#pragma once
// One step back in the table of data sets: each command that changes it is one change, told in the line of
// messages, and the latest one can be taken back as long as the table is open.

#include <functional>
#include <string>

namespace Quillon {

// Runs the work of a handler. Where the table is another afterwards the change is told in FileForm.Changed
// and Undo is open; one within another belongs to it. An error passes, with what was changed up to it.
void AsOneChange(const std::function<void()>& work);

// Words for the change at hand that say more than the difference of the table.
void SayChange(const std::string& words);

// The button: gives back the table as it was before the latest change. Beeps when there is none.
void FileFormUndo();

// The table has been opened: what stands now is what an emptied table gives back, and nothing can be undone.
void KeepOpenedTable();

// True when the type of the data, which the last scan read decides, is another than when the table was
// opened.
bool OpticsChangedSinceOpening();

// Gives back the table as it was opened, where that held a scan and the present one holds none. False
// otherwise.
bool GiveBackEmptiedTable();

} // namespace Quillon
