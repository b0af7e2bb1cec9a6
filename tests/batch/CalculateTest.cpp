// The calculators on the command line: the table, what one hands to the next, and what is refused; and
// --plan.
#include "batch/Calculate.h"
#include "batch/options/Options.h"
#include "input/NUMINPUT.h"
#include "planning/solution/Sequence.h"
#include "planning/solution/Water.h"
#include "platform/Platform.h"
#include "scandata/table/DataSetTable.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>

namespace Quillon {
namespace {

const std::string Chain = "MQIFVKTLTGKTITLEVEPSDTIENVKAKIQDKEGIPPDQQRLIFAGKQLEDGRTLSDYNIQKESTLHLVLRLRGG";

// The second cells of the table by the first ones.
std::map<std::string, double> Numbers(const std::vector<std::string>& arguments) {
    std::istringstream text(Calculations(ParseOptions(arguments).Calculate));
    std::map<std::string, double> numbers;
    std::string line;
    std::getline(text, line);
    EXPECT_TRUE(line.starts_with("quantity,value,unit,source")) << line;
    while (std::getline(text, line)) {
        const std::size_t comma = line.find(',');
        numbers[line.substr(0, comma)] = std::strtod(line.c_str() + comma + 1, nullptr);
    }
    return numbers;
}

std::string Refused(const std::vector<std::string>& arguments) {
    try {
        Calculations(ParseOptions(arguments).Calculate);
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

TEST(Calculators, GiveOneTableInWhichEachTakesWhatTheOnesBeforeGive) {
    Script script;
    auto numbers = Numbers({"--vbar", Chain, "--buffer", "water", "--temperature=4", "--equilibrium-time",
                            "speed=30000,inner=6.9,outer=7.2"});
    const ProteinValues protein = ValuesOfChain({"", Chain}, {}, 4.0);
    EXPECT_NEAR(numbers["mass"], protein.MassDa / 1000.0, 1e-6);
    EXPECT_NEAR(numbers["vbar"], protein.VBar, 1e-6);
    EXPECT_NEAR(numbers["density"], WaterDensity(4.0), 1e-6);
    ApproachInput input;
    input.MassKDa = protein.MassDa / 1000.0;
    input.VBar = protein.VBar;
    input.Density = WaterDensity(4.0);
    input.Viscosity = WaterViscosity(4.0);
    input.Celsius = 4.0;
    input.Rpm = 30000.0;
    input.Meniscus = 6.9;
    input.Bottom = 7.2;
    const ApproachTimes times = TimesOf(input);
    EXPECT_NEAR(numbers["time_solved"] * 3600.0 / times.SolvedSeconds, 1.0, 1e-5);
    EXPECT_NEAR(numbers["time_estimate"] * 3600.0 / times.EstimateSeconds, 1.0, 1e-5);
    auto named = Numbers({"--vbar", Chain, "--equilibrium-time", "mass=100,speed=10000,inner=6.9,outer=7.2"});
    EXPECT_NEAR(named["sigma"] /
                    (100.0 * (1.0 - named["vbar"] * WaterDensity(20.0)) * 1e8 * 1.318924e-7 / 293.15),
                1.0, 1e-4);
}

TEST(Calculators, ReadTheSequenceFromAFile) {
    Script script;
    const std::string path = script.Directory() + "/chain.fasta";
    Host.WriteFile(path, ">ubiquitin\n" + Chain + "\n");
    EXPECT_EQ(Numbers({"--vbar", path})["residues"], 76.0);
    EXPECT_EQ(Numbers({"--vbar", "ACCA", "--disulfides", "0"})["extinction_280"], 0.0);
    EXPECT_EQ(Numbers({"--vbar", "ACCA"})["extinction_280"], 125.0);
}

TEST(Calculators, ToldWithWhatTheyMayMiss) {
    Script script;
    auto numbers = Numbers({"--buffer", "GuHCl=6", "--temperature", "25"});
    EXPECT_NEAR(numbers["viscosity"] / WaterViscosity(25.0), 1.61, 0.01);
    EXPECT_GT(numbers["viscosity_known_to"], 0.005);
    EXPECT_LT(numbers["viscosity_known_to"], 0.05);
    EXPECT_LT(numbers["density_known_to"], 0.001);
    auto protein = Numbers({"--vbar", Chain});
    EXPECT_EQ(protein["vbar_known_to"], 0.01);
    EXPECT_EQ(protein["extinction_known_to"], 5.0);
    const std::string text = Calculations(ParseOptions({"--buffer", "sucrose=10"}).Calculate);
    EXPECT_NE(text.find("water: Kell 1975; Handbook of Chemistry and Physics"), std::string::npos) << text;
    EXPECT_NE(text.find("water: Kestin et al. 1978; Barber 1966"), std::string::npos) << text;
}

TEST(Calculators, TakeAChannelByItsLetter) {
    Script script;
    Work = FreshWorkspace();
    float inner{}, outer{};
    ASSERT_TRUE(ChannelRadiiAt(Centerpiece::SixChannel, 3, 15000.0F, inner, outer));
    const auto hours = [](const std::string& column) {
        return Numbers({"--equilibrium-time", "mass=50,speed=15000," + column})["time_solved"];
    };
    const double byRadii = hours("inner=" + SingleText(inner) + ",outer=" + SingleText(outer));
    EXPECT_GT(byRadii, 0.0);
    EXPECT_NEAR(hours("channel=C") / byRadii, 1.0, 1e-4);
    EXPECT_EQ(hours("channel=6c"), hours("channel=C"));
    EXPECT_GT(hours("channel=8a"), hours("channel=C")); // a longer one
    EXPECT_LT(hours("channel=C,inner=7"), hours("channel=C") / 2.0);
    const auto refused = [](const char* words) { return Refused({"--equilibrium-time", words}); };
    EXPECT_NE(refused("mass=50,speed=15000,channel=D").find("8A to 8D"), std::string::npos);
    EXPECT_NE(refused("mass=50,channel=C").find("needs speed"), std::string::npos);
}

TEST(Calculators, SayWhatIsWrong) {
    Script script;
    EXPECT_EQ(Refused({"--vbar", "ACXD"}),
              "quillon-fit: --vbar: Letter 3 of the sequence is \"X\", which stands for none of the "
              "twenty amino acids");
    EXPECT_NE(Refused({"--buffer", "Tris=0.1"}).find("--buffer: \"Tris\""), std::string::npos);
    EXPECT_NE(Refused({"--equilibrium-time", "mass=50,speed=15000,inner=6.9"}).find("needs outer"),
              std::string::npos);
    EXPECT_NE(Refused({"--equilibrium-time", "mass=50,rpm=15000"}).find("not 'rpm'"), std::string::npos);
    EXPECT_NE(Refused({"--equilibrium-time", "mass=x"}).find("a number for mass"), std::string::npos);
    EXPECT_NE(Refused({"--vbar", "AC", "--temperature", "120"}).find("between 0 and 100"), std::string::npos);
    EXPECT_NE(Refused({"--vbar", "AC", "--report", "x"}).find("fit nothing"), std::string::npos);
    EXPECT_NE(Refused({"--disulfides", "2", "--buffer", "water"}).find("--disulfides goes with --vbar"),
              std::string::npos);
    EXPECT_NE(Refused({"--vbar"}).find("needs a sequence or file"), std::string::npos);
    EXPECT_EQ(Refused({"--vbar", "lysozyme.fasta"}), "quillon-fit: --vbar: lysozyme.fasta: File not found");
}

// --- --plan ----------------------------------------------------------------------------------------------

// The job of a small case with its true values, and what stands behind them.
std::string PlanFile(Script& script, const std::string& further) {
    const Workspace truth = SimulatedWorkspace(SmallCase());
    return script.MakeFile("plan.job", JobTextOf(truth, script) + ParameterTextOf(truth) + further);
}

// The errors of a plan by slot.
std::map<long, double> ErrorsOf(const std::string& csv) {
    std::istringstream text(csv);
    std::map<long, double> errors;
    std::string line;
    std::getline(text, line);
    while (std::getline(text, line))
        errors[std::strtol(line.c_str(), nullptr, 10)] =
            std::strtod(line.c_str() + line.rfind(',') + 1, nullptr);
    return errors;
}

// The job with the values that its fit has found.
std::string WithFittedValues(std::string text, const JsonValue& results) {
    for (const JsonValue& parm : results["parameters"].Items) {
        if (parm["state"].Text != "fitted") continue;
        const std::string key = "\n" + std::to_string(static_cast<long>(parm["slot"].Number)) + " = ";
        const std::size_t value = text.find(key) + key.size();
        text.replace(value, text.find(' ', value) - value, std::to_string(parm["value"].Number));
    }
    return text;
}

// Planned at the values of a fit, with its rms as noise: the errors are those that the fit reports.
TEST(PlanOption, GivesTheErrorsThatTheFitOfSuchScansReports) {
    Script script;
    const std::string job = PlanFile(script, "[simulation]\nnoise = 0.004\n");
    const JsonValue results = ReadJson(RunInside({job, "--results", "-", "--quiet"}).Out);
    const std::string fitted = script.MakeFile("fitted.job", WithFittedValues(ReadWholeFile(job), results));
    const ProgramEnd plan = RunInside({fitted, "--plan", "-"});
    EXPECT_EQ(plan.Status, 0) << plan.Err;
    EXPECT_TRUE(plan.Out.starts_with("slot,name,value,expected_error")) << plan.Out;
    const auto errors = ErrorsOf(plan.Out);
    const double scale = results["rms_residual"].Number / 0.004;
    std::size_t free = 0;
    for (const JsonValue& parm : results["parameters"].Items) {
        if (parm["state"].Text != "fitted") continue;
        ++free;
        const auto slot = static_cast<long>(parm["slot"].Number);
        ASSERT_TRUE(errors.contains(slot)) << slot;
        EXPECT_NEAR(errors.at(slot) * scale / parm["error"].Number, 1.0, 0.002) << slot;
    }
    EXPECT_EQ(errors.size(), free);
}

TEST(PlanOption, MakesADesignOfEachPairOfFactors) {
    Script script;
    const std::string job = PlanFile(script, "[simulation]\nnoise = 0.004\n[plan]\nspeed-factors = 1, 1.2\n"
                                             "loading-factors = 0.5, 1, 2\n");
    const std::string table = script.Directory() + "/plan.csv";
    const ProgramEnd end = RunInside({job, "--plan", table});
    EXPECT_EQ(end.Status, 0) << end.Err;
    const std::string csv = ReadWholeFile(table);
    EXPECT_TRUE(csv.starts_with("speed_factor,loading_factor,slot,name,value,expected_error")) << csv;
    EXPECT_NE(csv.find("\n1.2,0.5,"), std::string::npos) << csv;
    EXPECT_NE(csv.find("\n1,2,"), std::string::npos) << csv;
}

TEST(PlanOption, RefusesWhatMakesNoPlan) {
    Script script;
    const auto told = [](const std::vector<std::string>& arguments) {
        const ProgramEnd end = RunInside(arguments);
        EXPECT_EQ(end.Status, 1);
        return end.Err;
    };
    const std::string silent = PlanFile(script, "");
    EXPECT_NE(told({silent, "--plan", "-"}).find("--plan needs a noise above 0"), std::string::npos);
    const std::string wild = PlanFile(script, "[simulation]\nnoise = 0.004\n[plan]\nspeed-factors = 1, 0\n");
    EXPECT_NE(told({wild, "--plan", "-"}).find("between 0.01 and 100"), std::string::npos);
    EXPECT_NE(told({"x.quil", "--plan", "-"}).find("goes with a job"), std::string::npos);
    EXPECT_NE(told({silent, "--plan", "-", "--results", "r.json"}).find("--plan fits nothing"),
              std::string::npos);
}

} // namespace
} // namespace Quillon
