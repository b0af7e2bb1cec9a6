#include "chart/hand/Reading.h"

#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/FormatTic.h"

namespace Quillon {

namespace {

constexpr int CursorDigits = 3; // digits that a reading has beyond the tic labels

} // namespace

std::string RoundedText(const GraphAxis& axis, float value) {
    SetLog10Axis(axis);
    return FormatTic(static_cast<double>(value), axis.Decimals + CursorDigits, axis.TicFormat);
}

std::string AxisReading(bool ofX, double value) {
    return RoundedText(ofX ? Chart.Spec.AxisX1 : Chart.Spec.AxisY1, FiniteSingle(value));
}

} // namespace Quillon
