// Reading the settings: keys, defaults, clamps, widths.
#include "persistence/Defaults.h"
#include "platform/Paths.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

class ReadDefaults : public ::testing::Test {
protected:
    ReadDefaults() { Work = FreshWorkspace(); }
    void Read(const std::string& ini) {
        Scripted.MakeFile("QUILLON.ini", ini);
        Work = FreshWorkspace();
        ReadFitDefaults();
        ReadProgramDefaults();
    }
    void ReadFit(const std::string& lines) { Read("[gnllsq]\n" + lines); }
    void ReadProgram(const std::string& lines) { Read("[quillon]\n" + lines); }
    Script Scripted;
};

TEST_F(ReadDefaults, WithoutAnIniFileAllDefaultsHold) {
    Work.ConfidenceLevel = Work.ConvergenceLimit = Work.ParmsAccuracy = 9.0F;
    Work.HighCorrelation = Work.VeryHighCorrelation = 9.0F;
    Work.PauseBeforeFit = 0;
    Work.MaxIterations = Work.YieldInterval = 9;
    Work.OverlayPlot = Work.SpreadResiduals = FlagTrue;
    Work.FormScalingPercent = Work.Model = Work.ConcUnits = Work.MassUnits = Work.CellType = 9;
    Work.AbsorpA = Work.AbsorpB = Work.ExtA = Work.ExtB = Work.RefrA = Work.RefrB = 9.0F;
    Work.SolventDensity = Work.VbarA = Work.VbarB = Work.CellPathlength = 9.0F;
    Work.FringeMassA = Work.FringeMassB = Work.RotorExpansion = Work.ReportFontSize = 9.0F;
    Work.NonIdeal = Work.SeparateK = Work.RangeLogPlot = FlagTrue;
    for (const int place : {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12, 13, 15})
        Work.ChannelRadii[place] = 9.0F;
    Work.MaxPtsPerSet = Work.NameConvention = Work.TemperatureScale = 9;
    ReadFitDefaults();
    ReadProgramDefaults();
    EXPECT_TRUE(Work == FreshWorkspace());
}

TEST_F(ReadDefaults, TheDefaultsAreThoseOfTheTable) {
    Read("");
    EXPECT_EQ(Work.ConfidenceLevel, 0.683F);
    EXPECT_EQ(Work.ConvergenceLimit, 0.05F);
    EXPECT_EQ(Work.ParmsAccuracy, 0.001F);
    EXPECT_EQ(Work.HighCorrelation, 0.97F);
    EXPECT_EQ(Work.VeryHighCorrelation, 0.99F);
    EXPECT_EQ(Work.PauseBeforeFit, FlagTrue);
    EXPECT_EQ(Work.MaxIterations, 40);
    EXPECT_EQ(Work.YieldInterval, 200);
    EXPECT_EQ(Work.FormScalingPercent, 100);
    EXPECT_EQ(Work.AbsorpB, 1.0F);
    EXPECT_EQ(Work.ExtB, 10000.0F);
    EXPECT_EQ(Work.RefrB, 20000.0F);
    EXPECT_EQ(Work.SolventDensity, 1.003994F);
    EXPECT_EQ(Work.VbarB, 0.73F);
    EXPECT_EQ(Work.CellPathlength, 1.2F);
    EXPECT_EQ(Work.FringeMassB, 2.756F);
    EXPECT_EQ(Work.CellType, 3);
    EXPECT_EQ(Work.ChannelRadii[13], 7.25F);
    EXPECT_EQ(Work.ChannelRadii[7], 6.85F);
    EXPECT_EQ(Work.ChannelRadii[6], 0.0F); // no key
    EXPECT_EQ(Work.MaxPtsPerSet, 2048);
    EXPECT_EQ(Work.RotorExpansion, 1e-11F);
    EXPECT_EQ(Work.ReportFontSize, 12.0F);
}

