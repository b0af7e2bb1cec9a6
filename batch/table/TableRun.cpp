#include "batch/table/TableRun.h"

#include "batch/console/BatchPlatform.h"
#include "batch/console/OneLine.h"
#include "batch/job/JobFile.h"
#include "batch/options/OutputPlaces.h"
#include "batch/outputs/Numbers.h"
#include "batch/table/Recipe.h"
#include "batch/table/RowWorkers.h"
#include "batch/table/Summary.h"
#include "files/RunPieces.h"
#include "fit/Undetermined.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "reporting/values/Statistics.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

std::string LoadText(const std::string& path) {
    try {
        return Host.ReadFile(path);
    } catch (const RuntimeError& error) {
        RaiseError(OneLine(path + ": " + error.Text));
    }
}

std::vector<long> WantedRows(const Options& options, const JobTable& table) {
    const auto count = static_cast<long>(table.Rows.size());
    const RowRange wanted = options.Rows.value_or(RowRange{1, count});
    if (wanted.Last > count)
        FailTable("--rows ends with " + std::to_string(wanted.Last) + ", the table has " +
                  std::to_string(count));
    std::vector<long> rows;
    for (long row = wanted.First; row <= wanted.Last; ++row)
        rows.push_back(row);
    return rows;
}

// --- one row ---------------------------------------------------------------------------------------------

std::string YesNo(bool value) {
    return value ? "yes" : "no";
}

std::string RunsText() {
    try {
        RunsTest();
        return ShortestText(Work.RunsZ);
    } catch (const RuntimeError&) {
        return ""; // of too few points, which the degrees of freedom beside it show
    }
}

void AddParameters(SummaryLine& line) {
    for (const SlotNo slot : EachGlobalSlot()) {
        if (!IsInUse(slot)) continue;
        const bool stands = Work.FitDone != 0;
        const std::string& name = Work.ParmName[slot];
        line.Values.emplace_back(name, stands ? ShortestText(ToUserUnits(slot, Work.Parms[slot])) : "");
        line.Values.emplace_back(name + SummaryError,
                                 HasError(slot) ? ShortestText(DisplayedError(FreePosOf(slot))) : "");
    }
}

void AddFit(SummaryLine& line, int status, const RunEnd& end) {
    const bool stands = Work.FitDone != 0;
    line.Fields = {std::to_string(status),
                   end.Message,
                   YesNo(end.Converged),
                   YesNo(Work.Outcome.End == FitEnd::Converged),
                   stands ? ShortestText(Work.SumSq) : "",
                   stands ? ShortestText(Work.RmsResidual) : "",
                   std::to_string(Work.NumPts - Work.NumFree),
                   stands ? RunsText() : ""};
    AddParameters(line);
}

CsvCells FailedFields(const std::string& reason) {
    CsvCells fields(std::size(SummaryFields));
    fields[0] = "1";
    fields[1] = OneLine(reason);
    fields[2] = fields[3] = "no";
    return fields;
}

CsvCells CarriedCells(const JobRow& row) {
    CsvCells cells = row.Cells();
    cells.resize(row.Table->Heads.size());
    return cells;
}

// A console as a run of its own has it, whose lines name the row.
void StartConsole(const Options& options, long row, int threads) {
    const auto write = Console.WriteLine;
    InstallBatchPlatform();
    Console.Quiet = options.Quiet;
    Console.Threads = threads;
    Console.WriteLine = [row, write](const std::string& line) {
        write("row " + std::to_string(row) + ": " + line);
    };
}

SummaryLine RunRow(const Options& options, const JobRow& row, const RowRun& run) {
    SummaryLine line{row.Number, CarriedCells(row), {}, {}};
    std::string reason = WhyRowIsNone(row);
    if (reason.empty()) {
        try {
            RunEnd end;
            const int status = run(OptionsOfRow(options, row), row, end);
            AddFit(line, status, end);
            return line;
        } catch (const std::bad_alloc&) {
            reason = ErrorText::OutOfMemory;
        } catch (const RuntimeError& error) {
            reason = error.Text;
        }
    }
    WriteFailure(reason);
    line.Fields = FailedFields(reason);
    return line;
}

// --- all rows --------------------------------------------------------------------------------------------

// A line between processes: fields, then names and values by turns.
std::string Packed(const SummaryLine& line) {
    CsvCells cells = line.Fields;
    for (const auto& [name, value] : line.Values) {
        cells.push_back(name);
        cells.push_back(value);
    }
    return CsvLine(cells);
}

