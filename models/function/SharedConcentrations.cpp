#include "models/function/SharedConcentrations.h"

#include "models/function/FitFrame.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"
#include "workspace/records/SameSettings.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

SetNo LinkedSet(SetNo set) {
    const Workspace& w = Work; // the thread's own is looked up once
    const RowNo link(w.ConcLink[RowNo(w.SetRow[set])]);
    if (link < RowNo(1) || link > RowNo(w.MaxSets)) return NoSet;
    const SetNo linked(w.SetOfRow[link]);
    return linked == set ? NoSet : linked;
}

bool SharesB(SetNo set) {
    return RuleOfSlot(SlotB(set)).Holds == Quantity::LnSignal;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The whole number that starts at a place of a text, and the place behind it; the place itself where no digit
// stands there. Nine digits at most: longer ones are no number of a cell or a wavelength.
long NumberAt(const std::string& text, std::size_t at, std::size_t& behind) {
    long number = 0;
    for (behind = at; behind < text.size() && behind < at + 9 && IsDigit(text[behind]); ++behind)
        number = 10 * number + (text[behind] - '0');
    return number;
}

// 2 of "run7-s0001-c2-n0003.ra1", the names of newer instruments: step of speed, cell, replicate. 0 for
// another name.
long CellField(const std::string& name) {
    for (std::size_t at = name.find("-s"); at != std::string::npos; at = name.find("-s", at + 1)) {
        std::size_t behind = 0, end = 0;
        NumberAt(name, at + 2, behind);
        if (behind == at + 2 || name.compare(behind, 2, "-c") != 0) continue;
        if (const long cell = NumberAt(name, behind + 2, end); end > behind + 2) return cell;
    }
    return 0;
}

// The cell that a name tells: its field, or the digit that ends it, 3 of "00012.RA3". 0 for none.
long CellOf(RowNo row) {
    const std::string& name = Work.ScanFile[row];
    if (const long cell = CellField(name); cell > 0) return cell;
    return !name.empty() && IsDigit(name.back()) ? name.back() - '0' : 0;
}

constexpr float OtherWavelength = 5.0F; // nm

// The folder without the number of the scan's own wavelength in it: "run7/nm" of "run7/280nm". Some lay the
// wavelengths of a run into folders of their own.
std::string FolderOf(RowNo row) {
    const std::string& folder = Work.ScanDirectory[row];
    std::string text;
    for (std::size_t at = 0, behind = 0; at < folder.size(); at = behind) {
        const auto number = static_cast<float>(NumberAt(folder, at, behind));
        if (behind == at) behind = at + 1;
        const bool own = IsDigit(folder[at]) && IsSameWavelength(number, Work.ScanWavelength[row]);
        if (!own) text += folder.substr(at, behind - at);
    }
    return text;
}

bool SameSample(RowNo a, RowNo b) {
    return CellOf(a) != 0 && CellOf(a) == CellOf(b) && FolderOf(a) == FolderOf(b) &&
           Work.DataChannel[a] == Work.DataChannel[b];
}

bool SeesSameMolecules(RowNo a, RowNo b) {
    return SameSample(a, b) && IsSameSpeed(Work.ScanRPM[a], Work.ScanRPM[b]) &&
           std::fabs(Work.ScanWavelength[a] - Work.ScanWavelength[b]) >= OtherWavelength;
}

} // namespace

SetNo LeaderOf(SetNo set) {
    const SetNo leader = LinkedSet(set);
    return leader > NoSet && LinkedSet(leader) == NoSet ? leader : NoSet;
}

SlotNo LeadSlotA(SetNo set) {
    const SetNo leader = LeaderOf(set);
    return SlotA(leader > NoSet ? leader : set);
}

SlotNo LeadSlotB(SetNo set) {
    const SetNo leader = SharesB(set) ? LeaderOf(set) : NoSet;
    return SlotB(leader > NoSet ? leader : set);
}

double ReferenceX(RowNo row) {
    const double r1 = static_cast<double>(Work.ScanRadius[row][Work.FitRange[0][row]]);
    const double r2 = static_cast<double>(Work.ScanRadius[row][Work.FitRange[1][row]]);
    return (r1 * r1 + r2 * r2) / 4.0;
}

void ApplyConcentrationLinks() {
    for (const SetNo set : EachSet()) {
        if (LeaderOf(set) == NoSet) continue;
        FitFrame frame;
        LoadFrame(frame, set);
        Work.Parms[SlotA(set)] = ToSingle(frame.LnA);
        if (SharesB(set)) Work.Parms[SlotB(set)] = ToSingle(frame.LnB);
    }
}

std::vector<std::string> ConcentrationLinkLines() {
    std::vector<std::string> lines;
    for (const SetNo set : EachSet())
        if (const SetNo leader = LeaderOf(set); leader > NoSet)
            lines.push_back("Ln c of set " + std::to_string(set.Number) + " was held = to that of set " +
                            std::to_string(leader.Number) + ", at the same radius");
    return lines;
}

std::vector<ConcentrationTie> ProposedTies() {
    std::vector<ConcentrationTie> ties;
    const auto follows = [&](SetNo set) {
        return std::any_of(ties.begin(), ties.end(), [&](const auto& tie) { return tie.Follower == set; });
    };
    for (const SetNo set : EachSet())
        for (SetNo leader(1); leader < set; ++leader)
            if (!follows(leader) && SeesSameMolecules(RowOf(leader), RowOf(set))) {
                ties.push_back({set, leader});
                break;
            }
    return ties;
}

} // namespace Quillon
