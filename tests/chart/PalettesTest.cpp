// Colours of sets: how they keep apart, for whom, and on which ground.
#include "chart/records/Palettes.h"

#include "ChartBench.h"
#include "chart/pens/Pens.h"
#include "chart/pens/Symbols.h"
#include "chart/records/Kept.h"
#include "chart/records/SetLooks.h"

#include <array>
#include <numbers>

namespace Quillon {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

Triple Linear(Rgb color) {
    Triple linear{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double v = static_cast<double>(color >> (16 - 8 * i) & 0xFF) / 255.0;
        linear[i] = v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    }
    return linear;
}

double Luminance(Rgb color) {
    const Triple c = Linear(color);
    return 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2];
}

double Contrast(Rgb a, Rgb b) {
    const double x = Luminance(a) + 0.05, y = Luminance(b) + 0.05;
    return x > y ? x / y : y / x;
}

// What is seen: by a full eye, and without red, green and blue receptors (Machado, Oliveira, Fernandes 2009,
// table of severity 1; it works on linear values).
constexpr Matrix Eyes[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}};

Triple Times(const Matrix& m, const Triple& v) {
    Triple product{};
    for (std::size_t i = 0; i < 3; ++i)
        product[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return product;
}

// CIELAB of linear sRGB, white D65.
Triple Lab(const Triple& linear) {
    static constexpr Matrix toXyz = {{{0.4124564, 0.3575761, 0.1804375},
                                      {0.2126729, 0.7151522, 0.0721750},
                                      {0.0193339, 0.1191920, 0.9503041}}};
    Triple seen = linear;
    for (double& part : seen)
        part = std::clamp(part, 0.0, 1.0);
    Triple f = Times(toXyz, seen);
    const Triple white = {0.95047, 1.0, 1.08883};
    for (std::size_t i = 0; i < 3; ++i) {
        const double t = f[i] / white[i];
        f[i] = t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0;
    }
    return {116.0 * f[1] - 16.0, 500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])};
}

constexpr double Degree = std::numbers::pi / 180.0;

double HueOf(double a, double b) {
    if (a == 0.0 && b == 0.0) return 0.0;
    const double hue = std::atan2(b, a) / Degree;
    return hue < 0.0 ? hue + 360.0 : hue;
}

double MeanHue(double h1, double h2, bool grey) {
    if (grey) return h1 + h2;
    if (std::fabs(h1 - h2) <= 180.0) return (h1 + h2) / 2.0;
    return h1 + h2 < 360.0 ? (h1 + h2 + 360.0) / 2.0 : (h1 + h2 - 360.0) / 2.0;
}

// CIEDE2000 (Sharma, Wu, Dalal, Color Res. Appl. 30 (2005) 21).
double Difference(const Triple& one, const Triple& other) {
    const auto root7 = [](double c) { return std::sqrt(std::pow(c, 7) / (std::pow(c, 7) + 6103515625.0)); };
    const double g = 0.5 * (1.0 - root7((std::hypot(one[1], one[2]) + std::hypot(other[1], other[2])) / 2.0));
    const double a1 = one[1] * (1.0 + g), a2 = other[1] * (1.0 + g);
    const double c1 = std::hypot(a1, one[2]), c2 = std::hypot(a2, other[2]);
    const double h1 = HueOf(a1, one[2]), h2 = HueOf(a2, other[2]);
    const bool grey = c1 * c2 == 0.0;
    double turn = grey ? 0.0 : h2 - h1;
    if (turn > 180.0) turn -= 360.0;
    if (turn < -180.0) turn += 360.0;
    const double dL = other[0] - one[0], dC = c2 - c1;
    const double dH = 2.0 * std::sqrt(c1 * c2) * std::sin(turn / 2.0 * Degree);
    const double light = (one[0] + other[0]) / 2.0, c = (c1 + c2) / 2.0, h = MeanHue(h1, h2, grey);
    const double t = 1.0 - 0.17 * std::cos((h - 30.0) * Degree) + 0.24 * std::cos(2.0 * h * Degree) +
                     0.32 * std::cos((3.0 * h + 6.0) * Degree) - 0.20 * std::cos((4.0 * h - 63.0) * Degree);
    const double off = (light - 50.0) * (light - 50.0);
    const double l = dL / (1.0 + 0.015 * off / std::sqrt(20.0 + off));
    const double s = dC / (1.0 + 0.045 * c);
    const double k = dH / (1.0 + 0.015 * c * t);
    const double bend =
        -2.0 * root7(c) * std::sin(60.0 * std::exp(-std::pow((h - 275.0) / 25.0, 2)) * Degree);
    return std::sqrt(l * l + s * s + k * k + bend * s * k);
}

