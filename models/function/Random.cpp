#include "models/function/Random.h"

#include "platform/Arrays.h"
#include "platform/Platform.h"

#include <cmath>

namespace Quillon {

namespace {

constexpr long TableLength = 97;

struct RandomState {
    OneBased<float> ShuffleTable = OneBased<float>(TableLength);
    float ShuffleLast = 0.0F;
    bool ShuffleReady = false;
    bool SpareReady = false;
    float SpareGauss = 0.0F;
};
thread_local RandomState State; // of a study's fits each has its own stream

void FillTable(std::int16_t& seed) {
    State.ShuffleReady = true;
    Host.SeedUniform();
    seed = 1;
    for (long i = 1; i <= TableLength; ++i)
        Host.Uniform();
    for (float& number : State.ShuffleTable)
        number = Host.Uniform();
    State.ShuffleLast = Host.Uniform();
}

} // namespace

void RestartRandom() {
    State = RandomState{};
}

float ShuffledUniform(std::int16_t& seed) {
    if (seed < 0 || !State.ShuffleReady) FillTable(seed);
    const long j = 1 + static_cast<long>(static_cast<float>(TableLength) * State.ShuffleLast);
    float& place = State.ShuffleTable[j <= TableLength ? j : TableLength]; // 97 times a number next to 1
    State.ShuffleLast = place;
    place = Host.Uniform();
    return State.ShuffleLast;
}

double GaussianNoise(std::int16_t& seed) {
    if (State.SpareReady) {
        State.SpareReady = false;
        return State.SpareGauss;
    }
    double d1 = 0.0, d2 = 0.0, s = 0.0;
    do {
        d1 = 2.0 * static_cast<double>(ShuffledUniform(seed)) - 1.0;
        d2 = 2.0 * static_cast<double>(ShuffledUniform(seed)) - 1.0;
        s = d1 * d1 + d2 * d2;
    } while (!(s > 0.0 && s <= 1.0));
    const double f = std::sqrt(-2.0 * std::log(s) / s);
    State.SpareGauss = static_cast<float>(d1 * f);
    State.SpareReady = true;
    return d2 * f;
}

} // namespace Quillon
