// The calculators on the command line: the table, what one hands to the next, and what is refused.
#include "batch/Calculate.h"
#include "batch/options/Options.h"
#include "planning/solution/Sequence.h"
#include "planning/solution/Water.h"
#include "platform/Platform.h"
#include "tests/support/ScriptedPlatform.h"

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

TEST(Calculators, LeaveAViscosityEmptyThatIsNotKnown) {
    Script script;
    const std::string text = Calculations(ParseOptions({"--buffer", "GuHCl=6"}).Calculate);
    EXPECT_NE(text.find("\nviscosity,,mPa s,not known"), std::string::npos) << text;
    EXPECT_NE(
        Refused({"--buffer", "GuHCl=6", "--equilibrium-time", "mass=50,speed=15000,inner=6.9,outer=7.2"})
            .find("viscosity"),
        std::string::npos);
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
}

} // namespace
} // namespace Quillon
