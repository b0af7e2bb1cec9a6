#pragma once
// A scan of a run: what its name and its header say, and its readings.

#include "platform/Arrays.h"
#include "scandata/reader/ScanDifference.h"
#include "scandata/reader/ScanNames.h"

#include <cstdint>
#include <string>

namespace Quillon {

// What was measured. Velocity is told by a whole group of scans, the others by one of them.
enum class ScanOptics { Absorbance, Interference, Intensity, Fluorescence, Wavelength, Velocity };

// "absorbance" ... "velocity".
const char* OpticsWord(ScanOptics optics);

// True for scans that an analysis of the equilibrium can use.
bool IsForEquilibrium(ScanOptics optics);

// Both header lines of a scan.
struct ScanHead {
    std::string Comment;
    char Letter = 0;     // type, as a capital
    long Cell = 0;       // 0 where no digit stands
    float Temperature{}; // degrees Celsius
    float Rpm{};
    std::int32_t Time{}; // s
    float Omega2t{};     // 1/s
    float Wavelength{};  // nm
    long Averaged{};     // readings per point
};

struct RunScan {
    std::string File; // path below the folder or in the archive
    ScanNameFacts Name;
    ScanHead Head;
    long Cell = 0; // by the name, else by the header
    ScanOptics Optics = ScanOptics::Absorbance;
    OneBased<float> Radii;    // cm; of a wavelength scan nm
    OneBased<float> Readings; // signal; of intensities log10(reference / sample), up to its sign
    std::size_t Bytes = 0;    // length of the file
    std::uint64_t Mark = 0;   // a number made of all its bytes
    std::string Whole;        // all of them, where the caller has asked to keep them
};

inline ScanReadings ReadingsOf(const RunScan& scan) {
    return {scan.Radii, scan.Readings};
}

// True when the first bytes of a file are those of a scan: two lines, of which the second begins with a
// letter, a blank and a cell and goes on with five numbers.
bool LooksLikeScan(std::string_view start);

// The whole of a scan; what is wrong with it is a RuntimeError in words that name the line. More than 32766
// readings, the most that a data set can have, are one. Readings whose intensities have no logarithm are
// left out.
RunScan ReadRunScan(const std::string& file, std::string_view bytes);

} // namespace Quillon
