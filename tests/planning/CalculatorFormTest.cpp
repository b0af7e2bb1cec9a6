// The form of the calculators: what it asks for, shows, refuses, and puts into the units.
#include "planning/CalculatorForm.h"
#include "platform/Platform.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

const std::string Chain = "MQIFVKTLTGKTITLEVEPSDTIENVKAKIQDKEGIPPDQQRLIFAGKQLEDGRTLSDYNIQKESTLHLVLRLRGG";

Control& Box(CalculatorBox box) {
    return CalculatorForm.Box[static_cast<std::size_t>(box)];
}

std::string ValueOf(const std::string& caption) {
    for (const std::vector<std::string>& row : CalculatorForm.Rows)
        if (row[0] == caption) return row[1];
    return "none";
}

struct CalculatorWindow : testing::Test {
    CalculatorWindow() {
        Work = FreshWorkspace();
        LoadCalculatorForm();
    }
    Script script;
};

TEST_F(CalculatorWindow, CalculatesWhatItsBoxesAskFor) {
    EXPECT_FALSE(CalculatorForm.UseAButton.Enabled);
    Box(CalculatorBox::Chain).Text = Chain;
    CalculatorFormCalculateButton();
    EXPECT_EQ(ValueOf("residues"), "76");
    EXPECT_EQ(ValueOf("density of the buffer"), "none");
    Box(CalculatorBox::Buffer).Text = "NaCl=0.1";
    Box(CalculatorBox::Rpm).Text = "30000";
    Box(CalculatorBox::Inner).Text = "6.9";
    Box(CalculatorBox::Outer).Text = "7.2";
    CalculatorFormCalculateButton();
    EXPECT_NE(ValueOf("density of the buffer"), "none");
    EXPECT_NE(ValueOf("time to equilibrium, solved"), "none");
    for (const std::vector<std::string>& row : CalculatorForm.Rows)
        EXPECT_EQ(row.size(), CalculatorForm.Columns.size());
    const std::string hours = ValueOf("time to equilibrium, solved");
    Box(CalculatorBox::Inner).Text = ""; // Alt+U calculates while the focus stays in the box
    Box(CalculatorBox::Channel).Text = "C";
    CalculatorFormCalculateButton();
    EXPECT_EQ(Box(CalculatorBox::Inner).Text, "6.859");
    Box(CalculatorBox::Channel).Text = " a ";
    CalculatorFormLostFocus(CalculatorBox::Channel);
    EXPECT_EQ(Box(CalculatorBox::Inner).Text, "5.809"); // 5.8 cm and the stretch at 30000 rpm
    EXPECT_EQ(Box(CalculatorBox::Outer).Text, "6.359");
    CalculatorFormCalculateButton();
    EXPECT_NE(ValueOf("time to equilibrium, solved"), hours);
    CalculatorFormCopyButton();
    EXPECT_NE(script.ClipboardHolds.find("molar mass\t8.56"), std::string::npos) << script.ClipboardHolds;
}

TEST_F(CalculatorWindow, PutsItsNumbersIntoTheUnits) {
    Box(CalculatorBox::Chain).Text = Chain;
    Box(CalculatorBox::Buffer).Text = "NaCl=0.1";
    CalculatorFormCalculateButton();
    const float vbarA = Work.VbarA;
    CalculatorFormUseButton(1);
    EXPECT_EQ(Work.VbarA, vbarA);
    EXPECT_NEAR(Work.VbarB, ValuesOfChain({"", Chain}, {}, 20.0).VBar, 1e-6);
    EXPECT_EQ(Work.ExtB, 1490.0F);
    EXPECT_NEAR(Work.SolventDensity, ValuesOfBuffer(ReadSolutes("NaCl=0.1"), 20.0).Density, 1e-6);
    EXPECT_EQ(CalculatorForm.Note.Text, "Put into the units: v-bar, extinction, absorptivity, density (B).");
}

TEST_F(CalculatorWindow, ExtinctionAt280NmIsNoneAtAnotherWavelength) {
    Work = SimulatedWorkspace(ModelCaseNamed("Model01"));
    Work.ScanWavelength[1] = 230.0F;
    LoadCalculatorForm();
    const float extinction = Work.ExtA;
    Box(CalculatorBox::Chain).Text = Chain;
    CalculatorFormCalculateButton();
    CalculatorFormUseButton(0);
    EXPECT_EQ(Work.ExtA, extinction);
    EXPECT_EQ(CalculatorForm.Note.Text, "Put into the units: v-bar (A).");
}

TEST_F(CalculatorWindow, TellsWhatCannotBeRead) {
    Box(CalculatorBox::Chain).Text = "ACXD";
    script.ExpectMessage(
        "Protein: Letter 3 of the sequence is \"X\", which stands for none of the twenty amino acids.");
    CalculatorFormCalculateButton();
    EXPECT_TRUE(CalculatorForm.Rows.empty());
    Box(CalculatorBox::Chain).Text = "";
    Box(CalculatorBox::Celsius).Text = "warm";
    script.ExpectMessage("Enter a number.");
    CalculatorFormCalculateButton();
    EXPECT_EQ(CalculatorForm.State.FocusOn, &Box(CalculatorBox::Celsius));
    Box(CalculatorBox::Celsius).Text = "20";
    Box(CalculatorBox::Channel).Text = "D";
    script.ExpectMessage(
        "A channel is A to C of a six-channel centerpiece, 8A to 8D of an eight-channel one, not \"D\".");
    CalculatorFormLostFocus(CalculatorBox::Channel);
    EXPECT_EQ(Box(CalculatorBox::Channel).Text, "");
    EXPECT_EQ(Box(CalculatorBox::Inner).Text, "");
}

TEST_F(CalculatorWindow, TakesTheNameOfAFile) {
    const std::string path = script.Directory() + "/chain.fasta";
    Host.WriteFile(path, ">ubiquitin\n" + Chain + "\n");
    Box(CalculatorBox::Chain).Text = path;
    CalculatorFormCalculateButton();
    EXPECT_EQ(ValueOf("residues"), "76");
}

} // namespace
} // namespace Quillon
