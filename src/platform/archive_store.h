#ifndef ORVIA_PLATFORM_ARCHIVE_STORE_H
#define ORVIA_PLATFORM_ARCHIVE_STORE_H

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/bytes.h"
#include "common/fault.h"

// Where uploaded records are kept, as plain rows and the few things done with them. It knows no
// rule: which record is new and where it stands is decided above it, alike for every store.
// docs/archive.md has the tables.

/// Why an archive, or what was asked of it, is not to be had.
enum class ArchiveTrouble {
    NoFolder,  ///< its folder is missing and cannot be made, or the file cannot be made in it
    ReadOnly,  ///< it may not be written
    Locked,    ///< another program holds it; it may be free a moment later
    Full,      ///< it takes no more: the disk is full
    Foreign,   ///< what stands there is no archive
    Damaged,   ///< it is an archive no longer: cut off, or its inside does not hold together
    Newer,     ///< a newer console made it
    Gone,      ///< what was worked on has been deleted meanwhile
    Away,      ///< its server cannot be reached, or the connection was lost; Open connects anew
    Refused,   ///< its server does not let this user in, or not with this password
    Other      ///< the words tell
};

/// A store that cannot do what it was asked.
class ArchiveFault : public Fault {
 public:
    ArchiveFault(ArchiveTrouble kind, const std::string& words) : Fault(words), kind_(kind) {}

    [[nodiscard]] ArchiveTrouble Kind() const { return kind_; }

 private:
    ArchiveTrouble kind_;
};

/// A logger, known by the address of its radio.
struct ArchiveLogger {
    std::int64_t Id = 0;
    std::array<std::uint8_t, 6> Mac = {};
    std::string Name = {};      ///< the one it was last uploaded under
    std::int64_t Records = 0;   ///< in its series
    std::int64_t Uploads = 0;   ///< filed so far
    std::int64_t Revision = 0;  ///< grows with every change of its series
    bool operator==(const ArchiveLogger&) const = default;
};

/// A point of a rating table.
struct ArchivePoint {
    double Level = 0;
    double Flow = 0;
    bool operator==(const ArchivePoint&) const = default;
};

/// What records are read with: the image of the logger's settings, what is needed to decode it, and
/// what the console had found out about its flow device.
struct ArchiveSettings {
    std::int64_t Id = 0;
    Bytes Image;
    std::int32_t Firmware = 0;
    std::int32_t AnalogChannels = 0;
    std::int32_t PulseChannels = 0;
    std::int32_t SampleOnDemand = 0;  ///< 1 if the logger offers it
    std::int32_t FlowDecimals = 0;
    std::int32_t VelocityDecimals = 0;
    double EquationOffset = 0;
    double EquationExponent = 0;
    double EquationMultiplier = 0;
    std::string DeviceName;
    std::vector<ArchivePoint> Points;
    bool operator==(const ArchiveSettings&) const = default;
};

/// How an upload ended.
enum class ArchiveOutcome { Complete, Stopped, Failed };

/// One upload of a logger. Times are milliseconds since 1970, UTC.
struct ArchiveUpload {
    std::int64_t Id = 0;
    std::int64_t Logger = 0;
    std::int64_t Begin = 0;                      ///< no two uploads of a logger have the same
    std::optional<std::int64_t> End = {};        ///< none: it was killed, or runs still
    std::optional<ArchiveOutcome> Outcome = {};  ///< there is one if there is an end
    std::int32_t Firmware = 0;
    std::string Name = {};      ///< of the logger at that time
    std::int64_t Settings = 0;  ///< which of the logger's settings its records are read with
    std::int64_t Said = 0;      ///< records that the logger said it has
    std::int64_t Received = 0;  ///< records that came, known ones too
    std::string Origin = {};    ///< names it among all archives if another one handed it over
    bool operator==(const ArchiveUpload&) const = default;
};

/// A round that collected from many loggers by itself. Times are milliseconds since 1970, UTC.
struct ArchiveRound {
    std::int64_t Id = 0;
    std::int64_t Begin = 0;
    std::optional<std::int64_t> End = {};  ///< none: it runs still, or was killed
    std::int64_t Loggers = 0;              ///< that had their turn
    std::int64_t Done = 0;                 ///< those of which all came
    std::string Log = {};
    std::string Digest = {};  ///< what needs a person; empty if nothing does
    bool operator==(const ArchiveRound&) const = default;
};

