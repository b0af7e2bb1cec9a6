// What a program finds in this module when it loads it at run time.
#include "forms/surfaces/Pictures.h"

#include <QtGlobal>

#include <string_view>

using Quillon::PictureFile;
using Quillon::PictureRequest;

extern "C" Q_DECL_EXPORT const char* QuillonPictureVersion() {
    return Quillon::PictureModule::Version;
}

extern "C" Q_DECL_EXPORT bool QuillonOpenPicture(const char* kind, const PictureRequest& request,
                                                 PictureFile& file) {
    const std::string_view wanted = kind;
    if (wanted == "png")
        file = Quillon::OpenPng(request);
    else if (wanted == "pdf")
        file = Quillon::OpenPdf(request);
    else
        return false;
    return true;
}

static_assert(std::is_same_v<decltype(QuillonPictureVersion), Quillon::PictureModule::VersionFunction>);
static_assert(std::is_same_v<decltype(QuillonOpenPicture), Quillon::PictureModule::OpenFunction>);
