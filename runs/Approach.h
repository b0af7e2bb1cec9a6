#pragma once
// Is it at equilibrium? Each scan of a group against the last one.
//
// The noise of a scan is that of its second differences (scandata/reader/ScanDifference.h).
//
// The difference of two equal scans has the mean square 2 s^2. A scan agrees with the last one when it has at
// most 3 s^2, s being the median of the group: then what has still moved is no more than the noise.

#include "runs/SortedRun.h"

#include <string>

namespace Quillon {

// Fills Channels, Last and Judged of every group. Several channels are judged each and the worst counts; its
// noise and rms are those told. A group of ten or more scans whose last three differences lie above 20 times
// the noise becomes one of velocity; scans along wavelengths are not judged.
void JudgeRun(SortedRun& run, const ApproachRange& range);

// The rms up to which a scan of a judged group agrees with the last one, by the noise of its scans; of
// several channels whichever noise is told of each.
double AgreementLimit(const RunGroup& group);

// The verdict on a group in words: "at equilibrium since scan 7", "not yet at equilibrium", "one scan only",
// with "; scan 9 stands out" behind it. A scan is named by its number, or without one by its file. Three to
// nine scans that move as those of a velocity run do are told so.
std::string ApproachText(const SortedRun& run, const RunGroup& group);

} // namespace Quillon
