#pragma once
// Names, units and number pictures of the parameter slots.

namespace Quillon {

// Rebuilds Work.ParmName and Work.ParmTitle for all MaxSets sets, by the table of models in the units in
// force.
void BuildParmNames();

// Rebuilds Work.ParmFormat, the number pictures of the slots in user units.
void BuildParmFormats();

} // namespace Quillon
