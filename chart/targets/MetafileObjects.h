#pragma once
// The pens, brushes and fonts of a metafile. Each is made by a record when it is first used and kept to the
// end; a record selects it when what is drawn needs another one than is in force.

#include "chart/pens/BaseFonts.h"
#include "chart/targets/MetafileRecords.h"

#include <map>
#include <tuple>
#include <utility>

namespace Quillon {

// A font by the family whose widths texts are measured with. Lengths are device units: the em, and from the
// top of the tallest letter to the bottom of the lowest. Angle: degrees counterclockwise, 0 to 359.
struct EmfFont {
    const BaseFont* Base = &BaseFontFor("Arial", false); // never null; the tables live as long as the program
    int Em = 12, Height = 13, Angle = 0;
};

// What the records so far have brought into force; 0 before the first selection.
struct EmfSelection {
    std::uint32_t Pen = 0, Brush = 0, Font = 0;
    Rgb TextColor = 0;
    bool Exclusive = false; // the draw mode of pens and brushes
};

// What has been made, each with its number from 1: the place in the table that a reader builds.
struct EmfObjects {
    EmfSelection Now;
    std::uint32_t Count = 0;                           // made so far; the header of the file tells it
    std::map<std::pair<Rgb, int>, std::uint32_t> Pens; // by colour and width
    std::map<Rgb, std::uint32_t> Brushes; // solid ones by colour; the hollow one is of the system
    std::map<std::tuple<const BaseFont*, int, int>, std::uint32_t> Fonts; // by family, em and angle
};

// Append what brings an attribute into force. More than 65534 objects are the run-time error "Overflow".
void UsePen(EmfRecords& records, EmfObjects& objects, const SurfacePen& pen);
void UseSolidBrush(EmfRecords& records, EmfObjects& objects, Rgb color);
void UseHollowBrush(EmfRecords& records, EmfObjects& objects);
void UseFont(EmfRecords& records, EmfObjects& objects, const EmfFont& font, Rgb color);

} // namespace Quillon
