// The place of a graph on paper, against closed forms: Letter and A4, upright and across, inches and
// centimetres, every size.
#include "chart/targets/PageGeometry.h"

#include "tests/support/RecordingSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Quillon {
namespace {

constexpr double Border = 0.25; // inches, on all four sides

struct Sheet {
    double Width, Height; // inches
};
constexpr Sheet Sheets[] = {
    {8.5, 11.0}, {11.0, 8.5}, {210.0 / 25.4, 297.0 / 25.4}, {297.0 / 25.4, 210.0 / 25.4}};

PrinterPage PageOf(const Sheet& sheet, double border = Border) {
    PrinterPage page;
    page.Width = sheet.Width;
    page.Height = sheet.Height;
    page.Border = EvenEdges(border);
    return page;
}

// Margins of 1, 0.75, 0.5 and 1.25 inches in the unit of the style.
ChartStyle StyleIn(bool metric) {
    const float unit = metric ? 2.54F : 1.0F;
    ChartStyle style;
    style.MetricUnits = metric ? -1 : 0;
    style.LeftMargin = 1.0F * unit;
    style.TopMargin = 0.75F * unit;
    style.RightMargin = 0.5F * unit;
    style.BottomMargin = 1.25F * unit;
    style.CustomWidth = 4.0F * unit;
    style.CustomHeight = 3.0F * unit;
    return style;
}

// Places in inches, whatever the unit.
PagePlace Inches(const ChartStyle& style, const PrinterPage& page, double aspect = 0.0) {
    const double unit = style.MetricUnits != 0 ? 2.54 : 1.0;
    const PagePlace place = PlaceOnPage(style, page, aspect);
    return {place.Left / unit, place.Top / unit, place.Right / unit, place.Bottom / unit};
}

void ExpectPlace(const PagePlace& place, double left, double top, double right, double bottom) {
    constexpr double Single = 1e-6; // margins are singles
    EXPECT_NEAR(place.Left, left, Single);
    EXPECT_NEAR(place.Top, top, Single);
    EXPECT_NEAR(place.Right, right, Single);
    EXPECT_NEAR(place.Bottom, bottom, Single);
}

TEST(PageGeometry, FullPageIsWhatTheMarginsLeave) {
    for (const Sheet& sheet : Sheets)
        for (const bool metric : {false, true})
            ExpectPlace(Inches(StyleIn(metric), PageOf(sheet)), 0.75, 0.5, sheet.Width - 0.75,
                        sheet.Height - 1.5);
}

TEST(PageGeometry, HalfPageIsTheUpperHalfOfATallSheetAndTheLeftOneOfAWideSheet) {
    for (const Sheet& sheet : Sheets)
        for (const bool metric : {false, true}) {
            ChartStyle style = StyleIn(metric);
            style.PageFull = 0.0F;
            style.PageHalf = -1.0F;
            const bool tall = sheet.Height > sheet.Width;
            ExpectPlace(Inches(style, PageOf(sheet)), 0.75, 0.5,
                        tall ? sheet.Width - 0.75 : sheet.Width / 2.0 - 0.25,
                        tall ? sheet.Height / 2.0 - 0.25 : sheet.Height - 1.5);
        }
}

TEST(PageGeometry, ACustomSizeBeginsAtTheMarginsAndEndsWithThePage) {
    for (const Sheet& sheet : Sheets)
        for (const bool metric : {false, true}) {
            ChartStyle style = StyleIn(metric);
            style.PageFull = 0.0F;
            style.PageCustom = -1;
            ExpectPlace(Inches(style, PageOf(sheet)), 0.75, 0.5, 4.75, 3.5);
            style.CustomWidth = style.CustomHeight = 100.0F;
            ExpectPlace(Inches(style, PageOf(sheet)), 0.75, 0.5, sheet.Width - 0.5, sheet.Height - 0.5);
        }
}

TEST(PageGeometry, AMarginBelowTheBorderIsTheBorder) {
    ChartStyle style = StyleIn(false);
    style.LeftMargin = style.TopMargin = style.RightMargin = style.BottomMargin = 0.1F;
    ExpectPlace(Inches(style, PageOf(Sheets[0])), 0.0, 0.0, 8.0, 10.5);
}

TEST(PageGeometry, BordersThatDifferShiftNothingOnThePaper) {
    PrinterPage page = PageOf(Sheets[0]);
    page.Border = {0.1, 0.2, 0.3, 0.5};
    const PagePlace place = Inches(StyleIn(false), page);
    EXPECT_NEAR(place.Left + 0.1, 1.0, 1e-6); // from the edge of the paper
    EXPECT_NEAR(place.Top + 0.2, 0.75, 1e-6);
    EXPECT_NEAR(place.Right + 0.1, 8.5 - 0.5, 1e-6);
    EXPECT_NEAR(place.Bottom + 0.2, 11.0 - 1.25, 1e-6);
}

TEST(PageGeometry, TheRatioOfTheWindowIsKeptInTheMiddleOfTheSpace) {
    for (const Sheet& sheet : Sheets)
        for (const double aspect : {0.5, 0.75, 1.0, 1.6, 3.0}) {
            ChartStyle style = StyleIn(false);
            const PagePlace space = Inches(style, PageOf(sheet));
            style.KeepAspect = -1;
            const PagePlace place = Inches(style, PageOf(sheet), aspect);
            const double width = place.Right - place.Left, height = place.Bottom - place.Top;
            EXPECT_NEAR(width / height, aspect, 1e-9);
            EXPECT_NEAR(place.Left + place.Right, space.Left + space.Right, 1e-9);
            EXPECT_NEAR(place.Top + place.Bottom, space.Top + space.Bottom, 1e-9);
            const double wide = width / (space.Right - space.Left),
                         high = height / (space.Bottom - space.Top);
            EXPECT_NEAR(std::max(wide, high), 1.0, 1e-9) << "as large as it fits";
        }
}

TEST(PageGeometry, MarginsThatMeetLeaveNoRoom) {
    ChartStyle style = StyleIn(false);
    style.LeftMargin = style.RightMargin = 4.5F;
    style.KeepAspect = -1;
    EXPECT_FALSE(PlaceOnPage(style, PageOf(Sheets[0]), 1.0).HasRoom());
}

TEST(PageGeometry, DeviceUnitsAreThoseOfThePrinter) {
    RecordingSurface paper;
    paper.Width = 2400;
    paper.Height = 6300;
    paper.DotsPerInchX = 300.0;
    paper.DotsPerInchY = 600.0;
    const GraphBox inches = BoxOnDevice({0.5, 1.0, 4.0, 3.0}, StyleIn(false), paper.Surface());
    EXPECT_EQ(inches, (GraphBox{150, 600, 1200, 1800, 15, {}}));
    const GraphBox centimetres = BoxOnDevice({1.27, 2.54, 100.0, 7.62}, StyleIn(true), paper.Surface());
    EXPECT_EQ(centimetres, (GraphBox{150, 600, 2399, 1800, 15, {}})) << "the last unit of the page";
}

// --- a size that is that of the frame
// ------------------------------------------------------------------------

struct Framed {
    ChartModule Window;
    RecordingSurface Paper;
    GraphBox Frame{1000, 1000, 1400, 1300, 15, {}}; // diagonal 500: a twentieth is 25
    Framed() {
        Paper.Width = Paper.Height = 3000;
        Window.Spec.AxisX1.Show = Window.Spec.AxisY1.Show = 1;
        Window.Spec.AxisX1.TicMode = Window.Spec.AxisY1.TicMode = TicModes::MarksAndLabels;
        Window.Spec.AxisX2.Show = Window.Spec.AxisY2.Show = 1;
        Window.Spec.AxisX2.TicMode = Window.Spec.AxisY2.TicMode = TicModes::MarksOnly;
        Window.State.Diagonal = 1000;
    }
    void Expect(int left, int top, int right, int bottom) {
        const GraphBox view = ViewAroundFrame(Frame, Window, Paper.Surface());
        EXPECT_EQ(Frame.X1 - view.X1, left);
        EXPECT_EQ(Frame.Y1 - view.Y1, top);
        EXPECT_EQ(view.X2 - Frame.X2, right);
        EXPECT_EQ(view.Y2 - Frame.Y2, bottom);
    }
};

TEST(PageGeometry, TheViewIsWiderThanTheFrameByWhatStandsThere) {
    Framed f;
    f.Expect(50, 0, 25, 50); // gap and labels to the left and below
    f.Window.Spec.Title1.Text = "one";
    f.Expect(50, 25, 25, 50);
    f.Window.Spec.Title2.Text = "two";
    f.Expect(50, 50, 25, 50);
    f.Window.Spec.AxisY1.Title.Text = "left";
    f.Expect(75, 50, 25, 50);
    f.Window.Spec.AxisY2.Title.Text = "right"; // it belongs to its own side
    f.Expect(75, 50, 50, 50);
    f.Window.Spec.AxisY2.TicMode = TicModes::MarksAndLabels;
    f.Expect(75, 50, 75, 50);
    f.Window.Spec.AxisX1.Title.Text = "bottom";
    f.Expect(75, 50, 75, 75);
}

TEST(PageGeometry, TheLegendHasItsPartOfTheWindow) {
    Framed f;
    f.Window.State.MultiSet = 1;
    f.Window.Spec.Legend.Show = 1;
    f.Window.Spec.Legend.Where = LegendPlaces::Below;
    f.Window.Layout.Legend.Height = 101; // of a diagonal of 1000
    f.Window.Layout.Legend.Width = 301;
    f.Expect(50, 0, 25, 113); // 50 + 12.5 + 50.5
    f.Window.Spec.Legend.Where = LegendPlaces::Right;
    f.Expect(50, 0, 188, 50); // 25 + 12.5 + 150.5
}

TEST(PageGeometry, TheViewStaysOnThePage) {
    Framed f;
    f.Frame = {10, 10, 2990, 2990, 15, {}};
    f.Window.Spec.Title1.Text = "one";
    const GraphBox view = ViewAroundFrame(f.Frame, f.Window, f.Paper.Surface());
    EXPECT_EQ(view.X1, 0);
    EXPECT_EQ(view.Y1, 0);
    EXPECT_EQ(view.X2, 2999);
    EXPECT_EQ(view.Y2, 2999);
}

TEST(PageGeometry, AFrameLargerThanThePageLeavesRoomForWhatStandsBesideIt) {
    Framed f;
    f.Window.Spec.Title1.Text = "one";
    const GraphBox place{300, 400, 2999, 2999, 15, {}}; // as it is clamped to the page
    f.Frame = FrameOnPage(place, f.Window, f.Paper.Surface());
    EXPECT_EQ(f.Frame.X1, 300);
    EXPECT_EQ(f.Frame.Y1, 400);
    const double d = std::hypot(2699.0, 2599.0);
    EXPECT_NEAR(f.Frame.X2, 2999 - 0.05 * d, 1.0);
    EXPECT_NEAR(f.Frame.Y2, 2999 - 0.1 * d, 1.0);
    const double shorter = std::hypot(f.Frame.X2 - 300.0, f.Frame.Y2 - 400.0);
    const GraphBox view = ViewAroundFrame(f.Frame, f.Window, f.Paper.Surface());
    EXPECT_NEAR(view.X2, f.Frame.X2 + 0.05 * shorter, 1.0) << "nothing is cut off";
    EXPECT_NEAR(view.Y2, f.Frame.Y2 + 0.1 * shorter, 1.0);
    const GraphBox within{300, 400, 2998, 2998, 15, {}};
    EXPECT_EQ(FrameOnPage(within, f.Window, f.Paper.Surface()), within) << "a size that fits is kept";
}

TEST(PageGeometry, TheWholeSheetHasTheMarginsOfThePrinter) {
    PrinterPage page = PageOf(Sheets[0]);
    page.Margin = {0.5, 0.75, 1.0, 1.25};
    for (const bool metric : {false, true}) {
        ChartStyle style = StyleIn(metric);
        style.PageFull = 0.0F;
        style.PageHalf = -1.0F;
        style.PageCustom = -1;
        UseWholeSheet(style, page);
        ExpectPlace(Inches(style, page), 0.25, 0.5, 8.5 - 1.0 - 0.25, 11.0 - 1.25 - 0.25);
    }
}

} // namespace
} // namespace Quillon
