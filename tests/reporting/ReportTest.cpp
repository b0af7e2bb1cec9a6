// The printed report, word for word.
#include "reporting/Report.h"

#include "HandBuiltFit.h"
#include "reporting/ReportConstraints.h"
#include "reporting/ReportModel.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quillon {
namespace {

using Lines = std::vector<std::string>;

constexpr ReportPaper WidePaper{120, 0}; // nothing wraps, no page turns

Lines ReportLines() {
    return PrintReport(WidePaper).front();
}

// The lines from the one that begins so to the end.
Lines From(const Lines& lines, const std::string& beginning) {
    const auto first = std::find_if(lines.begin(), lines.end(),
                                    [&](const std::string& line) { return line.starts_with(beginning); });
    return Lines(first, lines.end());
}

std::string LineWith(const Lines& lines, const std::string& beginning) {
    const Lines rest = From(lines, beginning);
    return rest.empty() ? "(no such line)" : rest.front();
}

std::string ModelLine(const std::string& beginning) {
    return LineWith(PrintModelText(200), beginning);
}

TEST(Report, WhyASetHasNoPopulationsIsTold) {
    Script script;
    Work = HandBuiltFit();
    EXPECT_EQ(LineWith(ReportLines(), "   populations"), "(no such line)");
    Work.Parms[SlotA(SetNo(2))] = -1e6F; // a concentration of 0
    EXPECT_EQ(LineWith(ReportLines(), "   populations"), "   populations not known: there is nothing loaded");
}

TEST(Report, WholeReport) {
    Script script;
    Work = HandBuiltFit();
    Work.FitFile = "/home/me/fits/run7.quil";
    Work.ReportFontSize = 12.0F;
    Work.PtY[2] = -1.0F; // as in the results window: Z is the square root of 2
    const Lines expected = {
        "Fitting to an ideal monomer - dimer model",
        "Set 1, file = 00012.RA1 Channel B from radius = 5.5000cm to 6.5000cm,",
        "      3 data points; reference radius squared / 2 = 18.1250",
        "   Comment: cell 1, 0.3 mg",
        "   Baseline subtracted from file: (none)",
        "Set 2, file = 00013.RA1 from radius = 5.5000cm to 6.5000cm,",
        "      3 data points; reference radius squared / 2 = 18.1250",
        "   Comment: cell 2, 0.6 mg",
        "   Baseline subtracted from file: (none)",
        "The root directory for the above data sets is /data/run7",
        "Molecular weight values assume solute vbar = 0.73000 and solvent",
        "      density = 1.003994",
        "Concentrations are in absorbance units for a 1.20 cm pathlength",
        "",
        "Results of fit:",
        "MW A mon  (kDa)              45.0000  +/-  3.7500",
        "Ln K(1>N)  (AU^1-N)          3.2500  +/-  0.2500",
        "Ln c(A,mon), set 1  (AU)     -1.0000  +/-  0.5000",
        "Zero Offset, set 1  (AU)     -.2500  +/-  0.0625",
        "    sum-of-squared residuals = 1.234568E-3",
        "    rms error = 5.E-1 for 2 degrees of freedom; runs test Z = 1.41",
        "    convergence limit = 0.05; parameter precision = 0.1%",
        " Correlation with #           1       2       3       4",
        "  1 MW A mon            +1.0000",
        "  2 Ln K(1>N)           +0.0000 +1.0000",
        "  3 Ln c(A,mon), set 1  +0.0000 +0.0000 +1.0000",
        "  4 Zero Offset, set 1  +0.0000 +0.0000 +0.0000 +1.0000",
        "    Warning -- at the program's defaults: vbar, solvent density",
        "Parameters held constant:",
        "N                          2.0000",
        "Ln c(A,mon), set 2 (AU)    -0.5000",
        "",
        "What was measured:",
        "Set 1:",
        "   20000 rpm, 20.0 degrees C, absorbance at 280 nm",
        "   path 1.20 cm, cell 1, channel B, 0 readings averaged",
        "   after 0 s, omega^2*t = 0.000E+00 /s",
        "   3 points, rms 5.774E-01, mean residual -3.33E-01, runs Z = 0.707",
        "   mean 8.402E-01 AU: monomer 43.8%, dimer 56.2%",
        "Set 2:",
        "   20000 rpm, 20.0 degrees C, absorbance at 280 nm",
        "   path 1.20 cm, cell 1, 0 readings averaged",
        "   after 0 s, omega^2*t = 0.000E+00 /s",
        "   3 points, rms 0.000E00, mean residual 0.00E00, runs Z = 1",
        "   mean 1.891E00 AU: monomer 32.1%, dimer 67.9%",
    };
    const std::vector<PageLines> pages = PrintReport();
    ASSERT_EQ(pages.size(), 1U);
    Lines page = pages.front();
    ASSERT_EQ(page.size(), 50U);
    EXPECT_EQ(page.back(), "Results from Quillon version 4.0.0, 04/21/2020 (run7.quil)        Page 1");
    page.pop_back();
    while (page.back().empty())
        page.pop_back();
    EXPECT_EQ(page, expected);
}

TEST(Report, NeedsAFitThatStands) {
    Script script;
    Work = HandBuiltFit();
    Work.FitDone = FlagFalse;
    try {
        PrintReport();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Invalid procedure call or argument");
    }
}

TEST(Report, FooterNamesTheFitFileWhereThereIsOne) {
    Script script;
    Work = FreshWorkspace();
    EXPECT_EQ(ReportFooter(), "Results from Quillon version 4.0.0, 04/21/2020");
    Work.FitFile = "C:\\fits\\a b.quil";
    EXPECT_EQ(ReportFooter(), "Results from Quillon version 4.0.0, 04/21/2020 (a b.quil)");
    Host.Clock = [] { return ClockTime{2026, 1, 2, 3, 4, 5}; };
    Work.FitFile.clear();
    EXPECT_EQ(ReportFooter(), "Results from Quillon version 4.0.0, 01/02/2026");
}

TEST(Report, TextHasFormFeedsBetweenPages) {
    Script script;
    Work = HandBuiltFit();
    const std::string text = ReportText({72, 12});
    const std::size_t pages = PrintReport({72, 12}).size();
    EXPECT_GT(pages, 2U);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\f'), static_cast<long>(pages) - 1);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), static_cast<long>(pages) * 12);
    EXPECT_TRUE(text.starts_with("Fitting to an ideal monomer - dimer model\n"));
    EXPECT_NE(text.find("\n\f  Quillon    Page 2\n\n"), std::string::npos);
    for (std::size_t page = 1; page <= pages; ++page)
        EXPECT_NE(text.find(" Page " + std::to_string(page) + "\n"), std::string::npos);
    EXPECT_TRUE(text.ends_with("Page " + std::to_string(pages) + "\n"));
}

// --- results -------------------------------------------------------------------------------------------

TEST(Report, NoticeBeforeAParameterAtItsBound) {
    Script script;
    Work = HandBuiltFit();
    Work.AtBound[1] = 1;
    Work.AtBound[3] = -1;
    const Lines lines = From(ReportLines(), "Results of fit:");
    ASSERT_GE(lines.size(), 7U);
    EXPECT_TRUE(lines[1].starts_with("MW A mon"));
    EXPECT_EQ(lines[2], "** the following parameter was over the limit");
    EXPECT_TRUE(lines[3].starts_with("Ln K(1>N)"));
    EXPECT_TRUE(lines[4].starts_with("Ln c(A,mon), set 1"));
    EXPECT_EQ(lines[5], "** the following parameter was under the limit");
    EXPECT_TRUE(lines[6].starts_with("Zero Offset, set 1"));
}

TEST(Report, NoticeStaysWithItsParameterOnEveryLengthOfPaper) {
    Script script;
    Work = HandBuiltFit();
    Work.AtBound[1] = 1;
    Work.AtBound[3] = -1;
    for (int lines = 8; lines < 60; ++lines)
        for (const PageLines& page : PrintReport({100, lines}))
            for (std::size_t i = 0; i < page.size(); ++i)
                if (page[i].starts_with("** ")) {
                    EXPECT_TRUE(page[i + 1].starts_with("Ln K") || page[i + 1].starts_with("Zero")) << lines;
                }
}

TEST(Report, ConfidenceLimits) {
    Script script;
    Work = HandBuiltFit();
    Work.LimitsDone = FlagTrue;
    Work.LimitsLevel = 0.95F; // that of the limits, whatever is wanted by now
    Work.ConfidenceLevel = 0.683F;
    Work.ConfidenceRatio = 1.0625F;
    Work.ParmLimits[0].Recreate(3, -0.5F);
    Work.ParmLimits[1].Recreate(3, 0.25F);
    const Lines lines = From(ReportLines(), "Results of fit:");
    ASSERT_GE(lines.size(), 7U);
    EXPECT_EQ(lines[1], "MW A mon  (kDa)              45.0000  +/-  3.7500  [ -15.0000, 7.5000 ]");
    EXPECT_EQ(lines[4], "Zero Offset, set 1  (AU)     -.2500  +/-  0.0625  [ -.5000, 0.2500 ]");
    EXPECT_EQ(lines[5], "    confidence intervals are for 95.0% confidence");
    EXPECT_EQ(lines[6], "    1 + (Nparms/Ndf)*F(Nparms,Ndf,1-p) = 1.06250");
}

TEST(Report, CorrelationWarnings) {
    Script script;
    Work = HandBuiltFit();
    Work.NormMatrix(1, 0) = 0.98 * 0.125;
    Lines lines = From(ReportLines(), "    Warning -- there");
    EXPECT_EQ(lines[0], "    Warning -- there is 1 parameter cross correlation > 0.97");
    EXPECT_TRUE(lines[1].starts_with(" Correlation with #"));
    Work.NormMatrix(2, 0) = -0.995 * 0.25;
    lines = From(ReportLines(), "    Warning -- there");
    EXPECT_EQ(lines[0], "    Warning -- there are 2 parameter cross correlations > 0.97");
    EXPECT_EQ(lines[1], "       and 1 higher than 0.99");
    EXPECT_TRUE(lines[2].starts_with(" Correlation with #"));
}

TEST(Report, NothingHeldStillHasItsHead) {
    Script script;
    Work = HandBuiltFit();
    Work.FreeMap[1] = Work.FreeMap[11] = SlotUnused;
    const Lines lines = From(ReportLines(), "Parameters held constant:");
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[1], "");
    EXPECT_EQ(lines[2], "What was measured:");
}

