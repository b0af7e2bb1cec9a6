#include "graphs/kinds/PickSet.h"

#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

PickSetForm PickSetWindow;

void LoadPickSet() {
    PickSetWindow = PickSetForm{};
    PickSetWindow.State.Caption = "Select Data Set for Graph";
    for (long k = 1; k <= Work.NumSets; ++k)
        PickSetWindow.SetList.Items.push_back("Set " + std::to_string(k) + " - " + Work.SetLabel[k]);
    PickSetWindow.SetList.Value = 1;
    PickSetWindow.OkButton.Text = "OK";
    PickSetWindow.CancelButton.Text = "&Cancel";
    PickSetWindow.State.FocusOn = &PickSetWindow.SetList;
    PickSetWindow.State.Shown = true;
}

void PickSetRow(long set) {
    if (set >= 1 && set <= Work.NumSets) PickSetWindow.SetList.Value = ToInt16(set);
}

void PickSetOkButton() {
    PickSetWindow.Choice = SetNo(PickSetWindow.SetList.Value);
    PickSetWindow.State.Shown = false;
}

void PickSetCancelButton() {
    PickSetWindow.Choice = NoSet;
    PickSetWindow.State.Shown = false;
}

SetNo PickSet() {
    if (Work.NumSets == 1) return SetNo(1);
    LoadPickSet();
    Host.ShowModal(PickSetName);
    return PickSetWindow.Choice;
}

} // namespace Quillon
