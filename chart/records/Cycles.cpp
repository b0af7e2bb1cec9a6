#include "chart/records/Cycles.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Colors.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace Quillon {

namespace {

template <class T> T Nth(const std::vector<T>& order, int i) {
    return order.empty() ? T{} : order[static_cast<std::size_t>(i) % order.size()];
}

const std::vector<ChartColor>& ColorsOfTarget() {
    return Chart.Target == Targets::Screen ? Chart.Style.ScreenColors : Chart.Style.PrintColors;
}

bool HasTwoColors() {
    return Chart.Target != Targets::Screen && HasSurface() && !TargetSurface().HasColor() &&
           Chart.UseColorOnBW == 0;
}

// From the tables of colours, of which the first count are used, and the orders.
StyleCycles CyclesOfStyle(int count) {
    const ChartStyle& style = Chart.Style;
    const std::vector<ChartColor>& colors = ColorsOfTarget();
    StyleCycles cycles;
    for (int i = 0; i <= CycleLen; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int round = i / count; // how often the colours have run out
        cycles.Symbol[at] = Nth(style.SymbolOrder, i);
        cycles.Color[at] = Nth(colors, i % count);
        cycles.Pattern[at] = i == 0 ? std::int16_t{0} : Nth(style.PatternStyleOrder, i);
        cycles.Line[at] = i == 0 ? std::int16_t{0} : Nth(style.LineStyleOrder, round % 5);
        cycles.Border[at] = i == 0 ? std::int16_t{0} : Nth(style.BorderStyleOrder, round % 5);
        cycles.Line2[at] = Nth(style.LineStyleOrder, i % 5);
    }
    return cycles;
}

} // namespace

void BuildCycles() {
    const bool two = HasTwoColors();
    const std::size_t usable = std::min<std::size_t>(ColorsOfTarget().size(), two ? 2 : 32767);
    const int count = std::max(1, static_cast<int>(usable));
    Chart.State.NColors = ToInt16(count);
    Chart.Cycles = Chart.CyclesOfFile && !two ? *Chart.CyclesOfFile : CyclesOfStyle(count);
    Chart.State.CyclesBuilt = 1;
}

void BuildCyclesOfNewColors() {
    if (std::optional<StyleCycles> kept = std::exchange(Chart.CyclesOfFile, std::nullopt)) {
        BuildCycles();
        kept->Color = Chart.Cycles.Color;
        Chart.CyclesOfFile = kept;
    }
    BuildCycles();
}

} // namespace Quillon
