#include "graphs/kinds/ApproachGraph.h"

#include "graphs/kinds/GraphParts.h"
#include "runs/Approach.h"
#include "runs/RunSets.h"

#include <algorithm>

namespace Quillon {

namespace {

constexpr double SecondsPerHour = 3600.0;

struct Difference {
    double Hours, Rms;
};

std::vector<Difference> DifferencesOf(const SortedRun& run, const RunGroup& group) {
    std::vector<Difference> differences;
    const double first = run.Scans[group.Scans.front()].Head.Time;
    for (std::size_t i = 0; i < group.Scans.size(); ++i)
        if (group.Judged[i].Rms)
            differences.push_back(
                {(run.Scans[group.Scans[i]].Head.Time - first) / SecondsPerHour, *group.Judged[i].Rms});
    return differences;
}

} // namespace

bool MakeApproachGraph(const SortedRun& run, std::size_t group) {
    const RunGroup& of = run.Groups[group];
    const std::vector<Difference> differences = DifferencesOf(run, of);
    if (differences.size() < 2) RaiseError(GroupName(run, group) + ": there are no scans to compare");
    const long points = std::ssize(differences);
    SetTable x(points, 2), y(points, 2);
    const auto limit = static_cast<float>(AgreementLimit(of));
    for (long i = 1; i <= points; ++i) {
        const Difference& difference = differences[static_cast<std::size_t>(i - 1)];
        x(i, 1) = x(i, 2) = static_cast<float>(difference.Hours);
        y(i, 1) = static_cast<float>(difference.Rms);
        y(i, 2) = limit;
    }
    GraphSpec spec = StartGraph(PlotStyles::Lines);
    spec.Title1.Text = (GroupName(run, group) + ": " + ApproachText(run, of)).substr(0, LongestTitle);
    spec.AxisX1.Title.Text = "Time (h)";
    spec.AxisY1.Title.Text = "Difference from the Last Scan, rms";
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    return HandOver(spec, x, y, {"rms", "agrees below"});
}

} // namespace Quillon
