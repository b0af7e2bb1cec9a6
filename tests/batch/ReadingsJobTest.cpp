// Jobs that leave readings out, and jobs of intensity scans: the fit is that of a file without those lines,
// or of the absorbances.
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <functional>

namespace Quillon {
namespace {

ProgramEnd Fit(const std::string& job, const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments{job, "--results", "-"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const ProgramEnd end = RunInside(arguments);
    EXPECT_EQ(end.Status, 0) << end.Err;
    return end;
}

// The numbers of a fit that hang on its points, as text.
std::string NumbersOf(const std::string& json) {
    const JsonValue fit = ReadJson(json);
    std::string text;
    char number[40];
    const auto add = [&](double value) {
        std::snprintf(number, sizeof number, "%a ", value);
        text += number;
    };
    add(fit["sum_of_squares"].Number);
    add(fit["degrees_of_freedom"].Number);
    for (const JsonValue& parameter : fit["parameters"].Items) {
        add(parameter["value"].Number);
        add(parameter["error"].Number);
    }
    return text;
}

struct ReadingsJob : testing::Test {
    Script script;
    Workspace Truth = SimulatedWorkspace(SmallCase());
    std::string Text = JobTextOf(Truth, script);

    float Radius(long p) const { return Truth.ScanRadius[1][p]; }
    // The job with lines in the section of set 1.
    std::string JobWith(const std::string& lines, const std::string& name = "with.job") {
        std::string text = Text;
        text.insert(text.find("[set 2]"), lines);
        return script.MakeFile(name, text);
    }
    // The job on a file of set 1 that holds only the readings wanted.
    std::string JobOnCutFile(const std::function<bool(long p)>& wanted) {
        Workspace cut = Truth;
        long kept = 0;
        for (long p = 1; p <= Truth.ScanPoints[1]; ++p)
            if (wanted(p)) {
                ++kept;
                cut.ScanRadius[1][kept] = Truth.ScanRadius[1][p];
                cut.ScanValue[1][kept] = Truth.ScanValue[1][p];
            }
        cut.ScanPoints[1] = ToInt16(kept);
        script.MakeFile("cut.txt", ScanText(cut, 1));
        std::string text = Text;
        text.replace(text.find("set1.txt"), 8, "cut.txt");
        return script.MakeFile("cut.job", text);
    }
    static std::string Number(float value) {
        char text[30];
        std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
        return text;
    }
};

TEST_F(ReadingsJob, WithoutExclusionsEveryNumberIsWhatItWas) {
    const std::string json = Fit(script.MakeFile("plain.job", Text)).Out;
    const JsonValue set = ReadJson(json)["sets"][0];
    EXPECT_TRUE(set["left_out"].Items.empty());
    EXPECT_TRUE(set["ceiling"].IsNull());
    EXPECT_TRUE(set["intensity"].IsNull());
    EXPECT_EQ(NumbersOf(json), NumbersOf(Fit(JobWith("ceiling = 100\nexclude = 1-2\n")).Out));
}

TEST_F(ReadingsJob, AnExclusionFitsAFileWithoutThoseLines) {
    const std::string excluded = Fit(JobWith("exclude = " + Number(Radius(5)) + " - " + Number(Radius(8)) +
                                             ", " + Number(Radius(20)) + ", " + Number(Radius(1)) + "\n"))
                                     .Out;
    const std::string cut =
        Fit(JobOnCutFile([](long p) { return p != 1 && p != 20 && (p < 5 || p > 8); })).Out;
    EXPECT_EQ(NumbersOf(excluded), NumbersOf(cut));
    const JsonValue set = ReadJson(excluded)["sets"][0];
    ASSERT_EQ(set["left_out"].Items.size(), 6U);
    EXPECT_EQ(static_cast<float>(set["left_out"][0].Number), Radius(1));
    EXPECT_EQ(static_cast<float>(set["left_out"][5].Number), Radius(20));
    EXPECT_EQ(set["left_out_by"]["exclude"].Number, 6.0);
    EXPECT_EQ(set["points"].Number, ReadJson(cut)["sets"][0]["points"].Number);
}

TEST_F(ReadingsJob, ACeilingFitsAFileWithoutWhatLiesAbove) {
    const float ceiling = 0.5F * (Truth.ScanValue[1][30] + Truth.ScanValue[1][31]);
    const std::string limited = Fit(JobWith("ceiling = " + Number(ceiling) + "\n")).Out;
    const std::string cut = Fit(JobOnCutFile([&](long p) { return Truth.ScanValue[1][p] <= ceiling; })).Out;
    EXPECT_EQ(NumbersOf(limited), NumbersOf(cut));
    const JsonValue set = ReadJson(limited)["sets"][0];
    EXPECT_GT(set["left_out_by"]["ceiling"].Number, 5.0);
    EXPECT_EQ(static_cast<float>(set["ceiling"].Number), ceiling);
}

TEST_F(ReadingsJob, WhatMeetsNothingIsTold) {
    const ProgramEnd end = Fit(JobWith("exclude = 5.9, 5.8-5.85\n"));
    EXPECT_NE(end.Err.find("[set 1] exclude: the scan has no reading at 5.9 cm"), std::string::npos)
        << end.Err;
    EXPECT_NE(end.Err.find("[set 1] exclude: the scan has no reading at 5.8 to 5.85 cm"), std::string::npos);
}

TEST_F(ReadingsJob, SeveralFilesAreOneMeanInResultsReportSavedFitAndJob) {
    // Two scans around that of set 1: their mean is that scan.
    Workspace shifted = Truth;
    for (const float by : {-0.01F, 0.01F}) {
        for (long p = 1; p <= Truth.ScanPoints[1]; ++p)
            shifted.ScanValue[1][p] = Truth.ScanValue[1][p] + by;
        script.MakeFile(by < 0.0F ? "low.txt" : "high, one.txt", ScanText(shifted, 1));
    }
    std::string text = Text;
    text.replace(text.find("set1.txt"), 8, "low.txt, \"high, one.txt\"");
    const std::string job = script.MakeFile("mean.job", text), saved = script.Directory() + "/mean.quil";
    const std::string written = script.Directory() + "/written.job";
    const ProgramEnd end = Fit(job, {"--save", saved, "--write-job", written, "--report", saved + ".txt"});
    EXPECT_NE(end.Err.find("[set 1] file: the mean of 2 scans (low.txt, high, one.txt), rms between them"),
              std::string::npos)
        << end.Err;
    const auto expectMean = [](const JsonValue& set) {
        EXPECT_EQ(set["scans_averaged"].Number, 2.0);
        ASSERT_EQ(set["files"].Items.size(), 2U);
        ASSERT_EQ(set["sha256"].Items.size(), 2U);
        EXPECT_EQ(set["sha256"][0].Text.size(), 64U);
        EXPECT_NEAR(set["rms_between"].Number, 0.02 / std::sqrt(2.0), 1e-6);
    };
    const JsonValue mean = ReadJson(end.Out);
    expectMean(mean["sets"][0]);
    EXPECT_EQ(mean["sets"][0]["file"].Text, "low.txt, \"high, one.txt\"");
    EXPECT_EQ(mean["sets"][0]["files"][1].Text, "high, one.txt");
    const JsonValue single = ReadJson(Fit(script.MakeFile("single.job", Text)).Out);
    EXPECT_EQ(single["sets"][0]["files"].Items.size(), 1U);
    EXPECT_EQ(single["sets"][0]["scans_averaged"].Number, 1.0);
    EXPECT_TRUE(single["sets"][0]["rms_between"].IsNull());
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(mean["parameters"][i]["value"].Number, single["parameters"][i]["value"].Number,
                    1e-4 * std::fabs(single["parameters"][i]["error"].Number) + 1e-6);
    expectMean(ReadJson(Fit(saved).Out)["sets"][0]);
    EXPECT_EQ(NumbersOf(Fit(written).Out), NumbersOf(end.Out));
    const std::string report = ReadWholeFile(saved + ".txt");
    EXPECT_NE(report.find("the mean of 2 scans, rms between them"), std::string::npos);
    EXPECT_NE(report.find("high, one.txt"), std::string::npos);
}

TEST_F(ReadingsJob, AnUnquotedNameWithACommaIsOneFileWhereThereIsOne) {
    script.MakeFile("set1, again.txt", ScanText(Truth, 1));
    std::string text = Text;
    text.replace(text.find("set1.txt"), 8, "set1, again.txt");
    const JsonValue set = ReadJson(Fit(script.MakeFile("comma.job", text)).Out)["sets"][0];
    EXPECT_EQ(set["file"].Text, "set1, again.txt");
    EXPECT_EQ(set["scans_averaged"].Number, 1.0);
    const ProgramEnd end = RunInside({JobWith("", "plain.job")});
    EXPECT_EQ(end.Status, 0);
    text.replace(text.find("set1, again.txt"), 15, "set1.txt,, set1.txt");
    const ProgramEnd gap = RunInside({script.MakeFile("gap.job", text)});
    EXPECT_EQ(gap.Status, 1);
    EXPECT_NE(gap.Err.find("[set 1] file: there is no name between two of its commas"), std::string::npos)
        << gap.Err;
}

TEST_F(ReadingsJob, MistakesAreErrorsOfTheirKey) {
    struct Mistake {
        const char *Line, *Reason;
    };
    for (const Mistake& mistake :
         {Mistake{"exclude = 7.0-6.9", "[set 1] exclude: '7.0-6.9' ends before it begins"},
          Mistake{"exclude = 7.0,", "[set 1] exclude: "}, Mistake{"exclude = 7-x", "[set 1] exclude: "},
          Mistake{"exclude = 1-100", "[set 1] exclude: no reading of the scan is left"},
          Mistake{"ceiling = 0", "[set 1] ceiling: "}, Mistake{"intensity = first", "[set 1] intensity: "},
          Mistake{"intensity = sample-first", "[set 1] intensity: the scan holds no intensities"}}) {
        const ProgramEnd end = RunInside({JobWith(std::string(mistake.Line) + "\n"), "--quiet"});
        EXPECT_EQ(end.Status, 1) << mistake.Line;
        EXPECT_NE(end.Err.find(mistake.Reason), std::string::npos) << end.Err;
    }
}

TEST_F(ReadingsJob, ProposalsAreToldAndNothingIsLeftOut) {
    Truth.ScanValue[1][20] += 0.3F;
    script.MakeFile("set1.txt", ScanText(Truth, 1));
    const ProgramEnd end = Fit(JobWith("exclude = propose\nceiling = Propose\n"));
    EXPECT_NE(end.Err.find("[set 1] exclude: readings that stand out from their neighbours: exclude = 6."),
              std::string::npos)
        << end.Err;
    EXPECT_NE(end.Err.find("[set 1] ceiling: the noise does not grow with the signal"), std::string::npos);
    EXPECT_TRUE(ReadJson(end.Out)["sets"][0]["left_out"].Items.empty());
}

TEST_F(ReadingsJob, TheReportSaysWhatIsLeftOut) {
    const std::string job = JobWith("exclude = " + Number(Radius(5)) + "-" + Number(Radius(8)) + "\n");
    const ProgramEnd end = RunInside({job, "--report", "-", "--quiet"});
    char line[80];
    std::snprintf(line, sizeof line, "left out: 4 by hand (%.4f to %.4f cm)", static_cast<double>(Radius(5)),
                  static_cast<double>(Radius(8)));
    EXPECT_NE(end.Out.find(line), std::string::npos) << end.Out;
}

// A job that is written from the analysis, and a saved fit that is fitted again, leave the same out.
TEST_F(ReadingsJob, WhatIsLeftOutGoesOn) {
    const std::string job =
        JobWith("exclude = " + Number(Radius(5)) + "-" + Number(Radius(8)) + ", " + Number(Radius(20)) +
                "\nceiling = " + Number(0.5F * (Truth.ScanValue[1][30] + Truth.ScanValue[1][31])) + "\n");
    const std::string saved = job + ".quil", written = job + ".again.job";
    const std::string first = Fit(job, {"--save", saved, "--write-job", written}).Out;
    EXPECT_EQ(NumbersOf(Fit(written).Out), NumbersOf(first));
    const JsonValue restored = ReadJson(Fit(saved).Out);
    const JsonValue set = ReadJson(first)["sets"][0];
    ASSERT_EQ(restored["sets"][0]["left_out"].Items.size(), set["left_out"].Items.size());
    EXPECT_EQ(restored["sets"][0]["ceiling"].Number, set["ceiling"].Number);
    EXPECT_EQ(restored["sum_of_squares"].Number, ReadJson(first)["sum_of_squares"].Number);
}

// --- intensities -----------------------------------------------------------------------------------------

// The scan of set 1 as a pair of intensities of a lamp that varies along the radius.
std::string PairText(const Workspace& w, bool sampleFirst) {
    std::string text = ScanText(w, 1);
    text.replace(text.find("R 1 "), 1, "I");
    text.erase(text.find("\r\n", text.find("I 1 ")) + 2);
    char line[120];
    for (long p = 1; p <= w.ScanPoints[1]; ++p) {
        const double reference = 8000.0 + 500.0 * std::sin(0.3 * static_cast<double>(p));
        const double sample = reference * std::pow(10.0, -static_cast<double>(w.ScanValue[1][p]));
        std::snprintf(line, sizeof line, "%.9g %.12g %.12g\r\n", static_cast<double>(w.ScanRadius[1][p]),
                      sampleFirst ? sample : reference, sampleFirst ? reference : sample);
        text += line;
    }
    return text;
}

TEST_F(ReadingsJob, AnIntensityPairGivesTheMassOfItsAbsorbanceTwin) {
    ModelCase one = SmallCase();
    one.Model = 1;
    one.Fitted = {0};
    Truth = SimulatedWorkspace(one);
    Text = JobTextOf(Truth, script);
    Text.insert(Text.find('\n') + 1, "convergence-limit = 1e-6\n");
    const JsonValue twin = ReadJson(Fit(script.MakeFile("twin.job", Text)).Out);
    for (const bool sampleFirst : {true, false}) {
        script.MakeFile("set1.txt", PairText(Truth, sampleFirst));
        const ProgramEnd end = Fit(JobWith(""));
        const JsonValue fit = ReadJson(end.Out);
        const double mass = twin["parameters"][0]["value"].Number;
        EXPECT_NEAR(fit["parameters"][0]["value"].Number / mass, 1.0, 1e-6);
        EXPECT_EQ(fit["sets"][0]["intensity"].Text, sampleFirst ? "sample-first" : "reference-first");
        EXPECT_NE(end.Err.find("intensities, taken as absorbance"), std::string::npos) << end.Err;
    }
}

TEST_F(ReadingsJob, TheJobMayNameTheColumns) {
    script.MakeFile("set1.txt", PairText(Truth, true));
    const JsonValue fit = ReadJson(Fit(JobWith("intensity = sample-first\n")).Out);
    EXPECT_EQ(fit["sets"][0]["intensity"].Text, "sample-first");
    const ProgramEnd other =
        RunInside({JobWith("intensity = reference-first\n"), "--results", "-", "--quiet"});
    EXPECT_EQ(ReadJson(other.Out)["sets"][0]["intensity"].Text, "reference-first");
}

TEST_F(ReadingsJob, IntensitiesAreKeptWithTheFit) {
    script.MakeFile("set1.txt", PairText(Truth, false));
    const std::string job = JobWith("exclude = " + Number(Radius(9)) + "\n");
    const std::string saved = job + ".quil", written = job + ".again.job";
    const std::string first = Fit(job, {"--save", saved, "--write-job", written}).Out;
    EXPECT_EQ(NumbersOf(Fit(written).Out), NumbersOf(first));
    EXPECT_EQ(ReadJson(Fit(saved).Out)["sets"][0]["intensity"].Text, "reference-first");
}

} // namespace
} // namespace Quillon
