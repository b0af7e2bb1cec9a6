#include "models/table/ConstantConvention.h"

#include "models/table/ModelTable.h"

#include <array>

namespace Quillon {

namespace {

constexpr const char* DimerA = "macroscopic, 2 A = A2";
constexpr const char* TetramerA = "macroscopic, 4 A = A4";
constexpr const char* OligomerN = "macroscopic, N A = A(N)";
constexpr const char* OligomerM = "macroscopic, M A = A(M)";
constexpr const char* Complex = "macroscopic, A + B = AB";
constexpr const char* LikeSites = "intrinsic, of each of two like sites: [AB] = 2 K [A][B]";
constexpr const char* FirstSite = "intrinsic, of the first of two unlike sites";
constexpr const char* SecondSite = "intrinsic, of the second of two unlike sites";
constexpr const char* DimerB = "macroscopic, 2 B = B2";
constexpr const char* Pair = "macroscopic, 2 AB = ABBA";
constexpr const char* SecondB = "intrinsic, AB + B = ABB: [ABB] = 2 K [AB][B]";
constexpr const char* SecondBAndPair =
    "intrinsic, AB + B = ABB: [ABB] = 2 K [AB][B]; the same number for 2 AB = ABBA";
constexpr const char* SecondBAndDimer =
    "intrinsic, AB + B = ABB: [ABB] = 2 K [AB][B]; the same number for 2 B = B2";
constexpr const char* Factor = "cooperativity, a factor without a unit";

// The global slots that hold constants.
struct Conventions {
    const char *Slot2 = "", *Slot4 = "", *Slot6 = "", *Slot7 = "";
};

constexpr std::array<Conventions, LastReservedModel + 1> ConventionTable{{
    {}, // none
    {}, // 1
    {DimerA},
    {OligomerN},
    {DimerA, TetramerA},
    {OligomerN, OligomerM}, // 5
    {OligomerN},
    {},
    {"", "", Complex},
    {"", "", LikeSites},
    {"", "", FirstSite, SecondSite}, // 10
    {"", "", LikeSites, Factor},
    {DimerB, "", LikeSites},
    {DimerB, "", FirstSite, SecondSite},
    {Factor, "", FirstSite, SecondSite},
    {"", Pair, Complex}, // 15
    {"", SecondBAndPair, Complex},
    {"", SecondB, Complex, Pair},
    {"", SecondBAndDimer, Complex, Pair},
    {DimerB, SecondBAndPair, Complex},
    {DimerB, SecondB, Complex, Pair}, // 20
    {DimerB, "", LikeSites},
    {DimerB, "", FirstSite, SecondSite},
    {DimerB, "", Complex},
    {DimerB, "", Complex, Pair},
}};

} // namespace

const char* ConstantConvention(int model, SlotNo slot) {
    if (model < 0 || model > LastReservedModel) return "";
    const Conventions& row = ConventionTable[static_cast<std::size_t>(model)];
    switch (slot.Number) {
    case 2:
        return row.Slot2;
    case 4:
        return row.Slot4;
    case 6:
        return row.Slot6;
    case 7:
        return row.Slot7;
    default:
        return "";
    }
}

} // namespace Quillon
