#include "scandata/ScanReader.h"

#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/DataSetTable.h"
#include "scandata/FitData.h"
#include "scandata/TextItems.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

constexpr std::string_view PointSeparators = "\t ,";
constexpr std::size_t PrefixLength = 3; // type letter, blank, cell number

char Capital(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool StartsWithAnyCase(std::string_view text, std::string_view capitals) {
    return text.size() >= capitals.size() &&
           std::equal(capitals.begin(), capitals.end(), text.begin(),
                      [](char capital, char c) { return capital == Capital(c); });
}

std::string_view TokenAt(long& position, std::string_view text, std::string_view separators) {
    const std::size_t start =
        std::min(position < 1 ? std::size_t{0} : static_cast<std::size_t>(position) - 1, text.size());
    const std::size_t found = text.find_first_of(separators, start);
    position = found == std::string_view::npos ? 0 : static_cast<long>(found) + 2;
    return text.substr(start, found == std::string_view::npos ? found : found - start);
}

// The parameter line, taken field by field.
struct HeaderFields {
    std::string_view Rest;
    std::size_t Width = 0; // of the latest field with the blank behind it; 0 when there was no such blank
};

HeaderFields StartHeader(std::string_view line) {
    if (line.size() < PrefixLength) RaiseError(ErrorText::BadArgument);
    return {WithoutLeadingBlanks(line.substr(PrefixLength))};
}

// A field is what stands before a blank: the end of the line does not end one, which then reads as 0.
double NextHeaderField(HeaderFields& header) {
    header.Width = header.Rest.find(' ') + 1;
    const double value = NumericPrefix(header.Rest.substr(0, header.Width));
    header.Rest = WithoutLeadingBlanks(header.Rest.substr(header.Width));
    return value;
}

void ReadHeader(std::string_view line, long row, ScanReadResult& result) {
    HeaderFields header = StartHeader(line);
    Work.ScanTemperature[row] = result.Temperature = ToSingle(NextHeaderField(header));
    Work.ScanRPM[row] = result.Rpm = ToSingle(NextHeaderField(header));
    Work.ScanTime[row] = ToInt32(NextHeaderField(header));
    Work.ScanOmega2t[row] = ToSingle(NextHeaderField(header));
    Work.ScanWavelength[row] = ToSingle(NextHeaderField(header));
    // [decision: count-is-cut]
    Work.ScansAveraged[row] = ToInt16(NumericPrefix(header.Rest.substr(0, header.Width)));
}

struct PointLine {
    float Radius{};
    float Value{};
    bool Excluded = false;
};

PointLine ReadPointLine(TextItems& file) {
    std::string_view line = WithoutLeadingBlanks(ReadTextItem(file));
    PointLine point;
    long position = 1;
    point.Radius = ToSingle(NumericPrefix(TokenAt(position, line, PointSeparators)));
    const auto goOn = [&] {
        line = WithoutLeadingBlanks(line.substr(static_cast<std::size_t>(position) - 1));
        position = 1;
    };
    if (position == 0) RaiseError(ErrorText::BadArgument); // a radius alone is no point
    goOn();
    if (line.empty()) RaiseError(ErrorText::BadArgument); // nor is one with a blank behind it
    point.Value = ToSingle(NumericPrefix(TokenAt(position, line, PointSeparators)));
    if (position != 0) {
        goOn();
        const std::string_view deviation = TokenAt(position, line, PointSeparators);
        point.Excluded = deviation.starts_with('-') && NumericPrefix(deviation) < 0.0; // nothing else counts
    }
    return point;
}

// How a list of points ended.
struct PointList {
    long Points = 0;      // stored ones, the terminating line counted off
    bool TooMany = false; // the last number that a point may have is taken; the list may go on behind it
};

// Reads point lines to the end of the list. store(i, point) keeps point i and tells whether i + 1 is still a
// number that a point may have.
template <class Store> PointList ReadPoints(TextItems& file, Store&& store) {
    long next = 1;
    PointLine point;
    do {
        point = ReadPointLine(file);
        if (!point.Excluded && !store(next++, point)) return {next - 1, true};
    } while (point.Radius != 0.0F && !NoItemLeft(file));
    // [decision: terminator-counts]
    return {point.Radius != 0.0F ? next - 1 : next - 2, false};
}

void StorePoint(OneBased<float>& radii, OneBased<float>& values, long i, const PointLine& point) {
    if (i > radii.Hi()) radii.Resize(i);
    if (i > values.Hi()) values.Resize(i);
    radii[i] = point.Radius;
    values[i] = point.Value;
}

// The shared last step of both reads; a list without a true point is no scan.
void CutToLength(OneBased<float>& radii, OneBased<float>& values, long points) {
    if (points < 1) RaiseError(ErrorText::BadSubscript);
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

void ReadComment(std::string_view line, long row, ScanReadResult& result) {
    result.Comment = line;
    Work.ScanComment[row] = WithoutBlanks(line);
}

// Some interference files put the pixel scale in front of the comment.
void DropPixelScale(std::string_view line, long row) {
    if (!Work.InterferenceData || !StartsWithAnyCase(line, "CM/PIXEL:")) return;
    const std::size_t comma = line.find(',');
    const std::size_t start = comma == std::string_view::npos ? 1 : comma + 2;
    Work.ScanComment[row] = line.substr(std::min(start, line.size()));
}

void TakeScan(long row, long points, const std::string& path, ScanReadResult& result) {
    CutToLength(Work.ScanRadius[row], Work.ScanValue[row], points);
    Work.ScanPoints[row] = ToInt16(points);
    Work.FitRange[0][row] = 1;
    Work.FitRange[1][row] = Work.ScanPoints[row];
    result.FirstRadius = Work.ScanRadius[row][1];
    result.LastRadius = Work.ScanRadius[row][points];
    Work.ScanDirectory[row] = ChosenDirectory(path);
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

void TellTooManyPoints() {
    Tell("There are too many data points. Exit program, increase the MaxPtsPerSet value in the " +
             Work.ProgramName + ".ini file, and then try again.",
         Work.ProgramName, BoxIcon::Warning);
}

// The whole of a read; false when the scan has too many points, a RuntimeError for everything else.
bool TryReadScan(const std::string& path, long row, ScanReadResult& result) {
    const std::string bytes = Host.ReadFile(path);
    TextItems file{bytes};
    const std::string_view comment = ReadTextLine(file);
    ReadComment(comment, row, result);
    const std::string_view header = ReadTextItem(file);
    Work.InterferenceData = Flag(!header.empty() && Capital(header[0]) == 'P');
    DropPixelScale(comment, row);
    const int oldWavelength = WholeWavelength(Work.ScanWavelength[row]);
    ReadHeader(header, row, result);
    Work.CellPath[row] = Work.CellPathlength;
    const PointList list = ReadPoints(file, [row](long i, const PointLine& point) {
        StorePoint(Work.ScanRadius[row], Work.ScanValue[row], i, point);
        // [decision: limit-is-too-many]
        return i < Work.MaxPtsPerSet;
    });
    if (list.TooMany) return false;
    TakeScan(row, list.Points, path, result);
    Host.SetPointer(Pointer::Standard);
    CompareWavelengths(row, oldWavelength);
    Work.SetChanged[row] = FlagTrue;
    ForgetSetParms(row);
    return true;
}

void TryReadBaseline(const std::string& path, long row) {
    const std::string bytes = Host.ReadFile(path);
    TextItems file{bytes};
    ReadTextLine(file);
    HeaderFields header = StartHeader(ReadTextLine(file));
    NextHeaderField(header);
    Work.BaselineRPM[row] = ToSingle(NextHeaderField(header));
    const PointList list = ReadPoints(file, [row](long i, const PointLine& point) {
        if (i > Work.MaxPtsPerSet) RaiseError(ErrorText::BadSubscript);
        StorePoint(Work.BaselineRadius[row], Work.BaselineValue[row], i, point);
        return i < std::numeric_limits<std::int16_t>::max() - 1;
    });
    CutToLength(Work.BaselineRadius[row], Work.BaselineValue[row], list.Points);
    Work.BaselinePoints[row] = ToInt16(list.Points);
    Work.BaselineShifted[row] = FlagFalse;
    Work.BaselineShift[row] = 0.0F;
}

} // namespace

ScanReadResult ReadScan(const std::string& path, long row) {
    ScanReadResult result;
    Host.SetPointer(Pointer::Hourglass);
    if (!Host.FileExists(path)) Tell("File " + path + " does not exist", Work.ProgramName, BoxIcon::Warning);
    try {
        result.Ok = TryReadScan(path, row, result);
        if (!result.Ok) TellTooManyPoints();
    } catch (const RuntimeError&) {
        Tell("Error during file read, possible invalid data in file", Work.ProgramName, BoxIcon::Warning);
    }
    Host.SetPointer(Pointer::Standard);
    return result;
}

bool ReadBaseline(const std::string& path, long row) {
    bool ok = false;
    Host.SetPointer(Pointer::Hourglass);
    ForgetBaselinePlace();
    try {
        TryReadBaseline(path, row);
        ok = true;
    } catch (const RuntimeError&) {
        Tell("Error during baseline read, possible invalid data in file", Work.ProgramName, BoxIcon::Warning);
    }
    Host.SetPointer(Pointer::Standard);
    return ok;
}

std::string NextToken(long& position, std::string_view text, std::string_view separators) {
    return std::string(TokenAt(position, text, separators));
}

void SettleDataType(const std::string& fileName) {
    if (fileName.size() < 3) return;
    const char letters[] = {Capital(fileName[fileName.size() - 3]), Capital(fileName[fileName.size() - 2])};
    const std::string_view type(letters, 2);
    const auto settle = [](std::int16_t interference, const char* name) {
        Work.InterferenceData = interference;
        Work.DataTypeName = name;
    };
    if (type == "IP")
        settle(FlagTrue, "Fringes");
    else if (type == "RA")
        settle(FlagFalse, "Absorbance");
    else if (type == "FI")
        settle(FlagFalse, "FI");
}

} // namespace Quillon
