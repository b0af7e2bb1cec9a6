// The report on sheets: how much a sheet takes, and where its lines stand.
#include "reporting/PaperReport.h"

#include "HandBuiltFit.h"
#include "reporting/Report.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

PrinterPage Across(PrinterPage page) {
    std::swap(page.Width, page.Height);
    return page;
}

// 15 mm are 42.52 points; a character is 0.6 of the size wide, a line 1.2 of it high.
TEST(PaperReport, ASheetTakesWhatFitsBetweenItsMargins) {
    const PrinterPage a4 = NamedPaper("a4"), letter = NamedPaper("Letter");
    EXPECT_EQ(PaperOf(a4, 12.0F).Columns, 70); // 509.96 / 7.2
    EXPECT_EQ(PaperOf(a4, 12.0F).Lines, 52);   // 756.96 / 14.4
    EXPECT_EQ(PaperOf(letter, 12.0F).Columns, 73);
    EXPECT_EQ(PaperOf(letter, 12.0F).Lines, 49);
    EXPECT_EQ(PaperOf(Across(a4), 12.0F).Columns, 105);
    EXPECT_EQ(PaperOf(Across(a4), 12.0F).Lines, 35);
    EXPECT_EQ(PaperOf(NamedPaper("letter-landscape"), 12.0F).Columns, 98);
    EXPECT_EQ(PaperOf(NamedPaper("LETTER-LANDSCAPE"), 12.0F).Lines, 36);
    EXPECT_EQ(PaperOf(a4, 10.0F).Columns, 84);
    PrinterPage wide = a4;
    wide.Margin = EvenEdges(1.0);
    EXPECT_EQ(PaperOf(wide, 12.0F).Columns, 62); // 451 / 7.2
}

TEST(PaperReport, PaperThatHasNoNameIsRefused) {
    for (const char* name : {"", "a5", "landscape", "a4 landscape"}) {
        try {
            NamedPaper(name);
            FAIL() << name;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Text, std::string("the paper is a4, letter, a4-landscape or letter-landscape, "
                                              "not '") +
                                      name + "'");
        }
    }
}

TEST(PaperReport, MarginsThatMeetStillGiveAPageThatEnds) {
    PrinterPage page;
    page.Margin = EvenEdges(6.0);
    EXPECT_GE(PaperOf(page, 12.0F).Lines, 1);
}

// A page of the report on a recorded sheet; characters there are half as wide as they are high.
std::vector<DrawnItem> Drawn(RecordingSurface& sheet, const PrinterState& printer, const PageLines& lines) {
    DrawReportPage(sheet.Surface(), printer, PaperOf(printer.Page), lines);
    return sheet.OfKind("text");
}

RecordingSurface SheetOf(const PrinterPage& page) {
    RecordingSurface sheet;
    sheet.Width = PageUnits(page.PrintableWidth());
    sheet.Height = PageUnits(page.PrintableHeight());
    sheet.DotsPerInchX = sheet.DotsPerInchY = PageDots;
    return sheet;
}

TEST(PaperReport, LinesStandBetweenTheMarginsOneBelowTheOther) {
    Script script;
    Work = HandBuiltFit();
    PrinterState printer;
    printer.Page.Border = {0.1, 0.2, 0.1, 0.2};
    for (const PageLines& page : PrintReport(PaperOf(printer.Page))) {
        RecordingSurface sheet = SheetOf(printer.Page);
        const std::vector<DrawnItem> texts = Drawn(sheet, printer, page);
        std::size_t next = 0;
        for (std::size_t line = 0; line < page.size(); ++line) {
            if (page[line].empty()) continue;
            ASSERT_LT(next, texts.size());
            const DrawnItem& text = texts[next++];
            EXPECT_EQ(text.Text, page[line]);
            // From the edges of the paper: the margin, and 14.4 points for each line.
            EXPECT_NEAR(text.Points[0].X / PageDots + 0.1, 15.0 / 25.4, 1.0 / PageDots);
            const double first = texts[0].Points[0].Y;
            EXPECT_NEAR(text.Points[0].Y - first, static_cast<double>(line) * 14.4 * 8.0, 1.0);
            const DeviceRect place = TextBounds(text);
            EXPECT_GE(place.Top / PageDots + 0.2, 15.0 / 25.4 - 1.0 / PageDots);
            EXPECT_LE(place.Right / PageDots + 0.1, 210.0 / 25.4 - 15.0 / 25.4 + 0.01);
            EXPECT_LE(place.Bottom / PageDots + 0.2, 297.0 / 25.4 - 15.0 / 25.4 + 0.01);
        }
        EXPECT_EQ(next, texts.size());
    }
}

TEST(PaperReport, VerySmallSheetsLoseNoLine) {
    Script script;
    Work = HandBuiltFit();
    PrinterState printer;
    for (const double inches : {1.5, 2.0, 3.0}) { // the smallest body and its foot are higher than that
        printer.Page.Width = 6.0;
        printer.Page.Height = inches;
        const std::vector<PageLines> pages = PrintReport(PaperOf(printer.Page));
        for (const PageLines& page : pages) {
            RecordingSurface sheet = SheetOf(printer.Page);
            for (const DrawnItem& text : Drawn(sheet, printer, page)) {
                EXPECT_GE(TextBounds(text).Top / PageDots, 15.0 / 25.4 - 1.0 / PageDots) << inches;
                EXPECT_LE(TextBounds(text).Bottom / PageDots, inches - 15.0 / 25.4 + 0.01) << inches;
            }
        }
    }
}

