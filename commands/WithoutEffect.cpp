#include "commands/WithoutEffect.h"

#include "fit/Undetermined.h"
#include "fit/equations/FreeMap.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

void Hold(const std::vector<FreePos>& places) {
    std::vector<FitChoice> choices = FitChoices();
    for (FitChoice& choice : choices) {
        if (!IsFitted(choice.Slot)) continue;
        const FreePos place = FreePosOf(choice.Slot);
        if (std::find(places.begin(), places.end(), place) != places.end()) choice.Check = FitCheckNo;
    }
    AssignFreePositions(choices);
}

} // namespace

void OfferToHoldWithoutEffect() {
    const std::vector<FreePos> places = PlacesWithoutEffect();
    if (places.empty()) return;
    const std::string text = WithoutEffectText(places);
    if (static_cast<long>(places.size()) == Work.NumFree)
        Tell(text, Work.ProgramName, BoxIcon::Warning);
    else if (AskYesNo(text + "\n\n" + HoldQuestion, Work.ProgramName, BoxAnswer::Yes, BoxIcon::Warning))
        Hold(places);
}

} // namespace Quillon
