#include "link/server_radio.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "common/bytes.h"
#include "common/fault.h"
#include "common/number_text.h"
#include "link/busy_guard.h"
#include "link/enumerate.h"
#include "link/listening.h"
#include "link/port.h"
#include "link/port_trouble.h"

namespace comm {

namespace {

constexpr std::uint8_t CommandMark = 0xCC;
constexpr std::string_view EnterCommand = "AT+++\r";
constexpr std::string_view LeaveCommand =
    "\xCC"
    "ATO\r";
constexpr std::array<std::uint8_t, 4> EnteredReply{CommandMark, 'C', 'O', 'M'};
constexpr std::array<std::uint8_t, 4> LeftReply{CommandMark, 'D', 'A', 'T'};
constexpr std::array<std::uint8_t, 4> SystemIDRequest{CommandMark, 0xC0, 0x76, 0x01};
constexpr std::array<std::uint8_t, 2> SignalRequest{CommandMark, 0x26};
constexpr int EnterAttempts = 3;

/// Number of bytes of a request or an answer.
constexpr std::int16_t LengthOf(const auto& bytes) {
    return static_cast<std::int16_t>(bytes.size());
}

/// What came in answer to what was written just before.
Bytes AwaitReply(Link& link, std::int16_t length) {
    WaitForBytes(link, RadioTicks, length);
    return link.MSComm1.Input(0);
}

template <typename Expected>
bool Is(const Bytes& reply, const Expected& expected) {
    return std::equal(reply.begin(), reply.end(), expected.begin(), expected.end());
}

/// Whether the radio answers what was written just before as it should.
template <typename Expected>
bool AnswersWith(Link& link, const Expected& expected) {
    const Bytes reply = AwaitReply(link, LengthOf(expected));
    const bool answered = Is(reply, expected);
    if (reply.empty()) {
        TellMissing(link, LinkFinding::RadioSilence, RadioTicks);
    } else {
        Tell(link, answered ? LinkFinding::RadioAnswered : LinkFinding::RadioOther);
    }
    return answered;
}

/// Tells what came before it is looked at: too little of it may end the exchange.
void TellLength(const Link& link, const Bytes& reply, std::int16_t wanted) {
    if (reply.empty()) {
        TellMissing(link, LinkFinding::RadioSilence, RadioTicks);
    } else if (reply.size() < static_cast<std::size_t>(wanted)) {
        Tell(link, LinkFinding::RadioShort);
    }
}

std::uint8_t ByteAt(const Bytes& reply, std::size_t index) {
    if (index >= reply.size()) {
        throw Fault("the radio's answer is too short");
    }
    return reply[index];
}

BoxContent ServerRadioFailure() {
    return {.Text = "Error: unable to communicate with server radio",
            .Title = "Server Connection Error",
            .Icon = BoxIcon::Stop};
}

/// In command mode, by going there if need be. A radio that will not go takes the link down.
bool ReachCommandMode(Link& link, MessageBoxes& boxes) {
    if (link.LinkState == LinkCommand || EnterCommandMode(link)) {
        return true;
    }
    LinkDown(link, boxes);
    return false;
}

bool Unavailable(const Link& link) {
    return link.LinkState == LinkDisconnected || link.CommBusy != False;
}

Bytes Ask(Link& link, std::span<const std::uint8_t> request, std::int16_t length) {
    link.MSComm1.ClearInBuffer();
    link.MSComm1.Output(request);
    Bytes reply = AwaitReply(link, length);
    TellLength(link, reply, length);
    return reply;
}

/// Takes what the radio echoed; a wrong echo takes the link down. `otherwise` names it.
bool Accept(bool echoed, Link& link, MessageBoxes& boxes, LinkFinding otherwise) {
    Tell(link, echoed ? LinkFinding::RadioAnswered : otherwise);
    if (!echoed) {
        LinkDown(link, boxes);
    }
    return echoed;
}

/// The same for an echo by which the radio has left its client: what that one may still have been
/// saying does not come any more.
bool AcceptTuning(bool echoed, Link& link, MessageBoxes& boxes) {
    if (echoed) {
        link.StrayInput = False;
    }
    return Accept(echoed, link, boxes, LinkFinding::RadioEcho);
}

/// Nothing if it did not come so far that the port was tried.
std::string DetailsOfFailure(const LinkContext& context) {
    const std::string& reason = context.link.PortRefusal;
    if (reason.empty()) {
        return {};
    }
    Enumerate::PortList known;
    Enumerate::EnumerateSerialPorts(context.registry, known);
    const int number = context.link.MSComm1.CommPort();
    return PortTroubleText("COM" + IntegerToText(number), context.inquiry.ConditionOf(number),
                           known, reason);
}

void ReopenPort(const LinkContext& context) {
    const bool opened = OpenPort(context.link, context.view, PortNumber(context.settings.PortName),
                                 PortSettings(context.settings.BaudRate));
    if (!opened) {
        context.boxes.Show(OpenPortFailure(context));
    }
    context.link.LinkState = LinkConnecting;
}

/// What the radio is told of a client.
struct Tuning {
    std::uint8_t Channel;
    RadioAddress Address;
};

/// Tells the radio channel and address, as far as they differ from what it was told last.
bool Tune(const LinkContext& context, const Tuning& tuning) {
    Link& link = context.link;
    if (link.CurrentChannel != tuning.Channel) {
        if (!SetServerChannel(link, context.boxes, tuning.Channel)) {
            return false;
        }
        link.CurrentChannel = tuning.Channel;
    }
    if (link.CurrentMAC != tuning.Address) {
        if (!SetServerMAC(link, context.boxes, tuning.Address)) {
            return false;
        }
        link.CurrentMAC = tuning.Address;
    }
    return true;
}

bool ReachNormalMode(Link& link) {
    if (link.LinkState == LinkNormal) {
        return true;
    }
    if (link.CommBusy != False) {
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    return LeaveCommandMode(link);
}

}  // namespace

void LinkDown(Link& link, MessageBoxes& boxes) {
    link.LinkState = LinkDisconnected;
    ClosePort(link);
    boxes.Show(ServerRadioFailure());
}

bool EnterCommandMode(Link& link) {
    for (int attempt = 0; attempt < EnterAttempts && link.ShuttingDown == False; ++attempt) {
        link.MSComm1.ClearInBuffer();
        TellTry(link, attempt + 1, EnterAttempts);
        SendText(link, EnterCommand);
        if (AnswersWith(link, EnteredReply)) {
            link.LinkState = LinkCommand;
            return true;
        }
        // A radio that was in command mode already takes "AT+++" for no command: send it out of
        // there, and ask again.
        link.MSComm1.ClearInBuffer();
        SendText(link, LeaveCommand);
        if (AnswersWith(link, LeftReply)) {
            link.LinkState = LinkNormal;
        }
        Pause(link, RadioTicks);
    }
    link.LinkState = LinkConnecting;
    return false;
}

bool LeaveCommandMode(Link& link) {
    Pause(link, RadioTicks);
    SendText(link, LeaveCommand);
    WaitForBytes(link, RadioTicks, LengthOf(LeftReply));
    if (link.MSComm1.InBufferCount() == 0) {
        TellMissing(link, LinkFinding::RadioSilence, RadioTicks);
    }
    link.LinkState = LinkNormal;
    return true;
}

std::uint8_t ReadServerSystemID(Link& link) {
    constexpr std::size_t IDAt = 3;
    link.MSComm1.ClearInBuffer();
    link.MSComm1.Output(SystemIDRequest);
    WaitForBytes(link, RadioTicks, LengthOf(SystemIDRequest));
    const int came = link.MSComm1.InBufferCount();
    if (came != IDAt + 1) {
        came == 0 ? TellMissing(link, LinkFinding::RadioSilence, RadioTicks)
                  : Tell(link, LinkFinding::RadioOther);
        return NoSystemID;
    }
    Tell(link, LinkFinding::RadioAnswered);
    return link.MSComm1.Input(0)[IDAt];
}

bool SetServerChannel(Link& link, MessageBoxes& boxes, std::uint8_t channel) {
    if (Unavailable(link)) {
        boxes.Show(ServerRadioFailure());
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    if (!ReachCommandMode(link, boxes)) {
        return false;
    }
    const std::array<std::uint8_t, 3> request{CommandMark, 0x02, channel};
    const Bytes reply = Ask(link, request, LengthOf(request));
    return AcceptTuning(ByteAt(reply, 1) == channel, link, boxes);
}

bool SetServerMAC(Link& link, MessageBoxes& boxes, const RadioAddress& mac) {
    if (Unavailable(link)) {
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    if (!ReachCommandMode(link, boxes)) {
        return false;
    }
    const std::array<std::uint8_t, 5> request{CommandMark, 0x10, mac[0], mac[1], mac[2]};
    const Bytes reply = Ask(link, request, 4);
    const RadioAddress echo{ByteAt(reply, 1), ByteAt(reply, 2), ByteAt(reply, 3)};
    return AcceptTuning(echo == mac, link, boxes);
}

bool ReadRadioSignal(Link& link, MessageBoxes& boxes, std::uint8_t& value) {
    if (Unavailable(link)) {
        return false;
    }
    const BusyGuard busy(link.CommBusy);
    if (!ReachCommandMode(link, boxes)) {
        return false;
    }
    const Bytes reply = Ask(link, SignalRequest, 4);
    const bool answered = reply.size() >= 2 && reply.front() == CommandMark;
    if (!Accept(answered, link, boxes, LinkFinding::RadioOther)) {
        return false;
    }
    value = reply[1];
    return LeaveCommandMode(link);
}

bool SelectClient(const LinkContext& context, const ClientRadio& client) {
    Link& link = context.link;
    // The end of the program has closed the port: it stays closed.
    if (link.CommBusy != False || link.ShuttingDown != False) {
        return false;
    }
    if (link.Connected == False) {
        context.boxes.Show({.Text = "Error: communications has not been established with the "
                                    "server radio modem.",
                            .Title = "Connect Error",
                            .Icon = BoxIcon::Exclamation});
        return false;
    }
    // The book can change while the radio is awaited, and `client` with it.
    const Tuning tuning{client.Channel, AddressOf(client.Mac)};
    NoticeLostDevice(link);
    try {
        if (link.LinkState == LinkDisconnected) {
            ReopenPort(context);
        }
        return Tune(context, tuning) && ReachNormalMode(link);
    } catch (const Fault&) {
        // A radio that said nothing: the exchange has let go of the link on its way here.
        return false;
    }
}

BoxContent OpenPortFailure(const LinkContext& context) {
    return {.Text =
                "Error opening port.  If this port exists, it \nmay be in use by another "
                "application.",
            .Title = "Connect Error",
            .Icon = BoxIcon::Exclamation,
            .Details = DetailsOfFailure(context)};
}

}  // namespace comm
