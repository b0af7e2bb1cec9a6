#pragma once
// Runs of quillon-fit for the tests: the built program as a process of its own, and the same code inside the
// test.

#include <string>
#include <vector>

namespace Quillon {

struct ProgramEnd {
    int Status = -1; // exit status; -1 when a signal ended it
    std::string Out;
    std::string Err;
};

struct ProgramStart {
    std::vector<std::string> Arguments;
    std::string Directory;      // where it runs; "" here
    std::string InterruptAfter; // once standard error holds this text, the program gets Ctrl-C
    bool Unprivileged = false;  // not as root, who may read everything
    long LargestFile = 0;       // bytes that a file may grow to; 0 no limit
    long LargestData = 0;       // bytes of memory beside stack and code; 0 no limit
};

// The built program.
ProgramEnd RunProgram(const ProgramStart& start);

// RunQuillonFit in this process, its outputs caught.
ProgramEnd RunInside(const std::vector<std::string>& arguments);

// The lines of a text, without their ends.
std::vector<std::string> LinesOf(const std::string& text);

} // namespace Quillon
