#pragma once
// A sorted run as a table.

#include "runs/SortedRun.h"

#include <string>
#include <vector>

namespace Quillon {

// The head, and a row for each scan of the groups named (subscripts of run.Groups), in their order and by
// time:
//
//     cell,speed_rpm,wavelength_nm,optics,scan,file,time_s,omega2t,temperature_c,points,noise,
//     rms_from_last,at_equilibrium,last,group
//
// Speed and wavelength are those of the scan's header, group counts from 1 over the whole run. What is not
// known is empty.
std::string SortCsv(const SortedRun& run, const std::vector<std::size_t>& groups);

} // namespace Quillon
