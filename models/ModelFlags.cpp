// Which slots a model uses, holds or fits.
#include "models/Catalogue.h"
#include "workspace/records/Workspace.h"

#include <initializer_list>

namespace Quillon {

namespace {

void Hide(std::initializer_list<long> slots) {
    for (const long i : slots)
        Work.FreeMap[i] = SlotUnused;
}

// A slot that was hidden returns as fitted; any other state stands.
void Reveal(std::initializer_list<long> slots) {
    for (const long i : slots)
        if (Work.FreeMap[i] == SlotUnused) Work.FreeMap[i] = 0;
}

void Fix(long slot, float value) {
    Work.FreeMap[slot] = SlotHeld;
    Work.Parms[slot] = value;
}

void HideSecondSpecies() {
    for (long s = 1; s <= Work.MaxSets; ++s)
        Work.FreeMap[SlotB(s)] = SlotUnused;
}

void HoldMasses() {
    Work.FreeMap[0] = Work.FreeMap[5] = SlotHeld;
}

// Models 1 to 6: one kind of monomer.
void FlagSelfAssociation(int model, bool separateK) {
    switch (model) {
    case 1:
        Hide({1, 2, 3, 4, 5, 6});
        break;
    case 2:
        Fix(1, 2.0F);
        if (separateK) Hide({2});
        Hide({3, 4, 5, 6});
        break;
    case 3:
        if (separateK) Hide({2});
        Hide({3, 4, 5, 6});
        break;
    case 4:
        Fix(1, 2.0F);
        if (separateK) Hide({2, 4});
        Fix(3, 4.0F);
        Hide({5, 6});
        break;
    case 5:
        if (separateK) Hide({2, 4});
        Hide({5, 6});
        break;
    default: // 6: the second slot of each set is the inactive monomer
        Hide({3, 4, 5, 6});
        Work.Parms[5] = Work.Parms[1];
        return;
    }
    if (model == 1 || !separateK) HideSecondSpecies();
}

// Models 7 and above: two kinds of monomer, both masses held until the user releases them.
void FlagTwoSpecies(int model, bool separateK) {
    HoldMasses();
    switch (model) {
    case 7:
        Hide({1, 2, 3, 4, 6});
        break;
    case 8:
    case 9:
        Hide({1, 2, 3, 4});
        Reveal({6});
        if (separateK) Hide({6});
        break;
    case 10:
    case 11:
        Hide({1, 2, 3, 4});
        Reveal({6, 7});
        break;
    case 15:
    case 16:
        Hide({1, 2, 3});
        Reveal({4, 6});
        Hide({7});
        break;
    case 17:
    case 18:
        Hide({1, 2, 3});
        Reveal({4, 6, 7});
        break;
    case 19:
        Hide({1, 3, 7});
        Reveal({2, 4, 6});
        break;
    case 20:
        Hide({1, 3});
        Reveal({2, 4, 6, 7});
        break;
    default: // 12, 13, 14, 21 to 24
        Hide({1, 3, 4});
        Reveal({2, 6, 7});
        break;
    }
}

void FlagSlot7(int model) {
    const bool own = model == 10 || model == 11 || (model >= 13 && model <= 18) || model == 20 ||
                     model == 22 || model == 24;
    if (own) return;
    if (model == 9 || model == 12 || model == 21 || model == 23) {
        Hide({7});
    } else if (!Work.NonIdeal) {
        Hide({7});
        Work.Parms[7] = 0.0F;
    }
}

void FlagOffsetLinks() {
    for (long s = 1; s <= Work.NumSets; ++s) {
        const long link = Work.OffsetLink[Work.SetRow[s]];
        if (link != 0) {
            Work.FreeMap[SlotOffset(s)] = SlotTied;
            const long other = Work.SetOfRow[link];
            if (other > 0) Work.FreeMap[SlotOffset(other)] = 0;
        } else if (Work.FreeMap[SlotOffset(s)] == SlotTied) {
            Work.FreeMap[SlotOffset(s)] = SlotHeld;
        }
    }
}

} // namespace

void ApplyModelFlags() {
    const int model = Work.Model;
    const bool separateK = Work.SeparateK != 0;
    if (model >= 1 && model <= 6)
        FlagSelfAssociation(model, separateK);
    else if (model >= 7 && model <= 24)
        FlagTwoSpecies(model, separateK);
    FlagSlot7(model);
    FlagOffsetLinks();
}

} // namespace Quillon
