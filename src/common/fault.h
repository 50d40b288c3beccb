#ifndef ORVIA_COMMON_FAULT_H
#define ORVIA_COMMON_FAULT_H

#include <stdexcept>

/// A run-time fault: something nobody on the spot can mend, such as a value that does not fit its
/// field, or a reply with nothing in it to look at. The procedures that trap faults catch it at
/// their own edge, release what they hold and return their default result.
class Fault : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// Runs a stage whose fault ends that stage alone: what comes behind it runs all the same.
template <typename Stage>
void TrapFault(const Stage& stage) {
    try {
        stage();
    } catch (const Fault&) {
        return;
    }
}

#endif  // ORVIA_COMMON_FAULT_H