double SeenDifference(const Matrix& eye, Rgb a, Rgb b) {
    return Difference(Lab(Times(eye, Linear(a))), Lab(Times(eye, Linear(b))));
}

std::vector<Rgb> SafeColors() {
    std::vector<Rgb> colors;
    for (const ChartColor color : Palettes()[1].Colors)
        colors.push_back(ToRgb(color));
    return colors;
}

// Pairs of the data set published with the formula.
TEST(ColorDifference, IsThatOfThePublishedPairs) {
    EXPECT_NEAR(Difference({50.0, 2.6772, -79.7751}, {50.0, 0.0, -82.7485}), 2.0425, 5e-5);
    EXPECT_NEAR(Difference({50.0, 2.4900, -0.0010}, {50.0, -2.4900, 0.0011}), 7.2195, 5e-5);
    EXPECT_NEAR(Difference({50.0, 2.5, 0.0}, {73.0, 25.0, -18.0}), 27.1492, 5e-5);
    EXPECT_NEAR(Difference({2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}), 0.9082, 5e-5);
    EXPECT_NEAR(Contrast(0x000000, 0xFFFFFF), 21.0, 1e-9);
    EXPECT_NEAR(Contrast(0x767676, 0xFFFFFF), 4.54, 0.005); // the grey that passes as text
}

TEST(SafePalette, IsReadOnWhite) {
    for (const Rgb color : SafeColors())
        EXPECT_GE(Contrast(color, 0xFFFFFF), 3.0) << std::hex << color;
}

TEST(SafePalette, NeighboursAndAllOthersKeepApartForEveryEye) {
    const std::vector<Rgb> colors = SafeColors();
    ASSERT_EQ(colors.size(), 8U);
    for (const Matrix& eye : Eyes)
        for (std::size_t i = 0; i < colors.size(); ++i) {
            EXPECT_GT(SeenDifference(eye, colors[i], colors[(i + 1) % colors.size()]), 15.0) << i;
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_GT(SeenDifference(eye, colors[i], colors[j]), 10.0) << i << " " << j;
        }
}

TEST(SafePalette, IsReadOnTheDarkCanvas) {
    const Rgb ground = OnDarkCanvas(0xFFFFFF);
    EXPECT_EQ(ground, 0x1E1E1EU);
    for (const Rgb color : SafeColors())
        EXPECT_GE(Contrast(OnDarkCanvas(color), ground), 3.0) << std::hex << color;
    EXPECT_EQ(OnDarkCanvas(0x000000), 0xFFFFFFU);
    for (const ChartColor color : Palettes()[0].Colors) // full ones stay what they are called
        EXPECT_GE(Contrast(OnDarkCanvas(ToRgb(color)), ground), 3.0) << std::hex << color;
    EXPECT_EQ(OnDarkCanvas(0x0000FF) & 0xFFU, 0xFFU);
    EXPECT_EQ(OnDarkCanvas(0xFF0000) >> 16, 0xFFU);
    EXPECT_LT(Contrast(OnDarkCanvas(0xC0C0C0), ground), 3.0) << "grids stay behind the data";
}

TEST(SafePalette, OrangeAndVermilionWereOneColourOnTheDarkCanvas) {
    std::vector<Rgb> tints;
    for (const Rgb color : SafeColors())
        tints.push_back(OnDarkCanvas(color));
    for (std::size_t i = 0; i < tints.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_GT(SeenDifference(Eyes[0], tints[i], tints[j]), 24.0) << i << " " << j;
            for (const Matrix& eye : Eyes)
                EXPECT_GT(SeenDifference(eye, tints[i], tints[j]), 13.0) << i << " " << j;
        }
    for (const Matrix& eye : Eyes)
        for (std::size_t i = 0; i < tints.size(); ++i)
            EXPECT_GT(SeenDifference(eye, tints[i], tints[(i + 1) % tints.size()]), 20.0) << i;
}

class PaletteTest : public ChartBench {
protected:
    PaletteTest() { Kept = {}; }
    ~PaletteTest() override { Kept = {}; }

