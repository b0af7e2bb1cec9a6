// Graphs that quillon-fit writes: each kind in each format that needs no toolkit, read back and held against
// the points of the same fit.
#include "graphs/kinds/Latin1.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/ProgramRun.h"
#include "tests/chart/MetafileReader.h"
#include "tests/chart/SvgReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <sys/wait.h>

namespace Quillon {
namespace {

struct FitPoint {
    long Set;
    float Radius, X, Y, Fit;
};

std::vector<std::string> Cells(const std::string& line, char mark) {
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, mark);)
        cells.push_back(cell);
    return cells;
}

std::vector<FitPoint> ReadCsv(const std::string& text) {
    std::vector<FitPoint> points;
    for (const std::string& line : LinesOf(text)) {
        const std::vector<std::string> cells = Cells(line, ',');
        if (cells.at(2) != "data") continue; // the head and the loadings
        points.push_back({std::stol(cells[0]), std::stof(cells[3]), std::stof(cells[4]), std::stof(cells[5]),
                          std::stof(cells[6])});
    }
    return points;
}

const char* const AllKinds[] = {"data", "function", "overlay", "residuals", "residuals-y", "residuals-r"};

// One fit of two sets of 30 and 20 points, the second with a loading, saved so that each graph is drawn from
// the same fit at once.
class GraphFiles : public testing::Test {
protected:
    void SetUp() override {
        ModelCase small = SmallCase(30);
        small.Sets[1].Points = 20;
        small.Sets[1].ToleranceA = 0.02F;
        const Workspace truth = SimulatedWorkspace(small);
        const std::string job = TheScript.MakeFile("fit.job", JobTextOf(truth, TheScript));
        const ProgramEnd end = RunInside({job, "--quiet", "--save", Saved(), "--points", Path("p.csv")});
        ASSERT_EQ(end.Status, 0) << end.Err;
        Points = ReadCsv(ReadWholeFile(Path("p.csv")));
        ASSERT_EQ(Points.size(), 50U);
    }

    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }
    std::string Saved() const { return Path("fit.quil"); }

    // The bytes of a graph of the saved fit.
    std::string Graph(const std::string& kind, const std::string& ending) const {
        const std::string path = Path("graph." + ending);
        const ProgramEnd end = RunInside({Saved(), "--graph", kind + "=" + path});
        EXPECT_EQ(end.Status, 0) << end.Err;
        EXPECT_EQ(end.Out + end.Err, "");
        return end.Status == 0 ? ReadWholeFile(path) : "";
    }

    // The values of a kind of graph at the points of a set, as one series or as two.
    static float XOf(const std::string& kind, const FitPoint& point) {
        return kind == "residuals-y" ? point.Fit : kind == "residuals-r" ? point.Radius : point.X;
    }
    static std::vector<float> YOf(const std::string& kind, const FitPoint& point) {
        if (kind == "data") return {point.Y};
        if (kind == "function") return {point.Fit};
        if (kind == "overlay") return {point.Y, point.Fit};
        return {point.Y - point.Fit};
    }
    std::vector<FitPoint> Of(long set) const {
        std::vector<FitPoint> points;
        for (const FitPoint& point : Points)
            if (point.Set == set) points.push_back(point);
        return points;
    }

    Script TheScript;
    std::vector<FitPoint> Points;
};

// Numbers are compared as numbers: each is one that reads back as the same single.
std::vector<std::vector<float>> Numbers(const std::string& text) {
    std::vector<std::vector<float>> lines;
    for (std::string line : LinesOf(text)) {
        EXPECT_TRUE(line.ends_with('\r')) << line;
        line.pop_back();
        lines.emplace_back();
        for (const std::string& cell : Cells(line, '\t'))
            lines.back().push_back(cell == " " ? -9e9F : std::stof(cell));
    }
    return lines;
}

// The stroke of the second curve's symbols, say.
bool HasColor(const std::string& svg, const char* color) {
    return svg.find(color) != std::string::npos;
}

