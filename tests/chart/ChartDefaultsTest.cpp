// chart.ini: what is read from it, and what the command writes.
#include "ChartBench.h"
#include "input/IniFile.h"

#include <random>

namespace Quillon {
namespace {

class ChartDefaultsTest : public ChartBench {
protected:
    // Reads a chart.ini with these lines in the program's section.
    const ChartStyle& Read(const std::string& lines) {
        Outside.MakeFile("chart.ini", "[QUILLON]\n" + lines);
        ReadChartDefaults();
        return Chart.Style;
    }
    std::string Written(const std::string& key) const {
        return IniValue(ReadIniFile(ChartIniPath()), "QUILLON", key, "-");
    }
};

using List = std::vector<std::int16_t>;

TEST_F(ChartDefaultsTest, WithoutAFileTheDefaultsHold) {
    ReadChartDefaults();
    ChartStyle expected;
    for (const std::int16_t index : DefaultColorOrder) {
        expected.ScreenColors.push_back(BasicColor(index));
        expected.PrintColors.push_back(BasicColor(index));
    }
    EXPECT_TRUE(Chart.Style == expected);
    EXPECT_EQ(Chart.State.IniRead, 1);
    EXPECT_EQ(Chart.Style.TicSize, 0.007F);
    EXPECT_EQ(Chart.Style.SymbolWidth, 7.0F);
    EXPECT_EQ(Chart.Style.AsciiDelimiter, 1);
    EXPECT_EQ(Chart.Style.ScreenColors.size(), 14U);
}

TEST_F(ChartDefaultsTest, ItLiesInTheConfigurationFolderUnderTheProgramsName) {
    EXPECT_EQ(ChartIniPath(), Outside.Directory() + "/chart.ini");
    EXPECT_EQ(ChartIniSection(), "QUILLON");
    Seams.ProgramName = [] { return "Other"; };
    EXPECT_EQ(ChartIniSection(), "OTHER");
    Outside.MakeFile("chart.ini", "[quillon]\nTicSize=.01\n[other]\nTicSize=.02\n");
    ReadChartDefaults();
    EXPECT_EQ(Chart.Style.TicSize, 0.02F);
}

TEST_F(ChartDefaultsTest, Numbers) {
    const ChartStyle& s =
        Read("ticsize=-.01\nBARWIDTH=.5\nArrowAngle=45\nTitleFont=19\nAxisWidth=30\nTopMargin=0.5\n"
             "CustomWidth=7.25\nSymbolWidth=10\nScreenMinFont=8\nPrinterMaxFont=24\n");
    EXPECT_EQ(s.TicSize, -0.01F);
    EXPECT_EQ(s.BarWidth, 0.5F);
    EXPECT_EQ(s.ArrowAngle, 45.0F);
    EXPECT_EQ(s.TopMargin, 0.5F);
    EXPECT_EQ(s.CustomWidth, 7.25F);
    EXPECT_EQ(s.SymbolWidth, 10.0F);
    EXPECT_EQ(s.ScreenMinFont, 8);
    EXPECT_EQ(s.PrinterMaxFont, 24);
    EXPECT_EQ(DefaultTitle().Font, 19);
    EXPECT_EQ(DefaultAxis().AxisWidth, 30);
}

TEST_F(ChartDefaultsTest, WhatCannotBeReadGivesTheDefault) {
    const ChartStyle& s =
        Read("TicSize=long\nSymbolSize=\nBarWidth=7\nLineWidth=1e99999\nTitleFont=40000\nScreenMinFont=0\n"
             "AxisWidth=-3\nAsciiDelimiter=300\n");
    EXPECT_TRUE(s == [] {
        ChartStyle expected;
        expected.ScreenColors = expected.PrintColors = Chart.Style.ScreenColors;
        return expected;
    }());
}

TEST_F(ChartDefaultsTest, AFileThatCannotBeReadIsAsGoodAsNone) {
    Outside.MakeFile("chart.ini", "[QUILLON]\nTicSize=.01\n");
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileAccess); };
    ReadChartDefaults();
    EXPECT_EQ(Chart.Style.TicSize, 0.007F);
    EXPECT_EQ(Chart.State.IniRead, 1);
}

