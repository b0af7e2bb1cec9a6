#pragma once
// Names, units and number pictures of the parameter slots, and a slot as text by them: in forms, reports and
// tables.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// Rebuilds Work.ParmName and Work.ParmTitle for all MaxSets sets, by the table of models in the units in
// force.
void BuildParmNames();

// Rebuilds Work.ParmFormat, the number pictures of the slots in user units.
void BuildParmFormats();

// The name of a slot with its unit in parentheses behind it, when it has one: "Ln K(1>N)  (AU^1-N)". between
// stands in front of the parenthesis; columns of numbers take one blank.
std::string ParmCaption(SlotNo slot, const char* between = "  ");

// A value of a slot in user units, in the slot's number picture.
std::string ParmText(SlotNo slot);                  // of Work.Parms
std::string ParmText(SlotNo slot, float displayed); // of a value in user units

} // namespace Quillon