// --- model -----------------------------------------------------------------------------------------------

TEST(Report, ModelAndItsOptions) {
    Script script;
    Work = HandBuiltFit();
    Work.NonIdeal = FlagTrue;
    EXPECT_EQ(PrintModelText(200)[0], "Fitting to a non-ideal, monomer - dimer model");
    Work.SeparateK = FlagTrue;
    EXPECT_EQ(PrintModelText(200)[0], "Fitting to a non-ideal, monomer - dimer model with separate K's");
    Work.NonIdeal = Work.SeparateK = FlagFalse;
    Work.Model = 8;
    EXPECT_EQ(PrintModelText(200)[0], "Fitting to an ideal mixed association A + B <-> AB model");
}

TEST(Report, SetsAreNumberedByTheFitAndReadFromTheirRows) {
    Script script;
    Work = HandBuiltFit();
    Work.NumSets = 1;
    Work.SetRow[1] = 2;
    Work.SetRow[2] = 0;
    Work.ScanRadius[2][2] = 5.75F;
    Work.FitRange[1][2] = 3; // radius 6: reference (5.75^2 + 36) / 4
    const Lines lines = PrintModelText(200);
    EXPECT_EQ(lines[1], "Set 1, file = 00013.RA1 from radius = 5.7500cm to 6.0000cm, 2 data points; "
                        "reference radius squared / 2 = 17.2656");
    EXPECT_EQ(lines[2], "   Comment: cell 2, 0.6 mg");
    EXPECT_EQ(LineWith(lines, "Set 2"), "(no such line)");
}

