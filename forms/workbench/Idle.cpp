#include "forms/workbench/Idle.h"

#include "fit/forms/FitMon.h"
#include "fit/forms/WaitForm.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FormHost.h"
#include "reporting/Results.h"

#include <QApplication>

namespace Quillon {

bool MayFollowAnalysis() {
    if (FitMon.Loaded || WaitForm.State.Shown) return false;
    if (!HandlerAtWork()) return true;
    const QWidget* results = OpenForm(ResultsName);
    return results != nullptr && QApplication::activeModalWidget() == results;
}

} // namespace Quillon
