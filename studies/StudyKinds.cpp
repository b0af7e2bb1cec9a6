#include "studies/StudyKinds.h"

#include "input/NUMINPUT.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/FormControls.h"
#include "platform/Letters.h"
#include "platform/Words.h"
#include "studies/PlanStudy.h"
#include "studies/StudyProgress.h"
#include "studies/methods/OtherMinima.h"
#include "studies/methods/ResamplingLines.h"
#include "studies/methods/StudyLines.h"
#include "studies/methods/StudyResults.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace Quillon {

namespace {

using Told = std::function<void(const std::string& text, double fraction)>;

// What each of them has found.
Comparison Compared;
Profile Profiled;
ProfileMap Mapped;
bool IsMap = false;
Resampling Resampled;

// --- inputs ----------------------------------------------------------------------------------------------

void AddList(const char* label, std::vector<std::string> items, const char* tip) {
    StudyInput input{Captioned(label), Captioned("", tip)};
    input.Box.Items = std::move(items);
    StudyForm.Inputs.push_back(input);
}

const Control& Box(std::size_t input) {
    return StudyForm.Inputs[input].Box;
}

// A whole number of an input.
long WholeOf(std::size_t input, long least, long most) {
    const std::string& text = Box(input).Text;
    long number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc{} || stop != end || number < least || number > most)
        RaiseError("Enter a number from " + std::to_string(least) + " to " + std::to_string(most) + ".");
    return number;
}

// A level, 0 to 1 without its ends, in either decimal mark.
double LevelOf(const std::string& text) {
    std::size_t used = 0;
    const double level = NumericPrefix(text, &used);
    if (used == 0 || text.find_first_not_of(' ', used) != std::string::npos || !(level > 0.0 && level < 1.0))
        RaiseError("Enter a level between 0 and 1.");
    return level;
}

// Levels between commas.
std::vector<double> LevelsOf(std::string_view text) {
    std::vector<double> levels;
    for (const std::string_view part : PartsBetween(text, ','))
        levels.push_back(LevelOf(std::string(Trimmed(part, " "))));
    return levels;
}

std::vector<std::string> FittedCaptions() {
    std::vector<std::string> captions;
    for (const FreePos a : EachFree())
        captions.push_back(ParmCaption(SlotOf(a)));
    return captions;
}

// --- comparison of models --------------------------------------------------------------------------------

// The models of one species, or those of two that associate in the simpler ways; the own one among them.
std::string UsualModels() {
    std::string list = TraitsOfModel().TwoSpecies ? "7, 8, 9, 10, 11, 12" : "1, 2, 3, 4, 6";
    const ModelVariant own = VariantOfWork();
    for (const ModelVariant& variant : ReadVariants(list))
        if (variant == own) return list;
    return list + ", " + VariantText(own);
}

void AddCompareInputs() {
    AddTextInput("&Models:", UsualModels(),
                 "Numbers between commas, with options: 2+nonideal, 4+separate-k; all for all 22");
}

std::vector<ModelVariant> ChosenModels() {
    const std::string& text = Box(0).Text;
    if (text != "all") return ReadVariants(text);
    std::vector<ModelVariant> all;
    for (int model = 1; model <= LastModelNumber; ++model)
        all.push_back({ToInt16(model), false, false});
    return all;
}

void CheckCompare() {
    ChosenModels();
}

void RunCompare(const Told& told) {
    const std::vector<ModelVariant> list = ChosenModels();
    const StudyProgress progress = StartProgress(static_cast<long>(list.size()), "models");
    Compared = CompareModels(
        list, [&](long done) { told(ProgressText(progress, done), ProgressFraction(progress, done)); });
    KeepStudy(Compared);
}

bool RecallCompare() {
    if (!KeptStudies().Compared) return false;
    Compared = *KeptStudies().Compared;
    std::string list;
    for (const ComparedModel& row : Compared.Rows)
        list += (list.empty() ? "" : ", ") + VariantText(row.Variant);
    StudyForm.Inputs[0].Box.Text = list;
    return true;
}

