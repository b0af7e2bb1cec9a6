#include "GraphBench.h"

#include "platform/Narrow.h"

namespace Quillon {

GraphBench::GraphBench() {
    Chart = ChartModule{};
    Seams = ChartSeams{};
    Charts = ChartsForm{};
    PickSetWindow = PickSetForm{};
    Work = FreshWorkspace();
    SetScreenSurface(Screen.Surface());
}

GraphBench::~GraphBench() {
    Chart = ChartModule{};
    Seams = ChartSeams{};
    Charts = ChartsForm{};
}

void GraphBench::FillFit(const std::vector<BenchSet>& sets, float size) {
    Sets = sets;
    Work = FreshWorkspace();
    Work.FitTitle = "monomer <-> dimer fit";
    Work.LabelPrefix = "/data/run 7/";
    Work.NumFree = 2;
    Work.NumSets = ToInt16(sets.size());
    Work.SetPts.Recreate(Work.NumSets);
    long total = 0;
    for (const BenchSet& set : sets)
        total += set.Points + set.PseudoPoints;
    Work.NumPts = ToInt16(total);
    Work.PtX.Recreate(total, PointMarker);
    Work.PtY.Recreate(total, 1000.0F); // a pseudo-point is far away
    Work.PtFit.Recreate(total, 1.0F);
    long at = 0;
    for (long k = 1; k <= Work.NumSets; ++k) {
        const BenchSet& set = sets[static_cast<std::size_t>(k - 1)];
        Work.SetRow[k] = ToInt16(set.Row);
        Work.SetPts[k] = ToInt16(set.Points + set.PseudoPoints);
        Work.SetLabel[k] = "0001" + std::to_string(k) + ".RA1";
        Work.FitRange[0][set.Row] = 4;
        Work.FitRange[1][set.Row] = ToInt16(3 + set.Points);
        Work.ScanPoints[set.Row] = ToInt16(5 + set.Points);
        Work.ScanRadius[set.Row].Recreate(5 + set.Points);
        for (long i = 1; i <= 5 + set.Points; ++i)
            Work.ScanRadius[set.Row][i] =
                6.0F + 0.25F * static_cast<float>(k) + 0.0625F * static_cast<float>(i);
        for (long i = 1; i <= set.Points; ++i) {
            const auto place = static_cast<float>(i);
            const auto number = static_cast<float>(k);
            Work.PtX[at + i] = -0.2F + 0.1F * place + 0.01F * number;
            Work.PtFit[at + i] = number + 0.125F * place;
            Work.PtY[at + i] = Work.PtFit[at + i] + (i % 2 == 1 ? size : -size);
        }
        at += Work.SetPts[k];
    }
}

std::vector<long> GraphBench::PointsOf(long set) const {
    long first = 1;
    for (long k = 1; k < set; ++k)
        first += Work.SetPts[k];
    std::vector<long> points;
    for (long i = 0; i < Sets[static_cast<std::size_t>(set - 1)].Points; ++i)
        points.push_back(first + i);
    return points;
}

std::vector<float> GraphBench::At(long set, const OneBased<float>& values) const {
    std::vector<float> picked;
    for (const long point : PointsOf(set))
        picked.push_back(values[point]);
    return picked;
}

void GraphBench::ExpectSeries(long series, const std::vector<float>& x, const std::vector<float>& y) const {
    ASSERT_LE(series, Chart.DataX.Sets());
    ASSERT_LE(static_cast<long>(x.size()), Chart.DataX.Points());
    for (long i = 1; i <= Chart.DataX.Points(); ++i) {
        const auto at = static_cast<std::size_t>(i - 1);
        EXPECT_EQ(Chart.DataX(i, series), at < x.size() ? x[at] : MissingValue) << series << ", " << i;
        EXPECT_EQ(Chart.DataY(i, series), at < y.size() ? y[at] : MissingValue) << series << ", " << i;
    }
}

std::vector<DrawnItem> GraphBench::DataItems(const std::string& kind) const {
    const GraphBox& frame = Chart.Spec.Frame;
    std::vector<DrawnItem> items;
    for (const DrawnItem& item : Screen.OfKind(kind)) {
        const int beside = frame.X1 - item.Clip.Left;
        if (item.Clipped && beside > 0 && beside < 10 && item.Clip.Top < frame.Y1) items.push_back(item);
    }
    return items;
}

} // namespace Quillon
