#include "models/forms/LinkBoxes.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

std::string LinkText(const LinkBoxes& boxes, SetNo set) {
    return boxes.Links[set] == 0 ? "" : std::to_string(boxes.Links[set]);
}

// A set that follows another one has nothing of its own to give.
bool MakesChain(const LinkBoxes& boxes, SetNo set, SetNo other) {
    if (boxes.Links[other] != 0) return true;
    for (const SetNo follower : EachSet())
        if (follower != set && SetNo(boxes.Links[follower]) == set) return true;
    return false;
}

bool RefuseNumber(Control& box, FormState& state, const std::string& message) {
    Host.Beep();
    Tell(message, Work.ProgramName, BoxIcon::Warning);
    state.FocusOn = &box;
    return false;
}

} // namespace

LinkBoxes LoadLinkBoxes(const PerRow<std::int16_t>& links, const LinkWords& words) {
    LinkBoxes boxes;
    boxes.Links.Recreate(Work.NumSets);
    for (const SetNo set : EachSet()) {
        boxes.SetNumber.push_back(Captioned(std::to_string(set.Number)));
        boxes.SetName.push_back(Captioned(Work.SetLabel[set]));
        boxes.LinkNum.push_back(Captioned("", words.ToolTip));
        const std::int16_t link = links[RowOf(set)];
        if (link > 0) boxes.Links[set] = Work.SetOfRow[link];
    }
    boxes.OldLinks = boxes.Links;
    ShowLinks(boxes);
    return boxes;
}

void ShowLinks(LinkBoxes& boxes) {
    for (const SetNo set : EachSet())
        LinkBoxOf(boxes, set).Text = LinkText(boxes, set);
}

void ClearLinks(LinkBoxes& boxes) {
    ForgetTakenBack();
    boxes.Links.Recreate(Work.NumSets);
    ShowLinks(boxes);
}

void ResetLinks(LinkBoxes& boxes) {
    ForgetTakenBack();
    boxes.Links = boxes.OldLinks;
    ShowLinks(boxes);
}

Control& FirstLinkBox(LinkBoxes& boxes, Control& ok) {
    return boxes.LinkNum.empty() ? ok : boxes.LinkNum.front();
}

Control& LinkBoxOf(LinkBoxes& boxes, SetNo set) {
    return boxes.LinkNum.at(static_cast<std::size_t>(set.Number - 1));
}

int LinkBoxKey(LinkBoxes& boxes, SetNo set, int key, FormState& state, Control& ok) {
    Control& box = LinkBoxOf(boxes, set);
    if (key == KeyReturn) state.FocusOn = set.Number < Work.NumSets ? &LinkBoxOf(boxes, set + 1) : &ok;
    if (key != ' ') return WholeNumberBoxKey(box, key);
    box.Text.clear();
    box.SelStart = box.SelLength = 0;
    FreshField = FlagTrue;
    return 0;
}

bool LeaveLinkBox(LinkBoxes& boxes, SetNo set, FormState& state, const LinkWords& words) {
    Control& box = LinkBoxOf(boxes, set);
    if (LeaveNumberBox(box, LinkText(boxes, set)) != BoxLeft::Altered) return true;
    const float number = std::nearbyint(NumValue(box.Text));
    if (number < 0.0F || number > static_cast<float>(Work.NumSets))
        return RefuseNumber(box, state, "Invalid data set number entered!");
    const SetNo other(ToInt16(static_cast<double>(number)));
    if (other == set && *words.OfItself) return RefuseNumber(box, state, words.OfItself);
    const std::int16_t former = boxes.Links[set];
    boxes.Links[set] = 0;
    const bool chain = other != NoSet && MakesChain(boxes, set, other);
    boxes.Links[set] = chain ? former : ToInt16(other.Number);
    if (chain) Tell("You cannot link this set to a set already linked!", words.Title, BoxIcon::Warning);
    box.Text = LinkText(boxes, set);
    return !chain;
}

void AcceptLinkBoxes(LinkBoxes& boxes, FormState& state, const LinkWords& words) {
    if (ForgetTakenBack()) ShowLinks(boxes); // Esc in the box that Enter then left
    for (const SetNo set : EachSet())
        if (!LeaveLinkBox(boxes, set, state, words)) return;
    state.Shown = false;
}

bool StoreLinks(const LinkBoxes& boxes, PerRow<std::int16_t>& links) {
    bool any = false;
    for (const SetNo set : EachSet()) {
        const SetNo other(boxes.Links[set]);
        links[RowOf(set)] = other == NoSet ? std::int16_t{0} : Work.SetRow[other];
        any |= other != NoSet;
    }
    return any;
}

} // namespace Quillon
