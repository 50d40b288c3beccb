#include "setup/setup_programming.h"

#include <iostream>
#include <set>

#include "common/fault.h"
#include "setup/setup_fixture.h"
#include "setup/setup_transfer.h"

namespace {

using setup_testing::OpenedSetup;
using setup_testing::SetupTest;
using simulator::FaultKind;
using testing_support::Millisecond;
using testing_support::Second;

constexpr const char* Question = "Are you sure you want to program settings into logger memory?";
constexpr const char* NotCompleted = "Error: programming not completed successfully.";
constexpr const char* Unable =
    "Error: unable to complete operation. Check that setup data is valid and connection is "
    "working.";

/// Four writes, three reads to compare, the restart.
constexpr int Frames = 8;

class SetupProgramming : public SetupTest {
 protected:
    SetupProgramming() {
        controls.txtName = "Programmed";
        controls.Analog[1].txtTop = "88";
        controls.txtTableFile = "demo.tbl";
    }

    /// Presses the button and answers yes.
    void Program() {
        opened.Answer(BoxAnswer::Yes);
        ProgramSettings(opened.Context());
    }

    void ExpectProgrammed() {
        ExpectBox(Question, "Program Settings", BoxIcon::Information, BoxButtons::YesNo);
        EXPECT_EQ(opened.LoggerMemory(), opened.Image());
        EXPECT_EQ(opened.dialog.LoggerImage, opened.Image());
        EXPECT_EQ(view.CancelFocused, 1);
        ExpectReleased();
    }

    void ExpectReleased() {
        EXPECT_EQ(opened.Busy(), False);
        EXPECT_TRUE(view.CancelEnabled);
        EXPECT_FALSE(view.Held);
        EXPECT_EQ(view.Shape, Pointer::Normal);
    }

