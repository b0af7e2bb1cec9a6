#pragma once
// The printer as the program sees it: what paper lies in it, and a job that is drawn page by page.
//
// A page is drawn like any other surface (platform/Surface.h). What it shows is drawn first and printed
// afterwards by whoever fills the job; nothing of it stands on paper, or under the name of a file, before End
// has returned. Where there is no printer, pages become a PDF file on A4: that is never an error.

#include "platform/PictureFile.h"
#include "platform/Surface.h"

#include <cmath>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr double MillimetresPerInch = 25.4;
inline constexpr double PointsPerInch = 72.0; // those of type, as PDF and fonts have them

// Widths along the four edges of a sheet, in inches.
struct PageEdges {
    double Left{}, Top{}, Right{}, Bottom{};
};

// The same width along all four.
inline constexpr PageEdges EvenEdges(double inches) {
    return {inches, inches, inches, inches};
}

// The sheet as it is printed on, in inches: across, it is wider than high.
struct PrinterPage {
    double Width = 595.0 / PointsPerInch, Height = 842.0 / PointsPerInch; // A4 in whole points, as PDF has it
    PageEdges Border;                                                     // where the printer cannot print
    PageEdges Margin = EvenEdges(15.0 / MillimetresPerInch);              // what the user leaves free

    // Width and height of the part that ink can reach.
    double PrintableWidth() const { return Width - Border.Left - Border.Right; }
    double PrintableHeight() const { return Height - Border.Top - Border.Bottom; }
};

// What is known of the printer in use before a job is begun on it.
struct PrinterState {
    std::string Name; // "" without a printer: pages go to a PDF file
    PrinterPage Page;
    bool HasColor = true;
    bool IsPlotter = false;              // draws with pens: lines are one unit wide there
    std::vector<std::string> FixedFonts; // fixed-pitch faces that it prints
};

// A job: the first page is begun with it.
struct PrintJob {
    // The printable area of the page in hand, its origin at that area's upper left corner.
    DrawingSurface Surface;

    // Ends the page in hand and begins another one. A failure is a RuntimeError; the job is then aborted by
    // whoever began it.
    std::function<void()> NewPage;

    // Ends the last page and hands the job over. A failure is a RuntimeError, and nothing has been written.
    std::function<void()> End;

    // Gives the job up. Nothing is printed or written as far as the printer still holds it; never fails.
    std::function<void()> Abort;
};

// What a filling of the seam knows of printing. Any of them may be missing (FillPrinter).
struct PrinterOperations {
    // The printer in use with the paper that is set.
    std::function<PrinterState()> Current;

    // The system's dialog for printer and copies, and the one for paper, orientation and margins. False when
    // cancelled, and nothing has changed then; a dialog that fails is a RuntimeError. May serve events.
    std::function<bool()> Choose;
    std::function<bool()> SetUpPage;

    // Begins a job on that printer; title is what a queue of jobs shows. Nothing when the user gave it up
    // where a file had to be named. A printer that cannot be opened is a RuntimeError.
    std::function<std::optional<PrintJob>(const std::string& title)> Begin;
};

// The operations that are missing become harmless ones: A4 and no printer, dialogs that are cancelled, no
// job.
void FillPrinter(PrinterOperations& printer);

// --- pages in a PDF file -------------------------------------------------------------------------------

// Device units per point of pages that are drawn: whole, so that sheets of whole points have whole units.
inline constexpr int UnitsPerPoint = 8;
inline constexpr double PageDots = UnitsPerPoint * PointsPerInch;

// A length on a page in its device units.
inline int PageUnits(double inches) {
    return static_cast<int>(std::lround(inches * PointsPerInch)) * UnitsPerPoint;
}

// The same sheet as a file has it: all of it can be drawn on.
inline PrinterPage WithoutBorder(PrinterPage page) {
    page.Border = {};
    return page;
}

// The picture to ask for, for pages of that sheet: its size is rounded to whole points, which is what a PDF
// has, and drawn on in PageDots units per inch. title is kept in the file.
inline PictureRequest PagePicture(const PrinterPage& page, const std::string& title) {
    return {title, PageUnits(page.Width), PageUnits(page.Height), PageDots, PageDots};
}

// A job that becomes a file: write gets its bytes when the job has ended, and fails with a RuntimeError,
// which is that of End then. Giving the job up writes nothing. What picture holds must live as long as the
// job.
PrintJob JobOfPicture(const PictureFile& picture, std::function<void(const std::string&)> write);

} // namespace Quillon
