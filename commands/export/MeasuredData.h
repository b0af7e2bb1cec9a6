#pragma once
// What a simulation has overwritten, kept until other data take its place: the way back to the measured data.

#include "workspace/records/Workspace.h"

namespace Quillon {

// Run when the scans of Work have been overwritten: keeps the analysis as it stood before. Of several
// simulations, one over the other, what was before the first one is kept.
void KeepMeasuredData(const Workspace& before);

// True while the scans are those that the simulation wrote, so that there is something to be brought back. A
// scan that was read since, or a restored fit, ends it.
bool MeasuredDataKept();

// The command: the analysis becomes what it was before the simulation, with its data, baselines, fit and
// limits; preferences stay. A fit of the simulated data is asked about first. Shows the graph of data and fit
// that stands then.
void BringBackMeasuredData();

} // namespace Quillon
