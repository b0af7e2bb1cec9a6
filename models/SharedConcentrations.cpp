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

// '3' of "00012.RA3"; 0 for a name that ends in no digit.
char CellOf(RowNo row) {
    const std::string& name = Work.ScanFile[row];
    const char last = name.empty() ? '\0' : name.back();
    return last >= '1' && last <= '9' ? last : '\0';
}

bool SameSample(RowNo a, RowNo b) {
    return CellOf(a) != '\0' && CellOf(a) == CellOf(b) && Work.ScanDirectory[a] == Work.ScanDirectory[b] &&
           Work.DataChannel[a] == Work.DataChannel[b];
}

bool SeesSameMolecules(RowNo a, RowNo b) {
    constexpr float SpeedTolerance = 0.01F; // the drive keeps its speed far better
    constexpr float OtherWavelength = 5.0F; // nm; the monochromator returns to within 3
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
