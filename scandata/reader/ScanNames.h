#pragma once
// What the name of a scan file tells. Instruments name their files in one of two ways:
//
//     00012.RA1, 000012.IP3                      number of the scan; type and cell in the ending
//     Run7-s0001-c2-s0009-w280-r_-n1.ra1         step of speed, cell, number of the scan, wavelength and
//                                                replicate, each behind its letter; the ending is no cell

#include <optional>
#include <string>
#include <string_view>

namespace Quillon {

struct ScanNameFacts {
    bool HasFields = false;         // a newer name
    std::string RunId;              // of the newer names; "" of the others
    std::optional<long> Cell;       // from 1
    std::optional<long> Scan;       // its number
    std::optional<long> Step;       // of the speeds, newer names
    std::optional<long> Wavelength; // nm, newer names
    std::optional<long> Replicate;  // newer names
    char Type = 0; // the letters of the ending: 'A' of "RA", 'I' of "RI", 'P' of "IP", 'F' of
                   // "FI", 'W' of "WA", "WI" or "WR"; 0 for others
};

// What a name without its folder tells; letters in any case. A name of neither kind tells its ending alone.
ScanNameFacts ScanNameOf(std::string_view title);

} // namespace Quillon
