#pragma once
// The parameters of a fit as a table of texts, to be looked at and to be copied: one row for each slot in
// use. Numbers are in user units and in the pictures of their slots.

#include "workspace/records/Counts.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr std::array<const char*, 7> ParameterHeads = {"Parameter",   "Value", "Error", "Lower limit",
                                                              "Upper limit", "State", "Note"};

struct ParameterRow {
    SlotNo Slot = NoSlot;
    // In the order of ParameterHeads. A held parameter has no error, and
    // none has one where the inverse at the solution is not there; limits are those of the search, empty
    // before it, "not found" where it found none; State is "fitted", "held" or "tied".
    std::array<std::string, ParameterHeads.size()> Cells;
    bool operator==(const ParameterRow&) const = default;
};

// The rows of the fit that stands, or of the latest one that has failed; none before any fit.
std::vector<ParameterRow> ParameterRows();

// Some of the rows, by their places, as lines of cells with tabs between them, below a line of heads.
std::string ParameterText(const std::vector<ParameterRow>& rows, const std::vector<std::size_t>& places);

} // namespace Quillon
