#include "scandata/forms/FileFormChannels.h"

#include "platform/Platform.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/TableUndo.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Workspace.h"

#include <vector>

namespace Quillon {

namespace {

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

bool Reaches(RowNo row, int channel) {
    long first{};
    long last{};
    return PointsOfChannel(row, channel, first, last);
}

// Where a step from a caption leads, and the channels on the way that the scan does not reach.
struct ChannelStep {
    int Channel = 0;
    std::vector<int> NotReached;
};

ChannelStep StepFrom(int line, const std::string& caption) {
    const RowNo row = RowOfLine(line);
    ChannelStep step{NextChannel(caption, CodeOf(line)), {}};
    while (step.Channel > 0 && Work.ScanPoints[row] > 0 && !Reaches(row, step.Channel)) {
        step.NotReached.push_back(step.Channel);
        step.Channel = NextChannel(ChannelText(step.Channel), CodeOf(line));
    }
    return step;
}

void TellNotReached(RowNo row, const std::vector<int>& channels, const std::string& outcome) {
    std::string text;
    for (const int channel : channels)
        text += RowName(row) + ": " + NoPointsInChannel(row, channel) + ".\n";
    Tell(text + "\n" + outcome, Work.ProgramName, BoxIcon::Warning);
}

const char* const RangeStays = "The channel and the range stay as they are.";

void TellSkipped(RowNo row, const ChannelStep& step, bool staysWithout) {
    if (step.NotReached.empty()) return;
    const std::string taken = step.Channel > 0 ? "Channel " + ChannelText(step.Channel) + " is taken."
                              : staysWithout   ? RangeStays
                                               : "No channel is taken: the range is the whole scan.";
    TellNotReached(row, step.NotReached, taken);
}

void TakeChannel(int line, int channel) {
    ApplyChannel(line, channel);
    FileForm.FormChanged = 1;
    FileForm.CancelButton.Enabled = false;
    if (Work.DataChannel[line + 1] != Channel::None) FileFormRangeButton();
    FileForm.State.FocusOn = &FileForm.CopyFile;
}

void StepChannel(int line) {
    const RowNo row = RowOfLine(line);
    const ChannelStep step = StepFrom(line, FileForm.ChannelBox[LineAt(line)].Text);
    const bool stays =
        step.Channel == 0 && !step.NotReached.empty() && Work.DataChannel[row] == Channel::None;
    TellSkipped(row, step, stays);
    if (!stays) return TakeChannel(line, step.Channel);
    FileForm.State.FocusOn = &FileForm.Check1[LineAt(line)];
}

void TakeNamedChannel(int line, int channel) {
    const RowNo row = RowOfLine(line);
    if (Reaches(row, channel)) return TakeChannel(line, channel);
    TellNotReached(row, {channel}, RangeStays);
    FileForm.State.FocusOn = &FileForm.Check1[LineAt(line)];
}

void ShowRangeOf(int line) {
    const RowNo row = RowOfLine(line);
    const OneBased<float>& radii = Work.ScanRadius[row];
    ShowRange(line, radii[Work.FitRange[0][row]], radii[Work.FitRange[1][row]]);
}

} // namespace

void ApplyCenterpiece(int line, int code) {
    const RowNo row = RowOfLine(line);
    float inner{};
    float outer{};
    const ChannelRange range = SetCenterpiece(row, code, inner, outer);
    ShowCenterpiece(line);
    if (range == ChannelRange::None) return;
    FileForm.ChannelBox[LineAt(line)].Text = ChannelText(ChannelOfCenterpiece(row));
    if (range == ChannelRange::Set) return ShowRange(line, inner, outer);
    TellNotReached(row, {ChannelOfCenterpiece(row)}, "The range stays as it is.");
}

bool ApplyChannel(int line, int channel) {
    const RowNo row = RowOfLine(line);
    if (!SetChannel(row, channel) && Work.ScanPoints[row] > 0) return false;
    FileForm.ChannelBox[LineAt(line)].Text = ChannelText(channel);
    if (Work.ScanPoints[row] > 0) ShowRangeOf(line);
    return true;
}

void FileFormChannelClick(int line) {
    Work.CurrentRow = ToInt16(line);
    AsOneChange([line] { StepChannel(line); });
}

void FileFormChannelKey(int line, int channel) {
    if (!FileForm.ChannelBox[LineAt(line)].Visible || (channel == Channel::D && CodeOf(line) != 4))
        return Host.Beep();
    Work.CurrentRow = ToInt16(line);
    AsOneChange([line, channel] { TakeNamedChannel(line, channel); });
}

void FileFormCenterpieceKey(int line, int code) {
    if (FileForm.NameBox[LineAt(line)].Text.empty()) return;
    AsOneChange([line, code] {
        ApplyCenterpiece(line, code);
        if (FileForm.FormChanged == 0) FileForm.FormChanged = 2;
        FileForm.CancelButton.Enabled = false;
    });
}

bool StepCopiedChannel(int line) {
    const RowNo row = RowOfLine(line);
    const ChannelStep step = StepFrom(line, FileForm.ChannelBox[LineAt(line)].Text);
    const bool none = step.Channel == 0 && !step.NotReached.empty();
    TellSkipped(row, step, none);
    if (none) return false;
    TakeChannel(line, step.Channel);
    return true;
}

} // namespace Quillon
