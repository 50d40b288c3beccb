#include "console/book_file.h"

#include <istream>

#include "common/file_rewrite.h"
#include "common/line_reader.h"
#include "common/text.h"
#include "console/hex_text.h"

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::size_t DigitsOfMac = 12;
/// Bytes of the largest file that is taken for a book, and so of its longest line.
constexpr std::size_t LargestBook = std::size_t{64} << 20U;

/// Whether a line without blanks at its ends is meant as an entry.
bool BeginsEntry(std::string_view line) {
    return !line.empty() && line.front() == '"';
}

/// Walks a line of the book. Positions count from 1, and the walk stops short of the last
/// character, as the format's own rules do.
class BookLineWalk {
 public:
    explicit BookLineWalk(std::string_view line) : line_(line) {}

    std::string_view TakeName() {
        const std::size_t start = position_;
        while (position_ < line_.size() && At(position_) != '"') {
            ++position_;
        }
        const std::string_view name = line_.substr(start - 1, position_ - start);
        ++position_;
        return name;
    }

    void SkipSeparators() {
        while (position_ < line_.size() && (At(position_) == ',' || At(position_) == ' ')) {
            ++position_;
        }
    }

    bool HasChannel() const { return position_ + 2 < line_.size(); }
    bool HasMac() const { return position_ + DigitsOfMac - 1 <= line_.size(); }

    std::uint8_t TakeByte() {
        const std::uint8_t byte = HexByte(line_.substr(position_ - 1, 2));
        position_ += 2;
        return byte;
    }

 private:
    char At(std::size_t position) const { return line_[position - 1]; }

    std::string_view line_;
    std::size_t position_ = 2;
};

}  // namespace

std::optional<ClientRadio> ParseBookLine(std::string_view line) {
    line = Trim(line);
    if (!BeginsEntry(line)) {
        return std::nullopt;
    }
    BookLineWalk walk(line);
    ClientRadio entry;
    entry.Name = Trim(walk.TakeName());
    walk.SkipSeparators();
    if (walk.HasChannel()) {
        entry.Channel = walk.TakeByte();
    }
    walk.SkipSeparators();
    if (!walk.HasMac()) {
        return std::nullopt;
    }
    for (std::uint8_t& byte : entry.Mac) {
        byte = walk.TakeByte();
    }
    return entry;
}

std::string BookLine(const ClientRadio& entry) {
    return "\"" + entry.Name + "\", " + ByteToHex(entry.Channel) + ", " + MacToHex(entry.Mac);
}

int ReadBook(std::istream& file, NumberedArray<ClientRadio>& entries) {
    LineReader lines(file, UINTMAX_MAX, LargestBook);
    std::string_view line;
    int dropped = 0;
    while (lines.Next(line)) {
        std::optional<ClientRadio> entry = ParseBookLine(line);
        if (entry && entries.UpperBound() < MostEntries) {
            entries.Append(std::move(*entry));
        } else if (BeginsEntry(Trim(line))) {
            ++dropped;
        }
    }
    return dropped + lines.PassedOver();
}

int ReadBookFile(std::string_view path, NumberedArray<ClientRadio>& entries) {
    entries.Reset();
    TextFile file;
    return OpenTextFile(path, LargestBook, file) ? ReadBook(file.Stream, entries) : 0;
}

bool WriteBookFile(std::string_view path, const NumberedArray<ClientRadio>& entries) {
    std::string text;
    for (const ClientRadio& entry : entries) {
        text += BookLine(entry);
        text += LineEnd;
    }
    text += LineEnd;
    return RewriteFile(path, text);
}
