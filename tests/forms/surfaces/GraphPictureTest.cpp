// Graphs that quillon-fit writes with the help of the module, where there is no display at all.
#include "PdfReader.h"
#include "PixelPicture.h"
#include "tests/chart/MetafileReader.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace Quillon {

namespace {

const char* const AllKinds[] = {"data", "function", "overlay", "residuals", "residuals-y", "residuals-r"};

// An example, fitted once; graphs are then those of the saved fit.
class GraphPictures : public testing::Test {
protected:
    void SetUp() override {
        const std::string job = QUILLON_SOURCE "/examples/single-species/single-species.job";
        ASSERT_EQ(Run(job + " --quiet --save " + Path("fit.quil")), 0) << Errors;
    }
    int Run(const std::string& arguments) {
        const std::string command =
            "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM -u XDG_RUNTIME_DIR " QUILLON_FIT " " +
            arguments + " > " + Path("out") + " 2> " + Path("err");
        const int end = std::system(command.c_str());
        Errors = ReadWholeFile(Path("err"));
        return WEXITSTATUS(end);
    }
    // All kinds at one run, "data.png" and so on.
    void WriteAll(const std::string& ending) {
        std::string arguments = Path("fit.quil");
        for (const std::string kind : AllKinds)
            arguments += " --graph " + kind + "=" + Path(kind + "." + ending);
        ASSERT_EQ(Run(arguments), 0) << Errors;
        EXPECT_EQ(Errors, "");
    }
    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }

    Script TheScript;
    std::string Errors;
};

QImage ImageOf(const std::string& bytes) {
    return QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()),
                            "PNG")
        .convertToFormat(QImage::Format_RGB32);
}

// What is on a picture, in one pass over its pixels.
struct Ink {
    int Left, Top, Right, Bottom;
    int BlackRun = 0;         // the longest run of black in any row: the frame's lower or upper side
    int Blue = 0, Orange = 0; // of the second and third set
};

Ink InkOf(const QImage& image) {
    Ink ink{image.width(), image.height(), -1, -1};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0, run = 0; x < image.width(); ++x) {
            const unsigned color = row[x] & 0xFFFFFFU;
            run = color == 0 ? run + 1 : 0;
            if (color == White) continue;
            ink.BlackRun = std::max(ink.BlackRun, run);
            ink.Blue += color == 0x0072B2 ? 1 : 0;
            ink.Orange += color == 0xD47E12 ? 1 : 0;
            ink.Left = std::min(ink.Left, x);
            ink.Right = std::max(ink.Right, x);
            ink.Top = std::min(ink.Top, y);
            ink.Bottom = y;
        }
    }
    return ink;
}

} // namespace

// The lines of a text report that are not empty, without the marks between its pages.
std::string PrintedLines(const std::string& report) {
    std::string text, line;
    for (const char c : report) {
        if (c == '\n' && !line.empty()) text += line + "\n";
        if (c == '\n' || c == '\f')
            line.clear();
        else
            line += c;
    }
    return text;
}

TEST_F(GraphPictures, AReportAsPagesIsTheTextReportOfItsPaper) {
    struct Sheet {
        const char* Name;
        double Width, Height; // points
    };
    for (const Sheet& sheet :
         {Sheet{"a4", 595.0, 842.0}, Sheet{"letter", 612.0, 792.0}, Sheet{"a4-landscape", 842.0, 595.0},
          Sheet{"letter-landscape", 792.0, 612.0}}) {
        const std::string paper = std::string(" --paper ") + sheet.Name;
        ASSERT_EQ(Run(Path("fit.quil") + paper + " --report " + Path("r.txt")), 0) << Errors;
        ASSERT_EQ(Run(Path("fit.quil") + paper + " --report-graph residuals --report " + Path("r.pdf")), 0)
            << Errors;
        const std::string text = ReadWholeFile(Path("r.txt"));
        const PdfDocument pdf = ReadPdf(ReadWholeFile(Path("r.pdf")));
        const auto pages = std::count(text.begin(), text.end(), '\f') + 1;
        EXPECT_EQ(pdf.Pages, pages + 1) << sheet.Name << ", with the graph behind";
        EXPECT_DOUBLE_EQ(pdf.PageWidth, sheet.Width) << sheet.Name;
        EXPECT_DOUBLE_EQ(pdf.PageHeight, sheet.Height) << sheet.Name;
        const std::string printed = TextOf(pdf), lines = PrintedLines(text);
        EXPECT_TRUE(printed.starts_with(lines)) << sheet.Name << "\n" << printed;
        EXPECT_NE(printed.find("Y(exp) - Y(fit)", lines.size()), std::string::npos) << sheet.Name;
    }
}

