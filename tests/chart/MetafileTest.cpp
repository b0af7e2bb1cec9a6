// Enhanced metafiles: the records are read back, and what a player of them would draw is compared with what
// was asked for.
#include "MetafileCase.h"
#include "platform/RuntimeError.h"

#include <cmath>

namespace Quillon {

TEST(Metafile, HeaderTellsSizeDeviceAndDescription) {
    const EmfFile file = DrawOn(Page(), [](const DrawingSurface& s) { s.Line(0, 0, 10, 10); }).File;
    const EmfRecord& header = file.Records.front();
    // 3508 / 300 inch is 297.01 mm, 2480 / 300 inch is 209.97 mm.
    EXPECT_EQ(RectAt(header, 24), (std::vector<int>{0, 0, 29701, 20997}));
    EXPECT_EQ(header.Word(80), 297U);
    EXPECT_EQ(header.Word(84), 210U);
    EXPECT_EQ(header.Word(72), 3508U); // 297 mm at 300 dots per inch: 3507.9
    EXPECT_EQ(header.Word(76), 2480U);
    EXPECT_NEAR(header.Word(100), 297010.7, 1.0); // micrometres of 3508 dots
    EXPECT_EQ(header.Word(60), 15U);
    EXPECT_EQ(header.Wide(header.Word(64), 15), std::string("Quillon\0Graph\0\0", 15));
}

TEST(Metafile, SizesOfAnyDescriptionAreWholeWords) {
    for (std::size_t length = 0; length < 5; ++length) {
        PictureRequest request = SmallPicture();
        request.Description = std::string(length, 'x');
        const EmfFile file = DrawOn(request, [](const DrawingSurface&) {}).File;
        ASSERT_FALSE(file.Records.empty());
        EXPECT_EQ(file.Records.front().Word(60), length);
    }
}

TEST(Metafile, WindowIsOriginExtentAndFrame) {
    const PictureFile picture = OpenMetafile(Page());
    picture.SetWindow({250, 150, 1449, 1049}); // 1200 by 900 units: 4 by 3 inches
    picture.Surface.SetPen({true, 0, 1});
    picture.Surface.Line(300, 200, 400, 260);
    const EmfFile file = ReadMetafile(picture.Finish());
    ASSERT_EQ(file.Problem, "");
    const EmfRecord& header = file.Records.front();
    EXPECT_EQ(RectAt(header, 24), (std::vector<int>{0, 0, 10160, 7620}));
    EXPECT_EQ(RectAt(header, 8), (std::vector<int>{50, 50, 150, 110})); // from the window's corner
    const auto pointOf = [&file](std::uint32_t type) {
        const EmfRecord* record = FirstOf(file, type);
        return record == nullptr ? std::pair{-1, -1} : std::pair{record->Signed(8), record->Signed(12)};
    };
    EXPECT_EQ(pointOf(10), (std::pair{250, 150}));
    EXPECT_EQ(pointOf(9), (std::pair{1200, 900}));
    EXPECT_EQ(pointOf(12), (std::pair{0, 0}));
    EXPECT_EQ(pointOf(11), (std::pair{1200, 900}));
    ASSERT_NE(FirstOf(file, 17), nullptr);
    EXPECT_EQ(FirstOf(file, 17)->Word(8), 8U); // each axis has a scale of its own
}

TEST(Metafile, BoundsHoldWhatIsSeenOfWhatIsDrawn) {
    const auto bounds = [](const auto& draw) {
        return RectAt(DrawOn(SmallPicture(), draw).File.Records.front(), 8);
    };
    const SurfacePen wide = {true, 0, 5};
    EXPECT_EQ(bounds([&](const DrawingSurface& s) {
                  s.SetPen(wide);
                  s.Line(20, 30, 50, 30);
                  s.Line(60, 80, 60, 90);
              }),
              (std::vector<int>{18, 28, 62, 92}));
    EXPECT_EQ(bounds([](const DrawingSurface& s) { s.Line(-500, 10, 50000, 20); }),
              (std::vector<int>{0, 10, 399, 20}));
    EXPECT_EQ(bounds([](const DrawingSurface& s) {
                  s.SetClip({100, 100, 150, 120});
                  s.Rectangle({0, 0, 399, 299});
              }),
              (std::vector<int>{100, 100, 150, 120}));
}

TEST(Metafile, NothingDrawnHasEmptyBounds) {
    EXPECT_EQ(RectAt(DrawOn(SmallPicture(), [](const DrawingSurface&) {}).File.Records.front(), 8),
              (std::vector<int>{0, 0, -1, -1}));
    EXPECT_EQ(RectAt(DrawOn(SmallPicture(), [](const DrawingSurface& s) { s.Line(500, 10, 600, 20); })
                         .File.Records.front(),
                     8),
              (std::vector<int>{0, 0, -1, -1}));
}

TEST(Metafile, PointsTakeSixteenBitsWhereTheyFit) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.Polyline({{0, 0}, {32767, -32768}, {5, 7}});
                                           s.Polyline({{0, 0}, {32768, 1}, {5, 7}});
                                           s.Polygon({{1, 2}, {3, 4}, {5, 6}});
                                           s.Polygon({{1, 2}, {3, -32769}, {5, 6}});
                                       }).Items;
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].Kind, "polyline");
    EXPECT_FALSE(items[0].Wide);
    EXPECT_EQ(Pairs(items[0].Points), (Places{{0, 0}, {32767, -32768}, {5, 7}}));
    EXPECT_TRUE(items[1].Wide);
    EXPECT_EQ(Pairs(items[1].Points), (Places{{0, 0}, {32768, 1}, {5, 7}}));
    EXPECT_EQ(items[2].Kind, "polygon");
    EXPECT_FALSE(items[2].Wide);
    EXPECT_EQ(Pairs(items[2].Points), (Places{{1, 2}, {3, 4}, {5, 6}}));
    EXPECT_TRUE(items[3].Wide);
    EXPECT_EQ(Pairs(items[3].Points), (Places{{1, 2}, {3, -32769}, {5, 6}}));
}

