#pragma once
// The seam's filling for a run without anybody to ask: messages go to standard error, questions get the
// documented answers, files are those of the system (files/).
//
//     Messages    go to standard error, a question together with the answer that it was given.
//     Quiet       what tells of a failure is written, and nothing else.
//     Questions   "Do you want new guesses for the concentrations?" is answered with Yes, once, unless the
//                 job forbids it; a value outside its bounds is taken; everything else gets the answer that
//                 changes nothing (No, or Cancel where there is one).
//     Ctrl-C      sets a flag that the next service of the event queue turns into Work.AbortFit. A second
//                 one ends the program at once.
//     Progress    a line for each iteration on standard error, when that is a terminal or the work has
//                 taken two seconds.
//     RunPieces   on threads.
//     Uniform     the same numbers in every run with the same seed, which a job may name.

#include "fit/FitProgress.h"
#include "platform/Platform.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Quillon {

// What the filling works with; one run, one record.
struct BatchConsole {
    bool Quiet = false;     // failures alone are written
    bool NewGuesses = true; // the answer to the one question about guesses; No once it has been given
    std::string LastTold;   // the latest message that was no question
    std::uint64_t Seed = 1; // what SeedUniform starts the generator with
    int Threads = 0;        // pieces of work at a time; 0 as many as the machine has cores
    double Started = 0.0;   // seconds of the steady clock at the start of the run
    std::function<void(const std::string& form)> ShowModal; // what stands for the forms
    std::function<void(const std::string& line)> WriteLine; // standard error
    bool Monitored = false; // a fit is shown by the monitor, where a window stands for the console
    std::function<void(const std::string& line)> Progress; // what stands for lines of progress, if anything
};

// The console of the process.
extern BatchConsole Console;

// Starts afresh: a new console, the filling taken into use, the generator at its beginning, no Ctrl-C.
void InstallBatchPlatform();

// Writes one line to standard error; a quiet console writes none.
void WriteConsole(const std::string& line);

// Writes the line of a failure, on a quiet console too.
void WriteFailure(const std::string& line);

// The end of a run in a message that the program may have told already: writes what has not been written.
void WriteEnd(const std::string& message, bool told);

// Lines of progress, when they are wanted and worth it.
void WriteProgress(const std::string& line);

// What a fit of this program tells: a line of progress for each iteration, and remarks.
FitProgress BatchProgress();

// Ctrl-C from here on sets the flag. Interrupted tells whether it has come.
void WatchInterrupt();
bool Interrupted();

} // namespace Quillon
