#include "batch/console/ConsoleText.h"

#include <string_view>

namespace Quillon {

namespace {

struct Place {
    std::string_view AtTheWindow;
    std::string_view InTheJob;
};

constexpr Place Places[] = {
    {"on the Units form", "in [constants]"},
    {"Search for Other Minima.", "restarts = 6 in [fit] searches for others."},
};

} // namespace

std::string ConsoleText(std::string text) {
    for (const Place& place : Places) {
        std::size_t at = 0;
        while ((at = text.find(place.AtTheWindow, at)) != std::string::npos) {
            text.replace(at, place.AtTheWindow.size(), place.InTheJob);
            at += place.InTheJob.size();
        }
    }
    return text;
}

} // namespace Quillon
