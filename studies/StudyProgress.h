#pragma once
// How far a study is, in words, with the time that is left.

#include "platform/Platform.h"

#include <string>

namespace Quillon {

struct StudyProgress {
    long All = 0;
    std::string What; // what is counted: "fits"
    ClockTime Started;
};

// A study that begins now.
StudyProgress StartProgress(long all, const std::string& what);

// "312 of 1000 fits", and from the second second on "312 of 1000 fits, 5 s left"; minutes above two of them.
std::string ProgressText(const StudyProgress& progress, long done);

// Of all, from 0 to 1.
double ProgressFraction(const StudyProgress& progress, long done);

} // namespace Quillon
