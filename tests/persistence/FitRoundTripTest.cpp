// What comes back from a save file: everything that is in it, and nothing of the analysis before.
#include "SampleFit.h"

#include "persistence/FitFile.h"
#include "platform/Platform.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Fields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

namespace Quillon {
namespace {

// The members in which two workspaces differ.
std::set<std::string> Differences(const Workspace& a, const Workspace& b) {
    std::set<std::string> names;
    VisitMembers([&](const char* name, auto member) {
        if (!(a.*member == b.*member)) names.insert(name);
    });
    return names;
}

// A sample that has been through a file once has the longer model list, as has every restored fit.
Workspace RestoredSample() {
    Workspace w = SampleFit();
    w.ModelCount = 24;
    w.ModelName.Resize(24);
    return w;
}

TEST(FitRoundTrip, EveryFieldComesBack) {
    const Workspace w = RestoredSample();
    const Workspace back = DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis;
    // Derived or working records that no file holds; the scan of row 4 and the baseline of row 1 are gone,
    // their counts have zeros behind them.
    EXPECT_EQ(Differences(w, back), (std::set<std::string>{"NormVector", "AtBound", "ScanRadius", "ScanValue",
                                                           "BaselineRadius", "BaselineValue"}));
    EXPECT_EQ(back.NormVector, ZeroBased<double>(1));
    EXPECT_EQ(back.AtBound, ZeroBased<std::int16_t>(1));
    for (const long row : {1L, 2L, 3L}) {
        EXPECT_EQ(back.ScanRadius[row], w.ScanRadius[row]);
        EXPECT_EQ(back.ScanValue[row], w.ScanValue[row]);
    }
    EXPECT_EQ(back.BaselineRadius[3], w.BaselineRadius[3]);
    EXPECT_EQ(back.BaselineValue[3], w.BaselineValue[3]);
    EXPECT_EQ(back.ScanRadius[4], OneBased<float>(11));
    EXPECT_EQ(back.BaselineValue[1], OneBased<float>(9));
}

// A member that came back as it is at the start would prove nothing: these are all that a file holds, but
// MaxParms, MaxSets and DataDirectory, which have tests of their own.
TEST(FitRoundTrip, EveryFieldOfTheSampleDiffersFromAFreshStart) {
    EXPECT_EQ(Differences(RestoredSample(), FreshWorkspace()), (std::set<std::string>{"NumParms",
                                                                                      "NumFree",
                                                                                      "NumSets",
                                                                                      "MaxPtsPerSet",
                                                                                      "NumPts",
                                                                                      "MaxIterations",
                                                                                      "BoundsActive",
                                                                                      "ConstraintFlags",
                                                                                      "MonitorMode",
                                                                                      "ConvergenceLimit",
                                                                                      "ConfidenceLevel",
                                                                                      "HighCorrelation",
                                                                                      "VeryHighCorrelation",
                                                                                      "FitDone",
                                                                                      "FitValid",
                                                                                      "SumSq",
                                                                                      "RmsResidual",
                                                                                      "LimitsDone",
                                                                                      "LimitsLevel",
                                                                                      "OverlayPlot",
                                                                                      "SpreadResiduals",
                                                                                      "Parms",
                                                                                      "Bounds",
                                                                                      "ParmName",
                                                                                      "ParmTitle",
                                                                                      "ParmFormat",
                                                                                      "SetLabel",
                                                                                      "SetPts",
                                                                                      "PtX",
                                                                                      "PtY",
                                                                                      "PtSet",
                                                                                      "PtFit",
                                                                                      "NormMatrix",
                                                                                      "FreeIndex",
                                                                                      "FreeMap",
                                                                                      "FitTitle",
                                                                                      "XAxisTitle",
                                                                                      "DataTypeName",
                                                                                      "ParmLimits",
                                                                                      "SetRow",
                                                                                      "ParmScale",
                                                                                      "ModelCount",
                                                                                      "Model",
                                                                                      "ModelChosen",
                                                                                      "DataChosen",
                                                                                      "ConcUnits",
                                                                                      "AbsorpA",
                                                                                      "AbsorpB",
                                                                                      "ExtA",
                                                                                      "ExtB",
                                                                                      "CellPathlength",
                                                                                      "SolventDensity",
                                                                                      "VbarA",
                                                                                      "VbarB",
                                                                                      "FringeMassA",
                                                                                      "FringeMassB",
                                                                                      "MassUnits",
                                                                                      "NonIdeal",
                                                                                      "SeparateK",
                                                                                      "ModelName",
                                                                                      "ScanRPM",
                                                                                      "SetSigmaScale",
                                                                                      "CellPath",
                                                                                      "SetSignalScale",
                                                                                      "ScanTemperature",
                                                                                      "ScanWavelength",
                                                                                      "ScanOmega2t",
                                                                                      "ScansAveraged",
                                                                                      "ScanTime",
                                                                                      "ScanComment",
                                                                                      "ScanPoints",
                                                                                      "BaselinePoints",
                                                                                      "FitRange",
                                                                                      "CenterpieceType",
                                                                                      "DataChannel",
                                                                                      "ScanDirectory",
                                                                                      "ScanFile",
                                                                                      "ScanRadius",
                                                                                      "ScanValue",
                                                                                      "BaselineFile",
                                                                                      "BaselineRadius",
                                                                                      "BaselineValue",
                                                                                      "IncludeSet",
                                                                                      "ConcConstraintA",
                                                                                      "ConcConstraintB",
                                                                                      "ConcToleranceA",
                                                                                      "ConcToleranceB",
                                                                                      "ConstraintFit",
                                                                                      "OffsetLink",
                                                                                      "BaselineShifted",
                                                                                      "BaselineShift",
                                                                                      "BaselineRPM",
                                                                                      "ExtinctionRatio",
                                                                                      "NameConvention",
                                                                                      "BaselineDirectory",
                                                                                      "BaselineDirectoryLast",
                                                                                      "LabelPrefix",
                                                                                      "HighestSet",
                                                                                      "RefrA",
                                                                                      "RefrB",
                                                                                      "InterferenceData",
                                                                                      "ParmsAccuracy"}));
}

TEST(FitRoundTrip, TheCheckerSeesAMemberThatDiffers) {
    Workspace w = RestoredSample();
    w.ExtinctionRatio[1][18] = 3.0F;
    const Workspace back = DecodeFit(EncodeFit(RestoredSample()), FreshWorkspace()).Analysis;
    EXPECT_EQ(Differences(w, back).count("ExtinctionRatio"), 1U);
}

TEST(FitRoundTrip, SavedRestoredSavedAgainGivesTheSameBytes) {
    const std::string first = EncodeFit(RestoredSample());
    EXPECT_EQ(EncodeFit(DecodeFit(first, FreshWorkspace()).Analysis), first);
}

TEST(FitRoundTrip, AFirstSaveDiffersInTheLengthOfTheModelListAlone) {
    const Workspace w = SampleFit();
    ASSERT_EQ(w.ModelCount, 22);
    const std::string first = EncodeFit(w);
    const std::string second = EncodeFit(DecodeFit(first, FreshWorkspace()).Analysis);
    std::string expected = WithI16(first, OffsetOfField(w, 46), 24);
    expected.insert(OffsetOfField(w, 65), std::string(4, '\0')); // two empty names
    EXPECT_EQ(second, expected);
    EXPECT_EQ(EncodeFit(DecodeFit(second, FreshWorkspace()).Analysis), second);
}

TEST(FitRoundTrip, WithoutLimits) {
    Workspace w = RestoredSample();
    w.LimitsDone = 0;
    const std::string first = EncodeFit(w);
    EXPECT_EQ(EncodeFit(DecodeFit(first, FreshWorkspace()).Analysis), first);
}

TEST(FitRoundTrip, AWorkspaceWithoutAFit) {
    Workspace w = FreshWorkspace();
    w.ModelCount = 24;
    w.ModelName.Recreate(24, "m");
    const std::string first = EncodeFit(w);
    const Workspace back = DecodeFit(first, FreshWorkspace()).Analysis;
    EXPECT_EQ(Differences(w, back), std::set<std::string>{});
    EXPECT_EQ(EncodeFit(back), first);
}

TEST(FitRoundTrip, TheLargestFit) {
    Workspace w = LargestFit();
    w.ModelCount = 24;
    w.ModelName.Resize(24);
    const std::string first = EncodeFit(w);
    const Workspace back = DecodeFit(first, FreshWorkspace()).Analysis;
    EXPECT_EQ(Differences(w, back), (std::set<std::string>{"NormVector", "AtBound"}));
    EXPECT_TRUE(EncodeFit(back) == first);
}

TEST(FitRoundTrip, TheRichestFit) {
    Workspace w = RichestFit();
    w.ModelCount = 24;
    w.ModelName.Resize(24);
    const std::string first = EncodeFit(w);
    EXPECT_TRUE(first == BytesByHand(w));
    const Workspace back = DecodeFit(first, FreshWorkspace()).Analysis;
    EXPECT_EQ(Differences(w, back), (std::set<std::string>{"NormVector", "AtBound"}));
    EXPECT_TRUE(EncodeFit(back) == first);
}

TEST(FitRoundTrip, WhatBelongsToTheUserStaysAsItIs) {
    Workspace present = FreshWorkspace();
    present.YieldInterval = 77;
    present.PauseBeforeFit = 0;
    present.FormScalingPercent = 150;
    present.CellType = 4;
    present.RangeLogPlot = FlagTrue;
    present.ChannelRadii[5] = 6.0F;
    present.RotorExpansion = 2e-11F;
    present.ReportFontSize = 9.0F;
    present.WorkDirectory = "/home/u";
    present.ChosenPath = "/home/u/scan.RA1";
    present.ChosenName = "scan.RA1";
    present.EditBackColor = 5;
    present.ProgramName = "Other";
    present.ProgramDate = "today";
    present.LastModel = 9;
    present.LastNonIdeal = FlagTrue;
    present.LastSeparateK = FlagTrue;
    const Workspace plain = DecodeFit(EncodeFit(SampleFit()), FreshWorkspace()).Analysis;
    const Workspace back = DecodeFit(EncodeFit(SampleFit()), present).Analysis;
    EXPECT_EQ(
        Differences(plain, back),
        (std::set<std::string>{"YieldInterval", "PauseBeforeFit", "FormScalingPercent", "CellType",
                               "RangeLogPlot", "ChannelRadii", "RotorExpansion", "ReportFontSize",
                               "WorkDirectory", "ChosenPath", "ChosenName", "EditBackColor", "ProgramName",
                               "ProgramDate", "LastModel", "LastNonIdeal", "LastSeparateK"}));
    EXPECT_EQ(back.ChannelRadii, present.ChannelRadii);
    EXPECT_EQ(back.LastModel, 9);
}

TEST(FitRoundTrip, NothingOfTheAnalysisBeforeStays) {
    Workspace before = LargestFit();
    before.SetChanged.Recreate(18, FlagTrue);
    before.NewData = FlagTrue;
    before.SetParmMemory(2, 7) = 3.0F;
    before.PtResid.Recreate(100, 1.0F);
    before.RunsZ = 2.0F;
    before.CurrentPage = 1;
    before.BoundHit = before.Singular = before.AbortFit = 1;
    const Workspace back = DecodeFit(EncodeFit(RestoredSample()), before).Analysis;
    const Workspace plain = DecodeFit(EncodeFit(RestoredSample()), FreshWorkspace()).Analysis;
    EXPECT_EQ(Differences(plain, back), std::set<std::string>{});
}

TEST(FitRoundTrip, LeftoversOfABrokenFitDoNotKeepAFileFromBeingRead) {
    Workspace w = RestoredSample();
    w.FitDone = w.FitValid = w.LimitsDone = 0;
    w.SumSq = std::numeric_limits<double>::infinity();
    w.RmsResidual = std::numeric_limits<float>::quiet_NaN();
    w.NormMatrix(0, 1) = std::numeric_limits<double>::quiet_NaN();
    w.PtFit[3] = -std::numeric_limits<float>::infinity();
    w.FreeMap[40] = 17; // of a fit with more sets
    w.FreeIndex[1] = 40;
    const std::string first = EncodeFit(w);
    EXPECT_EQ(EncodeFit(DecodeFit(first, FreshWorkspace()).Analysis), first);
}

TEST(FitRoundTrip, PointsBetweenTwoTablesAreNotHeldAgainstAFile) {
    Workspace w = RestoredSample();
    w.FitDone = w.FitValid = w.DataChosen = 0;
    w.FitRange[1][1] = 6; // the table has moved on, the points have not
    const std::string first = EncodeFit(w);
    EXPECT_EQ(EncodeFit(DecodeFit(first, FreshWorkspace()).Analysis), first);
}

TEST(FitRoundTrip, TheRatioOfTheConfidenceLimitsIsDerivedAgain) {
    Script script;
    Work = FreshWorkspace();
    AdoptFit(EncodeFit(SampleFit()), "fit.quil");
    // With two fitted parameters and m degrees of freedom the upper tail of F is (1 + 2 F / m)^(-m/2), so the
    // ratio 1 + (2 / m) F at the tail 1 - p is (1 - p)^(-2/m).
    const double m = 10 - 2;
    ASSERT_EQ(Work.NumPts - Work.NumFree, 8);
    EXPECT_NEAR(static_cast<double>(Work.ConfidenceRatio), std::pow(0.05, -2.0 / m), 1e-5);
}

TEST(FitRoundTrip, WithoutLimitsNoRatioIsDerived) {
    Script script;
    Work = FreshWorkspace();
    Workspace w = SampleFit();
    w.LimitsDone = 0;
    AdoptFit(EncodeFit(w), "fit.quil");
    EXPECT_EQ(Work.ConfidenceRatio, 0.0F);
}

TEST(FitRoundTrip, ALevelOutsideItsRangeGivesNoRatio) {
    Script script;
    for (const float level : {0.0F, 1.0F, -3.0F, 7.0F}) {
        Work = FreshWorkspace();
        Workspace w = SampleFit();
        w.ConfidenceLevel = w.LimitsLevel = level;
        AdoptFit(EncodeFit(w), "fit.quil");
        EXPECT_EQ(Work.ConfidenceRatio, 0.0F);
        EXPECT_EQ(Work.ConfidenceLevel, level);
    }
}

TEST(FitRoundTrip, SetsOfRowsAreDerivedAgain) {
    Script script;
    Work = FreshWorkspace();
    AdoptFit(EncodeFit(SampleFit()), "fit.quil");
    EXPECT_EQ(Work.SetOfRow[1], 1);
    EXPECT_EQ(Work.SetOfRow[2], 0);
    EXPECT_EQ(Work.SetOfRow[3], 2);
    EXPECT_EQ(Work.FitFile, "fit.quil");
}

TEST(FitRoundTrip, AFileWithFewerSetsIsReadAndSavedAsItIs) {
    Workspace w = RestoredSample();
    w.MaxSets = 4;
    w.MaxParms = 20;
    const std::string first = EncodeFit(w);
    EXPECT_EQ(first, BytesByHand(w));
    const Workspace back = DecodeFit(first, FreshWorkspace()).Analysis;
    EXPECT_EQ(back.MaxSets, 4);
    EXPECT_EQ(back.MaxParms, 20);
    EXPECT_EQ(back.Parms.Hi(), StandardMaxParms - 1); // no command finds a shorter array than at the start
    EXPECT_EQ(back.ScanFile.Hi(), StandardMaxSets);
    EXPECT_EQ(back.Parms[19], w.Parms[19]);
    EXPECT_EQ(back.Parms[20], 0.0F);
    EXPECT_EQ(back.BaselineFile[5], "(none)");
    EXPECT_EQ(EncodeFit(back), first);
}

} // namespace
} // namespace Quillon
