// Pictures of the size on paper: metafiles and the endings of other programs.
#include "MetafileReader.h"
#include "PrintGraphCase.h"

namespace Quillon {
namespace {

// What an item shows and where, without its pen: printers and files have their own thinnest one.
std::vector<std::string> Shown(const std::vector<DrawnItem>& items) {
    std::vector<std::string> lines;
    for (const DrawnItem& item : items)
        lines.push_back(ItemText(item));
    return lines;
}

// The size that a metafile tells, in inches.
std::pair<double, double> SizeOf(const std::string& metafile) {
    const EmfFile emf = ReadMetafile(metafile);
    EXPECT_EQ(emf.Problem, "");
    constexpr std::size_t Frame = 24; // of the header: left, top, right, bottom in hundredths of a millimetre
    const EmfRecord& head = emf.Records.at(0);
    return {(head.Signed(Frame + 8) - head.Signed(Frame)) / 2540.0,
            (head.Signed(Frame + 12) - head.Signed(Frame + 4)) / 2540.0};
}

TEST_F(PrintGraphTest, AMetafileIsAsLargeAsTheGraphOnPaper) {
    const Standing before;
    const auto expect = [](double width, double height) {
        const auto [wide, high] = SizeOf(PictureOnPaper("emf"));
        EXPECT_NEAR(wide, width, 0.01);
        EXPECT_NEAR(high, height, 0.01);
    };
    expect(6.5, 9.0); // the full page, less margins of an inch
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageHalf = -1.0F;
    expect(6.5, 5.5 - 1.0); // the upper half
    std::swap(Printer.Now.Page.Width, Printer.Now.Page.Height);
    expect(5.5 - 1.0, 6.5); // the left one
    std::swap(Printer.Now.Page.Width, Printer.Now.Page.Height);
    SetSize(4.0F, 3.0F, false);
    expect(4.0, 3.0);
    SetSize(3.0F, 2.0F, true); // what is around the frame comes to that
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    const DeviceRect view = ViewOfPage();
    expect((view.Right - view.Left) / 576.0, (view.Bottom - view.Top) / 576.0);
    EXPECT_GT(view.Right - view.Left, 3 * 576);
    Chart.Style = before.Style;
    EXPECT_EQ(before, Standing());
}

TEST_F(PrintGraphTest, APictureOnPaperShowsWhatIsPrintedPlaceByPlace) {
    Printer.Now.Page.Border = EvenEdges(0.5);
    const auto same = [this](const char* what) {
        EXPECT_TRUE(PrintGraph(PrintModes::FromMenu)) << what;
        EXPECT_EQ(Shown(RecordedPicture()), Shown(Printer.Pages[0])) << what;
    };
    same("full page");
    Chart.Style.LeftMargin = Chart.Style.TopMargin = Chart.Style.RightMargin = Chart.Style.BottomMargin =
        0.1F;
    same("margins below the border");
    EXPECT_EQ(ViewOfPage().Right, 7.5 * 576 - 1) << "to the end of what can be printed on";
    Chart.Style.KeepAspect = -1;
    same("the ratio of the window");
    Chart.Style.KeepAspect = 0;
    Chart.Spec.Title2.Text = "below it";
    Chart.Style.LeftMargin = Chart.Style.TopMargin = 2.0F;
    SetSize(4.0F, 3.0F, true);
    same("the axis frame, with titles in a space that is larger than they are");
}

TEST_F(PrintGraphTest, APaperInPixelsIsRoundedToTheNearest) {
    Printer.Now.Page.Width = 8.269; // 2480.7 dots
    Printer.Now.Page.Height = 11.692;
    Printer.Now.Page.Border = {};
    RecordingSurface sheet;
    PictureRequest asked;
    OpenToolkitPicture = [&](const std::string&, const PictureRequest& request) {
        asked = request;
        sheet.Width = request.Width;
        sheet.Height = request.Height;
        sheet.DotsPerInchX = sheet.DotsPerInchY = request.DotsPerInchX;
        return PictureFile{sheet.Surface(), [](const DeviceRect&) {}, [] { return std::string(); }};
    };
    PictureOnPaper("png");
    OpenToolkitPicture = {};
    EXPECT_EQ(asked.Width, 2481);
    EXPECT_EQ(asked.Height, 3508);
}

TEST_F(PrintGraphTest, TheMetafileCommandsAskForItsPropertiesAndTellOnceWhatTheyMean) {
    MetafileNoteShown = false;
    const std::string path = Outside.Directory() + "/g.emf";
    Outside.ExpectMessage(
        "Metafiles are formatted as though they were being printed, and thus will not use color unless you "
        "have selected a color printer or check the 'Use color on black and white printer' option.  The "
        "metafile will have a 'suggested size' corresponding to the printed size settings.  After importing "
        "it into other programs, the metafile may be rescaled in both height and width without loss of "
        "resolution, but it is best to create it using, at least, the desired height/width ratio.  The graph "
        "margin areas are not included in the metafile; thus the margin settings are relevant only because "
        "for 'Full Page' and 'Half Page' modes they play a role in determining the 'size'.");
    WithOptions([] {
        EXPECT_EQ(PrintGrForm.State.Caption, "Set Properties for MetaFile");
        EXPECT_FALSE(PrintGrForm.PrintButton.Visible);
        PrintGrSizeClick(&PrintGrFormRecord::PageCustom);
        PrintGrOkButton();
    });
    Outside.ExpectFile("Quillon - Save Graph File", path);
    WriteMeta();
    WithOptions([] { PrintGrOkButton(); }); // the note has been read
    CopyMeta();
    EXPECT_EQ(ReadWholeFile(path), Outside.ClipboardKinds.Emf);
    EXPECT_TRUE(Outside.ClipboardKinds.Svg.empty() && Outside.ClipboardKinds.Text.empty());
    WithOptions([] { PrintGrCancelButton(); });
    WriteMeta();
    WithOptions([] { PrintGrCancelButton(); });
    CopyMeta();
    EXPECT_EQ(Printer.Done.size(), 0U);
}

TEST_F(PrintGraphTest, AMetafileHasTheColorsOfThePrinterOrThoseAskedForOnce) {
    Printer.Now.HasColor = false;
    MetafileNoteShown = true;
    const auto colored = [&](std::int16_t box) {
        WithOptions([box] {
            PrintGrForm.UseBW.Value = box;
            PrintGrOkButton();
        });
        CopyMeta();
        const std::vector<EmfItem> items = PlayMetafile(ReadMetafile(Outside.ClipboardKinds.Emf));
        return std::any_of(items.begin(), items.end(), [](const EmfItem& item) {
            return item.PenVisible && item.PenColor != 0 && item.PenColor != 0xFFFFFF;
        });
    };
    EXPECT_FALSE(colored(0));
    EXPECT_TRUE(colored(1));
    EXPECT_FALSE(colored(0));
}

TEST_F(PrintGraphTest, PicturesOfTheSizeOnPaperAreSavedFromTheDialog) {
    Chart.Style.MetricUnits = -1;
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageCustom = -1;
    Chart.Style.CustomWidth = 8.5F; // 85 mm
    Chart.Style.CustomHeight = 6.0F;
    const std::string path = Outside.Directory() + "/column.svg";
    LoadPrintGrForm(false);
    Outside.ExpectFile("Quillon - Save Graph File", path);
    PrintGrSavePicture();
    EXPECT_TRUE(PrintGrForm.State.Shown);
    const std::string svg = ReadWholeFile(path);
    const std::size_t at = svg.find("width=\"");
    ASSERT_NE(at, std::string::npos);
    EXPECT_NEAR(std::stod(svg.substr(at + 7)) / 72.0 * 25.4, 85.0, 0.1);
    Outside.ExpectFile("Quillon - Save Graph File", Outside.Directory() + "/column.xyz");
    Outside.ExpectMessage("Error 'no graph is written as 'xyz'' occurred while writing " +
                          Outside.Directory() + "/column.xyz");
    PrintGrSavePicture();
}

TEST_F(PrintGraphTest, APictureSavedFromTheDialogTakesNothingOverUntilTheFormIsLeftSo) {
    const Standing before;
    const std::string path = Outside.Directory() + "/half.svg";
    WithOptions([&] {
        PrintGrSizeClick(&PrintGrFormRecord::PageHalf);
        PrintGrForm.Length[LeftEdge].Text = "2";
        PrintGrForm.EjectPage.Value = 0;
        Outside.ExpectFile("Quillon - Save Graph File", path);
        PrintGrSavePicture();
        PrintGrCancelButton();
    });
    PrintGraphControl();
    EXPECT_EQ(before, Standing());
    EXPECT_TRUE(EjectPage);
    const std::string svg = ReadWholeFile(path);
    EXPECT_NEAR(std::stod(svg.substr(svg.find("width=\"") + 7)) / 72.0, 8.5 - 2.0 - 1.0, 0.01);
}

} // namespace
} // namespace Quillon
