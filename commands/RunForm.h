#pragma once
// The form "Read a Run" as data: a sorted run as a tree of cells, speeds, wavelengths and scans. What is
// ticked goes into the table of data sets.

#include "models/forms/DialogAnswer.h"
#include "platform/Controls.h"
#include "runs/RunSets.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* RunFormName = "RunForm"; // of the form, for the seam

// A line of the tree; those below it follow it.
struct RunLine {
    enum Ticks : std::int16_t { None, All, Some };
    int Depth = 0; // 0 cell, 1 speed, 2 wavelength (a group), 3 scan
    // What it is, count of scans, time since the start of the run, equilibrium in words.
    std::array<std::string, 4> Texts;
    Ticks Ticked = None;
    bool CanTick = true;                // false: it measures no equilibrium
    std::uint32_t Color = DefaultColor; // of the words on equilibrium
    std::size_t Group = 0;              // subscript in the run, at depth 2 and 3
    std::size_t Scan = 0;               // subscript in the group, at depth 3
};

// A wavelength of the run, with the extinction of both species at it.
struct RunRatio {
    float Wavelength = 0.0F; // nm
    Control Label, A, B;     // a B that is empty is that of A
};

struct RunFormRecord {
    FormState State;
    Control Head; // what was read, and from where
    std::array<std::string, 4> Columns;
    std::vector<RunLine> Lines;
    std::size_t Marked = 0; // the line that has the focus
    Control AllButton, NoneButton;
    Control GraphButton; // enabled on a wavelength that has several scans, and on those
    Control Average;     // check box: the equal scans of a group as their mean
    Control RatioHead;
    std::vector<RunRatio> Ratios; // where the run has several wavelengths
    Control Count;                // how many sets are ticked, or why they cannot be read
    Control Remarks;              // what was left alone; hidden where nothing was
    Control OkButton, CancelButton;
    DialogAnswer Answer = DialogAnswer::Cancel;
};

// The one form of the process.
extern RunFormRecord RunForm;

// Loads the form with a run, the last scan of each group ticked, and shows it. The run has to stay while it
// is open. Gives the sets that were ticked; none after a Cancel.
std::vector<RunSet> ShowRunForm(const SortedRun& run);

void LoadRunForm(const SortedRun& run);
// A tick of a line: that of a scan takes or leaves it; one above takes the standing choice of each group
// below it (its last scan, or its equal ones), or leaves all of them.
void RunFormTick(std::size_t line);
void RunFormMark(std::size_t line); // the focus goes to a line
void RunFormGraphButton();          // how the scans of the marked group came to the last one, against time
void RunFormAllButton();
void RunFormNoneButton();
void RunFormAverage(); // the box was clicked: the ticks of each group in the choice become the standing ones
void RunFormRatioGotFocus(std::size_t ratio, std::size_t species);
int RunFormRatioKeyPress(std::size_t ratio, std::size_t species, int key);
void RunFormRatioLostFocus(std::size_t ratio, std::size_t species); // refuses what is not above 0
void RunFormOkButton();     // asks first where a ratio that is needed is not given
void RunFormCancelButton(); // nothing is read

} // namespace Quillon
