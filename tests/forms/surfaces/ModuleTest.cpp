// The module as a program finds it that does not link the toolkit.
#include "platform/PictureFile.h"
#include "platform/RuntimeError.h"

#include <dlfcn.h>

#include <clocale>

#include <gtest/gtest.h>

namespace Quillon {

namespace {

struct Module {
    Module() {
        Handle = dlopen(QUILLON_SURFACES, RTLD_NOW | RTLD_LOCAL);
        if (Handle == nullptr) return;
        GetVersion =
            reinterpret_cast<PictureModule::VersionFunction*>(dlsym(Handle, PictureModule::VersionEntry));
        Open = reinterpret_cast<PictureModule::OpenFunction*>(dlsym(Handle, PictureModule::OpenEntry));
    }
    void* Handle = nullptr;
    PictureModule::VersionFunction* GetVersion = nullptr;
    PictureModule::OpenFunction* Open = nullptr;
};

std::string PictureBytes(const Module& module, const char* kind) {
    std::string failure;
    PictureFile picture;
    if (!module.Open(kind, {"", 60, 40, 96.0, 96.0}, picture, failure)) return "";
    EXPECT_EQ(failure, "");
    picture.Surface.Line(1, 1, 50, 30);
    return picture.Finish();
}

} // namespace

TEST(SurfaceModule, HasItsEntriesAndVersion) {
    const Module module;
    ASSERT_NE(module.Handle, nullptr) << dlerror();
    ASSERT_NE(module.GetVersion, nullptr);
    ASSERT_NE(module.Open, nullptr);
    EXPECT_STREQ(module.GetVersion(), PictureModule::Version);
}

TEST(SurfaceModule, MakesPicturesOfTheKindsItKnows) {
    const Module module;
    ASSERT_NE(module.Open, nullptr);
    EXPECT_TRUE(PictureBytes(module, "png").starts_with("\x89PNG\r\n\x1A\n"));
    EXPECT_TRUE(PictureBytes(module, "pdf").starts_with("%PDF-1."));
    EXPECT_EQ(PictureBytes(module, "gif"), "");
    EXPECT_EQ(PictureBytes(module, ""), "");
}

TEST(SurfaceModule, LeavesTheLocaleAlone) {
    const Module module;
    ASSERT_NE(module.Open, nullptr);
    for (const char* locale : {"C", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, locale) == nullptr) continue;
        PictureBytes(module, "png");
        EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), locale);
    }
    std::setlocale(LC_ALL, "C");
}

TEST(SurfaceModule, APictureTooLargeIsTold) {
    const Module module;
    ASSERT_NE(module.Open, nullptr);
    std::string failure;
    PictureFile picture;
    EXPECT_TRUE(module.Open("png", {"", 2000000000, 2000000000, 96.0, 96.0}, picture, failure));
    EXPECT_EQ(failure, "Out of memory"); // no memory holds this; and nothing is thrown out of the module
}

} // namespace Quillon
