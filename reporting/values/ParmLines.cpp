#include "reporting/values/ParmLines.h"

#include "fit/Confidence.h"
#include "fit/Misfit.h"
#include "fit/Undetermined.h"
#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr double MarginInBlanks = 3.5;

struct NamedText {
    std::string Name, Text;
};

std::string ErrorOfFit(FreePos freePosition) {
    if (!HasInverse()) return "";
    if (HasNoError(freePosition)) return "not determined";
    return "+/-  " + WithLeadingZero(ParmText(SlotOf(freePosition), DisplayedError(freePosition)));
}

std::string LimitsOfSearch(FreePos freePosition) {
    const SlotNo slot = SlotOf(freePosition);
    const auto limit = [&](bool upper) {
        if (!LimitFound(freePosition, upper)) return std::string("not found");
        return WithLeadingZero(
            ParmText(slot, ToUserUnits(slot, Work.ParmLimits[upper ? 1 : 0][freePosition])));
    };
    return "[ " + limit(false) + ", " + limit(true) + " ]";
}

// The names brought to one column, each with its text behind.
std::vector<std::string> InColumns(const std::vector<NamedText>& rows, const TextMeasure& measure) {
    int widest = 0;
    for (const NamedText& row : rows)
        widest = std::max(widest, measure(row.Name));
    const double column = widest + MarginInBlanks * measure(" ");
    std::vector<std::string> lines;
    for (const NamedText& row : rows)
        lines.push_back(PadToWidth(row.Name, column, measure) + row.Text);
    return lines;
}

} // namespace

int CountCharacters(const std::string& text) {
    return static_cast<int>(text.size());
}

std::string PadToWidth(std::string text, double width, const TextMeasure& measure) {
    if (measure(" ") <= 0) return text;
    while (measure(text) < width)
        text += ' ';
    return text;
}

std::string WithLeadingZero(std::string text) {
    if (!text.empty() && text.front() == '.') text.insert(text.begin(), '0');
    return text;
}

std::string FittedName(FreePos freePosition) {
    const SlotNo slot = SlotOf(freePosition);
    return ParmCaption(slot) + (Work.ParmTitle[slot].empty() ? "" : " ");
}

std::string AccuracyText(FreePos freePosition) {
    return Work.LimitsDone ? LimitsOfSearch(freePosition) : ErrorOfFit(freePosition);
}

std::string WholeAccuracyText(FreePos freePosition) {
    const std::string error = ErrorOfFit(freePosition);
    return Work.LimitsDone ? error + "  " + LimitsOfSearch(freePosition) : error;
}

std::vector<std::string> FittedLines(const TextMeasure& measure, std::string (*accuracy)(FreePos)) {
    std::vector<NamedText> rows;
    for (const FreePos a : EachFree())
        rows.push_back({FittedName(a), ParmText(SlotOf(a)) + "  " + accuracy(a)});
    return InColumns(rows, measure);
}

std::vector<std::string> HeldLines(const TextMeasure& measure) {
    std::vector<NamedText> rows;
    for (const SlotNo slot : EachSlot())
        if (Work.FreeMap[slot] == SlotHeld) rows.push_back({ParmCaption(slot, " "), ParmText(slot)});
    return InColumns(rows, measure);
}

std::vector<std::string> OffsetLinkLines() {
    std::vector<std::string> lines;
    if (!(Work.ConstraintFlags & OffsetBit)) return lines;
    for (const SetNo set : EachSet()) {
        const RowNo followed(Work.OffsetLink[RowOf(set)]);
        if (followed > NoRow)
            lines.push_back("Zero offset for set " + std::to_string(set.Number) + " was held = to set " +
                            std::to_string(SetOf(followed).Number));
    }
    return lines;
}

bool LacksALimit(FreePos place) {
    return Work.LimitsDone && !(LimitFound(place, false) && LimitFound(place, true));
}

namespace {

// Of parameters without a limit, each reason once, since one direction often concerns several of them.
void AddLimitReasons(std::vector<std::string>& lines) {
    for (const FreePos a : EachFree()) {
        if (!LacksALimit(a) || a.Number > Work.LimitReason.Hi() || Work.LimitReason[a].empty()) continue;
        const std::string line = "A limit was not found: " + Work.LimitReason[a];
        if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
    }
}

} // namespace

std::vector<std::string> FitWarningLines() {
    std::vector<std::string> lines;
    if (Work.Outcome.End == FitEnd::StoppedShort) lines.push_back(Work.Outcome.Sentence + ".");
    if (Work.FitDone && !Work.Outcome.Reason.empty()) lines.push_back(Work.Outcome.Reason);
    if (const std::string misfit = MisfitText(); !misfit.empty()) lines.push_back(misfit);
    if (Work.FitDone) AddLimitReasons(lines);
    return lines;
}

std::string HighCorrelationText(std::int16_t count) {
    return (count == 1 ? " is " : " are ") + std::to_string(count) + " parameter cross correlation" +
           (count == 1 ? "" : "s") + " > " + SingleText(Work.HighCorrelation);
}

std::string VeryHighCorrelationText(std::int16_t count) {
    if (count == 0) return "";
    return " and " + std::to_string(count) + " higher than " + SingleText(Work.VeryHighCorrelation);
}

std::string RunsZText() {
    return SingleText(ToSingle(RoundSignificant(static_cast<double>(Work.RunsZ), 3)));
}

} // namespace Quillon
