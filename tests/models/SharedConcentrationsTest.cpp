// Sets that see the same molecules: the fitted function, its derivatives and the flags of a follower.
#include "models/SEDEQ3.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace Quillon {
namespace {

constexpr long PointsOfSet = 41;

double RadiusOf(long row, long p) {
    return (row == 1 ? 6.80 : 6.90) + 0.005 * static_cast<double>(p - 1);
}

void FillRow(long row) {
    Work.ScanFile[row] = row == 1 ? "00001.RA2" : "00002.RA2";
    Work.ScanWavelength[row] = row == 1 ? 280.0F : 250.0F;
    Work.ScanRPM[row] = 15000.0F;
    Work.ScanTemperature[row] = 20.0F;
    Work.CellPath[row] = 1.2F;
    Work.ScanPoints[row] = PointsOfSet;
    Work.ScanRadius[row].Recreate(PointsOfSet);
    Work.ScanValue[row].Recreate(PointsOfSet, 1.0F);
    for (long p = 1; p <= PointsOfSet; ++p)
        Work.ScanRadius[row][p] = static_cast<float>(RadiusOf(row, p));
    Work.FitRange[0][row] = 1;
    Work.FitRange[1][row] = PointsOfSet;
}

// Two sets of one sample at 280 and 250 nm; the second one lies 0.1 cm further out and follows the first.
void StartPair(int model, bool separateK = false) {
    Work = HandWorkspace(model);
    Work.SeparateK = Flag(separateK);
    Work.NumSets = 2;
    Work.NumParms = 14;
    Work.NumPts = 2 * PointsOfSet;
    Work.SetPts.Recreate(2, PointsOfSet);
    Work.PtX.Recreate(Work.NumPts);
    Work.PtY.Recreate(Work.NumPts, 1.0F);
    Work.PtFit.Recreate(Work.NumPts);
    Work.PtSet.Recreate(Work.NumPts, 1);
    for (const long set : {1L, 2L}) {
        Work.SetRow[set] = Work.SetOfRow[set] = ToInt16(set);
        FillRow(set);
        for (long p = 1; p <= PointsOfSet; ++p) {
            const long n = (set - 1) * PointsOfSet + p;
            const double r = static_cast<double>(Work.ScanRadius[set][p]);
            Work.PtX[n] = static_cast<float>(r * r / 2 - ReferenceX(RowNo(set)));
            Work.PtSet[n] = ToInt16(set);
        }
    }
    Work.ExtinctionRatio[0][2] = 1.75F;
    Work.ExtinctionRatio[1][2] = 0.5F;
    Work.Parms[SlotA(2)] = 77.0F; // nobody reads them
    if (!separateK) Work.Parms[SlotB(2)] = 77.0F;
    Work.ConcLink[2] = 1;
    ApplyModelFlags();
    for (long slot = 0; slot < Work.NumParms; ++slot)
        if (Work.FreeMap[slot] == SlotHeld) Work.FreeMap[slot] = 0;
    NumberFreeSlots(Work);
    ResetFitFunction();
}

// The point of set 2 at the radius of point p of set 1.
long TwinOf(long p) {
    return PointsOfSet + p - 20;
}

// Model 7 has the signals of both species and nothing else.
TEST(SharedConcentrations, AreEqualAtEqualRadii) {
    Script script;
    StartPair(7);
    for (long p = 21; p <= PointsOfSet; ++p) {
        const double x1 = static_cast<double>(Work.PtX[p]);
        const double a = 0.5 * std::exp(1.5 * x1);
        const double b = 0.2 * std::exp(3.0 * x1);
        EXPECT_NEAR(FitFunction(p), a + b, 2e-6 * (a + b)) << p;
        EXPECT_NEAR(FitFunction(TwinOf(p)), 1.75 * a + 0.5 * b, 4e-6 * (a + b)) << p;
    }
}

// d a / d ln c = a, d a / d sigma = a (x + distance of the reference x): here x of the leader.
TEST(SharedConcentrations, DerivativesFollowTheLeader) {
    Script script;
    StartPair(7);
    for (long p = 21; p <= PointsOfSet; ++p) {
        const double x1 = static_cast<double>(Work.PtX[p]);
        const double a = 1.75 * 0.5 * std::exp(1.5 * x1);
        const double b = 0.5 * 0.2 * std::exp(3.0 * x1);
        const long n = TwinOf(p);
        CalcDerivs(n, FitFunction(n));
        const auto deriv = [](long slot) { return Work.Deriv[Work.FreeMap[slot]]; };
        EXPECT_NEAR(deriv(SlotA(1)), a * (std::exp(0.02) - 1) / 0.02, 1e-3 * a) << p;
        EXPECT_NEAR(deriv(SlotB(1)), b * (std::exp(0.02) - 1) / 0.02, 1e-3 * b) << p;
        const double h = 1.5 * 0.01;
        EXPECT_NEAR(deriv(0), a * (std::exp(h * x1) - 1) / h, 1e-3 * a) << p;
        EXPECT_EQ(deriv(SlotOffset(1)), 0.0);
        EXPECT_EQ(deriv(SlotOffset(2)), 1.0);
    }
}

TEST(SharedConcentrations, BlocksGiveTheSameBitsAsPoints) {
    for (const int model : {1, 2, 5, 6, 7, 8, 13, 20, 22})
        for (const bool separateK : {false, true}) {
            if (separateK && !ModelAllowsSeparateK(model)) continue;
            Script script;
            StartPair(model, separateK);
            std::vector<double> points;
            for (long p = 1; p <= Work.NumPts; ++p) {
                points.push_back(FitFunction(p));
                CalcDerivs(p, points.back());
                points.insert(points.end(), Work.Deriv.Data(), Work.Deriv.Data() + Work.NumFree);
            }
            ResetFitFunction();
            SetPlan plan;
            PointBlock block;
            std::vector<double> blocks;
            for (const long set : {1L, 2L}) {
                PlanSet(plan, SetNo(set), true);
                EvaluateBlock(block, plan, 1 + (set - 1) * PointsOfSet, PointsOfSet);
                for (std::size_t i = 0; i < static_cast<std::size_t>(PointsOfSet); ++i) {
                    blocks.push_back(block.Value[i]);
                    std::vector<double> row(static_cast<std::size_t>(Work.NumFree), 0.0);
                    for (std::size_t k = 0; k < static_cast<std::size_t>(plan.Count); ++k)
                        row[static_cast<std::size_t>(plan.FreePosition[k].Number)] = block.Column[k][i];
                    blocks.insert(blocks.end(), row.begin(), row.end());
                }
            }
            ASSERT_EQ(points.size(), blocks.size());
            EXPECT_EQ(std::memcmp(points.data(), blocks.data(), points.size() * sizeof(double)), 0)
                << model << (separateK ? " separate" : "");
        }
}

TEST(SharedConcentrations, AFollowerIsTiedUntilItIsReleased) {
    StartPair(8);
    EXPECT_EQ(Work.FreeMap[SlotA(2)], SlotTied);
    EXPECT_EQ(Work.FreeMap[SlotB(2)], SlotTied);
    EXPECT_GE(Work.FreeMap[SlotA(1)], 0);
    Work.ConcLink[2] = 0;
    ApplyModelFlags();
    EXPECT_EQ(Work.FreeMap[SlotA(2)], 0);
    EXPECT_EQ(Work.FreeMap[SlotB(2)], 0);
}

TEST(SharedConcentrations, WhereTheSlotOfBHoldsAConstantOnlyAIsShared) {
    StartPair(3, true);
    EXPECT_EQ(Work.FreeMap[SlotA(2)], SlotTied);
    EXPECT_GE(Work.FreeMap[SlotB(2)], 0);
    StartPair(9, true); // the constant has the place of the offset
    EXPECT_EQ(Work.FreeMap[SlotB(2)], SlotTied);
    StartPair(2);
    EXPECT_EQ(Work.FreeMap[SlotB(2)], SlotUnused);
}

TEST(SharedConcentrations, AreWrittenToBeShown) {
    Script script;
    StartPair(7);
    ApplyConcentrationLinks();
    const double distance = ReferenceX(RowNo(2)) - ReferenceX(RowNo(1));
    EXPECT_NEAR(Work.Parms[SlotA(2)], std::log(0.5) + 1.5 * distance, 1e-6);
    EXPECT_NEAR(Work.Parms[SlotB(2)], std::log(0.2) + 3.0 * distance, 1e-6);
    EXPECT_EQ(ConcentrationLinkLines(),
              std::vector<std::string>{"Ln c of set 2 was held = to that of set 1, at the same radius"});
}

TEST(SharedConcentrations, ChainsAndLinksOutOfTheFitCountForNone) {
    StartPair(7);
    EXPECT_EQ(LeaderOf(SetNo(2)), SetNo(1));
    EXPECT_EQ(LeaderOf(SetNo(1)), NoSet);
    Work.ConcLink[1] = 2; // each follows the other
    EXPECT_EQ(LeaderOf(SetNo(1)), NoSet);
    EXPECT_EQ(LeaderOf(SetNo(2)), NoSet);
    Work.ConcLink[1] = 0;
    Work.ConcLink[2] = 2;
    EXPECT_EQ(LeaderOf(SetNo(2)), NoSet);
    Work.ConcLink[2] = 9;
    EXPECT_EQ(LeaderOf(SetNo(2)), NoSet);
}

TEST(SharedConcentrations, TiesAreProposedForOneCellAtOneSpeedAndTwoWavelengths) {
    StartPair(7);
    EXPECT_EQ(ProposedTies(), (std::vector<ConcentrationTie>{{SetNo(2), SetNo(1)}}));
    Work.ScanWavelength[2] = 275.5F; // within what a monochromator returns to
    EXPECT_TRUE(ProposedTies().empty());
    Work.ScanWavelength[2] = 275.0F;
    EXPECT_EQ(ProposedTies().size(), 1U);
    Work.ScanRPM[2] = 15160.0F;
    EXPECT_TRUE(ProposedTies().empty());
    Work.ScanRPM[2] = 15140.0F;
    EXPECT_EQ(ProposedTies().size(), 1U);
    Work.DataChannel[2] = Channel::B;
    EXPECT_TRUE(ProposedTies().empty());
    Work.DataChannel[2] = Channel::None;
    Work.ScanFile[2] = "00002.RA3";
    EXPECT_TRUE(ProposedTies().empty());
}

// Scans with the names of newer instruments, and wavelengths in folders of their own, had no proposal.
TEST(SharedConcentrations, TiesAreProposedForNewerNamesAndForFoldersByWavelength) {
    StartPair(7);
    const float first = Work.ScanWavelength[1], second = Work.ScanWavelength[2];
    Work.ScanFile[1] = "run7-s0001-c2-n0001.ra";
    Work.ScanFile[2] = "run7-s0001-c2-n0002.ra";
    EXPECT_EQ(ProposedTies().size(), 1U);
    Work.ScanFile[2] = "run7-s0001-c3-n0001.ra";
    EXPECT_TRUE(ProposedTies().empty());
    Work.ScanFile[2] = "run7-s0002-c2-n0001.ra"; // another step, at the same speed
    EXPECT_EQ(ProposedTies().size(), 1U);
    const auto folder = [](float wavelength) {
        return "data/run7/" + std::to_string(static_cast<long>(wavelength) + 1) + "nm";
    };
    Work.ScanDirectory[1] = folder(first);
    Work.ScanDirectory[2] = folder(second);
    EXPECT_EQ(ProposedTies().size(), 1U);
    Work.ScanDirectory[2] = folder(second + 50.0F);
    EXPECT_TRUE(ProposedTies().empty()) << "a number that is no wavelength of the scan";
    Work.ScanDirectory[2] = "data/run8/" + std::to_string(static_cast<long>(second)) + "nm";
    EXPECT_TRUE(ProposedTies().empty()) << "another run";
}

// --- the form ---------------------------------------------------------------------------------------------

std::string ShownLinks() {
    std::string text;
    for (const Control& box : ShareForm.Boxes.LinkNum)
        text += box.Text.empty() ? "-" : box.Text;
    return text;
}

void Enter(long set, const std::string& keys) {
    ShareFormGotFocus(SetNo(set));
    TypeInto(ShareForm.Boxes.LinkNum[static_cast<std::size_t>(set - 1)], keys,
             [&](int key) { return ShareFormKeyPress(SetNo(set), key); });
    ShareFormLostFocus(SetNo(set));
}

TEST(ShareForm, ProposesTheTiesOfTheScansAndOkTakesThem) {
    Script script;
    StartPair(7);
    Work.ConcLink[2] = 0;
    script.ExpectModal(ShareFormName, [] {
        EXPECT_EQ(ShownLinks(), "-1");
        EXPECT_TRUE(ShareForm.Note.Text.starts_with("Proposed: ")) << ShareForm.Note.Text;
        ShareFormOkButton();
        EXPECT_FALSE(ShareForm.State.Shown);
    });
    ShareConcentrationsDialog();
    EXPECT_EQ(Work.ConcLink[2], 1);
    EXPECT_EQ(LeaderOf(SetNo(2)), SetNo(1));
}

TEST(ShareForm, TheWindowsOwnWayOutTiesNothing) {
    Script script;
    StartPair(7);
    Work.ConcLink[2] = 0;
    script.ExpectModal(ShareFormName, [] { ShareFormClose(); });
    ShareConcentrationsDialog();
    EXPECT_EQ(Work.ConcLink[2], 0);
}

TEST(ShareForm, SaysWhenThereIsNothingToPropose) {
    Script script;
    StartPair(7);
    Work.ConcLink[2] = 0;
    Work.ScanFile[2] = "00002.RA3";
    LoadShareForm();
    EXPECT_EQ(ShownLinks(), "--");
    EXPECT_TRUE(ShareForm.Note.Text.starts_with("There is nothing to propose")) << ShareForm.Note.Text;
}

TEST(ShareForm, ShowsTheTiesThatStandAndProposesWhenAsked) {
    Script script;
    StartPair(7);
    Work.ConcLink[1] = 2;
    Work.ConcLink[2] = 0;
    LoadShareForm();
    EXPECT_EQ(ShownLinks(), "2-");
    EXPECT_EQ(ShareForm.Note.Text, "");
    ShareFormProposeButton();
    EXPECT_EQ(ShownLinks(), "-1");
    ShareFormResetButton();
    EXPECT_EQ(ShownLinks(), "2-");
    ShareFormCancelButton();
    EXPECT_EQ(ShownLinks(), "--");
    EXPECT_TRUE(ShareForm.State.Shown);
}

TEST(ShareForm, RefusesChainsSetsThatAreNoneAndASetItself) {
    Script script;
    StartPair(7);
    LoadShareForm();
    script.ExpectMessage("A set has its own concentrations anyway.");
    Enter(1, "1");
    script.ExpectMessage("Invalid data set number entered!");
    Enter(2, "3");
    script.ExpectMessage({"You cannot link this set to a set already linked!", "Share Concentrations",
                          BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    ShareForm.Boxes.LinkNum[0].Text = "";
    ShareForm.Boxes.LinkNum[1].Text = "1";
    Enter(1, "2");
    EXPECT_EQ(ShownLinks(), "-1");
}

// --- what sharing is for -----------------------------------------------------------------------------------

// A protein with a DNA at three loadings and two speeds, each at 280 and 260 nm: 12 sets of 41 points. Sets
// in pairs, the second wavelength behind the first one.
void StartMixture(bool shared) {
    Work = HandWorkspace(8);
    Work.NumSets = 12;
    Work.NumParms = 44;
    Work.NumPts = 12 * PointsOfSet;
    Work.SetPts.Recreate(12, PointsOfSet);
    Work.PtX.Recreate(Work.NumPts);
    Work.PtY.Recreate(Work.NumPts, 1.0F);
    Work.PtSet.Recreate(Work.NumPts, 1);
    Work.Parms[0] = 1.0F; // sigma of the protein and of the DNA at the lower speed
    Work.Parms[5] = 0.6F;
    Work.Parms[6] = std::log(3.0F); // molar signals are 1, so that ln c is that of molars
    const double loadings[] = {0.05, 0.15, 0.4};
    for (long set = 1; set <= 12; ++set) {
        Work.SetRow[set] = Work.SetOfRow[set] = ToInt16(set);
        FillRow(set);
        for (long p = 1; p <= PointsOfSet; ++p) {
            Work.ScanRadius[set][p] = static_cast<float>(RadiusOf(1, p));
            const double r = RadiusOf(1, p);
            Work.PtX[(set - 1) * PointsOfSet + p] = static_cast<float>(r * r / 2 - ReferenceX(RowNo(set)));
            Work.PtSet[(set - 1) * PointsOfSet + p] = ToInt16(set);
        }
        const bool second = set % 2 == 0;
        Work.SetSigmaScale[set] = (set - 1) / 2 % 2 == 0 ? 1.0F : 2.25F;
        Work.ExtinctionRatio[0][set] = second ? 0.6F : 1.0F;
        Work.ExtinctionRatio[1][set] = second ? 1.9F : 1.0F;
        const double loading = loadings[(set - 1) / 4];
        Work.Parms[SlotA(set)] = static_cast<float>(std::log(loading));
        Work.Parms[SlotB(set)] = static_cast<float>(std::log(0.7 * loading));
        if (shared && second) Work.ConcLink[set] = ToInt16(set - 1);
    }
    for (long slot = 0; slot < Work.NumParms; ++slot)
        Work.FreeMap[slot] = SlotHeld;
    Work.FreeMap[6] = 0;
    for (long set = 1; set <= 12; ++set)
        Work.FreeMap[SlotA(set)] = Work.FreeMap[SlotB(set)] = 0;
    ApplyModelFlags();
    Work.FreeMap[0] = Work.FreeMap[5] = SlotHeld;
    NumberFreeSlots(Work);
    ResetFitFunction();
}

// The expected error of ln K: the root of its diagonal element of the inverse normal matrix times the noise.
double ExpectedErrorOfLnK(double noise) {
    const auto n = static_cast<std::size_t>(Work.NumFree);
    std::vector<std::vector<double>> m(n, std::vector<double>(n + 1, 0.0));
    for (long p = 1; p <= Work.NumPts; ++p) {
        CalcDerivs(p, FitFunction(p));
        for (std::size_t a = 0; a < n; ++a)
            for (std::size_t b = 0; b < n; ++b)
                m[a][b] += Work.Deriv[static_cast<long>(a)] * Work.Deriv[static_cast<long>(b)];
    }
    const auto k = static_cast<std::size_t>(Work.FreeMap[6]);
    m[k][n] = 1.0; // the column of the inverse, by Gauss and Jordan
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t r = 0; r < n; ++r) {
            if (r == i) continue;
            const double f = m[r][i] / m[i][i];
            for (std::size_t c = i; c <= n; ++c)
                m[r][c] -= f * m[i][c];
        }
    return noise * std::sqrt(m[k][n] / m[k][k]);
}

TEST(SharedConcentrations, TheErrorOfLnKFallsInAMixtureAtTwoWavelengths) {
    Script script;
    StartMixture(false);
    ASSERT_EQ(Work.NumFree, 25);
    const double own = ExpectedErrorOfLnK(0.005);
    StartMixture(true);
    ASSERT_EQ(Work.NumFree, 13);
    const double shared = ExpectedErrorOfLnK(0.005);
    RecordProperty("own", std::to_string(own));
    RecordProperty("shared", std::to_string(shared));
    EXPECT_LT(shared, 0.7 * own) << own << " to " << shared;
}

} // namespace
} // namespace Quillon
