// Any bytes at all as a fit save file: they are refused with a RuntimeError, or they make an analysis that
// can be used like one of this run. An entry for libFuzzer; tests/persistence drives it with mutations of
// valid files.
#include "models/function/FitFunction.h"
#include "persistence/FitFile.h"
#include "platform/Platform.h"
#include "platform/QuietPlatform.h"
#include "scandata/table/FitData.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace Quillon {
namespace {

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "a fit file passed with a bad %s\n", what);
    std::abort();
}

// A platform without files and without a user.
void InstallQuietPlatform() {
    InstallPlatform(QuietPlatform(BoxAnswer::No));
}

template <class T, long Lo, class Kind> bool Holds(const BasedArray<T, Lo, Kind>& a, long i) {
    return i >= Lo && i <= a.Hi();
}

// What the engine, the report and the graphs do with a fit's parameters.
void UseParameters(const Workspace& w) {
    for (long k = 0; k < w.NumParms; ++k)
        Require(Holds(w.Parms, k) && Holds(w.ParmName, k) && Holds(w.Bounds[0], k) && Holds(w.Bounds[1], k) &&
                    Holds(w.ParmScale, k) && Holds(w.ParmFormat, k) && Holds(w.ParmTitle, k) &&
                    (w.FreeMap[k] < 0 || Holds(w.Deriv, w.FreeMap[k])),
                "slot");
    for (long a = 0; a < w.NumFree; ++a) {
        Require(Holds(w.Parms, w.FreeIndex[a]), "FreeIndex");
        Require(!w.FitDone || w.FreeIndex[a] < w.NumParms, "FreeIndex of a fit");
        Require(w.NormMatrix.RowHi() >= a && w.NormMatrix.ColumnHi() >= a, "NormMatrix");
        Require(Holds(w.AtBound, a) && Holds(w.NormVector, a) && Holds(w.Increment, a), "working array");
        Require(!w.LimitsDone || (Holds(w.ParmLimits[0], a) && Holds(w.ParmLimits[1], a)), "ParmLimits");
    }
    Require(w.ModelName.Hi() == w.ModelCount, "ModelName");
}

void UseRows(const Workspace& w) {
    for (long row = 1; row <= w.MaxSets; ++row) {
        Require(w.ScanPoints[row] <= w.ScanRadius[row].Hi() && w.ScanPoints[row] <= w.ScanValue[row].Hi(),
                "ScanPoints");
        Require(w.BaselinePoints[row] <= w.BaselineRadius[row].Hi() &&
                    w.BaselinePoints[row] <= w.BaselineValue[row].Hi(),
                "BaselinePoints");
        Require(w.OffsetLink[row] == 0 || Holds(w.SetOfRow, w.OffsetLink[row]), "OffsetLink");
        const long code = w.CenterpieceType[row];
        const long channel = w.DataChannel[row];
        if (code >= 3 && channel > 0)
            Require(Holds(w.ChannelRadii, code - 3 + 2 * (channel - 1) + 8), "DataChannel");
    }
}

// Each point of each set finds its radius again.
void UsePoints(const Workspace& w) {
    if (!w.DataChosen && !w.FitDone && !w.FitValid) return;
    long point = 0;
    for (long set = 1; set <= w.NumSets; ++set) {
        const long row = w.SetRow[set];
        Require(Holds(w.ScanFile, row) && Holds(w.Parms, SlotOffset(set)), "SetRow");
        Require(w.SetOfRow[row] == set, "SetOfRow");
        for (long i = 0; i < w.SetPts[set]; ++i) {
            ++point;
            Require(Holds(w.PtX, point) && Holds(w.PtY, point) && Holds(w.PtFit, point), "point");
            Require(w.PtSet[point] == set, "PtSet");
            if (w.PtX[point] == PointMarker) continue;
            Require(Holds(w.ScanRadius[row], w.FitRange[0][row] + i), "FitRange");
        }
    }
    Require(point == w.NumPts, "NumPts");
}

// The fitted function at a few points, and the whole build of the points afresh. Both may meet numbers that
// they cannot work with, and say so.
void Compute() {
    if (!Work.DataChosen) return;
    for (long point = 1; point <= Work.NumPts && point <= 3; ++point)
        FitFunction(point);
    try {
        BuildFitData();
    } catch (const RuntimeError&) {
    }
}

} // namespace
} // namespace Quillon

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quillon;
    if (!Host.MessageBoxAnswer) InstallQuietPlatform();
    Work = FreshWorkspace();
    try {
        AdoptFit(std::string(reinterpret_cast<const char*>(data), size), "fuzz.quil");
    } catch (const RuntimeError& error) {
        Require(!error.Text.empty(), "error text");
        return 0;
    }
    const std::string saved = EncodeFit(Work);
    Require(EncodeFit(DecodeFit(saved, Work).Analysis) == saved, "second round trip");
    UseParameters(Work);
    UseRows(Work);
    UsePoints(Work);
    Compute();
    return 0;
}
