#include "simulator/sim_program_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace simulator {

namespace {

std::string Failure(const std::string& path) {
    return path + ": " + std::strerror(errno);
}

/// Where a symbolic link leads, empty if it is none.
std::string LinkTarget(const std::string& path) {
    std::array<char, 4096> buffer{};
    const ssize_t size = readlink(path.c_str(), buffer.data(), buffer.size());
    return size > 0 ? std::string(buffer.data(), static_cast<std::size_t>(size)) : std::string();
}

}  // namespace

FileHandle::~FileHandle() {
    if (fd_ >= 0) {
        close(fd_);
    }
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
    const FileHandle file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text;
    std::array<char, 65536> buffer{};
    ssize_t size = file ? 1 : -1;
    while (size > 0) {
        size = read(file.Get(), buffer.data(), buffer.size());
        text.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    }
    return size < 0 ? std::nullopt : std::optional(text);
}

std::string Link::Make(const std::string& path, const std::string& target) {
    struct stat there {};
    if (lstat(path.c_str(), &there) == 0 && !S_ISLNK(there.st_mode)) {
        return path + ": exists and is no link";
    }
    const std::string fresh = path + "." + std::to_string(getpid());
    unlink(fresh.c_str());
    if (symlink(target.c_str(), fresh.c_str()) != 0) {
        return Failure(fresh);
    }
    if (std::rename(fresh.c_str(), path.c_str()) != 0) {
        std::string what = Failure(path);
        unlink(fresh.c_str());
        return what;
    }
    path_ = path;
    target_ = target;
    return {};
}

Link::~Link() {
    // Another run may have put its own link there since.
    if (!path_.empty() && LinkTarget(path_) == target_) {
        unlink(path_.c_str());
    }
}

ControlInput::~ControlInput() {
    if (!made_.empty()) {
        unlink(made_.c_str());
    }
}

std::string ControlInput::Open(const std::string& path) {
    if (path == "-") {
        fd_ = STDIN_FILENO;
        return {};
    }
    constexpr mode_t ownerOnly = 0600;
    if (mkfifo(path.c_str(), ownerOnly) == 0) {
        made_ = path;
    } else if (errno != EEXIST) {
        return Failure(path);
    }
    // Open for writing too, so that a writer that leaves is no end of the file.
    fifo_ = FileHandle(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    struct stat there {};
    if (!fifo_ || fstat(fifo_.Get(), &there) != 0) {
        return Failure(path);
    }
    if (!S_ISFIFO(there.st_mode)) {
        return path + ": exists and is no FIFO";
    }
    fd_ = fifo_.Get();
    return {};
}

void ControlInput::Receive() {
    std::array<char, 4096> buffer{};
    const ssize_t size = read(fd_, buffer.data(), buffer.size());
    if (size > 0) {
        pending_.append(buffer.data(), static_cast<std::size_t>(size));
    } else if (size == 0 || (errno != EAGAIN && errno != EINTR)) {
        fd_ = -1;
    }
}

std::optional<std::string> ControlInput::NextLine() {
    const std::size_t end = pending_.find('\n');
    if (end == std::string::npos) {
        return std::nullopt;
    }
    std::string line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

}  // namespace simulator
