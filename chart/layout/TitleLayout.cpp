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

std::string RaisedText(const std::string& text, std::int16_t font) {
    if ((font & 15) == SymbolFamily) return text; // has no raised digits
    std::string raised;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char digit = text[i] == '^' && i + 1 < text.size() ? text[i + 1] : '\0';
        const bool longer = i + 2 < text.size() && text[i + 2] >= '0' && text[i + 2] <= '9';
        if (digit < '1' || digit > '3' || longer) {
            raised += text[i];
            continue;
        }
        raised += digit == '1' ? '\xB9' : digit == '2' ? '\xB2' : '\xB3';
        ++i;
    }
    return raised;
}

std::string TitleText(const GraphTitle& title) {
    return RaisedText(title.Text, title.Font);
}

std::string AxisTitleText(const GraphAxis& axis) {
    const std::string& name = axis.FactorName.Str();
    const std::string text = TitleText(axis.Title);
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
    sizes.Title1 = FitTitle(spec.Title1, TitleText(spec.Title1), sizes.Title1, width, 0);
    sizes.Title2 = FitTitle(spec.Title2, TitleText(spec.Title2), sizes.Title2, width, 0);
    for (int place = BottomAxis; place <= RightAxis; ++place) {
        const GraphAxis& axis = AxisOf(spec, place);
        float& size = sizes.AxisTitle[static_cast<std::size_t>(place)];
        const int direction = TitleDirection(place);
        size = FitTitle(axis.Title, AxisTitleText(axis), size, direction == 0 ? width : height, direction);
    }
}

} // namespace Quillon
