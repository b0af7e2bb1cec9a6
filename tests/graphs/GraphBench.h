#pragma once
// What the tests of the graphs share: a fit set down number by number, and a fresh chart on a recording
// surface.

#include "chart/CHART.h"
#include "graphs/kinds/PickSet.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Quillon {

// The points of a set of the fit: Points measured ones with constraints' pseudo-points behind them.
struct BenchSet {
    long Row;
    int Points, PseudoPoints;
};

class GraphBench : public ::testing::Test {
protected:
    GraphBench();
    ~GraphBench() override;

    // A fit of these sets. Set k has its points at x = -0.2 + 0.1 i + 0.01 k with the value k + 0.125 i;
    // residuals are +size and -size in turn. Scans have three points before the range and two behind it.
    void FillFit(const std::vector<BenchSet>& sets, float size);

    // Three sets of five, three and four points, in the rows 2, 4 and 5; the second has two pseudo-points.
    void FillThreeSets(float size = 0.0078125F) { FillFit({{2, 5, 0}, {4, 3, 2}, {5, 4, 0}}, size); }

    // The flat numbers of the measured points of a set.
    std::vector<long> PointsOf(long set) const;

    // Series s of the chart against flat vectors at the points of a set, and nothing behind them.
    void ExpectSeries(long series, const std::vector<float>& x, const std::vector<float>& y) const;
    std::vector<float> At(long set, const OneBased<float>& values) const;

    std::vector<std::string> Names() const { return {Chart.SetNames.begin(), Chart.SetNames.end()}; }

    // The items that draw the data: those of a kind that are clipped to the frame and a little more.
    std::vector<DrawnItem> DataItems(const std::string& kind) const;

    Script Outside;
    RecordingSurface Screen;

private:
    std::vector<BenchSet> Sets;
};

} // namespace Quillon
