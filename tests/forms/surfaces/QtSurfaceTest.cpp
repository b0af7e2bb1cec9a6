// A surface on a display of high resolution, and targets that change.
#include "forms/surfaces/QtSurface.h"
#include "PixelPicture.h"

#include <QPainter>

#include <gtest/gtest.h>

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

} // namespace Quillon
