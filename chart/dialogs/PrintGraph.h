#pragma once
// The graph at hand on paper, and as a picture of the size that it would have there. It is drawn once more
// for that; the graph of the window is afterwards exactly what it was, on every way out.

#include "platform/Printer.h"

#include <cstdint>
#include <string>

namespace Quillon {

// The values of PrintGraph's mode.
namespace PrintModes {
inline constexpr std::int16_t FromMenu = 0; // with the window that can cancel; the page is held without Eject
inline constexpr std::int16_t EndPage = 1;  // prints and ends the page at once, without asking
inline constexpr std::int16_t Metafile = 3; // nothing is printed: asks for the properties of a metafile
} // namespace PrintModes

// "Eject Page": a printed page is ended. Otherwise it is held open for the next graph, until that ends it,
// another printer is chosen, a report is printed or the program ends. For this run.
inline bool EjectPage = true;

// Prints the graph at hand, or with PrintModes::Metafile shows the dialog for a metafile. False when there
// was nothing to print, it was cancelled or has failed; a failure is told.
bool PrintGraph(std::int16_t mode);

// The command: the dialog with the printing options, and what it was left with.
void PrintGraphControl();

// Prints the page that is held, if there is one. A failure is told.
void EndHeldPage();

// Lays the graph at hand out for that printer and draws it on its page. Gives what it has no room for there,
// and nothing is drawn then; empty when it was drawn. window: the ratio of width to height that KeepAspect
// keeps; 0 takes that of the window.
[[nodiscard]] std::string DrawGraphOnPage(const PrinterState& printer, const DrawingSurface& page,
                                          double window = 0.0);

// The ratio of width to height of the graph in its window; 0 where it has none.
double WindowAspect();

// The commands: the graph as a metafile goes to the clipboard, or to a file that is asked for, once its
// properties have been asked for.
void CopyMeta();
void WriteMeta();

// The graph at hand as it would be printed, as the bytes of a picture of an ending ("emf", "svg", "pdf",
// "png") that is as large as on the paper; margins are no part of it. A graph without room
// there is a RuntimeError.
std::string PictureOnPaper(const std::string& ending);

} // namespace Quillon
