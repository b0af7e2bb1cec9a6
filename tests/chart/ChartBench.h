#pragma once
// What the tests of the chart share: a fresh chart on a recording surface, and quick ways to plot.

#include "chart/CHART.h"
#include "platform/Narrow.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace Quillon {

// A fresh chart whose picture box is a recording surface; nothing of the test before is left.
class ChartBench : public ::testing::Test {
protected:
    ChartBench() {
        Chart = ChartModule{};
        Seams = ChartSeams{};
        Charts = ChartsForm{};
        Seams.IsCancelled = [this] { return Cancel != 0; };
        Seams.SetCancelled = [this](bool cancelled) { Cancel = Flag(cancelled); };
        SetScreenSurface(Screen.Surface());
    }
    ~ChartBench() override {
        Chart = ChartModule{};
        Seams = ChartSeams{};
        Charts = ChartsForm{};
    }

    // A spec as graph builders begin it.
    GraphSpec Begin(int graphType = GraphTypes::XYPlot, int plotStyle = PlotStyles::Lines) {
        GraphSpec spec;
        GraphInit(spec, graphType, plotStyle);
        Chart.GraphHeld = -1;
        return spec;
    }

    // A table with one column for each list; shorter ones are filled up with MissingValue.
    static SetTable Table(const std::vector<std::vector<float>>& sets) {
        std::size_t longest = 0;
        for (const auto& set : sets)
            longest = std::max(longest, set.size());
        SetTable table(static_cast<long>(longest), static_cast<long>(sets.size()));
        for (std::size_t s = 0; s < sets.size(); ++s)
            for (std::size_t p = 0; p < sets[s].size(); ++p)
                table(static_cast<long>(p) + 1, static_cast<long>(s) + 1) = sets[s][p];
        return table;
    }

    // Plots all columns of two tables, named "a", "b", ...
    void Plot(GraphSpec& spec, const SetTable& x, const SetTable& y) {
        std::vector<std::string> names;
        for (long set = 1; set <= y.Sets(); ++set)
            names.push_back(std::string(1, static_cast<char>('a' + (set - 1) % 26)));
        PlotSets(spec, x, y, static_cast<int>(y.Points()), 1, static_cast<int>(y.Sets()), names, {}, {});
    }

    // Pins an axis to a manual scale.
    static void Pin(GraphAxis& axis, float min, float max, float step) {
        axis.ScaleMode = ScaleModes::Manual;
        axis.Min = axis.FirstTic = min;
        axis.Max = max;
        axis.TicInterval = step;
    }

    // Where a value of AxisX1 or AxisY1 stands on the device, by the rule of three.
    static int Px(double x) {
        const GraphSpec& s = Chart.Spec;
        const double min = s.AxisX1.Min;
        return static_cast<int>(std::nearbyint(s.Frame.X1 + (s.Frame.X2 - s.Frame.X1) * (x - min) /
                                                                (static_cast<double>(s.AxisX1.Max) - min)));
    }
    static int Py(double y) {
        const GraphSpec& s = Chart.Spec;
        const double min = s.AxisY1.Min;
        return static_cast<int>(std::nearbyint(s.Frame.Y2 - (s.Frame.Y2 - s.Frame.Y1) * (y - min) /
                                                                (static_cast<double>(s.AxisY1.Max) - min)));
    }

    // What the step that draws the data has drawn: the items of a kind that are clipped to the frame.
    std::vector<DrawnItem> DataItems(const std::string& kind) const {
        const GraphBox& f = Chart.Spec.Frame;
        std::vector<DrawnItem> items;
        for (const DrawnItem& item : Screen.OfKind(kind))
            if (item.Clipped && item.Clip.Left == f.X1 - Chart.State.ClearX / 2 - 1 && item.Clip.Top < f.Y1)
                items.push_back(item);
        return items;
    }

    std::int16_t Cancel = 0;
    Script Outside;
    RecordingSurface Screen;
};

inline bool Within(const DeviceRect& inner, const DeviceRect& outer) {
    return inner.Left >= outer.Left && inner.Right <= outer.Right && inner.Top >= outer.Top &&
           inner.Bottom <= outer.Bottom;
}

inline bool Overlap(const DeviceRect& a, const DeviceRect& b) {
    return a.Left <= b.Right && b.Left <= a.Right && a.Top <= b.Bottom && b.Top <= a.Bottom;
}

inline DeviceRect RectOf(const GraphBox& box) {
    return {box.X1, box.Y1, box.X2, box.Y2};
}

} // namespace Quillon
