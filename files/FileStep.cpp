#include "files/FileStep.h"

#include <cstring>

namespace Quillon {

namespace {

// What means the same for reading and writing; "" for the rest.
std::string CommonText(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return ErrorText::PermissionDenied;
    case EISDIR:
        return "it is a directory";
    case ELOOP:
        return "its links lead in a circle";
    case ENOMEM:
        return ErrorText::OutOfMemory;
    default:
        return "";
    }
}

std::string WordsOfTheSystem(int error) {
    return std::string(ErrorText::FileAccess) + ": " + std::strerror(error);
}

} // namespace

std::function<int(FileStep)> BeforeFileStep;

bool SaysAbsent(int error) {
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

std::string ReadErrorText(int error) {
    if (SaysAbsent(error)) return ErrorText::FileNotFound;
    const std::string text = CommonText(error);
    return text.empty() ? WordsOfTheSystem(error) : text;
}

std::string WriteErrorText(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorText::DiskFull;
    case EROFS:
        return ErrorText::PermissionDenied;
    case ENOENT:
    case ENOTDIR:
        return ErrorText::PathNotFound;
    default:
        const std::string text = CommonText(error);
        return text.empty() ? WordsOfTheSystem(error) : text;
    }
}

void RaiseReadError(int error) {
    RaiseError(ReadErrorText(error));
}

void RaiseWriteError(int error) {
    RaiseError(WriteErrorText(error));
}

} // namespace Quillon
