#pragma once
// The layout of a fit save file, written down once. The fields stand here in the order of the file; the same
// walk writes them (FitWriter) and reads them (FitReader), so that the two directions cannot drift apart.
//
// Encodings: numbers are little-endian; a text is a 16-bit count of characters and the characters; an array
// is its elements without count or descriptor, a two-row array all of row 0 and then all of row 1. The file
// has no framing: what a field means follows from the fields before it, and the sizes of all arrays from
// MaxParms, NumFree, MaxSets, NumPts and the point counts of the rows.
//
// A stream offers
//     Value(name, x, finite)               one number or text
//     Array(name, a, low, high, finite)    the elements low..high of an array; those that the workspace does
//                                          not hold are written as 0 or as an empty text
//     Square(name, m, n, finite)           an n by n matrix
//     Flags(name, count, holds)            a 16-bit truth value for each row, which must say what holds says
//     ModelNames(w)                        the model list
//     Sizes(w)                             the point at which all sizes are known
//     Version                              number of the program that wrote the file
// where finite tells that a number which is none makes the file unusable. Sums and points of a fit that no
// longer stands are the exception: a fit that broke off may have left anything there, and nobody reads it.

#include "workspace/records/Workspace.h"

namespace Quillon {

// The rows of the table in an analysis that need not be the open one.
inline OrdinalRange<RowKind> RowsOf(const Workspace& w) {
    return {RowNo(1), RowNo(w.MaxSets)};
}

// Rows that bring points of their own along in the file: a baseline without a scan does not.
inline bool HasScan(const Workspace& w, RowNo row) {
    return !w.ScanFile[row].empty();
}
inline bool HasBaseline(const Workspace& w, RowNo row) {
    return HasScan(w, row) && w.BaselineFile[row] != NoBaseline;
}

// Sizes first, by which a reader makes its arrays, then what the fit was run with and how it ended. W is a
// Workspace, or a const one where the stream only writes; all the walks below are alike in that.
template <class Stream, class W> void FitScalars(Stream& s, W& w) {
    s.Value("MaxParms", w.MaxParms);
    s.Value("NumParms", w.NumParms);
    s.Value("NumFree", w.NumFree);
    s.Value("MaxSets", w.MaxSets);
    s.Value("NumSets", w.NumSets);
    s.Value("MaxPtsPerSet", w.MaxPtsPerSet);
    s.Value("NumPts", w.NumPts);
    // From here on the sizes stand.
    s.Sizes(w);
    s.Value("MaxIterations", w.MaxIterations);
    s.Value("BoundsActive", w.BoundsActive);
    s.Value("ConstraintFlags", w.ConstraintFlags);
    s.Value("MonitorMode", w.MonitorMode);
    s.Value("ConvergenceLimit", w.ConvergenceLimit);
    s.Value("ConfidenceLevel", w.ConfidenceLevel);
    s.Value("HighCorrelation", w.HighCorrelation);
    s.Value("VeryHighCorrelation", w.VeryHighCorrelation);
    s.Value("FitDone", w.FitDone);
    s.Value("FitValid", w.FitValid);
    s.Value("SumSq", w.SumSq, w.FitDone != 0);
    s.Value("RmsResidual", w.RmsResidual, w.FitDone != 0);
    s.Value("LimitsDone", w.LimitsDone);
    s.Value("OverlayPlot", w.OverlayPlot);
    s.Value("SpreadResiduals", w.SpreadResiduals);
}

// Slot by slot what the parameters are called, worth and bounded by; the points of the fit with the values
// fitted to them; the inverse matrix that errors come from. Limits stand in the file only where they were
// found.
template <class Stream, class W> void FitParameters(Stream& s, W& w) {
    const long last = w.MaxParms - 1;
    s.Array("Parms", w.Parms, 0, last);
    s.Array("Bounds", w.Bounds[0], 0, last);
    s.Array("Bounds", w.Bounds[1], 0, last);
    s.Array("ParmName", w.ParmName, 0, last);
    s.Array("ParmTitle", w.ParmTitle, 0, last);
    s.Array("ParmFormat", w.ParmFormat, 0, last);
    s.Array("SetLabel", w.SetLabel, 1, w.MaxSets);
    s.Array("SetPts", w.SetPts, 1, w.MaxSets);
    s.Array("PtX", w.PtX, 1, w.NumPts);
    s.Array("PtY", w.PtY, 1, w.NumPts);
    s.Array("PtSet", w.PtSet, 1, w.NumPts);
    s.Array("PtFit", w.PtFit, 1, w.NumPts, w.FitValid != 0 || w.FitDone != 0);
    s.Square("NormMatrix", w.NormMatrix, w.NumFree, w.FitDone != 0);
    s.Array("FreeIndex", w.FreeIndex, 0, last);
    s.Array("FreeMap", w.FreeMap, 0, last);
    s.Value("FitTitle", w.FitTitle);
    s.Value("XAxisTitle", w.XAxisTitle);
    s.Value("DataTypeName", w.DataTypeName);
    s.Value("DataDirectory", w.DataDirectory);
    if (w.LimitsDone != 0) {
        s.Array("ParmLimits", w.ParmLimits[0], 0, w.NumFree - 1);
        s.Array("ParmLimits", w.ParmLimits[1], 0, w.NumFree - 1);
    }
}

// Which rows the sets came from, the model, the units and what converts them. ParmScale belongs to the units.
template <class Stream, class W> void FitModel(Stream& s, W& w) {
    s.Array("SetRow", w.SetRow, 1, StandardMaxSets);
    s.Array("ParmScale", w.ParmScale, 0, w.MaxParms - 1);
    s.Value("ModelCount", w.ModelCount);
    s.Value("Model", w.Model);
    s.Value("ModelChosen", w.ModelChosen);
    s.Value("DataChosen", w.DataChosen);
    s.Value("ConcUnits", w.ConcUnits);
    s.Value("AbsorpA", w.AbsorpA);
    s.Value("AbsorpB", w.AbsorpB);
    s.Value("ExtA", w.ExtA);
    s.Value("ExtB", w.ExtB);
    s.Value("CellPathlength", w.CellPathlength);
    s.Value("SolventDensity", w.SolventDensity);
    s.Value("VbarA", w.VbarA);
    s.Value("VbarB", w.VbarB);
    if (s.Version < 3.37) { // had another meaning then: read over, the present values stay
        float former = 0.0F;
        s.Value("FringeMassA", former, false);
        s.Value("FringeMassB", former, false);
    } else {
        s.Value("FringeMassA", w.FringeMassA);
        s.Value("FringeMassB", w.FringeMassB);
    }
    s.Value("MassUnits", w.MassUnits);
    s.Value("NonIdeal", w.NonIdeal);
    s.Value("SeparateK", w.SeparateK);
    s.ModelNames(w);
}

// The table by row: the header of each scan, what was chosen of it, then the points of all scans and those of
// all baselines, for rows that have any. A mark before each of the two says for all rows which these are.
template <class Stream, class W> void FitScans(Stream& s, W& w) {
    const long rows = w.MaxSets;
    s.Array("ScanRPM", w.ScanRPM, 1, rows);
    s.Array("SetSigmaScale", w.SetSigmaScale, 1, rows);
    s.Array("CellPath", w.CellPath, 1, rows);
    s.Array("SetSignalScale", w.SetSignalScale, 1, rows);
    s.Array("ScanTemperature", w.ScanTemperature, 1, rows);
    s.Array("ScanWavelength", w.ScanWavelength, 1, rows);
    s.Array("ScanOmega2t", w.ScanOmega2t, 1, rows);
    s.Array("ScansAveraged", w.ScansAveraged, 1, rows);
    s.Array("ScanTime", w.ScanTime, 1, rows);
    s.Array("ScanComment", w.ScanComment, 1, rows);
    s.Array("ScanPoints", w.ScanPoints, 1, rows);
    s.Array("BaselinePoints", w.BaselinePoints, 1, rows);
    s.Array("FitRange", w.FitRange[0], 1, rows);
    s.Array("FitRange", w.FitRange[1], 1, rows);
    s.Array("CenterpieceType", w.CenterpieceType, 1, rows);
    s.Array("DataChannel", w.DataChannel, 1, rows);
    s.Array("ScanDirectory", w.ScanDirectory, 1, rows);
    s.Array("ScanFile", w.ScanFile, 1, rows);
    s.Flags("ScanFile", rows, [&](RowNo row) { return HasScan(w, row); });
    for (const RowNo row : RowsOf(w))
        if (w.ScanPoints[row] >= 1 && HasScan(w, row)) {
            s.Array("ScanRadius", w.ScanRadius[row], 1, w.ScanPoints[row]);
            s.Array("ScanValue", w.ScanValue[row], 1, w.ScanPoints[row]);
        }
    s.Array("BaselineFile", w.BaselineFile, 1, rows);
    s.Flags("BaselineFile", rows, [&](RowNo row) { return HasBaseline(w, row); });
    for (const RowNo row : RowsOf(w))
        if (w.BaselinePoints[row] >= 1 && HasBaseline(w, row)) {
            s.Array("BaselineRadius", w.BaselineRadius[row], 1, w.BaselinePoints[row]);
            s.Array("BaselineValue", w.BaselineValue[row], 1, w.BaselinePoints[row]);
        }
}

// Which rows take part, what is constrained and shared, and what came into the file with later versions.
template <class Stream, class W> void FitConstraints(Stream& s, W& w) {
    const long rows = w.MaxSets;
    s.Array("IncludeSet", w.IncludeSet, 1, rows);
    s.Array("ConcConstraintA", w.ConcConstraintA, 1, rows);
    s.Array("ConcConstraintB", w.ConcConstraintB, 1, rows);
    s.Array("ConcToleranceA", w.ConcToleranceA, 1, rows);
    s.Array("ConcToleranceB", w.ConcToleranceB, 1, rows);
    s.Array("ConstraintFit", w.ConstraintFit[0], 1, rows);
    s.Array("ConstraintFit", w.ConstraintFit[1], 1, rows);
    s.Array("OffsetLink", w.OffsetLink, 1, rows);
    if (s.Version > 2.1) { // baselines could not be shifted before
        s.Array("BaselineShifted", w.BaselineShifted, 1, rows);
        s.Array("BaselineShift", w.BaselineShift, 1, rows);
        s.Array("BaselineRPM", w.BaselineRPM, 1, rows);
    }
    s.Array("ExtinctionRatio", w.ExtinctionRatio[0], 1, rows);
    s.Array("ExtinctionRatio", w.ExtinctionRatio[1], 1, rows);
    s.Value("NameConvention", w.NameConvention);
    s.Array("BaselineDirectory", w.BaselineDirectory, 1, rows);
    s.Value("BaselineDirectoryLast", w.BaselineDirectoryLast);
    s.Value("LabelPrefix", w.LabelPrefix);
    s.Value("HighestSet", w.HighestSet);
    s.Value("RefrA", w.RefrA);
    s.Value("RefrB", w.RefrB);
    s.Value("InterferenceData", w.InterferenceData);
    s.Value("ParmsAccuracy", w.ParmsAccuracy, false); // a value out of its range is replaced on reading
}

// Everything behind the two texts of the header.
template <class Stream, class W> void FitFields(Stream& s, W& w) {
    FitScalars(s, w);
    FitParameters(s, w);
    FitModel(s, w);
    FitScans(s, w);
    FitConstraints(s, w);
}

} // namespace Quillon
