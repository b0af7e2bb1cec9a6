// The species of all models against the reference model, in all units, and what has to hold between them.
#include "models/SEDEQ3.h"
#include "models/species/SpeciesAtPoint.h"
#include "tests/support/HandValues.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ReferenceModel.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Quillon {
namespace {

// What the stated accuracy allows: two parts in a million of the largest species.
constexpr double Accuracy = 2e-6;

const char* ReferenceName(SpeciesKind kind) {
    switch (kind) {
    case SpeciesKind::MonomerA:
        return "A";
    case SpeciesKind::InactiveA:
        return "inactive";
    case SpeciesKind::MonomerB:
        return "B";
    case SpeciesKind::OligomerN:
        return "N-mer";
    case SpeciesKind::OligomerM:
        return "M-mer";
    case SpeciesKind::ABB:
        return "AB2";
    case SpeciesKind::AAB:
        return "A2B";
    case SpeciesKind::ABBA:
        return "ABBA";
    case SpeciesKind::DimerB:
        return "B2";
    default:
        return "AB";
    }
}

// The signal of one unit of a species by its name, written down once more.
double UnitSignal(const std::string& name, int concUnits, long row) {
    const double path = Work.CellPath[row];
    const double a = static_cast<double>(concUnits == 2 ? Work.ExtA : Work.RefrA) *
                     static_cast<double>(Work.ExtinctionRatio[0][row]) * path;
    const double b = static_cast<double>(concUnits == 2 ? Work.ExtB : Work.RefrB) *
                     static_cast<double>(Work.ExtinctionRatio[1][row]) * path;
    if (concUnits == 1) return static_cast<double>(Work.AbsorpA * Work.ExtinctionRatio[0][row]) * path;
    if (concUnits == 4) return static_cast<double>(Work.FringeMassA * Work.ExtinctionRatio[0][row]) * path;
    if (concUnits == 0 || concUnits == 3) return 1.0;
    if (name == "A" || name == "inactive") return a;
    if (name == "N-mer") return static_cast<double>(Work.Parms[1]) * a;
    if (name == "M-mer") return static_cast<double>(Work.Parms[3]) * a;
    if (name == "B") return b;
    if (name == "B2") return 2 * b;
    if (name == "AB2") return a + 2 * b;
    if (name == "A2B") return 2 * a + b;
    if (name == "ABBA") return 2 * a + 2 * b;
    return a + b;
}

// The part of AB that a species stands for, where the two sites differ.
double PartOfAB(SpeciesKind kind) {
    if (kind != SpeciesKind::FirstAB && kind != SpeciesKind::OtherAB) return 1.0;
    const double k6 = std::exp(static_cast<double>(Work.Parms[6]));
    const double k7 = std::exp(static_cast<double>(Work.Parms[7]));
    return (kind == SpeciesKind::FirstAB ? k6 : k7) / (k6 + k7);
}

// Cells of two lengths and, in self-association, of two wavelengths; set 1 stays the table's row 1.
ModelCase Mixed(ModelCase c) {
    for (std::size_t i = 1; i < c.Sets.size(); ++i) {
        if (i % 2) c.Sets[i].Path = 0.3F;
        if (c.Model <= 6 && i == 2) c.Sets[i].RatioA = c.Sets[i].RatioB = 1.7F;
    }
    return c;
}

std::vector<double> ReferenceSpecies(const RealVector& parms, long point) {
    const std::vector<Quillon::ReferenceSpecies> all = ReferenceSpeciesAt(Work, parms, point);
    std::vector<double> values;
    for (const ListedSpecies& each : SpeciesOfModel(Work.Model)) {
        const std::string name = ReferenceName(each.Kind);
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const auto& r) { return r.Name == name; });
        const double signal = found == all.end() ? 0.0 : static_cast<double>(found->Signal());
        const long row = Work.SetRow[Work.PtSet[point]];
        values.push_back(signal * PartOfAB(each.Kind) / UnitSignal(name, Work.ConcUnits, row));
    }
    return values;
}

long FirstPoint(long set) {
    return 1 + std::accumulate(Work.SetPts.begin(), Work.SetPts.begin() + set - 1, 0L);
}

void ExpectReferenceSpecies(long set) {
    const RealVector parms = ReferenceParms(Work);
    const SpeciesColumns columns = SpeciesOfSet(SetNo(set), UnitInForce());
    ASSERT_EQ(columns.size(), SpeciesNames().size());
    for (std::size_t i = 0; i < columns[0].size(); i += 3) {
        const long point = FirstPoint(set) + static_cast<long>(i);
        const std::vector<double> expected = ReferenceSpecies(parms, point);
        const double largest = *std::max_element(expected.begin(), expected.end());
        for (std::size_t k = 0; k < expected.size(); ++k)
            ASSERT_NEAR(columns[k][i], expected[k], Accuracy * largest)
                << "set " << set << " point " << point << " unit " << Work.ConcUnits << " " << k;
    }
}

