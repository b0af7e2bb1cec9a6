// What stands behind the stated fields of a fit save file.
#include "persistence/codec/FitExtension.h"
#include "SampleFit.h"
#include "persistence/FitFile.h"
#include "workspace/records/ReadingRemarks.h"

#include <gtest/gtest.h>

#include <functional>

namespace Quillon {
namespace {

Workspace Shared() {
    Workspace w = SampleFit();
    w.ConcLink[3] = 1;
    return w;
}

std::string ByHand(const Workspace& w) {
    Bytes values;
    values.Text("ConcLink").I32(2L * w.MaxSets);
    for (long row = 1; row <= w.MaxSets; ++row)
        values.I16(w.ConcLink[row]);
    Bytes whole;
    whole.Text("EXTENSION").I16(1).I32(static_cast<long>(values.All.size()));
    return whole.All + values.All;
}

TEST(FitExtension, AFileWithoutAdditionsIsWhatItWas) {
    const Workspace w = SampleFit();
    EXPECT_EQ(EncodeExtension(w), "");
    EXPECT_EQ(EncodeFit(w), BytesByHand(w));
}

TEST(FitExtension, StandsBehindTheStatedFields) {
    const Workspace w = Shared();
    EXPECT_EQ(EncodeFit(w), BytesByHand(w) + ByHand(w));
}

TEST(FitExtension, ComesBack) {
    const Workspace w = Shared();
    const Workspace back = DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis;
    EXPECT_TRUE(back.ConcLink == w.ConcLink);
    const Workspace plain = DecodeFit(EncodeFit(SampleFit()), FreshWorkspace()).Analysis;
    EXPECT_TRUE(plain.ConcLink == FreshWorkspace().ConcLink);
}

// Limits that were searched before the level was changed are saved as what they are.
TEST(FitExtension, LimitsOfAnotherLevelKeepTheirs) {
    Workspace w = SampleFit();
    w.ConfidenceLevel = 0.683F; // wanted by now; the limits are those of 0.95
    const Workspace back = DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis;
    EXPECT_EQ(back.ConfidenceLevel, 0.683F);
    EXPECT_EQ(back.LimitsLevel, 0.95F);
    w.LimitsDone = FlagFalse;
    EXPECT_EQ(EncodeExtension(w), "") << "without limits there is no level to be kept";
}

TEST(FitExtension, NamesAndVersionsOfLaterProgramsAreSkipped) {
    const Workspace w = Shared();
    Bytes later;
    later.Text("SomethingNew").I32(3);
    later.All += "abc";
    const std::string known = ByHand(w).substr(2 + 9 + 2 + 4); // its one value
    Bytes whole;
    whole.Text("EXTENSION").I16(2).I32(static_cast<long>(later.All.size() + known.size()));
    Workspace back = FreshWorkspace();
    back.MaxSets = w.MaxSets;
    DecodeExtension(whole.All + later.All + known, back);
    EXPECT_TRUE(back.ConcLink == w.ConcLink);
}

// A sample with readings left out of row 1, which holds intensities.
Workspace WithReadingsLeftOut() {
    Workspace w = SampleFit();
    w.LeftOut[1] = {{2, LeftOutBy::Hand, 6.5F, 0.25F}, {4, LeftOutBy::Intensity, 6.6F, 0.0F}};
    w.SignalCeiling[1] = 1.5F;
    w.IntensityOrder[1] = IntensityOrders::ReferenceFirst;
    for (PerRow<OneBased<float>>& column : w.Intensity)
        column[1].Recreate(w.ScanPoints[1] + 2, 9000.0F);
    return w;
}

TEST(FitExtension, ReadingsLeftOutAndIntensitiesComeBack) {
    const Workspace w = WithReadingsLeftOut();
    const Workspace back = DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis;
    EXPECT_TRUE(back.LeftOut == w.LeftOut);
    EXPECT_TRUE(back.SignalCeiling == w.SignalCeiling);
    EXPECT_TRUE(back.IntensityOrder == w.IntensityOrder);
    EXPECT_TRUE(back.Intensity == w.Intensity);
}

// What was told of a file when it was read was gone with the program that had read it.
TEST(FitExtension, RemarksOnReadingsComeBackByTheHashOfTheFile) {
    Workspace w = SampleFit();
    w.ScanSha256[1] = std::string(64, 'a');
    KeepReadingRemark(w.ScanSha256[1], "line 4: told once");
    std::string bytes = EncodeFit(w);
    bytes.replace(bytes.find("told once"), 9, "told then"); // as another copy of the program has written it
    const Workspace back = DecodeFit(bytes, FreshWorkspace()).Analysis;
    EXPECT_EQ(RemarkOfScan(back, RowNo(1)), "line 4: told then");
    EXPECT_EQ(RemarkOfScan(back, RowNo(2)), "");
    EXPECT_EQ(RemarkOfBaseline(back, RowNo(1)), "");
    bytes.replace(bytes.find(std::string(64, 'a'), bytes.find("ReadingRemarks")), 64, std::string(64, 'z'));
    EXPECT_THROW(DecodeFit(bytes, FreshWorkspace()), RuntimeError);
}

TEST(FitExtension, ReadingsLeftOutThatFitNoScanAreDamage) {
    const auto refused = [](const std::function<void(Workspace&)>& damage) {
        Workspace w = WithReadingsLeftOut();
        damage(w);
        EXPECT_THROW(DecodeFit(EncodeFit(w), FreshWorkspace()), RuntimeError);
    };
    refused([](Workspace& w) { w.LeftOut[1][1].Place = 2; });
    refused([](Workspace& w) { w.LeftOut[1][0].Place = 0; });
    refused([](Workspace& w) { w.LeftOut[1][1].Place = ToInt16(w.ScanPoints[1] + 3); });
    refused([](Workspace& w) { w.LeftOut[1][0].Why = 3; });
    refused([](Workspace& w) { w.SignalCeiling[1] = -1.0F; });
    refused([](Workspace& w) { w.IntensityOrder[1] = 3; });
    refused([](Workspace& w) { w.Intensity[0][1].Resize(1); });
}

TEST(FitExtension, MeansOfScansComeBackAndThoseThatFitNoScanAreDamage) {
    Workspace w = WithReadingsLeftOut();
    w.MeanOf[1] = {{"/data/run", "00001.RA1", std::string(64, 'a'), 10}, {"", "00002.RA1", "", 20}};
    w.MeanSpread[1].Recreate(w.ScanPoints[1] + 2, 0.004F);
    const Workspace back = DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis;
    EXPECT_TRUE(back.MeanOf == w.MeanOf);
    EXPECT_TRUE(back.MeanSpread == w.MeanSpread);
    Workspace cut = w;
    cut.MeanSpread[1].Resize(3);
    EXPECT_THROW(DecodeFit(EncodeFit(cut), FreshWorkspace()), RuntimeError);
    w.MeanOf[1][0].Sha256 = "no hash";
    EXPECT_THROW(DecodeFit(EncodeFit(w), FreshWorkspace()), RuntimeError);
}

TEST(FitExtension, ACutOneIsRefusedAtEveryPlace) {
    const std::string bytes = ByHand(Shared());
    for (std::size_t size = 1; size < bytes.size(); ++size) {
        Workspace back = FreshWorkspace();
        EXPECT_THROW(DecodeExtension(std::string_view(bytes).substr(0, size), back), RuntimeError) << size;
    }
}

TEST(FitExtension, WhatNobodyKnowsIsPassedOver) {
    Workspace back = FreshWorkspace();
    DecodeExtension("other bytes", back);
    EXPECT_TRUE(back == FreshWorkspace());
}

TEST(FitExtension, TheScaleOfTemperaturesComesBackAndIsWrittenWhereItIsNotTheStandingOne) {
    Workspace w = SampleFit();
    w.LimitsLevel = w.ConfidenceLevel; // nothing else to be kept
    w.TemperatureScale = TemperatureScales::Kelvin;
    Bytes value;
    value.Text("TemperatureScale").I32(2).I16(1);
    Bytes whole;
    whole.Text("EXTENSION").I16(1).I32(static_cast<long>(value.All.size()));
    EXPECT_EQ(EncodeExtension(w), whole.All + value.All);
    EXPECT_EQ(DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis.TemperatureScale, TemperatureScales::Kelvin);
    Workspace present = FreshWorkspace(); // a fit from before keeps its scale whatever the user prefers
    present.TemperatureScale = TemperatureScales::Kelvin;
    EXPECT_EQ(DecodeFit(EncodeFit(SampleFit()), present).Analysis.TemperatureScale,
              TemperatureScales::Celsius);
    for (const int scale : {-1, 2}) {
        w.TemperatureScale = ToInt16(scale);
        Workspace back = FreshWorkspace();
        EXPECT_THROW(DecodeExtension(EncodeExtension(w), back), RuntimeError) << scale;
    }
}

TEST(FitExtension, AFitThatStoppedShortCameBackAsConverged) {
    Workspace w = SampleFit();
    w.FitDone = FlagTrue;
    w.Outcome = {FitEnd::StoppedShort, "Stopped short of a minimum: 12", "The data do not determine MW A.",
                 12.0};
    const Workspace back = DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis;
    EXPECT_EQ(back.Outcome.End, FitEnd::StoppedShort);
    EXPECT_EQ(back.Outcome.Sentence, "Stopped short of a minimum: 12");
    EXPECT_EQ(back.Outcome.Reason, "The data do not determine MW A.");
    EXPECT_EQ(back.Outcome.ExpectedDecrease, std::nullopt); // it was promised to that run
    w.Outcome.End = FitEnd::Converged;
    w.Outcome.Reason = "";
    EXPECT_EQ(DecodeFit(EncodeFit(w), FreshWorkspace()).Analysis.Outcome.End, FitEnd::NotRun);
}

TEST(FitExtension, RowsThatDoNotExistAreRefused) {
    for (const int row : {-1, 19}) {
        Workspace w = Shared();
        w.ConcLink[2] = ToInt16(row);
        Workspace back = FreshWorkspace();
        back.MaxSets = w.MaxSets;
        EXPECT_THROW(DecodeExtension(EncodeExtension(w), back), RuntimeError) << row;
    }
}

} // namespace
} // namespace Quillon
