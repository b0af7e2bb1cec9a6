#include "planning/solution/Sequence.h"

#include "planning/solution/Water.h"
#include "platform/Letters.h"
#include "platform/RuntimeError.h"

namespace Quillon {

namespace {

struct Residue {
    char Letter;
    ResidueConstants Constants;
};

// Masses are those of the elements' averages: C 12.0107, H 1.00794, N 14.0067, O 15.9994, S 32.065.
constexpr Residue Residues[] = {
    {'A', {71.0779, 0.74}},  {'R', {156.1857, 0.70}}, {'N', {114.1026, 0.62}}, {'D', {115.0874, 0.60}},
    {'C', {103.1429, 0.63}}, {'Q', {128.1292, 0.67}}, {'E', {129.1140, 0.66}}, {'G', {57.0513, 0.64}},
    {'H', {137.1393, 0.67}}, {'I', {113.1576, 0.90}}, {'L', {113.1576, 0.90}}, {'K', {128.1723, 0.82}},
    {'M', {131.1961, 0.75}}, {'F', {147.1739, 0.77}}, {'P', {97.1152, 0.76}},  {'S', {87.0773, 0.63}},
    {'T', {101.1039, 0.70}}, {'W', {186.2099, 0.74}}, {'Y', {163.1733, 0.71}}, {'V', {99.1311, 0.86}}};

constexpr double WaterMass = 18.01528;
constexpr double HydrogenMass = 1.00794;
constexpr double ReferenceCelsius = 25.0;   // of the volumes
constexpr double VBarPerDegree = 4.25e-4;   // mL/g
constexpr double TryptophanSignal = 5500.0; // L/(mol cm) at 280 nm
constexpr double TyrosineSignal = 1490.0;
constexpr double CystineSignal = 125.0;

const Residue* FindResidue(char letter) {
    for (const Residue& residue : Residues)
        if (residue.Letter == letter) return &residue;
    return nullptr;
}

constexpr const char* LineBlanks = " \t\r";

bool DoesNotCount(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || (c >= '0' && c <= '9');
}

std::string NameOf(const Sequence& chain) {
    return chain.Name.empty() ? "the sequence" : "\"" + chain.Name + "\"";
}

[[noreturn]] void FailLetter(const Sequence& chain, char letter) {
    const bool plain = letter > ' ' && letter < 0x7F;
    const std::string what =
        plain ? std::string("\"") + letter + "\"" : std::string("a character that is no letter");
    RaiseError("Letter " + std::to_string(chain.Letters.size() + 1) + " of " + NameOf(chain) + " is " + what +
               ", which stands for none of the twenty amino acids");
}

// The letters of one line behind those that the chain has; ended is set by the "*" of its end.
void AddLine(Sequence& chain, std::string_view line, bool& ended) {
    for (const char c : line) {
        if (DoesNotCount(c)) continue;
        const char letter = CapitalLetter(c);
        if (ended || (letter != '*' && !FindResidue(letter))) FailLetter(chain, c);
        if (letter == '*')
            ended = true;
        else
            chain.Letters += letter;
    }
}

void AddChain(ProteinValues& sum, double& volume, const Sequence& chain) {
    double mass = 0.0;
    for (const char letter : chain.Letters) {
        const ResidueConstants residue = ConstantsOfResidue(letter);
        mass += residue.MassDa;
        volume += residue.MassDa * residue.VBar;
        sum.Tryptophans += letter == 'W';
        sum.Tyrosines += letter == 'Y';
        sum.Cysteines += letter == 'C';
    }
    sum.Residues += static_cast<long>(chain.Letters.size());
    sum.MassDa += mass + WaterMass;
}

} // namespace

ResidueConstants ConstantsOfResidue(char letter) {
    const Residue* residue = FindResidue(letter);
    if (!residue) RaiseError(std::string("\"") + letter + "\" stands for none of the twenty amino acids");
    return residue->Constants;
}

std::vector<Sequence> ReadSequences(std::string_view text) {
    std::vector<Sequence> chains;
    bool ended = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = Trimmed(text.substr(0, end), LineBlanks);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('>')) {
            chains.push_back({std::string(Trimmed(line.substr(1), LineBlanks)), ""});
            ended = false;
        } else if (!line.empty() && !line.starts_with(';')) { // a remark of FASTA
            if (chains.empty()) chains.emplace_back();
            AddLine(chains.back(), line, ended);
        }
    }
    if (chains.empty()) RaiseError("There is no sequence");
    for (const Sequence& chain : chains)
        if (chain.Letters.empty()) RaiseError(NameOf(chain) + " has no letters");
    return chains;
}

ProteinValues ValuesOfChains(const std::vector<Sequence>& chains, std::optional<long> disulfides,
                             double celsius) {
    CheckLiquid(celsius);
    ProteinValues values;
    double volume = 0.0;
    for (const Sequence& chain : chains)
        AddChain(values, volume, chain);
    // [decision: cysteines-paired]
    values.Disulfides = disulfides.value_or(values.Cysteines / 2);
    if (values.Disulfides < 0 || 2 * values.Disulfides > values.Cysteines)
        RaiseError("There are " + std::to_string(values.Cysteines) + " cysteines: no more than " +
                   std::to_string(values.Cysteines / 2) + " disulfide bonds");
    const double residues = values.MassDa - WaterMass * static_cast<double>(chains.size());
    values.MassDa -= 2.0 * HydrogenMass * static_cast<double>(values.Disulfides);
    values.VBar25 = volume / residues;
    values.VBar = values.VBar25 + VBarPerDegree * (celsius - ReferenceCelsius);
    values.Extinction280 = TryptophanSignal * static_cast<double>(values.Tryptophans) +
                           TyrosineSignal * static_cast<double>(values.Tyrosines) +
                           CystineSignal * static_cast<double>(values.Disulfides);
    values.Absorptivity280 = values.Extinction280 / values.MassDa;
    return values;
}

ProteinValues ValuesOfChain(const Sequence& chain, std::optional<long> disulfides, double celsius) {
    return ValuesOfChains({chain}, disulfides, celsius);
}

} // namespace Quillon