TEST(Report, PseudoPointsAreNoDataPoints) {
    Script script;
    Work = HandBuiltFitWithConstraints();
    EXPECT_NE(ModelLine("Set 1").find(", 3 data points;"), std::string::npos);
}

TEST(Report, AnUnusableRangeIsLeftOut) {
    Script script;
    Work = HandBuiltFit();
    Work.FitRange[1][1] = 5; // the scan holds four points
    EXPECT_EQ(ModelLine("Set 1"), "Set 1, file = 00012.RA1 Channel B");
}

TEST(Report, FilesOfSeveralDirectoriesAreNamedFromTheCommonOne) {
    Script script;
    Work = HandBuiltFit();
    Work.ScanDirectory[1] = "/data/Run7/cell1";
    Work.ScanDirectory[2] = "/data/run7/cell2";
    Work.LabelPrefix = "/data/Run7/";
    EXPECT_TRUE(ModelLine("Set 1").starts_with("Set 1, file = cell1/00012.RA1 Channel B"));
    EXPECT_TRUE(ModelLine("Set 2").starts_with("Set 2, file = cell2/00013.RA1 from"));
    EXPECT_EQ(ModelLine("The root"), "The root directory for the above data sets is /data/Run7");
}

TEST(Report, FilesWithoutACommonDirectoryAreNamedWhole) {
    Script script;
    Work = HandBuiltFit();
    Work.ScanDirectory[1] = "C:\\data";
    Work.ScanDirectory[2] = "D:\\data";
    Work.LabelPrefix = "/left/over/";
    EXPECT_TRUE(ModelLine("Set 1").starts_with("Set 1, file = C:\\data"));
    EXPECT_TRUE(ModelLine("Set 2").starts_with("Set 2, file = D:\\data"));
    EXPECT_EQ(ModelLine("The root"), "(no such line)");
}