TEST_F(GraphFiles, ClassicColoursAreThoseOfTheStatedTable) {
    const auto drawn = [this](const std::string& what, std::vector<std::string> further) {
        further.insert(further.end(), {"--graph", what + "=" + Path("c.svg")});
        const ProgramEnd end = RunInside(further);
        EXPECT_EQ(end.Status, 0) << end.Err;
        return ReadWholeFile(Path("c.svg"));
    };
    for (const std::string kind : {"overlay", "figure"}) {
        const std::string classic = drawn(kind, {Saved(), "--colors", "classic"});
        EXPECT_TRUE(HasColor(classic, "#0000ff")) << kind; // blue, as the second of 14
        EXPECT_FALSE(HasColor(classic, "#0072b2")) << kind;
        EXPECT_FALSE(HasColor(drawn(kind, {Saved()}), "#0000ff")) << kind; // the run before leaves nothing
    }
    WriteWholeFile(Path("kept.grf"), Graph("overlay", "grf"));
    EXPECT_TRUE(HasColor(drawn(Path("kept.grf"), {}), "#0072b2"));
    EXPECT_EQ(drawn(Path("kept.grf"), {"--colors", "classic"}),
              drawn("overlay", {Saved(), "--colors", "classic"}));
}

// Of these the graphs of species and masses have lines for what the sets hold, and sets by looks.
const char* const KindsOfTheModel[] = {"species", "species-fraction", "mass-c", "mass-r", "species:2"};

TEST_F(GraphFiles, AGraphFileGivesThePictureOfTheFitAndItselfAgain) {
    std::vector<std::string> kinds(std::begin(AllKinds), std::end(AllKinds));
    kinds.insert(kinds.end(), std::begin(KindsOfTheModel), std::end(KindsOfTheModel));
    const auto drawn = [this](std::vector<std::string> arguments, const std::string& what,
                              const char* ending) {
        const std::string path = Path(std::string("drawn.") + ending);
        arguments.insert(arguments.end(), {"--graph", what + "=" + path});
        const ProgramEnd end = RunInside(arguments); // masses tell which points they leave out
        EXPECT_EQ(end.Status, 0) << end.Err;
        return ReadWholeFile(path);
    };
    for (const std::string& kind : kinds) {
        WriteWholeFile(Path("kept.grf"), drawn({Saved()}, kind, "grf"));
        for (const char* ending : {"svg", "emf", "csv", "grf"})
            EXPECT_TRUE(drawn({}, Path("kept.grf"), ending) == drawn({Saved()}, kind, ending))
                << kind << " " << ending;
    }
}

TEST_F(GraphFiles, AGraphOfAnotherProgramIsDrawnWithARemarkAndItsOwnTitle) {
    std::string bytes = Graph("data", "grf");
    const std::string own("\x07\0QUILLON", 9), other("\x05\0OTHER", 7);
    ASSERT_TRUE(bytes.starts_with(own));
    bytes.replace(0, own.size(), other);
    WriteWholeFile(Path("other.grf"), bytes);
    const ProgramEnd end = RunInside({"--graph", Path("other.grf") + "=" + Path("o.svg")});
    EXPECT_EQ(end.Status, 0);
    EXPECT_EQ(end.Err, Path("other.grf") +
                           ": This file is a graph from OTHER not Quillon.  It should display properly, but "
                           "current special options under the Options heading may be inappropriate.\n");
    const std::string svg = ReadWholeFile(Path("o.svg"));
    EXPECT_EQ(svg, Graph("data", "svg"));
    EXPECT_NE(svg.find("monomer &lt;-&gt; dimer fit"), std::string::npos);
}

