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
//                commas. A negative third number excludes the point. A radius of 0 ends the list. In a scan
//                of intensities (scandata/reader/IntensityScan.h) radius and two intensities.
//
// The count of averaged scans is read no wider than the wavelength with the blank behind it. A terminating
// line with a negative third number costs the last true point, since the terminating line is always counted
// off. A comma between the numbers of a point makes two items of one number each, which is an error.
//
// A file is read in one go and parsed in memory.

#include "workspace/records/Counts.h"

#include <string>
#include <string_view>

namespace Quillon {

// Why a file is no scan.
struct ReadFailure {
    enum class Kinds { None, NoFile, Content, TooManyPoints };
    Kinds Kind = Kinds::None; // NoFile: it could not be opened
    bool Missing = false;     // there is no such file, which is told by itself first
    std::string Sentence;     // the message that it ends in
    std::string Reason;       // what was found: "line 7, '6.1': a radius without a value"; no full stop
};

// What a read of a scan hands back beside the row of the data set table that it fills.
struct ScanReadResult {
    std::string Comment; // line 1 as it stands in the file
    float FirstRadius{}; // cm
    float LastRadius{};
    float Rpm{};
    float Temperature{}; // degrees Celsius
    char TypeLetter = 0; // of the parameter line, a capital; 0 without one
    int Cell = 0;        // digit of the parameter line; 0 without one
    bool Ok = false;
    ReadFailure Failure; // of a read that is not Ok
    std::string Remark;  // on one that is: readings that are no number, lines behind the end of the list,
                         // which are not read; AdoptScan adds that the file is no longer what the row was
                         // read from before
};

// The message that a scan ends in whose content is none.
inline constexpr const char* ScanReadSentence = "Error during file read, possible invalid data in file";

// Whether the first numbers of the points have to be radii in cm, above 0 and at most 100: those of a
// wavelength scan are nanometres.
enum class Abscissa { Any, Radii };

// Whether a read compares the wavelength with that of row 1, which may ask for extinction ratios, or leaves
// the ratios of the table as they are: whoever reads knows them.
enum class Ratios { Compared, Left };

// Reads the scan at path into a row (1..MaxSets) of the table: at most MaxPtsPerSet - 1 points. The range is
// the whole scan, the row's baseline shift and fit memory are cleared, Work.DataChosen is cleared, NewData
// set. Uses Work.ChosenPath and ChosenName for ScanDirectory, and the directory of path when the name does
// not stand in the chosen path. Runs the wavelength comparison of the extinction ratios at the end.
//
// After a failure header values and points of the row may be those of the new file in part; ScanPoints and
// FitRange stay as they were, and the arrays never get shorter than ScanPoints. A file without a single point
// is a failure. Nothing is told.
ScanReadResult TryReadScan(const std::string& path, RowNo row, Abscissa abscissa,
                           Ratios ratios = Ratios::Compared);

// The same with any first numbers, and tells a failure; a file that is not there is told by itself first.
ScanReadResult ReadScan(const std::string& path, RowNo row);

// Reads the baseline scan of a row: speed and at most MaxPtsPerSet points. Kind None when it was read; after
// a failure BaselinePoints stays as it was. Nothing is told.
ReadFailure TryReadBaseline(const std::string& path, RowNo row);

// The same, and tells a failure: false then.
bool ReadBaseline(const std::string& path, RowNo row);

// Tells a failure in a message: its sentence, and below it the name of the file with the reason. A missing
// scan is told before that.
void TellReadFailure(const std::string& path, const ReadFailure& failure);

// The tokeniser of point lines. Finds the nearest of the separator characters in text at or behind position
// (from 1; taken as 1 when below); gives the text before it and leaves position one past it. Without one:
// the rest of text, and position 0. A position of 0 that comes in together with rest is the caller's sign
// that a line has run out.
std::string NextToken(long& position, std::string_view text, std::string_view separators);

// Settles the type of data by the file name: characters 3 and 2 from its end in capitals, "IP", "RA" or "RI",
// "FI"; any other name leaves the type as the reader set it.
void SettleDataType(const std::string& fileName);

} // namespace Quillon