TEST(Report, BaselinesAndTheirShifts) {
    Script script;
    Work = HandBuiltFit();
    Work.BaselineFile[2] = "00001.RA1";
    Work.BaselineDirectory[2] = "/data/blanks";
    Work.BaselineShift[2] = 0.002F;
    Lines lines = From(PrintModelText(200), "Set 2");
    EXPECT_EQ(lines[2], "   Baseline subtracted from file: 00001.RA1") << "the shift is not in force";
    EXPECT_EQ(LineWith(lines, "The directory"), "The directory for all baseline files is /data/blanks");
    Work.BaselineShifted[2] = FlagTrue;
    lines = From(PrintModelText(200), "Set 2");
    EXPECT_EQ(lines[2], "   Baseline subtracted from file: 00001.RA1, shifted 0.002 cm");
    Work.BaselineShift[2] = -0.0125F;
    lines = From(PrintModelText(50), "Set 2"); // too narrow for both on one line
    EXPECT_EQ(lines[2], "   Baseline subtracted from file: 00001.RA1");
    EXPECT_EQ(lines[3], "   baseline data shifted -0.0125 cm");
    EXPECT_EQ(From(PrintModelText(200), "Set 1")[2], "   Baseline subtracted from file: (none)");
}

TEST(Report, BaselinesOfSeveralDirectoriesAreNamedWhole) {
    Script script;
    Work = HandBuiltFit();
    Work.BaselineFile[1] = Work.BaselineFile[2] = "b.RA1";
    Work.BaselineDirectory[1] = "/data/x";
    Work.BaselineDirectory[2] = "/data/y";
    EXPECT_EQ(From(PrintModelText(200), "Set 1")[2], "   Baseline subtracted from file: /data/x/b.RA1");
    EXPECT_EQ(From(PrintModelText(200), "Set 2")[2], "   Baseline subtracted from file: /data/y/b.RA1");
    EXPECT_EQ(ModelLine("The directory"), "(no such line)");
}

TEST(Report, ExtinctionOfSetsAtAnotherWavelength) {
    Script script;
    Work = HandBuiltFit();
    EXPECT_EQ(ModelLine("   Extinction"), "(no such line)");
    Work.ScanWavelength[2] = 281.0F; // a nanometre is the same wavelength
    EXPECT_EQ(ModelLine("   Extinction"), "(no such line)");
    Work.ScanWavelength[2] = 250.0F;
    EXPECT_EQ(ModelLine("   Extinction"), "   Extinction is 1.0000 * that at 280 nm");
    Work.ExtinctionRatio[0][2] = 0.75F;
    Work.ExtinctionRatio[1][2] = 0.8125F;
    EXPECT_EQ(ModelLine("   Extinction"), "   Extinction is 0.7500 * that at 280 nm");
    Work.Model = 8;
    EXPECT_EQ(ModelLine("   Extinction"), "   Extinction is 0.7500 * that at 280 nm for A, and 0.8125 for B");
    EXPECT_EQ(From(PrintModelText(200), "   Extinction")[1],
              "The root directory for the above data sets is /data/run7");
}

TEST(Report, RatiosReferToTheFirstRowEvenOutsideTheFit) {
    Script script;
    Work = HandBuiltFit();
    Work.NumSets = 1;
    Work.SetRow[1] = 2;
    Work.ScanWavelength[2] = 230.0F;
    Work.ExtinctionRatio[0][2] = 1.25F;
    EXPECT_EQ(ModelLine("   Extinction"), "   Extinction is 1.2500 * that at 280 nm");
    Work.ScanWavelength[1] = 0.0F; // of a file that tells none
    EXPECT_EQ(ModelLine("   Extinction"), "   Extinction is 1.2500 * that of the first scan");
    Work.ScanWavelength[1] = 280.0F;
    Work.ScanFile[1].clear(); // nothing there to refer to
    Work.ExtinctionRatio[0][2] = 1.0F;
    EXPECT_EQ(ModelLine("   Extinction"), "(no such line)");
}

