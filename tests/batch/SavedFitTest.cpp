// Saved fits written by quillon-fit and taken as its input: the built program, end to end.
#include "persistence/FitFile.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace Quillon {
namespace {

class SavedFits : public testing::Test {
protected:
    int Run(const std::string& arguments) {
        const std::string command = std::string(QUILLON_FIT) + " " + arguments + " > " + Script_.Directory() +
                                    "/out 2> " + Script_.Directory() + "/err";
        const int end = std::system(command.c_str());
        Errors = ReadWholeFile(Script_.Directory() + "/err");
        Printed = ReadWholeFile(Script_.Directory() + "/out");
        return WEXITSTATUS(end);
    }
    std::string Place(const std::string& name) const { return Script_.Directory() + "/" + name; }
    std::string Job() const {
        return std::string(QUILLON_SOURCE) + "/examples/single-species/single-species.job";
    }

    Script Script_;
    std::string Errors, Printed;
};

TEST_F(SavedFits, AFitComesBackWithItsReportAndPoints) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil") + " --points " + Place("a.csv") + " --report " +
                  Place("a.txt")),
              0)
        << Errors;
    ASSERT_EQ(Run(Place("a.quil") + " --points " + Place("b.csv") + " --report " + Place("b.txt")), 0)
        << Errors;
    EXPECT_EQ(ReadWholeFile(Place("a.csv")), ReadWholeFile(Place("b.csv")));
    EXPECT_EQ(ReadWholeFile(Place("a.txt")), ReadWholeFile(Place("b.txt")));
}

TEST_F(SavedFits, TheResultsAreThoseOfTheJobButForItsIterationsAndItsCheck) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil") + " --results " + Place("a.json")), 0) << Errors;
    ASSERT_EQ(Run(Place("a.quil") + " --results " + Place("b.json")), 0) << Errors;
    std::string fitted = ReadWholeFile(Place("a.json"));
    const auto from = fitted.find("\"iterations\": ") + 14;
    fitted.replace(from, fitted.find(',', from) - from, "null");
    const auto check = fitted.find("\"check\": ") + 9;
    fitted.replace(check, fitted.find('}', check) + 1 - check, "null");
    std::string restored = ReadWholeFile(Place("b.json"));
    const std::string folder = std::string(QUILLON_SOURCE) + "/examples/single-species/";
    for (auto at = restored.find(folder); at != std::string::npos; at = restored.find(folder, at))
        restored.erase(at, folder.size()); // a job names its scans as seen from its own folder
    EXPECT_EQ(restored, fitted);
}

TEST_F(SavedFits, SavedAgainFromARestoredFitTheBytesStand) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil")), 0) << Errors;
    ASSERT_EQ(Run(Place("a.quil") + " --save " + Place("b.quil")), 0) << Errors;
    ASSERT_EQ(Run(Place("b.quil") + " --save " + Place("c.quil")), 0) << Errors;
    EXPECT_EQ(ReadWholeFile(Place("b.quil")), ReadWholeFile(Place("c.quil")));
}

TEST_F(SavedFits, RefittedTheFitStaysAtItsMinimum) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil") + " --results " + Place("a.json")), 0) << Errors;
    ASSERT_EQ(Run(Place("a.quil") + " --refit --results " + Place("b.json")), 0) << Errors;
    const auto sum = [](const std::string& json) {
        const auto at = json.find("\"sum_of_squares\": ");
        return std::stod(json.substr(at + 18));
    };
    const double first = sum(ReadWholeFile(Place("a.json")));
    EXPECT_NEAR(sum(ReadWholeFile(Place("b.json"))), first, 1e-4 * first);
}

TEST_F(SavedFits, AFitOfANewerVersionIsRefused) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil")), 0) << Errors;
    std::string bytes = ReadWholeFile(Place("a.quil"));
    ASSERT_EQ(bytes.substr(11, 5), "4.0.0");
    bytes[13] = '1';
    Script_.MakeFile("newer.quil", bytes);
    EXPECT_EQ(Run(Place("newer.quil")), 1);
    EXPECT_EQ(Errors, Place("newer.quil") + ": this file is a fit from version 4.1.0, which is newer than "
                                            "version 4.0.0 that is running\n");
    EXPECT_EQ(Printed, "");
}

TEST_F(SavedFits, WhatIsNoFitIsRefusedInOneLine) {
    Script_.MakeFile("x.quil", "this is no fit");
    EXPECT_EQ(Run(Place("x.quil")), 1);
    EXPECT_NE(Errors.find(Place("x.quil") + ": "), std::string::npos);
    EXPECT_EQ(Errors.find('\n'), Errors.size() - 1);
    EXPECT_EQ(Run(Job() + " --refit"), 1);
    EXPECT_EQ(Run(Job() + " --save -"), 1);
}

// It ended with status 2 and without a word.
TEST_F(SavedFits, AnUnfinishedFitSaysThatItIsUnfinished) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil")), 0) << Errors;
    const std::string bytes = ReadWholeFile(Place("a.quil"));
    Workspace w = DecodeFit(bytes, FreshWorkspace()).Analysis;
    w.FitDone = FlagFalse;
    Script_.MakeFile("b.quil", EncodeFit(w));
    const std::string reason = "no finished fit stands in " + Place("b.quil") + ", --refit runs it";
    EXPECT_EQ(Run(Place("b.quil") + " --quiet --results " + Place("b.json")), 2);
    EXPECT_EQ(Errors, reason + "\n");
    EXPECT_NE(ReadWholeFile(Place("b.json")).find("\"message\": \"" + reason + "\""), std::string::npos);
    EXPECT_EQ(Run(Place("b.quil") + " --refit"), 0) << Errors;
}

TEST_F(SavedFits, AFitNamedLikeThisProgramInSmallLettersIsItsOwn) {
    ASSERT_EQ(Run(Job() + " --save " + Place("a.quil")), 0) << Errors;
    std::string bytes = ReadWholeFile(Place("a.quil"));
    ASSERT_EQ(bytes.substr(2, 7), "QUILLON");
    Script_.MakeFile("b.quil", bytes.replace(2, 7, "Quillon"));
    EXPECT_EQ(Run(Place("b.quil")), 0) << Errors;
}

} // namespace
} // namespace Quillon
