// Widths of the base fonts, against the published tables, and the letters of the Symbol family.
#include "chart/pens/BaseFonts.h"
#include "chart/pens/SymbolText.h"

#include <gtest/gtest.h>

namespace Quillon {

namespace {

int Thousandths(const char* face, bool bold, char code) {
    return MeasureBaseText(BaseFontFor(face, bold), 1000, 1, std::string(1, code)).Width;
}

char Code(int value) {
    return static_cast<char>(value);
}

} // namespace

TEST(BaseFonts, WidthsAreThoseOfTheFamilies) {
    EXPECT_EQ(Thousandths("Arial", false, ' '), 278);
    EXPECT_EQ(Thousandths("Arial", false, '0'), 556);
    EXPECT_EQ(Thousandths("Arial", false, '@'), 1015);
    EXPECT_EQ(Thousandths("Arial", false, 'A'), 667);
    EXPECT_EQ(Thousandths("Arial", false, '~'), 584);
    EXPECT_EQ(Thousandths("Arial", false, Code(0xDF)), 611); // sharp s
    EXPECT_EQ(Thousandths("Arial", false, Code(0xFF)), 500); // y with dieresis
    EXPECT_EQ(Thousandths("Arial", true, 'A'), 722);
    EXPECT_EQ(Thousandths("Arial", true, '@'), 975);
    EXPECT_EQ(Thousandths("Times New Roman", false, 'A'), 722);
    EXPECT_EQ(Thousandths("Times New Roman", false, '0'), 500);
    EXPECT_EQ(Thousandths("Times New Roman", false, '@'), 921);
    EXPECT_EQ(Thousandths("Times New Roman", false, Code(0xB0)), 400); // degree
    EXPECT_EQ(Thousandths("Times New Roman", true, 'W'), 1000);
    EXPECT_EQ(Thousandths("Times New Roman", true, '@'), 930);
    EXPECT_EQ(Thousandths("Symbol", false, 'a'), 631);
    EXPECT_EQ(Thousandths("Symbol", false, 'W'), 768);
    for (int code = 0; code < 256; ++code)
        EXPECT_EQ(Thousandths("Courier New", code % 2 == 0, Code(code)), 600);
}

TEST(BaseFonts, AControlCodeIsAsWideAsABlank) {
    for (const int code : {0x00, 0x09, 0x1F, 0x7F, 0x80, 0x9F}) {
        EXPECT_EQ(Thousandths("Arial", false, Code(code)), 278) << code;
        EXPECT_EQ(Thousandths("Times New Roman", false, Code(code)), 250) << code;
    }
}

TEST(BaseFonts, FacesFallIntoFourClasses) {
    EXPECT_EQ(ClassOfFace("Arial"), FontClass::Sans);
    EXPECT_EQ(ClassOfFace("Modern"), FontClass::Sans);
    EXPECT_EQ(ClassOfFace("MS Sans Serif"), FontClass::Sans);
    EXPECT_EQ(ClassOfFace(""), FontClass::Sans);
    EXPECT_EQ(ClassOfFace("Roman"), FontClass::Serif);
    EXPECT_EQ(ClassOfFace("TIMES NEW ROMAN"), FontClass::Serif);
    EXPECT_EQ(ClassOfFace("Courier New"), FontClass::Mono);
    EXPECT_EQ(ClassOfFace("DejaVu Sans Mono"), FontClass::Mono);
    EXPECT_EQ(ClassOfFace("Symbol"), FontClass::Symbol);
    EXPECT_STREQ(BaseFontFor("Roman", false).Face, "Times New Roman");
    EXPECT_STREQ(BaseFontFor("Helvetica", true).Face, "Arial");
    EXPECT_TRUE(BaseFontFor("Helvetica", true).Bold);
    EXPECT_FALSE(BaseFontFor("Symbol", true).Bold);
}

TEST(BaseFonts, TheEmMakesTheLettersAsHighAsAskedFor) {
    const BaseFont& sans = BaseFontFor("Arial", false);
    EXPECT_EQ(EmOfHeight(sans, 1117), 1000); // ascent 0.905 and descent 0.212 of the em
    EXPECT_EQ(EmOfHeight(sans, 20), 18);
    EXPECT_EQ(EmOfHeight(sans, 0), 1);
    const TextSize size = MeasureBaseText(sans, 1000, 1117, "A0");
    EXPECT_EQ(size.Width, 667 + 556);
    EXPECT_EQ(size.Height, 1117);
    EXPECT_EQ(size.Descent, 212);
}

TEST(SymbolText, CodesAreGreekAndSigns) {
    const auto symbol = [](int code) { return static_cast<unsigned>(UnicodeOf(Code(code), true)); };
    EXPECT_EQ(symbol('a'), 0x03B1U); // alpha
    EXPECT_EQ(symbol('m'), 0x03BCU); // mu
    EXPECT_EQ(symbol('s'), 0x03C3U); // sigma
    EXPECT_EQ(symbol('w'), 0x03C9U); // omega
    EXPECT_EQ(symbol('D'), 0x0394U); // Delta
    EXPECT_EQ(symbol('W'), 0x03A9U); // Omega
    EXPECT_EQ(symbol('7'), 0x0037U);
    EXPECT_EQ(symbol('-'), 0x2212U);  // minus
    EXPECT_EQ(symbol(0xA3), 0x2264U); // less or equal
    EXPECT_EQ(symbol(0xB1), 0x00B1U); // plus or minus
    EXPECT_EQ(symbol(0xD6), 0x221AU); // square root
    EXPECT_EQ(symbol(0xE5), 0x2211U); // sum
    EXPECT_EQ(symbol(0xF2), 0x222BU); // integral
    EXPECT_EQ(symbol('\t'), 0x0020U);
}

TEST(SymbolText, OtherFamiliesAreLatin1) {
    for (int code = 0; code < 256; ++code) {
        const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
        EXPECT_EQ(static_cast<unsigned>(UnicodeOf(Code(code), false)),
                  control ? 0x20U : static_cast<unsigned>(code));
    }
}

} // namespace Quillon