// Scans of one cell and speed, later and later: the example's, with other times in their heads.
TEST_F(GraphPictures, TheGraphOfARunWasRefusedAsPng) {
    const std::string scan = ReadWholeFile(QUILLON_SOURCE "/examples/single-species/00012.RA1");
    const std::string time = "0072000 6.3955E10";
    const std::size_t place = scan.find(time);
    ASSERT_NE(place, std::string::npos);
    std::filesystem::create_directory(Path("run"));
    TheScript.MakeFile("run/00001.RA1", std::string(scan).replace(place, time.size(), "0050000 4.4413E10"));
    TheScript.MakeFile("run/00002.RA1", scan);
    ASSERT_EQ(Run("--sort " + Path("run") + " --graph approach:1=" + Path("a.png")), 0) << Errors;
    EXPECT_EQ(ImageOf(ReadWholeFile(Path("a.png"))).width(), 1800);
}

TEST_F(GraphPictures, PngIsTheFigureAt300DotsPerInch) {
    WriteAll("png");
    for (const std::string kind : AllKinds) {
        const std::string bytes = ReadWholeFile(Path(kind + ".png"));
        ASSERT_TRUE(bytes.starts_with("\x89PNG\r\n\x1A\n")) << kind;
        const QImage image = ImageOf(bytes);
        EXPECT_EQ(image.width(), 1800);
        EXPECT_EQ(image.height(), 1350);
        EXPECT_EQ(image.dotsPerMeterX(), 11811);
        const Ink ink = InkOf(image);
        EXPECT_GT(ink.BlackRun, 1200) << kind; // two thirds of the width
        EXPECT_GT(ink.Right - ink.Left, 1500) << kind;
        EXPECT_GT(ink.Bottom - ink.Top, 1200) << kind;
        EXPECT_GT(ink.Left, 0); // nothing is cut off
        EXPECT_GT(ink.Top, 0);
        EXPECT_LT(ink.Right, 1799);
        EXPECT_LT(ink.Bottom, 1349);
        EXPECT_GT(ink.Blue, 100) << kind; // the second colour, of a line or of symbols
    }
    // The line of the third set is there in the overlay of all, and not in that of the first alone.
    ASSERT_EQ(Run(Path("fit.quil") + " --graph overlay:1=" + Path("one.png")), 0) << Errors;
    EXPECT_GT(InkOf(ImageOf(ReadWholeFile(Path("overlay.png")))).Orange, 1000);
    EXPECT_EQ(InkOf(ImageOf(ReadWholeFile(Path("one.png")))).Orange, 0);
}

// True where a dot is not white, or one next to it.
bool HasInk(const QImage& image, DevicePoint at) {
    for (int y = at.Y - 1; y <= at.Y + 1; ++y)
        for (int x = at.X - 1; x <= at.X + 1; ++x)
            if (image.valid(x, y) && ColorAt(image, x, y) != White) return true;
    return false;
}

TEST_F(GraphPictures, TheMetafileOfAFigureDrawsWhereItsPngHasInk) {
    for (const std::string panels : {"all", "sets"}) {
        ASSERT_EQ(Run(Path("fit.quil") + " --figure-size 170 --figure-panels " + panels +
                      " --graph figure=" + Path("f.png") + " --graph figure=" + Path("f.emf")),
                  0)
            << Errors;
        const QImage image = ImageOf(ReadWholeFile(Path("f.png")));
        long points = 0;
        for (const EmfItem& item : PlayMetafile(ReadMetafile(ReadWholeFile(Path("f.emf"))))) {
            const bool line = item.Kind == "polyline" || item.Kind == "segments" || item.Kind == "polygon";
            if (!line || !item.PenVisible) continue;
            for (const DevicePoint point : item.Points) {
                ++points;
                EXPECT_TRUE(HasInk(image, point)) << item.Kind << " " << point.X << "," << point.Y;
            }
        }
        EXPECT_GT(points, 500) << panels;
    }
}

