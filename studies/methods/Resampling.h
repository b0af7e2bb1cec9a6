#pragma once
// Resampling: the fit repeated on data that could have been measured just as well, and how its parameters
// scatter. It needs no linear errors and no quadratic minimum.
//
// Parametric: the fitted values with Gaussian noise, of each set's own size s = rms sqrt(n / (n - m)) with n
// points and m parameters of the fit. Residuals: the fitted values with the residuals of the set, drawn in
// blocks of neighbours along the radius (H. R. Kuensch, Annals of Statistics 17 (1989) 1217; closed to a
// circle, so that all residuals are drawn equally often), centred, and stretched by the same root and by what
// blocks lose (studies/methods/BlockLength.h). Loading constraints stay as they are.
//
// B. Efron and R. J. Tibshirani, An Introduction to the Bootstrap (1993), chapters 6, 9 and 13.

#include "workspace/records/Counts.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

enum class ResampleKind { Parametric, Residuals };

struct ResampleChoice {
    long Count = 200; // fits, 1..LargestResampleCount
    ResampleKind Kind = ResampleKind::Parametric;
    double Level = 0.95; // of the interval between the quantiles, 0..1, ends excluded
    std::uint64_t Seed = 1;
};
inline constexpr long LargestResampleCount = 100000;

// One of the fits.
struct Draw {
    bool Ended = false;     // false for one that a cancel has left out
    bool Converged = false; // at a minimum
    double SumSq = 0.0;
    std::vector<double> Values;  // of Resampling::Slots, in units of display; empty unless converged
    std::vector<double> Derived; // of Resampling::Derived
};

// A quantity that follows from an association constant (reporting/values/DerivedConstants.h).
struct DerivedQuantity {
    long Slot = 0;
    std::string Name;     // as the parameter is named
    std::string Quantity; // "log10_k", "kd", "delta_g_kj"
    std::string Unit;
};

// How a quantity scatters over the fits that have converged.
struct Spread {
    double Mean = 0.0;
    double Sd = 0.0; // with n - 1; 0 of one value
    double Median = 0.0;
    double Lower = 0.0, Upper = 0.0; // quantiles (1 - level) / 2 and (1 + level) / 2
    // Standard errors of these two: from the order statistics a binomial deviation above and below.
    double LowerError = 0.0, UpperError = 0.0;
};

struct Resampling {
    ResampleChoice Choice;
    std::vector<long> Slots;              // the fitted ones, in the order of the free positions
    std::vector<std::string> Names;       // of the slots
    std::vector<long> BlockLengths;       // of residuals in blocks, for each set; empty for the other kind
    std::vector<Draw> Draws;              // Choice.Count of them
    long Ended = 0, Failed = 0;           // fits, and those of them that came to no minimum
    std::string Broken;                   // of these, what broke off in arithmetic (BrokenText); or ""
    std::vector<DerivedQuantity> Derived; // of the fitted constants that have a value in molar terms
    std::vector<Spread> Spreads;          // for each slot; empty where no fit has converged
    std::vector<Spread> DerivedSpreads;   // for each derived quantity
    std::vector<std::vector<double>> Correlations; // lower triangle, over the draws that have converged
    // The same of each derived quantity with all parameters.
    std::vector<std::vector<double>> DerivedCorrelations;
    bool Complete = false; // not cancelled
};

// True when there is a fit to be resampled: it stands, and so do its points.
bool CanResample();

// Draws and fits, each from the values of the fit. told(n) after n of them. Work stays as it is, but for
// Work.AbortFit, which cancels and is left for the caller to clear; what has ended is in the result.
Resampling Resample(const ResampleChoice& choice, const std::function<void(long done)>& told);

// The place of a quantity where the fitted parameters stand first and what is derived behind them: of a slot,
// with quantity "" the parameter itself. Nothing where the slot is not fitted or has no value in molar terms.
std::optional<std::size_t> PlaceOfQuantity(const Resampling& resampling, long slot,
                                           const std::string& quantity);

// The parameter that another one goes together with most over the fits, in words: "Ln K(1>N) goes together
// with Ln c(A,mon), set 7: correlation -0.998." Empty below 0.9, and of one parameter.
std::string PartnerText(const Resampling& resampling, std::size_t parameter);

// How well the limits are known, in words: "The limits are known to 8% of the standard deviation." and what
// to do about it where that is too little. Empty where nothing has converged.
std::string QuantileText(const Resampling& resampling);

// Their pieces.

// The quantile p (0..1) of rising values, at least one, linear between the order statistics: at place
// (n - 1) p from 0.
double Quantile(const std::vector<double>& rising, double p);

// The spread of values in any order, at least one.
Spread SpreadOf(std::vector<double> values, double level);

} // namespace Quillon
