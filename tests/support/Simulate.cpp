#include "tests/support/Simulate.h"

#include "tests/support/ReferenceModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace Quillon {
namespace {

std::uint64_t RotatedLeft(std::uint64_t x, int by) {
    return (x << by) | (x >> (64 - by));
}

constexpr int Margin = 2; // points of a scan beyond each end of the fitted range

// M (1 - vbar rho) w^2 / (R T) in 1/cm^2, for M in kDa.
double SigmaOf(double kiloDalton, double vbar, double density, double rpm, double celsius) {
    const double omega = rpm * std::numbers::pi / 30.0;
    return kiloDalton * 1000.0 * (1.0 - vbar * density) * omega * omega / (83144710.0 * (celsius + 273.15));
}

float Single(double value) {
    return static_cast<float>(value);
}

void FillRow(Workspace& w, const SimulatedSet& set, long row, NoiseSource& jitter) {
    const long points = set.Points + 2 * Margin;
    w.ScanFile[row] = "set" + std::to_string(row) + ".RA1";
    w.ScanDirectory[row] = "/simulated";
    w.ScanComment[row] = "simulated";
    w.ScanTemperature[row] = set.Temperature;
    w.ScanRPM[row] = set.Rpm;
    w.ScanOmega2t[row] = 1e11F;
    w.ScanWavelength[row] = set.Wavelength;
    w.ScanTime[row] = 100000;
    w.ScansAveraged[row] = 32;
    w.ScanPoints[row] = ToInt16(points);
    w.FitRange[0][row] = ToInt16(1 + Margin);
    w.FitRange[1][row] = ToInt16(points - Margin);
    w.CellPath[row] = set.Path;
    w.ExtinctionRatio[0][row] = set.RatioA;
    w.ExtinctionRatio[1][row] = set.RatioB;
    w.IncludeSet[row] = 1;
    w.ScanRadius[row].Recreate(points);
    w.ScanValue[row].Recreate(points);
    // Radii in steps that vary a little, as an instrument takes them, to four decimals.
    const double step = (static_cast<double>(set.Outer) - set.Inner) / (set.Points - 1);
    for (long i = 1; i <= points; ++i) {
        const double wobble = 0.3 * (jitter.Uniform() - 0.5);
        const double r = set.Inner + step * (static_cast<double>(i - 1 - Margin) + wobble);
        w.ScanRadius[row][i] = Single(std::round(r * 1e4) / 1e4);
    }
    w.HighestSet = std::max(w.HighestSet, ToInt16(row));
}

void FillTable(Workspace& w, const ModelCase& theCase) {
    NoiseSource jitter(12345);
    w.IncludeSet[1] = 0;
    w.ExtinctionRatio[0][1] = theCase.FirstRowRatioA;
    w.ExtinctionRatio[1][1] = theCase.FirstRowRatioB;
    const auto count = static_cast<long>(theCase.Sets.size());
    for (long s = 1; s <= count; ++s) {
        const SimulatedSet& set = theCase.Sets[static_cast<std::size_t>(s - 1)];
        FillRow(w, set, set.Row > 0 ? set.Row : s, jitter);
    }
}

void SetModel(Workspace& w, const ModelCase& theCase) {
    w.Model = theCase.Model;
    w.NonIdeal = Flag(theCase.NonIdeal);
    w.SeparateK = Flag(theCase.SeparateK);
    w.LastModel = w.Model;
    w.LastNonIdeal = w.NonIdeal;
    w.LastSeparateK = w.SeparateK;
    w.ConcUnits = theCase.ConcUnits;
    // The coefficients of the other optics stand far off, so that reading them shows.
    const bool absorbance = w.ConcUnits <= 2;
    w.ExtA = absorbance ? theCase.ExtA : 3.0F * theCase.ExtA;
    w.ExtB = absorbance ? theCase.ExtB : 7.0F * theCase.ExtB;
    w.RefrA = absorbance ? 5.0F * theCase.ExtA : theCase.ExtA;
    w.RefrB = absorbance ? 2.0F * theCase.ExtB : theCase.ExtB;
    w.VbarA = 0.735F;
    w.VbarB = 0.725F;
    w.SolventDensity = 1.003994F;
    const long first = w.SetRow[1];
    const auto sigma = [&](double mass, float vbar) {
        return Single(SigmaOf(mass, vbar, w.SolventDensity, w.ScanRPM[first], w.ScanTemperature[first]));
    };
    w.Parms[0] = sigma(theCase.MassA, w.VbarA);
    w.Parms[1] = Single(theCase.N);
    w.Parms[2] = Single(theCase.LnK2);
    w.Parms[3] = Single(theCase.M);
    w.Parms[4] = Single(theCase.LnK4);
    w.Parms[5] =
        theCase.MassB > 0 ? sigma(theCase.MassB, w.VbarB) : 3.0F; // what an empty slot is filled with
    w.Parms[6] = Single(theCase.LnK6);
    w.Parms[7] = Single(theCase.Slot7);
}

// The slots of a set that hold constants or the offset; the concentrations follow from the wanted signal.
void SetOwnConstants(Workspace& w, const ModelCase& theCase, const SimulatedSet& set, long s) {
    w.Parms[SlotOffset(s)] = Single(set.Offset);
    if (!theCase.SeparateK) return;
    if (theCase.Model <= 6) w.Parms[SlotB(s)] = Single(set.LnK1);
    if (theCase.Model == 4 || theCase.Model == 5) w.Parms[SlotOffset(s)] = Single(set.LnK2);
    if (theCase.Model > 6) w.Parms[SlotOffset(s)] = Single(set.LnK1);
}

bool SlotBIsConcentration(const ModelCase& theCase) {
    return theCase.Model >= 6 && !(theCase.Model == 6 && theCase.SeparateK);
}

long LastTruePoint(const Workspace& w, long set) {
    long last = 0;
    for (long p = 1; p <= w.NumPts; ++p)
        if (w.PtSet[p] == set && w.PtX[p] != PointMarker) last = p;
    return last;
}

// Finds ln cA, with ln cB at its stated distance, so that the set's outer end shows the stated signal.
void SetConcentrations(Workspace& w, const ModelCase& theCase, const SimulatedSet& set, long s) {
    const long outer = LastTruePoint(w, s);
    const auto place = [&](double lnA) {
        w.Parms[SlotA(s)] = Single(lnA);
        if (SlotBIsConcentration(theCase)) w.Parms[SlotB(s)] = Single(lnA + std::log(set.ShareB));
    };
    const auto tooMuch = [&](double lnA) {
        place(lnA);
        try {
            Real signal = 0;
            for (const ReferenceSpecies& each : ReferenceSpeciesAt(w, ReferenceParms(w), outer))
                signal += each.Signal();
            return signal > set.OuterSignal;
        } catch (const std::domain_error&) {
            return true; // beyond the last non-ideal solution
        }
    };
    double low = -40.0, high = 10.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (tooMuch(middle) ? high : low) = middle;
    }
    place(low);
}

