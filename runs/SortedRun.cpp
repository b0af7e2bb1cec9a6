#include "runs/SortedRun.h"

#include "runs/Approach.h"
#include "runs/Groups.h"
#include "runs/ReadRun.h"

namespace Quillon {

const char* EquilibriumWord(AtEquilibrium answer) {
    switch (answer) {
    case AtEquilibrium::Yes:
        return "yes";
    case AtEquilibrium::No:
        return "no";
    case AtEquilibrium::Outlier:
        return "outlier";
    case AtEquilibrium::Unknown:
        return "unknown";
    }
    return "";
}

SortedRun SortRun(const std::string& place, const ApproachRange& range, bool keepBytes) {
    SortedRun run = ReadRun(place, keepBytes);
    GroupRun(run);
    JudgeRun(run, range);
    return run;
}

} // namespace Quillon
