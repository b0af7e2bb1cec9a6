#pragma once
// An open file that closes itself.

#include <fcntl.h>
#include <unistd.h>

namespace Quillon {

struct Descriptor {
    explicit Descriptor(int number) : Number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }
    explicit operator bool() const { return Number >= 0; }
    // 0, or -1 when bytes that were taken before have been lost after all.
    int Close() {
        const int result = Number >= 0 ? ::close(Number) : 0;
        Number = -1;
        return result;
    }
    int Number;
};

} // namespace Quillon
