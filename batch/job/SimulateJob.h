#pragma once
// A job simulated in place of a fit: the model at the values of the job, written as scans with a job that
// reads them.

#include "batch/job/JobFile.h"
#include "batch/job/JobParameters.h"

#include <string>
#include <vector>

namespace Quillon {

// A file of the folder, complete in memory.
struct SimulatedFile {
    std::string Name;
    std::string Bytes;
};

// A fresh workspace with the job's data sets, units, model, and its listed values as the truth. A parameter
// that the job does not list is an error of the job, zero offsets apart, which are 0.
std::vector<ListedParm> TakeTruth(const Job& job);

// The scans of all sets and "simulated.job". text is that of the job's file: what it says of the fit, the
// constants and the sets goes over into the new job as it stands, but for what the new scans have settled
// (range, channel, baseline). Fails as TakeTruth. Empty when the model met an
// arithmetic fault, which has been told.
std::vector<SimulatedFile> SimulateJob(const Job& job, const std::string& text);

// Makes sure that files can go to a folder: that it is empty, or can be made. A RuntimeError says why not.
void CheckSimulationFolder(const std::string& folder);

// Makes the folder where it is missing and writes the files. When one cannot be written those before it, and
// a folder that was made, are removed, and a RuntimeError names it.
void WriteSimulation(const std::string& folder, const std::vector<SimulatedFile>& files);

} // namespace Quillon
