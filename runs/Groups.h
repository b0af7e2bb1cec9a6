#pragma once
// Scans that were to come to the same equilibrium.

#include "runs/SortedRun.h"

namespace Quillon {

// Fills run.Groups from run.Scans. Of one cell and one kind of optics, wavelengths in rising order are one as
// long as none lies more than 3 nm above the one before it, and speeds of such wavelengths likewise as long
// as none lies more than 1% of the higher above the one before it. A speed to which the rotor comes back
// after another one makes a group of its own: the order is that of time among the scans of one folder.
// Groups are sorted by cell, speed and wavelength, then by the time of their first scan; scans of one time by
// number and name. What the scans of a group do not have in common is told.
void GroupRun(SortedRun& run);

// True when two groups were measured during the same stay of the rotor at a speed; of different folders, at
// the same speed.
bool IsSameStay(const SortedRun& run, const RunGroup& a, const RunGroup& b);

} // namespace Quillon
