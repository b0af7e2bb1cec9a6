#pragma once
// Signals of the 22 models worked out on paper, for one set of round numbers.
//
// a = 0.5, b = 0.2, offset 0; N = 2, M = 4 (models 3 and 6 as well as 2); constants K(slot 2) = 7,
// K(slot 4) = 5, K(slot 6) = 2, K(slot 7) = 3; path, extinction ratios and molar coefficients all 1, so that
// signals are molar amounts. A complex of i A and j B shows i + j.
//
// For example model 9: AB = 2*2*0.1 = 0.4, AB2 = 2*2*0.02 = 0.08, signal 0.7 + 2*0.4 + 3*0.08 = 1.74.

namespace Quillon {

struct HandValue {
    int Model;
    double Signal;
    double OfB; // the part of it that B units carry
};

inline constexpr HandValue HandValues[] = {
    {1, 0.5, 0.0},
    {2, 0.5 + 7 * 0.25, 0.0},
    {3, 0.5 + 7 * 0.25, 0.0},
    {4, 0.5 + 7 * 0.25 + 5 * 0.0625, 0.0},
    {5, 0.5 + 7 * 0.25 + 5 * 0.0625, 0.0},
    {6, 0.5 + 7 * 0.25 + 0.2, 0.0}, // the inactive monomer counts as A
    {7, 0.7, 0.2},
    {8, 1.10, 0.2 + 0.2},
    {9, 1.74, 0.2 + 0.4 + 2 * 0.08},
    {10, 2.06, 0.2 + 0.5 + 2 * 0.12},
    {11, 2.22, 0.2 + 0.4 + 2 * 0.24},
    {12, 5.38, 0.2 + 0.4 + 2 * 1.2 + 0.28},
    {13, 6.96, 0.2 + 0.5 + 2 * 1.66 + 0.28},
    {14, 4.22, 0.2 + 0.5 + 2 * 0.84},
    {15, 1.90, 0.2 + 0.2 + 2 * 0.2},
    {16, 3.10, 0.2 + 0.2 + 2 * 0.4 + 2 * 0.2},
    {17, 2.78, 0.2 + 0.2 + 2 * 0.4 + 2 * 0.12},
    {18, 3.18, 0.2 + 0.2 + 2 * 0.4 + 2 * 0.2 + 2 * 0.12},
    {19, 3.66, 0.2 + 0.2 + 2 * 0.4 + 2 * 0.28 + 2 * 0.2},
    {20, 3.34, 0.2 + 0.2 + 2 * 0.4 + 2 * 0.28 + 2 * 0.12},
    {21, 22.66, 0.2 + 0.4 + 2 * 1.76 + 2 * 0.28 + 2 * 3.68 + 0.2},
    {22, 38.36, 0.2 + 0.5 + 2 * 2.36 + 2 * 0.28 + 2 * 7.03 + 0.3},
};

} // namespace Quillon