TEST_F(ReadDefaults, EveryKeyOfTheFitIsRead) {
    ReadFit("ConfidenceLevel=0.95\nConvergenceLimit=0.5\nParmsAccuracy=0.01\nHighCorrelation=0.8\n"
            "VeryHighCorrelation=0.9\nPauseBeforeFit=False\nMaxIterations=77\nYieldInterval=500\n"
            "OverlayPlot=True\nSpreadResiduals=True\n");
    EXPECT_EQ(Work.ConfidenceLevel, 0.95F);
    EXPECT_EQ(Work.ConvergenceLimit, 0.5F);
    EXPECT_EQ(Work.ParmsAccuracy, 0.01F);
    EXPECT_EQ(Work.HighCorrelation, 0.8F);
    EXPECT_EQ(Work.VeryHighCorrelation, 0.9F);
    EXPECT_EQ(Work.PauseBeforeFit, 0);
    EXPECT_EQ(Work.MaxIterations, 77);
    EXPECT_EQ(Work.YieldInterval, 500);
    EXPECT_EQ(Work.OverlayPlot, FlagTrue);
    EXPECT_EQ(Work.SpreadResiduals, FlagTrue);
}

TEST_F(ReadDefaults, EveryKeyOfTheProgramIsRead) {
    ReadProgram("formscalingpercent=125\nAbsorptivity=1.5\nExtinction=2E4\nRefractometricExtinction=3e4\n"
                "SolventDensity=1.02\nSoluteVBar=0.72\nCellPathlength=0.3\nSoluteRefractivity=3.25\n"
                "FitModelNumber=8\nNonIdeal=True\nSplitKs=True\nConcentrationUnits=2\nMWUnits=True\n"
                "CellType=4\nRangeLogPlot=True\nMaxPtsPerSet=4000\nRotorExpansion=2E-11\nNameConvention=0\n"
                "ReportFontSize=9.5\nTemperatureScale=kelvin\n");
    EXPECT_EQ(Work.TemperatureScale, TemperatureScales::Kelvin);
    EXPECT_EQ(Work.FormScalingPercent, 125);
    EXPECT_EQ(Work.AbsorpA, 1.5F);
    EXPECT_EQ(Work.AbsorpB, 1.5F);
    EXPECT_EQ(Work.ExtA, 20000.0F);
    EXPECT_EQ(Work.ExtB, 20000.0F);
    EXPECT_EQ(Work.RefrA, 30000.0F);
    EXPECT_EQ(Work.RefrB, 30000.0F);
    EXPECT_EQ(Work.SolventDensity, 1.02F);
    EXPECT_EQ(Work.VbarA, 0.72F);
    EXPECT_EQ(Work.VbarB, 0.72F);
    EXPECT_EQ(Work.CellPathlength, 0.3F);
    EXPECT_EQ(Work.FringeMassA, 3.25F);
    EXPECT_EQ(Work.FringeMassB, 3.25F);
    EXPECT_EQ(Work.Model, 8);
    EXPECT_EQ(Work.NonIdeal, FlagTrue);
    EXPECT_EQ(Work.SeparateK, FlagTrue);
    EXPECT_EQ(Work.ConcUnits, 2);
    EXPECT_EQ(Work.MassUnits, 2);
    EXPECT_EQ(Work.CellType, 4);
    EXPECT_EQ(Work.RangeLogPlot, FlagTrue);
    EXPECT_EQ(Work.MaxPtsPerSet, 4000);
    EXPECT_EQ(Work.RotorExpansion, 2e-11F);
    EXPECT_EQ(Work.NameConvention, 0);
    EXPECT_EQ(Work.ReportFontSize, 9.5F);
}

TEST_F(ReadDefaults, EachChannelRadiusHasItsPlace) {
    const std::pair<const char*, int> places[] = {
        {"ChAInner3", 0},  {"ChAOuter3", 8},  {"ChBInner3", 2}, {"ChBOuter3", 10}, {"ChCInner3", 4},
        {"ChCOuter3", 12}, {"ChAInner4", 1},  {"ChAOuter4", 9}, {"ChBInner4", 3},  {"ChBOuter4", 11},
        {"ChCInner4", 5},  {"ChCOuter4", 13}, {"ChDInner4", 7}, {"ChDOuter4", 15}};
    const Workspace fresh = FreshWorkspace();
    for (const auto& [key, place] : places) {
        ReadProgram(std::string(key) + "=6.125\n");
        for (int other = 0; other <= 15; ++other)
            EXPECT_EQ(Work.ChannelRadii[other], other == place ? 6.125F : fresh.ChannelRadii[other]) << key;
    }
}

