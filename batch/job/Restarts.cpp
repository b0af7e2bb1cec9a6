#include "batch/job/Restarts.h"

#include "batch/console/BatchPlatform.h"
#include "input/NUMINPUT.h"
#include "platform/Words.h"
#include "workspace/records/Cancel.h"

#include <string>

namespace Quillon {

namespace {

// "restarts: 2 minima in 7 fits, 1 of which ended at none; the lowest sum of squares is 1.2345E-3"
std::string MinimaLine(const MinimaMet& met) {
    std::string line = "restarts: " + Counted(static_cast<long>(met.Minima.size()), "minimum", "minima") +
                       " in " + Counted(met.Ended, "fit");
    if (met.Failed > 0) line += ", " + std::to_string(met.Failed) + " of which ended at none" + met.Broken;
    if (met.Minima.empty()) return line;
    return line + "; the lowest sum of squares is " +
           FormatNumber(met.Minima.front().Fit.SumSq, "#.######E-##");
}

} // namespace

std::optional<MinimaMet> RunRestarts(const RestartChoice& choice) {
    if (choice.Count == 0 || Interrupted() || Work.Outcome.End == FitEnd::Cancelled || !CanRestart())
        return std::nullopt;
    ClearCancel(); // of a failure in arithmetic
    long told = 0;
    MinimaMet met = SearchOtherMinima(choice, [&](long done) {
        if (done > told)
            WriteProgress("restarts: " + std::to_string(done) + " of " + std::to_string(choice.Count + 1) +
                          " fits");
        told = done;
    });
    ClearCancel();
    if (!met.Complete) {
        WriteFailure(RestartsCancelledText);
        return met;
    }
    WriteConsole(MinimaLine(met));
    if (!met.Minima.empty()) TakeMinimum(BestMinimum(met));
    return met;
}

} // namespace Quillon