TEST_F(ChartDefaultsTest, Flags) {
    const ChartStyle& s = Read(
        "MetricUnits=TRUE\nLineWidthFixed=false\nLineWidthIncrease=true\nDashedLines=no\nAxisFrame=True\n"
        "UseRainbowColors=1\nUseGrids=0\n");
    EXPECT_EQ(s.MetricUnits, -1);
    EXPECT_EQ(s.LineWidthFixed, 0);
    EXPECT_EQ(s.LineWidthIncrease, -1);
    EXPECT_EQ(s.DashedLines, 0);
    EXPECT_EQ(s.AxisFrame, -1);
    EXPECT_EQ(s.UseRainbowColors, 0); // neither "TRUE" nor in other words
    EXPECT_EQ(DefaultAxis().Grid, 0);
    EXPECT_EQ(Read("UseGrids=2\n").UseGrids, 1);
    EXPECT_EQ(Read("UseGrids=0.5\n").UseGrids, 0);
}

TEST_F(ChartDefaultsTest, PageSizes) {
    const struct {
        const char* Text;
        float Full, Half;
        std::int16_t Custom;
    } cases[] = {{"FULL", -1, 0, 0}, {"half", 0, -1, 0}, {"Custom", 0, 0, -1}, {"A4", -1, 0, 0}};
    for (const auto& c : cases) {
        const ChartStyle& s = Read(std::string("PageSize=") + c.Text + "\n");
        EXPECT_EQ(s.PageFull, c.Full) << c.Text;
        EXPECT_EQ(s.PageHalf, c.Half) << c.Text;
        EXPECT_EQ(s.PageCustom, c.Custom) << c.Text;
    }
}

TEST_F(ChartDefaultsTest, Orders) {
    const ChartStyle& s = Read(
        "LineStyleOrder=4, 2 ,0\nSymbolOrder=5\nPatternStyleOrder=0,1,2,3,4,5,6,0,1\nBorderStyleOrder=x\n");
    EXPECT_EQ(s.LineStyleOrder, (List{4, 2, 0}));
    EXPECT_EQ(s.SymbolOrder, (List{5}));
    EXPECT_EQ(s.PatternStyleOrder, (List{0, 1, 2, 3, 4, 5, 6})); // no more than there were
    EXPECT_EQ(s.BorderStyleOrder, (List{0, 1, 2, 3, 4}));
    const ChartStyle& t =
        Read("LineStyleOrder=\nSymbolOrder=1,2,99\nPatternStyleOrder=1,-2\nBorderStyleOrder=1,2.5\n");
    EXPECT_EQ(t.LineStyleOrder, (List{0, 1, 2, 3, 4}));
    EXPECT_EQ(t.SymbolOrder.size(), 18U);
    EXPECT_EQ(t.PatternStyleOrder.size(), 7U);
    EXPECT_EQ(t.BorderStyleOrder.size(), 5U);
}

TEST_F(ChartDefaultsTest, Fonts) {
    const ChartStyle& s = Read("ScreenHFonts=2,2,2,2,2,2\nPrinterVFonts=5\nPlotterHFonts=9,9\n");
    EXPECT_EQ(s.ScreenHFonts, (std::array<std::int16_t, 6>{2, 2, 2, 2, 2, 2}));
    EXPECT_EQ(s.PrinterVFonts, (std::array<std::int16_t, 6>{5, 1, 2, 3, 4, 5}));
    EXPECT_EQ(s.PlotterHFonts, (std::array<std::int16_t, 6>{0, 1, 0, 1, 1, 5}));
}

