#include "models/forms/ShowConstraintForm.h"

#include "models/table/LoadingMatch.h"
#include "models/table/LoadingUnits.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <string>

namespace Quillon {

ShowConstraintFormRecord ShowConstraintForm;

namespace {

// The columns of a species.
struct ShownColumns {
    std::vector<Control>&Conc, &Var, &Fit, &FitErr, &Frac;
};

ShownColumns ColumnsOf(std::size_t species) {
    auto& f = ShowConstraintForm;
    if (species == 0) return {f.ConcA, f.VarA, f.FitA, f.FitErrA, f.FracA};
    return {f.ConcB, f.VarB, f.FitB, f.FitErrB, f.FracB};
}

// Adds the row of a set to the columns of a species; answers its share of the sum of squares.
double AddRow(std::size_t species, SetNo set) {
    const ShownColumns column = ColumnsOf(species);
    const LoadingMatch match = MatchOfLoading(species, set);
    column.Conc.push_back(Captioned(match.Specified));
    column.Var.push_back(Captioned(match.Tolerance));
    column.Fit.push_back(Captioned(match.Found));
    column.FitErr.push_back(Captioned(match.Difference));
    column.Frac.push_back(Captioned(match.Share));
    return match.Fraction;
}

void NameConstraintControls() {
    auto& f = ShowConstraintForm;
    f.State.Caption = "Match of Fit to Concentration Constraints";
    f.ALabel = Captioned(LoadingHead("Specified Species A Integrated Concentration (AU)"));
    f.BLabel = Captioned(LoadingHead("Specified Species B Integrated Concentration (AU)"));
    f.VarALabel = Captioned("Specified Tolerance in A (%)");
    f.VarBLabel = Captioned("Specified Tolerance in B (%)");
    f.FitALabel = f.FitBLabel = Captioned("Concentration Calculated from Fit");
    f.FitErrALabel = f.FitErrBLabel = Captioned("Difference Between Fit and Specified Value ");
    f.FracALabel = f.FracBLabel = Captioned("Fraction of total fit variance");
    f.OkButton = Captioned("&OK");
}

void ShowSpeciesB() {
    auto& f = ShowConstraintForm;
    const bool shown = ShowsLoadingB();
    for (Control* head : {&f.BLabel, &f.VarBLabel, &f.FitBLabel, &f.FitErrBLabel, &f.FracBLabel})
        head->Visible = shown;
    const ShownColumns column = ColumnsOf(1);
    for (std::vector<Control>* cells : {&column.Conc, &column.Var, &column.Fit, &column.FitErr, &column.Frac})
        ShowColumn(*cells, shown);
}

} // namespace

void LoadShowConstraintForm() {
    ShowConstraintForm = ShowConstraintFormRecord{};
    NameConstraintControls();
    double total = 0.0;
    for (const SetNo set : EachSet()) {
        ShowConstraintForm.SetLabel.push_back(Captioned("Set " + std::to_string(set.Number) + ":"));
        total += AddRow(0, set);
        total += AddRow(1, set);
    }
    ShowConstraintForm.Label7 = Captioned(ShareOfLoadings(total));
    ShowSpeciesB();
    ShowConstraintForm.State.FocusOn = &ShowConstraintForm.OkButton;
    ShowConstraintForm.State.Shown = true;
}

void ShowConstraintFormOkButton() {
    ShowConstraintForm.State.Shown = false;
}

void ShowConstraintMatch() {
    LoadShowConstraintForm();
    Host.ShowModal(ShowConstraintFormName);
}

} // namespace Quillon