TEST_F(GraphFiles, CommaSeparatedValuesAreTheNumbersBelowHeads) {
    const std::vector<std::string> csv = LinesOf(Graph("overlay", "csv"));
    const std::vector<std::string> dat = LinesOf(Graph("overlay", "dat"));
    ASSERT_EQ(csv.size(), dat.size() + 1);
    EXPECT_TRUE(csv[0].ends_with("set2.txt (fit)\"\r")) << csv[0];
    EXPECT_EQ(Cells(csv[0], ',').size(), 8U);
    for (std::size_t i = 0; i < dat.size(); ++i) {
        std::string line = dat[i];
        std::replace(line.begin(), line.end(), '\t', ',');
        std::erase(line, ' '); // a gap
        EXPECT_EQ(csv[i + 1], line);
    }
}

TEST_F(GraphFiles, ADamagedGraphFileIsToldAndNothingIsWritten) {
    const std::string saved = Graph("data", "grf");
    WriteWholeFile(Path("short.grf"), saved.substr(0, saved.size() / 2));
    const ProgramEnd end = RunInside({"--graph", Path("short.grf") + "=" + Path("none.svg")});
    EXPECT_EQ(end.Status, 1);
    EXPECT_EQ(end.Err,
              "--graph " + Path("short.grf") + "=" + Path("none.svg") + ": Input past end of file\n");
    EXPECT_FALSE(std::filesystem::exists(Path("none.svg")));
}

TEST_F(GraphFiles, NumbersAreThoseOfTheFit) {
    for (const std::string kind : AllKinds) {
        for (const long only : {0L, 2L}) {
            const std::string name = only == 0 ? kind : kind + ":" + std::to_string(only);
            std::vector<std::vector<float>> wanted(only == 0 ? 30 : 20);
            for (long set = only == 0 ? 1 : only; set <= 2; ++set) {
                const std::vector<FitPoint> points = Of(set);
                const std::size_t series = YOf(kind, points[0]).size();
                for (std::size_t s = 0; s < series; ++s)
                    for (std::size_t i = 0; i < wanted.size(); ++i) {
                        wanted[i].push_back(i < points.size() ? XOf(kind, points[i]) : -9e9F);
                        wanted[i].push_back(i < points.size() ? YOf(kind, points[i])[s] : -9e9F);
                    }
            }
            const std::vector<std::vector<float>> told = Numbers(Graph(name, "dat"));
            ASSERT_EQ(told.size(), wanted.size()) << name;
            for (std::size_t i = 0; i < told.size(); ++i) {
                ASSERT_EQ(told[i].size(), wanted[i].size()) << name;
                for (std::size_t c = 0; c < told[i].size(); ++c)
                    EXPECT_NEAR(told[i][c], wanted[i][c], 1e-6F * std::abs(wanted[i][c]))
                        << name << ", " << i; // seven digits
            }
        }
    }
}

bool WithinFrame(const SvgElement& element) {
    return element.Get("clip-path") == "url(#clip1)";
}

// Elements that draw the data: those that are clipped by the first clip, themselves or by what holds them.
std::vector<SvgElement> DataElements(const SvgDocument& svg) {
    std::vector<SvgElement> data;
    for (const SvgElement& element : svg.Elements) {
        const bool held = std::any_of(element.Parents.begin(), element.Parents.end(),
                                      [&](std::size_t place) { return WithinFrame(svg.Elements[place]); });
        if (element.Name != "g" && (held || WithinFrame(element))) data.push_back(element);
    }
    return data;
}

std::size_t PointsIn(const SvgElement& polyline) {
    return Cells(polyline.Get("points"), ' ').size();
}

