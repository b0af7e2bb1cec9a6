// Mean concentrations over a cell against closed forms and a fine quadrature over the reference models.
#include "models/species/Integration.h"
#include "models/SEDEQ3.h"
#include "models/species/SpeciesAtPoint.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ReferenceModel.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numeric>

namespace Quillon {
namespace {

// The integral of exp(k r^2) from 0 to r, term by term: all terms are positive.
Real GaussGrowth(Real k, Real r) {
    Real sum = 0, power = r;
    for (int n = 0; n < 2000; ++n) {
        sum += power / (2 * n + 1);
        power *= k * r * r / (n + 1);
        if (power < 1e-25L * sum) break;
    }
    return sum;
}

// A single set whose radii 6.8 to 7.2 are the range of the fit.
Workspace OneCell(int model, float sigma) {
    Workspace w = UnitWorkspace(model);
    w.ScanRadius[1][1] = 6.8F;
    w.ScanRadius[1][2] = 7.0F;
    w.ScanRadius[1][3] = 7.2F;
    w.Parms[0] = sigma;
    w.Parms[SlotA(1)] = -0.7F;
    return w;
}

double MeanOfExponential(double sigma, double ln, double inner, double outer) {
    const Real a = 6.8F, b = 7.2F;
    const Real reference = (a * a + b * b) / 4;
    const Real area = GaussGrowth(Real(sigma) / 2, outer) - GaussGrowth(Real(sigma) / 2, inner);
    return static_cast<double>(area / (Real(outer) - Real(inner)) * std::exp(ln - sigma * reference));
}

TEST(Integration, OfASingleSpeciesIsTheClosedForm) {
    Script script;
    for (const float sigma : {0.001F, 0.3F, 1.5F, 4.0F}) {
        for (const auto& [inner, outer] : {std::pair{5.6F, 7.3F}, {6.8F, 7.2F}, {6.0F, 6.0015F}}) {
            Work = OneCell(1, sigma);
            const IntegratedSet found = IntegrateCell(SetNo(1), inner, outer, SpeciesUnit::Signal);
            const double expected = MeanOfExponential(sigma, -0.7F, inner, outer);
            ASSERT_EQ(found.Rows.size(), 2U);
            EXPECT_NEAR(*found.Rows[1].Signal / expected, 1.0, 1e-7) << sigma << " " << inner;
            EXPECT_EQ(*found.Rows[0].Signal, *found.Rows[1].Signal);
        }
    }
}

TEST(Integration, OfADimerIsTheClosedFormToo) {
    Script script;
    Work = OneCell(2, 2.0F);
    Work.Parms[2] = 1.1F;
    const IntegratedSet found = IntegrateCell(SetNo(1), 5.6F, 7.3F, SpeciesUnit::Signal);
    const double dimer = MeanOfExponential(4.0, 2 * -0.7F + 1.1F, 5.6F, 7.3F);
    EXPECT_NEAR(*found.Rows[2].Signal / dimer, 1.0, 1e-7);
}

const char* NameInReference(const std::string& label) {
    static const std::map<std::string, const char*> names = {
        {"Monomer", "A"},       {"Dimer", "N-mer"},       {"N-mer", "N-mer"},
        {"Tetramer", "M-mer"},  {"M-mer", "M-mer"},       {"Active Monomer", "A"},
        {"N-Mer", "N-mer"},     {"Species A", "A"},       {"Inactive Mono.", "inactive"},
        {"Species B", "B"},     {"Monomer A", "A"},       {"Monomer B", "B"},
        {"AB Complex", "AB"},   {"AB' Complex", "AB"},    {"AB2 Complex", "AB2"},
        {"B dimer", "B2"},      {"AB2 Complexes", "AB2"}, {"ABB Complex", "AB2"},
        {"BAB Complex", "AB2"}, {"BAAB Complex", "ABBA"}, {"ABBA Complex", "ABBA"},
        {"BAA Complex", "A2B"}};
    return names.at(label);
}

// Simpson's rule over the reference model, 500 panels of the cell.
std::map<std::string, Real> ReferenceMeans(long set, float inner, float outer) {
    Workspace w = Work;
    long point = 1;
    while (w.PtSet[point] != set)
        ++point;
    const long row = w.SetRow[set];
    const Real r1 = w.ScanRadius[row][w.FitRange[0][row]], r2 = w.ScanRadius[row][w.FitRange[1][row]];
    const RealVector parms = ReferenceParms(w);
    std::map<std::string, Real> sums;
    const int panels = 500;
    for (int i = 0; i <= 2 * panels; ++i) {
        const Real r = Real(inner) + (Real(outer) - Real(inner)) * i / (2 * panels);
        const Real x = r * r / 2 - (r1 * r1 + r2 * r2) / 4;
        w.PtX[point] = static_cast<float>(x); // rounded: 1e-7 of 4, times a sigma of 4
        const Real weight = i == 0 || i == 2 * panels ? 1 : i % 2 ? 4 : 2;
        for (const ReferenceSpecies& each : ReferenceSpeciesAt(w, parms, point))
            sums[each.Name] += weight * each.Signal() / (6 * panels);
    }
    return sums;
}

class IntegrationCase : public testing::TestWithParam<std::string> {};
std::vector<std::string> CaseNames() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases())
        if (c.Name.size() == 7 || c.Name.find("SeparateK") == 7 || c.Name.find("Scattered") == 7 ||
            c.Name == "Model02NonIdeal" || c.Name == "Model04NonIdeal")
            names.push_back(c.Name);
    return names;
}
INSTANTIATE_TEST_SUITE_P(All, IntegrationCase, testing::ValuesIn(CaseNames()),
                         [](const auto& each) { return each.param; });

