#include "models/function/FitFrame.h"

#include "models/function/Exponential.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/Catalogue.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

double P(SlotNo slot) {
    return static_cast<double>(Work.Parms[slot]);
}
double P(long globalSlot) {
    return P(SlotNo(globalSlot));
}
double RatioA(RowNo row) {
    return static_cast<double>(Work.ExtinctionRatio[0][row]);
}
double RatioB(RowNo row) {
    return static_cast<double>(Work.ExtinctionRatio[1][row]);
}

// The conversions between monomer signals, molar complexes and the signal of a complex in the set's cell, by
// Beer's law: the signal of c molar in a cell of path P is eps E P c, with eps the molar coefficient and E
// the extinction ratio of the row. The signals of a complex's units add up.
//     k...  a product of monomer signals, which are those of the first set's cell, to the product of molars
//     g...  1 molar of a species to signal in this set's cell
// [decision: first-row-ratios]
// The table's first row enters where E1(1) and E2(1) stand, which need not be the row of set 1.
void LoadMolarFactors(FitFrame& f) {
    const bool absorbance = Work.ConcUnits <= ConcUnit::Mole;
    const double eA = static_cast<double>(absorbance ? Work.ExtA : Work.RefrA);
    const double eB = static_cast<double>(absorbance ? Work.ExtB : Work.RefrB);
    const double path1 = f.RefPath;
    const double path = static_cast<double>(Work.CellPath[f.CurRow]);
    const double a1 = RatioA(RowNo(1));
    const double b1 = RatioB(RowNo(1));
    const double ea = eA * RatioA(f.CurRow);
    const double eb = eB * RatioB(f.CurRow);
    const double path3 = path1 * path1 * path1;
    f.kAB = Divide(1.0, eB * eA * path1 * path1 * RatioA(f.FirstRow) * b1);
    f.kABB = Divide(1.0, eB * eA * eB * path3 * a1 * b1 * b1);
    f.kAAB = Divide(1.0, eA * eA * eB * path3 * a1 * a1 * b1);
    f.kA = Divide(1.0, eA * path1 * a1);
    f.kB = Divide(1.0, eB * path1 * b1);
    f.gA = ea * path;
    f.gB = eb * path;
    f.gAB = (eb + ea) * path;
    f.gABB = (2.0 * eb + ea) * path;
    f.gAAB = (2.0 * ea + eb) * path;
    f.gBB = 2.0 * eb * path;
}

void LoadGeometry(FitFrame& f, SetNo set) {
    f.CurSet = set;
    f.CurRow = RowOf(set);
    f.FirstRow = RowOf(SetNo(1));
    f.ConstraintsOn = static_cast<std::int16_t>(Work.ConstraintFlags & ConcentrationBit);
    f.SetBase = SlotA(set);
    f.RefPath = static_cast<double>(Work.CellPath[f.FirstRow]);
    f.SigmaScale = static_cast<double>(Work.SetSigmaScale[set]);
    const double signal = static_cast<double>(Work.SetSignalScale[set]);
    f.ScaleA = Divide(signal * RatioA(f.CurRow), RatioA(f.FirstRow));
    f.ScaleB = Divide(signal * RatioB(f.CurRow), RatioB(f.FirstRow));
    const SetNo leader = LeaderOf(set);
    f.LeadA = LeadSlotA(set);
    f.LeadB = LeadSlotB(set);
    f.TieX = leader > NoSet ? ReferenceX(f.CurRow) - ReferenceX(RowOf(leader)) : 0.0;
    if (Work.Model > 7) LoadMolarFactors(f);
}

void LoadMasses(FitFrame& f) {
    f.SigmaA = f.SigmaScale * P(0);
    f.SigmaB = Work.Model == 6 ? f.SigmaA : f.SigmaScale * P(5); // the inactive monomer is A
    f.BFactor = P(7) * P(0);                                     // e = B2 sigma, see NonIdeal.h
}

