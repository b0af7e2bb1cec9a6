#pragma once
// The file information of a scan as data: its header in four texts; of a scan of intensities also what the
// two columns hold, with a button that takes the other one as the sample.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <array>

namespace Quillon {

inline constexpr const char* InfoBoxName = "InfoBox"; // of the form, for the seam

struct InfoBoxForm {
    FormState State;
    std::array<Control, 4> Line; // comment, speed and temperature, time, wavelength
    Control Intensities; // sample and reference, visible for a scan of intensities alone, as is the button
    Control SwitchButton, OkButton;
    RowNo Row;
};
extern InfoBoxForm InfoBox;

void ShowInfoBox(RowNo row); // fills the form and shows it modally
void LoadInfoBox(RowNo row);
void InfoBoxSwitchButton(); // absorbances change their sign
void InfoBoxOkButton();

} // namespace Quillon
