#pragma once
// The records of an enhanced metafile: each a type, its own size and its fields, little-endian, padded to
// whole 32-bit words. Only the records that Metafile.cpp writes.

#include "platform/Surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// The numbers of the records in the published format of enhanced metafiles (version 1.0 of its header with
// both extensions).
enum class EmfType : std::uint32_t {
    Header = 1,
    Polygon = 3,
    Polyline = 4,
    Polylines = 7,
    SetWindowExtent = 9,
    SetWindowOrigin = 10,
    SetViewportExtent = 11,
    SetViewportOrigin = 12,
    EndOfFile = 14,
    SetMapMode = 17,
    SetBackgroundMode = 18,
    SetPolygonFillMode = 19,
    SetDrawMode = 20,
    SetTextAlign = 22,
    SetTextColor = 24,
    IntersectClipRectangle = 30,
    SaveContext = 33,
    RestoreContext = 34,
    SelectObject = 37,
    MakeBrush = 39,
    Ellipse = 42,
    Rectangle = 43,
    Pie = 47,
    MakeFont = 82,
    WriteText = 84, // of 16-bit characters
    Polygon16 = 86,
    Polyline16 = 87,
    Polylines16 = 90,
    MakeGeometricPen = 95
};

// The fields of a record, appended one after another, the lowest byte of each first. Each call gives the
// fields back, so that a record reads as one line.
struct EmfFields {
    std::string Bytes;

    EmfFields& Word(std::uint32_t value);    // 32 bits: flags, counts, numbers of objects
    EmfFields& Signed(int value);            // 32 bits, two's complement: lengths and places in device units
    EmfFields& Short(std::uint16_t value);   // 16 bits: characters, and places of points that fit
    EmfFields& Single(float value);          // 32 bits, IEEE 754
    EmfFields& Byte(std::uint8_t value);     // attributes of fonts
    EmfFields& Rect(const DeviceRect& rect); // left, top, right, bottom, both corners included
    EmfFields& Point(DevicePoint point);     // x, y, each 32 bits
    EmfFields& Color(Rgb color);             // red in the lowest byte, then green and blue
    EmfFields& Wide(const std::string& latin1, std::size_t length); // 16-bit characters, filled up with zeros
    EmfFields& Pad();                                               // to a whole word
};

// Records one behind the other, as a file has them.
struct EmfRecords {
    std::string Bytes;
    int Count = 0; // the header of the file tells it
};

// Appends a record: type, size, fields.
void AppendRecord(EmfRecords& records, EmfType type, const EmfFields& fields = {});
void AppendRecord(EmfRecords& records, EmfType type, std::uint32_t onlyField);

// A polyline or polygon, with 16-bit points where all of them fit. bounds: what it covers, which readers may
// use to pass over what is out of sight; device units, both corners included.
void AppendPoints(EmfRecords& records, bool closed, const DeviceRect& bounds,
                  const std::vector<DevicePoint>& points);

// Several lines of two points each; the size of points is even.
void AppendSegments(EmfRecords& records, const DeviceRect& bounds, const std::vector<DevicePoint>& points);

// What is known only when all records are there.
struct EmfSummary {
    std::string Description; // Latin-1, with its zero bytes
    DeviceRect Bounds; // of what is drawn, device units from the picture's corner; both corners included
    double Width{}, Height{};         // of the picture, device units
    double PageWidth{}, PageHeight{}; // of the reference device
    double DotsPerInchX{}, DotsPerInchY{};
    std::uint32_t Objects{}; // objects made by the records
};

// The header of a file, with the records that follow it except the end of file counted in.
std::string MetafileHeader(const EmfSummary& summary, const EmfRecords& records);

// The last record.
void AppendEndOfFile(EmfRecords& records);

} // namespace Quillon
