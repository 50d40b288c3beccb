#include "history/frmGetHistoryData.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <chrono>

#include "history/frm_history_fixture.h"
#include "platform/qt/qt_event_pump.h"

namespace testing_support {
namespace {

QString TextOf(const QWidget& form, const std::string& label) {
    return Find<QLabel>(form, label)->text();
}

class FrmGetHistoryData : public HistoryFormTest {};

TEST_F(FrmGetHistoryData, StartsAsItsDesignSays) {
    frmGetHistoryData form(console.State, 25, nullptr);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Get History Data"));
    EXPECT_EQ(Find<QPushButton>(form, "cmdOkay")->text(), QStringLiteral("Okay"));
    EXPECT_EQ(Find<QPushButton>(form, "cmdCancel")->text(), QStringLiteral("Stop"));
    EXPECT_FALSE(Find(form, "cmdOkay")->isEnabled());
    EXPECT_TRUE(Find(form, "cmdCancel")->isEnabled());
    EXPECT_EQ(TextOf(form, "lblGetHistoryData"), QString());
    EXPECT_EQ(TextOf(form, "lblRetries"), QString());
    EXPECT_EQ(form.Tag(), "Starting");
}

TEST_F(FrmGetHistoryData, UploadRunsInItAndOkayOpensTheViewer) {
    Connect(100);
    QString told;
    bool focused = false;
    bool stopEnabled = true;
    int value = 0;
    console.Outside.Time.StartTimer(50 * Millisecond, [&] {
        frmGetHistoryData* const form = Dialog();
        if (form != nullptr && Find(*form, "cmdOkay")->isEnabled()) {
            focused = form->focusWidget() == Find(*form, "cmdOkay");
            stopEnabled = Find(*form, "cmdCancel")->isEnabled();
            QTest::qWait(60);
            told = TextOf(*form, "lblGetHistoryData");
            value = Find<QProgressBar>(*form, "ProgressBar1")->value();
            QTest::keyClick(form, Qt::Key_Return);
        }
    });
    int rows = 0;
    ModalAnswer<frmHistory> viewer([&](frmHistory& form) {
        rows = Find<HistoryList>(form, "lvwHistory")->Table().RowCount();
        Click(form, "cmdOK");
    });
    GetHistory();
    EXPECT_EQ(told, QStringLiteral("Upload complete: 100 records uploaded."));
    EXPECT_EQ(value, 100);
    EXPECT_TRUE(focused);
    EXPECT_FALSE(stopEnabled);
    EXPECT_TRUE(viewer.Given());
    EXPECT_EQ(rows, 100);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(FrmGetHistoryData, StopEndsTheUploadThenShowsWhatCame) {
    Connect(2000);
    WithDialogAfter(2 * Second, [](frmGetHistoryData& form) { Click(form, "cmdCancel"); });
    int rows = 0;
    ModalAnswer<frmHistory> viewer([&](frmHistory& form) {
        rows = Find<HistoryList>(form, "lvwHistory")->Table().RowCount();
        Click(form, "cmdOK");
    });
    GetHistory();
    EXPECT_TRUE(viewer.Given());
    EXPECT_GT(rows, 0);
    EXPECT_LT(rows, 2000);
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text, "Retrieval cancelled by user. Received " + std::to_string(rows) +
                                   " records of 2000 records.");
}

TEST_F(FrmGetHistoryData, EscapeEndsItAsStopDoes) {
    Connect(2000);
    WithDialogAfter(1 * Second,
                    [](frmGetHistoryData& form) { QTest::keyClick(&form, Qt::Key_Escape); });
    ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.reject(); });
    GetHistory();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text.substr(0, 27), "Retrieval cancelled by user");
}

TEST_F(FrmGetHistoryData, CloseBoxEndsItAsStopDoesInEveryWait) {
    Connect(2000);
    using simulator::FaultKind;
    for (int moment = 0; moment < 4000; moment += 190) {
        console.Outside.Boxes.Shown.clear();
        console.Outside.Network.Faults()
            .Clear()
            .OnRequest(0x0D, simulator::LineFault{}, 3)
            .OnRequest(0x0D, simulator::Plain(FaultKind::LoseReply))
            .OnRequest(0x0D, simulator::LineFault{}, 2)
            .OnRequest(0x0D, simulator::Plain(FaultKind::LoseAnswer));
        WithDialogAfter(moment * Millisecond, [](frmGetHistoryData& form) {
            form.close();
            EXPECT_TRUE(form.isVisible()) << "it goes at the end of the round";
        });
        ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.close(); });
        GetHistory();
        const std::int32_t received = console.State.History.HistoryCount();
        ASSERT_EQ(Boxes().size(), 1U) << moment;
        EXPECT_EQ(Boxes()[0].Text, "Retrieval cancelled by user. Received " +
                                       std::to_string(received) + " records of 2000 records.");
        EXPECT_EQ(viewer.Given(), received > 0);
    }
}

TEST_F(FrmGetHistoryData, CloseBoxBehindTheCompletionOpensTheViewer) {
    Connect(5);
    WithDialogAfter(5 * Second, [](frmGetHistoryData& form) { form.close(); });
    ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.close(); });
    GetHistory();
    EXPECT_TRUE(viewer.Given());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(FrmGetHistoryData, ErrorShowsItsBoxButNoViewer) {
    Connect(100);
    console.Outside.Network.Faults().OnRequest(
        0x0D, simulator::Plain(simulator::FaultKind::LoseReply), 200);
    GetHistory();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text, "Error during retrieval. Received 0 records of 100 records.");
    EXPECT_EQ(Boxes()[0].Icon, BoxIcon::Stop);
}

