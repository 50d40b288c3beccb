#ifndef ORVIA_COMMON_LINE_READER_H
#define ORVIA_COMMON_LINE_READER_H

#include <cstddef>
#include <istream>
#include <string>

/// Reads the lines of a text file, whatever bytes it holds: CR LF, LF or CR end a line. Memory
/// stays bounded: of a line longer than the longest allowed only its beginning is kept.
class LineReader {
 public:
    static constexpr std::size_t LongestLine = 65536;

    explicit LineReader(std::istream& file) : file_(*file.rdbuf()) {}

    /// Takes the next line, without its end; False when there is none.
    [[nodiscard]] bool Next(std::string& line);

 private:
    std::streambuf& file_;
};

#endif  // ORVIA_COMMON_LINE_READER_H