// Models 21 and 22: two binding sites with the intrinsic constants K6 and Kb, and dimerisation of B with D.
// L = K6 + Kb and Q = K6 Kb are the coefficients of the binding polynomial of two independent sites (I. M.
// Klotz, Arch. Biochem. 9 (1946) 109); a pair of B that dimerises brings a factor D.
void LoadTwoSiteComplexes(FitFrame& f, double K6, double Kb, double D) {
    const double L = K6 + Kb;
    const double Q = K6 * Kb;
    f.cAB = L * f.kAB;
    f.cABB = (Q * (D + 1.0) + 2.0 * L * D) * f.kABB;
    f.cBB = D * f.kB * f.kB;
    f.cAAB = Q * f.kAAB;
    f.cABBA = ((Q * (D + 1.0) + (D + 1.0) * L) * Q + L * D * L) * (f.kA * f.kB) * (f.kA * f.kB);
}

// AB where A has two sites that differ: each site by its own constant.
void LoadUnlikeSites(FitFrame& f, double K6, double K7) {
    f.cAB = (K6 + K7) * f.kAB;
    f.cFirstAB = K6 * f.kAB;
    f.cOtherAB = K7 * f.kAB;
}

// Models 15 to 20: [AB] = K6 [A][B]; [AB2] = 2 K4 [AB][B], the 2 for the two ways round; [ABBA] = kABBA
// [AB]^2; [B2] = kBB [B]^2. Which of the constants stands for which dimerisation is what tells the models
// apart.
void LoadDimerComplexes(FitFrame& f, double K6, double K4, double kABBA, double kBB) {
    f.cAB = K6 * f.kAB;
    f.cABB = Work.Model == 15 ? 0.0 : 2.0 * K4 * f.cAB * f.kB;
    f.cBB = kBB * f.kB * f.kB;
    f.cABBA = kABBA * f.cAB * f.cAB;
}

// Molar concentrations of the complexes over products of the monomer signals, by mass action. Intrinsic
// constants carry the statistical factors of equal sites (Tanford, chapter 8): 2 for the first of two equal
// sites, 1 for both; different sites add their constants up for the first B and multiply them for both.
//     8       A + B            [AB] = K6 [A][B]
//     9       equal sites      [AB] = 2 K6 [A][B]       [AB2] = K6^2 [A][B]^2
//     10      different sites  [AB] = (K6 + K7) [A][B]  [AB2] = K6 K7 [A][B]^2
//     11, 14  the second B binds K7 or K2 times as strongly: cooperativity
//     12, 13  and B dimerises, free and bound
void LoadComplexes(FitFrame& f) {
    const int model = Work.Model;
    if (model < 8 || model > LastModelNumber) return;
    const double K6 = Exponential(f.LnKAB);
    const auto K = [](long slot) { return Exponential(P(slot)); };
    switch (model) {
    case 8:
        f.cAB = K6 * f.kAB;
        break;
    case 9:
        f.cAB = 2.0 * K6 * f.kAB;
        f.cABB = K6 * K6 * f.kABB;
        break;
    case 10:
        LoadUnlikeSites(f, K6, K(7));
        f.cABB = K6 * K(7) * f.kABB;
        break;
    case 11:
        f.cAB = 2.0 * K6 * f.kAB;
        f.cABB = (K(7) * K6) * K6 * f.kABB;
        break;
    case 12:
        f.cAB = 2.0 * K6 * f.kAB;
        f.cABB = (K6 * K(2) + 2.0 * K(2) + K6) * K6 * f.kABB;
        // [decision: dimer-as-signal]
        f.cBB = K(2) * f.ScaleB;
        break;
    case 13:
        LoadUnlikeSites(f, K6, K(7));
        f.cABB = ((K6 * K(7) + K6 + K(7)) * K(2) + K6 * K(7)) * f.kABB;
        f.cBB = K(2) * f.ScaleA; // by the scale of A, unlike model 12
        break;
    case 14:
        LoadUnlikeSites(f, K6, K(7));
        f.cABB = K(2) * K6 * K(7) * f.kABB;
        break;
    case 15:
    case 16:
        LoadDimerComplexes(f, K6, K(4), K(4), 0.0);
        break;
    case 17:
        LoadDimerComplexes(f, K6, K(4), K(7), 0.0);
        break;
    case 18:
        LoadDimerComplexes(f, K6, K(4), K(7), K(4));
        break;
    case 19:
        LoadDimerComplexes(f, K6, K(4), K(4), K(2));
        break;
    case 20:
        LoadDimerComplexes(f, K6, K(4), K(7), K(2));
        break;
    case 21:
        LoadTwoSiteComplexes(f, K6, K6, K(2));
        break;
    default:
        LoadTwoSiteComplexes(f, K6, K(7), K(2));
        break; // 22
    }
}

