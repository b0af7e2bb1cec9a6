#pragma once
// What is dropped on a window.

#include <string>
#include <vector>

class QMimeData;

namespace Quillon {

// The files and folders of this machine among what is dragged, by their whole paths.
std::vector<std::string> LocalPaths(const QMimeData* data);

} // namespace Quillon