TEST(Metafile, EachItemHasItsPenAndBrush) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetPen({true, 0x123456, 3});
                                           s.Line(1, 1, 9, 9);
                                           s.SetBrush({BrushKind::Solid, 0xFF8000});
                                           s.Rectangle({10, 20, 30, 40});
                                           s.SetPen({false, 0, 1});
                                           s.Rectangle({10, 20, 30, 40});
                                           s.SetPen({true, 0x123456, 1});
                                           s.SetBrush({});
                                           s.Ellipse({1, 2, 11, 22});
                                       }).Items;
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].PenColor, 0x123456U);
    EXPECT_EQ(items[0].PenWidth, 3);
    EXPECT_TRUE(items[1].Filled);
    EXPECT_EQ(items[1].FillColor, 0xFF8000U);
    EXPECT_EQ(Pairs(items[1].Points), (Places{{10, 20}, {30, 40}}));
    EXPECT_FALSE(items[2].PenVisible);
    // A shape without an outline ends short of its right and bottom edges.
    EXPECT_EQ(Pairs(items[2].Points), (Places{{10, 20}, {31, 41}}));
    EXPECT_FALSE(items[3].Filled);
    EXPECT_EQ(items[3].PenWidth, 1);
    EXPECT_EQ(Pairs(items[3].Points), (Places{{1, 2}, {11, 22}}));
}

TEST(Metafile, TheDrawModeFollowsThePen) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetPen({true, 0, 1});
                                           s.Line(0, 0, 9, 9);
                                           s.SetPen({true, 0, 1, true});
                                           s.Line(0, 0, 9, 9);
                                           s.SetClip({0, 0, 50, 50});
                                           s.Line(0, 0, 9, 9);
                                           s.ClearClip();
                                           s.Line(0, 0, 9, 9);
                                           s.SetPen({false, 0, 1, true});
                                           s.SetBrush({BrushKind::Solid, 0xFF});
                                           s.Rectangle({0, 0, 9, 9});
                                       }).Items;
    std::vector<std::uint32_t> modes;
    for (const EmfItem& item : items)
        modes.push_back(item.DrawMode);
    EXPECT_EQ(modes, (std::vector<std::uint32_t>{13, 10, 10, 10, 13}));
}