TEST_F(GraphFiles, SvgHasEachSeriesAndItsTexts) {
    for (const std::string kind : AllKinds) {
        const SvgDocument svg = ReadSvg(Graph(kind, "svg"));
        ASSERT_EQ(svg.Problem, "") << kind;
        EXPECT_EQ(svg.Elements.at(0).Get("width"), "432pt"); // 6 by 4.5 inches
        EXPECT_EQ(svg.Elements.at(0).Get("height"), "324pt");
        const bool residuals = kind.starts_with("residuals");
        std::vector<std::string> texts;
        for (const SvgElement& text : svg.All("text"))
            texts.push_back(text.Text);
        const auto has = [&](const std::string& text) {
            return std::find(texts.begin(), texts.end(), text) != texts.end();
        };
        EXPECT_TRUE(has(kind == "residuals-r"   ? "Radius (cm)"
                        : kind == "residuals-y" ? "Absorbance"
                                                : "(R² - Ro²) / 2   (cm²)"));
        EXPECT_TRUE(has(residuals ? "Y(exp) - Y(fit)" : "Absorbance"));
        EXPECT_EQ(has("monomer <-> dimer fit"), !residuals) << kind;
        EXPECT_TRUE(has(kind == "function" ? "Set 1" : "set1.txt"));
        EXPECT_TRUE(has(kind == "function" ? "Set 2" : "set2.txt"));

        std::size_t lines = 0, linePoints = 0, crosses = 0, diamonds = 0;
        for (const SvgElement& element : DataElements(svg)) {
            const bool line = element.Name == "polyline";
            lines += line ? 1U : 0U;
            linePoints += line ? PointsIn(element) : 0;
            crosses += element.Name == "line" ? 1U : 0U;
            diamonds += element.Name == "polygon" ? 1U : 0U;
            EXPECT_EQ(element.Get("stroke-width"), line ? "3" : "2"); // 15 and 10 twips at 300 dots per inch
        }
        const bool drawsLines = kind == "function" || kind == "overlay";
        EXPECT_EQ(lines, drawsLines ? 2U : 0U) << kind;
        EXPECT_EQ(linePoints, drawsLines ? 50U : 0U) << kind;
        EXPECT_EQ(crosses, kind == "function" ? 0U : 60U) << kind;  // a plus is two lines
        EXPECT_EQ(diamonds, kind == "function" ? 0U : 20U) << kind; // the symbol of the second set
    }
}

TEST_F(GraphFiles, AFigureHasTheSizeInPrintAndBothGraphs) {
    for (const std::string ending : {"svg", "emf"}) {
        const std::string path = Path("figure." + ending);
        ASSERT_EQ(RunInside({Saved(), "--figure-size", "127x100", "--graph", "figure=" + path}).Status, 0);
        if (ending == "emf") {
            EXPECT_EQ(ReadMetafile(ReadWholeFile(path)).Problem, "");
            continue;
        }
        const SvgDocument svg = ReadSvg(ReadWholeFile(path));
        ASSERT_EQ(svg.Problem, "");
        EXPECT_EQ(svg.Elements.at(0).Get("width"), "360pt"); // 127 mm are 5 inches
        EXPECT_NEAR(std::atof(svg.Elements.at(0).Get("height").c_str()), 283.46, 0.1);
        std::map<std::string, int> texts;
        for (const SvgElement& text : svg.All("text"))
            ++texts[text.Text];
        EXPECT_EQ(texts["Absorbance"], 1);
        EXPECT_EQ(texts["Residual"], 1);
        EXPECT_EQ(texts["(R² - Ro²) / 2   (cm²)"], 1);
        std::size_t points = 0; // data and residuals: circles of the first set, squares of the second
        for (const SvgElement& element : svg.Elements)
            points += element.Name == "ellipse" || element.Name == "polygon" ? 1U : 0U;
        EXPECT_EQ(points, 2U * 50U + 2U); // and the two of the legend
    }
}

TEST_F(GraphFiles, TitlesTellThePathOfTheScansWhereThereIsOne) {
    const auto holds = [](const std::string& svg, const std::string& text) {
        return svg.find(text) != std::string::npos;
    };
    EXPECT_TRUE(holds(Graph("data", "svg"), "Data from: " + TheScript.Directory() + "/<"));
    EXPECT_TRUE(holds(Graph("residuals", "svg"), "; data from " + TheScript.Directory() + "/<"));
    ProgramStart start;
    start.Directory = TheScript.Directory(); // the job names its scans without a path
    start.Arguments = {"fit.job", "--quiet", "--graph", "data=d.svg", "--graph", "residuals=r.svg"};
    ASSERT_EQ(RunProgram(start).Status, 0);
    EXPECT_FALSE(holds(ReadWholeFile(Path("d.svg")), "ata from"));
    EXPECT_TRUE(holds(ReadWholeFile(Path("d.svg")), "fit<"));
    EXPECT_FALSE(holds(ReadWholeFile(Path("r.svg")), "ata from"));
    EXPECT_TRUE(holds(ReadWholeFile(Path("r.svg")), "RMS residual = "));
}

