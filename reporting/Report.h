#pragma once
// The printed report of the fit that stands, as pages of fixed-pitch text: model, data sets, constants used,
// results with their errors, statistics, correlations, held parameters, constraints, what was measured.

#include "reporting/ReportPage.h"

#include <string>
#include <vector>

namespace Quillon {

// The whole report. Runs the runs test and the correlations. Without a fit that stands (FitDone) it is the
// run-time error "Invalid procedure call or argument". further: lines about the same fit by whoever knows
// more of it, at the end.
std::vector<PageLines> PrintReport(const ReportPaper& paper = StandardPaper(),
                                   const std::vector<std::string>& further = {});

// Pages as one text for a file: lines end with LF, pages are parted by form feeds.
std::string TextOfPages(const std::vector<PageLines>& pages);

// The whole report as such a text.
std::string ReportText(const ReportPaper& paper = StandardPaper(),
                       const std::vector<std::string>& further = {});

// The left part of the footer: program, version, the day of the run, the fit file's name.
std::string ReportFooter();

} // namespace Quillon
