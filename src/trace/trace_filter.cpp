#include "trace/trace_filter.h"

#include <algorithm>
#include <array>

#include "common/text.h"

namespace {

constexpr std::array<TraceKindName, 10> KindNames{{{TraceKind::Radio, "Server radio"},
                                                   {TraceKind::Sample, "Samples"},
                                                   {TraceKind::Clock, "Clock"},
                                                   {TraceKind::Status, "Status and version"},
                                                   {TraceKind::Memory, "Settings"},
                                                   {TraceKind::History, "History"},
                                                   {TraceKind::Order, "Orders"},
                                                   {TraceKind::Port, "Port"},
                                                   {TraceKind::Unasked, "Bytes nobody asked for"},
                                                   {TraceKind::Other, "Other requests"}}};

}  // namespace

std::span<const TraceKindName> TraceKindNames() {
    return KindNames;
}

bool Passes(const TraceEntry& entry, const TraceFilter& filter) {
    if (filter.Logger && (!IsOfLogger(entry) || *filter.Logger != entry.Record.Address())) {
        return false;
    }
    if (filter.Kind && KindOf(entry) != *filter.Kind) {
        return false;
    }
    return !filter.FaultsOnly || IsFaulty(entry);
}

void TraceRows::SetFilter(const TraceFilter& filter) {
    filter_ = filter;
    numbers_.clear();
    newest_ = 0;
}

std::size_t TraceRows::Outdated() const {
    const auto kept = std::lower_bound(numbers_.begin(), numbers_.end(), store_.First());
    return static_cast<std::size_t>(kept - numbers_.begin());
}

void TraceRows::DropOutdated(std::size_t count) {
    numbers_.erase(numbers_.begin(), numbers_.begin() + static_cast<std::ptrdiff_t>(count));
}

bool TraceRows::LastMayHaveChanged() const {
    return !numbers_.empty() && numbers_.back() == newest_;
}

bool TraceRows::LastFails() const {
    return LastMayHaveChanged() && store_.Holds(newest_) && !Passes(store_.At(newest_), filter_);
}

std::vector<std::uint64_t> TraceRows::Fresh() const {
    // The entry that was the newest may be wanted now and not have been before.
    std::uint64_t number = std::max(newest_, store_.First());
    if (LastMayHaveChanged() && number == newest_) {
        ++number;
    }
    std::vector<std::uint64_t> fresh;
    for (; number < store_.End(); ++number) {
        if (Passes(store_.At(number), filter_)) {
            fresh.push_back(number);
        }
    }
    return fresh;
}

void TraceRows::Append(const std::vector<std::uint64_t>& numbers) {
    numbers_.insert(numbers_.end(), numbers.begin(), numbers.end());
    newest_ = store_.End() - 1;
}

bool TraceRows::Holds(std::size_t row, const std::string& lowered, const LoggerNames& names) const {
    if (!store_.Holds(Number(row))) {
        return false;
    }
    const TraceEntry entry = store_.At(Number(row));
    return ToLower(LineOf(InWords(entry, names))).find(lowered) != std::string::npos ||
           ToLower(HexOf(entry)).find(lowered) != std::string::npos;
}

std::optional<std::size_t> TraceRows::Find(const std::string& text, std::optional<std::size_t> row,
                                           bool forward, const LoggerNames& names) const {
    const std::size_t count = Count();
    if (count == 0 || text.empty()) {
        return std::nullopt;
    }
    const std::string lowered = ToLower(text);
    std::size_t at = row ? std::min(*row, count - 1) : (forward ? count - 1 : 0);
    for (std::size_t looked = 0; looked < count; ++looked) {
        at = (forward ? at + 1 : at + count - 1) % count;
        if (Holds(at, lowered, names)) {
            return at;
        }
    }
    return std::nullopt;
}

std::string TraceRows::Text(const std::vector<std::size_t>& rows, bool hex,
                            const LoggerNames& names) const {
    std::string text;
    for (const std::size_t row : rows) {
        if (!store_.Holds(Number(row))) {
            continue;
        }
        const TraceEntry entry = store_.At(Number(row));
        text += SavedText(entry, InWords(entry, names), hex);
    }
    return text;
}
