#include "workspace/records/Workspace.h"

namespace Quillon {

Workspace FreshWorkspace() {
    Workspace fresh;
    fresh.IncludeSet[1] = 1;
    // Radii of the channels at rest, places as in the data set table: long column cells at even places,
    // short column ones at odd places, outer radii eight places above the inner ones.
    const float inner[] = {5.8F, 6.4F, 6.85F};
    const float outer[] = {6.35F, 6.8F, 7.25F};
    for (int channel = 0; channel < 3; ++channel)
        for (int cell = 0; cell < 2; ++cell) {
            fresh.ChannelRadii[cell + 2 * channel] = inner[channel];
            fresh.ChannelRadii[cell + 2 * channel + 8] = outer[channel];
        }
    fresh.ChannelRadii[7] = 6.85F;
    fresh.ChannelRadii[15] = 7.25F;
    return fresh;
}

thread_local Workspace Work = FreshWorkspace();

} // namespace Quillon
