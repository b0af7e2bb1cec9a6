#pragma once
// Commands that do the same to many rows of the data set table. A scan is a file: rows that name the same
// file in the same directory are columns of one scan.

#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

// What a command has done: the rows that it has changed, and a sentence for each that it could not.
struct TableOutcome {
    std::vector<RowNo> Rows;
    std::vector<std::string> Refusals;
};

// The other scans of a row's cell, as their names tell it, take the row's centerpiece, channel and range: of
// each scan the row that has this channel already, or else the first one without a channel. The range is the
// same in cm. A scan that has no points there is left as it is. A name without a cell belongs to none.
TableOutcome ChannelAndRangeForCell(RowNo row);
bool HasCell(RowNo row);

// Each scan of the table gets a row for each channel of the row's centerpiece, A to C or A to D: a row
// without a channel takes the first that is missing, more are inserted behind it. Rows that have a channel
// stay. Nothing is changed where the table has too few rows: the refusal says how many it would take.
TableOutcome AllChannelsOfAllScans(RowNo row);

} // namespace Quillon
