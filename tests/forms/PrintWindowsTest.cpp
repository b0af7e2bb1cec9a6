// Printing as a user sees it: the preview of the report, the options of the graph, the window that cancels;
// and PDF files, read back.
#include "chart/CHART.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGrForm.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/targets/PaperNote.h"
#include "commands/export/ReportPreview.h"
#include "fit/GNLLSQ.h"
#include "forms/StartDesktop.h"
#include "forms/shell/DesktopPrinter.h"
#include "forms/shell/FormHost.h"
#include "forms/surfaces/PdfPicture.h"
#include "persistence/FitFile.h"
#include "platform/Narrow.h"
#include "platform/PaperPicture.h"
#include "platform/Platform.h"
#include "reporting/PaperReport.h"
#include "reporting/Report.h"
#include "reporting/Results.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "tests/forms/surfaces/PdfReader.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/ScriptedPrinter.h"
#include "workspace/records/Workspace.h"

#include <QAction>
#include <QApplication>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Quillon {
namespace {

enum class Way { Ok, Cancel, Esc, CloseButton };
constexpr Way AllWays[] = {Way::Ok, Way::Cancel, Way::Esc, Way::CloseButton};

struct PrintWindows : testing::Test {
    Player player;
    ScriptedPrinter printer;
    ChartStyle style = Chart.Style;
    std::function<void()> serve = Host.ServeEvents; // the desktop's own
    PrintWindows() {
        UseFinishedFit();
        Host.ServeEvents = [] {}; // a job is over before its window is met
    }
    ~PrintWindows() override {
        EjectPage = true;
        Chart.Style = style;     // no page of another test is cut in half,
        Chart.State.IniRead = 0; // and the next graph has its own settings' colours
    }

