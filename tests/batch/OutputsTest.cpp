// What quillon-fit writes: results, points and report of the same fit agree with each other and with the
// files that were read.
#include "files/Sha256.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <sstream>

namespace Quillon {
namespace {

struct Point {
    long Set, Row;
    std::string Kind, Radius, X;
    double Y, Fit, Residual;
};

std::vector<Point> ReadPoints(const std::string& text) {
    std::vector<std::string> lines = LinesOf(text);
    EXPECT_EQ(lines.at(0), "set,row,kind,radius_cm,x_cm2,y,fit,residual");
    std::vector<Point> points;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        std::vector<std::string> cells;
        std::istringstream line(lines[i]);
        for (std::string cell; std::getline(line, cell, ',');)
            cells.push_back(cell);
        EXPECT_EQ(cells.size(), 8U) << lines[i];
        points.push_back({std::stol(cells[0]), std::stol(cells[1]), cells[2], cells[3], cells[4],
                          std::stod(cells[5]), std::stod(cells[6]), std::stod(cells[7])});
    }
    return points;
}

// One fit of two sets with a loading of set 2, with confidence limits, and all that it wrote.
class BatchOutputs : public testing::Test {
protected:
    Script TheScript;
    Workspace Truth;
    JsonValue Results;
    std::vector<Point> Points;
    std::string Report;

    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }

    void SetUp() override {
        ModelCase small = SmallCase(60);
        small.Sets[1].ToleranceA = 0.02F;
        small.Sets[1].Row = 5;
        Truth = SimulatedWorkspace(small);
        std::string text = JobTextOf(Truth, TheScript);
        text.insert(text.find('\n') + 1, "confidence-limits = yes\nmass-units = molar\n");
        text += "[parameters]\nZero Offset, set 1 = 0.001 fit\n";
        const std::string job = TheScript.MakeFile("fit.job", text);
        const ProgramEnd end = RunInside({job, "--report", Path("r.txt"), "--results", Path("r.json"),
                                          "--points", Path("p.csv"), "--quiet"});
        ASSERT_EQ(end.Status, 0) << end.Err;
        EXPECT_EQ(end.Out, "");
        Results = ReadJson(ReadWholeFile(Path("r.json")));
        Points = ReadPoints(ReadWholeFile(Path("p.csv")));
        Report = ReadWholeFile(Path("r.txt"));
    }
};

TEST_F(BatchOutputs, MembersStandInTheirOrder) {
    EXPECT_EQ(Results.Names,
              (std::vector<std::string>{"program", "version", "converged", "message", "iterations", "check",
                                        "rescued", "remark", "model", "sum_of_squares", "rms_residual",
                                        "degrees_of_freedom", "runs_z", "confidence", "parameters",
                                        "correlations", "sets", "derived"}));
    EXPECT_EQ(Results["model"].Names, (std::vector<std::string>{"number", "name", "nonideal", "separate_k"}));
    EXPECT_EQ(Results["confidence"].Names, (std::vector<std::string>{"level", "ratio", "searched"}));
    EXPECT_EQ(Results["parameters"][0].Names,
              (std::vector<std::string>{"slot", "name", "unit", "state", "internal", "value", "error",
                                        "lower", "upper", "at_bound", "note"}));
    EXPECT_EQ(Results["check"].Names, (std::vector<std::string>{"expected_decrease", "minimum"}));
    EXPECT_EQ(Results["correlations"].Names, (std::vector<std::string>{"slots", "matrix"}));
    EXPECT_EQ(Results["sets"][0].Names, (std::vector<std::string>{"set",
                                                                  "row",
                                                                  "label",
                                                                  "points",
                                                                  "rms",
                                                                  "file",
                                                                  "files",
                                                                  "scans_averaged",
                                                                  "rms_between",
                                                                  "sha256",
                                                                  "baseline_sha256",
                                                                  "remark",
                                                                  "baseline_remark",
                                                                  "cell",
                                                                  "channel",
                                                                  "speed_rpm",
                                                                  "temperature_c",
                                                                  "wavelength_nm",
                                                                  "omega2t",
                                                                  "time_s",
                                                                  "averaged",
                                                                  "inner_cm",
                                                                  "outer_cm",
                                                                  "path_cm",
                                                                  "optics",
                                                                  "mean_residual",
                                                                  "runs_z",
                                                                  "noise",
                                                                  "mean_total",
                                                                  "populations",
                                                                  "note",
                                                                  "left_out",
                                                                  "left_out_by",
                                                                  "intensity",
                                                                  "ceiling"}));
    EXPECT_EQ(Results["derived"][0].Names,
              (std::vector<std::string>{"slot", "name", "ln_k", "log10_k", "kd", "kd_root", "unit",
                                        "delta_g_kj", "lower", "upper", "convention", "reason"}));
}