    void ExpectNotProgrammed(const SetupControls& before, const Bytes& image) {
        const auto boxes = opened.TakeBoxes();
        ASSERT_EQ(boxes.size(), 2U);
        EXPECT_EQ(boxes[0].Text, Question);
        EXPECT_EQ(boxes[1].Text, NotCompleted);
        EXPECT_EQ(boxes[1].Title, "Program Settings");
        EXPECT_EQ(boxes[1].Icon, BoxIcon::Stop);
        EXPECT_EQ(boxes[1].Buttons, BoxButtons::Ok);
        ExpectReleased();
        EXPECT_EQ(view.CancelFocused, 0);
        EXPECT_EQ(controls, before) << "the user's values stay";
        EXPECT_EQ(opened.dialog.LoggerImage, image);
        opened.Answer(BoxAnswer::No, BoxAnswer::Cancel);
        EXPECT_FALSE(QueryUnloadSetup(opened.Context()));
        EXPECT_EQ(opened.TakeBoxes().size(), 2U) << "closing prompts for file and logger";
    }
};

TEST_F(SetupProgramming, WritesReadsBackAndRestarts) {
    opened.console.Outside.Network.ClearRecord();
    Program();
    ExpectProgrammed();
    std::vector<int> codes;
    for (const auto& request : opened.console.Outside.Network.RequestsTo(opened.Logger())) {
        codes.push_back(request.front());
    }
    EXPECT_EQ(codes, (std::vector<int>{7, 7, 7, 7, 8, 8, 8, 0x0B}));
    opened.Answer(BoxAnswer::No);
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
    EXPECT_EQ(opened.TakeBoxes().size(), 1U) << "only the file is asked for";
}

TEST_F(SetupProgramming, TheStatusLineTellsHowFarItIs) {
    std::set<std::string> told;
    opened.console.Outside.Time.StartTimer(
        20 * Millisecond, [&] { told.insert(opened.console.State.Status.Text()); });
    Program();
    for (const char* line :
         {"Programming Programmed, part 1 of 4...", "Programming Programmed, part 4 of 4...",
          "Programming Programmed, block 2 of 3...", "Restarting sampling of Programmed..."}) {
        EXPECT_EQ(told.count(line), 1U) << line;
    }
    const std::string end = opened.console.State.Status.Text();
    EXPECT_NE(end.find("  Settings of Programmed programmed"), std::string::npos) << end;
}

TEST_F(SetupProgramming, TheStatusLineTellsOfALoggerThatDoesNotAnswer) {
    opened.Logger().Silence();
    Program();
    const std::string end = opened.console.State.Status.Text();
    EXPECT_NE(end.find("  Programming Programmed failed"), std::string::npos) << end;
}

TEST_F(SetupProgramming, NoLeavesTheLoggerUntouched) {
    const int requests = opened.console.Outside.Network.Count().Requests;
    const SetupControls before = controls;
    opened.Answer(BoxAnswer::No);
    ProgramSettings(opened.Context());
    ExpectBox(Question, "Program Settings", BoxIcon::Information, BoxButtons::YesNo);
    EXPECT_EQ(opened.console.Outside.Network.Count().Requests, requests);
    EXPECT_EQ(controls, before);
    ExpectReleased();
}

TEST_F(SetupProgramming, CancelIsOffWhileTheQuestionStands) {
    bool enabled = true;
    Flag busy = False;
    opened.console.Outside.Boxes.WhileShown = [&] {
        enabled = view.CancelEnabled;
        busy = opened.Busy();
    };
    Program();
    EXPECT_FALSE(enabled);
    EXPECT_EQ(busy, True);
}

TEST_F(SetupProgramming, TheWaitPointerShowsMeanwhile) {
    Pointer shape = Pointer::Normal;
    bool held = false;
    opened.console.Outside.Time.In(20 * Millisecond, [&] {
        shape = view.Shape;
        held = view.Held;
    });
    Program();
    EXPECT_EQ(shape, Pointer::Hourglass);
    EXPECT_TRUE(held);
}

TEST_F(SetupProgramming, WithoutALoggerTheButtonDoesNothing) {
    opened.console.State.LinkRecord.Connected = False;
    ProgramSettings(opened.Context());
    opened.console.State.LinkRecord.Connected = True;
    opened.console.State.SamplingRecord.ContinuousMode = ContinuousFirstRequest;
    ProgramSettings(opened.Context());
    opened.console.State.SamplingRecord.ContinuousMode = SamplingIdle;
    opened.Busy() = True;
    ProgramSettings(opened.Context());
    ExpectNoBox();
    EXPECT_EQ(opened.Busy(), True);
    EXPECT_TRUE(view.CancelEnabled);
}

TEST_F(SetupProgramming, APressInsideItselfDoesNothing) {
    opened.console.Outside.Time.In(20 * Millisecond, [&] { ProgramSettings(opened.Context()); });
    Program();
    ExpectProgrammed();
}

// ----- every frame, and everything that can befall it

struct Befalls {
    const char* Name;
    simulator::LineFault Fault;
};

class EveryFrame : public SetupProgramming,
                   public ::testing::WithParamInterface<std::tuple<int, Befalls>> {};

TEST_P(EveryFrame, ThatFailsForGoodIsToldAndKeepsTheValues) {
    const auto& [frame, befalls] = GetParam();
    const SetupControls before = controls;
    const Bytes image = opened.dialog.LoggerImage;
    opened.console.Outside.Network.Faults().Pass(frame).Always(befalls.Fault);
    Program();
    ExpectNotProgrammed(before, image);
    opened.console.Outside.Network.Faults().Clear();
    opened.Logger().Wake();
    Program();
    ExpectProgrammed();
}

INSTANTIATE_TEST_SUITE_P(
    Lost, EveryFrame,
    ::testing::Combine(::testing::Range(0, Frames),
                       ::testing::Values(Befalls{"Request",
                                                 simulator::Plain(FaultKind::LoseRequest)},
                                         Befalls{"Answer", simulator::Plain(FaultKind::LoseAnswer)},
                                         Befalls{"Acknowledge", simulator::WrongAck(0x15)},
                                         Befalls{"Corrupted", simulator::CorruptByte(0, 0x41)},
                                         Befalls{"Silent", simulator::Plain(FaultKind::Silent)})),
    [](const auto& frame) {
        return std::string(std::get<1>(frame.param).Name) +
               std::to_string(std::get<0>(frame.param));
    });

class EveryFrameOnce : public SetupProgramming, public ::testing::WithParamInterface<int> {};

TEST_P(EveryFrameOnce, IsSentAgain) {
    opened.console.Outside.Network.Faults().Pass(GetParam()).LoseRequest();
    Program();
    ExpectProgrammed();
}

INSTANTIATE_TEST_SUITE_P(Lost, EveryFrameOnce, ::testing::Range(0, Frames));

TEST_F(SetupProgramming, AReadBackThatIsCorruptedAnywhereNeverPasses) {
    for (int position = 0; position < 60; position += 7) {
        opened.console.Outside.Network.Faults().Clear().OnRequest(
            0x08, simulator::CorruptByte(position, 0x01), 100);
        const SetupControls before = controls;
        Program();
        ExpectNotProgrammed(before, opened.dialog.LoggerImage);
    }
}

TEST_F(SetupProgramming, AByteThatTheMemoryDoesNotTakeFails) {
    const Bytes old = opened.LoggerMemory();
    ASSERT_TRUE(FormToState(controls, opened.console.State.CataloguesRecord, opened.Global()));
    const Bytes wanted = opened.Image();
    int tried = 0;
    for (const config::ImageBlock& block : config::ImageBlocks) {
        for (int i = block.Offset; i < block.Offset + block.Size; ++i) {
            const auto at = static_cast<std::size_t>(i);
            if (old[at] == wanted[at]) {
                continue;
            }
            OpenedSetup stubborn;
            stubborn.Open();
            stubborn.view.Shown = controls;
            stubborn.Logger().IgnoreWritesAt(
                static_cast<std::size_t>(block.Address + i - block.Offset));
            stubborn.Answer(BoxAnswer::Yes);
            ProgramSettings(stubborn.Context());
            EXPECT_EQ(stubborn.TakeBoxes().back().Text, NotCompleted) << "byte " << i;
            EXPECT_EQ(stubborn.view.Shown, controls);
            EXPECT_EQ(stubborn.dialog.LoggerImage, old);
            ++tried;
        }
    }
    EXPECT_GT(tried, 15);
}

// ----- failures that are no plain false

class FaultyExchange final : public FrameExchange {
 public:
    bool SendFrame(std::span<const std::uint8_t>, std::int16_t&) override {
        throw Fault("the port failed");
    }
    bool ReceiveFrame(Bytes&) override { return false; }
    std::int16_t ReadReplyByte() override { return -1; }
};

TEST_F(SetupProgramming, AFaultLeavesCancelOffAndThePointerOn) {
    FaultyExchange faulty;
    opened.exchange = &faulty;
    Program();
    const auto boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[1].Text, Unable);
    EXPECT_EQ(boxes[1].Title, "Program Settings");
    EXPECT_EQ(boxes[1].Icon, BoxIcon::Stop);
    EXPECT_EQ(boxes[1].Buttons, BoxButtons::Ok);
    EXPECT_FALSE(view.CancelEnabled);
    EXPECT_EQ(view.Shape, Pointer::Hourglass);
    EXPECT_EQ(opened.Busy(), False) << "the close box works";
    EXPECT_FALSE(view.Held);
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
}

