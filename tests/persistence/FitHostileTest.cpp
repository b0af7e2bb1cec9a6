// Files that are broken or made to do harm: they are refused in words, and the analysis at hand stays.
#include "SampleFit.h"

#include "../fuzz/FitFileFuzz.cpp" // the entry that a fuzzer uses

#include "persistence/FitFile.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace Quillon {
namespace {

constexpr float Infinite = std::numeric_limits<float>::infinity();
constexpr float NoNumber = std::numeric_limits<float>::quiet_NaN();

// Why a file is refused, with Work untouched; "accepted" when it is not.
std::string Refusal(const std::string& bytes) {
    Work = LargestFit();
    const Workspace before = Work;
    try {
        AdoptFit(bytes, "fit.quil");
        return "accepted";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(Work == before) << "a refused file changed the analysis: " << error.Text;
        return error.Text;
    }
}

// The sample's file with one 16-bit number of a field replaced; place counts from 0 within the field.
std::string WithField(int field, long place, long value) {
    const Workspace w = SampleFit();
    return WithI16(BytesByHand(w), OffsetOfField(w, field) + 2 * static_cast<std::size_t>(place), value);
}

class FitHostile : public ::testing::Test {
protected:
    Script Scripted;
};

TEST_F(FitHostile, TheSampleItselfIsAccepted) {
    EXPECT_EQ(Refusal(BytesByHand(SampleFit())), "accepted");
}

TEST_F(FitHostile, EveryTruncationIsRefused) {
    const std::string whole = BytesByHand(SampleFit());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Work = FreshWorkspace();
        try {
            DecodeFit(whole.substr(0, size), Work);
            FAIL() << "accepted when cut to " << size << " of " << whole.size() << " bytes";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Text, size < 16 ? "this is not a fit save file" : "Input past end of file");
        }
    }
}

TEST_F(FitHostile, OtherFilesAreNoFits) {
    for (const std::string& bytes :
         {std::string(), std::string("\0", 1), std::string("\x89PNG\r\n\x1A\n 1234567890"),
          std::string(1000, '\xFF'), std::string(1000, '\0'), std::string("[quillon]\nFitModelNumber=2\n"),
          Bytes{}.Text("QUIL=LON").Text("4.0.0").All, Bytes{}.Text("A\nB").Text("4.0.0").All,
          Bytes{}.Text(" QUILLON").Text("4.0.0").All, Bytes{}.Text(std::string(65, 'Q')).Text("4").All,
          Bytes{}.Text("QUILLON").Text("4\x07").All, Bytes{}.Text("QUILLON").Text(std::string(65, '4')).All,
          Bytes{}.I16(-7).Text("4.0.0").All})
        EXPECT_EQ(Refusal(bytes), "this is not a fit save file");
    EXPECT_EQ(Refusal(Bytes{}.Text("OTHER").Text("4.0.0").All), "this is a fit from OTHER");
}

struct BadNumber {
    int Field;
    long Place, Value;
    const char* Refused;
};

TEST_F(FitHostile, CountsOutOfRangeAreRefused) {
    for (const BadNumber& bad : std::initializer_list<BadNumber>{{3, 0, 63, "MaxParms"},
                                                                 {3, 0, 61, "MaxParms"},
                                                                 {3, 0, -1, "MaxParms"},
                                                                 {3, 0, 0, "MaxParms"},
                                                                 {4, 0, 63, "NumParms"},
                                                                 {4, 0, 7, "NumParms"},
                                                                 {4, 0, 13, "NumParms"},
                                                                 {5, 0, -1, "NumFree"},
                                                                 {5, 0, 63, "NumFree"},
                                                                 {6, 0, 0, "MaxSets"},
                                                                 {6, 0, 19, "MaxSets"},
                                                                 {6, 0, -1, "MaxSets"},
                                                                 {6, 0, 32767, "MaxSets"},
                                                                 {7, 0, -1, "NumSets"},
                                                                 {7, 0, 19, "NumSets"},
                                                                 {8, 0, 0, "MaxPtsPerSet"},
                                                                 {8, 0, -9, "MaxPtsPerSet"},
                                                                 {9, 0, -1, "NumPts"}})
        EXPECT_EQ(Refusal(WithField(bad.Field, bad.Place, bad.Value)),
                  std::string("Subscript out of range (") + bad.Refused + ")")
            << bad.Field << " = " << bad.Value;
}

