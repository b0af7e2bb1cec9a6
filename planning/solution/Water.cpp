#include "planning/solution/Water.h"

#include "platform/RuntimeError.h"

#include <cmath>

namespace Quillon {

void CheckLiquid(double celsius) {
    if (!(celsius >= 0.0 && celsius <= 100.0))
        RaiseError("The temperature has to lie between 0 and 100 degrees Celsius, where water is liquid");
}

double WaterDensity(double t) {
    CheckLiquid(t);
    const double above =
        999.83952 +
        t * (16.945176 + t * (-7.9870401e-3 + t * (-46.170461e-6 + t * (105.56302e-9 - t * 280.54253e-12))));
    return above / (1.0 + 16.879850e-3 * t) / 1000.0;
}

double WaterViscosity(double t) {
    CheckLiquid(t);
    const double d = 20.0 - t;
    const double exponent = d / (t + 96.0) * (1.2378 + d * (-1.303e-3 + d * (3.06e-6 + d * 2.55e-8)));
    return 1.002 * std::pow(10.0, exponent);
}

} // namespace Quillon
