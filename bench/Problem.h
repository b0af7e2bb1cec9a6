#pragma once
// The problems of the benchmarks: simulated experiments of a stated size, as plain arrays that know nothing
// of the program; everybody starts from the same parameters.

#include <string>
#include <vector>

namespace Quillon::Bench {

enum class Association { DimerTetramer, Complex }; // monomer - dimer - tetramer; A + B <-> AB

// Parameters as everybody uses them: global ones first (sigma, ln K1, ln K2; or ln K), then those of each
// set (ln c, offset; or ln cA, ln cB, offset).
struct Problem {
    Association Kind{};
    int Sets{};
    int PointsPerSet{};
    int Globals{}, PerSet{};
    std::vector<double> SigmaScale; // of each set
    // A + B <-> AB: sigmas of the two monomers, held; signal of AB over a * b, by set, without K.
    double SigmaA{}, SigmaB{};
    std::vector<double> ScaleA, ScaleB, SignalAB;
    std::vector<float> X, Y; // set after set
    std::vector<double> Start;

    int Parameters() const { return Globals + Sets * PerSet; }
    int Points() const { return Sets * PointsPerSet; }
};

double SpeedOf(int set); // rpm, sets from 0

Problem MakeProblem(Association kind, int sets, int pointsPerSet);

// The fitted value at a point of a set, and its derivatives by the globals and the set's parameters.
// derivs may be null. globals and own point at the parameters.
double Value(const Problem& p, int set, double x, const double* globals, const double* own, double* derivs);

double SumOfSquares(const Problem& p, const std::vector<double>& parameters);

// How a solver did.
struct Solution {
    std::vector<double> Parameters;
    int Iterations{};
};

// The relative change of the sum of squares at which everybody stops: 0.05 over the degrees of freedom.
double Tolerance(const Problem& p);

} // namespace Quillon::Bench
