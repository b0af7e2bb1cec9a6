#pragma once
// Reads an enhanced metafile back: its records one by one, and what a player of them would draw.

#include "platform/Surface.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Quillon {

struct EmfRecord {
    std::uint32_t Type{};
    std::size_t Start{}; // in the file
    std::string Bytes;   // the whole record, type and size included

    std::uint32_t Word(std::size_t offset) const;
    int Signed(std::size_t offset) const { return static_cast<int>(Word(offset)); }
    int Short(std::size_t offset) const;                            // signed 16 bits
    std::string Wide(std::size_t offset, std::size_t length) const; // Latin-1 of 16-bit characters
};

// The records of a file. Problem says what is wrong with its build, "" when nothing is: sizes that are no
// whole words or run past the end, counts of the header that are not those of the file, a missing last
// record, an object that is used before it is made or made twice.
struct EmfFile {
    std::vector<EmfRecord> Records;
    std::string Problem;
};
EmfFile ReadMetafile(const std::string& bytes);

// What is drawn, with the attributes that are then in force in the player.
struct EmfItem {
    std::string Kind; // "polyline", "polygon", "segments", "rectangle", "ellipse", "pie", "text"
    std::vector<DevicePoint> Points; // of rectangles, ellipses and pies the corners of the box, then the ends
    bool Wide = false;               // points of 32 bits
    bool PenVisible = false;
    Rgb PenColor{};
    int PenWidth{};
    std::uint32_t DrawMode = 13; // 13 replaces what is there, 10 combines with it
    bool Filled = false;
    Rgb FillColor{};
    bool Clipped = false; // narrower than the picture
    DeviceRect Clip;      // right and bottom are outside

    // Of a text; Points has its place.
    std::string Text;
    std::vector<int> Advances;
    std::string Face;
    int FontHeight{}, Escapement{}, Weight{}, CharacterSet{};
    Rgb TextColor{};
};
std::vector<EmfItem> PlayMetafile(const EmfFile& file);

} // namespace Quillon