TEST_F(BatchOutputs, SetsTellWhatWasMeasured) {
    const JsonValue& set = Results["sets"][1];
    const long row = 5;
    EXPECT_EQ(set["file"].Text, "set5.txt");
    EXPECT_EQ(set["sha256"].Text, Sha256(ReadWholeFile(Path("set5.txt"))));
    EXPECT_TRUE(set["baseline_sha256"].IsNull());
    EXPECT_TRUE(set["remark"].IsNull());
    EXPECT_EQ(static_cast<float>(set["speed_rpm"].Number), Truth.ScanRPM[row]);
    EXPECT_EQ(static_cast<float>(set["temperature_c"].Number), Truth.ScanTemperature[row]);
    EXPECT_EQ(static_cast<float>(set["path_cm"].Number), Truth.CellPath[row]);
    EXPECT_EQ(set["optics"].Text, "absorbance");
    EXPECT_TRUE(set["noise"].IsNull());
    double sum = 0.0;
    std::string inner, outer;
    for (const Point& point : Points) {
        if (point.Set != 2 || point.Kind != "data") continue;
        sum += point.Residual;
        if (inner.empty()) inner = point.Radius;
        outer = point.Radius;
    }
    EXPECT_NEAR(set["mean_residual"].Number, sum / 60.0, 1e-9);
    EXPECT_EQ(set["inner_cm"].Number, std::stod(inner));
    EXPECT_EQ(set["outer_cm"].Number, std::stod(outer));
}

TEST_F(BatchOutputs, ResultsTellTheFit) {
    EXPECT_EQ(Results["program"].Text, "Quillon");
    EXPECT_EQ(Results["version"].Text, "4.0.0");
    EXPECT_TRUE(Results["converged"].Flag);
    EXPECT_EQ(Results["message"].Text, "");
    EXPECT_GE(Results["iterations"].Number, 2.0);
    EXPECT_LT(Results["check"]["expected_decrease"].Number, 1.0);
    EXPECT_TRUE(Results["check"]["minimum"].Flag);
    EXPECT_FALSE(Results["rescued"].Flag);
    EXPECT_TRUE(Results["parameters"][0]["note"].Text.starts_with("correlated "));
    EXPECT_TRUE(Results["parameters"][1]["note"].IsNull()); // held
    EXPECT_EQ(Results["model"]["number"].Number, 2.0);
    EXPECT_EQ(Results["model"]["name"].Text, "monomer - dimer");
    EXPECT_FALSE(Results["model"]["nonideal"].Flag);
    EXPECT_EQ(Results["sets"][0]["label"].Text, "set1.txt");
    EXPECT_EQ(Results["sets"][1]["set"].Number, 2.0);
    EXPECT_EQ(Results["sets"][1]["row"].Number, 5.0);
    EXPECT_EQ(Results["sets"][1]["points"].Number, 60.0); // the loading is none
}

