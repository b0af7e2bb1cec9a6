#include "fit/equations/FDistribution.h"

#include "platform/Narrow.h"

#include <array>
#include <cmath>

namespace Quillon {

namespace {

// Lanczos' series for ln Gamma, g = 5, six terms (C. Lanczos, SIAM J. Numer. Anal. B 1, 86, 1964). The table
// fills itself at first use.
const std::array<double, 6>& LanczosCoefficients() {
    static const std::array<double, 6> table{76.18009172947146,  -86.50532032941677,    24.01409824083091,
                                             -1.231739572450155, 0.1208650973866179e-2, -0.5395239384953e-5};
    return table;
}

// I_x(a, b) with y = 1 - x handed in, which for a small y would be lost in the difference.
double BetaRegularised(double a, double b, double x, double y) {
    double front = 0.0;
    if (x > 0.0 && y > 0.0)
        front = std::exp(LogGamma(a + b) - LogGamma(a) - LogGamma(b) + a * std::log(x) + b * std::log(y));
    if (x < (a + 1.0) / (a + b + 2.0)) return front * BetaFraction(a, b, x) / a;
    return 1.0 - front * BetaFraction(b, a, y) / b;
}

double UpperTail(double f, double n1, double n2) {
    const double sum = n2 + n1 * f;
    return BetaRegularised(0.5 * n2, 0.5 * n1, n2 / sum, n1 * f / sum);
}

// The tail falls with F: widen by halving and doubling from 1, then halve the bracket to the last bit that a
// single can tell apart.
double FWithTail(double p, double n1, double n2) {
    double low = 1.0;
    double high = 1.0;
    while (UpperTail(low, n1, n2) < p && low > 1e-300)
        low *= 0.5;
    while (UpperTail(high, n1, n2) > p && high < 1e300)
        high *= 2.0;
    for (int pass = 0; pass < 200 && high - low > 1e-12 * high; ++pass) {
        const double middle = 0.5 * (low + high);
        (UpperTail(middle, n1, n2) > p ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

struct BrentState {
    float a, b, c;
    float fa, fb, fc;
    float d, e; // the step before, and the one before that
};

// A step as the quotient p / q with p not below 0: it is looked at before it is divided.
struct Quotient {
    float p, q;
};

// Inverse quadratic interpolation, or a secant where only two points are at hand (Brent, chapter 4, procedure
// zero).
Quotient Interpolated(const BrentState& s, float middle) {
    const float ratio = s.fb / s.fa;
    Quotient step{2.0F * middle * ratio, 1.0F - ratio};
    if (s.a != s.c) {
        const float u = s.fa / s.fc;
        const float r = s.fb / s.fc;
        step.p = ratio * (2.0F * middle * u * (u - r) - (s.b - s.a) * (r - 1.0F));
        step.q = (u - 1.0F) * (r - 1.0F) * (ratio - 1.0F);
    }
    if (step.p > 0.0F) step.q = -step.q;
    step.p = std::fabs(step.p);
    return step;
}

// Bisection where interpolation would leave three quarters of the bracket, or would not be half of the step
// before the last one: so the bracket closes in at least as fast as by halving every other time.
void ChooseStep(BrentState& s, float tolerance, float middle) {
    if (std::fabs(s.e) < tolerance || std::fabs(s.fa) <= std::fabs(s.fb)) {
        s.d = s.e = middle;
        return;
    }
    const auto [p, q] = Interpolated(s, middle);
    if (2.0F * p < 3.0F * middle * q - std::fabs(tolerance * q) && p < std::fabs(0.5F * s.e * q)) {
        s.e = s.d;
        s.d = p / q;
    } else {
        s.d = s.e = middle;
    }
}

// b and c on either side of the root, b the better one.
void Order(BrentState& s) {
    if (SameSign(s.fb, s.fc)) {
        s.c = s.a;
        s.fc = s.fa;
        s.d = s.e = s.b - s.a;
    }
    if (!(std::fabs(s.fc) < std::fabs(s.fb))) return;
    s.a = s.b;
    s.b = s.c;
    s.c = s.a;
    s.fa = s.fb;
    s.fb = s.fc;
    s.fc = s.fa;
}

// The bracket a, b by a factor to the side of the root, which lies nearer to 0 where g is not above 0 at b.
void Widen(const std::function<float(float)>& g, BrentState& s, float factor) {
    if (s.fb <= 0.0F) {
        s.b = s.a;
        s.fb = s.fa;
        s.a /= factor;
        s.fa = g(s.a);
    } else {
        s.a = s.b;
        s.fa = s.fb;
        s.b *= factor;
        s.fb = g(s.b);
    }
}

// Brent's method on a bracket; every evaluation may set stop. b is the best point, a the one before it, c the
// other end of the bracket. The tolerance is half a unit in the last place of a single beside the accuracy
// that a step length is worth. A bracket of singles is halved down to nothing in fewer than 200 passes.
float CloseIn(const std::function<float(float)>& g, BrentState s, const bool& stop) {
    s.c = s.b;
    s.fc = s.fb;
    s.d = s.e = s.b - s.a;
    for (int pass = 0; pass < 200; ++pass) {
        Order(s);
        const float tolerance = std::fabs(s.b) * 6e-8F + 2.5e-5F;
        const float middle = 0.5F * (s.c - s.b);
        if (std::fabs(middle) <= tolerance || s.fb == 0.0F) return s.b;
        ChooseStep(s, tolerance, middle);
        s.a = s.b;
        s.fa = s.fb;
        s.b += std::fabs(s.d) > tolerance ? s.d : std::copysign(tolerance, middle);
        s.fb = g(s.b);
        if (stop) return 0.0F;
    }
    return s.b;
}

} // namespace

// ln Gamma(x) = (x + 1/2) ln(x + g + 1/2) - (x + g + 1/2) + ln(sqrt(2 pi) series(x) / x), with g = 5 and the
// series c0 + c1 / (x + 1) + ... + c6 / (x + 6) (Lanczos, 1964): an error below 2e-10 for all positive x.
double LogGamma(double x) {
    const double t = x + 5.5 - (x + 0.5) * std::log(x + 5.5);
    double series = 1.000000000190015;
    double place = x;
    for (const double c : LanczosCoefficients())
        series += c / ++place;
    return -t + std::log(2.5066282746310005 * series / x);
}

// 1 + d1 / (1 + d2 / (1 + ...)) with
//     d(2m)     =  m (b - m) x / ((a + 2m - 1) (a + 2m))
//     d(2m + 1) = -(a + m) (a + b + m) x / ((a + 2m) (a + 2m + 1))
// (A&S 26.5.8), by the recurrence of its convergents A/B, two at a time. It takes some root of the larger of
// a and b steps; 20000 serve for more points than a fit can hold.
double BetaFraction(double a, double b, double x) {
    double am = 1.0;
    double bm = 1.0;
    double value = 1.0;
    double bz = 1.0 - (a + b) * x / (a + 1.0);
    for (int m = 1; m <= 20000; ++m) {
        const double dm = m;
        const double twice = dm + dm;
        const double even = dm * (b - dm) * x / ((a + twice - 1.0) * (a + twice));
        const double ap = value + even * am;
        const double bp = bz + even * bm;
        const double odd = -(a + dm) * (a + b + dm) * x / ((a + twice) * (a + twice + 1.0));
        const double app = ap + odd * value;
        const double bpp = bp + odd * bz;
        const double before = value;
        am = ap / bpp; // renormalised, so that neither overflows
        bm = bp / bpp;
        value = app / bpp;
        bz = 1.0;
        if (static_cast<float>(std::fabs(value - before)) <= static_cast<float>(std::fabs(value) * 1e-10))
            break;
    }
    return value;
}

float BetaIncomplete(float a, float b, float x) {
    const double dx = static_cast<double>(x);
    return static_cast<float>(BetaRegularised(static_cast<double>(a), static_cast<double>(b), dx, 1.0 - dx));
}

float FProbability(float f, float n1, float n2) {
    return static_cast<float>(
        UpperTail(static_cast<double>(f), static_cast<double>(n1), static_cast<double>(n2)));
}

double FTail(double f, double n1, double n2) {
    return UpperTail(f, n1, n2);
}

float FInverse(float alpha, float n1, float n2) {
    if (!(alpha > 0.0F && alpha < 1.0F && n1 >= 1.0F && n2 >= 1.0F)) RaiseError(ErrorText::BadArgument);
    return ToSingle(FWithTail(static_cast<double>(alpha), static_cast<double>(n1), static_cast<double>(n2)));
}

bool SameSign(float a, float b) {
    return (a < 0.0F) == (b < 0.0F);
}

float FindRoot(const std::function<float(float)>& g, float guess, const bool& stop) {
    BrentState s{};
    s.a = 0.9F * guess;
    s.b = 1.1F * guess;
    s.fa = g(s.a);
    if (stop) return 0.0F;
    s.fb = g(s.b);
    // Wider by growing factors: 30 of them reach 30! = 3e32 times the guess, beyond any step.
    for (float k = 2.0F; !stop && SameSign(s.fa, s.fb); k += 1.0F) {
        if (k > 30.0F) RaiseError(ErrorText::BadArgument); // no sign change anywhere near
        Widen(g, s, k);
    }
    return stop ? 0.0F : CloseIn(g, s, stop);
}

} // namespace Quillon
