#pragma once
// The names under which new files wait beside those that they are to replace, and what is left of them when
// a program dies in between.

#include <string>

namespace Quillon {

// A name of this process's own in a folder (with its "/"), of a length that every folder takes; the "." keeps
// it out of most listings. Another one at each call.
std::string NameBeside(const std::string& folder);

// Marks an open file under such a name as in use until it is closed, for other machines and other systems on
// this one, which know our processes by no number. Where the file system cannot, nothing is lost but the
// mark.
void MarkInUse(int descriptor);

// Removes the files under such names that dead processes have left in a folder. What bears the number of a
// living process stays, of this one what has been given out; so does what is marked as in use, and whatever
// cannot be removed. A folder is looked
// through once in a run, since it may hold many thousand files.
void RemoveLeftovers(const std::string& folder);

} // namespace Quillon
