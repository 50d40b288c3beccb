#include "common/file_rewrite.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <system_error>

#include "common/file_path.h"
#include "common/path_text.h"

namespace {

/// A file opened so is not emptied.
constexpr std::ios::openmode BothWays = std::ios::in | std::ios::out | std::ios::binary;

/// Writes zeros behind the end. They are real bytes: a file that is only told to be longer takes no
/// room until it is written.
bool AppendZeros(const std::filesystem::path& path, std::uintmax_t count) {
    constexpr std::array<char, std::size_t{64} * 1024> zeros{};
    std::ofstream file(path, std::ios::binary | std::ios::app);
    while (count > 0 && file) {
        const std::uintmax_t piece = std::min<std::uintmax_t>(count, zeros.size());
        file.write(zeros.data(), static_cast<std::streamsize>(piece));
        count -= piece;
    }
    file.close();
    return file.good();
}

}  // namespace

FileRewrite::FileRewrite(std::string_view path) : path_(FilePath(path)) {
    if (!TakesFile(path)) {
        return;
    }
    std::error_code failure;
    const std::filesystem::file_status found = std::filesystem::status(path_, failure);
    device_ = found.type() == std::filesystem::file_type::character;
    ready_ = device_ || (std::filesystem::exists(found) ? LookAtFile() : MakeFile());
}

bool FileRewrite::LookAtFile() {
    std::error_code failure;
    before_ = std::filesystem::file_size(path_, failure);
    return !failure && std::fstream(path_, BothWays).is_open();
}

bool FileRewrite::MakeFile() {
    made_ = std::ofstream(path_, std::ios::binary | std::ios::app).is_open();
    // A link that led nowhere leads to the file now, and stays if that goes.
    std::error_code failure;
    const std::filesystem::path target = std::filesystem::canonical(path_, failure);
    path_ = failure ? path_ : target;
    return made_;
}

FileRewrite::~FileRewrite() {
    std::error_code ignored;
    if (!taken_ && made_) {
        std::filesystem::remove(path_, ignored);
    } else if (!taken_ && ready_ && !device_ &&
               std::filesystem::file_size(path_, ignored) != before_) {
        std::filesystem::resize_file(path_, before_, ignored);
    }
}

bool FileRewrite::Take(std::string_view text) {
    taken_ = ready_ && MakeRoom(text.size()) && Write(text) && Cut(text.size());
    return taken_;
}

bool FileRewrite::MakeRoom(std::uintmax_t size) const {
    // Where there is nothing to lose, the text itself finds out.
    return device_ || before_ == 0 || before_ >= size || AppendZeros(path_, size - before_);
}

bool FileRewrite::Write(std::string_view text) const {
    std::fstream file(path_, device_ ? std::ios::out | std::ios::binary : BothWays);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    return file.good();
}

bool FileRewrite::Cut(std::uintmax_t size) const {
    std::error_code failure;
    if (!device_ && before_ > size) {
        std::filesystem::resize_file(path_, size, failure);
    }
    return !failure;
}

bool CanRewrite(std::string_view path) {
    return FileRewrite(path).IsReady();
}

bool RewriteFile(std::string_view path, std::string_view text) {
    return FileRewrite(path).Take(text);
}