TEST_F(GraphPictures, PdfIsOnePageWithItsText) {
    WriteAll("pdf");
    for (const std::string kind : AllKinds) {
        const std::string bytes = ReadWholeFile(Path(kind + ".pdf"));
        ASSERT_TRUE(bytes.starts_with("%PDF-1.")) << kind;
        const PdfDocument document = ReadPdf(bytes);
        EXPECT_DOUBLE_EQ(document.PageWidth, 432.0); // 6 by 4.5 inches
        EXPECT_DOUBLE_EQ(document.PageHeight, 324.0);
        const std::string text = TextOf(document);
        const std::string x = kind == "residuals-r"   ? "Radius (cm)"
                              : kind == "residuals-y" ? "Absorbance"
                                                      : " - Ro";
        EXPECT_NE(text.find(x), std::string::npos) << text;
        EXPECT_NE(text.find(kind == "function" ? "Set 3" : "00036.RA1"), std::string::npos) << text;
    }
}

TEST_F(GraphPictures, SeveralFormatsAtOneRun) {
    ASSERT_EQ(Run(Path("fit.quil") + " --graph data=" + Path("a.png") + " --graph data=" + Path("a.pdf") +
                  " --graph data=" + Path("a.svg") + " --graph data=" + Path("a.emf") +
                  " --graph data=" + Path("a.dat") + " --report " + Path("a.txt")),
              0)
        << Errors;
    for (const char* ending : {"png", "pdf", "svg", "emf", "dat", "txt"})
        EXPECT_GT(std::filesystem::file_size(Path(std::string("a.") + ending)), 100U) << ending;
}

TEST_F(GraphPictures, AReportIsPagesOfThePaper) {
    struct Paper {
        const char* Name;
        double Width, Height; // points
    };
    for (const Paper& paper : {Paper{"a4", 595.0, 842.0}, Paper{"letter-landscape", 792.0, 612.0}}) {
        const std::string line = Path("fit.quil") + " --paper " + paper.Name + " --report " + Path("r.pdf");
        ASSERT_EQ(Run(line), 0) << Errors;
        const PdfDocument text = ReadPdf(ReadWholeFile(Path("r.pdf")));
        EXPECT_DOUBLE_EQ(text.PageWidth, paper.Width);
        EXPECT_DOUBLE_EQ(text.PageHeight, paper.Height);
        EXPECT_TRUE(TextOf(text).starts_with("Fitting to an ideal single species model\n")) << TextOf(text);
        EXPECT_NE(TextOf(text).find("Results of fit:\n"), std::string::npos);
        for (const std::string graph : {"residuals", "overlay"}) {
            ASSERT_EQ(Run(line + " --report-graph " + graph), 0) << Errors;
            const PdfDocument both = ReadPdf(ReadWholeFile(Path("r.pdf")));
            EXPECT_EQ(both.Pages, text.Pages + 1);
            const char* const axis = graph == "overlay" ? "Absorbance\n" : "Y(exp) - Y(fit)\n";
            EXPECT_NE(TextOf(both).find(axis), std::string::npos);
        }
    }
}

TEST_F(GraphPictures, AnInstallationHasTheModuleAmongItsLibraries) {
    std::filesystem::create_directories(Path("usr/bin"));
    std::filesystem::create_directories(Path("usr/lib/quillon"));
    std::filesystem::copy_file(QUILLON_FIT, Path("usr/bin/quillon-fit"));
    const std::string command = Path("usr/bin/quillon-fit") + " " + Path("fit.quil") +
                                " --graph data=" + Path("i.png") + " 2> " + Path("err");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    std::filesystem::copy_file(QUILLON_SURFACES, Path("usr/lib/quillon/libquillon-surfaces.so"));
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0) << ReadWholeFile(Path("err"));
    EXPECT_EQ(ImageOf(ReadWholeFile(Path("i.png"))).width(), 1800);
}

// Letters would be boxes.
TEST_F(GraphPictures, WithoutAnyFontAPictureIsRefused) {
    TheScript.MakeFile("fonts.conf", "<?xml version=\"1.0\"?><fontconfig></fontconfig>");
    TheScript.MakeFile("no-fonts/none", "");
    ::setenv("FONTCONFIG_FILE", Path("fonts.conf").c_str(), 1);
    ::setenv("QT_QPA_FONTDIR", Path("no-fonts").c_str(), 1);
    for (const std::string ending : {"png", "pdf"}) {
        const std::string picture = Path("a." + ending);
        EXPECT_EQ(Run(Path("fit.quil") + " --graph data=" + picture), 1);
        EXPECT_EQ(Errors, "--graph data=" + picture + ": no font is installed, and letters would be boxes\n");
        EXPECT_FALSE(std::filesystem::exists(picture));
    }
    EXPECT_EQ(Run(Path("fit.quil") + " --graph data=" + Path("a.svg")), 0); // the reader's fonts
    ::unsetenv("FONTCONFIG_FILE");
    ::unsetenv("QT_QPA_FONTDIR");
}

} // namespace Quillon
