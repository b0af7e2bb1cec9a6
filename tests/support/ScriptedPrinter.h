#pragma once
// The printer's filling for tests: it keeps what was drawn on each page as text, and answers its dialogs as
// it is told. It is in use from when it is made until it goes; make it behind the Script of the test.

#include "platform/Printer.h"
#include "tests/support/RecordingSurface.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

class ScriptedPrinter {
public:
    ScriptedPrinter();
    ~ScriptedPrinter();
    ScriptedPrinter(const ScriptedPrinter&) = delete;
    ScriptedPrinter& operator=(const ScriptedPrinter&) = delete;

    PrinterState Now;        // what Current tells; the surface is as large as its printable area
    double Dots = 576.0;     // per inch
    bool TakesJob = true;    // false: Begin gives no job
    bool Confirms = true;    // what the dialogs answer
    std::string DialogFails; // not empty: the dialogs are this RuntimeError
    std::function<void()> DuringDialog;

    // A job fails with this RuntimeError: at Begin, when page FailingPage is begun, at End. "" not.
    std::string BeginFails, PageFails, EndFails;
    int FailingPage = 2;

    // What has happened, in order: "choose", "paper", "begin TITLE", "page", "end", "abort".
    std::vector<std::string> Done;
    std::vector<std::vector<DrawnItem>> Pages; // of the latest job

    // The texts of a page from 1, each a line.
    std::string TextOfPage(std::size_t page) const;

private:
    void Operations();
    PrintJob Job();
    bool Dialog(const char* name);
    void TakePage();
    RecordingSurface Sheet;
    PrinterOperations Former;
};

} // namespace Quillon
