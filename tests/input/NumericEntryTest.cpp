// The rules of numeric entry, key by key. A text box is played by TypeInto, which puts a taken key where a
// window would.
#include "input/NUMINPUT.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>

namespace Quillon {
namespace {

using KeyRule = std::function<int(Control&, int)>;

// What a text box does with a key that it was given.
void PutIn(Control& field, int key) {
    const auto start = static_cast<std::size_t>(field.SelStart);
    if (key == KeyBackspace) {
        if (field.SelLength > 0)
            field.Text.erase(start, static_cast<std::size_t>(field.SelLength));
        else if (start > 0)
            field.Text.erase(static_cast<std::size_t>(--field.SelStart), 1);
    } else if (key >= ' ') {
        field.Text.replace(start, static_cast<std::size_t>(field.SelLength), 1, static_cast<char>(key));
        ++field.SelStart;
    }
    field.SelLength = 0;
}

void TypeInto(Control& field, const std::string& keys, const KeyRule& rule = NumKeyPress) {
    for (const char key : keys) {
        const int taken = rule(field, static_cast<unsigned char>(key));
        if (taken != 0) PutIn(field, taken);
    }
}

// A field that is being edited: the first key has been taken, the insertion point stands behind `before`.
Control Editing(const std::string& before, const std::string& after = "") {
    Control field;
    field.Text = before + after;
    field.SelStart = static_cast<std::int32_t>(before.size());
    FreshField = FlagTrue;
    return field;
}

int Press(Control field, int key) {
    return NumKeyPress(field, key);
}

Control Fresh(const std::string& text) {
    Control field;
    field.Text = text;
    NumGotFocus(field);
    return field;
}

// --- focus ---------------------------------------------------------------------------------------------

TEST(NumericEntry, TheFocusSelectsAndMarksTheText) {
    Control field;
    field.Text = "1.000";
    field.SelStart = 3;
    FreshField = FlagTrue;
    NumGotFocus(field);
    EXPECT_EQ(field.ForeColor, 0x00C00000U);
    EXPECT_EQ(field.SelStart, 0);
    EXPECT_EQ(field.SelLength, 5);
    EXPECT_EQ(FreshField, 0);
    EXPECT_EQ(field.Text, "1.000");
}

TEST(NumericEntry, TheMarkIsTheColourInForce) {
    const std::uint32_t former = EditBackColor;
    EditBackColor = RedColor;
    Control field;
    NumGotFocus(field);
    EXPECT_EQ(field.ForeColor, RedColor);
    EditBackColor = former;
}

TEST(NumericEntry, LeavingTakesTheMarkAway) {
    Control field = Fresh("1.000");
    FreshField = FlagTrue;
    NumLostFocus(field);
    EXPECT_EQ(field.ForeColor, DefaultColor);
    EXPECT_EQ(field.SelLength, 0);
    EXPECT_EQ(FreshField, 0);
    EXPECT_EQ(field.Text, "1.000");
}

// --- the first key ---------------------------------------------------------------------------------------

TEST(NumericEntry, TheFirstKeyReplacesTheText) {
    Script script;
    Control field = Fresh("1.000");
    EXPECT_EQ(NumKeyPress(field, '5'), '5');
    EXPECT_EQ(field.Text, "");
    EXPECT_EQ(field.SelStart, 0);
    EXPECT_EQ(field.SelLength, 0);
    EXPECT_EQ(FreshField, -1);
    PutIn(field, '5');
    TypeInto(field, "2");
    EXPECT_EQ(field.Text, "52");
}

TEST(NumericEntry, TheFirstKeyCanBeASignOrAMark) {
    Script script;
    Control field = Fresh("-1.000");
    TypeInto(field, "-.5");
    EXPECT_EQ(field.Text, "-0.5");
    field = Fresh("2.5");
    TypeInto(field, ".5");
    EXPECT_EQ(field.Text, "0.5");
}

// A letter typed over a selected number was refused, but the number was gone.
TEST(NumericEntry, ARefusedFirstKeyLeavesTheNumberSelected) {
    Script script;
    for (auto* const press : {NumKeyPress, IntKeyPress}) {
        Control field = Fresh("125");
        for (const int key : {'x', ' ', '('}) {
            EXPECT_EQ(press(field, key), 0);
            EXPECT_EQ(field.Text, "125");
            EXPECT_EQ(field.SelLength, 3);
            EXPECT_EQ(FreshField, 0);
        }
        TypeInto(field, "7", press);
        EXPECT_EQ(field.Text, "7"); // the first key that is taken replaces it
    }
}

TEST(NumericEntry, ControlKeysLeaveTheTextStanding) {
    Script script;
    for (const int key : {KeyBackspace, KeyTab, KeyReturn, KeyEscape}) {
        Control field = Fresh("1.000");
        EXPECT_EQ(NumKeyPress(field, key), key);
        EXPECT_EQ(field.Text, "1.000");
        EXPECT_EQ(field.SelLength, 5);
        EXPECT_EQ(FreshField, -1); // it was a first key all the same
    }
}

TEST(NumericEntry, WithoutTheWholeTextSelectedTheFirstKeyEdits) {
    Script script;
    Control field = Fresh("1.000");
    field.SelStart = 5; // a click into the text
    field.SelLength = 0;
    TypeInto(field, "7");
    EXPECT_EQ(field.Text, "1.0007");
    field = Fresh("1.000");
    field.SelLength = 4;
    EXPECT_EQ(NumKeyPress(field, '7'), '7');
    EXPECT_EQ(field.Text, "1.000");
}

TEST(NumericEntry, ASecondKeyNeverReplacesTheWholeText) {
    Script script;
    Control field = Fresh("1.000");
    TypeInto(field, "4");
    field.SelStart = 0;
    field.SelLength = 1;
    EXPECT_EQ(NumKeyPress(field, '5'), '5');
    EXPECT_EQ(field.Text, "4"); // the text box replaces its selection itself
}

// --- digits ----------------------------------------------------------------------------------------------

TEST(NumericEntry, DigitsPass) {
    Script script;
    for (int key = '0'; key <= '9'; ++key) {
        EXPECT_EQ(Press(Editing(""), key), key);
        EXPECT_EQ(Press(Editing("12"), key), key);
        EXPECT_EQ(Press(Editing("", "12"), key), key);
        EXPECT_EQ(Press(Editing("-", "12"), key), key);
        EXPECT_EQ(Press(Editing("1.5E"), key), key);
        EXPECT_EQ(Press(Editing("1.5E", "-3"), key), key);
    }
    EXPECT_EQ(script.Beeps, 0);
}

TEST(NumericEntry, ADigitBeforeASignIsRefusedWithABeep) {
    Script script;
    for (int key = '0'; key <= '9'; ++key) {
        EXPECT_EQ(Press(Editing("", "-5"), key), 0);
        EXPECT_EQ(Press(Editing("", "+5"), key), 0);
    }
    EXPECT_EQ(script.Beeps, 20);
}

TEST(NumericEntry, ASelectedSignMayBeTypedOver) {
    Script script;
    Control field = Editing("", "-5");
    field.SelLength = 1;
    TypeInto(field, "3");
    EXPECT_EQ(field.Text, "35");
    EXPECT_EQ(script.Beeps, 0);
}

// --- control keys ------------------------------------------------------------------------------------------

TEST(NumericEntry, ControlKeysAlwaysPass) {
    Script script;
    for (const int key : {8, 9, 13, 27})
        for (const char* text : {"", "-", "1.5", "1E+5"}) {
            EXPECT_EQ(Press(Editing(text), key), key);
            EXPECT_EQ(Press(Editing("", text), key), key);
        }
}

// --- signs -------------------------------------------------------------------------------------------------

TEST(NumericEntry, SignsStandInFrontOnce) {
    Script script;
    for (const int sign : {'-', '+'}) {
        EXPECT_EQ(Press(Editing(""), sign), sign);
        EXPECT_EQ(Press(Editing("", "12"), sign), sign);
        EXPECT_EQ(Press(Editing("", "-12"), sign), 0);
        EXPECT_EQ(Press(Editing("", "+12"), sign), 0);
        EXPECT_EQ(Press(Editing("12"), sign), 0);
        EXPECT_EQ(Press(Editing("1", "2"), sign), 0);
        EXPECT_EQ(Press(Editing("-"), sign), 0);
    }
    EXPECT_EQ(script.Beeps, 0); // refused in silence
}

TEST(NumericEntry, SignsStandBehindTheExponentLetterOnce) {
    Script script;
    for (const int sign : {'-', '+'})
        for (const std::string letter : {"E", "D", "e", "d"}) {
            EXPECT_EQ(Press(Editing("1.0" + letter), sign), sign);
            EXPECT_EQ(Press(Editing("1.0" + letter, "5"), sign), sign);
            EXPECT_EQ(Press(Editing("1.0" + letter, "-5"), sign), 0);
            EXPECT_EQ(Press(Editing("1.0" + letter, "+5"), sign), 0);
            EXPECT_EQ(Press(Editing("1.0" + letter + "-"), sign), 0);
            EXPECT_EQ(Press(Editing("1.0" + letter + "5"), sign), 0);
            EXPECT_EQ(Press(Editing("1.0", letter + "5"), sign), 0);
            EXPECT_EQ(Press(Editing("", "1.0" + letter + "5"), sign), sign);
        }
}

TEST(NumericEntry, AMinusBehindTheExponentLetterIsTakenAndASecondIsNot) {
    Script script;
    Control field = Editing("");
    TypeInto(field, "2.5e--3-");
    EXPECT_EQ(field.Text, "2.5E-3");
}

// --- the exponent letter -----------------------------------------------------------------------------------

TEST(NumericEntry, ExponentLettersAreStoredAsCapitals) {
    Script script;
    EXPECT_EQ(Press(Editing("1.5"), 'e'), 'E');
    EXPECT_EQ(Press(Editing("1.5"), 'E'), 'E');
    EXPECT_EQ(Press(Editing("1.5"), 'd'), 'D');
    EXPECT_EQ(Press(Editing("1.5"), 'D'), 'D');
}

TEST(NumericEntry, ThereIsOneExponentLetterAndItStandsAtTheEnd) {
    Script script;
    for (const int key : {'e', 'E', 'd', 'D'}) {
        EXPECT_EQ(Press(Editing("1.5E"), key), 0);
        EXPECT_EQ(Press(Editing("1.5D3"), key), 0);
        EXPECT_EQ(Press(Editing("1.5e3"), key), 0); // a text that came in with a small letter
        EXPECT_EQ(Press(Editing("1", ".5"), key), 0);
        EXPECT_EQ(Press(Editing("", "5"), key), 0);
    }
}

TEST(NumericEntry, AnExponentLetterInAnEmptyFieldGetsAMantissa) {
    Script script;
    for (const int key : {'e', 'd'}) {
        Control field = Editing("");
        const int taken = NumKeyPress(field, key);
        EXPECT_EQ(taken, key - 'a' + 'A');
        EXPECT_EQ(field.Text, "1.0");
        EXPECT_EQ(field.SelStart, 3);
        EXPECT_EQ(field.SelLength, 0);
    }
    Control field = Fresh("7.5");
    TypeInto(field, "e-3");
    EXPECT_EQ(field.Text, "1.0E-3");
}

// --- the decimal mark --------------------------------------------------------------------------------------

TEST(NumericEntry, TheMarkIsTakenOnceAndBeforeTheExponent) {
    Script script;
    EXPECT_EQ(Press(Editing("1"), '.'), '.');
    EXPECT_EQ(Press(Editing("1", "5"), '.'), '.');
    EXPECT_EQ(Press(Editing("", "15"), '.'), '.');
    EXPECT_EQ(Press(Editing("1.5"), '.'), 0);
    EXPECT_EQ(Press(Editing("", "1.5"), '.'), 0);
    EXPECT_EQ(Press(Editing("15E"), '.'), 0);
    EXPECT_EQ(Press(Editing("15E3"), '.'), 0);
    EXPECT_EQ(Press(Editing("15E", "3"), '.'), 0);
    EXPECT_EQ(Press(Editing("15", "E3"), '.'), '.');
    EXPECT_EQ(Press(Editing("1", "5E3"), '.'), '.');
    EXPECT_EQ(Press(Editing("1"), ','), 0);
}

TEST(NumericEntry, AMarkWithoutADigitBeforeItGetsAZero) {
    Script script;
    Control field = Editing("");
    EXPECT_EQ(NumKeyPress(field, '.'), '.');
    EXPECT_EQ(field.Text, "0");
    EXPECT_EQ(field.SelStart, 1);
    for (const std::string sign : {"-", "+"}) {
        field = Editing(sign);
        EXPECT_EQ(NumKeyPress(field, '.'), '.');
        EXPECT_EQ(field.Text, sign + "0");
        EXPECT_EQ(field.SelStart, 2);
        field = Editing("", sign); // before the sign nothing is put in
        EXPECT_EQ(NumKeyPress(field, '.'), '.');
        EXPECT_EQ(field.Text, sign);
        EXPECT_EQ(field.SelStart, 0);
    }
}

TEST(NumericEntry, OnACommaSystemTheCommaIsTheMark) {
    Script script;
    script.Mark = ',';
    EXPECT_EQ(DecimalMark(), ',');
    EXPECT_EQ(Press(Editing("1"), ','), ',');
    EXPECT_EQ(Press(Editing("1"), '.'), 0);
    EXPECT_EQ(Press(Editing("1.5"), ','), 0);
    EXPECT_EQ(Press(Editing("1,5"), ','), 0);
    EXPECT_EQ(Press(Editing("15E"), ','), 0);
    Control field = Fresh("1.000");
    TypeInto(field, "-,5.,2e-3,");
    EXPECT_EQ(field.Text, "-0,52E-3");
    EXPECT_EQ(NumValue(field.Text), -0.52e-3F);
}

TEST(NumericEntry, AnUnknownMarkCountsAsAPoint) {
    Script script;
    EXPECT_EQ(DecimalMark(), '.');
    script.Mark = '\'';
    EXPECT_EQ(DecimalMark(), '.');
}

// --- everything else ---------------------------------------------------------------------------------------

TEST(NumericEntry, AllOtherKeysAreRefusedInSilence) {
    Script script;
    const std::string passing = "0123456789+-.eEdD\b\t\r\x1B";
    for (int key = 1; key < 256; ++key) {
        if (passing.find(static_cast<char>(key)) != std::string::npos) continue;
        EXPECT_EQ(Press(Editing(""), key), 0) << key;
        EXPECT_EQ(Press(Editing("1.5"), key), 0) << key;
    }
    EXPECT_EQ(script.Beeps, 0);
}

// p is the number of selected characters when there are any, wherever the selection starts.
TEST(NumericEntry, ASelectionCountsByItsLength) {
    Script script;
    Control field = Editing("12", "34");
    field.SelLength = 2; // 34 is selected, the place counts as 2: not the end of the text
    EXPECT_EQ(NumKeyPress(field, 'E'), 0);
    field.SelStart = 0;
    field.SelLength = 4;
    EXPECT_EQ(NumKeyPress(field, 'E'), 'E');
}

// Whatever is typed at the end of an emptied field, the text stays the beginning of a number.
TEST(NumericEntry, RandomTypingStaysTheBeginningOfANumber) {
    std::mt19937 random(9);
    const std::string keys = "0123456789+-..,,eEdDx \b";
    for (const char mark : {'.', ','}) {
        Script script;
        script.Mark = mark;
        for (int i = 0; i < 2000; ++i) {
            Control field = Fresh("3.5");
            std::string typed;
            for (std::size_t n = random() % 15; n > 0; --n)
                typed += keys[random() % keys.size()];
            TypeInto(field, typed + "1"); // a digit completes what is open
            EXPECT_TRUE(IsNumeric(field.Text) || field.Text.find_first_of("ED") <= 1)
                << typed << " gave " << field.Text;
        }
    }
}

// --- whole numbers and free text ---------------------------------------------------------------------------

TEST(IntKeyPress, TakesDigitsAndControlKeysAlone) {
    Script script;
    for (int key = 1; key < 256; ++key) {
        Control field = Editing("12");
        const bool takes = (key >= '0' && key <= '9') || key == 8 || key == 9 || key == 13 || key == 27;
        EXPECT_EQ(IntKeyPress(field, key), takes ? key : 0) << key;
        EXPECT_EQ(field.Text, "12");
    }
    EXPECT_EQ(script.Beeps, 0);
}

TEST(IntKeyPress, ReplacesTheTextWithTheFirstKey) {
    Script script;
    Control field = Fresh("40");
    TypeInto(field, "12", IntKeyPress);
    EXPECT_EQ(field.Text, "12");
    EXPECT_EQ(FreshField, -1);
    field = Fresh("40");
    EXPECT_EQ(IntKeyPress(field, KeyTab), KeyTab);
    EXPECT_EQ(field.Text, "40");
}

TEST(TextKeyPress, RefusesWhatIsTooLong) {
    Script script;
    Control field = Editing("abc");
    EXPECT_EQ(TextKeyPress(field, 'd', 4, "Quillon"), 'd');
    script.ExpectMessage(
        BoxRequest{"Text area is full", "Quillon", BoxIcon::Plain, BoxButtons::Ok, BoxAnswer::Ok},
        BoxAnswer::Ok);
    EXPECT_EQ(TextKeyPress(field, 'd', 3, "Quillon"), 0);
    EXPECT_EQ(script.Beeps, 1);
    EXPECT_EQ(field.Text, "abc");
}

TEST(TextKeyPress, WhatIsSelectedDoesNotCount) {
    Script script;
    Control field = Editing("a", "bc");
    field.SelLength = 2;
    EXPECT_EQ(TextKeyPress(field, 'd', 3, "Quillon"), 'd');
    EXPECT_EQ(TextKeyPress(field, 'd', 2, "Quillon"), 'd');
    script.ExpectMessage("Text area is full");
    EXPECT_EQ(TextKeyPress(field, 'd', 1, "Quillon"), 0);
}

TEST(TextKeyPress, ControlKeysPassAFullField) {
    Script script;
    Control field = Editing("abc");
    for (const int key : {27, 13, 9, 8})
        EXPECT_EQ(TextKeyPress(field, key, 3, "Quillon"), key);
    EXPECT_EQ(script.Beeps, 0);
}

TEST(TextKeyPress, LeavesTheFirstKeyAlone) {
    Script script;
    Control field = Fresh("abc");
    EXPECT_EQ(TextKeyPress(field, 'x', 3, "Quillon"), 'x');
    EXPECT_EQ(field.Text, "abc");
    EXPECT_EQ(FreshField, 0);
}

// --- values ------------------------------------------------------------------------------------------------

TEST(NumValue, IsTheValueOfAWholeNumericText) {
    Script script;
    EXPECT_EQ(NumValue("42.5"), 42.5F);
    EXPECT_EQ(NumValue("  -0.1 "), -0.1F);
    EXPECT_EQ(NumValue("+5."), 5.0F);
    EXPECT_EQ(NumValue(".5"), 0.5F);
    EXPECT_EQ(NumValue("1.5D-3"), 0.0015F);
    EXPECT_EQ(NumValue("1E+38"), 1e38F);
}

TEST(NumValue, IsZeroWhereTheTextIsNoNumber) {
    Script script;
    for (const char* text :
         {"", "  ", "-", ".", "1E", "1E+", "abc", "5 kDa", "5%", "1 2", "1,5", "60,000", "1.2.3"})
        EXPECT_EQ(NumValue(text), 0.0F) << text;
}

TEST(NumValue, UnderstandsBothMarksOnACommaSystem) {
    Script script;
    script.Mark = ',';
    EXPECT_EQ(NumValue("1,5"), 1.5F);
    EXPECT_EQ(NumValue("1.5"), 1.5F); // as the displays write it
    EXPECT_EQ(NumValue("-0,25E+2"), -25.0F);
    EXPECT_EQ(NumValue("1.000,5"), 0.0F);
    EXPECT_EQ(NumValue("1,000,5"), 0.0F);
}

TEST(NumValue, NeverFailsBeyondTheRange) {
    Script script;
    constexpr float Largest = std::numeric_limits<float>::max();
    EXPECT_EQ(NumValue("1E39"), Largest);
    EXPECT_EQ(NumValue("-1E39"), -Largest);
    EXPECT_EQ(NumValue("1E999"), Largest);
    EXPECT_EQ(NumValue(" -1E999 "), -Largest);
    EXPECT_EQ(NumValue("1E-60"), 0.0F);
}

TEST(IsNumeric, AsksForTheWholeText) {
    Script script;
    for (const char* text : {"5", " 5 ", "-5.25", "+.5", "5.", "1e5", "1D-5", "0", "1E999"})
        EXPECT_TRUE(IsNumeric(text)) << text;
    for (const char* text : {"", " ", "5x", "x5", "5 5", "1E", "1E-", "--5", "1,5", "5%", ".", "E5"})
        EXPECT_FALSE(IsNumeric(text)) << text;
    script.Mark = ',';
    EXPECT_TRUE(IsNumeric("1,5"));
    EXPECT_TRUE(IsNumeric("1.5"));
    EXPECT_FALSE(IsNumeric("1,5,2"));
}

TEST(StripSeparators, RemovesCommasBlanksAndPercentSigns) {
    EXPECT_EQ(StripSeparators("60,000"), "60000");
    EXPECT_EQ(StripSeparators(" 68.3 %"), "68.3");
    EXPECT_EQ(StripSeparators("-1,234.5"), "-1234.5");
    EXPECT_EQ(StripSeparators(", %"), "");
    EXPECT_EQ(StripSeparators("abc"), "abc");
}

} // namespace
} // namespace Quillon
