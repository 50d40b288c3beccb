#include "common/zip_file.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

/// The checksum bit by bit, as the format describes it.
std::uint32_t SlowCrc(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            const std::uint32_t next = (static_cast<unsigned char>(byte) >> bit) & 1U;
            const bool carry = ((crc & 1U) ^ next) != 0;
            crc = (crc >> 1U) ^ (carry ? 0xEDB88320U : 0U);
        }
    }
    return ~crc;
}

/// Reads an archive as its readers do: from the end to the directory, and from there to each file.
class Reader {
 public:
    explicit Reader(std::string bytes) : bytes_(std::move(bytes)) {}

    std::uint32_t Number(std::size_t at, int size) const {
        std::uint32_t value = 0;
        for (int i = size - 1; i >= 0; --i) {
            value = value << 8U | static_cast<unsigned char>(bytes_.at(at + i));
        }
        return value;
    }
    /// The files; nothing if anything in the archive does not agree.
    std::optional<std::vector<ZipEntry>> Files() const {
        constexpr std::size_t EndSize = 22;
        const std::size_t end = bytes_.size() - EndSize;
        if (Number(end, 4) != 0x06054B50 || Number(end + 8, 2) != Number(end + 10, 2) ||
            Number(end + 12, 4) + Number(end + 16, 4) != end) {
            return std::nullopt;
        }
        std::vector<ZipEntry> files;
        std::size_t line = Number(end + 16, 4);
        for (std::uint32_t i = 0; i < Number(end + 10, 2); ++i) {
            const auto file = FileOf(line);
            if (!file) {
                return std::nullopt;
            }
            files.push_back(*file);
            line += 46 + file->Name.size();
        }
        return line == end ? std::optional(files) : std::nullopt;
    }

 private:
    std::optional<ZipEntry> FileOf(std::size_t line) const {
        const std::size_t head = Number(line + 42, 4);
        if (Number(line, 4) != 0x02014B50 || Number(head, 4) != 0x04034B50) {
            return std::nullopt;
        }
        const ZipEntry file{bytes_.substr(head + 30, Number(head + 26, 2)),
                            bytes_.substr(head + 30 + Number(head + 26, 2), Number(head + 22, 4))};
        // From the version on to the lengths, head and line say the same.
        const bool agree = bytes_.substr(head + 4, 24) == bytes_.substr(line + 6, 24) &&
                           bytes_.substr(line + 46, Number(line + 28, 2)) == file.Name;
        const bool whole = Number(head + 14, 4) == SlowCrc(file.Contents) &&
                           Number(head + 18, 4) == file.Contents.size();
        return agree && whole ? std::optional(file) : std::nullopt;
    }

    std::string bytes_;
};

const std::vector<ZipEntry> Some = {{"versions.txt", "Orvia\n"},
                                    {"leer.txt", ""},
                                    {"B\xC3\xA4"
                                     "che.txt",
                                     std::string(70'000, 'x')}};

TEST(ZipFile, TheChecksumIsTheKnownOne) {
    EXPECT_EQ(ZipCrc(""), 0U);
    EXPECT_EQ(ZipCrc("123456789"), 0xCBF43926U);
    EXPECT_EQ(ZipCrc("\xFF\x80"), SlowCrc("\xFF\x80"));
}

TEST(ZipFile, ItsFilesComeOutAsTheyWentIn) {
    const auto files = Reader(ZipOf(Some, {})).Files();
    ASSERT_TRUE(files);
    ASSERT_EQ(files->size(), Some.size());
    for (std::size_t i = 0; i < Some.size(); ++i) {
        EXPECT_EQ((*files)[i].Name, Some[i].Name);
        EXPECT_EQ((*files)[i].Contents, Some[i].Contents);
    }
}

TEST(ZipFile, WithoutFilesItIsItsEndAlone) {
    const std::string bytes = ZipOf({}, {});
    EXPECT_EQ(bytes.substr(0, 4), "PK\x05\x06");
    EXPECT_EQ(bytes.substr(4), std::string(18, '\0'));
    EXPECT_TRUE(Reader(bytes).Files());
}

TEST(ZipFile, ItSaysThatFilesAreStoredAndNamesAreUtf8) {
    const Reader bytes(ZipOf(Some, {}));
    EXPECT_EQ(bytes.Number(4, 2), 10U) << "any reader will do";
    EXPECT_EQ(bytes.Number(6, 2), 0x0800U);
    EXPECT_EQ(bytes.Number(8, 2), 0U);
}

TEST(ZipFile, TimeAndDateAreInBitFields) {
    const Reader bytes(ZipOf(Some, {2026, 11, 22, 8, 45, 39}));
    EXPECT_EQ(bytes.Number(10, 2), (8U << 11U) + (45U << 5U) + 19U);
    EXPECT_EQ(bytes.Number(12, 2), (46U << 9U) + (11U << 5U) + 22U);
}

/// The example of docs/trace.md.
TEST(ZipFile, AFileBeginsAsThePageShows) {
    const std::vector<ZipEntry> one = {{"a.txt", "Orvia\n"}};
    const std::string head(
        "PK\x03\x04\x0A\0\0\x08\0\0\xB3\x45\x76\x5D\xA2\x16\xBF\x59"
        "\x06\0\0\0\x06\0\0\0\x05\0\0\0a.txtOrvia\n",
        41);
    EXPECT_EQ(ZipOf(one, {2026, 11, 22, 8, 45, 38}).substr(0, head.size()), head);
}

TEST(ZipFile, AChangedByteIsNoticed) {
    std::string bytes = ZipOf(Some, {});
    bytes[30 + Some[0].Name.size()] ^= 1;
    EXPECT_FALSE(Reader(bytes).Files());
}

}  // namespace
