#ifndef ORVIA_TESTS_WHOLE_PROGRAM_MEASURE_LOAD_H
#define ORVIA_TESTS_WHOLE_PROGRAM_MEASURE_LOAD_H

#include <chrono>

namespace whole_program {

/// What this process takes of the processor from here on, and how often it wakes.
class Load {
 public:
    Load();

    /// Prints both of the time since.
    void Print(const char* what) const;

 private:
    struct Taken {
        double ProcessorSeconds = 0;
        long Sleeps = 0;  ///< times that it has given the processor away: it wakes from each
    };
    static Taken Now();

    Taken before_;
    std::chrono::steady_clock::time_point start_;
};

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_MEASURE_LOAD_H
