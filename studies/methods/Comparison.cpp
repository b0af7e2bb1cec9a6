#include "studies/methods/Comparison.h"

#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/FDistribution.h"
#include "models/ModelFlags.h"
#include "models/table/ModelTable.h"
#include "reporting/values/Statistics.h"
#include "studies/methods/Copies.h"
#include "studies/methods/VariantStart.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* NotReached = "The comparison was stopped before this model.";

void AddNote(std::string& notes, const std::string& sentence) {
    if (!sentence.empty()) notes += (notes.empty() ? "" : " ") + sentence;
}

std::string AsSentence(const std::string& text) {
    return text.empty() || text.back() == '.' ? text : text + ".";
}

bool OffsetsAreZero() {
    for (const SetNo set : EachSet()) {
        const SlotNo slot = SlotOffset(set);
        const bool offset = RuleOfSlot(slot).Holds == Quantity::Offset;
        if (offset && (Work.FreeMap[slot] != SlotHeld || Work.Parms[slot] != 0.0F)) return false;
    }
    return true;
}

// --- the list before its fits ----------------------------------------------------------------------------

// A row on its way: the place of the row whose fit it starts from, and how many stand before it in such a
// chain.
struct Planned {
    ComparedModel Row;
    std::optional<std::size_t> Reference{};
    long Depth = 0;
};

// Counts what each model fits. One that cannot be taken up says why.
std::vector<Planned> CountFitted(const std::vector<ModelVariant>& list) {
    std::vector<Planned> plan(list.size());
    RunOnCopies(static_cast<long>(list.size()), 1,
                [&](long number) {
                    ComparedModel& row = plan[static_cast<std::size_t>(number)].Row;
                    row.Variant = list[static_cast<std::size_t>(number)];
                    try {
                        row.Notes = TakeUpVariant(row.Variant);
                        row.Free = Work.NumFree;
                    } catch (const RuntimeError& error) {
                        row.Notes = AsSentence(error.Text);
                    }
                },
                {});
    return plan;
}

// The nested row with the most fitted parameters; what fits as many is no special case here.
std::optional<std::size_t> ReferenceOf(const std::vector<Planned>& plan, std::size_t place,
                                       bool offsetsAreZero) {
    const ComparedModel& large = plan[place].Row;
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < plan.size(); ++i) {
        const ComparedModel& small = plan[i].Row;
        if (small.Free == 0 || small.Free >= large.Free) continue;
        if (!IsNested(small.Variant, large.Variant, offsetsAreZero)) continue;
        if (!best || small.Free > plan[*best].Row.Free) best = i;
    }
    return best;
}

long DepthOf(const std::vector<Planned>& plan, std::size_t place) {
    const auto& reference = plan[place].Reference;
    return reference ? 1 + DepthOf(plan, *reference) : 0;
}

std::vector<Planned> PlanOf(const std::vector<ModelVariant>& list) {
    std::vector<Planned> plan = CountFitted(list);
    const bool offsetsAreZero = OffsetsAreZero();
    for (std::size_t i = 0; i < plan.size(); ++i) {
        plan[i].Reference = ReferenceOf(plan, i, offsetsAreZero);
        if (plan[i].Reference) plan[i].Row.Reference = VariantText(plan[*plan[i].Reference].Row.Variant);
    }
    for (std::size_t i = 0; i < plan.size(); ++i)
        plan[i].Depth = DepthOf(plan, i);
    return plan;
}

// --- a fit -----------------------------------------------------------------------------------------------

// The lowest end so far: a minimum before what is none.
struct BestEnd {
    std::optional<Workspace> Fit;
    FitOutcome Failure; // of the latest start that came to nothing

    void Take(const Workspace& end) {
        if (end.FitDone == 0) {
            Failure = end.Outcome;
            return;
        }
        const auto minimum = [](const Workspace& w) { return w.Outcome.End == FitEnd::Converged; };
        const bool better = !Fit || (minimum(end) != minimum(*Fit) ? minimum(end) : end.SumSq < Fit->SumSq);
        if (better) Fit = end;
    }
};

// From the present parameters to a minimum, with damped steps where it needs them.
void FitFromHere(BestEnd& best) {
    const PerSlot<float> start = Work.Parms;
    Work.StartParms = start;
    if (!RunFit() || Work.Outcome.End != FitEnd::Converged) {
        if (IsCancelled()) return;
        RescueFit(start);
    }
    if (IsCancelled()) return;
    ClearCancel();
    CopySharedConstants();
    best.Take(Work);
}

// From the best end so far to the bottom of its minimum: the iteration rests within a share of a degree of
// freedom of it, which is what nested models often differ by.
void PushOn(BestEnd& best) {
    if (IsCancelled() || !best.Fit) return;
    constexpr float Finer = 0.001F;
    const Workspace own = Work;
    Work = *best.Fit;
    Work.ConvergenceLimit *= Finer;
    const bool fitted = RunFit();
    const bool cancelled = IsCancelled();
    Work.ConvergenceLimit = own.ConvergenceLimit;
    Work.StartParms = best.Fit->StartParms;
    if (fitted && !cancelled) best.Take(Work);
    Work = own;
    HandOnCancel(cancelled);
}