    std::vector<ChartColor> ColorsRead(const std::string& ini) {
        Outside.MakeFile("chart.ini", "[QUILLON]\n" + ini);
        ReadChartDefaults();
        EXPECT_EQ(Chart.Style.ScreenColors, Chart.Style.PrintColors);
        return Chart.Style.ScreenColors;
    }
};

TEST_F(PaletteTest, TheEngineItselfHasTheClassicTable) {
    EXPECT_EQ(ColorsRead(""), Palettes()[0].Colors);
    EXPECT_EQ(Palettes()[0].Colors.size(), 14U);
}

TEST_F(PaletteTest, ProgramsHaveTheSafeOneUnlessTheFileAsksForTheClassicOne) {
    BeginWithSafeColors(true);
    EXPECT_EQ(ColorsRead(""), Palettes()[1].Colors);
    EXPECT_EQ(ColorsRead("ClassicColors=True\n"), Palettes()[0].Colors);
    EXPECT_EQ(ColorsRead("ClassicColors=False\n"), Palettes()[1].Colors);
}

TEST_F(PaletteTest, ColorsOfTheFileStandInTheClassicTable) {
    BeginWithSafeColors(true);
    std::vector<ChartColor> own = Palettes()[0].Colors;
    own[2] = 0x332211;
    EXPECT_EQ(ColorsRead("ScreenColor2=&H332211\nPrintColor2=&H332211\n"), own);
}

TEST_F(PaletteTest, ChoiceOfTheMenuIsRememberedAndRedrawsTheGraph) {
    BeginWithSafeColors(true);
    GraphSpec spec = Begin();
    Plot(spec, Table({{0, 1}, {0, 1}}), Table({{0, 1}, {1, 2}}));
    const auto second = [&] { return CycleColor(1); };
    EXPECT_EQ(second(), 0x0072B2U);
    ToggleClassicColors();
    EXPECT_EQ(second(), 0x0000FFU);
    EXPECT_TRUE(Charts.ClassicColors.Checked);
    EXPECT_NE(ReadWholeFile(ChartIniPath()).find("ClassicColors=True"), std::string::npos);
    ToggleClassicColors();
    EXPECT_EQ(second(), 0x0072B2U);
    EXPECT_FALSE(Charts.ClassicColors.Checked);
}

TEST_F(PaletteTest, DarkCanvasIsForThePictureBoxAlone) {
    GraphSpec spec = Begin();
    Plot(spec, Table({{0, 1}, {0, 1}}), Table({{0, 1}, {1, 2}}));
    ToggleDarkCanvas();
    EXPECT_EQ(TargetColor(0), 0xFFFFFFU);
    EXPECT_EQ(CanvasColor(), 0x1E1E1EU);
    for (const std::int16_t target : {Targets::Metafile, Targets::Printer}) {
        Chart.Target = target;
        EXPECT_EQ(TargetColor(0), 0U);
        EXPECT_EQ(CanvasColor(), 0xFFFFFFU);
    }
}

// Symbols of a set and the curve through them, by one number.
TEST_F(PaletteTest, SetsWithANumberLookByItInEveryKindOfGraph) {
    NextLooks.Numbers = {3, 3, 9, 9};
    GraphSpec spec = Begin(GraphTypes::XYPlot, PlotStyles::Alternating);
    Plot(spec, Table({{0, 1}, {0, 1}, {0, 1}, {0, 1}}), Table({{0, 1}, {1, 2}, {2, 3}, {3, 4}}));
    EXPECT_EQ(SetIndex(1), 2);
    EXPECT_EQ(SetIndex(2), 2);
    EXPECT_EQ(SetIndex(4), 8);
    EXPECT_EQ(SetColor(3), SetColor(4));
    EXPECT_EQ(SymbolOf(1), Chart.Cycles.Symbol[2]);
    Chart.Style.UseRainbowColors = -1;
    EXPECT_EQ(SetColor(1), SetColor(2)) << "rainbow colours tear data and curve apart";
    EXPECT_NE(SetColor(1), SetColor(3));
    Chart.SetFlags[1] = 7;               // of a file that others wrote
    Chart.SetFlags[2] = NumberMark + 71; // beyond the cycles
    EXPECT_EQ(SetIndex(1), 0);
    EXPECT_EQ(SetIndex(2), 1);
}

} // namespace
} // namespace Quillon
