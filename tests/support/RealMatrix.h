#pragma once
// Vectors and matrices in long double, for the independent computations of the tests. Everything counts
// from zero here.

#include <cstddef>
#include <vector>

namespace Quillon {

using Real = long double;
using RealVector = std::vector<Real>;

struct RealMatrix {
    std::size_t Rows = 0;
    std::size_t Columns = 0;
    RealVector Items; // row by row

    RealMatrix() = default;
    RealMatrix(std::size_t rows, std::size_t columns) : Rows(rows), Columns(columns), Items(rows * columns) {}
    Real& operator()(std::size_t i, std::size_t j) { return Items[i * Columns + j]; }
    const Real& operator()(std::size_t i, std::size_t j) const { return Items[i * Columns + j]; }
};

} // namespace Quillon
