// The figure for publication: where its parts stand, how large letters and lines are, and that nothing of the
// graph at hand is touched.
#include "graphs/Figure.h"
#include "graphs/FigureForm.h"
#include "graphs/FigureScales.h"

#include "GraphBench.h"
#include "chart/pens/BaseFonts.h"
#include "chart/records/Kept.h"
#include "chart/records/SetLooks.h"
#include "graphs/kinds/FitGraphs.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace Quillon {
namespace {

FigureTexts SomeTexts() {
    FigureTexts texts;
    texts.Line = 2.8;
    texts.Gap = 0.6;
    texts.Left = 8.0;
    texts.LeftMost = 12.0;
    texts.Right = 2.0;
    texts.Below = 5.0;
    texts.Lowest = 8.5;
    return texts;
}

TEST(FigurePlan, FramesShareTheirSidesAndAreSevenToThree) {
    const FigurePlan plan = PlanFigure({85.0, 0.0, false, 0}, 1, SomeTexts());
    ASSERT_EQ(plan.Cells.size(), 1U);
    const FigureRect& upper = plan.Cells[0].Upper.Frame;
    const FigureRect& lower = plan.Cells[0].Lower.Frame;
    EXPECT_DOUBLE_EQ(upper.Left, 1.0 + 12.0); // the edge of the page, and the texts
    EXPECT_DOUBLE_EQ(upper.Right, 85.0 - 1.0 - 2.0);
    EXPECT_EQ(lower.Left, upper.Left);
    EXPECT_EQ(lower.Right, upper.Right);
    const double both = 0.9 * 69.0; // of the width of the frames
    EXPECT_NEAR(upper.Bottom - upper.Top, 0.7 * both, 1e-9);
    EXPECT_NEAR(lower.Bottom - lower.Top, 0.3 * both, 1e-9);
    EXPECT_NEAR(lower.Top - upper.Bottom, 2.8 + 0.3, 1e-9); // the labels at both ends keep apart
    EXPECT_NEAR(plan.Height, lower.Bottom + 8.5 + 1.0, 1e-9);
    EXPECT_EQ(plan.Title.Left, upper.Left);
    EXPECT_EQ(plan.Title.Right, upper.Right);
    EXPECT_NEAR(plan.Title.Top, lower.Bottom + 5.0, 1e-9); // below the labels
}

TEST(FigurePlan, AHeightThatIsGivenHolds) {
    for (const double height : {60.0, 100.0, 250.0}) {
        const FigurePlan plan = PlanFigure({120.0, height, false, 0}, 1, SomeTexts());
        EXPECT_NEAR(plan.Height, height, 1e-9);
        EXPECT_NEAR(plan.Cells[0].Lower.Frame.Bottom, height - 9.5, 1e-9);
    }
    const FigurePlan grid = PlanFigure({170.0, 200.0, true, 0}, 18, SomeTexts());
    EXPECT_NEAR(grid.Height, 200.0, 1e-9);
}

TEST(FigurePlan, TheLegendStandsBesideTheDataOrBelow) {
    FigureTexts texts = SomeTexts();
    texts.LegendWidth = 40.0;
    texts.LegendHeight = 20.0;
    const FigurePlan below = PlanFigure({85.0, 0.0, false, 0}, 1, texts);
    EXPECT_GE(below.Legend.Top, below.Cells[0].Lower.Frame.Bottom + 8.5);
    EXPECT_NEAR(below.Legend.Bottom, below.Height - 1.0, 1e-9);
    texts.LegendBeside = true;
    const FigurePlan beside = PlanFigure({170.0, 0.0, false, 0}, 1, texts);
    EXPECT_GT(beside.Legend.Left, beside.Cells[0].Upper.Frame.Right + 2.0);
    EXPECT_NEAR(beside.Legend.Right, 169.0, 1e-9);
    texts.LegendHeight = 300.0; // a long one makes the page higher
    EXPECT_NEAR(PlanFigure({170.0, 0.0, false, 0}, 1, texts).Height,
                beside.Cells[0].Upper.Frame.Top + 300.0 + 1.0, 1e-9);
}

TEST(FigurePlan, CellsOfAGridDoNotMeetAndFitAPage) {
    for (const double width : {85.0, 170.0})
        for (const int cells : {1, 2, 6, 7, 18}) {
            FigureTexts texts = SomeTexts();
            texts.Heads = 2;
            const FigurePlan plan = PlanFigure({width, 0.0, true, 0}, cells, texts);
            ASSERT_EQ(plan.Cells.size(), static_cast<std::size_t>(cells));
            EXPECT_LE(plan.Height, TallestPage + 10.0) << width << ", " << cells;
            std::vector<FigureRect> views;
            for (const FigureCell& cell : plan.Cells) {
                views.push_back(cell.Upper.View);
                views.push_back(cell.Lower.View);
            }
            for (const FigureRect& a : views) {
                EXPECT_GE(a.Left, 0.0);
                EXPECT_LE(a.Right, width);
                EXPECT_LE(a.Bottom, plan.Height);
                for (const FigureRect& b : views) {
                    const bool apart = a.Right <= b.Left + 1e-9 || b.Right <= a.Left + 1e-9 ||
                                       a.Bottom <= b.Top + 1e-9 || b.Bottom <= a.Top + 1e-9;
                    EXPECT_TRUE(&a == &b || apart) << width << ", " << cells;
                }
            }
        }
    EXPECT_EQ(GridColumns(18, 170.0), 4);
    EXPECT_EQ(GridColumns(18, 85.0), 3);
    EXPECT_EQ(GridColumns(1, 85.0), 1);
}

std::string MistakeOf(const FigureChoice& choice) {
    try {
        PlanFigure(choice, 1, SomeTexts());
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

TEST(FigurePlan, ASizeThatDoesNotDoIsTold) {
    const std::string limits = "a figure is 40 mm to 400 mm wide and high";
    EXPECT_EQ(MistakeOf({39.9, 0.0, false, 0}), limits);
    EXPECT_EQ(MistakeOf({401.0, 0.0, false, 0}), limits);
    EXPECT_EQ(MistakeOf({85.0, 30.0, false, 0}), limits);
    EXPECT_EQ(MistakeOf({85.0, 40.0, false, 0}), "");
    FigureTexts texts = SomeTexts();
    texts.LegendWidth = 40.0;
    texts.LegendHeight = 30.0;
    EXPECT_THROW(PlanFigure({85.0, 50.0, false, 0}, 1, texts), RuntimeError);
    EXPECT_THROW(PlanFigure({40.0, 0.0, true, 0}, 18, texts), RuntimeError);
}

constexpr double Dots = 1200.0;
constexpr double UnitsPerPoint = Dots / 72.0;
constexpr double LettersOfEm = 1.117; // tallest to lowest letter of Arial, ems

class FigureTest : public GraphBench {
protected:
    FigureTest() {
        Kept = {};
        FillSets(3);
    }
    ~FigureTest() override { Kept = {}; }

    void FillSets(long sets) {
        std::vector<BenchSet> all;
        for (long row = 1; row <= sets; ++row)
            all.push_back({row, 12, row % 2 == 0 ? 1 : 0});
        FillFit(all, 0.0078125F);
        for (long row = 1; row <= sets; ++row)
            Work.ScanRPM[row] = 9000.0F + 1000.0F * static_cast<float>(row % 3);
        Work.XAxisTitle = "(R^2 - Ro^2) / 2   (cm^2)";
        Work.DataTypeName = "Absorbance";
    }

    // The figure on a recording surface.
    void Draw(const FigureChoice& choice) {
        Paper.Clear();
        const std::string bytes = FigureBytes(
            choice, "svg", Dots, [this](const std::string& ending, const PictureRequest& request) {
                EXPECT_EQ(ending, "svg");
                Paper.Width = request.Width;
                Paper.Height = request.Height;
                Paper.DotsPerInchX = Paper.DotsPerInchY = request.DotsPerInchX;
                PictureFile picture;
                picture.Surface = Paper.Surface();
                picture.Finish = [] { return std::string("whole"); };
                return picture;
            });
        EXPECT_EQ(bytes, "whole");
    }

    static bool Meet(const DeviceRect& a, const DeviceRect& b) {
        return a.Left <= b.Right && b.Left <= a.Right && a.Top <= b.Bottom && b.Top <= a.Bottom;
    }

    // What capitals and digits cover of a line of text: above the baseline, and below what accents take.
    static DeviceRect InkOf(const DrawnItem& text) {
        DeviceRect ink = TextBounds(text);
        const int above = text.Font.Height * 16 / 100, below = text.Font.Height / 5;
        if (text.Font.Angle == 0) {
            ink.Top += above;
            ink.Bottom -= below;
        } else {
            ink.Left += above;
            ink.Right -= below;
        }
        return ink;
    }

    void ExpectTextsApart(const std::string& what) const {
        const std::vector<DrawnItem> texts = Paper.OfKind("text");
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const DeviceRect a = InkOf(texts[i]);
            EXPECT_TRUE(a.Left >= 0 && a.Top >= 0 && a.Right < Paper.Width && a.Bottom < Paper.Height)
                << what << ": '" << texts[i].Text << "' leaves the page";
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_FALSE(Meet(a, InkOf(texts[j])))
                    << what << ": '" << texts[i].Text << "' on '" << texts[j].Text << "'";
        }
    }

    RecordingSurface Paper;
};

TEST_F(FigureTest, NoTextMeetsAnotherOrLeavesThePage) {
    for (const long sets : {1, 3, 6, 18}) {
        FillSets(sets);
        for (const double width : {85.0, 120.0, 170.0})
            for (const bool panels : {false, true}) {
                Draw({width, 0.0, panels, 0});
                ExpectTextsApart(std::to_string(sets) + " sets, " + std::to_string(width) +
                                 (panels ? " mm, panels" : " mm"));
            }
    }
}

TEST_F(FigureTest, LettersAreSixToSevenPointsHighAndLinesAHalfToOne) {
    for (const bool panels : {false, true}) {
        Draw({85.0, 0.0, panels, 0});
        for (const DrawnItem& text : Paper.OfKind("text")) {
            const double points = text.Font.Height / UnitsPerPoint / LettersOfEm;
            EXPECT_GE(points, 6.0) << text.Text;
            EXPECT_LE(points, 7.1) << text.Text;
        }
        for (const char* kind : {"line", "polyline", "polygon", "ellipse"})
            for (const DrawnItem& item : Paper.OfKind(kind)) {
                EXPECT_GE(item.Pen.Width / UnitsPerPoint, 0.45) << ItemText(item);
                EXPECT_LE(item.Pen.Width / UnitsPerPoint, 1.0) << ItemText(item);
            }
    }
}

TEST_F(FigureTest, TheLegendTellsFileChannelSpeedAndRms) {
    Work.DataChannel[2] = 2;
    Draw({85.0, 0.0, false, 0});
    // All residuals of a set have one size.
    EXPECT_NE(Paper.FindText("00011.RA1, 10000 rpm, rms 0.0078"), nullptr);
    EXPECT_NE(Paper.FindText("00012.RA1 Ch B, 11000 rpm, rms 0.0078"), nullptr);
    EXPECT_NE(Paper.FindText("(R\xB2 - Ro\xB2) / 2   (cm\xB2)"), nullptr);
    EXPECT_NE(Paper.FindText("Absorbance"), nullptr);
    EXPECT_NE(Paper.FindText("Residual"), nullptr);
    EXPECT_EQ(Paper.FindText("monomer <-> dimer fit"), nullptr) << "a caption says that";
}

TEST_F(FigureTest, ALegendThatDoesNotFitIsToldAndNotCut) {
    Work.SetLabel[2] = std::string(60, 'x');
    EXPECT_THROW(Draw({40.0, 0.0, false, 0}), RuntimeError);
    Draw({120.0, 0.0, false, 0});
    const DrawnItem* line = Paper.FindText(FigureName(SetNo(2)) + ", rms 0.0078");
    ASSERT_NE(line, nullptr);
    const BaseFont& font = BaseFontFor("Arial", false); // what the figure is laid out with
    const double width = TextEms(font, line->Text) * EmOfHeight(font, line->Font.Height);
    EXPECT_LE(line->Points[0].X + width, line->Clip.Right);
}

TEST_F(FigureTest, SetsThatAreCalledAlikeAreNumbered) {
    Work.SetLabel[3] = Work.SetLabel[1];
    Work.ScanRPM[3] = Work.ScanRPM[1];
    EXPECT_EQ(FigureName(SetNo(1)), "00011.RA1, 10000 rpm, set 1");
    EXPECT_EQ(FigureName(SetNo(2)), "00012.RA1, 11000 rpm");
    EXPECT_EQ(FigureName(SetNo(3)), "00011.RA1, 10000 rpm, set 3");
    Work.DataChannel[3] = 3;
    Work.SetLabel[3] = "00011.RA1 Ch C";
    EXPECT_EQ(FigureName(SetNo(3)), "00011.RA1 Ch C, 10000 rpm");
}

TEST_F(FigureTest, OneScaleOfXServesBothGraphs) {
    Draw({85.0, 0.0, false, 0});
    std::map<std::string, int> times;
    for (const std::string& text : Paper.Texts())
        ++times[text];
    EXPECT_EQ(times["(R\xB2 - Ro\xB2) / 2   (cm\xB2)"], 1);
    // The curves above and the symbols below that show one point stand one below the other.
    const std::vector<DrawnItem> symbols = Paper.OfKind("ellipse"); // of the first set: data, residuals
    std::multiset<int> middles;
    for (const DrawnItem& symbol : symbols)
        middles.insert((symbol.Rect.Left + symbol.Rect.Right) / 2);
    int pairs = 0;
    for (const int x : middles)
        pairs += middles.count(x) == 2 ? 1 : 0;
    EXPECT_EQ(pairs, 24); // each of 12 points above and below
}

TEST_F(FigureTest, TheRmsHasTwoDigitsWhateverTheyAre) {
    const std::pair<float, const char*> cases[] = {
        {0.0039F, "rms 0.0039"}, {0.00398F, "rms 0.0040"}, {0.05F, "rms 0.050"},    {0.999F, "rms 1.0"},
        {12.3F, "rms 12"},       {0.0F, "rms 0"},          {0.00012F, "rms 1.2E-4"}};
    for (const auto& [residual, text] : cases) {
        FillFit({{1, 12, 0}}, residual);
        Draw({85.0, 0.0, false, 0});
        EXPECT_EQ(FigureRms(SetNo(1)), text);
    }
}

// --- scales --------------------------------------------------------------------------------------------

GraphAxis Scaled(FigureRange range, double length, double label = 9.0) {
    GraphAxis axis;
    ScaleFigureAxis(axis, range, length, label);
    return axis;
}

TEST(FigureScales, LimitsFollowTheDataAndTicsAreRound) {
    const GraphAxis axis = Scaled({-1.3, 1.3}, 68.0);
    EXPECT_NEAR(axis.Min, -1.404, 1e-6); // a twenty-fifth of 2.6 beyond them
    EXPECT_NEAR(axis.Max, 1.404, 1e-6);
    EXPECT_FLOAT_EQ(axis.TicInterval, 0.5F); // 2.8 over seven labels is 0.4
    EXPECT_FLOAT_EQ(axis.FirstTic, -1.0F);
    EXPECT_EQ(axis.Decimals, 1);
    EXPECT_EQ(axis.TicFormat, TicFormats::Decimal);
    EXPECT_EQ(axis.ScaleMode, ScaleModes::Manual);
}

// One label is no scale: with room for two, 2 would leave 0 alone on it.
TEST(FigureScales, TwoTicsAtLeastAreOnTheScale) {
    for (const double high : {0.07, 0.3, 0.84, 1.0, 1.3, 2.6, 7.7, 9.9, 640.0})
        for (const double length : {5.0, 9.0, 20.0, 27.0}) {
            const GraphAxis axis = Scaled({-high, high}, length);
            EXPECT_LE(axis.FirstTic + axis.TicInterval, axis.Max) << high << " over " << length;
            EXPECT_GE(axis.FirstTic, axis.Min);
        }
}

TEST(FigureScales, ZeroIsAnEndWhereDataBeginThere) {
    const GraphAxis axis = Scaled({0.0, 1.18}, 43.0, 5.0);
    EXPECT_EQ(axis.Min, 0.0F);
    EXPECT_EQ(axis.FirstTic, 0.0F);
    EXPECT_FLOAT_EQ(axis.TicInterval, 0.2F);
}

TEST(FigureScales, LargeAndSmallNumbersHaveExponents) {
    EXPECT_EQ(Scaled({0.0, 2.4e6}, 40.0).TicFormat, TicFormats::Exponential);
    EXPECT_EQ(Scaled({0.0, 3e-5}, 40.0).TicFormat, TicFormats::Exponential);
    EXPECT_EQ(Scaled({0.0, 90000.0}, 40.0).TicFormat, TicFormats::Decimal);
    EXPECT_EQ(Scaled({0.0, 90000.0}, 40.0).Decimals, 0);
}

TEST(FigureScales, PanelsShareTheRangeOfXAndTheWidestScaleOfResiduals) {
    std::vector<CellGraphs> cells(3);
    const float limits[] = {0.012F, 0.016F, 0.009F};
    for (std::size_t i = 0; i < 3; ++i) {
        cells[i].Lower.Spec.AxisY1.Max = limits[i];
        cells[i].Lower.Spec.AxisY1.Decimals = static_cast<std::int16_t>(i);
        cells[i].Upper.DataX = SetTable(2, 1);
        cells[i].Upper.DataX(1, 1) = static_cast<float>(i) - 3.0F;
        cells[i].Upper.DataX(2, 1) = i == 1 ? MissingValue : 0.5F * static_cast<float>(i);
    }
    const FigureScales scales = ScalesOf(cells);
    EXPECT_EQ(scales.X, (FigureRange{-3.0, 1.0}));
    EXPECT_EQ(scales.Residual.Max, 0.016F);
    EXPECT_EQ(scales.Residual.Decimals, 1);
}

TEST_F(FigureTest, SymbolsAndCurveOfASetHaveItsColour) {
    Draw({85.0, 0.0, false, 0});
    std::set<Rgb> curves;
    for (const DrawnItem& curve : Paper.OfKind("polyline"))
        if (curve.Points.size() > 2) curves.insert(curve.Pen.Color);
    EXPECT_EQ(curves.size(), 3U);
    for (const DrawnItem& symbol : Paper.OfKind("ellipse"))
        EXPECT_EQ(curves.count(symbol.Pen.Color), 1U);
}

// The width of what an item covers.
int WidthOf(const DrawnItem& item) {
    if (item.Points.empty()) return item.Rect.Right - item.Rect.Left;
    const auto byX = [](DevicePoint a, DevicePoint b) { return a.X < b.X; };
    const auto [left, right] = std::minmax_element(item.Points.begin(), item.Points.end(), byX);
    return right->X - left->X;
}

bool FillsSymbols(const RecordingSurface& surface) {
    for (const char* kind : {"ellipse", "polygon", "rectangle"})
        for (const DrawnItem& item : surface.OfKind(kind)) {
            const bool inked = item.Brush.Kind == BrushKind::Solid && item.Brush.Color != 0xFFFFFF;
            if (inked && WidthOf(item) < surface.Width / 5) return true;
        }
    return false;
}

// Beside the window's graph a figure has other symbols on purpose: open ones, which do not hide each other.
TEST_F(FigureTest, SymbolsAreOpenWhereThoseOfTheWindowAreFilled) {
    ASSERT_TRUE(MakeFitGraph(FitGraph::Data, AllSets, {}));
    EXPECT_TRUE(FillsSymbols(Screen));
    Draw({85.0, 0.0, false, 0});
    EXPECT_FALSE(FillsSymbols(Paper));
}

TEST_F(FigureTest, PanelsShowOneSetEach) {
    Draw({170.0, 0.0, true, 0});
    for (long set = 1; set <= 3; ++set)
        EXPECT_NE(Paper.FindText(FigureName(SetNo(set)) + ", rms 0.0078"), nullptr) << set;
    Draw({85.0, 0.0, false, 2});
    EXPECT_NE(Paper.FindText(FigureName(SetNo(2)) + ", rms 0.0078"), nullptr);
    EXPECT_EQ(Paper.FindText(FigureName(SetNo(1)) + ", rms 0.0078"), nullptr);
}

TEST_F(FigureTest, TheGraphAtHandAndTheSettingsStay) {
    Work.SpreadResiduals = FlagTrue;
    ASSERT_TRUE(MakeFitGraph(FitGraph::Overlay, AllSets, {}));
    Chart.Style.SymbolSize = 0.02F;
    Charts.StatusLine.Text = "told";
    PushZoom(0, 1, 2, 3);
    const GraphSpec spec = Chart.Spec;
    const GraphState state = Chart.State;
    const ChartStyle style = Chart.Style;
    const SetTable y = Chart.DataY;
    const SetLooks looks = Chart.Looks;
    Screen.Clear();
    Draw({85.0, 0.0, true, 0});
    EXPECT_TRUE(Screen.Items.empty()) << "drawn in the window";
    const auto same = [&] {
        return Chart.Spec == spec && Chart.State == state && Chart.Style == style && Chart.DataY == y &&
               Chart.Looks == looks && Charts.StatusLine.Text == "told" && Charts.Zooms.ZoomDepth == 1;
    };
    EXPECT_TRUE(same());
    EXPECT_EQ(Work.SpreadResiduals, FlagTrue);
    EXPECT_THROW(FigureBytes({85.0, 0.0, false, 0}, "svg", Dots,
                             [](const std::string&, const PictureRequest&) -> PictureFile {
                                 RaiseError("no room on the disk");
                             }),
                 RuntimeError);
    EXPECT_TRUE(same()) << "after a failure";
    EXPECT_THROW(FigureBytes({}, "dat", Dots, {}), RuntimeError);
    EXPECT_THROW(FigureBytes({85.0, 0.0, false, 4}, "svg", Dots, {}), RuntimeError);
    EXPECT_TRUE(same());
}

// --- the form
// ------------------------------------------------------------------------------------------------

class FigureFormTest : public FigureTest {
protected:
    FigureFormTest() { LoadFigureForm(); }
    void Type(FigureInput input, const std::string& text) {
        FigureFormGotFocus(input);
        FigureFormBox(input).Text = text;
        FigureFormLostFocus(input);
    }
};

TEST_F(FigureFormTest, SizesAndPanelsGoIntoTheChoice) {
    FigureFormSizeClick(FigureSize::Two);
    EXPECT_EQ(FigureForm.Choice.Width, 170.0);
    EXPECT_FALSE(FigureForm.WidthInput.Enabled);
    FigureFormPanelsClick(true);
    EXPECT_TRUE(FigureForm.Choice.PanelPerSet);
    EXPECT_EQ(FigureForm.SetsOption.Value, FlagTrue);
    FigureFormSizeClick(FigureSize::Own);
    EXPECT_TRUE(FigureForm.HeightInput.Enabled);
    Type(FigureInput::Width, "120.5");
    Type(FigureInput::Height, "90");
    EXPECT_EQ(FigureForm.Choice, (FigureChoice{120.5, 90.0, true, 0}));
    Type(FigureInput::Height, "");
    EXPECT_EQ(FigureForm.Choice.Height, 0.0);
    FigureFormSizeClick(FigureSize::One);
    FigureFormPanelsClick(false);
    EXPECT_EQ(FigureForm.Choice, FigureChoice{});
}

TEST_F(FigureFormTest, ASizeThatNoFigureHasIsRefused) {
    FigureFormSizeClick(FigureSize::Own);
    Outside.ExpectMessage("A figure is 40 to 400 mm wide and high.");
    Type(FigureInput::Width, "12");
    EXPECT_EQ(FigureForm.Choice.Width, 85.0);
    EXPECT_EQ(FigureForm.WidthInput.Text, "85");
    EXPECT_EQ(FigureForm.State.FocusOn, &FigureForm.WidthInput);
}

TEST_F(FigureFormTest, TheFileIsWrittenWholeAndAFailureIsTold) {
    const std::string path = Outside.Directory() + "/fig.svg";
    Outside.ExpectFile("Quillon - Save Figure", path);
    FigureFormSaveButton();
    EXPECT_TRUE(ReadWholeFile(path).starts_with("<?xml"));
    Outside.ExpectFile("Quillon - Save Figure", Outside.Directory() + "/fig.doc");
    Outside.ExpectMessage("Error 'no figure is written as 'doc'' occurred while writing " +
                          Outside.Directory() + "/fig.doc");
    FigureFormSaveButton();
    Outside.ExpectFile("Quillon - Save Figure", "");
    FigureFormSaveButton();
    Outside.ExpectFile("Quillon - Save Figure", " "); // nothing was typed
    FigureFormSaveButton();
}

TEST_F(FigureFormTest, WithoutAPictureTheNoteSaysWhy) {
    EXPECT_EQ(FigurePreview(96.0), "");
    EXPECT_EQ(FigureForm.Note.Text, "no graph is written as 'png'");
    EXPECT_FALSE(FigureForm.SaveButton.Enabled);
}

} // namespace
} // namespace Quillon
