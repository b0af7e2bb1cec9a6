#include "commands/WithoutEffect.h"

#include "fit/FreeMap.h"
#include "fit/Undetermined.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

namespace {

void Hold(const std::vector<long>& places) {
    std::vector<FitChoice> choices = FitChoices();
    for (FitChoice& choice : choices) {
        const long place = Work.FreeMap[choice.Slot];
        if (std::find(places.begin(), places.end(), place) != places.end()) choice.Check = FitCheckNo;
    }
    AssignFreePositions(choices);
}

} // namespace

void OfferToHoldWithoutEffect() {
    const std::vector<long> places = PlacesWithoutEffect();
    if (places.empty()) return;
    const std::string text = WithoutEffectText(places);
    if (static_cast<long>(places.size()) == Work.NumFree)
        Tell(text, Work.ProgramName, BoxIcon::Warning);
    else if (AskYesNo(text + "\n\n" + HoldQuestion, Work.ProgramName, BoxAnswer::Yes, BoxIcon::Warning))
        Hold(places);
}

} // namespace Quillon
