// The report on paper and in files, and its preview as data.
#include "commands/export/PrintedReport.h"

#include "chart/CHART.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/files/Exchange.h"
#include "chart/files/GraphFile.h"
#include "commands/export/ReportPreview.h"
#include "persistence/FitFile.h"
#include "reporting/Report.h"
#include "tests/reporting/HandBuiltFit.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/ScriptedPrinter.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Quillon {
namespace {

const std::string Aborting = "' during printing--printer may be off line or out of paper, or this may be due "
                             "to low memory.  Aborting...";

class PrintedReportTest : public testing::Test {
protected:
    PrintedReportTest() {
        Chart = ChartModule{};
        Seams = ChartSeams{};
        Charts = ChartsForm{};
        SetScreenSurface(Screen.Surface());
        Seams.IsCancelled = [] { return Work.AbortFit != 0; };
        Seams.SetCancelled = HandOnCancel;
        Work = HandBuiltFit();
        Work.FitFile = "/fits/run7.quil";
        Work.ReportFontSize = 30.0F; // several pages of it
        OpenToolkitPicture = [this](const std::string& kind, const PictureRequest& request) {
            return Recorded(kind, request);
        };
    }
    ~PrintedReportTest() override {
        Chart = ChartModule{};
        Seams = ChartSeams{};
        Charts = ChartsForm{};
        OpenToolkitPicture = {};
        Work = FreshWorkspace();
    }

    // A "pdf" whose bytes are its texts, pages between "==".
    PictureFile Recorded(const std::string& kind, const PictureRequest& request) {
        EXPECT_EQ(kind, "pdf");
        Asked = request;
        Sheet.Width = request.Width;
        Sheet.Height = request.Height;
        Sheet.DotsPerInchX = Sheet.DotsPerInchY = request.DotsPerInchX;
        PictureFile file;
        file.Surface = Sheet.Surface();
        file.NewPage = [this] { Turn(); };
        file.Finish = [this] {
            Turn();
            return Bytes;
        };
        return file;
    }
    void Turn() {
        Last = Sheet.Items;
        for (const DrawnItem& item : Sheet.OfKind("text"))
            Bytes += item.Text + "\n";
        Bytes += "==\n";
        Sheet.Clear();
    }

    // A graph of the user's own in the chart window.
    static void PlotOwn() {
        GraphSpec spec;
        GraphInit(spec, GraphTypes::XYPlot, PlotStyles::Lines);
        Chart.GraphHeld = FlagTrue;
        SetTable x(2, 1), y(2, 1);
        x(1, 1) = y(1, 1) = 1.0F;
        x(2, 1) = y(2, 1) = 2.0F;
        spec.Title1.Text = "the user's own";
        PlotSets(spec, x, y, 2, 1, 1, {"a"}, {}, {});
    }

    // The page of the graph as the preview shows it.
    std::vector<DrawnItem> Previewed() {
        LoadReportPreview(true);
        ReportPreview.Page = PageCount(ReportPreview.Report);
        RecordingSurface sheet;
        const PrinterPage& page = Printer.Now.Page;
        sheet.Width = PageUnits(page.PrintableWidth());
        sheet.Height = PageUnits(page.PrintableHeight());
        sheet.DotsPerInchX = sheet.DotsPerInchY = PageDots;
        DrawPreviewPage(sheet.Surface());
        return sheet.Items;
    }

    // The texts of all pages, without empty lines.
    std::string Printed() const {
        std::string text;
        for (std::size_t page = 1; page <= Printer.Pages.size(); ++page)
            text += Printer.TextOfPage(page);
        return text;
    }
    static std::string TextReport(const PrinterPage& page) {
        std::string text;
        for (const PageLines& lines :
             PrintReport(MakePrintedReport({"", page, true, false, {}}, false).Paper))
            for (const std::string& line : lines)
                if (!line.empty()) text += line + "\n";
        return text;
    }

