#pragma once
// The window that stands while a print job runs, as data: it says so, and its button gives the job up.

#include "platform/Controls.h"

#include <string>

namespace Quillon {

inline constexpr const char* PrintEscName = "PrintEsc"; // of the form, for the seam

struct PrintEscRecord {
    FormState State;      // its caption is the program's title; shown as long as a job runs
    Control Message;      // what is going on
    Control CancelButton; // grey once it has been pressed: the job ends at its next step
};
extern PrintEscRecord PrintEsc; // there is one job at a time

void PrintEscCancelButton(); // raises the shared cancel flag, which the job asks for between its steps

// Shows the window for as long as it lives, with the cancel flag down; afterwards the flag is down again.
struct PrintEscScope {
    PrintEscScope();
    ~PrintEscScope();
    PrintEscScope(const PrintEscScope&) = delete;
    PrintEscScope& operator=(const PrintEscScope&) = delete;
};

// Lets pending events run; true when the job is to be given up.
bool PrintingCancelled();

// Tells why a job has stopped, and why a dialog of the printer has failed. reason: the error's text.
void TellPrintFailure(const std::string& reason);
void TellPrinterSetupFailure(const std::string& reason);

} // namespace Quillon
