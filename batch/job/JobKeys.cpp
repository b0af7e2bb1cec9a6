// The keys of each section and what their values may be.
#include "batch/job/JobKeys.h"
#include "batch/console/OneLine.h"
#include "models/table/Catalogue.h"
#include "platform/Letters.h"

#include <algorithm>
#include <limits>
#include <span>

namespace Quillon {

namespace {

struct FitKey {
    const char* Name;
    void (*Read)(JobReader& reader, const std::string& value);
};

void AddSetting(JobReader& reader, float Workspace::*member, float value) {
    reader.Result.Settings.push_back({member, value});
}

void ReadConfidenceLevel(JobReader& reader, const std::string& value) {
    const float level = ReadNumber(reader, value);
    if (!(level > 0.0F && level < 1.0F)) reader.Fail(Quoted(value) + " is not between 0 and 1");
    AddSetting(reader, &Workspace::ConfidenceLevel, level);
}

constexpr FitKey FitKeys[] = {
    {"model", [](JobReader& r,
                 const std::string& v) { r.Result.Model = ToInt16(ReadWhole(r, v, 1, LastModelNumber)); }},
    {"nonideal", [](JobReader& r, const std::string& v) { r.Result.NonIdeal = ReadYesNo(r, v); }},
    {"separate-k", [](JobReader& r, const std::string& v) { r.Result.SeparateK = ReadYesNo(r, v); }},
    {"mass-units",
     [](JobReader& r, const std::string& v) {
         r.Result.MassUnits = ToInt16(ReadChoice(r, v, {"sigma", "buoyant", "molar"}));
     }},
    {"concentration-units",
     [](JobReader& r, const std::string& v) {
         r.Result.Concentration = static_cast<JobUnits>(ReadChoice(r, v, {"signal", "weight", "molar"}));
     }},
    {"data",
     [](JobReader& r, const std::string& v) {
         r.Result.Data = static_cast<JobData>(ReadChoice(r, v, {"absorbance", "interference"}) + 1);
     }},
    {"guesses", [](JobReader& r, const std::string& v) { r.Result.Guesses = ReadYesNo(r, v); }},
    {"max-iterations",
     [](JobReader& r, const std::string& v) {
         r.Result.MaxIterations = ToInt16(ReadWhole(r, v, 1, std::numeric_limits<std::int16_t>::max()));
     }},
    {"max-points-per-set",
     [](JobReader& r, const std::string& v) {
         r.Result.MaxPtsPerSet =
             ToInt16(ReadWhole(r, v, Workspace{}.MaxPtsPerSet, std::numeric_limits<std::int16_t>::max()));
     }},
    {"convergence-limit",
     [](JobReader& r, const std::string& v) {
         AddSetting(r, &Workspace::ConvergenceLimit, ReadPositive(r, v));
     }},
    {"confidence-level", ReadConfidenceLevel},
    {"confidence-limits",
     [](JobReader& r, const std::string& v) { r.Result.ConfidenceLimits = ReadYesNo(r, v); }},
    {"restarts",
     [](JobReader& r, const std::string& v) {
         r.Result.Restarts.Count = ReadWhole(r, v, 0, static_cast<int>(LargestRestarts));
     }},
    {"seed",
     [](JobReader& r, const std::string& v) {
         r.Result.Restarts.Seed =
             static_cast<std::uint64_t>(ReadWhole(r, v, 0, std::numeric_limits<int>::max()));
     }},
    {"noise",
     [](JobReader& r, const std::string& v) { r.Result.NoiseFromFit = ReadChoice(r, v, {"from-fit"}) == 0; }},
    {"rescue", [](JobReader& r, const std::string& v) { r.Result.Rescue = ReadYesNo(r, v); }},
};

struct ConstantKey {
    const char* Name;
    float Workspace::*Member;
    bool MayBeZero = false;
};

constexpr ConstantKey ConstantKeys[] = {
    {"vbar-a", &Workspace::VbarA},
    {"vbar-b", &Workspace::VbarB},
    {"density", &Workspace::SolventDensity},
    {"absorptivity-a", &Workspace::AbsorpA},
    {"absorptivity-b", &Workspace::AbsorpB},
    {"extinction-a", &Workspace::ExtA},
    {"extinction-b", &Workspace::ExtB},
    {"refractivity-a", &Workspace::FringeMassA},
    {"refractivity-b", &Workspace::FringeMassB},
    {"molar-refractivity-a", &Workspace::RefrA},
    {"molar-refractivity-b", &Workspace::RefrB},
    {"rotor-expansion", &Workspace::RotorExpansion, true},
};

constexpr FitKey ConstantWords[] = {
    {"temperature-scale",
     [](JobReader& r, const std::string& v) {
         r.Result.TemperatureScale = ToInt16(ReadChoice(r, v, {"celsius", "kelvin"}));
     }},
};

constexpr FitKey SimulationKeys[] = {
    {"noise", [](JobReader& r, const std::string& v) { r.Result.Simulation.Noise = ReadNotNegative(r, v); }},
    {"seed",
     [](JobReader& r, const std::string& v) {
         r.Result.Simulation.Seed = ReadWhole(r, v, 0, std::numeric_limits<int>::max());
     }},
};

// What ReadVariants says against a list is said of its line.
void ReadCompared(JobReader& reader, const std::string& value) {
    try {
        reader.Result.Compare = ReadVariants(value);
    } catch (const RuntimeError& error) {
        reader.Fail(error.Text);
    }
}

constexpr FitKey CompareKeys[] = {{"models", ReadCompared}};

double ReadLevel(const JobReader& reader, std::string_view value) {
    const double level = ReadDouble(reader, value);
    if (!(level > 0.0 && level < 1.0)) reader.Fail(Quoted(value) + " is not between 0 and 1");
    return level;
}

constexpr FitKey ResamplingKeys[] = {
    {"kind",
     [](JobReader& r, const std::string& v) {
         r.Result.Resampling.Kind = static_cast<ResampleKind>(ReadChoice(r, v, {"parametric", "residuals"}));
     }},
    {"level", [](JobReader& r, const std::string& v) { r.Result.Resampling.Level = ReadLevel(r, v); }},
};

// Levels between commas, at least one.
std::vector<double> ReadLevels(const JobReader& reader, std::string_view value) {
    std::vector<double> levels;
    for (const std::string_view part : PartsBetween(value, ','))
        levels.push_back(ReadLevel(reader, Trimmed(part)));
    return levels;
}

constexpr FitKey ProfileKeys[] = {
    {"level", [](JobReader& r, const std::string& v) { r.Result.Profile.Levels = ReadLevels(r, v); }},
    {"steps",
     [](JobReader& r, const std::string& v) {
         r.Result.Profile.Steps =
             ReadWhole(r, v, static_cast<int>(FewestSteps), static_cast<int>(LargestSteps));
     }},
};

constexpr FitKey ApproachKeys[] = {
    {"inner", [](JobReader& r, const std::string& v) { r.Result.Approach.Inner = ReadPositive(r, v); }},
    {"outer", [](JobReader& r, const std::string& v) { r.Result.Approach.Outer = ReadPositive(r, v); }},
};

// Factors between commas; all of the section together are looked at when it is used.
std::vector<double> ReadFactors(JobReader& reader, std::string_view value) {
    std::vector<double> factors;
    reader.Result.HasPlan = true;
    for (const std::string_view part : PartsBetween(value, ',')) {
        factors.push_back(ReadDouble(reader, Trimmed(part)));
        if (const std::string why = WhyNoPlan({factors, {1.0}}); !why.empty()) reader.Fail(why);
    }
    return factors;
}

constexpr FitKey PlanKeys[] = {
    {"speed-factors",
     [](JobReader& r, const std::string& v) { r.Result.Plan.SpeedFactors = ReadFactors(r, v); }},
    {"loading-factors",
     [](JobReader& r, const std::string& v) { r.Result.Plan.LoadingFactors = ReadFactors(r, v); }},
};

// A section that a fit passes over.
struct StudySection {
    const char* Name;
    std::span<const FitKey> Keys;
};
constexpr StudySection StudySections[] = {{"simulation", SimulationKeys},  {"compare", CompareKeys},
                                          {"resampling", ResamplingKeys},  {"profile", ProfileKeys},
                                          {ApproachSection, ApproachKeys}, {"plan", PlanKeys}};

const StudySection* FindStudySection(std::string_view name) {
    for (const StudySection& section : StudySections)
        if (name == section.Name) return &section;
    return nullptr;
}

struct SetKey {
    const char* Name;
    void (*Read)(JobReader& reader, JobSet& set, const std::string& value);
};

// Channels of the centerpiece to samples in it: each sample has a reference channel beside it.
void ReadCenterpiece(JobReader& reader, JobSet& set, const std::string& value) {
    const int samples[] = {1, 3, 4};
    set.Samples = ToInt16(samples[ReadChoice(reader, value, {"2", "6", "8"})]);
}

// "6.95-6.97" or "7.01".
Exclusion ReadExclusion(const JobReader& reader, std::string_view value) {
    const std::size_t dash = value.find('-');
    Exclusion exclusion;
    exclusion.From = ReadPositive(reader, Trimmed(value.substr(0, dash)));
    exclusion.To = dash == std::string_view::npos ? exclusion.From
                                                  : ReadPositive(reader, Trimmed(value.substr(dash + 1)));
    if (exclusion.From > exclusion.To) reader.Fail(Quoted(Trimmed(value)) + " ends before it begins");
    return exclusion;
}

void ReadExclusions(JobReader& reader, JobSet& set, const std::string& value) {
    set.TellSpikes = SmallLetters(value) == "propose";
    if (set.TellSpikes) return;
    for (const std::string_view part : PartsBetween(value, ','))
        set.Exclude.push_back(ReadExclusion(reader, part));
}

constexpr SetKey SetKeys[] = {
    {FileKey, [](JobReader&, JobSet&, const std::string&) {}}, // a list, read line by line
    {"inner", [](JobReader& r, JobSet& s, const std::string& v) { s.Inner = ReadPositive(r, v); }},
    {"outer", [](JobReader& r, JobSet& s, const std::string& v) { s.Outer = ReadPositive(r, v); }},
    {"range",
     [](JobReader& r, JobSet& s, const std::string& v) { s.AutoRange = ReadChoice(r, v, {"auto"}) == 0; }},
    {"exclude", ReadExclusions},
    {"ceiling",
     [](JobReader& r, JobSet& s, const std::string& v) {
         s.TellCeiling = SmallLetters(v) == "propose";
         if (!s.TellCeiling) s.Ceiling = ReadPositive(r, v);
     }},
    {"intensity",
     [](JobReader& r, JobSet& s, const std::string& v) {
         s.Intensity = static_cast<IntensityOrders::Code>(
             ReadChoice(r, v, {"auto", "sample-first", "reference-first"}));
     }},
    {"centerpiece", ReadCenterpiece},
    {"channel",
     [](JobReader& r, JobSet& s, const std::string& v) {
         s.Channel = ToInt16(ReadChoice(r, v, {"a", "b", "c", "d"}) + 1);
     }},
    {"path", [](JobReader& r, JobSet& s, const std::string& v) { s.Path = ReadPositive(r, v); }},
    {"baseline", [](JobReader&, JobSet& s, const std::string& v) { s.Baseline = v; }},
    {"baseline-shift",
     [](JobReader& r, JobSet& s, const std::string& v) { s.BaselineShift = ReadNumber(r, v); }},
    {"extinction-ratio-a",
     [](JobReader& r, JobSet& s, const std::string& v) { s.ExtinctionRatio[0] = ReadPositive(r, v); }},
    {"extinction-ratio-b",
     [](JobReader& r, JobSet& s, const std::string& v) { s.ExtinctionRatio[1] = ReadPositive(r, v); }},
    {"loading-a",
     [](JobReader& r, JobSet& s, const std::string& v) { s.Loading[0] = ReadNotNegative(r, v); }},
    {"tolerance-a",
     [](JobReader& r, JobSet& s, const std::string& v) { s.Tolerance[0] = ReadPositive(r, v); }},
    {"loading-b",
     [](JobReader& r, JobSet& s, const std::string& v) { s.Loading[1] = ReadNotNegative(r, v); }},
    {"tolerance-b",
     [](JobReader& r, JobSet& s, const std::string& v) { s.Tolerance[1] = ReadPositive(r, v); }},
    {"noise", [](JobReader& r, JobSet& s, const std::string& v) { s.Noise = ReadPositive(r, v); }},
    {"concentrations-of",
     [](JobReader& r, JobSet& s, const std::string& v) {
         s.ConcentrationsOf = ReadWhole(r, v, 1, StandardMaxSets);
     }},
    {"offset-of",
     [](JobReader& r, JobSet& s, const std::string& v) { s.OffsetOf = ReadWhole(r, v, 1, StandardMaxSets); }},
};

// The entry of a table of keys for the present line.
template <class Keys> const auto& FindKey(const JobReader& reader, const Keys& keys) {
    const auto key =
        std::find_if(std::begin(keys), std::end(keys), [&](const auto& k) { return reader.Key == k.Name; });
    if (key == std::end(keys)) reader.Fail("unknown key");
    return *key;
}

template <class Keys> std::vector<std::string> NamesOf(const Keys& keys) {
    std::vector<std::string> names;
    for (const auto& key : keys)
        names.push_back(key.Name);
    return names;
}

// The words behind the value of a parameter; each kind may stand once.
void ReadParameterWord(const JobReader& reader, JobParameter& parameter, std::string_view word,
                       std::string_view& rest) {
    const int kind = ReadChoice(reader, word, {"hold", "fit", "lower", "upper"});
    if (kind < 2) {
        if (parameter.Choice != JobParameter::Mark::ByModel) reader.Fail("hold or fit stands twice");
        parameter.Choice = kind == 0 ? JobParameter::Mark::Hold : JobParameter::Mark::Fit;
        return;
    }
    std::optional<float>& bound = kind == 2 ? parameter.Lower : parameter.Upper;
    if (bound) reader.Fail(SmallLetters(word) + " stands twice");
    const std::string_view number = NextWord(rest);
    if (number.empty()) reader.Fail("there is no number behind " + SmallLetters(word));
    bound = ReadNumber(reader, number);
}

} // namespace

std::vector<std::string> JobKeys(std::string_view section) {
    if (section == "fit") return NamesOf(FitKeys);
    if (const StudySection* study = FindStudySection(section)) return NamesOf(study->Keys);
    if (section != "constants") return NamesOf(SetKeys);
    std::vector<std::string> names = NamesOf(ConstantKeys);
    for (const FitKey& key : ConstantWords)
        names.push_back(key.Name);
    return names;
}

void ReadFitKey(JobReader& reader, const std::string& value) {
    FindKey(reader, FitKeys).Read(reader, value);
}

void ReadConstantsKey(JobReader& reader, const std::string& value) {
    for (const FitKey& word : ConstantWords)
        if (reader.Key == word.Name) return word.Read(reader, value);
    const ConstantKey& key = FindKey(reader, ConstantKeys);
    AddSetting(reader, key.Member,
               key.MayBeZero ? ReadNotNegative(reader, value) : ReadPositive(reader, value));
}

bool IsStudySection(std::string_view section) {
    return FindStudySection(section) != nullptr;
}

void ReadStudyKey(JobReader& reader, const std::string& value) {
    FindKey(reader, FindStudySection(reader.Section)->Keys).Read(reader, value);
}

void ReadSetKey(JobReader& reader, JobSet& set, const std::string& value) {
    FindKey(reader, SetKeys).Read(reader, set, value);
}

void ReadParameterLine(JobReader& reader, const std::string& name, const std::string& value) {
    JobParameter parameter;
    parameter.Name = name;
    parameter.Line = reader.Line;
    std::string_view rest = value;
    std::string_view first = NextWord(rest);
    parameter.Internal = SmallLetters(first) == "internal";
    if (parameter.Internal) first = NextWord(rest);
    if (parameter.Internal && (first.empty() || first == "*"))
        reader.Fail("there is no number behind internal");
    if (first != "*") parameter.Value = ReadNumber(reader, first);
    for (std::string_view word = NextWord(rest); !word.empty(); word = NextWord(rest))
        ReadParameterWord(reader, parameter, word, rest);
    if (parameter.Lower && parameter.Upper && *parameter.Lower > *parameter.Upper)
        reader.Fail("the lower bound lies above the upper one");
    reader.Result.Parameters.push_back(parameter);
}

} // namespace Quillon
