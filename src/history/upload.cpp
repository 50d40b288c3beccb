#include "history/upload.h"

#include <algorithm>
#include <array>

#include "common/fault.h"
#include "common/number_text.h"
#include "history/block_sequence.h"
#include "link/port.h"

namespace {

constexpr std::uint8_t HistoryCommand = 0x0D;
/// Payload of a reply: the count of records, then the records, then padding.
constexpr std::size_t BlockSize = 241;
constexpr int BlockRoom = 240;
constexpr int FirstRecord = 1;

/// Failed exchanges in a row that are repeated.
constexpr int MostRetries = 100;
/// Pause after a failed exchange.
constexpr std::int16_t FailurePause = 5;

enum class Round { GoesOn, Complete, Failed, Full };

/// Hands the listener what is stored while it lives, a fault between or not.
class Reporter {
 public:
    explicit Reporter(const UploadContext& context)
        : context_(context), before_(context.store.Records().size()) {}
    ~Reporter() {
        const auto records = context_.store.Records();
        if (context_.listener != nullptr && records.size() > before_) {
            context_.listener->Took(records.subspan(before_));
        }
    }
    Reporter(const Reporter&) = delete;
    Reporter& operator=(const Reporter&) = delete;

 private:
    const UploadContext& context_;
    const std::size_t before_;
};

class Upload {
 public:
    Upload(const UploadContext& context, UploadView& view, std::int32_t totalRecords)
        : context_(context),
          view_(view),
          totalRecords_(totalRecords),
          channels_(context.global.NumAnalogChannels + context.global.NumDigitalChannels),
          maxPerBlock_(context.toTheEnd ? RecordsThatFit(channels_) : MaxPerBlock(channels_)) {}

    /// Leaves the dialog to be hidden.
    void Run() {
        ShowStart();
        Round round = Round::GoesOn;
        while (round == Round::GoesOn) {
            round = RunRound();
            if (ShuttingDown()) {
                Report(UploadOutcome::Stopped);
                return;
            }
            if (round == Round::GoesOn && view_.Tag() != TagRunning) {
                Report(UploadOutcome::Stopped);
                TellOutcome("Retrieval cancelled by user.", BoxIcon::Information);
                return;
            }
        }
        End(round);
    }

 private:
    [[nodiscard]] std::int32_t Count() const { return context_.store.HistoryCount(); }
    [[nodiscard]] bool ShuttingDown() const { return context_.link.ShuttingDown != False; }

    void ShowStart() {
        view_.SetBarMaximum(totalRecords_);
        view_.SetBarValue(0);
        view_.SetRetries("");
        ShowCount();
    }

    void ShowCount() { view_.SetProgress(IntegerToText(Count()) + " records"); }

    [[nodiscard]] Round RunRound() {
        if (!ExchangeBlock()) {
            return Fail();
        }
        const int count = block_.front();
        if (count > maxPerBlock_) {
            return Round::Failed;
        }
        const BlockKind kind = sequence_.Judge(block_, count, channels_, context_.store.Records());
        if (kind == BlockKind::Stale) {
            return Fail();
        }
        retries_ = 0;
        return kind == BlockKind::New ? TakeBlock(count) : Round::GoesOn;
    }

    [[nodiscard]] bool ExchangeBlock() {
        const std::array<std::uint8_t, 2> request = {HistoryCommand,
                                                     static_cast<std::uint8_t>(sequence_.Wanted())};
        std::int16_t noRepeats = 0;
        const bool acknowledged = context_.exchange.SendFrame(request, noRepeats);
        sequence_.Asked(acknowledged);
        if (acknowledged && context_.exchange.ReceiveFrame(block_)) {
            return true;
        }
        sequence_.Failed();
        return false;
    }

    [[nodiscard]] Round Fail() {
        ++retries_;
        ++totalRetries_;
        if (retries_ > MostRetries) {
            return Round::Failed;
        }
        view_.SetRetries(IntegerToText(totalRetries_) + " retries");
        comm::Pause(context_.link, FailurePause);
        return Round::GoesOn;
    }

    /// Stores the records of a new block. A block whose count overruns it is a Fault, behind the
    /// last record that lies whole inside.
    [[nodiscard]] Round TakeBlock(int count) {
        const Reporter reporter(context_);
        for (int i = 0; i < count; ++i) {
            context_.store.Append(
                ReadRecord(block_, FirstRecord + i * RecordSize(channels_), channels_));
            if (context_.store.IsFull()) {
                return Round::Full;
            }
        }
        if (count == 0) {
            return Round::Complete;
        }
        view_.SetBarMaximum(std::max(totalRecords_, Count()));
        view_.SetBarValue(Count());
        ShowCount();
        // A short block is the last one.
        return count < maxPerBlock_ ? Round::Complete : Round::GoesOn;
    }

    void End(Round round) {
        Report(round == Round::Complete ? UploadOutcome::Complete
               : round == Round::Full   ? UploadOutcome::Stopped
                                        : UploadOutcome::Failed);
        if (round == Round::Complete) {
            AwaitOkay();
        } else if (round == Round::Full) {
            ShowCount();
            context_.boxes.Show({.Text = "History buffer full: upload terminated.",
                                 .Title = GetHistoryTitle,
                                 .Icon = BoxIcon::Information});
            view_.SetTag(TagCancel);
        } else {
            TellOutcome("Error during retrieval.", BoxIcon::Stop);
        }
    }

    void Report(UploadOutcome outcome) const {
        if (context_.listener != nullptr) {
            context_.listener->Ended(outcome);
        }
    }

    void AwaitOkay() {
        view_.AllowOkay();
        view_.SetProgress("Upload complete: " + IntegerToText(Count()) + " records uploaded.");
        while (view_.Tag() == TagRunning && !ShuttingDown()) {
            context_.link.Events.WaitForMoreEvents();
        }
    }

    void TellOutcome(const std::string& what, BoxIcon icon) {
        context_.boxes.Show({.Text = what + " Received " + IntegerToText(Count()) + " records of " +
                                     IntegerToText(totalRecords_) + " records.",
                             .Title = GetHistoryTitle,
                             .Icon = icon});
    }

    const UploadContext& context_;
    UploadView& view_;
    const std::int32_t totalRecords_;
    const int channels_;
    const int maxPerBlock_;
    BlockSequence sequence_;
    Bytes block_ = Bytes(BlockSize);
    int retries_ = 0;
    int totalRetries_ = 0;
};

}  // namespace

int MaxPerBlock(int channels) {
    return static_cast<int>(RoundTiesToEven(static_cast<double>(BlockRoom) / RecordSize(channels)));
}

int RecordsThatFit(int channels) {
    return BlockRoom / RecordSize(channels);
}

void RunUpload(const UploadContext& context, UploadView& view, std::int32_t totalRecords) {
    if (view.Tag() != TagStarting) {
        return;
    }
    view.SetTag(TagRunning);
    context.store.Clear();
    try {
        Upload(context, view, totalRecords).Run();
    } catch (const Fault&) {
        // What came before it is kept; the dialog stays "Running", which shows nothing of it.
        if (context.listener != nullptr) {
            context.listener->Ended(UploadOutcome::Failed);
        }
        view.SetTag(TagRunning);
    }
    view.Hide();
}