TEST_F(BatchOutputs, ParametersHaveStateErrorAndLimits) {
    const JsonValue& all = Results["parameters"];
    std::string states;
    for (const JsonValue& parameter : all.Items) {
        states += parameter["name"].Text + ":" + parameter["state"].Text + " ";
        const bool fitted = parameter["state"].Text == "fitted";
        EXPECT_EQ(parameter["error"].IsNull(), !fitted);
        EXPECT_EQ(parameter["lower"].IsNull(), !fitted);
        EXPECT_EQ(parameter["at_bound"].Number, 0.0);
        if (!fitted) continue;
        EXPECT_GT(parameter["error"].Number, 0.0);
        EXPECT_LT(parameter["lower"].Number, parameter["value"].Number);
        EXPECT_GT(parameter["upper"].Number, parameter["value"].Number);
    }
    EXPECT_EQ(states, "MW A mon:fitted N:held Ln K(1>N):fitted Ln c(A,mon), set 1:fitted Zero Offset, set "
                      "1:fitted Ln c(A,mon), set 2:fitted Zero Offset, set 2:held ");
    // The noise of the data leaves the mass within a few of its errors.
    EXPECT_EQ(all[0]["unit"].Text, "kDa");
    EXPECT_NEAR(all[0]["value"].Number, 40.0, 4.0 * all[0]["error"].Number);
    EXPECT_TRUE(Results["confidence"]["searched"].Flag);
    EXPECT_GT(Results["confidence"]["ratio"].Number, 1.0);
    EXPECT_EQ(static_cast<float>(Results["confidence"]["level"].Number), 0.683F);
}

TEST_F(BatchOutputs, CorrelationsAreALowerTriangleOverTheFittedSlots) {
    const JsonValue& slots = Results["correlations"]["slots"];
    const JsonValue& matrix = Results["correlations"]["matrix"];
    std::vector<double> fitted;
    for (const JsonValue& parameter : Results["parameters"].Items)
        if (parameter["state"].Text == "fitted") fitted.push_back(parameter["slot"].Number);
    ASSERT_EQ(slots.Items.size(), fitted.size());
    ASSERT_EQ(matrix.Items.size(), fitted.size());
    for (std::size_t a = 0; a < fitted.size(); ++a) {
        EXPECT_EQ(slots[a].Number, fitted[a]);
        ASSERT_EQ(matrix[a].Items.size(), a + 1);
        EXPECT_EQ(matrix[a][a].Number, 1.0);
        for (std::size_t b = 0; b < a; ++b)
            EXPECT_LE(std::fabs(matrix[a][b].Number), 1.0);
    }
}

TEST_F(BatchOutputs, PointsAreThoseOfTheScans) {
    ASSERT_EQ(Points.size(), 121U);
    std::size_t at = 0;
    for (const long row : {1L, 5L}) {
        const long first = Truth.FitRange[0][row];
        const long last = Truth.FitRange[1][row];
        const double r1 = Truth.ScanRadius[row][first];
        const double r2 = Truth.ScanRadius[row][last];
        for (long p = first; p <= last; ++p, ++at) {
            const Point& point = Points[at];
            EXPECT_EQ(point.Row, row);
            EXPECT_EQ(point.Set, row == 1 ? 1 : 2);
            EXPECT_EQ(point.Kind, "data");
            EXPECT_EQ(std::stof(point.Radius), Truth.ScanRadius[row][p]);
            EXPECT_EQ(static_cast<float>(point.Y), Truth.ScanValue[row][p]);
            const double r = Truth.ScanRadius[row][p];
            EXPECT_EQ(std::stof(point.X), static_cast<float>(r * r / 2.0 - (r1 * r1 + r2 * r2) / 4.0));
        }
    }
    const Point& loading = Points[at];
    EXPECT_EQ(loading.Kind, "constraint");
    EXPECT_EQ(loading.Set, 2);
    EXPECT_EQ(loading.Radius, "");
    EXPECT_EQ(loading.X, "");
    // Loading over tolerance, weighted with the signal at the outer end.
    EXPECT_NEAR(loading.Y, Truth.ConcConstraintA[5] * Points[at - 1].Y / 0.02, 1e-5 * loading.Y);
}

