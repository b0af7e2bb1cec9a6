// Main titles: placement, shrinking, headlines from comments.
#include "chart/draw/Titles.h"
#include "ChartBench.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/RaisedText.h"

namespace Quillon {
namespace {

class TitlesTest : public ChartBench {
protected:
    void PlotWith(const std::string& first, const std::string& second) {
        Spec = Begin();
        Spec.Title1.Text = first;
        Spec.Title2.Text = second;
        PlotIt();
    }
    void PlotIt() { Plot(Spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {2, 3}})); }
    int Baseline(const std::string& text) const { return Screen.FindText(text)->Points[0].Y; }
    GraphSpec Spec;
};

TEST_F(TitlesTest, SixPlaces) {
    for (std::int16_t justify = 0; justify <= 5; ++justify) {
        Spec = Begin();
        Spec.Title1.Text = "title";
        Spec.Title1.Justify = justify;
        Screen.Clear();
        PlotIt();
        const GraphBox& f = Chart.Spec.Frame;
        const int width = 50; // five letters, half of 20 each
        const int left = justify < 3 ? f.X1 : 0;
        const int right = justify < 3 ? f.X2 : 799;
        const int expected[] = {left, (left + right - width) / 2, right - width};
        EXPECT_EQ(Screen.FindText("title")->Points[0].X, expected[justify % 3]) << justify;
    }
}

// Centred on a frame that stands at the left, a title would be cut at the edge of the view.
TEST_F(TitlesTest, TitlesStayInTheViewWhereTheyHaveRoomThere) {
    Screen.Width = 200;
    Screen.Height = 500;
    for (std::int16_t justify = 0; justify <= 5; ++justify) {
        Spec = Begin();
        Spec.Title1.Text = "a title that is longer than the frame can be";
        Spec.AxisX1.Title.Text = "A title that is longer than the frame can be";
        Spec.Title1.Justify = Spec.AxisX1.Title.Justify = justify;
        Spec.AxisY1.LabelSize = 0.06F;
        Spec.AxisY1.Title.Text = "y";
        Screen.Clear();
        PlotIt();
        ASSERT_EQ(Chart.GraphStatus, 0);
        // At the least size, 8 units high, a letter is 4 units wide.
        ASSERT_LT(Chart.Spec.Frame.X2 - Chart.Spec.Frame.X1, 44 * 4);
        for (const char* text : {"a title that is longer than the frame can be",
                                 "A title that is longer than the frame can be"}) {
            const DeviceRect at = TextBounds(*Screen.FindText(text));
            EXPECT_GE(at.Left, 0) << justify;
            EXPECT_LE(at.Right, 199) << justify;
        }
    }
    Spec.Title1.Text = "much longer than a view can be that has a width of two hundred units";
    PlotIt();
    EXPECT_EQ(TextBounds(*Screen.FindText(Spec.Title1.Text)).Left, 0); // its beginning can be read
}

TEST_F(TitlesTest, AxisTitlesAlongTheSidesStayInTheView) {
    Screen.Width = 500;
    Screen.Height = 200;
    for (std::int16_t justify = 0; justify <= 5; ++justify) {
        Spec = Begin();
        Spec.Title1.Text = "title";
        Spec.Title2.Text = "another";
        Spec.AxisY1.Title.Text = "a title that is longer than the frame is";
        Spec.AxisY2.Title.Text = "A title that is longer than the frame is";
        Spec.AxisX1.Title.Text = "x";
        Spec.Title1.Size = Spec.Title2.Size = Spec.AxisX1.LabelSize = 0.06F;
        Spec.AxisY1.Title.Justify = Spec.AxisY2.Title.Justify = justify;
        Screen.Clear();
        PlotIt();
        ASSERT_LT(Chart.Spec.Frame.Y2 - Chart.Spec.Frame.Y1, 40 * 4);
        for (const char* text :
             {"a title that is longer than the frame is", "A title that is longer than the frame is"}) {
            const DeviceRect at = TextBounds(*Screen.FindText(text));
            EXPECT_GE(at.Top, 0) << justify;
            EXPECT_LE(at.Bottom, 199) << justify;
        }
    }
}

TEST_F(TitlesTest, Baselines) {
    PlotWith("first", "second");
    // Lines of 20 with 4 below the baseline and gaps of 4, at the top of the view.
    EXPECT_EQ(Baseline("first"), 4 + 16);
    EXPECT_EQ(Baseline("second"), 4 + 20 + 4 + 16);
    Spec.AxisX2.TicMode = TicModes::MarksAndLabels; // with labels above, the titles stand above these
    Screen.Clear();
    PlotIt();
    EXPECT_EQ(Baseline("first"), 4 + 16);
    EXPECT_EQ(Chart.Spec.Frame.Y1, 4 + 20 + 4 + 20 + 4 + (4 + 20 + 4) + 4);
}

