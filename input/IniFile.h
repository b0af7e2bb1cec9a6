#pragma once
// Profile files: sections of "key=value" lines, as the program keeps its settings in them.
//
//     [Section]
//     ; a comment
//     Key=value
//
// Names of sections and keys are found without regard to the case of ASCII letters and without the blanks
// around them. A value is everything behind the first "=" less the blanks at both ends, and less one pair of
// quotes around it. Lines that start with ";" or "#" are comments; a line without "=" means nothing. Where a
// name stands twice, the first one with the key counts. Lines end with LF or CR LF, in any mixture.
//
// A write changes one line. Everything else stays byte for byte: comments, blank lines, order, unknown keys
// and sections, the spelling of names, the line ends.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// The value of a key in a file's bytes; missing, when there is no such section or no such key.
std::string IniValue(const std::string& bytes, std::string_view section, std::string_view key,
                     const std::string& missing = "");

// The bytes with the key's value replaced. A key that is not there goes behind the last key of its section,
// a section that is not there to the end. A value that would lose blanks or quotes at its ends when read is
// put in quotes, and line breaks in it become blanks, so that a write never makes a second line.
std::string WithIniValue(const std::string& bytes, std::string_view section, std::string_view key,
                         std::string_view value);

// No file of settings is larger, in bytes: what is, is something else, and would be searched for each key.
inline constexpr std::size_t LargestIni = std::size_t{4} << 20U;

// The bytes of a file, "" if there is certainly none. A file that cannot be read or is larger than LargestIni
// is a RuntimeError; it is never taken for an empty one, which the next write would make of it.
std::string ReadIniFile(const std::string& path);

// Replaces one value in a file, which is made if there is none. Failure is a RuntimeError, and the file is
// then as before.
void WriteIniValue(const std::string& path, std::string_view section, std::string_view key,
                   std::string_view value);

// Replaces several values of a section at one time: all of them or none.
struct IniSetting {
    std::string Key, Value;
};
void WriteIniValues(const std::string& path, std::string_view section,
                    const std::vector<IniSetting>& settings);

} // namespace Quillon