// A line without numbers is not left without a word; its reason stands in the notes when it is marked.
std::string EndOfComparison() {
    const auto fitted = std::count_if(Compared.Rows.begin(), Compared.Rows.end(),
                                      [](const ComparedModel& row) { return row.HasFit; });
    const auto all = std::ssize(Compared.Rows);
    if (fitted == all) return "All models have been fitted.";
    return std::to_string(fitted) + " of " + std::to_string(all) +
           " models could be fitted. Mark a line without a sum of squares to read why.";
}

void ShowCompare() {
    TextTable table = ComparisonTable(Compared);
    StudyForm.Columns = std::move(table.Heads);
    StudyForm.Rows = std::move(table.Rows);
    StudyForm.Progress.Text = Compared.Complete ? EndOfComparison() : "Stopped before the end.";
}

const ComparedModel* ComparedRow(int row) {
    const auto place = static_cast<std::size_t>(row);
    return row >= 0 && place < Compared.Rows.size() ? &Compared.Rows[place] : nullptr;
}

bool MayTakeCompared(int row) {
    const ComparedModel* chosen = ComparedRow(row);
    return chosen && chosen->HasFit && !chosen->IsOwn;
}

void TakeComparedRow(int row) {
    TakeCompared(*ComparedRow(row));
}

std::string CompareNotes(int row) {
    const ComparedModel* chosen = ComparedRow(row);
    if (chosen && !chosen->Notes.empty()) return VariantText(chosen->Variant) + ": " + chosen->Notes;
    return ComparisonPremise();
}

void ForgetCompared() {
    Compared = Comparison{};
}

// --- profile and map -------------------------------------------------------------------------------------

void AddProfileInputs() {
    AddList("&Parameter:", FittedCaptions(), "Held at each value while the others are fitted again");
    std::vector<std::string> second = FittedCaptions();
    second.insert(second.begin(), "(none)");
    AddList("&Second one:", second, "For a map of two parameters");
    AddTextInput("&Levels:", "0.683, 0.95", "Of the limits, between commas");
    AddTextInput("&Values:", "25", "Of the parameter; of a map as many for each");
}

// One slot, or the two of a map.
std::vector<long> ChosenSlots() {
    std::vector<long> slots{SlotOf(FreePos(Box(0).Value)).Number};
    if (Box(1).Value > 0) slots.push_back(SlotOf(FreePos(Box(1).Value - 1)).Number);
    if (slots.size() == 2 && slots[0] == slots[1]) RaiseError("A map needs two different parameters.");
    return slots;
}

ProfileChoice ChosenProfile() {
    ProfileChoice choice;
    choice.Levels = LevelsOf(Box(2).Text);
    choice.Steps = WholeOf(3, FewestSteps, LargestSteps);
    return choice;
}

void CheckProfile() {
    ChosenSlots();
    ChosenProfile();
}

void RunProfileStudy(const Told& told) {
    const std::vector<long> slots = ChosenSlots();
    const ProfileChoice choice = ChosenProfile();
    IsMap = slots.size() == 2;
    StudyProgress progress = StartProgress(0, "values");
    const auto tell = [&](long done, long all) {
        progress.All = all;
        told(ProgressText(progress, done), ProgressFraction(progress, done));
    };
    if (IsMap)
        KeepStudy(Mapped = MapParameters(slots[0], slots[1], choice, tell));
    else
        KeepStudy(Profiled = ProfileParameter(slots[0], choice, tell));
}

std::string LevelsText(const std::vector<ProfileLimits>& limits) {
    std::string text;
    for (const ProfileLimits& level : limits)
        text += (text.empty() ? "" : ", ") + SingleText(ToSingle(level.Level));
    return text;
}

void ShowChoice(const std::vector<long>& slots, const std::vector<ProfileLimits>& limits) {
    const auto place = [](long slot) { return ToInt16(FreePosOf(SlotNo(slot)).Number); };
    StudyForm.Inputs[0].Box.Value = place(slots[0]);
    if (slots.size() == 2) StudyForm.Inputs[1].Box.Value = ToInt16(place(slots[1]) + 1);
    StudyForm.Inputs[2].Box.Text = LevelsText(limits);
}

