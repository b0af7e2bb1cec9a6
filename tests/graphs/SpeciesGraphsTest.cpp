// The graphs of species: what they show, how lines are told apart, and that they add up to the fit.
#include "graphs/kinds/SpeciesGraphs.h"
#include "graphs/kinds/PickSet.h"

#include "GraphBench.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/Pens.h"
#include "chart/pens/Symbols.h"
#include "chart/records/SetLooks.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/SpecialOptions.h"
#include "models/SEDEQ3.h"
#include "models/species/SpeciesAtPoint.h"
#include "tests/support/ModelCases.h"

#include <cmath>
#include <set>

namespace Quillon {
namespace {

class SpeciesGraphs : public GraphBench {
protected:
    // A fit of a model without noise, its fitted function beside it.
    void Fit(const std::string& name) {
        Work = SimulatedWorkspace(ModelCaseNamed(name));
        for (long k = 1; k <= Work.NumSets; ++k)
            Work.SetLabel[k] = "set" + std::to_string(k) + ".RA1";
        Work.PtFit.Recreate(Work.NumPts);
        ResetFitFunction();
        for (long p = 1; p <= Work.NumPts; ++p)
            Work.PtFit[p] = static_cast<float>(FitFunction(p));
    }
    static double YAt(long point, long series) { return Chart.DataY(point, series); }
    static std::string YTitle() { return Chart.Spec.AxisY1.Title.Text.Str(); }
};

TEST_F(SpeciesGraphs, SpeciesAndOffsetAreTheFittedFunction) {
    for (const char* name : {"Model01", "Model04NonIdeal", "Model06", "Model13", "Model22"}) {
        Fit(name);
        const long each = static_cast<long>(SpeciesNames().size()) + 1;
        ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets));
        const SetTable x = Chart.DataX, y = Chart.DataY;
        ASSERT_EQ(y.Sets(), each * Work.NumSets);
        ASSERT_TRUE(MakeFitGraph(FitGraph::Function, AllSets, {}));
        for (long k = 1; k <= Work.NumSets; ++k) {
            const double offset = Work.Parms[SlotOffset(k)];
            for (long i = 1; i <= Work.SetPts[k]; ++i) {
                double sum = offset;
                for (long s = 1; s < each; ++s)
                    sum += y(i, (k - 1) * each + s);
                EXPECT_NEAR(sum, YAt(i, k), 2e-6) << name << " set " << k;
                EXPECT_NEAR(y(i, k * each) + offset, YAt(i, k), 2e-6);
                EXPECT_EQ(x(i, k * each), Chart.DataX(i, k));
            }
        }
    }
}

TEST_F(SpeciesGraphs, PartsAddUpToOneInAllUnits) {
    for (const char* name : {"Model01", "Model05", "Model06", "Model07", "Model13", "Model20", "Model22"}) {
        Fit(name);
        const long each = static_cast<long>(SpeciesNames().size());
        for (std::int16_t units = ConcUnit::Absorbance; units <= ConcUnit::FringeMole; ++units) {
            Work.ConcUnits = units;
            if (!SpeciesHaveUnit(UnitInForce())) continue;
            ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Fraction, AllSets));
            ASSERT_EQ(Chart.DataY.Sets(), each * Work.NumSets) << name << ": a total has no part";
            for (long k = 1; k <= Work.NumSets; ++k)
                for (long i = 1; i <= Work.SetPts[k]; i += 9) {
                    double sum = 0.0;
                    for (long s = 1; s <= each; ++s)
                        sum += YAt(i, (k - 1) * each + s);
                    ASSERT_NEAR(sum, 1.0, 1e-6) << name << " unit " << units;
                }
        }
    }
}

TEST_F(SpeciesGraphs, TheTotalOfMolarValuesCountsMonomers) {
    Fit("Model04");
    Work.ConcUnits = ConcUnit::Mole;
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, SetNo(2)));
    for (long i = 1; i <= Work.SetPts[2]; i += 5)
        EXPECT_NEAR(YAt(i, 4) / (YAt(i, 1) + 2 * YAt(i, 2) + 4 * YAt(i, 3)), 1.0, 1e-6);
    EXPECT_EQ(Names(), (std::vector<std::string>{"monomer", "dimer", "tetramer", "total conc"}));
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets));
    EXPECT_EQ(Chart.SetNames[4], "total c (monomers), set 1");
    Work.ConcUnits = ConcUnit::Absorbance;
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets));
    EXPECT_EQ(Chart.SetNames[4], "total c, set 1");
    EXPECT_EQ(Chart.SetNames[5], "monomer set 2");
    for (long i = 1; i <= Work.SetPts[1]; i += 5)
        EXPECT_NEAR(YAt(i, 4) / (YAt(i, 1) + YAt(i, 2) + YAt(i, 3)), 1.0, 1e-6);
}

TEST_F(SpeciesGraphs, TitlesNameTheUnit) {
    Fit("Model02");
    const auto titles = [&](std::int16_t units) {
        Work.ConcUnits = units;
        std::string all;
        MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets);
        all += YTitle();
        MakeSpeciesGraph(SpeciesGraph::Concentration, SetNo(1));
        all += "|" + YTitle();
        MakeSpeciesGraph(SpeciesGraph::Fraction, AllSets);
        return all + "|" + YTitle();
    };
    EXPECT_EQ(titles(0), "Absorbance|Absorbance|Fraction of Total Absorbance");
    EXPECT_EQ(titles(1), "Concentration (mg/mL)|Concentration (mg/mL)|Weight Fraction");
    EXPECT_EQ(titles(2), "Concentration (molar)|Concentration (Molar)|Mole Fraction");
    EXPECT_EQ(titles(3), "Fringes|Fringes|Fraction of Total Fringes");
    EXPECT_EQ(titles(4), titles(1));
    EXPECT_EQ(titles(5), titles(2));
}

