#include "batch/outputs/IntegrateCsv.h"

#include "batch/console/OneLine.h"
#include "batch/outputs/CsvParts.h"
#include "models/species/Integration.h"
#include "models/species/SpeciesAtPoint.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Roads.h"

#include <charconv>

namespace Quillon {

namespace {

bool ReadRadius(std::string_view text, float& radius) {
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, radius);
    return failure == std::errc{} && stop == end && radius > 0.0F && radius <= 100.0F;
}

std::string RowLine(const std::string& start, const IntegratedRow& row) {
    std::string line = start + CsvField(row.Label);
    for (const std::optional<double>& value : {row.Signal, row.Weight, row.Molar, row.Share})
        line += "," + CsvNumber(value);
    return line + "\n";
}

} // namespace

CellRadii ParseCell(const std::string& text) {
    CellRadii cell;
    const std::size_t comma = text.find(',');
    const std::string_view all = text;
    if (comma == std::string::npos || !ReadRadius(all.substr(0, comma), cell.Inner) ||
        !ReadRadius(all.substr(comma + 1), cell.Outer))
        RaiseError("--cell needs INNER,OUTER in cm, not " + Quoted(text));
    if (!(cell.Inner < cell.Outer)) RaiseError("--cell: the inner radius must be less than the outer one");
    try {
        CheckCellWidth(cell.Inner, cell.Outer);
    } catch (const RuntimeError& error) {
        RaiseError("--cell " + text + ": " + error.Text);
    }
    return cell;
}

std::string IntegrateCsv(const CellRadii& cell) {
    std::string text = "set,label,inner_cm,outer_cm,species,signal,mg_per_ml,molar,share\n";
    for (const SetNo set : EachSet()) {
        const std::string number = std::to_string(set.Number);
        const std::string start = number + "," + CsvField(Work.SetLabel[set]) + "," +
                                  ShortestText(cell.Inner) + "," + ShortestText(cell.Outer) + ",";
        try {
            for (const IntegratedRow& row : IntegrateCell(set, cell.Inner, cell.Outer, UnitInForce()).Rows)
                text += RowLine(start, row);
        } catch (const RuntimeError& error) {
            RaiseError("--integrate, set " + number + ": " + error.Text);
        }
    }
    return text;
}

} // namespace Quillon
