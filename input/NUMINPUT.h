#pragma once
// Numbers as text and back: the rules of numeric entry that all forms share, the number pictures that all
// displays use, and the reading of numbers from files. Every number that a user types or sees passes here, so
// that a field refuses the same keys and a value looks the same wherever it stands.
//
//     Numeric entry   NumGotFocus, NumKeyPress, NumLostFocus, IntKeyPress, TextKeyPress work on a text box
//                     (a Control) and answer for each key what becomes of it; NumValue reads what stands.
//     Number pictures FormatNumber(value, "#.######E+##"); SingleText and DoubleText without a picture.
//     Files           NumericPrefix: the longest part of a text that is a number.
//
// The decimal mark is "." in files and in everything that is written here. Only numeric entry asks for the
// system's mark: the key of the other one is refused, and a text with either is understood.

#include "input/FormatNumber.h"
#include "input/NumericEntry.h"
#include "input/NumericPrefix.h"
#include "input/SingleText.h"
#include "platform/Controls.h"
#include "platform/Narrow.h"
