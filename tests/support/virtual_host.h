#ifndef ORVIA_TESTS_SUPPORT_VIRTUAL_HOST_H
#define ORVIA_TESTS_SUPPORT_VIRTUAL_HOST_H

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/host.h"
#include "simulator/network.h"
#include "support/virtual_time.h"

namespace testing_support {

/// The serial port, its other end in the simulated network.
class VirtualPort final : public SerialPort {
 public:
    VirtualPort(VirtualTime& time, simulator::Network& network) : time_(time), network_(network) {}

    int CommPort() const override { return number_; }
    void SetCommPort(int number) override;
    std::string Settings() const override { return settings_; }
    void SetSettings(const std::string& settings) override;
    bool PortOpen() const override { return open_; }
    void SetPortOpen(bool open) override;
    void SetDTREnable(bool enable) override { Dtr = enable; }
    void Expect(int count) override;
    int InBufferCount() const override { return static_cast<int>(received_.size()); }
    void ClearInBuffer() override;
    Bytes Input(int InputLen) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    void LookForHangUp() override;

    /// Takes in what has come out of the network by now.
    void Collect();
    /// Puts bytes into the input, out of the blue.
    void Receive(const Bytes& bytes);
    /// The device is pulled out; it is noticed on the next tick.
    void PullOut() { gone_ = true; }

    std::set<int> Missing;  ///< numbers of ports that will not open
    bool Dtr = false;
    int Opened = 0;  ///< times that it was opened
    int Closed = 0;

 private:
    VirtualTime& time_;
    simulator::Network& network_;
    int number_ = 0;
    std::string settings_;
    bool open_ = false;
    bool gone_ = false;
    std::deque<std::uint8_t> received_;
    Bytes held_;  ///< came, and wait for those that are expected with them
    int expected_ = 1;
};

class VirtualPump final : public EventPump {
 public:
    explicit VirtualPump(VirtualTime& time) : time_(time) {}
    void RunPendingEvents() override {
        ++Runs;
        time_.RunDue();
    }
    void WaitForMoreEvents() override {
        ++Waits;
        time_.JumpToNextEvent();
    }

    int Runs = 0;
    int Waits = 0;

 private:
    VirtualTime& time_;
};

/// Records every box and answers as told, with Ok or Yes where nothing was.
class ScriptedBoxes final : public MessageBoxes {
 public:
    BoxAnswer Show(const BoxContent& box) override;

    std::vector<BoxContent> Shown;
    std::deque<BoxAnswer> Answers;
    std::function<void()> WhileShown;  ///< happens while the next box stands
};

/// Gives the paths it was told, in turn; nothing (cancelled) when there are no more.
class ScriptedDialogs final : public FileDialogs {
 public:
    std::optional<std::string> PickExisting(const FileQuery& query) override;
    std::optional<std::string> PickForSaving(const FileQuery& query, bool promptOverwrite) override;

    std::deque<std::string> Picks;
    std::function<void()> WhileShown;  ///< happens while the next dialog stands
    std::vector<FileQuery> Queries;
    std::vector<bool> Prompts;  ///< promptOverwrite of each question for saving
};

class MemoryStore final : public SettingsStore {
 public:
    std::optional<std::string> Read(const std::string& section,
                                    const std::string& key) const override;
    void Write(const std::string& section, const std::string& key,
               const std::string& value) override;

    std::map<std::string, std::string> Values;  ///< by "section/key"
    std::set<std::string> Refused;              ///< "section/key" of those whose write is a fault
};

/// The local clock: a moment at the start, and virtual time since. Dates are month/day/year.
class VirtualClock final : public SystemClock {
 public:
    explicit VirtualClock(const VirtualTime& time) : time_(time) {}

    LocalTime Now() const override;
    std::string DateText(const LocalTime& time) const override;
    std::string TimeText(const LocalTime& time) const override;

    LocalTime Start{2026, 11, 15, 8, 30, 0, 0};

 private:
    const VirtualTime& time_;
};

class RecordingHelp final : public HelpViewer {
 public:
    void Open(const std::string& path) override { Opened.push_back(path); }

    std::vector<std::string> Opened;
};

/// A registry in memory. Keys are known by their path from the branch of the local machine.
class MemoryRegistry final : public Registry {
 public:
    std::int32_t PlatformId() const override { return Family; }
    std::optional<Key> OpenKey(const std::string& path) override;
    std::optional<std::string> EnumKey(Key key, int index) override;
    std::optional<std::string> QueryText(Key key, const std::string& name) override;
    void CloseKey(Key key) override;

    /// Makes a key, and those above it, and gives it a value.
    void Set(const std::string& path, const std::string& name, const std::string& value);

    std::int32_t Family = PlatformNt;
    std::set<std::string> Locked;  ///< paths of keys that may not be opened
    std::map<Key, std::string> Open;

 private:
    std::map<std::string, std::map<std::string, std::string>> keys_;  ///< values by path
    Key next_ = 1;
};

/// Tells of ports what it was told; of others nothing.
class ScriptedInquiry final : public PortInquiry {
 public:
    PortCondition ConditionOf(int number) override {
        ++Asked;
        return Conditions[number];
    }
    std::map<int, PortUser> UsedPorts() override { return Used; }

    std::map<int, PortCondition> Conditions;
    std::map<int, PortUser> Used;
    int Asked = 0;  ///< times that a condition was asked for
};

class CountingBell final : public Bell {
 public:
    void Ring() override { ++Rung; }

    int Rung = 0;
};

/// A host without a desktop, on virtual time, its serial port joined to a simulated network.
class VirtualHost {
 public:
    VirtualHost();

    VirtualTime Time;
    simulator::Network Network;
    VirtualPort Port{Time, Network};
    VirtualPump Pump{Time};
    ScriptedBoxes Boxes;
    ScriptedDialogs Dialogs;
    MemoryStore Store;
    VirtualClock Clock{Time};
    RecordingHelp Help;
    MemoryRegistry LocalMachine;
    ScriptedInquiry Inquiry;
    CountingBell Sound;

    /// What the program is handed.
    [[nodiscard]] Host AsHost(const std::string& appPath);
};

/// Path of a folder for this test alone, made empty.
[[nodiscard]] std::string FreshFolder(const std::string& name);
/// A file's bytes, empty if there is none.
[[nodiscard]] std::string FileContents(const std::string& path);
void WriteFile(const std::string& path, const std::string& contents);

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_VIRTUAL_HOST_H
