#pragma once
// The part of a form that ties sets to other sets: one box for each set of the fit, which holds the number of
// the set that it follows, or nothing.
//
// A tie is kept by rows of the data set table, the boxes work with sets. All control arrays have one entry
// for each set, that of set 1 at place 0. A set that follows
// another one cannot be followed itself.

#include "platform/Arrays.h"
#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <cstdint>
#include <vector>

namespace Quillon {

struct LinkBoxes {
    std::vector<Control> SetNumber;       // "1", "2", ...
    std::vector<Control> SetName;         // labels of the sets
    std::vector<Control> LinkNum;         // number of the set that is followed; empty for none
    PerSet<std::int16_t> Links, OldLinks; // now and when the form was loaded; 0 for none
};

// What a form says of its links.
struct LinkWords {
    const char* ToolTip = "";
    const char* Title = "";    // of the message about a chain
    const char* OfItself = ""; // what is said of a set tied to itself; empty where it may be
};

// The boxes of the sets in the fit, with what links (by row, 0 for none) holds of them. Links to rows outside
// the fit are none.
LinkBoxes LoadLinkBoxes(const PerRow<std::int16_t>& links, const LinkWords& words);

void ShowLinks(LinkBoxes& boxes); // brings the texts up to Links

// No set is tied, or each as it was when the form was loaded. A value that a field has taken back is
// forgotten with it.
void ClearLinks(LinkBoxes& boxes);
void ResetLinks(LinkBoxes& boxes);

// Where a form with these boxes begins: the first of them, ok where there is none.
Control& FirstLinkBox(LinkBoxes& boxes, Control& ok);

Control& LinkBoxOf(LinkBoxes& boxes, SetNo set);

// Digits; a blank empties the box, Enter goes to the next one and behind the last one to ok.
int LinkBoxKey(LinkBoxes& boxes, SetNo set, int key, FormState& state, Control& ok);

// A box is left: takes its link, 0 or nothing for none. False when it is refused, which has then been told,
// and the former link stands: the number of no set, a set tied to itself, and a chain (a link to a set that
// has one, or of a set that another one follows).
bool LeaveLinkBox(LinkBoxes& boxes, SetNo set, FormState& state, const LinkWords& words);

// OK: all boxes are left, and the form closes unless one of them is refused.
void AcceptLinkBoxes(LinkBoxes& boxes, FormState& state, const LinkWords& words);

// Writes the links of the sets in the fit to their rows; true when there is any.
bool StoreLinks(const LinkBoxes& boxes, PerRow<std::int16_t>& links);

} // namespace Quillon
