#include "scandata/reader/ScanReader.h"

#include "input/NUMINPUT.h"
#include "platform/Letters.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/reader/ExtinctionRatios.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/ScanLines.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/ReadingRemarks.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

bool StartsWithAnyCase(std::string_view text, std::string_view capitals) {
    return text.size() >= capitals.size() &&
           std::equal(capitals.begin(), capitals.end(), text.begin(),
                      [](char capital, char c) { return capital == CapitalLetter(c); });
}

void ReadHeader(HeaderFields header, RowNo row, ScanReadResult& result) {
    Work.ScanTemperature[row] = result.Temperature = SingleOf(NextHeaderField(header));
    Work.ScanRPM[row] = result.Rpm = SingleOf(NextHeaderField(header));
    Work.ScanTime[row] = WholeOf<std::int32_t>(NextHeaderField(header));
    Work.ScanOmega2t[row] = SingleOf(NextHeaderField(header));
    Work.ScanWavelength[row] = SingleOf(NextHeaderField(header));
    // [decision: count-is-cut]
    Work.ScansAveraged[row] = WholeOf<std::int16_t>(LastHeaderField(header));
}

void StorePoint(OneBased<float>& radii, OneBased<float>& values, long i, const PointLine& point) {
    // Room for twice as many each time; the length comes right with the last point.
    if (i > radii.Hi()) radii.Resize(std::max(i, 2 * radii.Hi()));
    if (i > values.Hi()) values.Resize(std::max(i, 2 * values.Hi()));
    radii[i] = point.Radius;
    values[i] = point.Value;
}

// The shared last step of both reads.
void CutToLength(OneBased<float>& radii, OneBased<float>& values, long points) {
    radii.Resize(points);
    values.Resize(points);
}

// The part of the chosen path before the name, with its separator.
std::string ChosenDirectory(const std::string& path) {
    const std::size_t found =
        Work.ChosenName.empty() ? std::string::npos : Work.ChosenPath.find(Work.ChosenName);
    if (found != std::string::npos) return Work.ChosenPath.substr(0, found);
    return path.substr(0, path.size() - FileTitle(path).size());
}

void ReadComment(std::string_view line, RowNo row, ScanReadResult& result) {
    result.Comment = line;
    Work.ScanComment[row] = WithoutBlanks(line);
}

// Some interference files put the pixel scale in front of the comment.
void DropPixelScale(std::string_view line, RowNo row) {
    if (!Work.InterferenceData || !StartsWithAnyCase(line, "CM/PIXEL:")) return;
    const std::size_t comma = line.find(',');
    const std::size_t start = comma == std::string_view::npos ? 1 : comma + 2;
    Work.ScanComment[row] = line.substr(std::min(start, line.size()));
}

// What belongs to the readings of the former scan.
void ForgetReadings(RowNo row) {
    Work.LeftOut[row].clear();
    Work.SignalCeiling[row] = 0.0F;
    Work.IntensityOrder[row] = IntensityOrders::None;
    for (PerRow<OneBased<float>>& column : Work.Intensity)
        column[row].Recreate(0);
    Work.MeanOf[row].clear();
    Work.MeanSpread[row].Recreate(0);
}

void TakeScan(RowNo row, const std::string& path, ScanReadResult& result) {
    const long points = Work.ScanRadius[row].Hi();
    Work.ScanPoints[row] = ToInt16(points);
    Work.FitRange[0][row] = 1;
    Work.FitRange[1][row] = Work.ScanPoints[row];
    result.FirstRadius = Work.ScanRadius[row][1];
    result.LastRadius = Work.ScanRadius[row][points];
    Work.ScanDirectory[row] = ChosenDirectory(path);
    Work.BaselineSha256[row].clear();
    Work.SetNoise[row] = 0.0F;
    Work.BaselineShifted[row] = FlagFalse;
    Work.BaselineShift[row] = 0.0F;
    Work.NewData = FlagTrue;
    Work.DataChosen = FlagFalse;
}

// Whole nanometres, however odd the value: only a difference above 1 is asked of it.
int WholeWavelength(float wavelength) {
    constexpr double limit = 1e9;
    return static_cast<int>(std::nearbyint(std::clamp(static_cast<double>(wavelength), -limit, limit)));
}

