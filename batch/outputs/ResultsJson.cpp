#include "batch/outputs/ResultsJson.h"

#include "batch/outputs/JsonParts.h"
#include "batch/outputs/ResamplingOutputs.h"
#include "fit/Confidence.h"
#include "fit/Misfit.h"
#include "fit/Undetermined.h"
#include "models/table/Catalogue.h"
#include "models/table/ParmScale.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <vector>

namespace Quillon {

namespace {

std::string ModelObject() {
    return InlineObject({JsonMember("number", std::to_string(Work.Model)),
                         JsonMember("name", JsonString(ModelReportName(Work.Model))),
                         JsonMember("nonideal", JsonFlag(Work.NonIdeal != 0)),
                         JsonMember("separate_k", JsonFlag(Work.SeparateK != 0))});
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
    if (!HasBeenRun()) return JsonNull;
    const auto& d = Work.Outcome.ExpectedDecrease;
    return InlineObject({JsonMember("expected_decrease", d ? JsonNumber(*d) : JsonNull),
                         JsonMember("minimum", JsonFlag(Work.Outcome.End == FitEnd::Converged))});
}

std::string RemarkText() {
    const std::string misfit = MisfitText();
    return misfit.empty() ? JsonNull : JsonString(misfit);
}

std::string ConfidenceObject(JsonReasons& reasons) {
    const auto calculate = [] {
        if (!Work.LimitsDone) ComputeConfidenceRatio(Work.ConfidenceLevel);
        return Work.ConfidenceRatio;
    };
    const std::string ratio = JsonExisting("confidence.ratio", Work.FitDone != 0, calculate, reasons);
    return InlineObject(
        {JsonMember("level", JsonNumber(Work.LimitsDone ? Work.LimitsLevel : Work.ConfidenceLevel)),
         JsonMember("ratio", ratio), JsonMember("searched", JsonFlag(Work.LimitsDone != 0))});
}

const char* StateName(std::int16_t map) {
    if (map >= 0) return "fitted";
    return map == SlotTied ? "tied" : "held";
}

std::string NoteText(SlotNo slot) {
    const std::string note = ParameterNote(slot);
    return note.empty() ? JsonNull : JsonString(note);
}

std::string ParameterObject(SlotNo slot, JsonReasons& reasons) {
    const bool fitted = IsFitted(slot);
    const FreePos free = FreePosOf(slot);
    const auto number = [&](const char* what, bool exists, auto&& calculate) {
        return JsonExisting("slot " + std::to_string(slot.Number) + " " + what, exists, calculate, reasons);
    };
    const auto limit = [&](const char* what, std::size_t side) {
        return number(what, fitted && Work.LimitsDone && LimitFound(free, side == 1),
                      [&] { return ToUserUnits(slot, Work.ParmLimits[side][free]); });
    };
    const bool bounded = fitted && free.Number <= Work.AtBound.Hi();
    return InlineObject(
        {JsonMember("slot", std::to_string(slot.Number)), JsonMember("name", JsonString(Work.ParmName[slot])),
         JsonMember("unit", JsonString(Work.ParmTitle[slot])),
         JsonMember("state", std::string("\"") + StateName(Work.FreeMap[slot]) + "\""),
         JsonMember("internal", JsonNumber(Work.Parms[slot])),
         JsonMember("value", number("value", true, [&] { return ToUserUnits(slot, Work.Parms[slot]); })),
         JsonMember("error", number("error", HasError(slot), [&] { return DisplayedError(free); })),
         JsonMember("lower", limit("lower", 0)), JsonMember("upper", limit("upper", 1)),
         JsonMember("at_bound", std::to_string(bounded ? Work.AtBound[free] : 0)),
         JsonMember("note", NoteText(slot))});
}

std::string ParameterList(JsonReasons& reasons) {
    std::vector<std::string> items;
    for (const SlotNo slot : EachSlot())
        if (IsInUse(slot)) items.push_back(ParameterObject(slot, reasons));
    return JsonList(items);
}

std::string CorrelationsObject() {
    if (!Work.FitDone) return JsonNull;
    Work.HighCount = Work.VeryHighCount = 0;
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);
    std::vector<std::string> slots, rows;
    for (const FreePos a : EachFree()) {
        slots.push_back(std::to_string(SlotOf(a).Number));
        std::vector<std::string> row;
        for (FreePos b(0); b <= a; ++b)
            row.push_back(JsonNumber(Work.CorrMatrix(a, b)));
        rows.push_back(InlineList(row));
    }
    return InlineObject({JsonMember("slots", InlineList(slots)), JsonMember("matrix", InlineList(rows))});
}

// The fitted parameters before slot 8 by their slots, in user units.
std::string MinimumObject(const Minimum& minimum) {
    std::vector<std::string> parameters;
    const std::vector<SlotNo> slots = MinimumSlots();
    for (std::size_t i = 0; i < slots.size(); ++i)
        parameters.push_back(JsonMember(std::to_string(slots[i].Number), JsonNumber(minimum.Values[i])));
    return InlineObject({JsonMember("sum_of_squares", JsonNumber(minimum.Fit.SumSq)),
                         JsonMember("count", std::to_string(minimum.Count)),
                         JsonMember("parameters", InlineObject(parameters))});
}

std::string StartsObject(const MinimaMet& starts) {
    std::vector<std::string> minima;
    for (const Minimum& minimum : starts.Minima)
        minima.push_back(MinimumObject(minimum));
    return InlineObject(
        {JsonMember("failed", std::to_string(starts.Failed)), JsonMember("minima", InlineList(minima))});
}

} // namespace

std::string ResultsJson(const std::string& message, const MinimaMet* starts, const FilesAsWritten& files,
                        const Resampling* resampled) {
    const bool finished = Work.FitDone != 0;
    JsonReasons reasons;
    const auto runs = [] {
        RunsTest();
        return Work.RunsZ;
    };
    std::vector<std::string> members = {
        JsonMember("program", JsonString(Work.ProgramName)),
        JsonMember("version", JsonString(Work.ProgramVersion)),
        JsonMember("converged", JsonFlag(IsConverged())),
        JsonMember("message", JsonString(message)),
        JsonMember("iterations", HasBeenRun() ? std::to_string(Work.Iteration) : JsonNull),
        JsonMember("check", CheckObject()),
        JsonMember("rescued", JsonFlag(Work.Outcome.Rescued)),
        JsonMember("remark", RemarkText()),
        JsonMember("model", ModelObject()),
        JsonMember("sum_of_squares", Work.FitValid != 0 ? JsonNumber(Work.SumSq) : JsonNull),
        JsonMember("rms_residual", finished ? JsonNumber(Work.RmsResidual) : JsonNull),
        JsonMember("degrees_of_freedom", std::to_string(Work.NumPts - Work.NumFree)),
        JsonMember("runs_z", JsonExisting("runs_z", finished, runs, reasons)),
        JsonMember("confidence", ConfidenceObject(reasons)),
        JsonMember("parameters", ParameterList(reasons)),
        JsonMember("correlations", CorrelationsObject()),
        JsonMember("sets", SetsJson(files)),
        JsonMember("derived", DerivedJson()),
    };
    if (starts) members.push_back(JsonMember("starts", StartsObject(*starts)));
    if (resampled) members.push_back(JsonMember("resampling", ResamplingJson(*resampled)));
    if (!reasons.empty()) members.push_back(JsonMember("reasons", InlineObject(reasons)));
    return JsonText(members);
}

} // namespace Quillon
