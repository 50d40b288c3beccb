#include "whole_program/measure_load.h"

#include <sys/resource.h>

#include <cstdio>

namespace whole_program {

Load::Taken Load::Now() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_nvcsw};
}

Load::Load() : before_(Now()), start_(std::chrono::steady_clock::now()) {}

void Load::Print(const char* what) const {
    const Taken now = Now();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    const double share = 100 * (now.ProcessorSeconds - before_.ProcessorSeconds) / passed.count();
    const double wakes = static_cast<double>(now.Sleeps - before_.Sleeps) / passed.count();
    std::printf("%-58s %8.2f %% of a core, %.1f wake-ups a second\n", what, share, wakes);
}

}  // namespace whole_program
