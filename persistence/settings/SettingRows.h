#pragma once
// The settings of the ini file as a table: what each is called, what it may be, and what it is without a word
// in the file. Reading at the start (persistence/settings/ReadDefaults.h) goes by the same values.

#include <string>
#include <vector>

namespace Quillon {

enum class SettingKind { Number, Whole, Flag, Choice };

struct SettingRow {
    const char* Group = "";   // what stands together
    const char* Section = ""; // of the ini file
    std::string Key;
    const char* Caption = "";
    SettingKind Kind = SettingKind::Number;
    std::string Standard;         // without the key in the file
    double Low = 0.0, High = 0.0; // of numbers: High is included, and Low where it is not 0
    struct Choice {
        const char *Value, *Caption; // in the file, on the form
    };
    std::vector<Choice> Choices = {};
    void (*Apply)(double value) = nullptr; // what is for the program and not for an analysis holds at once
};

// In the order of the form, those of a group together.
const std::vector<SettingRow>& SettingRows();

} // namespace Quillon