TEST_F(SetupProgramming, AValueThatNoFieldHoldsIsToldSo) {
    controls.txtException = "1E300";
    const int requests = opened.console.Outside.Network.Count().Requests;
    Program();
    const auto boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[1].Text, Unable);
    EXPECT_EQ(boxes[1].Buttons, BoxButtons::Ok);
    EXPECT_EQ(opened.console.Outside.Network.Count().Requests, requests);
}

TEST_F(SetupProgramming, AFaultOnClosingKeepsTheDialog) {
    FaultyExchange faulty;
    opened.exchange = &faulty;
    EXPECT_FALSE(ProgramBeforeClosing(opened.Context()));
    ExpectBox(NotCompleted, "Program Settings", BoxIcon::Stop);
    ExpectReleased();
}

TEST_F(SetupProgramming, AValueThatDoesNotFitTheImageFails) {
    controls.Analog[0].txtLowRaw = "70000";
    const SetupControls before = controls;
    const Bytes image = opened.dialog.LoggerImage;
    Program();
    ExpectNotProgrammed(before, image);
}

// ----- the link

TEST_F(SetupProgramming, APortThatTheIdleLimitClosedIsOpenedAgain) {
    opened.console.Outside.Time.Run(301 * Second);
    ASSERT_FALSE(opened.console.Outside.Port.PortOpen());
    Program();
    ExpectProgrammed();
}

TEST_F(SetupProgramming, APortThatWillNotOpenAgainFails) {
    opened.console.Outside.Time.Run(301 * Second);
    opened.console.Outside.Port.Missing.insert(1);
    const SetupControls before = controls;
    Program();
    const auto boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 3U) << "question, the port's message, and the outcome";
    EXPECT_EQ(boxes.back().Text, NotCompleted);
    EXPECT_EQ(controls, before);
    ExpectReleased();
}

TEST_F(SetupProgramming, TheEndOfTheProgramEndsTheWait) {
    opened.Logger().Silence();
    opened.console.Outside.Time.In(300 * Millisecond,
                                   [&] { opened.console.State.LinkRecord.ShuttingDown = True; });
    const auto start = opened.console.Outside.Time.Now();
    Program();
    EXPECT_LT(opened.console.Outside.Time.Now() - start, 2 * Second);
    EXPECT_EQ(opened.TakeBoxes().size(), 1U) << "no box behind the end";
}

TEST_F(SetupProgramming, TakesNoLongerThanItsExchangesDemand) {
    simulator::Network& network = opened.console.Outside.Network;
    opened.console.Outside.Time.Run(5 * Second);
    network.LineBaud = 9600;
    network.ClearRecord();
    const simulator::Counters before = network.Count();
    const auto start = opened.console.Outside.Time.Now();
    Program();
    const auto took = opened.console.Outside.Time.Now() - start;
    ExpectProgrammed();
    const std::int64_t bytes = network.Count().BytesWritten - before.BytesWritten +
                               network.Count().BytesToConsole - before.BytesToConsole;
    const auto onTheLine = bytes * 10 * Second / network.LineBaud;
    const auto inBetween = Frames * (2 * network.AirDelay + network.LoggerDelay);
    const auto demanded = onTheLine + inBetween;
    std::cout << "programming at 9600 baud: " << bytes << " bytes and the pauses of " << Frames
              << " exchanges demand " << demanded / Millisecond << " ms, it took "
              << took / Millisecond << " ms\n";
    EXPECT_LE(took, demanded * 105 / 100);
    EXPECT_GE(took, onTheLine) << "the line itself takes that long";
}

}  // namespace