TEST(PaperReport, MarginsThatMeetCountAsTheBorderOfThePrinter) {
    Script script;
    Work = HandBuiltFit();
    PrinterState printer;
    printer.Page.Border = EvenEdges(0.25);
    printer.Page.Margin = EvenEdges(6.0);
    const PageLines page = PrintReport(PaperOf(printer.Page)).front();
    RecordingSurface sheet = SheetOf(printer.Page);
    const DeviceRect whole{0, 0, sheet.Width, sheet.Height};
    for (const DrawnItem& text : Drawn(sheet, printer, page)) {
        const DeviceRect place = TextBounds(text);
        EXPECT_TRUE(place.Left >= 0 && place.Top >= 0 && place.Right <= whole.Right &&
                    place.Bottom <= whole.Bottom)
            << text.Text;
    }
}

// A line without its blanks: where it is broken and how it is indented does not matter.
std::string Squeezed(std::string text) {
    std::erase(text, ' ');
    return text;
}

TEST(PaperReport, ErrorsAndLimitsAreWrappedWholeOnNarrowPaper) {
    Script script;
    Work = HandBuiltFit();
    Work.LimitsDone = FlagTrue;
    Work.ParmLimits[0].Recreate(3, -0.5F);
    Work.ParmLimits[1].Recreate(3, 0.25F);
    std::vector<std::string> whole;
    const PageLines wide = PrintReport({200, 0}).front();
    for (const std::string& line : wide)
        if (line.find("+/-") != std::string::npos) {
            EXPECT_NE(line.find("[ "), std::string::npos) << line;
            EXPECT_TRUE(line.ends_with(" ]")) << line;
            whole.push_back(Squeezed(line));
        }
    EXPECT_EQ(whole.size(), 4U);
    for (const char* name : {"a4", "letter", "a4-landscape", "letter-landscape"})
        for (const float size : {20.0F, 30.0F}) {
            const int columns = PaperOf(NamedPaper(name), size).Columns;
            std::string all;
            const PageLines narrow = PrintReport({columns, 0}).front();
            for (const std::string& line : narrow) {
                EXPECT_LE(static_cast<int>(line.size()), columns);
                all += Squeezed(line);
            }
            for (const std::string& line : whole)
                EXPECT_NE(all.find(line), std::string::npos) << name << " " << line;
        }
}

TEST(PaperReport, TheFaceIsOneOfThePrintersOrWhatStandsForCourierNew) {
    Script script;
    Work = HandBuiltFit();
    PrinterState printer;
    RecordingSurface sheet = SheetOf(printer.Page);
    EXPECT_EQ(Drawn(sheet, printer, {"a"}).back().Font.Face, "Courier New");
    printer.FixedFonts = {"Terminal", "Courier", "Courier New"};
    EXPECT_EQ(Drawn(sheet, printer, {"a"}).back().Font.Face, "Courier");
}

TEST(PaperReport, AFaceOfWideLettersIsMadeSmaller) {
    Script script;
    Work = HandBuiltFit();
    PrinterState printer;
    RecordingSurface sheet = SheetOf(printer.Page);
    DrawingSurface wide = sheet.Surface();
    wide.Measure = [&, usual = wide.Measure](const std::string& text) {
        TextSize size = usual(text);
        size.Width *= 2;
        return size;
    };
    const ReportPaper paper = PaperOf(printer.Page);
    const std::string line(static_cast<std::size_t>(paper.Columns), 'x');
    DrawReportPage(wide, printer, paper, {line});
    const DrawnItem text = sheet.OfKind("text").back();
    const double room = (595.0 - 2 * 72.0 * 15.0 / 25.4) * 8.0;
    EXPECT_LE(wide.Measure(line).Width, room + 1.0);
    EXPECT_GE(wide.Measure(line).Width, room * 0.98) << "no smaller than needed";
    EXPECT_EQ(text.Text, line);
}

TEST(PaperReport, PagesByPaper) {
    Script script;
    Work = HandBuiltFit();
    Work.ReportFontSize = 30.0F; // a short report on few lines
    for (const char* name : {"a4", "letter", "a4-landscape", "letter-landscape"}) {
        const ReportPaper paper = PaperOf(NamedPaper(name));
        const std::vector<PageLines> pages = PrintReport(paper);
        EXPECT_GT(pages.size(), 1U) << name;
        for (const PageLines& page : pages)
            EXPECT_EQ(page.size(), static_cast<std::size_t>(paper.Lines)) << name;
    }
    PrinterPage low = NamedPaper("a4"); // as wide, but half as high
    const std::size_t before = PrintReport(PaperOf(low)).size();
    low.Height /= 2.0;
    EXPECT_GT(PrintReport(PaperOf(low)).size(), 2 * before - 1) << "head, foot and margins on each";
}

} // namespace
} // namespace Quillon