    // The results, with the preview that one of their buttons opens.
    void OpenPreview(const Control& button, std::function<void()> during) {
        player.Expect(ResultsName, [&] {
            player.Expect(ReportPreviewName, during);
            Player::Click(button);
            Player::Click(Results.OkButton);
        });
        player.ClickMenu("ReviewFit");
    }
    static void PrintFromGraphWindow() {
        for (QAction* action : Player::Window(ChartsName)->findChildren<QAction*>())
            if (action->text() == "&Print...") return action->trigger();
        ADD_FAILURE() << "the graph window has no item to print";
    }
};

std::string LinesOfPages(const std::vector<PageLines>& pages) {
    std::string text;
    for (const PageLines& page : pages)
        for (const std::string& line : page)
            if (!line.empty()) text += line + "\n";
    return text;
}

TEST_F(PrintWindows, ThePreviewShowsEveryPageAndPrintsThem) {
    OpenPreview(Results.Command2, [&] {
        const int last = PageCount(ReportPreview.Report);
        EXPECT_TRUE(ReportPreview.Report.WithGraph);
        EXPECT_EQ(QApplication::focusWidget(), Player::Widget(ReportPreview.PrintButton));
        const QScrollBar* bar =
            Player::Window(ReportPreviewName)->findChild<QScrollArea*>()->verticalScrollBar();
        Player::Press(Qt::Key_Down);
        EXPECT_GT(bar->value(), 0) << "the lower half of a sheet is seen without a mouse";
        Player::Press(Qt::Key_Up);
        EXPECT_EQ(bar->value(), 0);
        for (int page = 2; page <= last; ++page)
            Player::Press(Qt::Key_PageDown);
        EXPECT_EQ(ReportPreview.Page, last);
        EXPECT_FALSE(Player::Widget(ReportPreview.NextButton)->isEnabled());
        Player::Click(ReportPreview.PreviousButton);
        EXPECT_EQ(ReportPreview.Page, last - 1);
        Player::Click(ReportPreview.PrintButton);
    });
    EXPECT_EQ(printer.Done.front(), "choose");
    EXPECT_EQ(printer.Done.back(), "end");
    EXPECT_EQ(static_cast<int>(printer.Pages.size()), PageCount(ReportPreview.Report));
    EXPECT_EQ(printer.TextOfPage(1), LinesOfPages({ReportPreview.Report.Pages[0]}));
}

TEST_F(PrintWindows, ThePreviewIsLeftInEveryWayWithoutPrinting) {
    for (const Way way : {Way::Cancel, Way::Esc, Way::CloseButton})
        OpenPreview(Results.Command1, [&] {
            EXPECT_FALSE(ReportPreview.Report.WithGraph);
            Player::Click(ReportPreview.WithGraph);
            EXPECT_TRUE(ReportPreview.Report.WithGraph);
            if (way == Way::Cancel) return Player::Click(ReportPreview.CloseButton);
            if (way == Way::Esc) return Player::Press(Qt::Key_Escape);
            Player::Window(ReportPreviewName)->close();
            Player::Serve();
        });
    EXPECT_EQ(printer.Done.size(), 0U);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(PrintWindows, AFailingPrinterIsToldAndThePreviewStays) {
    const std::string before = FitFileBytes();
    printer.EndFails = "the printer does not answer";
    OpenPreview(Results.Command1, [&] {
        player.ExpectMessage("Error 'the printer does not answer' during printing--printer may be off line "
                             "or out of paper, or this may be due to low memory.  Aborting...");
        Player::Click(ReportPreview.PrintButton);
        EXPECT_TRUE(ReportPreview.State.Shown);
        Player::Click(ReportPreview.CloseButton);
    });
    EXPECT_EQ(FitFileBytes(), before);
}

TEST_F(PrintWindows, TheWindowOfTheJobCancelsIt) {
    Host.ServeEvents = [] { QTest::qWait(30); };
    OpenPreview(Results.Command1, [&] {
        player.Expect(PrintEscName, [] {
            EXPECT_EQ(PrintEsc.Message.Text, "Sending output to printer...");
            Player::Click(PrintEsc.CancelButton);
        });
        Player::Click(ReportPreview.PrintButton);
        EXPECT_EQ(printer.Done.back(), "abort");
        EXPECT_TRUE(ReportPreview.State.Shown);
        Player::Click(ReportPreview.CloseButton);
    });
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(PrintWindows, ACancelOfAShortJobWasNotHeardBetweenTwoServices) {
    player.ClickMenu("GraphOverlay");
    Host.ServeEvents = serve;
    Host.ServeEvents(); // just now: the engine's next question would wait for its turn
    player.Expect(PrintEscName, [] { Player::Click(PrintEsc.CancelButton); });
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
    EXPECT_EQ(printer.Done.back(), "abort");
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(PrintWindows, WhatPrintingShowsStoodAboveTheMainWindowWhichThenHadTheFocus) {
    player.ClickMenu("GraphOverlay");
    const QWidget* above = nullptr;
    const auto begin = Host.Printer.Begin;
    Host.Printer.Begin = [&](const std::string& title) {
        above = FrontWindow(); // the options have just been closed
        return begin(title);
    };
    player.Expect(PrintGrFormName, [] { Player::Click(PrintGrForm.PrintButton); });
    PrintFromGraphWindow();
    EXPECT_EQ(printer.Done.back(), "end");
    EXPECT_EQ(above, Player::Window(ChartsName));
}

TEST_F(PrintWindows, AHeldPageIsPrintedAtTheEndOfTheProgram) {
    player.ClickMenu("GraphOverlay");
    EjectPage = false;
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    EXPECT_EQ(printer.Done.back(), "begin Quillon graph");
    EndDesktop();
    EXPECT_EQ(printer.Done.back(), "end");
    EXPECT_EQ(printer.Pages.size(), 1U);
}

TEST_F(PrintWindows, TheOptionsOfTheGraphAreTakenByPrintAndOk) {
    player.ClickMenu("GraphOverlay");
    for (const Way way : AllWays) {
        Chart.Style.LeftMargin = 1.0F;
        printer.Done.clear();
        player.Expect(PrintGrFormName, [&] {
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(PrintGrForm.Length[LeftEdge]));
            Player::Type("1.5"); // in place of what is selected
            Player::Click(PrintGrForm.PageHalf);
            EXPECT_FALSE(Player::Widget(PrintGrForm.Length[GraphWidth])->isEnabled());
            if (way == Way::Ok) return Player::Click(PrintGrForm.PrintButton);
            if (way == Way::Cancel) return Player::Click(PrintGrForm.CancelButton);
            if (way == Way::Esc) return Player::Press(Qt::Key_Escape);
            Player::Window(PrintGrFormName)->close();
            Player::Serve();
        });
        PrintFromGraphWindow();
        EXPECT_EQ(Chart.Style.LeftMargin, way == Way::Ok ? 1.5F : 1.0F);
        EXPECT_EQ(printer.Done.empty(), way != Way::Ok);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
    }
}

TEST_F(PrintWindows, ARefusedMarginIsToldOnceAndCancelAsksNothing) {
    printer.Now.Page.Border = EvenEdges(0.5);
    player.ClickMenu("GraphOverlay");
    player.Expect(PrintGrFormName, [&] {
        Player::Type("0.1");
        player.ExpectMessage("You are trying to move the margin into a non-printable area on your printer.");
        Player::Click(PrintGrForm.PrintButton);
        EXPECT_TRUE(PrintGrForm.State.Shown);
        EXPECT_EQ(PrintGrForm.Length[LeftEdge].Text, "0.500");
        Player::Type("0.2");
        Player::Click(PrintGrForm.CancelButton);
        EXPECT_FALSE(PrintGrForm.State.Shown);
    });
    PrintFromGraphWindow();
    EXPECT_EQ(printer.Done.size(), 0U);
}

// --- files
// ---------------------------------------------------------------------------------------------------

struct Paper {
    const char* Name;
    double Width, Height; // points
};
constexpr Paper Papers[] = {{"a4", 595.0, 842.0},
                            {"letter", 612.0, 792.0},
                            {"a4-landscape", 842.0, 595.0},
                            {"letter-landscape", 792.0, 612.0}};

TEST_F(PrintWindows, ThePdfHasTheTextOfTheReportOnPagesOfThePaper) {
    for (const Paper& paper : Papers) {
        PrinterState file;
        file.Page = NamedPaper(paper.Name);
        const PrintedReport report = MakePrintedReport(file, false);
        const PdfDocument pdf = ReadPdf(ReportPdf(report));
        EXPECT_DOUBLE_EQ(pdf.PageWidth, paper.Width) << paper.Name;
        EXPECT_DOUBLE_EQ(pdf.PageHeight, paper.Height) << paper.Name;
        EXPECT_EQ(pdf.Pages, PageCount(report)) << paper.Name;
        EXPECT_EQ(TextOf(pdf), LinesOfPages(report.Pages)) << paper.Name;
    }
}

TEST_F(PrintWindows, AFitOfEighteenSetsFillsAsManyPagesInThePdf) {
    UseAllSets();
    Work.MonitorMode = 0;
    RunFit();
    Work.MonitorMode = 1;
    ASSERT_NE(Work.FitDone, FlagFalse);
    PrinterState file;
    const PrintedReport report = MakePrintedReport(file, true);
    EXPECT_GT(report.Pages.size(), 3U);
    const PdfDocument pdf = ReadPdf(ReportPdf(report));
    EXPECT_EQ(pdf.Pages, static_cast<int>(report.Pages.size()) + 1);
    EXPECT_TRUE(TextOf(pdf).starts_with(LinesOfPages(report.Pages))) << "and the graph behind it";
}

// A filled rectangle as it stands in a PDF of eight units to the point: its far edges are those of its last
// units.
std::string FilledBox(int left, int top, int right, int bottom) {
    const auto at = [](int x, int y, const char* step) {
        return std::to_string(x) + " " + std::to_string(y) + step;
    };
    return at(left, top, " m\n") + at(right + 1, top, " l\n") + at(right + 1, bottom + 1, " l\n");
}

// Prints to a PDF of the paper that is set.
struct PdfPrinter {
    std::string Bytes;
    explicit PdfPrinter(ScriptedPrinter& printer) {
        printer.Now.Name.clear();
        Host.Printer.Begin = [this, &printer](const std::string& title) -> std::optional<PrintJob> {
            return JobOfPicture(OpenPdf(PagePicture(printer.Now.Page, title)),
                                [this](const std::string& file) { Bytes = file; });
        };
    }
    // True when the page, so high in points, has that box filled.
    bool Holds(const std::string& box, int height) {
        EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
        const PdfDocument pdf = ReadPdf(Bytes);
        const std::string begin =
            "/GSa gs /CSp cs /CSp CS\n0.125000000 0 0 -0.125000000 0 " + std::to_string(height) + " cm";
        EXPECT_DOUBLE_EQ(pdf.PageHeight, height);
        return std::any_of(pdf.Streams.begin(), pdf.Streams.end(), [&](const auto& stream) {
            return stream.second.starts_with(begin) && stream.second.find(box) != std::string::npos;
        });
    }
};

// Margins of an inch and a custom size of 4 by 3 inches in that unit, the full page chosen.
void SetPage(ChartStyle& page, bool metric) {
    const float unit = metric ? 2.54F : 1.0F;
    page.MetricUnits = Flag(metric);
    page.LeftMargin = page.TopMargin = page.RightMargin = page.BottomMargin = unit;
    page.PageFull = -1.0F;
    page.PageHalf = 0.0F;
    page.PageCustom = page.AxisFrame = page.KeepAspect = 0;
    page.CustomWidth = 4.0F * unit;
    page.CustomHeight = 3.0F * unit;
}

TEST_F(PrintWindows, WhatIsPrintedToAPdfHasTheSizeThatWasSet) {
    player.ClickMenu("GraphOverlay");
    PdfPrinter pdf(printer);
    for (const Paper& paper : Papers) {
        printer.Now.Page = NamedPaper(paper.Name);
        const int width = static_cast<int>(paper.Width) * 8, height = static_cast<int>(paper.Height) * 8;
        const int points = height / 8; // an inch is 576 units
        const bool across = width > height;
        for (const bool metric : {false, true}) {
            ChartStyle& page = Chart.Style;
            SetPage(page, metric);
            EXPECT_TRUE(pdf.Holds(FilledBox(576, 576, width - 576, height - 576), points)) << paper.Name;
            page.PageFull = 0.0F;
            page.PageHalf = -1.0F;
            EXPECT_TRUE(pdf.Holds(
                FilledBox(576, 576, across ? width / 2 : width - 576, across ? height - 576 : height / 2),
                points))
                << paper.Name << ", the left half or the upper one";
            page.PageHalf = 0.0F;
            page.PageCustom = -1;
            EXPECT_TRUE(pdf.Holds(FilledBox(576, 576, 2880, 2304), points)) << paper.Name;
            page.AxisFrame = -1;
            page.LeftMargin = page.TopMargin = metric ? 5.08F : 2.0F;
            EXPECT_TRUE(pdf.Holds(FilledBox(1152, 1152, 3456, 2880), points)) << paper.Name;
        }
    }
}

TEST_F(PrintWindows, TheRatioOfTheWindowIsKeptInThePdf) {
    player.ClickMenu("GraphOverlay");
    PdfPrinter pdf(printer);
    printer.Now.Page = NamedPaper("letter"); // 4896 by 6336 units
    SetPage(Chart.Style, false);
    Chart.Style.KeepAspect = -1;
    const GraphState& window = Chart.State;
    const double aspect = window.ViewW / (window.ViewH * static_cast<double>(window.Aspect));
    const double wide = 4896.0 - 1152.0, high = 6336.0 - 1152.0;
    ASSERT_GT(aspect, wide / high) << "as wide as the space, and in its middle";
    const auto unit = [](double place) { return static_cast<int>(std::nearbyint(place)); };
    EXPECT_TRUE(pdf.Holds(
        FilledBox(576, unit(3168.0 - wide / aspect / 2.0), 4320, unit(3168.0 + wide / aspect / 2.0)), 792));
}

TEST_F(PrintWindows, APrinterSetToGrayMakesABlackPdf) {
    player.ClickMenu("GraphOverlay");
    PdfPrinter pdf(printer);
    const auto colored = [&](bool color) {
        Host.Printer.Begin = [&, color](const std::string& title) -> std::optional<PrintJob> {
            return JobOfPicture(InColor(OpenPdf(PagePicture(printer.Now.Page, title)), color),
                                [&](const std::string& file) { pdf.Bytes = file; });
        };
        EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
        static const QRegularExpression pen("([0-9.]+) ([0-9.]+) ([0-9.]+) SCN");
        for (const auto& [number, stream] : ReadPdf(pdf.Bytes).Streams) {
            QRegularExpressionMatchIterator pens = pen.globalMatch(QString::fromStdString(stream));
            while (pens.hasNext()) {
                const QRegularExpressionMatch match = pens.next();
                if (match.captured(1) != match.captured(2) || match.captured(2) != match.captured(3))
                    return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(colored(true));
    EXPECT_FALSE(colored(false));
}

TEST_F(PrintWindows, WithoutAPrinterAGraphBecomesAPdfOnA4) {
    Host.Printer = DesktopPrinter();
    // Printers of the machine that runs the test do not count.
    Host.Printer.Current = [desktop = Host.Printer.Current] {
        PrinterState state = desktop();
        if (!state.Name.empty()) state = PrinterState{};
        return state;
    };
    player.ClickMenu("GraphOverlay");
    const std::string path = player.Directory() + "/graph.pdf";
    player.GiveFile(path);
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    const PdfDocument pdf = ReadPdf(ReadWholeFile(path));
    EXPECT_EQ(pdf.Pages, 1);
    EXPECT_DOUBLE_EQ(pdf.PageWidth, 595.0);
    EXPECT_DOUBLE_EQ(pdf.PageHeight, 842.0);
    EXPECT_NE(TextOf(pdf).find("Absorbance\n"), std::string::npos) << TextOf(pdf);
    EXPECT_EQ(PaperNote(Host.Printer.Current(), InInches), "A PDF file, paper 8.27 x 11.69 inches");
    player.GiveFile(""); // no file is given: nothing is printed, and nothing is told
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
}

} // namespace
} // namespace Quillon
