#include "chart/dialogs/OptionLists.h"

#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Colors.h"
#include "chart/records/Cycles.h"
#include "chart/records/Palettes.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"

#include <algorithm>
#include <array>

namespace Quillon {

namespace {

constexpr std::array<const char*, 16> BasicNames = {
    "Black", "Dark Blue", "Dark Green", "Dark Cyan", "Dark Red", "Dark Magenta", "Dark Yellow", "Light Gray",
    "Gray",  "Blue",      "Green",      "Cyan",      "Red",      "Magenta",      "Yellow",      "White"};

int Rows() {
    return std::clamp<int>(Chart.State.NColors, 1, CycleLen + 1);
}

} // namespace

std::vector<std::string> JustifyNames() {
    return {"Left (data)", "Center (data)", "Right (data)", "Left (page)", "Center (page)", "Right (page)"};
}

std::string ColorName(ChartColor color) {
    for (int i = 0; i < static_cast<int>(BasicNames.size()); ++i)
        if (BasicColor(i) == color) return BasicNames[static_cast<std::size_t>(i)];
    std::string code = "#";
    for (int shift = 20; shift >= 0; shift -= 4)
        code += "0123456789ABCDEF"[(ToRgb(color) >> shift) & 0xF];
    const std::string name = SafeColorName(color);
    return name.empty() ? code : name + " (" + code + ")";
}

std::vector<std::string> ColorListNames() {
    std::vector<std::string> names;
    for (int row = 0; row < Rows(); ++row)
        names.push_back(ColorName(ColorOfRow(row)));
    return names;
}

int ColorListRow(std::int16_t cycleIndex) {
    return static_cast<int>(CyclePlace(cycleIndex)) % Rows();
}

ChartColor ColorOfRow(int row) {
    return Chart.Cycles.Color[CyclePlace(row)];
}

std::int16_t ChosenFont(const Control& list, std::int16_t before) {
    Control shown;
    FillList(shown, list.Items, FontListIndex(before));
    return shown.Value == list.Value ? before : FontCode(list.Value);
}

void FillList(Control& list, const std::vector<std::string>& items, int row) {
    list.Items = items;
    list.Value = static_cast<std::int16_t>(std::clamp(row, 0, static_cast<int>(items.size()) - 1));
}

void ShowSample(Control& sample, const std::string& text, std::int16_t font, int colorRow) {
    sample.Text = text;
    sample.ForeColor = static_cast<std::uint32_t>(ColorOfRow(colorRow));
    sample.BackColor = static_cast<std::uint32_t>(BasicColor(Chart.Spec.View.Color));
    sample.Tag = FontFace(font & 15) + std::string((font & BoldFont) != 0 ? " Bold" : "");
}

std::string SizeText(float size) {
    return FormatNumber(static_cast<double>(size), "0.000");
}

std::string SizeNote() {
    const auto text = [](float size) { return FormatNumber(static_cast<double>(size), ".000"); };
    return "Sizes are fractions of the diagonal; between " + text(Chart.State.FontMin) + " and " +
           text(Chart.State.FontMax) + " they show on a window of this size.";
}

bool TakeSize(FormState& form, Control& box, float& size) {
    if (box.Text == SizeText(size)) return true;
    const float typed = NumValue(box.Text);
    if (!(typed > 0.0F && typed < 1.0F)) {
        Tell("Input must be between 0 and 1", ProgramTitle(), BoxIcon::Warning);
        form.FocusOn = &box;
        return false;
    }
    size = typed;
    box.Text = SizeText(size);
    return true;
}

} // namespace Quillon