/// A record of a series.
struct ArchiveRecord {
    static constexpr std::size_t Channels = 10;

    std::int64_t Place = 0;  ///< orders the series, from 1; there is room between some
    std::uint32_t Time = 0;  ///< packed; orders as time does
    std::array<std::uint16_t, Channels> Counts = {};
    std::int32_t Nth = 1;     ///< which of the records alike within one upload, from 1
    std::int64_t Upload = 0;  ///< the one that read it first
    bool operator==(const ArchiveRecord&) const = default;
};

/// The first and the last of a range of places or times.
template <typename T>
struct ArchiveRange {
    T First = 0;
    T Last = 0;
    bool operator==(const ArchiveRange&) const = default;
};

/// The archive. Every procedure but Exists, Open, IsOpen, Close and Now needs it open, and all may
/// throw an ArchiveFault. None keeps its caller waiting for longer than a moment, but for BackUp
/// and Check.
class ArchiveStore {
 public:
    virtual ~ArchiveStore() = default;

    /// Whether it has been made.
    [[nodiscard]] virtual bool Exists() = 0;
    /// Makes it ready; the first time of all, it is made. Does nothing if it is open.
    virtual void Open() = 0;
    [[nodiscard]] virtual bool IsOpen() const = 0;
    virtual void Close() noexcept = 0;
    /// Where it is, in words that an operator understands.
    [[nodiscard]] virtual std::string Place() const = 0;
    /// Milliseconds since 1970, UTC, by the clock that all who share this archive go by.
    [[nodiscard]] virtual std::int64_t Now() = 0;

    // What is written between Begin and Commit is there as a whole or not at all, whatever happens.
    // Only one at a time works on a logger: whoever else looks for it, or begins, finds it Locked.
    // What is read between BeginReading and Commit is one state of the archive.
    virtual void Begin() = 0;
    virtual void BeginReading() = 0;
    virtual void Commit() = 0;
    /// Takes everything back since Begin, if there was one.
    virtual void Rollback() noexcept = 0;

    /// Differs from what it was before as soon as anything has been changed, by whomever. Outside
    /// of a transaction.
    [[nodiscard]] virtual std::int64_t Stamp() = 0;

    // Loggers. Those that are added get their Id.
    [[nodiscard]] virtual std::vector<ArchiveLogger> Loggers() = 0;  ///< by name
    [[nodiscard]] virtual std::optional<ArchiveLogger> FindLogger(
        const std::array<std::uint8_t, 6>& mac) = 0;
    [[nodiscard]] virtual std::optional<ArchiveLogger> LoggerOf(std::int64_t id) = 0;
    virtual void AddLogger(ArchiveLogger& logger) = 0;
    virtual void UpdateLogger(const ArchiveLogger& logger) = 0;
    /// Deletes it with its settings and uploads; its records must be gone.
    virtual void DeleteLogger(std::int64_t logger) = 0;

    // Settings.
    [[nodiscard]] virtual std::vector<ArchiveSettings> SettingsOf(std::int64_t logger) = 0;
    virtual void AddSettings(std::int64_t logger, ArchiveSettings& settings) = 0;

    // Uploads.
    /// All of a logger, by their begin.
    [[nodiscard]] virtual std::vector<ArchiveUpload> UploadsOf(std::int64_t logger) = 0;
    /// The begin of the newest; nothing if there is none.
    [[nodiscard]] virtual std::optional<std::int64_t> LastBegin(std::int64_t logger) = 0;
    /// Those that began later than that.
    [[nodiscard]] virtual std::vector<std::int64_t> UploadsBegunBehind(std::int64_t logger,
                                                                       std::int64_t begin) = 0;
    virtual void AddUpload(ArchiveUpload& upload) = 0;
    /// Keeps its end, outcome and records received; Gone if it was deleted.
    virtual void UpdateUpload(const ArchiveUpload& upload) = 0;
    /// That of a logger which was handed over under this name.
    [[nodiscard]] virtual std::optional<ArchiveUpload> UploadFrom(std::int64_t logger,
                                                                  const std::string& origin) = 0;