class SpeciesCase : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { Work = SimulatedWorkspace(Mixed(ModelCaseNamed(GetParam()))); }
    Script script; // any message fails the test
};
std::vector<std::string> SpeciesCaseNames() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases())
        if (c.Name.find("Linked") == std::string::npos) names.push_back(c.Name);
    return names;
}
INSTANTIATE_TEST_SUITE_P(All, SpeciesCase, testing::ValuesIn(SpeciesCaseNames()),
                         [](const auto& each) { return each.param; });

TEST_P(SpeciesCase, AreThoseOfTheEquationsInAllUnits) {
    for (std::int16_t units = 0; units <= 5; ++units) {
        Work.ConcUnits = units;
        if (!SpeciesHaveUnit(UnitInForce())) continue;
        for (long set = 1; set <= Work.NumSets; ++set)
            ExpectReferenceSpecies(set);
    }
}

TEST_P(SpeciesCase, SignalsAndOffsetAddUpToTheFittedFunction) {
    ResetFitFunction();
    for (long set = 1; set <= Work.NumSets; ++set) {
        const SpeciesColumns columns = SpeciesOfSet(SetNo(set), SpeciesUnit::Signal);
        const bool noOffset = OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
        for (std::size_t i = 0; i < columns[0].size(); ++i) {
            double sum = noOffset ? 0.0 : static_cast<double>(Work.Parms[SlotOffset(set)]);
            for (const std::vector<double>& column : columns)
                sum += column[i];
            const double fitted = FitFunction(FirstPoint(set) + static_cast<long>(i));
            ASSERT_NEAR(sum, fitted, (Work.NonIdeal ? 1e-6 : 1e-13) * std::fabs(fitted));
        }
    }
}

// What mass action says of the molar values: each species over the powers of the free monomers.
double ExpectedConstant(SpeciesKind kind) {
    const auto K = [](long slot) { return std::exp(static_cast<double>(Work.Parms[slot])); };
    const double eA = Work.ExtA * Work.CellPath[1] * Work.ExtinctionRatio[0][1]; // signal per molar A, set 1
    const double eB = Work.ExtB * Work.CellPath[1] * Work.ExtinctionRatio[1][1];
    const double K2 = K(2), K4 = K(4), K6 = K(6), K7 = K(7);
    const double n = Work.Parms[1], m = Work.Parms[3];
    const int model = Work.Model;
    const double Kb = model == 21 ? K6 : K7;
    const double L = K6 + Kb, Q = K6 * Kb;
    switch (kind) {
    case SpeciesKind::OligomerN:
        return K2 * std::pow(eA, n - 1) / n;
    case SpeciesKind::OligomerM:
        return K4 * std::pow(eA, m - 1) / m;
    case SpeciesKind::AB:
        return model >= 21 ? L : (model == 9 || model == 11 || model == 12 ? 2 : 1) * K6;
    case SpeciesKind::FirstAB:
        return K6;
    case SpeciesKind::OtherAB:
        return K7;
    case SpeciesKind::ABB:
        if (model == 9) return K6 * K6;
        if (model == 10) return K6 * K7;
        if (model == 11) return K7 * K6 * K6;
        if (model == 12) return (K6 * K2 + 2 * K2 + K6) * K6;
        if (model == 13) return (K6 * K7 + K6 + K7) * K2 + K6 * K7;
        if (model == 14) return K2 * K6 * K7;
        return model >= 21 ? Q * (K2 + 1) + 2 * L * K2 : 2 * K4 * K6;
    case SpeciesKind::AAB:
        return Q;
    case SpeciesKind::ABBA:
        if (model >= 21) return (Q * (K2 + 1) + (K2 + 1) * L) * Q + L * K2 * L;
        return (model == 17 || model == 18 || model == 20 ? K7 : K4) * K6 * K6;
    case SpeciesKind::DimerB:
        if (model == 12 || model == 13) return K2 * eB / 2; // its constant is one of signals
        return model == 18 ? K4 : K2;
    default:
        return 1.0;
    }
}

class MassAction : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, MassAction, testing::Range(1, 23));

