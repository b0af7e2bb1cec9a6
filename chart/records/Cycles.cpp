#include "chart/records/Cycles.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Colors.h"
#include "platform/Narrow.h"

#include <algorithm>

namespace Quillon {

namespace {

template <class T> T Nth(const std::vector<T>& order, int i) {
    return order.empty() ? T{} : order[static_cast<std::size_t>(i) % order.size()];
}

} // namespace

void BuildCycles() {
    const bool screen = Chart.Target == Targets::Screen;
    const ChartStyle& style = Chart.Style;
    const std::vector<ChartColor>& colors = screen ? style.ScreenColors : style.PrintColors;
    const bool two = !screen && HasSurface() && !TargetSurface().HasColor() && Chart.UseColorOnBW == 0;
    const int count = std::max(1, static_cast<int>(std::min<std::size_t>(colors.size(), two ? 2 : 32767)));
    Chart.State.NColors = ToInt16(count);
    StyleCycles& cycles = Chart.Cycles;
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
    Chart.State.CyclesBuilt = 1;
}

} // namespace Quillon
