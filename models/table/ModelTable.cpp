#include "models/table/ModelTable.h"

#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

using enum SlotUse;

constexpr SlotRule WithUse(SlotRule rule, SlotUse use) {
    rule.Use = use;
    return rule;
}
constexpr SlotRule Not(const SlotRule& rule) {
    return WithUse(rule, Hidden);
}
constexpr SlotRule Show(const SlotRule& rule) {
    return WithUse(rule, Shown);
}
constexpr SlotRule Hold(const SlotRule& rule) {
    return WithUse(rule, Held);
}
constexpr SlotRule Fix(SlotRule rule, float value) {
    rule.Value = value;
    return WithUse(rule, Fixed);
}
constexpr SlotRule Within(SlotRule rule, float lower, float upper) {
    rule.Bounds = SlotBounds::Own;
    rule.Lower = lower;
    rule.Upper = upper;
    return rule;
}
constexpr SlotRule LogK(const char* name, SlotUnit unit, SlotScale scale) {
    return {name, Quantity::Constant, unit, scale};
}
constexpr SlotRule LogK(const char* name) {
    return LogK(name, SlotUnit::Mixed, SlotScale::Mixed);
}

// --- what can stand in a slot ----------------------------------------------------------------------------

constexpr SlotRule Standing(SlotRule rule, float standard) {
    rule.Standard = standard;
    return rule;
}
constexpr SlotRule MassOf(const char* species, SlotScale scale, float standard) {
    return Standing({species, Quantity::Mass, SlotUnit::Mass, scale}, standard);
}
constexpr SlotRule MassMon = MassOf("A mon", SlotScale::MassA, 1.5F);
constexpr SlotRule MassA = MassOf("A", SlotScale::MassA, 1.5F);
constexpr SlotRule MassB = MassOf("B", SlotScale::MassB, 3.0F);
constexpr SlotRule N = Standing({"N", Quantity::Stoichiometry, SlotUnit::Nothing, SlotScale::One}, 2.0F);
constexpr SlotRule M = Standing({"M", Quantity::Stoichiometry, SlotUnit::Nothing, SlotScale::One}, 2.0F);

constexpr SlotRule K1N = LogK("Ln K(1>N)", SlotUnit::OneToN, SlotScale::OneToN);
constexpr SlotRule K1M = LogK("Ln K(1>M)", SlotUnit::OneToM, SlotScale::OneToM);
constexpr SlotRule KAB = LogK("Ln K(A+B)");
constexpr SlotRule KSite = LogK("Ln K(A+B,AB+B)");
constexpr SlotRule K1AB = LogK("Ln K1(A+B)");
constexpr SlotRule K2AB = LogK("Ln K2(A+B)");
constexpr SlotRule KSecond = LogK("Ln K(AB>AB2)");
constexpr SlotRule KBB = LogK("ln K(2B>B2)");
constexpr SlotRule KPair = LogK("Ln K(2AB>ABBA)");
constexpr SlotRule Coop = LogK("Ln K(coop)", SlotUnit::Nothing, SlotScale::Zero);

// [decision: shared-addends]
// Here unit and addend part on purpose. The dimer constant of models 12 and 13 is titled as one over a
// concentration, as it should be, while its displayed value takes the addend of monomer to N-mer. Slot 4 of
// the models from 15 on likewise: its title is that of slot 6, its addend that of monomer to M-mer.
constexpr SlotRule Kdimer = LogK("Ln Kdimer", SlotUnit::Mixed, SlotScale::OneToN);
constexpr SlotRule KPair4 = LogK("ln K(2AB>ABBA)", SlotUnit::Mixed, SlotScale::OneToM);
constexpr SlotRule KABB4 = LogK("ln K(AB+B>ABB)", SlotUnit::Mixed, SlotScale::OneToM);

constexpr SlotRule B2{"B2 vir. coef.", Quantity::Virial, SlotUnit::Mixed, SlotScale::One, WhenNonIdeal};
// Model 7 starts with the lower bound of a constant below its virial coefficient, which it never uses.
constexpr SlotRule WideBelow(SlotRule rule) {
    rule.Bounds = SlotBounds::WideBelow;
    return rule;
}
constexpr SlotRule WideB2 = WideBelow(B2);
// Model 9 names its slot 7 as model 12 does, but neither uses it nor counts it as a logarithm.
constexpr SlotRule NamedSecond{"Ln K(AB>AB2)", Quantity::Virial, SlotUnit::Mixed, SlotScale::One, Hidden};

