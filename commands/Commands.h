#pragma once
// The commands behind the main window's menu items, those that are more than one call of another folder:
// errors and the menu's state are RunCommand's business.

#include "models/forms/DialogAnswer.h"

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

// Runs a command, tells a run-time error that reaches it, clears a cancel flag that is left over, notes the
// history under the caption given and recomputes the menu. Everything that a user starts from a window beside
// the others comes through here.
void RunCommand(const std::function<void()>& command, const std::string& caption = "");

// True while one runs: events that are served within it find an analysis that may be half done.
bool CommandAtWork();

// Opens the data set table; its answer goes to ReadDataReturn. A table that is accepted as it stood leaves
// the fit standing.
void ReadData();
void ReadScans(const std::vector<std::string>& paths); // the same, and these scans are read into it
void FillData(const std::function<std::vector<std::string>()>& fill); // or its rows are filled by a function
void ReadDataReturn(DialogAnswer answer);
void ToggleNameConvention();
void SaveDefaults();
void WriteBaseline();
void MenuExit();

void DoModelSet();
void DoInitGuesses();
void SetConcConstraint();
void SetBaseConstraint();
void ShareConcentrations();
void Covariance();
void SearchMinima();

// The studies: their form, and the results behind it when one was taken.
void CompareModelsCommand();
void ProfileCommand();
void ResampleCommand();
void PlanCommand(); // the errors to be expected of the sets as a design

// Celsius or kelvin, for the ratio of temperatures that sigma of a set follows; saved as the default. Where
// it changes sets of the open fit these are built anew, after a question when a finished fit is lost by it.
void ToggleTemperatureScale();

void AboutBox();

// F1 in the window of a form: the page of that form, which for the chart window goes by what it waits for.
void HelpOn(const std::string& form);

} // namespace Quillon
