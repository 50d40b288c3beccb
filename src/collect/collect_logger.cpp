#include "collect/collect_logger.h"

#include <algorithm>
#include <exception>

#include "archive/archive_rows.h"
#include "collect/collect_words.h"
#include "collect/noted_boxes.h"
#include "common/number_text.h"
#include "console/logger_orders.h"
#include "history/upload.h"
#include "logger/commands.h"

namespace {

/// The upload without its dialog: it is acknowledged when it is complete, and stopped from outside.
class QuietUpload final : public UploadView {
 public:
    explicit QuietUpload(const CollectWatch& watch) : watch_(watch) {}

    [[nodiscard]] std::string Tag() const override {
        return tag_ == TagRunning && watch_.stopWanted() ? TagCancel : tag_;
    }
    void SetTag(const std::string& tag) override { tag_ = tag; }
    void SetBarMaximum(std::int32_t maximum) override { watch_.progress.Expect(maximum); }
    void SetBarValue(std::int32_t value) override { watch_.progress.Came(value); }
    void SetRetries(const std::string& /*text*/) override {}
    void SetProgress(const std::string& /*text*/) override {}
    void AllowOkay() override { tag_ = TagOkay; }
    void Hide() override {}

 private:
    const CollectWatch& watch_;
    std::string tag_ = TagStarting;
};

/// Hands the upload to the archive, and keeps how it ended.
class FollowedUpload final : public UploadListener {
 public:
    explicit FollowedUpload(UploadFiler& filer) : filer_(filer) {}

    void Began(const UploadStart& start) override { filer_.Began(start); }
    void Took(std::span<const HistoryRecord> records) override { filer_.Took(records); }
    void Ended(UploadOutcome outcome) override {
        outcome_ = outcome;
        filer_.Ended(outcome);
    }
    void Settle() override {}

    [[nodiscard]] UploadOutcome Outcome() const { return outcome_; }

 private:
    UploadFiler& filer_;
    UploadOutcome outcome_ = UploadOutcome::Failed;
};

class Collection {
 public:
    Collection(const CollectContext& context, const Target& target, const CollectChoice& choice,
               const CollectWatch& watch)
        : context_(context), target_(target), choice_(choice), watch_(watch) {}

    [[nodiscard]] CollectedLogger Run() {
        result_.Name = NameOf(target_);
        if (!target_.Radio) {
            result_.Outcome = CollectOutcome::NoEntry;
            return result_;
        }
        result_.Mac = target_.Radio->Mac;
        const DivertedBoxes::Diversion diversion(context_.windowBoxes, noted_);
        watch_.progress.Begin(InOneLine(result_.Name));
        if (LetOthersPass()) {
            Reach();
        } else {
            result_.Outcome = CollectOutcome::Stopped;
        }
        watch_.progress.End();
        Tell();
        return result_;
    }

 private:
    [[nodiscard]] OperationStatus& Status() const { return quiet_.radio.status; }
    [[nodiscard]] bool Ending() const { return quiet_.radio.link.ShuttingDown != False; }

    /// What another logger was asked in vain may be on its way still.
    [[nodiscard]] bool LetOthersPass() const {
        if (context_.late.MayCome()) {
            Status().Doing("Letting late answers pass");
        }
        return context_.late.LetPass(quiet_.radio.link, watch_.stopWanted);
    }

    /// A fault ends what is under way as its failure does.
    void Reach() {
        try {
            ForgetTuning();
            if (!SelectRadioOf(quiet_, target_)) {
                Fail(CollectOutcome::NotTuned);
            } else if (!ReadStatus() || !ReadClock()) {
                Fail(CollectOutcome::NoAnswer);
            } else if (target_.Window->SettingsValid() == False &&
                       !ReadSettingsOf(quiet_, target_)) {
                Fail(CollectOutcome::NoSettings);
            } else {
                UploadAll();
                SetClock();
            }
        } catch (const Fault&) {
            Fail(CollectOutcome::NoAnswer);
        }
    }

    /// What the radio was last told is what it last echoed: behind an echo that was lost it stands
    /// on another logger than that. Where nobody looks on, and records go into the archive under a
    /// name, it is told anew each time.
    void ForgetTuning() {
        Link& link = quiet_.radio.link;
        if (link.CommBusy == False) {
            link.CurrentChannel = UnknownChannel;
            link.CurrentMAC.fill(0xFF);
        }
    }

