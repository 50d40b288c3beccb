#ifndef ORVIA_TRACE_EXCHANGE_WORDS_H
#define ORVIA_TRACE_EXCHANGE_WORDS_H

#include <map>
#include <set>
#include <string>

#include "records/address_book.h"
#include "trace/trace_store.h"

// The trace in words: docs/trace.md tells what each of them means.

/// What an entry deals with.
enum class TraceKind : std::uint8_t {
    Port,
    Radio,
    Clock,
    Memory,
    Sample,
    Status,
    History,
    Order,  ///< clear history, restart sampling, reset pulses
    Unasked,
    Other
};

/// An entry in words.
struct ExchangeWords {
    std::string Time;       ///< date and time of day, to the millisecond
    std::string Direction;  ///< "out", "in", "out, in"; empty of what befell the port
    std::string Who;        ///< the port, the server radio, or which logger
    std::string Asked;
    std::string Came;
    std::string After;  ///< time to the first byte of the answer, as "23 ms"
    std::string Try;    ///< as "2 of 3"; empty of the only one
    std::string Fault;  ///< what went wrong, by name; empty if nothing did
};

[[nodiscard]] TraceKind KindOf(const TraceEntry& entry);
/// Whether something went wrong: its words name it.
[[nodiscard]] bool IsFaulty(const TraceEntry& entry);
/// Whether it went to a logger, and not to the server radio or the port.
[[nodiscard]] bool IsOfLogger(const TraceEntry& entry);

/// Names of loggers.
using LoggerNames = std::map<TraceAddress, std::string>;

/// The names that the book has for those among `loggers`; of two entries for one the first.
[[nodiscard]] LoggerNames NamesOf(const std::set<TraceAddress>& loggers, const AddressBook& book);

/// A moment, from the beginning of the year 2000: "2026-11-15 08:30:00.000".
[[nodiscard]] std::string TraceTimeText(std::int64_t milliseconds);

/// The entry in words.
[[nodiscard]] ExchangeWords InWords(const TraceEntry& entry, const LoggerNames& names);

/// A logger by name, channel and MAC: "Hill Tanks (channel 1A, MAC 00-02-44)", or without the name
/// if it has none.
[[nodiscard]] std::string LoggerText(const TraceAddress& logger, const LoggerNames& names);

/// The entry in one line.
[[nodiscard]] std::string LineOf(const ExchangeWords& words);
/// Its bytes in hexadecimal, each direction on a line of its own.
[[nodiscard]] std::string HexOf(const TraceEntry& entry);
/// The entry as a file keeps it: its line, and below it its bytes if wanted.
[[nodiscard]] std::string SavedText(const TraceEntry& entry, const ExchangeWords& words, bool hex);

#endif  // ORVIA_TRACE_EXCHANGE_WORDS_H
