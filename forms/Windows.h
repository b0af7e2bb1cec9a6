#pragma once
// The windows of the program: each function makes one from its record. RegisterWindows names them all for the
// seam.

class QWidget;

namespace Quillon {

QWidget* MakeMainWindow(QWidget* parent);
QWidget* MakeChartsWindow(QWidget* parent);
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
QWidget* MakePickSet(QWidget* parent);
QWidget* MakeExtinctionForm(QWidget* parent);
QWidget* MakeInfoBox(QWidget* parent);

void RegisterWindows();

} // namespace Quillon