TEST_F(BatchOutputs, StatisticsFollowFromThePoints) {
    double sum = 0.0;
    std::map<long, double> ofSet;
    for (const Point& point : Points) {
        EXPECT_EQ(static_cast<float>(point.Residual),
                  static_cast<float>(point.Y) - static_cast<float>(point.Fit));
        sum += point.Residual * point.Residual;
        if (point.Kind == "data") ofSet[point.Set] += point.Residual * point.Residual;
    }
    const double freedom = 121.0 - 5.0; // mass, constant, two concentrations, one offset
    EXPECT_EQ(Results["degrees_of_freedom"].Number, freedom);
    EXPECT_NEAR(Results["sum_of_squares"].Number, sum, 1e-4 * sum); // fit and residual are singles here
    EXPECT_NEAR(Results["rms_residual"].Number, std::sqrt(sum / freedom), 1e-4 * std::sqrt(sum / freedom));
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_NEAR(Results["sets"][i]["rms"].Number, std::sqrt(ofSet[static_cast<long>(i) + 1] / 60.0),
                    1e-6);
}

TEST_F(BatchOutputs, RunsZFollowsFromThePoints) {
    double positive = 0.0, negative = 0.0, changes = 0.0;
    for (std::size_t i = 0; i < Points.size(); ++i) {
        (Points[i].Residual >= 0.0 ? positive : negative) += 1.0;
        if (i > 0 && Points[i].Set == Points[i - 1].Set)
            changes += (Points[i].Residual >= 0.0) != (Points[i - 1].Residual >= 0.0);
    }
    const double n = positive + negative;
    const double mixed = 2.0 * positive * negative;
    const double z =
        std::fabs(changes - (mixed / n + 1.0)) / std::sqrt(mixed * (mixed - n) / (n * n * (n - 1.0)));
    EXPECT_NEAR(Results["runs_z"].Number, z, 1e-5 * z);
}

TEST_F(BatchOutputs, ReportTellsModelDataAndLimits) {
    EXPECT_NE(Report.find("Fitting to an ideal monomer - dimer model"), std::string::npos);
    EXPECT_NE(Report.find("set1.txt"), std::string::npos);
    EXPECT_NE(Report.find("Results of fit:"), std::string::npos);
    EXPECT_NE(Report.find("confidence intervals are for 68.3% confidence"), std::string::npos) << Report;
}

TEST(BatchOutputStreams, ReportIsTheStandardOutput) {
    Script script;
    const Workspace truth = SimulatedWorkspace(SmallCase());
    const std::string job = script.MakeFile("fit.job", JobTextOf(truth, script));
    const std::string report = script.Directory() + "/r.txt";
    const ProgramEnd end = RunInside({job});
    EXPECT_EQ(end.Status, 0) << end.Err;
    EXPECT_EQ(RunInside({job, "--report", report}).Out, "");
    EXPECT_EQ(end.Out, ReadWholeFile(report));
    EXPECT_NE(end.Out, "");
}

TEST(BatchOutputStreams, EveryRunGivesTheSameBytes) {
    Script script;
    const Workspace truth = SimulatedWorkspace(SmallCase());
    ProgramStart start;
    script.MakeFile("fit.job", JobTextOf(truth, script));
    start.Directory = script.Directory();
    start.Arguments = {"fit.job", "--results", "-"};
    const ProgramEnd one = RunProgram(start);
    EXPECT_EQ(one.Status, 0) << one.Err;
    start.Arguments = {script.Directory() + "/fit.job", "--results", "-"};
    start.Directory = "/";
    EXPECT_EQ(RunProgram(start).Out, one.Out); // wherever it is run from
}

} // namespace
} // namespace Quillon
