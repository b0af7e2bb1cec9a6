#pragma once
// Before a fit on a copy of the analysis: none stands yet.

namespace Quillon {

// No fit, no limits and no outcome are known of Work, and neither a cancel nor a failure of before.
// Parameters, marks and the options of the latest fit stay.
void ForgetFit();

} // namespace Quillon
