#include "graphs/kinds/SpecialOptions.h"

#include "chart/CHART.h"
#include "chart/Charts.h"

namespace Quillon {

void OfferLogOption(const std::string& caption) {
    ClearSpecialOptions();
    if (!caption.empty()) OfferSpecialOption(LogYOption, caption, ConvertYToLog);
}

void ConvertYToLog() {
    if (!GraphMayChange() || !Chart.GraphDrawn) return;
    StoredYToLog();
    Chart.Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Charts.SpecialOpts[LogYOption].Enabled = false; // the logarithm of a logarithm is of no use
    ClearZoom();
    Replot();
    RedrawAsLaidOut();
}

} // namespace Quillon
