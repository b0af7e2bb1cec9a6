#pragma once
// The windows of the program: each function makes one from its record. RegisterWindows names them all for the
// seam.

#include <string>

class QWidget;

namespace Quillon {

QWidget* MakeMainWindow(QWidget* parent);
QWidget* MakeChartsWindow(QWidget* parent);
QWidget* MakeTitleOptsForm(QWidget* parent);
QWidget* MakeLegendOptsForm(QWidget* parent);
QWidget* MakeFileForm(QWidget* parent);
QWidget* MakeModelForm(QWidget* parent);
QWidget* MakeUnitsForm(QWidget* parent);
QWidget* MakeGetGuess(QWidget* parent);
QWidget* MakeFitMon(QWidget* parent);
QWidget* MakeBoundsForm(QWidget* parent);
QWidget* MakeConfidenceInput(QWidget* parent);
QWidget* MakeWaitForm(QWidget* parent);
QWidget* MakeResults(QWidget* parent);
QWidget* MakeCorrelation(QWidget* parent);
QWidget* MakeConcForm(QWidget* parent);
QWidget* MakeShowConstraintForm(QWidget* parent);
QWidget* MakeBaseForm(QWidget* parent);
QWidget* MakeSigmaCalcForm(QWidget* parent);
QWidget* MakeSpecForm(QWidget* parent);
QWidget* MakePickSet(QWidget* parent);
QWidget* MakeExtinctionForm(QWidget* parent);
QWidget* MakeInfoBox(QWidget* parent);
QWidget* MakeHelpForm(QWidget* parent);

void RegisterWindows();

// From now on F1 opens the manual at the page of the window that has the focus.
void ListenForHelp();

// The start of the program on an installed platform: registers the windows, starts the analysis and shows the
// main window. argument as of StartQuillon.
void StartDesktop(const std::string& argument);

} // namespace Quillon
