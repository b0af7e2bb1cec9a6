#include "scandata/forms/TableUndo.h"

#include "platform/Platform.h"
#include "scandata/forms/FileForm.h"
#include "scandata/table/TableChange.h"
#include "scandata/table/TableRows.h"

#include <algorithm>
#include <memory>

namespace Quillon {

namespace {

// The table with what the form keeps about it.
struct TableState {
    Workspace Data = Work;
    std::int16_t FormChanged = FileForm.FormChanged;
    bool MayCancel = FileForm.CancelButton.Enabled;
};

std::unique_ptr<TableState> Former; // before the latest change
std::unique_ptr<Workspace> Opened;
std::string Said;
int Depth = 0; // handlers at work within one another

// Where the user looks for files and how the range graph begins is nothing that a step back is about.
void GiveBack(const Workspace& state) {
    Workspace present = std::move(Work);
    Work = state;
    Work.DataDirectory = present.DataDirectory;
    Work.BaselineDirectoryLast = present.BaselineDirectoryLast;
    Work.NameConvention = present.NameConvention;
    Work.RangeLogPlot = present.RangeLogPlot;
}

void TakeNote(std::unique_ptr<TableState> before) {
    const std::string difference = DescribeTableChange(before->Data, Work);
    if (difference.empty()) return;
    FileForm.Changed.Text = Said.empty() ? difference : Said;
    FileForm.UndoButton.Enabled = true;
    Former = std::move(before);
}

// From the first change of a handler to its end, whichever way it ends.
struct OneChange {
    std::unique_ptr<TableState> Before = std::make_unique<TableState>();
    OneChange() {
        Said.clear();
        ++Depth;
    }
    ~OneChange() {
        --Depth;
        TakeNote(std::move(Before));
    }
    OneChange(const OneChange&) = delete;
    OneChange& operator=(const OneChange&) = delete;
};

} // namespace

void AsOneChange(const std::function<void()>& work) {
    if (Depth > 0) return work();
    OneChange change;
    work();
}

void SayChange(const std::string& words) {
    Said = words;
}

void FileFormUndo() {
    if (!Former) return Host.Beep();
    const std::unique_ptr<TableState> state = std::move(Former);
    GiveBack(state->Data);
    const std::int16_t line = Work.CurrentRow;
    FillPage();
    Work.CurrentRow = line;
    FileForm.State.FocusOn = &FileForm.Check1[static_cast<std::size_t>(line)];
    FileForm.FormChanged = state->FormChanged;
    FileForm.CancelButton.Enabled = state->MayCancel;
    FileForm.UndoButton.Enabled = false;
    FileForm.Changed.Text = "Taken back: " + FileForm.Changed.Text;
}

void KeepOpenedTable() {
    Opened = std::make_unique<Workspace>(Work);
    Former.reset();
    Depth = 0;
}

bool OpticsChangedSinceOpening() {
    return Opened && (Opened->InterferenceData != 0) != (Work.InterferenceData != 0);
}

bool GiveBackEmptiedTable() {
    const auto holdsScan = [](const std::string& file) { return !file.empty(); };
    if (!TableIsEmpty() || !Opened ||
        std::none_of(Opened->ScanFile.begin(), Opened->ScanFile.end(), holdsScan))
        return false;
    GiveBack(*Opened);
    return true;
}

} // namespace Quillon
