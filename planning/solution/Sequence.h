#pragma once
// The sequence of a protein, and what follows from its composition.
//
// With n_i residues of kind i, of the residue mass M_i (amino acid less water) and the residue volume v_i:
//
//     chain mass   M = sum n_i M_i + M(H2O) - 2 M(H) for each disulfide bond
//     v-bar        sum n_i M_i v_i / sum n_i M_i
//     extinction   5500 W + 1490 Y + 125 S-S, at 280 nm
//
// Residue volumes: E. J. Cohn and J. T. Edsall, Proteins, Amino Acids and Peptides (Reinhold, 1943), p. 372,
// at 25 degrees, as tabulated by T. M. Laue, B. D. Shah, T. M. Ridgeway and S. L. Pelletier, in Analytical
// Ultracentrifugation in Biochemistry and Polymer Science (Royal Society of Chemistry, 1992), p. 90. The
// change with temperature, 4.25e-4 mL/g per degree: H. Durchschlag, in Thermodynamic Data for Biochemistry
// and Biotechnology (Springer, 1986), p. 45. Extinction: C. N. Pace, F. Vajdos, L. Fee, G. Grimsley and T.
// Gray, Protein Science 4 (1995) 2411. Masses: average ones of the elements in nature (IUPAC 2005).

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

// A chain in one-letter code, capitals only.
struct Sequence {
    std::string Name; // behind ">" of FASTA; "" without one
    std::string Letters;
};

// Reads FASTA, or plain letters as one chain. Blanks, line ends and digits between letters do not count,
// small letters are capitals, and a "*" may end a chain. A letter that is none of the twenty amino acids (B,
// J, O, U, X and Z are none with a volume of its own) is a RuntimeError that names the letter, its place from
// 1 and its chain; so is a text without any letter.
std::vector<Sequence> ReadSequences(std::string_view text);

// What follows from a chain.
struct ProteinValues {
    long Residues = 0;
    long Tryptophans = 0, Tyrosines = 0, Cysteines = 0;
    long Disulfides = 0;
    double MassDa = 0.0;          // g/mol
    double VBar25 = 0.0;          // mL/g at 25 degrees Celsius
    double VBar = 0.0;            // mL/g at the temperature
    double Extinction280 = 0.0;   // L/(mol cm)
    double Absorptivity280 = 0.0; // mL/(mg cm)
};

// Of a chain at a temperature, degrees Celsius. disulfides counts the bonds; without a value all cysteines
// are paired. A RuntimeError in words: a temperature at which water is not liquid
// (planning/solution/Water.h), fewer cysteines than the bonds need.
ProteinValues ValuesOfChain(const Sequence& chain, std::optional<long> disulfides, double celsius);

// Of all chains of a protein together: masses and extinctions add up, v-bar is the mean by mass. disulfides
// as above, over all chains; at least one chain.
ProteinValues ValuesOfChains(const std::vector<Sequence>& chains, std::optional<long> disulfides,
                             double celsius);

// The two constants of a residue, by its letter; a letter that is none is a RuntimeError.
struct ResidueConstants {
    double MassDa; // of the residue
    double VBar;   // mL/g at 25 degrees
};
ResidueConstants ConstantsOfResidue(char letter);

// What they may miss of a protein without sugars, lipids and cofactors: mL/g, and a part of the whole.
inline constexpr double VBarKnownTo = 0.01;
inline constexpr double ExtinctionKnownTo = 0.05;

// Where the numbers come from, as tables name it.
inline constexpr const char* MassSource = "average atomic masses (IUPAC 2005)";
inline constexpr const char* VBarSource = "Cohn and Edsall 1943; 4.25e-4 per degree (Durchschlag 1986)";
inline constexpr const char* ExtinctionSource = "5500 W + 1490 Y + 125 S-S (Pace et al. 1995)";

} // namespace Quillon