bool FitsThirdSlot(const Workspace& w, const ModelCase& theCase) {
    const bool isConstant = theCase.SeparateK && (w.Model == 4 || w.Model == 5 || w.Model > 6);
    return isConstant || theCase.FitOffsets;
}

void SetFitFlags(Workspace& w, const ModelCase& theCase) {
    w.NumParms = ToInt16(8 + 3 * w.NumSets);
    for (long i = 0; i <= w.FreeMap.Hi(); ++i)
        w.FreeMap[i] = SlotUnused;
    for (const long slot : theCase.Fitted)
        w.FreeMap[slot] = 0;
    for (long s = 1; s <= w.NumSets; ++s) {
        w.FreeMap[SlotA(s)] = 0;
        if (w.Model >= 6 || w.SeparateK != 0) w.FreeMap[SlotB(s)] = 0;
        w.FreeMap[SlotOffset(s)] = FitsThirdSlot(w, theCase) ? std::int16_t{0} : SlotHeld;
        if (w.OffsetLink[w.SetRow[s]] != 0) w.FreeMap[SlotOffset(s)] = SlotTied;
    }
    w.NumFree = 0;
    for (long i = 0; i < w.NumParms; ++i) {
        if (w.FreeMap[i] < 0) continue;
        w.FreeMap[i] = w.NumFree;
        w.FreeIndex[w.NumFree] = ToInt16(i);
        w.NumFree = ToInt16(w.NumFree + 1);
    }
}

