#ifndef ORVIA_HISTORY_HISTORY_TABLE_H
#define ORVIA_HISTORY_HISTORY_TABLE_H

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rows that the viewer shows, as texts. All texts stand one behind another in one arena, with
/// two bytes of length for each (up to 65,535 bytes): a cell costs some ten bytes, where an object
/// for each would cost hundreds.
class HistoryTable {
 public:
    /// Drops rows and columns, and makes columns with these headings. Room for the lengths of
    /// `rows` rows is taken at once.
    void Reset(std::vector<std::string> headings, int rows);

    /// Rows added so far.
    [[nodiscard]] int RowCount() const { return static_cast<int>(starts_.size()); }
    /// Headings given; a table never reset has none.
    [[nodiscard]] int ColumnCount() const { return static_cast<int>(headings_.size()); }
    /// Heading of column 0 to ColumnCount - 1.
    [[nodiscard]] const std::string& Heading(int column) const {
        return headings_[static_cast<std::size_t>(column)];
    }
    /// Bytes of memory that texts and lengths hold: the benchmark and the viewer's test hold it to
    /// a limit.
    [[nodiscard]] std::size_t Memory() const;
    /// Bytes that the texts of all rows take at most.
    [[nodiscard]] std::size_t TextRoom() const { return end_; }
    /// The texts of a row, one behind another, and the length of each. Overread bytes behind the
    /// last one can be read too.
    struct Row {
        const char* Texts;
        std::span<const std::uint16_t> Lengths;
    };
    static constexpr std::size_t Overread = 16;
    [[nodiscard]] Row RowAt(int row) const {
        const auto number = static_cast<std::size_t>(row);
        return {At(starts_[number]),
                std::span(lengths_).subspan(number * headings_.size(), headings_.size())};
    }
    /// The longest text of a column; empty without rows.
    [[nodiscard]] std::string_view LongestText(int column) const;
    /// Text of a cell, row 0 to RowCount - 1.
    [[nodiscard]] std::string_view Text(int row, int column) const;

    // A row is written cell by cell, in the order of the columns, and then added; one that is not
    // gives way to the next.

    /// Starts a row whose texts take up to `room` characters, at most ChunkSize; returns where the
    /// first one goes.
    [[nodiscard]] char* BeginRow(std::size_t room);
    /// Ends a text of the row that began where the one before ended.
    void EndCell(const char* end) {
        *length_++ = static_cast<std::uint16_t>(end - cell_);
        cell_ = end;
    }
    void AddRow();
    /// Whether the texts of the row, the first aside, are those of the last row added. Without such
    /// a row, whether they are all empty.
    [[nodiscard]] bool RowRepeats() const;

    static constexpr std::size_t ChunkSize = std::size_t{1} << 18U;

 private:
    // Chunks keep a growing arena from being copied, and from holding twice what it needs.
    [[nodiscard]] char* At(std::size_t position) const {
        return chunks_[position / ChunkSize].get() + position % ChunkSize;
    }

    std::vector<std::string> headings_;
    std::vector<std::unique_ptr<char[]>> chunks_;
    std::vector<std::uint32_t> starts_;   ///< position of each row in the arena
    std::vector<std::uint16_t> lengths_;  ///< of each text, row by row
    std::size_t end_ = 0;                 ///< position behind the last row
    const char* row_ = nullptr;           ///< the row being written
    const char* cell_ = nullptr;          ///< its next text
    std::uint16_t* length_ = nullptr;     ///< the length of that
};

#endif  // ORVIA_HISTORY_HISTORY_TABLE_H
