#include "batch/ResultsJson.h"

#include "batch/JsonString.h"
#include "batch/Numbers.h"
#include "batch/SetPoints.h"
#include "fit/Confidence.h"
#include "fit/Undetermined.h"
#include "models/Catalogue.h"
#include "models/ParmScale.h"
#include "reporting/ParmLines.h"
#include "reporting/Statistics.h"
#include "workspace/records/Workspace.h"

#include <cmath>
#include <vector>

namespace Quillon {

namespace {

constexpr const char* Null = "null";

template <class T> std::string JsonNumber(T value) {
    const std::string text = ShortestText(value);
    return text.empty() ? Null : text;
}

std::string JsonFlag(bool value) {
    return value ? "true" : "false";
}

std::string Member(const char* name, const std::string& value) {
    return "\"" + std::string(name) + "\": " + value;
}

std::string Joined(const std::vector<std::string>& parts, const char* separator) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : separator) + part;
    return text;
}

// A record or a list on one line, and a list with an item on each line.
std::string InlineObject(const std::vector<std::string>& members) {
    return "{" + Joined(members, ", ") + "}";
}
std::string InlineList(const std::vector<std::string>& items) {
    return "[" + Joined(items, ", ") + "]";
}
std::string List(const std::vector<std::string>& items) {
    return items.empty() ? "[]" : "[\n    " + Joined(items, ",\n    ") + "\n  ]";
}

// The value of a calculation, null where it does not exist.
template <class Calculation> std::string Existing(bool exists, Calculation&& calculate) {
    if (!exists) return Null;
    try {
        return JsonNumber(calculate());
    } catch (const RuntimeError&) {
        return Null;
    }
}

std::string ModelObject() {
    return InlineObject({Member("number", std::to_string(Work.Model)),
                         Member("name", JsonString(ModelReportName(Work.Model))),
                         Member("nonideal", JsonFlag(Work.NonIdeal != 0)),
                         Member("separate_k", JsonFlag(Work.SeparateK != 0))});
}

// A saved fit does not tell how it was found; one that is no minimum says that, without its promise.
bool HasBeenRun() {
    const bool restored = Work.Outcome.End == FitEnd::StoppedShort && !Work.Outcome.ExpectedDecrease;
    return Work.Outcome.End != FitEnd::NotRun && !restored;
}

// What the fit that stands can be called: a saved one that says nothing else had converged.
bool IsConverged() {
    const FitEnd end = Work.Outcome.End;
    return Work.FitDone != 0 && (end == FitEnd::NotRun || end == FitEnd::Converged);
}

std::string CheckObject() {
    if (!HasBeenRun()) return Null;
    const auto& d = Work.Outcome.ExpectedDecrease;
    return InlineObject({Member("expected_decrease", d ? JsonNumber(*d) : Null),
                         Member("minimum", JsonFlag(Work.Outcome.End == FitEnd::Converged))});
}

std::string ConfidenceObject() {
    const std::string ratio = Existing(Work.FitDone != 0, [] {
        if (!Work.LimitsDone) ComputeConfidenceRatio(Work.ConfidenceLevel);
        return Work.ConfidenceRatio;
    });
    return InlineObject(
        {Member("level", JsonNumber(Work.LimitsDone ? Work.LimitsLevel : Work.ConfidenceLevel)),
         Member("ratio", ratio), Member("searched", JsonFlag(Work.LimitsDone != 0))});
}

const char* StateName(std::int16_t map) {
    if (map >= 0) return "fitted";
    return map == SlotTied ? "tied" : "held";
}

std::string NoteText(long slot) {
    const std::string note = ParmNote(slot);
    return note.empty() ? Null : JsonString(note);
}

std::string ParameterObject(long slot) {
    const std::int16_t free = Work.FreeMap[slot];
    const bool fitted = free >= 0;
    const auto limit = [&](std::size_t side) {
        return Existing(fitted && Work.LimitsDone && LimitFound(free, side == 1),
                        [&] { return ToUserUnits(slot, Work.ParmLimits[side][free]); });
    };
    const bool bounded = fitted && free <= Work.AtBound.Hi();
    return InlineObject(
        {Member("slot", std::to_string(slot)), Member("name", JsonString(Work.ParmName[slot])),
         Member("unit", JsonString(Work.ParmTitle[slot])),
         Member("state", std::string("\"") + StateName(free) + "\""),
         Member("internal", JsonNumber(Work.Parms[slot])),
         Member("value", Existing(true, [&] { return ToUserUnits(slot, Work.Parms[slot]); })),
         Member("error",
                Existing(fitted && Work.FitDone && !HasNoError(free), [&] { return DisplayedError(free); })),
         Member("lower", limit(0)), Member("upper", limit(1)),
         Member("at_bound", std::to_string(bounded ? Work.AtBound[free] : 0)),
         Member("note", NoteText(slot))});
}

