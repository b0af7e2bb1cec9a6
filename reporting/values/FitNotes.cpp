#include "reporting/values/FitNotes.h"

#include "fit/Undetermined.h"
#include "input/NUMINPUT.h"
#include "models/table/ModelTable.h"
#include "reporting/values/ParmLines.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// Neighbours that go together make a mean scatter wider than independent residuals would: a mean is told
// from four of its standard errors on, a run of signs from three standard deviations on.
constexpr double StandardErrorsOfAMean = 4.0;
constexpr double RunsToTell = 3.0;
constexpr double RmsToTell = 2.0; // times that of the other sets
constexpr long FewestPoints = 10; // fewer say nothing of their own

void AddNote(std::string& notes, const std::string& note) {
    if (note.empty()) return;
    notes += (notes.empty() ? "" : "; ") + note;
}

std::string BoundNote(FreePos place) {
    if (place.Number > Work.AtBound.Hi() || Work.AtBound[place] == 0) return "";
    return Work.AtBound[place] < 0 ? "at its lower bound" : "at its upper bound";
}

// 0 where one of the two has no error.
double CorrelationOf(FreePos a, FreePos b) {
    const double product = Work.NormMatrix(a, a) * Work.NormMatrix(b, b);
    return product > 0.0 ? Work.NormMatrix(a, b) / std::sqrt(product) : 0.0;
}

// With as many decimals as keep it from looking like 1, up to seven.
std::string CorrelationText(double value) {
    int decimals = 3;
    while (decimals < 7 && RoundSignificant(std::fabs(value), decimals) >= 1.0)
        ++decimals;
    return FormatNumber(value, "0." + std::string(static_cast<std::size_t>(decimals), '0'));
}

// Concentrations go together with the constants and with each other in every fit of an association: that
// is in the table of correlations, and no news.
bool IsOfASignal(FreePos place) {
    const Quantity holds = RuleOfSlot(SlotOf(place)).Holds;
    return holds == Quantity::LnSignal || holds == Quantity::Offset;
}

std::string PartnerNote(FreePos place) {
    if (IsOfASignal(place)) return "";
    FreePos partner = place;
    double highest = static_cast<double>(Work.VeryHighCorrelation);
    for (const FreePos other : EachFree())
        if (other != place && std::fabs(CorrelationOf(place, other)) > highest) {
            highest = std::fabs(CorrelationOf(place, other));
            partner = other;
        }
    if (partner == place) return "";
    return "correlated " + CorrelationText(CorrelationOf(place, partner)) + " with " +
           Work.ParmName[SlotOf(partner)];
}

// What the residuals of a set's readings come to.
struct ResidualSums {
    double Squares = 0.0, Sum = 0.0;
    SignCounts Signs;
};

// Of the points from first to last, of which there is at least one.
ResidualSums SumResiduals(long first, long last) {
    const float* const y = &Work.PtY[first];
    const float* const fit = &Work.PtFit[first];
    ResidualSums sums;
    bool former = static_cast<double>(y[0]) - static_cast<double>(fit[0]) >= 0.0;
    for (long i = 0; i <= last - first; ++i) {
        const double residual = static_cast<double>(y[i]) - static_cast<double>(fit[i]);
        sums.Squares += residual * residual;
        sums.Sum += residual;
        const bool positive = residual >= 0.0;
        sums.Signs.Add(positive, former);
        former = positive;
    }
    return sums;
}

std::string SignedText(double value) {
    return (value < 0.0 ? "-" : "+") + SingleText(ToSingle(RoundSignificant(std::fabs(value), 2)));
}

const char* WhatTakesUpAMean(SetNo set) {
    switch (Work.FreeMap[SlotOffset(set)]) {
    case SlotHeld:
        return ": fit its zero offset?";
    case SlotTied:
        return ": give it a zero offset of its own?";
    default:
        return "";
    }
}