TEST_F(GraphFiles, SvgOfOneSetIsThatSet) {
    const SvgDocument svg = ReadSvg(Graph("overlay:2", "svg"));
    ASSERT_EQ(svg.Problem, "");
    std::size_t points = 0, diamonds = 0;
    for (const SvgElement& element : DataElements(svg)) {
        points += element.Name == "polyline" ? PointsIn(element) : 0;
        diamonds += element.Name == "polygon" ? 1U : 0U;
    }
    EXPECT_EQ(points, 20U);
    EXPECT_EQ(diamonds, 20U); // the symbol of the second set, alone as among others
    for (const SvgElement& text : svg.All("text"))
        EXPECT_EQ(text.Text.find("set1"), std::string::npos);
}

// Where a value stands between the two ends of a frame.
double Place(double from, double to, double low, double high, double value) {
    return from + (to - from) * (value - low) / (high - low);
}

// Points of the line of the fit against the fit: the frame's corners are those of its lines, the scale is
// that of the labels at its ends.
TEST_F(GraphFiles, SvgPointsStandWhereTheAxesSay) {
    const SvgDocument svg = ReadSvg(Graph("function:1", "svg"));
    const std::vector<SvgElement> data = DataElements(svg);
    ASSERT_EQ(data.size(), 1U);
    const std::vector<std::string> drawn = Cells(data[0].Get("points"), ' ');
    const std::vector<FitPoint> points = Of(1);
    ASSERT_EQ(drawn.size(), points.size());
    const auto at = [&](std::size_t i) {
        const std::vector<std::string> xy = Cells(drawn[i], ',');
        return std::pair(std::stod(xy[0]), std::stod(xy[1]));
    };
    // Two points give the scale, all others have to agree with it.
    const auto [x1, y1] = at(0);
    const auto [x2, y2] = at(drawn.size() - 1);
    EXPECT_LT(x1, x2);
    EXPECT_GT(y1, y2); // upward
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        EXPECT_NEAR(at(i).first, Place(x1, x2, points.front().X, points.back().X, points[i].X), 1.5);
        EXPECT_NEAR(at(i).second, Place(y1, y2, points.front().Fit, points.back().Fit, points[i].Fit), 1.5);
    }
}

TEST_F(GraphFiles, MetafileIsTheSamePicture) {
    for (const std::string kind : AllKinds) {
        const EmfFile file = ReadMetafile(Graph(kind, "emf"));
        ASSERT_EQ(file.Problem, "") << kind;
        const EmfRecord& header = file.Records.front();
        EXPECT_EQ(header.Word(40), 0x464D4520U); // " EMF"
        EXPECT_EQ(header.Signed(32), 15240);     // 6 inches in hundredths of a millimetre
        EXPECT_EQ(header.Signed(36), 11430);
        EXPECT_GE(header.Signed(8), 0); // the bounds lie within the picture
        EXPECT_GE(header.Signed(12), 0);
        EXPECT_LT(header.Signed(16), 1800);
        EXPECT_LT(header.Signed(20), 1350);
        // Texts are those of the other format.
        const SvgDocument svg = ReadSvg(Graph(kind, "svg"));
        std::string texts, written; // some of a metafile stand in pieces
        for (const SvgElement& text : svg.All("text"))
            texts += Latin1Text(text.Text);
        for (const EmfItem& item : PlayMetafile(file))
            if (item.Kind == "text") written += item.Text;
        EXPECT_EQ(written, texts) << kind;
        std::size_t polylines = 0;
        for (const EmfItem& item : PlayMetafile(file))
            polylines += item.Kind == "polyline" && item.Clipped && item.Points.size() >= 20 ? 1U : 0U;
        EXPECT_EQ(polylines, kind == "function" || kind == "overlay" ? 2U : 0U) << kind;
    }
}

