#pragma once
// The table of models: model by slot, what the slot holds there, how it is named and shown, how it is bounded
// and whether it is fitted. All that is known of a model beside its arithmetic (models/function/FitFrame.h,
// models/function/Species.h) stands here once; names, units, scales, flags, bounds, guesses and jobs look it
// up.
//
// A model has a second column of slots for separate constants: no slot is added for them, a set's own slots
// change hands (ln c(B) or the zero offset give way to ln K) and the global constant is empty.

#include "workspace/records/Counts.h"

#include <array>
#include <cstdint>

namespace Quillon {

// What a slot holds. Constants and concentrations are natural logarithms: their displayed value is internal
// plus an addend. Everything else is shown by a factor.
enum class Quantity {
    Mass,          // sigma, 1/cm^2
    Stoichiometry, // N or M
    Constant,      // ln K
    Virial,        // the second virial coefficient
    LnSignal,      // ln c of a monomer in signal units of the first set
    Offset,        // zero offset, signal units of the set
    Unread         // a set's third slot where a model gives the offset up and puts nothing in its place
};

// The unit that a slot is titled with; the words follow from the units of display (models/table/ParmScale.h).
enum class SlotUnit {
    Nothing,
    Mass,          // kDa, none for sigma
    OneToN,        // concentration to the power 1 - N
    OneToM,        // concentration to the power 1 - M
    Mixed,         // one over a concentration
    Concentration, // of a monomer
    Signal         // of a zero offset
};

// The rule of the factor or addend that leads to the displayed value (models/table/ParmScale.h has the
// formulas). It mostly goes with the unit, but not always: the table says where the two part.
enum class SlotScale {
    One,     // factor 1
    MassA,   // factors of masses
    MassB,   //
    OneToN,  // addends of constants: monomer to N-mer,
    OneToM,  // monomer to M-mer,
    Mixed,   // A + B
    Zero,    // addend 0: a cooperativity constant has no unit
    SignalA, // addends of concentrations
    SignalB
};

// What becomes of a slot's flag when a model is taken up.
enum class SlotUse {
    AsIs,        // fitted or held as it was
    Shown,       // the same, but a slot that was not used before is fitted
    Held,        // held, at the value that it has
    Fixed,       // held, at SlotRule::Value
    Hidden,      // not used
    HiddenZero,  // not used, and 0
    HiddenAsN,   // not used; takes the value of N
    WhenNonIdeal // in a non-ideal fit as it was, else not used and 0
};

// Where a slot starts with other bounds than its quantity has.
enum class SlotBounds {
    Usual,
    Own,      // SlotRule::Lower to Upper, in any units
    WideBelow // the lower one is the negative of the upper one of constants
};

struct SlotRule {
    const char*
        Name; // ParmName; of a mass what stands behind the quantity, of a set's slot before its number
    Quantity Holds;
    SlotUnit Unit;
    SlotScale Scale;
    SlotUse Use = SlotUse::AsIs;
    float Value = 0.0F;    // of SlotUse::Fixed
    float Standard = 0.0F; // what stands for a value that nobody has set, exactly 0
    SlotBounds Bounds = SlotBounds::Usual;
    float Lower = 0.0F, Upper = 0.0F; // user units
    SlotNo Common = NoSlot;           // a set's slot: the global slot whose constant the set has for itself
};

// True when the displayed value is internal plus ParmScale, false when it is internal times ParmScale.
constexpr bool IsAdditive(Quantity holds) {
    return holds == Quantity::Constant || holds == Quantity::LnSignal || holds == Quantity::Unread;
}

// True of what each set has its own of and that scales or shifts its signal: concentrations and offsets.
constexpr bool FollowsASet(Quantity holds) {
    return holds == Quantity::LnSignal || holds == Quantity::Offset;
}

// The slots of a model: eight global ones, and the three of each set.
struct ModelSlots {
    std::array<SlotRule, 8> Global;
    std::array<SlotRule, 3> OfSet; // ln c(A), ln c(B), zero offset
};

// How concentrations are read off the signal L = ln of the signal at the reference radius, in signal units of
// the first set (models/Guesses.h has the formulas).
enum class FirstGuess {
    Kept,        // concentrations stay as they are
    WholeSignal, // A has all of it
    Tenth,       // A has a tenth
    TenthEach,   // A and the inactive monomer each have a tenth
    HalfEach,    // A and B each have half
    AllInAB,     // all of it is in AB,
    AllInABB,    // in complexes of three,
    AllInABBA    // in complexes of four monomers
};

// The rest of what is known of a model.
struct ModelTraits {
    bool NonIdeal = false;          // may be fitted with a second virial coefficient
    bool SeparateK = false;         // may have constants for each set
    bool OffsetGoes = false;        // with separate constants the zero offsets are exactly 0
    bool TwoSpecies = false;        // B is a species of its own, with coefficients and loadings
    bool Hetero = false;            // A and B associate: molar coefficients are needed, mg/mL makes no sense
    bool LoadingsNeedMolar = false; // warns that loadings hang on the molar coefficients
    bool CooperativityNote = false; // tells what cooperativity means in weight units
    bool GivesBaseline = false;     // its fitted curve may be written as a baseline
    std::int16_t General = 0;       // the model that it is with other stoichiometries than the fixed ones
    SlotNo SharedFrom = NoSlot;     // a slot that stands for two bonds,
    SlotNo SharedTo = NoSlot;       // and the slot that shows the second one after a fit
    FirstGuess Guess = FirstGuess::Kept;
    std::array<double, 4> GuessK{}; // how often the constants of slots 6, 7, 4, 2 enter the guess
};

// Behind the 22 models (LastModelNumber) stand two reserved numbers, which name and flag their slots as 21
// and 22 do and are otherwise empty.
inline constexpr int LastReservedModel = 24;

// The slots of a model, with constants common to all sets or separate ones. A number that is no model has
// those of none: nothing hidden but the virial coefficient.
const ModelSlots& SlotsOfModel(int model, bool separateK);

// The rule of a slot (from 0, global or of a set).
const SlotRule& RuleOfSlot(int model, bool separateK, SlotNo slot);
const SlotRule& RuleOfSlot(SlotNo slot); // in Work.Model with Work.SeparateK

const ModelTraits& TraitsOfModel(int model);
const ModelTraits& TraitsOfModel(); // of Work.Model

// The model by whose first guess concentrations are read off the data: the model itself; for one that keeps
// what stands (FirstGuess::Kept) the one before it in the table, which binds alike but for one constant.
int ModelForGuess(int model);

} // namespace Quillon
