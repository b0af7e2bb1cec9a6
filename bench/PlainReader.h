#pragma once
// What somebody writes who has these scans and a least squares library, and nothing of this program: a plain
// reader. Its only care is speed; a file that is not as expected ends the program.

#include "bench/Problem.h"

#include <string>

namespace Quillon::Bench {

// The description of a problem ("problem.txt": kind, sets, points, sigmas; for each set its scan and factors;
// the start), and the other way round. Numbers come back with their bits.
void WriteDescription(const Problem& p, const std::string& folder);

// The problem that a folder describes, its points read from the scans.
Problem ReadProblem(const std::string& folder);

// "set3.ra1", sets from 0.
std::string ScanName(int set);

} // namespace Quillon::Bench