TEST(Metafile, AnObjectIsMadeOnceAndUsedAgain) {
    const EmfFile file = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                             for (int i = 0; i < 20; ++i) {
                                 s.SetPen({true, i % 2 == 0 ? 0xFF0000U : 0x0000FFU, 2});
                                 s.Line(0, i, 100, i);
                             }
                         }).File;
    EXPECT_EQ(file.Records.front().Word(56), 3U); // two pens and the metafile itself
}

TEST(Metafile, TheThinnestPenIsSeenOnPaper) {
    PictureRequest fine = SmallPicture();
    fine.DotsPerInchX = fine.DotsPerInchY = 1200.0;
    const std::vector<EmfItem> items = DrawOn(fine, [](const DrawingSurface& s) {
                                           s.SetPen({true, 0, 0});
                                           s.Line(0, 0, 100, 0);
                                       }).Items;
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].PenWidth, 3); // 0.2 points are 3.3 units
}

TEST(Metafile, ALineWithoutLengthIsADot) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetPen({true, 0, 6});
                                           s.Line(50, 60, 50, 60);
                                           s.Polyline({{7, 8}, {7, 8}, {7, 8}});
                                           s.SetPen({true, 0, 1});
                                           s.Line(50, 60, 50, 60);
                                       }).Items;
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(Pairs(items[0].Points), (Places{{47, 60}, {53, 60}}));
    EXPECT_EQ(Pairs(items[1].Points), (Places{{4, 8}, {10, 8}}));
    EXPECT_EQ(Pairs(items[2].Points), (Places{{50, 60}, {51, 60}}));
}

TEST(Metafile, NothingIsDrawnWithoutAPenAndPoints) {
    EXPECT_TRUE(DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                    s.Polyline({});
                    s.Polygon({});
                    s.Text(5, 5, "");
                    s.SetPen({false, 0, 1});
                    s.Line(1, 1, 5, 5);
                    s.Polyline({{1, 1}, {2, 2}, {3, 3}});
                }).Items.empty());
}

TEST(Metafile, AHatchIsLinesUnderTheOutline) {
    const std::vector<EmfItem> items = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
                                           s.SetPen({true, 0x0000FF, 2});
                                           s.SetBrush({BrushKind::Horizontal, 0x00FF00});
                                           s.Rectangle({10, 10, 50, 30});
                                       }).Items;
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].Kind, "segments");
    EXPECT_EQ(items[0].PenColor, 0x00FF00U);
    EXPECT_EQ(items[0].PenWidth, 1);
    // Every twelfth of an inch from the origin.
    EXPECT_EQ(Pairs(items[0].Points), (Places{{10, 16}, {50, 16}, {10, 24}, {50, 24}}));
    EXPECT_EQ(items[1].Kind, "rectangle");
    EXPECT_EQ(items[1].PenColor, 0x0000FFU);
    EXPECT_FALSE(items[1].Filled);
}

// --- slices --------------------------------------------------------------------------------------------

TEST(Metafile, ASliceRunsCounterclockwiseBetweenItsRays) {
    const auto rays = [](double start, double sweep) {
        const std::vector<EmfItem> items = DrawOn(SmallPicture(), [&](const DrawingSurface& s) {
                                               s.PieSlice({200, 150}, 100, 50, start, sweep);
                                           }).Items;
        std::vector<double> angles;
        if (items.size() != 1 || items[0].Kind != "pie") return angles;
        EXPECT_EQ(Pairs({items[0].Points[0], items[0].Points[1]}), (Places{{100, 100}, {300, 200}}));
        for (const std::size_t i : {2U, 3U}) // of the circle that the ellipse is a stretched form of
            angles.push_back(std::atan2(150 - items[0].Points[i].Y, (items[0].Points[i].X - 200) / 2.0) *
                             180.0 / 3.14159265358979);
        return angles;
    };
    const auto expectRays = [&](double start, double sweep, double from, double to) {
        const std::vector<double> angles = rays(start, sweep);
        ASSERT_EQ(angles.size(), 2U);
        EXPECT_NEAR(angles[0], from, 0.01);
        EXPECT_NEAR(angles[1], to, 0.01);
    };
    expectRays(0.0, 90.0, 0.0, 90.0);
    expectRays(90.0, -90.0, 0.0, 90.0);
    expectRays(30.0, 100.0, 30.0, 130.0);
    expectRays(10.0, 0.02, 10.0, 10.02);
    const auto kind = [](double sweep) {
        const std::vector<EmfItem> items = DrawOn(SmallPicture(), [&](const DrawingSurface& s) {
                                               s.PieSlice({200, 150}, 100, 50, 20.0, sweep);
                                           }).Items;
        return items.empty() ? "" : items[0].Kind;
    };
    EXPECT_EQ(kind(360.0), "ellipse");
    EXPECT_EQ(kind(0.0), ""); // would be the whole
}