// The user's own fit as an end of its model; one that was not brought to an end is a start.
void TakeOwnFit(BestEnd& best) {
    const bool saved = Work.FitDone != 0 && Work.Outcome.End == FitEnd::NotRun;
    Workspace own = Work;
    if (saved) own.Outcome.End = FitEnd::Converged; // a file says nothing else of a fit that had converged
    best.Take(own);
}

// Lower by more than the iteration may rest above the bottom of a minimum.
bool IsClearlyLower(const Workspace& a, const Workspace& b) {
    constexpr double Rest = 0.5; // of a degree of freedom's share
    return a.SumSq < b.SumSq * (1.0 - Rest / static_cast<double>(b.NumPts - b.NumFree));
}

template <class Start> void TryStart(const ModelVariant& variant, BestEnd& best, Start&& start) {
    if (IsCancelled()) return;
    const Workspace own = Work;
    try {
        TakeUpVariant(variant);
        start();
        FitFromHere(best);
    } catch (const RuntimeError& error) {
        best.Failure = {FitEnd::MathError, error.Text};
    }
    const bool cancelled = IsCancelled();
    Work = own;
    HandOnCancel(cancelled);
}

// Behind the best end so far, and behind the user's own fit as well: a row in the wrong minimum ranks its
// model too low.
void LookBehind(BestEnd& best) {
    if (IsCancelled() || !best.Fit) return;
    const Workspace own = Work;
    Work = *best.Fit;
    const bool known = Work.StartParms.Size() == Work.Parms.Size();
    const PerSlot<float> start = known ? Work.StartParms : Work.Parms;
    const std::optional<Workspace> lower = FindLowerMinimum(start);
    const bool cancelled = IsCancelled();
    if (lower) {
        Work = *lower;
        CopySharedConstants();
        best.Take(Work);
    }
    Work = own;
    HandOnCancel(cancelled);
}

std::string NotesOfFit() {
    std::string notes;
    if (Work.Outcome.End != FitEnd::Converged) AddNote(notes, AsSentence(Work.Outcome.Sentence));
    AddNote(notes, Work.Outcome.Reason);
    if (Work.Outcome.Reason.empty()) AddNote(notes, PressingText());
    return notes;
}

void FillRow(ComparedModel& row) {
    row.HasFit = true;
    row.Minimum = Work.Outcome.End == FitEnd::Converged;
    row.Freedom = Work.NumPts - Work.NumFree;
    row.SumSq = Work.SumSq;
    row.Rms = static_cast<double>(Work.RmsResidual);
    try {
        RunsTest();
        row.RunsZ = static_cast<double>(Work.RunsZ);
    } catch (const RuntimeError&) {
        // Too few points, which the degrees of freedom beside it show.
    }
    AddNote(row.Notes, NotesOfFit());
    row.Fit = Work;
}

// All of a row's fits, on a copy. contained is the fit of its reference, where there is one.
void FitRow(ComparedModel& row, const Workspace* contained) {
    if (row.Free == 0) return; // the model could not be taken up
    const ModelVariant& variant = row.Variant;
    BestEnd best;
    ClearCancel();
    const bool own = variant == VariantOfWork();
    if (own) TakeOwnFit(best);
    const bool ownStands = best.Fit.has_value() && best.Fit->Outcome.End == FitEnd::Converged;
    if (contained) TryStart(variant, best, [&] { StartFromFit(*contained); });
    std::string unread;
    if (!ownStands) TryStart(variant, best, [&] { unread = StartFromGuesses(); });
    if (own && !ownStands)
        TryStart(variant, best, [] {
            if (Work.StartParms.Size() == Work.Parms.Size()) Work.Parms = Work.StartParms;
        });
    LookBehind(best);
    row.IsOwn = ownStands && !IsClearlyLower(*best.Fit, Work);
    if (row.IsOwn)
        TakeOwnFit(best = BestEnd{});
    else
        PushOn(best);
    if (IsCancelled()) return;
    if (!best.Fit) {
        row.Notes.clear();
        AddNote(row.Notes, AsSentence(best.Failure.Sentence));
        AddNote(row.Notes, best.Failure.Reason);
        if (!unread.empty()) AddNote(row.Notes, AsSentence(unread));
        return;
    }
    Work = *best.Fit;
    FillRow(row);
}

// A row that breaks off in arithmetic outside its fits says so; nothing half filled can be taken from it.
void FitRowOrSayWhy(ComparedModel& row, const Workspace* contained) {
    try {
        FitRow(row, contained);
    } catch (const RuntimeError& error) {
        row.HasFit = row.Minimum = row.IsOwn = false;
        row.RunsZ.reset();
        AddNote(row.Notes, AsSentence(error.Text));
    }
}

// --- the statistics --------------------------------------------------------------------------------------

