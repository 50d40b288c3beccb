#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <iostream>

#include "history/frm_history_fixture.h"
#include "platform/qt/qt_event_pump.h"

namespace testing_support {
namespace {

/// A port on a network that runs by the clock on the wall.
class WallClockPort final : public SerialPort {
 public:
    explicit WallClockPort(simulator::Network& network) : network_(network) {
        clock_.start();
        wake_.setTimerType(Qt::PreciseTimer);
        wake_.setSingleShot(true);
        QObject::connect(&wake_, &QTimer::timeout, &wake_, [this] { Collect(); });
    }

    int CommPort() const override { return 1; }
    void SetCommPort(int) override {}
    std::string Settings() const override { return "115200,N,8,1"; }
    void SetSettings(const std::string&) override {}
    bool PortOpen() const override { return true; }
    void SetPortOpen(bool) override {}
    void SetDTREnable(bool) override {}
    int InBufferCount() const override { return static_cast<int>(received_.size()); }
    void ClearInBuffer() override { received_.clear(); }
    Bytes Input(int InputLen) override {
        const std::size_t size =
            InputLen == 0 ? received_.size() : std::min<std::size_t>(received_.size(), 1);
        const auto end = received_.begin() + static_cast<std::ptrdiff_t>(size);
        Bytes bytes(received_.begin(), end);
        received_.erase(received_.begin(), end);
        return bytes;
    }
    void Output(std::span<const std::uint8_t> bytes) override {
        network_.Write(Now(), bytes);
        Collect();
    }
    void LookForHangUp() override {}

    [[nodiscard]] Microseconds Now() const { return clock_.nsecsElapsed() / 1000; }

 private:
    void Collect() {
        const Bytes bytes = network_.Read(Now());
        received_.insert(received_.end(), bytes.begin(), bytes.end());
        if (const auto due = network_.NextEvent()) {
            wake_.start(std::chrono::milliseconds(std::max<Microseconds>(*due - Now(), 0) / 1000));
        }
    }

    simulator::Network& network_;
    QElapsedTimer clock_;
    QTimer wake_;
    Bytes received_;
};

/// Clicks a button of a window again and again, at moments told beforehand, as an operator would
/// who does not look whether the program has time.
class Presses {
 public:
    explicit Presses(QWidget& form) : button_(&form) {
        button_.setFocusPolicy(Qt::NoFocus);
        button_.setAutoDefault(false);
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.setSingleShot(true);
        QObject::connect(&button_, &QPushButton::clicked, &button_, [this] {
            slowest_ = std::max(slowest_, clock_.nsecsElapsed() - due_);
            ++answered_;
        });
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            QTest::mouseClick(&button_, Qt::LeftButton);
            Plan();
        });
        clock_.start();
        Plan();
    }

    [[nodiscard]] int Answered() const { return answered_; }
    /// The longest time from the moment of a click until the button did its work, in nanoseconds.
    [[nodiscard]] qint64 Slowest() const { return slowest_; }

 private:
    void Plan() {
        constexpr std::chrono::milliseconds pause(7);
        due_ = clock_.nsecsElapsed() + std::chrono::nanoseconds(pause).count();
        timer_.start(pause);
    }

    QPushButton button_;
    QTimer timer_;
    QElapsedTimer clock_;
    qint64 due_ = 0;
    qint64 slowest_ = 0;
    int answered_ = 0;
};

struct LineCase {
    int Baud;
    int Records;  ///< what the line carries in some two seconds
};

class FrmGetHistoryDataOnALine : public HistoryFormTest,
                                 public testing::WithParamInterface<LineCase> {
 protected:
    FrmGetHistoryDataOnALine() {
        network.LineBaud = GetParam().Baud;
        network.AirDelay = 0;
        network.LoggerDelay = 0;
        setup.Logging = false;
        setup.HistoryRecords = static_cast<std::uint32_t>(GetParam().Records);
        network.AddLogger(setup);
        state.SettingsRecord.PortName = "COM1";
        state.SettingsRecord.BaudRate = std::to_string(GetParam().Baud);
        QObject::connect(&tick, &QTimer::timeout, &tick, [this] {
            comm::SuperviseTick({state.LinkRecord, state.SamplingRecord, state.OperationsRecord,
                                 state.Book, state.Windows, view, state.Status});
        });
        tick.start(100);
    }

    [[nodiscard]] bool SelectLogger() {
        const comm::LinkContext radio = {
            state.LinkRecord,      state.SettingsRecord,      view, state.Boxes, state.Status,
            state.Outside.Inquiry, state.Outside.LocalMachine};
        comm::ConnectDialog connecting;
        comm::Connect(radio, connecting, [](Pointer) {});
        ClientRadio client;
        client.Channel = setup.Channel;
        std::copy(setup.Mac.begin(), setup.Mac.end(), client.Mac.begin());
        return comm::SelectClient(radio, client) &&
               config::GetLoggerSettings(state.Exchange, state.Outside.Clock, state.Logger);
    }

    /// Uploads all records, while a button of the dialog is clicked; the longest that a click
    /// waited.
    [[nodiscard]] qint64 UploadUnderClicks() {
        frmGetHistoryData form(Contexts(state, view).History(), GetParam().Records, nullptr);
        Presses presses(form);
        QTimer okay;
        QObject::connect(&okay, &QTimer::timeout, &form, [&form] {
            if (Find(form, "cmdOkay")->isEnabled()) {
                Click(form, "cmdOkay");
            }
        });
        okay.start(20);
        QElapsedTimer taken;
        taken.start();
        form.exec();
        std::cout << GetParam().Records << " records at " << GetParam().Baud << " baud in "
                  << taken.elapsed() << " ms, slowest of " << presses.Answered() << " clicks "
                  << static_cast<double>(presses.Slowest()) / 1e6 << " ms\n";
        EXPECT_EQ(form.Tag(), "Okay");
        EXPECT_EQ(state.History.HistoryCount(), GetParam().Records);
        EXPECT_GT(presses.Answered(), 50);
        return presses.Slowest();
    }

    simulator::Network network;
    simulator::LoggerSetup setup = BasicSite(1);
    WallClockPort port{network};
    QtEventPump pump;
    SharedState state{Host{port, pump, console.Outside.Boxes, console.Outside.Dialogs,
                           console.Outside.Store, console.Outside.Clock, console.Outside.Help,
                           console.Outside.LocalMachine, console.Outside.Inquiry,
                           console.Outside.Sound, "/nowhere"}};
    FakeMainView view;
    QTimer tick;
};

TEST_P(FrmGetHistoryDataOnALine, AnswersAClickWhileTheLineIsFull) {
    constexpr qint64 Limit = (Sanitized ? 250 : 50) * 1'000'000;
    ASSERT_TRUE(SelectLogger());
    EXPECT_LT(LongestWithin(Limit, [this] { return UploadUnderClicks(); }), Limit);
}

INSTANTIATE_TEST_SUITE_P(Bauds, FrmGetHistoryDataOnALine,
                         testing::Values(LineCase{9600, 70}, LineCase{38400, 280},
                                         LineCase{115200, 800}),
                         [](const auto& line) { return std::to_string(line.param.Baud); });

}  // namespace
}  // namespace testing_support
