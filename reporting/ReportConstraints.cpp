#include "reporting/ReportConstraints.h"

#include "models/function/SharedConcentrations.h"
#include "models/table/LoadingMatch.h"
#include "models/table/LoadingUnits.h"
#include "reporting/values/ParmLines.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

std::string Row(const std::vector<std::string>& cells) {
    constexpr std::size_t Widths[] = {10, 12, 12, 12, 12, 11};
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t pad = Widths[i] > cells[i].size() ? Widths[i] - cells[i].size() : 0;
        line += i == 0 ? cells[i] + std::string(pad, ' ') : std::string(pad, ' ') + cells[i];
    }
    return line;
}

std::string MatchLine(SetNo set, std::size_t species, const LoadingMatch& match) {
    return Row({"Set " + std::to_string(set.Number) + (species == 0 ? ", A" : ", B"), match.Specified,
                match.Tolerance + "%", match.Found, match.Difference, match.Share});
}

void PrintMatches(std::vector<std::string>& lines) {
    lines.push_back(std::string("Match of Fit to Concentration Constraints (") + LoadingUnit() + ")");
    lines.push_back(Row({"", "Specified", "Tolerance", "Fit", "Difference", "Variance"}));
    double all = 0.0;
    for (const SetNo set : EachSet())
        for (const std::size_t species : {0U, 1U}) {
            if (!LoadingConstrains(species, RowOf(set))) continue;
            const LoadingMatch match = MatchOfLoading(species, set);
            lines.push_back(MatchLine(set, species, match));
            all += match.Fraction;
        }
    lines.push_back(ShareOfLoadings(all));
}

} // namespace

std::vector<std::string> PrintConstraintText() {
    std::vector<std::string> lines;
    if (Work.ConstraintFlags & ConcentrationBit) PrintMatches(lines);
    for (const auto& ties : {OffsetLinkLines(), ConcentrationLinkLines()})
        lines.insert(lines.end(), ties.begin(), ties.end());
    return lines;
}

} // namespace Quillon
