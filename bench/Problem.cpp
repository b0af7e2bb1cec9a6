#include "bench/Problem.h"

#include <cmath>
#include <random>

namespace Quillon::Bench {

namespace {

constexpr double TrueSigma = 0.9;
constexpr double TrueLnK[2] = {1.2, 2.5};
constexpr double HeteroLnK = 11.5; // L/mol
constexpr double Extinction = 10000.0;
constexpr double Path = 1.2;

// The highest signal of a set, at its outer end: between 0.5 and 1.3, as one loads a cell.
double OuterSignal(int set) {
    return 0.5 + 0.16 * (set % 6);
}

constexpr double OuterX = 0.7; // at the outer radius, cm^2

// The ln c that gives a set its signal: by bisection, since the association makes it implicit.
void LoadCell(const Problem& p, int set, const double* globals, double* own) {
    double low = -40.0;
    double high = 5.0;
    for (int pass = 0; pass < 60; ++pass) {
        own[0] = 0.5 * (low + high);
        if (p.PerSet == 3)
            own[1] = own[0] + (set % 3 - 1) * 0.7 -
                     OuterX * p.SigmaScale[static_cast<std::size_t>(set)] * (p.SigmaB - p.SigmaA);
        (Value(p, set, OuterX, globals, own, nullptr) < OuterSignal(set) ? low : high) = own[0];
    }
    own[p.PerSet - 1] = 0.004 * (set % 3 - 1);
}

void FillTruth(const Problem& p, std::vector<double>& truth) {
    truth.assign(static_cast<std::size_t>(p.Parameters()), 0.0);
    if (p.Kind == Association::DimerTetramer) {
        truth[0] = TrueSigma;
        truth[1] = TrueLnK[0];
        truth[2] = TrueLnK[1];
    } else {
        truth[0] = HeteroLnK;
    }
    for (int s = 0; s < p.Sets; ++s)
        LoadCell(p, s, truth.data(), truth.data() + p.Globals + s * p.PerSet);
}

} // namespace

double SpeedOf(int set) {
    return 10000.0 + 4000.0 * (set % 3);
}

Problem MakeProblem(Association kind, int sets, int pointsPerSet) {
    Problem p;
    p.Kind = kind;
    p.Sets = sets;
    p.PointsPerSet = pointsPerSet;
    p.Globals = kind == Association::DimerTetramer ? 3 : 1;
    p.PerSet = kind == Association::DimerTetramer ? 2 : 3;
    p.SigmaA = 0.7;
    p.SigmaB = 1.1;
    std::vector<double> truth;
    for (int s = 0; s < sets; ++s) {
        const double speed = SpeedOf(s) / SpeedOf(0);
        p.SigmaScale.push_back(static_cast<double>(static_cast<float>(speed * speed)));
        // Two wavelengths: in every other set A absorbs less and B more.
        p.ScaleA.push_back(s % 2 ? 0.5 : 1.0);
        p.ScaleB.push_back(s % 2 ? 1.5 : 1.0);
        p.SignalAB.push_back((p.ScaleA.back() + p.ScaleB.back()) / (Extinction * Path));
    }
    FillTruth(p, truth);
    std::mt19937 random(20);
    std::normal_distribution<double> noise(0.0, 0.005);
    for (int s = 0; s < sets; ++s)
        for (int i = 0; i < pointsPerSet; ++i) {
            const double radius = 6.9 + 0.2 * i / (pointsPerSet - 1);
            const double x = radius * radius / 2.0 - (6.9 * 6.9 + 7.1 * 7.1) / 4.0;
            p.X.push_back(static_cast<float>(x));
            const double* own = truth.data() + p.Globals + s * p.PerSet;
            p.Y.push_back(static_cast<float>(
                Value(p, s, static_cast<double>(p.X.back()), truth.data(), own, nullptr) + noise(random)));
        }
    p.Start = truth;
    if (kind == Association::DimerTetramer) {
        p.Start[0] *= 1.15;
        p.Start[1] -= 0.7;
        p.Start[2] -= 0.9;
    } else {
        p.Start[0] -= 0.8;
    }
    for (int s = 0; s < sets; ++s) {
        double* own = p.Start.data() + p.Globals + s * p.PerSet;
        for (int j = 0; j + 1 < p.PerSet; ++j)
            own[j] += s % 2 ? 0.3 : -0.3;
        own[p.PerSet - 1] = 0.0;
    }
    for (double& v : p.Start)
        v = static_cast<double>(static_cast<float>(v)); // the engine holds singles
    return p;
}

double Value(const Problem& p, int set, double x, const double* globals, const double* own, double* derivs) {
    const auto s = static_cast<std::size_t>(set);
    if (p.Kind == Association::DimerTetramer) {
        const double k1 = std::exp(globals[1]);
        const double k2 = std::exp(globals[2]);
        const double a = std::exp(x * p.SigmaScale[s] * globals[0] + own[0]);
        const double dimer = k1 * a * a;
        const double tetramer = k2 * a * a * a * a;
        if (derivs) {
            const double slope = a + 2.0 * dimer + 4.0 * tetramer;
            derivs[0] = slope * x * p.SigmaScale[s];
            derivs[1] = dimer;
            derivs[2] = tetramer;
            derivs[3] = slope;
            derivs[4] = 1.0;
        }
        return a + dimer + tetramer + own[1];
    }
    const double a = std::exp(x * p.SigmaScale[s] * p.SigmaA + own[0]);
    const double b = std::exp(x * p.SigmaScale[s] * p.SigmaB + own[1]);
    const double ab = std::exp(globals[0]) * p.SignalAB[s] * a * b;
    if (derivs) {
        derivs[0] = ab;
        derivs[1] = p.ScaleA[s] * a + ab;
        derivs[2] = p.ScaleB[s] * b + ab;
        derivs[3] = 1.0;
    }
    return p.ScaleA[s] * a + p.ScaleB[s] * b + ab + own[2];
}

double SumOfSquares(const Problem& p, const std::vector<double>& v) {
    double sum = 0.0;
    for (int s = 0; s < p.Sets; ++s)
        for (int i = 0; i < p.PointsPerSet; ++i) {
            const auto at = static_cast<std::size_t>(s * p.PointsPerSet + i);
            const double r =
                static_cast<double>(p.Y[at]) - Value(p, s, static_cast<double>(p.X[at]), v.data(),
                                                     v.data() + p.Globals + s * p.PerSet, nullptr);
            sum += r * r;
        }
    return sum;
}

double Tolerance(const Problem& p) {
    return 0.05 / (p.Points() - p.Parameters());
}

} // namespace Quillon::Bench
