#include "runs/FillTable.h"

#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/MeanScan.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/TableRows.h"
#include "workspace/records/Roads.h"

#include <utility>

namespace Quillon {

namespace {

void EmptyTable() {
    for (const RowNo row : EachRow())
        EmptyRow(row);
    Work.ConstraintFlags = 0;
    Work.HighestSet = 1;
}

void ReadScansOf(const SortedRun& run, const RunSet& set, RowNo row, const ScanPath& pathOf,
                 std::vector<std::string>& remarks) {
    std::vector<std::string> paths;
    for (const std::size_t i : set.Scans)
        paths.push_back(pathOf(run.Groups[set.Group].Scans[i]));
    const MeanReadResult mean = AdoptMean(paths, row, Ratios::Left);
    if (!mean.Read.Ok) RaiseError(mean.Path + ": " + mean.Read.Failure.Reason);
    if (!mean.Read.Remark.empty()) remarks.push_back(Work.ScanFile[row] + ": " + mean.Read.Remark);
}

void ChooseColumn(const RunChannel& column, RowNo row) {
    if (column.Channel > 0) {
        Work.CenterpieceType[row] = column.Samples;
        if (!SetChannel(row, column.Channel))
            RaiseError(RowName(row) + ": " + NoPointsInChannel(row, column.Channel));
    }
    if (!SetRadialRange(row, column.Inner, column.Outer))
        RaiseError(RowName(row) + ": the scan has no points in the range that was proposed");
}

void Relate(const RunSet& set, RowNo row) {
    Work.ExtinctionRatio[0][row] = set.Ratio ? set.Ratio->A : 1.0F;
    Work.ExtinctionRatio[1][row] = set.Ratio ? set.Ratio->B : 1.0F;
    Work.ConcLink[row] = ToInt16(static_cast<long>(set.ConcentrationsOf));
}

void TellOfReadings(const std::vector<RowNo>& rows, std::vector<std::string>& remarks) {
    DecideIntensityOrders(rows);
    for (const RowNo row : rows)
        for (const std::string& remark : {IntensityRemark(row), MeanRemark(row)})
            if (!remark.empty()) remarks.push_back(RowName(row) + ": " + remark);
}

} // namespace

std::vector<std::string> FillTable(const SortedRun& run, const std::vector<RunSet>& sets,
                                   const ScanPath& pathOf) {
    Workspace before = Work;
    std::vector<std::string> remarks;
    std::vector<RowNo> rows;
    try {
        EmptyTable();
        for (const RunSet& set : sets) {
            const RowNo row(static_cast<long>(rows.size()) + 1);
            ReadScansOf(run, set, row, pathOf, remarks);
            ChooseColumn(set.Column, row);
            Relate(set, row);
            rows.push_back(row);
        }
        TellOfReadings(rows, remarks);
    } catch (const RuntimeError&) {
        Work = std::move(before);
        throw;
    }
    return remarks;
}

} // namespace Quillon
