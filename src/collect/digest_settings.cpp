#include "collect/digest_settings.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "common/file_path.h"
#include "common/file_rewrite.h"
#include "common/mac_text.h"
#include "common/number_text.h"
#include "common/path_text.h"

namespace {

const std::string Section = "Collect";
constexpr const char* MemoryKey = "MemoryRecords";
constexpr const char* LowestKey = "LowestValues";
constexpr const char* RunsKey = "RunsCommand";
constexpr const char* CommandKey = "Command";

constexpr char BetweenEntries = ';';
constexpr char BeforeChannel = '/';
constexpr char BeforeValue = '=';
constexpr std::int32_t LastChannel = 10;

std::optional<MacAddress> MacOf(std::string_view text) {
    constexpr std::size_t Size = 17;
    constexpr std::size_t Step = 3;
    constexpr std::string_view Digits = "0123456789ABCDEF";
    MacAddress mac = {};
    if (text.size() != Size) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < mac.size(); ++i) {
        const auto high = Digits.find(text[i * Step]);
        const auto low = Digits.find(text[i * Step + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos ||
            (i > 0 && text[i * Step - 1] != ':')) {
            return std::nullopt;
        }
        mac[i] = static_cast<std::uint8_t>(high * Digits.size() + low);
    }
    return mac;
}

/// Takes "00:13:A2:40:5F:01/8=11.5"; what is no such entry is passed over.
void TakeLowest(std::string_view entry, DigestLimits& limits) {
    const std::size_t slash = entry.find(BeforeChannel);
    const std::size_t equals = entry.find(BeforeValue);
    if (slash == std::string_view::npos || equals == std::string_view::npos || equals < slash) {
        return;
    }
    const auto mac = MacOf(entry.substr(0, slash));
    std::int32_t channel = 0;
    const auto value = WholeNumber(entry.substr(equals + 1));
    if (mac && value && TextToLong(entry.substr(slash + 1, equals - slash - 1), channel) &&
        channel >= 1 && channel <= LastChannel) {
        limits.LowestValues[{*mac, channel}] = *value;
    }
}

std::string Text(const std::string& digest, const std::string& when) {
    return "Round of " + when + "\n\n" + (digest.empty() ? "Nothing needs a person.\n" : digest);
}

}  // namespace

DigestLimits ReadLimits(const SettingsStore& store) {
    DigestLimits limits;
    std::int32_t records = 0;
    if (TextToLong(store.Read(Section, MemoryKey).value_or(""), records) && records >= 0) {
        limits.MemoryRecords = records;
    }
    const std::string lowest = store.Read(Section, LowestKey).value_or("");
    for (std::size_t at = 0; at < lowest.size();) {
        const std::size_t end = std::min(lowest.find(BetweenEntries, at), lowest.size());
        TakeLowest(std::string_view(lowest).substr(at, end - at), limits);
        at = end + 1;
    }
    return limits;
}

void KeepLimits(const DigestLimits& limits, SettingsStore& store) {
    std::string lowest;
    for (const auto& [channel, value] : limits.LowestValues) {
        lowest += (lowest.empty() ? "" : std::string(1, BetweenEntries)) + MacText(channel.first) +
                  BeforeChannel + IntegerToText(channel.second) + BeforeValue + DoubleToText(value);
    }
    store.Write(Section, MemoryKey, IntegerToText(limits.MemoryRecords));
    store.Write(Section, LowestKey, lowest);
}

DigestDelivery ReadDelivery(const SettingsStore& store) {
    return {.RunsCommand = store.Read(Section, RunsKey) == "1",
            .Command = store.Read(Section, CommandKey).value_or("")};
}

void KeepDelivery(const DigestDelivery& delivery, SettingsStore& store) {
    store.Write(Section, RunsKey, delivery.RunsCommand ? "1" : "0");
    store.Write(Section, CommandKey, delivery.Command);
}

std::vector<std::string> WordsOfCommand(const std::string& command) {
    std::vector<std::string> words;
    bool inWord = false;
    bool quoted = false;
    for (const char character : command) {
        if (character == ' ' && !quoted) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.emplace_back();
            inWord = true;
        }
        if (character == '"') {
            quoted = !quoted;
        } else {
            words.back() += character;
        }
    }
    return quoted ? std::vector<std::string>() : words;
}

std::string DigestFile(const Host& host) {
    return host.UserFolder.empty() ? std::string() : JoinPath(host.UserFolder, "digest.txt");
}

std::string Deliver(const std::string& digest, const std::string& when, const Host& host) {
    const std::string text = Text(digest, when);
    const std::string file = DigestFile(host);
    std::string trouble;
    if (!file.empty()) {
        std::error_code failed;
        std::filesystem::create_directories(FilePath(host.UserFolder), failed);
        if (!RewriteFile(file, text)) {
            trouble = "The digest could not be written to " + file;
        }
    }
    const DigestDelivery delivery = ReadDelivery(host.Store);
    if (digest.empty() || !delivery.RunsCommand || host.Commands == nullptr) {
        return trouble;
    }
    std::vector<std::string> words = WordsOfCommand(delivery.Command);
    const std::string program = words.empty() ? std::string() : words.front();
    if (!words.empty()) {
        words.erase(words.begin());
    }
    if (program.empty() || !host.Commands->Start(program, words, text)) {
        trouble += std::string(trouble.empty() ? "" : "; ") +
                   "the command of the digest could not be started";
    }
    return trouble;
}
