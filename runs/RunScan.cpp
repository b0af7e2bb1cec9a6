#include "runs/RunScan.h"

#include "input/PlainNumber.h"
#include "platform/Letters.h"
#include "platform/Paths.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/ScanLines.h"

#include <cmath>
#include <functional>
#include <vector>

namespace Quillon {

namespace {

constexpr long MostReadings = 32766;
constexpr int FieldsOfHeader = 5;            // temperature, speed, time, omega squared t, wavelength
constexpr float LargestRadius = 100.0F;      // cm
constexpr float LongestWavelength = 2000.0F; // nm

// Letter, blank, any character, then numbers between blanks.
bool IsParameterLine(std::string_view line) {
    if (line.size() < 4 || CapitalLetter(line[0]) < 'A' || CapitalLetter(line[0]) > 'Z' || line[1] != ' ')
        return false;
    const char* at = line.data() + 3;
    const char* const end = line.data() + line.size();
    for (int field = 0; field < FieldsOfHeader; ++field) {
        while (at < end && *at == ' ')
            ++at;
        double number = 0.0;
        if (!TakePlainNumber(at, end, number)) return false;
        while (at < end && *at != ' ')
            ++at; // a unit or a fourth digit of an exponent
    }
    return true;
}

ScanHead HeadOf(std::string_view comment, std::string_view line, bool comma) {
    ScanHead head;
    head.Comment = WithoutBlanks(comment);
    HeaderFields fields = StartHeader(line, comma);
    head.Letter = CapitalLetter(line[0]);
    head.Cell = line[2] >= '0' && line[2] <= '9' ? line[2] - '0' : 0;
    head.Temperature = SingleOf(NextHeaderField(fields));
    head.Rpm = SingleOf(NextHeaderField(fields));
    head.Time = WholeOf<std::int32_t>(NextHeaderField(fields));
    head.Omega2t = SingleOf(NextHeaderField(fields));
    head.Wavelength = SingleOf(NextHeaderField(fields));
    head.Averaged = WholeOf<std::int16_t>(LastHeaderField(fields));
    return head;
}

// Takes both header lines off the file.
ScanHead TakeHead(TextItems& file) {
    const std::string_view comment = ReadCommentLine(file);
    if (file.Place >= file.Text.size()) RaiseError("the file ends before its parameter line");
    const std::size_t place = file.Place;
    const std::string_view line = ReadTextItem(file);
    ScanHead head;
    TakeFrom(file, place, [&] { head = HeadOf(comment, line, file.AfterComma); });
    return head;
}

// Absorbance unless name or header says otherwise.
ScanOptics OpticsOf(const ScanNameFacts& name, const ScanHead& head) {
    if (name.Type == 'W' || head.Letter == 'W') return ScanOptics::Wavelength;
    if (name.Type == 'F' || head.Letter == 'F') return ScanOptics::Fluorescence;
    if (name.Type == 'I' || head.Letter == 'I') return ScanOptics::Intensity;
    if (name.Type == 'P') return ScanOptics::Interference;
    return head.Letter == 'P' && name.Type != 'A' ? ScanOptics::Interference : ScanOptics::Absorbance;
}

void Keep(RunScan& scan, float radius, float reading) {
    scan.Radii.Resize(scan.Radii.Hi() + 1, radius);
    scan.Readings.Resize(scan.Readings.Hi() + 1, reading);
}

void RequireRoom(const PointList& list) {
    if (list.TooMany) RaiseError("it holds more than " + std::to_string(MostReadings) + " readings");
}

// Readings of one column. A first number beyond every rotor is a wavelength.
void ReadSignals(TextItems& file, RunScan& scan) {
    const PointList list = ReadPoints(file, [&scan](long i, const PointLine& point) {
        Keep(scan, point.Radius, point.Value);
        return i < MostReadings + 1;
    });
    RequireRoom(list);
    RequirePoints(file, list);
    scan.Radii.Resize(list.Points);
    scan.Readings.Resize(list.Points);
    const bool nanometres = list.NoRadius > LargestRadius && list.NoRadius <= LongestWavelength;
    if (nanometres)
        scan.Optics = ScanOptics::Wavelength;
    else if (scan.Optics != ScanOptics::Wavelength)
        RequireRadii(file, list);
}

// Those of two columns that have an absorbance.
void KeepAbsorbances(const std::vector<PointLine>& readings, RunScan& scan) {
    for (const PointLine& reading : readings)
        if (HasAbsorbance(reading.Value, reading.Second))
            Keep(scan, reading.Radius,
                 AbsorbanceOf(reading.Value, reading.Second, IntensityOrders::SampleFirst));
    if (scan.Radii.Empty()) RaiseError("there is no reading with two intensities above 0");
}

void ReadIntensities(TextItems& file, RunScan& scan) {
    std::vector<PointLine> readings;
    const auto store = [&readings](long i, const PointLine& point) {
        readings.push_back(point);
        return i < MostReadings + 1;
    };
    const PointList list = ReadPoints(file, store, ThirdNumber::Reading);
    RequireRoom(list);
    RequirePoints(file, list);
    RequireRadii(file, list);
    readings.resize(static_cast<std::size_t>(list.Points));
    KeepAbsorbances(readings, scan);
}

} // namespace

const char* OpticsWord(ScanOptics optics) {
    switch (optics) {
    case ScanOptics::Absorbance:
        return "absorbance";
    case ScanOptics::Interference:
        return "interference";
    case ScanOptics::Intensity:
        return "intensity";
    case ScanOptics::Fluorescence:
        return "fluorescence";
    case ScanOptics::Wavelength:
        return "wavelength";
    case ScanOptics::Velocity:
        return "velocity";
    }
    return "";
}

bool IsForEquilibrium(ScanOptics optics) {
    return optics == ScanOptics::Absorbance || optics == ScanOptics::Interference ||
           optics == ScanOptics::Intensity;
}

bool LooksLikeScan(std::string_view start) {
    TextItems file{start};
    if (start.empty()) return false;
    ReadTextLine(file);
    if (file.Place >= start.size()) return false;
    return IsParameterLine(ReadTextLine(file));
}

RunScan ReadRunScan(const std::string& file, std::string_view bytes) {
    RunScan scan;
    scan.File = file;
    scan.Name = ScanNameOf(FileTitle(file));
    scan.Bytes = bytes.size();
    scan.Mark = std::hash<std::string_view>{}(bytes);
    TextItems items{bytes};
    scan.Head = TakeHead(items);
    scan.Cell = scan.Name.Cell.value_or(scan.Head.Cell);
    scan.Optics = OpticsOf(scan.Name, scan.Head);
    if (scan.Optics == ScanOptics::Intensity)
        ReadIntensities(items, scan);
    else
        ReadSignals(items, scan);
    return scan;
}

} // namespace Quillon