constexpr SlotRule CA{"Ln c(A,mon), set ", Quantity::LnSignal, SlotUnit::Concentration, SlotScale::SignalA};
constexpr SlotRule CB{"Ln c(B,mon), set ", Quantity::LnSignal, SlotUnit::Concentration, SlotScale::SignalB};
// The inactive monomer is A in another state.
constexpr SlotRule InactiveA{"Ln c(B,mon), set ", Quantity::LnSignal, SlotUnit::Concentration,
                             SlotScale::SignalA};
constexpr SlotRule Zero{"Zero Offset, set ", Quantity::Offset, SlotUnit::Signal, SlotScale::One};

// --- the columns of separate constants -------------------------------------------------------------------

constexpr SlotRule OfEachSet(SlotRule rule, const char* name, long common) {
    rule.Name = name;
    rule.Common = SlotNo(common);
    return rule;
}
// The global slot whose constant each set has for itself.
constexpr SlotRule Emptied(SlotRule rule, const char* name) {
    rule.Name = name;
    rule.Unit = SlotUnit::Nothing;
    return Not(rule);
}
constexpr const char* SeeSets = "(see each set)";

constexpr ModelSlots OwnK1N(ModelSlots slots) {
    slots.Global[2] = Emptied(K1N, SeeSets);
    slots.OfSet[1] = OfEachSet(K1N, "Ln K(1>N), set ", 2);
    return slots;
}
constexpr ModelSlots OwnK1NAndK1M(ModelSlots slots) {
    slots = OwnK1N(slots);
    slots.Global[4] = Emptied(K1M, SeeSets);
    slots.OfSet[2] = OfEachSet(K1M, "Ln K(1>M), set ", 4);
    return slots;
}
// [decision: doubled-slot]
// Model 6 goes on showing its common constant, which nothing reads then, without a unit. Its sets hold ln K
// and ln c of the inactive monomer in one slot.
constexpr ModelSlots OwnK1NShown(ModelSlots slots) {
    slots = OwnK1N(slots);
    slots.Global[2] = WithUse(Emptied(K1N, K1N.Name), AsIs);
    return slots;
}
constexpr ModelSlots OwnKAB(ModelSlots slots) {
    slots.Global[6] = Emptied(slots.Global[6], slots.Global[6].Name);
    slots.OfSet[2] = OfEachSet(KAB, "Ln K(AB), set ", 6);
    return slots;
}
// Models without separate constants: which slots are put back when the option of the model before goes.
constexpr ModelSlots NoneInB(ModelSlots slots) {
    slots.OfSet[1].Common = SlotNo(2);
    return slots;
}
constexpr ModelSlots NoneInOffset(ModelSlots slots) {
    slots.OfSet[2].Holds = Quantity::Unread;
    slots.OfSet[2].Common = SlotNo(6);
    return slots;
}

// --- the table -------------------------------------------------------------------------------------------

constexpr std::array<SlotRule, 3> OneSpecies{CA, Not(CB), Zero};
constexpr std::array<SlotRule, 3> TwoMonomers{CA, CB, Zero};
constexpr SlotRule A = Hold(MassA);
constexpr SlotRule B = Hold(MassB);
constexpr SlotRule K2 = Within(Show(Kdimer), -10.0F, 30.0F);
constexpr SlotRule Coop2 = Within(Show(Coop), -10.0F, 30.0F);
constexpr SlotRule KBB21 = Within(Show(KBB), -4.0F, 28.0F);
constexpr SlotRule KABB21 = Within(Not(KABB4), -4.0F, 28.0F);
constexpr SlotRule K2AB21 = Not(LogK("Ln K2(A+B)", SlotUnit::Mixed, SlotScale::Zero));
constexpr SlotRule BAsN = WithUse(MassB, HiddenAsN);
constexpr SlotRule NoPair = WithUse(KPair, HiddenZero);

constexpr std::size_t Rows = LastReservedModel + 1;

