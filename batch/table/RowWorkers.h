#pragma once
// Rows of a table on the cores of the machine, each core a process of its own: a fit uses what belongs to a
// process (its analysis, its console, the forms that it fills), and a row that brings its process down takes
// no other row with it.

#include <functional>
#include <string>
#include <vector>

namespace Quillon {

// Runs piece(0) .. piece(count - 1) on so many processes at a time, in this one when that is one, and hands
// back what they gave, by number; "" where a process has ended before it gave it. watch(n) is called when n
// pieces have ended. Pieces hand back text without a NUL. Where the system gives no process, this one does
// the work.
std::vector<std::string> RunInProcesses(int processes, long count,
                                        const std::function<std::string(long number)>& piece,
                                        const std::function<void(long done)>& watch,
                                        const std::function<bool()>& cancelled = {});

} // namespace Quillon
