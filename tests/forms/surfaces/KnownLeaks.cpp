// What the leak checker asks at the end of a run under the sanitizers; without them nobody calls it. The font
// library keeps what it has read until the process ends, and not all of it where the checker looks.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
