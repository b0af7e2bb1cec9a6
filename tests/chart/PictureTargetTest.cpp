// The chart engine paints a graph into a file: the whole way from data to the bytes under a name.
#include "chart/targets/PictureTarget.h"
#include "ChartBench.h"
#include "MetafileReader.h"
#include "SvgReader.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

namespace Quillon {

namespace {

class PictureTargetTest : public ChartBench {
protected:
    PictureTargetTest() { SetMetafileMaker(MakeMetafile); }

    std::string PathOf(const std::string& name) const { return Outside.Directory() + "/" + name; }

    // A line through four points on the lower left part of the page, 6 by 4 inches at 300 dots per inch.
    void PlotInto(const std::string& path) {
        GraphSpec spec = Begin();
        spec.Device = path;
        spec.View.X1 = 300;
        spec.View.Y1 = 600;
        spec.View.X2 = 2099;
        spec.View.Y2 = 1799;
        spec.Title1.Text = "Overlay <1>";
        spec.AxisX1.Title.Text = "r in cm";
        Pin(spec.AxisX1, 6.0F, 7.0F, 0.5F);
        Pin(spec.AxisY1, 0.0F, 2.0F, 1.0F);
        Plot(spec, Table({{6.1F, 6.3F, 6.6F, 6.9F}}), Table({{0.5F, 0.7F, 1.1F, 1.9F}}));
    }

    // Where those four points stand.
    static std::vector<std::pair<int, int>> Places() {
        return {{Px(6.1), Py(0.5)}, {Px(6.3), Py(0.7)}, {Px(6.6), Py(1.1)}, {Px(6.9), Py(1.9)}};
    }
};

} // namespace

TEST_F(PictureTargetTest, AMetafileHoldsTheGraph) {
    const std::string path = PathOf("graph.EMF");
    PlotInto(path);
    CloseMetafile();
    const EmfFile file = ReadMetafile(ReadWholeFile(path));
    ASSERT_EQ(file.Problem, "");
    const EmfRecord& header = file.Records.front();
    EXPECT_EQ(header.Word(32), 15240U); // 6 inches in hundredths of a millimetre
    EXPECT_EQ(header.Word(36), 10160U);
    EXPECT_EQ(header.Wide(header.Word(64), header.Word(60)), std::string("Quillon\0Graph\0\0", 15));
    std::string texts; // some stand in pieces
    bool line = false;
    for (const EmfItem& item : PlayMetafile(file)) {
        if (item.Kind == "text") texts += item.Text;
        if (item.Kind != "polyline" || item.Points.size() != 4) continue;
        line = true;
        EXPECT_TRUE(item.Clipped);
        std::vector<std::pair<int, int>> points;
        for (const DevicePoint point : item.Points)
            points.emplace_back(point.X, point.Y);
        EXPECT_EQ(points, Places());
    }
    EXPECT_NE(texts.find("Overlay <1>"), std::string::npos) << texts;
    EXPECT_TRUE(line);
}

TEST_F(PictureTargetTest, ANameOnSvgMakesVectorGraphics) {
    const std::string path = PathOf("graph.Svg");
    PlotInto(path);
    CloseMetafile();
    const SvgDocument document = ReadSvg(ReadWholeFile(path));
    ASSERT_EQ(document.Problem, "");
    EXPECT_EQ(document.Elements.at(0).Get("width"), "432pt");
    std::string wanted;
    for (const auto& [x, y] : Places())
        wanted += (wanted.empty() ? "" : " ") + std::to_string(x) + "," + std::to_string(y);
    const std::vector<SvgElement> lines = document.All("polyline");
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                            [&wanted](const SvgElement& line) { return line.Get("points") == wanted; }));
    const std::vector<SvgElement> texts = document.All("text");
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
                            [](const SvgElement& text) { return text.Text == "r in cm"; }));
}

TEST_F(PictureTargetTest, AFailedWriteIsTold) {
    PlotInto(PathOf("graph.emf"));
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    try {
        CloseMetafile();
        FAIL() << "the disk is full";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Disk full");
    }
    EXPECT_FALSE(Host.FileExists(PathOf("graph.emf")));
    EXPECT_NO_THROW(CloseMetafile()); // the picture is gone, and stands in nobody's way
}

TEST_F(PictureTargetTest, NothingIsWrittenBeforeTheEnd) {
    PlotInto(PathOf("graph.emf"));
    EXPECT_FALSE(Host.FileExists(PathOf("graph.emf")));
}

} // namespace Quillon
