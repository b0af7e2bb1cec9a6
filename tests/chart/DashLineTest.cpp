// Dash patterns: lengths of pieces and gaps, and that a pattern runs on.
#include "chart/pens/DashLine.h"
#include "chart/pens/Pens.h"

#include "ChartBench.h"

namespace Quillon {
namespace {

class DashLineTest : public ChartBench {
protected:
    DashLineTest() { SelectTarget(Begin()); }
    // The pieces along a line to the right, as "start-end".
    std::string Pieces(std::int16_t style, int length) {
        Screen.Clear();
        BeginDash(style);
        DashLine(0, 7, length, 7);
        return Drawn();
    }
    std::string Drawn() const {
        std::string text;
        for (const DrawnItem& item : Screen.Items)
            text += std::to_string(item.Points[0].X) + "-" + std::to_string(item.Points[1].X) + " ";
        return text;
    }
};

TEST_F(DashLineTest, PatternsGrowWithTheFinenessOfADisplay) {
    Screen.DotsPerInchX = Screen.DotsPerInchY = 192;
    SelectTarget(Begin());
    EXPECT_EQ(Pieces(1, 100), "0-30 40-70 80-100 ");
    EXPECT_EQ(Pieces(3, 80), "0-26 32-40 46-72 78-80 ");
    Screen.DotsPerInchX = Screen.DotsPerInchY = 120; // no display of twice the resolution
    SelectTarget(Begin());
    EXPECT_EQ(Pieces(1, 50), "0-15 20-35 40-50 ");
    Screen.DotsPerInchX = Screen.DotsPerInchY = 72;
    SelectTarget(Begin());
    EXPECT_EQ(Pieces(1, 50), "0-15 20-35 40-50 ");
}

TEST_F(DashLineTest, OnPaperPatternsAreAsLongToTheEye) {
    RecordingSurface paper;
    paper.DotsPerInchX = paper.DotsPerInchY = 600;
    SetPrinterSurface(paper.Surface());
    GraphSpec spec = Begin();
    spec.Device = "1";
    SelectTarget(spec);
    BeginDash(2);
    DashLine(0, 7, 60, 7); // 600 dots per inch: 6.25 to a unit of a display
    ASSERT_EQ(paper.Items.size(), 2U);
    EXPECT_EQ(paper.Items[0].Points[1].X, 25);
    EXPECT_EQ(paper.Items[1].Points[0].X, 44); // 43.75
}

TEST_F(DashLineTest, PensOfGridsAndSymbolsGrowWithTheFinenessOfADisplay) {
    EXPECT_EQ(PenWidth(7), 1);
    Screen.DotsPerInchX = Screen.DotsPerInchY = 192;
    SelectTarget(Begin());
    EXPECT_EQ(PenWidth(7), 2); // symbols
    EXPECT_EQ(PenWidth(10), 2);
    EXPECT_EQ(PenWidth(30), 4);
}

TEST_F(DashLineTest, ThePatterns) {
    EXPECT_EQ(Pieces(0, 50), "0-50 ");
    EXPECT_EQ(Pieces(1, 50), "0-15 20-35 40-50 ");
    EXPECT_EQ(Pieces(2, 20), "0-4 7-11 14-18 ");
    EXPECT_EQ(Pieces(3, 50), "0-13 16-20 23-36 39-43 46-50 ");
    EXPECT_EQ(Pieces(4, 60), "0-13 16-20 23-27 30-43 46-50 53-57 ");
}

TEST_F(DashLineTest, ThePatternRunsOnAlongAPolyline) {
    for (std::int16_t style = 1; style <= 4; ++style) {
        // However a line is cut, the same places are on.
        for (const int part : {1, 3, 7, 13, 100}) {
            Screen.Clear();
            BeginDash(style);
            for (int x = 0; x < 300; x += part)
                DashLine(x, 7, std::min(x + part, 300), 7);
            std::vector<bool> cut(301, false);
            for (const DrawnItem& item : Screen.Items)
                for (int x = item.Points[0].X; x < item.Points[1].X; ++x)
                    cut[static_cast<std::size_t>(x)] = true;
            Screen.Clear();
            BeginDash(style);
            DashLine(0, 7, 300, 7);
            std::vector<bool> whole(301, false);
            for (const DrawnItem& item : Screen.Items)
                for (int x = item.Points[0].X; x < item.Points[1].X; ++x)
                    whole[static_cast<std::size_t>(x)] = true;
            EXPECT_EQ(cut, whole) << style << ", " << part;
        }
    }
}

TEST_F(DashLineTest, ANewPenBeginsAnew) {
    BeginDash(1);
    DashLine(0, 7, 17, 7);
    Screen.Clear();
    DashLine(17, 7, 40, 7); // the gap goes on to 20
    EXPECT_EQ(Drawn(), "20-35 ");
    Screen.Clear();
    BeginDash(1);
    DashLine(17, 7, 40, 7);
    EXPECT_EQ(Drawn(), "17-32 37-40 ");
}

TEST_F(DashLineTest, LengthCountsAlongTheLine) {
    BeginDash(1);
    Screen.Clear();
    DashLine(0, 0, 12, 16); // 20 long: 15 on, 5 off
    ASSERT_EQ(Screen.Items.size(), 1U);
    EXPECT_EQ(ItemText(Screen.Items[0]), "line 0,0 9,12");
    Screen.Clear();
    DashLine(12, 16, 12, 10); // upward, and on again
    ASSERT_EQ(Screen.Items.size(), 1U);
    EXPECT_EQ(ItemText(Screen.Items[0]), "line 12,16 12,10");
}

TEST_F(DashLineTest, ALineWithoutLengthTakesNothing) {
    BeginDash(1);
    Screen.Clear();
    DashLine(5, 5, 5, 5);
    EXPECT_TRUE(Screen.Items.empty());
    DashLine(5, 5, 25, 5);
    EXPECT_EQ(Drawn(), "5-20 ");
}

TEST_F(DashLineTest, ASolidPolylineIsOneStroke) {
    Screen.Clear();
    BeginDash(0);
    DashPolyline({{0, 0}, {5, 5}, {9, 2}});
    EXPECT_EQ(Screen.Lines(), (std::vector<std::string>{"polyline 0,0 5,5 9,2"}));
    Screen.Clear();
    DashPolyline({{3, 3}});
    EXPECT_TRUE(Screen.Items.empty());
    BeginDash(2);
    DashPolyline({{3, 3}, {3, 3}}); // a line on one place
    EXPECT_EQ(Screen.Lines(), (std::vector<std::string>{"polyline 3,3 3,3"}));
}

TEST_F(DashLineTest, TheOutlineOfARectangleGoesAllRound) {
    Screen.Clear();
    BeginDash(0);
    DashRectangle({1, 2, 9, 6});
    EXPECT_EQ(Screen.Lines(),
              (std::vector<std::string>{"line 1,2 9,2", "line 9,2 9,6", "line 9,6 1,6", "line 1,6 1,2"}));
}

} // namespace
} // namespace Quillon
