#include "models/ShowConstraintForm.h"

#include "input/NUMINPUT.h"
#include "models/FormControls.h"
#include "models/LoadingUnits.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

ShowConstraintFormRecord ShowConstraintForm;

namespace {

constexpr const char* SharePicture = "#0.00%";

// The columns of a species.
struct SpeciesColumns {
    std::vector<Control>&Conc, &Var, &Fit, &FitErr, &Frac;
};

SpeciesColumns ColumnsOf(std::size_t species) {
    auto& f = ShowConstraintForm;
    if (species == 0) return {f.ConcA, f.VarA, f.FitA, f.FitErrA, f.FracA};
    return {f.ConcB, f.VarB, f.FitB, f.FitErrB, f.FracB};
}

float Loading(std::size_t species, long row) {
    return species == 0 ? Work.ConcConstraintA[row] : Work.ConcConstraintB[row];
}
float Tolerance(std::size_t species, long row) {
    return species == 0 ? Work.ConcToleranceA[row] : Work.ConcToleranceB[row];
}

bool Constrained(std::size_t species, long row) {
    return (Work.ConstraintFlags & ConcentrationBit) && Loading(species, row) > 0.0F;
}

// The pseudo-point of a constrained species: the last point of the set, or the one before it for A where B
// has one as well.
long PseudoPoint(std::size_t species, long set) {
    long last = 0;
    for (long s = 1; s <= set; ++s)
        last += Work.SetPts[s];
    return species == 0 && Constrained(1, Work.SetRow[set]) ? last - 1 : last;
}

double ShareOf(long point) {
    const double residual = static_cast<double>(Work.PtY[point]) - static_cast<double>(Work.PtFit[point]);
    return Work.SumSq == 0.0 ? 0.0 : residual * residual / Work.SumSq;
}

// Adds the row of a set to the columns of a species; answers its share of the sum of squares.
double AddRow(std::size_t species, long set) {
    const SpeciesColumns column = ColumnsOf(species);
    const long row = Work.SetRow[set];
    const double factor = LoadingFactor(species, row);
    const double loading = static_cast<double>(Loading(species, row));
    column.Conc.push_back(Captioned(FormatNumber(factor * loading, LoadingPicture())));
    column.Var.push_back(Captioned(ToleranceText(Tolerance(species, row))));
    if (!Constrained(species, row)) {
        column.Fit.emplace_back();
        column.FitErr.emplace_back();
        column.Frac.emplace_back();
        return 0.0;
    }
    const double found = static_cast<double>(Work.ConstraintFit[species][row]);
    const double share = ShareOf(PseudoPoint(species, set));
    column.Fit.push_back(Captioned(FormatNumber(factor * found, LoadingPicture())));
    column.FitErr.push_back(Captioned(FormatNumber((found - loading) / loading, "+##0.0%;-##0.0%")));
    column.Frac.push_back(Captioned(FormatNumber(share, SharePicture)));
    return share;
}

void NameControls() {
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
    const SpeciesColumns column = ColumnsOf(1);
    for (std::vector<Control>* cells : {&column.Conc, &column.Var, &column.Fit, &column.FitErr, &column.Frac})
        ShowColumn(*cells, shown);
}

} // namespace

void LoadShowConstraintForm() {
    ShowConstraintForm = ShowConstraintFormRecord{};
    NameControls();
    double total = 0.0;
    for (long set = 1; set <= Work.NumSets; ++set) {
        ShowConstraintForm.SetLabel.push_back(Captioned("Set " + std::to_string(set) + ":"));
        total += AddRow(0, set);
        total += AddRow(1, set);
    }
    ShowConstraintForm.Label7 =
        Captioned("Fraction of total fit variance from all concentration constraints = " +
                  FormatNumber(total, SharePicture));
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
