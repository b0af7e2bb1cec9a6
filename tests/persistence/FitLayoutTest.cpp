// The layout of the save file, byte for byte, against a writer that shares nothing with the program's own.
#include "SampleFit.h"

#include "models/table/Catalogue.h"
#include "persistence/FitFile.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

std::string Hex(const std::string& bytes) {
    static const char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        if (!text.empty()) text += ' ';
        text += digits[static_cast<unsigned char>(c) >> 4U];
        text += digits[static_cast<unsigned char>(c) & 15U];
    }
    return text;
}

TEST(FitLayout, StartsWithNamesAndSizes) {
    EXPECT_EQ(Hex(EncodeFit(SampleFit()).substr(0, 52)),
              "07 00 51 55 49 4C 4C 4F 4E "                 // QUILLON
              "05 00 34 2E 30 2E 30 "                       // 4.0.0
              "3E 00 0E 00 02 00 12 00 02 00 "              // 62, 14, 2, 18, 2
              "A0 0F 0A 00 37 00 00 00 03 00 02 00 "        // 4000, 10, 55, 0, 3, 2
              "00 00 80 3E 33 33 73 3F 66 66 66 3F 33 33"); // 0.25, 0.95, 0.9, 0.95 cut
}

TEST(FitLayout, EveryFieldStandsInItsPlace) {
    const Workspace w = SampleFit();
    EXPECT_EQ(EncodeFit(w), BytesByHand(w));
}

TEST(FitLayout, TheLargestFitToo) {
    const Workspace w = LargestFit();
    EXPECT_TRUE(EncodeFit(w) == BytesByHand(w));
}

TEST(FitLayout, WithoutLimitsTheFileIsShorterByEightBytesForEachFittedParameter) {
    Workspace w = SampleFit();
    const std::size_t with = EncodeFit(w).size();
    w.LimitsDone = 0;
    EXPECT_EQ(EncodeFit(w).size(), with - 16);
    EXPECT_EQ(EncodeFit(w), BytesByHand(w));
}

TEST(FitLayout, ASetWithoutAFileBringsNoPoints) {
    Workspace w = SampleFit();
    const std::size_t before = EncodeFit(w).size();
    w.ScanPoints[5] = 300;
    w.BaselinePoints[5] = 300;
    w.BaselineFile[5] = "b"; // shorter than "(none)" by five
    EXPECT_EQ(EncodeFit(w).size(), before - 5);
    w.ScanPoints[2] = 0; // a file without points
    EXPECT_EQ(EncodeFit(w).size(), before - 5 - 3 * 8);
}

TEST(FitLayout, ABaselineTakenOffBringsNoPointsThoughItsCountStays) {
    Workspace w = SampleFit();
    w.BaselineRadius[1].Recreate(9, 6.0F);
    w.BaselineValue[1].Recreate(9, 0.1F);
    const std::size_t before = EncodeFit(w).size();
    const std::string bytes = EncodeFit(w);
    const std::size_t counts = OffsetOfField(w, 76);
    EXPECT_EQ(bytes.substr(counts, 2), std::string("\x09\0", 2));
    w.BaselineFile[1] = "123456"; // as long as "(none)"
    EXPECT_EQ(EncodeFit(w).size(), before + 9 * 8);
}

TEST(FitLayout, UnusedEntriesOfSetPtsAreZero) {
    const Workspace w = SampleFit();
    ASSERT_EQ(w.SetPts.Hi(), 2);
    const std::string bytes = EncodeFit(w);
    const std::string field = bytes.substr(OffsetOfField(w, 31), 36);
    EXPECT_EQ(field, std::string("\x04\0\x06\0", 4) + std::string(32, '\0'));
}

TEST(FitLayout, AModelListNeverShownIsSavedAsTheCatalogueHasIt) {
    Workspace w = SampleFit();
    w.ModelName.Recreate(0);
    const std::string bytes = EncodeFit(w);
    Bytes names;
    for (int i = 1; i <= 22; ++i)
        names.Text(ModelDialogName(i));
    Workspace named = w;
    named.ModelName.Recreate(22);
    EXPECT_EQ(bytes.substr(OffsetOfField(named, 64), names.All.size()), names.All);
}

TEST(FitLayout, WorkingArraysThatDoNotMatchTheCountsAreSavedAsZeros) {
    Workspace w = SampleFit();
    w.NormMatrix.Recreate(-1, -1);
    w.ParmLimits[0].Recreate(-1);
    w.ParmLimits[1].Recreate(-1);
    w.PtFit.Recreate(0);
    const std::string bytes = EncodeFit(w);
    w.NormMatrix.Recreate(1, 1);
    w.ParmLimits[0].Recreate(1);
    w.ParmLimits[1].Recreate(1);
    w.PtFit.Recreate(w.NumPts);
    EXPECT_EQ(bytes, BytesByHand(w));
}

TEST(FitLayout, ATextBeyondItsCountIsAnOverflow) {
    Workspace w = SampleFit();
    w.ScanComment[2] = std::string(32767, 'c');
    EXPECT_EQ(EncodeFit(w), BytesByHand(w));
    w.ScanComment[2] += 'c';
    try {
        EncodeFit(w);
        FAIL() << "a length beyond 16 bits was written";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Overflow");
    }
}

TEST(FitLayout, TheCheckerSeesAFieldOutOfPlace) {
    Workspace w = SampleFit();
    const std::string bytes = EncodeFit(w);
    std::swap(w.OverlayPlot, w.MaxIterations);
    EXPECT_NE(bytes, BytesByHand(w));
}

} // namespace
} // namespace Quillon
