// Scalable vector graphics, read back as a document.
#include "chart/targets/SvgFile.h"
#include "SvgReader.h"

#include <gtest/gtest.h>

namespace Quillon {

namespace {

PictureRequest Picture() {
    return {std::string("A & B\0Graph\0\0", 13), 400, 300, 96.0, 96.0};
}

template <typename Draw> SvgDocument DrawOn(const PictureRequest& request, const Draw& draw) {
    const PictureFile picture = OpenSvg(request);
    draw(picture.Surface);
    SvgDocument document = ReadSvg(picture.Finish());
    EXPECT_EQ(document.Problem, "");
    return document;
}

// The only element of that name.
SvgElement Only(const SvgDocument& document, const std::string& name) {
    const std::vector<SvgElement> all = document.All(name);
    EXPECT_EQ(all.size(), 1U) << name;
    return all.empty() ? SvgElement{} : all[0];
}

void ExpectLine(const SvgElement& line, double x1, double y1, double x2, double y2) {
    EXPECT_NEAR(line.Number("x1"), x1, 0.001);
    EXPECT_NEAR(line.Number("y1"), y1, 0.001);
    EXPECT_NEAR(line.Number("x2"), x2, 0.001);
    EXPECT_NEAR(line.Number("y2"), y2, 0.001);
}

} // namespace

TEST(SvgFile, SizeIsInPointsAndUnitsAreDeviceUnits) {
    const SvgDocument document = DrawOn(Picture(), [](const DrawingSurface&) {});
    const SvgElement& root = document.Elements.at(0);
    EXPECT_EQ(root.Name, "svg");
    EXPECT_EQ(root.Get("width"), "300pt");
    EXPECT_EQ(root.Get("height"), "225pt");
    EXPECT_EQ(root.Get("viewBox"), "-0.5 -0.5 400 300");
    EXPECT_EQ(Only(document, "title").Text, "A & B");
}

TEST(SvgFile, AWindowIsThePicture) {
    const PictureFile picture = OpenSvg(Picture());
    picture.SetWindow({40, 30, 135, 77});
    const SvgDocument document = ReadSvg(picture.Finish());
    EXPECT_EQ(document.Elements.at(0).Get("width"), "72pt");
    EXPECT_EQ(document.Elements.at(0).Get("height"), "36pt");
    EXPECT_EQ(document.Elements.at(0).Get("viewBox"), "39.5 29.5 96 48");
}

TEST(SvgFile, ALineIncludesItsEnds) {
    const std::vector<SvgElement> lines = DrawOn(Picture(), [](const DrawingSurface& s) {
                                              s.SetPen({true, 0x1A2B3C, 4});
                                              s.Line(10, 20, 50, 20);
                                              s.SetPen({true, 0xFF0000, 1});
                                              s.Line(10, 20, 10, 5);
                                              s.Line(7, 8, 7, 8);
                                          }).All("line");
    ASSERT_EQ(lines.size(), 3U);
    ExpectLine(lines[0], 9.5, 20.0, 50.5, 20.0);
    EXPECT_EQ(lines[0].Get("stroke"), "#1a2b3c");
    EXPECT_EQ(lines[0].Number("stroke-width"), 4.0);
    ExpectLine(lines[1], 10.0, 20.5, 10.0, 4.5);
    EXPECT_EQ(lines[1].Get("stroke"), "#ff0000");
    ExpectLine(lines[2], 6.5, 8.0, 7.5, 8.0); // a dot
}

TEST(SvgFile, PolylinesAreOpenOrClosed) {
    const SvgDocument document = DrawOn(Picture(), [](const DrawingSurface& s) {
        s.Polyline({{1, 2}, {30, -4}, {5, 6}});
        s.Polyline({{1, 2}, {30, 4}, {5, 6}, {1, 2}});
        s.Polyline({{1, 2}});
        s.Polyline({});
    });
    EXPECT_EQ(Only(document, "polyline").Get("points"), "1,2 30,-4 5,6");
    EXPECT_EQ(Only(document, "polygon").Get("points"), "1,2 30,4 5,6 1,2");
    EXPECT_EQ(Only(document, "polygon").Get("fill"), ""); // none, from the group around it
    EXPECT_TRUE(document.All("line").empty());
}

TEST(SvgFile, AreasAreFilledAndOutlined) {
    const SvgDocument document = DrawOn(Picture(), [](const DrawingSurface& s) {
        s.SetPen({true, 0x0000FF, 2});
        s.SetBrush({BrushKind::Solid, 0xFFCC00});
        s.Rectangle({10, 20, 40, 60});
        s.SetPen({false, 0, 1});
        s.Rectangle({10, 20, 40, 60});
        s.Ellipse({0, 0, 20, 10});
        s.SetBrush({});
        s.Polygon({{1, 1}, {5, 5}, {1, 5}}); // neither pen nor brush
    });
    const std::vector<SvgElement> rects = document.All("rect");
    ASSERT_EQ(rects.size(), 2U);
    EXPECT_EQ(rects[0].Get("fill"), "#ffcc00");
    EXPECT_EQ(rects[0].Get("stroke"), "#0000ff");
    EXPECT_EQ(rects[0].Number("x"), 10.0);
    EXPECT_EQ(rects[0].Number("width"), 30.0);
    EXPECT_EQ(rects[0].Number("height"), 40.0);
    // Without an outline the units of the edges are whole.
    EXPECT_EQ(rects[1].Get("stroke"), "");
    EXPECT_EQ(rects[1].Number("x"), 9.5);
    EXPECT_EQ(rects[1].Number("width"), 31.0);
    EXPECT_EQ(rects[1].Number("height"), 41.0);
    EXPECT_EQ(Only(document, "ellipse").Number("cx"), 10.0);
    EXPECT_EQ(Only(document, "ellipse").Number("rx"), 10.5);
    EXPECT_EQ(Only(document, "ellipse").Number("ry"), 5.5);
    EXPECT_TRUE(document.All("polygon").empty());
}

TEST(SvgFile, AHatchIsLinesUnderTheOutline) {
    const SvgDocument document = DrawOn(Picture(), [](const DrawingSurface& s) {
        s.SetBrush({BrushKind::Horizontal, 0x00AA00});
        s.Rectangle({10, 10, 50, 30});
    });
    EXPECT_EQ(Only(document, "path").Get("d"), "M10 16L50 16M10 24L50 24");
    EXPECT_EQ(Only(document, "path").Get("stroke"), "#00aa00");
    EXPECT_EQ(Only(document, "rect").Get("fill"), "");
    EXPECT_EQ(document.Elements.back().Name, "rect");
}

TEST(SvgFile, ASliceIsAnArcFromTheCentre) {
    const auto path = [](double start, double sweep) {
        const std::vector<SvgElement> all = DrawOn(Picture(), [&](const DrawingSurface& s) {
                                                s.PieSlice({100, 100}, 80, 40, start, sweep);
                                            }).All("path");
        return all.size() == 1 ? all[0].Get("d") : std::string();
    };
    EXPECT_EQ(path(0.0, 90.0), "M100 100L180 100A80 40 0 0 0 100 60Z");
    EXPECT_EQ(path(90.0, -90.0), "M100 100L100 60A80 40 0 0 1 180 100Z");
    EXPECT_EQ(path(180.0, 270.0), "M100 100L20 100A80 40 0 1 0 100 60Z");
    EXPECT_EQ(DrawOn(Picture(),
                     [](const DrawingSurface& s) {
                         s.PieSlice({100, 100}, 80, 40, 5.0, 360.0);
                     })
                  .All("ellipse")
                  .size(),
              1U);
}

TEST(SvgFile, TextIsTextWithItsFont) {
    const std::vector<SvgElement> texts = DrawOn(Picture(), [](const DrawingSurface& s) {
                                              s.SetFont({"Times New Roman", 20, true, 0});
                                              s.SetTextColor(0x00008B);
                                              s.Text(10, 20, "a < b & \xB5g  x>y");
                                              s.SetFont({"Arial", 1117, false, 90});
                                              s.Text(30, 40, "up");
                                              s.SetFont({"Symbol", 12, false, 0});
                                              s.Text(50, 60, "ab\x01\xA5");
                                          }).All("text");
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[0].Text, "a < b & \xC2\xB5g  x>y");
    EXPECT_TRUE(texts[0].Get("font-family").starts_with("'Times New Roman', "));
    EXPECT_TRUE(texts[0].Get("font-family").ends_with(", serif"));
    EXPECT_EQ(texts[0].Get("font-weight"), "bold");
    EXPECT_EQ(texts[0].Get("fill"), "#00008b");
    EXPECT_EQ(texts[0].Get("xml:space"), "preserve");
    EXPECT_EQ(texts[0].Get("transform"), "");
    EXPECT_EQ(texts[1].Get("transform"), "rotate(-90 29.5 39.5)");
    EXPECT_EQ(texts[1].Number("font-size"), 1000.0);
    EXPECT_EQ(texts[1].Get("font-weight"), "");
    EXPECT_EQ(texts[2].Text, "\xCE\xB1\xCE\xB2 \xE2\x88\x9E"); // alpha, beta, a blank, infinity
}

