#pragma once
// Data and pictures of a graph out to other programs, and data from them back in.

#include "chart/files/DataText.h"
#include "platform/PictureFile.h"
#include "platform/Platform.h"

#include <functional>
#include <string>

namespace Quillon {

// --- data --------------------------------------------------------------------------------------------------

// The command: asks for a file and writes DataText to it, with AsciiDelimiter between the columns.
void EditWriteData();

// The command: the data of the graph become those on the clipboard, as they are (logarithms on a logarithmic
// axis). Zooms, markers, special options and looks go, and names lose what AsStored gave them. After a
// failure, which is told, the graph is as it was.
void EditPasteData();

// --- pictures ----------------------------------------------------------------------------------------------

// Begins a "png" or "pdf"; set by a program that has the toolkit. Without it these endings are refused.
inline std::function<PictureFile(const std::string& kind, const PictureRequest& request)> OpenToolkitPicture;

// Begins a picture of an ending (small letters): "svg", "emf", "png" or "pdf". Another one is a RuntimeError.
PictureFile OpenPictureAs(const std::string& ending, const PictureRequest& request);

// The graph at hand as the bytes of a file of an ending (small letters): "svg", "pdf", "png", "emf", "dat",
// "csv" or "grf". Pictures are 170 mm wide, as high as the window's graph asks, at 300 dots per inch. The
// graph on the screen is afterwards what it was. Another ending, or a graph that cannot be drawn, is a
// RuntimeError.
std::string GraphAs(const std::string& ending);

// Puts what make gives on the clipboard. A failure of either is told.
void OfferGraph(const std::function<ClipboardOffer()>& make);

// Asks for a file and writes what bytes gives for its ending (small letters). A failure is told, and the file
// is then what it was.
struct GraphFileKinds {
    std::string Filter, Name, DefaultType; // as FileRequest has them
};
void WriteGraph(const GraphFileKinds& kinds,
                const std::function<std::string(const std::string& ending)>& bytes);

// The command: the box's picture goes to the clipboard as dots, as many as the box has, without markers and
// dark on white. [decision: bitmap-as-on-paper]
void CopyBitmap();

// The command: asks for a file and writes the graph to it; the file's ending chooses what.
void SaveGraphAs();

// The command: the graph goes to the clipboard as a picture of lines (SVG and metafile), as dots (PNG) and as
// its numbers below their heads, all at once; each program takes what it does best with.
void CopyGraph();

} // namespace Quillon
