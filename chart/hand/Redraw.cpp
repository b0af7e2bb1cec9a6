#include "chart/hand/Redraw.h"

#include "chart/draw/DrawGraph.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/Charts.h"
#include "chart/layout/Layout.h"
#include "chart/records/ChartState.h"

namespace Quillon {

bool GraphMayChange() {
    return Chart.GraphHeld != 0 && Chart.Painting == 0;
}

void RedrawChart() {
    if (!GraphMayChange()) return;
    RecordMarkers();
    Replot();
    RedrawAsLaidOut();
    ChartMenuStatus(Charts);
}

void RedrawAsLaidOut() {
    ShowGraph();
    RepositionMarkers();
}

} // namespace Quillon
