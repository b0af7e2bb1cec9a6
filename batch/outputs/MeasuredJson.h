#pragma once
// What was measured and what follows from the constants, as members of the results
// (batch/outputs/ResultsJson.h).

#include <map>
#include <string>
#include <vector>

namespace Quillon {

// The files of the sets as a job has named them, by row of the table; empty where no job has.
struct SetFiles {
    std::string Value;              // of the key "file"
    std::vector<std::string> Files; // the one, or those of a mean
};
using FilesAsWritten = std::map<long, SetFiles>;

// "sets": a record for each set: set, row, label, points (true ones), rms, then file, sha256,
// baseline_sha256, cell, channel, speed_rpm, temperature_c, wavelength_nm, omega2t, time_s, averaged,
// inner_cm, outer_cm, path_cm, optics, mean_residual, runs_z, noise, mean_total and populations (by
// the names of the species). file is as the job has it, else the
// path.
std::string SetsJson(const FilesAsWritten& files);

// "derived": a record for each association constant: slot, name, ln_k, log10_k, kd, kd_root, unit,
// delta_g_kj, lower, upper (records of the same numbers, each number's own limit), convention, reason.
std::string DerivedJson();

} // namespace Quillon
