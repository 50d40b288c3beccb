#include "common/zip_file.h"

#include <array>

namespace {

constexpr std::uint32_t LocalMark = 0x04034B50;
constexpr std::uint32_t CentralMark = 0x02014B50;
constexpr std::uint32_t EndMark = 0x06054B50;

/// Version of the format that a reader needs, 1.0 in tenths: files that are stored.
constexpr std::uint16_t NeededVersion = 10;
/// Version 2.0 of the format, of a system whose file attributes nobody has to know.
constexpr std::uint16_t MakerVersion = 20;
/// Names are UTF-8.
constexpr std::uint16_t Utf8Flag = 1U << 11U;
constexpr std::uint16_t Stored = 0;

using CrcTable = std::array<std::uint32_t, 256>;

constexpr CrcTable MakeCrcTable() {
    constexpr std::uint32_t Reversed = 0xEDB88320;
    constexpr int BitsOfAByte = 8;
    CrcTable table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < BitsOfAByte; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? Reversed : 0);
        }
        table[byte] = crc;
    }
    return table;
}

constexpr CrcTable Table = MakeCrcTable();

void PutU16(std::string& bytes, std::uint32_t value) {
    bytes += static_cast<char>(value & 0xFFU);
    bytes += static_cast<char>((value >> 8U) & 0xFFU);
}

void PutU32(std::string& bytes, std::uint32_t value) {
    PutU16(bytes, value & 0xFFFFU);
    PutU16(bytes, value >> 16U);
}

std::uint32_t SizeOf(std::string_view text) {
    return static_cast<std::uint32_t>(text.size());
}

std::uint32_t TimeOf(const ZipTime& time) {
    return static_cast<std::uint32_t>((time.Hour << 11) | (time.Minute << 5) | (time.Second / 2));
}

std::uint32_t DateOf(const ZipTime& time) {
    constexpr int FirstYear = 1980;
    return static_cast<std::uint32_t>(((time.Year - FirstYear) << 9) | (time.Month << 5) |
                                      time.Day);
}

/// What the head of a file and its line in the directory have in common.
void PutFacts(std::string& bytes, const ZipEntry& entry, const ZipTime& time) {
    PutU16(bytes, NeededVersion);
    PutU16(bytes, Utf8Flag);
    PutU16(bytes, Stored);
    PutU16(bytes, TimeOf(time));
    PutU16(bytes, DateOf(time));
    PutU32(bytes, ZipCrc(entry.Contents));
    PutU32(bytes, SizeOf(entry.Contents));  // as it is stored
    PutU32(bytes, SizeOf(entry.Contents));  // as it was
    PutU16(bytes, SizeOf(entry.Name));
    PutU16(bytes, 0);  // further fields
}

void PutFile(std::string& bytes, const ZipEntry& entry, const ZipTime& time) {
    PutU32(bytes, LocalMark);
    PutFacts(bytes, entry, time);
    bytes += entry.Name;
    bytes += entry.Contents;
}

/// The line of a file in the directory; its head is at `place`.
void PutLine(std::string& bytes, const ZipEntry& entry, const ZipTime& time, std::uint32_t place) {
    PutU32(bytes, CentralMark);
    PutU16(bytes, MakerVersion);
    PutFacts(bytes, entry, time);
    PutU16(bytes, 0);  // comment
    PutU16(bytes, 0);  // volume
    PutU16(bytes, 0);  // kind of contents
    PutU32(bytes, 0);  // attributes
    PutU32(bytes, place);
    bytes += entry.Name;
}

void PutEnd(std::string& bytes, std::size_t count, std::uint32_t place, std::uint32_t size) {
    PutU32(bytes, EndMark);
    PutU16(bytes, 0);  // this volume
    PutU16(bytes, 0);  // that of the directory
    PutU16(bytes, static_cast<std::uint32_t>(count));
    PutU16(bytes, static_cast<std::uint32_t>(count));
    PutU32(bytes, size);
    PutU32(bytes, place);
    PutU16(bytes, 0);  // comment
}

}  // namespace

std::uint32_t ZipCrc(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc = (crc >> 8U) ^ Table[(crc ^ static_cast<std::uint8_t>(byte)) & 0xFFU];
    }
    return ~crc;
}

std::string ZipOf(std::span<const ZipEntry> entries, const ZipTime& time) {
    std::string bytes;
    std::string directory;
    for (const ZipEntry& entry : entries) {
        const std::uint32_t place = SizeOf(bytes);
        PutFile(bytes, entry, time);
        PutLine(directory, entry, time, place);
    }
    const std::uint32_t place = SizeOf(bytes);
    bytes += directory;
    PutEnd(bytes, entries.size(), place, SizeOf(directory));
    return bytes;
}
