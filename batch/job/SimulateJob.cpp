#include "batch/job/SimulateJob.h"

#include "batch/console/BatchPlatform.h"
#include "batch/console/OneLine.h"
#include "batch/job/JobText.h"
#include "batch/job/RunJob.h"
#include "batch/outputs/Numbers.h"
#include "fit/Fault.h"
#include "models/function/Constraints.h"
#include "models/function/Simulation.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "scandata/reader/ScanWriter.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace Quillon {

namespace {

namespace fs = std::filesystem;

constexpr const char* JobName = "simulated.job";

// --- values ----------------------------------------------------------------------------------------------

bool MayBeMissing(SlotNo slot) {
    const SlotRule& rule = RuleOfSlot(slot);
    return !IsInUse(slot) || Work.FreeMap[slot] == SlotTied || rule.Use == SlotUse::Fixed ||
           rule.Holds == Quantity::Offset || rule.Holds == Quantity::Unread;
}

bool HasValue(const std::vector<ListedParm>& listed, SlotNo slot) {
    return std::any_of(listed.begin(), listed.end(),
                       [&](const ListedParm& each) { return each.Slot == slot && each.Line->Value; });
}

void CheckAllListed(const Job& job, const std::vector<ListedParm>& listed) {
    std::string missing;
    for (const SlotNo slot : EachSlot())
        if (!MayBeMissing(slot) && !HasValue(listed, slot))
            missing += (missing.empty() ? "" : ", ") + Work.ParmName[slot];
    if (!missing.empty())
        FailJob(job, "parameters", "",
                "a simulation needs a value for every parameter; without one: " + missing);
}

// --- the scans -------------------------------------------------------------------------------------------

std::string ScanName(RowNo row) {
    return SuggestedScanName(row, CellNumberOf(Work.ScanFile[row]));
}

// The values of a set in place of its scan, over its range.
void TakeIntoScan(SetNo set, const OneBased<float>& values, long& point) {
    const RowNo row = RowOf(set);
    for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row]; ++p)
        Work.ScanValue[row][p] = values[++point];
    while (point < Work.NumPts && IsPseudoPoint(point + 1))
        ++point;
}

// --- the job ---------------------------------------------------------------------------------------------

bool IsAnyOf(const std::string& key, std::initializer_list<const char*> keys) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// What the new scans have settled, and what stands there anew.
bool GoesOver(const std::string& section, const std::string& key) {
    if (section == "fit") return key != "guesses";
    if (section == "constants") return true;
    return section.starts_with("set ") &&
           !IsAnyOf(key, {"file", "inner", "outer", "range", "centerpiece", "channel", "baseline",
                          "baseline-shift", "exclude", "ceiling", "intensity"});
}

// The lines of a section of the job that go over, as they stand.
std::string LinesOfSection(const Job& job, const std::string& text, const std::string& section) {
    std::vector<std::pair<int, std::string>> lines;
    for (const JobPlace& place : job.Places) {
        if (place.Section != section || place.Key.empty() || !GoesOver(section, place.Key)) continue;
        std::string_view rest = text;
        for (int line = 1; line < place.Line; ++line)
            rest.remove_prefix(std::min(rest.find('\n'), rest.size() - 1) + 1);
        lines.emplace_back(place.Line, Trimmed(rest.substr(0, rest.find('\n'))));
    }
    std::sort(lines.begin(), lines.end());
    std::string all;
    for (const auto& [number, line] : lines)
        all += line + "\n";
    return all;
}

const JobParameter* LineOf(const std::vector<ListedParm>& listed, SlotNo slot) {
    for (const ListedParm& each : listed)
        if (each.Slot == slot) return each.Line;
    return nullptr;
}

std::string MarksOf(const JobParameter* line) {
    if (!line) return "";
    std::string marks;
    if (line->Choice == JobParameter::Mark::Hold) marks += " hold";
    if (line->Choice == JobParameter::Mark::Fit) marks += " fit";
    if (line->Lower) marks += " lower " + ShortestText(*line->Lower);
    if (line->Upper) marks += " upper " + ShortestText(*line->Upper);
    return marks;
}

