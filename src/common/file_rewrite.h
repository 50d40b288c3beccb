#ifndef ORVIA_COMMON_FILE_REWRITE_H
#define ORVIA_COMMON_FILE_REWRITE_H

#include <cstdint>
#include <filesystem>
#include <string_view>

/// Puts a new text in the place of a file's old one, in the file itself: links to it and programs
/// that hold it open stay with it. The room is made sure of first, so a full disk leaves every old
/// byte; then the text is written in one call, and what is too long is cut last. No step empties
/// the file. docs/architecture.md tells what a power cut can do.
///
/// A device takes the text and is left as it is. A pipe or a folder cannot be written.
class FileRewrite {
 public:
    /// Looks at what stands at `path`, and makes an empty file if nothing does.
    explicit FileRewrite(std::string_view path);
    /// Unless a text was taken, gives a file its old length, and takes one away that was made here.
    ~FileRewrite();
    FileRewrite(const FileRewrite&) = delete;
    FileRewrite& operator=(const FileRewrite&) = delete;

    /// Whether there is something that can be written.
    [[nodiscard]] bool IsReady() const { return ready_; }

    /// Does the three steps; False if one failed.
    [[nodiscard]] bool Take(std::string_view text);

    // The steps. Each leaves the file closed and all bytes handed to the system: what it holds then
    // is what a kill between two of them leaves.

    /// Grows a file that is shorter than `size` with zeros.
    [[nodiscard]] bool MakeRoom(std::uintmax_t size) const;
    /// Writes the text over the beginning.
    [[nodiscard]] bool Write(std::string_view text) const;
    /// Cuts a file that was longer than `size`.
    [[nodiscard]] bool Cut(std::uintmax_t size) const;

 private:
    [[nodiscard]] bool LookAtFile();
    [[nodiscard]] bool MakeFile();

    std::filesystem::path path_;
    std::uintmax_t before_ = 0;  // length that the file had
    bool device_ = false;
    bool ready_ = false;
    bool made_ = false;   // by this object
    bool taken_ = false;  // the text is in the file
};

/// Whether the file at `path` can be written, or made if there is none; found out by opening it,
/// since permissions alone do not tell. Changes nothing.
[[nodiscard]] bool CanRewrite(std::string_view path);

/// Rewrites the file at `path`, or makes it; False if that failed, with a file that was there as it
/// was and none where none was.
[[nodiscard]] bool RewriteFile(std::string_view path, std::string_view text);

#endif  // ORVIA_COMMON_FILE_REWRITE_H
