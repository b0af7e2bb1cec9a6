#pragma once
// Access keys of captions: the letter behind a single "&"; "&&" is the sign itself.

#include <string>
#include <vector>

namespace Quillon {

// The access key of a caption as a small letter, 0 without one.
char AccessKeyOf(const std::string& caption);

// The captions of one menu with a key for each: where two claim the same one the first keeps it, and the mark
// of the later one moves to the first letter of one of its words, or else to any of its letters, that no
// caption of the menu claims. One that has no letter left stays as it is; nothing but the marks is moved.
std::vector<std::string> WithOwnAccessKeys(std::vector<std::string> captions);

} // namespace Quillon
