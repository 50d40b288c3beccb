#ifndef ORVIA_COMMON_FLAG_H
#define ORVIA_COMMON_FLAG_H

#include <cstdint>

// X11's headers define both names as macros; what they would make of the constants below compiles
// in places and means something else.
#if defined(True) || defined(False)
#error "include common/flag.h before the headers of X11, and undefine their True and False"
#endif

/// A truth value of a shared record: 16 bits, True all ones, so that flags combine with the bit
/// operators as well as with the logical ones.
using Flag = std::int16_t;

inline constexpr Flag True = -1;
inline constexpr Flag False = 0;

/// The flag for a condition.
constexpr Flag ToFlag(bool condition) {
    return condition ? True : False;
}

#endif  // ORVIA_COMMON_FLAG_H
