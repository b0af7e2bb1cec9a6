// PNG pictures, pixel by pixel: where lines, areas and clips lie.
#include "PixelPicture.h"

#include <gtest/gtest.h>

namespace Quillon {

namespace {

constexpr unsigned Red = 0xFF0000, Blue = 0x0000FF;

QRect Box(int left, int top, int right, int bottom) {
    return {QPoint(left, top), QPoint(right, bottom)};
}

// Every pixel of a picture is white or of the colour, and those of the colour are just the rectangle's.
void ExpectOnly(const QImage& image, unsigned color, const QRect& rect) {
    EXPECT_EQ(Inked(image), rect);
    EXPECT_EQ(CountOf(image, color), rect.width() * rect.height());
    EXPECT_EQ(CountOf(image, White), image.width() * image.height() - rect.width() * rect.height());
}

QImage LineOf(int width, int x1, int y1, int x2, int y2) {
    return Painted([&](const DrawingSurface& s) {
        s.SetPen({true, Red, width});
        s.Line(x1, y1, x2, y2);
    });
}

} // namespace

TEST(PngPicture, HasTheSizeAndResolutionAskedFor) {
    const QImage image = Painted(
        [](const DrawingSurface& s) {
            EXPECT_EQ(s.Width(), 300);
            EXPECT_EQ(s.Height(), 100);
            EXPECT_EQ(s.DotsPerInchX(), 300.0);
            EXPECT_TRUE(s.HasColor());
        },
        {"", 300, 100, 300.0, 150.0});
    EXPECT_EQ(image.size(), QSize(300, 100));
    EXPECT_EQ(image.dotsPerMeterX(), 11811); // 300 / 0.0254
    EXPECT_EQ(image.dotsPerMeterY(), 5906);
    EXPECT_TRUE(Inked(image).isEmpty());
}

TEST(PngPicture, StraightLinesAreSharpAndIncludeTheirEnds) {
    ExpectOnly(LineOf(1, 10, 20, 50, 20), Red, Box(10, 20, 50, 20));
    ExpectOnly(LineOf(1, 50, 20, 10, 20), Red, Box(10, 20, 50, 20));
    ExpectOnly(LineOf(1, 30, 5, 30, 99), Red, Box(30, 5, 30, 99));
    ExpectOnly(LineOf(3, 10, 20, 50, 20), Red, Box(10, 19, 50, 21));
    ExpectOnly(LineOf(0, 10, 20, 50, 20), Red, Box(10, 20, 50, 20)); // the thinnest there is
    EXPECT_EQ(CountOf(LineOf(2, 10, 20, 50, 20), Red), 2 * 40);      // between pixels: ends are half covered
}

TEST(PngPicture, ALineWithoutLengthIsADot) {
    ExpectOnly(LineOf(1, 40, 50, 40, 50), Red, Box(40, 50, 40, 50));
    ExpectOnly(LineOf(5, 40, 50, 40, 50), Red, Box(38, 48, 42, 52));
}

TEST(PngPicture, GapsOfADashedWideLineStayOpen) {
    const QImage image = Painted([](const DrawingSurface& s) {
        s.SetPen({true, Red, 5});
        s.Line(10, 20, 20, 20);
        s.Line(23, 20, 33, 20);
    });
    EXPECT_EQ(ColorAt(image, 20, 20), Red);
    EXPECT_EQ(ColorAt(image, 21, 20), White);
    EXPECT_EQ(ColorAt(image, 22, 20), White);
    EXPECT_EQ(ColorAt(image, 23, 20), Red);
}

TEST(PngPicture, APolylineHasNoGaps) {
    const QImage image = Painted([](const DrawingSurface& s) {
        s.SetPen({true, Red, 1});
        s.Polyline({{10, 10}, {60, 10}, {60, 40}});
        s.SetPen({true, Blue, 1});
        s.Polyline({{100, 10}, {150, 10}, {150, 40}, {100, 40}, {100, 10}});
        s.Polyline({{5, 5}});
    });
    for (int x = 11; x < 60; ++x)
        EXPECT_EQ(ColorAt(image, x, 10), Red);
    for (int y = 11; y < 40; ++y)
        EXPECT_EQ(ColorAt(image, 60, y), Red);
    for (int x = 101; x < 150; ++x)
        EXPECT_EQ(ColorAt(image, x, 10), Blue);
    EXPECT_NE(ColorAt(image, 100, 10), White); // the corner where it closes
    EXPECT_EQ(ColorAt(image, 5, 5), White);
}

TEST(PngPicture, ARectangleCoversBothItsCorners) {
    ExpectOnly(Painted([](const DrawingSurface& s) {
                   s.SetPen({false, 0, 1});
                   s.SetBrush({BrushKind::Solid, Blue});
                   s.Rectangle({10, 20, 39, 59});
               }),
               Blue, Box(10, 20, 39, 59));
    const QImage outlined = Painted([](const DrawingSurface& s) {
        s.SetPen({true, Red, 1});
        s.SetBrush({BrushKind::Solid, Blue});
        s.Rectangle({10, 20, 39, 59});
    });
    EXPECT_EQ(Inked(outlined), Box(10, 20, 39, 59));
    EXPECT_EQ(CountOf(outlined, Red), 2 * 28 + 2 * 38); // the corners are shaded
    for (const QPoint corner : {QPoint(10, 20), QPoint(39, 20), QPoint(10, 59), QPoint(39, 59)})
        EXPECT_LT(ColorAt(outlined, corner.x(), corner.y()) & 0xFFU, 0x80U);
    EXPECT_EQ(CountOf(outlined, Blue), 28 * 38);
}

TEST(PngPicture, AreasAreFilledEvenOdd) {
    const QImage image = Painted([](const DrawingSurface& s) {
        s.SetPen({false, 0, 1});
        s.SetBrush({BrushKind::Solid, Blue});
        s.Polygon({{10, 10},
                   {110, 10},
                   {110, 110},
                   {10, 110},
                   {10, 10},
                   {40, 40},
                   {80, 40},
                   {80, 80},
                   {40, 80},
                   {40, 40}});
    });
    EXPECT_EQ(ColorAt(image, 25, 60), Blue);
    EXPECT_EQ(ColorAt(image, 60, 60), White);
    EXPECT_EQ(ColorAt(image, 120, 60), White);
}

TEST(PngPicture, AHollowBrushFillsNothing) {
    const QImage image = Painted([](const DrawingSurface& s) {
        s.SetPen({true, Red, 1});
        s.SetBrush({});
        s.Ellipse({20, 20, 80, 60});
    });
    EXPECT_EQ(ColorAt(image, 50, 40), White);
    EXPECT_EQ(Inked(image), Box(20, 20, 80, 60));
}

TEST(PngPicture, HatchesRunInTheirDirections) {
    const auto hatched = [](BrushKind kind) {
        return Painted([&](const DrawingSurface& s) {
            s.SetPen({false, 0, 1});
            s.SetBrush({kind, Blue});
            s.Rectangle({17, 17, 95, 95});
        });
    };
    const QImage across = hatched(BrushKind::Horizontal); // lines at the multiples of 8
    EXPECT_EQ(ColorAt(across, 50, 48), Blue);
    EXPECT_EQ(ColorAt(across, 53, 48), Blue);
    EXPECT_EQ(ColorAt(across, 50, 52), White);
    const QImage down = hatched(BrushKind::Vertical);
    EXPECT_EQ(ColorAt(down, 48, 50), Blue);
    EXPECT_EQ(ColorAt(down, 52, 50), White);
    const QImage falling = hatched(BrushKind::ForwardDiagonal);
    EXPECT_NE(ColorAt(falling, 50, 50), White);
    EXPECT_NE(ColorAt(falling, 51, 51), White);
    EXPECT_EQ(ColorAt(falling, 54, 50), White);
    const QImage rising = hatched(BrushKind::BackwardDiagonal);
    EXPECT_NE(ColorAt(rising, 50, 46), White);
    EXPECT_NE(ColorAt(rising, 51, 45), White);
    EXPECT_EQ(ColorAt(rising, 50, 50), White);
    EXPECT_GT(CountOf(hatched(BrushKind::Cross), Blue), CountOf(across, Blue));
    for (const QImage& image : {across, down, falling, rising})
        EXPECT_TRUE(Box(16, 16, 96, 96).contains(Inked(image))); // ends of slanting lines are cut square
}

TEST(PngPicture, ASliceRunsCounterclockwise) {
    const QImage image = Painted([](const DrawingSurface& s) {
        s.SetPen({false, 0, 1});
        s.SetBrush({BrushKind::Solid, Red});
        s.PieSlice({100, 80}, 60, 40, 0.0, 90.0);
        s.SetBrush({BrushKind::Solid, Blue});
        s.PieSlice({100, 80}, 60, 40, 180.0, 90.0);
    });
    EXPECT_EQ(ColorAt(image, 120, 65), Red);   // right, above
    EXPECT_EQ(ColorAt(image, 80, 65), White);  // left, above
    EXPECT_EQ(ColorAt(image, 80, 95), Blue);   // left, below
    EXPECT_EQ(ColorAt(image, 120, 95), White); // right, below
    EXPECT_EQ(ColorAt(image, 155, 45), White); // outside of the ellipse
}

TEST(PngPicture, AClipIncludesItsEdgesAndIsReplaced) {
    const auto fill = [](const DrawingSurface& s, Rgb color) {
        s.SetPen({false, 0, 1});
        s.SetBrush({BrushKind::Solid, color});
        s.Rectangle({0, 0, 199, 159});
    };
    ExpectOnly(Painted([&](const DrawingSurface& s) {
                   s.SetClip({5, 5, 9, 9});
                   s.SetClip({20, 30, 49, 59});
                   fill(s, Blue);
               }),
               Blue, Box(20, 30, 49, 59));
    ExpectOnly(Painted([&](const DrawingSurface& s) {
                   s.SetClip({20, 30, 49, 59});
                   s.ClearClip();
                   fill(s, Blue);
               }),
               Blue, Box(0, 0, 199, 159));
}

TEST(PngPicture, AWindowIsThePicture) {
    const PictureFile picture = OpenPng({"", 200, 160, 96.0, 96.0});
    picture.SetWindow({50, 40, 149, 99});
    picture.Surface.SetPen({true, Red, 1});
    picture.Surface.Line(60, 45, 80, 45);
    const std::string bytes = picture.Finish();
    const QImage image =
        QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()), "PNG");
    EXPECT_EQ(image.size(), QSize(100, 60));
    ExpectOnly(image, Red, Box(10, 5, 30, 5));
}

} // namespace Quillon
