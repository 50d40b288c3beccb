#ifndef ORVIA_TESTS_SIMULATOR_WIRE_H
#define ORVIA_TESTS_SIMULATOR_WIRE_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

#include "simulator/network.h"

namespace simulator {

/// The acknowledge and behind it a frame, as a logger answers most requests.
inline Bytes AckAndFrame(const Bytes& payload) {
    Bytes bytes = EncodeFrame(payload);
    bytes.insert(bytes.begin(), Acknowledge);
    return bytes;
}

/// A network without pacing, a server radio in normal mode on the one logger that it has.
class WireTest : public testing::Test {
 protected:
    explicit WireTest(LoggerSetup setup = {}) {
        net.LineBaud = 0;
        logger = &net.AddLogger(std::move(setup));
        net.Radio().Tune(logger->Channel(), logger->Mac());
    }

    /// Sends the bytes and returns all that comes back within `patience`.
    Bytes Send(const Bytes& bytes, Microseconds patience = Second / 2) {
        net.Write(now, bytes);
        now += patience;
        return net.Read(now);
    }

    /// Sends a request in a frame and returns all that comes back.
    Bytes Ask(const Bytes& payload) { return Send(EncodeFrame(payload)); }

    Network net;
    Logger* logger = nullptr;
    Microseconds now = 0;
};

}  // namespace simulator

#endif  // ORVIA_TESTS_SIMULATOR_WIRE_H
