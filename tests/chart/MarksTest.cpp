// Marks and notes.
#include "ChartBench.h"

namespace Quillon {
namespace {

class MarksTest : public ChartBench {
protected:
    void PlotWith(const std::vector<GraphNote>& notes, const std::vector<GraphMark>& marks) {
        GraphSpec spec = Begin();
        Pin(spec.AxisX1, 0.0F, 10.0F, 1.0F);
        Pin(spec.AxisY1, 0.0F, 1.0F, 0.1F);
        const SetTable x = Table({{5}});
        PlotSets(spec, x, x, 1, 1, 1, {}, notes, marks);
    }
    static GraphMark Mark(std::int16_t kind, float x1, float y1, float x2, float y2) {
        GraphMark mark;
        mark.Kind = kind;
        mark.X1 = x1;
        mark.Y1 = y1;
        mark.X2 = x2;
        mark.Y2 = y2;
        return mark;
    }
    // What was drawn clipped to the view.
    std::vector<std::string> Drawn(const std::string& kind) const {
        std::vector<std::string> lines;
        for (const DrawnItem& item : Screen.OfKind(kind))
            if (item.Clipped && item.Clip.Left == 0 && item.Clip.Right == 799)
                lines.push_back(ItemText(item));
        return lines;
    }
    static std::string Place(double x, double y) {
        return std::to_string(Px(x)) + "," + std::to_string(Py(y));
    }
};

using Texts = std::vector<std::string>;

TEST_F(MarksTest, Lines) {
    PlotWith({}, {Mark(0, 1, 0.2F, 3, 0.4F), Mark(3, 2, 0, 0, 0), Mark(4, 0, 0.5F, 0, 0)});
    EXPECT_EQ(Drawn("line"),
              (Texts{"line " + Place(1, 0.2) + " " + Place(3, 0.4), "line " + Place(2, 0) + " " + Place(2, 1),
                     "line " + Place(0, 0.5) + " " + Place(10, 0.5)}));
}

TEST_F(MarksTest, ArrowHeads) {
    PlotWith({}, {Mark(1, 1, 0.5F, 3, 0.5F), Mark(2, 5, 0.2F, 5, 0.8F)});
    const int length = 2 * Chart.State.SymbolHalfX;
    const auto lines = Drawn("line");
    ASSERT_EQ(lines.size(), 3U + 5U);
    // To the right: the arms go back from the tip at 30 degrees.
    const int back = static_cast<int>(std::nearbyint(Px(3) - length * std::cos(0.5235987756)));
    const int aside = static_cast<int>(std::nearbyint(length * 0.5));
    const std::string tip = "line " + Place(3, 0.5) + " ";
    EXPECT_EQ(lines[1], tip + std::to_string(back) + "," + std::to_string(Py(0.5) - aside));
    EXPECT_EQ(lines[2], tip + std::to_string(back) + "," + std::to_string(Py(0.5) + aside));
    // Upward, with a head at both ends: those at the upper tip lie below it, those at the lower one above.
    for (int i = 4; i <= 7; ++i) {
        const DrawnItem* found = nullptr;
        for (const DrawnItem& item : Screen.Items)
            if (ItemText(item) == lines[static_cast<std::size_t>(i)]) found = &item;
        ASSERT_NE(found, nullptr);
        if (i < 6)
            EXPECT_GT(found->Points[1].Y, Py(0.8));
        else
            EXPECT_LT(found->Points[1].Y, Py(0.2));
    }
}

TEST_F(MarksTest, EllipsesAndTheirFill) {
    GraphMark solid = Mark(5, 5, 0.5F, 1, 0.1F);
    solid.Color = 4;
    GraphMark hatched = solid;
    hatched.Fill = 2;
    PlotWith({}, {solid, hatched});
    std::vector<DrawnItem> ellipses = Screen.OfKind("ellipse");
    ASSERT_EQ(ellipses.size(), 2U);
    EXPECT_EQ(ellipses[0].Brush.Kind, BrushKind::Solid);
    EXPECT_EQ(ellipses[0].Brush.Color, ToRgb(BasicColor(12)));
    EXPECT_EQ(ellipses[1].Brush.Kind, BrushKind::Vertical);
    EXPECT_NEAR(ellipses[0].Rect.Left, Px(4), 1);
    EXPECT_NEAR(ellipses[0].Rect.Right, Px(6), 1);
    EXPECT_NEAR(ellipses[0].Rect.Top, Py(0.6), 1);
    EXPECT_NEAR(ellipses[0].Rect.Bottom, Py(0.4), 1);
}

TEST_F(MarksTest, ExclusiveOr) {
    GraphMark plain = Mark(5, 5, 0.5F, 1, 0.1F);
    GraphMark exclusive = plain;
    exclusive.XorDraw = 1;
    PlotWith({}, {exclusive, plain});
    const std::vector<DrawnItem> ellipses = Screen.OfKind("ellipse");
    ASSERT_EQ(ellipses.size(), 2U);
    EXPECT_TRUE(ellipses[0].Pen.Exclusive);
    EXPECT_EQ(ellipses[0].Pen.Color, ellipses[1].Pen.Color);
    EXPECT_EQ(ellipses[0].Pen.Width, ellipses[1].Pen.Width);
    EXPECT_FALSE(ellipses[1].Pen.Exclusive);
}

TEST_F(MarksTest, WithoutAPlaceNothingIsDrawn) {
    PlotWith({}, {Mark(0, MissingValue, 0, 1, 1), Mark(3, std::nanf(""), 0, 0, 0),
                  Mark(5, 1, 1, 1, MissingValue)});
    EXPECT_TRUE(Drawn("line").empty());
    EXPECT_TRUE(Drawn("ellipse").empty());
}

TEST_F(MarksTest, FarPlacesAreHarmless) {
    PlotWith({}, {Mark(2, -3e38F, -3e38F, 3e38F, 3e38F), Mark(5, 1e30F, 0, 1e38F, 1e-38F)});
    EXPECT_FALSE(Drawn("line").empty());
}

TEST_F(MarksTest, ALineToFarBeyondKeepsItsSlope) {
    PlotWith({}, {Mark(1, 0, 0, 1e6F, 1e5F)}); // along the diagonal of the scale
    const auto lines = Drawn("line");
    ASSERT_EQ(lines.size(), 1U); // its head is not seen
    for (const DrawnItem& item : Screen.Items) {
        if (ItemText(item) != lines[0]) continue;
        EXPECT_EQ(item.Points[0].X, Px(0));
        EXPECT_EQ(item.Points[0].Y, Py(0));
        const double slope = static_cast<double>(Py(1) - Py(0)) / (Px(10) - Px(0));
        EXPECT_NEAR(static_cast<double>(item.Points[1].Y - Py(0)) / (item.Points[1].X - Px(0)), slope, 0.002);
    }
    Screen.Clear();
    PlotWith({}, {Mark(2, -50, 0.5F, 5, 0.5F)}); // the head that is seen
    EXPECT_EQ(Drawn("line").size(), 3U);
    Screen.Clear();
    PlotWith({}, {Mark(0, 20, 5, 30, 9)}); // nothing of it is on the device
    EXPECT_TRUE(Drawn("line").empty());
}

TEST_F(MarksTest, Notes) {
    std::vector<GraphNote> notes;
    for (std::int16_t direction = 0; direction <= 3; ++direction)
        for (std::int16_t align = 0; align <= 2; ++align) {
            GraphNote note;
            note.Text = "n" + std::to_string(direction) + std::to_string(align);
            note.Font = 3;
            note.Size = 0.02F;
            note.Direction = direction;
            note.Align = align;
            note.X = 2;
            note.Y = 0.75F;
            notes.push_back(note);
        }
    PlotWith(notes, {});
    const GraphBox& f = Chart.Spec.Frame;
    for (int direction = 0; direction <= 3; ++direction) {
        const std::string stem = "n" + std::to_string(direction);
        const DrawnItem* start = Screen.FindText(stem + "0");
        ASSERT_NE(start, nullptr);
        EXPECT_EQ(start->Font.Angle, 90 * direction);
        EXPECT_EQ(ItemText(*start).substr(0, 5 + Place(2, 0.75).size()), "text " + Place(2, 0.75));
        const DeviceRect centred = TextBounds(*Screen.FindText(stem + "1"));
        EXPECT_NEAR((centred.Left + centred.Right) / 2, Px(2), 2) << stem;
        EXPECT_NEAR((centred.Top + centred.Bottom) / 2, Py(0.75), 2) << stem;
        const DeviceRect onFrame = TextBounds(*Screen.FindText(stem + "2"));
        if (direction % 2 == 0) {
            EXPECT_NEAR((onFrame.Left + onFrame.Right) / 2, (f.X1 + f.X2) / 2, 2) << stem;
            EXPECT_NEAR((onFrame.Top + onFrame.Bottom) / 2, Py(0.75), 2) << stem;
        } else {
            EXPECT_NEAR((onFrame.Left + onFrame.Right) / 2, Px(2), 2) << stem;
            EXPECT_NEAR((onFrame.Top + onFrame.Bottom) / 2, (f.Y1 + f.Y2) / 2, 2) << stem;
        }
    }
}

TEST_F(MarksTest, NotesWithoutTextOrPlace) {
    GraphNote blank;
    blank.Text = "  ";
    GraphNote nowhere;
    nowhere.Text = "nowhere";
    nowhere.X = MissingValue;
    PlotWith({blank, nowhere}, {});
    EXPECT_EQ(Screen.FindText("nowhere"), nullptr);
}

} // namespace
} // namespace Quillon
