#pragma once
// Several scans that came to the same equilibrium, as one: their mean at each radius.
//
// The radii are those of the last scan; the others are read between their points by straight lines, and a
// radius that one of them does not reach is no point of the mean. With n scans y_k of weights w_k, the counts
// of readings averaged in each of their points,
//
//     y = sum w_k y_k / sum w_k        s^2 = sum w_k (y_k - y)^2 / ((n - 1) w),   w the mean of the w_k
//
// where s is the standard deviation of one scan of the mean weight. Of intensities the logarithms are
// averaged, so that the absorbance of the mean is the mean of the absorbances.

#include "scandata/reader/ScanReader.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

struct MeanReadResult {
    ScanReadResult Read;
    std::string Path; // the file that a failure is of, or the last one
};

// Reads the scans at paths into a row as AdoptScan reads one: header, name and directory are those of the
// last, the count of readings averaged is that of all. One path is a plain read. Scans of several cells (by
// name, else by header), speeds (1%), wavelengths (3 nm) or kinds are a failure, and so are scans without
// three radii in common; the workspace is then as it was.
MeanReadResult AdoptMean(const std::vector<std::string>& paths, RowNo row, Ratios ratios = Ratios::Compared);

// The root mean square of s over the range of a row; none for a row with one scan.
std::optional<double> RmsBetweenScans(RowNo row);

// "the mean of 3 scans (00001.RA1, 00002.RA1, 00003.RA1), rms between them 4.10E-03 over the range"; "" for a
// row with one scan.
std::string MeanRemark(RowNo row);

} // namespace Quillon
