// The job file's parser: what every key means, and every way to get one wrong. An error is one line that
// names file, line, section and key.
#include "batch/job/JobFile.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>

namespace Quillon {
namespace {

Job Parse(const std::string& text) {
    return ParseJob(text, "run/fit.job");
}

std::string ErrorOf(const std::string& text) {
    try {
        Parse(text);
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "no error";
}

// A job that is complete but for what a test adds behind it.
const std::string OneSet = "[set 1]\nfile = a.RA1\n";
const std::string TwoSets = "[set 1]\nfile = a.RA1\n[set 2]\nfile = b.RA1\n";

float SettingOf(const Job& job, float Workspace::*member) {
    for (const JobSetting& setting : job.Settings)
        if (setting.Member == member) return setting.Value;
    ADD_FAILURE() << "the setting is not there";
    return 0.0F;
}

TEST(JobFile, LeastJobHasStandingValues) {
    const Job job = Parse(OneSet);
    EXPECT_EQ(job.Path, "run/fit.job");
    EXPECT_EQ(job.Model, 1);
    EXPECT_FALSE(job.NonIdeal);
    EXPECT_FALSE(job.SeparateK);
    EXPECT_EQ(job.MassUnits, 0);
    EXPECT_EQ(job.Concentration, JobUnits::Signal);
    EXPECT_EQ(job.Data, JobData::ByScans);
    EXPECT_TRUE(job.Guesses);
    EXPECT_FALSE(job.ConfidenceLimits);
    EXPECT_FALSE(job.MaxIterations);
    EXPECT_TRUE(job.Settings.empty());
    EXPECT_TRUE(job.Parameters.empty());
    ASSERT_EQ(job.Sets.size(), 1U);
    const JobSet& set = job.Sets[0];
    EXPECT_EQ(set.Number, 1);
    EXPECT_EQ(set.File, "a.RA1");
    EXPECT_FALSE(set.Inner || set.Outer || set.Path || set.BaselineShift);
    EXPECT_EQ(set.Samples, 0);
    EXPECT_EQ(set.Channel, 0);
    EXPECT_EQ(set.Baseline, "");
    EXPECT_EQ(set.OffsetOf, 0);
    EXPECT_EQ(set.Loading[0], 0.0F);
    EXPECT_EQ(set.Tolerance[0], 10.0F);
    EXPECT_EQ(set.Tolerance[1], 10.0F);
}

TEST(JobFile, FitSectionTakesEveryKey) {
    const Job job = Parse("[fit]\nmodel = 5\nnonideal = yes\nseparate-k = yes\nmass-units = molar\n"
                          "concentration-units = weight\ndata = interference\nguesses = no\n"
                          "max-iterations = 32767\nmax-points-per-set = 4000\nconvergence-limit = "
                          "1e-9\nconfidence-level = 0.95\n"
                          "confidence-limits = yes\n" +
                          OneSet);
    EXPECT_EQ(job.Model, 5);
    EXPECT_TRUE(job.NonIdeal);
    EXPECT_TRUE(job.SeparateK);
    EXPECT_EQ(job.MassUnits, 2);
    EXPECT_EQ(job.Concentration, JobUnits::Weight);
    EXPECT_EQ(job.Data, JobData::Interference);
    EXPECT_FALSE(job.Guesses);
    EXPECT_EQ(job.MaxIterations, 32767);
    EXPECT_EQ(job.MaxPtsPerSet, 4000);
    EXPECT_EQ(SettingOf(job, &Workspace::ConvergenceLimit), 1e-9F);
    EXPECT_EQ(SettingOf(job, &Workspace::ConfidenceLevel), 0.95F);
    EXPECT_TRUE(job.ConfidenceLimits);
    EXPECT_EQ(Parse("[fit]\nmass-units = buoyant\nconcentration-units = molar\ndata = absorbance\n" + OneSet)
                  .MassUnits,
              1);
}

TEST(JobFile, ConstantsGoToTheirMembers) {
    const Job job = Parse("[constants]\nvbar-a = 0.71\nvbar-b = 0.72\ndensity = 1.01\nabsorptivity-a = 1.1\n"
                          "absorptivity-b = 1.2\nextinction-a = 11000\nextinction-b = 12000\n"
                          "refractivity-a = 2.7\nrefractivity-b = 2.8\nmolar-refractivity-a = 21000\n"
                          "molar-refractivity-b = 22000\nrotor-expansion = 0\n" +
                          OneSet);
    EXPECT_EQ(SettingOf(job, &Workspace::VbarA), 0.71F);
    EXPECT_EQ(SettingOf(job, &Workspace::VbarB), 0.72F);
    EXPECT_EQ(SettingOf(job, &Workspace::SolventDensity), 1.01F);
    EXPECT_EQ(SettingOf(job, &Workspace::AbsorpA), 1.1F);
    EXPECT_EQ(SettingOf(job, &Workspace::AbsorpB), 1.2F);
    EXPECT_EQ(SettingOf(job, &Workspace::ExtA), 11000.0F);
    EXPECT_EQ(SettingOf(job, &Workspace::ExtB), 12000.0F);
    EXPECT_EQ(SettingOf(job, &Workspace::FringeMassA), 2.7F);
    EXPECT_EQ(SettingOf(job, &Workspace::FringeMassB), 2.8F);
    EXPECT_EQ(SettingOf(job, &Workspace::RefrA), 21000.0F);
    EXPECT_EQ(SettingOf(job, &Workspace::RefrB), 22000.0F);
    EXPECT_EQ(SettingOf(job, &Workspace::RotorExpansion), 0.0F);
}

TEST(JobFile, SetTakesEveryKey) {
    const Job job = Parse("[fit]\nmodel = 8\n[set 3]\nfile = c.RA1\n"
                          "[set 18]\nfile = run7/00012.RA1\ninner = 6.85\nouter = 7.15\ncenterpiece = 8\n"
                          "channel = d\npath = 0.3\nbaseline = run7/00001.RA1\nbaseline-shift = -0.002\n"
                          "extinction-ratio-a = 1.5\nextinction-ratio-b = 0.5\nloading-a = 0.31\n"
                          "tolerance-a = 2\nloading-b = 0.4\ntolerance-b = 3\noffset-of = 3\n");
    ASSERT_EQ(job.Sets.size(), 2U);
    EXPECT_EQ(job.FindSet(3), &job.Sets[0]);
    EXPECT_EQ(job.FindSet(4), nullptr);
    const JobSet& set = job.Sets[1];
    EXPECT_EQ(set.Number, 18);
    EXPECT_EQ(set.File, "run7/00012.RA1");
    EXPECT_EQ(set.Inner, 6.85F);
    EXPECT_EQ(set.Outer, 7.15F);
    EXPECT_EQ(set.Samples, 4);
    EXPECT_EQ(set.Channel, 4);
    EXPECT_EQ(set.Path, 0.3F);
    EXPECT_EQ(set.Baseline, "run7/00001.RA1");
    EXPECT_EQ(set.BaselineShift, -0.002F);
    EXPECT_EQ(set.ExtinctionRatio[0], 1.5F);
    EXPECT_EQ(set.ExtinctionRatio[1], 0.5F);
    EXPECT_EQ(set.Loading[0], 0.31F);
    EXPECT_EQ(set.Tolerance[0], 2.0F);
    EXPECT_EQ(set.Loading[1], 0.4F);
    EXPECT_EQ(set.Tolerance[1], 3.0F);
    EXPECT_EQ(set.OffsetOf, 3);
}

TEST(JobFile, CenterpiecesCountSamples) {
    EXPECT_EQ(Parse(OneSet + "centerpiece = 2\n").Sets[0].Samples, 1);
    EXPECT_EQ(Parse(OneSet + "centerpiece = 6\n").Sets[0].Samples, 3);
    EXPECT_EQ(Parse(OneSet + "centerpiece = 8\n").Sets[0].Samples, 4);
}

TEST(JobFile, ParameterLinesInAllForms) {
    const Job job = Parse(OneSet + "[parameters]\n0 = 42.5 hold\nLn K(1>N) = 1.5 fit\n"
                                   "Zero Offset, set 1 = 0 fit lower -0.1 upper 0.1\n8 = * hold\n"
                                   "B2 vir. coef. = -1.5e-3 UPPER 2\n");
    ASSERT_EQ(job.Parameters.size(), 5U);
    const auto& p = job.Parameters;
    EXPECT_EQ(p[0].Name, "0");
    EXPECT_EQ(p[0].Value, 42.5F);
    EXPECT_EQ(p[0].Choice, JobParameter::Mark::Hold);
    EXPECT_EQ(p[0].Line, 4);
    EXPECT_EQ(p[1].Name, "Ln K(1>N)");
    EXPECT_EQ(p[1].Choice, JobParameter::Mark::Fit);
    EXPECT_EQ(p[2].Name, "Zero Offset, set 1");
    EXPECT_EQ(p[2].Value, 0.0F);
    EXPECT_EQ(p[2].Lower, -0.1F);
    EXPECT_EQ(p[2].Upper, 0.1F);
    EXPECT_FALSE(p[3].Value);
    EXPECT_EQ(p[3].Choice, JobParameter::Mark::Hold);
    EXPECT_EQ(p[4].Value, -1.5e-3F);
    EXPECT_EQ(p[4].Choice, JobParameter::Mark::ByModel);
    EXPECT_FALSE(p[4].Lower);
    EXPECT_EQ(p[4].Upper, 2.0F);
}

TEST(JobFile, CommentsCaseBlanksAndLineEnds) {
    const Job job = Parse("\xEF\xBB\xBF; comment\r\n# comment\r\n\r\n\t[ FIT ]  ; the fit\r\n"
                          "  MODEL=2 ; 1 to 22\r\n  ; indented\r\nNonIdeal = NO\t; no\r\n"
                          "[Set   01]\r\nFILE =\tmy scans;new #2/a b.RA1 ; a comment\r\n"
                          "baseline = \" ;x.RA1 \" ; quoted\r\n"
                          "inner = +5.9");
    EXPECT_EQ(job.Model, 2);
    EXPECT_EQ(job.Sets[0].Number, 1);
    EXPECT_EQ(job.Sets[0].File, "my scans;new #2/a b.RA1");
    EXPECT_EQ(job.Sets[0].Baseline, " ;x.RA1 ");
    EXPECT_EQ(job.Sets[0].Inner, 5.9F);
}

TEST(JobFile, SetsComeByNumber) {
    const Job job = Parse("[set 2]\nfile = b\n[set 1]\nfile = a\n");
    EXPECT_EQ(job.Sets[0].File, "a");
    EXPECT_EQ(job.Sets[1].File, "b");
    EXPECT_EQ(job.LineOf("set 2", "file"), 2);
    EXPECT_EQ(job.LineOf("set 2", "inner"), 1); // its section
    EXPECT_EQ(job.LineOf("fit", "model"), 0);
}

TEST(JobFile, PathsStartFromTheJob) {
    EXPECT_EQ(JobFilePath(Parse(OneSet), "a.RA1"), "run/a.RA1");
    EXPECT_EQ(JobFilePath(Parse(OneSet), "/data/a.RA1"), "/data/a.RA1");
    EXPECT_EQ(JobFilePath(ParseJob(OneSet, "fit.job"), "a.RA1"), "a.RA1");
}

struct Wrong {
    const char* What;
    std::string Text;
    std::string Error; // behind "run/fit.job:"
};

void PrintTo(const Wrong& wrong, std::ostream* out) {
    *out << wrong.What;
}

class JobFileErrors : public testing::TestWithParam<Wrong> {};

TEST_P(JobFileErrors, IsOneLineThatNamesThePlace) {
    EXPECT_EQ(ErrorOf(GetParam().Text), "run/fit.job:" + GetParam().Error);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, JobFileErrors,
    testing::Values(
        Wrong{"no section", "model = 2\n", "1: 'model' stands before the first section"},
        Wrong{"no key line", "[fit]\nmodel 2\n", "2: [fit]: 'model 2' is no line of the form key = value"},
        Wrong{"no key", "[fit]\n= 2\n", "2: [fit]: there is no key before the ="},
        Wrong{"no value", "[fit]\nmodel = ; two\n", "2: [fit] model: has no value"},
        Wrong{"open section", "\n[fit\n", "2: '[fit' has no closing bracket"},
        Wrong{"text behind a section", "[fit] model = 2\n",
              "1: '[fit] model = 2' has text behind the closing bracket"},
        Wrong{"unknown section", "[fits]\n", "1: '[fits]' is an unknown section"},
        Wrong{"set without blank", "[set1]\n", "1: '[set1]' is an unknown section"},
        Wrong{"set 0", "[set 0]\n", "1: [set 0]: '0' is not within 1 to 18"},
        Wrong{"nineteenth set", "[set 19]\n", "1: [set 19]: '19' is not within 1 to 18"},
        Wrong{"set without number", "[set one]\n", "1: [set one]: 'one' is no whole number"},
        Wrong{"section twice", OneSet + "[fit]\n[Fit]\n", "4: [fit]: stands twice, first in line 3"},
        Wrong{"set twice", OneSet + "[set 01]\n", "3: [set 1]: stands twice, first in line 1"},
        Wrong{"key twice", "[fit]\nmodel = 2\nModel = 2\n", "3: [fit] model: stands twice, first in line 2"},
        Wrong{"unknown key in fit", "[fit]\nmodle = 2\n", "2: [fit] modle: unknown key"},
        Wrong{"unknown constant", "[constants]\nvbar = 0.7\n", "2: [constants] vbar: unknown key"},
        Wrong{"unknown key in set", OneSet + "[set 2]\nfiles = x\n", "4: [set 2] files: unknown key"},
        Wrong{"open quote", "[set 1]\nfile = \"a.RA1\n", "2: [set 1] file: the closing quote is missing"},
        Wrong{"text behind quote", "[set 1]\nfile = \"a\" b\n",
              "2: [set 1] file: there is text behind the closing quote"},
        Wrong{"binary", std::string("[fit]\nmo\0del = 2\n", 18), "2: this is no text file"}));

INSTANTIATE_TEST_SUITE_P(
    Values, JobFileErrors,
    testing::Values(
        Wrong{"model 0", "[fit]\nmodel = 0\n", "2: [fit] model: '0' is not within 1 to 22"},
        Wrong{"model 23", "[fit]\nmodel = 23\n", "2: [fit] model: '23' is not within 1 to 22"},
        Wrong{"model 1.5", "[fit]\nmodel = 1.5\n", "2: [fit] model: '1.5' is no whole number"},
        Wrong{"huge model", "[fit]\nmodel = 99999999999\n",
              "2: [fit] model: '99999999999' is not within 1 to 22"},
        Wrong{"yes or no", "[fit]\nnonideal = true\n", "2: [fit] nonideal: 'true' is not no or yes"},
        Wrong{"mass units", "[fit]\nmass-units = kDa\n",
              "2: [fit] mass-units: 'kDa' is not sigma, buoyant or molar"},
        Wrong{"concentration units", "[fit]\nconcentration-units = mg/mL\n",
              "2: [fit] concentration-units: 'mg/mL' is not signal, weight or molar"},
        Wrong{"data", "[fit]\ndata = fluorescence\n",
              "2: [fit] data: 'fluorescence' is not absorbance or interference"},
        Wrong{"no iterations", "[fit]\nmax-iterations = 0\n",
              "2: [fit] max-iterations: '0' is not within 1 to 32767"},
        Wrong{"many iterations", "[fit]\nmax-iterations = 32768\n",
              "2: [fit] max-iterations: '32768' is not within 1 to 32767"},
        Wrong{"no limit", "[fit]\nconvergence-limit = 0\n", "2: [fit] convergence-limit: '0' is not above 0"},
        Wrong{"limit that vanishes in single precision", "[fit]\nconvergence-limit = 1e-60\n",
              "2: [fit] convergence-limit: '1e-60' is not above 0"},
        Wrong{"level 1", "[fit]\nconfidence-level = 1\n",
              "2: [fit] confidence-level: '1' is not between 0 and 1"},
        Wrong{"level 0", "[fit]\nconfidence-level = 0\n",
              "2: [fit] confidence-level: '0' is not between 0 and 1"},
        Wrong{"no number", "[constants]\nvbar-a = o.73\n", "2: [constants] vbar-a: 'o.73' is no number"},
        Wrong{"decimal comma", "[constants]\nvbar-a = 0,73\n", "2: [constants] vbar-a: '0,73' is no number"},
        Wrong{"text behind number", "[constants]\nvbar-a = 0.73 x\n",
              "2: [constants] vbar-a: '0.73 x' is no number"},
        Wrong{"two signs", "[set 1]\nbaseline-shift = +-1\n",
              "2: [set 1] baseline-shift: '+-1' is no number"},
        Wrong{"infinite", "[constants]\ndensity = inf\n", "2: [constants] density: 'inf' is no number"},
        Wrong{"nan", "[constants]\ndensity = -nan\n", "2: [constants] density: '-nan' is no number"},
        Wrong{"beyond single", "[constants]\ndensity = 1e38\n",
              "2: [constants] density: '1e38' is outside the range of single precision"},
        Wrong{"beyond double", "[constants]\ndensity = 1e999\n",
              "2: [constants] density: '1e999' is outside the range of single precision"},
        Wrong{"negative expansion", "[constants]\nrotor-expansion = -1e-11\n",
              "2: [constants] rotor-expansion: '-1e-11' is below 0"},
        Wrong{"negative density", "[constants]\ndensity = -1\n",
              "2: [constants] density: '-1' is not above 0"},
        Wrong{"inner", "[set 1]\ninner = 0\n", "2: [set 1] inner: '0' is not above 0"},
        Wrong{"outer", "[set 1]\nouter = -7\n", "2: [set 1] outer: '-7' is not above 0"},
        Wrong{"centerpiece", "[set 1]\ncenterpiece = 4\n", "2: [set 1] centerpiece: '4' is not 2, 6 or 8"},
        Wrong{"channel", "[set 1]\nchannel = E\n", "2: [set 1] channel: 'E' is not a, b, c or d"},
        Wrong{"path", "[set 1]\npath = 0\n", "2: [set 1] path: '0' is not above 0"},
        Wrong{"ratio", "[set 1]\nextinction-ratio-b = 0\n",
              "2: [set 1] extinction-ratio-b: '0' is not above 0"},
        Wrong{"loading", "[set 1]\nloading-a = -0.1\n", "2: [set 1] loading-a: '-0.1' is below 0"},
        Wrong{"tolerance", "[set 1]\ntolerance-a = 0\n", "2: [set 1] tolerance-a: '0' is not above 0"},
        Wrong{"offset-of", "[set 1]\noffset-of = 19\n", "2: [set 1] offset-of: '19' is not within 1 to 18"},
        Wrong{"long text is cut", "[fit]\nmodel = " + std::string(100, 'x') + "\n",
              "2: [fit] model: '" + std::string(60, 'x') + "...' is no whole number"}));

INSTANTIATE_TEST_SUITE_P(
    Parameters, JobFileErrors,
    testing::Values(Wrong{"no number", OneSet + "[parameters]\n0 = x fit\n",
                          "4: [parameters] 0: 'x' is no number"},
                    Wrong{"unknown word", OneSet + "[parameters]\n0 = 1 free\n",
                          "4: [parameters] 0: 'free' is not hold, fit, lower or upper"},
                    Wrong{"two marks", OneSet + "[parameters]\n0 = 1 fit hold\n",
                          "4: [parameters] 0: hold or fit stands twice"},
                    Wrong{"bound without number", OneSet + "[parameters]\n0 = 1 lower\n",
                          "4: [parameters] 0: there is no number behind lower"},
                    Wrong{"bound twice", OneSet + "[parameters]\n0 = 1 lower 1 lower 2\n",
                          "4: [parameters] 0: lower stands twice"},
                    Wrong{"bounds crossed", OneSet + "[parameters]\n0 = 1 upper 1 lower 2\n",
                          "4: [parameters] 0: the lower bound lies above the upper one"},
                    Wrong{"beyond single", OneSet + "[parameters]\nMW A mon = 1e38\n",
                          "4: [parameters] MW A mon: '1e38' is outside the range of single precision"}));

INSTANTIATE_TEST_SUITE_P(
    Contradictions, JobFileErrors,
    testing::Values(
        Wrong{"empty file", "", " [set 1]: is missing: a fit needs at least one data set"},
        Wrong{"no set", "[fit]\nmodel = 2\n", " [set 1]: is missing: a fit needs at least one data set"},
        Wrong{"no file", OneSet + "[set 2]\ninner = 6\n", "3: [set 2] file: is missing"},
        Wrong{"inner beyond outer", OneSet + "inner = 7.1\nouter = 6.9\n",
              "3: [set 1] inner: lies beyond outer"},
        Wrong{"channel of one sample", OneSet + "channel = A\ncenterpiece = 2\n",
              "3: [set 1] channel: a centerpiece of 2 channels has no channel to choose"},
        Wrong{"fourth of three samples", OneSet + "channel = D\n",
              "3: [set 1] channel: only a centerpiece of 8 channels has a channel D"},
        Wrong{"shift of nothing", OneSet + "baseline-shift = 0.001\n",
              "3: [set 1] baseline-shift: there is no baseline to shift"},
        Wrong{"nonideal", OneSet + "[fit]\nmodel = 6\nnonideal = yes\n",
              "5: [fit] nonideal: non-ideality is allowed for the models 1 to 5 only"},
        Wrong{"separate constants", OneSet + "[fit]\nseparate-k = yes\n",
              "4: [fit] separate-k: separate binding constants are not allowed for this model"},
        Wrong{"weight units", OneSet + "[fit]\nmodel = 7\nconcentration-units = weight\n",
              "5: [fit] concentration-units: weight units are allowed for the models 1 to 6 only"},
        Wrong{"second species", OneSet + "loading-b = 1\n",
              "3: [set 1] loading-b: this model has no species B"},
        Wrong{"tie to nothing", OneSet + "offset-of = 2\n", "3: [set 1] offset-of: there is no set 2"},
        Wrong{"tie to itself", OneSet + "offset-of = 1\n",
              "3: [set 1] offset-of: a set cannot be tied to itself"},
        Wrong{"chain of ties", TwoSets + "offset-of = 1\n[set 3]\nfile = c\noffset-of = 2\n",
              "8: [set 3] offset-of: set 2 is tied to a set itself"},
        Wrong{"shared with nobody", OneSet + "concentrations-of = 2\n",
              "3: [set 1] concentrations-of: there is no set 2"},
        Wrong{"shared with itself", OneSet + "concentrations-of = 1\n",
              "3: [set 1] concentrations-of: a set cannot be tied to itself"},
        Wrong{"chain of shared concentrations",
              TwoSets + "concentrations-of = 1\n[set 3]\nfile = c\nconcentrations-of = 2\n",
              "8: [set 3] concentrations-of: the concentrations of set 2 are tied themselves"},
        Wrong{"tie without offsets", TwoSets + "offset-of = 1\n[fit]\nmodel = 8\nseparate-k = yes\n",
              "5: [set 2] offset-of: this model with separate constants has no zero offsets"}));

TEST(JobFile, ErrorsStayInOneLine) {
    const std::string error = ErrorOf("[fit]\nmodel = a\rb\x01\x02\n");
    EXPECT_EQ(error, "run/fit.job:2: [fit] model: 'a b ' is no whole number");
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST(JobFile, ScansOfAMeanStandBetweenCommas) {
    const auto files = [](const std::string& value) {
        return ParseJob("[set 1]\nfile = " + value + "\n", "fit.job").Sets[0];
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(files("a.RA1").Files, (Names{"a.RA1"}));
    EXPECT_EQ(files("a.RA1, b.RA1,c.RA1 ; the last three").Files, (Names{"a.RA1", "b.RA1", "c.RA1"}));
    EXPECT_EQ(files("a.RA1, b.RA1,c.RA1 ; the last, three").File, "a.RA1, b.RA1,c.RA1");
    EXPECT_EQ(files("\"x, y.RA1\"").Files, (Names{"x, y.RA1"}));
    EXPECT_EQ(files("\"x, y.RA1\"").File, "x, y.RA1");
    EXPECT_EQ(files("\"x, y.RA1\", z.RA1").Files, (Names{"x, y.RA1", "z.RA1"}));
    EXPECT_EQ(files("z.RA1,\"x ;y.RA1\" ; two").Files, (Names{"z.RA1", "x ;y.RA1"}));
    EXPECT_EQ(files("my\"scan.RA1").Files, (Names{"my\"scan.RA1"}));
    EXPECT_THROW(files("\"a"), RuntimeError);
    EXPECT_THROW(files("\"a\" b"), RuntimeError);
    EXPECT_THROW(files("  ; nothing"), RuntimeError);
}

} // namespace
} // namespace Quillon