// Model 13 shows its dimer with the factor of A, so that its law needs cells of one wavelength.
TEST_P(MassAction, HoldsBetweenTheMolarValues) {
    Script script;
    ModelCase c = Mixed(ModelCases()[static_cast<std::size_t>(GetParam() - 1)]);
    if (c.Model == 13)
        for (SimulatedSet& set : c.Sets)
            set.RatioA = set.RatioB = 1.0F;
    Work = SimulatedWorkspace(c);
    Work.ConcUnits = ConcUnit::Mole;
    const SpeciesList& list = SpeciesOfModel(Work.Model);
    for (long point = 1; point <= Work.NumPts; point += 7) {
        const std::vector<float> molar = SpeciesAtPoint(point);
        const double a = molar[0];
        const double b = list.Count > 1 ? molar[1] : 1.0;
        for (std::size_t k = 0; k < molar.size(); ++k) {
            const MonomerCount n = MonomersIn(list.Items[k].Kind);
            if (n.A + n.B == 1.0) continue;
            const double law = ExpectedConstant(list.Items[k].Kind) * std::pow(a, n.A) * std::pow(b, n.B);
            EXPECT_NEAR(molar[k] / law, 1.0, 1e-5) << "point " << point << " " << list.Items[k].Name;
        }
    }
}

TEST(Species, MeetTheSumsWorkedOutOnPaper) {
    Script script;
    for (const HandValue& hand : HandValues) {
        Work = HandWorkspace(hand.Model);
        const std::vector<float> signals = SpeciesAtPoint(2);
        const double sum = std::accumulate(signals.begin(), signals.end(), 0.0);
        EXPECT_NEAR(sum, hand.Signal, 3e-6 * hand.Signal) << "model " << hand.Model;
    }
}

TEST(Species, OfTwoUnlikeSitesAreSplitByTheirConstants) {
    Script script;
    Work = HandWorkspace(10); // a b = 0.1, K1 = 2, K2 = 3, all coefficients 1
    Work.ConcUnits = ConcUnit::Mole;
    const std::vector<float> molar = SpeciesAtPoint(2);
    EXPECT_NEAR(molar[2], 0.2, 1e-6);
    EXPECT_NEAR(molar[3], 0.3, 1e-6);
    EXPECT_NEAR(molar[4], 0.12, 1e-6);
}

TEST(Species, AreListedWithTheirNames) {
    const auto names = [](int model) {
        Work = HandWorkspace(model);
        std::string all;
        for (const std::string& name : SpeciesNames())
            all += (all.empty() ? "" : ", ") + name;
        return all;
    };
    const std::string ab = "monomer A, monomer B, AB complex";
    const std::string four = "AB complexes, BAB complexes, BAA complex, BAAB complexes, B dimer";
    EXPECT_EQ(names(1), "monomer");
    EXPECT_EQ(names(2), "monomer, dimer");
    EXPECT_EQ(names(3), "monomer, N - mer");
    EXPECT_EQ(names(4), "monomer, dimer, tetramer");
    EXPECT_EQ(names(5), "monomer, N - mer, M - mer");
    EXPECT_EQ(names(6), "active monomer A, N - mer A, dead monomer A");
    EXPECT_EQ(names(7), "monomer A, monomer B");
    EXPECT_EQ(names(8), ab);
    EXPECT_EQ(names(9), ab + ", AB2 complex");
    EXPECT_EQ(names(11), names(9));
    EXPECT_EQ(names(10), ab + ", AB' complex, AB2 complex");
    EXPECT_EQ(names(14), names(10));
    EXPECT_EQ(names(12), ab + ", AB2 complexes, B dimer");
    EXPECT_EQ(names(13), ab + ", AB' complex, AB2 complexes, B dimer");
    EXPECT_EQ(names(15), ab + ", ABBA complex");
    for (const int model : {16, 17})
        EXPECT_EQ(names(model), ab + ", ABB complex, ABBA complex");
    for (const int model : {18, 19, 20})
        EXPECT_EQ(names(model), ab + ", ABB complex, ABBA complex, B dimer");
    for (const int model : {21, 22, 23, 24})
        EXPECT_EQ(names(model), "monomer A, monomer B, " + four);
}

TEST(Species, OfReservedModelsAreMonomerAAlone) {
    Script script;
    for (const int model : {23, 24}) {
        Work = HandWorkspace(model);
        const std::vector<float> signals = SpeciesAtPoint(2);
        ASSERT_EQ(signals.size(), 7U);
        EXPECT_NEAR(signals[0], 0.5, 1e-7);
        for (std::size_t k = 1; k < 7; ++k)
            EXPECT_EQ(signals[k], 0.0F);
    }
}