TEST_F(FitHostile, CountsLargerThanTheFileAreRefusedBeforeRoomIsMade) {
    EXPECT_EQ(Refusal(WithField(9, 0, 32767)), "Input past end of file");  // NumPts
    EXPECT_EQ(Refusal(WithField(46, 0, 32767)), "Input past end of file"); // ModelCount
    EXPECT_EQ(Refusal(WithField(75, 2, 32767)), "Input past end of file"); // ScanPoints of row 3
    EXPECT_EQ(Refusal(WithField(76, 2, 32767)), "Input past end of file"); // BaselinePoints of row 3
}

TEST_F(FitHostile, TextLengthsAreNotTrusted) {
    EXPECT_EQ(Refusal(WithField(27, 0, -1)), "the file is damaged at ParmName");
    EXPECT_EQ(Refusal(WithField(39, 0, 32767)), "Input past end of file");
    EXPECT_EQ(Refusal(WithField(102, 0, -32768)), "the file is damaged at LabelPrefix");
}

TEST_F(FitHostile, ChoicesThatDoNotExistAreRefused) {
    for (const BadNumber& bad : std::initializer_list<BadNumber>{{13, 0, 4, "MonitorMode"},
                                                                 {13, 0, -1, "MonitorMode"},
                                                                 {47, 0, 0, "Model"},
                                                                 {47, 0, 25, "Model"},
                                                                 {47, 0, -3, "Model"},
                                                                 {50, 0, 6, "ConcUnits"},
                                                                 {50, 0, -1, "ConcUnits"},
                                                                 {61, 0, 3, "MassUnits"},
                                                                 {61, 0, -1, "MassUnits"},
                                                                 {78, 4, 2, "CenterpieceType"},
                                                                 {78, 4, 5, "CenterpieceType"},
                                                                 {78, 0, -1, "CenterpieceType"},
                                                                 {79, 17, 5, "DataChannel"},
                                                                 {79, 0, -1, "DataChannel"},
                                                                 {93, 0, 19, "OffsetLink"},
                                                                 {93, 2, -1, "OffsetLink"},
                                                                 {103, 0, 19, "HighestSet"},
                                                                 {103, 0, -1, "HighestSet"}})
        EXPECT_EQ(Refusal(WithField(bad.Field, bad.Place, bad.Value)),
                  std::string("Subscript out of range (") + bad.Refused + ")")
            << bad.Field << " = " << bad.Value;
    EXPECT_EQ(Refusal(WithField(47, 0, 24)), "accepted");
}

TEST_F(FitHostile, IndicesOutOfRangeAreRefused) {
    for (const BadNumber& bad :
         std::initializer_list<BadNumber>{{37, 0, -1, "FreeIndex"},
                                          {37, 1, 14, "FreeIndex"}, // beyond the parameters of two sets
                                          {37, 1, 62, "FreeIndex"},
                                          {37, 61, 62, "FreeIndex"},
                                          {37, 5, -2, "FreeIndex"},
                                          {38, 0, 62, "FreeMap"},
                                          {38, 61, -4, "FreeMap"},
                                          {44, 0, 0, "SetRow"},
                                          {44, 0, 3, "SetRow"}, // row 3 twice
                                          {44, 1, 19, "SetRow"},
                                          {44, 17, -1, "SetRow"},
                                          {44, 0, 4, "ScanFile"}})
        EXPECT_EQ(Refusal(WithField(bad.Field, bad.Place, bad.Value)),
                  std::string("Subscript out of range (") + bad.Refused + ")")
            << bad.Field << "[" << bad.Place << "] = " << bad.Value;
}

TEST_F(FitHostile, RangesMustLieInTheirScan) {
    for (const BadNumber& bad :
         std::initializer_list<BadNumber>{{77, 0, 0, "FitRange"},  // row 1, in the fit
                                          {77, 0, 6, "FitRange"},  // behind its end
                                          {77, 18, 7, "FitRange"}, // more than its points
                                          {77, 18, 4, "SetPts"},   // fewer points than there are
                                          {77, 1, -1, "FitRange"}, // row 2, not in the fit
                                          {77, 1, 5, "FitRange"},
                                          {77, 18 + 1, 4, "FitRange"},
                                          {87, 1, 1, "accepted"}}) // row 2 is fit for being taken in
        EXPECT_EQ(Refusal(WithField(bad.Field, bad.Place, bad.Value)),
                  std::string(bad.Refused) == "accepted"
                      ? bad.Refused
                      : std::string("Subscript out of range (") + bad.Refused + ")")
            << bad.Field << "[" << bad.Place << "] = " << bad.Value;
    EXPECT_EQ(Refusal(WithField(77, 1, 4)), "accepted");    // what a channel beyond the scan leaves
    EXPECT_EQ(Refusal(WithField(77, 4, 9999)), "accepted"); // no scan there
}

