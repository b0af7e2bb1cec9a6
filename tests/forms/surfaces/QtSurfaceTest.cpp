// A surface on a display of high resolution, and targets that change.
#include "forms/surfaces/QtSurface.h"
#include "PixelPicture.h"
#include "forms/surfaces/Application.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace Quillon {

namespace {

// A picture of 100 by 80 logical pixels with two physical ones to each.
struct FineScreen {
    FineScreen() {
        NeedApplication();
        Image = QImage(200, 160, QImage::Format_RGB32);
        Image.setDevicePixelRatio(2.0);
        Image.fill(Qt::white);
        Painter.begin(&Image);
        Target = std::make_shared<PainterTarget>();
        Target->Painter = &Painter;
        Target->Width = 200;
        Target->Height = 160;
        Target->DotsPerInchX = Target->DotsPerInchY = 192.0;
        Target->Scale = 0.5;
    }
    const QImage& Done() {
        Painter.end();
        return Image;
    }
    QImage Image;
    QPainter Painter;
    std::shared_ptr<PainterTarget> Target;
};

} // namespace

TEST(QtSurface, AUnitIsAPhysicalPixel) {
    FineScreen screen;
    const DrawingSurface surface = PainterSurface(screen.Target);
    EXPECT_EQ(surface.Width(), 200);
    EXPECT_EQ(surface.DotsPerInchY(), 192.0);
    surface.SetClip({0, 0, 150, 159});
    surface.SetPen({true, 0xFF0000, 1});
    surface.Line(31, 41, 199, 41);
    const QImage& image = screen.Done();
    EXPECT_EQ(Inked(image), QRect(31, 41, 120, 1));
    EXPECT_EQ(CountOf(image, 0xFF0000), 120);
}

TEST(QtSurface, WhatIsDrawnTwiceByExclusiveOrIsGone) {
    for (const int times : {1, 2}) {
        FineScreen screen;
        const DrawingSurface surface = PainterSurface(screen.Target);
        surface.SetPen({true, 0x2040C0, 3, true});
        surface.SetBrush({BrushKind::Solid, 0x2040C0});
        for (int i = 0; i < times; ++i) {
            surface.Line(10, 10, 110, 90);
            surface.Rectangle({20, 100, 60, 140});
        }
        surface.SetPen({true, 0x00FF00, 1}); // what follows replaces again
        surface.Line(150, 10, 160, 10);
        const QImage& image = screen.Done();
        EXPECT_EQ(CountOf(image, 0x00FF00), 11);
        if (times == 1) {
            EXPECT_GT(CountOf(image, 0x2040C0), 1600); // on white it has its own colour
        } else {
            EXPECT_EQ(Inked(image), QRect(150, 10, 11, 1));
        }
    }
}

TEST(QtSurface, TextIsAsLargeInPhysicalPixels) {
    FineScreen screen;
    const DrawingSurface surface = PainterSurface(screen.Target);
    surface.SetFont({"Arial", 40, false, 0});
    const TextSize size = surface.Measure("HHH");
    surface.Text(20, 100, "HHH");
    const QRect ink = Inked(screen.Done());
    EXPECT_NEAR(ink.width(), size.Width, 8);
    EXPECT_NEAR(ink.bottom(), 99, 1);
}

TEST(QtSurface, SizesAndRefreshAreThoseOfTheMoment) {
    FineScreen screen;
    const DrawingSurface surface = PainterSurface(screen.Target);
    surface.Refresh(); // has nothing to do
    int refreshed = 0;
    screen.Target->Refresh = [&refreshed] { ++refreshed; };
    screen.Target->Width = 120;
    screen.Target->HasColor = false;
    surface.Refresh();
    EXPECT_EQ(refreshed, 1);
    EXPECT_EQ(surface.Width(), 120);
    EXPECT_FALSE(surface.HasColor());
}

TEST(QtSurface, TheOriginIsAtTheCorner) {
    FineScreen screen;
    screen.Target->Origin = {1000, 500};
    const DrawingSurface surface = PainterSurface(screen.Target);
    surface.SetPen({true, 0x0000FF, 1});
    surface.Line(1010, 520, 1030, 520);
    EXPECT_EQ(Inked(screen.Done()), QRect(10, 20, 21, 1));
}

TEST(QtSurface, AThinPenIsNoThinnerThanTheTargets) {
    FineScreen screen;
    screen.Target->ThinnestPen = 5.0;
    const DrawingSurface surface = PainterSurface(screen.Target);
    surface.SetPen({true, 0x0000FF, 1});
    surface.Line(10, 50, 60, 50);
    EXPECT_EQ(Inked(screen.Done()), QRect(10, 48, 51, 5));
}

namespace {

// Symbols of all kinds, apart from each other, on a ground of two colours; the first of each kind at a place
// of its own, so that whatever is kept of it has to be moved.
QImage Symbols(bool stamps, int penWidth, BrushKind kind) {
    NeedApplication();
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(0xFFE0F0FF);
    QPainter painter(&image);
    const auto target = std::make_shared<PainterTarget>();
    target->Painter = &painter;
    target->Width = 300;
    target->Height = 200;
    target->Stamps = stamps;
    const DrawingSurface surface = PainterSurface(target);
    surface.SetClip({5, 5, 280, 180});
    for (int row = 0; row < 4; ++row) {
        surface.SetPen({true, static_cast<Rgb>(0x0072B2 + row * 0x301000), penWidth});
        surface.SetBrush({kind, row % 2 == 0 ? 0xFFFFFFU : 0xC02080U});
        for (int x = 7; x < 295; x += 23) {
            const int y = 10 + 45 * row + x % 5;
            surface.Polygon({{x, y - 5}, {x + 6, y}, {x, y + 5}, {x - 6, y}});
            surface.Ellipse({x - 4, y + 15, x + 4, y + 23});
            surface.Ellipse({x - 4, y + 30, x + 4 + row, y + 38});
        }
    }
    painter.end();
    return image;
}

int Farthest(const QImage& one, const QImage& other) {
    int farthest = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y), b = other.pixel(x, y);
            farthest = std::max({farthest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                 std::abs(qBlue(a) - qBlue(b))});
        }
    return farthest;
}

} // namespace

// Of 255 shades: mixing in another order rounds once more.
TEST(QtSurface, SymbolsThatAreSetDownLookLikeThoseThatArePainted) {
    for (const int width : {1, 2, 3})
        for (const BrushKind kind : {BrushKind::Hollow, BrushKind::Solid}) {
            const QImage painted = Symbols(false, width, kind);
            EXPECT_LE(Farthest(painted, Symbols(true, width, kind)), 2) << width;
            EXPECT_GE(Farthest(painted, Symbols(true, width + 1, kind)), 100)
                << "the comparison sees nothing";
        }
}

} // namespace Quillon
