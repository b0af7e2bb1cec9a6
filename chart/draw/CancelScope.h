#pragma once
// The shared cancel flag around a painting that it is not meant for.

#include "chart/records/ChartSeams.h"
#include "platform/Narrow.h"

#include <cstdint>

namespace Quillon {

// The cancel flag is down while this lives, so that a cancel from before, which is not meant for what is
// drawn now, does not leave it half drawn; it is back afterwards for whoever it was meant for. A cancel that
// comes meanwhile ends just this painting.
struct CancelScope {
    std::int16_t Before = Seams.CancelFlag != nullptr ? *Seams.CancelFlag : FlagFalse;
    CancelScope() { Set(FlagFalse); }
    ~CancelScope() { Set(Before); }
    CancelScope(const CancelScope&) = delete;
    CancelScope& operator=(const CancelScope&) = delete;
    static void Set(std::int16_t flag) {
        if (Seams.CancelFlag != nullptr) *Seams.CancelFlag = flag;
    }
};

} // namespace Quillon
