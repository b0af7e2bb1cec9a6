#pragma once
// Other minima of the same analysis: fits from random starts, and the minima that they come to.
//
// A sum of squares may have several minima, and a fit ends in the one that its start leads to. Fits from
// starts drawn around that of the fit (studies/methods/RestartStart.h) show which there are, and how often
// each is met: the more often the lowest one, the surer it is that none lies below it (A. H. G. Rinnooy Kan
// and G. T. Timmer, Mathematical Programming 39 (1987) 27). Each of them is the damped search with the
// iteration behind it (RescueFit), on a copy of the analysis. The same seed gives the same minima, however
// many fits run side by side.

#include "workspace/records/Workspace.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Quillon {

struct RestartChoice {
    long Count = 6; // starts beside that of the fit, 1..LargestRestarts
    std::uint64_t Seed = 1;
};
inline constexpr long LargestRestarts = 1000;

struct Minimum {
    Workspace Fit;               // the analysis with the fit that ended there
    long Count = 0;              // fits that did
    bool IsOwn = false;          // the user's own is one of them, and then it is Fit
    std::vector<float> Values{}; // of MinimumSlots, in the units of display
};

struct MinimaMet {
    std::vector<Minimum> Minima; // by rising sum of squares
    long Ended = 0;              // fits that have ended, the user's own first one among them
    long Failed = 0;             // of them those that ended at no minimum
    std::string Broken{};        // of these, what broke off in arithmetic (BrokenText), and why starts kept
                                 // the concentrations that they had; or ""
    bool Complete = false;       // not cancelled
};

// True when restarts make sense: a fit of the analysis as it stands has been run, to whatever end, and its
// choice of fitted parameters is that of now.
bool CanRestart();

// Searches from choice.Count random starts around Work.StartParms, or around Work.Parms where the fit's start
// is not known. told(n) after n of them. Work stays as it is, but for Work.AbortFit, which cancels and is
// left for the caller to clear; what has ended by then is in the result.
//
// Two ends are one minimum when their sums agree to 1e-6 of themselves and the fitted parameters before slot
// 8 to a hundredth of their errors; both are taken at the bottom of the minimum, since the iteration stops a
// little short of it. A parameter that the data do not determine counts as equal. Where there is
// less noise than 1e-6 of the largest signal, which singles do not know of, that stands for it, and a whole
// error counts as equal.
MinimaMet SearchOtherMinima(const RestartChoice& choice, const std::function<void(long done)>& told);

// The lowest minimum of at least one; the user's own where its sum agrees with the lowest one, as that of a
// twin with exchanged constants does.
const Minimum& BestMinimum(const MinimaMet& met);

// The fit at a minimum becomes the analysis; the user's own, when it stands there, is left as it is.
void TakeMinimum(const Minimum& minimum);

// The parameters by which minima are told apart: the fitted slots before slot 8, in rising order.
std::vector<SlotNo> MinimumSlots();

} // namespace Quillon
