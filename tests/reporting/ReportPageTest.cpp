// Paging and wrapping of fixed-pitch text.
#include "reporting/ReportPage.h"

#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace Quillon {
namespace {

std::string Footer(const std::string& left, int page, std::size_t columns) {
    const std::string right = "Page " + std::to_string(page);
    return left + std::string(columns - left.size() - right.size(), ' ') + right;
}

// Lines "1", "2", ... on small paper.
std::vector<PageLines> NumberedLines(int lines, const ReportPaper& paper) {
    ReportPages report = StartReport(paper, "Results from Quillon");
    for (int i = 1; i <= lines; ++i)
        ReportLineFeed(report, std::to_string(i));
    FinishReport(report);
    return report.Pages;
}

TEST(ReportPage, TurnsThePageAtTheLimit) {
    Script script;
    Work = FreshWorkspace();
    const std::vector<PageLines> pages = NumberedLines(16, {40, 10});
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0],
              (PageLines{"1", "2", "3", "4", "5", "6", "7", "8", "", Footer("Results from Quillon", 1, 40)}));
    EXPECT_EQ(pages[1], (PageLines{"  Quillon    Page 2", "", "9", "10", "11", "12", "13", "14", "",
                                   Footer("Results from Quillon", 2, 40)}));
    EXPECT_EQ(pages[2], (PageLines{"  Quillon    Page 3", "", "15", "16", "", "", "", "", "",
                                   Footer("Results from Quillon", 3, 40)}));
}

TEST(ReportPage, AFullPageIsNotFollowedByAnEmptyOne) {
    Script script;
    Work = FreshWorkspace();
    EXPECT_EQ(NumberedLines(8, {40, 10}).size(), 1U);
    EXPECT_EQ(NumberedLines(9, {40, 10}).size(), 2U);
    EXPECT_EQ(NumberedLines(14, {40, 10}).size(), 2U);
    EXPECT_EQ(NumberedLines(15, {40, 10}).size(), 3U);
}

TEST(ReportPage, LinesToldTogetherShareAPage) {
    Script script;
    Work = FreshWorkspace();
    ReportPages report = StartReport({40, 10}, "Results from Quillon");
    for (int i = 1; i <= 7; ++i)
        ReportLineFeed(report, "x");
    ReportLineFeed(report, std::vector<std::string>{"notice", "parameter"});
    FinishReport(report);
    ASSERT_EQ(report.Pages.size(), 2U);
    EXPECT_EQ(report.Pages[0][7], "");
    EXPECT_EQ(report.Pages[1][2], "notice");
    EXPECT_EQ(report.Pages[1][3], "parameter");
}

TEST(ReportPage, MoreThanAPageTogetherStillComesOutWhole) {
    Script script;
    Work = FreshWorkspace();
    ReportPages report = StartReport({40, 10}, "Results from Quillon");
    ReportLineFeed(report, std::vector<std::string>(20, "x"));
    FinishReport(report);
    long count = 0;
    for (const PageLines& page : report.Pages)
        count += std::count(page.begin(), page.end(), "x");
    EXPECT_EQ(count, 20);
    EXPECT_EQ(report.Pages[0][0], "x");
}

TEST(ReportPage, PaperWithoutAnEndIsOnePage) {
    Script script;
    Work = FreshWorkspace();
    const std::vector<PageLines> pages = NumberedLines(500, {40, 0});
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_EQ(pages[0].size(), 502U);
    EXPECT_EQ(pages[0][499], "500");
    EXPECT_EQ(pages[0][500], "");
    EXPECT_EQ(pages[0][501], Footer("Results from Quillon", 1, 40));
}

