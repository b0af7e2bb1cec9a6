#pragma once
// What of a set's residuals runs in long waves along the cell. Noise has as much of every wave length; a
// curve that misses its data lies above them for a stretch and below them for the next, which are long waves,
// and shows there long before it shows in the sum of squares.
//
// The residuals r_i of n points in a row, i from 0, are taken apart into cosines (the discrete cosine
// transform: N. Ahmed, T. Natarajan and K. R. Rao, IEEE Transactions on Computers C-23 (1974) 90),
//
//     a_k = sqrt(2 / n) sum of r_i cos(pi k (i + 1/2) / n),     a_0 = sqrt(1 / n) sum of r_i
//
// whose squares add up to those of the residuals. Of noise of the variance s^2 each square has the mean s^2.
// The first six waves are the long ones; up to the thirtieth they are of middle length. Noise that runs on
// over a few points, as readings of some instruments do, is about alike in both.

#include <vector>

namespace Quillon {

// Squares of so many waves.
struct WaveSquares {
    double Sum = 0.0;
    double Count = 0.0;

    void Add(const WaveSquares& other) {
        Sum += other.Sum;
        Count += other.Count;
    }
    double Mean() const { return Sum / Count; } // Count above 0
};

struct Waves {
    WaveSquares Long;
    WaveSquares Middle; // those of middle length
    WaveSquares Others; // all but the long ones
};

// cos(pi (i + 1/2) / n) of each of n points. Most sets of a fit have as many as the one before.
struct FirstWave {
    std::vector<double> Cosines;
};

// Of residuals in the order of the radius. A set of fewer than 24 points has fewer long waves, a quarter of
// its points. wave is that of the former call, any at first, and is left as that of so many points.
Waves WavesOf(const std::vector<double>& residuals, FirstWave& wave);
inline Waves WavesOf(const std::vector<double>& residuals) {
    FirstWave wave;
    return WavesOf(residuals, wave);
}

// By how many standard deviations the mean of the one stands above that of the other, as a normal deviate
// that is exceeded as often as the ratio of two variances of these degrees of freedom (E. Paulson, Annals of
// Mathematical Statistics 13 (1942) 233); as infinity where only the second one is 0.
double DeviationsAbove(const WaveSquares& squares, const WaveSquares& noise);

} // namespace Quillon
