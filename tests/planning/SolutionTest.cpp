// What follows from a sequence, and the density and viscosity of water and buffers, against published tables
// and formulas of others.
#include "planning/solution/Buffer.h"
#include "planning/solution/Sequence.h"
#include "planning/solution/Water.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace Quillon {
namespace {

// What calling work is told; "" where it is not refused.
template <class Work> std::string Refusal(Work&& work) {
    try {
        work();
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

const char* const Lysozyme =
    "KVFGRCELAAAMKRHGLDNYRGYSLGNWVCAAKFESNFNTQATNRNTDGSTDYGILQINSRWWCNDGRTPGSRNLCNIPCSALLSSDITASVNC"
    "AKKIVSDGNGMNAWVAWRNRCKGTDVQAWIRGCRL";
const char* const Ribonuclease =
    "KETAAAKFERQHMDSSTSAASSSNYCNQMMKSRNLTKDRCKPVNTFVHESLADVQAVCSQKNVACKNGQTNCYQSYSTMSITDCRETGSSKYPNC"
    "AYKTTQANKHIIVACEGNPYVPVHFDASV";
const char* const Ubiquitin = "MQIFVKTLTGKTITLEVEPSDTIENVKAKIQDKEGIPPDQQRLIFAGKQLEDGRTLSDYNIQKESTLHLVLRLRGG";

// Hen egg white lysozyme, 129 residues: A12 R11 N14 D7 C8 Q3 E2 G12 H1 I6 L8 K6 M2 F3 P2 S10 T7 W6 Y3 V6.
// Masses to two decimals and volumes as Laue et al. print them; four disulfide bonds.
TEST(ProteinFromSequence, LysozymeAddedUpByHand) {
    const double mass = 12 * 71.08 + 11 * 156.19 + 14 * 114.10 + 7 * 115.09 + 8 * 103.14 + 3 * 128.13 +
                        2 * 129.12 + 12 * 57.05 + 1 * 137.14 + 6 * 113.16 + 8 * 113.16 + 6 * 128.17 +
                        2 * 131.20 + 3 * 147.18 + 2 * 97.12 + 10 * 87.08 + 7 * 101.11 + 6 * 186.21 +
                        3 * 163.18 + 6 * 99.13;
    const double volume = 12 * 71.08 * 0.74 + 11 * 156.19 * 0.70 + 14 * 114.10 * 0.62 + 7 * 115.09 * 0.60 +
                          8 * 103.14 * 0.63 + 3 * 128.13 * 0.67 + 2 * 129.12 * 0.66 + 12 * 57.05 * 0.64 +
                          1 * 137.14 * 0.67 + 6 * 113.16 * 0.90 + 8 * 113.16 * 0.90 + 6 * 128.17 * 0.82 +
                          2 * 131.20 * 0.75 + 3 * 147.18 * 0.77 + 2 * 97.12 * 0.76 + 10 * 87.08 * 0.63 +
                          7 * 101.11 * 0.70 + 6 * 186.21 * 0.74 + 3 * 163.18 * 0.71 + 6 * 99.13 * 0.86;
    const ProteinValues values = ValuesOfChain({"", Lysozyme}, {}, 25.0);
    EXPECT_EQ(values.Residues, 129);
    EXPECT_EQ(values.Disulfides, 4);
    EXPECT_NEAR(values.VBar, volume / mass, 5e-6);
    EXPECT_NEAR(values.MassDa, mass + 18.02 - 8 * 1.008, 0.3);
    EXPECT_NEAR(values.MassDa, 14305.1, 0.3); // as it is quoted; carbon was 12.011 then
    EXPECT_EQ(values.Extinction280, 6 * 5500.0 + 3 * 1490.0 + 4 * 125.0);
    EXPECT_NEAR(values.Absorptivity280, 37970.0 / 14305.1, 1e-4);
}

// Bovine ribonuclease A, 124 residues: A12 R4 N10 D5 C8 Q7 E5 G3 H4 I3 L2 K10 M4 F3 P4 S15 T10 Y6 V9.
TEST(ProteinFromSequence, RibonucleaseAddedUpByHand) {
    const double mass = 12 * 71.08 + 4 * 156.19 + 10 * 114.10 + 5 * 115.09 + 8 * 103.14 + 7 * 128.13 +
                        5 * 129.12 + 3 * 57.05 + 4 * 137.14 + 3 * 113.16 + 2 * 113.16 + 10 * 128.17 +
                        4 * 131.20 + 3 * 147.18 + 4 * 97.12 + 15 * 87.08 + 10 * 101.11 + 6 * 163.18 +
                        9 * 99.13;
    const double volume = 12 * 71.08 * 0.74 + 4 * 156.19 * 0.70 + 10 * 114.10 * 0.62 + 5 * 115.09 * 0.60 +
                          8 * 103.14 * 0.63 + 7 * 128.13 * 0.67 + 5 * 129.12 * 0.66 + 3 * 57.05 * 0.64 +
                          4 * 137.14 * 0.67 + 3 * 113.16 * 0.90 + 2 * 113.16 * 0.90 + 10 * 128.17 * 0.82 +
                          4 * 131.20 * 0.75 + 3 * 147.18 * 0.77 + 4 * 97.12 * 0.76 + 15 * 87.08 * 0.63 +
                          10 * 101.11 * 0.70 + 6 * 163.18 * 0.71 + 9 * 99.13 * 0.86;
    const ProteinValues values = ValuesOfChain({"", Ribonuclease}, {}, 25.0);
    EXPECT_EQ(values.Residues, 124);
    EXPECT_NEAR(values.VBar, volume / mass, 5e-6);
    EXPECT_NEAR(values.MassDa, 13682.2, 0.2);
    EXPECT_EQ(values.Extinction280, 6 * 1490.0 + 4 * 125.0);
}

// Human ubiquitin, 76 residues: A2 R4 N2 D5 Q6 E6 G6 H1 I7 L9 K7 M1 F2 P3 S3 T7 Y1 V4.
TEST(ProteinFromSequence, UbiquitinAddedUpByHand) {
    const double mass = 2 * 71.08 + 4 * 156.19 + 2 * 114.10 + 5 * 115.09 + 6 * 128.13 + 6 * 129.12 +
                        6 * 57.05 + 137.14 + 7 * 113.16 + 9 * 113.16 + 7 * 128.17 + 131.20 + 2 * 147.18 +
                        3 * 97.12 + 3 * 87.08 + 7 * 101.11 + 163.18 + 4 * 99.13;
    const double volume = 2 * 71.08 * 0.74 + 4 * 156.19 * 0.70 + 2 * 114.10 * 0.62 + 5 * 115.09 * 0.60 +
                          6 * 128.13 * 0.67 + 6 * 129.12 * 0.66 + 6 * 57.05 * 0.64 + 137.14 * 0.67 +
                          7 * 113.16 * 0.90 + 9 * 113.16 * 0.90 + 7 * 128.17 * 0.82 + 131.20 * 0.75 +
                          2 * 147.18 * 0.77 + 3 * 97.12 * 0.76 + 3 * 87.08 * 0.63 + 7 * 101.11 * 0.70 +
                          163.18 * 0.71 + 4 * 99.13 * 0.86;
    const ProteinValues values = ValuesOfChain({"", Ubiquitin}, {}, 25.0);
    EXPECT_EQ(values.Residues, 76);
    EXPECT_EQ(values.Disulfides, 0);
    EXPECT_NEAR(values.VBar, volume / mass, 5e-6);
    EXPECT_NEAR(values.MassDa, 8564.8, 0.1);
    EXPECT_EQ(values.Extinction280, 1490.0);
}

// Measured in dilute salt, 20 to 25 degrees: 0.703 to 0.726 of lysozyme, 0.695 to 0.703 of ribonuclease A,
// 0.734 of bovine serum albumin. The volumes of residues miss one protein by 0.01.
TEST(ProteinFromSequence, VBarIsThatMeasuredWithinItsError) {
    const std::pair<char, int> residues[] = {{'A', 47}, {'R', 23}, {'N', 14}, {'D', 40}, {'C', 35},
                                             {'Q', 20}, {'E', 59}, {'G', 16}, {'H', 17}, {'I', 14},
                                             {'L', 61}, {'K', 59}, {'M', 4},  {'F', 27}, {'P', 28},
                                             {'S', 28}, {'T', 33}, {'W', 2},  {'Y', 20}, {'V', 36}};
    std::string albumin;
    for (const auto& [letter, count] : residues)
        albumin += std::string(static_cast<std::size_t>(count), letter);
    const ProteinValues values = ValuesOfChain({"", albumin}, 17, 25.0);
    EXPECT_EQ(values.Residues, 583);
    EXPECT_NEAR(values.MassDa, 66398.7, 1.0); // 66433 without bonds
    EXPECT_EQ(values.Extinction280, 42925.0);
    EXPECT_NEAR(values.VBar, 0.734, 2e-3);
    const double lysozyme = ValuesOfChain({"", Lysozyme}, {}, 20.0).VBar;
    EXPECT_GT(lysozyme, 0.703);
    EXPECT_LT(lysozyme, 0.726);
    const double ribonuclease = ValuesOfChain({"", Ribonuclease}, {}, 20.0).VBar;
    EXPECT_GT(ribonuclease, 0.695);
    EXPECT_LT(ribonuclease, 0.703 + 0.01);
}

// Residues from their formulas C, H, N, O, S.
TEST(ProteinFromSequence, MassesOfResiduesAreThoseOfTheirFormulas) {
    struct Formula {
        int C, H, N, O, S;
    };
    const std::map<char, Formula> formulas{
        {'G', {2, 3, 1, 1, 0}},  {'A', {3, 5, 1, 1, 0}},  {'S', {3, 5, 1, 2, 0}}, {'P', {5, 7, 1, 1, 0}},
        {'V', {5, 9, 1, 1, 0}},  {'T', {4, 7, 1, 2, 0}},  {'C', {3, 5, 1, 1, 1}}, {'L', {6, 11, 1, 1, 0}},
        {'I', {6, 11, 1, 1, 0}}, {'N', {4, 6, 2, 2, 0}},  {'D', {4, 5, 1, 3, 0}}, {'Q', {5, 8, 2, 2, 0}},
        {'K', {6, 12, 2, 1, 0}}, {'E', {5, 7, 1, 3, 0}},  {'M', {5, 9, 1, 1, 1}}, {'H', {6, 7, 3, 1, 0}},
        {'F', {9, 9, 1, 1, 0}},  {'R', {6, 12, 4, 1, 0}}, {'Y', {9, 9, 1, 2, 0}}, {'W', {11, 10, 2, 1, 0}}};
    ASSERT_EQ(formulas.size(), 20U);
    for (const auto& [letter, f] : formulas) {
        const double mass = f.C * 12.0107 + f.H * 1.00794 + f.N * 14.0067 + f.O * 15.9994 + f.S * 32.065;
        EXPECT_NEAR(ConstantsOfResidue(letter).MassDa, mass, 1e-3) << letter;
    }
}

TEST(ProteinFromSequence, TemperatureBondsAndChains) {
    const ProteinValues at25 = ValuesOfChain({"", Lysozyme}, 0, 25.0);
    EXPECT_NEAR(ValuesOfChain({"", Lysozyme}, 0, 4.0).VBar, at25.VBar - 21.0 * 4.25e-4, 1e-12);
    EXPECT_NEAR(at25.MassDa - ValuesOfChain({"", Lysozyme}, 1, 25.0).MassDa, 2 * 1.00794, 1e-9);
    EXPECT_EQ(at25.Extinction280, 37470.0);
    const ProteinValues two = ValuesOfChains({{"", Ubiquitin}, {"", Ubiquitin}}, {}, 20.0);
    const ProteinValues one = ValuesOfChain({"", Ubiquitin}, {}, 20.0);
    EXPECT_NEAR(two.MassDa, 2.0 * one.MassDa, 1e-9);
    EXPECT_NEAR(two.VBar, one.VBar, 1e-12);
    EXPECT_EQ(Refusal([] {
                  ValuesOfChain({"", Lysozyme}, 5, 25.0);
              }),
              "There are 8 cysteines: no more than 4 disulfide bonds");
    EXPECT_NE(Refusal([] {
                  ValuesOfChain({"", Lysozyme}, {}, 101.0);
              }).find("between 0 and 100"),
              std::string::npos);
}

TEST(ProteinFromSequence, FastaAndPlainLetters) {
    const auto chains = ReadSequences(">first chain\r\nmqif vktl\r\n10 TG*\r\n\n; remark\n>second\nAC\nDE\n");
    ASSERT_EQ(chains.size(), 2U);
    EXPECT_EQ(chains[0].Name, "first chain");
    EXPECT_EQ(chains[0].Letters, "MQIFVKTLTG");
    EXPECT_EQ(chains[1].Letters, "ACDE");
    EXPECT_EQ(ReadSequences("acd")[0].Letters, "ACD");
}

TEST(ProteinFromSequence, ALetterThatIsNoneIsToldWithItsPlace) {
    EXPECT_EQ(Refusal([] { ReadSequences(">insulin\nGIV\nEXC"); }),
              "Letter 5 of \"insulin\" is \"X\", which stands for none of the twenty amino acids");
    EXPECT_NE(Refusal([] { ReadSequences("AC*DE"); }).find("Letter 3 of the sequence is \"D\""),
              std::string::npos);
    EXPECT_NE(Refusal([] { ReadSequences("A\xC4"); }).find("a character that is no letter"),
              std::string::npos);
    EXPECT_EQ(Refusal([] { ReadSequences(" 12 \n"); }), "the sequence has no letters");
    EXPECT_EQ(Refusal([] { ReadSequences(""); }), "There is no sequence");
    EXPECT_EQ(Refusal([] { ReadSequences(">a\n>b\nAC"); }), "\"a\" has no letters");
}

// Kell's table: 0.999972 at 4, 0.9982041 at 20, 0.993328 at 37 degrees; and the formula of the metrologists
// (M. Tanaka, G. Girard, R. Davis, A. Peuto and N. Bignell, Metrologia 38 (2001) 301), 0 to 40 degrees, whose
// water is 3 ppm denser.
TEST(Water, DensityIsThatOfTheTables) {
    EXPECT_NEAR(WaterDensity(4.0), 0.999972, 1e-6);
    EXPECT_NEAR(WaterDensity(20.0), 0.9982041, 1e-7);
    EXPECT_NEAR(WaterDensity(37.0), 0.993328, 1e-6);
    EXPECT_NEAR(WaterDensity(25.0), 0.997045, 1e-6);
    EXPECT_NEAR(WaterDensity(100.0), 0.95836, 1e-5);
    for (double t = 0.0; t <= 40.0; t += 2.5) {
        const double tanaka = 0.999974950 * (1.0 - (t - 3.983035) * (t - 3.983035) * (t + 301.797) /
                                                       (522528.9 * (t + 69.34881)));
        EXPECT_NEAR(WaterDensity(t), tanaka, 4e-6) << t;
    }
}

// The equation of the International Association for the Properties of Water and Steam for 0.1 MPa (2008).
TEST(Water, ViscosityIsThatOfTheStandardWithin4InThousand) {
    EXPECT_EQ(WaterViscosity(20.0), 1.002);
    EXPECT_NEAR(WaterViscosity(25.0), 0.8904, 5e-4);
    for (double t = 0.0; t <= 100.0; t += 5.0) {
        const double u = (t + 273.15) / 300.0;
        const double standard = (280.68 * std::pow(u, -1.9) + 511.45 * std::pow(u, -7.7) +
                                 61.131 * std::pow(u, -19.6) + 0.45903 * std::pow(u, -40.0)) /
                                1000.0;
        EXPECT_NEAR(WaterViscosity(t) / standard, 1.0, t <= 40.0 ? 1.5e-3 : 4e-3) << t;
    }
}

TEST(Water, IsLiquid) {
    for (const double t : {-0.1, 100.1, std::nan("")})
        EXPECT_NE(Refusal([t] { WaterDensity(t); }), "") << t;
}

std::size_t KindOf(const char* name) {
    return ReadSolutes(std::string(name) + "=0")[0].Kind;
}

// mol/L of so many percent by weight.
double Molar(double percent, double mass, double density) {
    return percent / 100.0 * density * 1000.0 / mass;
}

// Handbook of Chemistry and Physics, concentrative properties of aqueous solutions, 20 degrees.
TEST(Buffers, SaltsHaveTheDensitiesOfTheHandbook) {
    const struct {
        const char* Name;
        double Percent, Mass, Density;
    } rows[] = {{"NaCl", 1.0, 58.443, 1.0053},       {"NaCl", 5.0, 58.443, 1.0340},
                {"KCl", 1.0, 74.551, 1.0046},        {"KCl", 5.0, 74.551, 1.0304},
                {"CaCl2", 1.0, 110.984, 1.0065},     {"MgCl2", 1.0, 95.211, 1.0065},
                {"(NH4)2SO4", 1.0, 132.139, 1.0042}, {"KH2PO4", 1.0, 136.086, 1.0053},
                {"Na2SO4", 1.0, 142.042, 1.0073},    {"NaCl", 5.627, 58.443, 1.0385}}; // 1 mol/L
    for (const auto& row : rows) {
        const std::string text =
            std::string(row.Name) + "=" + std::to_string(Molar(row.Percent, row.Mass, row.Density));
        const BufferValues values = ValuesOfBuffer(ReadSolutes(text), 20.0);
        EXPECT_NEAR(values.Density, row.Density, 1.5e-4 + values.DensityKnownTo) << row.Name << row.Percent;
        EXPECT_LT(values.DensityKnownTo, 5e-4) << row.Name;
    }
}

// Kawahara and Tanford's line itself, at half of the weight: their 6 mol/L of guanidinium chloride
// has 1.1418.
TEST(Buffers, DenaturantsFollowTheirWeightFraction) {
    for (const double W : {0.1, 0.3, 0.45}) {
        const double urea = WaterDensity(25.0) * (1.0 + 0.2658 * W + 0.0330 * W * W);
        const double c = Molar(100.0 * W, 60.056, urea);
        EXPECT_NEAR(ValuesOfBuffer({{KindOf("urea"), c}}, 25.0).Density, urea, 1e-8) << W;
    }
    EXPECT_NEAR(ValuesOfBuffer(ReadSolutes("GuHCl=6"), 25.0).Density, 1.1418, 1e-3);
    // Over water they are 1.61 and 1.66 times as viscous.
    EXPECT_NEAR(ValuesOfBuffer(ReadSolutes("GuHCl=6"), 25.0).Viscosity / WaterViscosity(25.0), 1.61, 0.005);
    EXPECT_NEAR(ValuesOfBuffer(ReadSolutes("urea=8"), 25.0).Viscosity / WaterViscosity(25.0), 1.66, 0.005);
    EXPECT_NEAR(ValuesOfBuffer(ReadSolutes("urea=8"), 20.0).Density, 1.120,
                1e-3 + ValuesOfBuffer(ReadSolutes("urea=8"), 20.0).DensityKnownTo);
}

// Handbook of Chemistry and Physics, 20 degrees; at 0 and 40 degrees, 20 and 40 percent: E. C. Bingham and R.
// F. Jackson, Bull. Bur. Stand. 14 (1918) 59.
TEST(Buffers, SucroseIsThatOfTheTables) {
    const struct {
        const char* Text;
        double Density, Viscosity;
    } rows[] = {{"sucrose=5", 1.0178, 1.146},
                {"sucrose=10", 1.0381, 1.336},
                {"sucrose=20", 1.0810, 1.945},
                {"sucrose=30%", 1.1270, 3.187},
                {"sucrose=40", 1.1765, 6.162}};
    for (const auto& row : rows) {
        const BufferValues values = ValuesOfBuffer(ReadSolutes(row.Text), 20.0);
        EXPECT_NEAR(values.Density, row.Density, 1.2e-4) << row.Text;
        EXPECT_NEAR(values.Viscosity / row.Viscosity, 1.0, 4e-3) << row.Text;
        EXPECT_LT(values.DensityKnownTo, 1e-4) << row.Text;
    }
    const struct {
        double Percent, Celsius, Viscosity;
    } others[] = {{20.0, 0.0, 3.804}, {40.0, 0.0, 14.77}, {20.0, 40.0, 1.193}, {40.0, 40.0, 3.249}};
    for (const auto& row : others) {
        const BufferValues values = ValuesOfBuffer({{KindOf("sucrose"), row.Percent}}, row.Celsius);
        EXPECT_NEAR(values.Viscosity, row.Viscosity, values.ViscosityKnownTo) << row.Percent;
    }
    // Plato's table, 15 degrees.
    const BufferValues cool = ValuesOfBuffer(ReadSolutes("sucrose=20"), 15.0);
    EXPECT_NEAR(cool.Density, 1.08233, cool.DensityKnownTo);
}

// Density: L. W. Bosart and A. O. Snoddy, Ind. Eng. Chem. 20 (1928) 1377; viscosity: J. B. Segur and H. E.
// Oberstar, Ind. Eng. Chem. 43 (1951) 2117; 20 degrees.
TEST(Buffers, GlycerolIsThatOfTheTables) {
    const BufferValues ten = ValuesOfBuffer(ReadSolutes("glycerol=10%"), 20.0);
    const BufferValues fifty = ValuesOfBuffer(ReadSolutes("glycerol=50"), 20.0);
    EXPECT_NEAR(ten.Density, 1.02210, 3e-4);
    EXPECT_NEAR(fifty.Density, 1.12630, 3e-4);
    EXPECT_NEAR(ten.Viscosity, 1.31, 0.03);
    EXPECT_NEAR(fifty.Viscosity, 6.00, fifty.ViscosityKnownTo);
}

// Handbook, 20 degrees: sodium chloride of 1 % 1.020, of 5 % 1.085 mPa s; potassium chloride of 5 % 0.991.
TEST(Buffers, SaltsHaveTheViscositiesOfTheHandbook) {
    const auto viscosity = [](const char* name, double c) {
        return ValuesOfBuffer({{KindOf(name), c}}, 20.0).Viscosity;
    };
    EXPECT_NEAR(viscosity("NaCl", Molar(1.0, 58.443, 1.0053)), 1.020, 0.01);
    EXPECT_NEAR(viscosity("NaCl", Molar(5.0, 58.443, 1.0340)), 1.085, 0.02);
    EXPECT_NEAR(viscosity("KCl", Molar(5.0, 74.551, 1.0304)), 0.991, 0.01);
}

// The apparent volume of a trace of salt is the limit of the tables: 16.62 mL/mol of sodium chloride at 25
// degrees, 12.93 at 0.
TEST(Buffers, ATraceOfSaltTakesTheVolumeAtInfiniteDilution) {
    constexpr double c = 1e-4;
    for (const auto& [t, volume] : {std::pair{25.0, 16.62}, {0.0, 12.93}, {50.0, 17.70}}) {
        const double rho = WaterDensity(t);
        const double found =
            (58.443 - (ValuesOfBuffer({{KindOf("NaCl"), c}}, t).Density - rho) * 1000.0 / c) / rho;
        EXPECT_NEAR(found, volume + 1.868 * std::sqrt(c), 1e-6) << t;
    }
}

TEST(Buffers, AreReadFromAList) {
    const auto solutes = ReadSolutes(" nacl = 0.15 ,K2HPO4=0.01");
    ASSERT_EQ(solutes.size(), 2U);
    EXPECT_STREQ(SoluteKinds()[solutes[0].Kind].Name, "NaCl");
    EXPECT_EQ(solutes[1].Amount, 0.01);
    EXPECT_TRUE(ReadSolutes("Water").empty());
    EXPECT_EQ(ValuesOfBuffer({}, 37.0).Density, WaterDensity(37.0));
    const std::string tris = Refusal([] { ReadSolutes("Tris=0.02"); });
    EXPECT_NE(tris.find("\"Tris\" is none of the solutes"), std::string::npos);
    EXPECT_NE(tris.find("measure the density and type it into the units"), std::string::npos);
    EXPECT_EQ(Refusal([] { ReadSolutes("NaCl=3"); }), "NaCl needs an amount from 0 to 1 mol/L, not \"3\"");
    EXPECT_NE(Refusal([] { ReadSolutes("NaCl=-1"); }), "");
    EXPECT_NE(Refusal([] { ReadSolutes("NaCl=0.1x"); }), "");
    EXPECT_NE(Refusal([] { ReadSolutes("NaCl"); }).find("write NaCl=0.15"), std::string::npos);
    EXPECT_EQ(Refusal([] { ReadSolutes("NaCl=0.1,NaCl=0.2"); }), "NaCl stands twice");
    EXPECT_NE(Refusal([] { ValuesOfBuffer(ReadSolutes("NaCl=0.1"), 60.0); }).find("between 0 and 50"),
              std::string::npos);
    EXPECT_NE(Refusal([] {
                  ValuesOfBuffer(ReadSolutes("urea=10,GuHCl=7,glycerol=60"), 25.0);
              }).find("does not dissolve"),
              std::string::npos);
}

} // namespace
} // namespace Quillon
