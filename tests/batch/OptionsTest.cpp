// The command line of quillon-fit.
#include "batch/options/Options.h"
#include "batch/options/HelpText.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

std::string ErrorOf(const std::vector<std::string>& arguments) {
    try {
        ParseOptions(arguments);
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "no error";
}

std::string Mistake(const std::string& what) {
    return "quillon-fit: " + what + " (quillon-fit --help tells more)";
}

TEST(BatchOptions, ReportGoesToStandardOutputWhenNothingIsNamed) {
    const Options options = ParseOptions({"fit.job"});
    EXPECT_EQ(options.JobPath, "fit.job");
    EXPECT_EQ(options.Report, "-");
    EXPECT_EQ(options.Results, "");
    EXPECT_FALSE(options.Quiet || options.Help || options.Version);
}

TEST(BatchOptions, AnOutputThatIsNamedReplacesIt) {
    const Options options = ParseOptions({"--results", "r.json", "fit.job", "--points=p.csv", "--quiet"});
    EXPECT_EQ(options.JobPath, "fit.job");
    EXPECT_EQ(options.Report, "");
    EXPECT_EQ(options.Results, "r.json");
    EXPECT_EQ(options.Points, "p.csv");
    EXPECT_TRUE(options.Quiet);
    EXPECT_EQ(ParseOptions({"fit.job", "--report", "-"}).Report, "-");
}

TEST(BatchOptions, AReportThatEndsWithPdfIsPages) {
    const Options options =
        ParseOptions({"fit.job", "--report", "a.b/c.PDF", "--paper", "Letter", "--report-graph", "overlay"});
    EXPECT_TRUE(WantsReportPdf(options));
    EXPECT_EQ(options.Paper, "Letter");
    EXPECT_EQ(options.ReportGraph, "overlay");
    for (const char* other : {"-", "a.txt", "pdf", "a.pdf/b"})
        EXPECT_FALSE(WantsReportPdf(ParseOptions({"fit.job", "--report", other}))) << other;
}

TEST(BatchOptions, PaperGoesWithTextAndWithPages) {
    for (const char* report : {"-", "a.txt", "a.pdf"})
        EXPECT_EQ(ParseOptions({"fit.job", "--report", report, "--paper", "letter"}).Paper, "letter");
    EXPECT_EQ(ParseOptions({"fit.job", "--paper", "letter"}).Report, "-");
}

TEST(BatchOptions, TwoDashesEndThem) {
    EXPECT_EQ(ParseOptions({"--quiet", "--", "--odd.job"}).JobPath, "--odd.job");
}

TEST(BatchOptions, HelpAndVersionNeedNoJob) {
    EXPECT_TRUE(ParseOptions({"--help"}).Help);
    EXPECT_TRUE(ParseOptions({"--version"}).Version);
    EXPECT_EQ(VersionText(), "quillon-fit, Quillon 4.0.0\n");
    for (const char* option : {"--report", "--results", "--points", "--save", "--graph", "--refit", "--quiet",
                               "--help", "--version"})
        EXPECT_NE(HelpText().find(option), std::string::npos) << option;
}

TEST(BatchOptions, IntegrationBesideAGraphFileWasForgottenWithoutAJob) {
    EXPECT_EQ(ErrorOf({"--integrate", "cell.csv", "--graph", "a.grf=b.svg"}),
              Mistake("no job file is named"));
}

TEST(BatchOptions, AnOptionWithoutTheOutputThatItShapesWasPassedOverInSilence) {
    const std::pair<std::vector<std::string>, std::string> forgotten[] = {
        {{"--cell", "6,7"}, "--cell goes with --integrate FILE"},
        {{"--restarts", "6"}, "--restarts goes with --refit; a job has restarts in [fit]"},
        {{"--mass-points=12"}, "--mass-points goes with --graph mass-c=FILE or mass-r=FILE"},
        {{"--mass-of", "data"}, "--mass-of goes with --graph mass-c=FILE or mass-r=FILE"},
        {{"--mass-species", "B"}, "--mass-species goes with --graph mass-c=FILE"},
        {{"--mass-species", "B", "--graph", "mass-r=a.svg"}, "--mass-species goes with --graph mass-c=FILE"},
        {{"--figure-size", "170"}, "--figure-size goes with --graph figure=FILE"},
        {{"--figure-panels", "all", "--graph", "overlay=a.svg"},
         "--figure-panels goes with --graph figure=FILE"},
        {{"--colors", "classic", "--graph", "overlay=a.csv"},
         "--colors goes with a picture: --graph KIND=FILE"},
    };
    for (auto [arguments, sentence] : forgotten) {
        arguments.insert(arguments.begin(), "a.job");
        EXPECT_EQ(ErrorOf(arguments), Mistake(sentence));
    }
    const Options options = ParseOptions({"a.job", "--cell", "6,7", "--integrate", "c.csv", "--mass-points",
                                          "12", "--graph", "mass-r:2=m.svg"});
    EXPECT_EQ(options.Cell.Outer, 7.0F);
    EXPECT_EQ(options.Graphs.at(0).Mass.Points, 12);
}

TEST(BatchOptions, ACellThatIsNoneWasToldAfterTheFit) {
    EXPECT_EQ(ErrorOf({"a.job", "--integrate", "c.csv", "--cell", "6.5,6.5001"}),
              Mistake("--cell 6.5,6.5001: Division by zero"));
    EXPECT_EQ(ErrorOf({"a.job", "--integrate", "c.csv", "--cell", "6.5,50"}),
              Mistake("--cell 6.5,50: no cell is wider than 20 cm"));
}

TEST(BatchOptions, OfAnOptionThatStoodTwiceTheLastOneWonInSilence) {
    for (const auto& [option, value] : {std::pair{"--threads", "2"},
                                        {"--cell", "6,7"},
                                        {"--resample", "5"},
                                        {"--rows", "1-2"},
                                        {"--mass-points", "12"},
                                        {"--paper", "a4"},
                                        {"--temperature", "20"},
                                        {"--speeds", "9000"},
                                        {"--simulate", "folder"},
                                        {"--table", "t.csv"},
                                        {"--sort", "run"},
                                        {"--vbar", "MK"}})
        EXPECT_EQ(ErrorOf({"a.job", option, value, option, value}),
                  Mistake(std::string(option) + " stands twice"));
    EXPECT_EQ(ParseOptions({"a.job", "--graph", "data=a.svg", "--graph", "data=b.svg", "--profile", "2=a.csv",
                            "--profile", "2=b.csv"})
                  .Graphs.size(),
              2U);
}

TEST(BatchOptions, AWindowTooLongForAnyDataSetWasCalledTooShort) {
    EXPECT_EQ(ParseOptions({"a.job", "--graph", "mass-r=m.svg", "--mass-points", "40000"}).Mass.Points,
              40000);
}

TEST(BatchOptions, MistakesAreOneLine) {
    EXPECT_EQ(ErrorOf({}), Mistake("no job file is named"));
    EXPECT_EQ(ErrorOf({"--quiet"}), Mistake("no job file is named"));
    EXPECT_EQ(ErrorOf({""}), Mistake("the job file has no name"));
    EXPECT_EQ(ErrorOf({"a.job", "b.job"}), Mistake("a second job file 'b.job'"));
    EXPECT_EQ(ErrorOf({"a.job", "--reprot", "x"}), Mistake("unknown option '--reprot'"));
    EXPECT_EQ(ErrorOf({"a.job", "-q"}), Mistake("unknown option '-q'"));
    EXPECT_EQ(ErrorOf({"a.job", "--quiet=1"}), Mistake("unknown option '--quiet=1'"));
    EXPECT_EQ(ErrorOf({"a.job", "--report"}), Mistake("no file behind --report"));
    EXPECT_EQ(ErrorOf({"a.job", "--report="}), Mistake("no file behind --report"));
    EXPECT_EQ(ErrorOf({"a.job", "--report", ""}), Mistake("no file behind --report"));
    EXPECT_EQ(ErrorOf({"a.job", "--report", "--quiet"}), Mistake("no file behind --report"));
    EXPECT_EQ(ErrorOf({"a.job", "--report", "x", "--report", "y"}), Mistake("--report stands twice"));
    EXPECT_EQ(ErrorOf({"a.job", "--report", "-", "--points", "-"}),
              Mistake("--report and --points name the same file"));
    for (const std::vector<std::string>& beside : {{}, std::vector<std::string>{"--report", "a.txt"}}) {
        std::vector<std::string> arguments{"a.job", "--report-graph=overlay"};
        arguments.insert(arguments.end(), beside.begin(), beside.end());
        EXPECT_EQ(ErrorOf(arguments), Mistake("--report-graph goes with --report FILE.pdf"));
    }
    EXPECT_EQ(ErrorOf({"a.job", "--paper=letter", "--results", "r.json"}),
              Mistake("--paper goes with --report FILE"));
    EXPECT_EQ(ErrorOf({"a.job", "--report", "a.pdf", "--paper", "a5"}),
              Mistake("the paper is a4, letter, a4-landscape or letter-landscape, not 'a5'"));
    EXPECT_EQ(ErrorOf({"a.job", "--report", "a.pdf", "--report-graph", "data"}),
              Mistake("--report-graph is residuals or overlay, not 'data'"));
    EXPECT_EQ(ErrorOf({"a.job", "--ab\ncd"}), Mistake("unknown option '--ab cd'"));
}

} // namespace
} // namespace Quillon
