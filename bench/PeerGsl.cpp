// GSL's gsl_multifit_nlinear (Levenberg-Marquardt with geodesic acceleration off), analytic derivatives.
#include "bench/Problem.h"

#include <gsl/gsl_multifit_nlinear.h>

namespace Quillon::Bench {

namespace {

int Residuals(const gsl_vector* v, void* data, gsl_vector* f) {
    const auto& p = *static_cast<const Problem*>(data);
    for (int s = 0; s < p.Sets; ++s)
        for (int i = 0; i < p.PointsPerSet; ++i) {
            const auto at = static_cast<std::size_t>(s * p.PointsPerSet + i);
            gsl_vector_set(f, at,
                           Value(p, s, static_cast<double>(p.X[at]), v->data,
                                 v->data + p.Globals + s * p.PerSet, nullptr) -
                               static_cast<double>(p.Y[at]));
        }
    return GSL_SUCCESS;
}

int Jacobian(const gsl_vector* v, void* data, gsl_matrix* J) {
    const auto& p = *static_cast<const Problem*>(data);
    gsl_matrix_set_zero(J);
    double d[8];
    for (int s = 0; s < p.Sets; ++s)
        for (int i = 0; i < p.PointsPerSet; ++i) {
            const auto at = static_cast<std::size_t>(s * p.PointsPerSet + i);
            Value(p, s, static_cast<double>(p.X[at]), v->data, v->data + p.Globals + s * p.PerSet, d);
            for (int g = 0; g < p.Globals; ++g)
                gsl_matrix_set(J, at, static_cast<std::size_t>(g), d[g]);
            for (int j = 0; j < p.PerSet; ++j)
                gsl_matrix_set(J, at, static_cast<std::size_t>(p.Globals + s * p.PerSet + j),
                               d[p.Globals + j]);
        }
    return GSL_SUCCESS;
}

} // namespace

Solution RunGsl(const Problem& p) {
    const auto n = static_cast<std::size_t>(p.Points());
    const auto m = static_cast<std::size_t>(p.Parameters());
    gsl_multifit_nlinear_parameters settings = gsl_multifit_nlinear_default_parameters();
    settings.solver = gsl_multifit_nlinear_solver_cholesky;
    gsl_multifit_nlinear_workspace* w =
        gsl_multifit_nlinear_alloc(gsl_multifit_nlinear_trust, &settings, n, m);
    gsl_multifit_nlinear_fdf f{};
    f.f = Residuals;
    f.df = Jacobian;
    f.n = n;
    f.p = m;
    f.params = const_cast<Problem*>(&p);
    const gsl_vector_const_view start = gsl_vector_const_view_array(p.Start.data(), m);
    gsl_multifit_nlinear_init(&start.vector, &f, w);
    double before = 1e308;
    int pass = 0;
    for (; pass < 100; ++pass) {
        if (gsl_multifit_nlinear_iterate(w) != GSL_SUCCESS) break;
        double now = 0.0;
        const gsl_vector* r = gsl_multifit_nlinear_residual(w);
        for (std::size_t i = 0; i < n; ++i)
            now += gsl_vector_get(r, i) * gsl_vector_get(r, i);
        const bool done = (before - now) < Tolerance(p) * now;
        before = now;
        if (done) break;
    }
    Solution found;
    found.Iterations = pass + 1;
    const gsl_vector* v = gsl_multifit_nlinear_position(w);
    for (std::size_t k = 0; k < m; ++k)
        found.Parameters.push_back(gsl_vector_get(v, k));
    gsl_multifit_nlinear_free(w);
    return found;
}

} // namespace Quillon::Bench
