#pragma once
// How the engine meets the outside: the surfaces of its targets, and the few seams beside them.

#include "platform/Surface.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Quillon {

// An enhanced metafile, or any other file that is painted once and closed.
struct MetafileRequest {
    std::string FileName;     // Device of the GraphSpec
    std::string Description;  // program title, zero byte, "Graph", two zero bytes
    int DeviceW{}, DeviceH{}; // size of the reference device, the printer where there is one
    double DotsPerInchX{}, DotsPerInchY{};
    int WidthHmm{}, HeightHmm{}; // the same size in hundredths of a millimetre
};
struct MetafileTarget {
    DrawingSurface Surface;
    std::function<void(const DeviceRect&)> SetWindow; // the part of the device that the picture is; optional
    std::function<void()> Close;                      // finishes the picture; optional
};

// How the engine meets the outside. Kept apart from ChartModule, so that a fresh chart stays wired.
struct ChartSeams {
    bool HasPicBox = false;
    DrawingSurface PicBox; // the picture box
    std::int16_t KeepsPicture =
        -1; // the box keeps its own picture; otherwise it is painted by its paint event
    bool HasPrinter = false;
    DrawingSurface Printer;
    bool PrinterIsPlotter = false;
    std::function<MetafileTarget(const MetafileRequest&)> MakeMetafile;

    // The shared cancel flag belongs to the analysis: whether it is up, which ends a drawing early, and the
    // one way to raise it or to take it down. Both optional: without them nothing is ever cancelled.
    std::function<bool()> IsCancelled;
    std::function<void(bool)> SetCancelled;
    std::function<void()> AbortPrintJob; // a print job was cancelled while it was drawn; optional
    std::function<void()> NewGraph;      // PlotSets has begun a graph: the box's window is enabled; optional
    std::function<std::string()> ProgramName;   // title of the messages; "Quillon" without it
    std::function<std::string()> DataDirectory; // where file dialogs start; optional
};

inline ChartSeams Seams;

// The surfaces of the targets. A surface is asked for its size and resolution at each painting.
void SetScreenSurface(const DrawingSurface& surface);
void RemoveScreenSurface();
void SetPrinterSurface(const DrawingSurface& surface, bool plotter = false);
void SetMetafileMaker(std::function<MetafileTarget(const MetafileRequest&)> make);

// The surface of the target. Only after a SelectTarget that found one.
const DrawingSurface& TargetSurface();

// True when the target has a surface.
bool HasSurface();

// The shared cancel flag, down where nobody has one.
bool ChartCancelled();
void SetChartCancelled(bool cancelled);

// Nothing cancels what is drawn from now on: for drawings on a surface that is lent for a while.
void LeaveCancelAside();

// The title of the engine's messages, and the name under which its settings are kept.
std::string ProgramTitle();

} // namespace Quillon
