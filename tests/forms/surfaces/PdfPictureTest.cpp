// PDF pictures: the page is the picture, its text is text and its fonts are in it.
#include "forms/surfaces/PdfPicture.h"
#include "PdfReader.h"

#include <gtest/gtest.h>

namespace Quillon {

namespace {

PictureRequest Request() {
    return {std::string("Quillon\0Graph\0\0", 15), 1200, 900, 300.0, 300.0};
}

template <typename Draw> PdfDocument DrawnPdf(const Draw& draw) {
    const PictureFile picture = OpenPdf(Request());
    draw(picture);
    return ReadPdf(picture.Finish());
}

} // namespace

TEST(PdfPicture, ThePageIsThePicture) {
    const PdfDocument whole = DrawnPdf([](const PictureFile&) {});
    EXPECT_DOUBLE_EQ(whole.PageWidth, 288.0); // 4 inches
    EXPECT_DOUBLE_EQ(whole.PageHeight, 216.0);
    const PdfDocument part = DrawnPdf([](const PictureFile& picture) {
        picture.SetWindow({100, 100, 399, 250});
    });
    EXPECT_DOUBLE_EQ(part.PageWidth, 72.0);
    EXPECT_DOUBLE_EQ(part.PageHeight, 37.0); // 36.24 points: nothing is cut off
}

TEST(PdfPicture, TextIsTextWithItsFontsInIt) {
    const PdfDocument document = DrawnPdf([](const PictureFile& picture) {
        const DrawingSurface& s = picture.Surface;
        s.SetFont({"Arial", 40, false, 0});
        s.Text(100, 100, "Absorbance (280 nm)");
        s.SetFont({"Arial", 40, false, 90});
        s.Text(100, 800, "upward 0.05");
        s.SetFont({"Times New Roman", 40, true, 0});
        s.Text(300, 300, "fit flat");
    });
    const std::string text = TextOf(document);
    EXPECT_NE(text.find("Absorbance (280 nm)\n"), std::string::npos) << text;
    EXPECT_NE(text.find("upward 0.05\n"), std::string::npos) << text;
    EXPECT_NE(text.find("fit flat\n"), std::string::npos) << text;
    EXPECT_TRUE(document.Holds("/Type /Font\n/Subtype /Type0"));
    EXPECT_TRUE(document.Holds("/FontFile2")); // the letters' shapes
    EXPECT_TRUE(document.Holds("/Title (\xFE\xFF" + std::string("\0Q\0u\0i\0l\0l\0o\0n", 14) + ")"));
}

TEST(PdfPicture, PagesAreAllOfOneSizeAndKeepTheirText) {
    const PdfDocument document = DrawnPdf([](const PictureFile& picture) {
        picture.Surface.SetFont({"Courier New", 40, false, 0});
        picture.Surface.Text(100, 100, "first  page");
        picture.NewPage();
        picture.Surface.Text(100, 100, "  second"); // in the font that stands
    });
    EXPECT_EQ(document.Pages, 2);
    EXPECT_DOUBLE_EQ(document.PageWidth, 288.0);
    EXPECT_EQ(TextOf(document), "first  page\n  second\n");
}

TEST(PdfPicture, AFileWithoutTextHasNoFonts) {
    const PdfDocument document =
        DrawnPdf([](const PictureFile& picture) { picture.Surface.Line(0, 0, 100, 100); });
    EXPECT_FALSE(document.Holds("/Type /Font"));
    EXPECT_EQ(TextOf(document), "");
}

TEST(PdfPicture, TwoPicturesAtATimeDoNotMix) {
    const PictureFile one = OpenPdf(Request()), other = OpenPdf(Request());
    one.Surface.SetFont({"Arial", 40, false, 0});
    other.Surface.SetFont({"Arial", 40, false, 0});
    one.Surface.Text(100, 100, "first");
    other.Surface.Text(100, 100, "second");
    EXPECT_EQ(TextOf(ReadPdf(other.Finish())), "second\n");
    EXPECT_EQ(TextOf(ReadPdf(one.Finish())), "first\n");
}

} // namespace Quillon
