#pragma once
// A job from its record to a finished fit in the workspace.

#include "batch/job/JobFile.h"
#include "batch/outputs/MeasuredJson.h"
#include "studies/methods/StudyResults.h"

#include <optional>
#include <string>

namespace Quillon {

// How a run ended. The fit itself stands in the workspace.
struct RunEnd {
    bool HasFit = false;               // there are results to be shown, of a minimum or not
    bool Converged = false;            // the fit did, at a minimum
    bool Complete = false;             // and whatever else the job asked for was done
    std::string Message;               // what the program said when it was not so
    std::optional<MinimaMet> Starts{}; // what the restarts have met; nothing without any
    RestartChoice Restarts{0, 1};      // those that were wanted
    PerSlot<float> Start{};            // what the fit, before any restarts, started from; empty without one
    FilesAsWritten Files{};            // the scans as the job has named them
    StudyResults Studies{};            // of the options that ask for some
    std::string StudyFailure{};        // why one of them could not be made; "" for none
};

// What the fit command has left in the workspace; an end that nobody has told yet is told on the console.
RunEnd EndOfFit();

// The same behind restarts around the start of that fit, where a count of them is wanted.
RunEnd EndOfRestarts(const RestartChoice& choice);

// A fresh workspace with the job's units and constants, its data sets and its model; parameters as the model
// starts with. What is wrong with the job or its files is a RuntimeError with one line.
void PrepareJob(const Job& job);

// The fit command once more, from the values and with the flags that stand: nothing is asked.
void FitAgain();

// Starts from a fresh workspace and a console of InstallBatchPlatform, in this order: units and constants,
// the data sets, the model; listed masses, stoichiometries and constants; the guesses, which depend on them;
// listed concentrations, offsets and fit flags; the fit; restarts and the confidence search where they are
// asked for. What is wrong with the job or its files is a RuntimeError with one line.
RunEnd RunJob(const Job& job);

} // namespace Quillon
