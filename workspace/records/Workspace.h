#pragma once
// The shared workspace: every record of the one analysis that is open.
//
// Forms, fit engine, models, graph builders and the fit save file read and write these members directly;
// only small indices travel as arguments. Grouped by who owns them. Each member tells its unit, its base
// and who refreshes it; the initial values are those of a fresh start without an ini file, so that
// `Work = Workspace{}` is the whole of a reset. workspace/records/Fields.h lists the members once more, as
// a table to walk over; a test holds the two against each other.
//
// Stored data and parameters are single precision, sums, matrices and derivatives double. A flag is 16-bit,
// -1 or 0, unless told otherwise. Sets, rows and points count from one, parameter slots from zero.
//
// A *row* is a line of the data set table (1..MaxSets), a *set* is the place of a row among those in the
// fit (1..NumSets); SetRow and SetOfRow lead from one to the other. The arrays know which of them counts
// their elements (workspace/records/Counts.h); workspace/records/Codes.h names what a coded member may hold.

#include "platform/Arrays.h"
#include "platform/Controls.h"
#include "platform/Narrow.h"
#include "workspace/records/Codes.h"
#include "workspace/records/Counts.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// The single -3.4e38 (bits FF7FC99E): the PtX of a constraint's pseudo-point and the gap in chart data.
inline constexpr float PointMarker = -3.4e38F;

// How the latest fit ended, for whoever reports it.
enum class FitEnd {
    NotRun,
    Converged,
    StoppedShort, // converged by the rules of the iteration, and no minimum
    Singular,
    TooManyIterations,
    MathError,
    Cancelled,
    Refused
};
struct FitOutcome {
    FitEnd End = FitEnd::NotRun;
    std::string Sentence; // why, with the numbers in it; empty when converged or not run
    std::string Reason =
        ""; // what the data do not determine, or what holds the fit up; empty where nothing tells
    // The decrease of the sum of squares that is still promised at the end, in shares of a degree of freedom;
    // unset where the fit did not come that far. Above 1 it is no minimum.
    std::optional<double> ExpectedDecrease = std::nullopt;
    bool Rescued = false; // the minimum was found by the damped search
    bool operator==(const FitOutcome&) const = default;
};

// A reading of a scan that takes no part: it stands in no array of points.
struct LeftOutReading {
    std::int16_t Place = 0; // among all readings of the scan as it was read, from 1
    std::int16_t Why = 0;   // LeftOutBy
    float Radius = 0.0F;    // cm
    float Value = 0.0F;     // as ScanValue; 0 where there is none
    bool operator==(const LeftOutReading&) const = default;
};

// A file whose scan is a part of the mean that a row holds.
struct MeanPart {
    std::string Directory, File;
    std::string Sha256;        // of the file as it was read
    std::int16_t Readings = 1; // averaged in each of its points, which is its weight
    bool operator==(const MeanPart&) const = default;
};

struct Workspace {
    static constexpr long Rows = StandardMaxSets;
    static constexpr long Slots = StandardMaxParms - 1; // highest subscript

    // --- identity and limits: set once at start ------------------------------------------------------
    std::string ProgramName = "Quillon";      // title of message boxes and of the main window
    std::string ProgramNameUpper = "QUILLON"; // base of the ini file's name, mark of the fit save file
    std::string ProgramVersion = "4.0.0";
    std::string ProgramDate = "04/21/2020";
    float FileFormatVersion = 2.0F; // lowest version of a fit save file that is still read
    std::int16_t MaxParms = StandardMaxParms;
    std::int16_t NumParms = StandardMaxParms; // in use: 8 + 3 * NumSets, set at each fit
    std::int16_t MaxSets = StandardMaxSets;
    std::int16_t MaxPtsPerSet = 2048; // a scan holds at most one point fewer
    std::int16_t MaxIterations = 40;
    std::int16_t MonitorMode = 1;  // 0 no monitor, 1 free run, 2 stepping, 3 one iteration released
    std::int16_t BoundsActive = 1; // parameter bounds are applied at every step
    std::int16_t ModelCount = 22;  // rows of the model list; 24 after a restored fit
    std::uint32_t EditBackColor = StandardEditColor; // marks the field that is being edited

