#pragma once
// Profiles and maps for other programs.
//
// CSV of a profile: slot,name,value,sum_of_squares,ratio,converged by rising value; of a map
// slot_1,slot_2,value_1,value_2,sum_of_squares,ratio,converged. JSON of a profile: slot, name, minimum
// (value, sum_of_squares), levels (level, ratio, lower, upper), points (the columns from value on),
// better_minimum, notes; of a map slots, names, minimum (values, sum_of_squares), levels (level, ratio),
// points, better_minimum. Units of display; ratio over the lowest sum; what does not exist is empty, in JSON
// null.

#include "studies/methods/ProfileMap.h"

#include <string>

namespace Quillon {

std::string ProfileCsv(const Profile& profile);
std::string ProfileJson(const Profile& profile);
std::string MapCsv(const ProfileMap& map);
std::string MapJson(const ProfileMap& map);

} // namespace Quillon
