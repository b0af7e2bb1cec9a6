#include "help/HelpForm.h"

#include "platform/FormControls.h"
#include "platform/Platform.h"

namespace Quillon {

HelpFormRecord HelpForm;

namespace {

std::size_t PlaceOf(HelpPane pane) {
    return static_cast<std::size_t>(pane);
}

std::vector<ManualEntry>& EntriesOf(HelpPane pane) {
    return HelpForm.Lists[PlaceOf(pane)];
}

void FillList(HelpPane pane, std::vector<ManualEntry> entries) {
    Control& list = HelpList(pane);
    list.Items.clear();
    list.Value = -1;
    for (const ManualEntry& entry : entries)
        list.Items.push_back(entry.Text);
    EntriesOf(pane) = std::move(entries);
}

// The lists show where the page at hand stands in them.
void MarkPlace() {
    for (const HelpPane pane : {HelpPane::Contents, HelpPane::Index, HelpPane::Search}) {
        Control& list = HelpList(pane);
        list.Value = -1;
        for (std::size_t i = 0; i < EntriesOf(pane).size(); ++i)
            if (EntriesOf(pane)[i].Place == HelpForm.Place && list.Value < 0)
                list.Value = static_cast<std::int16_t>(i);
    }
}

void ShowVisited() {
    HelpForm.Place = HelpForm.Visited[HelpForm.At];
    HelpForm.BackButton.Enabled = HelpForm.At > 0;
    HelpForm.ForwardButton.Enabled = HelpForm.At + 1 < HelpForm.Visited.size();
    ++HelpForm.Shown;
    MarkPlace();
}

// A new place ends what lay ahead.
void GoTo(const ManualPlace& place) {
    if (!FindManualPage(place.Path)) return;
    if (!HelpForm.Visited.empty() && HelpForm.Visited[HelpForm.At] == place) return ShowVisited();
    if (!HelpForm.Visited.empty()) HelpForm.Visited.resize(HelpForm.At + 1);
    HelpForm.Visited.push_back(place);
    HelpForm.At = HelpForm.Visited.size() - 1;
    ShowVisited();
}

void NameControls() {
    HelpForm.ContentsTab = Captioned("&Contents");
    HelpForm.IndexTab = Captioned("&Index");
    HelpForm.SearchTab = Captioned("&Search");
    HelpForm.BackButton = Captioned("&Back", "The page before");
    HelpForm.ForwardButton = Captioned("&Forward", "The page that Back has left");
    HelpForm.StartButton = Captioned("&Start", "The first page of the manual");
    HelpForm.CloseButton = Captioned("Close");
}

void LoadHelpForm() {
    if (HelpForm.State.Caption.empty()) {
        HelpForm.State.Caption = "Quillon - Manual";
        NameControls();
        FillList(HelpPane::Contents, ManualContents());
        FillList(HelpPane::Index, ManualIndex());
    }
    HelpForm.State.Shown = true;
}

void Show(HelpPane pane, const ManualPlace& place) {
    LoadHelpForm();
    HelpForm.Pane = pane;
    GoTo(place);
    Host.ShowForm(HelpFormName);
}

} // namespace

Control& HelpList(HelpPane pane) {
    return pane == HelpPane::Contents ? HelpForm.Contents
           : pane == HelpPane::Index  ? HelpForm.Index
                                      : HelpForm.Found;
}

void ShowHelpContents() {
    Show(HelpPane::Contents, {ManualStart, ""});
}

void ShowHelpIndex() {
    Show(HelpPane::Index, HelpForm.Visited.empty() ? ManualPlace{ManualStart, ""} : HelpForm.Place);
}

void ShowHelpOnForm(const std::string& form) {
    Show(HelpPane::Contents, {PageOfForm(form), ""});
}

void HelpPaneClick(HelpPane pane) {
    HelpForm.Pane = pane;
    if (pane == HelpPane::Search) HelpForm.State.FocusOn = &HelpForm.SearchInput;
}

void HelpRowClick(HelpPane pane, int row) {
    if (row < 0 || row >= static_cast<int>(EntriesOf(pane).size())) return;
    GoTo(EntriesOf(pane)[static_cast<std::size_t>(row)].Place);
}

void HelpSearchGotFocus() {}

int HelpSearchKeyPress(int key) {
    return key;
}

void HelpSearchChanged() {
    FillList(HelpPane::Search, SearchManual(HelpForm.SearchInput.Text));
    const bool nothing =
        HelpForm.Found.Items.empty() && HelpForm.SearchInput.Text.find_first_not_of(' ') != std::string::npos;
    HelpForm.SearchNote.Text = nothing ? "No page holds all of these words." : "";
}

void HelpFollowLink(const std::string& link) {
    GoTo(FollowManualLink(HelpForm.Place.Path, link));
}

void HelpBackButton() {
    if (HelpForm.At == 0) return;
    --HelpForm.At;
    ShowVisited();
}

void HelpForwardButton() {
    if (HelpForm.At + 1 >= HelpForm.Visited.size()) return;
    ++HelpForm.At;
    ShowVisited();
}

void HelpStartButton() {
    GoTo({ManualStart, ""});
}

void HelpCloseButton() {
    HelpForm.State.Shown = false;
    Host.HideForm(HelpFormName);
}

const std::string& HelpPageText() {
    static const std::string none;
    const ManualPage* page = FindManualPage(HelpForm.Place.Path);
    return page ? page->Text : none;
}

} // namespace Quillon
