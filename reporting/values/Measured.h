#pragma once
// What was measured and how well it is fitted, set by set: what a paper tells of an experiment beside its
// results.

#include "workspace/records/Counts.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// A set of the fit. Statistics are those of its true points, which have no weights here; they are empty where
// no fitted values stand.
struct MeasuredSet {
    SetNo Set;
    RowNo Row;
    std::string File, Baseline; // paths; the baseline's "" where there is none
    std::string Sha256, BaselineSha256;
    std::string Remark, BaselineRemark; // on their readings, where there is one; else ""
    // Of a mean of several scans: their paths and hashes in order, the last one's those above, and the rms
    // between them over the range. Empty for a scan alone.
    std::vector<std::string> Files, Hashes;
    std::optional<double> RmsBetween;
    int Cell = 0;        // as the name of the file tells it; 0 where it does not
    std::string Channel; // "A" to "D"; "" for none
    std::string Optics;  // "absorbance" or "interference"
    float Rpm = 0.0F, Celsius = 0.0F, Wavelength = 0.0F; // nm
    float Omega2t = 0.0F;
    long Seconds = 0;
    int Averaged = 0;                 // readings averaged in each point
    float Inner = 0.0F, Outer = 0.0F; // first and last point, cm
    float Path = 0.0F;                // cm
    float Noise = 0.0F;               // that the set is weighted by; 0 for none
    float Ceiling = 0.0F;             // signal above which readings are left out; 0 for none
    std::vector<float> LeftOut;       // radii of readings that are left out, by rising place; cm
    // Of them: by hand, above the ceiling, without an absorbance.
    long LeftOutByHand = 0, LeftOutByCeiling = 0, LeftOutByIntensity = 0;
    std::string Columns; // of an intensity scan: "sample-first" or "reference-first"; "" for others
    long Points = 0;
    std::optional<double> Rms, MeanResidual, RunsZ;
    std::string Note; // as SetNote says it
    // The mean concentration of all monomers over the fitted range, in the unit of speciation, and the part
    // of them that each species has where mass action is left to itself at that concentration, in order of
    // SpeciesOfModel. Empty where a coefficient or a concentration is missing; where they could not be
    // calculated NoPopulations tells why.
    std::optional<double> Total;
    std::vector<double> Populations;
    std::string NoPopulations;
};

std::vector<MeasuredSet> MeasuredSets();

// The same for reports, a few lines for each set.
std::vector<std::string> MeasuredLines();

} // namespace Quillon
