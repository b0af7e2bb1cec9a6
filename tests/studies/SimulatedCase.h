#pragma once
// A simulated experiment in Work as the fit command leaves it to a study: at its true parameters, ready to be
// fitted.

#include "models/SEDEQ3.h"
#include "tests/support/ModelCases.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

inline void LoadCase(const ModelCase& theCase) {
    Work = SimulatedWorkspace(theCase);
    Work.MonitorMode = Monitor::None;
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.LastModel = Work.Model;
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastSeparateK = Work.SeparateK;
    BuildParmScale();
    BuildParmNames();
    BuildParmFormats();
    SetDefaultBounds();
    Work.StartParms = Work.Parms;
}

} // namespace Quillon
