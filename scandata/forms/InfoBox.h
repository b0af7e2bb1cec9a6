#pragma once
// The file information of a scan as data: its header in four texts.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <array>

namespace Quillon {

inline constexpr const char* InfoBoxName = "InfoBox"; // of the form, for the seam

struct InfoBoxForm {
    FormState State;
    std::array<Control, 4> Line; // comment, speed and temperature, time, wavelength
    Control OkButton;
};
extern InfoBoxForm InfoBox;

void ShowInfoBox(RowNo row); // fills the form and shows it modally
void LoadInfoBox(RowNo row);
void InfoBoxOkButton();

} // namespace Quillon
