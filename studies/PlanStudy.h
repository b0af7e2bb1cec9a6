#pragma once
// The errors to be expected of designs (planning/design/ExpectedErrors.h), behind the form of the studies.

#include "studies/StudyKinds.h"

namespace Quillon {

// A table with a row for each design: its factors, and the expected errors of what all sets share, or of
// everything that is fitted where they share nothing.
const StudyBehindForm& PlanBehindForm();

} // namespace Quillon