// --- limits, and the reader itself ---------------------------------------------------------------------

TEST(Metafile, MoreObjectsThanTheFormatCountsOverflow) {
    const PictureFile picture = OpenMetafile(SmallPicture());
    const auto drawWith = [&picture](unsigned color) {
        picture.Surface.SetPen({true, color, 1});
        picture.Surface.Line(0, 0, 9, 9);
    };
    for (unsigned color = 1; color <= 65534; ++color)
        drawWith(color);
    try {
        drawWith(65535);
        FAIL() << "one object too many";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Overflow");
    }
    drawWith(1); // known
    EXPECT_EQ(ReadMetafile(picture.Finish()).Problem, "");
}

TEST(Metafile, TheReaderSeesDamage) {
    const PictureFile picture = OpenMetafile(SmallPicture());
    picture.Surface.Line(0, 0, 9, 9);
    const std::string good = picture.Finish();
    ASSERT_EQ(ReadMetafile(good).Problem, "");
    const auto damaged = [&good](std::size_t at, char value) {
        std::string bytes = good;
        bytes.at(at) = value;
        return ReadMetafile(bytes).Problem;
    };
    EXPECT_EQ(damaged(40, 'x'), "signature");
    EXPECT_EQ(damaged(52, 1), "records of the header");
    EXPECT_EQ(damaged(56, 9), "handles of the header");
    EXPECT_EQ(damaged(4, 7), "size of a record");
    EXPECT_EQ(ReadMetafile(good.substr(0, good.size() - 4)).Problem, "a record is cut");
    EXPECT_EQ(ReadMetafile(good.substr(0, good.size() - 20)).Problem, "bytes of the header");
}

// A reader that is used for drawings showed nothing of what was clipped to the whole picture.
TEST(Metafile, AClipToTheWholePictureIsNone) {
    const Drawn drawn = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
        s.SetClip({0, 0, 399, 299});
        s.SetPen({true, 0, 1});
        s.Line(10, 10, 50, 10);
        s.ClearClip();
    });
    constexpr std::uint32_t save = 33;
    EXPECT_EQ(FirstOf(drawn.File, save), nullptr);
    ASSERT_EQ(drawn.Items.size(), 1U);
    EXPECT_FALSE(drawn.Items[0].Clipped);
}

// Some readers bring the clip back with the context and leave the pen: the line behind a legend was not seen.
TEST(Metafile, PensAreSelectedAnewBehindAClip) {
    constexpr std::uint32_t select = 37, restore = 34;
    const Drawn drawn = DrawOn(SmallPicture(), [](const DrawingSurface& s) {
        s.SetPen({true, 0x0000FF, 3});
        s.Line(10, 10, 50, 10);
        s.SetClip({0, 0, 100, 100});
        s.SetPen({true, 0xFF0000, 3});
        s.Line(10, 20, 50, 20);
        s.ClearClip();
        s.SetPen({true, 0x0000FF, 3});
        s.Line(10, 30, 50, 30);
    });
    bool restored = false, selected = false;
    for (const EmfRecord& record : drawn.File.Records) {
        restored |= record.Type == restore;
        selected |= restored && record.Type == select;
    }
    EXPECT_TRUE(selected);
    ASSERT_EQ(drawn.Items.size(), 3U);
    EXPECT_EQ(drawn.Items[2].PenColor, 0x0000FFU);
}

} // namespace Quillon
