#pragma once
// The job file: what is to be fitted, as sections of "key = value" lines.
//
//     [fit]          the model, its options, units, limits of the iteration
//     [constants]    partial specific volumes, density, coefficients
//     [set 1]        to [set 18]: a scan, the part of it that is fitted, its baseline and constraints
//     [simulation]   noise and seed of --simulate
//     [compare]      the models of --compare
//     [profile]      levels and steps of --profile
//     [approach]     radii of --sort
//     [plan]         designs of --plan
//     [resampling]   kind and level of --resample
//     [parameters]   "slot or name = value hold|fit lower x upper y"; "internal" before the value says that
//                    it is the one inside the program, bit for bit
//
// Sections and keys are read in any case. A line that starts with ";" or "#" is a comment, and so is the
// rest of a line from a ";" with a blank before it. A value in double quotes is taken as it stands.
//
// Nothing is guessed: an unknown section or key, one that stands twice, a value that is no number or out of
// its range, and settings that contradict each other are errors. An error is a RuntimeError whose text is one
// line that names file, line, section and key and says what is wrong, ready to be shown.

#include "batch/job/JobTable.h"
#include "planning/design/ExpectedErrors.h"
#include "runs/SortedRun.h"
#include "scandata/table/LeftOut.h"
#include "studies/methods/ModelVariant.h"
#include "studies/methods/OtherMinima.h"
#include "studies/methods/Profile.h"
#include "studies/methods/Resampling.h"
#include "workspace/records/Workspace.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

inline constexpr const char* ApproachSection = "approach";

// Where a section (key "") or a key stands; both in small letters.
struct JobPlace {
    std::string Section;
    std::string Key;
    int Line{};
};

enum class JobUnits { Signal, Weight, Molar };
enum class JobData { ByScans, Absorbance, Interference };

// One data set; row Number of the data set table.
struct JobSet {
    int Number{};
    std::string File;               // as written, one name or several between commas
    std::vector<std::string> Files; // each of them
    std::vector<Exclusion> Exclude; // radii left out, cm
    bool TellSpikes = false;        // readings that stand out are told, none is left out
    std::optional<float> Ceiling;   // fitted signal above which readings are left out
    bool TellCeiling = false;       // the signal above which the noise grows is told
    IntensityOrders::Code Intensity = IntensityOrders::None; // None: decided by the scans
    std::optional<float> Inner;                              // cm
    std::optional<float> Outer;                              // cm
    bool AutoRange = false;             // the range that the program proposes, within the channel
    std::int16_t Samples{};             // CenterpieceType: 1, 3 or 4 samples; 0 the standing one
    std::int16_t Channel{};             // 0 none, 1..4 for A..D
    std::optional<float> Path;          // cm
    std::string Baseline;               // as written; "" none
    std::optional<float> BaselineShift; // cm
    std::array<std::optional<float>, 2> ExtinctionRatio; // A, B
    std::array<float, 2> Loading{};                      // mean signal without offset; 0 no constraint
    std::array<float, 2> Tolerance{10.0F, 10.0F};        // percent
    int OffsetOf{};                                      // the set whose zero offset is shared; 0 none
    std::optional<float> Noise;                          // standard deviation, signal units
    int ConcentrationsOf{}; // the set whose ln c is shared, at the same radius; 0 none
};

// One line of [parameters].
struct JobParameter {
    enum class Mark { ByModel, Hold, Fit };
    std::string Name;           // as written: slot number or name
    std::optional<float> Value; // user units; nothing: the value is kept
    bool Internal = false;      // Value is that inside the program
    Mark Choice = Mark::ByModel;
    std::optional<float> Lower; // bounds, user units
    std::optional<float> Upper;
    int Line{};
};

// A setting that goes into a member of the workspace as it is.
struct JobSetting {
    float Workspace::*Member{};
    float Value{};
};

// The noise of a simulation: standard deviation in signal units.
struct JobSimulation {
    float Noise = 0.0F;
    int Seed = 1;
};

struct Job {
    std::string Path; // as given; messages name it, and relative paths start from its directory
    std::int16_t Model = 1;
    bool NonIdeal = false;
    bool SeparateK = false;
    std::int16_t MassUnits = 0; // 0 sigma, 1 buoyant, 2 molar mass
    JobUnits Concentration = JobUnits::Signal;
    JobData Data = JobData::ByScans;
    bool Guesses = true;
    bool NoiseFromFit = false; // the sets are weighted by their rms in a first fit
    bool ConfidenceLimits = false;
    RestartChoice Restarts{0, 1}; // none unless the job wants some
    bool Rescue = true;           // a fit that is no minimum is searched on with damped steps
    std::optional<std::int16_t> MaxIterations;
    std::int16_t TemperatureScale = TemperatureScales::Celsius;
    std::optional<std::int16_t> MaxPtsPerSet; // a scan holds at most one point fewer
    std::vector<JobSetting> Settings;         // of [fit] and [constants]
    std::vector<JobSet> Sets;                 // by rising number
    std::vector<JobParameter> Parameters;
    JobSimulation Simulation;
    std::vector<ModelVariant> Compare; // of [compare]; none without the section
    ProfileChoice Profile;             // of [profile]
    ResampleChoice Resampling;         // of [resampling]; the option has the count, [fit] the seed
    ApproachRange Approach;            // of [approach]
    PlanChoice Plan;                   // of [plan]; the job's own design without the section
    bool HasPlan = false;              // there is one
    std::vector<JobPlace> Places;

    const JobSet* FindSet(int number) const;
    // The line of a key, of its section if the key does not stand there, 0 if neither does.
    int LineOf(std::string_view section, std::string_view key) const;
};

// Reads a job from the text of its file; path is for messages and relative paths. With a row of a table its
// cells stand in place of the names in braces; without one braces are letters like others.
Job ParseJob(std::string_view text, const std::string& path, const JobRow* row = nullptr);

// Reads the job that may stand beside --sort: the section [approach] and nothing else.
ApproachRange ParseApproachJob(std::string_view text, const std::string& path);

// What is to be said of a key of a job, in one line: "fit.job:12: [set 2] inner: reason". The line number is
// left out when neither section nor key stands in the file, the key when it is empty.
std::string JobMessage(const Job& job, std::string_view section, std::string_view key,
                       const std::string& reason);

// Raises that as an error.
[[noreturn]] void FailJob(const Job& job, std::string_view section, std::string_view key,
                          const std::string& reason);

// The same for a line of [parameters].
[[noreturn]] void FailParameter(const Job& job, const JobParameter& parameter, const std::string& reason);

// "set 3", the section of a set.
std::string SetSection(int number);

// The scans of a set as written: one, or those that are averaged. An unquoted value with commas that as a
// whole is a file is that one.
std::vector<std::string> ScanNamesOf(const Job& job, const JobSet& set);

// A path of the job, relative ones from the directory of the job file.
std::string JobFilePath(const Job& job, const std::string& path);

} // namespace Quillon