    // Records of a logger. What is read comes behind what `out` holds.
    /// Up to `most`, in order, from the first that stands at `place` or behind it.
    virtual void RecordsFrom(std::int64_t logger, std::int64_t place, int most,
                             std::vector<ArchiveRecord>& out) = 0;
    virtual void RecordsAt(std::int64_t logger, std::uint32_t time,
                           std::vector<ArchiveRecord>& out) = 0;
    [[nodiscard]] virtual std::optional<ArchiveRecord> LastRecord(std::int64_t logger) = 0;
    /// The place of the last that stands before `place`.
    [[nodiscard]] virtual std::optional<std::int64_t> PlaceBefore(std::int64_t logger,
                                                                  std::int64_t place) = 0;
    /// The least and the greatest time of all.
    [[nodiscard]] virtual std::optional<ArchiveRange<std::uint32_t>> TimesOf(
        std::int64_t logger) = 0;
    /// The first and the last place of those whose time lies in the range.
    [[nodiscard]] virtual std::optional<ArchiveRange<std::int64_t>> PlacesWithin(
        std::int64_t logger, const ArchiveRange<std::uint32_t>& times) = 0;
    virtual void AddRecords(std::int64_t logger, std::span<const ArchiveRecord> records) = 0;
    /// Gives the record at `place` another place, which is free, and another first reader.
    virtual void MoveRecord(std::int64_t logger, std::int64_t place, std::int64_t to,
                            std::int64_t upload) = 0;
    /// Moves all that stand behind `place`, 0 or more, back by `by`.
    virtual void OpenRoom(std::int64_t logger, std::int64_t place, std::int64_t by) = 0;
    /// Deletes up to `most` of them; how many it were.
    virtual int DeleteRecords(std::int64_t logger, int most) = 0;

    // Handing over to another archive, which is known by its Identity.
    /// Names this archive among all; it keeps that name wherever it is copied to.
    [[nodiscard]] virtual std::string Identity() = 0;
    /// Up to `most` uploads of which more is here than was noted to be there, by their begin.
    [[nodiscard]] virtual std::vector<ArchiveUpload> UploadsOwed(const std::string& target,
                                                                 int most) = 0;
    /// How many those are.
    [[nodiscard]] virtual std::int64_t CountOwed(const std::string& target) = 0;
    /// Notes that `upload`, with the end and the records it has there, has been handed over.
    virtual void NoteHandedOver(const std::string& target, const ArchiveUpload& upload) = 0;
    /// Forgets what was noted, so that all is handed over again.
    virtual void ForgetHandedOver(const std::string& target) = 0;
    /// Up to `most` records that this upload was the first to read, in their order, from the first
    /// that stands at `place` or behind it. What is read comes behind what `out` holds.
    virtual void RecordsOfUpload(const ArchiveUpload& upload, std::int64_t place, int most,
                                 std::vector<ArchiveRecord>& out) = 0;

    // Rounds.
    /// The newest first.
    [[nodiscard]] virtual std::vector<ArchiveRound> Rounds(int most) = 0;
    /// Adds it, which gives it its Id, or keeps what has changed in it.
    virtual void KeepRound(ArchiveRound& round) = 0;
    /// Deletes those that began before that.
    virtual void DropRounds(std::int64_t before) = 0;

    // Care. These may take long, and may be called on a thread of their own while the archive is in
    // use; `meanwhile` is called there some times a second until they are done.
    using Meanwhile = std::function<void()>;
    /// Writes a copy of all of it, as it is at one moment, to a file that is not there yet.
    virtual void BackUp(const std::string& path, const Meanwhile& meanwhile) = 0;
    /// What is wrong with it, a line each; nothing if it holds together.
    [[nodiscard]] virtual std::vector<std::string> Check(const Meanwhile& meanwhile) = 0;
    /// What it takes on the disk.
    [[nodiscard]] virtual std::int64_t SizeInBytes() = 0;
};

#endif  // ORVIA_PLATFORM_ARCHIVE_STORE_H
