#include "support/virtual_host.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <utility>

#include "common/fault.h"
#include "common/file_path.h"
#include "common/text.h"

namespace testing_support {

void VirtualPort::SetCommPort(int number) {
    if (open_) {
        throw Fault("the port is open");
    }
    number_ = number;
}

void VirtualPort::SetSettings(const std::string& settings) {
    if (open_) {
        throw Fault("the port is open");
    }
    settings_ = settings;
}

void VirtualPort::SetPortOpen(bool open) {
    if (open && Missing.contains(number_)) {
        throw Fault("no such port");
    }
    ClearInBuffer();
    expected_ = 1;
    if (open != open_) {
        open ? ++Opened : ++Closed;
    }
    open_ = open;
    gone_ = false;
}

Bytes VirtualPort::Input(int InputLen) {
    const std::size_t count =
        InputLen == 0 ? received_.size()
                      : std::min<std::size_t>(received_.size(), static_cast<std::size_t>(InputLen));
    const auto end = received_.begin() + static_cast<std::ptrdiff_t>(count);
    Bytes bytes(received_.begin(), end);
    received_.erase(received_.begin(), end);
    return bytes;
}

void VirtualPort::Output(std::span<const std::uint8_t> bytes) {
    if (open_ && !gone_) {
        network_.Write(time_.Now(), bytes);
    }
}

void VirtualPort::Expect(int count) {
    expected_ = count;
    Receive({});
}

void VirtualPort::ClearInBuffer() {
    received_.clear();
    held_.clear();
}

void VirtualPort::LookForHangUp() {
    received_.insert(received_.end(), held_.begin(), held_.end());
    held_.clear();
    if (open_ && gone_) {
        SetPortOpen(false);
    }
}

void VirtualPort::Collect() {
    const Bytes bytes = network_.Read(time_.Now());
    if (open_ && !gone_) {
        Receive(bytes);
    }
}

void VirtualPort::Receive(const Bytes& bytes) {
    held_.insert(held_.end(), bytes.begin(), bytes.end());
    if (held_.size() >= static_cast<std::size_t>(expected_)) {
        received_.insert(received_.end(), held_.begin(), held_.end());
        held_.clear();
    }
}

BoxAnswer ScriptedBoxes::Show(const BoxContent& box) {
    Shown.push_back(box);
    if (WhileShown) {
        std::exchange(WhileShown, nullptr)();
    }
    if (!Answers.empty()) {
        const BoxAnswer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    const bool yesNo = box.Buttons == BoxButtons::YesNo || box.Buttons == BoxButtons::YesNoCancel;
    return yesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
}

std::optional<std::string> ScriptedDialogs::PickExisting(const FileQuery& query) {
    Queries.push_back(query);
    if (WhileShown) {
        std::exchange(WhileShown, nullptr)();
    }
    if (Picks.empty()) {
        return std::nullopt;
    }
    std::string pick = Picks.front();
    Picks.pop_front();
    return pick;
}

std::optional<std::string> ScriptedDialogs::PickForSaving(const FileQuery& query,
                                                          bool promptOverwrite) {
    Prompts.push_back(promptOverwrite);
    return PickExisting(query);
}

std::optional<std::string> MemoryStore::Read(const std::string& section,
                                             const std::string& key) const {
    const auto found = Values.find(section + "/" + key);
    return found == Values.end() ? std::nullopt : std::optional(found->second);
}

void MemoryStore::Write(const std::string& section, const std::string& key,
                        const std::string& value) {
    const std::string name = section + "/" + key;
    if (Refused.contains(name)) {
        throw Fault("the store does not take " + name);
    }
    Values[name] = value;
}

LocalTime VirtualClock::Now() const {
    using namespace std::chrono;
    const sys_days day = year{Start.Year} / Start.Month / Start.Day;
    const auto moment = sys_time<microseconds>(day) + hours{Start.Hour} + minutes{Start.Minute} +
                        seconds{Start.Second} + milliseconds{Start.Millisecond} +
                        microseconds{time_.Now()};
    const auto midnight = floor<days>(moment);
    const year_month_day date{midnight};
    const hh_mm_ss timeOfDay{floor<milliseconds>(moment - midnight)};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(timeOfDay.hours().count()),
            static_cast<int>(timeOfDay.minutes().count()),
            static_cast<int>(timeOfDay.seconds().count()),
            static_cast<int>(timeOfDay.subseconds().count())};
}

std::string VirtualClock::DateText(const LocalTime& time) const {
    return std::to_string(time.Month) + "/" + std::to_string(time.Day) + "/" +
           std::to_string(time.Year);
}

std::string VirtualClock::TimeText(const LocalTime& time) const {
    return TwoDigits(time.Hour) + ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}

std::optional<Registry::Key> MemoryRegistry::OpenKey(const std::string& path) {
    if (!keys_.contains(path) || Locked.contains(path)) {
        return std::nullopt;
    }
    Open[next_] = path;
    return next_++;
}

std::optional<std::string> MemoryRegistry::EnumKey(Key key, int index) {
    const std::string above = Open.at(key) + "\\";
    for (auto found = keys_.lower_bound(above);
         found != keys_.end() && found->first.starts_with(above); ++found) {
        const std::string name = found->first.substr(above.size());
        if (name.find('\\') == std::string::npos && index-- == 0) {
            return name;
        }
    }
    return std::nullopt;
}

std::optional<std::string> MemoryRegistry::QueryText(Key key, const std::string& name) {
    const auto& values = keys_.at(Open.at(key));
    const auto found = values.find(name);
    const bool fits = found != values.end() && found->second.size() <= BufferLength;
    return fits ? std::optional(found->second) : std::nullopt;
}

void MemoryRegistry::CloseKey(Key key) {
    if (Open.erase(key) == 0) {
        throw std::logic_error("a key that is not open was closed");
    }
}

void MemoryRegistry::Set(const std::string& path, const std::string& name,
                         const std::string& value) {
    for (auto end = path.find('\\'); end != std::string::npos; end = path.find('\\', end + 1)) {
        keys_[path.substr(0, end)];
    }
    keys_[path][name] = value;
}

VirtualHost::VirtualHost() {
    Time.SetSource([this] { return Network.NextEvent(); }, [this] { Port.Collect(); });
}

Host VirtualHost::AsHost(const std::string& appPath) {
    return {Port, Pump, Boxes, Dialogs, Store, Clock, Help, LocalMachine, Inquiry, Sound, appPath};
}

std::string FreshFolder(const std::string& name) {
    // Another run of the tests may be under way beside this one.
    static const std::string Run = std::to_string(std::random_device()());
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("orvia-" + Run + "-" + name);
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder.string();
}

std::string FileContents(const std::string& path) {
    std::ifstream file(FilePath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::string& path, const std::string& contents) {
    std::ofstream(FilePath(path), std::ios::binary) << contents;
}

}  // namespace testing_support
