#include "runs/RunSets.h"

#include "input/NUMINPUT.h"
#include "runs/Approach.h"
#include "runs/Groups.h"
#include "workspace/records/Counts.h"
#include "workspace/records/SameSettings.h"

#include <algorithm>
#include <functional>
#include <map>

namespace Quillon {

namespace {

const RunScan& LastScan(const SortedRun& run, const RunSet& set) {
    return run.Scans[run.Groups[set.Group].Scans[set.Scans.back()]];
}

// Values of the run's groups as a list, each once.
std::string Found(const SortedRun& run, const std::function<std::string(const RunGroup&)>& textOf) {
    std::vector<std::string> texts;
    for (const RunGroup& group : run.Groups)
        if (const std::string text = textOf(group);
            std::find(texts.begin(), texts.end(), text) == texts.end())
            texts.push_back(text);
    std::string list;
    for (const std::string& text : texts)
        list += (list.empty() ? "" : ", ") + text;
    return list;
}

std::string SpeedText(const SortedRun& run, const RunGroup& group) {
    return SingleText(LastOf(run, group).Head.Rpm);
}

std::string WavelengthText(const SortedRun& run, const RunGroup& group) {
    return SingleText(LastOf(run, group).Head.Wavelength);
}

// One of the things that a choice may name.
struct Criterion {
    const char* Name;
    std::vector<float> Wanted;
    std::function<float(const RunGroup&)> ValueOf;
    std::function<bool(float, float)> IsSame;
};

std::vector<Criterion> CriteriaOf(const SortedRun& run, const RunChoice& choice) {
    std::vector<Criterion> criteria(3);
    criteria[0] = {"cell",
                   {},
                   [](const RunGroup& g) { return static_cast<float>(g.Cell); },
                   [](float a, float b) { return a == b; }};
    for (const long cell : choice.Cells)
        criteria[0].Wanted.push_back(static_cast<float>(cell));
    criteria[1] = {"wavelength", choice.Wavelengths,
                   [&run](const RunGroup& g) { return LastOf(run, g).Head.Wavelength; }, IsSameWavelength};
    criteria[2] = {"speed", choice.Speeds, [&run](const RunGroup& g) { return LastOf(run, g).Head.Rpm; },
                   IsSameSpeed};
    return criteria;
}

bool IsMet(const Criterion& criterion, const RunGroup& group) {
    const auto& wanted = criterion.Wanted;
    return wanted.empty() || std::any_of(wanted.begin(), wanted.end(), [&](float value) {
               return criterion.IsSame(value, criterion.ValueOf(group));
           });
}

void RequireFound(const SortedRun& run, const Criterion& criterion) {
    for (const float value : criterion.Wanted) {
        const bool found = std::any_of(run.Groups.begin(), run.Groups.end(), [&](const RunGroup& group) {
            return criterion.IsSame(value, criterion.ValueOf(group));
        });
        if (!found)
            RaiseError(run.Place + ": there is no " + criterion.Name + " " + SingleText(value) +
                       " in it, but " +
                       Found(run, [&](const RunGroup& g) { return SingleText(criterion.ValueOf(g)); }));
    }
}

const WavelengthRatio* RatioAt(const std::vector<WavelengthRatio>& ratios, float wavelength) {
    const WavelengthRatio* nearest = nullptr;
    for (const WavelengthRatio& ratio : ratios) {
        if (!IsSameWavelength(ratio.Wavelength, wavelength)) continue;
        if (!nearest ||
            std::fabs(ratio.Wavelength - wavelength) < std::fabs(nearest->Wavelength - wavelength))
            nearest = &ratio;
    }
    return nearest;
}

// The same sample, seen at another wavelength: same cell and channel during one stay of the rotor.
bool IsSameSample(const SortedRun& run, const RunSet& a, const RunSet& b) {
    const RunScan &first = LastScan(run, a), &second = LastScan(run, b);
    return first.Cell == second.Cell && a.Column.Channel == b.Column.Channel &&
           a.Column.Samples == b.Column.Samples && IsSameSpeed(first.Head.Rpm, second.Head.Rpm) &&
           !IsSameWavelength(first.Head.Wavelength, second.Head.Wavelength) &&
           IsSameStay(run, run.Groups[a.Group], run.Groups[b.Group]);
}

// How many sets each value of a criterion brings, values that are the same as one.
struct SetCount {
    float Value;
    std::string Name;
    int Sets;
};

std::vector<SetCount> CountBy(const SortedRun& run, const std::vector<RunSet>& sets,
                              const Criterion& criterion,
                              const std::function<std::string(const RunGroup&)>& nameOf) {
    std::vector<SetCount> counts;
    for (const RunSet& set : sets) {
        const RunGroup& group = run.Groups[set.Group];
        const float value = criterion.ValueOf(group);
        const auto known = std::find_if(counts.begin(), counts.end(), [&](const SetCount& count) {
            return criterion.IsSame(count.Value, value);
        });
        if (known == counts.end())
            counts.push_back({value, nameOf(group), 1});
        else
            ++known->Sets;
    }
    return counts;
}

// "260 nm: 12, 280 nm: 12".
std::string Counts(const SortedRun& run, const std::vector<RunSet>& sets, const Criterion& criterion,
                   const std::function<std::string(const RunGroup&)>& nameOf) {
    std::string list;
    for (const SetCount& count : CountBy(run, sets, criterion, nameOf))
        list += (list.empty() ? "" : ", ") + count.Name + ": " + std::to_string(count.Sets);
    return list;
}

// Signals of two kinds are not on one scale; "" where there is one kind.
std::string MixedOptics(const SortedRun& run, const std::vector<RunSet>& sets) {
    const auto fringes = std::count_if(sets.begin(), sets.end(), [&](const RunSet& set) {
        return run.Groups[set.Group].Optics == ScanOptics::Interference;
    });
    const auto all = static_cast<std::ptrdiff_t>(sets.size());
    if (fringes == 0 || fringes == all) return "";
    return std::to_string(fringes) + " of the sets are interference data and " +
           std::to_string(all - fringes) +
           " absorbances, which one analysis cannot hold: choose by cell or wavelength";
}

// What there is to choose among, "" where an analysis holds all.
std::string TooManySets(const SortedRun& run, const std::vector<RunSet>& sets) {
    if (sets.size() <= StandardMaxSets) return "";
    const std::vector<Criterion> by = CriteriaOf(run, {}); // cell, wavelength, speed
    return std::to_string(sets.size()) + " sets are more than the " + std::to_string(StandardMaxSets) +
           " of an analysis: choose among them (" +
           Counts(run, sets, by[0], [](const RunGroup& g) { return "cell " + std::to_string(g.Cell); }) +
           "; " +
           Counts(run, sets, by[1], [&](const RunGroup& g) { return WavelengthText(run, g) + " nm"; }) +
           "; " + Counts(run, sets, by[2], [&](const RunGroup& g) { return SpeedText(run, g) + " rpm"; }) +
           ")";
}

// The verdict on the group of a set; "" for one that is at equilibrium.
std::string DoubtAbout(const SortedRun& run, std::size_t group) {
    const std::string verdict = ApproachText(run, run.Groups[group]);
    return verdict.starts_with("at equilibrium") ? "" : GroupName(run, group) + ": " + verdict;
}

std::string NoRatioText(float wavelength) {
    return "no extinction ratio is given for " + SingleText(wavelength) +
           " nm (1 for the wavelength in whose signal concentrations are counted): it is taken as 1 "
           "until it is, and its sets share no concentrations";
}

} // namespace

std::vector<std::size_t> ChosenGroups(const SortedRun& run, const RunChoice& choice) {
    const std::vector<Criterion> criteria = CriteriaOf(run, choice);
    for (const Criterion& criterion : criteria)
        RequireFound(run, criterion);
    std::vector<std::size_t> chosen;
    for (std::size_t g = 0; g < run.Groups.size(); ++g)
        if (std::all_of(criteria.begin(), criteria.end(),
                        [&](const Criterion& criterion) { return IsMet(criterion, run.Groups[g]); }))
            chosen.push_back(g);
    return chosen;
}

std::vector<std::size_t> EqualScans(const RunGroup& group) {
    std::vector<std::size_t> scans{group.Last};
    for (std::size_t i = group.Last; i-- > 0 && group.Judged[i].Answer == AtEquilibrium::Yes;)
        scans.insert(scans.begin(), i);
    return scans;
}

std::vector<RunSet> PlanSets(const SortedRun& run, const std::vector<std::size_t>& groups,
                             const RunChoice& choice) {
    std::vector<RunSet> sets;
    for (const std::size_t g : groups) {
        const RunGroup& group = run.Groups[g];
        if (!HasLast(group)) continue;
        const std::vector<std::size_t> scans =
            choice.Average ? EqualScans(group) : std::vector<std::size_t>{group.Last};
        for (const RunChannel& column : group.Channels)
            sets.push_back({g, scans, column, {}, false, 0});
    }
    RelateSets(run, sets, choice.Ratios);
    return sets;
}

void RelateSets(const SortedRun& run, std::vector<RunSet>& sets, const std::vector<WavelengthRatio>& ratios) {
    for (std::size_t i = 0; i < sets.size(); ++i) {
        RunSet& set = sets[i];
        const float wavelength = LastScan(run, set).Head.Wavelength;
        const WavelengthRatio* ratio = RatioAt(ratios, wavelength);
        set.Ratio = ratio ? std::optional(*ratio) : std::nullopt;
        set.LacksRatio = !ratio && !IsSameWavelength(wavelength, LastScan(run, sets.front()).Head.Wavelength);
        set.ConcentrationsOf = 0;
        for (std::size_t j = 0; j < i && !set.LacksRatio && set.ConcentrationsOf == 0; ++j)
            if (!sets[j].LacksRatio && sets[j].ConcentrationsOf == 0 && IsSameSample(run, sets[j], set))
                set.ConcentrationsOf = j + 1;
    }
}

std::string WhyNoAnalysis(const SortedRun& run, const std::vector<RunSet>& sets) {
    if (sets.empty()) return "no group that was chosen is a measurement of an equilibrium";
    const std::string mixed = MixedOptics(run, sets);
    return mixed.empty() ? TooManySets(run, sets) : mixed;
}

std::vector<std::string> RemarksOnSets(const SortedRun& run, const std::vector<RunSet>& sets) {
    std::vector<std::string> remarks;
    std::vector<float> lacking; // wavelengths without a ratio, each told once
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const bool first = i == 0 || sets[i - 1].Group != sets[i].Group;
        if (std::string doubt = DoubtAbout(run, sets[i].Group); first && !doubt.empty())
            remarks.push_back(std::move(doubt));
        const float wavelength = LastScan(run, sets[i]).Head.Wavelength;
        const bool told = std::any_of(lacking.begin(), lacking.end(),
                                      [&](float other) { return IsSameWavelength(other, wavelength); });
        if (!sets[i].LacksRatio || told) continue;
        lacking.push_back(wavelength);
        remarks.push_back(NoRatioText(wavelength));
    }
    return remarks;
}

std::string GroupName(const SortedRun& run, std::size_t group) {
    const RunGroup& of = run.Groups[group];
    return "Group " + std::to_string(group + 1) + " (cell " + std::to_string(of.Cell) + ", " +
           SpeedText(run, of) + " rpm, " + WavelengthText(run, of) + " nm)";
}

} // namespace Quillon
