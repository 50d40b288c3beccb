// A book of 10,000 entries: read from its file, written to it, beside a plain copy of its bytes.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "console/book_file.h"

namespace {

constexpr int Entries = 10000;

class BookOnDisk {
 public:
    BookOnDisk() {
        for (int i = 0; i < Entries; ++i) {
            ClientRadio entry;
            entry.Name = "Pump station number " + std::to_string(i);
            entry.Channel = static_cast<std::uint8_t>(i % 0x38);
            entry.Mac = {0x00,
                         0xA0,
                         0x96,
                         0,
                         static_cast<std::uint8_t>(i >> 8),
                         static_cast<std::uint8_t>(i)};
            Book.Append(entry);
        }
        static_cast<void>(WriteBookFile(Path, Book));
    }
    ~BookOnDisk() { std::remove(Path.c_str()); }
    BookOnDisk(const BookOnDisk&) = delete;
    BookOnDisk& operator=(const BookOnDisk&) = delete;

    std::string Path = (std::filesystem::temp_directory_path() / "orvia-bench.obk").string();
    NumberedArray<ClientRadio> Book;
};

void LoadBook(benchmark::State& state) {
    const BookOnDisk disk;
    NumberedArray<ClientRadio> entries;
    for ([[maybe_unused]] auto _ : state) {
        ReadBookFile(disk.Path, entries);
    }
    if (entries.UpperBound() != Entries) {
        state.SkipWithError("entries were lost");
    }
}
BENCHMARK(LoadBook)->Unit(benchmark::kMillisecond);

void SaveBook(benchmark::State& state) {
    const BookOnDisk disk;
    for ([[maybe_unused]] auto _ : state) {
        if (!WriteBookFile(disk.Path, disk.Book)) {
            state.SkipWithError("the file could not be written");
        }
    }
}
BENCHMARK(SaveBook)->Unit(benchmark::kMillisecond);

void CopyBytes(benchmark::State& state) {
    const BookOnDisk disk;
    for ([[maybe_unused]] auto _ : state) {
        std::ifstream in(disk.Path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in),
                                std::istreambuf_iterator<char>()};
        std::ofstream(disk.Path, std::ios::binary) << bytes;
    }
}
BENCHMARK(CopyBytes)->Unit(benchmark::kMillisecond);

}  // namespace