// clang-format off
//   slot   0        1          2           3          4           5           6            7
constexpr std::array<ModelSlots, Rows> Table{{
    {{{     MassMon, N,         K1N,        M,         K1M,        MassB,      KAB,         B2 }}, TwoMonomers}, // none
    {{{     MassMon, Not(N),    Not(K1N),   Not(M),    Not(K1M),   Not(MassB), Not(KAB),    B2 }}, OneSpecies},  // 1
    {{{     MassMon, Fix(N, 2), K1N,        Not(M),    Not(K1M),   Not(MassB), Not(KAB),    B2 }}, OneSpecies},
    {{{     MassMon, N,         K1N,        Not(M),    Not(K1M),   Not(MassB), Not(KAB),    B2 }}, OneSpecies},
    {{{     MassMon, Fix(N, 2), K1N,        Fix(M, 4), K1M,        Not(MassB), Not(KAB),    B2 }}, OneSpecies},
    {{{     MassMon, N,         K1N,        M,         K1M,        Not(MassB), Not(KAB),    B2 }}, OneSpecies},  // 5
    {{{     MassMon, N,         K1N,        Not(M),    Not(K1M),   BAsN,       Not(KAB),    B2 }}, {{CA, InactiveA, Zero}}},
    {{{Hold(MassMon), Not(N),   Not(K1N),   Not(M),    Not(K1M),   B,          Not(KAB),    WideB2 }}, TwoMonomers},
    {{{     A,       Not(N),    Not(K1N),   Not(M),    Not(K1M),   B,          Show(KAB),   B2 }}, TwoMonomers},
    {{{     A,       Not(N),    Not(K1N),   Not(M),    Not(K1M),   B,          Show(KSite), NamedSecond }}, TwoMonomers},
    {{{     A,       Not(N),    Not(K1N),   Not(M),    Not(K1M),   B,          Show(K1AB),  Show(K2AB) }}, TwoMonomers}, // 10
    {{{     A,       Not(N),    Not(K1N),   Not(M),    Not(K1M),   B,          Show(KAB),   Show(Coop) }}, TwoMonomers},
    {{{     A,       Not(N),    Show(Kdimer), Not(M),  Not(K1M),   B,          Show(KSite), Not(KSecond) }}, TwoMonomers},
    {{{     A,       Not(N),    K2,         Not(M),    Not(K1M),   B,          Show(KAB),   Show(K2AB) }}, TwoMonomers},
    {{{     A,       Not(N),    Coop2,      Not(M),    Not(K1M),   B,          Show(KAB),   Show(K2AB) }}, TwoMonomers},
    {{{     A,       Not(N),    Not(KBB),   Not(M),    Show(KPair4), B,        Show(KAB),   Not(KPair) }}, TwoMonomers}, // 15
    {{{     A,       Not(N),    Not(KBB),   Not(M),    Show(KPair4), B,        Show(KAB),   Not(KPair) }}, TwoMonomers},
    {{{     A,       Not(N),    Not(KBB),   Not(M),    Show(KABB4), B,         Show(KAB),   Show(KPair) }}, TwoMonomers},
    {{{     A,       Not(N),    Not(KBB),   Not(M),    Show(KABB4), B,         Show(KAB),   Show(KPair) }}, TwoMonomers},
    {{{     A,       Not(N),    Show(KBB),  Not(M),    Show(KABB4), B,         Show(KAB),   NoPair }}, TwoMonomers},
    {{{     A,       Not(N),    Show(KBB),  Not(M),    Show(KABB4), B,         Show(KAB),   Show(KPair) }}, TwoMonomers}, // 20
    {{{     A,       Not(N),    KBB21,      Not(M),    KABB21,     B,          Show(K1AB),  K2AB21 }}, TwoMonomers},
    {{{     A,       Not(N),    Show(KBB),  Not(M),    Not(KABB4), B,          Show(K1AB),  Show(K2AB) }}, TwoMonomers},
    {{{     A,       Not(N),    Show(KBB),  Not(M),    Not(KABB4), B,          Show(K1AB),  Not(K2AB) }}, TwoMonomers},
    {{{     A,       Not(N),    Show(KBB),  Not(M),    Not(KABB4), B,          Show(K1AB),  Show(K2AB) }}, TwoMonomers},
}};

// The same with separate constants.
constexpr std::array<ModelSlots, Rows> SeparateTable{{
    NoneInB(Table[0]), NoneInB(Table[1]),
    OwnK1N(Table[2]), OwnK1N(Table[3]), OwnK1NAndK1M(Table[4]), OwnK1NAndK1M(Table[5]), OwnK1NShown(Table[6]),
    NoneInOffset(Table[7]), OwnKAB(Table[8]), OwnKAB(Table[9]),
    NoneInOffset(Table[10]), NoneInOffset(Table[11]), NoneInOffset(Table[12]), NoneInOffset(Table[13]),
    NoneInOffset(Table[14]), NoneInOffset(Table[15]), NoneInOffset(Table[16]), NoneInOffset(Table[17]),
    NoneInOffset(Table[18]), NoneInOffset(Table[19]), NoneInOffset(Table[20]), NoneInOffset(Table[21]),
    NoneInOffset(Table[22]), NoneInOffset(Table[23]), NoneInOffset(Table[24]),
}};

