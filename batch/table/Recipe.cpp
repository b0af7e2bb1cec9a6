#include "batch/table/Recipe.h"

#include "batch/console/OneLine.h"
#include "batch/job/JobFile.h"
#include "batch/options/OutputPlaces.h"
#include "batch/table/Summary.h"
#include "files/FileTarget.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <functional>
#include <iterator>
#include <map>
#include <set>

namespace Quillon {

namespace {

std::string RowText(long row) {
    return "row " + std::to_string(row);
}

std::vector<std::string> PathsOf(Options options) {
    options.Summary.clear();
    std::vector<std::string> paths;
    for (const NamedOutput& output : OutputsOf(options))
        paths.push_back(output.Path);
    return paths;
}

void CheckInputs(const Options& options) {
    for (const std::string& input : {options.JobPath, options.Table})
        if (const std::string output = OutputOver(options, input, false); !output.empty())
            RaiseError(OneLine(input + ": " + output + " would write over it"));
}

void CheckPlaceholders(const Options& options, const std::string& job, const JobTable& table) {
    bool any = false;
    for (const JobValue& value : ValuesOfJob(job)) {
        any |= NamesAColumn(value.Text, table);
        if (const std::string unknown = UnknownColumn(value.Text, table); !unknown.empty())
            RaiseError(OneLine(options.JobPath + ":" + std::to_string(value.Line) + ": {" + unknown +
                               "} is no column of " + table.Path));
    }
    for (const std::string& path : PathsOf(options)) {
        any |= NamesAColumn(path, table);
        if (const std::string unknown = UnknownColumn(path, table); !unknown.empty())
            FailTable(path + ": {" + unknown + "} is no column of " + table.Path);
    }
    if (!any) RaiseError(OneLine(options.JobPath + ": names no column of " + table.Path + " in braces"));
}

// Calls take with each output of each row.
void ForEachOutputOfRows(const Options& options, const JobTable& table, const std::vector<long>& rows,
                         const std::function<void(const std::string& path, long row)>& take) {
    for (const long number : rows) {
        const JobRow row{&table, number};
        if (!WhyRowIsNone(row).empty()) continue;
        for (const std::string& path : PathsOf(OptionsOfRow(options, row)))
            take(path, number);
    }
}

void CheckNotOver(const Options& options, const std::string& path, long row) {
    if (path == "-") FailTable("beside a table, outputs of its rows go to files");
    for (const std::string& other : {options.JobPath, options.Table, options.Summary})
        if (IsSameOutput(path, other)) FailTable(RowText(row) + " would write over " + other);
}

// Two rows that write one file would leave the work of one.
void CheckRowsApart(const Options& options, const JobTable& table, const std::vector<long>& rows) {
    std::map<std::string, long> taken;
    ForEachOutputOfRows(options, table, rows, [&](const std::string& path, long row) {
        CheckNotOver(options, path, row);
        const auto [entry, isNew] = taken.emplace(ResolvedPath(path), row);
        if (!isNew)
            FailTable("rows " + std::to_string(entry->second) + " and " + std::to_string(row) +
                      " would both write " + path);
    });
}

// --- what the jobs of rows name --------------------------------------------------------------------------

struct NamedByRows {
    std::set<std::string> Columns;   // of the summary
    std::map<FileId, long> Inputs{}; // what is read, and the first row that does
};

// The names that the parameters of a model have, and those of their errors.
void AddParmNames(const Job& job, std::set<std::string>& names) {
    Work = FreshWorkspace();
    Work.Model = job.Model;
    Work.SeparateK = Flag(job.SeparateK);
    Work.NonIdeal = Flag(job.NonIdeal);
    Work.MassUnits = job.MassUnits;
    BuildParmNames();
    for (const SlotNo slot : EachGlobalSlot()) {
        const SlotUse use = RuleOfSlot(slot).Use;
        if (use == SlotUse::Hidden || use == SlotUse::HiddenZero || use == SlotUse::HiddenAsN) continue;
        names.insert(Work.ParmName[slot]);
        names.insert(Work.ParmName[slot] + SummaryError);
    }
}

void AddInputs(const Job& job, long row, std::map<FileId, long>& inputs) {
    for (const RunInput& input : InputsOf(job))
        if (const std::optional<FileId> id = IdOf(input.Path)) inputs.emplace(*id, row);
}

NamedByRows NamesOf(const std::string& text, const std::string& path, const JobTable& table,
                    const std::vector<long>& rows) {
    NamedByRows named{{SummaryRow}};
    named.Columns.insert(std::begin(SummaryFields), std::end(SummaryFields));
    for (const long number : rows) {
        const JobRow row{&table, number};
        if (!WhyRowIsNone(row).empty()) continue;
        try {
            const Job job = ParseJob(text, path, &row);
            AddInputs(job, number, named.Inputs);
            AddParmNames(job, named.Columns);
        } catch (const RuntimeError&) {
            continue; // told with its row
        }
    }
    return named;
}

void CheckColumns(const JobTable& table, const std::set<std::string>& names) {
    for (const std::string& head : table.Heads)
        if (names.contains(head))
            RaiseError(OneLine(table.Path + ": the column " + head + " is one of the summary as well"));
}

// A row knows its own scans alone: those of another one would be gone before they are read.
void CheckScansStay(const Options& options, const JobTable& table, const std::vector<long>& rows,
                    const std::map<FileId, long>& inputs) {
    const auto check = [&](const std::string& path, const std::string& writer) {
        const std::optional<FileId> id = IdOf(path);
        const auto input = id ? inputs.find(*id) : inputs.end();
        if (input != inputs.end())
            FailTable(writer + " would write over " + path + ", which " + RowText(input->second) + " reads");
    };
    if (options.Summary != "-") check(options.Summary, "--summary");
    ForEachOutputOfRows(options, table, rows,
                        [&](const std::string& path, long row) { check(path, RowText(row)); });
}

} // namespace

void FailTable(const std::string& reason) {
    RaiseError("quillon-fit: " + OneLine(reason));
}

Options OptionsOfRow(Options options, const JobRow& row) {
    ForEachOutput(options, [&](std::string& path) { path = Filled(path, row); });
    options.Table.clear();
    options.Summary.clear();
    return options;
}

void CheckRecipe(const Options& options, const std::string& job, const JobTable& table,
                 const std::vector<long>& rows) {
    CheckInputs(options);
    CheckPlaceholders(options, job, table);
    CheckRowsApart(options, table, rows);
    const NamedByRows named = NamesOf(job, options.JobPath, table, rows);
    CheckColumns(table, named.Columns);
    CheckScansStay(options, table, rows, named.Inputs);
}

} // namespace Quillon