constexpr const char* NoParameterLine = "the file ends before its parameter line";

ReadFailure TooManyPoints() {
    return {ReadFailure::Kinds::TooManyPoints, false,
            "There are too many data points. Exit program, increase the MaxPtsPerSet value in the " +
                Work.ProgramName + ".ini file, and then try again.",
            "the scan holds more than " + std::to_string(Work.MaxPtsPerSet - 1) + " points"};
}

PointList ReadRow(TextItems& file, RowNo row) {
    return ReadPoints(file, [row](long i, const PointLine& point) {
        StorePoint(Work.ScanRadius[row], Work.ScanValue[row], i, point);
        // [decision: limit-is-too-many]
        return i < Work.MaxPtsPerSet;
    });
}

PointList ReadIntensities(TextItems& file, std::vector<IntensityReading>& readings) {
    const auto store = [&](long i, const PointLine& point) {
        readings.push_back({point.Radius, point.Value, point.Second});
        return i < Work.MaxPtsPerSet;
    };
    return ReadPoints(file, store, ThirdNumber::Reading);
}

std::string RemarkOnList(const TextItems& file, const PointList& list) {
    const std::string readings = RemarkOnReadings(file, list), rest = RemarkOnRest(file, list);
    return readings + (readings.empty() || rest.empty() ? "" : "; ") + rest;
}

// Header and points of a scan; false when the scan has too many points, a RuntimeError for everything else.
bool ParseScan(const std::string& path, std::string_view bytes, RowNo row, Abscissa abscissa, Ratios ratios,
               ScanReadResult& result) {
    TextItems file{bytes};
    const std::string_view comment = ReadCommentLine(file);
    ReadComment(comment, row, result);
    if (file.Place >= bytes.size()) RaiseError(NoParameterLine);
    const std::size_t headerPlace = file.Place;
    const std::string_view header = ReadTextItem(file);
    const bool comma = file.AfterComma;
    result.TypeLetter = header.empty() ? '\0' : CapitalLetter(header[0]);
    result.Cell = header.size() > 2 && header[2] >= '0' && header[2] <= '9' ? header[2] - '0' : 0;
    Work.InterferenceData = Flag(result.TypeLetter == 'P');
    DropPixelScale(comment, row);
    const int oldWavelength = WholeWavelength(Work.ScanWavelength[row]);
    TakeFrom(file, headerPlace, [&] { ReadHeader(StartHeader(header, comma), row, result); });
    Work.CellPath[row] = Work.CellPathlength;
    const bool intensity = IsIntensityScan(header, FileTitle(path));
    std::vector<IntensityReading> readings;
    const PointList list = intensity ? ReadIntensities(file, readings) : ReadRow(file, row);
    if (list.TooMany) return false;
    if (list.Points < 1 && comma) RaiseAt(file, headerPlace, CommaInHeader);
    RequirePoints(file, list);
    if (abscissa == Abscissa::Radii) RequireRadii(file, list);
    result.Remark = RemarkOnList(file, list);
    ForgetReadings(row);
    if (!intensity) CutToLength(Work.ScanRadius[row], Work.ScanValue[row], list.Points);
    readings.resize(static_cast<std::size_t>(intensity ? list.Points : 0));
    if (intensity) TakeIntensities(row, readings);
    TakeScan(row, path, result);
    Work.ScanSha256[row] = Host.Sha256(bytes);
    KeepReadingRemark(Work.ScanSha256[row], result.Remark);
    Host.SetPointer(Pointer::Standard);
    if (ratios == Ratios::Compared) CompareWavelengths(row, oldWavelength);
    Work.SetChanged[row] = FlagTrue;
    ForgetSetParms(row);
    return true;
}