void CompareWithReference(ComparedModel& row, const ComparedModel& reference) {
    if (!row.HasFit || !reference.Minimum || row.Freedom < 1 || !(row.SumSq > 0.0)) return;
    const auto freedom = static_cast<double>(row.Freedom);
    constexpr double Gained = 0.05; // of a degree of freedom's share
    if (reference.SumSq - row.SumSq < Gained * row.SumSq / freedom)
        AddNote(row.Notes, "No better than " + row.Reference + ", which it contains.");
    if (!row.Minimum) return;
    const NestedTest test = TestNested(reference.SumSq, reference.Freedom, row.SumSq, row.Freedom);
    row.F = test.F;
    row.P = test.P;
}

using Criterion = std::optional<double> (*)(double sumSq, long points, long free);

// What a criterion is above its lowest value among the rows with a minimum.
void FillDeltas(std::vector<ComparedModel>& rows, Criterion criterion,
                std::optional<double> ComparedModel::*delta) {
    std::optional<double> lowest;
    for (ComparedModel& row : rows) {
        if (!row.Minimum) continue;
        row.*delta = criterion(row.SumSq, row.Freedom + row.Free, row.Free);
        if (row.*delta && (!lowest || *(row.*delta) < *lowest)) lowest = row.*delta;
    }
    for (ComparedModel& row : rows)
        if (row.*delta) *(row.*delta) -= *lowest;
}

void FillWeights(std::vector<ComparedModel>& rows) {
    double sum = 0.0;
    for (const ComparedModel& row : rows)
        if (row.DeltaAicc) sum += std::exp(-*row.DeltaAicc / 2.0);
    for (ComparedModel& row : rows)
        if (row.DeltaAicc) row.Weight = std::exp(-*row.DeltaAicc / 2.0) / sum;
}

Comparison StatisticsOf(std::vector<Planned>& plan) {
    Comparison result;
    for (Planned& each : plan) {
        if (each.Reference) CompareWithReference(each.Row, plan[*each.Reference].Row);
        result.Rows.push_back(each.Row);
    }
    FillDeltas(result.Rows, CorrectedAic, &ComparedModel::DeltaAicc);
    FillDeltas(result.Rows, BayesianCriterion, &ComparedModel::DeltaBic);
    FillWeights(result.Rows);
    return result;
}

// The rows of one depth, side by side: what they start from has ended.
bool FitDepth(std::vector<Planned>& plan, long depth, long before, const std::function<void(long)>& told) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < plan.size(); ++i)
        if (plan[i].Depth == depth) places.push_back(i);
    return RunOnCopies(
               static_cast<long>(places.size()), static_cast<std::uint64_t>(depth) + 1,
               [&](long number) {
                   Planned& each = plan[places[static_cast<std::size_t>(number)]];
                   const ComparedModel* reference = each.Reference ? &plan[*each.Reference].Row : nullptr;
                   FitRowOrSayWhy(each.Row, reference && reference->HasFit ? &reference->Fit : nullptr);
                   if (Work.AbortFit && !each.Row.HasFit) each.Row.Notes = NotReached;
               },
               [&](long done) {
                   if (told) told(before + done);
               })
        .Complete;
}

long CountOfDepth(const std::vector<Planned>& plan, long depth) {
    return std::count_if(plan.begin(), plan.end(), [&](const Planned& p) { return p.Depth == depth; });
}

} // namespace

ModelVariant VariantOfWork() {
    return {Work.Model, Work.NonIdeal != 0, Work.SeparateK != 0};
}

NestedTest TestNested(double smallSum, long smallFreedom, double largeSum, long largeFreedom) {
    const auto more = static_cast<double>(smallFreedom - largeFreedom);
    const auto freedom = static_cast<double>(largeFreedom);
    const double F = std::max(0.0, smallSum - largeSum) / more / (largeSum / freedom);
    return {F, FTail(F, more, freedom)};
}

std::optional<double> CorrectedAic(double sumSq, long points, long free) {
    const auto n = static_cast<double>(points);
    const double k = static_cast<double>(free) + 1.0;
    if (!(sumSq > 0.0) || !(n - k - 1.0 > 0.0)) return std::nullopt;
    return n * std::log(sumSq / n) + 2.0 * k + 2.0 * k * (k + 1.0) / (n - k - 1.0);
}

std::optional<double> BayesianCriterion(double sumSq, long points, long free) {
    const auto n = static_cast<double>(points);
    if (!(sumSq > 0.0) || points < 1) return std::nullopt;
    return n * std::log(sumSq / n) + (static_cast<double>(free) + 1.0) * std::log(n);
}

Comparison CompareModels(const std::vector<ModelVariant>& list, const std::function<void(long done)>& told) {
    std::vector<Planned> plan = PlanOf(list);
    bool complete = !Work.AbortFit;
    long done = 0;
    for (long depth = 0; complete && done < static_cast<long>(plan.size()); ++depth) {
        complete = FitDepth(plan, depth, done, told);
        done += CountOfDepth(plan, depth);
    }
    if (!complete)
        for (Planned& each : plan)
            if (!each.Row.HasFit && each.Row.Free > 0 && each.Row.Notes.empty()) each.Row.Notes = NotReached;
    Comparison result = StatisticsOf(plan);
    result.Complete = complete;
    return result;
}

void TakeCompared(const ComparedModel& row) {
    if (row.HasFit && !row.IsOwn) Work = row.Fit;
}

} // namespace Quillon
