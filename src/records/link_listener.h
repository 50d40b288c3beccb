#ifndef ORVIA_RECORDS_LINK_LISTENER_H
#define ORVIA_RECORDS_LINK_LISTENER_H

#include <cstdint>

#include "records/address_book.h"

/// What the link found in the answer to a request, or missed in it.
enum class LinkFinding : std::uint8_t {
    None,              ///< nothing was looked at
    Acknowledged,      ///< by the logger
    NoAcknowledge,     ///< not a byte came
    WrongAcknowledge,  ///< another byte came in its place
    StatusRead,        ///< a byte outside frames
    NoStatus,          ///< none came
    FrameRead,         ///< a good frame
    NoFrame,           ///< not a byte came
    NoFrameStart,      ///< bytes came, none of them the start of a frame
    FrameSilence,      ///< the frame broke off
    FrameLength,       ///< another length than the request calls for
    FrameEscape,       ///< a byte behind the escape mark that cannot stand there
    FrameEnd,          ///< another byte in place of the end
    FrameCrc,          ///< the CRC differs
    RadioAnswered,     ///< the server radio, as it should
    RadioSilence,      ///< the server radio said nothing
    RadioShort,        ///< its answer has too few bytes
    RadioOther,        ///< its answer is another one than the request calls for
    RadioEcho,         ///< it echoed something else than it was told
    BrokenOff          ///< the program ended while the answer was awaited
};

/// A request to a logger that goes out next.
struct LinkTry {
    int Number = 1;  ///< from 1
    int Of = 1;      ///< tries that there are
    std::uint8_t Channel = 0;
    RadioAddress Mac = {};
};

/// Is told what the link does with a request, beside the bytes that go through the port. It only
/// listens: nothing waits for it, and the link does the same without it.
class LinkListener {
 public:
    virtual ~LinkListener() = default;

    /// Right before a request goes out, where its tries are counted. One without it is its only
    /// try.
    virtual void OnTry(const LinkTry& attempt) = 0;
    /// What came of the request that went out last; `ticks` is how long a missing byte was awaited.
    virtual void OnFinding(LinkFinding finding, std::int16_t ticks) = 0;
};

#endif  // ORVIA_RECORDS_LINK_LISTENER_H