// Slots by number: names hang on units and model.
std::string ParameterLines(const std::vector<ListedParm>& listed) {
    std::string text = "[parameters]\n";
    for (const SlotNo slot : EachSlot()) {
        const std::int16_t flag = Work.FreeMap[slot];
        if (flag == SlotUnused || flag == SlotTied) continue;
        text += std::to_string(slot.Number) + " = " + ShortestText(ToUserUnits(slot, Work.Parms[slot])) +
                MarksOf(LineOf(listed, slot)) + "   ; " + Work.ParmName[slot] + "\n";
    }
    return text;
}

std::string NewJob(const Job& job, const std::string& text, const std::vector<ListedParm>& listed) {
    std::string result = "; simulated; the starting values are the true ones\n";
    result += "; noise " + ShortestText(job.Simulation.Noise) + ", seed " +
              std::to_string(job.Simulation.Seed) + "\n";
    result += "[fit]\n" + LinesOfSection(job, text, "fit") + "guesses = no\n";
    result += "\n[constants]\n" + LinesOfSection(job, text, "constants");
    for (const JobSet& set : job.Sets) {
        const std::string section = SetSection(set.Number);
        result += "\n[" + section + "]\nfile = " + ScanName(RowNo(set.Number)) + "\n" +
                  LinesOfSection(job, text, section);
    }
    return result + "\n" + ParameterLines(listed);
}

// --- the folder ------------------------------------------------------------------------------------------

[[noreturn]] void FailFolder(const std::string& folder, const std::string& reason) {
    RaiseError(OneLine("--simulate " + folder + ": " + reason));
}

} // namespace

std::vector<ListedParm> TakeTruth(const Job& job) {
    PrepareJob(job);
    std::vector<ListedParm> listed = FindListedParms(job);
    CheckAllListed(job, listed);
    TakeListedValues(job, listed);
    ApplyOffsetLinks();
    return listed;
}

std::vector<SimulatedFile> SimulateJob(const Job& job, const std::string& text) {
    const std::vector<ListedParm> listed = TakeTruth(job);
    OneBased<float> values;
    if (!SimulateSignals(values)) {
        Tell(ModelFaultText(), Work.ProgramName, BoxIcon::Stop);
        return {};
    }
    Console.Seed = static_cast<std::uint64_t>(job.Simulation.Seed);
    AddNoise(values, static_cast<double>(job.Simulation.Noise));
    std::vector<SimulatedFile> files;
    long point = 0;
    for (const SetNo set : EachSet()) {
        const RowNo row = RowOf(set);
        TakeIntoScan(set, values, point);
        files.push_back({ScanName(row), ScanText(row, CellNumberOf(Work.ScanFile[row]))});
    }
    files.push_back({JobName, NewJob(job, text, listed)});
    return files;
}

void CheckSimulationFolder(const std::string& folder) {
    std::error_code failure;
    const fs::file_status status = fs::status(folder, failure);
    if (!fs::exists(status)) {
        fs::path place(folder);
        if (!place.has_filename()) place = place.parent_path(); // a "/" at the end
        const fs::path parent = place.parent_path();
        if (!parent.empty() && !fs::is_directory(parent, failure))
            FailFolder(folder, ErrorText::PathNotFound);
        return;
    }
    if (!fs::is_directory(status)) FailFolder(folder, "there is a file of that name");
    const bool empty = fs::is_empty(folder, failure);
    if (failure) FailFolder(folder, "the folder cannot be read");
    if (!empty) FailFolder(folder, "the folder is not empty, and nothing is overwritten");
}

void WriteSimulation(const std::string& folder, const std::vector<SimulatedFile>& files) {
    CheckSimulationFolder(folder);
    std::error_code failure;
    const bool made = fs::create_directory(folder, failure);
    if (failure) FailFolder(folder, "the folder cannot be made: " + failure.message());
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string path = JoinPath(folder, files[i].Name);
        try {
            Host.WriteFile(path, files[i].Bytes);
        } catch (const RuntimeError& error) {
            for (std::size_t j = 0; j < i; ++j)
                fs::remove(JoinPath(folder, files[j].Name), failure);
            if (made) fs::remove(folder, failure);
            RaiseError(OneLine(path + ": " + error.Text));
        }
    }
}

} // namespace Quillon