TEST_F(ChartDefaultsTest, Colours) {
    const ChartStyle& s = Read("ScreenColor0=&HFF8000\nScreenColor13=&h00000F&\nScreenColor14=&"
                               "H1\nPrintColor2=red\nPrintColor3=&H1000000\n");
    ASSERT_EQ(s.ScreenColors.size(), 14U);
    EXPECT_EQ(s.ScreenColors[0], 0xFF8000);
    EXPECT_EQ(s.ScreenColors[13], 0x00000F);
    EXPECT_EQ(s.ScreenColors[1], BasicColor(9));
    EXPECT_EQ(s.PrintColors[2], BasicColor(10));
    EXPECT_EQ(s.PrintColors[3], BasicColor(11));
}

TEST_F(ChartDefaultsTest, ColourTexts) {
    for (const ChartColor color : {0, 1, 0xFF, 0xABCDEF, 0xFFFFFF}) {
        ChartColor back = -1;
        EXPECT_TRUE(ReadColorText(ColorText(color), back));
        EXPECT_EQ(back, color);
    }
    EXPECT_EQ(ColorText(0xABCDEF), "&HABCDEF");
    ChartColor kept = 7;
    for (const char* text : {"", "&H", "&H&", "&Hxyz", "&HFFG", "12", "&H 1", "&HFFFFFFFFF", "&H-1"})
        EXPECT_FALSE(ReadColorText(text, kept)) << text;
    EXPECT_EQ(kept, 7);
}

TEST_F(ChartDefaultsTest, ItIsReadOnce) {
    Begin();
    Outside.MakeFile("chart.ini", "[QUILLON]\nTicSize=.01\n");
    Begin();
    EXPECT_EQ(Chart.Style.TicSize, 0.007F);
    Chart.State.IniRead = 0; // as after a restored graph
    Begin();
    EXPECT_EQ(Chart.Style.TicSize, 0.01F);
}

TEST_F(ChartDefaultsTest, AnyFileIsHarmless) {
    std::mt19937 random(3);
    const std::string keys[] = {"TicSize",      "SymbolOrder", "ScreenColor3",  "PageSize",
                                "ScreenHFonts", "LineWidth",   "ScreenMaxFont", "UseGrids"};
    const std::string letters = "0123456789.,-+eE&HhTRUEtrue \t\"'=";
    std::string lines;
    Host.FileExists = [](const std::string&) { return true; };
    Host.ReadFile = [&](const std::string&) { return "[QUILLON]\n" + lines; };
    for (int round = 0; round < 3000; ++round) {
        lines.clear();
        for (const std::string& key : keys) {
            lines += key + "=";
            for (auto n = random() % 12; n > 0; --n)
                lines += letters[random() % letters.size()];
            lines += "\n";
        }
        ReadChartDefaults();
        const ChartStyle& s = Chart.Style;
        ASSERT_TRUE(std::isfinite(s.TicSize) && std::isfinite(s.LineWidth));
        ASSERT_FALSE(s.SymbolOrder.empty());
        for (const std::int16_t code : s.SymbolOrder)
            ASSERT_TRUE(code >= 0 && code <= 17);
        GraphSpec spec = Begin();
        ASSERT_GE(spec.LineWidth, 0);
    }
}

// --- saving --------------------------------------------------------------------------------------------

const char* const GridQuestion = "Do you want the default graph style to include grids across the graph body "
                                 "at the tic mark positions (Yes), or no "
                                 "grids (No), or to leave the default unchanged (Cancel)?";
const char* const RainbowQuestion = "Do you want the default to be to use 'rainbow' gradient colors (rather "
                                    "than a discrete set of 14 colors) to delimit "
                                    "different data sets on graphs (Yes), or to inhibit line dashing (No), "
                                    "or leave the default unchanged (Cancel)?";
const char* const DashQuestion = "Do you want the default to be to use dashed lines (4 styles + solid) to "
                                 "delimit different data sets on graphs (Yes), or to "
                                 "inhibit line dashing (No), or leave the default unchanged (Cancel)? (Note "
                                 "that this has no effect when in 'rainbow' mode.)";
