#include "batch/Calculate.h"

#include "batch/console/OneLine.h"
#include "input/Csv.h"
#include "planning/Calculations.h"
#include "platform/RuntimeError.h"

namespace Quillon {

namespace {

CalculationInput InputOf(const CalculatorOptions& options) {
    CalculationInput input;
    input.Chain = options.Chain;
    input.Disulfides = options.Disulfides;
    input.Buffer = options.Buffer;
    input.Celsius = options.Celsius;
    if (!options.Approach.empty())
        input.Approach = [&options](ApproachInput& approach) { ReadApproach(options.Approach, approach); };
    input.PartNames = {"--vbar", "--buffer", "--equilibrium-time"};
    return input;
}

} // namespace

std::string Calculations(const CalculatorOptions& options) {
    std::string csv = CsvLine({"quantity", "value", "unit", "source"});
    try {
        for (const CalculatedNumber& number : Calculate(InputOf(options)).Numbers)
            csv += CsvLine({number.Quantity, NumberText(number), number.Unit, number.Source});
    } catch (const RuntimeError& error) {
        RaiseError(OneLine("quillon-fit: " + error.Text));
    }
    return csv;
}

} // namespace Quillon
