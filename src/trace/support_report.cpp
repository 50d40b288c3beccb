#include "trace/support_report.h"

#include <algorithm>
#include <utility>

#include "common/mac_text.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "platform/moments.h"
#include "trace/exchange_words.h"
#include "trace/request_words.h"

namespace {

std::string CountText(std::uint64_t count) {
    return IntegerToText(static_cast<std::int64_t>(count));
}

std::string NumberedLogger(int number) {
    return "Logger " + IntegerToText(number);
}

/// A line "what: value".
std::string Line(std::string_view what, const std::string& value) {
    return std::string(what) + ": " + (value.empty() ? "(none)" : value) + "\n";
}

std::string VersionsText(const SupportSource& source, bool names) {
    return Line("Orvia", source.Version) + Line("System", source.System) +
           Line("Report made", TraceTimeText(ToMilliseconds(source.Made))) +
           Line("Names", names ? "as they are" : "left out");
}

std::string SettingsText(const Settings& settings, bool names) {
    std::string text =
        Line("Port", settings.PortName) + Line("Baud rate", settings.BaudRate) +
        Line("Disconnect at the end", settings.AutoDisconnect) +
        Line("Date and time of CSV files in one column", settings.CSVDateTimeSingleColumn) +
        Line("Address book", ShortPath(settings.AddressBookPath, names)) +
        Line("Folder of set-up files", ShortPath(settings.LastFilePath, names));
    for (const std::string& file : settings.LastFile) {
        text += Line("Recent set-up file", ShortPath(file, names));
    }
    return text;
}

std::string BookText(const AddressBook& book, bool names) {
    std::string text = CountText(static_cast<std::uint64_t>(book.Entries.UpperBound())) +
                       (book.Entries.UpperBound() == 1 ? " logger\n" : " loggers\n");
    for (int number = 1; number <= book.Entries.UpperBound(); ++number) {
        const ClientRadio& entry = book.Entries[number];
        text += NumberedLogger(number) + (names ? ": " + entry.Name : "") + ", channel " +
                HexText(entry.Channel) + ", MAC " + MacText(entry.Mac) + "\n";
    }
    return text;
}

// ----- the trace

LoggerNames NumbersOf(const AddressBook& book) {
    LoggerNames names;
    for (int number = 1; number <= book.Entries.UpperBound(); ++number) {
        const ClientRadio& entry = book.Entries[number];
        names.emplace(TraceAddress{entry.Channel, AddressOf(entry.Mac)}, NumberedLogger(number));
    }
    return names;
}

/// What came is told in bytes where it says nothing else.
void CountBytes(const TraceEntry& entry, ExchangeWords& words) {
    const std::string hex = HexText(entry.Taken);
    if (entry.Taken.size() > 1 && words.Came.starts_with(hex)) {
        words.Came.replace(0, hex.size(), CountText(entry.Taken.size()) + " bytes");
    }
}

std::string EntryText(const TraceEntry& entry, const LoggerNames& known, bool names) {
    ExchangeWords words = InWords(entry, known);
    if (!names) {
        CountBytes(entry, words);
    }
    return SavedText(entry, words, names);
}

std::string TraceText(const SupportSource& source, bool names) {
    const TraceStore& kept = source.Recorder.Kept();
    const LoggerNames known =
        names ? NamesOf(source.Recorder.Loggers(), source.Book) : NumbersOf(source.Book);
    std::vector<std::string> newestFirst;
    std::size_t size = 0;
    std::uint64_t number = kept.End();
    while (number > kept.First() && size < MostTraceText) {
        --number;
        newestFirst.push_back(EntryText(kept.At(number), known, names));
        size += newestFirst.back().size();
    }
    std::string text = "The last " + CountText(newestFirst.size()) + " of " +
                       CountText(kept.End() - kept.First()) + " exchanges kept\n";
    text.reserve(text.size() + size);
    std::for_each(newestFirst.rbegin(), newestFirst.rend(),
                  [&text](const std::string& entry) { text += entry; });
    return text;
}

// ----- names

using NumberedName = std::pair<std::string_view, int>;

/// Longer names first: one may be the beginning of another.
std::vector<NumberedName> NamesByLength(const AddressBook& book) {
    std::vector<NumberedName> names;
    for (int number = 1; number <= book.Entries.UpperBound(); ++number) {
        const std::string& name = book.Entries[number].Name;
        if (!name.empty()) {
            names.emplace_back(name, number);
        }
    }
    std::stable_sort(names.begin(), names.end(), [](const auto& one, const auto& other) {
        return one.first.size() > other.first.size();
    });
    return names;
}

/// Whether a byte belongs to a word; those of letters beyond ASCII do.
bool IsOfWord(char byte) {
    const auto isIn = [byte](char first, char last) { return byte >= first && byte <= last; };
    return isIn('a', 'z') || isIn('A', 'Z') || isIn('0', '9') ||
           (static_cast<unsigned char>(byte) & 0x80U) != 0;
}

bool StandsAt(std::string_view text, std::size_t at, std::string_view name) {
    const std::size_t end = at + name.size();
    return text.substr(at).starts_with(name) && (at == 0 || !IsOfWord(text[at - 1])) &&
           (end == text.size() || !IsOfWord(text[end]));
}

}  // namespace

std::string ShortPath(std::string_view path, bool names) {
    while (!path.empty() && LastSeparator(path) == path.size()) {
        path.remove_suffix(1);
    }
    if (path.empty()) {
        return {};
    }
    const std::string_view last = BehindLastSeparator(path);
    const std::string folders = last.size() == path.size() ? "" : "...";
    const std::string mark =
        folders.empty() ? "" : std::string(path.substr(path.size() - last.size() - 1, 1));
    if (names) {
        return folders + mark + std::string(last);
    }
    const std::size_t dot = last.rfind('.');
    return folders + mark + "(name)" +
           std::string(dot == std::string_view::npos ? "" : last.substr(dot));
}

std::string WithoutNames(std::string_view text, const AddressBook& book) {
    const std::vector<NumberedName> names = NamesByLength(book);
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        const auto named = std::find_if(names.begin(), names.end(), [&](const NumberedName& name) {
            return StandsAt(text, at, name.first);
        });
        if (named == names.end()) {
            result += text[at++];
        } else {
            result += NumberedLogger(named->second);
            at += named->first.size();
        }
    }
    return result;
}

std::vector<ZipEntry> SupportReport(const SupportSource& source, bool names) {
    const std::string log = names ? source.Log : WithoutNames(source.Log, source.Book);
    return {{"versions.txt", VersionsText(source, names)},
            {"settings.txt", SettingsText(source.SettingsRecord, names)},
            {"book.txt", BookText(source.Book, names)},
            {"trace.txt", TraceText(source, names)},
            {"log.txt", log.empty() ? "No walk over all client windows has left a log.\n" : log}};
}
