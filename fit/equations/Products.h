#pragma once
// Sums of products of columns: the normal equations' D^T D and D^T r, many sums at a time.
//
// Each sum grows by one product a point, in the order of the points, and begins with what it held before, so
// that its bits are those of a plain loop. What is done at once are different sums: four neighbouring columns
// lie side by side in a register, and each row's value at a point is multiplied with all four.

#include <array>

namespace Quillon {

inline constexpr long ProductPoints = 256; // points of a call at most
inline constexpr int ProductColumns = 12;  // columns at most
inline constexpr int ProductRows = ProductColumns + 1;

// The columns, and a last row that is multiplied with them and not with itself.
struct ProductOperands {
    int Count = 0;   // columns
    long Points = 0; // of each
    std::array<const double*, ProductColumns> Column{};
    const double* Last = nullptr;
};

// Sum[a][b] of columns a and b <= a; Sum[Count][b] of the last row and column b. Above the diagonal stands
// nothing of use.
using ProductSums = std::array<std::array<double, ProductColumns>, ProductRows>;

void AddProducts(ProductSums& sums, const ProductOperands& operands);

} // namespace Quillon