// --- constants ---------------------------------------------------------------------------------------------

Lines Constants() {
    return From(PrintModelText(200), "The root");
}

TEST(Report, ConstantsOfTheMassUnits) {
    Script script;
    Work = HandBuiltFit();
    EXPECT_EQ(Constants()[1],
              "Molecular weight values assume solute vbar = 0.73000 and solvent density = 1.003994");
    Work.Model = 8;
    Work.VbarB = 0.74125F;
    EXPECT_EQ(Constants()[1], "Molecular weight values assume solute A vbar = 0.73000");
    EXPECT_EQ(Constants()[2], "   and solute B vbar = 0.74125 and solvent density = 1.003994");
    Work.MassUnits = 0;
    EXPECT_EQ(Constants()[1], "Sigma values are referenced to 20,000 RPM and 20.000 degrees");
    Work.MassUnits = 1; // a buoyant mass needs no constant
    EXPECT_TRUE(Constants()[1].starts_with("Concentrations are"));
}

TEST(Report, SigmaRefersToTheFirstSetOfTheFit) {
    Script script;
    Work = HandBuiltFit();
    Work.MassUnits = 0;
    Work.SetRow[1] = 2;
    Work.ScanRPM[2] = 9000.0F;
    Work.ScanTemperature[2] = 4.25F;
    EXPECT_EQ(Constants()[1], "Sigma values are referenced to 9,000 RPM and 4.250 degrees");
}

TEST(Report, ConstantsOfTheConcentrationUnits) {
    Script script;
    Work = HandBuiltFit();
    Work.MassUnits = 1;
    const auto units = [](std::int16_t concUnits) {
        Work.ConcUnits = concUnits;
        Lines lines = Constants();
        lines.erase(lines.begin());
        return lines;
    };
    Work.AbsorpA = 1.25F;
    Work.ExtA = 12500.0F;
    EXPECT_EQ(units(0), Lines{"Concentrations are in absorbance units for a 1.20 cm pathlength"});
    EXPECT_EQ(units(1), (Lines{"Concentrations are based on an absorptivity of 1.250",
                               "   at a wavelength of 280 nm"}));
    EXPECT_EQ(units(2), (Lines{"Concentrations are based on an extinction coefficient of 1.250E+04",
                               "   at a wavelength of 280 nm"}));
    EXPECT_EQ(units(3), Lines{"Concentrations are in fringe units for a 1.20 cm pathlength"});
    EXPECT_EQ(units(4),
              (Lines{"Concentrations are based on a solute dn/dc of 2.756", "   at a wavelength of 280 nm"}));
    EXPECT_EQ(units(5), (Lines{"Concentrations are based on a solute dn/dc of 2.000E+04",
                               "   at a wavelength of 280 nm"}));
    Work.Model = 8;
    Work.ExtB = 800.0F;
    EXPECT_EQ(units(2),
              (Lines{"Concentrations are based on an extinction coefficient of 1.250E+04",
                     "   for species A, and 8.000E+02 for species B,", "   at a wavelength of 280 nm"}));
    Work.ScanWavelength[1] = 0.0F;
    EXPECT_EQ(units(5), (Lines{"Concentrations are based on a solute dn/dc of 2.000E+04",
                               "   for species A, and 2.000E+04 for species B"}));
    Work.CellPath[1] = 0.3F;
    EXPECT_EQ(units(0), Lines{"Concentrations are in absorbance units for a 0.30 cm pathlength"});
}

TEST(Report, ConstantsThatNobodyHasSetWereNotTold) {
    Script script;
    Work = HandBuiltFit();
    const auto told = [] { return LineWith(ReportLines(), "    Warning -- at the program"); };
    const std::string head = "    Warning -- at the program's defaults: ";
    EXPECT_EQ(told(), head + "vbar, solvent density");
    Work.SolventDensity = 1.0F;
    EXPECT_EQ(told(), head + "vbar");
    Work.VbarA = 0.74F;
    EXPECT_EQ(told(), "(no such line)");
    Work.ConcUnits = 2;
    EXPECT_EQ(told(), head + "extinction coefficient");
    Work.Model = 8;
    Work.ExtA = 12500.0F;
    EXPECT_EQ(told(), head + "vbar of B, extinction coefficient of B");
    Work.MassUnits = 1; // a buoyant mass needs no constant, and signals need none
    EXPECT_EQ(told(), head + "extinction coefficient of B");
    Work.ConcUnits = 0;
    EXPECT_EQ(told(), "(no such line)");
}