    void Fail(CollectOutcome outcome) {
        result_.Outcome = Ending() || watch_.stopWanted() ? CollectOutcome::Stopped : outcome;
    }

    [[nodiscard]] bool ReadStatus() {
        Status().Doing("Reading status of " + NameOf(target_));
        const bool answered = target_.Window->GetStatus();
        result_.Said = answered ? target_.Window->NumSamples() : 0;
        return answered;
    }

    /// One that cannot be read in some tries stays unknown: its logger has answered before.
    [[nodiscard]] bool ReadClock() {
        constexpr int Tries = 3;
        for (int i = 0; i < Tries && !Ending(); ++i) {
            if (const auto clock = cmd::ReadLoggerClock(quiet_.exchange)) {
                result_.ClockAhead = MomentOf(*clock) - MomentOf(quiet_.clock.Now());
                return true;
            }
        }
        return !Ending();
    }

    void UploadAll() {
        if (result_.Said == 0) {
            result_.Outcome = CollectOutcome::Done;
            return;
        }
        target_.Window->ClientSetGlobalState();
        Status().Doing("Collecting history of " + NameOf(target_));
        const std::optional<Moment> known = NewestKept();
        FollowedUpload followed(context_.filer);
        followed.Began({.Mac = target_.Radio->Mac,
                        .Name = target_.Radio->Name,
                        .Logger = static_cast<const LoggerRecord&>(quiet_.global),
                        .Table = target_.Window->FlowPoints(),
                        .Records = static_cast<std::int32_t>(result_.Said)});
        RunQuietly(followed);
        result_.NotKept = context_.filer.SettleInWords();
        result_.Received = context_.history.HistoryCount();
        result_.New = context_.filer.NewRecords();
        result_.Outcome = OutcomeOf(followed.Outcome());
        result_.Findings = FindingsOf(context_.history.Records(), quiet_.global, known);
    }

    void RunQuietly(FollowedUpload& followed) {
        // What these boxes say is told by the line of the logger.
        std::vector<std::string> unheard;
        NotedBoxes mute(unheard);
        QuietUpload view(watch_);
        RunUpload({.link = quiet_.radio.link,
                   .exchange = quiet_.exchange,
                   .global = quiet_.global,
                   .store = context_.history,
                   .boxes = mute,
                   .listener = &followed,
                   .toTheEnd = true},
                  view, static_cast<std::int32_t>(result_.Said));
    }

    [[nodiscard]] CollectOutcome OutcomeOf(UploadOutcome outcome) const {
        if (outcome == UploadOutcome::Complete) {
            return CollectOutcome::Done;
        }
        if (outcome == UploadOutcome::Stopped) {
            return context_.history.IsFull() ? CollectOutcome::Full : CollectOutcome::Stopped;
        }
        return Ending() ? CollectOutcome::Stopped : CollectOutcome::BrokeOff;
    }

    /// Time of the newest record that the archive has of the logger, as far as it can be had.
    [[nodiscard]] std::optional<Moment> NewestKept() const {
        ArchiveStore& store = context_.archive;
        try {
            if (!store.Exists()) {
                return std::nullopt;
            }
            store.Open();
            const auto logger = store.FindLogger(target_.Radio->Mac);
            const auto last = logger ? store.LastRecord(logger->Id) : std::nullopt;
            return last ? std::optional(MomentOf(PackedTimeOf(last->Time))) : std::nullopt;
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }

    void SetClock() {
        const bool reached =
            result_.Outcome == CollectOutcome::Done || result_.Outcome == CollectOutcome::Full;
        if (choice_.SyncTime && reached && !watch_.stopWanted() && !Ending()) {
            result_.ClockSet = SyncTimeOf(quiet_, target_);
        }
    }

    void Tell() const {
        Status().Came(result_.Outcome == CollectOutcome::NoAnswer
                          ? NameOf(target_) + " did not answer"
                          : "History of " + NameOf(target_) + ": " + ResultText(result_),
                      result_.IsDone());
    }

    const CollectContext& context_;
    const Target& target_;
    const CollectChoice& choice_;
    const CollectWatch& watch_;
    CollectedLogger result_;
    NotedBoxes noted_{result_.Told};
    const OperationContext quiet_ = WithBoxes(context_.operation, noted_);
};

}  // namespace

CollectedLogger CollectFrom(const CollectContext& context, const Target& target,
                            const CollectChoice& choice, const CollectWatch& watch) {
    return Collection(context, target, choice, watch).Run();
}
