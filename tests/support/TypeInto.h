#pragma once
// Types into a text box of a form as a user does: each key goes to the form, and a key that is taken is put
// in at the insertion point.

#include "platform/Controls.h"

#include <string>

namespace Quillon {

template <class KeyPress> void TypeInto(Control& box, const std::string& keys, KeyPress keyPress) {
    for (const char key : keys) {
        const int taken = keyPress(static_cast<int>(key));
        if (taken < ' ') continue;
        const auto start = static_cast<std::size_t>(box.SelStart);
        box.Text.replace(start, static_cast<std::size_t>(box.SelLength), 1, static_cast<char>(taken));
        box.SelStart += 1;
        box.SelLength = 0;
    }
}

} // namespace Quillon
