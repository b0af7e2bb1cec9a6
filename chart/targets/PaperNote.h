#pragma once
// What the forms of printing say of the printer in use and of the sheet that lies in it.

#include "platform/Printer.h"

#include <string>

namespace Quillon {

// A unit that sheets are told in.
struct PaperUnit {
    double PerInch;      // units in an inch
    const char* Picture; // number picture of a side
    const char* Name;    // as it stands behind the sides
};
inline constexpr PaperUnit InMillimetres{MillimetresPerInch, "0", "mm"};
inline constexpr PaperUnit InCentimetres{MillimetresPerInch / 10.0, "0.0", "cm"};
inline constexpr PaperUnit InInches{1.0, "0.00", "inches"};

// "Office, paper 210 x 297 mm"; without a printer "A PDF file, paper ...".
std::string PaperNote(const PrinterState& printer, const PaperUnit& unit);

} // namespace Quillon
