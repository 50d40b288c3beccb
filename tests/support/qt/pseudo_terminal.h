#ifndef ORVIA_TESTS_SUPPORT_QT_PSEUDO_TERMINAL_H
#define ORVIA_TESTS_SUPPORT_QT_PSEUDO_TERMINAL_H

#include <QString>

#include "common/bytes.h"

/// The far end of a serial line whose near end is a device of this system.
class PseudoTerminal final {
 public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// The device of the near end, "/dev/pts/3".
    [[nodiscard]] QString Device() const { return device_; }
    /// Sends as much as the line takes now; returns how many bytes that was.
    std::size_t Send(const Bytes& bytes);
    /// All that has arrived at the far end.
    [[nodiscard]] Bytes Receive();
    /// Closes the far end: to the near end the device is gone.
    void HangUp();

 private:
    int handle_;
    QString device_;
};

#endif  // ORVIA_TESTS_SUPPORT_QT_PSEUDO_TERMINAL_H
