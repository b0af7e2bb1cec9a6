#include "chart/layout/TitleLayout.h"

#include "chart/layout/Layout.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

namespace Quillon {

bool HasText(const std::string& text) {
    return text.find_first_not_of(" \t") != std::string::npos;
}

int TitleDirection(int place) {
    return place == LeftAxis ? 1 : place == RightAxis ? 3 : 0;
}

std::string AxisTitleText(const GraphAxis& axis) {
    const std::string& name = axis.FactorName.Str();
    const std::string& text = axis.Title.Text.Str();
    const bool says = HasText(axis.Title.Text) || HasLabels(axis); // else there is nothing that it explains
    if (name.empty() || !says) return text;
    if (name.front() == ' ') return text + name;
    return text + (axis.Title.Text.Empty() ? "(" : " (") + name + ")";
}

float FitTitle(const GraphTitle& title, const std::string& text, float size, int length, int direction) {
    for (;;) {
        SelectFont(title.Font, size, direction);
        if (TextWidth(text) <= 0.95 * length || !ShrinkSize(size)) return size;
    }
}

void FitTitles() {
    TextSizes& sizes = Chart.Layout.Sizes;
    GraphSpec& spec = Chart.Spec;
    const int width = spec.Frame.X2 - spec.Frame.X1;
    const int height = spec.Frame.Y2 - spec.Frame.Y1;
    sizes.Title1 = FitTitle(spec.Title1, spec.Title1.Text, sizes.Title1, width, 0);
    sizes.Title2 = FitTitle(spec.Title2, spec.Title2.Text, sizes.Title2, width, 0);
    for (int place = BottomAxis; place <= RightAxis; ++place) {
        const GraphAxis& axis = AxisOf(spec, place);
        float& size = sizes.AxisTitle[static_cast<std::size_t>(place)];
        const int direction = TitleDirection(place);
        size = FitTitle(axis.Title, AxisTitleText(axis), size, direction == 0 ? width : height, direction);
    }
}

} // namespace Quillon
