// What a program finds in this module when it loads it at run time.
#include "forms/surfaces/PdfPicture.h"
#include "forms/surfaces/PngPicture.h"
#include "platform/RuntimeError.h"

#include <QtGlobal>

#include <new>
#include <string_view>

using Quillon::DeviceRect;
using Quillon::PictureFile;
using Quillon::PictureRequest;

namespace {

// Runs work; what fails is written down, and the result is an empty one.
template <class Work> auto Noted(std::string& failure, const Work& work) -> decltype(work()) {
    try {
        return work();
    } catch (const Quillon::RuntimeError& error) {
        failure = error.Text;
    } catch (const std::bad_alloc&) {
        failure = Quillon::ErrorText::OutOfMemory;
    }
    return decltype(work())();
}

PictureFile Open(std::string_view kind, const PictureRequest& request, std::string& failure) {
    PictureFile file = kind == "png" ? Quillon::OpenPng(request) : Quillon::OpenPdf(request);
    file.SetWindow = [&failure, set = file.SetWindow](const DeviceRect& window) {
        Noted(failure, [&] { set(window); });
    };
    if (file.NewPage) file.NewPage = [&failure, turn = file.NewPage] { Noted(failure, turn); };
    file.Finish = [&failure, finish = file.Finish] { return Noted(failure, finish); };
    return file;
}

} // namespace

extern "C" Q_DECL_EXPORT const char* QuillonPictureVersion() {
    return Quillon::PictureModule::Version;
}

extern "C" Q_DECL_EXPORT bool QuillonOpenPicture(const char* kind, const PictureRequest& request,
                                                 PictureFile& file, std::string& failure) {
    const std::string_view wanted = kind;
    if (wanted != "png" && wanted != "pdf") return false;
    file = Noted(failure, [&] { return Open(wanted, request, failure); });
    return true;
}

static_assert(std::is_same_v<decltype(QuillonPictureVersion), Quillon::PictureModule::VersionFunction>);
static_assert(std::is_same_v<decltype(QuillonOpenPicture), Quillon::PictureModule::OpenFunction>);