const char* const PrintQuestion = "Do you want to save printing option defaults?";
const char* const UnitQuestion = "Do you want the default to be to specify page layout in inches (Yes) or "
                                 "centimeters (No), or to leave the default "
                                 "unchanged (Cancel)?";
const char* const PageQuestion = "Do you want to save the present printing size and margins and page size "
                                 "(set on the Printing Options form) as the default "
                                 "values?";
const char* const FrameQuestion = "Do you want the default to be that when a 'Custom' sized graph is "
                                  "printed, the size specified is that of the whole graph "
                                  "(with titles, axis labels, etc.) (Yes) or that the size is that of the "
                                  "axis frame (the data area of the graph) (No), or to "
                                  "leave the default unchanged (Cancel)?";
const char* const VaryQuestion =
    "Do you want the default to be to vary line widths after each 5 sets to help distinguish different data "
    "sets for black & white "
    "printing (Yes) or to keep line widths fixed (No), or to leave the default unchanged (Cancel)?";
const char* const StartQuestion = "Do you want the default to be that when line widths are varied the first "
                                  "5 sets have the minimum width and then increase up "
                                  "to the normal setting (this prints faster) (Yes) or to start at the "
                                  "normal width and decrease (No), or to leave the default "
                                  "unchanged (Cancel)?";
const char* const DelimiterQuestion =
    "When copying graph data to disk, do you want the delimiter between data columns to be a tab (Yes), a "
    "comma (No), or a "
    "space (Cancel)? The default setting is a Tab character; any change will come into effect immediately.";

