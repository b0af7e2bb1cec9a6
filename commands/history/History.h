#pragma once
// The history of the analysis: what it was after each command that has changed it, to go back to.
//
// A change is a difference in the bytes of the fit file (persistence/codec/FitCodec.h), less the two folders
// in which the file dialogs start: a window that was opened and closed leaves no step. A step holds the whole
// analysis, members that no file holds as well; what is set for the program and not for the analysis stays
// as it is when the user goes back. Steps share what they have in common (commands/history/KeptAnalysis.h).

#include "commands/history/KeptAnalysis.h"
#include "platform/Platform.h"

#include <deque>
#include <string>

namespace Quillon {

// The steps that can be taken back. Beside them the first state stays for as long as the program runs: when
// there are more, the oldest step behind it goes. [decision: first-state-stays]
inline constexpr std::size_t HistoryLength = 50;

struct HistoryStep {
    ClockTime Time;
    std::string Command; // that led here, without the signs of its caption
    KeptAnalysis Analysis;
};

struct AnalysisHistory {
    std::deque<HistoryStep> Steps; // the first state, then the oldest step; never empty once started
    std::size_t Place = 0;         // the step that the analysis at hand is
    std::string Bytes;             // of that step, as they are compared
    std::string Failure;           // why the latest change is no step, so that Undo does not know of it; ""
};
extern AnalysisHistory History;

// Forgets all steps: the analysis at hand is the first state.
void StartHistory();

// The end of a command: where the analysis is another than the step at hand, it becomes the next step, and
// those that had been taken back are gone. command: the caption of its menu item. True when it was so. An
// analysis that cannot be written to a file is no step, and History.Failure says why.
bool NoteHistory(const std::string& command);

bool CanUndo();
bool CanRedo();
// Both first make a step of what has happened outside of any command.
void UndoCommand();
void RedoCommand();
// Makes the analysis what it was at a place of History.Steps. The step that is left has been noted.
void GoToStep(std::size_t place);

// The bytes by which analyses are told apart: those of the fit file for the analysis at hand, less the two
// folders of the file dialogs. RuntimeError as EncodeFit.
std::string BytesToCompare();

} // namespace Quillon