    Script Outside;
    ScriptedPrinter Printer;
    RecordingSurface Screen, Sheet;
    PictureRequest Asked;
    std::string Bytes;
    std::vector<DrawnItem> Last; // of the latest page of a PDF
};

bool Colored(const std::vector<DrawnItem>& items) {
    return std::any_of(items.begin(), items.end(), [](const DrawnItem& item) {
        return item.Kind != "text" && item.Pen.Visible && item.Pen.Color != 0 && item.Pen.Color != 0xFFFFFF;
    });
}

TEST_F(PrintedReportTest, EveryPageIsPrintedWithTheTextOfTheReport) {
    const PrintedReport report = MakePrintedReport(Printer.Now, false);
    EXPECT_GT(PageCount(report), 2);
    EXPECT_TRUE(PrintPages(report));
    EXPECT_EQ(static_cast<int>(Printer.Pages.size()), PageCount(report));
    EXPECT_EQ(Printed(), TextReport(Printer.Now.Page));
    EXPECT_EQ(Printer.Done.front(), "begin Quillon report");
    EXPECT_EQ(Printer.Done.back(), "end");
    EXPECT_EQ(Outside.Forms, (std::vector<std::string>{"show PrintEsc", "hide PrintEsc"}));
}

TEST_F(PrintedReportTest, PagesFollowThePaper) {
    for (const double width : {8.5, 11.0}) {
        Printer.Now.Page.Width = width;
        Printer.Now.Page.Height = 19.5 - width;
        const PrintedReport report = MakePrintedReport(Printer.Now, false);
        EXPECT_TRUE(PrintPages(report));
        EXPECT_EQ(Printed(), TextReport(Printer.Now.Page));
    }
}

TEST_F(PrintedReportTest, TheGraphStandsOnAPageBehindTheTextAndTheWindowKeepsItsOwn) {
    PlotOwn();
    Chart.Looks.Sets.assign(static_cast<std::size_t>(Chart.State.Nsets), {2, 1});
    Charts.StatusLine.Text = "read here";
    const std::string before = GraphFileBytes();
    const std::size_t drawn = Screen.Items.size();
    for (const std::int16_t overlay : {FlagFalse, FlagTrue}) {
        Work.OverlayPlot = overlay;
        const PrintedReport report = MakePrintedReport(Printer.Now, true);
        EXPECT_TRUE(PrintPages(report));
        ASSERT_EQ(static_cast<int>(Printer.Pages.size()), PageCount(report));
        EXPECT_GT(Printer.Pages.back().size(), 50U);
        const std::string texts = Printer.TextOfPage(Printer.Pages.size());
        EXPECT_EQ(texts.find("Y(exp) - Y(fit)") != std::string::npos, overlay == 0) << texts;
        EXPECT_EQ(texts.find("the user's own"), std::string::npos);
        EXPECT_EQ(GraphFileBytes(), before);
        EXPECT_EQ(Charts.StatusLine.Text, "read here");
        EXPECT_EQ(Screen.Items.size(), drawn) << "nothing was drawn on the window";
    }
}

TEST_F(PrintedReportTest, CancelAtAnyPageAbortsAndLeavesFitAndGraph) {
    PlotOwn();
    const std::string before = FitFileBytes(), graph = GraphFileBytes();
    const PrintedReport report = MakePrintedReport(Printer.Now, true);
    for (int at = 1; at <= PageCount(report); ++at) {
        int served = 0;
        Outside.DuringEvents = [&] {
            if (++served == at) PrintEscCancelButton();
        };
        EXPECT_FALSE(PrintPages(report));
        EXPECT_EQ(Printer.Done.back(), "abort") << at;
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        EXPECT_EQ(Outside.Forms.back(), "hide PrintEsc");
        EXPECT_EQ(GraphFileBytes(), graph) << at;
    }
    EXPECT_EQ(FitFileBytes(), before);
}

TEST_F(PrintedReportTest, ACancelWhileTheGraphIsDrawnAbortsTheJob) {
    PlotOwn();
    const std::string graph = GraphFileBytes();
    const auto begin = Host.Printer.Begin;
    Host.Printer.Begin = [&](const std::string& title) {
        std::optional<PrintJob> job = begin(title);
        job->Surface.Line = [](int, int, int, int) {
            if (Chart.Painting != 0) PrintEscCancelButton(); // as its window does
        };
        return job;
    };
    EXPECT_FALSE(PrintPages(MakePrintedReport(Printer.Now, true)));
    EXPECT_EQ(Printer.Done.back(), "abort");
    EXPECT_EQ(Work.AbortFit, FlagFalse);
    EXPECT_EQ(GraphFileBytes(), graph);
}

TEST_F(PrintedReportTest, APrinterThatFailsOrVanishesIsToldAndFitAndGraphAreAsBefore) {
    PlotOwn();
    const std::string before = FitFileBytes(), graph = GraphFileBytes();
    const PrintedReport report = MakePrintedReport(Printer.Now, true);
    Printer.BeginFails = "the printer could not be opened";
    Outside.ExpectMessage("Error 'the printer could not be opened" + Aborting);
    EXPECT_FALSE(PrintPages(report));
    Printer.BeginFails.clear();
    for (Printer.FailingPage = 2; Printer.FailingPage <= PageCount(report); ++Printer.FailingPage) {
        Printer.PageFails = "the printer takes no further page";
        Outside.ExpectMessage("Error 'the printer takes no further page" + Aborting);
        EXPECT_FALSE(PrintPages(report));
        EXPECT_EQ(Printer.Done.back(), "abort");
    }
    Printer.PageFails.clear();
    Printer.EndFails = "Disk full";
    Outside.ExpectMessage("Error 'Disk full" + Aborting);
    EXPECT_FALSE(PrintPages(report));
    EXPECT_EQ(Printer.Done.back(), "abort");
    EXPECT_EQ(FitFileBytes(), before);
    EXPECT_EQ(GraphFileBytes(), graph);
}

TEST_F(PrintedReportTest, AGraphWithoutRoomBetweenItsOwnMarginsTakesThoseOfThePrinter) {
    PlotOwn();
    const auto fits = [this] {
        const std::string graph = GraphFileBytes();
        EXPECT_TRUE(PrintPages(MakePrintedReport(Printer.Now, true)));
        const DeviceRect view = Printer.Pages.back().at(0).Rect; // its background is painted first
        const int margin = static_cast<int>(std::lround(15.0 / 25.4 * 576.0));
        EXPECT_NEAR(view.Left, margin, 1);
        EXPECT_NEAR(view.Top, margin, 1);
        EXPECT_NEAR(view.Right, 595 * 8 - margin, 1);
        EXPECT_NEAR(view.Bottom, 842 * 8 - margin, 1);
        EXPECT_EQ(GraphFileBytes(), graph) << "the settings of the window stay";
    };
    Chart.Style.LeftMargin = Chart.Style.RightMargin = 5.0F; // of a larger sheet
    fits();
    Chart.Style.LeftMargin = Chart.Style.RightMargin = 1.0F;
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageCustom = -1;
    Chart.Style.CustomWidth = Chart.Style.CustomHeight = 0.1F; // less than its texts take
    fits();
}

TEST_F(PrintedReportTest, AGraphWithoutAnyRoomIsToldAndThePreviewSaysSoOnItsSheet) {
    Printer.Now.Page.Width = Printer.Now.Page.Height = 4.0;
    Printer.Now.Page.Margin = EvenEdges(2.0); // they meet
    PlotOwn();
    Chart.Style.LeftMargin = 4.0F;
    const std::string graph = GraphFileBytes(), before = FitFileBytes();
    const std::string why = "the margins leave no room on the paper";
    std::string told;
    for (const DrawnItem& item : Previewed())
        told += item.Text + " ";
    std::erase(told, ' ');
    EXPECT_EQ(told, "Thispagecannotbedrawn:themarginsleavenoroomonthepaper");
    Outside.ExpectMessage("Error '" + why + Aborting);
    EXPECT_FALSE(PrintPages(MakePrintedReport(Printer.Now, true)));
    EXPECT_EQ(Printer.Done.back(), "abort");
    EXPECT_THROW(ReportPdf(MakePrintedReport(Printer.Now, true)), RuntimeError);
    EXPECT_EQ(GraphFileBytes(), graph);
    EXPECT_EQ(FitFileBytes(), before);
}

TEST_F(PrintedReportTest, AHeldPageIsPrintedBeforeTheReport) {
    PlotOwn();
    EjectPage = false;
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    EjectPage = true;
    EXPECT_TRUE(PrintPages(MakePrintedReport(Printer.Now, false)));
    ASSERT_GT(Printer.Done.size(), 3U);
    EXPECT_EQ(Printer.Done[0], "begin Quillon graph");
    EXPECT_EQ(Printer.Done[1], "end");
    EXPECT_EQ(Printer.Done[2], "begin Quillon report");
    EXPECT_EQ(Printer.Done.back(), "end");
}

TEST_F(PrintedReportTest, PagesOfAPrinterWithoutColorsAreBlackOnPaperInTheFileAndInThePreview) {
    for (const bool color : {true, false}) {
        Printer.Now.HasColor = color;
        const PrintedReport report = MakePrintedReport(Printer.Now, true);
        EXPECT_TRUE(PrintPages(report));
        EXPECT_EQ(Colored(Printer.Pages.back()), color);
        ReportPdf(report);
        EXPECT_EQ(Colored(Last), color);
        EXPECT_EQ(Colored(Previewed()), color);
    }
}

TEST_F(PrintedReportTest, ColorsAskedForAGraphAreNotThoseOfTheReport) {
    Chart.UseOnlyBW = FlagTrue;
    ReportPdf(MakePrintedReport(Printer.Now, true));
    EXPECT_TRUE(Colored(Last));
    EXPECT_EQ(Chart.UseOnlyBW, FlagTrue);
}

TEST_F(PrintedReportTest, ACancelFromBeforeLeavesFileAndPreviewWhole) {
    const PrintedReport report = MakePrintedReport(Printer.Now, true);
    ReportPdf(report);
    const std::size_t whole = Last.size(), shown = Previewed().size();
    Work.AbortFit = FlagTrue;
    ReportPdf(report);
    EXPECT_EQ(Last.size(), whole);
    EXPECT_EQ(Previewed().size(), shown);
    EXPECT_EQ(Work.AbortFit, FlagTrue) << "it is left to whom it was meant for";
}

TEST_F(PrintedReportTest, APdfHoldsTheSamePagesOnTheWholeSheet) {
    Printer.Now.Page.Border = EvenEdges(0.25); // of the printer; a file has none
    const PrintedReport report = MakePrintedReport(Printer.Now, false);
    EXPECT_EQ(ReportPdf(report), Bytes);
    EXPECT_EQ(Asked.Width, 595 * 8);
    EXPECT_EQ(Asked.Height, 842 * 8);
    std::string text = Bytes;
    for (std::size_t at = text.find("==\n"); at != std::string::npos; at = text.find("==\n"))
        text.erase(at, 3);
    EXPECT_EQ(text, TextReport(Printer.Now.Page));
    EXPECT_EQ(Printer.Done.size(), 0U);
}

// --- the preview
// ---------------------------------------------------------------------------------------------

TEST_F(PrintedReportTest, ThePreviewTurnsItsPages) {
    Outside.ExpectModal(ReportPreviewName, [] {
        const int last = PageCount(ReportPreview.Report);
        EXPECT_EQ(ReportPreview.PageLabel.Text, "Page 1 of " + std::to_string(last));
        EXPECT_FALSE(ReportPreview.PreviousButton.Enabled);
        ReportPreviewTurn(1);
        EXPECT_EQ(ReportPreview.Page, 2);
        EXPECT_TRUE(ReportPreview.PreviousButton.Enabled);
        ReportPreviewTurn(1000);
        EXPECT_EQ(ReportPreview.Page, last);
        EXPECT_FALSE(ReportPreview.NextButton.Enabled);
        ReportPreview.WithGraph.Value = 1;
        ReportPreviewGraphClick();
        EXPECT_EQ(ReportPreview.Page, last + 1) << "the graph is shown";
        ReportPreview.WithGraph.Value = 0;
        ReportPreviewGraphClick();
        EXPECT_EQ(ReportPreview.Page, last);
        ReportPreviewClose();
        EXPECT_FALSE(ReportPreview.State.Shown);
    });
    PreviewReport(false);
    EXPECT_EQ(Printer.Done.size(), 0U);
}

TEST_F(PrintedReportTest, PrintAsksForThePrinterAndTakesItsPaper) {
    LoadReportPreview(false);
    Printer.Confirms = false;
    ReportPreviewPrint();
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"choose"}));
    EXPECT_TRUE(ReportPreview.State.Shown);
    Printer.Confirms = true;
    Printer.DuringDialog = [&] { std::swap(Printer.Now.Page.Width, Printer.Now.Page.Height); };
    ReportPreviewPrint();
    EXPECT_EQ(Printed(), TextReport(Printer.Now.Page));
    EXPECT_FALSE(ReportPreview.State.Shown);
}

