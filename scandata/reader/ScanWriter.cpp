#include "scandata/reader/ScanWriter.h"

#include "input/NUMINPUT.h"
#include "models/function/Constraints.h"
#include "models/function/FitFunction.h"
#include "platform/Platform.h"
#include "scandata/reader/ScanNames.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace Quillon {

namespace {

constexpr const char* LineEnd = "\r\n";

enum class Notation { Shortest, Fixed, Scientific };

std::chars_format FormatOf(Notation notation) {
    switch (notation) {
    case Notation::Fixed:
        return std::chars_format::fixed;
    case Notation::Scientific:
        return std::chars_format::scientific;
    default:
        return std::chars_format::general;
    }
}

// The fewest digits that bring the single back when it is read through a double; nine always do.
std::string NumberText(float value, Notation notation) {
    char text[128];
    char* const end = text + sizeof text;
    const std::chars_format format = FormatOf(notation);
    ToSingle(value); // an infinity has no text that reads back
    std::to_chars_result written = std::to_chars(text, end, value, format);
    if (static_cast<float>(NumericPrefix({text, written.ptr})) != value)
        written = std::to_chars(text, end, value, std::chars_format::scientific, 8);
    for (char* c = text; c != written.ptr; ++c)
        if (*c == 'e') *c = 'E';
    return {text, written.ptr};
}

std::string WithPoint(std::string number) {
    if (number.find_first_of(".E") == std::string::npos) number += ".0";
    return number;
}

// The reader takes the count of averaged scans no wider than this field with its blank.
std::string WavelengthText(float wavelength, std::size_t widthOfCount) {
    std::string text = NumberText(wavelength, Notation::Fixed);
    if (text.size() + 1 >= widthOfCount) return text;
    text = WithPoint(text);
    text.resize(std::max(text.size(), widthOfCount - 1), '0');
    return text;
}

std::string LeftFilled(const std::string& text, std::size_t width, char filling) {
    return text.size() >= width ? text : std::string(width - text.size(), filling).append(text);
}

std::string TypeOfData() {
    return Work.InterferenceData ? "IP" : Work.DataTypeName == "FI" ? "FI" : "RA";
}

// The residuals at the true points of set k, whose first point of the fit is n + 1, up to a fault.
std::string ResidualLines(SetNo k, long n) {
    const RowNo row = RowOf(k);
    std::string lines;
    for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row] && !Work.AbortFit; ++p) {
        ++n;
        lines += ScanPointText(Work.ScanRadius[row][p], ToSingle(Work.PtY[n] - FitFunction(n)));
    }
    return lines;
}

// What the fitted function keeps between calls rests on the parameters.
void ForgetModelState() {
    ResetFitFunction();
    ResetConstraintSums();
}

// The lines of a set; the reason of a fault outside the function is a paragraph of its own. Nothing behind a
// fault, which has been told.
std::optional<std::string> LinesOrFault(SetNo k) {
    long before = 0;
    for (SetNo j(1); j < k; ++j)
        before += Work.SetPts[j];
    std::string reason;
    try {
        std::string lines = ResidualLines(k, before);
        if (!Work.AbortFit) return lines;
    } catch (const RuntimeError& error) {
        NoteFunctionError(error.Text);
        reason = "\n\nThe residuals of set " + std::to_string(k.Number) + " ended with '" + error.Text + "'.";
    }
    Tell(Work.Outcome.Sentence + reason, Work.ProgramName, BoxIcon::Stop);
    return std::nullopt;
}

// The same with the fit as it was afterwards: what is computed for a file is no part of it.
std::optional<std::string> LinesAside(SetNo k, bool offsetIncluded) {
    const StopKept kept;
    const float offset = Work.Parms[SlotOffset(k)];
    const FitOutcome outcome = Work.Outcome;
    if (offsetIncluded) Work.Parms[SlotOffset(k)] = 0.0F;
    ClearCancel();
    ForgetModelState();
    std::optional<std::string> lines = LinesOrFault(k);
    Work.Parms[SlotOffset(k)] = offset;
    Work.Outcome = outcome;
    ForgetModelState();
    return lines;
}

} // namespace

int CellNumberOf(const std::string& fileName) {
    // The ending of the newer names is that of all cells.
    if (const ScanNameFacts facts = ScanNameOf(fileName); facts.HasFields)
        return static_cast<int>(*facts.Cell);
    const std::size_t place = Work.NameConvention == NamedBy::Newer ? fileName.size() - 1 : 4;
    if (place >= fileName.size()) return 0;
    const char digit = fileName[place];
    return digit >= '0' && digit <= '9' ? digit - '0' : 0;
}

std::string SuggestedScanName(RowNo row, int cell) {
    const int channel = Work.DataChannel[row];
    const long thousands = static_cast<long>(Work.ScanRPM[row] / 1000.0F);
    return "s" + LeftFilled(std::to_string(row.Number), 2, '0') +
           (channel > 0 ? static_cast<char>('a' + channel - 1) : '_') + std::to_string(cell) + "_" +
           std::to_string(thousands) + "." + TypeOfData() + std::to_string(cell);
}

std::string ScanHeaderText(const std::string& comment, RowNo row, int cell) {
    const std::string averaged = std::to_string(Work.ScansAveraged[row]);
    std::string text = comment + LineEnd;
    text += Work.InterferenceData ? 'P' : 'R';
    text += LeftFilled(std::to_string(cell), 2, ' ');
    for (const std::string& field : {WithPoint(NumberText(Work.ScanTemperature[row], Notation::Fixed)),
                                     NumberText(Work.ScanRPM[row], Notation::Fixed),
                                     LeftFilled(std::to_string(Work.ScanTime[row]), 7, '0'),
                                     NumberText(Work.ScanOmega2t[row], Notation::Scientific),
                                     WavelengthText(Work.ScanWavelength[row], averaged.size()), averaged})
        text += " " + field;
    return text + LineEnd;
}

std::string ScanPointText(float radius, float value) {
    return LeftFilled(NumberText(radius, Notation::Shortest), 10, ' ') + " " +
           LeftFilled(NumberText(value, Notation::Shortest), 14, ' ') + LineEnd;
}

std::string ScanText(RowNo row, int cell) {
    std::string text = ScanHeaderText(Work.ScanComment[row], row, cell);
    for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row]; ++p)
        text += ScanPointText(Work.ScanRadius[row][p], Work.ScanValue[row][p]);
    return text;
}

void WriteScan(const std::string& path, RowNo row, int cell) {
    Host.WriteFile(path, ScanText(row, cell));
}

bool WriteResiduals(const std::string& path, SetNo k, int cell, bool offsetIncluded) {
    const std::optional<std::string> lines = LinesAside(k, offsetIncluded);
    if (!lines) return false;
    const char* const comment = offsetIncluded ? "residuals with no offset" : "residuals";
    Host.WriteFile(path, ScanHeaderText(comment, RowOf(k), cell) + *lines);
    return true;
}

} // namespace Quillon
