#pragma once
// The fit monitor's form as data: rows of fitted parameters, the engine's state, three buttons. What the
// engine tells of its progress is written into the record; the buttons set MonitorMode or AbortFit and
// nothing else.

#include "fit/FitProgress.h"
#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* FitMonName = "FitMon"; // of the form, for the seam

struct FitMonForm {
    bool Loaded = false;
    std::string Caption;
    Control FitButton, NextIter, CancelButton, Page2;
    Control StatusText; // the label "Status"; a Tag that is not empty keeps it and AlphaText as they are
    Control AlphaText;  // the label "Alpha"
    Control IterNum;
    // One row for each free position, and at NumFree the row of the sum of squares.
    std::vector<Control> ParameterName, CurValue, PrevValue, BoundWarning;
    std::vector<Control> Label1, Label2, Label3, Label4; // column heads, one or two of each
    int Columns = 1;
    int RowsPerColumn = 0;
    bool Paged = false;
    bool ShowingPage2 = false;
};

// The one monitor of the process.
extern FitMonForm FitMon;

// Opens the monitor for a fit, as MonitorMode and the wish to pause say. The main window stays in its place
// and takes no commands meanwhile. Without a monitor (Monitor::None) nothing is shown. CloseFitMonitor undoes
// it, whatever has become of the fit, and brings the main window forward. [decision: main-window-stays]
void OpenFitMonitor();
void CloseFitMonitor();

// What the engine tells, written into the monitor: labels and rows, marks of parameters outside their bounds;
// the event queue is served, and while MonitorMode is Monitor::Stepping the engine waits for a button.
// Remarks are told in a box. Without a monitor it is empty but for the remarks.
FitProgress MonitorProgress();

void LoadFitMon();    // afresh, for the current parameters and fit flags
void UnloadFitMon();  // after the fit
void UpdateMonitor(); // after an iteration: previous values take the current ones, current ones are written

void FitMonFitButton();    // free run
void FitMonNextIter();     // releases one iteration
void FitMonCancelButton(); // cancels the fit
void FitMonPage2();        // shows the other rows

// Shows or hides the mark of a parameter that stands outside its bounds; a row on the other page keeps it.
void ShowBoundWarning(FreePos freePosition, bool outside);

// Write the engine's state and Alpha, unless the status is held by its tag.
void MonitorStatus(const std::string& text);
void MonitorAlpha();

} // namespace Quillon
