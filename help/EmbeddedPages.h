#pragma once
// The pages of the manual as they are built into the program, by help/EmbedPages.cmake.

#include <string>
#include <vector>

namespace Quillon {

struct ManualPage {
    std::string Path;
    std::string Text;
};

// All pages, by path.
const std::vector<ManualPage>& ManualPages();

} // namespace Quillon
