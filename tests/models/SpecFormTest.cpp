// The form of integrated concentrations: what it shows, its units and radii, what it refuses and tells.
#include "models/forms/SpecForm.h"

#include "input/NUMINPUT.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quillon {
namespace {

class SpecFormCase : public testing::Test {
protected:
    void Open(const std::string& name) {
        Work = SimulatedWorkspace(ModelCaseNamed(name));
        for (long k = 1; k <= Work.NumSets; ++k)
            Work.SetLabel[k] = "scan" + std::to_string(k);
        LoadSpecForm();
    }
    static void Enter(SpecRadius radius, const std::string& keys) {
        SpecFormGotFocus(radius);
        TypeInto(SpecFormBox(radius), keys, [&](int key) { return SpecFormKeyPress(radius, key); });
        SpecFormLostFocus(radius);
    }
    static std::string Row(std::size_t i) {
        return SpecForm.SpecName[i].Text + ": " + SpecForm.SpecConc[i].Text;
    }
    static std::string Shown(double value, const char* picture, const char* unit) {
        return FormatNumber(value, picture) + unit;
    }
    Script script;
};

TEST_F(SpecFormCase, ReadsAsDesigned) {
    Open("Model02");
    const auto& f = SpecForm;
    EXPECT_EQ(f.State.Caption, "Integrated Species Concentrations");
    EXPECT_EQ(f.SetLabel.Text, "&Data Set");
    EXPECT_EQ(f.InnerLabel.Text, "Cell &Inner Radius");
    EXPECT_EQ(f.OuterLabel.Text, "Cell &Outer Radius");
    EXPECT_EQ(f.Inner.Text, "5.6");
    EXPECT_EQ(f.Outer.Text, "7.3");
    EXPECT_EQ(f.UseAU.Text, "&Absorbance");
    EXPECT_EQ(f.UseMg.Text, "&mg/mL");
    EXPECT_EQ(f.UseMolar.Text, "&Molar");
    EXPECT_EQ(f.ExitButton.Text, "&Exit");
    EXPECT_EQ(f.Head.Text, "Theoretical Concentration Averaged Over Cell:");
    EXPECT_EQ(f.ExpHead.Text,
              "Experimental Absorbance Averaged Over Fitting Range (corrected for baseline offset)");
    EXPECT_EQ(f.SetList.Items.size(), 5U);
    EXPECT_EQ(f.SetList.Items[1], "Set 2 - scan2");
    EXPECT_NE(f.MeanNote.Text.find("not weighted"), std::string::npos);
    Work.InterferenceData = FlagTrue;
    LoadSpecForm();
    EXPECT_EQ(SpecForm.UseAU.Text, "&Fringes");
    EXPECT_TRUE(SpecForm.SpecConc[0].Text.ends_with(" fringes"));
}

TEST_F(SpecFormCase, ShowsTheMeansWithTheirParts) {
    Open("Model02");
    SpecFormRangeButton();
    const IntegratedSet found = IntegrateCell(SetNo(1), NumValue(SpecForm.Inner.Text),
                                              NumValue(SpecForm.Outer.Text), SpeciesUnit::Signal);
    EXPECT_EQ(Row(0), "Total: " + Shown(*found.Rows[0].Signal, "0.0000", " AU"));
    EXPECT_EQ(Row(1), "Monomer: " + Shown(*found.Rows[1].Signal, "0.0000", " AU") +
                          FormatNumber(*found.Rows[1].Share, " (#0.0%)"));
    EXPECT_EQ(Row(2).substr(0, 7), "Dimer: ");
    SpecFormUnit(SpecForm.UseMolar);
    EXPECT_EQ(Row(0), "Total: " + Shown(*found.Rows[0].Molar, "0.000E+00", " M"));
    EXPECT_EQ(SpecForm.MonomerTotal.Text,
              "Total counted in monomers: " + Shown(*found.MonomerMolar, "0.000E+00", " M"));
    EXPECT_EQ(SpecForm.ExpHead.Text,
              "Experimental Concentration Averaged Over Fitting Range (corrected for baseline offset)");
    EXPECT_EQ(
        SpecForm.ExpNote.Text,
        "(concentrations will be correct only if extinction coefficients are correctly set on Units form)");
    SpecFormUnit(SpecForm.UseMg);
    EXPECT_EQ(Row(0), "Total: " + Shown(*found.Rows[0].Weight, "0.0000", " mg/mL"));
    EXPECT_NE(SpecForm.ExpNote.Text.find("absorptivity"), std::string::npos);
    EXPECT_EQ(Work.ConcUnits, 0) << "the units of the analysis were changed";
}

TEST_F(SpecFormCase, ShowsWhatWasMeasured) {
    Open("Model01");
    EXPECT_EQ(SpecForm.ExpAverage.Text, Shown(SetMeanSignal(SetNo(1)), "0.0000", " AU"));
    SpecFormUnit(SpecForm.UseMolar);
    const double molar = SetMeanSignal(SetNo(1)) / (static_cast<double>(Work.ExtA) * Work.CellPath[1]);
    EXPECT_EQ(SpecForm.ExpAverage.Text, Shown(molar, "0.000E+00", " M"));
}

TEST_F(SpecFormCase, OfTwoComponentsHasTheirTotals) {
    Open("Model20");
    EXPECT_EQ(SpecForm.SpecName.size(), 9U);
    EXPECT_EQ(SpecForm.SpecName[0].Text, "Total Signal");
    EXPECT_EQ(SpecForm.SpecName[1].Text, "Total A");
    EXPECT_EQ(SpecForm.SpecName[2].Text, "Total B");
    EXPECT_EQ(SpecForm.SpecName[6].Text, "ABB Complex");
    EXPECT_FALSE(SpecForm.UseMg.Enabled);
    SpecFormUnit(SpecForm.UseMg);
    EXPECT_TRUE(SpecForm.UseAU.Value) << "a disabled unit was taken";
    SpecFormUnit(SpecForm.UseMolar);
    EXPECT_EQ(SpecForm.SpecName[0].Text, "Total");
    // A mixture has no one coefficient: what was measured stays a signal.
    EXPECT_TRUE(SpecForm.ExpAverage.Text.ends_with(" AU"));
}

TEST_F(SpecFormCase, RefusesRadiiThatAreEqualOrCrossed) {
    Open("Model01");
    script.ExpectMessage("Inner radius must be less than outer.");
    Enter(SpecRadius::Inner, "7.3");
    EXPECT_EQ(SpecForm.State.FocusOn, &SpecForm.Inner);
    Enter(SpecRadius::Inner, "6.5");
    EXPECT_EQ(SpecForm.Inner.Text, "6.5000");
    script.ExpectMessage("Inner radius must be greater than outer.");
    Enter(SpecRadius::Outer, "6.4");
    EXPECT_EQ(SpecForm.State.FocusOn, &SpecForm.Outer);
    const std::string before = SpecForm.SpecConc[0].Text;
    Enter(SpecRadius::Outer, "6.9");
    EXPECT_NE(SpecForm.SpecConc[0].Text, before);
}

TEST_F(SpecFormCase, ARefusedRadiusStoodBesideTheNumbersOfAnother) {
    Open("Model01");
    const std::string before = SpecForm.SpecConc[0].Text;
    Enter(SpecRadius::Inner, "6.5");
    script.ExpectMessage("Inner radius must be less than outer.");
    Enter(SpecRadius::Inner, "8");
    EXPECT_EQ(SpecForm.Inner.Text, "6.5000");
    SpecFormGotFocus(SpecRadius::Inner); // the focus is back, and Esc takes nothing back
    SpecFormKeyPress(SpecRadius::Inner, KeyEscape);
    SpecFormLostFocus(SpecRadius::Inner);
    EXPECT_EQ(SpecForm.Inner.Text, "6.5000");
    script.ExpectMessage("Inner radius must be greater than outer.");
    Enter(SpecRadius::Outer, "6.5");
    EXPECT_EQ(SpecForm.Outer.Text, "7.3");
    EXPECT_NE(SpecForm.SpecConc[0].Text, before);
    const IntegratedSet found = IntegrateCell(SetNo(1), 6.5F, 7.3F, SpeciesUnit::Signal);
    EXPECT_EQ(Row(0), "Total: " + Shown(*found.Rows[0].Signal, "0.0000", " AU"));
}

TEST_F(SpecFormCase, WithoutACoefficientTheMeasuredMeanStayedInItsFormerUnit) {
    Open("Model01");
    Work.ExtA = 0.0F;
    script.ExpectMessage("Error 'Division by zero' occurred in the integration.");
    SpecFormUnit(SpecForm.UseMolar);
    EXPECT_EQ(SpecForm.ExpAverage.Text, "* * *");
    EXPECT_EQ(SpecForm.SpecConc[1].Text, "* * *");
}

TEST_F(SpecFormCase, ATotalWithoutNumbersKeptTheNameOfTheFormerUnit) {
    Open("Model20");
    Work.Parms[0] = 200.0F;
    script.AnswerAllMessages(BoxAnswer::Ok);
    SpecFormUnit(SpecForm.UseMolar);
    EXPECT_EQ(Row(0), "Total: * * *");
    EXPECT_EQ(SpecForm.SpecName.size(), 9U);
    LoadSpecForm(); // in signal units from the start
    EXPECT_EQ(Row(0), "Total Signal: * * *");
}

TEST_F(SpecFormCase, TellsAWidthThatIsNoStep) {
    Open("Model01");
    Enter(SpecRadius::Inner, "6.9");
    script.ExpectMessage("Error 'Division by zero' occurred in the integration.");
    Enter(SpecRadius::Outer, "6.9004");
    EXPECT_EQ(SpecForm.SpecConc[0].Text, "* * *");
    EXPECT_NE(SpecForm.Failure.Text, "");
    Enter(SpecRadius::Outer, "7.1");
    EXPECT_EQ(SpecForm.Failure.Text, "");
    EXPECT_NE(SpecForm.SpecConc[0].Text, "* * *");
}

TEST_F(SpecFormCase, ShowsNoInfinity) {
    Open("Model01");
    Work.Parms[0] = 200.0F;
    script.AnswerAllMessages(BoxAnswer::Ok);
    Enter(SpecRadius::Outer, "9");
    EXPECT_EQ(SpecForm.SpecConc[1].Text, "* * *");
    EXPECT_NE(SpecForm.Failure.Text.find("the model is beyond the range of numbers at a radius of 7."),
              std::string::npos);
    EXPECT_EQ(script.Asked.size(), 1U);
}

TEST_F(SpecFormCase, CopiesTheTableOfAllSets) {
    Open("Model02");
    SpecFormCopyButton();
    EXPECT_TRUE(script.ClipboardHolds.starts_with("set\tlabel\tinner_cm\touter_cm\tspecies\tsignal\tmg_per_"
                                                  "ml\tmolar\tshare\n1\tscan1\t5.6\t7.3\tTotal\t"));
    EXPECT_EQ(std::count(script.ClipboardHolds.begin(), script.ClipboardHolds.end(), '\n'), 1 + 5 * 3);
    EXPECT_NE(script.ClipboardHolds.find("\n5\tscan5\t5.6\t7.3\tDimer\t"), std::string::npos);
}

TEST_F(SpecFormCase, IsShownByTheCommand) {
    Open("Model01");
    script.ExpectModal(SpecFormName, [] {
        EXPECT_TRUE(SpecForm.State.Shown);
        SpecFormSetList(SetNo(3));
        EXPECT_EQ(SpecForm.SetList.Value, 3);
        SpecFormExitButton();
    });
    const Workspace before = Work;
    IntegrateDialog();
    EXPECT_FALSE(SpecForm.State.Shown);
    EXPECT_EQ(Work, before);
}

} // namespace
} // namespace Quillon
