#include "models/table/LoadingUnits.h"

#include "input/NUMINPUT.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <limits>

namespace Quillon {

double LoadingFactor(std::size_t species, RowNo row) {
    if (Work.ConcUnits != ConcUnit::Weight && Work.ConcUnits != ConcUnit::Mole) return 1.0;
    const float absorptivity = species == 0 ? Work.AbsorpA : Work.AbsorpB;
    const float extinction = species == 0 ? Work.ExtA : Work.ExtB;
    const double coefficient =
        static_cast<double>(Work.ConcUnits == ConcUnit::Weight ? absorptivity : extinction);
    return Divide(1.0, coefficient * static_cast<double>(Work.CellPath[row]) *
                           static_cast<double>(Work.ExtinctionRatio[species][row]));
}

const char* LoadingPicture() {
    return Work.ConcUnits == ConcUnit::Mole ? "0.000E+00" : "#0.0000";
}

const char* LoadingUnit() {
    if (Work.ConcUnits == ConcUnit::Weight) return "mg/mL";
    if (Work.ConcUnits == ConcUnit::Mole) return "molar";
    return Work.ConcUnits == ConcUnit::Absorbance ? "AU" : "fringes";
}

std::string LoadingHead(const std::string& caption) {
    constexpr int WeightOfFringes = 4;
    if (Work.ConcUnits < 0 || Work.ConcUnits > WeightOfFringes) return caption;
    const std::string unit = Work.ConcUnits == WeightOfFringes ? "mg/mL" : LoadingUnit();
    return caption.substr(0, caption.find('(') + 1) + unit + ")";
}

std::string ToleranceText(float tolerance) {
    constexpr double Largest = std::numeric_limits<float>::max();
    return SingleText(static_cast<float>(std::min(100.0 * static_cast<double>(tolerance), Largest)));
}

bool ShowsLoadingB() {
    return TraitsOfModel().TwoSpecies;
}

} // namespace Quillon