    // --- model and its options -----------------------------------------------------------------------
    std::int16_t Model = 1;          // 1..22
    std::int16_t NonIdeal = 0;       // flag: with a second virial coefficient; models 1 to 5
    std::int16_t SeparateK = 0;      // flag: association constants set by set; models 2 to 6, 8, 9
    OneBased<std::string> ModelName; // 1..ModelCount, as the model dialog lists them
    std::int16_t LastModel = 0;      // model of the last fit, 0 before the first one
    std::int16_t LastNonIdeal = 0;   // options of the last fit
    std::int16_t LastSeparateK = 0;

    // --- parameters, by slot: into the model by FitFrame, moved by ApplyIncrement (fit/LineSearch.h) -----
    PerSlot<float> Parms = PerSlot<float>(Slots);     // internal scale: sigma of set 1, natural logarithms
    PerSlot<float> ParmsSave = PerSlot<float>(Slots); // Parms before a trial; re-created at each use
    PerSlot<float> StartParms; // Parms as the latest fit started with them; empty before the first one
    PerSlot<float> ParmScale = PerSlot<float>(Slots, 1.0F); // factor or addend from internal to user units
    PerSlot<std::string> ParmName = PerSlot<std::string>(Slots);
    PerSlot<std::string> ParmTitle = PerSlot<std::string>(Slots);       // unit
    PerSlot<std::string> ParmFormat = PerSlot<std::string>(Slots);      // number picture in user units
    PerSlot<std::int16_t> FreeMap = PerSlot<std::int16_t>(Slots);       // free position, or -1 held, -2, -3
    PerFree<std::int16_t> FreeIndex = PerFree<std::int16_t>(Slots, -1); // free position to slot
    std::array<PerSlot<float>, 2> Bounds{PerSlot<float>(Slots),
                                         PerSlot<float>(Slots)}; // lower, upper; user units
    std::int16_t NumFree = 0; // fitted parameters, the order of the normal matrix

    // --- working arrays of the fit, by free position -------------------------------------------------
    PerFree<double> Increment = PerFree<double>(Slots); // the Gauss-Newton increment
    PerFree<double> Deriv = PerFree<double>(Slots);     // derivatives at the current point
    ZeroBasedMatrix<double> NormMatrix; // sum of outer products of Deriv; after inversion its inverse
    PerFree<double> NormVector;         // sum of residual times Deriv
    ZeroBasedMatrix<float> CorrMatrix;  // cross-correlations (lower triangle), eigenvectors in the search
    PerFree<std::int16_t> AtBound;      // -1 at the lower bound, 1 at the upper one, 0 free
    std::array<PerFree<float>, 2> ParmLimits; // lower, upper confidence limit, internal scale
    PerFree<std::string> LimitReason;         // why a limit was not found; empty where both were
    ZeroBasedMatrix<float> ConfTrace;         // slots by end points of the confidence search

    // --- scalars of the fit --------------------------------------------------------------------------
    double SumSq = 0.0;     // sum of squared residuals of the latest pass
    double LastSumSq = 0.0; // the same before the current step
    float RmsResidual = 0.0F;
    double Alpha = 1.0; // the Increment Reduction Factor
    std::int16_t Iteration = 0;
    float ConvergenceLimit = 0.05F;
    float ParmsAccuracy = 0.001F; // kept, shown and saved; no test of the iteration reads it
    float ConfidenceLevel = 0.683F;
    float LimitsLevel = 0.683F;   // that the limits at hand were searched with
    float ConfidenceRatio = 0.0F; // ratio of sums of squares that bounds the confidence region
    float HighCorrelation = 0.97F;
    float VeryHighCorrelation = 0.99F;
    std::int16_t YieldInterval = 200; // points between two services of the event queue
    float RunsZ = 0.0F;
    std::int16_t HighCount = 0;     // correlations above HighCorrelation in magnitude
    std::int16_t VeryHighCount = 0; // those of them above VeryHighCorrelation
    FitOutcome Outcome;

