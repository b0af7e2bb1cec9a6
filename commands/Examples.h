#pragma once
// The examples that come with the program: simulated scans with jobs that fit them.

#include <string>
#include <vector>

namespace Quillon {

struct Example {
    std::string Caption; // what was measured, in a few words
    std::string Job;     // the whole path of its job
};

// Those that are there, beside an installed program or in the tree that it was built in.
std::vector<Example> FoundExamples();

} // namespace Quillon
