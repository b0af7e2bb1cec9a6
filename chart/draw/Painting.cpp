#include "chart/draw/Painting.h"

#include "chart/pens/Device.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

namespace Quillon {

namespace {

constexpr long PointsBetweenEvents = 50;

} // namespace

DeviceRect FrameClip() {
    const GraphBox& frame = Chart.Spec.Frame;
    const int x = Chart.State.ClearX / 2 + 1;
    const int y = Chart.State.ClearY / 2 + 1;
    return {frame.X1 - x, frame.Y1 - y, frame.X2 + x, frame.Y2 + y};
}

bool CountPoint(long& count) {
    if (++count % PointsBetweenEvents != 0) return true;
    ServeDrawing();
    return !DrawingCancelled();
}

} // namespace Quillon
