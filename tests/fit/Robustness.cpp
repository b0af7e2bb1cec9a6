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
    if (IsOffset(slot) || (slot == 7 && !IsAdditiveSlot(SlotNo(7))))
        p = 0.0F; // as the program starts offsets and virial coefficients
    else if (!IsAdditiveSlot(SlotNo(slot)))
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

// --- mixtures

constexpr float ExtinctionOfDna = 2.4e5F; // at 230 nm, L/(mol cm)
constexpr float ExtinctionOfProtein = 5e4F;

SimulatedSet MixtureSet(double signal, double proteinPerDna, float rpm) {
    SimulatedSet set;
    set.Rpm = rpm;
    set.Points = 100;
    set.OuterSignal = signal;
    set.ShareB = proteinPerDna * static_cast<double>(ExtinctionOfProtein / ExtinctionOfDna);
    set.Wavelength = 230.0F;
    return set;
}

// The DNA is twice as strong there, and of the protein a tenth is left.
SimulatedSet AtSecondWavelength(SimulatedSet set) {
    set.Wavelength = 260.0F;
    set.RatioA = 2.0F;
    set.RatioB = 0.1F;
    return set;
}

std::vector<SimulatedSet> MixtureSets(int wavelengths, NoiseSource& random) {
    std::vector<SimulatedSet> sets;
    for (int cell = 0; cell < (wavelengths == 1 ? 5 : 3); ++cell) {
        const double signal = 0.4 + 0.8 * random.Uniform();
        const double ratio = 0.1 * std::pow(20.0, random.Uniform());
        for (const float rpm : {15000.0F, 20000.0F, 25000.0F}) {
            sets.push_back(MixtureSet(signal, ratio, rpm));
            if (wavelengths == 2) sets.push_back(AtSecondWavelength(sets.back()));
        }
    }
    return sets;
}

ModelCase MixtureCase(const Mixture& mixture, std::uint64_t seed) {
    NoiseSource random(seed);
    ModelCase c;
    c.Model = mixture.Model;
    c.MassA = 23.9;
    c.MassB = 9.3;
    c.ExtA = ExtinctionOfDna;
    c.ExtB = ExtinctionOfProtein;
    c.LnK6 = 12.5 + 3.0 * random.Uniform();
    c.Slot7 = mixture.Model == 11 ? 3.0 * random.Uniform() - 1.5 : 0.0; // logarithm of the cooperativity
    c.Fitted = mixture.Model == 11 ? std::vector<long>{6, 7} : std::vector<long>{6};
    c.FitOffsets = false;
    c.Noise = 0.003;
    c.Sets = MixtureSets(mixture.Wavelengths, random);
    c.Seed = seed;
    return c;
}

void NumberFreeSlots() {
    Work.NumFree = 0;
    for (long slot = 0; slot < Work.NumParms; ++slot) {
        if (Work.FreeMap[slot] < 0) continue;
        Work.FreeMap[slot] = Work.NumFree;
        Work.FreeIndex[Work.NumFree] = ToInt16(slot);
        Work.NumFree = ToInt16(Work.NumFree + 1);
    }
}

// Every second set sees the molecules of the set before it.
void RepeatConcentrations() {
    for (long set = 2; set <= Work.NumSets; set += 2) {
        Work.Parms[SlotA(set)] = Work.Parms[SlotA(set - 1)];
        Work.Parms[SlotB(set)] = Work.Parms[SlotB(set - 1)];
    }
}

void ShareConcentrations() {
    for (long set = 2; set <= Work.NumSets; set += 2) {
        Work.ConcLink[Work.SetRow[set]] = Work.SetRow[set - 1];
        Work.FreeMap[SlotA(set)] = Work.FreeMap[SlotB(set)] = SlotTied;
    }
    NumberFreeSlots();
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

void LoadMixture(const Mixture& mixture, std::uint64_t seed) {
    const ModelCase c = MixtureCase(mixture, seed);
    Work = SimulatedWorkspace(c);
    if (mixture.Wavelengths == 2) RepeatConcentrations();
    DrawNoise(Work, ReferenceParms(Work), c.Noise, seed);
    if (mixture.Shared) ShareConcentrations();
    Work.MonitorMode = 0;
    BuildParmScale();
    BuildParmNames();
    BuildParmFormats();
    SetDefaultBounds();
}

void StartFromDefaults() {
    for (const long slot : {6, 7})
        Work.Parms[slot] = 0.0F;
    BuildParmScale();
    Guess();
    ApplyConcentrationLinks();
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
