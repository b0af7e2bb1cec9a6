#include "tests/support/ReferenceFit.h"

#include <stdexcept>

namespace Quillon {
namespace {

RealVector WithFree(const Workspace& w, RealVector parms, const RealVector& free) {
    for (long k = 0; k < w.NumFree; ++k)
        parms[static_cast<std::size_t>(w.FreeIndex[k])] = free[static_cast<std::size_t>(k)];
    if ((w.ConstraintFlags & OffsetBit) != 0)
        for (long set = 1; set <= w.NumSets; ++set)
            if (const long link = w.OffsetLink[w.SetRow[set]]; link > 0)
                parms[static_cast<std::size_t>(SlotOffset(set))] =
                    parms[static_cast<std::size_t>(SlotOffset(w.SetOfRow[link]))];
    return parms;
}

LeastSquaresFunction FunctionOf(const Workspace& w, const RealVector& start, bool differences) {
    return [&w, start, differences](const RealVector& p, RealVector& residual, RealMatrix& derivative) {
        const RealVector parms = WithFree(w, start, p);
        try {
            ReferencePass pass = EvaluateReference(w, parms);
            residual = std::move(pass.Residual);
            derivative = differences ? ReferenceForwardDifferences(w, parms, StepStorage::Exact)
                                     : std::move(pass.Jacobian);
        } catch (const std::domain_error&) {
            return false;
        }
        return true;
    };
}

} // namespace

RealVector FreeParms(const Workspace& w, const RealVector& parms) {
    RealVector free;
    for (long k = 0; k < w.NumFree; ++k)
        free.push_back(parms[static_cast<std::size_t>(w.FreeIndex[k])]);
    return free;
}

ReferenceFit FitReference(const Workspace& w) {
    const RealVector start = ReferenceParms(w);
    ReferenceFit fit;
    fit.End = MinimiseSumSq(FunctionOf(w, start, false), FreeParms(w, start));
    fit.Parms = WithFree(w, start, fit.End.P);
    return fit;
}

ReferenceFit FitWithForwardDifferences(const Workspace& w, const RealVector& start) {
    ReferenceFit fit;
    fit.End = GaussNewtonRest(FunctionOf(w, start, true), FreeParms(w, start));
    fit.Parms = WithFree(w, start, fit.End.P);
    return fit;
}

} // namespace Quillon
