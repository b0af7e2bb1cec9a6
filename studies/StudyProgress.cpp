#include "studies/StudyProgress.h"

#include <algorithm>

namespace Quillon {

namespace {

long SecondsOfDay(const ClockTime& time) {
    return (time.Hour * 60L + time.Minute) * 60L + time.Second;
}

// Also over midnight.
long SecondsSince(const ClockTime& start) {
    constexpr long Day = 24L * 60L * 60L;
    return (SecondsOfDay(Host.Clock()) - SecondsOfDay(start) + Day) % Day;
}

std::string Duration(long seconds) {
    constexpr long Minute = 60;
    if (seconds <= 2 * Minute) return std::to_string(seconds) + " s";
    return std::to_string((seconds + Minute / 2) / Minute) + " min";
}

} // namespace

StudyProgress StartProgress(long all, const std::string& what) {
    return {all, what, Host.Clock()};
}

std::string ProgressText(const StudyProgress& progress, long done) {
    const std::string text =
        std::to_string(done) + " of " + std::to_string(progress.All) + " " + progress.What;
    const long elapsed = SecondsSince(progress.Started);
    if (elapsed < 2 || done < 1 || done >= progress.All) return text;
    const double each = static_cast<double>(elapsed) / static_cast<double>(done);
    const long left = static_cast<long>(each * static_cast<double>(progress.All - done)) + 1;
    return text + ", " + Duration(left) + " left";
}

double ProgressFraction(const StudyProgress& progress, long done) {
    if (progress.All < 1) return 1.0;
    return std::clamp(static_cast<double>(done) / static_cast<double>(progress.All), 0.0, 1.0);
}

} // namespace Quillon
