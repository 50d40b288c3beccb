#ifndef ORVIA_SIMULATOR_ANSWER_H
#define ORVIA_SIMULATOR_ANSWER_H

#include <optional>

#include "simulator/bytes.h"
#include "simulator/frame.h"

namespace simulator {

/// What comes back for one request. A logger acknowledges, then may send a status byte, a frame or
/// both; the server radio's answer is all `Status`.
struct Answer {
    Bytes Ack;
    Bytes Status;
    std::optional<Bytes> Payload;  ///< goes out as a frame

    /// What follows the acknowledge, as it goes on the wire.
    [[nodiscard]] Bytes Body() const {
        Bytes body = Status;
        if (Payload) {
            const Bytes frame = EncodeFrame(*Payload);
            body.insert(body.end(), frame.begin(), frame.end());
        }
        return body;
    }
};

/// Bytes that leave `Delay` after the answer was due.
struct Sending {
    Microseconds Delay = 0;
    Bytes Data;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_ANSWER_H
