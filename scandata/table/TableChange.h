#pragma once
// What a command of the data set table has changed, in words for its line of messages.

#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

// The difference between two states of the table: "Set 1: channel B, 6.3700 to 6.6500 cm"; with several rows
// "Sets 2, 5: path 3 mm" where the same was done to all of them, else "Sets 2, 5 changed". "" when the table
// is the same.
std::string DescribeTableChange(const Workspace& before, const Workspace& after);

// "1", "1, 2" of rows.
std::string RowList(const std::vector<RowNo>& rows);

} // namespace Quillon
