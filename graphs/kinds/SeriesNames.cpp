#include "graphs/kinds/SeriesNames.h"

#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/Latin1.h"
#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

constexpr float SameWavelength = 1.0F; // nm; the monochromator repeats itself no better

std::string RangeText(SetNo set) {
    const RowNo row = RowOf(set);
    const auto radius = [row](std::size_t end) {
        return FormatNumber(static_cast<double>(Work.ScanRadius[row][Work.FitRange[end][row]]), "0.00");
    };
    return radius(0) + "-" + radius(1) + " cm";
}

// What the sets whose file bears the same name as that of a set differ in from it. Names are compared as they
// are shown: letters beyond Latin-1 are question marks there.
struct Repetition {
    bool Speed = false, Wavelength = false;
    bool WholeLabel = false;        // another set has the label too
    bool WholeLabelInRange = false; // and the same range
};

Repetition RepetitionOf(SetNo set) {
    Repetition found;
    const RowNo row = RowOf(set);
    const auto shown = [](SetNo of) { return Latin1Text(Work.SetLabel[of.Number]); };
    const std::string label = shown(set);
    for (const SetNo other : EachSet()) {
        if (other == set || FileTitle(shown(other)) != FileTitle(label)) continue;
        const RowNo otherRow = RowOf(other);
        found.Speed |= Work.ScanRPM[row] != Work.ScanRPM[otherRow];
        found.Wavelength |=
            std::fabs(Work.ScanWavelength[row] - Work.ScanWavelength[otherRow]) > SameWavelength;
        if (shown(other) != label) continue;
        found.WholeLabel = true;
        found.WholeLabelInRange |= RangeText(other) == RangeText(set);
    }
    return found;
}

} // namespace

std::string SeriesName(SetNo set) {
    std::string name = Latin1Text(Work.SetLabel[set.Number]);
    const Repetition repeated = RepetitionOf(set);
    const RowNo row = RowOf(set);
    if (repeated.Speed)
        name += ", " + SingleText(Work.ScanRPM[row]) + " rpm";
    else if (repeated.Wavelength)
        name += ", " + SingleText(Work.ScanWavelength[row]) + " nm";
    if (!repeated.WholeLabel) return name;
    return name + ", " + (repeated.WholeLabelInRange ? "set " + std::to_string(set.Number) : RangeText(set));
}

std::string WithPath(const std::string& text, const std::string& path) {
    static const std::string gap = "...";
    if (text.size() + path.size() <= LongestTitle) return text + path;
    std::size_t from = path.size() - (LongestTitle - text.size() - gap.size());
    for (std::size_t i = from; i + 1 < path.size(); ++i) // from a separator on, unless that leaves nothing
        if (IsSeparator(path[i])) {
            from = i;
            break;
        }
    return text + gap + path.substr(from);
}

std::string DataFrom() {
    return Work.LabelPrefix.empty() ? "" : WithPath("Data from: ", Latin1Text(Work.LabelPrefix));
}

} // namespace Quillon
