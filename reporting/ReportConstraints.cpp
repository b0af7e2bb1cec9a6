// The report's last part: how well the fit met the concentration constraints, and which zero offsets were
// tied.
#include "reporting/Report.h"

#include "input/NUMINPUT.h"
#include "models/SharedConcentrations.h"
#include "platform/Narrow.h"
#include "reporting/ParmLines.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

// A constrained species of a set, with the place of its pseudo-point.
struct Match {
    long Set, Row, Point;
    bool IsA;
};

std::vector<Match> ConcentrationMatches() {
    std::vector<Match> matches;
    long lastPoint = 0;
    for (long s = 1; s <= Work.NumSets; ++s) {
        lastPoint += Work.SetPts[s];
        const long row = Work.SetRow[s];
        const bool hasA = Work.ConcConstraintA[row] > 0.0F;
        const bool hasB = Work.ConcConstraintB[row] > 0.0F;
        if (hasA) matches.push_back({s, row, hasB ? lastPoint - 1 : lastPoint, true});
        if (hasB) matches.push_back({s, row, lastPoint, false});
    }
    return matches;
}

// From a set's signal to the unit that concentrations are shown in. Interference data are told as fringes.
double DisplayFactor(const Match& match) {
    if (Work.ConcUnits != 1 && Work.ConcUnits != 2) return 1.0;
    const float perWeight = match.IsA ? Work.AbsorpA : Work.AbsorpB;
    const float perMole = match.IsA ? Work.ExtA : Work.ExtB;
    const float ratio = Work.ExtinctionRatio[match.IsA ? 0 : 1][match.Row];
    return Divide(1.0, static_cast<double>(Work.ConcUnits == 1 ? perWeight : perMole) *
                           static_cast<double>(Work.CellPath[match.Row]) * static_cast<double>(ratio));
}

const char* UnitName() {
    if (Work.ConcUnits == 1) return "mg/mL";
    if (Work.ConcUnits == 2) return "molar";
    return Work.ConcUnits == 0 ? "AU" : "fringes";
}

double VarianceFraction(const Match& match) {
    const double residual =
        static_cast<double>(Work.PtY[match.Point]) - static_cast<double>(Work.PtFit[match.Point]);
    return Work.SumSq > 0.0 ? residual * residual / Work.SumSq : 0.0;
}

std::string Row(const std::vector<std::string>& cells) {
    constexpr std::size_t Widths[] = {10, 12, 12, 12, 12, 11};
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t pad = Widths[i] > cells[i].size() ? Widths[i] - cells[i].size() : 0;
        line += i == 0 ? cells[i] + std::string(pad, ' ') : std::string(pad, ' ') + cells[i];
    }
    return line;
}

std::string MatchLine(const Match& match) {
    const char* picture = Work.ConcUnits == 2 ? "0.000E+00" : "#0.0000";
    const double factor = DisplayFactor(match);
    const double specified =
        static_cast<double>((match.IsA ? Work.ConcConstraintA : Work.ConcConstraintB)[match.Row]);
    const double tolerance =
        static_cast<double>((match.IsA ? Work.ConcToleranceA : Work.ConcToleranceB)[match.Row]);
    const double found = static_cast<double>(Work.ConstraintFit[match.IsA ? 0 : 1][match.Row]);
    return Row({"Set " + std::to_string(match.Set) + (match.IsA ? ", A" : ", B"),
                FormatNumber(factor * specified, picture), SingleText(ToSingle(100.0 * tolerance)) + "%",
                FormatNumber(factor * found, picture),
                FormatNumber((found - specified) / specified, "+##0.0%;-##0.0%"),
                FormatNumber(VarianceFraction(match), "#0.00%")});
}

} // namespace

std::vector<std::string> PrintConstraintText() {
    std::vector<std::string> lines;
    if (Work.ConstraintFlags & ConcentrationBit) {
        lines.push_back(std::string("Match of Fit to Concentration Constraints (") + UnitName() + ")");
        lines.push_back(Row({"", "Specified", "Tolerance", "Fit", "Difference", "Variance"}));
        double all = 0.0;
        for (const Match& match : ConcentrationMatches()) {
            lines.push_back(MatchLine(match));
            all += VarianceFraction(match);
        }
        lines.push_back("Fraction of total fit variance from all concentration constraints = " +
                        FormatNumber(all, "#0.00%"));
    }
    for (const auto& ties : {OffsetLinkLines(), ConcentrationLinkLines()})
        lines.insert(lines.end(), ties.begin(), ties.end());
    return lines;
}

} // namespace Quillon
