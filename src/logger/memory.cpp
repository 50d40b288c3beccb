#include "logger/memory.h"

#include <algorithm>

#include "common/fault.h"
#include "logger/command_codes.h"

namespace cmd {

namespace {

constexpr int Attempts = 2;
constexpr std::int16_t Retries = 2;

std::uint8_t ByteOf(std::int32_t value, int place) {
    return static_cast<std::uint8_t>(value >> (8 * place) & 0xFF);
}

bool ReadOnce(FrameExchange& exchange, const Bytes& request, Bytes& reply) {
    std::int16_t retries = Retries;
    return exchange.SendFrame(request, retries) && exchange.ReceiveFrame(reply) &&
           std::equal(reply.begin(), reply.begin() + MemoryEchoSize, request.begin() + 1);
}

}  // namespace

bool ReadLoggerMemory(FrameExchange& exchange, Bytes& dest, int start, int count,
                      std::int32_t address) {
    if (start < 0 || count < 0 || count > 0xFF) {
        throw Fault("no such piece of memory");
    }
    const Bytes request = {ReadMemoryCode, ByteOf(address, 0), ByteOf(address, 1),
                           ByteOf(address, 2), static_cast<std::uint8_t>(count)};
    const auto end = static_cast<std::size_t>(start) + static_cast<std::size_t>(count);
    dest.resize(std::max(dest.size(), end));
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        Bytes reply(static_cast<std::size_t>(count + MemoryEchoSize));
        if (ReadOnce(exchange, request, reply)) {
            std::copy(reply.begin() + MemoryEchoSize, reply.end(), dest.begin() + start);
            return true;
        }
    }
    return false;
}

bool WriteLoggerMemory(FrameExchange& exchange, std::span<const std::uint8_t> source, int start,
                       int count, std::int32_t& address) {
    if (start < 0 || count < 1 || start + count > static_cast<int>(source.size())) {
        throw Fault("no such piece of memory");
    }
    const std::int32_t first = address;
    address = first + count - 1;
    constexpr auto Beginning = Guarded(WriteMemoryCode);
    Bytes payload(Beginning.begin(), Beginning.end());
    for (const std::int32_t end : {first, address}) {
        payload.push_back(ByteOf(end, 0));
        payload.push_back(ByteOf(end, 1));
    }
    const auto data =
        source.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
    payload.insert(payload.end(), data.begin(), data.end());
    std::int16_t retries = Retries;
    return exchange.SendFrame(payload, retries);
}

}  // namespace cmd
