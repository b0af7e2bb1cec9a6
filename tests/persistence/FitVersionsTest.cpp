// Files of older versions: what the gates change, and what the old model numbers mean.
#include "SampleFit.h"

#include "models/table/Catalogue.h"
#include "persistence/FitFile.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

// The file of an analysis under another version's name.
std::string AsVersion(const std::string& bytes, const std::string& version) {
    return bytes.substr(0, 9) + Bytes{}.Text(version).All + bytes.substr(16);
}

std::string SampleAs(const std::string& version) {
    return AsVersion(BytesByHand(SampleFit()), version);
}

Workspace Read(const std::string& bytes) {
    return DecodeFit(bytes, FreshWorkspace()).Analysis;
}

std::string RefusalOfVersion(const std::string& bytes) {
    try {
        Read(bytes);
        return "accepted";
    } catch (const RuntimeError& error) {
        return error.Text;
    }
}

TEST(FitVersions, TheRefractivitiesOfFilesBelow337AreReadOver) {
    EXPECT_EQ(Read(SampleAs("3.37")).FringeMassA, 3.25F);
    EXPECT_EQ(Read(SampleAs("3.37")).FringeMassB, 3.5F);
    Workspace present = FreshWorkspace();
    present.FringeMassA = 2.5F;
    present.FringeMassB = 2.625F;
    const Workspace back = DecodeFit(SampleAs("3.36"), present).Analysis;
    EXPECT_EQ(back.FringeMassA, 2.5F);
    EXPECT_EQ(back.FringeMassB, 2.625F);
    EXPECT_EQ(back.MassUnits, 2); // and what follows stands where it is expected
}

TEST(FitVersions, AMassUnitOfMinusOneWasMolarMassUpTo32) {
    const Workspace w = SampleFit();
    const std::string bytes = WithI16(BytesByHand(w), OffsetOfField(w, 61), -1);
    EXPECT_EQ(Read(AsVersion(bytes, "3.2")).MassUnits, 2);
    EXPECT_EQ(RefusalOfVersion(AsVersion(bytes, "3.21")), "Subscript out of range (MassUnits)");
}

// The sample's file without fields 94 to 96.
std::string WithoutShifts() {
    const Workspace w = SampleFit();
    const std::size_t from = OffsetOfField(w, 94);
    return BytesByHand(w).erase(from, OffsetOfField(w, 97) - from);
}

TEST(FitVersions, FilesUpTo21HaveNoBaselineShifts) {
    const std::string bytes = WithoutShifts();
    const Workspace back = Read(AsVersion(bytes, "2.1"));
    EXPECT_EQ(back.BaselineShifted, OneBased<std::int16_t>(18));
    EXPECT_EQ(back.BaselineShift, OneBased<float>(18));
    EXPECT_EQ(back.BaselineRPM, OneBased<float>(18));
    EXPECT_EQ(back.ExtinctionRatio[0][3], 1.5F);
    EXPECT_EQ(back.RefrB, 22000.0F);
    EXPECT_NE(RefusalOfVersion(AsVersion(bytes, "2.2")), "accepted");
}

TEST(FitVersions, AnOldFileThatDoesNotComeOutEvenIsRefused) {
    EXPECT_EQ(RefusalOfVersion(SampleAs("3.02")), "accepted");
    EXPECT_EQ(RefusalOfVersion(SampleAs("3.02") + "x"), "the file is damaged at the end");
    EXPECT_EQ(RefusalOfVersion(SampleAs("3.03") + "x"), "accepted");
}

TEST(FitVersions, BelowTheFormatVersionNothingIsRead) {
    EXPECT_EQ(RefusalOfVersion(AsVersion(WithoutShifts(), "2")), "accepted");
    EXPECT_EQ(RefusalOfVersion(AsVersion(WithoutShifts(), "1.99")), "this is a fit from version 1.99");
    EXPECT_EQ(RefusalOfVersion(SampleAs("")), "this is a fit from version ");
}

TEST(FitVersions, ANewerFileMayHaveMoreBehindTheLastField) {
    EXPECT_EQ(RefusalOfVersion(SampleAs("17.5") + "more of it"), "accepted");
}

TEST(FitVersions, OldModelNumbersAreTranslated) {
    Workspace w = SampleFit();
    w.ModelCount = 12;
    const int today[] = {1, 2, 3, 4, 5, 7, 8, 6, 1, 9, 10, 11};
    for (int old = 1; old <= 12; ++old) {
        w.Model = static_cast<std::int16_t>(old);
        const DecodedFit fit = DecodeFit(BytesByHand(w), FreshWorkspace());
        EXPECT_EQ(fit.Analysis.Model, today[old - 1]) << old;
        EXPECT_EQ(fit.ModelGone, old == 9) << old;
        EXPECT_EQ(fit.Analysis.ModelCount, 24);
    }
    for (const int none : {0, 13, -1}) {
        w.Model = static_cast<std::int16_t>(none);
        EXPECT_EQ(RefusalOfVersion(BytesByHand(w)), "the file is damaged at Model");
    }
}

TEST(FitVersions, TheListOfTwelveNamesGivesWayToTheCatalogue) {
    Workspace w = SampleFit();
    w.ModelCount = 12;
    const Workspace back = Read(BytesByHand(w));
    ASSERT_EQ(back.ModelName.Hi(), 24);
    for (int i = 1; i <= 24; ++i)
        EXPECT_EQ(back.ModelName[i], ModelDialogName(i));
}

TEST(FitVersions, TheModelListHasTwoNamelessRowsAfterwards) {
    const Workspace back = Read(BytesByHand(SampleFit()));
    ASSERT_EQ(back.ModelName.Hi(), 24);
    EXPECT_EQ(back.ModelCount, 24);
    EXPECT_EQ(back.ModelName[22], "model 22");
    EXPECT_EQ(back.ModelName[23], "");
    EXPECT_EQ(back.ModelName[24], "");
}

TEST(FitVersions, AModelListOfAnotherLengthIsBroughtTo24Rows) {
    Workspace w = SampleFit();
    w.ModelCount = 30;
    w.ModelName.Resize(30, "more");
    EXPECT_EQ(Read(BytesByHand(w)).ModelName.Hi(), 24);
    w.ModelCount = 2;
    const Workspace back = Read(BytesByHand(w));
    EXPECT_EQ(back.ModelName[2], "model 2");
    EXPECT_EQ(back.ModelName[3], ModelDialogName(3));
    w.ModelCount = -5;
    EXPECT_EQ(Read(BytesByHand(w)).ModelName[1], ModelDialogName(1));
}

TEST(FitVersions, AParameterAccuracyOutsideItsRangeIsReplaced) {
    const struct {
        float Saved, Restored;
    } cases[] = {{0.0001F, 0.0001F}, {0.00009F, 0.001F}, {0.09999F, 0.09999F},
                 {0.1F, 0.001F},     {-1.0F, 0.001F},    {5.0F, 0.001F}};
    for (const auto& c : cases) {
        Workspace w = SampleFit();
        w.ParmsAccuracy = c.Saved;
        EXPECT_EQ(Read(BytesByHand(w)).ParmsAccuracy, c.Restored) << c.Saved;
    }
}

} // namespace
} // namespace Quillon
