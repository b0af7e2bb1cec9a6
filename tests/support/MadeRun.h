#pragma once
// Folders of a run with known truth: which scan belongs to which group, and since when each is at
// equilibrium. The physics is a few lines of its own: an exponential column that comes to rest exponentially.

#include "tests/support/ArchiveMaker.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

struct RunPlan {
    bool NewNames = false; // else 00012.RA1
    std::vector<int> Cells = {1, 2};
    std::vector<double> Speeds = {10000, 14000, 20000}; // in the order of the run; one may come again
    std::vector<double> Wavelengths = {280};
    int Wander = 0;         // nm that a wavelength may be off, upwards
    int ScansPerStage = 10; // of each cell and wavelength at each speed
    int Points = 120;
    double Noise = 0.004;
    double Amplitude = 0.3;    // of the disturbance that dies away, signal units
    double DecayScans = 1.0;   // scans within which it falls to 1/e
    double Mass = 40.0;        // kDa of the one species
    double MissingShare = 0.0; // of cells, wavelengths and speeds that were not measured
    int Duplicates = 0;        // copies of scans under other names
    int Channels = 1;          // 3: samples at three places of the cell, noise between them
    std::uint64_t Seed = 1;
};

struct MadeScan {
    std::string Name;
    std::string Bytes;
    int Cell = 0;
    int Stage = 0;      // which of the speeds
    int Wavelength = 0; // which of the wavelengths
    int Number = 0;     // of the scan within its group, from 0
    bool Copy = false;  // of another scan
};

// The scans in the order of a folder's names.
std::vector<MadeScan> MakeRun(const RunPlan& plan);

// A scan as the instrument writes it.
std::string ScanFile(char letter, int cell, double rpm, long time, double wavelength,
                     const std::vector<double>& radii, const std::vector<double>& values);

// Writes the scans into a folder.
void WriteRun(const std::vector<MadeScan>& scans, const std::string& folder);

// They as entries of an archive.
std::vector<ArchiveEntry> EntriesOf(const std::vector<MadeScan>& scans);

} // namespace Quillon
