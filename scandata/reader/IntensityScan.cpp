#include "scandata/reader/IntensityScan.h"

#include "platform/Letters.h"
#include "scandata/reader/ScanWriter.h"
#include "scandata/table/LeftOut.h"
#include "workspace/records/SameSettings.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// log10(second / first), summed: positive where the first column is the sample.
double SumOfLogs(RowNo row) {
    double sum = 0.0;
    for (long p = 1; p <= Work.Intensity[0][row].Hi(); ++p) {
        const float first = Work.Intensity[0][row][p];
        const float second = Work.Intensity[1][row][p];
        if (HasAbsorbance(first, second))
            sum += static_cast<double>(AbsorbanceOf(first, second, IntensityOrders::SampleFirst));
    }
    return sum;
}

IntensityOrders::Code OrderOf(double sumOfLogs) {
    return sumOfLogs < 0.0 ? IntensityOrders::ReferenceFirst : IntensityOrders::SampleFirst;
}

void KeepColumns(RowNo row, const std::vector<IntensityReading>& readings) {
    const long count = static_cast<long>(readings.size());
    for (OneBased<float>* column : {&Work.Intensity[0][row], &Work.Intensity[1][row]})
        column->Recreate(count);
    for (long p = 1; p <= count; ++p) {
        const IntensityReading& reading = readings[static_cast<std::size_t>(p) - 1];
        Work.Intensity[0][row][p] = reading.First;
        Work.Intensity[1][row][p] = reading.Second;
    }
}

// Radii and absorbances of the readings that have one; the others are left out.
void PartReadings(RowNo row, const std::vector<IntensityReading>& readings, IntensityOrders::Code order) {
    OneBased<float> radii, values;
    std::vector<LeftOutReading> out;
    long place = 0;
    for (const IntensityReading& reading : readings) {
        ++place;
        if (!HasAbsorbance(reading.First, reading.Second)) {
            out.push_back({ToInt16(place), LeftOutBy::Intensity, reading.Radius, 0.0F});
            continue;
        }
        radii.Resize(radii.Hi() + 1, reading.Radius);
        values.Resize(values.Hi() + 1, AbsorbanceOf(reading.First, reading.Second, order));
    }
    if (radii.Empty()) RaiseError("there are no points: at no radius are both intensities above 0");
    Work.ScanRadius[row] = std::move(radii);
    Work.ScanValue[row] = std::move(values);
    Work.LeftOut[row] = std::move(out);
}

// Sample and reference of each point of the range.
struct Light {
    float Sample, Reference;
};
std::vector<Light> LightInRange(RowNo row) {
    const OneBased<long> places = PlacesOfPoints(row);
    const std::size_t sample = Work.IntensityOrder[row] == IntensityOrders::SampleFirst ? 0 : 1;
    std::vector<Light> light;
    for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row]; ++p)
        light.push_back({Work.Intensity[sample][row][places[p]], Work.Intensity[1 - sample][row][places[p]]});
    return light;
}

IntensitySpan SpanOf(const std::vector<Light>& light, float Light::*side) {
    if (light.empty()) return {};
    IntensitySpan span{light[0].*side, 0.0F, light[0].*side};
    double sum = 0.0;
    for (const Light& each : light) {
        span.Lowest = std::min(span.Lowest, each.*side);
        span.Highest = std::max(span.Highest, each.*side);
        sum += static_cast<double>(each.*side);
    }
    span.Mean = static_cast<float>(sum / static_cast<double>(light.size()));
    return span;
}

} // namespace

bool HasAbsorbance(float first, float second) {
    return first > 0.0F && second > 0.0F;
}

float AbsorbanceOf(float first, float second, IntensityOrders::Code order) {
    const bool sampleFirst = order == IntensityOrders::SampleFirst;
    const double sample = static_cast<double>(sampleFirst ? first : second);
    const double reference = static_cast<double>(sampleFirst ? second : first);
    return static_cast<float>(std::log10(reference / sample));
}

bool IsIntensityScan(std::string_view parameterLine, std::string_view fileName) {
    if (!parameterLine.empty() && CapitalLetter(parameterLine[0]) == 'I') return true;
    const std::size_t dot = fileName.rfind('.');
    return dot != std::string_view::npos && dot + 2 < fileName.size() &&
           CapitalLetter(fileName[dot + 1]) == 'R' && CapitalLetter(fileName[dot + 2]) == 'I';
}

void TakeIntensities(RowNo row, const std::vector<IntensityReading>& readings) {
    KeepColumns(row, readings);
    const IntensityOrders::Code order = OrderOf(SumOfLogs(row));
    PartReadings(row, readings, order);
    Work.IntensityOrder[row] = order;
}

void SetIntensityOrder(RowNo row, IntensityOrders::Code order) {
    if (Work.IntensityOrder[row] == IntensityOrders::None || Work.IntensityOrder[row] == order) return;
    Work.IntensityOrder[row] = order;
    const auto absorbance = [row, order](long place) {
        return AbsorbanceOf(Work.Intensity[0][row][place], Work.Intensity[1][row][place], order);
    };
    const OneBased<long> places = PlacesOfPoints(row);
    for (long p = 1; p <= Work.ScanPoints[row]; ++p)
        Work.ScanValue[row][p] = absorbance(places[p]);
    for (LeftOutReading& out : Work.LeftOut[row])
        if (out.Why != LeftOutBy::Intensity) out.Value = absorbance(out.Place);
    Work.SetChanged[row] = FlagTrue;
    if (!SetCeiling(row, Work.SignalCeiling[row])) SetCeiling(row, 0.0F);
}

bool SameMeasurement(RowNo a, RowNo b) {
    return CellNumberOf(Work.ScanFile[a]) == CellNumberOf(Work.ScanFile[b]) &&
           IsSameSpeed(Work.ScanRPM[a], Work.ScanRPM[b]) &&
           IsSameWavelength(Work.ScanWavelength[a], Work.ScanWavelength[b]);
}

void DecideIntensityOrders(const std::vector<RowNo>& rows) {
    std::vector<RowNo> intensity;
    for (const RowNo row : rows)
        if (Work.IntensityOrder[row] != IntensityOrders::None) intensity.push_back(row);
    for (const RowNo row : intensity) {
        double sum = 0.0;
        for (const RowNo other : intensity)
            if (SameMeasurement(row, other)) sum += SumOfLogs(other);
        SetIntensityOrder(row, OrderOf(sum));
    }
}

std::string IntensityRemark(RowNo row) {
    if (Work.IntensityOrder[row] == IntensityOrders::None) return "";
    const bool first = Work.IntensityOrder[row] == IntensityOrders::SampleFirst;
    std::string text = "intensities, taken as absorbance with the sample in the " +
                       std::string(first ? "first" : "second") + " column";
    const long out = CountLeftOut(row, LeftOutBy::Intensity);
    if (out > 0)
        text += "; " + std::to_string(out) + (out == 1 ? " reading that is" : " readings that are") +
                " not above 0 left out";
    return text;
}

std::string IntensityOrderWord(RowNo row) {
    switch (Work.IntensityOrder[row]) {
    case IntensityOrders::SampleFirst:
        return "sample-first";
    case IntensityOrders::ReferenceFirst:
        return "reference-first";
    default:
        return "";
    }
}

std::array<IntensitySpan, 2> IntensitySpans(RowNo row) {
    const std::vector<Light> light = LightInRange(row);
    return {SpanOf(light, &Light::Sample), SpanOf(light, &Light::Reference)};
}

} // namespace Quillon
