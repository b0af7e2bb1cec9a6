#include "commands/export/HtmlReport.h"

#include "chart/files/Exchange.h"
#include "graphs/Figure.h"
#include "models/table/Catalogue.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "reporting/ConstantWarnings.h"
#include "reporting/MethodsTable.h"
#include "reporting/Report.h"
#include "reporting/values/DerivedConstants.h"
#include "reporting/values/FitNotes.h"
#include "reporting/values/Measured.h"
#include "reporting/values/ParmLines.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr const char* Style =
    "body{font-family:sans-serif;max-width:60em;margin:2em auto;padding:0 1em;color:#111;background:#fff}\n"
    "table{border-collapse:collapse;margin:1em 0;font-size:90%}\n"
    "caption{text-align:left;font-weight:bold;padding:.3em 0}\n"
    "th,td{border:1px solid #999;padding:.2em .5em;text-align:left}\n"
    "td{white-space:nowrap}\n"
    "figure{margin:1em 0}figure svg{max-width:100%;height:auto}\n"
    ".tables{overflow-x:auto}.warning{border-left:4px solid #d55e00;padding-left:.7em}\n"
    "pre{font-size:80%;overflow-x:auto}\n";

std::string Element(const char* name, const std::string& text) {
    return "<" + std::string(name) + ">" + HtmlText(text) + "</" + name + ">\n";
}

std::string Head() {
    // The policy says to the browser what this file promises: nothing is run and nothing is fetched.
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
           "'unsafe-inline'\">\n" +
           Element("title", ReportFooter()) + "<style>\n" + Style + "</style>\n</head>\n<body>\n";
}

// What stands before the picture in a file of its own has no place in a document.
std::string InlineFigure(const std::string& figure) {
    const std::size_t start = figure.find("<svg");
    if (start == std::string::npos) return "";
    return "<figure>\n" + figure.substr(start) +
           "\n<figcaption>Data with the fitted curves above, residuals below.</figcaption>\n</figure>\n";
}

std::string Paragraphs(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += "<p class=\"warning\">" + HtmlText(line) + "</p>\n";
    return text;
}

std::string Lines(const std::vector<std::string>& lines) {
    std::string text = "<pre>";
    for (const std::string& line : lines)
        text += HtmlText(line) + "\n";
    return text + "</pre>\n";
}

std::string Tables() {
    return "<div class=\"tables\">\n" + HtmlTable(ParametersTable()) + HtmlTable(SetsTable()) + "</div>\n";
}

// What is to be known before the numbers are believed, and of single parameters and sets.
std::vector<std::string> Notes() {
    std::vector<std::string> notes = FitWarningLines();
    for (const std::string& line : ConstantWarnings())
        notes.push_back(line);
    for (const std::string& line : NoteLines())
        notes.push_back(line);
    return notes;
}

} // namespace

std::string HtmlReport(const std::string& figure) {
    constexpr ReportPaper OneLongPage{100, 0};
    const std::vector<PageLines> report = PrintReport(OneLongPage);
    std::string text = Head() + Element("h1", ModelReportName(Work.Model) + " fit") +
                       Element("p", ReportFooter()) + Paragraphs(Notes()) + InlineFigure(figure) +
                       Element("h2", "Results") + Tables();
    if (const std::vector<std::string> derived = DerivedLines(); !derived.empty())
        text += Element("h2", "Association constants") + Lines(derived);
    return text + Element("h2", "What was measured") + Lines(MeasuredLines()) +
           Element("h2", "The whole report") + Lines(report.front()) + "</body>\n</html>\n";
}

std::string HtmlReportWithFigure() {
    FigureChoice choice;
    choice.Width = TwoColumns;
    return HtmlReport(FigureBytes(choice, "svg", FigureDots, OpenPictureAs));
}

void ExportMethodsTable() {
    FileRequest request;
    request.Title = Work.ProgramName + " - Export Methods Table";
    request.Filter = "CSV files (*.csv)|*.csv|HTML files (*.html)|*.html|LaTeX files (*.tex)|*.tex|Markdown "
                     "files (*.md)|*.md";
    request.Directory = Work.FitFile.empty() ? Work.DataDirectory : DirectoryOf(Work.FitFile);
    request.Name = "methods.csv";
    request.DefaultType = "csv";
    request.Save = true;
    const FileAnswer answer = Host.AskFile(request);
    if (answer.Cancelled) return;
    try {
        Host.WriteFile(answer.Path, MethodsText(MethodsFormatOf(answer.Path)));
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while writing " + answer.Path, Work.ProgramName,
             BoxIcon::Warning);
    }
}

} // namespace Quillon
