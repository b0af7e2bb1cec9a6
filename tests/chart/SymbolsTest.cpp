// Symbols, colours and the style cycles.
#include "chart/pens/Symbols.h"

#include "ChartBench.h"
#include "chart/pens/Pens.h"

namespace Quillon {
namespace {

class SymbolsTest : public ChartBench {
protected:
    SymbolsTest() {
        Spec = Begin();
        Chart.Spec = Spec;
        Chart.State.SymbolHalfX = 5;
        Chart.State.SymbolHalfY = 4;
    }
    std::vector<std::string> Draw(std::int16_t code) {
        Screen.Clear();
        DrawSymbol(100, 50, code);
        return Screen.Lines();
    }
    GraphSpec Spec;
};

using Texts = std::vector<std::string>;

TEST_F(SymbolsTest, Shapes) {
    const Texts diamond = {"polygon 95,50 100,54 105,50 100,46"};
    const Texts square = {"polygon 96,47 104,47 104,53 96,53"}; // 0.8 of 5 and 4
    const Texts circle = {"ellipse 95,46 105,54"};
    const Texts up = {"polygon 100,45 105,53 95,53"};
    const Texts down = {"polygon 100,55 95,47 105,47"};
    const Texts left = {"polygon 94,50 104,46 104,54"};
    const Texts right = {"polygon 96,46 106,50 96,54"};
    const Texts shapes[] = {diamond, square, circle, up, down, left, right};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(Draw(static_cast<std::int16_t>(1 + 2 * i)), shapes[i]) << i;
        EXPECT_EQ(Draw(static_cast<std::int16_t>(2 + 2 * i)), shapes[i]) << i;
    }
    EXPECT_EQ(Draw(0), (Texts{"line 95,50 105,50", "line 100,54 100,46"}));
    EXPECT_EQ(Draw(15), (Texts{diamond[0], "line 95,50 105,50", "line 100,54 100,46"}));
    EXPECT_EQ(Draw(16), (Texts{"line 95,46 105,54", "line 95,54 105,46"}));
    EXPECT_EQ(Draw(17), (Texts{square[0], "line 96,47 104,53", "line 96,53 104,47"}));
}

TEST_F(SymbolsTest, FillOfSolidAndOpenOnes) {
    for (std::int16_t code = 0; code <= 17; ++code) {
        Screen.Clear();
        SelectSymbolPen(2, code);
        DrawSymbol(0, 0, code);
        const SurfaceBrush brush = Screen.Items.at(0).Brush;
        const bool solid = code >= 1 && code <= 13 && code % 2 == 1;
        EXPECT_EQ(brush.Kind, BrushKind::Solid) << code;
        EXPECT_EQ(brush.Color, solid ? ToRgb(BasicColor(9)) : 0xFFFFFFU)
            << code; // the set's colour or the paper's
        EXPECT_EQ(Screen.Items.at(0).Pen.Color, ToRgb(BasicColor(9)));
    }
}

TEST_F(SymbolsTest, OpenSymbolsOnAMetafileAreHollow) {
    RecordingSurface file;
    SetMetafileMaker([&](const MetafileRequest&) { return MetafileTarget{file.Surface(), {}, {}}; });
    Spec.Device = "graph.emf";
    SelectTarget(Spec);
    SelectSymbolPen(1, 4);
    DrawSymbol(0, 0, 4);
    EXPECT_EQ(file.Items.at(0).Brush.Kind, BrushKind::Hollow);
    SelectSymbolPen(1, 3);
    DrawSymbol(0, 0, 3);
    EXPECT_EQ(file.Items.at(1).Brush.Kind, BrushKind::Solid);
}

TEST_F(SymbolsTest, TheCycles) {
    BuildCycles();
    const StyleCycles& c = Chart.Cycles;
    EXPECT_EQ(Chart.State.NColors, 14);
    for (int i = 0; i <= CycleLen; ++i) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_EQ(c.Symbol[at], i % 18);
        EXPECT_EQ(c.Color[at], BasicColor(DefaultColorOrder[at % 14]));
        EXPECT_EQ(c.Pattern[at], i % 7);
        EXPECT_EQ(c.Line[at], i / 14 % 5);
        EXPECT_EQ(c.Border[at], i / 14 % 5);
        EXPECT_EQ(c.Line2[at], i % 5);
    }
}

