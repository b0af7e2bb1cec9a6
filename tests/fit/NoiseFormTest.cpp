// The form that weighs sets by their noise.
#include "fit/forms/NoiseForm.h"

#include "fit/equations/NoiseWeights.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

class NoiseForms : public testing::Test {
protected:
    Script TheScript;
    void SetUp() override {
        ModelCase theCase;
        theCase.Sets = {{.Rpm = 15000}, {.Rpm = 20000}};
        Work = SimulatedWorkspace(theCase);
        Work.PtFit = Work.PtY;
        for (long p = 1; p <= Work.NumPts; ++p)
            Work.PtFit[p] += Work.PtSet[p] == 1 ? 0.01F : 0.002F;
        Work.FitDone = Work.FitValid = FlagTrue;
        LoadNoiseForm();
    }
    void Type(SetNo set, const std::string& keys) const {
        NoiseFormGotFocus(set);
        TypeInto(NoiseFormBox(set), keys, [&](int key) { return NoiseFormKeyPress(set, key); });
        NoiseFormLostFocus(set);
    }
};

TEST_F(NoiseForms, TakesTheRmsOfTheFit) {
    EXPECT_EQ(NoiseFormBox(SetNo(1)).Text, "0");
    NoiseFormFromFitButton();
    EXPECT_NEAR(std::stod(NoiseFormBox(SetNo(1)).Text), 0.01, 1e-5);
    EXPECT_NEAR(std::stod(NoiseFormBox(SetNo(2)).Text), 0.002, 1e-5);
    EXPECT_FALSE(SetsHaveNoise()) << "until OK";
    NoiseFormOkButton();
    EXPECT_TRUE(SetsHaveNoise());
    EXPECT_NEAR(NoiseWeight(SetNo(2)), 5.0, 0.01);
    EXPECT_EQ(Work.FitDone, 0) << "the fit that stood had other weights";
    EXPECT_FALSE(NoiseForm.State.Shown);
}

TEST_F(NoiseForms, SomeSetsAloneAreRefused) {
    Type(SetNo(1), "0.004");
    TheScript.ExpectMessage("Give a noise for every set, or for none.");
    NoiseFormOkButton();
    EXPECT_TRUE(NoiseForm.State.Shown);
    EXPECT_EQ(NoiseForm.State.FocusOn, &NoiseFormBox(SetNo(2)));
    Type(SetNo(2), "0.002");
    NoiseFormOkButton();
    EXPECT_EQ(Work.SetNoise[Work.SetRow[2]], 0.002F);
}

TEST_F(NoiseForms, NoChangeKeepsTheFit) {
    NoiseFormOkButton();
    EXPECT_EQ(Work.FitDone, FlagTrue);
    LoadNoiseForm();
    Type(SetNo(1), "0.004");
    NoiseFormCancelButton();
    EXPECT_EQ(Work.SetNoise[Work.SetRow[1]], 0.0F);
    EXPECT_EQ(Work.FitDone, FlagTrue);
}

TEST_F(NoiseForms, NoneTakesTheWeightsBack) {
    NoiseFormFromFitButton();
    NoiseFormOkButton();
    LoadNoiseForm();
    NoiseFormNoneButton();
    NoiseFormOkButton();
    EXPECT_FALSE(SetsHaveNoise());
}

} // namespace
} // namespace Quillon
