#pragma once
// The commands behind the main window's menu items, each as plain as it can be: errors and the menu's state
// are RunCommand's business.

#include "commands/SimulateCommand.h"
#include "graphs/FitGraphs.h"
#include "graphs/MassGraphs.h"
#include "graphs/ResidualGraphs.h"
#include "graphs/SpeciesGraphs.h"

#include <functional>
#include <string>

namespace Quillon {

// Runs a command, tells a run-time error that reaches it, clears a cancel flag that is left over and
// recomputes the menu.
void RunCommand(const std::function<void()>& command);

void ReadData(); // opens the data set table; FileForm's return runs ReadDataReturn
void ReadDataReturn();
void ToggleNameConvention();
void DoFitRestore();
void SaveDefaults();
void WriteBaseline();
void MenuExit();

void DoModelSet();
void DefineUnits();
void FitData();
void ReviewFit();
void DoInitGuesses();
void SetConcConstraint();
void SetBaseConstraint();
void AlterBounds();
void DoIntegrate();
void DoShowConstraint();
void Covariance();

void UseResiduals();
void UseOverlay();
void ToggleResidualsSpread();
void ToggleFitPause();
void SetConfidence();
void ShowSigmaCalculator();
void HelpContents();
void HelpIndex();
void AboutBox();

// F1 in the window of a form: the page of that form, which for the chart window goes by what it waits for.
void HelpOn(const std::string& form);

} // namespace Quillon