std::string ParameterList() {
    std::vector<std::string> items;
    for (long slot = 0; slot < Work.NumParms; ++slot)
        if (Work.FreeMap[slot] != SlotUnused) items.push_back(ParameterObject(slot));
    return List(items);
}

std::string CorrelationsObject() {
    if (!Work.FitDone) return Null;
    Work.HighCount = Work.VeryHighCount = 0;
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);
    std::vector<std::string> slots, rows;
    for (long a = 0; a < Work.NumFree; ++a) {
        slots.push_back(std::to_string(Work.FreeIndex[a]));
        std::vector<std::string> row;
        for (long b = 0; b <= a; ++b)
            row.push_back(JsonNumber(Work.CorrMatrix(a, b)));
        rows.push_back(InlineList(row));
    }
    return InlineObject({Member("slots", InlineList(slots)), Member("matrix", InlineList(rows))});
}

// Root mean square of the residuals of the set's true points.
double SetRms(const SetPoints& points) {
    double sum = 0.0;
    for (long n = points.First; n <= points.LastTrue; ++n) {
        const double residual = static_cast<double>(Work.PtY[n]) - static_cast<double>(Work.PtFit[n]);
        sum += residual * residual;
    }
    return std::sqrt(Divide(sum, static_cast<double>(points.LastTrue - points.First + 1)));
}

std::string SetList() {
    std::vector<std::string> items;
    for (const SetPoints& points : PointsBySet())
        items.push_back(InlineObject(
            {Member("set", std::to_string(points.Set)), Member("row", std::to_string(points.Row)),
             Member("label", JsonString(SetName(points.Set))),
             Member("points", std::to_string(points.LastTrue - points.First + 1)),
             Member("rms", Existing(Work.FitValid != 0, [&] { return SetRms(points); }))}));
    return List(items);
}

// The fitted parameters before slot 8 by their slots, in user units.
std::string MinimumObject(const Minimum& minimum) {
    std::vector<std::string> parameters;
    const std::vector<long> slots = MinimumSlots();
    for (std::size_t i = 0; i < slots.size(); ++i)
        parameters.push_back(Member(std::to_string(slots[i]).c_str(), JsonNumber(minimum.Values[i])));
    return InlineObject({Member("sum_of_squares", JsonNumber(minimum.Fit.SumSq)),
                         Member("count", std::to_string(minimum.Count)),
                         Member("parameters", InlineObject(parameters))});
}

std::string StartsObject(const MinimaMet& starts) {
    std::vector<std::string> minima;
    for (const Minimum& minimum : starts.Minima)
        minima.push_back(MinimumObject(minimum));
    return InlineObject(
        {Member("failed", std::to_string(starts.Failed)), Member("minima", InlineList(minima))});
}

} // namespace

std::string ResultsJson(const std::string& message, const MinimaMet* starts) {
    const bool finished = Work.FitDone != 0;
    const std::string runs = Existing(finished, [] {
        RunsTest();
        return Work.RunsZ;
    });
    std::vector<std::string> members = {
        Member("program", JsonString(Work.ProgramName)),
        Member("version", JsonString(Work.ProgramVersion)),
        Member("converged", JsonFlag(IsConverged())),
        Member("message", JsonString(message)),
        Member("iterations", HasBeenRun() ? std::to_string(Work.Iteration) : Null),
        Member("check", CheckObject()),
        Member("rescued", JsonFlag(Work.Outcome.Rescued)),
        Member("model", ModelObject()),
        Member("sum_of_squares", Existing(Work.FitValid != 0, [] { return Work.SumSq; })),
        Member("rms_residual", Existing(finished, [] { return Work.RmsResidual; })),
        Member("degrees_of_freedom", std::to_string(Work.NumPts - Work.NumFree)),
        Member("runs_z", runs),
        Member("confidence", ConfidenceObject()),
        Member("parameters", ParameterList()),
        Member("correlations", CorrelationsObject()),
        Member("sets", SetList()),
    };
    if (starts) members.push_back(Member("starts", StartsObject(*starts)));
    return "{\n  " + Joined(members, ",\n  ") + "\n}\n";
}

} // namespace Quillon