TEST_F(PrintedReportTest, TheDialogOfThePaperMakesThePagesAnew) {
    LoadReportPreview(false);
    const int edition = ReportPreview.Edition;
    Printer.DuringDialog = [&] { std::swap(Printer.Now.Page.Width, Printer.Now.Page.Height); };
    ReportPreviewPaperSetup();
    EXPECT_GT(ReportPreview.Edition, edition);
    EXPECT_EQ(ReportPreview.PrinterNote.Text, "Scripted, paper 297 x 210 mm");
    EXPECT_EQ(TextOfPages(ReportPreview.Report.Pages), ReportText(ReportPreview.Report.Paper));
}

TEST_F(PrintedReportTest, FilesAreNamedAfterTheFitAndAFailureIsTold) {
    LoadReportPreview(false);
    FileRequest asked;
    std::string path = Outside.Directory() + "/run7.txt";
    Host.AskFile = [&](const FileRequest& request) {
        asked = request;
        return FileAnswer{false, path, "run7.txt", {path}};
    };
    EXPECT_FALSE(ReportPreview.SavedNote.Visible);
    ReportPreviewSaveText();
    EXPECT_TRUE(ReportPreview.SavedNote.Visible);
    EXPECT_EQ(ReportPreview.SavedNote.Text, "Written to " + path);
    EXPECT_EQ(asked.Name, "run7.txt");
    EXPECT_EQ(asked.Directory, "/fits");
    EXPECT_EQ(ReadWholeFile(path), TextOfPages(ReportPreview.Report.Pages));
    path = Outside.Directory() + "/run7.pdf";
    ReportPreviewSavePdf();
    EXPECT_EQ(asked.Name, "run7.pdf");
    EXPECT_EQ(ReadWholeFile(path), Bytes);
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    Outside.ExpectMessage("Error 'Disk full' occurred while writing " + path);
    ReportPreviewSavePdf();
    EXPECT_FALSE(ReportPreview.SavedNote.Visible);
    EXPECT_TRUE(ReportPreview.State.Shown);
}

} // namespace
} // namespace Quillon
