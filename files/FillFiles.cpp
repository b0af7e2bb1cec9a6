#include "files/FillFiles.h"

#include "files/FileLock.h"
#include "files/FileTarget.h"
#include "files/ReadWhole.h"
#include "files/Sha256.h"
#include "files/WalkFiles.h"
#include "files/WriteWhole.h"

#include <unistd.h>

namespace Quillon {

void FillFiles(Platform& filling) {
    filling.ReadFile = ReadWhole;
    filling.WriteFile = WriteWhole;
    filling.FileExists = IsFile;
    filling.DirectoryExists = IsDirectory;
    filling.IsThisProgram = IsThisProgram;
    filling.WalkFiles = WalkFiles;
    filling.MakeFolder = MakeFolder;
    filling.RemoveFile = [](const std::string& path) { ::unlink(path.c_str()); };
    filling.HoldFile = HoldFile;
    filling.HoldFileNow = HoldFileNow;
    filling.Sha256 = Sha256;
}

} // namespace Quillon
