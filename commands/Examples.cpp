#include "commands/Examples.h"

#include "platform/Paths.h"
#include "platform/Platform.h"

#include <array>

namespace Quillon {

namespace {

// Where they lie as seen from the program: installed, and in build/NAME/bin of the tree.
constexpr std::array<const char*, 2> Places = {"../share/quillon/examples", "../../../examples"};

struct Known {
    const char *Folder, *Caption;
};
constexpr std::array<Known, 4> KnownExamples = {
    Known{"monomer-dimer", "Monomer and dimer: three loadings, three speeds"},
    Known{"single-species", "One species: three speeds"},
    Known{"ab-complex", "A, B and their complex: two wavelengths, two speeds"},
    Known{"interference", "One species in fringes: three speeds"}};

} // namespace

std::vector<Example> FoundExamples() {
    std::vector<Example> found;
    for (const char* place : Places) {
        const std::string folder = JoinPath(Host.ProgramDirectory(), place);
        for (const Known& known : KnownExamples) {
            const std::string job =
                JoinPath(JoinPath(folder, known.Folder), std::string(known.Folder) + ".job");
            if (Host.FileExists(job)) found.push_back({known.Caption, job});
        }
        if (!found.empty()) return found;
    }
    return found;
}

} // namespace Quillon
