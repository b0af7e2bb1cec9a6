#pragma once
// The profile of a parameter: the lowest sum of squares that the others leave at each of its values, and the
// limits that follow without any linear approximation.
//
// With S0 the sum at the minimum and n - m degrees of freedom, a value belongs to the interval of a level as
// long as
//
//     S / S0 <= 1 + F(1, n - m, 1 - level) / (n - m)
//
// and a pair of values to the region of a map with F(2, n - m, 1 - level) * 2 in its place (D. M. Bates and
// D. G. Watts, Nonlinear Regression Analysis and Its Applications, 1988, section 6.1; M. L. Johnson and L. M.
// Faunt, Methods in Enzymology 210 (1992) 1).

#include "workspace/records/Workspace.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

struct ProfileChoice {
    std::vector<double> Levels{0.683, 0.95}; // 0..1, ends excluded
    long Steps = 25;                         // values of the parameter, FewestSteps..LargestSteps
};
inline constexpr long FewestSteps = 3;
inline constexpr long LargestSteps = 1000;

// A value of the parameter and what the others leave there.
struct ProfilePoint {
    double Value = 0.0; // units of display
    double SumSq = 0.0; // infinite where the function has no value
    double Ratio = 0.0; // over the lowest sum
    bool Converged = false;
    PerSlot<float> Parms; // all parameters there, internal scale
};

struct ProfileLimits {
    double Level = 0.0;
    double Ratio = 0.0;                 // of sums, by the formula above
    std::optional<double> Lower, Upper; // units of display; unset where the ratio is not reached
};

struct Profile {
    long Slot = 0;
    std::string Name;
    double MinimumValue = 0.0; // of the parameter at the lowest sum, units of display
    double MinimumSumSq = 0.0;
    std::vector<ProfilePoint> Points; // by rising value, the minimum among them; evenly spread when complete
    std::vector<ProfileLimits> Limits;
    std::optional<Workspace> Better; // a lower minimum that was met on the way: what is told starts from it
    std::vector<std::string> Notes;  // sentences
    std::string Broken{};            // why it broke off in arithmetic; "" where it did not
    bool Complete = false;           // neither cancelled nor broken off before its points
};

// Evenly spread values, the minimum among them, over three errors on both sides, widened until the highest
// level is passed or a bound is met; at each the others are fitted from the values of its neighbour. Limits
// are sought between two values to 0.1% of their distance from the minimum. told(n, all) of the values that
// have been fitted. Work stays as it is, but for Work.AbortFit, which cancels and is left for the caller to
// clear; what there is by then is in the result. The slot is a fitted one of a fit that stands.
Profile ProfileParameter(long slot, const ProfileChoice& choice,
                         const std::function<void(long done, long all)>& told);

// 1 + count F(count, freedom, 1 - level) / freedom.
double RatioOfLevel(double level, long count, long freedom);

// The ratio of each level.
std::vector<double> RatiosOf(const std::vector<ProfileLimits>& levels);

// True when there is a fit that stands, and the slot is one that it has fitted.
bool CanProfile(long slot);

} // namespace Quillon
