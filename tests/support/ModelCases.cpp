#include "tests/support/ModelCases.h"

#include <cmath>
#include <stdexcept>

namespace Quillon {
namespace {

std::string Numbered(int model) {
    return "Model" + std::string(model < 10 ? "0" : "") + std::to_string(model);
}

// Two loadings at three speeds: long columns of a two-channel cell, and one of three samples. Set 1 stands at
// the middle speed, so that sigma is scaled both up and down.
std::vector<SimulatedSet> SelfSets() {
    return {
        {.Rpm = 15000, .Inner = 6.7F, .OuterSignal = 1.2, .Points = 100, .Offset = 0.010},
        {.Rpm = 12000, .Inner = 6.7F, .OuterSignal = 1.0, .Points = 100, .Offset = -0.006},
        {.Rpm = 21000, .Inner = 6.7F, .OuterSignal = 1.4, .Points = 100, .Offset = 0.004},
        {.Rpm = 15000, .Inner = 6.3F, .Outer = 6.65F, .OuterSignal = 0.5, .Offset = 0.002},
        {.Rpm = 21000, .Inner = 6.3F, .Outer = 6.65F, .OuterSignal = 0.8, .Offset = -0.003},
    };
}

// Mixtures with more of A and with more of B, at three wavelengths and three speeds.
std::vector<SimulatedSet> MixedSets() {
    const SimulatedSet common = {.Inner = 6.7F, .Points = 100};
    std::vector<SimulatedSet> sets(6, common);
    const auto fill = [&](std::size_t i, float rpm, double signal, double share, double offset) {
        sets[i].Rpm = rpm;
        sets[i].OuterSignal = signal;
        sets[i].ShareB = share;
        sets[i].Offset = offset;
    };
    const auto tint = [&](std::size_t i, float wavelength, float ratioA, float ratioB) {
        sets[i].Wavelength = wavelength;
        sets[i].RatioA = ratioA;
        sets[i].RatioB = ratioB;
    };
    fill(0, 16000, 1.2, 0.5, 0.008);
    fill(1, 12000, 1.1, 0.7, -0.005);
    fill(2, 24000, 1.4, 0.4, 0.003);
    fill(3, 16000, 1.0, 1.6, 0.001);
    fill(4, 24000, 1.2, 0.7, -0.002);
    fill(5, 12000, 0.9, 0.3, 0.004);
    tint(3, 250, 0.6F, 1.3F);
    tint(4, 250, 0.6F, 1.3F);
    tint(5, 230, 1.6F, 0.7F);
    return sets;
}

ModelCase Self(std::int16_t model, double massA, std::vector<long> fitted) {
    ModelCase c;
    c.Name = Numbered(model);
    c.Model = model;
    c.MassA = massA;
    c.Fitted = std::move(fitted);
    c.Sets = SelfSets();
    c.Noise = 0.003;
    return c;
}

ModelCase Mixed(std::int16_t model, std::vector<long> fitted) {
    ModelCase c;
    c.Name = Numbered(model);
    c.Model = model;
    c.MassA = 22.0;
    c.MassB = 55.0;
    c.Fitted = std::move(fitted);
    c.Sets = MixedSets();
    c.Noise = 0.0015;
    c.FitOffsets = false; // as the program starts out
    return c;
}

std::vector<ModelCase> PlainSelfCases() {
    std::vector<ModelCase> all;
    all.push_back(Self(1, 60.0, {0}));
    all.push_back(Self(2, 40.0, {0, 2}));
    all.back().LnK2 = std::log(3.0);
    all.back().Noise = 0.002;
    all.push_back(Self(3, 30.0, {0, 1, 2}));
    all.back().N = 3.0;
    all.back().LnK2 = std::log(6.0);
    all.push_back(Self(4, 28.0, {0, 2, 4}));
    all.back().LnK2 = std::log(3.0);
    all.back().LnK4 = std::log(25.0);
    all.push_back(Self(5, 22.0, {2, 4}));
    all.back().N = 3.0;
    all.back().M = 6.0;
    all.back().LnK2 = std::log(10.0);
    all.back().LnK4 = std::log(500.0);
    // The inactive monomer shares the monomer's exponential: the constant is held, or nothing tells them
    // apart.
    all.push_back(Self(6, 30.0, {0}));
    all.back().N = 3.0;
    all.back().LnK2 = std::log(20.0);
    for (SimulatedSet& set : all.back().Sets)
        set.ShareB = 0.5;
    all.push_back(Self(7, 25.0, {0, 5}));
    all.back().MassB = 90.0;
    for (SimulatedSet& set : all.back().Sets)
        set.ShareB = 0.15;
    return all;
}

std::vector<ModelCase> PlainMixedCases() {
    std::vector<ModelCase> all;
    const auto add = [&](std::int16_t model, std::vector<long> fitted, double k6, double slot7 = 0,
                         double k2 = 0, double k4 = 0) {
        all.push_back(Mixed(model, std::move(fitted)));
        ModelCase& c = all.back();
        c.LnK6 = std::log(k6);
        c.Slot7 = slot7 > 0 ? std::log(slot7) : 0;
        c.LnK2 = k2 > 0 ? std::log(k2) : 0;
        c.LnK4 = k4 > 0 ? std::log(k4) : 0;
    };
    add(8, {6}, 2e5);
    add(9, {6}, 1e5);
    add(10, {6, 7}, 4e4, 3e5);
    add(11, {6, 7}, 1e5, 4.0);
    add(12, {2, 6}, 1e5, 0, 1.2);
    add(13, {2, 6, 7}, 4e4, 3e5, 1.2);
    add(14, {2, 6}, 4e4, 3e5, 3.0); // K2 K6 K7 and K6 + K7 are all that shows: one of three is held
    add(15, {4, 6}, 2e5, 0, 0, 2e5);
    add(16, {4, 6}, 2e5, 0, 0, 1e5);
    add(17, {4, 6, 7}, 2e5, 3e5, 0, 1e5);
    add(18, {4, 6, 7}, 2e5, 3e5, 0, 1e5);
    add(19, {2, 4, 6}, 2e5, 0, 2e5, 1e5);
    add(20, {2, 4, 6, 7}, 2e5, 3e5, 2e5, 1e5);
    // In these two a dimerisation constant stands beside 1: only strong solutions, that is weak
    // coefficients, show the dimer and the single complex at once.
    add(21, {2, 6}, 3.0, 0, 2.0);
    add(22, {2, 6, 7}, 1.5, 6.0, 2.0);
    for (std::size_t i = all.size() - 2; i < all.size(); ++i) {
        all[i].ExtA = 1.5F;
        all[i].ExtB = 3.0F;
    }
    return all;
}

// --- variants of a case ---------------------------------------------------------------------------------

bool ThirdSlotIsOffset(const ModelCase& c) {
    return !c.SeparateK || (c.Model != 4 && c.Model != 5 && c.Model <= 6);
}

// The second virial coefficient as the model is written: below 0 it lowers the monomer, above 0 it raises it.
ModelCase NonIdeal(ModelCase c, const std::string& suffix, double coefficient, std::vector<long> fitted) {
    c.Name += suffix;
    c.NonIdeal = true;
    c.Slot7 = coefficient;
    c.Fitted = std::move(fitted);
    c.Noise = 0.002;
    return c;
}

// Constants of each set's own, some apart. The global slots take values that would show if they were read.
ModelCase Separate(ModelCase c) {
    c.Name += "SeparateK";
    c.SeparateK = true;
    const double lnK1 = c.Model >= 8 ? c.LnK6 : c.LnK2;
    for (std::size_t i = 0; i < c.Sets.size(); ++i) {
        const double apart = 0.2 * static_cast<double>(i % 3) - 0.2;
        c.Sets[i].LnK1 = lnK1 + apart;
        c.Sets[i].LnK2 = c.LnK4 - apart;
        if (!ThirdSlotIsOffset(c)) c.Sets[i].Offset = 0;
    }
    c.LnK2 = c.LnK4 = c.LnK6 = 0.5;
    c.Fitted.clear();
    if (c.Model == 2 || c.Model == 3 || c.Model == 6) c.Fitted = {0};
    c.Noise = 0.002;
    return c;
}

// Model 6 reads one slot as the set's constant and as its amount of inactive monomer, and the two amounts of
// a set follow from its two amplitudes only on one side of a fold: little inactive monomer, strong signals,
// low speeds.
ModelCase SeparateInactive(ModelCase c) {
    c.N = 4.0;
    c.LnK2 = std::log(0.03);
    for (SimulatedSet& set : c.Sets)
        set.OuterSignal = 2.0;
    c.Sets[2].Rpm = c.Sets[4].Rpm = 10000;
    c = Separate(std::move(c));
    c.Noise = 0.001;
    return c;
}

// Loadings known for some sets: of A alone, of both, and where there is a B of B alone.
ModelCase Constrained(ModelCase c) {
    c.Name += "Constrained";
    const bool hasB = c.Model >= 7;
    c.Sets[0].ToleranceA = 0.02F;
    c.Sets[1].ToleranceA = 0.05F;
    c.Sets[3].ToleranceA = 0.1F;
    if (hasB) {
        c.Sets[1].ToleranceB = 0.03F;
        c.Sets[2].ToleranceB = 0.05F;
        c.Sets[3].ToleranceB = 0.1F;
    }
    return c;
}

// One offset for the first two sets, one for the next and the last.
ModelCase Linked(ModelCase c) {
    c.Name += "Linked";
    c.FitOffsets = true;
    c.Sets[1].OffsetOf = 1;
    c.Sets.back().OffsetOf = 4;
    return c;
}

// Other rows of the table than the first ones, cells of two lengths, header temperatures that differ.
ModelCase Scattered(ModelCase c) {
    c.Name += "Scattered";
    for (std::size_t i = 0; i < c.Sets.size(); ++i) {
        SimulatedSet& set = c.Sets[i];
        set.Row = static_cast<int>(3 * i + 3);
        set.Path = i % 2 == 0 ? 1.2F : 0.3F;
        set.Temperature = i % 3 == 0 ? 20.0F : 20.4F;
    }
    c.Sets[0].RatioA = 1.2F;
    c.Sets[0].RatioB = 0.85F;
    c.FirstRowRatioA = 0.9F;
    c.FirstRowRatioB = 1.1F;
    return c;
}

// Interference optics: the molar refractivities take the place of the extinction coefficients.
ModelCase Interference(ModelCase c) {
    c.Name += "Interference";
    c.ConcUnits = 5;
    return c;
}

// As many sets as there can be: the last one's offset is the last parameter.
ModelCase EighteenSets(ModelCase c) {
    c.Name += "EighteenSets";
    const std::vector<SimulatedSet> few = c.Sets;
    for (std::size_t i = few.size(); i < 18; ++i) {
        c.Sets.push_back(few[i % few.size()]);
        c.Sets.back().OuterSignal *= 0.8;
        c.Sets.back().Points = 40;
    }
    return c;
}

std::vector<ModelCase> AllCases() {
    std::vector<ModelCase> plain = PlainSelfCases();
    for (ModelCase& c : PlainMixedCases())
        plain.push_back(std::move(c));
    const auto of = [&](int model) -> const ModelCase& { return plain[static_cast<std::size_t>(model - 1)]; };

    std::vector<ModelCase> all = plain;
    const std::vector<long> withB2[] = {{0, 7}, {2, 7}, {2, 7}, {4, 7}, {4, 7}};
    for (int model = 1; model <= 5; ++model) {
        all.push_back(NonIdeal(of(model), "NonIdeal", -0.06, withB2[model - 1]));
        all.push_back(NonIdeal(of(model), "NonIdealPositive", 0.05, withB2[model - 1]));
    }
    for (const int model : {2, 3, 4, 5, 8, 9})
        all.push_back(Separate(of(model)));
    all.push_back(SeparateInactive(of(6)));
    all.push_back(NonIdeal(Separate(of(2)), "NonIdeal", -0.06, {7}));
    all.push_back(NonIdeal(Separate(of(4)), "NonIdeal", -0.06, {7}));
    for (const ModelCase& c : plain)
        all.push_back(Constrained(c));
    for (const int model : {2, 8, 9})
        all.push_back(Constrained(Separate(of(model))));
    all.push_back(Constrained(SeparateInactive(of(6))));
    all.push_back(Constrained(all[22])); // model 1, non-ideal
    for (const ModelCase& c : plain)
        all.push_back(Linked(c));
    all.push_back(Linked(Separate(of(3))));
    all.push_back(Linked(Constrained(of(8))));
    for (const int model : {1, 4, 6, 7, 8, 12, 13, 16, 20, 22})
        all.push_back(Scattered(of(model)));
    all.push_back(Interference(of(10)));
    all.push_back(Interference(of(20)));
    all.push_back(EighteenSets(of(2)));
    return all;
}

} // namespace

const std::vector<ModelCase>& ModelCases() {
    static const std::vector<ModelCase> all = AllCases();
    return all;
}

const ModelCase& ModelCaseNamed(const std::string& name) {
    for (const ModelCase& c : ModelCases())
        if (c.Name == name) return c;
    throw std::out_of_range("no case " + name);
}

} // namespace Quillon
