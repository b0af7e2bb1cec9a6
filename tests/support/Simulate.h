#pragma once
// Experiments with a known truth: a workspace filled with data sets whose signal is that of the reference
// model at stated parameters plus Gaussian noise.

#include "tests/support/RealMatrix.h"
#include "workspace/records/Workspace.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// Random numbers that are the same on every machine: xoshiro256** (Blackman and Vigna, 2018) started by
// splitmix64, normal deviates by Marsaglia's polar method.
class NoiseSource {
public:
    explicit NoiseSource(std::uint64_t seed);
    std::uint64_t Bits();
    double Uniform();  // on [0, 1)
    double Gaussian(); // mean 0, variance 1

private:
    std::array<std::uint64_t, 4> State{};
    double Kept = 0;
    bool HasKept = false;
};

// One data set of an experiment.
struct SimulatedSet {
    float Rpm = 14000;
    float Inner = 6.85F; // cm
    float Outer = 7.15F;
    double OuterSignal = 1.0; // signal at the outer end without offset; sets the concentrations
    double ShareB = 1.0;      // signal of free B over that of free A at the reference radius, as of set 1
    int Points = 70;
    float Temperature = 20.0F; // degrees Celsius
    float Path = 1.2F;         // cm
    float RatioA = 1.0F;       // extinction relative to the first row
    float RatioB = 1.0F;
    float Wavelength = 280.0F; // nm
    double Offset = 0.0;
    double LnK1 = 0.0; // the set's own constants, where the case has SeparateK; model 8 and 9: LnK1
    double LnK2 = 0.0;
    float ToleranceA = 0.0F; // a constraint at the true mean with this tolerance; 0: none
    float ToleranceB = 0.0F;
    int OffsetOf = 0; // set that the zero offset is tied to; its Offset is then not used
    int Row = 0;      // row of the table; 0: the number of the set
};

// A model with its true parameters and the experiment to find them by.
struct ModelCase {
    std::string Name;
    std::int16_t Model = 1;
    bool NonIdeal = false;
    bool SeparateK = false;
    double MassA = 40.0; // kDa
    double MassB = 0.0;
    double N = 2.0;
    double M = 4.0;
    double LnK2 = 0.0; // slot 2
    double LnK4 = 0.0; // slot 4
    double LnK6 = 0.0; // slot 6
    double Slot7 = 0.0;
    std::vector<long> Fitted; // global slots that are fitted; the sets' concentrations always are
    bool FitOffsets = true;
    float ExtA = 40000.0F; // L/(mol cm)
    float ExtB = 25000.0F;
    std::int16_t ConcUnits = 0;
    double Noise = 0.004; // standard deviation of a point
    std::vector<SimulatedSet> Sets;
    std::uint64_t Seed = 1;
    float FirstRowRatioA = 1.0F; // ratios of the table's row 1 where no set stands in it
    float FirstRowRatioB = 1.0F;
};

// Fills a fresh workspace for the case: the table of data sets, the flat vectors, model, options and
// constraints, Parms at the truth, the fit flags with FreeIndex and NumFree. Scans hold two points on each
// side of the fitted range. BuildFitData over the same table gives the same vectors.
Workspace SimulatedWorkspace(const ModelCase& theCase);

// Fresh noise on the same truth: signals of the table and flat vectors. noise 0 gives the rounded truth.
void DrawNoise(Workspace& w, const RealVector& truth, double noise, std::uint64_t seed);

// The flat vectors from the rows of the table that are included: PtX, PtY, PtSet, SetPts, SetRow, scales.
void FlattenTable(Workspace& w);

} // namespace Quillon
