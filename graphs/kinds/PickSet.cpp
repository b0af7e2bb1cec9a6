#include "graphs/kinds/PickSet.h"

#include "platform/Platform.h"
#include "workspace/records/Roads.h"

namespace Quillon {

PickSetForm PickSetWindow;

void LoadPickSet() {
    PickSetWindow = PickSetForm{};
    PickSetWindow.State.Caption = "Select Data Set for Graph";
    for (const SetNo set : EachSet())
        PickSetWindow.SetList.Items.push_back("Set " + std::to_string(set.Number) + " - " +
                                              Work.SetLabel[set]);
    PickSetWindow.SetList.Value = 1;
    PickSetWindow.OkButton.Text = "OK";
    PickSetWindow.CancelButton.Text = "&Cancel";
    PickSetWindow.State.FocusOn = &PickSetWindow.SetList;
    PickSetWindow.State.Shown = true;
}

void PickSetRow(SetNo set) {
    if (set > NoSet && set <= SetNo(Work.NumSets)) PickSetWindow.SetList.Value = ToInt16(set.Number);
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
