#pragma once
// Which sets of an analysis a sorted run gives: one for each column of each group that was chosen.

#include "runs/SortedRun.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// The extinction of both species at a wavelength, against that in which concentrations are counted.
struct WavelengthRatio {
    float Wavelength{}; // nm; scans within 3 nm are meant
    float A = 1.0F;
    float B = 1.0F;
};

// What a user wants of a run; nothing named: all of it.
struct RunChoice {
    std::vector<long> Cells;
    std::vector<float> Wavelengths; // nm, within 3 nm
    std::vector<float> Speeds;      // rpm, within 1%
    std::vector<WavelengthRatio> Ratios;
    bool Average = false; // of each group the mean of its last scans that agree, not the last one alone
};

// The groups chosen, as subscripts in rising order. A cell, wavelength or speed that is not in the run is a
// RuntimeError that names it and those that are.
std::vector<std::size_t> ChosenGroups(const SortedRun& run, const RunChoice& choice);

// A set: a column of the scans of a group that are averaged, mostly of one.
struct RunSet {
    std::size_t Group = 0;          // subscript in the run
    std::vector<std::size_t> Scans; // subscripts in the group, the last one last
    RunChannel Column;
    std::optional<WavelengthRatio> Ratio; // one was named
    bool LacksRatio = false;              // none was, and the wavelength is another one than that of set 1
    std::size_t ConcentrationsOf = 0;     // the number of the set that holds the same sample; 0 none
};

// The scans of a group that its mean is made of, as subscripts in it: the last one and those before it that
// agree with it as all between them do. The last one alone where none does.
std::vector<std::size_t> EqualScans(const RunGroup& group);

// The sets of groups, each with its last scan, or with its equal scans: by group, then by channel. Sets of
// one cell, channel and stay at a speed share the concentrations of the first of them whose extinction is
// known; one that lacks its ratio shares nothing. Groups that measure no equilibrium give none. Of choice the
// ratios and the average count.
std::vector<RunSet> PlanSets(const SortedRun& run, const std::vector<std::size_t>& groups,
                             const RunChoice& choice);

// Settles Ratio, LacksRatio and ConcentrationsOf of sets anew, for the order in which they stand.
void RelateSets(const SortedRun& run, std::vector<RunSet>& sets, const std::vector<WavelengthRatio>& ratios);

// The name or the path of the file of a scan, which is given as a subscript of run.Scans.
using ScanPath = std::function<std::string(std::size_t scan)>;

// Why the sets cannot stand in one analysis: too many (with how many each cell, wavelength and speed
// brings), none, or fringes beside absorbances. "" when they can.
std::string WhyNoAnalysis(const SortedRun& run, const std::vector<RunSet>& sets);

// What is to be told of sets before they are fitted, a sentence each: groups that are not at equilibrium,
// ratios that are not known.
std::vector<std::string> RemarksOnSets(const SortedRun& run, const std::vector<RunSet>& sets);

// "Group 4 (cell 2, 16000 rpm, 280 nm)".
std::string GroupName(const SortedRun& run, std::size_t group);

} // namespace Quillon