// Two workspaces that differ in the model show the same species, in the places given.
void ExpectSame(const Workspace& one, std::vector<std::size_t> places, const Workspace& other) {
    Work = one;
    const std::vector<float> mine = SpeciesAtPoint(2);
    Work = other;
    const std::vector<float> others = SpeciesAtPoint(2);
    for (std::size_t k = 0; k < others.size(); ++k)
        EXPECT_NEAR(mine[places[k]], others[k], 1e-6 * others[k])
            << "model " << one.Model << " as " << other.Model << " " << k;
    double rest = std::accumulate(mine.begin(), mine.end(), 0.0);
    for (const float each : others)
        rest -= each;
    EXPECT_NEAR(rest, 0.0, 1e-5);
}

TEST(Species, OfAConstantSentToZeroAreThoseOfTheSimplerModel) {
    Script script;
    constexpr float Off = -80.0F;
    const auto same = [](int model, int other, std::vector<std::size_t> places, auto change) {
        Workspace w = HandWorkspace(model);
        w.ConcUnits = ConcUnit::Mole;
        change(w);
        Workspace v = w;
        v.Model = ToInt16(other);
        ExpectSame(w, places, v);
    };
    same(2, 1, {0}, [](Workspace& w) { w.Parms[2] = Off; });
    same(4, 2, {0, 1}, [](Workspace& w) { w.Parms[4] = Off; });
    same(5, 3, {0, 1}, [](Workspace& w) { w.Parms[4] = Off; });
    same(6, 3, {0, 1}, [](Workspace& w) { w.Parms[SlotB(1)] = Off; });
    same(8, 7, {0, 1}, [](Workspace& w) { w.Parms[6] = Off; });
    same(10, 8, {0, 1, 2}, [](Workspace& w) { w.Parms[7] = Off; });
    same(12, 9, {0, 1, 2, 3}, [](Workspace& w) { w.Parms[2] = Off; });
    same(13, 10, {0, 1, 2, 3, 4}, [](Workspace& w) { w.Parms[2] = Off; });
    same(15, 8, {0, 1, 2}, [](Workspace& w) { w.Parms[4] = Off; });
    same(17, 15, {0, 1, 2, 4}, [](Workspace& w) {
        w.Parms[4] = Off;
        w.Parms[7] = Off;
    });
    same(20, 17, {0, 1, 2, 3, 4}, [](Workspace& w) { w.Parms[2] = Off; });
}

TEST(Species, InWeightNeedOneKindOfMonomer) {
    Script script;
    for (int model = 1; model <= 24; ++model) {
        Work = HandWorkspace(model);
        Work.ConcUnits = ConcUnit::Weight;
        if (model <= 6) {
            EXPECT_NO_THROW(SpeciesAtPoint(2)) << model;
        } else {
            EXPECT_THROW(SpeciesAtPoint(2), RuntimeError) << model;
        }
    }
}

TEST(Species, BeyondTheRangeOfSinglesAreAnErrorAndNoInfinity) {
    Script script;
    Work = HandWorkspace(2);
    Work.Parms[SlotA(1)] = 60.0F; // e^60 a fits, its square times the constant does not
    EXPECT_THROW(SpeciesAtPoint(2), RuntimeError);
    EXPECT_THROW(SpeciesOfSet(SetNo(1), SpeciesUnit::Signal), RuntimeError);
}

TEST(Species, OfFringesGoByTheirRefractivities) {
    Script script;
    Work = HandWorkspace(2);
    Work.FringeMassA = 2.5F;
    Work.RefrA = 4.0F;
    Work.ConcUnits = ConcUnit::FringeWeight;
    EXPECT_NEAR(SpeciesAtPoint(2)[0], 0.5 / 2.5, 1e-7);
    Work.ConcUnits = ConcUnit::FringeMole;
    EXPECT_NEAR(SpeciesAtPoint(2)[0], 0.5 / 4.0, 1e-7);
    EXPECT_NEAR(SpeciesAtPoint(2)[1], 1.75 / 8.0, 1e-7);
    // With fringes and units of signals alone, the scans say whose coefficients are meant.
    Work.ConcUnits = ConcUnit::Absorbance;
    Work.InterferenceData = FlagTrue;
    EXPECT_FLOAT_EQ(static_cast<float>(SignalOfUnit(SpeciesKind::MonomerA, SpeciesUnit::Molar, RowNo(1))),
                    4.0F);
}

TEST(Species, WithoutACoefficientAreADivisionByZero) {
    Script script;
    Work = HandWorkspace(2);
    Work.ExtA = 0.0F;
    EXPECT_NO_THROW(SpeciesAtPoint(2));
    Work.ConcUnits = ConcUnit::Mole;
    EXPECT_THROW(SpeciesAtPoint(2), RuntimeError);
}

} // namespace
} // namespace Quillon
