#include "batch/QuillonFit.h"

#include <csignal>

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // a reader that leaves is a failure to write, not the end
    return Quillon::RunQuillonFit({argv + 1, argv + argc});
}
