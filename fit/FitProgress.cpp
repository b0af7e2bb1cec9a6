#include "fit/FitProgress.h"

#include <utility>

namespace Quillon {

namespace {

thread_local const FitProgress* InUse = nullptr;

} // namespace

const FitProgress& Progress() {
    static const FitProgress nobody;
    return InUse ? *InUse : nobody;
}

ProgressInUse::ProgressInUse(const FitProgress& filling) : Former(std::exchange(InUse, &filling)) {}

ProgressInUse::~ProgressInUse() {
    InUse = Former;
}

void ReportPhase(FitPhase phase) {
    if (Progress().Phase) Progress().Phase(phase);
}
void ReportStep() {
    if (Progress().Step) Progress().Step();
}
void ReportIteration() {
    if (Progress().Iteration) Progress().Iteration();
}
void ReportWait() {
    if (Progress().Wait) Progress().Wait();
}
void ReportRemark(const std::string& sentence) {
    if (Progress().Remark) Progress().Remark(sentence);
}

} // namespace Quillon
