#include "input/NumericEntry.h"

#include "input/NumericPrefix.h"
#include "platform/Letters.h"
#include "platform/Platform.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace Quillon {
namespace {

constexpr bool IsSign(int c) {
    return c == '-' || c == '+';
}
constexpr bool IsExponentLetter(int c) {
    return c == 'E' || c == 'e' || c == 'D' || c == 'd';
}

constexpr bool PassesEveryField(int key) {
    return key == KeyBackspace || key == KeyTab || key == KeyReturn || key == KeyEscape;
}

void SetText(Control& field, const std::string& text) {
    field.Text = text;
    field.SelStart = ToInt32(text.size());
    field.SelLength = 0;
}

// A first key replaces the selected text as a whole, before any rule looks at what stands in the field.
void TakeFirstKey(Control& field, int key) {
    const bool wholeSelected = field.SelLength == static_cast<std::int64_t>(field.Text.size());
    if (FreshField == FlagFalse && wholeSelected && !PassesEveryField(key)) SetText(field, "");
    FreshField = FlagTrue;
}

// A first key that the rules refuse replaces nothing: the number stays, and the next key is a first one
// still.
template <class Rules> int UnlessRefused(Control& field, int key, Rules&& rules) {
    const Control before = field;
    const std::int16_t fresh = FreshField;
    TakeFirstKey(field, key);
    if (PassesEveryField(key)) return key;
    const int taken = rules();
    if (taken == 0) {
        field = before;
        FreshField = fresh;
    }
    return taken;
}

// A numeric text with the place where the next character goes.
struct Entry {
    std::string_view Text;
    std::size_t Insertion = 0; // characters before it
    std::size_t Exponent = 0;  // place of the exponent letter, from one; 0 for none
};

Entry EntryOf(const Control& field) {
    Entry entry;
    entry.Text = field.Text;
    const std::int32_t place = field.SelLength > 0 ? field.SelLength : field.SelStart;
    entry.Insertion = std::min(static_cast<std::size_t>(std::max(0, place)), field.Text.size());
    const std::size_t letter = entry.Text.find_first_of("EeDd");
    entry.Exponent = letter == std::string_view::npos ? 0 : letter + 1;
    return entry;
}

bool StartsWithSign(const Entry& entry) {
    return !entry.Text.empty() && IsSign(entry.Text[0]);
}

int DigitKey(const Entry& entry, int key) {
    if (!StartsWithSign(entry) || entry.Insertion > 0) return key;
    Host.Beep(); // no digit may stand before a sign
    return 0;
}

int SignKey(const Entry& entry, int key) {
    if (entry.Insertion == 0) return StartsWithSign(entry) ? 0 : key;
    const bool behindLetter = entry.Insertion == entry.Exponent;
    const bool signFollows = entry.Insertion < entry.Text.size() && IsSign(entry.Text[entry.Insertion]);
    return behindLetter && !signFollows ? key : 0;
}

int ExponentKey(Control& field, const Entry& entry, int key) {
    if (entry.Exponent > 0 || entry.Insertion < entry.Text.size()) return 0;
    if (entry.Text.empty()) SetText(field, "1.0"); // the exponent needs a mantissa
    return key == 'e' || key == 'E' ? 'E' : 'D';
}

int MarkKey(Control& field, const Entry& entry, int key) {
    const bool hasMark = entry.Text.find('.') != std::string_view::npos ||
                         entry.Text.find(static_cast<char>(key)) != std::string_view::npos;
    const bool inExponent = entry.Exponent > 0 && entry.Insertion >= entry.Exponent;
    if (hasMark || inExponent) return 0;
    const bool onlySign = entry.Text.size() == 1 && StartsWithSign(entry) && entry.Insertion == 1;
    if (entry.Text.empty() || onlySign) SetText(field, field.Text + "0");
    return key;
}

// The text with a point where the system's mark is a comma and stands alone.
std::string WithPoint(std::string_view text) {
    std::string plain(text);
    const std::size_t comma = plain.find(',');
    if (DecimalMark() == ',' && comma != std::string::npos && plain.find('.') == std::string::npos)
        plain[comma] = '.';
    return plain;
}

// The value of a text that is a number as a whole. One beyond the range of a double is infinite.
std::optional<double> WholeNumber(std::string_view text) {
    text = Trimmed(text, " ");
    if (text.empty()) return std::nullopt;
    const std::string plain = WithPoint(text);
    std::size_t used = 0;
    double value = 0.0;
    try {
        value = NumericPrefix(plain, &used);
    } catch (const RuntimeError&) {
        value = plain[0] == '-' ? -std::numeric_limits<double>::infinity()
                                : std::numeric_limits<double>::infinity();
    }
    if (used != plain.size()) return std::nullopt;
    return value;
}

} // namespace

std::int16_t DecimalMark() {
    return Host.DecimalMark() == ',' ? std::int16_t{','} : std::int16_t{'.'};
}

void NumGotFocus(Control& field) {
    field.ForeColor = EditBackColor;
    field.SelStart = 0;
    field.SelLength = ToInt32(field.Text.size());
    FreshField = FlagFalse;
}

void NumLostFocus(Control& field) {
    field.ForeColor = DefaultColor;
    field.SelLength = 0;
    FreshField = FlagFalse;
}

int NumKeyPress(Control& field, int key) {
    return UnlessRefused(field, key, [&] {
        const Entry entry = EntryOf(field);
        if (key >= '0' && key <= '9') return DigitKey(entry, key);
        if (IsSign(key)) return SignKey(entry, key);
        if (IsExponentLetter(key)) return ExponentKey(field, entry, key);
        if (key == DecimalMark()) return MarkKey(field, entry, key);
        return 0;
    });
}

int IntKeyPress(Control& field, int key) {
    return UnlessRefused(field, key, [&] { return key >= '0' && key <= '9' ? key : 0; });
}

int TextKeyPress(Control& field, int key, long maxLength, const std::string& programName) {
    if (PassesEveryField(key)) return key;
    if (static_cast<long>(field.Text.size()) - field.SelLength < maxLength) return key;
    Host.Beep();
    Tell("Text area is full", programName, BoxIcon::Plain);
    return 0;
}

float NumValue(std::string_view text) {
    constexpr double Largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(WholeNumber(text).value_or(0.0), -Largest, Largest));
}

bool IsNumeric(std::string_view text) {
    return WholeNumber(text).has_value();
}

std::string StripSeparators(std::string_view text) {
    std::string bare;
    for (const char c : text)
        if (c != ',' && c != ' ' && c != '%') bare += c;
    return bare;
}

} // namespace Quillon
