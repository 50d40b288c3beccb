// An address book of any bytes: it loads, and what it loads is written so that it loads the same,
// as long as no name holds a quote.

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "console/book_file.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireRoundTrip(const ClientRadio& entry) {
    const auto again = ParseBookLine(BookLine(entry));
    Require(again.has_value());
    Require(again->Name == entry.Name);
    Require(again->Channel == entry.Channel);
    Require(again->Mac == entry.Mac);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
    NumberedArray<ClientRadio> entries;
    ReadBook(file, entries);
    for (const ClientRadio& entry : entries) {
        Require(entry.WindowIndex == NoWindow && entry.SmallIcon == IconNoWindow);
        RequireRoundTrip(entry);
    }
    return 0;
}