// The one that was made last.
bool RecallProfile() {
    if (KeptStudies().Profiles.empty()) return false;
    const ProfileStudy& study = KeptStudies().Profiles.back();
    IsMap = std::holds_alternative<ProfileMap>(study);
    if (IsMap)
        Mapped = std::get<ProfileMap>(study);
    else
        Profiled = std::get<Profile>(study);
    ShowChoice(SlotsOf(study), IsMap ? Mapped.Levels : Profiled.Limits);
    return true;
}

// By the user, or by arithmetic.
std::string WhyUnfinished(const std::string& broken) {
    return broken.empty() ? "Stopped before the end." : "Broke off: " + broken + ".";
}

void ShowMap() {
    StudyForm.Columns = {ParmCaption(SlotNo(Mapped.Slots[0])), ParmCaption(SlotNo(Mapped.Slots[1])),
                         "Sum of Squares", "Ratio", "Notes"};
    for (std::size_t i = 0; i < Mapped.Values[0].size() && !Mapped.Points.empty(); ++i)
        for (std::size_t j = 0; j < Mapped.Values[1].size(); ++j) {
            const ProfilePoint& point = Mapped.At(i, j);
            if (!Mapped.Complete && !std::isfinite(point.SumSq)) continue; // not fitted
            StudyForm.Rows.push_back({SpreadText(SlotNo(Mapped.Slots[0]), Mapped.Values[0][i]),
                                      SpreadText(SlotNo(Mapped.Slots[1]), Mapped.Values[1][j]),
                                      SumText(point.SumSq), RatioText(point.Ratio),
                                      point.Converged ? "" : "not converged"});
        }
    StudyForm.Progress.Text = Mapped.Complete ? "All pairs have been fitted." : WhyUnfinished(Mapped.Broken);
}

void ShowProfile() {
    if (IsMap) return ShowMap();
    StudyForm.Columns = {ParmCaption(SlotNo(Profiled.Slot)), "Sum of Squares", "Ratio", "Notes"};
    for (const ProfilePoint& point : Profiled.Points)
        StudyForm.Rows.push_back({SpreadText(SlotNo(Profiled.Slot), point.Value), SumText(point.SumSq),
                                  RatioText(point.Ratio), point.Converged ? "" : "not converged"});
    std::string text;
    for (const ProfileLimits& limits : Profiled.Limits)
        text += (text.empty() ? "" : "; ") + LimitsText(Profiled, limits);
    StudyForm.Progress.Text = Profiled.Complete ? text : WhyUnfinished(Profiled.Broken);
}

const std::optional<Workspace>& BetterFit() {
    return IsMap ? Mapped.Better : Profiled.Better;
}

bool MayTakeBetter(int) {
    return BetterFit().has_value();
}

void TakeBetter(int) {
    Work = *BetterFit();
}

std::string ProfileNotes(int) {
    return IsMap ? NotesOf(Mapped) : NotesOf(Profiled);
}

void ForgetProfile() {
    Profiled = Profile{};
    Mapped = ProfileMap{};
    IsMap = false;
}

// --- resampling ------------------------------------------------------------------------------------------

void AddResampleInputs() {
    AddTextInput("&Fits:", "200", "How many; 1000 give limits that a paper can print");
    AddList("&Data:", {"Gaussian noise of each set", "residuals in blocks along the radius"},
            "What is added to the fitted values");
    AddTextInput("&Level:", "0.95", "Part of the fits between the limits");
    AddTextInput("See&d:", "1", "The same seed gives the same fits; another one gives others");
}

ResampleChoice ChosenResampling() {
    ResampleChoice choice;
    choice.Count = WholeOf(0, 1, LargestResampleCount);
    choice.Kind = Box(1).Value == 1 ? ResampleKind::Residuals : ResampleKind::Parametric;
    choice.Level = LevelOf(Box(2).Text);
    choice.Seed = static_cast<std::uint64_t>(WholeOf(3, 0, 2147483647));
    return choice;
}

void CheckResample() {
    ChosenResampling();
}