TEST_F(FitHostile, IncludedRowsMustBeLoaded) {
    EXPECT_EQ(Refusal(WithField(87, 4, 1)), "Subscript out of range (ScanFile)");
}

TEST_F(FitHostile, SetsAndPointsMustMatch) {
    EXPECT_EQ(Refusal(WithField(31, 0, 3)), "Subscript out of range (SetPts)");
    EXPECT_EQ(Refusal(WithField(31, 1, -1)), "Subscript out of range (SetPts)");
    EXPECT_EQ(Refusal(WithField(34, 0, 2)), "Subscript out of range (PtSet)");
    EXPECT_EQ(Refusal(WithField(34, 9, 0)), "Subscript out of range (PtSet)");
    EXPECT_EQ(Refusal(WithField(12, 0, 0)), "Subscript out of range (SetPts)"); // constraints not in force
    const Workspace w = SampleFit();
    const std::string bytes = BytesByHand(w);
    const std::size_t x = OffsetOfField(w, 32);
    EXPECT_EQ(Refusal(WithF32(bytes, x, PointMarker)), "Subscript out of range (PtX)");
    EXPECT_EQ(Refusal(WithF32(bytes, x + 4 * 9, 0.5F)), "Subscript out of range (PtX)");
}

TEST_F(FitHostile, AFitNeedsASet) {
    Workspace w = SampleFit();
    w.NumSets = 0;
    w.NumPts = 0;
    w.SetRow.Recreate(18);
    w.SetPts.Recreate(0);
    w.IncludeSet.Recreate(18);
    EXPECT_EQ(Refusal(EncodeFit(w)), "Subscript out of range (NumSets)");
    w.FitDone = w.FitValid = 0;
    EXPECT_EQ(Refusal(EncodeFit(w)), "Subscript out of range (NumSets)");
    w.DataChosen = 0;
    EXPECT_EQ(Refusal(EncodeFit(w)), "accepted");
}

TEST_F(FitHostile, FlagsMustSayWhatTheNamesSay) {
    EXPECT_EQ(Refusal(WithField(82, 0, 0)), "the file is damaged at ScanFile");
    EXPECT_EQ(Refusal(WithField(82, 9, -1)), "the file is damaged at ScanFile");
    EXPECT_EQ(Refusal(WithField(82, 0, 1)), "accepted"); // any value but 0 is true
    EXPECT_EQ(Refusal(WithField(85, 2, 0)), "the file is damaged at BaselineFile");
    EXPECT_EQ(Refusal(WithField(85, 0, -1)), "the file is damaged at BaselineFile");
}

// All fields of singles, with the number of singles in the sample.
const std::pair<int, long> SingleFields[] = {
    {14, 1},  {15, 1},  {16, 1},  {17, 1},  {21, 1},  {25, 62}, {26, 124}, {32, 10}, {33, 10},
    {35, 10}, {43, 4},  {45, 62}, {51, 1},  {52, 1},  {53, 1},  {54, 1},   {55, 1},  {56, 1},
    {57, 1},  {58, 1},  {59, 1},  {60, 1},  {65, 18}, {66, 18}, {67, 18},  {68, 18}, {69, 18},
    {70, 18}, {71, 18}, {83, 28}, {86, 4},  {88, 18}, {89, 18}, {90, 18},  {91, 18}, {92, 36},
    {95, 18}, {96, 18}, {97, 18}, {98, 18}, {104, 1}, {105, 1}};

TEST_F(FitHostile, NumbersThatAreNoneAreRefused) {
    const Workspace w = SampleFit();
    const std::string bytes = BytesByHand(w);
    for (const auto& [field, count] : SingleFields)
        for (const float bad : {Infinite, -Infinite, NoNumber})
            for (const long place : {0L, count - 1}) {
                const std::size_t at = OffsetOfField(w, field) + 4 * static_cast<std::size_t>(place);
                EXPECT_EQ(Refusal(WithF32(bytes, at, bad)).substr(0, 22), "the file is damaged at")
                    << field << "[" << place << "]";
            }
    for (const int field : {20, 36}) {
        const std::size_t at = OffsetOfField(w, field);
        const std::string bad = Bytes{}.F64(static_cast<double>(NoNumber)).All;
        EXPECT_EQ(Refusal(std::string(bytes).replace(at, 8, bad)).substr(0, 22), "the file is damaged at");
    }
    // The accuracy has a rule of its own.
    EXPECT_EQ(Refusal(WithF32(bytes, OffsetOfField(w, 107), NoNumber)), "accepted");
    EXPECT_EQ(Work.ParmsAccuracy, 0.001F);
}

