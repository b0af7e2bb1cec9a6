#include "scandata/reader/MeanScan.h"

#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "scandata/reader/AdoptScan.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/ReadingsAlong.h"
#include "scandata/reader/ScanNames.h"
#include "scandata/table/LeftOut.h"
#include "workspace/records/SameSettings.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

constexpr long FewestPoints = 3; // in common

// A scan among those that are averaged.
struct Part {
    MeanPart File;
    std::string Path;
    long Cell = 0; // 0 not known
    float Rpm{}, Wavelength{};
    bool Fringes = false, Intensity = false;
    OneBased<float> Radii;
    std::array<OneBased<double>, 2> Columns{}; // readings; of intensities their log10, first and second

    double Weight() const { return static_cast<double>(std::max<std::int16_t>(File.Readings, 1)); }
};

Part TakePart(RowNo row, const std::string& path, const ScanReadResult& read) {
    Part part;
    part.File = {Work.ScanDirectory[row], FileTitle(path), Work.ScanSha256[row], Work.ScansAveraged[row]};
    part.Path = path;
    part.Cell = ScanNameOf(FileTitle(path)).Cell.value_or(read.Cell);
    part.Rpm = Work.ScanRPM[row];
    part.Wavelength = Work.ScanWavelength[row];
    part.Fringes = Work.InterferenceData != 0;
    part.Intensity = Work.IntensityOrder[row] != IntensityOrders::None;
    part.Radii = Work.ScanRadius[row];
    const OneBased<long> places = PlacesOfPoints(row);
    for (const std::size_t c : {std::size_t{0}, std::size_t{1}}) {
        part.Columns[c].Recreate(part.Radii.Hi());
        for (long p = 1; p <= part.Radii.Hi(); ++p)
            if (part.Intensity)
                part.Columns[c][p] = std::log10(static_cast<double>(Work.Intensity[c][row][places[p]]));
            else
                part.Columns[c][p] = static_cast<double>(Work.ScanValue[row][p]);
    }
    return part;
}

// What parts a scan from the last one; "" for the same measurement.
std::string WhyAnother(const Part& a, const Part& last) {
    const auto differ = [](const char* what, float x, float y, const char* unit) {
        return std::string(what) + " " + SingleText(x) + unit + " is not the " + SingleText(y) + unit +
               " of the last scan of the mean";
    };
    if (a.Cell > 0 && last.Cell > 0 && a.Cell != last.Cell)
        return differ("cell", static_cast<float>(a.Cell), static_cast<float>(last.Cell), "");
    if (!IsSameSpeed(a.Rpm, last.Rpm)) return differ("the speed of", a.Rpm, last.Rpm, " rpm");
    if (!IsSameWavelength(a.Wavelength, last.Wavelength))
        return differ("the wavelength of", a.Wavelength, last.Wavelength, " nm");
    if (a.Fringes != last.Fringes || a.Intensity != last.Intensity)
        return "it is not of the kind of the last scan of the mean";
    return "";
}

// The scans along the radii of the last one.
struct Average {
    const std::vector<Part>& Parts;
    std::vector<std::array<ReadingsAlong<double>, 2>> Along{};
    double Weights = 0.0;

    explicit Average(const std::vector<Part>& parts) : Parts(parts) {
        for (const Part& part : parts) {
            Along.push_back({ReadingsAlong<double>{part.Radii, part.Columns[0]},
                             ReadingsAlong<double>{part.Radii, part.Columns[1]}});
            Weights += part.Weight();
        }
    }

    struct Reading {
        std::array<double, 2> Mean{}; // of both columns
        double Spread = 0.0;
    };
    // At point p of the last scan, or at a radius where that has none (p 0); none where a scan ends before.
    std::optional<Reading> At(float radius, long p) {
        std::vector<std::array<double, 2>> values;
        for (std::size_t k = 0; k < Parts.size(); ++k) {
            const bool own = k + 1 == Parts.size() && p > 0; // a radius may stand twice
            const auto first = own ? Along[k][0].Value(p) : Along[k][0](radius);
            const auto second = own ? Along[k][1].Value(p) : Along[k][1](radius);
            if (!first || !second) return {}; // [decision: mean-of-all]
            values.push_back({*first, *second});
        }
        return Of(values);
    }

private:
    Reading Of(const std::vector<std::array<double, 2>>& values) const {
        Reading reading;
        for (std::size_t k = 0; k < values.size(); ++k)
            for (const std::size_t c : {std::size_t{0}, std::size_t{1}})
                reading.Mean[c] += Parts[k].Weight() / Weights * values[k][c];
        double squares = 0.0;
        for (std::size_t k = 0; k < values.size(); ++k)
            squares += Parts[k].Weight() * std::pow(SignalOf(values[k]) - SignalOf(reading.Mean), 2);
        const auto count = static_cast<double>(Parts.size());
        reading.Spread = std::sqrt(squares / ((count - 1.0) * Weights / count));
        return reading;
    }
    // Up to its sign.
    double SignalOf(const std::array<double, 2>& columns) const {
        return Parts.back().Intensity ? columns[0] - columns[1] : columns[0];
    }
};

void TakeSignals(RowNo row, Average& average) {
    OneBased<float> radii, values, spread;
    const OneBased<float>& all = average.Parts.back().Radii;
    for (long p = 1; p <= all.Hi(); ++p)
        if (const auto reading = average.At(all[p], p)) {
            radii.Resize(radii.Hi() + 1, all[p]);
            values.Resize(values.Hi() + 1, static_cast<float>(reading->Mean[0]));
            spread.Resize(spread.Hi() + 1, static_cast<float>(reading->Spread));
        }
    Work.ScanRadius[row] = std::move(radii);
    Work.ScanValue[row] = std::move(values);
    Work.MeanSpread[row] = std::move(spread);
}

