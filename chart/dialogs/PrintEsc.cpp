#include "chart/dialogs/PrintEsc.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/records/ChartSeams.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"

namespace Quillon {

PrintEscRecord PrintEsc;

void PrintEscCancelButton() {
    SetChartCancelled(true);
    PrintEsc.CancelButton.Enabled = false;
}

PrintEscScope::PrintEscScope() {
    PrintEsc = PrintEscRecord{};
    PrintEsc.State.Caption = ProgramTitle();
    PrintEsc.State.Shown = true;
    PrintEsc.Message = Captioned("Sending output to printer...");
    PrintEsc.CancelButton = Captioned("Cancel");
    SetChartCancelled(false);
    Host.ShowForm(PrintEscName);
}

PrintEscScope::~PrintEscScope() {
    PrintEsc.State.Shown = false;
    SetChartCancelled(false);
    Host.HideForm(PrintEscName);
}

bool PrintingCancelled() {
    Host.ServeEvents();
    return ChartCancelled();
}

void TellPrintFailure(const std::string& reason) {
    Tell("Error '" + reason +
             "' during printing--printer may be off line or out of paper, or this may be due to low memory.  "
             "Aborting...",
         ProgramTitle(), BoxIcon::Warning);
}

void TellPrinterSetupFailure(const std::string& reason) {
    Tell("Error during printer setup. The driver for the selected printer may be incompatible with the "
         "runtime layer (a platform problem) and this prevents this printer from being selected here. Use "
         "Control Panel to change the default printer to the one you want and then printing should work with "
         "that printer.\n\nThe dialog ended with '" +
             reason + "'.",
         ProgramTitle(), BoxIcon::Warning);
}

} // namespace Quillon