    // --- data set table, by row ----------------------------------------------------------------------
    PerRow<std::string> ScanFile = PerRow<std::string>(Rows); // bare name, "" for an empty row
    PerRow<std::string> BaselineFile = PerRow<std::string>(Rows, NoBaseline);
    PerRow<std::string> ScanDirectory = PerRow<std::string>(Rows);
    PerRow<std::string> BaselineDirectory = PerRow<std::string>(Rows);
    PerRow<std::string> ScanSha256 = PerRow<std::string>(Rows); // of the file as it was read; "" not known
    PerRow<std::string> BaselineSha256 = PerRow<std::string>(Rows);
    PerRow<std::string> ScanComment = PerRow<std::string>(Rows);
    PerRow<float> ScanTemperature = PerRow<float>(Rows); // degrees Celsius
    PerRow<float> ScanRPM = PerRow<float>(Rows);
    PerRow<float> ScanOmega2t = PerRow<float>(Rows);
    PerRow<float> ScanWavelength = PerRow<float>(Rows);         // nm
    PerRow<std::int32_t> ScanTime = PerRow<std::int32_t>(Rows); // s
    PerRow<std::int16_t> ScansAveraged = PerRow<std::int16_t>(Rows);
    PerRow<std::int16_t> ScanPoints = PerRow<std::int16_t>(Rows);
    std::array<PerRow<std::int16_t>, 2> FitRange{PerRow<std::int16_t>(Rows), PerRow<std::int16_t>(Rows)};
    PerRow<OneBased<float>> ScanRadius = PerRow<OneBased<float>>(Rows); // row, then point; cm
    PerRow<OneBased<float>> ScanValue = PerRow<OneBased<float>>(Rows);  // absorbance or fringes
    // Readings that are left out, by rising place. ScanPoints, FitRange, ScanRadius and ScanValue know of the
    // others only, so that all that goes by points is that of a scan without these lines.
    PerRow<std::vector<LeftOutReading>> LeftOut = PerRow<std::vector<LeftOutReading>>(Rows);
    PerRow<float> SignalCeiling =
        PerRow<float>(Rows); // fitted signal above which readings are left out; 0 none
    PerRow<std::int16_t> IntensityOrder = PerRow<std::int16_t>(Rows); // IntensityOrders
    // The two columns of an intensity scan as read, left-out readings included; empty for other scans.
    std::array<PerRow<OneBased<float>>, 2> Intensity{PerRow<OneBased<float>>(Rows),
                                                     PerRow<OneBased<float>>(Rows)};
    // Of a row whose scan is the mean of several: all its files, that of ScanFile last, and the standard
    // deviation of one scan at each reading, left-out readings included. Both are empty for a scan alone.
    PerRow<std::vector<MeanPart>> MeanOf = PerRow<std::vector<MeanPart>>(Rows);
    PerRow<OneBased<float>> MeanSpread = PerRow<OneBased<float>>(Rows);
    PerRow<std::int16_t> BaselinePoints = PerRow<std::int16_t>(Rows);
    PerRow<OneBased<float>> BaselineRadius = PerRow<OneBased<float>>(Rows);
    PerRow<OneBased<float>> BaselineValue = PerRow<OneBased<float>>(Rows);
    PerRow<float> BaselineRPM = PerRow<float>(Rows);
    PerRow<std::int16_t> BaselineShifted = PerRow<std::int16_t>(Rows); // flag: the shift is in force
    PerRow<float> BaselineShift = PerRow<float>(Rows);                 // cm, positive outward
    PerRow<float> CellPath = PerRow<float>(Rows, 1.2F);                // cm
    std::array<PerRow<float>, 2> ExtinctionRatio{PerRow<float>(Rows, 1.0F),
                                                 PerRow<float>(Rows, 1.0F)}; // A, B
    PerRow<std::int16_t> CenterpieceType = PerRow<std::int16_t>(Rows, 3);    // 1, 3 or 4 samples
    PerRow<std::int16_t> DataChannel = PerRow<std::int16_t>(Rows);           // 0 none, 1..4 for A..D
    PerRow<std::int16_t> IncludeSet = PerRow<std::int16_t>(Rows); // 1 in the fit; row 1 starts as 1
    PerRow<float> SetNoise = PerRow<float>(Rows); // standard deviation, signal units; 0 not given
    PerRow<std::int16_t> SetChanged = PerRow<std::int16_t>(Rows); // flag, by row: data changed
    OneBasedMatrix<float> SetParmMemory{3, Rows}; // last fitted ln cA, ln cB, offset of each row

