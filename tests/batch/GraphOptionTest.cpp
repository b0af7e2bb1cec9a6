// The option --graph KIND[:n]=FILE.
#include "batch/graphs/Graphs.h"
#include "batch/options/HelpText.h"
#include "batch/options/Options.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

std::string MistakeOf(const std::string& graph) {
    try {
        ParseOptions({"a.job", "--graph", graph});
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "no error";
}

std::string Told(const std::string& what) {
    return "quillon-fit: " + what + " (quillon-fit --help tells more)";
}

TEST(GraphOptions, AreTakenApart) {
    const Options options =
        ParseOptions({"a.job", "--graph", "overlay=fig 1.svg", "--graph=residuals-r:12=b/c=d.PNG"});
    ASSERT_EQ(options.Graphs.size(), 2U);
    EXPECT_EQ(options.Graphs[0].Kind, "overlay");
    EXPECT_EQ(options.Graphs[0].Set, 0);
    EXPECT_EQ(options.Graphs[0].Path, "fig 1.svg");
    EXPECT_EQ(GraphName(options.Graphs[0]), "overlay");
    EXPECT_EQ(options.Graphs[1].Kind, "residuals-r");
    EXPECT_EQ(options.Graphs[1].Set, 12);
    EXPECT_EQ(options.Graphs[1].Path, "b/c=d.PNG");
    EXPECT_EQ(GraphName(options.Graphs[1]), "residuals-r:12");
    EXPECT_EQ(GraphEnding(options.Graphs[1]), "png");
    EXPECT_EQ(options.Report, ""); // an output is named
}

TEST(GraphOptions, AGraphFileNeedsNoJob) {
    const Options options = ParseOptions({"--graph", "C:/run 1/a.GRF=b.svg"});
    EXPECT_EQ(options.JobPath, "");
    EXPECT_EQ(options.Graphs.at(0).Source, "C:/run 1/a.GRF");
    EXPECT_EQ(options.Graphs.at(0).Path, "b.svg");
    EXPECT_EQ(options.Report, "");
    for (const char* more : {"--report=r.txt", "--graph=data=d.svg", "--refit"})
        EXPECT_THROW(ParseOptions({"--graph", "a.grf=b.svg", more}), RuntimeError) << more;
}

TEST(GraphOptions, AGraphFileInPlaceOfAJobIsToldHowItIsDrawn) {
    try {
        ParseOptions({"a.GRF"});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, Told("'a.GRF' is a graph file, which --graph a.GRF=FILE draws"));
    }
}

TEST(GraphOptions, TheNameOfAGraphFileMayHaveAnEqualsSign) {
    const GraphOption option = ParseGraphOption("c=1/run=2.grf=a=b.svg");
    EXPECT_EQ(option.Source, "c=1/run=2.grf");
    EXPECT_EQ(option.Path, "a=b.svg");
    EXPECT_EQ(ParseGraphOption("overlay=a.grf").Source, "");
    EXPECT_EQ(ParseGraphOption("data:2=a.grf=b.svg").Path, "a.grf=b.svg");
}

TEST(GraphOptions, TheHelpTellsEveryKindAndEnding) {
    EXPECT_EQ(GraphKinds(),
              (std::vector<std::string>{"data", "function", "overlay", "residuals", "residuals-y",
                                        "residuals-r", "species", "species-fraction", "speciation", "mass-c",
                                        "mass-r", "histogram", "approach", "figure"}));
    for (const std::string& kind : GraphKinds())
        EXPECT_NE(HelpText().find(kind), std::string::npos) << kind;
    for (const char* ending : {".svg", ".png", ".pdf", ".emf", ".dat", ".csv", ".grf"})
        EXPECT_NE(HelpText().find(ending), std::string::npos) << ending;
}

TEST(GraphOptions, FiguresHaveASizeAndPanels) {
    const Options plain = ParseOptions({"a.job", "--graph", "figure:2=a.pdf"});
    EXPECT_EQ(plain.Graphs.at(0).Figure, FigureChoice{});
    const Options own = ParseOptions(
        {"a.job", "--figure-size", "120x90.5", "--figure-panels=sets", "--graph", "figure=a.emf"});
    EXPECT_EQ(own.Graphs.at(0).Figure, (FigureChoice{120.0, 90.5, true, 0}));
    EXPECT_EQ(ParseOptions({"a.job", "--figure-size=170", "--graph=figure=a.svg"}).Graphs.at(0).Figure.Width,
              170.0);
    for (const char* bad : {"", "39", "401", "85mm", "85x", "x85", "85x39", "8e", "nan"})
        EXPECT_THROW(ParseOptions({"a.job", "--graph", "figure=a.svg", "--figure-size", bad}), RuntimeError)
            << bad;
    EXPECT_THROW(ParseOptions({"a.job", "--graph", "figure=a.svg", "--figure-panels", "one"}), RuntimeError);
}

