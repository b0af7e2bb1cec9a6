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
#include "studies/methods/StudyLines.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

std::string Element(const char* name, const std::string& text) {
    return "<" + std::string(name) + ">" + HtmlText(text) + "</" + name + ">\n";
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

// What the studies of the fit add.
std::string SectionsOf(const StudyResults& studies) {
    std::string text;
    for (const StudySection& section : StudySections(studies)) {
        text += Element("h2", section.Title) + "<div class=\"tables\">\n";
        for (const TextTable& table : section.Tables)
            text += HtmlTable(table);
        text += "</div>\n";
        for (const std::string& remark : section.Remarks)
            text += Element("p", remark);
    }
    return text;
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

std::string HtmlReport(const std::string& figure, const StudyResults& studies) {
    constexpr ReportPaper OneLongPage{100, 0};
    const std::vector<PageLines> report = PrintReport(OneLongPage, StudyLines(studies, OneLongPage.Columns));
    std::string text = HtmlHead(ReportFooter()) + Element("h1", ModelReportName(Work.Model) + " fit") +
                       Element("p", ReportFooter()) + Paragraphs(Notes()) + InlineFigure(figure) +
                       Element("h2", "Results") + Tables();
    if (const std::vector<std::string> derived = DerivedLines(); !derived.empty())
        text += Element("h2", "Association constants") + Lines(derived);
    text += SectionsOf(studies);
    return text + Element("h2", "What was measured") + Lines(MeasuredLines()) +
           Element("h2", "The whole report") + Lines(report.front()) + "</body>\n</html>\n";
}

std::string HtmlReportWithFigure() {
    FigureChoice choice;
    choice.Width = TwoColumns;
    return HtmlReport(FigureBytes(choice, "svg", FigureDots, OpenPictureAs), KeptStudies());
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