// A reading of the last scan that has no absorbance stays one that has none.
void TakeLight(RowNo row, Average& average) {
    std::vector<IntensityReading> readings;
    OneBased<float> spread;
    const std::vector<LeftOutReading> out = Work.LeftOut[row];
    const OneBased<float> radii = Work.ScanRadius[row];
    const std::array<OneBased<float>, 2> light{Work.Intensity[0][row], Work.Intensity[1][row]};
    auto next = out.begin();
    for (long place = 1, p = 0; place <= light[0].Hi(); ++place) {
        const bool isOut = next != out.end() && next->Place == place;
        const float radius = isOut ? (next++)->Radius : radii[++p];
        const auto reading = average.At(radius, isOut ? 0 : p);
        if (!isOut && !reading) continue;
        spread.Resize(spread.Hi() + 1, isOut ? 0.0F : static_cast<float>(reading->Spread));
        if (isOut)
            readings.push_back({radius, light[0][place], light[1][place]});
        else
            readings.push_back({radius, static_cast<float>(std::pow(10.0, reading->Mean[0])),
                                static_cast<float>(std::pow(10.0, reading->Mean[1]))});
    }
    TakeIntensities(row, readings);
    Work.MeanSpread[row] = std::move(spread);
}

void TakeMean(RowNo row, const std::vector<Part>& parts, ScanReadResult& read) {
    Average average(parts);
    const long before = Work.ScanPoints[row];
    parts.back().Intensity ? TakeLight(row, average) : TakeSignals(row, average);
    const long points = Work.ScanRadius[row].Hi();
    if (points < FewestPoints) RaiseError("the scans of the mean do not have three radii in common");
    Work.ScanPoints[row] = Work.FitRange[1][row] = ToInt16(points);
    Work.FitRange[0][row] = 1;
    read.FirstRadius = Work.ScanRadius[row][1];
    read.LastRadius = Work.ScanRadius[row][points];
    double readings = 0.0;
    for (const Part& part : parts) {
        Work.MeanOf[row].push_back(part.File);
        readings += part.Weight();
    }
    const double most = static_cast<double>(std::numeric_limits<std::int16_t>::max());
    Work.ScansAveraged[row] = static_cast<std::int16_t>(std::min(readings, most));
    if (before == points) return;
    read.Remark += (read.Remark.empty() ? "" : "; ") + std::to_string(before - points) + " of " +
                   std::to_string(before) +
                   " readings are not in the mean, since one of the scans does not reach their radii";
}

void TellTwins(const std::vector<Part>& parts, ScanReadResult& read) {
    for (std::size_t i = 0; i < parts.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (parts[i].File.Sha256 == parts[j].File.Sha256 && !parts[i].File.Sha256.empty())
                read.Remark += (read.Remark.empty() ? "" : "; ") + parts[i].File.File +
                               " holds the same bytes as " + parts[j].File.File +
                               ", so that the mean is less certain than its count of scans says";
}

MeanReadResult Failed(const std::string& path, const std::string& reason) {
    MeanReadResult result;
    result.Read.Failure = {ReadFailure::Kinds::Content, false, ScanReadSentence, reason};
    result.Path = path;
    return result;
}

// Reads the scans before the last one, each through the row and out of it again.
MeanReadResult ReadOthers(const std::vector<std::string>& paths, RowNo row, std::vector<Part>& parts) {
    for (std::size_t i = 0; i + 1 < paths.size(); ++i) {
        const ScanReadResult read = AdoptScan(paths[i], row, Ratios::Left);
        if (!read.Ok) return {read, paths[i]};
        parts.insert(parts.end() - 1, TakePart(row, paths[i], read));
        const std::string why = WhyAnother(*(parts.end() - 2), parts.back());
        if (!why.empty()) return Failed(paths[i], why);
    }
    MeanReadResult good;
    good.Read.Ok = true;
    return good;
}

} // namespace

MeanReadResult AdoptMean(const std::vector<std::string>& paths, RowNo row, Ratios ratios) {
    Workspace before = Work;
    MeanReadResult result{AdoptScan(paths.back(), row, ratios), paths.back()};
    if (!result.Read.Ok || paths.size() == 1) return result;
    std::vector<Part> parts{TakePart(row, paths.back(), result.Read)};
    Workspace last = Work;
    MeanReadResult others = ReadOthers(paths, row, parts);
    Work = std::move(last);
    try {
        if (others.Read.Ok) TakeMean(row, parts, result.Read);
    } catch (const RuntimeError& error) {
        others = Failed(paths.back(), error.Text);
    }
    if (!others.Read.Ok) {
        Work = std::move(before);
        return others;
    }
    TellTwins(parts, result.Read);
    return result;
}

std::optional<double> RmsBetweenScans(RowNo row) {
    if (Work.MeanSpread[row].Empty()) return {};
    const OneBased<long> places = PlacesOfPoints(row);
    double squares = 0.0;
    long count = 0;
    for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row]; ++p, ++count)
        squares += std::pow(static_cast<double>(Work.MeanSpread[row][places[p]]), 2);
    return count > 0 ? std::optional(std::sqrt(squares / static_cast<double>(count))) : std::nullopt;
}

std::string MeanRemark(RowNo row) {
    const std::optional<double> rms = RmsBetweenScans(row);
    if (!rms) return "";
    std::string files;
    for (const MeanPart& part : Work.MeanOf[row])
        files += (files.empty() ? "" : ", ") + part.File;
    return "the mean of " + std::to_string(Work.MeanOf[row].size()) + " scans (" + files +
           "), rms between them " + FormatNumber(*rms, "0.00E-00") + " over the range";
}

} // namespace Quillon