std::string MeanNote(SetNo set, const SetQuality& quality) {
    const double mean = *quality.Mean;
    const double variance = std::max(0.0, *quality.Rms * *quality.Rms - mean * mean);
    const double standardError = std::sqrt(variance / static_cast<double>(quality.Points));
    if (!(std::fabs(mean) > StandardErrorsOfAMean * standardError)) return "";
    return "mean residual " + SignedText(mean) + WhatTakesUpAMean(set);
}

std::string RunsNote(const SetQuality& quality) {
    if (!quality.RunsZ || *quality.RunsZ <= RunsToTell) return "";
    return "residuals are not independent, runs Z = " +
           SingleText(ToSingle(RoundSignificant(*quality.RunsZ, 2)));
}

// In units of the noise that the set is weighted by; 1 without one.
double UnitOf(SetNo set) {
    const float noise = Work.SetNoise[RowOf(set)];
    return noise > 0.0F ? static_cast<double>(noise) : 1.0;
}

std::string RmsNote(SetNo set, const PerSet<SetQuality>& qualities) {
    double squares = 0.0;
    long points = 0;
    for (const SetNo other : EachSet()) {
        const SetQuality& its = qualities[other];
        if (other == set || !its.Rms) continue;
        const double rms = *its.Rms / UnitOf(other);
        squares += rms * rms * static_cast<double>(its.Points);
        points += its.Points;
    }
    if (points < FewestPoints || squares == 0.0) return "";
    const double times = *qualities[set].Rms / UnitOf(set) / std::sqrt(squares / static_cast<double>(points));
    return times < RmsToTell ? "" : "rms " + FormatNumber(times, "0.0") + " times that of the other sets";
}

} // namespace

SetQuality QualityOfSet(SetNo set) {
    SetQuality quality;
    quality.Points = TruePointsOf(set);
    const long first = FirstPointOf(set);
    const long last = Work.FitValid ? std::min(LastTruePointOf(set), Work.PtFit.Hi()) : 0;
    if (last < first) return quality;
    const ResidualSums sums = SumResiduals(first, last);
    const auto n = static_cast<double>(last - first + 1);
    quality.Rms = std::sqrt(sums.Squares / n);
    quality.Mean = sums.Sum / n;
    if (last > first) quality.RunsZ = RunsZFrom(sums.Signs);
    return quality;
}

const char* SlotState(SlotNo slot) {
    if (IsFitted(slot)) return "fitted";
    return Work.FreeMap[slot] == SlotTied ? "tied" : "held";
}

std::string ParameterNote(SlotNo slot) {
    if (!IsFitted(slot) || !Work.FitDone) return "";
    const FreePos place = FreePosOf(slot);
    if (!HasInverse()) return BoundNote(place);
    if (HasNoError(place)) return "not determined by the data";
    std::string notes = LacksALimit(place) ? "limit not found" : "";
    AddNote(notes, BoundNote(place));
    if (IsUndetermined(place)) AddNote(notes, "error larger than the value");
    AddNote(notes, PartnerNote(place));
    return notes;
}

PerSet<SetQuality> QualityOfSets() {
    PerSet<SetQuality> qualities(Work.NumSets);
    for (const SetNo set : EachSet())
        qualities[set] = QualityOfSet(set);
    return qualities;
}

std::string SetNote(SetNo set, const PerSet<SetQuality>& qualities) {
    const SetQuality& quality = qualities[set];
    if (!quality.Rms || quality.Points < FewestPoints) return "";
    std::string notes = RunsNote(quality);
    AddNote(notes, RmsNote(set, qualities));
    AddNote(notes, MeanNote(set, quality)); // which may end with a question
    return notes;
}

std::string SetNote(SetNo set) {
    return SetNote(set, QualityOfSets());
}

std::vector<std::string> NoteLines() {
    std::vector<std::string> lines;
    for (const SlotNo slot : EachSlot())
        if (const std::string note = ParameterNote(slot); !note.empty())
            lines.push_back(Work.ParmName[slot] + ": " + note);
    const PerSet<SetQuality> qualities = QualityOfSets();
    for (const SetNo set : EachSet())
        if (const std::string note = SetNote(set, qualities); !note.empty())
            lines.push_back("Set " + std::to_string(set.Number) + ": " + note);
    return lines;
}

} // namespace Quillon
