#pragma once
// The command line of quillon-fit.

#include "batch/graphs/GraphOption.h"
#include "batch/options/CalculatorOptions.h"
#include "batch/options/ProfileOption.h"
#include "batch/options/SortOptions.h"
#include "batch/outputs/IntegrateCsv.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// Rows of a table, counted from 1.
struct RowRange {
    long First = 1, Last = 1;
};

struct Options {
    std::string JobPath; // empty where all that is wanted are pictures of graph files
    // Where outputs go: "" not wanted, "-" standard output.
    std::string Report;
    std::string Results;
    std::string Points;
    std::string Save;               // a fit save file; never standard output
    std::string Integrate;          // mean concentrations over the cell, CSV
    std::string Compare;            // the comparison of models, CSV or JSON
    std::string Methods;            // what was measured and found, as a table
    std::string WriteJob;           // the analysis as a job
    std::string Summary;            // of a table of fits
    std::string Table;              // whose rows fill the job; empty: the job is one fit
    std::optional<RowRange> Rows;   // of the table; none: all
    std::string Merge;              // where parts of a summary go, put together; no job then
    std::vector<std::string> Parts; // of Merge
    std::string Simulate;           // the folder of a simulation; no fit then
    SortOptions Sort;               // of a run; no fit then
    CalculatorOptions Calculate;    // numbers for an experiment; no fit then
    std::string Plan;               // errors to be expected, CSV; no fit then
    std::string Draws;              // fits to resampled data, CSV
    std::string Correlations;       // of those fits, CSV
    std::vector<ProfileOption> Profiles;
    long Resample = 0; // how many of them; 0 none
    std::vector<GraphOption> Graphs;
    std::string Paper;       // of the report; empty: a4 for pages, text that both a4 and letter hold
    std::string ReportGraph; // "residuals" or "overlay" behind it; empty: none
    CellRadii Cell;          // of Integrate
    MassChoice Mass;         // of the mass graphs
    FigureChoice Figure;     // of the figures
    GraphColors Colors = GraphColors::Unsaid; // of all pictures
    std::vector<std::string> Given;           // the options with a value that were named, "--cell"
    int Threads = 0;                          // fits at a time; 0 as many as the machine has cores
    bool Refit = false;                       // a saved fit is fitted again
    long Restarts = 0;                        // random starts behind that
    bool Average = false;                     // the job of --sort takes means of the last equal scans
    bool Quiet = false;                       // no progress
    bool Help = false;                        // asked for; nothing else counts then
    bool Version = false;
};

// Reads the arguments behind the program's name. An option's file stands behind it or behind "=". Without
// any output the report goes to standard output. A mistake is a RuntimeError with one line that names it; an
// option that shapes an output (--cell, --paper, --mass-of) without that output is one.
Options ParseOptions(const std::vector<std::string>& arguments);

// The files that are to be written, with the options that name them, in the order of the help.
struct NamedOutput {
    std::string Option; // "--report", "--graph overlay:2"
    std::string Path;
};
std::vector<NamedOutput> OutputsOf(const Options& options);

// Calls change with the path of each output, for one to be put in its place.
void ForEachOutput(Options& options, const std::function<void(std::string& path)>& change);

// True when the report goes to a PDF file.
bool WantsReportPdf(const Options& options);

// True when it goes to a document for a browser.
bool WantsReportHtml(const Options& options);

} // namespace Quillon
