#pragma once
// The printers of the desktop as the seam shows them.

#include "platform/Printer.h"

namespace Quillon {

// The system's printers, its dialogs for them, and where there is none or the user prints to a file, a PDF
// file that is written whole when its job has ended.
PrinterOperations DesktopPrinter();

} // namespace Quillon