void SetLinks(Workspace& w, const ModelCase& theCase) {
    for (long s = 1; s <= w.NumSets; ++s) {
        const int source = theCase.Sets[static_cast<std::size_t>(s - 1)].OffsetOf;
        if (source == 0) continue;
        w.OffsetLink[w.SetRow[s]] = w.SetRow[source];
        w.Parms[SlotOffset(s)] = w.Parms[SlotOffset(source)];
        w.ConstraintFlags = ToInt16(w.ConstraintFlags | OffsetBit);
    }
}

void SetLoadings(Workspace& w, const ModelCase& theCase) {
    for (long s = 1; s <= w.NumSets; ++s) {
        const SimulatedSet& set = theCase.Sets[static_cast<std::size_t>(s - 1)];
        const ReferenceMeans means = ReferenceMeansOf(w, ReferenceParms(w), s);
        const long row = w.SetRow[s];
        if (set.ToleranceA > 0) {
            w.ConcConstraintA[row] = static_cast<float>(means.A);
            w.ConcToleranceA[row] = set.ToleranceA;
        }
        if (set.ToleranceB > 0) {
            w.ConcConstraintB[row] = static_cast<float>(means.B);
            w.ConcToleranceB[row] = set.ToleranceB;
        }
        if (set.ToleranceA > 0 || set.ToleranceB > 0)
            w.ConstraintFlags = ToInt16(w.ConstraintFlags | ConcentrationBit);
    }
}

// Appends one set's points to the flat vectors, pseudo-points behind the true ones.
void FlattenSet(Workspace& w, long set, long& n) {
    const long row = w.SetRow[set];
    const long from = w.FitRange[0][row], to = w.FitRange[1][row];
    const double r1 = w.ScanRadius[row][from], r2 = w.ScanRadius[row][to];
    const double x0 = (r1 * r1 + r2 * r2) / 4.0;
    for (long p = from; p <= to; ++p) {
        const double r = w.ScanRadius[row][p];
        w.PtX[++n] = Single(r * r / 2.0 - x0);
        w.PtY[n] = w.ScanValue[row][p];
        w.PtSet[n] = ToInt16(set);
    }
    if ((w.ConstraintFlags & ConcentrationBit) == 0) return;
    const double outermost = w.PtY[n];
    const auto append = [&](double loading, double tolerance) {
        if (loading <= 0) return;
        w.PtX[++n] = PointMarker;
        w.PtY[n] = Single(loading * outermost / tolerance);
        w.PtSet[n] = ToInt16(set);
    };
    append(w.ConcConstraintA[row], w.ConcToleranceA[row]);
    append(w.ConcConstraintB[row], w.ConcToleranceB[row]);
}

} // namespace

NoiseSource::NoiseSource(std::uint64_t seed) {
    for (std::uint64_t& each : State) {
        std::uint64_t z = (seed += 0x9e3779b97f4a7c15U);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        each = z ^ (z >> 31);
    }
}

std::uint64_t NoiseSource::Bits() {
    const std::uint64_t result = RotatedLeft(State[1] * 5, 7) * 9;
    const std::uint64_t t = State[1] << 17;
    State[2] ^= State[0];
    State[3] ^= State[1];
    State[1] ^= State[2];
    State[0] ^= State[3];
    State[2] ^= t;
    State[3] = RotatedLeft(State[3], 45);
    return result;
}

double NoiseSource::Uniform() {
    return static_cast<double>(Bits() >> 11) * 0x1.0p-53;
}

