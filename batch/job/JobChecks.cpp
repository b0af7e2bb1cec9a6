#include "batch/job/JobChecks.h"

#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"

namespace Quillon {

namespace {

void CheckModel(const Job& job) {
    if (job.NonIdeal && !ModelAllowsNonIdeal(job.Model))
        FailJob(job, "fit", "nonideal", "non-ideality is allowed for the models 1 to 5 only");
    if (job.SeparateK && !ModelAllowsSeparateK(job.Model))
        FailJob(job, "fit", "separate-k", "separate binding constants are not allowed for this model");
    if (job.Concentration == JobUnits::Weight && TraitsOfModel(job.Model).TwoSpecies)
        FailJob(job, "fit", "concentration-units", "weight units are allowed for the models 1 to 6 only");
}

void CheckRange(const Job& job, const JobSet& set) {
    if (set.AutoRange && (set.Inner || set.Outer))
        FailJob(job, SetSection(set.Number), "range",
                "is proposed by the program, so that there is no inner or outer");
    if (set.Inner && set.Outer && *set.Inner > *set.Outer)
        FailJob(job, SetSection(set.Number), "inner", "lies beyond outer");
}

void CheckCell(const Job& job, const JobSet& set) {
    const std::string section = SetSection(set.Number);
    if (set.Channel > 0 && set.Samples == 1)
        FailJob(job, section, "channel", "a centerpiece of 2 channels has no channel to choose");
    if (set.Channel == 4 && set.Samples != 4)
        FailJob(job, section, "channel", "only a centerpiece of 8 channels has a channel D");
    if (set.BaselineShift && set.Baseline.empty())
        FailJob(job, section, "baseline-shift", "there is no baseline to shift");
}

void CheckConstraints(const Job& job, const JobSet& set) {
    const std::string section = SetSection(set.Number);
    if (set.Loading[1] > 0.0F && !TraitsOfModel(job.Model).TwoSpecies)
        FailJob(job, section, "loading-b", "this model has no species B");
    if (set.OffsetOf == 0) return;
    const JobSet* other = job.FindSet(set.OffsetOf);
    if (OffsetSlotHoldsConstant(job.Model, job.SeparateK))
        FailJob(job, section, "offset-of", "this model with separate constants has no zero offsets");
    if (!other) FailJob(job, section, "offset-of", "there is no set " + std::to_string(set.OffsetOf));
    if (other == &set) FailJob(job, section, "offset-of", "a set cannot be tied to itself");
    if (other->OffsetOf != 0)
        FailJob(job, section, "offset-of",
                "set " + std::to_string(set.OffsetOf) + " is tied to a set itself");
}

// Chains are refused: a set that follows another one has no concentrations to share.
void CheckSharedConcentrations(const Job& job, const JobSet& set) {
    if (set.ConcentrationsOf == 0) return;
    const auto fail = [&](const std::string& reason) {
        FailJob(job, SetSection(set.Number), "concentrations-of", reason);
    };
    const JobSet* other = job.FindSet(set.ConcentrationsOf);
    if (!other) fail("there is no set " + std::to_string(set.ConcentrationsOf));
    if (other == &set) fail("a set cannot be tied to itself");
    if (other->ConcentrationsOf != 0)
        fail("the concentrations of set " + std::to_string(set.ConcentrationsOf) + " are tied themselves");
}

// Noise in some sets only would leave the others without a weight.
void CheckNoise(const Job& job) {
    const JobSet* with = nullptr;
    const JobSet* without = nullptr;
    for (const JobSet& set : job.Sets)
        (set.Noise ? with : without) = &set;
    if (!with) return;
    if (job.NoiseFromFit) FailJob(job, SetSection(with->Number), "noise", "[fit] takes the noise from a fit");
    if (without)
        FailJob(job, SetSection(without->Number), "noise",
                "is missing, though set " + std::to_string(with->Number) +
                    " has one: it is given for every set or for none");
}

} // namespace

void CheckJob(const Job& job) {
    if (job.Sets.empty()) FailJob(job, "set 1", "", "is missing: a fit needs at least one data set");
    CheckModel(job);
    for (const JobSet& set : job.Sets) {
        if (set.File.empty()) FailJob(job, SetSection(set.Number), "file", "is missing");
        CheckRange(job, set);
        CheckCell(job, set);
        CheckConstraints(job, set);
        CheckSharedConcentrations(job, set);
    }
    CheckNoise(job);
}

} // namespace Quillon
