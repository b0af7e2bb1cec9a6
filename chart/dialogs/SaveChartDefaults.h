#pragma once
// The command that makes present settings the defaults, one question at a time.

namespace Quillon {

// The command: asks which of the present settings become defaults, and writes those.
void SaveChartDefaults();

} // namespace Quillon