double NoiseSource::Gaussian() {
    if (HasKept) {
        HasKept = false;
        return Kept;
    }
    double u = 0, v = 0, square = 0;
    do {
        u = 2 * Uniform() - 1;
        v = 2 * Uniform() - 1;
        square = u * u + v * v;
    } while (square >= 1 || square == 0);
    const double factor = std::sqrt(-2 * std::log(square) / square);
    Kept = v * factor;
    HasKept = true;
    return u * factor;
}

void FlattenTable(Workspace& w) {
    w.NumSets = 0;
    w.NumPts = 0;
    for (long row = 1; row <= Workspace::Rows; ++row) {
        w.SetRow[row] = 0;
        w.SetOfRow[row] = 0;
    }
    long most = 0;
    for (long row = 1; row <= Workspace::Rows; ++row) {
        if (w.IncludeSet[row] != 1) continue;
        w.NumSets = ToInt16(w.NumSets + 1);
        w.SetRow[w.NumSets] = ToInt16(row);
        w.SetOfRow[row] = w.NumSets;
        most += w.FitRange[1][row] - w.FitRange[0][row] + 3;
    }
    w.SetPts.Recreate(w.NumSets);
    w.PtX.Recreate(most);
    w.PtY.Recreate(most);
    w.PtSet.Recreate(most);
    const long first = w.SetRow[1];
    long n = 0;
    for (long s = 1; s <= w.NumSets; ++s) {
        const long row = w.SetRow[s], before = n;
        const double speeds = static_cast<double>(w.ScanRPM[row]) / w.ScanRPM[first];
        const double temperatures = static_cast<double>(w.ScanTemperature[first]) / w.ScanTemperature[row];
        w.SetSigmaScale[s] = Single(speeds * speeds * temperatures);
        w.SetSignalScale[s] = Single(static_cast<double>(w.CellPath[row]) / w.CellPath[first]);
        w.SetLabel[s] = w.ScanFile[row];
        FlattenSet(w, s, n);
        w.SetPts[s] = ToInt16(n - before);
    }
    w.NumPts = ToInt16(n);
    w.PtX.Resize(n);
    w.PtY.Resize(n);
    w.PtSet.Resize(n);
    w.PtFit.Recreate(n);
    w.PtResid.Recreate(n);
}

void DrawNoise(Workspace& w, const RealVector& truth, double noise, std::uint64_t seed) {
    NoiseSource source(seed);
    const RealVector values = ReferenceValues(w, truth);
    for (long s = 1; s <= w.NumSets; ++s) {
        const long row = w.SetRow[s];
        for (long p = 1; p <= w.ScanPoints[row]; ++p) // the margins; the range is written over below
            w.ScanValue[row][p] = Single(noise * source.Gaussian());
        long p = w.FitRange[0][row];
        for (long i = 1; i <= w.NumPts; ++i) {
            if (w.PtSet[i] != s || w.PtX[i] == PointMarker) continue;
            const Real value = values[static_cast<std::size_t>(i - 1)];
            w.ScanValue[row][p++] = static_cast<float>(value + Real(noise * source.Gaussian()));
        }
    }
    FlattenTable(w);
}

Workspace SimulatedWorkspace(const ModelCase& theCase) {
    Workspace w = FreshWorkspace();
    FillTable(w, theCase);
    FlattenTable(w);
    SetModel(w, theCase);
    for (long s = 1; s <= w.NumSets; ++s) {
        const SimulatedSet& set = theCase.Sets[static_cast<std::size_t>(s - 1)];
        SetOwnConstants(w, theCase, set, s);
        SetConcentrations(w, theCase, set, s);
    }
    SetLinks(w, theCase);
    SetLoadings(w, theCase);
    SetFitFlags(w, theCase);
    DrawNoise(w, ReferenceParms(w), theCase.Noise, theCase.Seed);
    w.DataChosen = FlagTrue;
    w.ModelChosen = FlagTrue;
    return w;
}

} // namespace Quillon
