#ifndef ORVIA_COMMON_LINE_READER_H
#define ORVIA_COMMON_LINE_READER_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

/// Longest line that is looked at where a reader is told no other length, in bytes. Nothing meant
/// comes near it; a longer line is passed over, so that a file without line ends takes no more
/// memory than this.
inline constexpr std::size_t LongestLine = std::size_t{64} * 1024;

/// Hands out the lines of a text one by one; CR LF, LF and CR each end a line. Reads in chunks and
/// keeps one line at a time. Bytes are taken as they are, whatever the encoding.
class LineReader {
 public:
    /// Reads `input` up to its end, or as far as `limit` bytes if it goes on behind them. Lines of
    /// more than `longest` bytes are passed over.
    explicit LineReader(std::istream& input, std::uintmax_t limit = UINTMAX_MAX,
                        std::size_t longest = LongestLine);

    /// The next line, without its end; it stands until the next call. False behind the last one.
    [[nodiscard]] bool Next(std::string_view& line);

    /// Lines passed over so far, as too long.
    [[nodiscard]] int PassedOver() const { return passedOver_; }

    /// Whether no read has failed so far.
    [[nodiscard]] bool Intact() const { return !input_.bad(); }

 private:
    [[nodiscard]] bool Fill();
    [[nodiscard]] bool TakeLine();
    void Keep(std::string_view piece);

    std::istream& input_;
    std::uintmax_t left_;      // bytes that may still be read
    std::size_t longest_;      // bytes of the longest line that is kept
    std::vector<char> chunk_;  // the bytes read last
    std::string_view rest_;    // the part of the chunk not yet handed out
    std::string line_;
    bool tooLong_ = false;
    int passedOver_ = 0;
    bool afterReturn_ = false;  // a line feed that comes next belongs to the carriage return
};

/// A text file opened for reading, and how far to read it.
struct TextFile {
    std::ifstream Stream;
    std::uintmax_t Size = 0;  ///< bytes it had when it was opened
};

/// Opens a file as it stands in `path`. False unless it is a regular file, not larger than
/// `largest` bytes, that can be opened: a pipe or a device could make a reader wait for ever.
[[nodiscard]] bool OpenTextFile(std::string_view path, std::uintmax_t largest, TextFile& file);

#endif  // ORVIA_COMMON_LINE_READER_H