TEST_F(ReadDefaults, TheScalingOfFormsIsClamped) {
    const std::pair<const char*, int> cases[] = {{"50", 75},   {"74", 75},   {"75", 75}, {"200", 200},
                                                 {"201", 200}, {"500", 200}, {"-1", 75}, {"x", 75}};
    for (const auto& [text, percent] : cases) {
        ReadProgram(std::string("formscalingpercent=") + text + "\n");
        EXPECT_EQ(Work.FormScalingPercent, percent) << text;
    }
}

TEST_F(ReadDefaults, PointsPerSetAreAtLeast2048) {
    const std::pair<const char*, int> cases[] = {{"1000", 2048}, {"500", 2048},  {"2047", 2048},
                                                 {"2048", 2048}, {"4000", 4000}, {"32767", 32767}};
    for (const auto& [text, points] : cases) {
        ReadProgram(std::string("MaxPtsPerSet=") + text + "\n");
        EXPECT_EQ(Work.MaxPtsPerSet, points) << text;
    }
}

TEST_F(ReadDefaults, ABooleanIsTrueWhenItSaysSoInAnyCase) {
    for (const char* const yes : {"True", "TRUE", "true", "  tRuE  ", "\"True\""}) {
        ReadFit(std::string("OverlayPlot=") + yes + "\n");
        EXPECT_EQ(Work.OverlayPlot, FlagTrue) << yes;
    }
    for (const char* const no : {"False", "", "1", "-1", "yes", "Truely"}) {
        ReadFit(std::string("OverlayPlot=") + no + "\n");
        EXPECT_EQ(Work.OverlayPlot, 0) << no;
    }
}

TEST_F(ReadDefaults, ThePauseIsOffOnlyWhenTheTextIsExactlyFalse) {
    ReadFit("PauseBeforeFit=False\n");
    EXPECT_EQ(Work.PauseBeforeFit, 0);
    for (const char* const on : {"FALSE", "false", "no", "", "0", "Falsehood", "True"}) {
        ReadFit(std::string("PauseBeforeFit=") + on + "\n");
        EXPECT_EQ(Work.PauseBeforeFit, FlagTrue) << on;
    }
}

TEST_F(ReadDefaults, MassUnitsHaveThreeSpellings) {
    const std::pair<const char*, int> cases[] = {
        {"True", 2},  {"true", 2}, {"Buoyant", 1}, {"BUOYANT", 1}, {"buoyant", 1},
        {"False", 0}, {"", 0},     {"2", 0},       {"molar", 0},   {"Buoyantly", 0}};
    for (const auto& [text, units] : cases) {
        ReadProgram(std::string("mwunits=") + text + "\n");
        EXPECT_EQ(Work.MassUnits, units) << text;
    }
}

TEST_F(ReadDefaults, SectionsAndKeysInAnyCase) {
    Read("[GNLLSQ]\nMAXITERATIONS = 12\n[Quillon]\nFITMODELNUMBER=3\n");
    EXPECT_EQ(Work.MaxIterations, 12);
    EXPECT_EQ(Work.Model, 3);
    Read("[gnllsq]\nFitModelNumber=3\n"); // in the wrong section
    EXPECT_EQ(Work.Model, 1);
}

TEST_F(ReadDefaults, UnknownKeysAndCommentsAreIgnored) {
    Read("; "
         "MaxIterations=1\n[gnllsq]\nColour=red\n;MaxIterations=2\n#MaxIterations=3\nMaxIterations=4\n[x]\ny="
         "1\n");
    EXPECT_EQ(Work.MaxIterations, 4);
}

TEST_F(ReadDefaults, ANumberIsTheFrontOfItsText) {
    ReadFit("ConvergenceLimit=0.5 percent\nMaxIterations=12.7x\nYieldInterval=abc\nHighCorrelation= .9D0\n");
    EXPECT_EQ(Work.ConvergenceLimit, 0.5F);
    EXPECT_EQ(Work.MaxIterations, 13);
    EXPECT_EQ(Work.YieldInterval, 0);
    EXPECT_EQ(Work.HighCorrelation, 0.9F);
}

