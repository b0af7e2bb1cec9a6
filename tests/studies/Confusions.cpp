#include "Confusions.h"

#include "SimulatedCase.h"
#include "fit/GNLLSQ.h"
#include "studies/methods/Comparison.h"
#include "tests/support/ReferenceFit.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

constexpr double Noise = 0.005;

ModelCase CaseOf(std::int16_t model) {
    ModelCase c = ModelCaseNamed("Model0" + std::to_string(model));
    c.Noise = Noise;
    if (c.Sets.size() < 6) c.Sets.push_back(c.Sets.front());
    c.Sets.back().Rpm = 18000;
    std::erase(c.Fitted, 0);
    std::erase(c.Fitted, 5);
    // The second component of those that have none: neither the monomer nor the dimer by another name.
    if (c.MassB == 0.0) c.MassB = 2.6 * c.MassA;
    return c;
}

// What the experiment does not fit and the model uses is held, as behind the guesses dialog.
void HoldTheRest() {
    for (const SlotNo slot : EachSlot()) {
        const SlotUse use = RuleOfSlot(slot).Use;
        const bool used = use != SlotUse::Hidden && use != SlotUse::HiddenZero && use != SlotUse::HiddenAsN &&
                          use != SlotUse::WhenNonIdeal;
        if (used && Work.FreeMap[slot] == SlotUnused) Work.FreeMap[slot] = SlotHeld;
    }
}

// The user's own fit: of the model that has made the data, from the truth.
void FitDraw(const ModelCase& theCase, std::uint64_t seed) {
    LoadCase(theCase);
    HoldTheRest();
    DrawNoise(Work, ReferenceParms(Work), Noise, seed);
    RunFit();
}

std::vector<ModelVariant> AllOfThem() {
    std::vector<ModelVariant> list;
    for (const std::int16_t model : ModelsToTell)
        list.push_back({model, false, false});
    return list;
}

// The place of the row with the largest weight; behind the last one without any.
std::size_t Heaviest(const Comparison& comparison) {
    std::size_t best = comparison.Rows.size();
    for (std::size_t i = 0; i < comparison.Rows.size(); ++i) {
        const std::optional<double>& weight = comparison.Rows[i].Weight;
        if (weight && (best == comparison.Rows.size() || *weight > *comparison.Rows[best].Weight)) best = i;
    }
    return best;
}

// Beside the best model by AICc those within so many units have as good a case (K. P. Burnham and D. R.
// Anderson, Model Selection and Multimodel Inference (2002), section 2.6).
constexpr double OpenUnits = 2.0;

void Count(const Comparison& comparison, std::size_t truth, Confusions& into) {
    const std::size_t chosen = Heaviest(comparison);
    ++(chosen < ModelsToTell.size() ? into.Chosen[truth][chosen] : into.None[truth]);
    const ComparedModel& row = comparison.Rows[truth];
    if (chosen != truth && row.DeltaAicc && *row.DeltaAicc <= OpenUnits) ++into.Open[truth];
    if (row.DeltaBic && *row.DeltaBic == 0.0) ++into.RightByBic[truth];
}

} // namespace

int Confusions::Draws(std::size_t truth) const {
    int sum = None[truth];
    for (const int count : Chosen[truth])
        sum += count;
    return sum;
}

int Confusions::Right() const {
    int sum = 0;
    for (std::size_t truth = 0; truth < ModelsToTell.size(); ++truth)
        sum += Chosen[truth][truth];
    return sum;
}

int Confusions::All() const {
    int sum = 0;
    for (std::size_t truth = 0; truth < ModelsToTell.size(); ++truth)
        sum += Draws(truth);
    return sum;
}

Confusions TellModelsApart(int draws, std::uint64_t seed) {
    Confusions confusions;
    for (std::size_t truth = 0; truth < ModelsToTell.size(); ++truth) {
        const ModelCase theCase = CaseOf(ModelsToTell[truth]);
        for (int i = 0; i < draws; ++i) {
            FitDraw(theCase, seed + 1000 * truth + static_cast<std::uint64_t>(i));
            Count(CompareModels(AllOfThem(), {}), truth, confusions);
        }
    }
    return confusions;
}

} // namespace Quillon
