#pragma once
// The window that stands while the confidence limits are searched. Its one timer event runs the whole search;
// the event queue is served by the passes over the points.

#include "platform/Controls.h"

#include <functional>

namespace Quillon {

inline constexpr const char* WaitFormName = "WaitForm"; // of the form, for the seam

struct WaitFormRecord {
    FormState State;
    Control Label1;        // "This may take a while..."
    Control Label2;        // what is searched for
    Control Picture2;      // the bar: Text in its middle
    double Fraction = 0.0; // of the bar that is filled
    Control CancelButton;
};
extern WaitFormRecord WaitForm;

void LoadWaitForm();

// The search, and its failure in a box. Where it is run without a window, progress shows how far it is.
void SearchLimitsAndTell(const std::function<void(double fraction)>& progress);

void WaitFormTimer1(); // the first timer event after the window is there: the search
void WaitFormCancelButton();

} // namespace Quillon
