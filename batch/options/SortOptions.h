#pragma once
// The options of --sort, taken apart.

#include "runs/RunSets.h"

#include <string>

namespace Quillon {

struct SortOptions {
    std::string Place; // the folder or archive; "" no sorting is wanted
    std::string Job;   // where a job of the last scans goes; "" none
    RunChoice Choice;
};

// "3,4" of --cells; "260,280" of --wavelengths and --speeds; "260=1.7,230=4:3.5" of --ratios, where the
// second number is that of species B. What is none of it is a RuntimeError that names the option.
std::vector<long> ReadCells(const std::string& text);
std::vector<float> ReadNumberList(const char* option, const std::string& text);
std::vector<WavelengthRatio> ReadRatios(const std::string& text);

} // namespace Quillon
