#pragma once
// The rows of a form that ties sets to others: number, name and box of each set.

#include "forms/Pieces.h"
#include "models/forms/LinkBoxes.h"

namespace Quillon {

// What a form does with the box of a set.
struct LinkHandlers {
    LinkBoxes& (*Boxes)(); // the record of the form
    bool (*IsShown)();     // a box that is left with its window asks nothing
    void (*GotFocus)(SetNo set);
    int (*KeyPress)(SetNo set, int key); // the key that is taken, 0 for none
    void (*LostFocus)(SetNo set);        // checks what was typed
};

// One line for each set, below line 0, in which the two heads stand: xHead above number and name, yHead above
// the boxes. As many lines as the form's record has boxes when the grid is made.
QGridLayout* LinkGrid(Binder& bind, ControlRef xHead, ControlRef yHead, const LinkHandlers& handlers);

} // namespace Quillon