TEST_P(IntegrationCase, IsAFineQuadratureOverTheEquations) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed(GetParam()));
    for (const long set : {1L, static_cast<long>(Work.NumSets)}) {
        const float inner = 6.2F, outer = 7.2F;
        std::map<std::string, Real> expected = ReferenceMeans(set, inner, outer);
        const IntegratedSet found = IntegrateCell(SetNo(set), inner, outer, SpeciesUnit::Signal);
        std::map<std::string, Real> sums;
        double shares = 0.0;
        for (const IntegratedRow& row : found.Rows) {
            if (row.Label.starts_with("Total")) continue;
            sums[NameInReference(row.Label)] += *row.Signal;
            shares += *row.Share;
        }
        ASSERT_EQ(sums.size(), expected.size());
        for (const auto& [name, value] : expected)
            EXPECT_NEAR(static_cast<double>(sums[name] / value), 1.0, 1e-5) << name << " set " << set;
        EXPECT_NEAR(shares, 1.0, 1e-12);
    }
}

TEST(Integration, TotalsOfTwoComponentsCountTheirMonomers) {
    Script script;
    ModelCase c = ModelCaseNamed("Model20");
    Work = SimulatedWorkspace(c);
    const IntegratedSet found = IntegrateCell(SetNo(4), 6.0F, 7.2F, SpeciesUnit::Molar);
    ASSERT_EQ(found.Rows.size(), 9U);
    EXPECT_EQ(found.Rows[0].Label, "Total");
    EXPECT_EQ(found.Rows[1].Label, "Total A");
    EXPECT_EQ(found.Rows[2].Label, "Total B");
    const auto molar = [&](std::size_t i) { return *found.Rows[i].Molar; };
    const auto signal = [&](std::size_t i) { return *found.Rows[i].Signal; };
    // rows 3 on: A, B, AB, ABB, ABBA, BB
    const double a = molar(3) + molar(5) + molar(6) + 2 * molar(7);
    const double b = molar(4) + molar(5) + 2 * molar(6) + 2 * molar(7) + 2 * molar(8);
    EXPECT_NEAR(molar(1) / a, 1.0, 1e-12);
    EXPECT_NEAR(molar(2) / b, 1.0, 1e-12);
    EXPECT_NEAR(signal(1) + signal(2), signal(0), 1e-12 * signal(0));
    const double path = 1.2F;
    EXPECT_NEAR(signal(1) / (a * c.ExtA * c.Sets[3].RatioA * path), 1.0, 1e-6);
    EXPECT_NEAR(signal(2) / (b * c.ExtB * c.Sets[3].RatioB * path), 1.0, 1e-6);
    EXPECT_FALSE(found.Rows[0].Weight || found.Rows[3].Weight);
    EXPECT_EQ(IntegrateCell(SetNo(4), 6.0F, 7.2F, SpeciesUnit::Signal).Rows[0].Label, "Total Signal");
}