    // --- constraints, by row -------------------------------------------------------------------------
    PerRow<float> ConcConstraintA = PerRow<float>(Rows); // mean signal without offset; 0: no constraint
    PerRow<float> ConcConstraintB = PerRow<float>(Rows);
    PerRow<float> ConcToleranceA = PerRow<float>(Rows, 0.1F); // fraction
    PerRow<float> ConcToleranceB = PerRow<float>(Rows, 0.1F);
    std::array<PerRow<float>, 2> ConstraintFit{PerRow<float>(Rows), PerRow<float>(Rows)}; // mean signal found
    PerRow<std::int16_t> OffsetLink = PerRow<std::int16_t>(Rows); // row whose offset is shared; 0 none
    PerRow<std::int16_t> ConcLink = PerRow<std::int16_t>(Rows); // row whose concentrations are shared; 0 none
    std::int16_t ConstraintFlags = 0;                           // bit 1 concentrations, bit 2 zero offsets

    // --- data set table, the form's working values ----------------------------------------------------
    std::int16_t CurrentRow = 0;  // highlighted row of the page, 0..8
    std::int16_t CurrentPage = 0; // 0 or 1
    std::int16_t HighestSet = 1;  // highest row that ever held a file
    std::string DataDirectory;    // where the file dialogs start
    std::string BaselineDirectoryLast;
    std::string WorkDirectory; // the current directory at start
    std::string ChosenPath;    // full path chosen in the latest file dialog
    std::string ChosenName;    // its bare name
    std::string FitFile;       // path of the fit save file that this analysis was saved to or came from

    // --- the fit's flat data; written by BuildFitData and the fit passes -------------------------------
    std::int16_t NumSets = 0;
    std::int16_t NumPts = 0;                                    // constraint pseudo-points included
    PerSet<std::int16_t> SetRow = PerSet<std::int16_t>(Rows);   // set to row, 0 behind NumSets
    PerRow<std::int16_t> SetOfRow = PerRow<std::int16_t>(Rows); // row to set, 0 outside the fit
    PerSet<std::int16_t> SetPts;                                // 1..NumSets, pseudo-points included
    PerSet<std::string> SetLabel = PerSet<std::string>(Rows);
    std::string LabelPrefix;                                  // common leading path of all labels
    PerSet<float> SetSigmaScale = PerSet<float>(Rows, 1.0F);  // sigma of the set over that of set 1
    PerSet<float> SetSignalScale = PerSet<float>(Rows, 1.0F); // path of the set over that of set 1
    OneBased<float> PtX; // r^2/2 - r0^2/2 in cm^2; PointMarker for a pseudo-point
    OneBased<float> PtY; // signal, baseline subtracted
    OneBased<std::int16_t> PtSet;
    OneBased<float> PtFit;   // fitted value of the latest pass (fit/Sums.h)
    OneBased<float> PtResid; // PtY - PtFit, filled on demand (CalcResiduals)