TEST(GraphOptions, ColoursAreThoseOfAllPictures) {
    EXPECT_EQ(ParseOptions({"a.job", "--graph", "data=a.svg"}).Graphs.at(0).Colors, GraphColors::Unsaid);
    const Options classic = ParseOptions(
        {"a.job", "--graph", "data=a.svg", "--graph=b.grf=b.pdf", "--graph=data=a.csv", "--colors=classic"});
    for (const GraphOption& graph : classic.Graphs)
        EXPECT_EQ(graph.Colors, GraphColors::Classic);
    for (const std::vector<std::string>& picture :
         std::vector<std::vector<std::string>>{{"--graph", "a.grf=a.grf.emf"},
                                               {"--profile", "1=a.svg"},
                                               {"--report", "a.html"},
                                               {"--report", "a.pdf", "--report-graph", "overlay"}}) {
        std::vector<std::string> arguments{"a.job", "--colors", "safe"};
        arguments.insert(arguments.end(), picture.begin(), picture.end());
        EXPECT_EQ(ParseOptions(arguments).Colors, GraphColors::Safe);
    }
    EXPECT_THROW(ParseOptions({"a.job", "--graph", "data=a.svg", "--colors", "dark"}), RuntimeError);
}

TEST(GraphOptions, AHistogramNamesItsQuantity) {
    const GraphOption itself = ParseGraphOption("histogram:0=a.svg");
    EXPECT_EQ(itself.Slot, 0);
    EXPECT_EQ(itself.Quantity, "");
    const GraphOption kd = ParseGraphOption("histogram:2,kd=a.svg");
    EXPECT_EQ(kd.Slot, 2);
    EXPECT_EQ(kd.Quantity, "kd");
    EXPECT_EQ(GraphName(kd), "histogram:2,kd");
    for (const char* bad : {"histogram=a.svg", "histogram:=a.svg", "histogram:-1=a.svg", "histogram:2,=a.svg",
                            "histogram:2,ki=a.svg", "histogram:2kd=a.svg"})
        EXPECT_NE(MistakeOf(bad).find("needs the slot of a parameter"), std::string::npos) << bad;
    EXPECT_EQ(MistakeOf("histogram:2=a.svg"), Told("--graph histogram goes with --resample"));
}

TEST(GraphOptions, MistakesAreOneLine) {
    const std::string kinds = "data, function, overlay, residuals, residuals-y, residuals-r, species, "
                              "species-fraction, speciation, mass-c, mass-r, histogram, approach, figure";
    const std::string endings =
        " ends with none of .svg, .png, .pdf, .emf, .dat, .csv and .grf, which choose the format";
    EXPECT_EQ(MistakeOf("specie=a.svg"), Told("--graph: 'specie' is none of the kinds " + kinds));
    EXPECT_EQ(MistakeOf("=a.svg"), Told("--graph: '' is none of the kinds " + kinds));
    EXPECT_EQ(MistakeOf("Overlay=a.svg"), Told("--graph: 'Overlay' is none of the kinds " + kinds));
    EXPECT_EQ(MistakeOf("overlay"), Told("--graph needs KIND=FILE, not 'overlay'"));
    EXPECT_EQ(MistakeOf(""), Told("--graph needs KIND=FILE, not ''"));
    EXPECT_EQ(MistakeOf("overlay="), Told("no file behind --graph overlay"));
    EXPECT_EQ(MistakeOf("overlay:3="), Told("no file behind --graph overlay:3"));
    EXPECT_EQ(MistakeOf("overlay=-"), Told("--graph needs the name of a file"));
    EXPECT_EQ(MistakeOf("overlay=a.grd"), Told("--graph: 'a.grd'" + endings));
    EXPECT_EQ(MistakeOf("a.grf=b"), Told("--graph: 'b'" + endings));
    EXPECT_EQ(MistakeOf("a.grf=a.grf"), Told("--graph: 'a.grf' would be written over itself"));
    for (const char* file : {"a.dat", "a.grf"})
        EXPECT_EQ(MistakeOf(std::string("figure=") + file),
                  Told("--graph figure is a picture: '" + std::string(file) +
                       "' ends with none of .svg, .png, .pdf and .emf"));
    EXPECT_EQ(MistakeOf("overlay=a"), Told("--graph: 'a'" + endings));
    EXPECT_EQ(MistakeOf("overlay=x.svg/a"), Told("--graph: 'x.svg/a'" + endings));
    for (const char* set : {"0", "19", "-1", "x", "", "2x", "99999999999999999999"})
        EXPECT_EQ(MistakeOf(std::string("data:") + set + "=a.svg"),
                  Told(std::string("--graph: a data set is a number from 1 to 18, not '") + set + "'"));
}

TEST(GraphOptions, TwoOutputsNeverShareAFile) {
    const auto mistake = [](const std::vector<std::string>& arguments) {
        try {
            ParseOptions(arguments);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return std::string("no error");
    };
    EXPECT_EQ(mistake({"a.job", "--graph", "data=a.svg", "--graph", "overlay:2=a.svg"}),
              Told("--graph data and --graph overlay:2 name the same file"));
    EXPECT_EQ(mistake({"a.job", "--graph", "data=a.dat", "--points", "a.dat"}),
              Told("--points and --graph data name the same file"));
    EXPECT_EQ(mistake({"a.job", "--graph", "data=a.svg", "--graph", "data=a.emf"}), "no error");
}

TEST(GraphOptions, GraphWithoutAnythingBehindIsTold) {
    try {
        ParseOptions({"a.job", "--graph"});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, Told("--graph needs KIND=FILE, not ''"));
    }
}

} // namespace
} // namespace Quillon
