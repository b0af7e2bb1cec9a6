#include "chart/records/ChartSeams.h"

#include "chart/records/ChartState.h"

#include <utility>

namespace Quillon {

std::string ProgramTitle() {
    return Seams.ProgramName ? Seams.ProgramName() : "Quillon";
}

bool ChartCancelled() {
    return Seams.IsCancelled && Seams.IsCancelled();
}

void SetChartCancelled(bool cancelled) {
    if (Seams.SetCancelled) Seams.SetCancelled(cancelled);
}

void LeaveCancelAside() {
    Seams.IsCancelled = nullptr;
    Seams.SetCancelled = nullptr;
}

bool HasSurface() {
    switch (Chart.Target) {
    case Targets::Screen:
        return Seams.HasPicBox;
    case Targets::Printer:
        return Seams.HasPrinter;
    default:
        return static_cast<bool>(Chart.Metafile.Surface.Width);
    }
}

const DrawingSurface& TargetSurface() {
    switch (Chart.Target) {
    case Targets::Screen:
        return Seams.PicBox;
    case Targets::Printer:
        return Seams.Printer;
    default:
        return Chart.Metafile.Surface;
    }
}

void SetScreenSurface(const DrawingSurface& surface) {
    Seams.PicBox = surface;
    Seams.HasPicBox = true;
}

void RemoveScreenSurface() {
    Seams.PicBox = {};
    Seams.HasPicBox = false;
}

void SetPrinterSurface(const DrawingSurface& surface, bool plotter) {
    Seams.Printer = surface;
    Seams.HasPrinter = true;
    Seams.PrinterIsPlotter = plotter;
}

void SetMetafileMaker(std::function<MetafileTarget(const MetafileRequest&)> make) {
    Seams.MakeMetafile = std::move(make);
}

} // namespace Quillon
