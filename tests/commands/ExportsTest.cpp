// The analysis in files for others: methods tables, the report as a document, the job.
#include "commands/export/AnalysisJob.h"
#include "commands/export/HtmlReport.h"
#include "commands/export/PrintedReport.h"
#include "input/Csv.h"
#include "reporting/MethodsTable.h"
#include "reporting/Report.h"
#include "studies/methods/StudyResults.h"
#include "tests/reporting/HandBuiltFit.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quillon {
namespace {

Workspace Fit() {
    Workspace w = HandBuiltFit();
    w.ExtA = 52000.0F;
    w.ScanFile[1] = "a & b_<1>,.RA1";
    w.ScanSha256[1] = std::string(64, 'c');
    return w;
}

std::string CellUnder(const std::vector<CsvCells>& lines, std::size_t head, std::size_t line,
                      const std::string& name) {
    const CsvCells& heads = lines[head];
    const auto place = std::find(heads.begin(), heads.end(), name);
    if (place == heads.end()) return "no such column";
    return lines[line][static_cast<std::size_t>(place - heads.begin())];
}

TEST(MethodsTable, CsvHasARowForEachSetAndEachParameter) {
    Script script;
    Work = Fit();
    const std::string text = MethodsText(MethodsFormat::Csv);
    const std::vector<CsvCells> lines = ParseCsv(text);
    ASSERT_EQ(lines.size(), 3U + 7U) << "two sets and six slots in use below a head each";
    EXPECT_NE(text.find("\n\nslot,name"), std::string::npos) << "an empty line between the tables";
    EXPECT_EQ(CellUnder(lines, 0, 1, "file"), "/data/run7/a & b_<1>,.RA1");
    EXPECT_EQ(CellUnder(lines, 0, 1, "channel"), "B");
    EXPECT_EQ(CellUnder(lines, 0, 1, "speed_rpm"), "20000");
    EXPECT_EQ(CellUnder(lines, 0, 1, "sha256"), std::string(64, 'c'));
    EXPECT_EQ(CellUnder(lines, 0, 2, "inner_cm"), "5.5");
    EXPECT_EQ(CellUnder(lines, 3, 4, "name"), "MW A mon");
    EXPECT_EQ(CellUnder(lines, 3, 4, "value"), "45");
    EXPECT_EQ(CellUnder(lines, 3, 4, "error"), "3.75");
    EXPECT_EQ(CellUnder(lines, 3, 5, "state"), "held");
    EXPECT_EQ(CellUnder(lines, 3, 6, "name"), "Ln K(1>N)");
    EXPECT_EQ(CellUnder(lines, 3, 6, "convention"), "macroscopic, 2 A = A2");
    EXPECT_FALSE(CellUnder(lines, 3, 6, "kd_root_mol_l").empty());
    EXPECT_EQ(CellUnder(lines, 3, 4, "log10_k"), "");
}

// Letters that mean something in a format are written as what they are.
TEST(MethodsTable, NamesAreTextInEveryFormat) {
    Script script;
    Work = Fit();
    EXPECT_NE(MethodsText(MethodsFormat::Html).find("<td>a &amp; b_&lt;1&gt;,.RA1</td>"), std::string::npos);
    EXPECT_NE(MethodsText(MethodsFormat::Latex).find("a \\& b\\_\\textless{}1\\textgreater{},.RA1"),
              std::string::npos);
    EXPECT_NE(MethodsText(MethodsFormat::Markdown).find("a & b\\_&lt;1>,.RA1"), std::string::npos);
    Work.ScanFile[1] = "\xE4.RA1"; // Latin-1
    EXPECT_NE(MethodsText(MethodsFormat::Html).find("<td>\xC3\xA4.RA1</td>"), std::string::npos);
}

TEST(MethodsTable, FormatsByTheEnding) {
    EXPECT_EQ(MethodsFormatOf("x/a.TEX"), MethodsFormat::Latex);
    EXPECT_EQ(MethodsFormatOf("a.b.md"), MethodsFormat::Markdown);
    EXPECT_EQ(MethodsFormatOf("-"), MethodsFormat::Csv);
    EXPECT_THROW(MethodsFormatOf("a.csv/methods"), RuntimeError);
}

TEST(MethodsTable, IsWrittenWhereTheUserSays) {
    Script script;
    Work = Fit();
    const std::string path = script.Directory() + "/m.md";
    script.ExpectFile("Quillon - Export Methods Table", path);
    ExportMethodsTable();
    EXPECT_EQ(ReadWholeFile(path), MethodsText(MethodsFormat::Markdown));
    const std::string odd = script.Directory() + "/m.doc";
    script.ExpectFile("Quillon - Export Methods Table", odd);
    script.ExpectMessage("Error 'a table of methods ends with .csv, .html, .tex or .md' occurred while "
                         "writing " +
                         odd);
    ExportMethodsTable();
}

TEST(HtmlReport, StandsByItself) {
    Script script;
    Work = Fit();
    const std::string text =
        HtmlReport("<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"></svg>");
    EXPECT_TRUE(text.starts_with("<!DOCTYPE html>"));
    for (const char* word : {"<script", "src=\"", "href=", "@import", "url(", "<?xml"})
        EXPECT_EQ(text.find(word), std::string::npos) << word;
    for (const char* word : {"<svg xmlns=", "<caption>Data sets</caption>", "45.0000", "SHA-256",
                             "at the program's defaults: vbar", "a &amp; b_&lt;1&gt;"})
        EXPECT_NE(text.find(word), std::string::npos) << word;
    EXPECT_EQ(text.find("b_<1>"), std::string::npos);
    Work.FitDone = FlagFalse;
    EXPECT_THROW(HtmlReport(""), RuntimeError);
}

// A resampling that was made at the window was in no document of the desktop.
TEST(HtmlReport, HoldsTheStudiesThatAreKeptOfTheFit) {
    Script script;
    Work = Fit();
    Comparison comparison;
    ComparedModel row;
    row.Variant = {2, false, false};
    row.HasFit = row.Minimum = row.IsOwn = true;
    row.SumSq = 0.25;
    row.Weight = 0.75;
    comparison.Rows.push_back(row);
    row.HasFit = row.IsOwn = false;
    row.Variant.Model = 4;
    row.Notes = "Singular Matrix - Fit Aborted.";
    comparison.Rows.push_back(row);
    comparison.Complete = true;
    KeepStudy(comparison);
    Profile profile;
    profile.Slot = 2;
    profile.MinimumSumSq = 0.25;
    profile.Limits.push_back({0.95, 1.5, std::nullopt, 4.0});
    profile.Complete = true;
    KeepStudy(profile);
    KeepStudy(profile); // once more takes its place
    const std::string text = HtmlReport("", KeptStudies());
    for (const char* word : {"<h2>Comparison of models</h2>", "2 (yours)", "2.500000E-1", "0.7500",
                             "<p>4: Singular Matrix", "<h2>Profile of Ln K(1&gt;N)", "(not reached)"})
        EXPECT_NE(text.find(word), std::string::npos) << word;
    const std::size_t section = text.find("<h2>Profile of");
    EXPECT_EQ(text.find("<h2>Profile of", section + 1), std::string::npos);
    const std::string printed = TextOfPages(MakePrintedReport({}, false, KeptStudies()).Pages);
    EXPECT_NE(printed.find("Comparison of models:"), std::string::npos);
    EXPECT_NE(printed.find("95.0%: (not reached) to "), std::string::npos) << printed;
    Work.Parms[2] += 1.0F;
    EXPECT_EQ(HtmlReport("", KeptStudies()).find("Comparison of models"), std::string::npos);
}

TEST(AnalysisJob, FilesBelowTheJobHaveShortNames) {
    EXPECT_EQ(NameFrom("/a/b", "/a/b/c/1.RA1"), "c/1.RA1");
    EXPECT_EQ(NameFrom("/a/b", "/a/bc/1.RA1"), "/a/bc/1.RA1");
    EXPECT_EQ(NameFrom("", "1.RA1"), "1.RA1");
}

TEST(AnalysisJob, IsWrittenWhereTheUserSays) {
    Script script;
    Work = HandBuiltFit();
    for (long row = 1; row <= 2; ++row)
        Work.ScanDirectory[row] = script.Directory() + "/run7";
    const std::string path = script.Directory() + "/a.job";
    script.ExpectFile("Quillon - Save as Job", path);
    SaveAsJob();
    const std::string text = ReadWholeFile(path);
    EXPECT_NE(text.find("file = \"run7/00012.RA1\"\n"), std::string::npos) << text;
    EXPECT_NE(text.find("0 = internal 1.5 fit lower"), std::string::npos) << text;
    EXPECT_NE(text.find("1 = internal 2 hold lower"), std::string::npos) << text;
    EXPECT_NE(text.find("channel = B\n"), std::string::npos) << text;
}

} // namespace
} // namespace Quillon