void RunResample(const Told& told) {
    const ResampleChoice choice = ChosenResampling();
    const StudyProgress progress = StartProgress(choice.Count, "fits");
    Resampled = Resample(
        choice, [&](long done) { told(ProgressText(progress, done), ProgressFraction(progress, done)); });
    KeepStudy(Resampled);
}

bool RecallResampled() {
    if (!KeptStudies().Resampled) return false;
    Resampled = *KeptStudies().Resampled;
    const ResampleChoice& choice = Resampled.Choice;
    StudyForm.Inputs[0].Box.Text = std::to_string(choice.Count);
    StudyForm.Inputs[1].Box.Value = choice.Kind == ResampleKind::Residuals ? 1 : 0;
    StudyForm.Inputs[2].Box.Text = SingleText(ToSingle(choice.Level));
    StudyForm.Inputs[3].Box.Text = std::to_string(choice.Seed);
    return true;
}

template <class Show>
std::vector<std::string> SpreadRow(const std::string& name, const Spread& spread, Show&& show) {
    return {name,
            show(spread.Mean),
            FormatNumber(spread.Sd, "0.00E-##"),
            show(spread.Median),
            show(spread.Lower),
            show(spread.Upper)};
}

void ShowResample() {
    StudyForm.Columns = {"Quantity", "Mean", "S.D.", "Median", "Lower", "Upper"};
    for (std::size_t a = 0; a < Resampled.Spreads.size(); ++a)
        StudyForm.Rows.push_back(
            SpreadRow(ParmCaption(SlotNo(Resampled.Slots[a])), Resampled.Spreads[a],
                      [&](double value) { return SpreadText(SlotNo(Resampled.Slots[a]), value); }));
    for (std::size_t i = 0; i < Resampled.DerivedSpreads.size(); ++i) {
        const DerivedQuantity& quantity = Resampled.Derived[i];
        StudyForm.Rows.push_back(SpreadRow(QuantityCaption(quantity), Resampled.DerivedSpreads[i],
                                           [&](double value) { return QuantityText(quantity, value); }));
    }
    StudyForm.Progress.Text =
        ResamplingHead(Resampled) + (Resampled.Complete ? "." : ". Stopped before the end.");
}

std::string ResampleNotes(int row) {
    const std::string partner = row >= 0 ? PartnerText(Resampled, static_cast<std::size_t>(row)) : "";
    return Joined(partner.empty() ? std::vector<std::string>{QuantileText(Resampled)}
                                  : std::vector<std::string>{QuantileText(Resampled), partner});
}

void ForgetResampled() {
    Resampled = Resampling{};
}

constexpr StudyBehindForm Behind[] = {
    {"Compare Models",
     "Each model is fitted to the same points, with masses, offsets and constants held where your fit holds "
     "them. Your "
     "fit stays as it is until you take another one.",
     "&Compare", "Ta&ke This Fit", AddCompareInputs, CheckCompare, RunCompare, RecallCompare, ShowCompare,
     MayTakeCompared, TakeComparedRow, CompareNotes, ForgetCompared},
    {"Profile of a Parameter",
     "The parameter is held at each of many values, and the others are fitted again: how far can it move "
     "before the "
     "data object?",
     "Pro&file", "Ta&ke the Lower Minimum", AddProfileInputs, CheckProfile, RunProfileStudy, RecallProfile,
     ShowProfile, MayTakeBetter, TakeBetter, ProfileNotes, ForgetProfile},
    {"Resample",
     "The fit is repeated on data that could have been measured just as well, and its values are seen to "
     "scatter.",
     "&Resample", "", AddResampleInputs, CheckResample, RunResample, RecallResampled, ShowResample,
     TakesNothing, TakeNothing, ResampleNotes, ForgetResampled}};

} // namespace

bool TakesNothing(int) {
    return false;
}

void TakeNothing(int) {}

const StudyBehindForm& StudyOf(StudyKind kind) {
    return kind == StudyKind::Plan ? PlanBehindForm() : Behind[static_cast<std::size_t>(kind)];
}

const Profile& FoundProfile() {
    return Profiled;
}

const ProfileMap* FoundMap() {
    return IsMap ? &Mapped : nullptr;
}

const Resampling& FoundResampling() {
    return Resampled;
}

} // namespace Quillon