TEST_F(ReadDefaults, IntegersRoundToTheEvenNeighbour) {
    ReadFit("MaxIterations=12.5\nYieldInterval=13.5\n");
    EXPECT_EQ(Work.MaxIterations, 12);
    EXPECT_EQ(Work.YieldInterval, 14);
}

TEST_F(ReadDefaults, AValueIsReadUpToTwentyCharacters) {
    ReadFit(
        "ConvergenceLimit=0.000000000000000000125\n"); // the twentieth character is the eighteenth decimal
    EXPECT_EQ(Work.ConvergenceLimit, 0.0F);
    ReadFit("ConvergenceLimit=00000000000000000012\n"); // twenty characters
    EXPECT_EQ(Work.ConvergenceLimit, 12.0F);
    ReadFit("ConvergenceLimit=000000000000000000123\n"); // one more
    EXPECT_EQ(Work.ConvergenceLimit, 12.0F);
    ReadFit("PauseBeforeFit=                          False\n"); // blanks in front are not of the value
    EXPECT_EQ(Work.PauseBeforeFit, 0);
}

TEST_F(ReadDefaults, AChoiceThatDoesNotExistIsTheStandingOne) {
    for (const char* const none : {"0", "23", "-1", "99", "x"}) {
        ReadProgram(std::string("FitModelNumber=") + none + "\n");
        EXPECT_EQ(Work.Model, 1) << none;
    }
    for (const char* const none : {"-1", "6", "77"}) {
        ReadProgram(std::string("ConcentrationUnits=") + none + "\n");
        EXPECT_EQ(Work.ConcUnits, 0) << none;
    }
    for (const char* const none : {"0", "2", "5", "-3"}) {
        ReadProgram(std::string("CellType=") + none + "\n");
        EXPECT_EQ(Work.CellType, 3) << none;
    }
    ReadProgram("CellType=1\nFitModelNumber=22\nConcentrationUnits=5\n");
    EXPECT_EQ(Work.CellType, 1);
    EXPECT_EQ(Work.Model, 22);
    EXPECT_EQ(Work.ConcUnits, 5);
}

BoxRequest ReadFailure(const std::string& why) {
    return {"Error occurred while reading defaults from QUILLON.ini\n\n" +
                JoinPath(Host.ConfigDirectory(), "QUILLON.ini") + ": " + why,
            "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok};
}

TEST_F(ReadDefaults, AFailureIsToldAndWhatWasReadBeforeHolds) {
    Scripted.ExpectMessage(ReadFailure("MaxIterations=40000: Overflow"), BoxAnswer::Ok);
    ReadFit("ConvergenceLimit=0.5\nMaxIterations=40000\nYieldInterval=500\nOverlayPlot=True\n[quillon]"
            "\nCellType=4\n");
    EXPECT_EQ(Work.ConvergenceLimit, 0.5F); // read before
    EXPECT_EQ(Work.MaxIterations, 40);
    EXPECT_EQ(Work.YieldInterval, 200); // not reached
    EXPECT_EQ(Work.CellType, 4);        // the other section is read all the same
    Scripted.ExpectMessage(ReadFailure("SolventDensity=1e39: Overflow"), BoxAnswer::Ok);
    ReadProgram("SolventDensity=1e39\n");
    EXPECT_EQ(Work.SolventDensity, 1.003994F);
    Scripted.ExpectMessage(ReadFailure("SolventDensity=1e999: Overflow"), BoxAnswer::Ok);
    ReadProgram("SolventDensity=1e999\n");
    EXPECT_EQ(Work.SolventDensity, 1.003994F);
}

TEST_F(ReadDefaults, AFileThatCannotBeReadIsTold) {
    Scripted.MakeFile("QUILLON.ini", "[gnllsq]\nMaxIterations=7\n");
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError("Path/File access error"); };
    Scripted.ExpectMessage(ReadFailure("Path/File access error"), BoxAnswer::Ok);
    ReadFitDefaults();
    Scripted.ExpectMessage(ReadFailure("Path/File access error"), BoxAnswer::Ok);
    ReadProgramDefaults();
    EXPECT_TRUE(Work == FreshWorkspace());
}

} // namespace
} // namespace Quillon