TEST_F(GraphFiles, EndingsAreTakenInAnyCase) {
    EXPECT_TRUE(Graph("data", "SVG").starts_with("<?xml"));
    EXPECT_EQ(Graph("data", "Svg"), Graph("data", "svg"));
}

TEST_F(GraphFiles, TheGraphOfAFitIsThatOfTheSavedFit) {
    const std::string path = Path("a.svg");
    ASSERT_EQ(RunInside({Path("fit.job"), "--quiet", "--graph", "overlay=" + path}).Status, 0);
    EXPECT_EQ(ReadWholeFile(path), Graph("overlay", "svg"));
}

TEST_F(GraphFiles, NoSettingsOfTheUserAreRead) {
    const std::string plain = Graph("overlay", "svg");
    TheScript.MakeFile("chart.ini", "[QUILLON]\nTitleSize=.05\nScreenColor0=&HFF\nPrintColor0=&HFF\n");
    ProgramStart start;
    start.Directory = TheScript.Directory();
    start.Arguments = {"fit.quil", "--graph", "overlay=b.svg"};
    ASSERT_EQ(RunProgram(start).Status, 0);
    EXPECT_EQ(ReadWholeFile(Path("b.svg")), plain);
}

TEST_F(GraphFiles, ADataSetThatIsNotThereIsToldBeforeTheFit) {
    for (const std::string& input : {Path("fit.job"), Saved()}) {
        const std::string path = Path("none.svg");
        const ProgramEnd end = RunInside({input, "--points", Path("q.csv"), "--graph", "overlay:7=" + path});
        EXPECT_EQ(end.Status, 1);
        EXPECT_EQ(end.Err, "--graph overlay:7=" + path + ": the fit has no data set 7, it has 2\n");
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_FALSE(std::filesystem::exists(Path("q.csv")));
    }
}

TEST_F(GraphFiles, APlaceThatCannotBeWrittenIsToldBeforeTheFit) {
    const std::string path = Path("missing/a.svg");
    const ProgramEnd end = RunInside({Path("fit.job"), "--graph", "overlay=" + path});
    EXPECT_EQ(end.Status, 1);
    EXPECT_EQ(end.Err, path + ": Path not found\n");
}

TEST_F(GraphFiles, AFitThatDidNotConvergeHasNoGraph) {
    std::string job = ReadWholeFile(Path("fit.job"));
    job.insert(job.find('\n') + 1, "max-iterations = 1\nconvergence-limit = 1e-30\n");
    TheScript.MakeFile("short.job", job);
    const std::string path = Path("none.svg");
    const ProgramEnd end = RunInside({Path("short.job"), "--quiet", "--graph", "overlay=" + path});
    EXPECT_EQ(end.Status, 2) << end.Err;
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(GraphFiles, AFormerFileIsReplacedAsAWhole) {
    const std::string path = TheScript.MakeFile("old.svg", std::string(1000000, 'x'));
    ASSERT_EQ(RunInside({Saved(), "--graph", "data=" + path}).Status, 0);
    EXPECT_EQ(ReadWholeFile(path), Graph("data", "svg"));
}

TEST_F(GraphFiles, NamesOfFilesKeepTheirLetters) {
    // The signs of the format, and an umlaut in UTF-8 and in Latin-1.
    const std::string names[] = {"a<b>&\xC3\xB6.txt", "c\xF6.txt"};
    std::string job = ReadWholeFile(Path("fit.job"));
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string plain = "set" + std::to_string(i + 1) + ".txt";
        std::filesystem::rename(Path(plain), Path(names[i]));
        job.replace(job.find(plain), plain.size(), names[i]);
    }
    TheScript.MakeFile("odd.job", job);
    const std::string path = Path("odd.svg");
    const ProgramEnd end = RunInside({Path("odd.job"), "--quiet", "--graph", "overlay=" + path});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const std::string svg = ReadWholeFile(path);
    EXPECT_EQ(ReadSvg(svg).Problem, "");
    EXPECT_NE(svg.find(">a&lt;b&gt;&amp;\xC3\xB6.txt<"), std::string::npos);
    EXPECT_NE(svg.find(">c\xC3\xB6.txt<"), std::string::npos);
}