// The constants of the set, common or its own. Oligomers of A follow as c_N = K1 a^N and c_M = K2 a^M.
void LoadAssociation(FitFrame& f) {
    const int model = Work.Model;
    const bool separateK = Work.SeparateK != 0;
    const SlotNo second = SlotB(f.CurSet);
    const SlotNo third = SlotOffset(f.CurSet);
    f.LnK1 = P(separateK ? second : SlotNo(2));
    f.LnK2 = P(separateK ? third : SlotNo(4));
    f.LnKAB = P(separateK && (model == 8 || model == 9) ? third : SlotNo(6));
    f.Offset = OffsetSlotHoldsConstant(model, separateK) ? 0.0 : P(third);
    if (model >= 2 && model <= 6) f.K1 = Exponential(f.LnK1);
    if (model == 4 || model == 5) f.K2 = Exponential(f.LnK2);
    LoadComplexes(f);
}

bool FollowsA(const FitFrame& f) {
    return f.LeadA != f.SetBase;
}
bool FollowsB(const FitFrame& f) {
    return f.LeadB != f.SetBase + 1;
}

// ln c at the reference radius; that of a set which follows another one is the leader's, carried along
// d ln c / d(r^2/2) = sigma to its own reference radius.
void LoadConcentrations(FitFrame& f) {
    f.LnA = P(f.LeadA);
    f.LnB = P(f.LeadB);
    if (FollowsA(f)) f.LnA += f.SigmaA * f.TieX;
    if (FollowsB(f)) f.LnB += f.SigmaB * f.TieX;
}

void LoadPowers(FitFrame& f) {
    f.PowerN = P(1);
    f.PowerM = P(3);
}

bool IsOwn(const FitFrame& f, SlotNo slot) {
    return slot >= f.SetBase && slot <= f.SetBase + 2;
}

void RememberFrom(FitFrame& f, SlotNo slot) {
    const float value = Work.Parms[slot];
    if (PartOfSlot(slot) == SlotPart::Global) f.From[slot.Number] = value;
    if (IsOwn(f, slot)) f.From[GlobalSlots + slot.Number - f.SetBase.Number] = value;
    if (slot == f.LeadA) f.From[11] = value;
    if (slot == f.LeadB) f.From[12] = value;
}

} // namespace

void LoadConstants(FitFrame& f) {
    LoadMasses(f);
    LoadPowers(f);
    LoadConcentrations(f);
    LoadAssociation(f);
    std::copy_n(Work.Parms.Data(), 8, f.From);
    std::copy_n(Work.Parms.Data() + f.SetBase.Number, 3, f.From + 8);
    f.From[11] = Work.Parms[f.LeadA];
    f.From[12] = Work.Parms[f.LeadB];
}

void LoadFrame(FitFrame& f, SetNo set) {
    LoadGeometry(f, set);
    LoadConstants(f);
    f.LastN = f.LastM = f.LastTotal = 0.0;
}

bool FrameIsCurrent(const FitFrame& f) {
    return std::equal(f.From, f.From + 8, Work.Parms.Data()) &&
           std::equal(f.From + 8, f.From + 11, Work.Parms.Data() + f.SetBase.Number) &&
           f.From[11] == Work.Parms[f.LeadA] && f.From[12] == Work.Parms[f.LeadB];
}

void StepFrame(FitFrame& stepped, const FitFrame& base, SlotNo slot) {
    stepped = base;
    const bool own = IsOwn(base, slot);
    const bool global = PartOfSlot(slot) == SlotPart::Global;
    if (!global && !own && slot != base.LeadA && slot != base.LeadB) return;
    RememberFrom(stepped, slot);
    switch (slot.Number) {
    case 0:
    case 5:
        LoadMasses(stepped);
        if (FollowsA(base) || FollowsB(base)) LoadConcentrations(stepped); // they hang on sigma, too
        return;
    case 1:
    case 3:
        LoadPowers(stepped);
        return;
    case 7:
        LoadMasses(stepped);
        break;
    default:
        break;
    }
    if (!global) LoadConcentrations(stepped);
    if (global || (own && slot != base.SetBase)) LoadAssociation(stepped);
}

} // namespace Quillon