    // --- units -----------------------------------------------------------------------------------------
    std::int16_t MassUnits = 0; // 0 sigma, 1 buoyant molar mass, 2 molar mass (kDa)
    std::int16_t ConcUnits = 0; // 0 AU, 1 mg/mL, 2 molar; 3 fringes, 4 mg/mL, 5 molar of interference data
    float VbarA = 0.730F;       // mL/g
    float VbarB = 0.730F;
    float SolventDensity = 1.003994F; // g/mL
    float AbsorpA = 1.0F;             // mL/(mg cm)
    float AbsorpB = 1.0F;
    float ExtA = 10000.0F; // L/(mol cm)
    float ExtB = 10000.0F;
    float FringeMassA = 2.756F; // fringes per mg/mL per cm
    float FringeMassB = 2.756F;
    float RefrA = 20000.0F; // fringes L/(mol cm)
    float RefrB = 20000.0F;

    // --- state flags -------------------------------------------------------------------------------------
    std::int16_t DataChosen = 0;     // the table has been accepted
    std::int16_t ModelChosen = 0;    // a model and its parameters exist
    std::int16_t NewData = 0;        // -1 data differ from those of the stored fit, 1 constraints changed
    std::int16_t FitDone = 0;        // a finished fit stands
    std::int16_t FitValid = 0;       // PtFit is complete for the current Parms
    std::int16_t LimitsDone = 0;     // the confidence limits stand for this fit
    std::int16_t AbortFit = 0;       // the user asked to stop; every loop tests it and leaves at once
    std::int16_t BoundHit = 0;       // 1: a parameter was put back onto a bound in the latest trial
    std::int16_t FunctionFailed = 0; // flag: AbortFit was set by an arithmetic failure, which has been told
    std::int16_t Singular = 0;       // 1: the latest inversion failed

    // --- texts on graphs, preferences ----------------------------------------------------------------------
    std::string FitTitle;
    std::string XAxisTitle = "(R^2 - Ro^2) / 2   (cm^2)";
    std::string DataTypeName = "Absorbance"; // "Absorbance", "Fringes" or "FI"
    std::int16_t InterferenceData = 0;       // flag, by the last scan read
    std::int16_t OverlayPlot = 0;            // flag: reports show data and fit instead of residuals
    std::int16_t SpreadResiduals = 0;        // flag: residual graphs separate the sets
    std::int16_t PauseBeforeFit = FlagTrue;  // flag: the check mark of the menu item FitPause
    std::int16_t RescueMode = Rescue::Ask;   // after a fit that is no minimum (Rescue)
    std::int16_t TemperatureScale = TemperatureScales::Celsius; // of SetSigmaScale

    // --- program defaults that are no part of an analysis
    // ---------------------------------------------------
    std::int16_t FormScalingPercent = 100;                // 75..200
    float CellPathlength = 1.2F;                          // cm, given to each scan read
    std::int16_t CellType = Centerpiece::SixChannel;      // CenterpieceType given to each scan read
    std::int16_t RangeLogPlot = 0;                        // flag: ranges are set on ln(c) against r^2/2
    ZeroBased<float> ChannelRadii = ZeroBased<float>(15); // cm at rest; see the data set table
    float RotorExpansion = 1e-11F;                        // cm per rpm squared
    std::int16_t NameConvention = NamedBy::Newer;
    float ReportFontSize = 12.0F; // points

    bool operator==(const Workspace&) const = default;
};

// A workspace as the program starts with: the members' initial values, and those that depend on a subscript.
Workspace FreshWorkspace();

// The analysis: one for each thread, so that fits of copies can run side by side. The program has one thread,
// and its instance is the open analysis; others work on a copy that they were given
// (studies/methods/Copies.h).
extern thread_local Workspace Work;

} // namespace Quillon
