#pragma once
// The command Simulate: the model at parameters that the user enters, beside the data or in their place.

namespace Quillon {

// Asks whether the data are to be overwritten and whether noise is to be added, shows the guesses form for
// values only, evaluates the model and shows the graph of data and fit.
//
//     beside      Work.PtFit is the curve with its noise, the data stay
//     overwriting Work.PtY and the scans of the sets, over their fitting ranges, are the simulated values; a
//                 set with a baseline loses it, which is told: the values hold none. The fit and its limits
//                 are gone, and the points are prepared anew. Work.PtFit equals the new data. The measured
//                 data can be brought back (commands/export/MeasuredData.h).
//
// Pseudo-points of constraints take neither signal nor noise; overwritten data only bring the weight with
// them that data preparation gives them. A cancelled values form, or a fault in the model (told), leaves data
// and fit as they were and adds no noise. Work.NewData is 0 afterwards. A RuntimeError on the way (noise
// beyond singles) leaves everything as it was.
void SimulateCommand();

} // namespace Quillon
