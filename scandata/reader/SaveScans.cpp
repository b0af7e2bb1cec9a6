#include "scandata/reader/SaveScans.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/reader/ScanWriter.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <functional>

namespace Quillon {

namespace {

const char* const WriteFilter =
    "XL radial scans|*.R*;*.IP*|absorbance data (*.R*)|*.R*|interference data (*.IP*)|*.IP*|Reedit files "
    "(*.red)|*.red|all files (*.*)|*.*";

FileAnswer AskTarget(const char* what, const std::string& name) {
    FileRequest request;
    request.Title = Work.ProgramName + what;
    request.Filter = WriteFilter;
    request.Directory = Work.DataDirectory;
    request.Name = name;
    request.Save = true;
    return Host.AskFile(request);
}

// False when the user cancelled or the file could not be written.
bool WriteTo(const FileAnswer& answer, const std::function<void(const std::string&)>& write) {
    if (answer.Cancelled) return false;
    try {
        write(answer.Path);
        return true;
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while writing " + answer.Path, Work.ProgramName,
             BoxIcon::Warning);
        return false;
    }
}

bool WriteRow(RowNo row) {
    const int cell = CellNumberOf(Work.ScanFile[row]);
    const FileAnswer answer = AskTarget(" - Write Data File", SuggestedScanName(row, cell));
    return WriteTo(answer, [&](const std::string& path) { WriteScan(path, row, cell); });
}

// The fit set that the user names; 0 when the command is given up.
SetNo AskSet() {
    for (;;) {
        const InputAnswer answer =
            Host.AskText({"Write out residual for which data set (of those being fit)? (1 - " +
                              std::to_string(Work.NumSets) + ")",
                          Work.ProgramName, "1"});
        if (answer.Cancelled || answer.Text.empty()) return SetNo(0);
        const double set = NumericPrefix(answer.Text);
        if (set >= 1.0 && set <= static_cast<double>(Work.NumSets)) return SetNo(std::lrint(set));
        Host.Beep();
    }
}

} // namespace

void SaveSubset(RowNo row) {
    if (!Work.ScanFile[row].empty() && Work.ScanPoints[row] > 0) WriteRow(row);
}

void WriteIncludedSets() {
    for (const RowNo row : EachRow())
        if (Work.IncludeSet[row] == 1 && !Work.ScanFile[row].empty() && !WriteRow(row)) break;
}

void WriteBaselineDialog(bool withOffset) {
    const SetNo set = AskSet();
    if (set == SetNo(0)) return;
    const RowNo row = RowOf(set);
    const int cell = CellNumberOf(Work.ScanFile[row]);
    const FileAnswer answer = AskTarget(" - Write Baseline File", SuggestedScanName(row, cell));
    WriteTo(answer, [&](const std::string& path) { WriteResiduals(path, set, cell, withOffset); });
}

} // namespace Quillon