SummaryLine Unpacked(const std::string& text, const JobRow& row) {
    SummaryLine line{row.Number, CarriedCells(row), {}, {}};
    if (text.empty()) {
        line.Fields = FailedFields("the program has ended while it ran this row");
        return line;
    }
    const CsvCells cells = ParseCsv(text).front();
    const auto fields = static_cast<std::ptrdiff_t>(std::size(SummaryFields));
    line.Fields.assign(cells.begin(), cells.begin() + fields);
    for (std::size_t i = std::size(SummaryFields); i + 1 < cells.size(); i += 2)
        line.Values.emplace_back(cells[i], cells[i + 1]);
    return line;
}

constexpr const char* NotRun = "-"; // of a row that Ctrl-C came before

// The packed line of one row, which runs on so many threads.
std::string PackedLine(const Options& options, const JobRow& row, const RowRun& run, int threads) {
    if (Interrupted()) return NotRun;
    StartConsole(options, row.Number, threads);
    const std::string line = Packed(RunRow(options, row, run));
    return Interrupted() ? NotRun : line;
}

std::vector<std::string> PackedLines(const Options& options, const JobTable& table,
                                     const std::vector<long>& rows, const RowRun& run) {
    const int processes = options.Threads > 0 ? options.Threads : CoresOfMachine();
    const int within = processes > 1 ? 1 : options.Threads; // the rows take the cores
    const BatchConsole console = Console;
    WatchInterrupt();
    long told = 0;
    const auto tell = [&](long done) {
        Console = console;
        if (done > told) WriteProgress(std::to_string(done) + " of " + std::to_string(rows.size()) + " rows");
        told = done;
    };
    return RunInProcesses(
        processes, std::ssize(rows),
        [&](long i) {
            Console = console;
            return PackedLine(options, {&table, rows[static_cast<std::size_t>(i)]}, run, within);
        },
        tell, Interrupted);
}

std::vector<SummaryLine> RunRows(const Options& options, const JobTable& table, const std::vector<long>& rows,
                                 const RowRun& run) {
    const std::vector<std::string> packed = PackedLines(options, table, rows, run);
    if (Interrupted() || std::find(packed.begin(), packed.end(), NotRun) != packed.end())
        FailTable("the table was cancelled, and no summary is written");
    std::vector<SummaryLine> lines;
    for (std::size_t i = 0; i < rows.size(); ++i)
        lines.push_back(Unpacked(packed[i], {&table, rows[i]}));
    return lines;
}

bool HasFailed(const SummaryLine& line) {
    return line.Fields.front() != "0";
}

// Of sorted lines: rows 1 to the last one.
void CheckEachRowOnce(const std::vector<SummaryLine>& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const long due = static_cast<long>(i) + 1;
        if (lines[i].Row < due) FailTable("--merge: row " + std::to_string(lines[i].Row) + " stands twice");
        if (lines[i].Row > due) FailTable("--merge: row " + std::to_string(due) + " is missing");
    }
}

} // namespace

std::string RunTable(const Options& options, const RowRun& run, int& status) {
    const JobTable table = ParseJobTable(LoadText(options.Table), options.Table);
    const std::string text = LoadText(options.JobPath);
    const std::vector<long> rows = WantedRows(options, table);
    CheckRecipe(options, text, table, rows);
    const std::vector<SummaryLine> lines = RunRows(options, table, rows, run);
    status = std::any_of(lines.begin(), lines.end(), HasFailed) ? 2 : 0;
    return SummaryText(table.Heads, lines);
}

std::string MergedSummary(const std::vector<std::string>& paths) {
    std::vector<SummaryPart> parts;
    for (const std::string& path : paths) {
        parts.push_back(ParseSummary(LoadText(path), path));
        if (parts.back().Columns != parts.front().Columns)
            RaiseError(OneLine(path + ": the columns are not those of " + paths.front()));
    }
    std::vector<SummaryLine> lines;
    for (const SummaryPart& part : parts)
        lines.insert(lines.end(), part.Lines.begin(), part.Lines.end());
    std::stable_sort(lines.begin(), lines.end(),
                     [](const SummaryLine& a, const SummaryLine& b) { return a.Row < b.Row; });
    CheckEachRowOnce(lines);
    return SummaryText(parts.front().Columns, lines);
}

} // namespace Quillon
