#pragma once
// The values of a job file: text to number, choice or name, strictly. Shared by the parser's own files.

#include "batch/job/JobFile.h"
#include "platform/Letters.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// Where the parser stands, for its messages.
struct JobReader {
    Job Result;
    const JobRow* Row = nullptr; // whose cells fill the values; none
    std::string Section;         // in small letters; "" before the first one
    std::string Key;             // of the line being read
    int Line{};

    // Raises the error of the present line.
    [[noreturn]] void Fail(const std::string& reason) const;
};

// The one line of an error; line 0 and an empty section or key are left out.
std::string JobErrorLine(const std::string& path, int line, std::string_view section, std::string_view key,
                         const std::string& reason);

std::string_view NextWord(std::string_view& rest); // takes a word off the front; "" when none is left

// A number that a single holds, written with a point, and nothing behind it.
float ReadNumber(const JobReader& reader, std::string_view text);
double ReadDouble(const JobReader& reader, std::string_view text); // the same before it is rounded
float ReadPositive(const JobReader& reader, std::string_view text);
float ReadNotNegative(const JobReader& reader, std::string_view text);
int ReadWhole(const JobReader& reader, std::string_view text, int lowest, int highest);
bool ReadYesNo(const JobReader& reader, std::string_view text);

// The place (from 0) of text among the choices, in any case.
int ReadChoice(const JobReader& reader, std::string_view text, std::initializer_list<const char*> choices);

} // namespace Quillon
