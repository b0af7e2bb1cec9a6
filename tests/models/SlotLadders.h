#pragma once
// The rules of the slots as the words of the field's manual put them: condition after condition on the number
// of the model, later ones overriding. A second coding of what the table of models says, for tests.

namespace Quillon {

// Fills Work.ParmName and Work.ParmTitle.
void LadderNames();

// Factors of masses and addends of constants and concentrations in the units in force, by hand.
struct LadderAddends {
    float MassA{}, MassB{}, OneToN{}, OneToM{}, Mixed{}, A{}, B{};
};

// Fills Work.ParmScale.
void LadderScale(const LadderAddends& addends);

bool LadderIsAdditive(long slot);
double LadderDerivStep(long slot);

// Work.FreeMap and the forced values, but for links of zero offsets.
void LadderFlags();

// Fills Work.Bounds.
void LadderBounds();

} // namespace Quillon
