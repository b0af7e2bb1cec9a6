// Apparent masses: one species is a level line, monomer - dimer its local slope, each window a least squares
// line in long double; and the questions.
#include "graphs/kinds/MassGraphs.h"

#include "GraphBench.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelCases.h"

#include <algorithm>
#include <cmath>

namespace Quillon {
namespace {

class MassGraphs : public GraphBench {
protected:
    // Noise-free data of a model, with the fitted function equal to them.
    void Fit(const std::string& name) { Fit(ModelCaseNamed(name)); }
    void Fit(const ModelCase& theCase) {
        Work = SimulatedWorkspace(theCase);
        Work.MassUnits = MassUnit::Molar;
        Work.PtFit.Recreate(Work.NumPts);
        ResetFitFunction();
        for (long p = 1; p <= Work.NumPts; ++p)
            Work.PtFit[p] = Work.PtY[p] = static_cast<float>(FitFunction(p));
        BuildParmScale();
    }
    static double MolarMass() { return 1000.0 * static_cast<double>(Work.Parms[0]) * Work.ParmScale[0]; }
};

TEST_F(MassGraphs, OfOneSpeciesIsALevelLine) {
    Fit("Model01");
    for (const MassAxis axis : {MassAxis::Concentration, MassAxis::Radius})
        for (long set = 1; set <= Work.NumSets; ++set) {
            const MassCurve curve = ApparentMasses(axis, SetNo(set), {true, 60, false});
            ASSERT_EQ(static_cast<long>(curve.Mass.size()), Work.SetPts[set] - 59);
            for (const double mass : curve.Mass)
                EXPECT_NEAR(mass / MolarMass(), 1.0, 1e-6) << "set " << set;
            EXPECT_EQ(curve.LeftOut, 0);
        }
    Work.MassUnits = MassUnit::Sigma;
    const double buoyancy = 1.0 - static_cast<double>(Work.SolventDensity) * static_cast<double>(Work.VbarA);
    const MassCurve buoyant = ApparentMasses(MassAxis::Radius, SetNo(1), {true, 60, false});
    Work.MassUnits = MassUnit::Molar;
    EXPECT_NEAR(buoyant.Mass[3] / (MolarMass() * buoyancy), 1.0, 1e-6);
}

TEST_F(MassGraphs, OfMonomerDimerIsTheLocalSlope) {
    ModelCase dense = ModelCaseNamed("Model02");
    dense.Sets[0].Points = 1000; // a window is so short that its line is the tangent
    Fit(dense);
    const MassCurve curve = ApparentMasses(MassAxis::Concentration, SetNo(1), {true, 11, false});
    for (std::size_t i = 0; i < curve.Mass.size(); ++i) {
        // c = m + K m^2 at the mean x of the window: d ln c / dx = sigma (m + 2 K m^2) / c
        double x = 0.0;
        for (long j = 1; j <= 11; ++j)
            x += Work.PtX[static_cast<long>(i) + j] / 11.0;
        const double m = std::exp(static_cast<double>(Work.Parms[0]) * x + Work.Parms[SlotA(1)]);
        const double d = std::exp(static_cast<double>(Work.Parms[2])) * m * m;
        // radii of four decimals make windows lopsided, and the line is then not quite the tangent
        EXPECT_NEAR(curve.Mass[i] / (MolarMass() * (m + 2 * d) / (m + d)), 1.0, 1e-4);
        const double centre =
            static_cast<double>(Work.PtFit[static_cast<long>(i) + 6]) - Work.Parms[SlotOffset(1)];
        EXPECT_NEAR(curve.X[i] / centre, 1.0, 1e-6); // an odd window stands at its middle point
    }
}

TEST_F(MassGraphs, AreLeastSquaresLinesOfEachWindow) {
    Fit("Model22");
    const long set = 2, n = 20;
    const long row = Work.SetRow[set];
    const long first = Work.SetPts[1] + 1;
    const MassCurve curve = ApparentMasses(MassAxis::Concentration, SetNo(set), {false, n, false});
    const long double w = Work.ScanRPM[row] / 30.0L * 3.14159265358979L;
    const long double rt = 83144710.0L * (Work.ScanTemperature[row] + 273.15L);
    const long double buoyancy = 1.0L - static_cast<long double>(Work.SolventDensity) * Work.VbarA;
    for (std::size_t i = 0; i < curve.Mass.size(); ++i) {
        long double sx = 0, sy = 0, sxx = 0, sxy = 0;
        for (long j = 0; j < n; ++j) {
            const long at = static_cast<long>(i) + j;
            const long double r = Work.ScanRadius[row][Work.FitRange[0][row] + at];
            const long double x = r * r / 2;
            const long double y =
                std::log(static_cast<long double>(Work.PtY[first + at]) - Work.Parms[SlotOffset(set)]);
            sx += x;
            sy += y;
            sxx += x * x;
            sxy += x * y;
        }
        const long double slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
        EXPECT_NEAR(curve.Mass[i] / static_cast<double>(slope * rt / (buoyancy * w * w)), 1.0, 1e-9);
        const long double mean = std::exp((sy + slope * (n * (sx / n) - sx)) / n); // the line at the mean x
        const double unit = Work.SetSignalScale[set] * Work.ExtinctionRatio[0][row];
        EXPECT_NEAR(curve.X[i] * unit / static_cast<double>(mean), 1.0, 1e-6);
    }
}

TEST_F(MassGraphs, StandAtTheMeanRadiusOfTheirWindow) {
    Fit("Model01");
    const long row = Work.SetRow[1];
    const auto radius = [&](long i) {
        return static_cast<double>(Work.ScanRadius[row][Work.FitRange[0][row] + i]);
    };
    const MassCurve curve = ApparentMasses(MassAxis::Radius, SetNo(1), {true, 10, false});
    double mean = 0.0;
    for (long i = 5; i < 15; ++i)
        mean += radius(i) / 10.0;
    const double centre = (radius(0) + radius(Work.SetPts[1] - 1)) / 2.0;
    EXPECT_NEAR(curve.X[5], mean - centre, 1e-9);
}

TEST_F(MassGraphs, LeaveOutWindowsThatAreNotPositive) {
    Fit("Model01");
    const long n = Work.SetPts[1];
    Work.PtY[30] = Work.Parms[SlotOffset(1)];
    const MassCurve curve = ApparentMasses(MassAxis::Radius, SetNo(1), {false, 10, false});
    EXPECT_EQ(curve.LeftOut, 10);
    EXPECT_EQ(static_cast<long>(curve.Mass.size()), n - 9 - 10);
    for (const double mass : curve.Mass)
        EXPECT_NEAR(mass / MolarMass(), 1.0, 1e-4);
    ASSERT_TRUE(MakeMassGraph(MassAxis::Radius, AllSets, {false, 10, false}));
    EXPECT_EQ(Charts.StatusLine.Text,
              "10 windows left out: a signal without its zero offset is not positive there");
    ASSERT_TRUE(MakeMassGraph(MassAxis::Radius, AllSets, {true, 10, false}));
    EXPECT_EQ(Charts.StatusLine.Text, "");
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtY[p] = -1.0F;
    try {
        MakeMassGraph(MassAxis::Radius, AllSets, {false, 10, false});
        ADD_FAILURE() << "a graph without a point";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text,
                  "no window has only positive signals; a smaller window or another zero offset may help");
    }
}

TEST_F(MassGraphs, SetsShorterThanTheWindowHaveNoPoints) {
    Fit("Model01"); // sets of 100 and of 70 points
    ASSERT_TRUE(MakeMassGraph(MassAxis::Radius, AllSets, {true, 90, false}));
    EXPECT_EQ(Chart.DataY(1, 4), MissingValue);
    EXPECT_NE(Chart.DataY(1, 1), MissingValue);
    EXPECT_THROW(MakeMassGraph(MassAxis::Radius, AllSets, {true, 101, false}), RuntimeError);
}

TEST_F(MassGraphs, AShortSetWasSaidToBeTheLongest) {
    Fit("Model01");
    const auto failure = [](long set, long window) -> std::string {
        try {
            MakeMassGraph(MassAxis::Radius, SetNo(set), {true, window, false});
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "";
    };
    EXPECT_EQ(failure(4, 90), "data set 4 has 70 points, and a window takes 90");
    EXPECT_EQ(failure(0, 101), "no data set has 101 points, the length of the window");
}

TEST_F(MassGraphs, TitlesTellUnitsAndKindOfMass) {
    Fit("Model01");
    const auto titles = [](MassAxis axis) {
        MakeMassGraph(axis, SetNo(1), {});
        return Chart.Spec.AxisX1.Title.Text.Str() + "|" + Chart.Spec.AxisY1.Title.Text.Str();
    };
    EXPECT_EQ(titles(MassAxis::Radius),
              "radius relative to sample center (cm)|Weight-Average Molar Mass (Da)");
    EXPECT_EQ(titles(MassAxis::Concentration), "Concentration (relative AU)|Weight-Average Molar Mass (Da)");
    Work.MassUnits = MassUnit::Sigma;
    Work.ConcUnits = ConcUnit::Mole;
    EXPECT_EQ(titles(MassAxis::Concentration), "Concentration (molar)|Weight-Average Buoyant Mass (Da)");
    Work.ConcUnits = ConcUnit::Weight;
    EXPECT_EQ(titles(MassAxis::Concentration), "Concentration (mg/mL)|Weight-Average Buoyant Mass (Da)");
    Work.ConcUnits = ConcUnit::Fringes;
    EXPECT_EQ(titles(MassAxis::Concentration),
              "Concentration (relative fringes)|Weight-Average Buoyant Mass (Da)");
}

TEST_F(MassGraphs, ConcentrationsGoByTheSpeciesChosen) {
    Fit("Model08");
    Work.ConcUnits = ConcUnit::Mole;
    const MassCurve a = ApparentMasses(MassAxis::Concentration, SetNo(4), {true, 11, false});
    const MassCurve b = ApparentMasses(MassAxis::Concentration, SetNo(4), {true, 11, true});
    const long row = Work.SetRow[4];
    const double ratio = static_cast<double>(Work.ExtA) * Work.ExtinctionRatio[0][row] /
                         (static_cast<double>(Work.ExtB) * Work.ExtinctionRatio[1][row]);
    EXPECT_NEAR(b.X[7] / a.X[7], ratio, 1e-6 * ratio);
    EXPECT_EQ(a.Mass, b.Mass);
}

constexpr const char* Which =
    "Do you want the plot to use the experimental data (Yes) or the theoretical fit (No)?";
constexpr const char* Window =
    "Number of radial points per calculated mass (min 10, max 100)? Higher numbers give "
    "more smoothing but give loss of detail.";

TEST_F(MassGraphs, CommandAsksUntilTheWindowIsInRange) {
    Fit("Model08");
    Outside.ExpectMessage(Which, BoxAnswer::No);
    for (const char* answer : {"9", "101", "abc", "10.5"})
        Outside.ExpectInput(Window, answer);
    Outside.ExpectInput(Window, "10");
    Outside.ExpectMessage("Do you wish to express concentrations from the properties of species A (Yes) or "
                          "species B (No)?",
                          BoxAnswer::No);
    GraphMvsC();
    EXPECT_EQ(Outside.Beeps, 4);
    EXPECT_EQ(Outside.Forms, std::vector<std::string>{"show Charts"});
    EXPECT_EQ(Chart.DataY.Points(), 91);
}

TEST_F(MassGraphs, CommandEndsWhenTheBoxIsCancelled) {
    Fit("Model08");
    Outside.ExpectMessage(Which, BoxAnswer::Yes);
    Outside.ExpectInputCancelled(Window);
    GraphMvsR();
    EXPECT_TRUE(Outside.Forms.empty());
}

} // namespace
} // namespace Quillon
