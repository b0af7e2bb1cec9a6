#pragma once
// What the studies behind a fit have found, for whatever is written of that fit; and of the desktop's fit
// what was found last, which is kept for as long as that fit stands.

#include "studies/methods/Comparison.h"
#include "studies/methods/ProfileMap.h"
#include "studies/methods/Resampling.h"

#include <optional>
#include <variant>
#include <vector>

namespace Quillon {

// A profile of one parameter or a map of two.
using ProfileStudy = std::variant<Profile, ProfileMap>;

// The slots that it moves: one or two.
std::vector<long> SlotsOf(const ProfileStudy& study);

struct StudyResults {
    std::optional<Comparison> Compared;
    std::optional<Resampling> Resampled;
    std::vector<ProfileStudy> Profiles; // in the order in which they were asked for

    bool Empty() const { return !Compared && !Resampled && Profiles.empty(); }
};

// Keeps a study of the fit that stands; one of the same kind, of a profile one of the same slots, gives way
// to it. Studies of another fit, or of the same one in other units, are forgotten. A study that was cancelled
// and one without a fit that stands are not kept.
void KeepStudy(const Comparison& study);
void KeepStudy(const Profile& study);
void KeepStudy(const ProfileMap& study);
void KeepStudy(const Resampling& study);

// What is kept of the fit at hand; an empty record where that is another one. A fit that comes back as it
// was, by Undo or from its file, has its studies again as long as no other one was studied meanwhile.
const StudyResults& KeptStudies();

// As the program starts: nothing is kept.
void ForgetStudies();

} // namespace Quillon