TEST_F(FrmGetHistoryData, ProgramThatClosesInAnyWaitUnwindsWithoutABox) {
    for (int moment = 10; moment < 3000; moment += 170) {
        VirtualConsole other;
        other.Connect();
        simulator::LoggerSetup setup = BasicSite(1, 2, 1);
        setup.HistoryRecords = 200;
        other.AddSite(setup);
        other.OpenWindow(1);
        other.Outside.Network.Faults().Pass(8).LoseReply(2).Pass(2).LoseAnswer(2);
        other.Outside.Time.In(moment * Millisecond, [&other] {
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                auto* dialog = qobject_cast<QDialog*>(widget);
                if (dialog != nullptr && dialog->isVisible()) {
                    dialog->done(QDialog::Rejected);
                }
            }
            other.State.LinkRecord.ShuttingDown = True;
        });
        GetHistoryInWindows(other.Operation(), other.State, other.View, nullptr);
        EXPECT_TRUE(other.Outside.Boxes.Shown.empty()) << moment;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

TEST_F(FrmGetHistoryData, BarMovesAtMostTwentyFiveTimesASecond) {
    frmGetHistoryData form(console.State, 100'000, nullptr);
    auto* bar = Find<QProgressBar>(form, "ProgressBar1");
    int moves = 0;
    QObject::connect(bar, &QProgressBar::valueChanged, bar, [&moves] { ++moves; });
    form.SetBarMaximum(100'000);
    QElapsedTimer clock;
    clock.start();
    int told = 0;
    while (clock.elapsed() < 400) {
        form.SetBarValue(++told % 100'000);
        QCoreApplication::processEvents();
    }
    EXPECT_LE(moves, 12);
    EXPECT_GE(moves, 4);
    QTest::qWait(100);
    EXPECT_EQ(bar->value(), told % 100'000) << "the last one is shown in any case";
}

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

// How long a click may wait depends on the machine as well; the figure is printed.
TEST_F(FrmGetHistoryData, AnswersWhileALineOf115200BaudIsFull) {
    simulator::Network network;
    network.LineBaud = 115200;
    network.AirDelay = 0;
    network.LoggerDelay = 0;
    simulator::LoggerSetup setup = BasicSite(1);
    setup.Logging = false;
    setup.HistoryRecords = 600;
    network.AddLogger(setup);
    // The radio is taken to the logger once, on the virtual host; here it is there already.
    WallClockPort port(network);
    QtEventPump pump;
    Host outside = console.Outside.AsHost("/nowhere");
    SharedState state(Host{port, pump, outside.Boxes, outside.Dialogs, outside.Store, outside.Clock,
                           outside.Help, outside.LocalMachine, outside.AppPath});
    FakeMainView view;
    state.SettingsRecord.PortName = "COM1";
    state.SettingsRecord.BaudRate = "115200";
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] {
        comm::SuperviseTick({state.LinkRecord, state.SamplingRecord, state.OperationsRecord,
                             state.Book, state.Windows, view});
    });
    tick.start(100);
    comm::ConnectDialog connecting;
    comm::Connect({state.LinkRecord, state.SettingsRecord, view, state.Boxes}, connecting,
                  [](Pointer) {});
    ClientRadio radio;
    radio.Channel = setup.Channel;
    std::copy(setup.Mac.begin(), setup.Mac.end(), radio.Mac.begin());
    ASSERT_TRUE(
        comm::SelectClient({state.LinkRecord, state.SettingsRecord, view, state.Boxes}, radio));
    ASSERT_TRUE(config::GetLoggerSettings(state.Exchange, state.Outside.Clock, state.Logger));

    frmGetHistoryData form(state, 600, nullptr);
    qint64 slowest = 0;
    QElapsedTimer sincePress;
    QTimer presses;
    QObject::connect(&presses, &QTimer::timeout, &form, [&] {
        // A click is an event that waits in the queue until the program looks at it.
        sincePress.start();
        QMetaObject::invokeMethod(
            &form, [&] { slowest = std::max(slowest, sincePress.nsecsElapsed()); },
            Qt::QueuedConnection);
        if (Find(form, "cmdOkay")->isEnabled()) {
            Click(form, "cmdOkay");
        }
    });
    presses.start(3);
    QElapsedTimer taken;
    taken.start();
    form.exec();
    std::cout << "600 records in " << taken.elapsed() << " ms, slowest answer "
              << static_cast<double>(slowest) / 1e6 << " ms\n";
    EXPECT_EQ(state.History.HistoryCount(), 600);
    EXPECT_EQ(form.Tag(), "Okay");
    EXPECT_LT(slowest, 500'000'000);
}

TEST_F(FrmGetHistoryData, EveryControlCanBeReached) {
    frmGetHistoryData form(console.State, 25, nullptr);
    EXPECT_FALSE(Find(form, "ProgressBar1")->accessibleName().isEmpty());
    EXPECT_FALSE(Find(form, "lblRetries")->accessibleDescription().isEmpty());
    EXPECT_FALSE(Find(form, "lblGetHistoryData")->accessibleDescription().isEmpty());
    for (const char* button : {"cmdOkay", "cmdCancel"}) {
        EXPECT_NE(Find(form, button)->focusPolicy() & Qt::TabFocus, 0);
    }
}

}  // namespace
}  // namespace testing_support
