#include "commands/Examples.h"

#include "platform/Paths.h"
#include "platform/Platform.h"

#include <array>
#include <string_view>

namespace Quillon {

namespace {

// Where they lie as seen from the program, in steps up and then down: installed, and in build/NAME/bin of the
// tree.
constexpr std::array<const char*, 2> Places = {"../share/quillon/examples", "../../../examples"};

// A place as seen from a folder, without the steps up: titles of graphs and reports name it.
std::string PlaceFrom(std::string folder, std::string_view place) {
    constexpr std::string_view up = "../";
    for (; place.starts_with(up); place.remove_prefix(up.size()))
        folder = DirectoryOf(folder);
    return JoinPath(folder, place);
}

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
        const std::string folder = PlaceFrom(Host.ProgramDirectory(), place);
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