TEST(SvgFile, ReadersPulledLettersTogetherThatWereMeasuredApart) {
    const SvgDocument document = DrawOn(Picture(), [](const DrawingSurface& s) { s.Text(10, 20, "Total"); });
    const std::string style = Only(document, "g").Get("style");
    EXPECT_NE(style.find("font-kerning:none"), std::string::npos);
    EXPECT_NE(style.find("font-feature-settings:'kern' 0"), std::string::npos);
    const SvgDocument places = DrawOn(Picture(), [](const DrawingSurface& s) {
        s.SetFont({"Arial", 1117, false, 0}); // Helvetica: T 611, o 556 of the em of 1000
        s.Text(10, 20, "To ");
    });
    EXPECT_EQ(Only(places, "text").Get("x"), "9.5 620.5 1176.5");
}

TEST(SvgFile, AClipHoldsWhatIsDrawnInIt) {
    const SvgDocument document = DrawOn(Picture(), [](const DrawingSurface& s) {
        s.Line(0, 0, 1, 1);
        s.SetClip({10, 20, 109, 69});
        s.Line(0, 0, 2, 2);
        s.SetClip({0, 0, 9, 9});
        s.Line(0, 0, 3, 3);
        s.ClearClip();
        s.Line(0, 0, 4, 4);
        s.SetClip({0, 0, 5, 5}); // left open
    });
    std::vector<std::string> clips;
    for (const SvgElement& line : document.All("line"))
        clips.push_back(document.Elements[line.Parents.back()].Get("clip-path"));
    EXPECT_EQ(clips, (std::vector<std::string>{"", "url(#clip1)", "url(#clip2)", ""}));
    const std::vector<SvgElement> paths = document.All("clipPath");
    ASSERT_EQ(paths.size(), 3U);
    EXPECT_EQ(paths[0].Get("id"), "clip1");
    const SvgElement area = document.All("rect").at(0);
    EXPECT_EQ(document.Elements[area.Parents.back()].Get("id"), "clip1");
    EXPECT_EQ(area.Number("x"), 9.5);
    EXPECT_EQ(area.Number("y"), 19.5);
    EXPECT_EQ(area.Number("width"), 100.0);
    EXPECT_EQ(area.Number("height"), 50.0);
}

TEST(SvgFile, TheReaderSeesDamage) {
    EXPECT_EQ(ReadSvg("<svg><g></svg>").Problem, "closing tag");
    EXPECT_EQ(ReadSvg("<svg><g>").Problem, "not closed");
    EXPECT_EQ(ReadSvg("<svg>a & b</svg>").Problem, "entity");
    EXPECT_EQ(ReadSvg("<svg>a\tb</svg>").Problem, "control code");
    EXPECT_EQ(ReadSvg("<svg x=\"1\" x=\"2\"/>").Problem, "attribute twice");
    EXPECT_EQ(ReadSvg("<svg x=1/>").Problem, "attribute");
}

} // namespace Quillon
