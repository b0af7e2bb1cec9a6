#pragma once
// The records of controls that forms are made of. A form is data: its handlers are plain functions that
// read and write these records, and whatever shows the form brings its widgets up to them after each
// event and whenever the event queue is served. A control array is a vector of Control.

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// The colours that logic gives to controls; 0x00BBGGRR. A control without a colour of its own carries
// DefaultColor and is shown in the desktop's own palette.
inline constexpr std::uint32_t DefaultColor = 0xFFFFFFFF;
inline constexpr std::uint32_t BlueColor = 0x00FF0000;
inline constexpr std::uint32_t RedColor = 0x000000FF;
inline constexpr std::uint32_t StandardEditColor = 0x00C00000; // marks the field that is being edited

struct Control {
    std::string Text;     // caption of a label or button, contents of a text box; "&" marks the access key
    std::int16_t Value{}; // check box: 0 off, 1 on, 2 grey; option button: 0 or -1; list: chosen index
    bool Visible = true;
    bool Enabled = true;
    std::string Tag;     // free for the form's own protocol
    std::string ToolTip; // shown when the pointer rests on the control
    std::uint32_t ForeColor = DefaultColor;
    std::uint32_t BackColor = DefaultColor;
    std::int32_t SelStart{};        // text box: characters before the insertion point or the selection
    std::int32_t SelLength{};       // text box: characters selected
    std::vector<std::string> Items; // rows of a list
};

// An item of a menu.
struct MenuItem {
    std::string Text; // "&" marks the access key
    bool Checked = false;
    bool Enabled = true;
    bool Visible = true;
};

// What every form has beside its controls.
struct FormState {
    std::string Caption;
    bool Shown = false;         // a modal form returns to its caller when a handler has set it to false
    Control* FocusOn = nullptr; // the control that a handler wants focused; whoever shows the form obeys and
                                // clears it. Points into the form's own record
};

} // namespace Quillon