TEST(Integration, OfOneComponentCountsMonomersBesideSpecies) {
    Script script;
    Work = OneCell(4, 1.5F);
    Work.Parms[3] = 4.0F;
    Work.ExtA = 40000.0F;
    const IntegratedSet found = IntegrateCell(SetNo(1), 6.0F, 7.2F, SpeciesUnit::Molar);
    const double monomers = *found.Rows[1].Molar + 2 * *found.Rows[2].Molar + 4 * *found.Rows[3].Molar;
    EXPECT_NEAR(*found.MonomerMolar / monomers, 1.0, 1e-12);
    EXPECT_NEAR(*found.Rows[0].Signal / 40000.0 / monomers, 1.0, 1e-6); // what was loaded, by its signal
    EXPECT_NEAR(*found.Rows[0].Weight, *found.Rows[0].Signal, 1e-9);    // absorptivity and path are 1
}

std::string FailureOf(float inner, float outer) {
    try {
        IntegrateCell(SetNo(1), inner, outer, SpeciesUnit::Signal);
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

TEST(Integration, OfNoWidthIsADivisionByZero) {
    Script script;
    Work = OneCell(1, 1.5F);
    EXPECT_EQ(FailureOf(6.5F, 6.5F), "Division by zero");
    EXPECT_EQ(FailureOf(6.5F, 6.5004F), "Division by zero");
    EXPECT_EQ(FailureOf(6.5F, 6.5006F), "");
    EXPECT_EQ(FailureOf(7.0F, 6.0F), "Division by zero");
}

TEST(Integration, OfRadiiMetresApartIsToldInWords) {
    Script script;
    Work = OneCell(1, 0.001F);
    EXPECT_EQ(FailureOf(6.0F, 1e30F), "no cell is wider than 20 cm");
    EXPECT_EQ(FailureOf(6.0F, 40.0F), "no cell is wider than 20 cm");
    EXPECT_EQ(FailureOf(6.0F, 25.0F), "");
}

TEST(Integration, TellsWhereTheModelIsBeyondAllNumbers) {
    Script script;
    Work = OneCell(1, 200.0F);
    EXPECT_EQ(FailureOf(6.5F, 7.45F), ""); // e^646
    EXPECT_TRUE(
        FailureOf(6.5F, 9.0F).starts_with("the model is beyond the range of numbers at a radius of 7."));
}

TEST(Integration, TellsThatThereIsNoNonIdealSolution) {
    Script script;
    Work = OneCell(1, 1.5F);
    Work.NonIdeal = FlagTrue;
    Work.Parms[7] = 0.5F; // c exp(-0.75 c) has its largest value at 1.33: beyond it nothing fulfils it
    EXPECT_EQ(FailureOf(6.0F, 7.0F), "");
    EXPECT_EQ(FailureOf(6.0F, 7.6F), "the non-ideal model has no solution at some radius of the cell");
}

TEST(Integration, RefusesAUnitWithoutItsCoefficient) {
    Script script;
    Work = OneCell(1, 1.5F);
    Work.ExtA = 0.0F;
    const IntegratedSet found = IntegrateCell(SetNo(1), 6.0F, 7.0F, SpeciesUnit::Molar);
    EXPECT_FALSE(found.Rows[1].Molar || found.Rows[1].Share);
    EXPECT_TRUE(found.Rows[1].Signal && found.Rows[1].Weight);
}

} // namespace
} // namespace Quillon
