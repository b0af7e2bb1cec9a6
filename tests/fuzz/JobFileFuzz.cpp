// Any bytes as a job file: a job, or one line that says why not.
#include "batch/job/JobFile.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const Quillon::Job job = Quillon::ParseJob(text, "fuzz.job");
        if (job.Sets.empty() || job.Model < 1 || job.Model > 22) std::abort();
    } catch (const Quillon::RuntimeError& error) {
        if (!error.Text.starts_with("fuzz.job:") || error.Text.find('\n') != std::string::npos) std::abort();
    }
    return 0;
}
