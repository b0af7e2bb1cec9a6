#pragma once
// The shared cancel flag around a painting that it is not meant for.

#include "chart/records/ChartSeams.h"

namespace Quillon {

// The cancel flag is down while this lives, so that a cancel from before, which is not meant for what is
// drawn now, does not leave it half drawn; it is back afterwards for whoever it was meant for. A cancel that
// comes meanwhile ends just this painting.
struct CancelScope {
    bool Before = ChartCancelled();
    CancelScope() { SetChartCancelled(false); }
    ~CancelScope() { SetChartCancelled(Before); }
    CancelScope(const CancelScope&) = delete;
    CancelScope& operator=(const CancelScope&) = delete;
};

} // namespace Quillon