TEST_F(SpeciesGraphs, OfOneSetSayWhichSetItIs) {
    Fit("Model02");
    Work.FitTitle = "monomer <-> dimer fit";
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Fraction, SetNo(3)));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "monomer <-> dimer fit, set3.RA1");
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Fraction, AllSets));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "monomer <-> dimer fit");
}

TEST_F(SpeciesGraphs, ColourTellsTheSpeciesAndDashTheSet) {
    Fit("Model02EighteenSets");
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets));
    for (long k = 1; k <= 18; ++k) {
        const int first = static_cast<int>(3 * (k - 1));
        EXPECT_EQ(SetColor(first + 1), SetColor(1)) << k;
        EXPECT_EQ(SetColor(first + 2), SetColor(2)) << k;
        EXPECT_EQ(SetColor(first + 3), SetColor(3)) << k;
        EXPECT_EQ(Chart.Looks.Sets[static_cast<std::size_t>(first)].Dash, k - 1);
    }
    EXPECT_NE(SetColor(1), SetColor(2));
    EXPECT_NE(SetColor(1), SetColor(3)) << "the total looks like the monomer";
    EXPECT_NE(SetColor(2), SetColor(3));
    std::vector<std::string> legend;
    for (const LegendEntry& entry : LegendEntries())
        legend.push_back(entry.Name);
    ASSERT_EQ(legend.size(), 3U + 18U);
    EXPECT_EQ(legend[0], "monomer");
    EXPECT_EQ(legend[1], "dimer");
    EXPECT_EQ(legend[2], "total c");
    EXPECT_EQ(legend[3], "set1.RA1");
    EXPECT_EQ(SetColor(LegendEntries()[1].LineSet), SetColor(2));
    EXPECT_EQ(SetColor(LegendEntries()[2].LineSet), SetColor(3));
    EXPECT_NE(Screen.FindText("set18.RA1"), nullptr) << "eighteen sets do not fit";
    ASSERT_TRUE(MakeFitGraph(FitGraph::Function, AllSets, {}));
    EXPECT_TRUE(Chart.Looks.Sets.empty()) << "looks outlived their graph";
}

// There are five dashes: with eighteen sets a few symbols along each line tell apart those that share one.
TEST_F(SpeciesGraphs, EighteenSetsAreToldApartBySymbolsAndDashes) {
    Fit("Model02EighteenSets");
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets));
    std::set<std::pair<int, int>> looks, legend;
    const std::vector<LegendEntry> entries = LegendEntries();
    for (int k = 0; k < 18; ++k) {
        const std::int16_t dash = Chart.Cycles.Line2[static_cast<std::size_t>(k)];
        for (int column = 1; column <= 3; ++column)
            looks.insert({dash, SymbolOf(3 * k + column)});
        const LegendEntry& entry = entries[static_cast<std::size_t>(3 + k)];
        EXPECT_EQ(entry.SymbolSet, entry.LineSet);
        legend.insert({dash, SymbolOf(entry.SymbolSet)});
    }
    EXPECT_EQ(looks.size(), 18U) << "the species of a set differ, or two sets do not";
    EXPECT_EQ(legend, looks);
    EXPECT_EQ(entries[0].SymbolSet, 0) << "a species has no symbol";
    const auto ellipses = [this] { return Screen.OfKind("ellipse").size(); };
    EXPECT_GE(ellipses(), 2U * 3U * 5U) << "solid and open circles, five or more along each of three lines";
    EXPECT_LE(ellipses(), 2U * (3U * 8U + 1U));
}

TEST_F(SpeciesGraphs, FewSetsAreToldApartByDashesAlone) {
    Fit("Model02");
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets));
    ASSERT_LE(Work.NumSets, 5);
    EXPECT_TRUE(Screen.OfKind("ellipse").empty() && Screen.OfKind("polygon").empty());
    for (const LegendEntry& entry : LegendEntries())
        EXPECT_EQ(entry.SymbolSet, 0);
}

TEST_F(SpeciesGraphs, OfferTheLogarithm) {
    Fit("Model02");
    ASSERT_TRUE(MakeSpeciesGraph(SpeciesGraph::Concentration, SetNo(1)));
    EXPECT_EQ(Charts.SpecialOpts[LogYOption].Text, "Convert Y-Axis to Natural Log");
    const double before = YAt(3, 2);
    Charts.SpecialActions[LogYOption]();
    EXPECT_NEAR(YAt(3, 2), std::log(before), 1e-6);
    EXPECT_EQ(YTitle(), "Ln (Absorbance)");
    EXPECT_FALSE(Chart.Looks.Sets.empty());
}

TEST_F(SpeciesGraphs, InWeightOfTwoKindsOfMonomersAreRefused) {
    Fit("Model08");
    Work.ConcUnits = ConcUnit::Weight;
    EXPECT_THROW(MakeSpeciesGraph(SpeciesGraph::Concentration, AllSets), RuntimeError);
}

TEST_F(SpeciesGraphs, OfOneSetAskForIt) {
    Fit("Model02");
    Outside.ExpectModal(PickSetName, [] {
        PickSetRow(SetNo(3));
        PickSetOkButton();
    });
    GraphSpeciesFractionSet();
    EXPECT_EQ(Names(), (std::vector<std::string>{"monomer", "dimer"}));
    EXPECT_EQ(Outside.Forms, std::vector<std::string>{"show Charts"});
}

} // namespace
} // namespace Quillon
