#pragma once
// Labels of sets without what they all have in common.

#include "platform/Arrays.h"

#include <string>

namespace Quillon {

// Takes the common directory off labels first..last; prefix receives it, with its separator. Letters are
// compared in capitals. Nothing happens when there is only one label or no common directory; prefix then
// stays.
void ShortenLabels(OneBased<std::string>& labels, std::string& prefix, long first, long last);

} // namespace Quillon