TEST_F(TitlesTest, ColourAndFont) {
    Spec = Begin();
    Spec.Title1.Text = "title";
    Spec.Title1.Color = 4;
    Spec.Title1.Font = 19;
    PlotIt();
    EXPECT_EQ(Screen.FindText("title")->TextColor, ToRgb(BasicColor(12)));
    EXPECT_TRUE(Screen.FindText("title")->Font.Bold);
}

TEST_F(TitlesTest, ALongTitleShrinksUntilItFits) {
    const std::string text(75, 'x');
    PlotWith(text, "");
    const int width = Chart.Spec.Frame.X2 - Chart.Spec.Frame.X1;
    const DrawnItem* title = Screen.FindText(text);
    ASSERT_NE(title, nullptr);
    // 75 letters of half the height: 20 does not fit in 0.95 of the width, 18 = 0.9 * 20 does.
    EXPECT_GT(75 * 10, 0.95 * width);
    EXPECT_LE(75 * 9, 0.95 * width);
    EXPECT_EQ(title->Font.Height, 18);
    EXPECT_EQ(Chart.Spec.Title1.Size, 0.02F);
}

TEST_F(TitlesTest, EightyLettersInANarrowWindowStopAtTheLeastFont) {
    Screen.Width = 200;
    Screen.Height = 400;
    const std::string text(80, 'x');
    PlotWith(text, "");
    ASSERT_NE(Screen.FindText(text), nullptr);
    EXPECT_EQ(Screen.FindText(text)->Font.Height, 8); // 6 points
    EXPECT_EQ(Chart.GraphStatus, 0);
}

TEST_F(TitlesTest, ATitleAsLongAsTheFieldKeepsItsEightyLetters) {
    PlotWith(std::string(100, 'y'), "");
    EXPECT_NE(Screen.FindText(std::string(80, 'y')), nullptr);
}

TEST_F(TitlesTest, ACommentIsSplitAtTheBackslash) {
    PlotWith("first", "second");
    Screen.Clear();
    SetGraphComment("left part\\right part\\rest");
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "left part");
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "right part\\rest");
    for (const GraphTitle* title : {&Chart.Spec.Title1, &Chart.Spec.Title2}) {
        EXPECT_EQ(title->Color, 7);
        EXPECT_EQ(title->Justify, 1);
        EXPECT_EQ(title->Font, 19);
        EXPECT_EQ(title->Size, 0.02F);
    }
    EXPECT_NE(Screen.FindText("left part"), nullptr);
    EXPECT_EQ(Screen.FindText("left part")->TextColor, ToRgb(BasicColor(1)));
}

TEST_F(TitlesTest, ACommentOfTheSameRoomIsPaintedOverTheFormerOneAlone) {
    PlotWith("first", "second");
    Screen.Clear();
    SetGraphComment("one\\two");
    EXPECT_TRUE(Screen.OfKind("polyline").empty()); // the data stay as they are
    ASSERT_FALSE(Screen.Items.empty());
    const DrawnItem wiped = Screen.Items[0];
    EXPECT_EQ(wiped.Kind, "rectangle");
    EXPECT_LT(wiped.Rect.Bottom, Chart.Spec.Frame.Y1);
    EXPECT_TRUE(Within(TextBounds(*Screen.FindText("one")), wiped.Rect));
    EXPECT_TRUE(Within(TextBounds(*Screen.FindText("two")), wiped.Rect));
    EXPECT_EQ(Screen.Items.back().Kind, "refresh");
}

TEST_F(TitlesTest, ACommentThatNeedsRoomLaysTheGraphOut) {
    PlotWith("", "");
    const int before = Chart.Spec.Frame.Y1;
    Screen.Clear();
    SetGraphComment("headline");
    EXPECT_FALSE(Screen.OfKind("polyline").empty());
    EXPECT_GT(Chart.Spec.Frame.Y1, before);
    EXPECT_NE(Screen.FindText("headline"), nullptr);
}

TEST_F(TitlesTest, ACommentWithoutBackslashKeepsTheSecondLinesRoom) {
    PlotWith("first", "second");
    const GraphBox frame = Chart.Spec.Frame;
    SetGraphComment("headline");
    EXPECT_EQ(Chart.Spec.Title2.Text.Str(), "\t");
    EXPECT_TRUE(Chart.Spec.Frame == frame);
    Screen.Clear();
    Replot();
    ShowGraph();
    EXPECT_TRUE(Chart.Spec.Frame == frame);
    EXPECT_EQ(Screen.FindText("\t"), nullptr);
    SetGraphComment("");
    EXPECT_TRUE(Chart.Spec.Title1.Text.Empty());
    EXPECT_TRUE(Chart.Spec.Title2.Text.Empty());
    SetGraphComment("alone");
    EXPECT_TRUE(Chart.Spec.Title2.Text.Empty()); // there was none
}

TEST_F(TitlesTest, ABackslashAtTheVeryEndGivesAnEmptySecondTitle) {
    PlotWith("first", "second");
    SetGraphComment("headline\\");
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "headline");
    EXPECT_TRUE(Chart.Spec.Title2.Text.Empty());
}

