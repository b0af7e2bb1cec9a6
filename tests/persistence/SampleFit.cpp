#include "SampleFit.h"

#include <cmath>
#include <cstring>
#include <map>

namespace Quillon {

namespace {

void LoadScan(Workspace& w, long row, const std::string& name, long points, float firstRadius) {
    w.ScanFile[row] = name;
    w.ScanDirectory[row] = "/data/run" + std::to_string(row);
    w.ScanComment[row] = "cell " + std::to_string(row) + ", \xB5M loading";
    w.ScanTemperature[row] = 20.0F + static_cast<float>(row);
    w.ScanRPM[row] = 15000.0F + 1000.0F * static_cast<float>(row);
    w.ScanOmega2t[row] = 1.25e11F * static_cast<float>(row);
    w.ScanWavelength[row] = 280.0F + static_cast<float>(row);
    w.ScanTime[row] = static_cast<std::int32_t>(100000 * row + 7);
    w.ScansAveraged[row] = static_cast<std::int16_t>(5 + row);
    w.ScanPoints[row] = static_cast<std::int16_t>(points);
    w.ScanRadius[row].Recreate(points);
    w.ScanValue[row].Recreate(points);
    for (long p = 1; p <= points; ++p) {
        w.ScanRadius[row][p] = firstRadius + 0.001F * static_cast<float>(p);
        w.ScanValue[row][p] = 0.1F + 0.01F * static_cast<float>(p * row);
    }
    w.FitRange[0][row] = 1;
    w.FitRange[1][row] = static_cast<std::int16_t>(points);
}

void IncludeRow(Workspace& w, long row) {
    w.IncludeSet[row] = 1;
    const long set = ++w.NumSets;
    w.SetRow[set] = static_cast<std::int16_t>(row);
    w.SetPts.Resize(set);
    w.SetLabel[set] = w.ScanFile[row] + " Ch A";
    w.SetSigmaScale[set] = 1.0F + 0.25F * static_cast<float>(set);
    w.SetSignalScale[set] = 1.0F + 0.125F * static_cast<float>(set);
}

void AddPoint(Workspace& w, long set, float x, float y) {
    const long n = ++w.NumPts;
    w.PtX.Resize(n, x);
    w.PtY.Resize(n, y);
    w.PtSet.Resize(n, static_cast<std::int16_t>(set));
    w.PtFit.Resize(n, y + 0.001F);
    ++w.SetPts[set];
}

void AddTruePoints(Workspace& w, long set) {
    const long row = w.SetRow[set];
    for (long p = w.FitRange[0][row]; p <= w.FitRange[1][row]; ++p)
        AddPoint(w, set, 0.01F * static_cast<float>(p) - 0.02F, w.ScanValue[row][p]);
}

void FillTable(Workspace& w) {
    LoadScan(w, 1, "00001.RA1", 6, 6.9F);
    LoadScan(w, 2, "00002.RA1", 3, 7.0F);
    LoadScan(w, 3, "00003.IP2", 5, 6.5F);
    w.FitRange[0][1] = 2;
    w.FitRange[1][1] = 5;
    w.FitRange[1][3] = 4;
    w.BaselinePoints[1] = 9; // taken off again
    w.ScanPoints[4] = 11;    // cleared
    w.BaselineFile[3] = "base.IP2";
    w.BaselineDirectory[3] = "/data/base";
    w.BaselineDirectoryLast = "/data/base";
    w.BaselinePoints[3] = 2;
    w.BaselineRadius[3].Recreate(2, 6.4F);
    w.BaselineRadius[3][2] = 7.4F;
    w.BaselineValue[3].Recreate(2, 0.015F);
    w.BaselineRPM[3] = 3000.0F;
    w.BaselineShifted[3] = FlagTrue;
    w.BaselineShift[3] = 0.003F;
    w.CellPath[3] = 0.3F;
    w.ExtinctionRatio[0][3] = 1.5F;
    w.ExtinctionRatio[1][3] = 0.75F;
    w.CenterpieceType[1] = 4;
    w.CenterpieceType[2] = 1;
    w.CenterpieceType[5] = 0;
    w.DataChannel[1] = 4;
    w.HighestSet = 4;
    w.NameConvention = 0;
    w.InterferenceData = FlagTrue;
    w.DataTypeName = "Fringes";
    w.DataDirectory = "";
    w.LabelPrefix = "/data/";
}

void FillConstraints(Workspace& w) {
    w.ConstraintFlags = ConcentrationBit | OffsetBit;
    w.ConcConstraintA[3] = 0.4F;
    w.ConcConstraintB[3] = 0.2F;
    w.ConcToleranceA[3] = 0.02F;
    w.ConcToleranceB[3] = 0.05F;
    w.ConstraintFit[0][3] = 0.39F;
    w.ConstraintFit[1][3] = 0.21F;
    w.OffsetLink[3] = 1;
}

void FillParameters(Workspace& w) {
    w.NumParms = 14;
    for (long i = 0; i < StandardMaxParms; ++i) {
        w.Parms[i] = -1.0F - 0.5F * static_cast<float>(i);
        w.ParmScale[i] = 2.0F + static_cast<float>(i);
        w.Bounds[0][i] = -100.0F - static_cast<float>(i);
        w.Bounds[1][i] = 100.0F + static_cast<float>(i);
        w.ParmName[i] = "parameter " + std::to_string(i);
        w.ParmTitle[i] = i % 3 == 0 ? "" : "mg/mL";
        w.ParmFormat[i] = "#0.0###";
        w.FreeMap[i] = SlotHeld;
    }
    w.NumFree = 2;
    w.FreeMap[0] = 0;
    w.FreeMap[8] = 1;
    w.FreeMap[13] = SlotTied;
    w.FreeMap[1] = SlotUnused;
    w.FreeIndex[0] = 0;
    w.FreeIndex[1] = 8;
    w.NormMatrix.Recreate(1, 1);
    w.NormMatrix(0, 0) = 1.0 / 3.0;
    w.NormMatrix(0, 1) = w.NormMatrix(1, 0) = -1e-7;
    w.NormMatrix(1, 1) = 1e300;
    w.ParmLimits[0].Recreate(1, -2.0F);
    w.ParmLimits[1].Recreate(1, 2.5F);
    w.ParmLimits[0][1] = -1e38F;
    w.ParmLimits[1][1] = 1e38F;
}

void FillScalars(Workspace& w) {
    w.MaxPtsPerSet = 4000;
    w.MaxIterations = 55;
    w.BoundsActive = 0;
    w.MonitorMode = 2;
    w.ConvergenceLimit = 0.25F;
    w.ConfidenceLevel = w.LimitsLevel = 0.95F;
    w.HighCorrelation = 0.9F;
    w.VeryHighCorrelation = 0.95F;
    w.FitDone = w.FitValid = w.LimitsDone = FlagTrue;
    w.DataChosen = w.ModelChosen = FlagTrue;
    w.SumSq = 1.2345678901234567e-3;
    w.RmsResidual = 0.0021F;
    w.OverlayPlot = w.SpreadResiduals = FlagTrue;
    w.FitTitle = "monomer <-> dimer fit";
    w.XAxisTitle = "x";
    w.ModelCount = 22;
    w.Model = 2;
    w.NonIdeal = w.SeparateK = FlagTrue;
    w.ModelName.Recreate(22);
    for (long i = 1; i <= 22; ++i)
        w.ModelName[i] = "model " + std::to_string(i);
    w.MassUnits = 2;
    w.ConcUnits = 5;
    w.VbarA = 0.735F;
    w.VbarB = 0.72F;
    w.SolventDensity = 1.01F;
    w.AbsorpA = 1.5F;
    w.AbsorpB = 1.75F;
    w.ExtA = 12345.0F;
    w.ExtB = 54321.0F;
    w.CellPathlength = 0.3F;
    w.FringeMassA = 3.25F;
    w.FringeMassB = 3.5F;
    w.RefrA = 21000.0F;
    w.RefrB = 22000.0F;
    w.ParmsAccuracy = 0.002F;
}

void PutBits(std::string& all, std::uint64_t bits, int bytes) {
    for (int i = 0; i < bytes; ++i)
        all += static_cast<char>(static_cast<unsigned char>(bits >> (8 * i)));
}

// Notes where the fields start while they are written.
struct Layout : Bytes {
    std::map<int, std::size_t> Start;
    void Field(int number) { Start[number] = All.size(); }
    template <class A> void F32s(int number, const A& a, long low, long high) {
        Field(number);
        for (long i = low; i <= high; ++i)
            F32(a[i]);
    }
    template <class A> void I16s(int number, const A& a, long low, long high) {
        Field(number);
        for (long i = low; i <= high; ++i)
            I16(a[i]);
    }
    template <class A> void Texts(int number, const A& a, long low, long high) {
        Field(number);
        for (long i = low; i <= high; ++i)
            Text(a[i]);
    }
    void OneI16(int number, long value) {
        Field(number);
        I16(value);
    }
    void OneF32(int number, float value) {
        Field(number);
        F32(value);
    }
    void OneText(int number, const std::string& text) {
        Field(number);
        Text(text);
    }
};

void HandScalars(Layout& b, const Workspace& w) {
    b.OneText(1, "QUILLON");
    b.OneText(2, "4.0.0");
    b.OneI16(3, w.MaxParms);
    b.OneI16(4, w.NumParms);
    b.OneI16(5, w.NumFree);
    b.OneI16(6, w.MaxSets);
    b.OneI16(7, w.NumSets);
    b.OneI16(8, w.MaxPtsPerSet);
    b.OneI16(9, w.NumPts);
    b.OneI16(10, w.MaxIterations);
    b.OneI16(11, w.BoundsActive);
    b.OneI16(12, w.ConstraintFlags);
    b.OneI16(13, w.MonitorMode);
    b.OneF32(14, w.ConvergenceLimit);
    b.OneF32(15, w.ConfidenceLevel);
    b.OneF32(16, w.HighCorrelation);
    b.OneF32(17, w.VeryHighCorrelation);
    b.OneI16(18, w.FitDone);
    b.OneI16(19, w.FitValid);
    b.Field(20);
    b.F64(w.SumSq);
    b.OneF32(21, w.RmsResidual);
    b.OneI16(22, w.LimitsDone);
    b.OneI16(23, w.OverlayPlot);
    b.OneI16(24, w.SpreadResiduals);
}

void HandParameters(Layout& b, const Workspace& w) {
    const long last = w.MaxParms - 1;
    b.F32s(25, w.Parms, 0, last);
    b.F32s(26, w.Bounds[0], 0, last);
    const std::size_t bounds = b.Start[26];
    b.F32s(26, w.Bounds[1], 0, last);
    b.Start[26] = bounds;
    b.Texts(27, w.ParmName, 0, last);
    b.Texts(28, w.ParmTitle, 0, last);
    b.Texts(29, w.ParmFormat, 0, last);
    b.Texts(30, w.SetLabel, 1, w.MaxSets);
    b.Field(31);
    for (long set = 1; set <= w.MaxSets; ++set)
        b.I16(set <= w.NumSets ? w.SetPts[set] : 0);
    b.F32s(32, w.PtX, 1, w.NumPts);
    b.F32s(33, w.PtY, 1, w.NumPts);
    b.I16s(34, w.PtSet, 1, w.NumPts);
    b.F32s(35, w.PtFit, 1, w.NumPts);
    b.Field(36);
    for (long i = 0; i < w.NumFree; ++i)
        for (long j = 0; j < w.NumFree; ++j)
            b.F64(w.NormMatrix(i, j));
    b.I16s(37, w.FreeIndex, 0, last);
    b.I16s(38, w.FreeMap, 0, last);
    b.OneText(39, w.FitTitle);
    b.OneText(40, w.XAxisTitle);
    b.OneText(41, w.DataTypeName);
    b.OneText(42, w.DataDirectory);
    b.Field(43);
    for (int row = 0; row < 2 && w.LimitsDone != 0; ++row)
        for (long a = 0; a < w.NumFree; ++a)
            b.F32(w.ParmLimits[static_cast<std::size_t>(row)][a]);
}

void HandModel(Layout& b, const Workspace& w) {
    b.I16s(44, w.SetRow, 1, 18);
    b.F32s(45, w.ParmScale, 0, w.MaxParms - 1);
    b.OneI16(46, w.ModelCount);
    b.OneI16(47, w.Model);
    b.OneI16(48, w.ModelChosen);
    b.OneI16(49, w.DataChosen);
    b.OneI16(50, w.ConcUnits);
    b.OneF32(51, w.AbsorpA);
    b.OneF32(52, w.AbsorpB);
    b.OneF32(53, w.ExtA);
    b.OneF32(54, w.ExtB);
    b.OneF32(55, w.CellPathlength);
    b.OneF32(56, w.SolventDensity);
    b.OneF32(57, w.VbarA);
    b.OneF32(58, w.VbarB);
    b.OneF32(59, w.FringeMassA);
    b.OneF32(60, w.FringeMassB);
    b.OneI16(61, w.MassUnits);
    b.OneI16(62, w.NonIdeal);
    b.OneI16(63, w.SeparateK);
    b.Texts(64, w.ModelName, 1, w.ModelCount);
}

void HandTable(Layout& b, const Workspace& w) {
    const long rows = w.MaxSets;
    b.F32s(65, w.ScanRPM, 1, rows);
    b.F32s(66, w.SetSigmaScale, 1, rows);
    b.F32s(67, w.CellPath, 1, rows);
    b.F32s(68, w.SetSignalScale, 1, rows);
    b.F32s(69, w.ScanTemperature, 1, rows);
    b.F32s(70, w.ScanWavelength, 1, rows);
    b.F32s(71, w.ScanOmega2t, 1, rows);
    b.I16s(72, w.ScansAveraged, 1, rows);
    b.Field(73);
    for (long row = 1; row <= rows; ++row)
        b.I32(w.ScanTime[row]);
    b.Texts(74, w.ScanComment, 1, rows);
    b.I16s(75, w.ScanPoints, 1, rows);
    b.I16s(76, w.BaselinePoints, 1, rows);
    b.I16s(77, w.FitRange[0], 1, rows);
    const std::size_t range = b.Start[77];
    b.I16s(77, w.FitRange[1], 1, rows);
    b.Start[77] = range;
    b.I16s(78, w.CenterpieceType, 1, rows);
    b.I16s(79, w.DataChannel, 1, rows);
    b.Texts(80, w.ScanDirectory, 1, rows);
}

void HandScans(Layout& b, const Workspace& w) {
    const long rows = w.MaxSets;
    b.Texts(81, w.ScanFile, 1, rows);
    b.Field(82);
    for (long row = 1; row <= rows; ++row)
        b.I16(w.ScanFile[row].empty() ? 0 : -1);
    b.Field(83);
    for (long row = 1; row <= rows; ++row)
        if (w.ScanPoints[row] >= 1 && !w.ScanFile[row].empty()) {
            for (long p = 1; p <= w.ScanPoints[row]; ++p)
                b.F32(w.ScanRadius[row][p]);
            for (long p = 1; p <= w.ScanPoints[row]; ++p)
                b.F32(w.ScanValue[row][p]);
        }
    b.Texts(84, w.BaselineFile, 1, rows);
    b.Field(85);
    for (long row = 1; row <= rows; ++row)
        b.I16(w.BaselineFile[row] == "(none)" || w.ScanFile[row].empty() ? 0 : -1);
    b.Field(86);
    for (long row = 1; row <= rows; ++row)
        if (w.BaselinePoints[row] >= 1 && w.BaselineFile[row] != "(none)" && !w.ScanFile[row].empty()) {
            for (long p = 1; p <= w.BaselinePoints[row]; ++p)
                b.F32(w.BaselineRadius[row][p]);
            for (long p = 1; p <= w.BaselinePoints[row]; ++p)
                b.F32(w.BaselineValue[row][p]);
        }
}

void HandConstraints(Layout& b, const Workspace& w) {
    const long rows = w.MaxSets;
    b.I16s(87, w.IncludeSet, 1, rows);
    b.F32s(88, w.ConcConstraintA, 1, rows);
    b.F32s(89, w.ConcConstraintB, 1, rows);
    b.F32s(90, w.ConcToleranceA, 1, rows);
    b.F32s(91, w.ConcToleranceB, 1, rows);
    b.F32s(92, w.ConstraintFit[0], 1, rows);
    const std::size_t targets = b.Start[92];
    b.F32s(92, w.ConstraintFit[1], 1, rows);
    b.Start[92] = targets;
    b.I16s(93, w.OffsetLink, 1, rows);
    b.I16s(94, w.BaselineShifted, 1, rows);
    b.F32s(95, w.BaselineShift, 1, rows);
    b.F32s(96, w.BaselineRPM, 1, rows);
    b.F32s(97, w.ExtinctionRatio[0], 1, rows);
    b.F32s(98, w.ExtinctionRatio[1], 1, rows);
    b.OneI16(99, w.NameConvention);
    b.Texts(100, w.BaselineDirectory, 1, rows);
    b.OneText(101, w.BaselineDirectoryLast);
    b.OneText(102, w.LabelPrefix);
    b.OneI16(103, w.HighestSet);
    b.OneF32(104, w.RefrA);
    b.OneF32(105, w.RefrB);
    b.OneI16(106, w.InterferenceData);
    b.OneF32(107, w.ParmsAccuracy);
    b.Field(108); // the end
}

Layout WholeLayout(const Workspace& w) {
    Layout b;
    HandScalars(b, w);
    HandParameters(b, w);
    HandModel(b, w);
    HandTable(b, w);
    HandScans(b, w);
    HandConstraints(b, w);
    return b;
}

} // namespace

Bytes& Bytes::I16(long value) {
    PutBits(All, static_cast<std::uint64_t>(value), 2);
    return *this;
}
Bytes& Bytes::I32(long value) {
    PutBits(All, static_cast<std::uint64_t>(value), 4);
    return *this;
}
Bytes& Bytes::F32(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    PutBits(All, bits, 4);
    return *this;
}
Bytes& Bytes::F64(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    PutBits(All, bits, 8);
    return *this;
}
Bytes& Bytes::Text(const std::string& text) {
    I16(static_cast<long>(text.size()));
    All += text;
    return *this;
}

Workspace SampleFit() {
    Workspace w = FreshWorkspace();
    FillTable(w);
    IncludeRow(w, 1);
    IncludeRow(w, 3);
    AddTruePoints(w, 1);
    AddTruePoints(w, 2);
    FillConstraints(w);
    AddPoint(w, 2, PointMarker, 7.5F);
    AddPoint(w, 2, PointMarker, 2.5F);
    FillParameters(w);
    FillScalars(w);
    return w;
}

Workspace LargestFit() {
    constexpr long points = 1800;
    Workspace w = FreshWorkspace();
    FillParameters(w);
    FillScalars(w);
    w.NumParms = StandardMaxParms;
    for (long row = 1; row <= StandardMaxSets; ++row) {
        LoadScan(w, row, "scan" + std::to_string(row) + ".RA1", points, 6.0F);
        IncludeRow(w, row);
        w.SetPts[row] = points;
    }
    w.NumPts = static_cast<std::int16_t>(StandardMaxSets * points);
    w.PtX.Recreate(w.NumPts);
    w.PtY.Recreate(w.NumPts);
    w.PtSet.Recreate(w.NumPts);
    w.PtFit.Recreate(w.NumPts);
    for (long n = 1; n <= w.NumPts; ++n) {
        w.PtX[n] = std::sin(static_cast<float>(n));
        w.PtY[n] = std::cos(static_cast<float>(n));
        w.PtFit[n] = std::tan(static_cast<float>(n));
        w.PtSet[n] = static_cast<std::int16_t>(1 + (n - 1) / points);
    }
    w.HighestSet = StandardMaxSets;
    return w;
}

Workspace RichestFit() {
    Workspace w = LargestFit();
    w.ConstraintFlags = ConcentrationBit | OffsetBit;
    w.PtX.Recreate(0);
    w.PtY.Recreate(0);
    w.PtFit.Recreate(0);
    w.PtSet.Recreate(0);
    w.NumPts = 0;
    for (long row = 1; row <= StandardMaxSets; ++row) {
        const float odd = 1.0F / static_cast<float>(row);
        w.BaselineFile[row] = "base " + std::to_string(row) + ".RA1";
        w.BaselineDirectory[row] = "/data/base \xE4 " + std::to_string(row);
        w.BaselinePoints[row] = static_cast<std::int16_t>(2000 + row);
        w.BaselineRadius[row].Recreate(2000 + row, 5.9F + odd);
        w.BaselineValue[row].Recreate(2000 + row, 0.01F * odd);
        w.BaselineRPM[row] = 3000.0F * odd;
        w.BaselineShifted[row] = row % 2 == 0 ? FlagTrue : FlagFalse;
        w.BaselineShift[row] = 0.003F * odd;
        w.ConcConstraintA[row] = odd;
        w.ConcConstraintB[row] = 2.0F * odd;
        w.ConcToleranceA[row] = w.ConcToleranceB[row] = 0.1F * odd;
        w.ConstraintFit[0][row] = 3.0F * odd;
        w.ConstraintFit[1][row] = 4.0F * odd;
        w.OffsetLink[row] = static_cast<std::int16_t>(row > 1 ? 1 : 0);
        w.ExtinctionRatio[0][row] = 1.0F + odd;
        w.ExtinctionRatio[1][row] = 2.0F + odd;
        w.CenterpieceType[row] = static_cast<std::int16_t>(row % 2 == 0 ? 3 : 4);
        w.DataChannel[row] = static_cast<std::int16_t>(row % 4);
        w.SetPts[row] = 0;
        AddTruePoints(w, row);
        AddPoint(w, row, PointMarker, odd);
        AddPoint(w, row, PointMarker, -odd);
    }
    w.NumFree = StandardMaxParms;
    w.NormMatrix.Recreate(w.NumFree - 1, w.NumFree - 1);
    w.ParmLimits[0].Recreate(w.NumFree - 1);
    w.ParmLimits[1].Recreate(w.NumFree - 1);
    for (long a = 0; a < w.NumFree; ++a) {
        w.FreeMap[a] = w.FreeIndex[a] = static_cast<std::int16_t>(a);
        w.ParmLimits[0][a] = -0.5F * static_cast<float>(a);
        w.ParmLimits[1][a] = 0.75F * static_cast<float>(a);
        for (long b = 0; b < w.NumFree; ++b)
            w.NormMatrix(a, b) = 1.0 / static_cast<double>(1 + a + 3 * b);
    }
    return w;
}

std::string BytesByHand(const Workspace& w) {
    return WholeLayout(w).All;
}

std::size_t OffsetOfField(const Workspace& w, int field) {
    return WholeLayout(w).Start.at(field);
}

std::string WithI16(std::string bytes, std::size_t at, long value) {
    return bytes.replace(at, 2, Bytes{}.I16(value).All);
}

std::string WithF32(std::string bytes, std::size_t at, float value) {
    return bytes.replace(at, 4, Bytes{}.F32(value).All);
}

} // namespace Quillon
