#include "graphs/kinds/AnalysisDigest.h"

#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

void AddSets(Digest& digest) {
    for (const SetNo set : EachSet()) {
        const RowNo row = RowOf(set);
        digest.Add(Work.SetRow[set]);
        digest.Add(Work.SetPts[set]);
        digest.Add(Work.SetLabel[set]);
        digest.Add(Work.ScanRPM[row]);
        digest.Add(Work.DataChannel[row]);
    }
}

} // namespace

std::uint64_t DigestOfAnalysis() {
    Digest digest;
    for (const std::int16_t word :
         {Work.NumSets, Work.NumPts, Work.FitValid, Work.NewData, Work.SpreadResiduals, Work.DataChosen})
        digest.Add(word);
    digest.Add(Work.DataTypeName);
    digest.Add(Work.XAxisTitle);
    AddSets(digest);
    digest.AddAll(Work.PtX);
    digest.AddAll(Work.PtY);
    if (Work.FitValid == 0) return digest.Value;
    digest.AddAll(Work.PtFit);
    digest.Add(Work.Model);
    digest.AddAll(Work.Parms);
    digest.AddAll(Work.ParmScale);
    return digest.Value;
}

} // namespace Quillon
