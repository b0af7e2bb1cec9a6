#include "chart/scale/Mapping.h"

#include "chart/pens/Device.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

#include <cmath>

namespace Quillon {

namespace {

void SetOne(double low, double high, int p1, int p2, double& scale, double& offset) {
    scale = (p2 - p1) / (high - low);
    if (!std::isfinite(scale)) scale = 0.0;
    offset = scale * low - p1;
    if (!std::isfinite(offset)) offset = -p1;
}

} // namespace

void SetMapping(double xmin, double ymin, double xmax, double ymax, int px1, int py1, int px2, int py2) {
    SetOne(xmin, xmax, px1, px2, Chart.XScale, Chart.XOffset);
    SetOne(ymin, ymax, py1, py2, Chart.YScale, Chart.YOffset);
}

void SetFrameMapping() {
    const GraphBox& frame = Chart.Spec.Frame;
    const GraphAxis& x = Chart.Spec.AxisX1;
    const GraphAxis& y = Chart.Spec.AxisY1;
    SetMapping(x.Min, y.Min, x.Max, y.Max, frame.X1, frame.Y2, frame.X2, frame.Y1);
}

double MapX(double x) {
    return Chart.XScale * x - Chart.XOffset;
}
double MapY(double y) {
    return Chart.YScale * y - Chart.YOffset;
}
std::int16_t DeviceX(double x) {
    return DeviceUnits(MapX(x));
}
std::int16_t DeviceY(double y) {
    return DeviceUnits(MapY(y));
}

double AxisXAt(double px) {
    return Chart.XScale != 0.0 ? (Chart.XOffset + px) / Chart.XScale
                               : static_cast<double>(Chart.Spec.AxisX1.Min);
}

double AxisYAt(double py) {
    return Chart.YScale != 0.0 ? (Chart.YOffset + py) / Chart.YScale
                               : static_cast<double>(Chart.Spec.AxisY1.Min);
}

} // namespace Quillon
