#include "chart/targets/PaperNote.h"

#include "input/NUMINPUT.h"

namespace Quillon {

std::string PaperNote(const PrinterState& printer, const PaperUnit& unit) {
    const auto length = [&unit](double inches) { return FormatNumber(inches * unit.PerInch, unit.Picture); };
    return (printer.Name.empty() ? "A PDF file" : printer.Name) + ", paper " + length(printer.Page.Width) +
           " x " + length(printer.Page.Height) + " " + unit.Name;
}

} // namespace Quillon