TEST(Report, TemperaturesThatChangeTheMassesWereNotTold) {
    Script script;
    Work = HandBuiltFit();
    const auto told = [] { return LineWith(ReportLines(), "    Warning -- set 2"); };
    EXPECT_EQ(told(), "(no such line)");
    Work.ScanTemperature[2] = 25.0F; // 20/25 and 293.15/298.15
    EXPECT_TRUE(told().starts_with("    Warning -- set 2: the temperature is 25 degrees and that of the "
                                   "first set 20: by their ratio in "))
        << told();
    Work.TemperatureScale = TemperatureScales::Kelvin;
    EXPECT_EQ(told(), "(no such line)");
    EXPECT_EQ(LineWith(ReportLines(), "Sigma of"),
              "Sigma of the data sets is scaled by absolute temperature");
}

// --- constraints -------------------------------------------------------------------------------------------

TEST(Report, NoConstraintsNoLines) {
    Script script;
    Work = HandBuiltFit();
    EXPECT_TRUE(PrintConstraintText().empty());
}

TEST(Report, Constraints) {
    Script script;
    Work = HandBuiltFitWithConstraints();
    EXPECT_EQ(PrintConstraintText(),
              (Lines{
                  "Match of Fit to Concentration Constraints (AU)",
                  "             Specified   Tolerance         Fit  Difference   Variance",
                  "Set 1, A        0.5000          2%      0.4844       -3.1%      1.00%",
                  "Set 1, B        0.2500       12.5%      0.2813      +12.5%     25.00%",
                  "Fraction of total fit variance from all concentration constraints = 26.00%",
                  "Zero offset for set 2 was held = to set 1",
              }));
    const Lines lines = From(ReportLines(), "Match of Fit");
    EXPECT_EQ(lines[5], "Zero offset for set 2 was held = to set 1");
    EXPECT_EQ(lines[6], "");
}

TEST(Report, ConcentrationsOfConstraintsInTheUnitsOfDisplay) {
    Script script;
    Work = HandBuiltFitWithConstraints();
    Work.ConstraintFlags = ConcentrationBit;
    Work.CellPath[1] = 0.5F;
    Work.ExtinctionRatio[0][1] = 2.0F;
    Work.ExtinctionRatio[1][1] = 0.25F;
    Work.AbsorpA = 1.25F; // 1 mg/mL of A gives 1.25
    Work.AbsorpB = 4.0F;  // 1 mg/mL of B gives 0.5
    Work.ExtA = 12500.0F;
    Work.ExtB = 8000.0F;
    const auto specified = [](std::int16_t concUnits) {
        Work.ConcUnits = concUnits;
        const Lines lines = PrintConstraintText();
        return lines[0].substr(41) + lines[2].substr(10, 12) + lines[3].substr(10, 12);
    };
    EXPECT_EQ(specified(0), " (AU)      0.5000      0.2500");
    EXPECT_EQ(specified(1), " (mg/mL)      0.4000      0.5000");
    EXPECT_EQ(specified(2), " (molar)   4.000E-05   2.500E-04");
    EXPECT_EQ(specified(3), " (fringes)      0.5000      0.2500");
    EXPECT_EQ(specified(4), " (fringes)      0.5000      0.2500");
    EXPECT_EQ(specified(5), " (fringes)      0.5000      0.2500");
}

TEST(Report, OneSpeciesConstrainedHasTheLastPointOfItsSet) {
    Script script;
    Work = HandBuiltFitWithConstraints();
    Work.ConcConstraintA[1] = 0.0F;
    Work.SetPts[1] = 4;
    Work.PtFit[4] = 0.4F; // residual 0.2 of a sum of squares of 1
    const Lines lines = PrintConstraintText();
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_TRUE(lines[2].starts_with("Set 1, B"));
    EXPECT_TRUE(lines[2].ends_with(" 4.00%"));
    EXPECT_TRUE(lines[3].ends_with("= 4.00%"));
}

} // namespace
} // namespace Quillon
