#pragma once
// Reading radial scans: absorbance, interference and Reedit files share one text layout of two header lines
// and a line for each point.
//
//     line 1     comment, taken whole. In an interference file that starts with "CM/PIXEL:" (any case) the
//                comment is what stands behind the first comma and the character after it.
//     line 2     type letter, blank, cell number: three characters that are dropped unread, but that a letter
//                P marks interference data; then, parted by blanks: temperature (degrees Celsius), speed
//                (rpm), time (s), omega squared t, wavelength (nm), scans averaged. A comma ends the line.
//     then       radius (cm), value, and at will the point's standard deviation, parted by blanks, tabs or
//                commas. A negative third number excludes the point. A radius of 0 ends the list.
//
// The count of averaged scans is read no wider than the wavelength with the blank behind it. A terminating
// line with a negative third number costs the last true point, since the terminating line is always counted
// off. A comma between the numbers of a point makes two items of one number each, which is an error.
//
// A file is read in one go and parsed in memory.

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

// Reads the scan at path into a row (1..MaxSets) of the table: at most MaxPtsPerSet - 1 points. The range is
// the whole scan, the row's baseline shift and fit memory are cleared, Work.DataChosen is cleared, NewData
// set. Uses Work.ChosenPath and ChosenName for ScanDirectory, and the directory of path when the name does
// not stand in the chosen path. Runs the wavelength comparison of the extinction ratios at the end.
//
// Failure is told to the user in a message and leaves Ok false. Header values and points of the row may then
// be those of the new file in part; ScanPoints and FitRange stay as they were, and the arrays never get
// shorter than ScanPoints. A file without a single point is a failure.
ScanReadResult ReadScan(const std::string& path, long row);

// Reads the baseline scan of a row: speed and at most MaxPtsPerSet points. Failure is told to the user;
// false then, and BaselinePoints stays as it was.
bool ReadBaseline(const std::string& path, long row);

// The tokeniser of point lines. Finds the nearest of the separator characters in text at or behind position
// (from 1; taken as 1 when below); gives the text before it and leaves position one past it. Without one:
// the rest of text, and position 0. A position of 0 that comes in together with rest is the caller's sign
// that a line has run out.
std::string NextToken(long& position, std::string_view text, std::string_view separators);

// Settles the type of data by the file name: characters 3 and 2 from its end in capitals, "IP", "RA", "FI";
// any other name leaves the type as the reader set it.
void SettleDataType(const std::string& fileName);

// The comparison of wavelengths after a read into a row: ratios go to 1 where the wavelength is within 1 nm
// of that of row 1 and for interference data, otherwise the form "ExtinctionForm" is shown for the row, which
// Work.CurrentRow names (from 0, over both pages) for the time of the call. oldWavelength is what the row
// held before in whole nm; a read into row 1 that moved it by more than 1 nm compares all other rows.
void CompareWavelengths(long row, int oldWavelength);

// What the extinction form shows first: where both ratios of a row are exactly 1, those of the last other row
// whose wavelength (not 0) lies within 1 nm of the row's are taken over.
void AdoptKnownRatios(long row);

} // namespace Quillon
