#pragma once
// The figure of a fit as a journal prints it: the data with the fitted curves above, the residuals below, one
// x axis, and a legend that names file or channel, speed and root mean square of each data set. Text is 6 to
// 7 points high, in a legend that is too wide otherwise down to 5; lines are a half and three quarters of a
// point wide, at every size of the page.

#include "graphs/FigurePlan.h"
#include "platform/PictureFile.h"
#include "workspace/records/Counts.h"

#include <functional>
#include <string>

namespace Quillon {

// Begins a picture for an ending in small letters.
using PictureOpener = std::function<PictureFile(const std::string& ending, const PictureRequest& request)>;

// True for the endings that a figure is written as: "svg", "pdf", "png" and "emf".
bool IsFigureEnding(const std::string& ending);

// Dots per inch of figures in files: pixels of a PNG, units of lines and letters in the others, so that all
// of them agree.
inline constexpr double FigureDots = 600.0;

// What the legend and the heads of panels call a data set: the name of its file, the channel where one was
// chosen, the speed, and the set's number where all of these occur twice: "00012.RA1 Ch B, 12000 rpm".
std::string FigureName(SetNo set);

// The root mean square of a set's residuals with two digits: "rms 0.0042".
std::string FigureRms(SetNo set);

// The figure of the fit in the workspace as the bytes of a picture. The graph at hand, its window and the
// settings are afterwards what they were. A size that does not do, a data set that the fit does not have, or
// a failure of the picture is a RuntimeError.
std::string FigureBytes(const FigureChoice& choice, const std::string& ending, double dotsPerInch,
                        const PictureOpener& open);

} // namespace Quillon
