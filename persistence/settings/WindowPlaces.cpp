#include "persistence/settings/WindowPlaces.h"

#include "persistence/settings/IniAccess.h"

#include <algorithm>

namespace Quillon {

std::string KeptPlace(const std::string& key) {
    try {
        return IniValue(ReadIniFile(IniFilePath()), IniSection::Desktop, key);
    } catch (const RuntimeError&) {
        return ""; // the reading of the settings has told it
    }
}

void KeepPlaces(const std::vector<IniSetting>& places) {
    const bool stand = std::all_of(places.begin(), places.end(), [](const IniSetting& place) {
        return KeptPlace(place.Key) == place.Value;
    });
    if (stand) return;
    try {
        WriteIniValues(IniFilePath(), IniSection::Desktop, places);
    } catch (const RuntimeError&) { // the window opens elsewhere the next time
    }
}

} // namespace Quillon
