#ifndef ORVIA_LINK_BUSY_GUARD_H
#define ORVIA_LINK_BUSY_GUARD_H

#include "common/flag.h"

/// Sets a busy flag and clears it on every way out, faults included.
class BusyGuard {
 public:
    explicit BusyGuard(Flag& busy) : busy_(busy) { busy_ = True; }
    ~BusyGuard() { busy_ = False; }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

 private:
    Flag& busy_;
};

#endif  // ORVIA_LINK_BUSY_GUARD_H
