#ifndef ORVIA_PLATFORM_HOST_H
#define ORVIA_PLATFORM_HOST_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/bytes.h"
#include "platform/archive_store.h"
#include "platform/port_inquiry.h"

// All that the console needs from outside, one small class each. platform/qt/ realises them on a
// desktop, tests/support/ on a clock that jumps from event to event.

/// The one serial port. Nothing here waits. A port that is not open holds no bytes and takes
/// none: a device that vanished is a closed port.
class SerialPort {
 public:
    virtual ~SerialPort() = default;

    /// Number of the port, 1 to 16. Setting it or the settings of an open port is a Fault.
    [[nodiscard]] virtual int CommPort() const = 0;
    virtual void SetCommPort(int number) = 0;

    /// Baud rate, parity, data bits and stop bits, as "38400,N,8,1".
    [[nodiscard]] virtual std::string Settings() const = 0;
    virtual void SetSettings(const std::string& settings) = 0;

    [[nodiscard]] virtual bool PortOpen() const = 0;
    /// Opens or closes; a port that will not open is a Fault.
    virtual void SetPortOpen(bool open) = 0;

    /// Raises or drops DTR; a device without that line ignores it.
    virtual void SetDTREnable(bool enable) = 0;

    /// Tells that whoever waits can do nothing with fewer than so many further bytes: until most of
    /// them can be in, or a tick looks for them, no event need tell of one. A hint, which a port
    /// may ignore.
    virtual void Expect(int count) { static_cast<void>(count); }

    /// Number of received bytes waiting.
    [[nodiscard]] virtual int InBufferCount() const = 0;
    /// Throws all received bytes away.
    virtual void ClearInBuffer() = 0;

    /// Takes received bytes out: one if `InputLen` is 1, all that wait if it is 0. Empty when
    /// nothing waits.
    [[nodiscard]] virtual Bytes Input(int InputLen) = 0;
    /// Sends the bytes, in the background.
    virtual void Output(std::span<const std::uint8_t> bytes) = 0;

    /// Takes in what has come of bytes that are expected together, and closes a port whose device
    /// is gone without having said so. Called on every tick.
    virtual void LookForHangUp() = 0;
};

/// Runs the events of the one user-interface thread from inside a wait. Timers, clicks and bytes
/// are such events; it knows no time of its own, so a wait lasts as long as what the events it runs
/// say.
class EventPump {
 public:
    virtual ~EventPump() = default;

    /// Handles what is pending and returns at once.
    virtual void RunPendingEvents() = 0;
    /// Sleeps until an event arrives (a byte, a tick, a click), then handles what is pending.
    virtual void WaitForMoreEvents() = 0;
};

/// The picture beside a box's text; Exclamation is the warning.
enum class BoxIcon { None, Stop, Exclamation, Information, Question };
/// The buttons of a box.
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
/// The button that closed a box.
enum class BoxAnswer { Ok, Cancel, Yes, No };

/// A modal message box.
struct BoxContent {
    std::string Text;
    std::string Title;  ///< an empty title stays empty
    BoxIcon Icon = BoxIcon::None;
    BoxButtons Buttons = BoxButtons::Ok;
    std::string Details = {};  ///< stands below the text, if there is more to say
};

/// What closing a box by its frame means: Cancel where that button is there, else No, else Ok.
[[nodiscard]] constexpr BoxAnswer AnswerOfClosedBox(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::OkCancel:
        case BoxButtons::YesNoCancel:
            return BoxAnswer::Cancel;
        case BoxButtons::YesNo:
            return BoxAnswer::No;
        default:
            return BoxAnswer::Ok;
    }
}

/// Asks and tells the operator. Events run while a box stands.
class MessageBoxes {
 public:
    virtual ~MessageBoxes() = default;

    /// Shows the box and returns the button that closed it.
    virtual BoxAnswer Show(const BoxContent& box) = 0;
};

/// What a common file dialog starts with.
struct FileQuery {
    std::string Title;
    std::string DefaultExtension;  ///< with its full stop
    std::string Filter;            ///< as "Setup Files (*.set)|*.set"
    std::string InitialName;       ///< path, its last part may be a pattern
};

/// The system's dialogs for files. Events run while one stands.
class FileDialogs {
 public:
    virtual ~FileDialogs() = default;

    /// Path of an existing file; nothing when cancelled.
    virtual std::optional<std::string> PickExisting(const FileQuery& query) = 0;
    /// Path for a file that can be written, in an existing folder; nothing when cancelled. What
    /// cannot is refused by the dialog, which tells why and stays. Asks about overwriting only with
    /// `promptOverwrite`.
    virtual std::optional<std::string> PickForSaving(const FileQuery& query,
                                                     bool promptOverwrite) = 0;
};

/// Per-user texts by section and key, under the application key "Orvia".
class SettingsStore {
 public:
    virtual ~SettingsStore() = default;