TEST_F(SymbolsTest, TheFirstLineIsSolidWhateverTheOrder) {
    Chart.Style.LineStyleOrder = {3, 1};
    Chart.Style.PatternStyleOrder = {5, 2};
    BuildCycles();
    EXPECT_EQ(Chart.Cycles.Line[0], 0);
    EXPECT_EQ(Chart.Cycles.Line[1], 3);
    EXPECT_EQ(Chart.Cycles.Line[14], 1);
    EXPECT_EQ(Chart.Cycles.Line[28], 3);
    EXPECT_EQ(Chart.Cycles.Pattern[0], 0);
    EXPECT_EQ(Chart.Cycles.Pattern[1], 2);
    EXPECT_EQ(Chart.Cycles.Pattern[2], 5);
}

TEST_F(SymbolsTest, EmptyOrdersAreHarmless) {
    Chart.Style.LineStyleOrder = {};
    Chart.Style.SymbolOrder = {};
    Chart.Style.ScreenColors = {};
    BuildCycles();
    EXPECT_EQ(Chart.State.NColors, 1);
    EXPECT_EQ(CycleColor(12345), 0U);
    EXPECT_EQ(CycleColor(-1), 0U);
}

TEST_F(SymbolsTest, AlternateSetsShiftTheirColoursWhenTheyRunOut) {
    Chart.Spec.PlotStyle = PlotStyles::Alternating;
    EXPECT_EQ(SetIndex(1), 0);
    EXPECT_EQ(SetIndex(2), 1);
    EXPECT_EQ(SetIndex(13), 12);
    EXPECT_EQ(SetIndex(15), 15); // 14 + 14 \ 14
    EXPECT_EQ(SetIndex(16), 15);
    EXPECT_EQ(SetIndex(29), 30); // 28 + 2
    EXPECT_EQ(SetIndex(71), 5);  // 70 + 5, round the cycle of 70
    EXPECT_EQ(SymbolOf(15), 14);
    Chart.Spec.PlotStyle = PlotStyles::Lines;
    EXPECT_EQ(SetIndex(71), 0);
}

TEST_F(SymbolsTest, Hexcone) {
    EXPECT_EQ(HSBtoColor(0, 1, 0.5F), 0x0000FF);
    EXPECT_EQ(HSBtoColor(60, 1, 0.5F), 0x00FFFF);
    EXPECT_EQ(HSBtoColor(120, 1, 0.5F), 0x00FF00);
    EXPECT_EQ(HSBtoColor(180, 1, 0.5F), 0xFFFF00);
    EXPECT_EQ(HSBtoColor(240, 1, 0.5F), 0xFF0000);
    EXPECT_EQ(HSBtoColor(300, 1, 0.5F), 0xFF00FF);
    EXPECT_EQ(HSBtoColor(360, 1, 0.5F), 0x0000FF);
    EXPECT_EQ(HSBtoColor(30, 1, 0.5F), 0x0080FF); // green 127.5: to even
    EXPECT_EQ(HSBtoColor(270, 1, 0.5F), 0xFF0080);
    EXPECT_EQ(HSBtoColor(330, 1, 0.5F), 0x8000FF);
    EXPECT_EQ(HSBtoColor(200, 0, 0.25F), 0x404040);    // grey 63.75
    EXPECT_EQ(HSBtoColor(120, 0.5F, 0.75F), 0x9FDF9F); // m2 = 0.875, m1 = 0.625: 223.1, 159.4
    EXPECT_EQ(HSBtoColor(120, 1, 1), 0xFFFFFF);
}

TEST_F(SymbolsTest, HexconeRefusesWhatIsOutOfRange) {
    Outside.ExpectMessage({"Invalid Hue Value", "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                          BoxAnswer::Ok);
    EXPECT_EQ(HSBtoColor(360.5F, 1, 1), 0);
    Outside.ExpectMessage("Invalid Saturation Value");
    EXPECT_EQ(HSBtoColor(0, -0.1F, 1), 0);
    Outside.ExpectMessage("Invalid Brightness Value");
    EXPECT_EQ(HSBtoColor(0, 1, std::nanf("")), 0);
}

TEST_F(SymbolsTest, BasicColours) {
    EXPECT_EQ(ToRgb(BasicColor(15)), 0xFFFFFFU);
    EXPECT_EQ(ToRgb(BasicColor(0)), 0x000000U);
    EXPECT_EQ(ToRgb(BasicColor(9)), 0x0000FFU);  // blue
    EXPECT_EQ(ToRgb(BasicColor(12)), 0xFF0000U); // red
    EXPECT_EQ(ToRgb(BasicColor(31)), 0xFFFFFFU); // the low four bits
}

} // namespace
} // namespace Quillon
