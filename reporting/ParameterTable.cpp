#include "reporting/ParameterTable.h"

#include "fit/Confidence.h"
#include "fit/Undetermined.h"
#include "models/table/ParmScale.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/ParmLines.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

std::string ErrorOfSlot(SlotNo slot) {
    if (!IsFitted(slot) || !Work.FitDone || !HasInverse()) return "";
    const FreePos place = FreePosOf(slot);
    if (HasNoError(place)) return "not determined";
    return WithLeadingZero(ParmText(slot, DisplayedError(place)));
}

std::string LimitText(SlotNo slot, bool upper) {
    if (!IsFitted(slot) || !Work.FitDone || !Work.LimitsDone) return "";
    const FreePos place = FreePosOf(slot);
    if (!LimitFound(place, upper)) return "not found";
    return WithLeadingZero(ParmText(slot, ToUserUnits(slot, Work.ParmLimits[upper ? 1 : 0][place])));
}

ParameterRow RowFor(SlotNo slot) {
    return {slot,
            {ParmCaption(slot, " "), WithLeadingZero(ParmText(slot)), ErrorOfSlot(slot),
             LimitText(slot, false), LimitText(slot, true), SlotState(slot), ParameterNote(slot)}};
}

std::string TabbedLine(const std::array<std::string, ParameterHeads.size()>& cells) {
    std::string line;
    for (const std::string& cell : cells)
        line += (line.empty() ? "" : "\t") + cell; // a name is never empty
    return line + "\n";
}

} // namespace

std::vector<ParameterRow> ParameterRows() {
    std::vector<ParameterRow> rows;
    if (!Work.FitDone && !Work.FitValid) return rows;
    for (const SlotNo slot : EachSlot())
        if (IsInUse(slot)) rows.push_back(RowFor(slot));
    return rows;
}

std::string ParameterText(const std::vector<ParameterRow>& rows, const std::vector<std::size_t>& places) {
    std::string text;
    for (const char* head : ParameterHeads)
        text += (text.empty() ? "" : "\t") + std::string(head);
    text += "\n";
    for (const std::size_t place : places)
        text += TabbedLine(rows[place].Cells);
    return text;
}

} // namespace Quillon
