#include "Robustness.h"

#include "models/SEDEQ3.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double NearEnough = 1e-3; // of the sum of squares

bool IsOffset(long slot) {
    return slot >= 8 && (slot - 7) % 3 == 0 && !OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
}

void MoveFarOff(long slot, double reach, NoiseSource& random) {
    float& p = Work.Parms[slot];
    if (IsOffset(slot) || (slot == 7 && !IsAdditiveSlot(7)))
        p = 0.0F; // as the program starts offsets and virial coefficients
    else if (!IsAdditiveSlot(slot))
        p *= static_cast<float>(0.7 + 0.7 * random.Uniform());
    else
        p += static_cast<float>(reach * (2.0 * random.Uniform() - 1.0));
}

// Constants of the sets' own start from one that is common to them and that far off; the guesses read it.
void StartFromCommonConstant(long (*slotOf)(long), long common, float off) {
    float sum = 0.0F;
    for (long s = 1; s <= Work.NumSets; ++s)
        sum += Work.Parms[slotOf(s)];
    Work.Parms[common] = sum / static_cast<float>(Work.NumSets) + off;
    for (long s = 1; s <= Work.NumSets; ++s)
        Work.Parms[slotOf(s)] = Work.Parms[common];
}

void MoveSeparateConstants(double reach, NoiseSource& random) {
    const auto off = [&] { return static_cast<float>(reach * (2.0 * random.Uniform() - 1.0)); };
    if (!Work.SeparateK) return;
    if (Work.Model <= 6) StartFromCommonConstant(SlotB, 2, off());
    if (OffsetSlotHoldsConstant(Work.Model, true))
        StartFromCommonConstant(SlotOffset, Work.Model < 6 ? 4 : 6, off());
}

// Model 22 keeps the concentrations that it has; its users come from model 21.
void Guess() {
    const std::int16_t model = Work.Model;
    if (model == 22) Work.Model = 21;
    InitialGuesses(false);
    Work.Model = model;
}

} // namespace

std::vector<std::string> RobustnessCases() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases()) {
        const std::string option = c.Name.substr(7); // behind "Model08"
        if (option.empty() || option.starts_with("NonIdeal") || option == "SeparateK")
            names.push_back(c.Name);
    }
    return names;
}

void LoadRobustnessCase(const ModelCase& theCase, std::uint64_t seed) {
    ModelCase fresh = theCase;
    fresh.Seed = seed;
    Work = SimulatedWorkspace(fresh);
    Work.MonitorMode = 0;
    BuildParmScale();
    BuildParmNames();
    BuildParmFormats();
    SetDefaultBounds();
}

void StartFarOff(double reach, std::uint64_t seed) {
    NoiseSource random(seed);
    for (long a = 0; a < Work.NumFree; ++a)
        if (Work.FreeIndex[a] < 8 || IsOffset(Work.FreeIndex[a]))
            MoveFarOff(Work.FreeIndex[a], reach, random);
    MoveSeparateConstants(reach, random);
    ApplyOffsetLinks();
    ApplyConcentrationLinks();
    BuildParmScale();
    Guess();
    Work.MaxIterations = 200;
}

const char* StandName(Stand stand) {
    switch (stand) {
    case Stand::Minimum:
        return "minimum";
    case Stand::OtherMinimum:
        return "other minimum";
    case Stand::FalseStop:
        return "FALSE STOP";
    default:
        return "told";
    }
}

Stand StandOfFit(double least) {
    const bool finite = std::isfinite(Work.SumSq) && Work.FitValid;
    if (Work.Outcome.End != FitEnd::Converged) return Stand::Told;
    if (finite && Work.SumSq <= least * (1.0 + NearEnough)) return Stand::Minimum;
    try {
        const ReferenceFit rest = FitReference(Work);
        const double below = static_cast<double>(rest.End.SumSq);
        return Work.SumSq <= below * (1.0 + NearEnough) ? Stand::OtherMinimum : Stand::FalseStop;
    } catch (const std::domain_error&) {
        return Stand::OtherMinimum; // derivatives of no new direction: nothing is to be gained along them
    }
}

} // namespace Quillon
