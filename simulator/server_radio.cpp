#include "simulator/server_radio.h"

#include <algorithm>
#include <string_view>

namespace simulator {

namespace {

constexpr std::uint8_t CommandStart = 0xCC;
constexpr std::uint8_t SetChannelCode = 0x02;
constexpr std::uint8_t SetMacCode = 0x10;
constexpr std::uint8_t ReadSignalCode = 0x26;
constexpr std::uint8_t ReadSystemIdCode = 0xC0;
constexpr std::uint8_t LeaveCode = 'A';
constexpr Microseconds CommandPause = 100 * Millisecond;

constexpr std::string_view EnterText = "AT+++\r";
constexpr std::string_view LeaveText = "ATO\r";
constexpr std::string_view SystemIdText = "\xC0\x76\x01";

/// Length of the command with that code, its CC included; 0 for no command.
std::size_t CommandLength(std::uint8_t code) {
    switch (code) {
        case SetChannelCode:
            return 3;
        case SetMacCode:
            return 5;
        case ReadSignalCode:
            return 2;
        case ReadSystemIdCode:
            return 1 + SystemIdText.size();
        case LeaveCode:
            return 1 + LeaveText.size();
        default:
            return 0;
    }
}

bool Matches(std::span<const std::uint8_t> bytes, std::string_view text) {
    return std::equal(
        bytes.begin(), bytes.end(), text.begin(), text.end(),
        [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); });
}

/// Whether the text begins with these bytes.
bool Begins(std::span<const std::uint8_t> bytes, std::string_view text) {
    return bytes.size() <= text.size() && Matches(bytes, text.substr(0, bytes.size()));
}

}  // namespace

ServerRadio::Intake ServerRadio::Take(std::uint8_t byte, Microseconds now) {
    Intake intake;
    if (now - lastByte_ > CommandPause) {
        if (!commandMode_) {
            intake.Through = pending_;
        }
        pending_.clear();
    }
    lastByte_ = now;
    if (commandMode_) {
        TakeCommandByte(byte, intake);
    } else {
        TakeDataByte(byte, intake);
    }
    return intake;
}

void ServerRadio::TakeCommandByte(std::uint8_t byte, Intake& intake) {
    if (pending_.empty() && byte != CommandStart) {
        return;
    }
    pending_.push_back(byte);
    if (pending_.size() < 2) {
        return;
    }
    const std::size_t length = CommandLength(pending_[1]);
    if (length == 0) {
        pending_.clear();
    } else if (pending_.size() == length) {
        intake.Command.swap(pending_);
    }
}

void ServerRadio::TakeDataByte(std::uint8_t byte, Intake& intake) {
    pending_.push_back(byte);
    // What can no longer become the text goes through, byte by byte from the front.
    while (!Begins(pending_, EnterText)) {
        intake.Through.push_back(pending_.front());
        pending_.erase(pending_.begin());
    }
    if (pending_.size() == EnterText.size()) {
        intake.Command.swap(pending_);
    }
}

Bytes ServerRadio::Carry(std::span<const std::uint8_t> command) {
    if (Matches(command, EnterText)) {
        commandMode_ = true;
        return {CommandStart, 'C', 'O', 'M'};
    }
    const auto rest = command.subspan(1);
    switch (rest.front()) {
        case SetChannelCode:
            channel_ = rest[1];
            return {CommandStart, channel_, 0};
        case SetMacCode:
            mac_ = {rest[1], rest[2], rest[3]};
            return {CommandStart, mac_[0], mac_[1], mac_[2]};
        case ReadSignalCode:
            return {CommandStart, fixedSignal_.value_or(heard_), 0, 0};
        case ReadSystemIdCode:
            return Matches(rest, SystemIdText) ? Bytes{CommandStart, rest[1], rest[2], systemId_}
                                               : Bytes{};
        case LeaveCode:
            if (Matches(rest, LeaveText)) {
                commandMode_ = false;
                return {CommandStart, 'D', 'A', 'T'};
            }
            return {};
        default:
            return {};
    }
}

}  // namespace simulator
