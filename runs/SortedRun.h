#pragma once
// A run, sorted: its scans, and the groups that were to come to one equilibrium each.
//
// A group holds the scans of one cell, one kind of optics, one wavelength and one stay at one speed, by time.
// What reads, groups and judges them: runs/ReadRun.h, runs/Groups.h, runs/Approach.h; all of it in one call:
// SortRun.

#include "runs/RunScan.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// A column of a cell: the channel of a centerpiece with several samples, and the radii that are compared.
struct RunChannel {
    std::int16_t Samples = 1; // code of the centerpiece, as in the table of data sets
    std::int16_t Channel = 0; // 1..4 for A..D; 0 the only one
    float Inner{};            // cm, of the first and the last reading
    float Outer{};
};

// What is said of a scan against the last one of its group.
enum class AtEquilibrium { Yes, No, Outlier, Unknown };

// "yes", "no", "outlier", "unknown".
const char* EquilibriumWord(AtEquilibrium answer);

struct ScanJudgement {
    std::optional<double> Noise; // standard deviation of a reading, from second differences; signal units
    std::optional<double> Rms;   // of the difference from the last one; none where the two do not overlap
    AtEquilibrium Answer = AtEquilibrium::Unknown;
};

struct RunGroup {
    long Cell = 0;
    ScanOptics Optics = ScanOptics::Absorbance;
    long Stay = 0;                  // of the rotor at a speed, counted over the scans of one folder
    std::vector<std::size_t> Scans; // subscripts in SortedRun::Scans, by time
    std::size_t Last = 0;           // subscript in Scans of the one that all are compared with
    std::vector<RunChannel> Channels;
    std::vector<ScanJudgement> Judged; // for each of Scans
};

struct SortedRun {
    std::string Place;
    std::vector<RunScan> Scans;
    std::vector<RunGroup> Groups;     // by cell, speed, wavelength; group n is Groups[n - 1]
    std::vector<std::string> Remarks; // what the user is to be told, a sentence each
};

// The scan that a job takes of a group; false for none, where no equilibrium was measured.
inline bool HasLast(const RunGroup& group) {
    return IsForEquilibrium(group.Optics);
}
inline const RunScan& LastOf(const SortedRun& run, const RunGroup& group) {
    return run.Scans[group.Scans[group.Last]];
}

// Radii of a comparison that the user has chosen; nothing: as the program proposes.
struct ApproachRange {
    std::optional<float> Inner, Outer; // cm
};

// Reads, groups and judges what lies at a place. Failures are those of ReadRun.
SortedRun SortRun(const std::string& place, const ApproachRange& range, bool keepBytes);

} // namespace Quillon
