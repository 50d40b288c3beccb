#ifndef ORVIA_LINK_LISTENING_H
#define ORVIA_LINK_LISTENING_H

#include <cstdint>

#include "records/link.h"

// What the link tells whoever listens; nothing if nobody does.

namespace comm {

/// Right before try `number` of `of` of a request to the logger that the radio is tuned to.
inline void TellTry(const Link& link, int number, int of) {
    if (link.Listener != nullptr) {
        link.Listener->OnTry({number, of, link.CurrentChannel, link.CurrentMAC});
    }
}

/// What came of the request that went out last.
inline void Tell(const Link& link, LinkFinding finding, std::int16_t ticks = 0) {
    if (link.Listener != nullptr) {
        link.Listener->OnFinding(finding, ticks);
    }
}

/// That a byte awaited for `ticks` did not come, unless the program's end cut the wait short.
inline void TellMissing(const Link& link, LinkFinding finding, std::int16_t ticks) {
    Tell(link, link.ShuttingDown != False ? LinkFinding::BrokenOff : finding, ticks);
}

}  // namespace comm

#endif  // ORVIA_LINK_LISTENING_H
