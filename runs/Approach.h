#pragma once
// Is it at equilibrium? Each scan of a group against the last one.
//
// Noise of a scan: the second differences d(p) = y(p-1) - 2 y(p) + y(p+1) of independent readings with the
// standard deviation s have the mean square 6 s^2, and a smooth signal adds next to nothing to them:
//
//     s^2 = sum d(p)^2 / (6 (n - 2))
//
// (J. von Neumann, R. Kent, H. Bellinson and B. Hart, Ann. Math. Stat. 12, 153 (1941), for first differences;
// T. Gasser, L. Sroka and C. Jennen-Steinmetz, Biometrika 73, 625 (1986), for second ones.)
//
// The difference of two equal scans has the mean square 2 s^2. A scan agrees with the last one when it has at
// most 3 s^2, s being the median of the group: then what has still moved is no more than the noise.

#include "runs/SortedRun.h"

#include <optional>
#include <vector>

namespace Quillon {

// The noise of the readings between two radii, ends included; none for fewer than three of them.
std::optional<double> NoiseBetween(const RunScan& scan, float inner, float outer);

// The rms of scan - last at the radii of last from inner to outer, the readings of scan interpolated
// linearly; none where fewer than three radii of last lie within the reach of scan.
std::optional<double> RmsFrom(const RunScan& last, const RunScan& scan, float inner, float outer);

// The columns of a scan. With a chosen range those radii alone, one column. Else several channels, where
// within the radii of a centerpiece's channels (Work.ChannelRadii) two or more steady stretches are parted by
// breaks of the signal; those that hold no sample are left out: signal within 3 times the noise of nothing,
// and no more spread than twice the noise. Else one column, over the stretch that is proposed as a fitting
// range (scandata/range/ProposeRange.h), or where there is none over the whole scan.
std::vector<RunChannel> ChannelsOf(const RunScan& scan, const ApproachRange& range);

// Fills Channels, Last and Judged of every group. Several channels are judged each and the worst counts; its
// noise and rms are those told. A group of ten or more scans whose last three differences lie above 20 times
// the noise becomes one of velocity; groups that measure no equilibrium are not judged.
void JudgeRun(SortedRun& run, const ApproachRange& range);

// The rms up to which a scan of a judged group agrees with the last one, by the noise of its scans; of
// several channels whichever noise is told of each.
double AgreementLimit(const RunGroup& group);

// The verdict on a group in words: "at equilibrium since scan 7", "not yet at equilibrium", "one scan only",
// with "; scan 9 stands out" behind it. A scan is named by its number, or without one by its file. Three to
// nine scans that move as those of a velocity run do are told so.
std::string ApproachText(const SortedRun& run, const RunGroup& group);

} // namespace Quillon
