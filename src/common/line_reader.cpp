#include "common/line_reader.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "common/file_path.h"
#include "common/path_text.h"

namespace {

constexpr std::size_t ChunkSize = std::size_t{64} * 1024;

}  // namespace

LineReader::LineReader(std::istream& input, std::uintmax_t limit, std::size_t longest)
    : input_(input), left_(limit), longest_(longest), chunk_(ChunkSize) {}

bool LineReader::Next(std::string_view& line) {
    do {
        if (!TakeLine()) {
            return false;
        }
        passedOver_ += tooLong_ ? 1 : 0;
    } while (tooLong_);
    line = line_;
    return true;
}

/// Reads the next chunk; false when nothing is left.
bool LineReader::Fill() {
    const auto wanted = static_cast<std::streamsize>(std::min<std::uintmax_t>(left_, ChunkSize));
    if (wanted == 0 || !input_) {
        return false;
    }
    input_.read(chunk_.data(), wanted);
    const auto got = static_cast<std::size_t>(input_.gcount());
    left_ -= got;
    rest_ = std::string_view(chunk_.data(), got);
    return got != 0;
}

/// Collects the next line, however many chunks it spans; false at the end of the text.
bool LineReader::TakeLine() {
    line_.clear();
    tooLong_ = false;
    bool any = false;
    while (!rest_.empty() || Fill()) {
        if (afterReturn_ && rest_.front() == '\n') {
            rest_.remove_prefix(1);
            afterReturn_ = false;
            continue;
        }
        afterReturn_ = false;
        any = true;
        const std::size_t end = rest_.find_first_of("\r\n");
        Keep(rest_.substr(0, end));
        if (end != std::string_view::npos) {
            afterReturn_ = rest_[end] == '\r';
            rest_.remove_prefix(end + 1);
            return true;
        }
        rest_ = {};
    }
    return any;
}

void LineReader::Keep(std::string_view piece) {
    tooLong_ = tooLong_ || line_.size() + piece.size() > longest_;
    if (!tooLong_) {
        line_ += piece;
    }
}

bool OpenTextFile(std::string_view path, std::uintmax_t largest, TextFile& file) {
    if (!IsRegularFile(path)) {
        return false;
    }
    const std::filesystem::path native = FilePath(path);
    std::error_code failure;
    file.Size = std::filesystem::file_size(native, failure);
    if (failure || file.Size > largest) {
        return false;
    }
    file.Stream.open(native, std::ios::binary);
    return file.Stream.is_open();
}
