#pragma once
// What the form of the studies shows, runs and takes, study by study. Shared by its own files.

#include "studies/StudyForm.h"
#include "studies/methods/ProfileMap.h"
#include "studies/methods/Resampling.h"

#include <functional>

namespace Quillon {

// One study behind the form.
struct StudyBehindForm {
    const char* Caption;
    const char* Head;
    const char* Run;       // caption of its button
    const char* Take;      // caption of the button that takes a result; "" none
    void (*AddInputs)();   // into StudyForm.Inputs
    void (*CheckInputs)(); // what cannot be read of them is a RuntimeError
    // Runs with the inputs as they stand, which have been checked.
    void (*RunStudy)(const std::function<void(const std::string& text, double fraction)>& told);
    // Takes up what is kept of the fit (studies/methods/StudyResults.h), inputs and all; false without any.
    bool (*Recall)();
    void (*Show)();                  // table, notes and progress from what was found
    bool (*MayTake)(int row);        // the row in the order of the study
    void (*TakeRow)(int row);        // makes it the fit
    std::string (*NotesOf)(int row); // of a row, -1 for the whole
    void (*Forget)();                // results are whole analyses
};

// MayTake and TakeRow of a study whose rows are no fits.
bool TakesNothing(int row);
void TakeNothing(int row);

const StudyBehindForm& StudyOf(StudyKind kind);

// What the form shows, for its graphs. The map is nullptr unless one was made last.
const Profile& FoundProfile();
const ProfileMap* FoundMap();
const Resampling& FoundResampling();

} // namespace Quillon
