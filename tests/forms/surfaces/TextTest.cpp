// Text on toolkit surfaces: measured as it is drawn, and drawn in the direction asked for.
#include "PixelPicture.h"
#include "forms/surfaces/Application.h"
#include "forms/surfaces/QtFonts.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace Quillon {

namespace {

class SurfaceText : public ::testing::Test {
protected:
    SurfaceText() {
        NeedApplication();
        EXPECT_FALSE(QFontDatabase::families().isEmpty()) << "no fonts are installed";
    }
};

constexpr PictureRequest Large() {
    return {{}, 400, 400, 96.0, 96.0};
}

TextSize MeasuredIn(const SurfaceFont& font, const std::string& text) {
    const PictureFile picture = OpenPng(Large());
    picture.Surface.SetFont(font);
    return picture.Surface.Measure(text);
}

// The pixels of a text of capitals that begins at (200, 200).
QRect InkOf(const SurfaceFont& font, const std::string& text) {
    return Inked(Painted(
        [&](const DrawingSurface& s) {
            s.SetFont(font);
            s.SetTextColor(0);
            s.Text(200, 200, text);
        },
        Large()));
}

} // namespace

TEST_F(SurfaceText, MeasureIsWhatIsDrawn) {
    for (const char* face : {"Arial", "Times New Roman", "Courier New"}) {
        const SurfaceFont font = {face, 40, false, 0};
        const TextSize size = MeasuredIn(font, "HHHHH");
        const QRect ink = InkOf(font, "HHHHH");
        // An H has a little room on either side.
        EXPECT_NEAR(ink.width(), size.Width, 8) << face;
        EXPECT_GE(ink.left(), 200) << face;
        EXPECT_LE(ink.right(), 200 + size.Width) << face;
        EXPECT_NEAR(ink.bottom(), 199, 1) << face; // stands on the baseline
        EXPECT_EQ(size.Height, 40);
        EXPECT_GT(size.Descent, 0);
        EXPECT_LT(ink.height(), size.Height - size.Descent + 1) << face;
        EXPECT_GT(ink.height(), (size.Height - size.Descent) / 2) << face;
    }
}

// Files of all kinds have one layout: widths are the published ones, and letters are drawn to them.
TEST_F(SurfaceText, WidthsInFilesAreThoseOfTheBaseFonts) {
    const SurfaceFont font = {"Arial", 1117, false, 0}; // an em of 1000
    EXPECT_EQ(MeasuredIn(font, "HAi 0").Width, 722 + 667 + 222 + 278 + 556);
    const QRect ink =
        InkOf({"Arial", 80, false, 0}, "HHH"); // 3 * 0.722 of an em of 72, less the sides of an H
    EXPECT_NEAR(ink.right(), 200 + 156 - 5, 5);
}

TEST_F(SurfaceText, WidthsAddUp) {
    const SurfaceFont font = {"Arial", 200, false, 0};
    EXPECT_NEAR(MeasuredIn(font, "0123456789").Width, 10 * MeasuredIn(font, "0").Width, 10);
    // There is no kerning, and no joined letters.
    EXPECT_NEAR(MeasuredIn(font, "fi").Width, MeasuredIn(font, "f").Width + MeasuredIn(font, "i").Width, 1);
    EXPECT_NEAR(MeasuredIn(font, "AV").Width, MeasuredIn(font, "A").Width + MeasuredIn(font, "V").Width, 1);
    EXPECT_EQ(MeasuredIn(font, "").Width, 0);
}

TEST_F(SurfaceText, LettersAreAsHighAsAskedFor) {
    const int small = InkOf({"Arial", 20, false, 0}, "H").height();
    const int large = InkOf({"Arial", 80, false, 0}, "H").height();
    EXPECT_NEAR(large, 4 * small, 4);
}

TEST_F(SurfaceText, BoldIsHeavier) {
    const auto ink = [](bool bold) {
        const QImage image = Painted(
            [&](const DrawingSurface& s) {
                s.SetFont({"Arial", 60, bold, 0});
                s.Text(100, 200, "HIH");
            },
            Large());
        return 400 * 400 - CountOf(image, White);
    };
    EXPECT_GT(ink(true), ink(false) * 11 / 10);
}

// The same text in the four directions: the box turns about the start of the baseline.
TEST_F(SurfaceText, TextTurnsAboutItsStart) {
    const auto ink = [](int angle) {
        return InkOf({"Arial", 40, false, angle}, "HHHH").translated(-200, -200);
    };
    const QRect level = ink(0);
    const int length = level.right(), height = -level.top();
    ASSERT_GT(length, 60);
    const auto expectBox = [&](int angle, int left, int top, int right, int bottom) {
        const QRect box = ink(angle);
        EXPECT_NEAR(box.left(), left, 5) << angle;
        EXPECT_NEAR(box.top(), top, 5) << angle;
        EXPECT_NEAR(box.right(), right, 5) << angle;
        EXPECT_NEAR(box.bottom(), bottom, 5) << angle;
    };
    expectBox(0, 0, -height, length, 0);
    expectBox(90, -height, -length, 0, 0); // upward
    expectBox(180, -length, 0, 0, height); // upside down
    expectBox(270, 0, 0, height, length);  // downward
    EXPECT_EQ(MeasuredIn({"Arial", 40, false, 90}, "HHHH").Width,
              MeasuredIn({"Arial", 40, false, 0}, "HHHH").Width);
}

TEST_F(SurfaceText, HasItsColor) {
    const QImage image = Painted(
        [](const DrawingSurface& s) {
            s.SetFont({"Arial", 100, true, 0});
            s.SetTextColor(0x00AA00);
            s.Text(100, 200, "I");
        },
        Large());
    EXPECT_GT(CountOf(image, 0x00AA00), 100);
}

TEST_F(SurfaceText, EveryFamilyHasAnInstalledOne) {
    const QStringList installed = QFontDatabase::families();
    for (const char* face :
         {"Roman", "Modern", "Times New Roman", "Arial", "Courier New", "Symbol", "No such family"}) {
        const QFont font = ToolkitFont({face, 20, false, 0});
        EXPECT_GT(font.pixelSize(), 10) << face;
        EXPECT_LT(font.pixelSize(), 20) << face; // the em is less than what the letters take
    }
    if (installed.contains("DejaVu Sans Mono") || installed.contains("Liberation Mono")) {
        EXPECT_EQ(MeasuredIn({"Courier New", 40, false, 0}, "iiii").Width,
                  MeasuredIn({"Courier New", 40, false, 0}, "WWWW").Width);
    }
    EXPECT_LT(MeasuredIn({"Arial", 40, false, 0}, "iiii").Width,
              MeasuredIn({"Arial", 40, false, 0}, "WWWW").Width);
}

TEST_F(SurfaceText, SymbolsAreGreek) {
    EXPECT_EQ(ToolkitText({"Symbol", 12, false, 0}, "ab"), QString::fromUtf8("\xCE\xB1\xCE\xB2"));
    EXPECT_EQ(ToolkitText({"Arial", 12, false, 0}, "\xB5g\t1"), QString::fromUtf8("\xC2\xB5g 1"));
}

} // namespace Quillon
