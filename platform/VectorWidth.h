#pragma once
// How many numbers at a time the loops over columns of points work on. What every processor of the
// architecture has is enough for two doubles; most have registers for four. The same source is compiled for
// both and the road is chosen once, at the start of the program. No operation is fused or put in another
// order on either, so that both give the same bits, which tests hold against each other.

#if defined(__x86_64__) && defined(__GNUC__)
// For a function whose callees are all to become part of it and to use the wide registers with it.
#define QUILLON_WIDE_VECTORS [[gnu::target("avx2"), gnu::flatten]]
#else
#define QUILLON_WIDE_VECTORS
#endif

namespace Quillon {

enum class VectorWidth {
    Narrow, // what every processor has
    Wide    // 256 bits
};

// The widest that this processor has, asked of it at run time: one program serves all of them.
inline VectorWidth WidestVectors() {
#if defined(__x86_64__) && defined(__GNUC__)
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") ? VectorWidth::Wide : VectorWidth::Narrow;
#else
    return VectorWidth::Narrow;
#endif
}

// The road in use. Tests take the narrow one to compare; Wide only where the processor has it.
inline VectorWidth VectorsInUse = WidestVectors();

// The loop compiled once more, for the wide registers; a processor without them must not come here.
template <class Loop> QUILLON_WIDE_VECTORS void RunOnWideVectors(Loop&& loop) {
    loop();
}

// Runs a loop on the vectors in use. What it calls is compiled with it where it can be inlined; anything else
// is called as it stands.
template <class Loop> void OnVectors(Loop&& loop) {
    if (VectorsInUse == VectorWidth::Wide)
        RunOnWideVectors(loop);
    else
        loop();
}

} // namespace Quillon
