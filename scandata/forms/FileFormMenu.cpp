#include "scandata/forms/FileFormMenu.h"

#include "platform/Platform.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormChannels.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"
#include "scandata/forms/TableCommands.h"
#include "scandata/forms/TableUndo.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/TableChange.h"
#include "scandata/table/TableRows.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

// The page as the rows are now; the line keeps the focus.
void ShowPageAt(int line) {
    FillPage();
    Work.CurrentRow = ToInt16(line);
    FileForm.State.FocusOn = &FileForm.Check1[LineAt(line)];
}

// A change of a line that is told and can be taken back. One that came to nothing leaves Cancel as it was.
void Change(int line, const std::function<void()>& work) {
    StoreIncludes();
    AsOneChange([&] {
        const Workspace before = Work;
        work();
        if (DescribeTableChange(before, Work).empty()) return;
        NoteTableChange();
        ShowPageAt(line);
    });
}

void TakeMenuChannel(int line, int channel) {
    if (Work.DataChannel[RowOfLine(line)] == channel) return;
    if (channel > 0) return FileFormChannelKey(line, channel);
    Change(line, [line] { ApplyChannel(line, 0); });
}

void TakePath(int line, float path) {
    if (Work.CellPath[RowOfLine(line)] != path)
        Change(line, [line, path] { Work.CellPath[RowOfLine(line)] = path; });
}

void TakeCenterpiece(int line, int code) {
    if (Work.CenterpieceType[RowOfLine(line)] != code) FileFormCenterpieceKey(line, code);
}

void Remove(int line) {
    const RowNo row = RowOfLine(line);
    Change(line, [row] {
        const std::string name = RowName(row);
        RemoveRow(row);
        SayChange(name + " removed");
    });
}

// What a command did to other rows goes into the line of messages, what it could not do into a box.
void Report(const std::string& what, const TableOutcome& outcome) {
    if (!outcome.Rows.empty()) SayChange(what + RowList(outcome.Rows));
    std::string refusals;
    for (const std::string& refusal : outcome.Refusals)
        refusals += (refusals.empty() ? "" : "\n") + refusal;
    if (!refusals.empty()) Tell(refusals, Work.ProgramName, BoxIcon::Warning);
}

void SameForCell(int line) {
    Change(line, [line] {
        Report("Channel and range of set " + std::to_string(RowOfLine(line).Number) + " given to ",
               ChannelAndRangeForCell(RowOfLine(line)));
    });
}

void AllChannels(int line) {
    Change(line, [line] { Report("Channels of all scans: sets ", AllChannelsOfAllScans(RowOfLine(line))); });
}

LineMenuItem Entry(const std::string& caption, std::function<void()> command, bool newGroup = false) {
    LineMenuItem item;
    item.Item.Text = caption;
    item.NewGroup = newGroup;
    item.Command = std::move(command);
    return item;
}

// One of several in a menu of their own, of which the present one is checked.
LineMenuItem Choice(const std::string& submenu, const std::string& caption, bool present,
                    std::function<void()> command) {
    LineMenuItem item = Entry(caption, std::move(command));
    item.Submenu = submenu;
    item.Item.Checked = present;
    return item;
}

void AddChannels(std::vector<LineMenuItem>& menu, int line) {
    const RowNo row = RowOfLine(line);
    const int code = Work.CenterpieceType[row];
    const int last = code == Centerpiece::EightChannel ? Channel::D : Channel::C;
    if (code < Centerpiece::SixChannel) return;
    for (int channel = Channel::None; channel <= last; ++channel)
        menu.push_back(Choice("&Channel", channel == Channel::None ? "&None" : "&" + ChannelText(channel),
                              Work.DataChannel[row] == channel,
                              [line, channel] { TakeMenuChannel(line, channel); }));
}

void AddCell(std::vector<LineMenuItem>& menu, int line) {
    const RowNo row = RowOfLine(line);
    for (const float path : {1.2F, 0.3F})
        menu.push_back(Choice("&Path", path > 1.0F ? "&12 mm" : "&3 mm", Work.CellPath[row] == path,
                              [line, path] { TakePath(line, path); }));
    struct Piece {
        const char* Caption;
        int Code;
    };
    for (const Piece& piece :
         {Piece{"&2 channels", Centerpiece::TwoChannel}, Piece{"&6 channels", Centerpiece::SixChannel},
          Piece{"&8 channels", Centerpiece::EightChannel}})
        menu.push_back(Choice("C&enterpiece", piece.Caption, Work.CenterpieceType[row] == piece.Code,
                              [line, code = piece.Code] { TakeCenterpiece(line, code); }));
}

void AddOtherScans(std::vector<LineMenuItem>& menu, int line) {
    const RowNo row = RowOfLine(line);
    menu.push_back(Entry(
        "&Same Channel and Range for All Scans of This Cell", [line] { SameForCell(line); }, true));
    menu.back().Item.Enabled = HasCell(row);
    const bool eight = Work.CenterpieceType[row] == Centerpiece::EightChannel;
    menu.push_back(Entry(eight ? "Channels &A to D of All Scans" : "Channels &A to C of All Scans",
                         [line] { AllChannels(line); }));
    menu.back().Item.Enabled = Work.CenterpieceType[row] >= Centerpiece::SixChannel;
}

} // namespace

std::vector<LineMenuItem> FileFormLineMenu(int line) {
    std::vector<LineMenuItem> menu;
    if (!FileForm.NameBox[LineAt(line)].Visible) return menu;
    menu.push_back(Entry("Read &Data File...", [line] { FileFormNameClick(line); }));
    if (Work.ScanFile[RowOfLine(line)].empty()) return menu;
    menu.push_back(Entry("Set Data &Range...", [line] { FileFormRangeClick(line); }));
    AddChannels(menu, line);
    AddCell(menu, line);
    menu.push_back(Entry(
        "File &Info...", [line] { FileFormHelpButton(line); }, true));
    menu.push_back(Entry("Re&move This Line", [line] { Remove(line); }));
    AddOtherScans(menu, line);
    return menu;
}

} // namespace Quillon
