#include "platform/Printer.h"

#include <utility>

namespace Quillon {

void FillPrinter(PrinterOperations& printer) {
    if (!printer.Current) printer.Current = [] { return PrinterState{}; };
    if (!printer.Choose) printer.Choose = [] { return false; };
    if (!printer.SetUpPage) printer.SetUpPage = [] { return false; };
    if (!printer.Begin) printer.Begin = [](const std::string&) { return std::optional<PrintJob>{}; };
}

PrintJob JobOfPicture(const PictureFile& picture, std::function<void(const std::string&)> write) {
    PrintJob job;
    job.Surface = picture.Surface;
    job.NewPage = picture.NewPage;
    job.End = [finish = picture.Finish, take = std::move(write)] { take(finish()); };
    job.Abort = [] {};
    return job;
}

} // namespace Quillon
