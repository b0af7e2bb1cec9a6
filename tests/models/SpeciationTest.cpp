// Populations against mass action by hand: quadratic equations, and totals that come back.
#include "models/species/Speciation.h"

#include "models/table/ModelTable.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace Quillon {
namespace {

// Monomer and dimer in molar units: K = 2e5 L/mol between concentrations in mol/L.
Workspace Dimers() {
    ModelCase theCase;
    theCase.Model = 2;
    theCase.ConcUnits = ConcUnit::Mole;
    theCase.ExtA = 40000.0F;
    const double signal = 40000.0 * 1.2; // of 1 mol/L
    theCase.LnK2 = std::log(2.0 * 2e5 / signal);
    theCase.Sets = {{.OuterSignal = 0.8}, {.OuterSignal = 1.6}};
    return SimulatedWorkspace(theCase);
}

TEST(Speciation, DimerFollowsItsQuadraticEquation) {
    Script script;
    Work = Dimers();
    for (const double total : {1e-8, 1e-6, 5e-6, 1e-3}) {
        // m + 2 K m^2 = T
        const double m = (std::sqrt(1.0 + 8.0 * 2e5 * total) - 1.0) / (4.0 * 2e5);
        const std::vector<double> parts = Populations({total, 0.0});
        ASSERT_EQ(parts.size(), 2U);
        EXPECT_NEAR(parts[0], m / total, 1e-5);
        EXPECT_NEAR(parts[1], 1.0 - m / total, 1e-5);
    }
    EXPECT_NEAR(Populations({1.0 / 2e5, 0.0})[0], 0.5, 1e-5) << "half at the total of 1/K";
}

TEST(Speciation, CurveGoesFarBeyondTheSetsOnBothSides) {
    Script script;
    Work = Dimers();
    const SpeciationCurve curve = ComputeSpeciation();
    EXPECT_EQ(curve.ShareOfB, 0.0);
    const double first = MeanMonomers(SetNo(1)).Sum(), second = MeanMonomers(SetNo(2)).Sum();
    EXPECT_NEAR(curve.Totals.front(), std::min(first, second) / 100.0, 1e-9 * first);
    EXPECT_NEAR(curve.Totals.back() / (std::max(first, second) * 100.0), 1.0, 1e-9);
    EXPECT_GT(curve.Parts[0].front(), curve.Parts[0].back());
    for (std::size_t i = 0; i < curve.Totals.size(); ++i)
        EXPECT_NEAR(curve.Parts[0][i] + curve.Parts[1][i], 1.0, 1e-12);
}

// A + B = AB at equal totals: AB = x solves K (T - x)^2 = x.
TEST(Speciation, ComplexFollowsItsQuadraticEquation) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model08"));
    const double k = std::exp(static_cast<double>(Work.Parms[6]));
    const double total = 3.0 / k;
    const double y = (7.0 - std::sqrt(13.0)) / 2.0; // with x = y / K: (3 - y)^2 = y
    const std::vector<double> parts = Populations({total, total});
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_NEAR(parts[2], y / 3.0, 1e-5) << "of all monomers";
    EXPECT_NEAR(parts[0], 0.5 * (1.0 - y / 3.0), 1e-5);
    EXPECT_NEAR(parts[1], parts[0], 1e-9);
}

// Every model: what the populations say of a loading adds up to that loading.
TEST(Speciation, PartsAddUpToOneInEveryModel) {
    Script script;
    for (const ModelCase& each : ModelCases()) {
        Work = SimulatedWorkspace(each);
        if (Work.NonIdeal || Work.SeparateK) continue;
        const std::vector<double> parts = Populations(MeanMonomers(SetNo(1)));
        EXPECT_NEAR(std::accumulate(parts.begin(), parts.end(), 0.0), 1.0, 1e-12) << each.Name;
        for (const double part : parts)
            EXPECT_GE(part, 0.0) << each.Name;
    }
}

TEST(Speciation, NothingLoadedIsSaid) {
    Script script;
    Work = Dimers();
    EXPECT_THROW(Populations({0.0, 0.0}), RuntimeError);
}

} // namespace
} // namespace Quillon
