#include "chart/targets/MetafileRecords.h"

#include "platform/Printer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

constexpr std::size_t HeaderSize = 108; // with both of its extensions, before the description
constexpr std::size_t RecordHead = 8;   // type and size

std::uint32_t Count32(std::size_t count) {
    return static_cast<std::uint32_t>(count);
}

bool FitsShort(DevicePoint point) {
    const auto fits = [](int value) {
        return value >= std::numeric_limits<std::int16_t>::min() &&
               value <= std::numeric_limits<std::int16_t>::max();
    };
    return fits(point.X) && fits(point.Y);
}

// Appends points, with 16 bits a coordinate where all of them fit; tells whether they do.
bool AppendPlaces(EmfFields& fields, const std::vector<DevicePoint>& points) {
    const bool narrow = std::all_of(points.begin(), points.end(), FitsShort);
    for (const DevicePoint point : points) {
        if (narrow)
            fields.Short(static_cast<std::uint16_t>(point.X)).Short(static_cast<std::uint16_t>(point.Y));
        else
            fields.Point(point);
    }
    return narrow;
}

int Rounded(double value) {
    return static_cast<int>(std::lround(value));
}

// The frame of the picture in hundredths of a millimetre.
DeviceRect FrameOf(const EmfSummary& summary) {
    return {0, 0, Rounded(summary.Width / summary.DotsPerInchX * MillimetresPerInch * 100.0),
            Rounded(summary.Height / summary.DotsPerInchY * MillimetresPerInch * 100.0)};
}

// One side of the reference device. Readers take the resolution from the ratio of units to whole millimetres,
// so the millimetres are rounded first, and the units are those that fit them.
struct DeviceSide {
    int Units, Millimetres, Micrometres;
};

DeviceSide SideOf(double length, double dotsPerInch) {
    const int millimetres = std::max(Rounded(length / dotsPerInch * MillimetresPerInch), 1);
    const int units = std::max(Rounded(millimetres * dotsPerInch / MillimetresPerInch), 1);
    return {units, millimetres, Rounded(units / dotsPerInch * MillimetresPerInch * 1000.0)};
}

} // namespace

EmfFields& EmfFields::Byte(std::uint8_t value) {
    Bytes.push_back(static_cast<char>(value));
    return *this;
}

EmfFields& EmfFields::Short(std::uint16_t value) {
    return Byte(static_cast<std::uint8_t>(value & 0xFFU)).Byte(static_cast<std::uint8_t>(value >> 8U));
}

EmfFields& EmfFields::Word(std::uint32_t value) {
    return Short(static_cast<std::uint16_t>(value & 0xFFFFU)).Short(static_cast<std::uint16_t>(value >> 16U));
}

EmfFields& EmfFields::Signed(int value) {
    return Word(static_cast<std::uint32_t>(value));
}

EmfFields& EmfFields::Single(float value) {
    return Word(std::bit_cast<std::uint32_t>(value));
}

EmfFields& EmfFields::Rect(const DeviceRect& rect) {
    return Signed(rect.Left).Signed(rect.Top).Signed(rect.Right).Signed(rect.Bottom);
}

EmfFields& EmfFields::Point(DevicePoint point) {
    return Signed(point.X).Signed(point.Y);
}

// A metafile has red in the lowest byte.
EmfFields& EmfFields::Color(Rgb color) {
    return Word((color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU));
}

EmfFields& EmfFields::Wide(const std::string& latin1, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i)
        Short(i < latin1.size() ? static_cast<unsigned char>(latin1[i]) : 0);
    return *this;
}

EmfFields& EmfFields::Pad() {
    while (Bytes.size() % 4 != 0)
        Byte(0);
    return *this;
}

void AppendRecord(EmfRecords& records, EmfType type, const EmfFields& fields) {
    EmfFields padded = fields;
    padded.Pad();
    EmfFields head;
    head.Word(static_cast<std::uint32_t>(type)).Word(Count32(RecordHead + padded.Bytes.size()));
    records.Bytes += head.Bytes + padded.Bytes;
    ++records.Count;
}

void AppendRecord(EmfRecords& records, EmfType type, std::uint32_t onlyField) {
    AppendRecord(records, type, EmfFields().Word(onlyField));
}

void AppendPoints(EmfRecords& records, bool closed, const DeviceRect& bounds,
                  const std::vector<DevicePoint>& points) {
    EmfFields fields;
    fields.Rect(bounds).Word(Count32(points.size()));
    const bool narrow = AppendPlaces(fields, points);
    if (closed)
        AppendRecord(records, narrow ? EmfType::Polygon16 : EmfType::Polygon, fields);
    else
        AppendRecord(records, narrow ? EmfType::Polyline16 : EmfType::Polyline, fields);
}

void AppendSegments(EmfRecords& records, const DeviceRect& bounds, const std::vector<DevicePoint>& points) {
    EmfFields fields;
    fields.Rect(bounds).Word(Count32(points.size() / 2)).Word(Count32(points.size()));
    for (std::size_t i = 0; i < points.size() / 2; ++i)
        fields.Word(2);
    const bool narrow = AppendPlaces(fields, points);
    AppendRecord(records, narrow ? EmfType::Polylines16 : EmfType::Polylines, fields);
}

std::string MetafileHeader(const EmfSummary& summary, const EmfRecords& records) {
    EmfFields description;
    description.Wide(summary.Description, summary.Description.size()).Pad();
    const std::size_t size = HeaderSize + description.Bytes.size();
    const DeviceSide x = SideOf(summary.PageWidth, summary.DotsPerInchX);
    const DeviceSide y = SideOf(summary.PageHeight, summary.DotsPerInchY);
    EmfFields fields;
    fields.Rect(summary.Bounds).Rect(FrameOf(summary));
    fields.Word(0x464D4520U).Word(0x10000U); // " EMF", version 1
    fields.Word(Count32(size + records.Bytes.size())).Signed(records.Count + 1);
    fields.Short(static_cast<std::uint16_t>(summary.Objects + 1)).Short(0); // number 0 is the metafile itself
    fields.Word(Count32(summary.Description.size()))
        .Word(summary.Description.empty() ? 0 : Count32(HeaderSize));
    fields.Word(0).Signed(x.Units).Signed(y.Units).Signed(x.Millimetres).Signed(y.Millimetres);
    fields.Word(0).Word(0).Word(0).Signed(x.Micrometres).Signed(y.Micrometres);
    fields.Bytes += description.Bytes;
    EmfRecords header;
    AppendRecord(header, EmfType::Header, fields);
    return header.Bytes;
}

void AppendEndOfFile(EmfRecords& records) {
    constexpr std::uint32_t size = 20;
    AppendRecord(records, EmfType::EndOfFile, EmfFields().Word(0).Word(size - 4).Word(size));
}

} // namespace Quillon
