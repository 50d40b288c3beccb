#ifndef ORVIA_PLATFORM_SHARED_ARCHIVE_H
#define ORVIA_PLATFORM_SHARED_ARCHIVE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/archive_store.h"
#include "platform/server_place.h"

/// How the hand-over to a shared archive stands.
enum class SharingState {
    Off,       ///< nothing is shared
    Begins,    ///< the server has not been asked yet
    Waits,     ///< the server answers, uploads wait for their turn
    Done,      ///< all is there
    Stuck,     ///< the server answers, and does not take what waits; the words tell
    ReadOnly,  ///< the server answers, but this user may only read
    Away       ///< the server cannot be reached
};

/// The same with all that can be told of it.
struct SharingStatus {
    SharingState State = SharingState::Off;
    std::optional<std::int64_t> Waiting = {};     ///< uploads that are not, or not all, there
    std::string Identity = {};                    ///< of the shared archive, once it is known
    ArchiveTrouble Kind = ArchiveTrouble::Other;  ///< of what went wrong last
    std::string Words = {};                       ///< the same
    bool operator==(const SharingStatus&) const = default;

    /// Whether the shared archive can be read.
    [[nodiscard]] bool Answers() const {
        return State == SharingState::Waits || State == SharingState::Done ||
               State == SharingState::Stuck || State == SharingState::ReadOnly;
    }
};

/// What came of a try to enter a shared archive.
struct SharingTrial {
    bool Good = false;                            ///< it can be read
    bool MayFile = false;                         ///< and written
    std::int64_t Loggers = 0;                     ///< that it has
    ArchiveTrouble Kind = ArchiveTrouble::Other;  ///< where it is not good
    std::string Words = {};                       ///< the same
    bool operator==(const SharingTrial&) const = default;
};

/// The archive that several consoles share on a server, and the hand-over to it, which goes on
/// beside everything else. Nothing here waits for the server, but for what is asked of Store.
class SharedArchive {
 public:
    virtual ~SharedArchive() = default;

    /// Why no archive can be shared with this program; nothing if one can.
    [[nodiscard]] virtual std::optional<std::string> WhyNot() const = 0;

    /// Hands over from now on. Without a password the user's own files are left to have it.
    /// `identity` is what the server's archive told of itself when it was last there, empty if
    /// that is not known: by it what waits can be counted while it is away.
    virtual void Share(const ServerPlace& place, const std::string& password,
                       const std::string& identity) = 0;
    /// No longer.
    virtual void Cease() = 0;
    [[nodiscard]] virtual SharingStatus Status() const = 0;
    /// Something was filed, or the server may be back: looks now.
    virtual void Look() = 0;
    /// Hands all over once more, which adds what is missing there.
    virtual void HandOverAgain() = 0;

    /// Tries a server; what came of it is told once. A later try takes the place of one that runs.
    virtual void Try(const ServerPlace& place, const std::string& password) = 0;
    [[nodiscard]] virtual std::optional<SharingTrial> Tried() = 0;
    /// Nobody waits for the try any more.
    virtual void ForgetTry() = 0;

    /// The shared archive for the caller's own use; null while nothing is shared. Another one
    /// whenever Share is called.
    [[nodiscard]] virtual std::shared_ptr<ArchiveStore> Store() const = 0;
};

#endif  // ORVIA_PLATFORM_SHARED_ARCHIVE_H
