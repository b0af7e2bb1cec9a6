#pragma once
// The form "Run a Table of Fits" as data: a job with names in braces, a table whose rows fill them, and the
// summary that comes of it. The fits are run by the batch program that lies beside this one, on all cores;
// the open analysis is not touched.

#include "platform/Controls.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* TableFormName = "TableForm"; // of the form, for the seam

enum class TableFile { Job, Table, Summary };

struct TableFormRecord {
    FormState State;
    Control Head; // what is done here
    struct File {
        Control Label, Path, Button;
    };
    File Job, Table, Summary;
    Control RunButton, StopButton, CloseButton; // one of the first two is enabled, when all files are chosen
    double Fraction = 0.0;                      // of the rows that have ended
    Control Progress;                           // "12 of 40 rows", then how it ended
    std::vector<std::string> Lines;             // what was told, a row that failed among it
    bool Running = false;
};

// The one form of the process.
extern TableFormRecord TableForm;

// What runs the program, filled by whoever shows the form: Start answers false where it cannot be started,
// and hands each line of its standard error to TableFormTold and its end to TableFormEnded. Stop is its
// Ctrl-C.
struct TableProgram {
    std::function<bool(const std::string& program, const std::vector<std::string>& arguments)> Start;
    std::function<void()> Stop;
};
extern TableProgram TableRunner;

// The menu command: the form, shown modally, with the files of the last time in this run.
void RunTableOfFits();

void LoadTableForm();
TableFormRecord::File& TableFormFile(TableFile file);

// Asks for a file. A table that is chosen proposes a summary beside it.
void TableFormFileButton(TableFile file);

void TableFormRunButton();
void TableFormStopButton();
void TableFormCloseButton(); // closes; while a table runs, stops it

void TableFormTold(const std::string& line);
void TableFormEnded(
    int status); // the exit status of the batch program; negative when it did not end by itself

} // namespace Quillon
