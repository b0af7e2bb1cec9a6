// The whole engine under specs and data that no one has thought of: it ends, and draws nothing that a device
// with 16-bit units could not.
#include "ChartBench.h"

#include <limits>
#include <random>

namespace Quillon {
namespace {

class ChartFuzzTest : public ChartBench {
protected:
    int Below(int n) { return static_cast<int>(Random() % static_cast<unsigned>(n)); }
    bool Often() { return Below(4) > 0; }
    float Wild() {
        switch (Below(10)) {
        case 0:
            return 0.0F;
        case 1:
            return std::nanf("");
        case 2:
            return INFINITY;
        case 3:
            return MissingValue;
        case 4:
            return -1.0F;
        default:
            return std::pow(10.0F, static_cast<float>(Below(760)) / 10.0F - 38.0F) *
                   (Below(2) == 0 ? 1.0F : -1.0F);
        }
    }
    std::int16_t AnyWord() { return static_cast<std::int16_t>(Below(65536) - 32768); }
    std::int16_t Small(int n) { return Often() ? static_cast<std::int16_t>(Below(n)) : AnyWord(); }

    void MessUp(GraphTitle& title) {
        title.Text = std::string(static_cast<std::size_t>(Below(90)), static_cast<char>(32 + Below(90)));
        title.Font = Small(32);
        if (!Often()) title.Size = Wild();
        title.Color = Small(20);
        title.Justify = Small(6);
    }
    void MessUp(GraphAxis& axis) {
        MessUp(axis.Title);
        axis.Show = Small(2);
        axis.Grid = Small(2);
        axis.TicMode = Small(3);
        axis.ScaleType = Small(3);
        if (Often())
            axis.LogBase = Below(2) == 0 ? 10.0F : NaturalBase;
        else
            axis.LogBase = Wild();
        axis.ScaleMode = Small(4);
        if (!Often()) axis.Min = Wild();
        if (!Often()) axis.Max = Wild();
        if (!Often()) axis.Factor = Wild();
        if (!Often()) axis.FirstTic = Wild();
        if (!Often()) axis.TicInterval = Wild();
        if (!Often()) axis.LabelSize = Wild();
        axis.TicFormat = Small(3);
        axis.Decimals = Small(8);
        axis.AxisWidth = Small(50);
        axis.TicWidth = Small(50);
        axis.LabelFont = Small(32);
    }
    void MessUp(GraphBox& box) {
        if (Often()) return;
        box = {Small(800), Small(600), Small(800), Small(600), Small(16), {}};
    }
    void MessUp(GraphSpec& spec) {
        MessUp(spec.Title1);
        MessUp(spec.Title2);
        for (GraphAxis* axis : {&spec.AxisX1, &spec.AxisX2, &spec.AxisY1, &spec.AxisY2})
            MessUp(*axis);
        MessUp(spec.View);
        MessUp(spec.Frame);
        MessUp(spec.Legend.Box);
        spec.Relayout = Small(2);
        spec.SymbolMode = Small(4);
        spec.Legend.Show = Small(2);
        spec.Legend.Where = Small(4);
        spec.Legend.AutoPlace = Small(2);
        spec.Legend.TextColor = Small(20);
        if (!Often()) spec.Legend.Size = Wild();
        spec.LineWidth = Small(50);
    }
    void MessUpStyle() {
        ChartStyle& style = Chart.Style;
        const auto part = [&] { return static_cast<float>(Below(2001) - 1000) / 1000.0F; };
        style.TicSize = Often() ? 0.007F : part();
        style.SymbolSize = Often() ? 0.007F : std::fabs(part());
        style.Clearance = Often() ? 0.004F : std::fabs(part());
        style.BarWidth = std::fabs(part());
        style.UseRainbowColors = Below(2) == 0 ? 0 : -1;
        style.LineWidthFixed = Below(2) == 0 ? 0 : -1;
        style.LineWidthIncrease = Below(2) == 0 ? 0 : -1;
    }
    SetTable AnyTable(int points, int sets) {
        SetTable table(points, sets);
        const bool tame = Often();
        for (int s = 1; s <= sets; ++s)
            for (int p = 1; p <= points; ++p)
                table(p, s) = tame ? static_cast<float>(Below(1000)) / 100.0F : Wild();
        return table;
    }
    void ExpectDrawable() const {
        const auto fits = [](int v) { return v >= -70000 && v <= 70000; };
        for (const DrawnItem& item : Screen.Items) {
            for (const DevicePoint& p : item.Points)
                ASSERT_TRUE(fits(p.X) && fits(p.Y)) << ItemText(item);
            ASSERT_TRUE(fits(item.Rect.Left) && fits(item.Rect.Right)) << ItemText(item);
            ASSERT_TRUE(fits(item.Rect.Top) && fits(item.Rect.Bottom)) << ItemText(item);
        }
    }
    std::mt19937 Random{42};
};

TEST_F(ChartFuzzTest, PlotsOfAllTypes) {
    Outside.AnswerAllMessages(BoxAnswer::Ok);
    for (int round = 0; round < 1500; ++round) {
        Screen.Clear();
        Screen.Width = Often() ? 200 + Below(1000) : Below(50);
        Screen.Height = Often() ? 200 + Below(1000) : Below(50);
        Screen.HasColor = Below(2) == 0;
        GraphSpec spec = Begin(1 + round % 5, 1 + Below(3));
        MessUp(spec);
        MessUpStyle();
        const int points = 1 + Below(30);
        const int sets = Often() ? 1 + Below(6) : 1 + Below(90);
        std::vector<std::string> names(static_cast<std::size_t>(Below(sets + 1)), "name of a set");
        GraphNote note;
        note.Text = "note";
        note.X = Wild();
        note.Size = Wild();
        note.Direction = AnyWord();
        note.Align = Small(3);
        GraphMark mark{Small(7), Small(8), Small(20), Small(2), Wild(), Wild(), Wild(), Wild()};
        PlotSets(spec, AnyTable(points, sets), AnyTable(points, sets), points, 1, sets, names, {note},
                 {mark, mark});
        ExpectDrawable();
        Screen.Clear();
        MessUp(Chart.Spec.AxisX1); // as after a dialog
        MessUp(Chart.Spec.AxisY1);
        Chart.CatLabels.Recreate(Below(points + 1), std::string(static_cast<std::size_t>(Below(40)), 'c'));
        Replot();
        ShowGraph();
        ExpectDrawable();
        SetGraphComment("comment\\of two parts");
        DataText(',');
    }
}

} // namespace
} // namespace Quillon
