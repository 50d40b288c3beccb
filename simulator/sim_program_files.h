#ifndef ORVIA_SIMULATOR_SIM_PROGRAM_FILES_H
#define ORVIA_SIMULATOR_SIM_PROGRAM_FILES_H

#include <optional>
#include <string>
#include <utility>

namespace simulator {

/// An open file of the system, closed with its last owner.
class FileHandle {
 public:
    FileHandle() = default;
    explicit FileHandle(int fd) : fd_(fd) {}
    FileHandle(FileHandle&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle();

    [[nodiscard]] int Get() const { return fd_; }
    [[nodiscard]] explicit operator bool() const { return fd_ >= 0; }

 private:
    int fd_ = -1;
};

/// The whole of a file; nothing if it cannot be read (errno tells why).
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::string& path);

/// A symbolic link that goes with its owner.
class Link {
 public:
    Link() = default;
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    ~Link();

    /// Makes `path` a link to `target` in one step; a link that stands there is replaced, anything
    /// else is left alone. The text says what failed, empty if nothing did.
    [[nodiscard]] std::string Make(const std::string& path, const std::string& target);

 private:
    std::string path_;
    std::string target_;
};

/// Lines that come in through a FIFO or standard input.
class ControlInput {
 public:
    ControlInput() = default;
    ControlInput(const ControlInput&) = delete;
    ControlInput& operator=(const ControlInput&) = delete;
    ~ControlInput();

    /// Opens a FIFO, made if it is not there, or standard input for "-". The text says what
    /// failed, empty if nothing did.
    [[nodiscard]] std::string Open(const std::string& path);

    /// Readable when something has come; -1 when nothing can come any more.
    [[nodiscard]] int Fd() const { return fd_; }

    /// Takes in what has come; the next whole line, nothing if none is there.
    void Receive();
    [[nodiscard]] std::optional<std::string> NextLine();

 private:
    int fd_ = -1;
    FileHandle fifo_;
    std::string made_;  ///< path of the FIFO if it was made here
    std::string pending_;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SIM_PROGRAM_FILES_H