TEST(ReportPage, PaperThatIsTooSmallStillTakesEveryLine) {
    Script script;
    Work = FreshWorkspace();
    const std::vector<PageLines> pages = NumberedLines(9, {1, 1});
    std::vector<std::string> found;
    for (const PageLines& page : pages)
        for (const std::string& line : page)
            if (line.size() == 1) found.push_back(line);
    EXPECT_EQ(found, (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
}

TEST(ReportPage, ALongFooterTakesALineMoreAndThePageKeepsItsLength) {
    Script script;
    Work = FreshWorkspace();
    const std::string left = "Results from Quillon version 4.0.0 (x)";
    ReportPages report = StartReport({40, 10}, left);
    for (int i = 1; i <= 20; ++i)
        ReportLineFeed(report, "x");
    FinishReport(report);
    for (std::size_t i = 0; i < report.Pages.size(); ++i) {
        const PageLines& page = report.Pages[i];
        ASSERT_EQ(page.size(), 10U);
        EXPECT_EQ(page[8], left);
        EXPECT_EQ(page[9], Footer("", static_cast<int>(i) + 1, 40));
    }
}

TEST(ReportPage, StandardPaperFitsBothA4AndLetter) {
    const ReportPaper twelve = StandardPaper(12.0F);
    EXPECT_LE(twelve.Columns * 7.2 + 72.0, 595.3); // A4 is the narrower one, letter the shorter one
    EXPECT_GT((twelve.Columns + 1) * 7.2 + 72.0, 595.0);
    EXPECT_LE(twelve.Lines * 14.4 + 72.0, 792.1);
    EXPECT_GT((twelve.Lines + 1) * 14.4 + 72.0, 792.0);
    EXPECT_GT(StandardPaper(4.0F).Columns, 2 * twelve.Columns);
    EXPECT_LT(StandardPaper(16.0F).Lines, twelve.Lines);
    Work = FreshWorkspace();
    Work.ReportFontSize = 9.0F;
    EXPECT_EQ(StandardPaper().Columns, StandardPaper(9.0F).Columns);
    EXPECT_NE(StandardPaper().Columns, twelve.Columns);
}

TEST(ReportPage, FaceIsTheFirstKnownOne) {
    EXPECT_EQ(ReportFace({"Arial", "Courier New", "Courier"}), "Courier");
    EXPECT_EQ(ReportFace({"Courier New", "COURIER NEW"}), "COURIER NEW");
    EXPECT_EQ(ReportFace({"Courier New", "COURIER (10 cpi)"}), "COURIER (10 cpi)");
    EXPECT_EQ(ReportFace({"Arial", "Courier New"}), "Courier New");
    EXPECT_EQ(ReportFace({"Arial", "Courier Prime"}), "");
}

// --- wrapping ------------------------------------------------------------------------------------------

using Pieces = std::vector<std::string>;

TEST(ReportPage, ShortLinesStayAsTheyAre) {
    EXPECT_EQ(WrapLine("", 20), Pieces{""});
    EXPECT_EQ(WrapLine("   a  b", 20), Pieces{"   a  b"});
    EXPECT_EQ(WrapLine("exactly twenty chars", 20), Pieces{"exactly twenty chars"});
    EXPECT_EQ(WrapLine("blanks behind       ", 13), Pieces{"blanks behind"});
}

TEST(ReportPage, LongLinesBreakAtBlanksAndAreIndented) {
    EXPECT_EQ(WrapLine("one two three four five six", 15),
              (Pieces{"one two three", "      four five", "      six"}));
    EXPECT_EQ(WrapLine("   Comment: ab cd ef", 20), Pieces{"   Comment: ab cd ef"});
    EXPECT_EQ(WrapLine("   Comment: ab cd efg", 20), (Pieces{"   Comment: ab cd", "         efg"}));
}

TEST(ReportPage, BreaksBehindCommasAndNotBesideEqualSigns) {
    EXPECT_EQ(WrapLine("radius to 6.5000cm, 3 data points", 25),
              (Pieces{"radius to 6.5000cm,", "      3 data points"}));
    EXPECT_EQ(WrapLine("a, radius of this set 3 data points", 28), // the comma is too far back
              (Pieces{"a, radius of this set 3 data", "      points"}));
    EXPECT_EQ(WrapLine("solvent density of it = 1.004", 23),
              (Pieces{"solvent density of", "      it = 1.004"}));
    EXPECT_EQ(WrapLine("solvent density of it = 1.004", 24),
              (Pieces{"solvent density of", "      it = 1.004"}));
    EXPECT_EQ(WrapLine("solventdensityof = 1.004", 20), (Pieces{"solventdensityof =", "      1.004"}));
}

TEST(ReportPage, AnIntervalStaysInOnePiece) {
    const std::string line = "Ln c, set 8   -12.2910  +/-  0.0120  [ -12.3185, -12.2732 ]";
    for (int columns = 50; columns < 59; ++columns) // the edge is within the brackets
        EXPECT_EQ(WrapLine(line, columns),
                  (Pieces{"Ln c, set 8   -12.2910  +/-  0.0120", "      [ -12.3185, -12.2732 ]"}))
            << columns;
    EXPECT_EQ(WrapLine("Delta G = -23.93 [-24.45, -23.59] kJ/mol", 30),
              (Pieces{"Delta G = -23.93", "      [-24.45, -23.59] kJ/mol"}));
    EXPECT_EQ(WrapLine(line, 60), Pieces{line});
    EXPECT_EQ(WrapLine("[ -12.3185, -12.2732 ]", 16), (Pieces{"[ -12.3185,", "      -12.2732 ]"}))
        << "at need";
}

TEST(ReportPage, BlanksAtABreakGoAndOthersStay) {
    EXPECT_EQ(WrapLine("aaa  bbb     ccc", 12), (Pieces{"aaa  bbb", "      ccc"}));
}

TEST(ReportPage, WordsLongerThanThePaperAreCutAtItsEdge) {
    EXPECT_EQ(WrapLine("abcdefghijklmnopqrstuvwxyz", 16), (Pieces{"abcdefghijklmnop", "      qrstuvwxyz"}));
    EXPECT_EQ(WrapLine("file abcdefghijklmnopqrstuvwxyz", 16),
              (Pieces{"file", "      abcdefghij", "      klmnopqrst", "      uvwxyz"}));
}

TEST(ReportPage, ControlCharactersBecomeBlanks) {
    EXPECT_EQ(WrapLine("a\tb\fc\nd\re\x7f", 20), Pieces{"a b c d e"});
    EXPECT_EQ(WrapLine("caf\xe9", 20), Pieces{"caf\xe9"});
}

TEST(ReportPage, WrappingLosesNothing) {
    std::mt19937 random(7);
    const auto withoutBlanks = [](const std::string& text) {
        std::string rest;
        std::copy_if(text.begin(), text.end(), std::back_inserter(rest), [](char c) { return c != ' '; });
        return rest;
    };
    for (int round = 0; round < 2000; ++round) {
        std::string line;
        const unsigned long length = random() % 90;
        for (unsigned long i = 0; i < length; ++i)
            line += random() % 5 == 0 ? ' ' : static_cast<char>('a' + random() % 26);
        const int columns = static_cast<int>(1 + random() % 40);
        std::string joined;
        for (const std::string& piece : WrapLine(line, columns)) {
            EXPECT_LE(piece.size(), static_cast<std::size_t>(columns));
            joined += piece;
        }
        EXPECT_EQ(withoutBlanks(joined), withoutBlanks(line));
    }
}

} // namespace
} // namespace Quillon
