#include "batch/graphs/PictureLoader.h"

#include "platform/Paths.h"
#include "platform/Platform.h"

#include <dlfcn.h>
#include <memory>
#include <string_view>

namespace Quillon {

namespace {

constexpr const char* ModuleName = "libquillon-surfaces.so";

// Never let go: the toolkit does not survive being unloaded.
void* LoadModule(const std::string& kind) {
    std::string reason;
    for (const std::string& place : PictureModulePlaces(Host.ProgramDirectory())) {
        if (!Host.FileExists(place)) continue;
        if (void* module = ::dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL)) return module;
        const char* error = ::dlerror();
        if (reason.empty() && error) reason = error;
    }
    if (reason.empty()) reason = std::string(ModuleName) + " is not beside the program";
    RaiseError("a " + kind + " needs the desktop part of the program: " + reason);
}

PictureModule::OpenFunction* OpenFunctionOf(void* module) {
    const auto version =
        reinterpret_cast<PictureModule::VersionFunction*>(::dlsym(module, PictureModule::VersionEntry));
    const auto open =
        reinterpret_cast<PictureModule::OpenFunction*>(::dlsym(module, PictureModule::OpenEntry));
    if (!version || !open || std::string_view(version()) != PictureModule::Version)
        RaiseError(std::string(ModuleName) + " is that of another version of the program");
    return open;
}

} // namespace

std::vector<std::string> PictureModulePlaces(const std::string& programDirectory) {
    std::vector<std::string> places;
    if (programDirectory.empty()) return places; // a bare name would be sought in the folder of the user
    for (const char* from : {"", "../lib/quillon", "../lib"})
        places.push_back(JoinPath(JoinPath(programDirectory, from), ModuleName));
    return places;
}

PictureFile LoadedPicture(const std::string& kind, const PictureRequest& request) {
    static PictureModule::OpenFunction* open = nullptr;
    if (!open) open = OpenFunctionOf(LoadModule(kind));
    const auto failure = std::make_shared<std::string>();
    PictureFile picture;
    if (!open(kind.c_str(), request, picture, *failure)) RaiseError("no picture of the kind " + kind);
    if (!failure->empty()) RaiseError(*failure);
    if (picture.NewPage)
        picture.NewPage = [failure, turn = picture.NewPage] {
            turn();
            if (!failure->empty()) RaiseError(*failure);
        };
    picture.Finish = [failure, finish = picture.Finish] {
        std::string bytes = finish();
        if (!failure->empty()) RaiseError(*failure);
        return bytes;
    };
    return picture;
}

} // namespace Quillon