TEST_F(TitlesTest, ALongCommentIsFittedAndTheNextShortOneIsLargeAgain) {
    PlotWith("first", "second");
    SetGraphComment(std::string(79, 'w') + "\\x");
    EXPECT_LT(Chart.Layout.Sizes.Title1, 0.02F);
    Screen.Clear();
    SetGraphComment("short\\x");
    EXPECT_EQ(Screen.FindText("short")->Font.Height, 20);
}

TEST_F(TitlesTest, ACommentWithoutAGraphIsJustKept) {
    SetGraphComment("a\\b");
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "a");
    EXPECT_TRUE(Screen.Items.empty());
}

using Pieces = std::vector<TextPiece>;

TEST(RaisedText, ACaretRaisesTheWholeNumberBehindIt) {
    EXPECT_EQ(PiecesOf("10^-5 M", true), (Pieces{{"10"}, {"-5", true}, {" M"}}));
    EXPECT_EQ(PiecesOf("x^40", true), (Pieces{{"x"}, {"40", true}}));
    EXPECT_EQ(PiecesOf("^0a^6", true), (Pieces{{"0", true}, {"a"}, {"6", true}}));
    EXPECT_EQ(PiecesOf("cm^2", false), (Pieces{{"cm"}, {"2", true}}));
    EXPECT_EQ(PiecesOf("cm^2 s^-1", true), (Pieces{{"cm"}, {"2", true}, {" s"}, {"-1", true}}));
    for (const char* plain : {"a^", "a^b", "a^-", "a^-b", "a^^", "-5", ""})
        EXPECT_EQ(PiecesOf(plain, false), plain[0] == '\0' ? Pieces{} : Pieces{{plain}}) << plain;
}

TEST(RaisedText, ExponentsThatEveryFontOfLatin1HasAreItsLetters) {
    EXPECT_EQ(PiecesOf("r^2/2 (cm^2) x^1 y^3", true), (Pieces{{"r\xB2/2 (cm\xB2) x\xB9 y\xB3"}}));
}

// In a font 20 high a letter is 10 wide; its exponents are 13 high and 6 above its baseline, to the left of
// it where the text runs upward.
TEST_F(TitlesTest, ExponentsStandSmallerAndAboveTheLine) {
    Spec = Begin();
    Spec.Title1.Text = "10^-5 M";
    Spec.AxisY1.Title.Text = "s^-1";
    PlotIt();
    const DrawnItem* ten = Screen.FindText("10");
    const DrawnItem* power = Screen.FindText("-5");
    const DrawnItem* unit = Screen.FindText(" M");
    ASSERT_TRUE(ten != nullptr && power != nullptr && unit != nullptr);
    const int height = ten->Font.Height;
    EXPECT_EQ(power->Font.Height, std::lround(0.65 * height));
    EXPECT_EQ(ten->Points[0].Y - power->Points[0].Y, std::lround(0.26 * height));
    EXPECT_EQ(power->Points[0].X, ten->Points[0].X + TextBounds(*ten).Right - TextBounds(*ten).Left + 1);
    EXPECT_EQ(unit->Points[0].Y, ten->Points[0].Y);
    EXPECT_EQ(unit->Font.Height, height);
    EXPECT_TRUE(Within(TextBounds(*power), {0, TextBounds(*ten).Top, 799, TextBounds(*ten).Bottom}));
    const DrawnItem* s = Screen.FindText("s");
    const DrawnItem* inverse = Screen.FindText("-1");
    ASSERT_TRUE(s != nullptr && inverse != nullptr);
    EXPECT_EQ(s->Points[0].X - inverse->Points[0].X, std::lround(0.26 * s->Font.Height));
    EXPECT_LT(inverse->Points[0].Y, s->Points[0].Y);
    const int whole = TextBounds(*ten).Right - TextBounds(*ten).Left + TextBounds(*power).Right -
                      TextBounds(*power).Left + TextBounds(*unit).Right - TextBounds(*unit).Left + 3;
    SelectFont(Spec.Title1.Font, Chart.Layout.Sizes.Title1, 0);
    EXPECT_EQ(TextWidth("10^-5 M"), whole);
}

// In the Symbol family the code of the caret is another sign.
TEST_F(TitlesTest, TextsOfTheSymbolFamilyAreDrawnAsTheyStand) {
    Spec = Begin();
    Spec.Title1.Text = "a^-5";
    Spec.Title1.Font = SymbolFamily;
    PlotIt();
    EXPECT_NE(Screen.FindText("a^-5"), nullptr);
}

TEST_F(TitlesTest, DeletingTheTitles) {
    PlotWith("first", "second");
    const int before = Chart.Spec.Frame.Y1;
    ChartMenuStatus(Charts);
    EXPECT_TRUE(Charts.DeleteTitles.Enabled);
    Screen.Clear();
    DeleteTitles();
    EXPECT_FALSE(Charts.DeleteTitles.Enabled);
    EXPECT_LT(Chart.Spec.Frame.Y1, before);
    EXPECT_EQ(Screen.FindText("first"), nullptr);
    EXPECT_FALSE(Screen.OfKind("polyline").empty());
}

} // namespace
} // namespace Quillon
