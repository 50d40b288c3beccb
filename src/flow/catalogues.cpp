#include "flow/catalogues.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "common/characters.h"
#include "common/line_reader.h"
#include "common/number_text.h"
#include "common/text.h"
#include "flow/flow_table.h"

namespace {

constexpr std::size_t LongestTag = 8;

enum class EntryForm { None, TooLarge, Entry };

/// What lies between the next two double quotes from `at` on, trimmed; `at` moves behind them.
/// Nothing if one of the quotes is missing or nothing lies between them.
std::optional<std::string> TakeQuoted(std::string_view line, std::size_t& at) {
    const std::size_t open = line.find('"', at);
    if (open == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t close = line.find('"', open + 1);
    if (close == std::string_view::npos || close == open + 1) {
        return std::nullopt;
    }
    at = close + 1;
    return std::string(Trim(line.substr(open + 1, close - open - 1)));
}

/// The tag at the start of a line; `at` moves behind its bracket.
std::optional<std::string> TakeTag(std::string_view line, std::size_t& at) {
    if (line.empty() || line.front() != '[') {
        return std::nullopt;
    }
    const std::size_t close = line.find(']', 1);
    if (close == std::string_view::npos || close == 1) {
        return std::nullopt;
    }
    at = close + 1;
    return CutText(ToUpper(Trim(line.substr(1, close - 1))), LongestTag);
}

/// The first three numbers of the text, words between them passed over.
EntryForm ReadEquation(std::string_view text, FlowDeviceEntry& entry) {
    const std::string pieces = config::NormalizeSeparators(text);
    const std::array<double*, 3> fields = {&entry.EqOffset, &entry.EqExponent, &entry.EqMultiplier};
    std::size_t count = 0;
    for (const std::string_view piece : SplitAtBlanks(pieces)) {
        const NumberForm form = ReadNumber(piece, *fields[count]);
        if (form == NumberForm::TooLarge) {
            return EntryForm::TooLarge;
        }
        if (form == NumberForm::Number && ++count == fields.size()) {
            return EntryForm::Entry;
        }
    }
    return EntryForm::None;
}

/// The table file of the text, if it can be read now.
EntryForm ReadTable(std::string_view text, const config::TableProof& proof,
                    FlowDeviceEntry& entry) {
    std::size_t at = 0;
    const std::optional<std::string> path = TakeQuoted(text, at);
    if (!path || !proof(*path)) {
        return EntryForm::None;
    }
    entry.IsTable = 1;
    entry.TableFile = *path;
    return EntryForm::Entry;
}

EntryForm ReadEntry(std::string_view line, const config::TableProof& proof,
                    FlowDeviceEntry& entry) {
    std::size_t at = 0;
    const std::optional<std::string> tag = TakeTag(line, at);
    if (!tag) {
        return EntryForm::None;
    }
    const std::optional<std::string> name = TakeQuoted(line, at);
    if (!name) {
        return EntryForm::None;
    }
    // The first of either letter decides even inside a word: files in the field rely on it.
    const std::size_t mark = line.find_first_of("EF", at);
    if (mark == std::string_view::npos) {
        return EntryForm::None;
    }
    entry.Tag = *tag;
    entry.Name = *name;
    const std::string_view definition = line.substr(mark + 1);
    return line[mark] == 'E' ? ReadEquation(definition, entry)
                             : ReadTable(definition, proof, entry);
}

}  // namespace

namespace config {

void ReadFlowDeviceList(std::string_view path, std::string_view appPath, FlowDeviceList& list) {
    list.Reset();
    TextFile file;
    if (!OpenTextFile(path, LargestCatalogue, file)) {
        return;
    }
    FlowTable scratch;
    const TableProof proof = [&](std::string_view table) {
        return ReadFlowTable(table, appPath, scratch);
    };
    ReadFlowDeviceList(file.Stream, file.Size, proof, list);
}

void AddFlowDeviceList(std::string_view path, std::string_view folder, FlowDeviceList& list) {
    FlowDeviceList own;
    ReadFlowDeviceList(path, folder, own);
    const FlowDeviceList shipped = list;
    for (FlowDeviceEntry& entry : own) {
        const bool taken =
            std::any_of(shipped.begin(), shipped.end(),
                        [&entry](const FlowDeviceEntry& known) { return known.Tag == entry.Tag; });
        if (!taken) {
            // Whoever reads the table later knows only the program's folder.
            entry.TableFile = ResolveTablePath(entry.TableFile, folder);
            list.Append(std::move(entry));
        }
    }
}

void ReadFlowDeviceList(std::istream& input, std::uintmax_t limit, const TableProof& proof,
                        FlowDeviceList& list) {
    list.Reset();
    LineReader lines(input, limit);
    std::string_view line;
    while (lines.Next(line)) {
        FlowDeviceEntry entry;
        const EntryForm form = ReadEntry(line, proof, entry);
        if (form == EntryForm::TooLarge) {
            return;
        }
        if (form == EntryForm::Entry) {
            list.Append(std::move(entry));
        }
    }
}

}  // namespace config
