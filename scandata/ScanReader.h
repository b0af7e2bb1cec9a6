#pragma once
// Reading radial scans: absorbance, interference and Reedit files share one text layout of two header lines
// and a line for each point.

#include <string>
#include <string_view>

namespace Quillon {

// What a read of a scan hands back beside the row of the data set table that it fills.
struct ScanReadResult {
    std::string Comment; // line 1 as it stands in the file
    float FirstRadius{}; // cm
    float LastRadius{};
    float Rpm{};
    float Temperature{}; // degrees Celsius
    bool Ok = false;
};

// Reads the scan at path into a row (1..MaxSets) of the table. Failure is told to the user in a message and
// leaves Ok false; the row's arrays may then be partly overwritten. Uses Work.ChosenPath and ChosenName for
// ScanDirectory. Runs the wavelength comparison of the extinction ratios at the end.
ScanReadResult ReadScan(const std::string& path, long row);

// Reads the baseline scan of a row. Failure is told to the user; false then.
bool ReadBaseline(const std::string& path, long row);

// The tokeniser of point lines. Finds the nearest of the separator characters in text at or behind position
// (from 1; taken as 1 when below); gives the text before it and leaves position one past it. Without one:
// the rest of text, and position 0. A position of 0 that comes in together with rest is the caller's sign
// that a line has run out.
std::string NextToken(long& position, std::string_view text, std::string_view separators);

// Settles the type of data by the file name: characters 3 and 2 from its end in capitals, "IP", "RA", "FI";
// any other name leaves the type as the reader set it.
void SettleDataType(const std::string& fileName);

// The comparison of wavelengths after a read into a row: ratios go to 1 where the wavelength is that of
// row 1, otherwise the form "ExtinctionForm" is shown for the row. oldWavelength is what row 1 held before.
void CompareWavelengths(long row, int oldWavelength);

} // namespace Quillon
