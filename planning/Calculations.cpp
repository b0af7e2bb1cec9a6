#include "planning/Calculations.h"

#include "input/NUMINPUT.h"
#include "planning/solution/Water.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

namespace Quillon {

namespace {

using Number = CalculatedNumber;

// A failure is told with the part before it.
template <class Work> auto Named(const char* part, Work&& work) {
    try {
        return work();
    } catch (const RuntimeError& error) {
        RaiseError(std::string(part) + ": " + error.Text);
    }
}

// "lysozyme.fasta" is no sequence: points and slashes stand in names of files and in the heads of FASTA
// alone.
bool CanOnlyBeAFile(const std::string& text) {
    return !text.starts_with('>') && text.find_first_of("\n\r") == std::string::npos &&
           text.find_first_of("./\\") != std::string::npos;
}

// A file of that name, else the letters themselves.
std::string ChainText(const std::string& text) {
    if (Host.FileExists(text)) return Host.ReadFile(text);
    if (CanOnlyBeAFile(text)) RaiseError(text + ": " + ErrorText::FileNotFound);
    return text;
}

void AddProtein(Calculation& found, const CalculationInput& input) {
    found.Protein = Named(input.PartNames[0], [&] {
        return ValuesOfChains(ReadSequences(ChainText(input.Chain)), input.Disulfides, input.Celsius);
    });
    const ProteinValues& p = *found.Protein;
    const char* bonds = input.Disulfides ? "as given" : "all cysteines paired";
    for (const Number& number :
         {Number{"residues", "residues", static_cast<double>(p.Residues), "", ""},
          Number{"disulfides", "disulfide bonds", static_cast<double>(p.Disulfides), "", bonds},
          Number{"mass", "molar mass", p.MassDa / 1000.0, "kDa", MassSource},
          Number{"vbar", "v-bar", p.VBar, "mL/g", VBarSource},
          Number{"vbar_25", "v-bar at 25 degrees", p.VBar25, "mL/g", VBarSource},
          Number{"vbar_known_to", "known to", VBarKnownTo, "mL/g", "without sugars, lipids, cofactors"},
          Number{"extinction_280", "molar extinction at 280 nm", p.Extinction280, "L/(mol cm)",
                 ExtinctionSource},
          Number{"absorptivity_280", "absorptivity at 280 nm", p.Absorptivity280, "mL/(mg cm)",
                 ExtinctionSource},
          Number{"extinction_known_to", "known to", ExtinctionKnownTo * 100.0, "%",
                 "without haem and other colours"}})
        found.Numbers.push_back(number);
}

void AddBuffer(Calculation& found, const CalculationInput& input) {
    found.Buffer =
        Named(input.PartNames[1], [&] { return ValuesOfBuffer(ReadSolutes(input.Buffer), input.Celsius); });
    const BufferValues& b = *found.Buffer;
    found.Numbers.push_back({"density", "density of the buffer", b.Density, "g/mL", b.DensitySource});
    found.Numbers.push_back({"density_known_to", "known to", b.DensityKnownTo, "g/mL", ""});
    found.Numbers.push_back(
        {"viscosity", "viscosity of the buffer", b.Viscosity, "mPa s", b.ViscositySource});
    found.Numbers.push_back({"viscosity_known_to", "known to", b.ViscosityKnownTo, "mPa s", ""});
}

ApproachInput InputOf(const Calculation& found, const CalculationInput& input) {
    ApproachInput approach;
    approach.Celsius = input.Celsius;
    approach.Density = found.Buffer ? found.Buffer->Density : WaterDensity(input.Celsius);
    approach.Viscosity = found.Buffer ? found.Buffer->Viscosity : WaterViscosity(input.Celsius);
    if (found.Protein) {
        approach.MassKDa = found.Protein->MassDa / 1000.0;
        approach.VBar = found.Protein->VBar;
    }
    input.Approach(approach);
    return approach;
}

void AddApproach(Calculation& found, const CalculationInput& input) {
    found.Times = Named(input.PartNames[2], [&] { return TimesOf(InputOf(found, input)); });
    const ApproachTimes& t = *found.Times;
    for (const Number& number :
         {Number{"sigma", "sigma", t.Sigma, "cm^-2", "Svedberg and Pedersen 1940"},
          Number{"sigma_x", "sigma times half the difference of r^2", t.SigmaX, "", ""},
          Number{"diffusion", "diffusion coefficient", t.Diffusion, "cm^2/s", "Stokes and Einstein"},
          Number{"sedimentation", "sedimentation coefficient", t.Svedberg, "S", "Svedberg"},
          Number{"time_estimate", "time to equilibrium, estimated", Hours(t.EstimateSeconds), "h",
                 "van Holde and Baldwin 1958"},
          Number{"time_solved", "time to equilibrium, solved", Hours(t.SolvedSeconds), "h", "Lamm equation"}})
        found.Numbers.push_back(number);
}

} // namespace

Calculation Calculate(const CalculationInput& input) {
    Calculation found;
    if (!input.Chain.empty()) AddProtein(found, input);
    if (!input.Buffer.empty()) AddBuffer(found, input);
    if (input.Approach) AddApproach(found, input);
    return found;
}

std::string NumberText(const CalculatedNumber& number) {
    return SingleText(ToSingle(number.Value));
}

} // namespace Quillon