TEST_F(ChartDefaultsTest, SavingAsksInOrderAndWritesTheAnswers) {
    Chart.Style.LeftMargin = 1.5F;
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageCustom = -1;
    Chart.Style.CustomHeight = 4.25F;
    Outside.ExpectMessage({GridQuestion, "Quillon", BoxIcon::Question, BoxButtons::YesNoCancel,
                           BoxAnswer::Cancel, "No &more questions"},
                          BoxAnswer::No);
    Outside.ExpectMessage(RainbowQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(DashQuestion, BoxAnswer::No);
    Outside.ExpectMessage(
        {PrintQuestion, "Quillon", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::No, "No &more questions"},
        BoxAnswer::Yes);
    Outside.ExpectMessage(UnitQuestion, BoxAnswer::No);
    Outside.ExpectMessage(PageQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(FrameQuestion, BoxAnswer::No);
    Outside.ExpectMessage(VaryQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(StartQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(DelimiterQuestion, BoxAnswer::No);
    SaveChartDefaults();
    EXPECT_EQ(Written("UseGrids"), "0");
    EXPECT_EQ(Written("UseRainbowColors"), "True");
    EXPECT_EQ(Written("DashedLines"), "False");
    EXPECT_EQ(Written("MetricUnits"), "True");
    EXPECT_EQ(Written("LeftMargin"), "3.810"); // 1.5 inches, in the unit that is now the default
    EXPECT_EQ(Written("BottomMargin"), "2.540");
    EXPECT_EQ(Written("PageSize"), "Custom");
    EXPECT_EQ(Written("CustomHeight"), "10.795");
    EXPECT_EQ(Written("CustomWidth"), "7.620");
    EXPECT_EQ(Written("AxisFrame"), "True");
    EXPECT_EQ(Written("LineWidthFixed"), "False"); // varied
    EXPECT_EQ(Written("LineWidthIncrease"), "True");
    EXPECT_EQ(Written("AsciiDelimiter"), "44");
    EXPECT_EQ(Chart.Style.AsciiDelimiter, 44); // at once
    ReadChartDefaults();
    EXPECT_EQ(Chart.Style.PageCustom, -1);
    EXPECT_EQ(Chart.Style.CustomHeight, 10.795F);
    EXPECT_EQ(Chart.Style.UseRainbowColors, -1);
}

TEST_F(ChartDefaultsTest, SavedMarginsKeepTheirLengthWhenTheUnitOfTheFileChanges) {
    Outside.MakeFile("chart.ini", "[QUILLON]\nMetricUnits=True\nLeftMargin=2.540\n");
    for (const char* question : {GridQuestion, RainbowQuestion, DashQuestion})
        Outside.ExpectMessage(question, BoxAnswer::Cancel);
    Outside.ExpectMessage(PrintQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(UnitQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(PageQuestion, BoxAnswer::No);
    Outside.ExpectMessage(FrameQuestion, BoxAnswer::WayOut);
    SaveChartDefaults();
    EXPECT_EQ(Written("MetricUnits"), "False");
    EXPECT_EQ(Written("LeftMargin"), "1.000");
    EXPECT_EQ(Written("TopMargin"), "-"); // no such key
}

TEST_F(ChartDefaultsTest, CancelLeavesAKeyAsItIs) {
    Outside.MakeFile("chart.ini", "[QUILLON]\nUseGrids=1\n");
    Outside.ExpectMessage(GridQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(RainbowQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(DashQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(PrintQuestion, BoxAnswer::No);
    Outside.ExpectMessage(DelimiterQuestion, BoxAnswer::Cancel);
    SaveChartDefaults();
    EXPECT_EQ(ReadIniFile(ChartIniPath()), "[QUILLON]\nUseGrids=1\nAsciiDelimiter=32\n");
}

// Esc made a blank of the delimiter, at once and for good.
TEST_F(ChartDefaultsTest, EscAtAQuestionLeavesItAndThoseBehindItUnchanged) {
    Outside.MakeFile("chart.ini", "[QUILLON]\nUseGrids=1\nAsciiDelimiter=9\n");
    Chart.Style.AsciiDelimiter = 9;
    const BoxRequest last{DelimiterQuestion,       "Quillon",      BoxIcon::Question,
                          BoxButtons::YesNoCancel, BoxAnswer::Yes, "No &more questions"};
    Outside.ExpectMessage(GridQuestion, BoxAnswer::No);
    Outside.ExpectMessage(RainbowQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(DashQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(PrintQuestion, BoxAnswer::No);
    Outside.ExpectMessage(last, BoxAnswer::WayOut);
    SaveChartDefaults();
    Outside.ExpectMessage(GridQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(RainbowQuestion, BoxAnswer::WayOut); // none follows
    SaveChartDefaults();
    EXPECT_EQ(ReadIniFile(ChartIniPath()), "[QUILLON]\nUseGrids=1\nAsciiDelimiter=9\n");
    EXPECT_EQ(Chart.Style.AsciiDelimiter, 9);
    Outside.ExpectMessage(GridQuestion, BoxAnswer::Cancel); // and the next time they are asked again
    Outside.ExpectMessage(RainbowQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(DashQuestion, BoxAnswer::Cancel);
    Outside.ExpectMessage(PrintQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage(UnitQuestion, BoxAnswer::WayOut);
    SaveChartDefaults();
}

TEST_F(ChartDefaultsTest, TheGradientSavedAsDefaultShowsOnTheNextGraph) {
    Begin();
    for (const char* question : {GridQuestion, RainbowQuestion, DashQuestion})
        Outside.ExpectMessage(question, question == RainbowQuestion ? BoxAnswer::Yes : BoxAnswer::Cancel);
    Outside.ExpectMessage(PrintQuestion, BoxAnswer::No);
    Outside.ExpectMessage(DelimiterQuestion, BoxAnswer::Yes);
    SaveChartDefaults();
    Begin();
    EXPECT_EQ(Chart.Style.UseRainbowColors, -1);
    Chart.Style.UseRainbowColors = 0; // a graph that has none
    Begin();
    EXPECT_EQ(Chart.Style.UseRainbowColors, -1);
}

TEST_F(ChartDefaultsTest, AFailureIsToldOnce) {
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    Outside.ExpectMessage(GridQuestion, BoxAnswer::Yes);
    Outside.ExpectMessage("Error occurred while writing defaults to " + ChartIniPath() + "\n\nDisk full");
    SaveChartDefaults();
}

} // namespace
} // namespace Quillon
