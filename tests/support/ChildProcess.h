#pragma once
// Work in a process of its own, which may be killed.

#include <functional>
#include <sys/types.h>

namespace Quillon {

// Forks, runs the work in the child and ends it without any further word. The child's process number.
pid_t StartChild(const std::function<void()>& work);

// Waits for a child: 0 when it came to its end, otherwise the number of the signal that ended it.
int EndOfChild(pid_t child);

// Both.
int InChild(const std::function<void()>& work);

// In a child: the system ends it at the byte of a file behind the first so many.
void DieAtByte(unsigned long bytes);
// In a child: that byte cannot be written instead.
void FailAtByte(unsigned long bytes);

// In a child: not as root, who may do everything.
void BecomeNobody();

} // namespace Quillon
