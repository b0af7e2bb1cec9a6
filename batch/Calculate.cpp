#include "batch/Calculate.h"

#include "batch/console/OneLine.h"
#include "input/Csv.h"
#include "input/NUMINPUT.h"
#include "planning/solution/Buffer.h"
#include "planning/solution/Sequence.h"
#include "planning/solution/Water.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

#include <optional>

namespace Quillon {

namespace {

// What has been found, and the table of it.
struct Found {
    std::optional<ProteinValues> Protein;
    std::optional<BufferValues> Buffer;
    std::string Csv = CsvLine({"quantity", "value", "unit", "source"});
};

void AddRow(Found& found, const char* quantity, double value, const char* unit, const std::string& source) {
    found.Csv += CsvLine({quantity, SingleText(ToSingle(value)), unit, source});
}

// A failure is told with the option before it.
template <class Work> auto Named(const char* option, Work&& work) {
    try {
        return work();
    } catch (const RuntimeError& error) {
        RaiseError(OneLine(std::string("quillon-fit: ") + option + ": " + error.Text));
    }
}

// A file of that name, else the letters themselves.
std::string ChainText(const std::string& text) {
    return Host.FileExists(text) ? Host.ReadFile(text) : text;
}

void AddProtein(Found& found, const CalculatorOptions& options) {
    found.Protein = Named("--vbar", [&] {
        return ValuesOfChains(ReadSequences(ChainText(options.Chain)), options.Disulfides, options.Celsius);
    });
    const ProteinValues& p = *found.Protein;
    AddRow(found, "residues", static_cast<double>(p.Residues), "", "");
    AddRow(found, "disulfides", static_cast<double>(p.Disulfides), "",
           options.Disulfides ? "as named" : "all cysteines paired");
    AddRow(found, "mass", p.MassDa / 1000.0, "kDa", MassSource);
    AddRow(found, "vbar", p.VBar, "mL/g", VBarSource);
    AddRow(found, "vbar_25", p.VBar25, "mL/g", VBarSource);
    AddRow(found, "extinction_280", p.Extinction280, "L/(mol cm)", ExtinctionSource);
    AddRow(found, "absorptivity_280", p.Absorptivity280, "mL/(mg cm)", ExtinctionSource);
}

void AddBuffer(Found& found, const CalculatorOptions& options) {
    found.Buffer =
        Named("--buffer", [&] { return ValuesOfBuffer(ReadSolutes(options.Buffer), options.Celsius); });
    const BufferValues& b = *found.Buffer;
    AddRow(found, "density", b.Density, "g/mL", b.Sources);
    AddRow(found, "density_known_to", b.DensityKnownTo, "g/mL", "");
    if (b.Viscosity)
        AddRow(found, "viscosity", *b.Viscosity, "mPa s", b.Sources);
    else
        found.Csv += CsvLine({"viscosity", "", "mPa s", "not known for these solutes"});
}

ApproachInput InputOf(const Found& found, const CalculatorOptions& options) {
    ApproachInput input;
    input.Celsius = options.Celsius;
    input.Density = WaterDensity(options.Celsius);
    input.Viscosity = WaterViscosity(options.Celsius);
    if (found.Protein) {
        input.MassKDa = found.Protein->MassDa / 1000.0;
        input.VBar = found.Protein->VBar;
    }
    if (found.Buffer) {
        input.Density = found.Buffer->Density;
        input.Viscosity = found.Buffer->Viscosity.value_or(0.0); // refused unless it is named
    }
    ReadApproach(options.Approach, input);
    return input;
}

void AddApproach(Found& found, const CalculatorOptions& options) {
    const ApproachTimes times = Named("--equilibrium-time", [&] { return TimesOf(InputOf(found, options)); });
    AddRow(found, "sigma", times.Sigma, "cm^-2", "Svedberg and Pedersen 1940");
    AddRow(found, "sigma_x", times.SigmaX, "", "");
    AddRow(found, "diffusion", times.Diffusion, "cm^2/s", "Stokes and Einstein");
    AddRow(found, "sedimentation", times.Svedberg, "S", "Svedberg");
    AddRow(found, "time_estimate", Hours(times.EstimateSeconds), "h", "van Holde and Baldwin 1958");
    AddRow(found, "time_solved", Hours(times.SolvedSeconds), "h", "Lamm equation");
}

} // namespace

std::string Calculations(const CalculatorOptions& options) {
    Found found;
    if (!options.Chain.empty()) AddProtein(found, options);
    if (!options.Buffer.empty()) AddBuffer(found, options);
    if (!options.Approach.empty()) AddApproach(found, options);
    return found.Csv;
}

} // namespace Quillon
