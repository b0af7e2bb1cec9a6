#include "tests/support/ScriptedPrinter.h"

#include "platform/Platform.h"

#include <cmath>

namespace Quillon {

ScriptedPrinter::ScriptedPrinter() : Former(Host.Printer) {
    Now.Name = "Scripted";
    Operations();
}

ScriptedPrinter::~ScriptedPrinter() {
    Host.Printer = Former;
}

bool ScriptedPrinter::Dialog(const char* name) {
    Done.emplace_back(name);
    if (!DialogFails.empty()) RaiseError(DialogFails);
    if (DuringDialog) DuringDialog();
    return Confirms;
}

void ScriptedPrinter::Operations() {
    Host.Printer.Current = [this] { return Now; };
    Host.Printer.Choose = [this] { return Dialog("choose"); };
    Host.Printer.SetUpPage = [this] { return Dialog("paper"); };
    Host.Printer.Begin = [this](const std::string& title) -> std::optional<PrintJob> {
        Done.push_back("begin " + title);
        if (!BeginFails.empty()) RaiseError(BeginFails);
        if (!TakesJob) return std::nullopt;
        Pages.clear();
        return Job();
    };
}

void ScriptedPrinter::TakePage() {
    Pages.push_back(Sheet.Items);
    Sheet.Clear();
}

PrintJob ScriptedPrinter::Job() {
    Sheet.Clear();
    Sheet.Width = static_cast<int>(std::lround(Now.Page.PrintableWidth() * Dots));
    Sheet.Height = static_cast<int>(std::lround(Now.Page.PrintableHeight() * Dots));
    Sheet.DotsPerInchX = Sheet.DotsPerInchY = Dots;
    Sheet.HasColor = Now.HasColor;
    PrintJob job;
    job.Surface = Sheet.Surface();
    job.NewPage = [this] {
        TakePage();
        Done.emplace_back("page");
        if (!PageFails.empty() && static_cast<int>(Pages.size()) + 1 == FailingPage) RaiseError(PageFails);
    };
    job.End = [this] {
        TakePage();
        if (!EndFails.empty()) RaiseError(EndFails);
        Done.emplace_back("end");
    };
    job.Abort = [this] {
        Done.emplace_back("abort");
        Pages.clear();
    };
    return job;
}

std::string ScriptedPrinter::TextOfPage(std::size_t page) const {
    std::string text;
    if (page < 1 || page > Pages.size()) return "(no such page)";
    for (const DrawnItem& item : Pages[page - 1])
        if (item.Kind == "text") text += item.Text + "\n";
    return text;
}

} // namespace Quillon
