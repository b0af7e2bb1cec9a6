#include "models/SharedConcentrations.h"

#include "models/FitFrame.h"
#include "models/ModelTable.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

long LinkedSet(long set) {
    const Workspace& w = Work; // the thread's own is looked up once
    const long link = w.ConcLink[w.SetRow[set]];
    return link < 1 || link > w.MaxSets || w.SetOfRow[link] == set ? 0 : w.SetOfRow[link];
}

bool SharesB(long set) {
    const long slot = SlotB(set);
    return RuleOfSlot(slot).Holds == Quantity::LnSignal;
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
constexpr float SameWavelength = 3.0F;  // nm, to within which the monochromator returns

// The folder without the number of the scan's own wavelength in it: "run7/nm" of "run7/280nm". Some lay the
// wavelengths of a run into folders of their own.
std::string FolderOf(RowNo row) {
    const std::string& folder = Work.ScanDirectory[row];
    std::string text;
    for (std::size_t at = 0, behind = 0; at < folder.size(); at = behind) {
        const auto number = static_cast<float>(NumberAt(folder, at, behind));
        if (behind == at) behind = at + 1;
        const bool own =
            IsDigit(folder[at]) && std::fabs(number - Work.ScanWavelength[row]) <= SameWavelength;
        if (!own) text += folder.substr(at, behind - at);
    }
    return text;
}

bool SameSample(RowNo a, RowNo b) {
    return CellOf(a) != 0 && CellOf(a) == CellOf(b) && FolderOf(a) == FolderOf(b) &&
           Work.DataChannel[a] == Work.DataChannel[b];
}

bool SeesSameMolecules(RowNo a, RowNo b) {
    constexpr float SpeedTolerance = 0.01F; // the drive keeps its speed far better
    const float faster = std::max(Work.ScanRPM[a], Work.ScanRPM[b]);
    return SameSample(a, b) && std::fabs(Work.ScanRPM[a] - Work.ScanRPM[b]) <= SpeedTolerance * faster &&
           std::fabs(Work.ScanWavelength[a] - Work.ScanWavelength[b]) >= OtherWavelength;
}

} // namespace

long LeaderOf(long set) {
    const long leader = LinkedSet(set);
    return leader > 0 && LinkedSet(leader) == 0 ? leader : 0;
}

long LeadSlotA(long set) {
    const long leader = LeaderOf(set);
    return SlotA(leader > 0 ? leader : set);
}

long LeadSlotB(long set) {
    const long leader = SharesB(set) ? LeaderOf(set) : 0;
    return SlotB(leader > 0 ? leader : set);
}

double ReferenceX(RowNo row) {
    const double r1 = static_cast<double>(Work.ScanRadius[row][Work.FitRange[0][row]]);
    const double r2 = static_cast<double>(Work.ScanRadius[row][Work.FitRange[1][row]]);
    return (r1 * r1 + r2 * r2) / 4.0;
}

void ApplyConcentrationLinks() {
    for (long set = 1; set <= Work.NumSets; ++set) {
        if (LeaderOf(set) == 0) continue;
        FitFrame frame;
        LoadFrame(frame, set);
        Work.Parms[SlotA(set)] = ToSingle(frame.LnA);
        if (SharesB(set)) Work.Parms[SlotB(set)] = ToSingle(frame.LnB);
    }
}

std::vector<std::string> ConcentrationLinkLines() {
    std::vector<std::string> lines;
    for (long set = 1; set <= Work.NumSets; ++set)
        if (const long leader = LeaderOf(set); leader > 0)
            lines.push_back("Ln c of set " + std::to_string(set) + " was held = to that of set " +
                            std::to_string(leader) + ", at the same radius");
    return lines;
}

std::vector<ConcentrationTie> ProposedTies() {
    std::vector<ConcentrationTie> ties;
    const auto follows = [&](long set) {
        return std::any_of(ties.begin(), ties.end(), [&](const auto& tie) { return tie.Follower == set; });
    };
    for (long set = 2; set <= Work.NumSets; ++set)
        for (long leader = 1; leader < set; ++leader)
            if (!follows(leader) && SeesSameMolecules(RowOf(SetNo(leader)), RowOf(SetNo(set)))) {
                ties.push_back({set, leader});
                break;
            }
    return ties;
}

} // namespace Quillon
