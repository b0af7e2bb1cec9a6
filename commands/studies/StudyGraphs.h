#pragma once
// The graphs of what a study has found: what stands in the form of the studies, and the files of quillon-fit.

#include "studies/methods/ProfileMap.h"
#include "studies/methods/Resampling.h"

#include <cstddef>

namespace Quillon {

// Each builds its graph without showing it (graphs/kinds/StudyGraphs.h); false when the chart refused it.
bool MakeGraphOf(const Profile& profile);
bool MakeGraphOf(const ProfileMap& map);

// The histogram of a quantity: the fitted parameters first, then what is derived. False where no fit has
// converged.
bool MakeGraphOf(const Resampling& resampling, std::size_t quantity);

// The command of the form: draws what it shows and opens the graph in front of it. Nothing where there is
// nothing to be drawn.
void GraphStudy();

} // namespace Quillon