TEST_F(FitHostile, ARestoreThatFailsAtTheEndLeavesTheAnalysisToo) {
    // The last step that can fail asks the platform; what it throws must not leave a half-taken analysis.
    Host.DirectoryExists = [](const std::string&) -> bool { RaiseError("the disk has gone"); };
    Workspace w = SampleFit();
    w.DataDirectory = "/somewhere";
    EXPECT_EQ(Refusal(EncodeFit(w)), "the disk has gone");
}

// --- mutations
// -----------------------------------------------------------------------------------------------

class Mutator {
public:
    explicit Mutator(std::string valid) : Valid(std::move(valid)) {}

    std::string Next() {
        std::string bytes = Valid;
        const int changes = 1 + Below(4);
        for (int i = 0; i < changes; ++i)
            Change(bytes);
        return bytes;
    }

private:
    int Below(std::size_t n) { return static_cast<int>(Generator() % n); }
    std::size_t Place(const std::string& bytes) { return bytes.empty() ? 0 : Generator() % bytes.size(); }

    void Change(std::string& bytes) {
        static const long extremes[] = {-32768, -2, -1, 0, 1, 2, 17, 18, 19, 24, 61, 62, 63, 255, 256, 32767};
        const std::size_t at = Place(bytes);
        switch (Below(7)) {
        case 0: // a bit
            if (!bytes.empty()) bytes[at] = static_cast<char>(bytes[at] ^ (1 << Below(8)));
            break;
        case 1: // a byte
            if (!bytes.empty()) bytes[at] = static_cast<char>(Below(256));
            break;
        case 2: // a number of the head, where all sizes are
        case 3: // a number anywhere
        {
            const std::size_t place = Below(2) == 0 ? 16 + 2 * static_cast<std::size_t>(Below(14)) : at;
            if (place + 2 <= bytes.size()) bytes = WithI16(bytes, place, extremes[Below(16)]);
            break;
        }
        case 4:
            bytes.erase(at, static_cast<std::size_t>(1 + Below(9)));
            break;
        case 5:
            bytes.insert(at,
                         std::string(static_cast<std::size_t>(1 + Below(9)), static_cast<char>(Below(256))));
            break;
        default: // a piece from elsewhere
            if (bytes.size() > 64) bytes.replace(at, 8, bytes, Place(bytes), 8);
        }
    }
    std::string Valid;
    std::mt19937 Generator{20200421};
};

void Feed(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

// A file small enough for many rounds: one set more than it uses, no long texts.
Workspace SmallFit() {
    Workspace w = SampleFit();
    w.MaxSets = 4;
    w.MaxParms = 20;
    for (long i = 0; i < 20; ++i)
        w.ParmName[i] = "p";
    w.ModelCount = 12;
    return w;
}

// Instrumented code takes four times as long.
#ifdef QUILLON_SANITIZE
constexpr int ManyMutations = 20000;
#else
constexpr int ManyMutations = 100000;
#endif

TEST_F(FitHostile, ManyMutationsAreRefusedOrUsable) {
    Scripted.AnswerAllMessages(BoxAnswer::No);
    Mutator small(EncodeFit(SmallFit()));
    for (int i = 0; i < ManyMutations; ++i) {
        Feed(small.Next());
        Scripted.Asked.clear();
    }
}

TEST_F(FitHostile, MutationsOfAFileOfFullSize) {
    Scripted.AnswerAllMessages(BoxAnswer::No);
    Mutator sample(EncodeFit(SampleFit()));
    for (int i = 0; i < 10000; ++i) {
        Feed(sample.Next());
        Scripted.Asked.clear();
    }
}

TEST_F(FitHostile, TheMutatorLeavesEnoughFilesAcceptedToMatter) {
    Mutator sample(EncodeFit(SmallFit()));
    int accepted = 0;
    for (int i = 0; i < 1000; ++i)
        try {
            DecodeFit(sample.Next(), FreshWorkspace());
            ++accepted;
        } catch (const RuntimeError&) {
        }
    EXPECT_GT(accepted, 100);
    EXPECT_LT(accepted, 900);
}

} // namespace
} // namespace Quillon