    /// The stored text, nothing when the key is absent.
    [[nodiscard]] virtual std::optional<std::string> Read(const std::string& section,
                                                          const std::string& key) const = 0;
    virtual void Write(const std::string& section, const std::string& key,
                       const std::string& value) = 0;
};

/// A moment of the local clock.
struct LocalTime {
    int Year = 2000;
    int Month = 1;  ///< 1 to 12
    int Day = 1;    ///< 1 to 31
    int Hour = 0;   ///< 0 to 23
    int Minute = 0;
    int Second = 0;
    int Millisecond = 0;
};

/// The local clock, and how the system writes a moment.
class SystemClock {
 public:
    virtual ~SystemClock() = default;

    [[nodiscard]] virtual LocalTime Now() const = 0;
    /// The date as the system shows a date in its short form. A date that is none (day 31 of
    /// February) rolls on into the next month.
    [[nodiscard]] virtual std::string DateText(const LocalTime& time) const = 0;
    /// The time of day as the system shows a time.
    [[nodiscard]] virtual std::string TimeText(const LocalTime& time) const = 0;
};

/// Whatever shows help files on this system; it runs beside the program.
class HelpViewer {
 public:
    virtual ~HelpViewer() = default;

    /// Opens a help file at its table of contents, or at the page that HelpTopic() has named.
    virtual void Open(const std::string& path) = 0;
};

/// Family of operating systems that keeps its ports where NT does.
inline constexpr std::int32_t PlatformNt = 2;

/// The branch of the system's registry for the local machine, from which the list of serial ports
/// is read; elsewhere what stands in for it. Nothing here shows a message or faults.
class Registry {
 public:
    /// Room for a value or the name of a key; a longer one cannot be read.
    static constexpr int BufferLength = 256;

    using Key = std::uintptr_t;

    virtual ~Registry() = default;

    /// Family of the operating system.
    [[nodiscard]] virtual std::int32_t PlatformId() const = 0;
    /// Opens a key for reading; nothing if there is none, or it may not be read.
    [[nodiscard]] virtual std::optional<Key> OpenKey(const std::string& path) = 0;
    /// Name of the subkey at `index`, from 0; nothing behind the last.
    [[nodiscard]] virtual std::optional<std::string> EnumKey(Key key, int index) = 0;
    /// A text value as it is stored, closing zeros included; nothing if it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> QueryText(Key key,
                                                               const std::string& name) = 0;
    virtual void CloseKey(Key key) = 0;
};

/// The sound by which the system draws attention.
class Bell {
 public:
    virtual ~Bell() = default;

    /// Sounds once; returns at once.
    virtual void Ring() = 0;
};

/// Starts other programs, which run beside this one. No shell takes part: what is given is handed
/// over as it stands.
class CommandRunner {
 public:
    virtual ~CommandRunner() = default;

    /// Starts `program` with these arguments, and gives it `input` to read. False if it could not
    /// be started.
    [[nodiscard]] virtual bool Start(const std::string& program,
                                     const std::vector<std::string>& arguments,
                                     const std::string& input) = 0;
};

/// Whether the user's desktop session starts the program.
class SessionStart {
 public:
    virtual ~SessionStart() = default;

    [[nodiscard]] virtual bool IsOn() const = 0;
    /// False if it stays as it is.
    [[nodiscard]] virtual bool Switch(bool on) = 0;
};

class PasswordKeeper;  // platform/password_keeper.h
class SharedArchive;   // platform/shared_archive.h

/// The host: a reference to each, the program's folder and the length of a tick.
struct Host {
    SerialPort& MSComm1;
    EventPump& Events;
    MessageBoxes& Boxes;
    FileDialogs& Dialogs;
    SettingsStore& Store;
    SystemClock& Clock;
    HelpViewer& Help;
    Registry& LocalMachine;
    PortInquiry& Inquiry;
    Bell& Sound;
    std::string AppPath;         ///< folder of the program's own file, no separator at its end
    int TickMilliseconds = 100;  ///< length of a tick; tests of forms run the same ticks faster
    ArchiveStore* Archive = nullptr;  ///< keeps what is uploaded; without it nothing is kept
    /// Name and version of the system and of what the program runs on.
    std::string SystemText = {};
    /// The user's documents where the program's folder cannot be written; empty where it can.
    std::string SaveFolder = {};
    /// The user's own folder for what the program finds and keeps, no separator at its end; may be
    /// missing. Empty: there is none.
    std::string UserFolder = {};
    CommandRunner* Commands = nullptr;    ///< without it no other program is started
    SessionStart* AtStart = nullptr;      ///< without it there is no desktop session
    SharedArchive* Shared = nullptr;      ///< without it nothing is shared
    PasswordKeeper* Passwords = nullptr;  ///< without it none is kept

    /// Where a dialog for the user's files starts.
    [[nodiscard]] const std::string& StartFolder() const {
        return SaveFolder.empty() ? AppPath : SaveFolder;
    }
};

#endif  // ORVIA_PLATFORM_HOST_H