void ParseBaseline(std::string_view bytes, RowNo row) {
    TextItems file{bytes};
    ReadCommentLine(file);
    if (file.Place >= bytes.size()) RaiseError(NoParameterLine);
    const std::size_t headerPlace = file.Place;
    TakeFrom(file, headerPlace, [&] {
        HeaderFields header = StartHeader(ReadTextLine(file), false);
        NextHeaderField(header);
        Work.BaselineRPM[row] = SingleOf(NextHeaderField(header));
    });
    const PointList list = ReadPoints(file, [row](long i, const PointLine& point) {
        if (i > Work.MaxPtsPerSet)
            RaiseError("the baseline holds more than " + std::to_string(Work.MaxPtsPerSet) + " points");
        StorePoint(Work.BaselineRadius[row], Work.BaselineValue[row], i, point);
        return i < std::numeric_limits<std::int16_t>::max() - 1;
    });
    RequirePoints(file, list);
    CutToLength(Work.BaselineRadius[row], Work.BaselineValue[row], list.Points);
    Work.BaselinePoints[row] = ToInt16(list.Points);
    Work.BaselineSha256[row] = Host.Sha256(bytes);
    KeepReadingRemark(Work.BaselineSha256[row], RemarkOnList(file, list));
    Work.BaselineShifted[row] = FlagFalse;
    Work.BaselineShift[row] = 0.0F;
}

// Runs both steps of a read; what either of them finds is the failure.
template <class Parse> ReadFailure Attempt(const std::string& path, const char* sentence, Parse&& parse) {
    ReadFailure failure;
    Host.SetPointer(Pointer::Hourglass);
    ReadFailure::Kinds kind = ReadFailure::Kinds::NoFile;
    try {
        const std::string bytes = Host.ReadFile(path);
        kind = ReadFailure::Kinds::Content;
        if (!parse(bytes)) failure = TooManyPoints();
    } catch (const RuntimeError& error) {
        failure = {kind, false, sentence, error.Text};
    }
    Host.SetPointer(Pointer::Standard);
    return failure;
}

} // namespace

ScanReadResult TryReadScan(const std::string& path, RowNo row, Abscissa abscissa, Ratios ratios) {
    ScanReadResult result;
    result.Failure = Attempt(path, ScanReadSentence, [&](const std::string& bytes) {
        return ParseScan(path, bytes, row, abscissa, ratios, result);
    });
    result.Ok = result.Failure.Kind == ReadFailure::Kinds::None;
    result.Failure.Missing = result.Failure.Kind == ReadFailure::Kinds::NoFile && !Host.FileExists(path);
    return result;
}

ScanReadResult ReadScan(const std::string& path, RowNo row) {
    ScanReadResult result = TryReadScan(path, row, Abscissa::Any);
    if (!result.Ok) TellReadFailure(path, result.Failure);
    return result;
}

ReadFailure TryReadBaseline(const std::string& path, RowNo row) {
    return Attempt(path, "Error during baseline read, possible invalid data in file",
                   [&](const std::string& bytes) {
                       ParseBaseline(bytes, row);
                       return true;
                   });
}

bool ReadBaseline(const std::string& path, RowNo row) {
    const ReadFailure failure = TryReadBaseline(path, row);
    if (failure.Kind == ReadFailure::Kinds::None) return true;
    TellReadFailure(path, failure);
    return false;
}

void TellReadFailure(const std::string& path, const ReadFailure& failure) {
    if (failure.Missing) Tell("File " + path + " does not exist", Work.ProgramName, BoxIcon::Warning);
    Tell(failure.Sentence + "\n\n" + FileTitle(path) + ": " + failure.Reason, Work.ProgramName,
         BoxIcon::Warning);
}

std::string NextToken(long& position, std::string_view text, std::string_view separators) {
    return std::string(TokenAt(position, text, separators));
}

void SettleDataType(const std::string& fileName) {
    if (fileName.size() < 3) return;
    const char letters[] = {CapitalLetter(fileName[fileName.size() - 3]),
                            CapitalLetter(fileName[fileName.size() - 2])};
    const std::string_view type(letters, 2);
    const auto settle = [](std::int16_t interference, const char* name) {
        Work.InterferenceData = interference;
        Work.DataTypeName = name;
    };
    if (type == "IP")
        settle(FlagTrue, "Fringes");
    else if (type == "RA" || type == "RI")
        settle(FlagFalse, "Absorbance");
    else if (type == "FI")
        settle(FlagFalse, "FI");
}

} // namespace Quillon
