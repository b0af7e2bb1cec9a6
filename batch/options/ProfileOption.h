#pragma once
// The option --profile SLOT=FILE or SLOT,SLOT=FILE, taken apart.

#include <string>
#include <vector>

namespace Quillon {

struct ProfileOption {
    std::vector<long> Slots; // one for a profile, two different ones for a map
    std::string Path;        // its ending chooses: csv, json, or a graph; "-" standard output, CSV
};

// Reads what stands behind --profile. Slots that are none and an ending that is not known are a RuntimeError
// that says so, without the program's name.
ProfileOption ParseProfileOption(const std::string& text);

// "2", "0,2": how messages call it.
std::string ProfileName(const ProfileOption& option);

} // namespace Quillon
