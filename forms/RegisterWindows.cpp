#include "forms/Windows.h"
#include "forms/shell/FormHost.h"

namespace Quillon {

void RegisterWindows() {
    RegisterForm("Analmenu", MakeMainWindow);
    RegisterForm("Charts", MakeChartsWindow);
    RegisterForm("FileForm", MakeFileForm);
    RegisterForm("ModelForm", MakeModelForm);
    RegisterForm("UnitsForm", MakeUnitsForm);
    RegisterForm("GetGuess", MakeGetGuess);
    RegisterForm("FitMon", MakeFitMon);
    RegisterForm("BoundsForm", MakeBoundsForm);
    RegisterForm("ConfidenceInput", MakeConfidenceInput);
    RegisterForm("WaitForm", MakeWaitForm);
    RegisterForm("Results", MakeResults);
    RegisterForm("Correlation", MakeCorrelation);
    RegisterForm("ConcForm", MakeConcForm);
    RegisterForm("ShowConstraintForm", MakeShowConstraintForm);
    RegisterForm("BaseForm", MakeBaseForm);
    RegisterForm("SigmaCalcForm", MakeSigmaCalcForm);
    RegisterForm("PickSet", MakePickSet);
    RegisterForm("ExtinctionForm", MakeExtinctionForm);
    RegisterForm("InfoBox", MakeInfoBox);
}

} // namespace Quillon
