#include "models/table/LoadingMatch.h"

#include "input/NUMINPUT.h"
#include "models/table/LoadingUnits.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

constexpr const char* SharePicture = "#0.00%";

float Loading(std::size_t species, RowNo row) {
    return species == 0 ? Work.ConcConstraintA[row] : Work.ConcConstraintB[row];
}

float Tolerance(std::size_t species, RowNo row) {
    return species == 0 ? Work.ConcToleranceA[row] : Work.ConcToleranceB[row];
}

// The pseudo-point of a constrained species: the last point of the set, or the one before it for A where B
// has one as well.
long PseudoPoint(std::size_t species, SetNo set) {
    const long last = LastPointOf(set);
    return species == 0 && LoadingConstrains(1, RowOf(set)) ? last - 1 : last;
}

double FractionOf(long point) {
    const double residual = static_cast<double>(Work.PtY[point]) - static_cast<double>(Work.PtFit[point]);
    return Work.SumSq > 0.0 ? residual * residual / Work.SumSq : 0.0;
}

} // namespace

bool LoadingConstrains(std::size_t species, RowNo row) {
    return (Work.ConstraintFlags & ConcentrationBit) && Loading(species, row) > 0.0F;
}

LoadingMatch MatchOfLoading(std::size_t species, SetNo set) {
    const RowNo row = RowOf(set);
    const double factor = LoadingFactor(species, row);
    const double loading = static_cast<double>(Loading(species, row));
    LoadingMatch match;
    match.Specified = FormatNumber(factor * loading, LoadingPicture());
    match.Tolerance = ToleranceText(Tolerance(species, row));
    if (!LoadingConstrains(species, row)) return match;
    const double found = static_cast<double>(Work.ConstraintFit[species][row]);
    match.Fraction = FractionOf(PseudoPoint(species, set));
    match.Found = FormatNumber(factor * found, LoadingPicture());
    match.Difference = FormatNumber((found - loading) / loading, "+##0.0%;-##0.0%");
    match.Share = FormatNumber(match.Fraction, SharePicture);
    return match;
}

std::string ShareOfLoadings(double fraction) {
    return "Fraction of total fit variance from all concentration constraints = " +
           FormatNumber(fraction, SharePicture);
}

} // namespace Quillon
