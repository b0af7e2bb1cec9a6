// A read that fails leaves part of the new file in the arrays. The row still names the old one, so the arrays
// go back to it: otherwise the next fit would run on a mixture of both.
#include "scandata/reader/AdoptScan.h"

#include "platform/Paths.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

namespace {

void NameScan(const std::string& path, RowNo row) {
    Work.ScanDirectory[row] = DirectoryOf(path);
    Work.ScanFile[row] = FileTitle(path);
    Work.BaselineFile[row] = NoBaseline;
    Work.IncludeSet[row] = 1;
    Work.HighestSet = std::max(Work.HighestSet, ToInt16(row.Number));
}

// A file that the row was read from before, and that is another one by now.
std::string ChangedFile(const Workspace& before, const std::string& path, RowNo row) {
    const bool same =
        before.ScanFile[row] == FileTitle(path) && before.ScanDirectory[row] == DirectoryOf(path);
    const std::string& then = before.ScanSha256[row];
    if (!same || then.empty() || then == Work.ScanSha256[row]) return "";
    return "the file has changed since this analysis read it: its SHA-256 was " + then.substr(0, 12) +
           "... and is " + Work.ScanSha256[row].substr(0, 12) + "...";
}

void AddRemark(ScanReadResult& result, const std::string& remark) {
    result.Remark += (result.Remark.empty() || remark.empty() ? "" : "; ") + remark;
}

// Its units are those of the detector, and they hang on gain and voltage.
std::string FluorescenceRemark(const ScanReadResult& read) {
    const bool fluorescence = read.TypeLetter == 'F' || Work.DataTypeName == "FI";
    return fluorescence ? "a scan of fluorescence; its signal is taken as it stands" : "";
}

} // namespace

ScanReadResult AdoptScan(const std::string& path, RowNo row, Ratios ratios) {
    Workspace before = Work;
    Work.ChosenPath = path;
    Work.ChosenName = FileTitle(path);
    ScanReadResult result = TryReadScan(path, row, Abscissa::Radii, ratios);
    if (!result.Ok) {
        Work = std::move(before);
        return result;
    }
    AddRemark(result, ChangedFile(before, path, row));
    NameScan(path, row);
    SettleDataType(Work.ScanFile[row]);
    AddRemark(result, FluorescenceRemark(result));
    float inner{};
    float outer{};
    SetCenterpiece(row, Work.CellType, inner, outer);
    SetChannel(row, 0);
    return result;
}

ReadFailure AdoptBaseline(const std::string& path, RowNo row) {
    Workspace before = Work;
    Work.ChosenPath = path;
    ReadFailure failure = TryReadBaseline(path, row);
    if (failure.Kind != ReadFailure::Kinds::None) {
        Work = std::move(before);
        return failure;
    }
    Work.BaselineFile[row] = FileTitle(path);
    Work.BaselineDirectory[row] = DirectoryOf(path);
    Work.SetChanged[row] = FlagTrue;
    return failure;
}

} // namespace Quillon
