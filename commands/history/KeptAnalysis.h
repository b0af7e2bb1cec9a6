#pragma once
// A copy of the analysis for the history, which shares with another copy what is the same in both.
//
// What is large in an analysis, the points of its scans and of its fit, changes seldom: it is compared bit by
// bit with the other copy, which is far quicker than to copy it, and held in common where nothing differs.

#include "workspace/records/Workspace.h"

#include <memory>
#include <vector>

namespace Quillon {

struct KeptAnalysis {
    Workspace Small;                                // all members but the large ones, which are empty
    std::vector<std::shared_ptr<const void>> Large; // those, in the order of the struct
};

// The analysis as it is. like, where given, is an earlier copy to share with.
KeptAnalysis KeepAnalysis(const Workspace& analysis, const KeptAnalysis* like = nullptr);

// The analysis that was kept, every member bit for bit.
Workspace WholeAnalysis(const KeptAnalysis& kept);

} // namespace Quillon
