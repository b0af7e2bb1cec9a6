#pragma once
// The form of the studies that answer with a table, as data: comparison of models, profile of a parameter,
// resampling, plan of an experiment. Which of them it shows is chosen as it is loaded. The user's own fit
// stays as it is until a result is taken.

#include "platform/Controls.h"

#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* StudyFormName = "StudyForm"; // of the form, for the seam

enum class StudyKind { Compare, Profile, Resample, Plan };

// A question that the study needs answered: a text box, or a list where Box has Items (Value is the place of
// the chosen one).
struct StudyInput {
    Control Label, Box;
};

struct StudyFormRecord {
    FormState State;
    StudyKind Kind = StudyKind::Compare;
    Control Head; // what the study does
    std::vector<StudyInput> Inputs;
    Control RunButton, StopButton; // one of them is enabled
    double Fraction = 0.0;
    Control Progress; // "312 of 1000 fits, 4 s left", then what was found
    std::vector<std::string> Columns;
    std::vector<std::vector<std::string>> Rows;
    int Chosen = -1; // the row that is marked
    Control Notes;   // of the marked row, or of the whole
    Control TakeButton, GraphButton, CorrelationsButton, CopyButton, CloseButton;
    bool Taken = false;       // the form was left by taking a result
    void (*Draw)() = nullptr; // draws what stands in the table; set by whoever shows the form
};

// The one form of the process.
extern StudyFormRecord StudyForm;

// Puts a question with a text box behind those that the form has.
void AddTextInput(const char* label, const std::string& text, const char* tip);

// True when the study can be run on the analysis that stands.
bool CanStudy(StudyKind kind);

// Fills the form for a study, with what it found last of the fit that stands
// (studies/methods/StudyResults.h). CanStudy has to hold.
void LoadStudyForm(StudyKind kind);

// A text box: its text is as the user has left it and is checked when the study is run. A list: the row that
// the user takes.
void StudyFormGotFocus(int input);
int StudyFormKeyPress(int input, int key);
void StudyFormLostFocus(int input);
void StudyFormListRow(int input, int row);

// Runs the study, serving events meanwhile, and fills the table; what cannot be read is told and takes the
// focus. Stop ends it, and the table then holds what there is.
void StudyFormRunButton();
void StudyFormStopButton();

void StudyFormRow(int row);     // marks a row, from 0
int MarkedStudyRow();           // the marked row in the order of the study, -1 without one
void StudyFormSort(int column); // sorts the rows by a column, and backwards when it is sorted by it already
void StudyFormTakeButton();     // the marked result becomes the fit, and the form closes
void StudyFormGraphButton();    // the curve, the contours, or the histogram of the marked row
void StudyFormCorrelationsButton(); // of a resampling: the table of all correlations, at its own form
void StudyFormCopyButton();         // the table as text on the clipboard
void StudyFormCloseButton();        // closes; while a study runs, stops it

} // namespace Quillon
