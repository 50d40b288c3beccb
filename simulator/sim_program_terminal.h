#ifndef ORVIA_SIMULATOR_SIM_PROGRAM_TERMINAL_H
#define ORVIA_SIMULATOR_SIM_PROGRAM_TERMINAL_H

#include <span>
#include <string>

#include "simulator/bytes.h"
#include "simulator/sim_program_files.h"

namespace simulator {

/// A pseudo-terminal that stands for the radio's serial port, raw in both directions.
///
/// It outlives the console: the end that the console opens is held open here too, so that its
/// leaving is no hang-up. Where the system can tell, the leaving is noticed: what the console has
/// not read by then is thrown away, as a closed port loses it, and a claim of sole use that a
/// console left behind is lifted.
class Terminal {
 public:
    /// Opens one; the text says what failed, empty if nothing did.
    [[nodiscard]] std::string Open();

    /// The name under which the console opens it.
    [[nodiscard]] const std::string& Name() const { return name_; }

    /// Readable when the console has sent something.
    [[nodiscard]] int Fd() const { return master_.Get(); }
    /// Readable when a console has come or gone; -1 where the system cannot tell.
    [[nodiscard]] int WatchFd() const { return watch_.Get(); }

    /// What the console has sent.
    [[nodiscard]] Bytes Receive();
    /// Sends to the console. What it does not take in time is lost, as on a wire.
    void Send(std::span<const std::uint8_t> bytes);
    /// Takes note of a console that came or went.
    void NoteOpenOrClose();

 private:
    void Watch();
    void ConsoleLeft();

    std::string name_;
    FileHandle master_;
    FileHandle slave_;
    FileHandle watch_;
    bool listening_ = true;  ///< a console may have the port open
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SIM_PROGRAM_TERMINAL_H
