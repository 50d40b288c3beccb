#ifndef ORVIA_COLLECT_DIGEST_H
#define ORVIA_COLLECT_DIGEST_H

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "collect/collected_logger.h"

/// A channel of a logger: the address of its radio, and the channel from 1.
using ChannelOfLogger = std::pair<MacAddress, int>;

/// From when something needs a person.
struct DigestLimits {
    /// Records that a logger has room for: by default what one upload can take.
    std::int64_t MemoryRecords = 200'000;
    int MemoryPercent = 80;
    std::map<ChannelOfLogger, double> LowestValues = {};  ///< of batteries, say
};

/// What needs a person after a round, a line each: silent loggers, uploads that broke off, clocks
/// off, memory that runs full at the present rate and when, values below their limit, gaps. Empty
/// if nothing does.
[[nodiscard]] std::vector<std::string> DigestLines(const std::vector<CollectedLogger>& round,
                                                   const DigestLimits& limits);
/// The same as one text, each line ended.
[[nodiscard]] std::string DigestText(const std::vector<CollectedLogger>& round,
                                     const DigestLimits& limits);

#endif  // ORVIA_COLLECT_DIGEST_H