constexpr ModelTraits OneKind(FirstGuess guess, bool nonIdeal = true) {
    return {.NonIdeal = nonIdeal, .Guess = guess};
}
constexpr ModelTraits WithSets(ModelTraits traits, bool offsetGoes) {
    traits.SeparateK = true;
    traits.OffsetGoes = offsetGoes;
    return traits;
}
constexpr ModelTraits WithGeneral(ModelTraits traits, std::int16_t model) {
    traits.General = model;
    return traits;
}
constexpr ModelTraits Hetero(FirstGuess guess, std::array<double, 4> guessK) {
    return {.OffsetGoes = true, .TwoSpecies = true, .Hetero = true, .Guess = guess, .GuessK = guessK};
}
constexpr ModelTraits Sharing(ModelTraits traits, long from, long to) {
    traits.SharedFrom = SlotNo(from);
    traits.SharedTo = SlotNo(to);
    return traits;
}
constexpr ModelTraits Single() {
    ModelTraits traits = OneKind(FirstGuess::WholeSignal);
    traits.GivesBaseline = true;
    return traits;
}
constexpr ModelTraits Independent() {
    return {.OffsetGoes = true, .TwoSpecies = true, .LoadingsNeedMolar = true, .Guess = FirstGuess::HalfEach};
}
constexpr ModelTraits WithNotes(ModelTraits traits, bool loadings, bool cooperativity) {
    traits.LoadingsNeedMolar = loadings;
    traits.CooperativityNote = cooperativity;
    return traits;
}

using enum FirstGuess;
constexpr std::array<ModelTraits, Rows> Traits{{
    {}, // none
    Single(), // 1
    WithGeneral(WithSets(OneKind(Tenth), false), 3),
    WithSets(OneKind(Tenth), false),
    WithGeneral(WithSets(OneKind(Tenth), true), 5),
    WithSets(OneKind(Tenth), true), // 5
    WithSets(OneKind(TenthEach, false), false),
    Independent(),
    // slots of the guess: 6, 7, 4, 2
    WithSets(Hetero(AllInAB, {-1}), true),
    WithNotes(WithSets(Hetero(AllInABB, {-2}), true), true, false),
    Hetero(AllInABB, {-1, -1}), // 10
    WithNotes(Hetero(AllInABB, {-2, -1}), false, true),
    Hetero(AllInABB, {-2, 0, 0, -1}),
    Hetero(AllInABB, {-1, -1, 0, -1}),
    Hetero(AllInABB, {-1, -1, 0, -1}),
    Hetero(AllInABB, {-1}), // 15
    Hetero(AllInABB, {-2, 0, -1}),
    Hetero(AllInABB, {-1, -1, -1}),
    Sharing(Hetero(AllInABB, {-1, -1, -1}), 4, 2),
    Hetero(AllInABB, {-2, 0, -1, 1}),
    Hetero(AllInABB, {-1, -1, -1, 1}), // 20
    Sharing(Hetero(AllInABBA, {-4, -2, 0, -1}), 6, 7),
    Hetero(Kept, {}), Hetero(Kept, {}), Hetero(Kept, {}), // 24
}};
// clang-format on

std::size_t RowOf(int model) {
    return model >= 1 && model <= LastReservedModel ? static_cast<std::size_t>(model) : 0;
}

} // namespace

const ModelSlots& SlotsOfModel(int model, bool separateK) {
    return (separateK ? SeparateTable : Table)[RowOf(model)];
}

const SlotRule& RuleOfSlot(int model, bool separateK, SlotNo slot) {
    const ModelSlots& slots = SlotsOfModel(model, separateK);
    const SlotPart part = PartOfSlot(slot);
    if (part == SlotPart::Global) return slots.Global[static_cast<std::size_t>(slot.Number)];
    return slots.OfSet[static_cast<std::size_t>(part)];
}

const SlotRule& RuleOfSlot(SlotNo slot) {
    return RuleOfSlot(Work.Model, Work.SeparateK != 0, slot);
}

const ModelTraits& TraitsOfModel(int model) {
    return Traits[RowOf(model)];
}

const ModelTraits& TraitsOfModel() {
    return TraitsOfModel(Work.Model);
}

int ModelForGuess(int model) {
    return TraitsOfModel(model).Guess == FirstGuess::Kept && model > 1 ? model - 1 : model;
}

} // namespace Quillon
