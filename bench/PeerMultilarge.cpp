// GSL's gsl_multilarge_nlinear, which keeps the normal equations alone: trust region with dogleg steps,
// Cholesky, analytic derivatives. What the residuals and the derivatives of one place share is computed once.
#include "bench/Problem.h"

#include <gsl/gsl_multilarge_nlinear.h>

#include <algorithm>
#include <cmath>

namespace Quillon::Bench {

namespace {

// The exponentials of all points at the latest place.
struct Model {
    const Problem& P;
    std::vector<double> Place{};
    std::vector<double> A{}, B{};

    void MoveTo(const gsl_vector* v) {
        if (std::equal(Place.begin(), Place.end(), v->data, v->data + v->size)) return;
        Place.assign(v->data, v->data + v->size);
        const bool dimer = P.Kind == Association::DimerTetramer;
        A.resize(static_cast<std::size_t>(P.Points()));
        if (!dimer) B.resize(A.size());
        for (int s = 0; s < P.Sets; ++s) {
            const auto set = static_cast<std::size_t>(s);
            const double* own = Own(s);
            const double sigmaA = P.SigmaScale[set] * (dimer ? Place[0] : P.SigmaA);
            const double sigmaB = P.SigmaScale[set] * P.SigmaB;
            const auto first = set * static_cast<std::size_t>(P.PointsPerSet);
            for (std::size_t i = first; i < first + static_cast<std::size_t>(P.PointsPerSet); ++i) {
                const double x = static_cast<double>(P.X[i]);
                A[i] = std::exp(x * sigmaA + own[0]);
                if (!dimer) B[i] = std::exp(x * sigmaB + own[1]);
            }
        }
    }
    const double* Own(int s) const { return Place.data() + P.Globals + s * P.PerSet; }
};

// What is constant for a set.
struct Constants {
    double K1{}, K2{}, Scale{}, ScaleA{}, ScaleB{};
    Constants(const Model& m, int s) {
        const auto set = static_cast<std::size_t>(s);
        Scale = m.P.SigmaScale[set];
        ScaleA = m.P.ScaleA[set];
        ScaleB = m.P.ScaleB[set];
        if (m.P.Kind == Association::DimerTetramer) {
            K1 = std::exp(m.Place[1]);
            K2 = std::exp(m.Place[2]);
        } else {
            K1 = std::exp(m.Place[0]) * m.P.SignalAB[set];
        }
    }
};

// Value at a point, and derivatives by the globals and the set's parameters.
double PointOf(const Model& m, const Constants& c, const double* own, std::size_t i, double* d) {
    const double a = m.A[i];
    if (m.P.Kind == Association::DimerTetramer) {
        const double a2 = a * a, dimer = c.K1 * a2, tetramer = c.K2 * a2 * a2;
        if (d) {
            d[3] = a + 2.0 * dimer + 4.0 * tetramer;
            d[0] = d[3] * static_cast<double>(m.P.X[i]) * c.Scale;
            d[1] = dimer;
            d[2] = tetramer;
            d[4] = 1.0;
        }
        return a + dimer + tetramer + own[1];
    }
    const double b = m.B[i], ab = c.K1 * a * b;
    if (d) {
        d[0] = ab;
        d[1] = c.ScaleA * a + ab;
        d[2] = c.ScaleB * b + ab;
        d[3] = 1.0;
    }
    return c.ScaleA * a + c.ScaleB * b + ab + own[2];
}

int Residuals(const gsl_vector* v, void* data, gsl_vector* f) {
    Model& m = *static_cast<Model*>(data);
    m.MoveTo(v);
    std::size_t i = 0;
    for (int s = 0; s < m.P.Sets; ++s) {
        const Constants c(m, s);
        const double* own = m.Own(s);
        for (int n = 0; n < m.P.PointsPerSet; ++n, ++i)
            f->data[i] = PointOf(m, c, own, i, nullptr) - static_cast<double>(m.P.Y[i]);
    }
    return GSL_SUCCESS;
}

// The products of one set: its share of the normal matrix (lower triangle) and of the vector.
struct SetSums {
    double Matrix[8][8] = {};
    double Vector[8] = {};
};

template <int Count> void AddPoints(const Model& m, int s, const gsl_vector* u, SetSums& sums) {
    const Constants c(m, s);
    const double* own = m.Own(s);
    const auto first = static_cast<std::size_t>(s) * static_cast<std::size_t>(m.P.PointsPerSet);
    double d[8] = {};
    for (std::size_t i = first; i < first + static_cast<std::size_t>(m.P.PointsPerSet); ++i) {
        PointOf(m, c, own, i, d);
        for (int j = 0; j < Count; ++j) {
            sums.Vector[j] += d[j] * u->data[i];
            for (int k = 0; k <= j; ++k)
                sums.Matrix[j][k] += d[j] * d[k];
        }
    }
}

// The place of a set's local derivative among all parameters.
std::size_t PlaceOf(const Problem& p, int s, int j) {
    return static_cast<std::size_t>(j < p.Globals ? j : p.Globals + s * p.PerSet + j - p.Globals);
}

void AddNormalEquations(const Model& m, const gsl_vector* u, gsl_vector* v, gsl_matrix* JTJ) {
    const int count = m.P.Globals + m.P.PerSet;
    if (v) gsl_vector_set_zero(v);
    if (JTJ) gsl_matrix_set_zero(JTJ);
    for (int s = 0; s < m.P.Sets; ++s) {
        SetSums sums;
        count == 5 ? AddPoints<5>(m, s, u, sums) : AddPoints<4>(m, s, u, sums);
        for (int j = 0; j < count; ++j) {
            if (v) v->data[PlaceOf(m.P, s, j)] += sums.Vector[j];
            for (int k = 0; JTJ && k <= j; ++k)
                *gsl_matrix_ptr(JTJ, PlaceOf(m.P, s, j), PlaceOf(m.P, s, k)) += sums.Matrix[j][k];
        }
    }
}

int Jacobian(CBLAS_TRANSPOSE_t transposed, const gsl_vector* x, const gsl_vector* u, void* data,
             gsl_vector* v, gsl_matrix* JTJ) {
    Model& m = *static_cast<Model*>(data);
    m.MoveTo(x);
    if (transposed == CblasTrans) {
        AddNormalEquations(m, u, v, JTJ);
        return GSL_SUCCESS;
    }
    std::size_t i = 0;
    double d[8] = {};
    for (int s = 0; s < m.P.Sets; ++s) {
        const Constants c(m, s);
        for (int n = 0; n < m.P.PointsPerSet; ++n, ++i) {
            PointOf(m, c, m.Own(s), i, d);
            v->data[i] = 0.0;
            for (int j = 0; j < m.P.Globals + m.P.PerSet; ++j)
                v->data[i] += d[j] * u->data[PlaceOf(m.P, s, j)];
        }
    }
    return GSL_SUCCESS;
}

double SumOf(const gsl_vector* f) {
    double sum = 0.0;
    for (std::size_t i = 0; i < f->size; ++i)
        sum += f->data[i] * f->data[i];
    return sum;
}

} // namespace

Solution RunMultilarge(const Problem& p) {
    const auto count = static_cast<std::size_t>(p.Parameters());
    Model model{p};
    gsl_multilarge_nlinear_parameters settings = gsl_multilarge_nlinear_default_parameters();
    // Of all steps and scalings that it offers, these end nearest to the minimum in the least time here.
    settings.trs = gsl_multilarge_nlinear_trs_ddogleg;
    settings.scale = gsl_multilarge_nlinear_scale_levenberg;
    settings.solver = gsl_multilarge_nlinear_solver_cholesky;
    gsl_multilarge_nlinear_workspace* w = gsl_multilarge_nlinear_alloc(
        gsl_multilarge_nlinear_trust, &settings, static_cast<std::size_t>(p.Points()), count);
    gsl_multilarge_nlinear_fdf f{};
    f.f = Residuals;
    f.df = Jacobian;
    f.n = static_cast<std::size_t>(p.Points());
    f.p = count;
    f.params = &model;
    const gsl_vector_const_view start = gsl_vector_const_view_array(p.Start.data(), count);
    gsl_multilarge_nlinear_init(&start.vector, &f, w);
    double before = SumOf(gsl_multilarge_nlinear_residual(w));
    int pass = 0;
    for (bool done = false; pass < 100 && !done; ++pass) {
        if (gsl_multilarge_nlinear_iterate(w) != GSL_SUCCESS) break;
        const double now = SumOf(gsl_multilarge_nlinear_residual(w));
        done = before - now < Tolerance(p) * now;
        before = now;
    }
    Solution found;
    found.Iterations = pass;
    const gsl_vector* v = gsl_multilarge_nlinear_position(w);
    found.Parameters.assign(v->data, v->data + count);
    gsl_multilarge_nlinear_free(w);
    return found;
}

} // namespace Quillon::Bench
