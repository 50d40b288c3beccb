// Frames and the supervising tick. The CRC stands beside that of Boost, in the same run.

#include <benchmark/benchmark.h>

#include <boost/crc.hpp>
#include <random>

#include "common/bytes.h"
#include "link/frame_codec.h"
#include "link/supervision.h"
#include "plain_clock.h"

namespace {

/// A reply as they come: 242 bytes, one in forty of which needs an escape.
Bytes ReplyPayload() {
    std::mt19937 random(1);
    Bytes payload(242);
    for (std::uint8_t& byte : payload) {
        byte = static_cast<std::uint8_t>(random());
    }
    return payload;
}

void CountBytes(benchmark::State& state, std::size_t each) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(each));
}

void EncodeFrame(benchmark::State& state) {
    const Bytes payload = ReplyPayload();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(comm::EncodeFrame(payload).data());
    }
    CountBytes(state, payload.size());
}
BENCHMARK(EncodeFrame);

void DecodeFrame(benchmark::State& state) {
    const Bytes frame = comm::EncodeFrame(ReplyPayload());
    Bytes payload(242);
    for ([[maybe_unused]] auto _ : state) {
        comm::FrameDecoder decoder(payload);
        auto progress = comm::FrameDecoder::Progress::More;
        for (std::size_t i = 1; i < frame.size(); ++i) {
            progress = decoder.Take(frame[i]);
        }
        if (progress != comm::FrameDecoder::Progress::Good) {
            state.SkipWithError("a good frame was refused");
        }
        benchmark::ClobberMemory();
    }
    CountBytes(state, frame.size());
}
BENCHMARK(DecodeFrame);

void Crc(benchmark::State& state) {
    const Bytes payload = ReplyPayload();
    std::uint16_t crc = 0;
    for ([[maybe_unused]] auto _ : state) {
        crc = comm::FrameCrc(payload, 0, static_cast<int>(payload.size()) - 1);
        benchmark::DoNotOptimize(crc);
        benchmark::ClobberMemory();
    }
    CountBytes(state, payload.size());
}
BENCHMARK(Crc);

void CrcOfBoost(benchmark::State& state) {
    const Bytes payload = ReplyPayload();
    for ([[maybe_unused]] auto _ : state) {
        boost::crc_16_type crc;
        crc.process_bytes(payload.data(), payload.size());
        std::uint16_t sum = crc.checksum();
        benchmark::DoNotOptimize(sum);
        benchmark::ClobberMemory();
    }
    CountBytes(state, payload.size());
}
BENCHMARK(CrcOfBoost);

class NoPort final : public SerialPort {
 public:
    int CommPort() const override { return 1; }
    void SetCommPort(int /*number*/) override {}
    std::string Settings() const override { return {}; }
    void SetSettings(const std::string& /*settings*/) override {}
    bool PortOpen() const override { return true; }
    void SetPortOpen(bool /*open*/) override {}
    void SetDTREnable(bool /*enable*/) override {}
    int InBufferCount() const override { return 0; }
    void ClearInBuffer() override {}
    Bytes Input(int /*InputLen*/) override { return {}; }
    void Output(std::span<const std::uint8_t> /*bytes*/) override {}
    void LookForHangUp() override {}
};

class NoEvents final : public EventPump {
 public:
    void RunPendingEvents() override {}
    void WaitForMoreEvents() override {}
};

/// A main window that counts what it is told.
class CountingView final : public MainView {
 public:
    bool IsVisible() const override { return true; }
    void SetPointer(Pointer /*pointer*/) override {}
    void SetComPort(const std::string& /*text*/) override {}
    void SetServerState(const std::string& /*text*/, Colour /*colour*/) override {}
    void SetSystemID(const std::string& /*text*/) override {}
    void ShowLinkFields(bool /*linked*/) override {}
    void SetCommandStates(const CommandStates& /*states*/) override {}
    void SetAddressBookName(const std::string& /*text*/) override {}
    void ClearClients() override {}
    void AddClient(const std::string& /*name*/, std::uint8_t /*icon*/) override {}
    void SetClientIcon(int /*item*/, std::uint8_t /*icon*/) override { ++Icons; }
    int ClientCount() const override { return 10000; }
    int SelectedClient() const override { return 1; }
    std::shared_ptr<ClientWindow> NewClientWindow() override { return nullptr; }
    std::shared_ptr<ClientWindow> NewClientWindowBehind() override { return nullptr; }
    void CloseAllChildForms() override {}
    void SetStatus(const std::string& /*text*/, bool /*failed*/) override {}

    std::int64_t Icons = 0;
};

/// A tick over a book of 10,000, every entry with an open window that turns active and back.
void SuperviseTenThousand(benchmark::State& state) {
    NoPort port;
    NoEvents events;
    CountingView view;
    Link link(port, events);
    link.LinkState = LinkNormal;
    Sampling sampling;
    Operations operations;
    ClientWindows windows;
    const PlainClock clock;
    OperationStatus status(clock);
    AddressBook book;
    for (int i = 0; i < 10000; ++i) {
        book.Entries.Append({.Name = "Site " + std::to_string(i), .SmallIcon = IconWindowOpen});
    }
    const comm::SupervisionContext context{.link = link,
                                           .sampling = sampling,
                                           .operations = operations,
                                           .book = book,
                                           .windows = windows,
                                           .view = view,
                                           .status = status};
    for ([[maybe_unused]] auto _ : state) {
        link.CurrentMAC[0] = static_cast<std::uint8_t>(link.CurrentMAC[0] == 0 ? 1 : 0);
        link.CurrentMAC[1] = 0;
        link.CurrentMAC[2] = 0;
        comm::SuperviseTick(context);
    }
    if (view.Icons == 0) {
        state.SkipWithError("no icon changed");
    }
}
BENCHMARK(SuperviseTenThousand)->Unit(benchmark::kMicrosecond);

}  // namespace