TEST(GraphNames, Utf8BecomesLatin1WhereItIsOne) {
    EXPECT_EQ(Latin1Text("plain.RA1"), "plain.RA1");
    EXPECT_EQ(Latin1Text("\xC3\xBC\xC2\xB5"), "\xFC\xB5");
    EXPECT_EQ(Latin1Text("\xE2\x82\xAC-\xF0\x9F\x98\x80"), "?-?"); // euro, a face
    // What is no UTF-8 stays: lone bytes, a cut letter, one written too long.
    for (const std::string text :
         {"\xFC.RA1", "a\xC3", "\xC3(", "\xC0\xAF", "\xE2\x82", "\xC3\xBC\xFC", "\xFF"})
        EXPECT_EQ(Latin1Text(text), text);
    EXPECT_EQ(Latin1Text(""), "");
}

// All of them were question marks, so that names of two files could look alike.
TEST(GraphNames, LettersBeyondLatin1AreReadWithoutTheirMarks) {
    EXPECT_EQ(Latin1Text("\xC5\x81\xC3\xB3\x64\xC5\xBA \xC4\x8C\xC5\x99 \xC5\xBF\xC4\x80"),
              "L\xF3\x64z Cr sA");
    EXPECT_EQ(Latin1Text("\xCE\xB1\xCF\x89\xCE\x94\xCF\x83\xCF\x82"), "alphaomegaDeltasigmasigma");
    EXPECT_EQ(Latin1Text("u\xCC\x88\x62\x65r"),
              "uber"); // a mark behind its letter, as some systems name files
    EXPECT_EQ(Latin1Text("6\xE2\x80\x93\x37 \xE2\x80\x9C"
                         "a\xE2\x80\x99"),
              "6-7 \"a'");
    EXPECT_EQ(Latin1Text("\xCE\xA2\xCE\xAA\xC6\x80"), "???"); // none of these tables
}

TEST_F(GraphFiles, WithoutTheModuleAPictureThatNeedsItIsRefused) {
    const std::string program = Path("quillon-fit");
    std::filesystem::copy_file(QUILLON_FIT, program);
    for (const std::string kind : {"png", "pdf"}) {
        const std::string command = program + " " + Path("fit.job") + " --graph data=" + Path("a." + kind) +
                                    " > " + Path("out") + " 2> " + Path("err");
        const int status = std::system(command.c_str());
        EXPECT_EQ(WEXITSTATUS(status), 1);
        EXPECT_EQ(ReadWholeFile(Path("err")),
                  "--graph data=" + Path("a." + kind) + ": a " + kind +
                      " needs the desktop part of the program: libquillon-surfaces.so is not beside the "
                      "program\n");
        EXPECT_FALSE(std::filesystem::exists(Path("a." + kind)));
    }
    const std::string report =
        program + " " + Path("fit.job") + " --report " + Path("a.pdf") + " 2> " + Path("err");
    EXPECT_EQ(WEXITSTATUS(std::system(report.c_str())), 1);
    EXPECT_EQ(ReadWholeFile(Path("err")),
              "--report " + Path("a.pdf") +
                  ": a pdf needs the desktop part of the program: libquillon-surfaces.so is not beside the "
                  "program\n");
    // Nor is something else of that name taken for it.
    TheScript.MakeFile("libquillon-surfaces.so", "no library");
    const std::string command =
        program + " " + Path("fit.job") + " --graph data=" + Path("a.png") + " 2> " + Path("err");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_EQ(LinesOf(ReadWholeFile(Path("err"))).size(), 1U);
}

} // namespace
} // namespace Quillon
