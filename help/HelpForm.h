#pragma once
// The window of the manual as data: three lists that lead to pages (contents, index, what a search found),
// the page at hand, and the way back. Whoever shows the form draws the page; a link on it comes back to
// HelpFollowLink.

#include "help/Manual.h"
#include "platform/Controls.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

enum class HelpPane { Contents, Index, Search };

inline constexpr const char* HelpFormName = "HelpForm"; // of the form, for the seam

struct HelpFormRecord {
    FormState State;
    HelpPane Pane = HelpPane::Contents;
    Control ContentsTab, IndexTab, SearchTab; // captions
    Control Contents, Index, Found;           // rows of the lists; Value: the chosen row, -1 none
    Control SearchInput, SearchNote;          // the note says that nothing was found
    Control BackButton, ForwardButton, StartButton, CloseButton;
    ManualPlace Place;                 // what is shown
    std::vector<ManualPlace> Visited;  // in the order of the visit
    std::size_t At = 0;                // which of them is shown
    std::vector<ManualEntry> Lists[3]; // what the rows lead to, by pane
    long Shown = 0;                    // counts up each time that a place is to be shown
};
extern HelpFormRecord HelpForm;

Control& HelpList(HelpPane pane); // the rows of a pane

// Shows the manual at its contents, at its index, or at the page of a form. What was visited before is kept.
void ShowHelpContents();
void ShowHelpIndex();
void ShowHelpOnForm(const std::string& form);

void HelpPaneClick(HelpPane pane);
void HelpRowClick(HelpPane pane, int row); // a line that only heads others does nothing
void HelpSearchGotFocus();
int HelpSearchKeyPress(int key);
void HelpSearchChanged(); // searches as one types
void HelpFollowLink(
    const std::string& link); // as it stands on the page; a page that there is none of stays unopened
void HelpBackButton();
void HelpForwardButton();
void HelpStartButton();
void HelpCloseButton();

// The text of the page at hand.
const std::string& HelpPageText();

} // namespace Quillon
