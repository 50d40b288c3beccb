#ifndef ORVIA_COLLECT_DIGEST_SETTINGS_H
#define ORVIA_COLLECT_DIGEST_SETTINGS_H

#include <string>
#include <vector>

#include "collect/digest.h"
#include "platform/host.h"

/// What is done with the digest of a round.
struct DigestDelivery {
    bool RunsCommand = false;
    std::string Command = {};  ///< as the user typed it
    bool operator==(const DigestDelivery&) const = default;
};

// Kept between runs; what is absent is as it is by default.
[[nodiscard]] DigestLimits ReadLimits(const SettingsStore& store);
void KeepLimits(const DigestLimits& limits, SettingsStore& store);
[[nodiscard]] DigestDelivery ReadDelivery(const SettingsStore& store);
void KeepDelivery(const DigestDelivery& delivery, SettingsStore& store);

/// The words of a command: parted by blanks, of which those between two quotation marks do not
/// part. No other character means anything. Empty if there is none, or a mark has no other.
[[nodiscard]] std::vector<std::string> WordsOfCommand(const std::string& command);

/// Writes the digest to the file "digest.txt" in the user's folder, and starts the user's command
/// with it, if there is something in it and that is wanted: the digest is what the command reads,
/// and never part of its words. What went wrong, in a line; empty if nothing did.
[[nodiscard]] std::string Deliver(const std::string& digest, const std::string& when,
                                  const Host& host);

/// The file that Deliver writes; empty if there is no folder for it.
[[nodiscard]] std::string DigestFile(const Host& host);

#endif  // ORVIA_COLLECT_DIGEST_SETTINGS_H
