#ifndef ORVIA_TESTS_ARCHIVE_STUMBLING_STORE_H
#define ORVIA_TESTS_ARCHIVE_STUMBLING_STORE_H

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/archive_store.h"

namespace testing_support {

/// A store in front of another one. Before and behind each call it asks whether to stumble.
class StumblingStore final : public ArchiveStore {
 public:
    enum class When { Before, Behind };
    /// Throws if the call is to go wrong.
    using Ask = std::function<void(const char* call, When when)>;

    Ask Stumble;

 private:
    void Tell(const char* call, When when) const {
        if (Stumble) {
            Stumble(call, when);
        }
    }
    template <typename Act>
    void Do(const char* call, Act act) {
        Tell(call, When::Before);
        act();
        Tell(call, When::Behind);
    }
    template <typename Act>
    auto Get(const char* call, Act act) {
        Tell(call, When::Before);
        auto result = act();
        Tell(call, When::Behind);
        return result;
    }

 public:
    explicit StumblingStore(ArchiveStore& inner) : inner_(inner) {}
    explicit StumblingStore(std::unique_ptr<ArchiveStore> inner)
        : owned_(std::move(inner)), inner_(*owned_) {}

    bool Exists() override { return inner_.Exists(); }
    void Open() override {
        Do("Open", [&] { inner_.Open(); });
    }
    bool IsOpen() const override { return inner_.IsOpen(); }
    void Close() noexcept override { inner_.Close(); }
    std::string Place() const override { return inner_.Place(); }
    std::int64_t Now() override { return inner_.Now(); }
    void Begin() override {
        Do("Begin", [&] { inner_.Begin(); });
    }
    void BeginReading() override {
        Do("BeginReading", [&] { inner_.BeginReading(); });
    }
    void Commit() override {
        Do("Commit", [&] { inner_.Commit(); });
    }
    void Rollback() noexcept override { inner_.Rollback(); }
    std::int64_t Stamp() override {
        return Get("Stamp", [&] { return inner_.Stamp(); });
    }
    std::vector<ArchiveLogger> Loggers() override {
        return Get("Loggers", [&] { return inner_.Loggers(); });
    }
    std::optional<ArchiveLogger> FindLogger(const std::array<std::uint8_t, 6>& mac) override {
        return Get("FindLogger", [&] { return inner_.FindLogger(mac); });
    }
    std::optional<ArchiveLogger> LoggerOf(std::int64_t id) override {
        return Get("LoggerOf", [&] { return inner_.LoggerOf(id); });
    }
    void AddLogger(ArchiveLogger& logger) override {
        Do("AddLogger", [&] { inner_.AddLogger(logger); });
    }
    void UpdateLogger(const ArchiveLogger& logger) override {
        Do("UpdateLogger", [&] { inner_.UpdateLogger(logger); });
    }
    void DeleteLogger(std::int64_t logger) override {
        Do("DeleteLogger", [&] { inner_.DeleteLogger(logger); });
    }
    std::vector<ArchiveSettings> SettingsOf(std::int64_t logger) override {
        return Get("SettingsOf", [&] { return inner_.SettingsOf(logger); });
    }
    void AddSettings(std::int64_t logger, ArchiveSettings& settings) override {
        Do("AddSettings", [&] { inner_.AddSettings(logger, settings); });
    }
    std::vector<ArchiveUpload> UploadsOf(std::int64_t logger) override {
        return Get("UploadsOf", [&] { return inner_.UploadsOf(logger); });
    }
    std::optional<std::int64_t> LastBegin(std::int64_t logger) override {
        return Get("LastBegin", [&] { return inner_.LastBegin(logger); });
    }
    std::vector<std::int64_t> UploadsBegunBehind(std::int64_t logger, std::int64_t begin) override {
        return Get("UploadsBegunBehind", [&] { return inner_.UploadsBegunBehind(logger, begin); });
    }
    void AddUpload(ArchiveUpload& upload) override {
        Do("AddUpload", [&] { inner_.AddUpload(upload); });
    }
    void UpdateUpload(const ArchiveUpload& upload) override {
        Do("UpdateUpload", [&] { inner_.UpdateUpload(upload); });
    }
    std::optional<ArchiveUpload> UploadFrom(std::int64_t logger,
                                            const std::string& origin) override {
        return Get("UploadFrom", [&] { return inner_.UploadFrom(logger, origin); });
    }
    void RecordsFrom(std::int64_t logger, std::int64_t place, int most,
                     std::vector<ArchiveRecord>& out) override {
        Do("RecordsFrom", [&] { inner_.RecordsFrom(logger, place, most, out); });
    }
    void RecordsAt(std::int64_t logger, std::uint32_t time,
                   std::vector<ArchiveRecord>& out) override {
        Do("RecordsAt", [&] { inner_.RecordsAt(logger, time, out); });
    }
    std::optional<ArchiveRecord> LastRecord(std::int64_t logger) override {
        return Get("LastRecord", [&] { return inner_.LastRecord(logger); });
    }
    std::optional<std::int64_t> PlaceBefore(std::int64_t logger, std::int64_t place) override {
        return Get("PlaceBefore", [&] { return inner_.PlaceBefore(logger, place); });
    }
    std::optional<ArchiveRange<std::uint32_t>> TimesOf(std::int64_t logger) override {
        return Get("TimesOf", [&] { return inner_.TimesOf(logger); });
    }
    std::optional<ArchiveRange<std::int64_t>> PlacesWithin(
        std::int64_t logger, const ArchiveRange<std::uint32_t>& times) override {
        return Get("PlacesWithin", [&] { return inner_.PlacesWithin(logger, times); });
    }
    void AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) override {
        Do("AddRecords", [&] { inner_.AddRecords(logger, records); });
    }
    void MoveRecord(std::int64_t logger, std::int64_t place, std::int64_t to,
                    std::int64_t upload) override {
        Do("MoveRecord", [&] { inner_.MoveRecord(logger, place, to, upload); });
    }
    void OpenRoom(std::int64_t logger, std::int64_t place, std::int64_t by) override {
        Do("OpenRoom", [&] { inner_.OpenRoom(logger, place, by); });
    }
    int DeleteRecords(std::int64_t logger, int most) override {
        return Get("DeleteRecords", [&] { return inner_.DeleteRecords(logger, most); });
    }
    std::string Identity() override {
        return Get("Identity", [&] { return inner_.Identity(); });
    }
    std::vector<ArchiveUpload> UploadsOwed(const std::string& target, int most) override {
        return Get("UploadsOwed", [&] { return inner_.UploadsOwed(target, most); });
    }
    std::int64_t CountOwed(const std::string& target) override {
        return Get("CountOwed", [&] { return inner_.CountOwed(target); });
    }
    void NoteHandedOver(const std::string& target, const ArchiveUpload& upload) override {
        Do("NoteHandedOver", [&] { inner_.NoteHandedOver(target, upload); });
    }
    void ForgetHandedOver(const std::string& target) override {
        Do("ForgetHandedOver", [&] { inner_.ForgetHandedOver(target); });
    }
    void RecordsOfUpload(const ArchiveUpload& upload, std::int64_t place, int most,
                         std::vector<ArchiveRecord>& out) override {
        Do("RecordsOfUpload", [&] { inner_.RecordsOfUpload(upload, place, most, out); });
    }
    std::vector<ArchiveRound> Rounds(int most) override {
        return Get("Rounds", [&] { return inner_.Rounds(most); });
    }
    void KeepRound(ArchiveRound& round) override {
        Do("KeepRound", [&] { inner_.KeepRound(round); });
    }
    void DropRounds(std::int64_t before) override {
        Do("DropRounds", [&] { inner_.DropRounds(before); });
    }
    void BackUp(const std::string& path, const Meanwhile& meanwhile) override {
        Do("BackUp", [&] { inner_.BackUp(path, meanwhile); });
    }
    std::vector<std::string> Check(const Meanwhile& meanwhile) override {
        return Get("Check", [&] { return inner_.Check(meanwhile); });
    }
    std::int64_t SizeInBytes() override {
        return Get("SizeInBytes", [&] { return inner_.SizeInBytes(); });
    }

 private:
    const std::unique_ptr<ArchiveStore> owned_;
    ArchiveStore& inner_;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_STUMBLING_STORE_H
