#include "graphs/kinds/SpeciationGraph.h"

#include "graphs/kinds/GraphParts.h"
#include "input/NUMINPUT.h"
#include "models/species/Speciation.h"
#include "models/table/ModelTable.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

std::string TotalTitle() {
    switch (SpeciationUnit()) {
    case SpeciesUnit::Weight:
        return "Total Concentration (mg/mL)";
    case SpeciesUnit::Molar:
        return "Total Concentration (molar, as monomers)";
    default:
        return Work.ConcUnits == ConcUnit::Fringes || Work.InterferenceData ? "Total Fringes"
                                                                            : "Total Absorbance";
    }
}

std::string ProportionText(double shareOfB) {
    if (SpeciesOfModel(Work.Model).Count < 2 || shareOfB == 0.0) return Work.FitTitle;
    return Work.FitTitle + ", " + FormatNumber(100.0 * shareOfB, "#0.0") + "% of the monomers are " +
           (TraitsOfModel().TwoSpecies ? "B" : "inactive");
}

} // namespace

bool MakeSpeciationGraph() {
    const SpeciationCurve curve = ComputeSpeciation();
    const long points = std::ssize(curve.Totals);
    const long series = std::ssize(curve.Parts);
    SetTable x(points, series), y(points, series);
    for (long k = 1; k <= series; ++k)
        for (long i = 1; i <= points; ++i) {
            x(i, k) = static_cast<float>(curve.Totals[static_cast<std::size_t>(i - 1)]);
            y(i, k) = static_cast<float>(
                curve.Parts[static_cast<std::size_t>(k - 1)][static_cast<std::size_t>(i - 1)]);
        }
    GraphSpec spec = StartGraph(PlotStyles::Lines);
    spec.SymbolMode = 3;
    spec.Title1.Text = ProportionText(curve.ShareOfB);
    spec.AxisX1.Title.Text = TotalTitle();
    spec.AxisY1.Title.Text = "Part of the Monomers";
    spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    spec.AxisX1.LogBase = 10.0F;
    spec.AxisX1.TicInterval = 3.0F;
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    return HandOver(spec, x, y, SpeciesNames());
}

void GraphSpeciation() {
    try {
        if (MakeSpeciationGraph())
            ShowCharts(OriginOf("Speciation Curve", AllSets, FitStands, MakeSpeciationGraph));
    } catch (const RuntimeError& error) {
        Tell("The speciation curve cannot be drawn: " + error.Text, Work.ProgramName, BoxIcon::Warning);
    }
}

} // namespace Quillon
