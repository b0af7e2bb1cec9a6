#include "batch/outputs/PointsCsv.h"

#include "batch/outputs/Numbers.h"
#include "batch/outputs/SetPoints.h"
#include "fit/Sums.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

std::string PointLine(const SetPoints& points, long n) {
    std::string line = std::to_string(points.Set.Number) + "," + std::to_string(points.Row.Number) + ",";
    if (n <= points.LastTrue) {
        const long inScan = Work.FitRange[0][points.Row] + (n - points.First);
        line += "data," + ShortestText(Work.ScanRadius[points.Row][inScan]) + "," + ShortestText(Work.PtX[n]);
    } else {
        line += "constraint,,";
    }
    return line + "," + ShortestText(Work.PtY[n]) + "," + ShortestText(Work.PtFit[n]) + "," +
           ShortestText(Work.PtResid[n]) + "\n";
}

} // namespace

std::string PointsCsv() {
    CalcResiduals();
    std::string text = "set,row,kind,radius_cm,x_cm2,y,fit,residual\n";
    text.reserve(static_cast<std::size_t>(Work.NumPts + 1) * 72); // about a line
    for (const SetPoints& points : PointsBySet())
        for (long n = points.First; n <= points.Last; ++n)
            text += PointLine(points, n);
    return text;
}

} // namespace Quillon
