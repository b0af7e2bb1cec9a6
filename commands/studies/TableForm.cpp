#include "commands/studies/TableForm.h"

#include "platform/FormControls.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace Quillon {

TableFormRecord TableForm;
TableProgram TableRunner;

namespace {

constexpr const char* ProgramBeside = "quillon-fit";
constexpr std::size_t MostLines = 500; // the last ones stay

// The summary in the form has been named by hand and no run has written it yet: it may be meant for a table
// that is still to be chosen.
bool SummaryWaits = false;

void FillCaptions(TableFormRecord& form) {
    form.State.Caption = Work.ProgramName + " - Run a Table of Fits";
    form.Head =
        Captioned("A job in which {NAME} stands for the column NAME of a table: one fit for each row, on all "
                  "cores, and a summary with a line for each. Your analysis stays as it is.");
    form.Job.Label = Captioned("Job:");
    form.Job.Button = Captioned("&Job...");
    form.Table.Label = Captioned("Table:");
    form.Table.Button = Captioned("&Table...");
    form.Summary.Label = Captioned("Summary:");
    form.Summary.Button = Captioned("&Summary...");
    form.RunButton = Captioned("&Run");
    form.StopButton = Captioned("St&op");
    form.CloseButton = Captioned("&Close");
}

bool AllChosen() {
    for (const TableFile file : {TableFile::Job, TableFile::Table, TableFile::Summary})
        if (TableFormFile(file).Path.Text.empty()) return false;
    return true;
}

void ShowState() {
    TableForm.RunButton.Enabled = !TableForm.Running && AllChosen();
    TableForm.StopButton.Enabled = TableForm.Running;
    for (const TableFile file : {TableFile::Job, TableFile::Table, TableFile::Summary})
        TableFormFile(file).Button.Enabled = !TableForm.Running;
}

FileRequest RequestFor(TableFile file) {
    FileRequest request;
    switch (file) {
    case TableFile::Job:
        request.Title = " - Job of a Table";
        request.Filter = "jobs (*.job)|*.job|all files (*.*)|*.*";
        break;
    case TableFile::Table:
        request.Title = " - Table of Fits";
        request.Filter = "CSV files (*.csv)|*.csv|all files (*.*)|*.*";
        break;
    case TableFile::Summary:
        request.Title = " - Summary of a Table";
        request.Filter = "CSV files (*.csv)|*.csv";
        request.DefaultType = "csv";
        request.Save = true;
        break;
    }
    request.Title = Work.ProgramName + request.Title;
    const std::string& path = TableFormFile(file).Path.Text;
    request.Directory = path.empty() ? DirectoryOf(TableForm.Job.Path.Text) : DirectoryOf(path);
    request.Name = FileTitle(path);
    return request;
}

// "cells.csv" gives "cells-summary.csv".
std::string SummaryBeside(const std::string& table) {
    const std::string title = FileTitle(table);
    return JoinPath(DirectoryOf(table), title.substr(0, title.rfind('.')) + "-summary.csv");
}

// The two numbers of "12 of 40 rows"; false for another line.
bool ReadProgress(const std::string& line, double& done, double& all) {
    const std::string between = " of ", behind = " rows";
    const std::size_t of = line.find(between);
    if (of == std::string::npos || !line.ends_with(behind)) return false;
    long first = 0, second = 0;
    const char* const text = line.data();
    const auto one = std::from_chars(text, text + of, first);
    const char* const end = text + line.size() - behind.size();
    const auto two = std::from_chars(text + of + between.size(), end, second);
    done = static_cast<double>(first);
    all = static_cast<double>(second);
    return one.ptr == text + of && two.ptr == end && second > 0;
}

// Every fit answers these two; of a thousand rows they would hide what has failed.
bool IsRoutine(const std::string& line) {
    return line.ends_with("Do you want new guesses for the concentrations? Answer: Yes") ||
           line.ends_with("Do you also want the baseline offsets reset to zero? Answer: No");
}

std::string EndText(int status) {
    switch (status) {
    case 0:
        return "All rows are done. The summary is " + TableForm.Summary.Path.Text;
    case 2:
        return "Rows have failed; the summary says which and why: " + TableForm.Summary.Path.Text;
    default:
        return "No summary was written.";
    }
}

} // namespace

TableFormRecord::File& TableFormFile(TableFile file) {
    switch (file) {
    case TableFile::Job:
        return TableForm.Job;
    case TableFile::Table:
        return TableForm.Table;
    default:
        return TableForm.Summary;
    }
}

void LoadTableForm() {
    const TableFormRecord before = TableForm;
    TableForm = TableFormRecord{};
    FillCaptions(TableForm);
    TableForm.Job.Path.Text = before.Job.Path.Text;
    TableForm.Table.Path.Text = before.Table.Path.Text;
    TableForm.Summary.Path.Text = before.Summary.Path.Text;
    TableForm.State.FocusOn = &TableForm.Job.Button;
    TableForm.State.Shown = true;
    SummaryWaits = false;
    ShowState();
}

void RunTableOfFits() {
    LoadTableForm();
    Host.ShowModal(TableFormName);
}

void TableFormFileButton(TableFile file) {
    const FileAnswer answer = Host.AskFile(RequestFor(file));
    if (answer.Cancelled) return;
    const std::string former = std::exchange(TableFormFile(file).Path.Text, answer.Path);
    if (file == TableFile::Summary) SummaryWaits = true;
    if (file == TableFile::Table && answer.Path != former && !SummaryWaits)
        TableForm.Summary.Path.Text = SummaryBeside(answer.Path); // that of the former table stays as it is
    ShowState();
}

void TableFormRunButton() {
    if (TableForm.Running || !AllChosen()) return;
    TableForm.Lines.clear();
    TableForm.Fraction = 0.0;
    TableForm.Progress.Text = "Running...";
    const std::string program = JoinPath(Host.ProgramDirectory(), ProgramBeside);
    TableForm.Running =
        TableRunner.Start &&
        TableRunner.Start(program, {TableForm.Job.Path.Text, "--table", TableForm.Table.Path.Text,
                                    "--summary", TableForm.Summary.Path.Text});
    if (TableForm.Running)
        SummaryWaits = false;
    else
        TableForm.Progress.Text = program + " cannot be started.";
    ShowState();
}

void TableFormStopButton() {
    if (TableForm.Running && TableRunner.Stop) TableRunner.Stop();
}

void TableFormCloseButton() {
    if (TableForm.Running) return TableFormStopButton();
    TableForm.State.Shown = false;
}

void TableFormTold(const std::string& line) {
    double done = 0.0, all = 0.0;
    if (ReadProgress(line, done, all)) {
        TableForm.Progress.Text = line;
        TableForm.Fraction = done / all;
        return;
    }
    if (IsRoutine(line)) return;
    TableForm.Lines.push_back(line);
    if (TableForm.Lines.size() > MostLines) TableForm.Lines.erase(TableForm.Lines.begin());
}

void TableFormEnded(int status) {
    TableForm.Running = false;
    if (status == 0 || status == 2) TableForm.Fraction = 1.0;
    TableForm.Progress.Text = EndText(status);
    ShowState();
}

} // namespace Quillon
